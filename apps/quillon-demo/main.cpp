// quillon-demo: the desktop trading host. With --tour DIR it plays a fixed tour headless and
// leaves screenshots, the printed confirmation and the event log behind.

#include <QApplication>
#include <QDir>
#include <QTimer>
#include <cstdlib>
#include <iostream>
#include <string>

#include "demo_host.h"
#include "main_window.h"
#include "qt/html_printer.h"
#include "qt/qt_loop.h"
#include "tour.h"

namespace {

void Usage(std::ostream& out) {
  out << "usage: quillon-demo [--seed N] [--tour DIR [--questions]]\n"
         "  --tour DIR    play the headless tour: screenshots, confirmation PDF and the event\n"
         "                log go to DIR and standard output\n"
         "  --questions   the tour's log also shows the tickets' questions\n"
         "  --seed N      seed of the simulated market (default 2001)\n";
}

}  // namespace

int main(int argc, char** argv) {
  std::string tourDir;
  bool tour = false, questions = false;
  unsigned long long seed = 2001;
  for (int i = 1; i < argc; ++i) {
    const std::string arg = argv[i];
    if (arg == "--tour" && i + 1 < argc) {
      tour = true;
      tourDir = argv[++i];
    } else if (arg == "--questions") {
      questions = true;
    } else if (arg == "--seed" && i + 1 < argc) {
      char* end = nullptr;
      seed = std::strtoull(argv[++i], &end, 10);
      if (!end || *end) {
        std::cerr << "quillon-demo: --seed needs a whole number\n";
        return 2;
      }
    } else if (arg == "--help" || arg == "-h") {
      Usage(std::cout);
      return 0;
    } else {
      std::cerr << "quillon-demo: unknown argument " << arg << "\n";
      Usage(std::cerr);
      return 2;
    }
  }
  // Without a display the tour still runs: Qt draws offscreen.
  if (tour && !std::getenv("DISPLAY") && !std::getenv("WAYLAND_DISPLAY"))
    qputenv("QT_QPA_PLATFORM", "offscreen");

  QApplication app(argc, argv);
  if (tour)
    return quillon::demo::RunTour(QString::fromStdString(tourDir), questions, std::cout,
                                  std::cerr);

  using namespace quillon;
  view::QtMessageLoop loop;  // one loop for the whole application, outliving every ticket
  view::QtHtmlPrinter printer(QDir::currentPath());
  demo::DemoHost host(loop, &printer, seed);
  demo::MainWindow window(host, printer);
  QTimer desk;  // the desk and the market move a few times a second
  QObject::connect(&desk, &QTimer::timeout, [&host] { host.step(); });
  desk.start(100);
  window.resize(1400, 950);
  window.show();
  window.openChosenTicket();
  return app.exec();
}
