// The demo's windows on the offscreen platform: tickets open and close in their own windows,
// the event log pane follows them, and the tour plays to its end.

#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QMdiSubWindow>
#include <QPlainTextEdit>
#include <QTemporaryDir>
#include <sstream>

#include "demo_host.h"
#include "main_window.h"
#include "platform/headless_loop.h"
#include "qt/html_printer.h"
#include "qt/ticket_widget.h"
#include "tour.h"

namespace quillon::demo {
namespace {

class DemoWindowTest : public ::testing::Test {
 protected:
  void Settle() {
    QApplication::processEvents();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QApplication::processEvents();
  }
  QString LogPane() { return window_.findChild<QPlainTextEdit*>()->toPlainText(); }

  HeadlessLoop loop_;
  QTemporaryDir folder_;
  view::QtHtmlPrinter printer_{folder_.path()};
  DemoHost host_{loop_, &printer_};
  MainWindow window_{host_, printer_};
};

TEST_F(DemoWindowTest, TicketsCloseByTheirButtonOrTheirFrame) {
  TicketOptions options;
  const int a = window_.openTicket(options);
  options.instrumentID = ids::kUSDJPY;
  options.language = 2;
  const int b = window_.openTicket(options);
  ASSERT_NE(window_.widgetFor(a), nullptr);
  ASSERT_NE(window_.widgetFor(b), nullptr);
  EXPECT_TRUE(window_.windowFor(b)->windowTitle().contains("USD/JPY"));
  EXPECT_TRUE(LogPane().contains("T2 VtPriceGenericRequest ToID=800 InstrumentID=103"));
  EXPECT_FALSE(LogPane().contains("VtPriceGetArray"));  // questions are hidden at first

  // The ticket's own Close: the window goes after the event, the ticket at the next step.
  Clientticket* ticketA = host_.ticket(a);
  ASSERT_TRUE(ticketA->form().controls().userClick(ticketA->form().cmdOKCancel(2)));
  EXPECT_EQ(window_.widgetFor(a), nullptr);
  Settle();
  host_.step();
  EXPECT_EQ(host_.ticket(a), nullptr);
  EXPECT_TRUE(LogPane().contains("T1 CloseTicket"));

  // The window's frame: the same end.
  window_.windowFor(b)->close();
  Settle();
  host_.step();
  EXPECT_EQ(host_.ticket(b), nullptr);
  EXPECT_TRUE(host_.ticketIds().empty());

  // A ticket opened after them still works through a whole order.
  const int c = window_.openTicket(TicketOptions{});
  Clientticket* ticketC = host_.ticket(c);
  Form& form = ticketC->form().controls();
  ASSERT_TRUE(form.userClick(ticketC->form().cmdOKCancel(0)));
  ASSERT_TRUE(form.userClick(ticketC->form().cmdOKCancel(3)));
  host_.step();
  host_.step();
  Settle();
  EXPECT_EQ(ticketC->members().Status, ORDER_EXECUTED);
  EXPECT_TRUE(LogPane().contains("T3 << TradeGeneric TradeID=5001"));
  EXPECT_TRUE(ticketC->form().controls().userClick(ticketC->form().cmdOKCancel(6)));
  EXPECT_TRUE(QFileInfo::exists(QDir(folder_.path()).filePath("confirmation-1.pdf")));
}

TEST(DemoTour, PlaysEveryStageAndLeavesItsFiles) {
  QTemporaryDir folder;
  std::ostringstream out, err;
  ASSERT_EQ(RunTour(folder.path(), false, out, err), 0) << err.str();
  const QDir dir(folder.path());
  for (const char* name : {"01-blank-ticket.png", "04-market-filled.png", "06-limit-filled.png",
                           "07-quote.png", "09-german-ticket.png", "confirmation-1.pdf"})
    EXPECT_TRUE(QFileInfo::exists(dir.filePath(name))) << name;
  const std::string log = out.str();
  EXPECT_NE(log.find("T2 << OrderGenericPending OrderID=1002"), std::string::npos);
  EXPECT_NE(log.find("T3 << OrderGenericQuote"), std::string::npos);
  EXPECT_NE(log.find("T3 VtOrderGenericNew"), std::string::npos);
  EXPECT_EQ(log.find("VtPriceGetArray"), std::string::npos);
}

}  // namespace
}  // namespace quillon::demo

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication app(argc, argv);
  ::testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
