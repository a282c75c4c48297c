// A simulated dealing desk: takes the orders tickets send, and answers each road an order can
// take (acknowledged, pending, filled, cancelled, quoted, refused) as messages addressed to the
// ticket that sent it. Nothing is answered inside the call that brought the order: answers go
// to an outbox that the host delivers on its next step, and the follow-up of an answer (the fill
// after the acknowledgement, the first quote) comes one step later still.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "instrument_book.h"
#include "price_feed.h"
#include "ticket/records.h"

namespace quillon::demo {

// The desk's address: the ticket's DealingGateway, and the sender of every answer.
constexpr Long kDealingGateway = 900;

// Reason codes the desk gives; the host words them (GetReason).
namespace reasons {
constexpr Integer kQuoteExpired = 2;
constexpr Integer kClientCancelled = 6;
constexpr Integer kOcoPartnerDone = 20;
constexpr Integer kQuoteWithdrawn = 21;
}  // namespace reasons

struct Account {
  Long id = 0;
  std::string name;
  Long profile = kProfileStandard;
  bool live = false;
  double equity = 0;        // tradable equity, in US dollars
  double tradingLimit = 0;  // in US dollars
};

// An order as a ticket sends it (the arguments of VtOrderGenericNew, or one leg of an array).
struct OrderRequest {
  Long OrderID = 0, AccountID = 0, InstrumentID = 0;
  double Quantity = 0;
  Long PrimarySecondaryQty = 0;
  double Price = 0;
  Long OrderType = 0;
  Date Duration = 0, MarketTime = 0, ValueDate = 0;
  Long Status = 0, LinkID = 0, Action = 0;
  Integer Reason = 0;
  Long CounterpartyID = 0, DummyLive = 0;
  std::string FreeFormat;
  Long SystemID = 0, CounterPartySystemID = 0, PriceProfileID = 0;
  Integer GID = -1;
};

// One answer for a ticket: which method the host calls, and its arguments (an order's own,
// and those of quotes, trades, acknowledgements and equity).
struct DeskMessage : OrderRequest {
  enum class Kind {
    OrderGeneric,
    OrderGenericCancel,
    OrderGenericPending,
    OrderGenericQuote,
    TradeGeneric,
    GuaranteedMsgAck,
    ReceivedEquity,
  };
  DeskMessage() { GID = 0; }

  Kind kind = Kind::OrderGeneric;
  int ticket = 0;  // the ticket it is for; 0 for every ticket
  Long TradeID = 0;
  double Bid = 0, Offer = 0;
  bool Success = true;
  double Equity = 0, TradingLimit = 0;
};

// How the desk deals on a quote request.
struct QuotePolicy {
  int seconds = 15;           // life of each quote
  int requoteAfter = 5;       // seconds until the desk requotes by itself; 0: never
  int suspendOneIn = 4;       // one automatic requote in this many is a suspension; 0: never
  int suspendSeconds = 3;     // how long a suspension lasts
  double marginPips = 1;      // the dealer's widening of each side
};

// An order the desk holds.
struct DeskOrder {
  OrderRequest request;  // as it came, OrderID aside
  Long orderID = 0;
  int ticket = 0;
  Long status = 0;  // the last status the desk reported
  Long linkID = 0;  // the other leg of an OCO pair
  Long profile = kProfileStandard;
  // Quote requests.
  bool quoteOpen = false, suspended = false;
  double quoteBid = 0, quoteOffer = 0;
  Date quoteExpires = 0, nextRequote = 0, resumeAt = 0;
};

class DealingDesk {
 public:
  DealingDesk(const InstrumentBook& book, PriceFeed& feed, std::uint64_t seed);

  void addAccount(Account account);
  const Account* account(Long id) const;
  const std::vector<Account>& accounts() const { return accounts_; }
  void setEquity(Long accountID, double equity, double tradingLimit);

  // Guaranteed messages fail to arrive while set: the sender learns it from GuaranteedMsgAck
  // and the desk never sees the message.
  void setDeliveryFails(bool fails) { deliveryFails_ = fails; }
  bool deliveryFails() const { return deliveryFails_; }
  QuotePolicy& quotePolicy() { return policy_; }

  // --- What tickets send ---
  void receiveOrder(int ticket, const OrderRequest& request);
  void receiveOcoPair(int ticket, const OrderRequest& limitLeg, const OrderRequest& stopLeg);
  void receiveTrade(int ticket, const OrderRequest& request);
  void requestEquity(int ticket, Long accountID);
  // The ticket is gone: nobody can answer its quotes any more, so they are withdrawn, and so
  // are its quote requests still waiting for their first quote. Its other orders keep working.
  void ticketClosed(int ticket);

  // --- Time and market ---
  // Runs the follow-ups due from the last step and the quote clock.
  void advance(Date now);
  // A price of `instrumentID` moved: working orders on it that the market reaches are filled.
  void onPrice(Long instrumentID);
  // The dealer requotes an open quote, or suspends it; false for an order with none.
  bool requote(Long orderID);
  bool suspendQuote(Long orderID);

  // The answers since the last call, in the order they were made.
  std::vector<DeskMessage> takeOutbox();
  bool hasWork() const { return !outbox_.empty() || !followUps_.empty(); }

  const DeskOrder* order(Long orderID) const;
  const std::map<Long, DeskOrder>& orders() const { return orders_; }

 private:
  // The delivery report of a guaranteed message (GID not -1); false when it was lost.
  bool arrived(int ticket, Integer gid);
  DeskOrder make(int ticket, const OrderRequest& request);
  DeskOrder& open(int ticket, const OrderRequest& request);
  DeskMessage stateOf(const DeskOrder& order, DeskMessage::Kind kind, Long status) const;
  void acknowledge(DeskOrder& order);
  void setPending(Long orderID);
  void fill(DeskOrder& order, double price, double signedQuantity);
  void cancel(DeskOrder& order, Integer reason, DeskMessage::Kind kind);
  void sendQuote(DeskOrder& order, bool suspend);
  void cancelRequest(DeskOrder& order);
  void clientAnswer(DeskOrder& order, const OrderRequest& answer);
  bool reached(const DeskOrder& order, const PriceRec& price, double& fillPrice) const;
  // Whether the order deals at the offer: buying the primary currency or selling the other.
  static bool dealsAtOffer(double quantity, Long primSec);
  double usdValue(Long currencyID, double amount) const;
  // The order's amount in US dollars at the present market, and the equity it binds.
  double notionalUsd(const OrderRequest& order) const;
  double margin(const OrderRequest& order) const;
  void later(std::function<void()> work) { followUps_.push_back(std::move(work)); }
  void post(DeskMessage m) { outbox_.push_back(std::move(m)); }
  void postEquity(int ticket, const Account& account);

  const InstrumentBook& book_;
  PriceFeed& feed_;
  std::mt19937_64 random_;
  QuotePolicy policy_;
  std::vector<Account> accounts_;
  std::map<Long, DeskOrder> orders_;
  std::vector<DeskMessage> outbox_;
  std::deque<std::function<void()>> followUps_;
  bool deliveryFails_ = false;
  Long nextOrderID_ = 1001;
  Long nextTradeID_ = 5001;
  Date now_ = 0;
};

}  // namespace quillon::demo
