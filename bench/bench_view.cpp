// The roads with the Qt view attached, on the offscreen platform and Qt's own message loop (a
// yield lets Qt run its pending events, repaints included): a tick with its repaint, a key
// stroke, the blank form, placing an order, settlement dates, the forward search, many shown
// tickets, and the memory of a ticket with its widgets.

#include <benchmark/benchmark.h>
#include <malloc.h>

#include <QApplication>
#include <QEvent>
#include <QObject>
#include <QWidget>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "bench_support.h"
#include "qt/qt_loop.h"
#include "qt/ticket_widget.h"

namespace quillon::bench {
namespace {

// One application for every view benchmark, offscreen unless the caller chose a platform.
QApplication& App() {
  static int argc = 1;
  static char name[] = "quillon-bench";
  static char* argv[] = {name, nullptr};
  static QApplication* app = [] {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    return new QApplication(argc, argv);
  }();
  return *app;
}

// The services of a Qt host: Qt's message loop, the locale, bank holidays.
struct ViewPlatform {
  Platform shared;  // locale and calendars; its headless loop stays unused
  view::QtMessageLoop loop;
  ViewPlatform() { App(); }
  TicketServices services() {
    TicketServices s = shared.services();
    s.loop = &loop;
    return s;
  }
};

// How many paint events the application delivers, and while `naming`, the widgets painted.
class PaintCounter : public QObject {
 public:
  long paints = 0;
  bool naming = true;  // off while timing: the names cost more than the count
  std::multiset<std::string> painted;
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Paint) {
      ++paints;
      if (naming) painted.insert(watched->objectName().toStdString());
    }
    return QObject::eventFilter(watched, event);
  }
};

// How many times a window repaints its dirty region: the update requests that reach it.
class PassCounter : public QObject {
 public:
  long passes = 0;
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::UpdateRequest) ++passes;
    return QObject::eventFilter(watched, event);
  }
};

// Bytes the C library holds for the process (Qt allocates much with malloc directly).
std::int64_t MallocBytes() {
  const struct mallinfo2 info = mallinfo2();
  return static_cast<std::int64_t>(info.uordblks + info.hblkhd);
}

// A blank ticket with its widget shown and painted once.
struct ShownTicket {
  std::unique_ptr<Clientticket> ticket;
  std::unique_ptr<view::TicketWidget> widget;
  ShownTicket(ViewPlatform& platform, QuickHost& host, bool show = true) {
    ticket = std::make_unique<Clientticket>(platform.services());
    ticket->setHost(&host);
    widget = std::make_unique<view::TicketWidget>(*ticket);
    OpenBlankTicket(*ticket);
    if (show) widget->show();
  }
  ~ShownTicket() {
    widget.reset();
    ticket.reset();
  }
  Form& form() { return ticket->form().controls(); }
};

// A shown blank ticket on a platform and host of its own, painted once.
struct ShownRoad {
  ViewPlatform platform;
  QuickHost host;
  ShownTicket t{platform, host};
  ShownRoad() { QApplication::processEvents(); }
};

