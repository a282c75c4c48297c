// A recording host and a fixture that drives one ticket on a virtual clock.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <tuple>
#include <vector>

#include "platform/date.h"
#include "platform/headless_loop.h"
#include "platform/locale.h"
#include "platform/number_format.h"
#include "ticket/ticket_model.h"

namespace quillon {

// Reaches the ticket's private procedures for tests.
struct TicketProbe {
  Clientticket& t;
  TicketMembers& m() { return t; }
  TicketForm& f() { return t; }
  std::string Single(double price, double pip) { return t.Single_Price_As_String(price, pip); }
  std::string Spread(double bid, double offer, double pip) {
    return t.Spread_Price_As_String(bid, offer, pip);
  }
  std::string ChangeChars(std::string& s, const std::string& find, const std::string& replace) {
    return t.Change_Chars(s, find, replace);
  }
  void Enable(bool on) { t.Enable(on); }
  void SetColour(Long colour, Long edit) { t.Set_Ticket_Colour(colour, edit); }
  InstrumentRec InstGetArray(Long id) { return t.Inst_Get_Array(id); }
  std::string ResString(double n) { return t.LoadResString(n); }
  bool CheckOrder() { return t.Check_Order(); }
  Date TradingDayOf(Date dt) { return t.Trading_Day_Of(dt); }
  Long FindNewInst(Long id, Date value) { return t.Find_New_Inst(id, value); }
  bool InstFamily(Long id, std::vector<Long>& family) { return t.Get_Inst_Family(id, family); }
  void ValueClick() { t.cmdValue_Click(); }
};

// One event as the host saw it: its name and its arguments as text, in order.
struct RecordedEvent {
  std::string name;
  std::vector<std::string> args;
};

// A host that answers from tables and records every event.
class RecordingHost : public ClientticketEvents {
 public:
  std::vector<RecordedEvent> events;
  bool connected = false;
  std::map<Long, InstrumentRec> instruments;
  std::map<Long, PriceRec> prices;
  std::map<Integer, std::string> reasons;
  // Work to run inside the next raise of an event, by name.
  std::map<std::string, std::function<void()>> inside;

  void add(std::string name, std::vector<std::string> args = {}) {
    events.push_back({std::move(name), std::move(args)});
    auto it = inside.find(events.back().name);
    if (it != inside.end()) {
      auto work = std::move(it->second);
      inside.erase(it);
      work();
    }
  }
  std::vector<std::string> names() const {
    std::vector<std::string> out;
    for (const auto& e : events) out.push_back(e.name);
    return out;
  }
  int count(const std::string& name) const {
    return static_cast<int>(std::count_if(events.begin(), events.end(),
                                          [&](const RecordedEvent& e) { return e.name == name; }));
  }
  const RecordedEvent* last(const std::string& name) const {
    for (auto it = events.rbegin(); it != events.rend(); ++it)
      if (it->name == name) return &*it;
    return nullptr;
  }

  // Numbers as the shortest text that reads back the same; arrays as [a,b].
  static std::string S(double v) {
    char buffer[40];
    std::snprintf(buffer, sizeof buffer, "%.15g", v);
    return buffer;
  }
  static std::string S(const Variant& v) {
    if (!v.isArray()) return v.isEmpty() ? "null" : S(v.toDouble());
    std::string out = "[";
    for (const Variant& e : v.array().elements) {
      if (out.size() > 1) out += ",";
      out += e.type() == Variant::Type::String ? e.toString() : S(e.toDouble());
    }
    return out + "]";
  }

