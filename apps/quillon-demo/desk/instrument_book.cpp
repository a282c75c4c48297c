#include "instrument_book.h"

#include "platform/date.h"

namespace quillon::demo {
namespace {

InstrumentRec Currency(Long id, const std::string& code, const std::string& name, Long size) {
  InstrumentRec r;
  r.InstrumentID = id;
  r.ShortDesc = code;
  r.LongDesc = name;
  r.ContractSize = size;
  return r;
}

InstrumentRec Pair(Long id, Long base, Long value, const std::string& code,
                   const std::string& name, double pip) {
  InstrumentRec r;
  r.InstrumentID = id;
  r.ShortDesc = code;
  r.LongDesc = name;
  r.BaseID = base;
  r.ValueID = value;
  r.Term = kTermSpot;
  r.ValueDate = kNoDate;  // spot
  r.Pip = pip;
  r.ContractSize = 100000;
  return r;
}

// A member of the EUR/USD family: its tenor as years, months and days after spot.
InstrumentRec Forward(Long id, const std::string& tenor, Integer term, int months, int days) {
  InstrumentRec r = Pair(id, ids::kEUR, ids::kUSD, "EUR/USD " + tenor,
                         "Euro vs US Dollar " + tenor, 0.0001);
  r.LinkID = ids::kEURUSD;
  r.Term = term;
  r.ValueDate = DateSerial(1990, 1 + months, 1 + days);
  return r;
}

}  // namespace

InstrumentBook::InstrumentBook() {
  using namespace ids;
  currencies_ = {{kEUR, "EUR"}, {kUSD, "USD"}, {kGBP, "GBP"},
                 {kJPY, "JPY"}, {kCHF, "CHF"}, {kAUD, "AUD"}};
  add(Currency(kEUR, "EUR", "Euro", 100000));
  add(Currency(kUSD, "USD", "US Dollar", 100000));
  add(Currency(kGBP, "GBP", "Pound Sterling", 100000));
  add(Currency(kJPY, "JPY", "Japanese Yen", 10000000));
  add(Currency(kCHF, "CHF", "Swiss Franc", 100000));
  add(Currency(kAUD, "AUD", "Australian Dollar", 100000));
  add(Pair(kEURUSD, kEUR, kUSD, "EUR/USD", "Euro vs US Dollar", 0.0001));
  add(Pair(kGBPUSD, kGBP, kUSD, "GBP/USD", "Sterling vs US Dollar", 0.0001));
  add(Pair(kUSDJPY, kUSD, kJPY, "USD/JPY", "US Dollar vs Yen", 0.01));
  add(Pair(kUSDCHF, kUSD, kCHF, "USD/CHF", "US Dollar vs Swiss Franc", 0.0001));
  add(Pair(kEURGBP, kEUR, kGBP, "EUR/GBP", "Euro vs Sterling", 0.0001));
  add(Pair(kAUDUSD, kAUD, kUSD, "AUD/USD", "Aussie vs US Dollar", 0.0001));
  // The family, in the order the host returns it.
  add(Forward(kEURUSDSpot, "Spot", kTermSpot, 0, 0), 0);
  add(Forward(kEURUSD1W, "1W", kTermForward, 0, 7), 2);
  add(Forward(kEURUSD1M, "1M", kTermForward, 1, 0), 9);
  add(Forward(kEURUSD3M, "3M", kTermForward, 3, 0), 27);
  InstrumentRec broken = Forward(kEURUSDBroken, "Broken Date", kTermBrokenDate, 0, 0);
  add(broken, 15);
}

void InstrumentBook::add(InstrumentRec rec, int pips) {
  instruments_.push_back(std::move(rec));
  forwardPips_.push_back(pips);
}

const InstrumentRec* InstrumentBook::find(Long id) const {
  for (const auto& r : instruments_)
    if (r.InstrumentID == id) return &r;
  return nullptr;
}

std::vector<Long> InstrumentBook::pairs() const {
  std::vector<Long> out;
  for (const auto& r : instruments_)
    if (r.BaseID != 0 && r.LinkID == 0) out.push_back(r.InstrumentID);
  return out;
}

Long InstrumentBook::priceParent(Long id) const {
  const InstrumentRec* r = find(id);
  return r && r->LinkID != 0 ? r->LinkID : id;
}

int InstrumentBook::forwardPips(Long id) const {
  for (std::size_t i = 0; i < instruments_.size(); ++i)
    if (instruments_[i].InstrumentID == id) return forwardPips_[i];
  return 0;
}

std::vector<Long> InstrumentBook::match(Long baseID, Long valueID, Long linkID, Long sourceID,
                                        Integer instType, Integer term, Date expiry,
                                        Integer status) const {
  std::vector<Long> out;
  for (const auto& r : instruments_) {
    if (baseID != 0 && r.BaseID != baseID) continue;
    if (valueID != 0 && r.ValueID != valueID) continue;
    if (linkID != 0 && r.LinkID != linkID) continue;
    if (sourceID != 0 && r.SourceID != sourceID) continue;
    if (instType != 0 && r.InstType != instType) continue;
    if (term != 0 && r.Term != term) continue;
    if (expiry != 0 && r.Expiry != expiry) continue;
    if (status != 0 && r.Status != status) continue;
    out.push_back(r.InstrumentID);
  }
  return out;
}

Variant LongArray(const std::vector<Long>& values) {
  VariantArray array;
  array.lowerBound = 0;
  for (Long v : values) array.elements.push_back(Variant::FromLong(v));
  return Variant::FromArray(std::move(array));
}

}  // namespace quillon::demo