// One accepted tick with the view attached, and the repaint it causes. Besides the time: the
// widgets painted per tick, and how many of those show no control the tick changed.
void BM_ViewTickRoad(benchmark::State& state) {
  QApplication& app = App();
  ShownRoad road;
  ShownTicket& t = road.t;

  // One tick outside the timing, watched: which controls change, which widgets paint.
  std::set<std::string> changed;
  const int observer = t.form().addObserver(
      [&](Control& c, ControlProperty) { changed.insert(c.fullName()); });
  PaintCounter counter;
  app.installEventFilter(&counter);
  PassCounter window;
  t.widget->window()->installEventFilter(&window);
  Tick(*t.ticket, QuickHost::kEurUsd, 1.2346, 1.2351);
  QApplication::processEvents();
  t.form().removeObserver(observer);
  long others = 0;
  std::string otherNames;
  for (const std::string& name : counter.painted) {
    if (changed.count(name)) continue;
    ++others;
    otherNames += (otherNames.empty() ? "" : " ") + (name.empty() ? "(unnamed)" : name);
  }
  if (std::getenv("QUILLON_BENCH_VERBOSE")) {
    std::string names;
    for (const std::string& name : changed) names += name + " ";
    std::fprintf(stderr, "changed: %s\npainted, not changed: %s\n", names.c_str(),
                 otherNames.c_str());
  }
  counter.paints = 0;
  counter.naming = false;
  window.passes = 0;

  MovingMarket market;
  for (auto _ : state) {
    const MovingMarket::Quote q = market.next();
    Tick(*t.ticket, QuickHost::kEurUsd, q.bid, q.offer);
    QApplication::processEvents();
  }
  app.removeEventFilter(&counter);
  state.counters["paints"] = benchmark::Counter(static_cast<double>(counter.paints),
                                                benchmark::Counter::kAvgIterations);
  state.counters["passes"] = benchmark::Counter(static_cast<double>(window.passes),
                                                benchmark::Counter::kAvgIterations);
  state.counters["unchanged_painted"] = static_cast<double>(others);
  CheckNoErrors(state, road.host);
}
BENCHMARK(BM_ViewTickRoad)->MeasureProcessCPUTime();

// A tick of another instrument with the view attached.
void BM_ViewTickIgnored(benchmark::State& state) {
  ShownRoad road;
  ShownTicket& t = road.t;
  for (auto _ : state) {
    Tick(*t.ticket, QuickHost::kGbpUsd, 1.4501, 1.4506);
    QApplication::processEvents();
  }
}
BENCHMARK(BM_ViewTickIgnored)->MeasureProcessCPUTime();

// A key stroke in the quantity box with the view attached, and its repaint.
void BM_ViewKeyStroke(benchmark::State& state) {
  ShownRoad road;
  ShownTicket& t = road.t;
  TextBox& box = t.ticket->form().txtPrimQty;
  t.form().userPaste(box, "100000");
  box.setSelStart(6);  // the caret behind the amount, where the keys go
  Integer keys[2] = {'0', 8};
  int next = 0;
  for (auto _ : state) {
    t.form().userKey(box, keys[next]);
    next ^= 1;
    QApplication::processEvents();
  }
  CheckNoErrors(state, road.host);
}
BENCHMARK(BM_ViewKeyStroke)->MeasureProcessCPUTime();

// Initialise of a blank form with the view attached.
void BM_ViewInitialiseBlank(benchmark::State& state) {
  ShownRoad road;
  ShownTicket& t = road.t;
  for (auto _ : state) {
    InitialiseBlank(*t.ticket);
    QApplication::processEvents();
  }
  CheckNoErrors(state, road.host);
}
BENCHMARK(BM_ViewInitialiseBlank)->MeasureProcessCPUTime()->Unit(benchmark::kMicrosecond);

// Place Order, the statement, Yes, with the view attached; the blank form comes back outside
// the timing.
void BM_ViewPlaceConfirmSend(benchmark::State& state) {
  ShownRoad road;
  ShownTicket& t = road.t;
  QuickHost& host = road.host;
  TicketForm& f = t.ticket->form();
  const Long ordersBefore = host.orders;
  for (auto _ : state) {
    state.PauseTiming();
    OpenBlankTicket(*t.ticket);
    QApplication::processEvents();
    state.ResumeTiming();
    t.form().userClick(f.cmdOKCancel(0));
    QApplication::processEvents();
    t.form().userClick(f.cmdOKCancel(3));
    QApplication::processEvents();
  }
  if (host.orders - ordersBefore != static_cast<Long>(state.iterations()))
    state.SkipWithError("not every road sent its order");
  CheckNoErrors(state, host);
}
BENCHMARK(BM_ViewPlaceConfirmSend)->MeasureProcessCPUTime()->Unit(benchmark::kMicrosecond);