  void VtOrderGenericNew(Long ToID, Long OrderID, Long AccountID, Long InstrumentID,
                         double Quantity, Long PrimarySecondaryQty, double Price, Long OrderType,
                         Date Duration, Date MarketTime, Date ValueDate, Long Status, Long LinkID,
                         Integer Action, Integer Reason, Long CounterpartyID, Boolean Encrypt,
                         Long DummyLive, std::string FreeFormat, Long SystemID, Integer GID,
                         Long CounterPartySystemID, Long PriceProfileID,
                         Integer Priority) override {
    add("VtOrderGenericNew",
        {S(ToID), S(OrderID), S(AccountID), S(InstrumentID), S(Quantity), S(PrimarySecondaryQty),
         S(Price), S(OrderType), S(Duration), S(MarketTime), S(ValueDate), S(Status), S(LinkID),
         S(Action), S(Reason), S(CounterpartyID), S(Encrypt), S(DummyLive), FreeFormat,
         S(SystemID), S(GID), S(CounterPartySystemID), S(PriceProfileID), S(Priority)});
  }
  // Rewrites the by-reference members of an OCO pair when set.
  std::function<void(Long& ToID, Long& DummyLive, Boolean& Encrypt)> rewriteOrderArray;
  void VtOrderGenericArray(Long& ToID, Variant& OrderID, Variant& AccountID,
                           Variant& InstrumentID, Variant& Quantity,
                           Variant& PrimarySecondaryQty, Variant& Price, Variant& OrderType,
                           Variant& Duration, Variant& MarketTime, Variant& ValueDate,
                           Variant& Status, Variant& Reason, Variant& CounterpartyID,
                           Variant& FreeFormat, Variant& LinkID, Variant& Action,
                           Variant& SystemID, Variant& CounterPartySystemID,
                           Variant& PriceProfileID, Long& DummyLive, Boolean& Encrypt,
                           Integer& GID, Integer& Priority) override {
    add("VtOrderGenericArray",
        {S(ToID), S(OrderID), S(AccountID), S(InstrumentID), S(Quantity), S(PrimarySecondaryQty),
         S(Price), S(OrderType), S(Duration), S(MarketTime), S(ValueDate), S(Status), S(Reason),
         S(CounterpartyID), S(FreeFormat), S(LinkID), S(Action), S(SystemID),
         S(CounterPartySystemID), S(PriceProfileID), S(DummyLive), S(Encrypt), S(GID),
         S(Priority)});
    if (rewriteOrderArray) rewriteOrderArray(ToID, DummyLive, Encrypt);
  }
  void VtTradeGenericNew(Long ToID, Long TradeID, Long AccountID, Long InstrumentID,
                         double Quantity, Long PrimarySecondaryQty, double Price,
                         Integer TradeType, Date MarketTime, Date ValueDate, Integer Status,
                         Integer Reason, Long OrderID, Long CounterpartyID, Long LinkID,
                         Boolean Encrypt, Long DummyLive, std::string FreeFormat, Long SystemID,
                         Integer GID, Long CounterPartySystemID, Long PriceProfileID,
                         Integer Priority) override {
    add("VtTradeGenericNew",
        {S(ToID), S(TradeID), S(AccountID), S(InstrumentID), S(Quantity), S(PrimarySecondaryQty),
         S(Price), S(TradeType), S(MarketTime), S(ValueDate), S(Status), S(Reason), S(OrderID),
         S(CounterpartyID), S(LinkID), S(Encrypt), S(DummyLive), FreeFormat, S(SystemID), S(GID),
         S(CounterPartySystemID), S(PriceProfileID), S(Priority)});
  }

