// What the benchmarks share: a host that answers at once, a blank EUR/USD ticket, the
// allocation counter, and a probe to the private procedures that stays in this binary.
#pragma once

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "holidays/bank_holidays.h"
#include "platform/date.h"
#include "platform/headless_loop.h"
#include "platform/locale.h"
#include "ticket/ticket_model.h"

namespace quillon {

// Reaches the ticket's private procedures (the class befriends this name). Defined for the
// benchmarks only; the shipped library does not contain it.
struct TicketProbe {
  Clientticket& t;
  Long FindNewInst(Long id, Date value) { return t.Find_New_Inst(id, value); }
  std::string Single(double price, double pip) { return t.Single_Price_As_String(price, pip); }
};

namespace bench {

// Heap use of the whole process, counted by the replaced operator new and delete.
struct HeapCount {
  std::uint64_t allocations;  // calls of operator new so far
  std::int64_t liveBytes;     // bytes allocated and not yet freed (usable sizes)
};
HeapCount Heap();

// A host that answers every question at once from small tables and counts the events.
class QuickHost : public ClientticketEvents {
 public:
  static constexpr Long kEurUsd = 10, kEur = 1, kUsd = 2, kGbpUsd = 20;

  QuickHost();

  std::map<Long, InstrumentRec> instruments;
  std::map<Long, PriceRec> prices;
  std::vector<Long> family;  // the answer of VtInstGetArrayAll
  Long events = 0;           // every event raised
  Long priceLookUps = 0;     // VtPriceGetArray
  Long orders = 0;           // VtOrderGenericNew
  Integer nextGid = 1;

  void CloseTicket() override { ++events; }
  void ErrorMsg(Long&, std::string&, std::string&) override { ++events; ++errors; }
  void GID(Integer& gid) override {
    ++events;
    gid = nextGid++;
    if (nextGid > 30000) nextGid = 1;
  }
  void Connected(Boolean& connected) override {
    ++events;
    connected = true;
  }
  void VtInstGetArray(Long& InstrumentID, Long& BaseID, Long& ValueID, Long& LinkID,
                      Long& SourceID, Integer& InstType, Integer& Term, std::string& ShortDesc,
                      std::string& LongDesc, Long& ContractSize, Date& Expiry, double& Pip,
                      double& Strike, Integer& Status, Integer& CallPut,
                      Date& ValueDate) override;
  void VtInstGetArrayAll(Long&, Long&, Long& LinkID, Long&, Integer&, Integer&, Date&, Integer&,
                         Variant& InstrumentIDArray, Variant&, Variant&, Variant&, Variant&,
                         Boolean& bSuccess) override;
  void VtOrderGenericNew(Long, Long, Long, Long, double, Long, double, Long, Date, Date, Date,
                         Long, Long, Integer, Integer, Long, Boolean, Long, std::string, Long,
                         Integer, Long, Long, Integer) override {
    ++events;
    ++orders;
  }
  void VtPriceGenericRequest(Long, Long, Long) override { ++events; }
  void VtPriceGetArray(Long InstrumentID, Long SourceID, Long& CounterpartyID, double& Bid,
                       double& Offer, double& High, double& Low, Long& PriceType,
                       Date& PriceTime, Long& PriceProfileID) override;
  // The host's clock, whatever the loop's: 10:00 on 1 March 2001, the trade date of the
  // settlement roads.
  void SystemTime(Date& now) override {
    ++events;
    now = DateSerial(2001, 3, 1) + TimeSerial(10, 0, 0);
  }
  void RequestEquity(Long&, Long&) override { ++events; }
  void ResizeTicket(Integer&) override { ++events; }
  void Message(std::string) override { ++events; }

  Long errors = 0;  // ErrorMsg: a benchmark whose road reports an error measures the wrong road
};

// The services one host gives all its tickets: a message loop, the locale, bank holidays.
struct Platform {
  HeadlessLoop loop;
  Locale locale = Locale::ByName("en_US");
  BankHolidays holidays;
  Platform();
  TicketServices services() {
    TicketServices s;
    s.loop = &loop;
    s.locale = &locale;
    s.holidays = &holidays;
    return s;
  }
};

// Account 1 "Main" with the price profile given (-1: raw ticks), English, every right, and a
// blank market order form for `instrument`.
void OpenBlankTicket(Clientticket& ticket, Long priceProfile = -1,
                     Long instrument = QuickHost::kEurUsd);

// Initialise with Status -1: a blank market order form for `instrument`.
void InitialiseBlank(Clientticket& ticket, Long instrument = QuickHost::kEurUsd);

// A market that moves: each tick a bid and an offer five pips above it, walking over 101
// distinct prices so that no tick repeats one of the last hundred.
class MovingMarket {
 public:
  struct Quote {
    double bid, offer;
  };
  MovingMarket() {
    for (int k = 0; k < kPrices; ++k) {
      bids_[k] = std::round((1.2300 + 0.0001 * k) * 1e4) / 1e4;
      offers_[k] = std::round((1.2305 + 0.0001 * k) * 1e4) / 1e4;
    }
  }
  Quote next() {
    next_ = (next_ + 37) % kPrices;  // 37 and 101 have no common divisor: every price in turn
    return {bids_[next_], offers_[next_]};
  }

