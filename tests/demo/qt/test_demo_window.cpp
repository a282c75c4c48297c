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

TEST(DemoWindow, TicketsCloseByTheirButtonOrTheirFrameAndTheLogPaneFollows) {
  HeadlessLoop loop;
  QTemporaryDir folder;
  view::QtHtmlPrinter printer{folder.path()};
  DemoHost host{loop, &printer};
  MainWindow window{host, printer};
  auto settle = [] {
    QApplication::processEvents();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QApplication::processEvents();
  };
  auto pane = [&] { return window.findChild<QPlainTextEdit*>()->toPlainText(); };
  const int a = window.openTicket({}), b = window.openTicket({ids::kUSDJPY});
  ASSERT_NE(window.windowFor(b), nullptr);
  EXPECT_TRUE(pane().contains("T2 VtPriceGenericRequest ToID=800 InstrumentID=103"));
  EXPECT_FALSE(pane().contains("VtPriceGetArray"));  // questions are hidden at first

  // The ticket's own Close: the window goes after the event, the ticket at the next step.
  TicketForm& formA = host.ticket(a)->form();
  ASSERT_TRUE(formA.controls().userClick(formA.cmdOKCancel(2)));
  EXPECT_EQ(window.widgetFor(a), nullptr);
  settle();
  host.step();
  EXPECT_EQ(host.ticket(a), nullptr);
  EXPECT_TRUE(pane().contains("T1 CloseTicket"));
  // The window's frame: the same end.
  window.windowFor(b)->close();
  settle();
  host.step();
  EXPECT_TRUE(host.ticketIds().empty());
}

TEST(DemoTour, PlaysEveryStageAndLeavesItsFiles) {
  QTemporaryDir folder;
  std::ostringstream out, err;
  ASSERT_EQ(RunTour(folder.path(), false, out, err), 0) << err.str();
  const QDir dir(folder.path());
  for (const char* name : {"01-blank-ticket.png", "09-german-ticket.png", "confirmation-1.pdf"})
    EXPECT_TRUE(QFileInfo::exists(dir.filePath(name))) << name;
  EXPECT_NE(out.str().find("T3 VtOrderGenericNew"), std::string::npos);  // the quote was dealt
}

}  // namespace
}  // namespace quillon::demo

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication app(argc, argv);
  ::testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
