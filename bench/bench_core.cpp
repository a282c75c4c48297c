// The hot roads of a headless ticket: a tick and its floor, an ignored tick, a key stroke,
// the blank form, placing an order, settlement dates with real calendars, the forward search,
// many tickets at once, and the memory of one ticket.

#include <benchmark/benchmark.h>

#include <memory>
#include <string>
#include <vector>

#include "bench_support.h"
#include "platform/number_format.h"

namespace quillon::bench {
namespace {


// A blank EUR/USD market ticket on its own platform and host.
struct OneTicket {
  Platform platform;
  QuickHost host;
  std::unique_ptr<Clientticket> ticket;
  explicit OneTicket(Long priceProfile = -1) {
    ticket = std::make_unique<Clientticket>(platform.services());
    ticket->setHost(&host);
    OpenBlankTicket(*ticket, priceProfile);
  }
  Form& form() { return ticket->form().controls(); }
};

// The next tick of the moving market, on the ticket.
void NextTick(OneTicket& t, MovingMarket& market) {
  const MovingMarket::Quote q = market.next();
  Tick(*t.ticket, QuickHost::kEurUsd, q.bid, q.offer);
}

// How many price look-ups a tick makes: one tick outside the timing, counted.
Long LookUpsPerTick(OneTicket& t, MovingMarket& market) {
  const Long before = t.host.priceLookUps;
  NextTick(t, market);
  return t.host.priceLookUps - before;
}

void ReportAllocations(benchmark::State& state, std::uint64_t before) {
  state.counters["allocs"] = benchmark::Counter(
      static_cast<double>(Heap().allocations - before), benchmark::Counter::kAvgIterations);
}

// One accepted tick on a blank market ticket whose client sees the raw ticks; the market
// moves at each tick (MovingMarket), so the price boxes change every time.
void BM_TickRoad(benchmark::State& state) {
  OneTicket t(-1);
  MovingMarket market;
  const Long lookUps = LookUpsPerTick(t, market);
  const std::uint64_t allocations = Heap().allocations;
  for (auto _ : state) NextTick(t, market);
  ReportAllocations(state, allocations);
  state.counters["host_calls"] = static_cast<double>(lookUps);
  CheckNoErrors(state, t.host);
}
BENCHMARK(BM_TickRoad);

// The least work any ticket must do for a tick: the five prices of the road (market, bid and
// offer; limit and stop) written with the pip's pattern by the same number layer, and the road's
// host calls through the same event interface. Returns the market price's text.
std::string FloorWork(const MovingMarket::Quote& q, const Locale& locale,
                      ClientticketEvents* host, Long lookUps) {
  static const std::string pattern = "0.0000";
  std::string marketText = FormatNumber(q.offer, pattern, locale);
  std::string bidText = FormatNumber(q.bid, pattern, locale);
  std::string offerText = FormatNumber(q.offer, pattern, locale);
  std::string limit = FormatNumber(q.offer, pattern, locale);
  std::string stop = FormatNumber(q.offer, pattern, locale);
  benchmark::DoNotOptimize(bidText);
  benchmark::DoNotOptimize(offerText);
  benchmark::DoNotOptimize(limit);
  benchmark::DoNotOptimize(stop);
  for (Long i = 0; i < lookUps; ++i) {
    Long counterparty = 0, priceType = 0, profile = -1;
    double b = 0, o = 0, high = 0, low = 0;
    Date time = 0;
    host->VtPriceGetArray(QuickHost::kEurUsd, 0, counterparty, b, o, high, low, priceType, time,
                          profile);
    benchmark::DoNotOptimize(b);
  }
  return marketText;
}

// The number work the road's procedures add to the floor: the counter amount of the blank
// form's one contract, written by both runs of the quantity refresh (the second finds the text
// of the first), and two texts read back: the market price into its member, and the counter
// amount by the order check.
void RoadNumbers(const MovingMarket::Quote& q, const std::string& marketText,
                 const Locale& locale) {
  constexpr double kQuantity = 100000;
  std::string amount = FormatNumber(kQuantity * q.offer, kAmountPattern, locale);
  std::string again = FormatNumber(kQuantity * q.offer, kAmountPattern, locale);
  benchmark::DoNotOptimize(again);
  double price = 0, counter = 0;
  benchmark::DoNotOptimize(TryReadNumericText(marketText, locale, price));
  benchmark::DoNotOptimize(TryReadNumericText(amount, locale, counter));
  benchmark::DoNotOptimize(price);
  benchmark::DoNotOptimize(counter);
}

void RunFloor(benchmark::State& state, bool roadNumbers) {
  OneTicket t(-1);
  MovingMarket market;
  const Long lookUps = LookUpsPerTick(t, market);
  ClientticketEvents* host = &t.host;
  benchmark::DoNotOptimize(host);
  const Locale& locale = t.platform.locale;
  const std::uint64_t allocations = Heap().allocations;
  for (auto _ : state) {
    const MovingMarket::Quote q = market.next();
    std::string marketText = FloorWork(q, locale, host, lookUps);
    benchmark::DoNotOptimize(marketText);
    if (roadNumbers) RoadNumbers(q, marketText, locale);
  }
  ReportAllocations(state, allocations);
  state.counters["host_calls"] = static_cast<double>(lookUps);
}

void BM_TickFloor(benchmark::State& state) { RunFloor(state, false); }
BENCHMARK(BM_TickFloor);

// Not a target, a yardstick: the floor with the number work the road's procedures add to it.
// The road's ratio to this is what its own steps cost beyond the numbers it must write and
// read.
void BM_TickNumberFloor(benchmark::State& state) { RunFloor(state, true); }
BENCHMARK(BM_TickNumberFloor);

// The same road for a client on a price profile: one more host call fetches its price.
void BM_TickRoadProfile(benchmark::State& state) {
  OneTicket t(7);
  MovingMarket market;
  const std::uint64_t allocations = Heap().allocations;
  for (auto _ : state) {
    const MovingMarket::Quote q = market.next();
    t.host.prices[QuickHost::kEurUsd].Bid = q.bid;
    t.host.prices[QuickHost::kEurUsd].Offer = q.offer;
    Tick(*t.ticket, QuickHost::kEurUsd, q.bid, q.offer);
  }
  ReportAllocations(state, allocations);
  CheckNoErrors(state, t.host);
}
BENCHMARK(BM_TickRoadProfile);

// A tick of another instrument: the ticket looks and drops it.
void BM_TickIgnored(benchmark::State& state) {
  OneTicket t;
  for (auto _ : state) Tick(*t.ticket, QuickHost::kGbpUsd, 1.4501, 1.4506);
}
BENCHMARK(BM_TickIgnored);

// One key stroke in the quantity box: a digit, then a backspace, and so on. Each runs the
// whole refresh road.
void BM_KeyStroke(benchmark::State& state) {
  OneTicket t;
  TextBox& box = t.ticket->form().txtPrimQty;
  t.form().userPaste(box, "100000");
  box.setSelStart(6);  // the caret behind the amount, where the keys go
  Integer keys[2] = {'0', 8};
  int next = 0;
  const std::uint64_t allocations = Heap().allocations;
  for (auto _ : state) {
    t.form().userKey(box, keys[next]);
    next ^= 1;
  }
  ReportAllocations(state, allocations);
  CheckNoErrors(state, t.host);
}
BENCHMARK(BM_KeyStroke);

// Initialise with Status -1: the blank form painted, prices and equity asked for.
void BM_InitialiseBlank(benchmark::State& state) {
  OneTicket t;
  const std::uint64_t allocations = Heap().allocations;
  for (auto _ : state) InitialiseBlank(*t.ticket);
  ReportAllocations(state, allocations);
  CheckNoErrors(state, t.host);
}
BENCHMARK(BM_InitialiseBlank);

// Place Order, the statement, Yes: the order goes out. The blank form is set up again
// between iterations, outside the timing.
void BM_PlaceConfirmSend(benchmark::State& state) {
  OneTicket t;
  TicketForm& f = t.ticket->form();
  const Long ordersBefore = t.host.orders;
  for (auto _ : state) {
    state.PauseTiming();
    OpenBlankTicket(*t.ticket);
    state.ResumeTiming();
    t.form().userClick(f.cmdOKCancel(0));  // Place Order: the statement
    t.form().userClick(f.cmdOKCancel(3));  // Yes
  }
  if (t.host.orders - ordersBefore != static_cast<Long>(state.iterations()))
    state.SkipWithError("not every road sent its order");
  CheckNoErrors(state, t.host);
}
BENCHMARK(BM_PlaceConfirmSend);

// Settlement dates with real calendars, and the forward search.
void BM_SettlementSpot(benchmark::State& state) {
  OneTicket t;
  SettlementRoad(state, *t.ticket, t.host, kNoDate, [] {});
}
void BM_SettlementOneYear(benchmark::State& state) {
  OneTicket t;
  SettlementRoad(state, *t.ticket, t.host, DateSerial(1991, 1, 1), [] {});
}
BENCHMARK(BM_SettlementSpot);
BENCHMARK(BM_SettlementOneYear);

void BM_FindNewInst(benchmark::State& state) {
  OneTicket t;
  FindNewInstRoad(state, *t.ticket, t.host, [] {});
}
BENCHMARK(BM_FindNewInst);

// N blank tickets open at once on one host and one message loop; each iteration pushes one
// EUR/USD tick to every ticket. Reported per tick per ticket.
void BM_Load(benchmark::State& state) {
  const auto n = static_cast<std::size_t>(state.range(0));
  Platform platform;
  QuickHost host;
  std::vector<std::unique_ptr<Clientticket>> tickets;
  tickets.reserve(n);
  for (std::size_t i = 0; i < n; ++i) {
    tickets.push_back(std::make_unique<Clientticket>(platform.services()));
    tickets.back()->setHost(&host);
    OpenBlankTicket(*tickets.back());
  }
  MovingMarket market;
  for (auto _ : state) {
    const MovingMarket::Quote q = market.next();
    for (auto& ticket : tickets) Tick(*ticket, QuickHost::kEurUsd, q.bid, q.offer);
  }
  state.counters["tickets"] = static_cast<double>(n);
  state.counters["per_ticket_tick"] = benchmark::Counter(
      static_cast<double>(n), benchmark::Counter::kIsIterationInvariantRate |
                                  benchmark::Counter::kInvert);
  CheckNoErrors(state, host);
}
BENCHMARK(BM_Load)->Arg(1)->Arg(10)->Arg(100)->Arg(500);

// Heap bytes held by one open headless ticket: a blank form that has taken a tick. The host,
// the message loop, the locale and the holiday calendars are the host's and shared.
void BM_BytesPerTicket(benchmark::State& state) {
  constexpr int kTickets = 50;
  Platform platform;
  QuickHost host;
  {  // the first ticket builds what every ticket shares (the string table, the calendars)
    Clientticket warm(platform.services());
    warm.setHost(&host);
    OpenBlankTicket(warm);
  }
  double perTicket = 0;
  for (auto _ : state) {
    std::vector<std::unique_ptr<Clientticket>> tickets;
    tickets.reserve(kTickets);
    const std::int64_t before = Heap().liveBytes;
    for (int i = 0; i < kTickets; ++i) {
      tickets.push_back(std::make_unique<Clientticket>(platform.services()));
      tickets.back()->setHost(&host);
      OpenBlankTicket(*tickets.back());
      Tick(*tickets.back(), QuickHost::kEurUsd, 1.2345, 1.2350);
    }
    perTicket = static_cast<double>(Heap().liveBytes - before) / kTickets;
    state.PauseTiming();
    tickets.clear();
    state.ResumeTiming();
  }
  state.counters["bytes_per_ticket"] = perTicket;
}
BENCHMARK(BM_BytesPerTicket)->Iterations(3);

}  // namespace
}  // namespace quillon::bench