  void CloseTicket() override { add("CloseTicket"); }
  void ErrorMsg(Long& num, std::string& text, std::string& name) override {
    add("ErrorMsg", {std::to_string(num), text, name});
  }
  void GetReason(Integer reason, std::string& desc) override {
    auto it = reasons.find(reason);
    if (it != reasons.end()) desc = it->second;
    add("GetReason", {std::to_string(reason)});
  }
  // GID hands out 1, 2, 3 ...
  Integer nextGid = 1;
  void GID(Integer& gid) override {
    gid = nextGid++;
    add("GID", {std::to_string(gid)});
  }
  // Answers VtInstGetArrayAll when set: from the query's BaseID, ValueID and LinkID it fills
  // the array of instrument numbers; bSuccess is left as passed.
  std::function<void(Long, Long, Long, Variant&)> instGetArrayAll;
  void VtInstGetArrayAll(Long& BaseID, Long& ValueID, Long& LinkID, Long& SourceID,
                         Integer& InstType, Integer& Term, Date& Expiry, Integer& Status,
                         Variant& InstrumentIDArray, Variant&, Variant&, Variant&, Variant&,
                         Boolean&) override {
    add("VtInstGetArrayAll",
        {std::to_string(BaseID), std::to_string(ValueID), std::to_string(LinkID),
         std::to_string(SourceID), std::to_string(InstType), std::to_string(Term),
         std::to_string(Expiry), std::to_string(Status)});
    if (instGetArrayAll) instGetArrayAll(BaseID, ValueID, LinkID, InstrumentIDArray);
  }
  void Message(std::string message) override { add("Message", {message}); }
  void Connected(Boolean& c) override {
    c = connected;
    add("Connected");
  }
  void VtInstGetArray(Long& InstrumentID, Long& BaseID, Long& ValueID, Long& LinkID,
                      Long& SourceID, Integer& InstType, Integer& Term, std::string& ShortDesc,
                      std::string& LongDesc, Long& ContractSize, Date& Expiry, double& Pip,
                      double& Strike, Integer& Status, Integer& CallPut,
                      Date& ValueDate) override {
    add("VtInstGetArray", {std::to_string(InstrumentID)});
    auto it = instruments.find(InstrumentID);
    if (it == instruments.end()) return;
    AnswerInstrument(it->second, BaseID, ValueID, LinkID, SourceID, InstType, Term, ShortDesc,
                     LongDesc, ContractSize, Expiry, Pip, Strike, Status, CallPut, ValueDate);
  }
  void VtPriceGenericRequest(Long ToID, Long InstrumentID, Long SourceID) override {
    add("VtPriceGenericRequest",
        {std::to_string(ToID), std::to_string(InstrumentID), std::to_string(SourceID)});
  }
  void VtPriceGetArray(Long InstrumentID, Long SourceID, Long& CounterpartyID, double& Bid,
                       double& Offer, double& High, double& Low, Long& PriceType,
                       Date& PriceTime, Long& PriceProfileID) override {
    add("VtPriceGetArray", {std::to_string(InstrumentID), std::to_string(SourceID),
                            std::to_string(PriceProfileID)});
    auto it = prices.find(InstrumentID);
    if (it == prices.end()) return;
    const PriceRec& p = it->second;
    CounterpartyID = p.CounterpartyID, Bid = p.Bid, Offer = p.Offer, High = p.High;
    Low = p.Low, PriceType = p.PriceType, PriceTime = p.PriceTime;
  }
  void SystemTime(Date& t) override { add("SystemTime", {std::to_string(t)}); }
  void RequestEquity(Long& AccountID, Long& InstrumentID) override {
    add("RequestEquity", {std::to_string(AccountID), std::to_string(InstrumentID)});
  }
  void ResizeTicket(Integer& Action) override { add("ResizeTicket", {std::to_string(Action)}); }
};

// A message for Initialise, every argument by name.
struct Msg {
  Long TradeID = 0, OrderID = 0, AccountID = 0, InstrumentID = 0;
  double Quantity = 0;
  Long PrimarySecondaryQty = 0;
  double Price = 0;
  Long OrderType = MARKET_ORDER;
  Date Duration = 0, MarketTime = 0, ValueDate = 0;
  Long Status = -1, LinkID = 0, Action = 0;
  Integer Reason = 0;
  Long CounterpartyID = 0, DummyLive = 0;
  std::string FreeFormat = "";
  Long SystemID = 0, CounterPartySystemID = 0, PriceProfileID = 0;
  double Strike = 0;
  Date Expiry = 0;
};

class TicketTest : public ::testing::Test {
 protected:
  // EUR/USD: instrument 10 on the currencies 1 (EUR) and 2 (USD).
  static constexpr Long kEurUsd = 10, kEur = 1, kUsd = 2, kGbpUsd = 20;

  explicit TicketTest(const std::string& localeName = "en_US")
      : locale_(Locale::ByName(localeName)) {
    ticket_ = std::make_unique<Clientticket>(TicketServices{.loop = &loop_, .locale = &locale_});
    ticket_->setHost(&host_);
    host_.instruments[kEurUsd] = Instrument(kEurUsd, "EUR/USD", "Euro vs US Dollar", 0.0001);
    host_.instruments[kEurUsd].BaseID = kEur;
    host_.instruments[kEurUsd].ValueID = kUsd;
    host_.instruments[kGbpUsd] = Instrument(kGbpUsd, "GBP/USD", "Sterling vs US Dollar", 0.0001);
    host_.instruments[kEur] = Instrument(kEur, "EUR", "Euro", 0);
    host_.instruments[kUsd] = Instrument(kUsd, "USD", "US Dollar", 0);
    host_.prices[kEurUsd] = Price(1.2345, 1.2350);
    host_.prices[kGbpUsd] = Price(1.4501, 1.4506);
  }

