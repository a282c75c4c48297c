// The demo's instrument master: currencies, currency pairs and the forward family of EUR/USD.
#pragma once

#include <string>
#include <vector>

#include "platform/variant.h"
#include "ticket/records.h"

namespace quillon::demo {

// Instrument numbers the demo uses. Currencies are instruments of their own: the ticket reads
// their short names and contract sizes, and the holiday library is asked by them.
namespace ids {
constexpr Long kEUR = 1, kUSD = 2, kGBP = 3, kJPY = 4, kCHF = 5, kAUD = 6;
constexpr Long kEURUSD = 101, kGBPUSD = 102, kUSDJPY = 103, kUSDCHF = 104, kEURGBP = 105,
               kAUDUSD = 106;
// The forward family of EUR/USD (linked to kEURUSD).
constexpr Long kEURUSDSpot = 111, kEURUSD1W = 112, kEURUSD1M = 113, kEURUSD3M = 114,
               kEURUSDBroken = 115;
}  // namespace ids

// Terms of the forward search.
constexpr Integer kTermSpot = 2, kTermForward = 7, kTermBrokenDate = 11;

struct CurrencyInfo {
  Long id;
  std::string iso;
};

class InstrumentBook {
 public:
  InstrumentBook();

  // nullptr for an unknown number.
  const InstrumentRec* find(Long id) const;
  const std::vector<InstrumentRec>& all() const { return instruments_; }
  // The currency pairs a user deals (no currencies, no forward members), in display order.
  std::vector<Long> pairs() const;
  const std::vector<CurrencyInfo>& currencies() const { return currencies_; }
  // The parent an instrument's prices come from: its LinkID, or itself.
  Long priceParent(Long id) const;
  // Forward points of a family member, in pips over its parent (0 for everything else).
  int forwardPips(Long id) const;
  // Every instrument whose fields match; 0 in a field is no condition on it.
  std::vector<Long> match(Long baseID, Long valueID, Long linkID, Long sourceID, Integer instType,
                          Integer term, Date expiry, Integer status) const;

 private:
  void add(InstrumentRec rec, int forwardPips = 0);

  std::vector<InstrumentRec> instruments_;
  std::vector<int> forwardPips_;
  std::vector<CurrencyInfo> currencies_;
};

// An array Variant of whole numbers, lower bound 0.
Variant LongArray(const std::vector<Long>& values);

}  // namespace quillon::demo
