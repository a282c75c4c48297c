#include "dealing_desk.h"

#include <cmath>

#include "platform/date.h"

namespace quillon::demo {
namespace {

constexpr double kMarginRate = 0.02;  // share of the notional held against a trade
constexpr Date kSecond = 1.0 / 86400.0;
constexpr Date kHalfMs = kSecond / 2000;  // the clocks' ticks are whole milliseconds

}  // namespace

DealingDesk::DealingDesk(const InstrumentBook& book, PriceFeed& feed, std::uint64_t seed)
    : book_(book), feed_(feed), random_(seed), now_(feed.now()) {}

void DealingDesk::addAccount(Account account) { accounts_.push_back(std::move(account)); }

const Account* DealingDesk::account(Long id) const {
  for (const Account& a : accounts_)
    if (a.id == id) return &a;
  return nullptr;
}

void DealingDesk::setEquity(Long accountID, double equity, double tradingLimit) {
  for (Account& a : accounts_)
    if (a.id == accountID) a.equity = equity, a.tradingLimit = tradingLimit;
}

const DeskOrder* DealingDesk::order(Long orderID) const {
  auto it = orders_.find(orderID);
  return it == orders_.end() ? nullptr : &it->second;
}

std::vector<DeskMessage> DealingDesk::takeOutbox() {
  std::vector<DeskMessage> out;
  out.swap(outbox_);
  return out;
}

// --- What tickets send ---

bool DealingDesk::arrived(int ticket, Integer gid) {
  if (gid == -1) return true;  // not guaranteed: it always arrives
  DeskMessage ack;
  ack.kind = DeskMessage::Kind::GuaranteedMsgAck;
  ack.ticket = ticket;
  ack.GID = gid;
  ack.Success = !deliveryFails_;
  post(ack);
  return !deliveryFails_;
}

void DealingDesk::receiveOrder(int ticket, const OrderRequest& request) {
  if (!arrived(ticket, request.GID)) return;
  if (request.OrderID == 0) {
    if (request.Status != ORDER_PLACED) return;
    DeskOrder& order = open(ticket, request);
    acknowledge(order);
    const Long id = order.orderID;
    switch (request.OrderType) {
      case LIMIT_ORDER:
      case STOPLOSS_ORDER:
        later([this, id] { setPending(id); });
        break;
      case TWOWAY_ORDER:
        later([this, id] {
          auto it = orders_.find(id);
          if (it != orders_.end() && it->second.status == ORDER_ACTIVE) sendQuote(it->second, false);
        });
        break;
      default:  // market, and everything dealt at market
        later([this, id] {
          auto it = orders_.find(id);
          if (it == orders_.end() || it->second.status != ORDER_ACTIVE) return;
          DeskOrder& o = it->second;
          const PriceRec p = feed_.price(o.request.InstrumentID, o.profile);
          fill(o, dealsAtOffer(o.request.Quantity, o.request.PrimarySecondaryQty) ? p.Offer : p.Bid,
               o.request.Quantity);
        });
        break;
    }
    return;
  }
  auto it = orders_.find(request.OrderID);
  if (it == orders_.end()) return;  // not an order of this desk
  DeskOrder& order = it->second;
  switch (request.Status) {
    case ORDER_CANCEL_REQUEST:
      cancelRequest(order);
      break;
    case ORDER_CLIENT_ACCEPTED:
    case ORDER_CLIENT_CANCELLED:
      if (order.quoteOpen)
        clientAnswer(order, request);
      else if (request.Status == ORDER_CLIENT_CANCELLED &&
               (order.status == ORDER_ACTIVE || order.status == ORDER_PENDING))
        cancel(order, reasons::kClientCancelled, DeskMessage::Kind::OrderGenericCancel);
      break;
    default:
      break;
  }
}

void DealingDesk::receiveOcoPair(int ticket, const OrderRequest& limitLeg,
                                 const OrderRequest& stopLeg) {
  DeskOrder& limit = open(ticket, limitLeg);
  DeskOrder& stop = open(ticket, stopLeg);
  limit.linkID = stop.orderID;
  stop.linkID = limit.orderID;
  limit.request.Action = stop.request.Action = ACTION_OCO;
  acknowledge(limit);
  stop.status = ORDER_ACTIVE;
  const Long a = limit.orderID, b = stop.orderID;
  later([this, a, b] {
    setPending(b);
    setPending(a);  // the ticket ends on the limit leg
  });
}

void DealingDesk::receiveTrade(int ticket, const OrderRequest& request) {
  if (!arrived(ticket, request.GID)) return;
  DeskOrder trade = make(ticket, request);
  trade.orderID = trade.request.OrderID = 0;  // a manual trade belongs to no order
  later([this, trade]() mutable { fill(trade, trade.request.Price, trade.request.Quantity); });
}

void DealingDesk::requestEquity(int ticket, Long accountID) {
  if (const Account* a = account(accountID)) postEquity(ticket, *a);
}

void DealingDesk::ticketClosed(int ticket) {
  for (auto& [id, order] : orders_)
    if (order.ticket == ticket && (order.quoteOpen || (order.status == ORDER_ACTIVE &&
                                                       order.request.OrderType == TWOWAY_ORDER)))
      cancel(order, reasons::kClientCancelled, DeskMessage::Kind::OrderGenericCancel);
}

// --- Time and market ---

void DealingDesk::advance(Date now) {
  if (now > now_) now_ = now;
  std::deque<std::function<void()>> due;
  due.swap(followUps_);
  for (auto& work : due) work();

  for (auto& [id, order] : orders_) {
    if (!order.quoteOpen) continue;
    if (order.suspended) {
      if (now_ + kHalfMs >= order.resumeAt) sendQuote(order, false);
      continue;
    }
    if (now_ > order.quoteExpires + 2 * kSecond) {  // the client never answered
      cancel(order, reasons::kQuoteExpired, DeskMessage::Kind::OrderGenericCancel);
      continue;
    }
    if (policy_.requoteAfter > 0 && now_ + kHalfMs >= order.nextRequote) {
      const bool suspend = policy_.suspendOneIn > 0 && random_() % policy_.suspendOneIn == 0;
      sendQuote(order, suspend);
    }
  }
}

void DealingDesk::onPrice(Long instrumentID) {
  std::vector<Long> reachedOrders;
  for (auto& [id, order] : orders_) {
    if (order.status != ORDER_PENDING || order.request.InstrumentID != instrumentID) continue;
    double price = 0;
    if (reached(order, feed_.price(instrumentID, order.profile), price))
      reachedOrders.push_back(id);
  }
  for (Long id : reachedOrders) {
    auto it = orders_.find(id);
    if (it == orders_.end() || it->second.status != ORDER_PENDING) continue;
    DeskOrder& order = it->second;
    double price = 0;
    reached(order, feed_.price(instrumentID, order.profile), price);
    if (order.linkID != 0) {
      // One cancels the other: the partner goes first, so the ticket ends on the fill.
      auto partner = orders_.find(order.linkID);
      if (partner != orders_.end() && partner->second.status == ORDER_PENDING)
        cancel(partner->second, reasons::kOcoPartnerDone, DeskMessage::Kind::OrderGeneric);
    }
    fill(order, price, order.request.Quantity);
  }
}

bool DealingDesk::requote(Long orderID) {
  auto it = orders_.find(orderID);
  if (it == orders_.end() || !it->second.quoteOpen) return false;
  sendQuote(it->second, false);
  return true;
}

bool DealingDesk::suspendQuote(Long orderID) {
  auto it = orders_.find(orderID);
  if (it == orders_.end() || !it->second.quoteOpen) return false;
  sendQuote(it->second, true);
  return true;
}

// --- The roads of an order ---

DeskOrder DealingDesk::make(int ticket, const OrderRequest& request) {
  DeskOrder order;
  order.request = request;
  order.orderID = nextOrderID_++;
  order.request.OrderID = order.orderID;
  order.ticket = ticket;
  const Account* a = account(request.AccountID);
  order.profile = a ? a->profile : request.PriceProfileID;
  order.request.DummyLive = a && a->live ? LIVE_TRADING : DUMMY_TRADING;
  return order;
}

DeskOrder& DealingDesk::open(int ticket, const OrderRequest& request) {
  DeskOrder order = make(ticket, request);
  return orders_[order.orderID] = order;
}

DeskMessage DealingDesk::stateOf(const DeskOrder& order, DeskMessage::Kind kind,
                                 Long status) const {
  DeskMessage m;
  static_cast<OrderRequest&>(m) = order.request;
  m.Reason = 0;
  m.GID = 0;
  m.kind = kind;
  m.ticket = order.ticket;
  m.OrderID = order.orderID;
  m.MarketTime = now_;
  m.Status = status;
  m.LinkID = order.linkID;
  m.PriceProfileID = order.profile;
  return m;
}

void DealingDesk::acknowledge(DeskOrder& order) {
  order.status = ORDER_ACTIVE;
  post(stateOf(order, DeskMessage::Kind::OrderGeneric, ORDER_ACTIVE));
}

void DealingDesk::setPending(Long orderID) {
  auto it = orders_.find(orderID);
  if (it == orders_.end() || it->second.status != ORDER_ACTIVE) return;
  it->second.status = ORDER_PENDING;
  post(stateOf(it->second, DeskMessage::Kind::OrderGenericPending, ORDER_PENDING));
  // A limit already through the market fills at once.
  onPrice(it->second.request.InstrumentID);
}

void DealingDesk::fill(DeskOrder& order, double price, double signedQuantity) {
  order.status = ORDER_EXECUTED;
  order.quoteOpen = false;
  DeskMessage m = stateOf(order, DeskMessage::Kind::TradeGeneric, ORDER_EXECUTED);
  m.TradeID = nextTradeID_++;
  m.Price = price;
  m.Quantity = signedQuantity;
  post(m);
  for (Account& a : accounts_) {
    if (a.id != order.request.AccountID) continue;
    OrderRequest dealt = order.request;
    dealt.Quantity = signedQuantity;
    a.equity -= margin(dealt);
    a.tradingLimit -= notionalUsd(dealt);
    postEquity(0, a);
  }
}

void DealingDesk::cancel(DeskOrder& order, Integer reason, DeskMessage::Kind kind) {
  order.status = ORDER_CANCELLED;
  order.quoteOpen = false;
  DeskMessage m = stateOf(order, kind, ORDER_CANCELLED);
  m.Reason = reason;
  post(m);
}

void DealingDesk::sendQuote(DeskOrder& order, bool suspend) {
  const OrderRequest& r = order.request;
  DeskMessage m = stateOf(order, DeskMessage::Kind::OrderGenericQuote, ORDER_QUOTED);
  order.quoteOpen = true;
  order.suspended = suspend;
  if (suspend) {
    order.quoteBid = order.quoteOffer = 0;
    order.resumeAt = now_ + policy_.suspendSeconds * kSecond;
  } else {
    const PriceRec p = feed_.price(r.InstrumentID, order.profile);
    const InstrumentRec* inst = book_.find(r.InstrumentID);
    const double widen = inst ? policy_.marginPips * inst->Pip : 0;
    order.quoteBid = p.Bid - widen;
    order.quoteOffer = p.Offer + widen;
    if (inst && inst->Pip > 0) {  // whole pips
      const double unit = std::round(1.0 / inst->Pip);
      order.quoteBid = std::round(order.quoteBid * unit) / unit;
      order.quoteOffer = std::round(order.quoteOffer * unit) / unit;
    }
    order.quoteExpires = now_ + policy_.seconds * kSecond;
    order.nextRequote = now_ + policy_.requoteAfter * kSecond;
  }
  m.Bid = order.quoteBid;
  m.Offer = order.quoteOffer;
  m.Duration = kNoDate + policy_.seconds * kSecond;
  post(m);
}

void DealingDesk::cancelRequest(DeskOrder& order) {
  if (order.status != ORDER_PENDING) return;  // filled or gone already
  const Account* a = account(order.request.AccountID);
  const double needed = margin(order.request);
  if (a && a->equity < needed) {
    post(stateOf(order, DeskMessage::Kind::OrderGeneric, ORDER_CANCEL_REQUEST_REJECT));
    return;  // the order keeps working
  }
  if (order.linkID != 0) {
    auto partner = orders_.find(order.linkID);
    if (partner != orders_.end() && partner->second.status == ORDER_PENDING)
      cancel(partner->second, reasons::kClientCancelled, DeskMessage::Kind::OrderGeneric);
  }
  cancel(order, reasons::kClientCancelled, DeskMessage::Kind::OrderGenericCancel);
}

void DealingDesk::clientAnswer(DeskOrder& order, const OrderRequest& answer) {
  if (answer.Status == ORDER_CLIENT_CANCELLED) {
    cancel(order, answer.Reason == reasons::kQuoteExpired ? reasons::kQuoteExpired
                                                          : reasons::kClientCancelled,
           DeskMessage::Kind::OrderGenericCancel);
    return;
  }
  if (order.suspended) {
    cancel(order, reasons::kQuoteWithdrawn, DeskMessage::Kind::OrderGenericCancel);
    return;
  }
  const double quoted = answer.Quantity < 0 ? order.quoteBid : order.quoteOffer;
  fill(order, quoted, answer.Quantity);
}

bool DealingDesk::dealsAtOffer(double quantity, Long primSec) {
  return (quantity >= 0) == (primSec == QTY_PRIMARY);
}

bool DealingDesk::reached(const DeskOrder& order, const PriceRec& price, double& fillPrice) const {
  const OrderRequest& r = order.request;
  if (price.Bid == 0 || price.Offer == 0) return false;
  const bool atOffer = dealsAtOffer(r.Quantity, r.PrimarySecondaryQty);
  const double market = atOffer ? price.Offer : price.Bid;
  bool hit = false;
  if (r.OrderType == LIMIT_ORDER) {
    hit = atOffer ? market <= r.Price : market >= r.Price;
    fillPrice = r.Price;
  } else if (r.OrderType == STOPLOSS_ORDER) {
    hit = atOffer ? market >= r.Price : market <= r.Price;
    fillPrice = market;
  }
  return hit;
}

double DealingDesk::usdValue(Long currencyID, double amount) const {
  if (currencyID == ids::kUSD) return amount;
  for (Long pairID : book_.pairs()) {
    const InstrumentRec* pair = book_.find(pairID);
    const PriceRec p = feed_.price(pairID, kProfileStandard);
    const double mid = (p.Bid + p.Offer) / 2;
    if (mid <= 0) continue;
    if (pair->BaseID == currencyID && pair->ValueID == ids::kUSD) return amount * mid;
    if (pair->BaseID == ids::kUSD && pair->ValueID == currencyID) return amount / mid;
  }
  return amount;
}

double DealingDesk::notionalUsd(const OrderRequest& order) const {
  const InstrumentRec* inst = book_.find(order.InstrumentID);
  if (!inst) return 0;
  const double amount = std::fabs(order.Quantity);
  if (order.PrimarySecondaryQty == QTY_PRIMARY) return usdValue(inst->BaseID, amount);
  return usdValue(inst->ValueID, amount);
}

double DealingDesk::margin(const OrderRequest& order) const {
  return kMarginRate * notionalUsd(order);
}

void DealingDesk::postEquity(int ticket, const Account& account) {
  DeskMessage m;
  m.kind = DeskMessage::Kind::ReceivedEquity;
  m.ticket = ticket;
  m.AccountID = account.id;
  m.Equity = std::round(account.equity * 100) / 100;
  m.TradingLimit = std::round(account.tradingLimit * 100) / 100;
  post(m);
}

}  // namespace quillon::demo