  static InstrumentRec Instrument(Long id, std::string shortDesc, std::string longDesc,
                                  double pip) {
    return {.InstrumentID = id, .ShortDesc = std::move(shortDesc),
            .LongDesc = std::move(longDesc), .Pip = pip, .ContractSize = 100000};
  }
  static PriceRec Price(double bid, double offer) { return {.Bid = bid, .Offer = offer}; }

  void Initialise(Msg& m) {
    ticket_->Initialise(m.TradeID, m.OrderID, m.AccountID, m.InstrumentID, m.Quantity,
                        m.PrimarySecondaryQty, m.Price, m.OrderType, m.Duration, m.MarketTime,
                        m.ValueDate, m.Status, m.LinkID, m.Action, m.Reason, m.CounterpartyID,
                        m.DummyLive, m.FreeFormat, m.SystemID, m.CounterPartySystemID,
                        m.PriceProfileID, m.Strike, m.Expiry);
  }
  void Initialise(Msg&& m) { Initialise(m); }

  // Calls a method of the ticket or of a class it derives from, whose parameters are all
  // references, with copies of `args`.
  template <typename C, typename R, typename... P, typename... A>
  R Call(R (C::*method)(P&...), A... args) {
    std::tuple<P...> values(args...);
    return std::apply([&](P&... p) { return (ticket_.get()->*method)(p...); }, values);
  }

  // An execution of a market order on account 1's EUR/USD at 1.2345, as a trade message.
  void Execute(double quantity, Long tradeID, Long primSec = QTY_PRIMARY) {
    Call(&Clientticket::TradeGeneric, 0, tradeID, 1, kEurUsd, quantity, primSec, 1.2345,
         MARKET_ORDER, 0.0, 37320.0, ORDER_EXECUTED, 0, 0, 0, 0, 0, "", 0, false, 0, 0, 0.0, 0.0);
  }

  // A user with every right, in English, and a blank EUR/USD ticket.
  void OpenBlank() {
    ticket_->setLanguage(1);
    ticket_->setAccountType(kEveryRight);
    Initialise(Msg{.InstrumentID = kEurUsd});
  }

  static constexpr Integer kEveryRight = 0x0004 | 0x0400 | 0x0080 | 0x0002;

  // The usual set-up of an order-entry test: account 1 "Main" (profile 0 unless given) loaded,
  // English, the given rights (every right and a live user by default). The captions are
  // translated once, by the first setting of the language: a user of another language is set
  // up in it from the start.
  void SetUpUser(Integer rights = kEveryRight, Integer language = 1, Long profile = 0) {
    Call(&Clientticket::LoadAccount, 1, "Main", profile);
    ticket_->setLanguage(language);
    ticket_->setAccountType(rights);
  }

  // The host connected, and a blank EUR/USD ticket on account 1 for value 05-Mar-2002.
  void OpenBlankForValue() {
    host_.connected = true;
    Initialise(Msg{.AccountID = 1, .InstrumentID = kEurUsd, .ValueDate = 37320});
  }

  // The host connected, and a two-way request for 100,000 EUR vs USD gone out as order 55
  // and active.
  void OpenActiveTwoWay() {
    host_.connected = true;
    Initialise(Msg{.OrderID = 55, .AccountID = 1, .InstrumentID = kEurUsd, .Quantity = 100000,
                   .OrderType = TWOWAY_ORDER, .Duration = kNoDate, .ValueDate = 37320,
                   .Status = ORDER_ACTIVE});
  }

  const TicketMembers& m() const { return ticket_->members(); }
  TicketForm& f() { return ticket_->form(); }
  TicketProbe probe() { return TicketProbe{*ticket_}; }
  Form& form() { return f().controls(); }
  void Click(Control& c) { ASSERT_TRUE(form().userClick(c)) << c.fullName(); }

  HeadlessLoop loop_;
  Locale locale_;
  RecordingHost host_;
  std::unique_ptr<Clientticket> ticket_;
};

}  // namespace quillon
