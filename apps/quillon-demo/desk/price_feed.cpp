#include "price_feed.h"

#include <algorithm>
#include <cmath>

namespace quillon::demo {
namespace {

constexpr double kMsPerDay = 86400000.0;

std::int64_t ToMs(Date d) { return static_cast<std::int64_t>(std::llround(d * kMsPerDay)); }
Date FromMs(std::int64_t ms) { return static_cast<double>(ms) / kMsPerDay; }
double PipsPerUnit(double pip) { return std::round(1.0 / pip); }

struct Start {
  Long id;
  double bid;
  int spreadPips;
};
constexpr Start kStarts[] = {
    {ids::kEURUSD, 1.0842, 2}, {ids::kGBPUSD, 1.2710, 3}, {ids::kUSDJPY, 151.35, 2},
    {ids::kUSDCHF, 0.8820, 3}, {ids::kEURGBP, 0.8530, 2}, {ids::kAUDUSD, 0.6550, 3},
};

}  // namespace

PriceFeed::PriceFeed(const InstrumentBook& book, std::uint64_t seed, Date start)
    : book_(book), random_(seed), nowMs_(ToMs(start)), now_(start) {
  for (const Start& s : kStarts) {
    const InstrumentRec* inst = book_.find(s.id);
    if (!inst) continue;
    Walk w;
    w.pip = inst->Pip;
    w.bidPips = std::llround(s.bid * PipsPerUnit(w.pip));
    w.spreadPips = s.spreadPips;
    w.high = w.low = w.bidPips;
    w.nextMs = nowMs_ + nextInterval();
    walks_[s.id] = w;
  }
}

std::int64_t PriceFeed::nextInterval() { return 200 + static_cast<std::int64_t>(random_() % 400); }

PriceRec PriceFeed::price(Long instrumentID, Long profile) const {
  PriceRec p;
  p.InstrumentID = instrumentID;
  auto it = walks_.find(book_.priceParent(instrumentID));
  if (it == walks_.end()) return p;
  const Walk& w = it->second;
  const double unit = PipsPerUnit(w.pip);
  const long long widen = profile == kProfileWide ? 2 : 0;
  const long long points = book_.forwardPips(instrumentID);
  p.Bid = static_cast<double>(w.bidPips + points - widen) / unit;
  p.Offer = static_cast<double>(w.bidPips + points + w.spreadPips + widen) / unit;
  p.High = static_cast<double>(w.high + points) / unit;
  p.Low = static_cast<double>(w.low + points) / unit;
  p.PriceTime = now_;
  p.PriceType = 2;  // traded
  return p;
}

void PriceFeed::advance(Date now) {
  const std::int64_t limit = ToMs(now);
  if (limit < nowMs_) return;
  for (;;) {
    Long due = 0;
    std::int64_t dueMs = limit + 1;
    for (auto& [id, w] : walks_)
      if (w.nextMs < dueMs) due = id, dueMs = w.nextMs;
    if (due == 0) break;
    tick(due, walks_[due], dueMs);
  }
  nowMs_ = limit;
  now_ = now;
}

void PriceFeed::step() {
  for (auto& [id, w] : walks_) tick(id, w, nowMs_);
}

void PriceFeed::setBid(Long pairID, double bid) {
  auto it = walks_.find(pairID);
  if (it == walks_.end()) return;
  Walk& w = it->second;
  w.bidPips = std::llround(bid * PipsPerUnit(w.pip));
  w.high = std::max(w.high, w.bidPips);
  w.low = std::min(w.low, w.bidPips);
  publish(pairID);
}

void PriceFeed::tick(Long pairID, Walk& w, std::int64_t atMs) {
  if (atMs > nowMs_) nowMs_ = atMs, now_ = FromMs(atMs);
  w.bidPips += static_cast<long long>(random_() % 5) - 2;
  w.high = std::max(w.high, w.bidPips);
  w.low = std::min(w.low, w.bidPips);
  w.nextMs = atMs + nextInterval();
  publish(pairID);
}

void PriceFeed::publish(Long pairID) {
  if (!onTick) return;
  onTick(pairID);
  for (const InstrumentRec& r : book_.all())
    if (r.LinkID == pairID) onTick(r.InstrumentID);
}

}  // namespace quillon::demo
