// The demo's main window: instruments and accounts to choose from, the switches of the
// simulated world, a ticket per MDI window, and the event log of every ticket.
#pragma once

#include <QMainWindow>
#include <map>

#include "demo_host.h"

class QCheckBox;
class QComboBox;
class QListWidget;
class QMdiArea;
class QMdiSubWindow;
class QPlainTextEdit;

namespace quillon::view {
class QtHtmlPrinter;
class TicketWidget;
}  // namespace quillon::view

namespace quillon::demo {

class MainWindow : public QMainWindow {
 public:
  // The host and the printer must outlive the window.
  MainWindow(DemoHost& host, view::QtHtmlPrinter& printer, QWidget* parent = nullptr);
  ~MainWindow() override;

  // Opens a ticket in a window of its own; 0 if the host refuses it.
  int openTicket(const TicketOptions& options);
  // Opens a ticket as the controls of the window say.
  int openChosenTicket();
  view::TicketWidget* widgetFor(int ticketID) const;
  QMdiSubWindow* windowFor(int ticketID) const;

 private:
  void closeTicketWindow(int ticketID);
  void appendLog(const LogEntry& entry);
  void refillLog();

  DemoHost& host_;
  view::QtHtmlPrinter& printer_;
  QListWidget* instruments_;
  QComboBox* accounts_;
  QComboBox* language_;
  QCheckBox* connected_;
  QCheckBox* deliveryFails_;
  QCheckBox* valueDateButton_;
  QCheckBox* showQuestions_;
  QMdiArea* tickets_;
  QPlainTextEdit* log_;
  struct Open {
    QMdiSubWindow* window;
    view::TicketWidget* widget;
  };
  std::map<int, Open> open_;
};

}  // namespace quillon::demo
