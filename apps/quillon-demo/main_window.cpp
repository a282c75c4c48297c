#include "main_window.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDockWidget>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStatusBar>
#include <QTimer>
#include <QVBoxLayout>

#include "qt/html_printer.h"
#include "qt/ticket_widget.h"

namespace quillon::demo {

MainWindow::MainWindow(DemoHost& host, view::QtHtmlPrinter& printer, QWidget* parent)
    : QMainWindow(parent), host_(host), printer_(printer) {
  setWindowTitle("Quillon demo: Halden Bank FX dealing");

  // The chooser on the left.
  auto* chooser = new QWidget;
  auto* side = new QVBoxLayout(chooser);
  side->addWidget(new QLabel("Instruments"));
  instruments_ = new QListWidget;
  for (Long id : host_.book().pairs()) {
    const InstrumentRec* r = host_.book().find(id);
    auto* item = new QListWidgetItem(QString::fromStdString(r->ShortDesc + "  " + r->LongDesc));
    item->setData(Qt::UserRole, static_cast<int>(id));
    instruments_->addItem(item);
  }
  instruments_->setCurrentRow(0);
  side->addWidget(instruments_);
  auto* form = new QFormLayout;
  accounts_ = new QComboBox;
  for (const Account& a : host_.desk().accounts())
    accounts_->addItem(QString::fromStdString(a.name + (a.live ? " (live)" : "")),
                       static_cast<int>(a.id));
  form->addRow("Account", accounts_);
  language_ = new QComboBox;
  language_->addItem("English", 1);
  language_->addItem("Deutsch", 2);
  form->addRow("Language", language_);
  side->addLayout(form);
  valueDateButton_ = new QCheckBox("Show the value-date button");
  side->addWidget(valueDateButton_);
  auto* open = new QPushButton("&Open ticket");
  side->addWidget(open);
  side->addSpacing(12);
  side->addWidget(new QLabel("Simulation"));
  connected_ = new QCheckBox("Connected");
  connected_->setChecked(host_.connected());
  side->addWidget(connected_);
  deliveryFails_ = new QCheckBox("Guaranteed delivery fails");
  deliveryFails_->setChecked(host_.desk().deliveryFails());
  side->addWidget(deliveryFails_);
  side->addStretch();

  auto* centre = new QWidget;
  auto* row = new QHBoxLayout(centre);
  row->addWidget(chooser);
  tickets_ = new QMdiArea;
  tickets_->setMinimumSize(820, 480);
  row->addWidget(tickets_, 1);
  setCentralWidget(centre);

  // The event log below.
  auto* logPane = new QWidget;
  auto* logLayout = new QVBoxLayout(logPane);
  showQuestions_ = new QCheckBox("Show questions (prices, instruments, clock, connection)");
  logLayout->addWidget(showQuestions_);
  log_ = new QPlainTextEdit;
  log_->setReadOnly(true);
  log_->setMaximumBlockCount(20000);
  log_->setLineWrapMode(QPlainTextEdit::NoWrap);
  logLayout->addWidget(log_);
  auto* dock = new QDockWidget("Event log");
  dock->setWidget(logPane);
  dock->setFeatures(QDockWidget::DockWidgetMovable | QDockWidget::DockWidgetFloatable);
  addDockWidget(Qt::BottomDockWidgetArea, dock);
  statusBar()->showMessage("Ready");

  connect(open, &QPushButton::clicked, this, [this] { openChosenTicket(); });
  connect(instruments_, &QListWidget::itemDoubleClicked, this, [this] { openChosenTicket(); });
  connect(connected_, &QCheckBox::toggled, this, [this](bool on) {
    host_.setConnected(on);
    statusBar()->showMessage(on ? "Connected" : "Connection lost", 3000);
  });
  connect(deliveryFails_, &QCheckBox::toggled, this,
          [this](bool on) { host_.desk().setDeliveryFails(on); });
  connect(showQuestions_, &QCheckBox::toggled, this, [this] { refillLog(); });

  host_.log().onEntry = [this](const LogEntry& e) { appendLog(e); };
  host_.onCloseRequested = [this](int id) { closeTicketWindow(id); };
  host_.onMessage = [this](int id, const std::string& text) {
    statusBar()->showMessage(QString("Ticket %1: %2").arg(id).arg(QString::fromStdString(text)),
                             5000);
  };
  printer_.onPdfWritten = [this](const QString& path) {
    statusBar()->showMessage("Trade confirmation printed to " + path, 8000);
  };
}

MainWindow::~MainWindow() {
  host_.log().onEntry = nullptr;
  host_.onCloseRequested = nullptr;
  host_.onMessage = nullptr;
  printer_.onPdfWritten = nullptr;
  // The widgets stop following their tickets before the host destroys them, and the windows
  // that go with this one close no ticket.
  for (auto& [id, o] : open_) {
    o.widget->detach();
    QObject::disconnect(o.window, nullptr, this, nullptr);
  }
}

int MainWindow::openChosenTicket() {
  TicketOptions options;
  if (QListWidgetItem* item = instruments_->currentItem())
    options.instrumentID = item->data(Qt::UserRole).toInt();
  options.accountID = accounts_->currentData().toInt();
  options.language = static_cast<Integer>(language_->currentData().toInt());
  options.showValueDateButton = valueDateButton_->isChecked();
  return openTicket(options);
}

int MainWindow::openTicket(const TicketOptions& options) {
  const int id = host_.openTicket(options);
  if (id == 0) return 0;
  Clientticket* ticket = host_.ticket(id);
  auto* widget = new view::TicketWidget(*ticket);
  widget->setMinimumSize(widget->sizeHint());  // the form has one size: never cut it
  QMdiSubWindow* window = tickets_->addSubWindow(widget);
  window->setAttribute(Qt::WA_DeleteOnClose);
  const InstrumentRec* inst = host_.book().find(options.instrumentID);
  window->setWindowTitle(QString("Ticket %1: %2").arg(id).arg(
      QString::fromStdString(inst ? inst->ShortDesc : std::string())));
  open_[id] = {window, widget};
  // Closed by its frame: the same end as the ticket's own Close button.
  connect(window, &QObject::destroyed, this, [this, id] {
    auto it = open_.find(id);
    if (it == open_.end()) return;
    open_.erase(it);
    // The widget may still be on its way out: the ticket goes once it is gone.
    QTimer::singleShot(0, this, [this, id] { host_.closeTicket(id); });
  });
  window->show();
  window->adjustSize();
  return id;
}

view::TicketWidget* MainWindow::widgetFor(int ticketID) const {
  auto it = open_.find(ticketID);
  return it == open_.end() ? nullptr : it->second.widget;
}

QMdiSubWindow* MainWindow::windowFor(int ticketID) const {
  auto it = open_.find(ticketID);
  return it == open_.end() ? nullptr : it->second.window;
}

void MainWindow::closeTicketWindow(int ticketID) {
  auto it = open_.find(ticketID);
  if (it == open_.end()) {
    host_.closeTicket(ticketID);
    return;
  }
  Open o = it->second;
  open_.erase(it);
  // Inside the ticket's event: the widget lets go now, the window goes after the event
  // returns, and the host destroys the ticket once no procedure of it is under way.
  o.widget->detach();
  o.window->hide();
  o.window->deleteLater();
  host_.closeTicket(ticketID);
}

void MainWindow::appendLog(const LogEntry& entry) {
  if (entry.question && !showQuestions_->isChecked()) return;
  log_->appendPlainText(QString::fromStdString(entry.text()));
}

void MainWindow::refillLog() {
  log_->clear();
  for (const LogEntry& e : host_.log().entries()) appendLog(e);
}

}  // namespace quillon::demo