// Settlement dates and the forward search with the view attached, each call followed by a
// turn of Qt's loop.
void BM_ViewSettlementSpot(benchmark::State& state) {
  ShownRoad road;
  SettlementRoad(state, *road.t.ticket, road.host, kNoDate, [] { QApplication::processEvents(); });
}
BENCHMARK(BM_ViewSettlementSpot)->MeasureProcessCPUTime();

void BM_ViewSettlementOneYear(benchmark::State& state) {
  ShownRoad road;
  SettlementRoad(state, *road.t.ticket, road.host, DateSerial(1991, 1, 1),
                 [] { QApplication::processEvents(); });
}
BENCHMARK(BM_ViewSettlementOneYear)->MeasureProcessCPUTime();

void BM_ViewFindNewInst(benchmark::State& state) {
  ShownRoad road;
  FindNewInstRoad(state, *road.t.ticket, road.host, [] { QApplication::processEvents(); });
}
BENCHMARK(BM_ViewFindNewInst)->MeasureProcessCPUTime();

// N shown tickets; each iteration pushes one tick to every ticket and lets the view repaint.
void BM_ViewLoad(benchmark::State& state) {
  const auto n = static_cast<std::size_t>(state.range(0));
  ViewPlatform platform;
  QuickHost host;
  std::vector<std::unique_ptr<ShownTicket>> tickets;
  for (std::size_t i = 0; i < n; ++i)
    tickets.push_back(std::make_unique<ShownTicket>(platform, host));
  QApplication::processEvents();
  MovingMarket market;
  for (auto _ : state) {
    const MovingMarket::Quote q = market.next();
    for (auto& t : tickets) Tick(*t->ticket, QuickHost::kEurUsd, q.bid, q.offer);
    QApplication::processEvents();
  }
  state.counters["tickets"] = static_cast<double>(n);
  state.counters["per_ticket_tick"] = benchmark::Counter(
      static_cast<double>(n),
      benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
  CheckNoErrors(state, host);
}
BENCHMARK(BM_ViewLoad)->MeasureProcessCPUTime()->Arg(1)->Arg(10)->Arg(100)->Arg(500)->Unit(benchmark::kMillisecond);

// Bytes per shown ticket with its widgets, painted after a tick: what the C library holds
// (Qt allocates much of its data with malloc, past operator new).
void BM_ViewBytesPerTicket(benchmark::State& state) {
  constexpr int kTickets = 20;
  ViewPlatform platform;
  QuickHost host;
  {  // the first builds what all share: fonts, styles, the string table, the calendars
    ShownTicket warm(platform, host);
    QApplication::processEvents();
  }
  QApplication::processEvents();
  double perTicket = 0, hidden = 0;
  for (auto _ : state) {
    std::vector<std::unique_ptr<ShownTicket>> tickets;
    tickets.reserve(kTickets);
    malloc_trim(0);
    const std::int64_t before = MallocBytes();
    for (int i = 0; i < kTickets; ++i) {
      tickets.push_back(std::make_unique<ShownTicket>(platform, host, false));
      Tick(*tickets.back()->ticket, QuickHost::kEurUsd, 1.2345, 1.2350);
    }
    QApplication::processEvents();
    hidden = static_cast<double>(MallocBytes() - before) / kTickets;
    for (auto& t : tickets) t->widget->show();
    QApplication::processEvents();
    perTicket = static_cast<double>(MallocBytes() - before) / kTickets;
    state.PauseTiming();
    tickets.clear();
    QApplication::processEvents();
    state.ResumeTiming();
  }
  state.counters["bytes_per_ticket"] = perTicket;
  state.counters["bytes_before_shown"] = hidden;  // the widgets without their window
}
BENCHMARK(BM_ViewBytesPerTicket)->Iterations(2)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace quillon::bench
