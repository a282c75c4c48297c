// A simulated price feed: a seeded random walk of every currency pair, a few ticks a second,
// priced under two profiles with different spreads. Time is given, never read: the owner
// drives the feed with advance(now) or step().
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <random>

#include "instrument_book.h"
#include "ticket/records.h"

namespace quillon::demo {

// Price profiles: the spread a client is dealt on.
constexpr Long kProfileStandard = 1;  // the pair's own spread
constexpr Long kProfileWide = 2;      // two pips wider on each side

class PriceFeed {
 public:
  PriceFeed(const InstrumentBook& book, std::uint64_t seed, Date start);

  // The price of an instrument under a profile (an unknown profile counts as standard); a
  // forward family member is its parent's price plus its forward points. All zero for an
  // instrument with no price.
  PriceRec price(Long instrumentID, Long profile) const;
  Date now() const { return now_; }

  // Plays every tick due up to `now`, in time order. A time before the feed's is ignored.
  void advance(Date now);
  // One tick of every pair at the present time.
  void step();
  // Puts a pair's bid (in price units) where a test or the tour wants it, and ticks it.
  void setBid(Long pairID, double bid);

  // Told of each tick: the pair, then each member of its forward family.
  std::function<void(Long instrumentID)> onTick;

 private:
  struct Walk {
    double pip = 0;
    long long bidPips = 0;   // the bid in pips
    int spreadPips = 0;
    long long high = 0, low = 0;
    std::int64_t nextMs = 0;  // when the next tick is due
  };
  void tick(Long pairID, Walk& walk, std::int64_t atMs);
  void publish(Long pairID);
  std::int64_t nextInterval();

  const InstrumentBook& book_;
  std::mt19937_64 random_;
  std::map<Long, Walk> walks_;
  std::int64_t nowMs_;
  Date now_;
};

}  // namespace quillon::demo