 private:
  static constexpr int kPrices = 101;
  double bids_[kPrices];
  double offers_[kPrices];
  int next_ = 0;
};

// A benchmark whose road reported an error measures the wrong road.
inline void CheckNoErrors(benchmark::State& state, const QuickHost& host) {
  if (host.errors != 0) state.SkipWithError("the road reported an error");
}

// One tick through the public door.
inline void Tick(Clientticket& ticket, Long instrument, double bid, double offer) {
  Long counterparty = 0, type = PRICE_TRADED, source = 0;
  Date time = 0;
  ticket.PriceGeneric(instrument, counterparty, bid, offer, type, source, time);
}

// Get_Settlement_Day with the TARGET and Federal Reserve calendars for EUR and USD, for a trade
// on 1 March 2001, at the host's clock before the day's end (17:00), and a value code: kNoDate for spot. `turn` runs
// after each call (one turn of Qt's loop with the view attached).
template <typename Turn>
void SettlementRoad(benchmark::State& state, Clientticket& ticket, const QuickHost& host,
                    Date code, Turn turn) {
  ticket.setTradingDayEnd(TimeSerial(17, 0, 0));
  const Date trade = DateSerial(2001, 3, 1);
  Long instrument = QuickHost::kEurUsd;
  for (auto _ : state) {
    Date tradeDate = trade, forward = code;
    benchmark::DoNotOptimize(ticket.Get_Settlement_Day(tradeDate, forward, instrument));
    turn();
  }
  CheckNoErrors(state, host);
}

// Find_New_Inst over a family of ten EUR/USD forwards whose last member is the one that
// settles on the one-year date, so the search settles every member. `turn` as above.
template <typename Turn>
void FindNewInstRoad(benchmark::State& state, Clientticket& ticket, QuickHost& host, Turn turn) {
  ticket.setTradingDayEnd(TimeSerial(17, 0, 0));
  constexpr Long kParent = 100;
  auto add = [&](Long id, Long link, Integer term, Date code) {
    InstrumentRec r;
    r.InstrumentID = id;
    r.ShortDesc = r.LongDesc = "EUR/USD " + std::to_string(id);
    r.BaseID = QuickHost::kEur;
    r.ValueID = QuickHost::kUsd;
    r.LinkID = link;
    r.Term = term;
    r.ValueDate = code;
    r.Pip = 0.0001;
    r.ContractSize = 100000;
    host.instruments[id] = r;
  };
  add(kParent, 0, 2, kNoDate);
  const Date codes[] = {DateSerial(1990, 1, 8), DateSerial(1990, 1, 15), DateSerial(1990, 1, 22),
                        DateSerial(1990, 2, 1), DateSerial(1990, 3, 1),  DateSerial(1990, 4, 1),
                        DateSerial(1990, 7, 1), DateSerial(1990, 10, 1), kNoDate,
                        DateSerial(1991, 1, 1)};
  for (Long i = 0; i < 10; ++i) {
    const Long id = kParent + 1 + i;
    add(id, kParent, i == 8 ? 11 : 7, codes[i]);
    host.family.push_back(id);
  }
  Date tradingDay = DateSerial(2001, 3, 1);  // the host's day
  Date oneYear = DateSerial(1991, 1, 1);
  Long parent = kParent;
  const Date target = ticket.Get_Settlement_Day(tradingDay, oneYear, parent);
  TicketProbe probe{ticket};
  if (probe.FindNewInst(kParent, target) != kParent + 10) {
    state.SkipWithError("the search did not find the one-year forward");
    return;
  }
  for (auto _ : state) {
    benchmark::DoNotOptimize(probe.FindNewInst(kParent, target));
    turn();
  }
  CheckNoErrors(state, host);
}

}  // namespace bench
}  // namespace quillon
