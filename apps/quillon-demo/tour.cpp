#include "tour.h"

#include <QApplication>
#include <QDir>
#include <QMdiSubWindow>
#include <QPixmap>
#include <ostream>
#include <stdexcept>
#include <string>

#include "demo_host.h"
#include "main_window.h"
#include "platform/headless_loop.h"
#include "qt/html_printer.h"
#include "qt/ticket_widget.h"

namespace quillon::demo {
namespace {

class Tour {
 public:
  Tour(const QString& folder, std::ostream& out)
      : folder_(folder), out_(out), printer_(folder), host_(loop_, &printer_, 2001) {
    printer_.setUseDialog(false);
    host_.desk().quotePolicy().requoteAfter = 0;  // the dealer requotes only when told
  }

  void play() {
    MainWindow window(host_, printer_);
    window_ = &window;
    printer_.onPdfWritten = [this](const QString& path) { pdfs_.push_back(path); };
    window.resize(1400, 950);
    window.show();
    settle();

    // A blank ticket, with the account's equity.
    const int blank = open(ids::kEURUSD, 1, 1);
    step();
    shot(blank, "01-blank-ticket.png");

    // A market order: the statement, Yes, received, filled and printed.
    click(blank, form(blank).cmdOKCancel(0));
    shot(blank, "02-market-confirm.png");
    click(blank, form(blank).cmdOKCancel(3));
    step();
    shot(blank, "03-market-received.png");
    step();
    shot(blank, "04-market-filled.png");
    const std::size_t printed = pdfs_.size();
    click(blank, form(blank).cmdOKCancel(6));
    if (pdfs_.size() != printed + 1) throw std::runtime_error("the confirmation was not printed");
    say("printed " + pdfs_.back().toStdString());

    // A limit order below the market: pending, then filled as the market comes down.
    const int limit = open(ids::kEURUSD, 1, 1);
    click(limit, form(limit).optType(2));
    type(limit, form(limit).txtLimit, "1.0830");
    click(limit, form(limit).cmdOKCancel(0));
    click(limit, form(limit).cmdOKCancel(3));
    step(2);
    shot(limit, "05-limit-pending.png");
    host_.feed().setBid(ids::kEURUSD, 1.0828);
    step();
    shot(limit, "06-limit-filled.png");

    // A two-way quote request, quoted, and bought.
    const int quote = open(ids::kGBPUSD, 1, 1);
    click(quote, form(quote).optType(5));
    click(quote, form(quote).cmdOKCancel(0));
    click(quote, form(quote).cmdOKCancel(3));
    step(2);
    loop_.advance(1000);  // a second of the countdown; the buttons come alive
    step();
    shot(quote, "07-quote.png");
    click(quote, form(quote).cmdQuote(2));
    step();
    shot(quote, "08-quote-dealt.png");

    // A ticket in German on the practice account.
    const int german = open(ids::kUSDJPY, 2, 2);
    step();
    shot(german, "09-german-ticket.png");

    settle();
    save(window.grab(), "10-main-window.png");
    window_ = nullptr;
  }

  const std::vector<QString>& pdfs() const { return pdfs_; }

  std::string log(bool withQuestions) { return host_.log().text(withQuestions); }

 private:
  int open(Long instrument, Long account, Integer language) {
    TicketOptions options;
    options.instrumentID = instrument;
    options.accountID = account;
    options.language = language;
    const int id = window_->openTicket(options);
    if (id == 0) throw std::runtime_error("the host refused a ticket");
    settle();
    return id;
  }
  TicketForm& form(int id) { return host_.ticket(id)->form(); }
  void click(int id, Control& control) {
    if (!form(id).controls().userClick(control))
      throw std::runtime_error("ticket " + std::to_string(id) + " refused a click on " +
                               control.fullName());
    settle();
  }
  void type(int id, TextBox& box, const std::string& text) {
    if (!form(id).controls().userPaste(box, text))
      throw std::runtime_error("ticket " + std::to_string(id) + " refused " + box.fullName());
    settle();
  }
  void step(int n = 1) {
    for (int i = 0; i < n; ++i) {
      host_.step();
      settle();
    }
  }
  void settle() { QApplication::processEvents(); }
  void shot(int id, const char* name) {
    settle();
    if (QMdiSubWindow* w = window_->windowFor(id)) window_->centralWidget()->update(), w->raise();
    settle();
    view::TicketWidget* widget = window_->widgetFor(id);
    if (!widget) throw std::runtime_error("no window for ticket " + std::to_string(id));
    save(widget->grab(), name);
  }
  void save(const QPixmap& pixmap, const char* name) {
    const QString path = QDir(folder_).filePath(name);
    if (!pixmap.save(path)) throw std::runtime_error("cannot write " + path.toStdString());
    say("screenshot " + path.toStdString());
  }
  void say(const std::string& line) { out_ << "# " << line << "\n"; }

  QString folder_;
  std::ostream& out_;
  HeadlessLoop loop_;  // a virtual clock: the market moves only when the tour says
  view::QtHtmlPrinter printer_;
  DemoHost host_;
  MainWindow* window_ = nullptr;
  std::vector<QString> pdfs_;
};

}  // namespace

int RunTour(const QString& folder, bool withQuestions, std::ostream& out, std::ostream& err) {
  if (!QDir().mkpath(folder)) {
    err << "quillon-demo: cannot create " << folder.toStdString() << "\n";
    return 1;
  }
  Tour tour(folder, out);
  try {
    tour.play();
  } catch (const std::exception& e) {
    out << tour.log(withQuestions);
    err << "quillon-demo: tour stopped: " << e.what() << "\n";
    return 1;
  }
  out << tour.log(withQuestions);
  return 0;
}

}  // namespace quillon::demo
