#include "bench_support.h"

#include <malloc.h>

#include <atomic>
#include <cstdlib>
#include <new>

// The allocation counter: every operator new of the benchmark binary passes here.
namespace {
std::atomic<std::uint64_t> gAllocations{0};
std::atomic<std::int64_t> gLiveBytes{0};

void* Allocate(std::size_t size) {
  void* p = std::malloc(size ? size : 1);
  if (!p) throw std::bad_alloc();
  gAllocations.fetch_add(1, std::memory_order_relaxed);
  gLiveBytes.fetch_add(static_cast<std::int64_t>(malloc_usable_size(p)),
                       std::memory_order_relaxed);
  return p;
}
void Free(void* p) noexcept {
  if (!p) return;
  gLiveBytes.fetch_sub(static_cast<std::int64_t>(malloc_usable_size(p)),
                       std::memory_order_relaxed);
  std::free(p);
}
}  // namespace

void* operator new(std::size_t size) { return Allocate(size); }
void* operator new[](std::size_t size) { return Allocate(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  try {
    return Allocate(size);
  } catch (...) {
    return nullptr;
  }
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
  try {
    return Allocate(size);
  } catch (...) {
    return nullptr;
  }
}
void operator delete(void* p) noexcept { Free(p); }
void operator delete[](void* p) noexcept { Free(p); }
void operator delete(void* p, std::size_t) noexcept { Free(p); }
void operator delete[](void* p, std::size_t) noexcept { Free(p); }
void operator delete(void* p, const std::nothrow_t&) noexcept { Free(p); }
void operator delete[](void* p, const std::nothrow_t&) noexcept { Free(p); }

namespace quillon::bench {

HeapCount Heap() {
  return {gAllocations.load(std::memory_order_relaxed),
          gLiveBytes.load(std::memory_order_relaxed)};
}

namespace {

InstrumentRec Instrument(Long id, std::string shortDesc, double pip, Long base = 0,
                         Long value = 0) {
  InstrumentRec r;
  r.InstrumentID = id;
  r.ShortDesc = shortDesc;
  r.LongDesc = std::move(shortDesc);
  r.Pip = pip;
  r.ContractSize = 100000;
  r.BaseID = base;
  r.ValueID = value;
  return r;
}

PriceRec Price(double bid, double offer) {
  PriceRec p;
  p.Bid = bid;
  p.Offer = offer;
  p.PriceType = PRICE_TRADED;
  return p;
}

}  // namespace

QuickHost::QuickHost() {
  instruments[kEurUsd] = Instrument(kEurUsd, "EUR/USD", 0.0001, kEur, kUsd);
  instruments[kGbpUsd] = Instrument(kGbpUsd, "GBP/USD", 0.0001, 3, kUsd);
  instruments[kEur] = Instrument(kEur, "EUR", 0);
  instruments[kUsd] = Instrument(kUsd, "USD", 0);
  prices[kEurUsd] = Price(1.2345, 1.2350);
  prices[kGbpUsd] = Price(1.4501, 1.4506);
}

void QuickHost::VtInstGetArray(Long& InstrumentID, Long& BaseID, Long& ValueID, Long& LinkID,
                               Long& SourceID, Integer& InstType, Integer& Term,
                               std::string& ShortDesc, std::string& LongDesc,
                               Long& ContractSize, Date& Expiry, double& Pip, double& Strike,
                               Integer& Status, Integer& CallPut, Date& ValueDate) {
  ++events;
  auto it = instruments.find(InstrumentID);
  if (it == instruments.end()) return;
  const InstrumentRec& r = it->second;
  AnswerInstrument(r, BaseID, ValueID, LinkID, SourceID, InstType, Term, ShortDesc, LongDesc,
                   ContractSize, Expiry, Pip, Strike, Status, CallPut, ValueDate);
}

void QuickHost::VtInstGetArrayAll(Long&, Long&, Long& LinkID, Long&, Integer&, Integer&, Date&,
                                  Integer&, Variant& InstrumentIDArray, Variant&, Variant&,
                                  Variant&, Variant&, Boolean& bSuccess) {
  ++events;
  (void)LinkID;
  VariantArray array;
  array.elements.reserve(family.size());
  for (Long id : family) array.elements.push_back(Variant::FromLong(id));
  InstrumentIDArray = Variant::FromArray(std::move(array));
  bSuccess = true;
}

void QuickHost::VtPriceGetArray(Long InstrumentID, Long, Long& CounterpartyID, double& Bid,
                                double& Offer, double& High, double& Low, Long& PriceType,
                                Date& PriceTime, Long&) {
  ++events;
  ++priceLookUps;
  auto it = prices.find(InstrumentID);
  if (it == prices.end()) return;
  const PriceRec& p = it->second;
  CounterpartyID = p.CounterpartyID, Bid = p.Bid, Offer = p.Offer, High = p.High;
  Low = p.Low, PriceType = p.PriceType, PriceTime = p.PriceTime;
}

Platform::Platform() {
  holidays.setCurrency(QuickHost::kEur, "EUR");
  holidays.setCurrency(QuickHost::kUsd, "USD");
}

void OpenBlankTicket(Clientticket& ticket, Long priceProfile, Long instrument) {
  Long account = 1;
  std::string name = "Main";
  ticket.LoadAccount(account, name, priceProfile);
  ticket.setLanguage(1);
  ticket.setAccountType(0x0004 | 0x0400 | 0x0080 | 0x0002);
  ticket.setDealingGateway(42);
  InitialiseBlank(ticket, instrument);
}

void InitialiseBlank(Clientticket& ticket, Long instrument) {
  Long tradeID = 0, orderID = 0, accountID = 1, instrumentID = instrument;
  double quantity = 0, price = 0, strike = 0;
  Long primSec = 0, orderType = MARKET_ORDER, status = ORDER_BLANK, linkID = 0, action = 0;
  Date duration = 0, marketTime = 0, valueDate = 0, expiry = 0;
  Integer reason = 0;
  Long counterparty = 0, dummyLive = 0, systemID = 0, ctrSystemID = 0, profileID = 0;
  std::string freeFormat;
  ticket.Initialise(tradeID, orderID, accountID, instrumentID, quantity, primSec, price,
                    orderType, duration, marketTime, valueDate, status, linkID, action, reason,
                    counterparty, dummyLive, freeFormat, systemID, ctrSystemID, profileID, strike,
                    expiry);
}

}  // namespace quillon::bench
