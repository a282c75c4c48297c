#include "demo_host.h"

#include <algorithm>

#include "platform/date.h"

namespace quillon::demo {
namespace {

using Args = std::vector<std::pair<std::string, std::string>>;

std::string N(double v) { return NumberText(v); }

// Market, quote and pending orders; the live bit for a live account.
Integer accountType(const Account& account) {
  return static_cast<Integer>(0x0004 | 0x0400 | 0x0080 | (account.live ? 0x0002 : 0));
}

}  // namespace

void GuardedLoop::yield() {
  ++depth_;
  try {
    inner_.yield();
  } catch (...) {
    --depth_;
    throw;
  }
  --depth_;
}

// The listener of one ticket: logs each event, answers the questions, routes orders to the
// desk. Questions are logged after the answer, so that their arguments show it.
class DemoHost::TicketLine : public ClientticketEvents {
 public:
  TicketLine(DemoHost& host, int id) : host_(host), id_(id) {}

  void CloseTicket() override {
    Busy busy(host_);
    log("CloseTicket", {});
    if (host_.onCloseRequested)
      host_.onCloseRequested(id_);
    else
      host_.closeTicket(id_);
  }
  void ErrorMsg(Long& num, std::string& text, std::string& name) override {
    log("ErrorMsg", {{"ErrorNum", N(num)}, {"ErrorString", QuotedText(text)},
                     {"FunctionName", QuotedText(name)}});
  }
  void GetReason(Integer reason, std::string& desc) override {
    auto slot = host_.tickets_.find(id_);
    desc = reasonText(reason, slot == host_.tickets_.end() ? 1 : slot->second.language);
    log("GetReason", {{"Reason", N(reason)}, {"ReasonDesc", QuotedText(desc)}}, true);
  }
  void GID(Integer& gid) override {
    gid = host_.nextGid();
    log("GID", {{"GID", N(gid)}}, true);
  }
  void Message(std::string message) override {
    Busy busy(host_);
    log("Message", {{"Message", QuotedText(message)}});
    if (host_.onMessage) host_.onMessage(id_, message);
  }
  void VtInstGetArrayAll(Long& BaseID, Long& ValueID, Long& LinkID, Long& SourceID,
                         Integer& InstType, Integer& Term, Date& Expiry, Integer& Status,
                         Variant& InstrumentIDArray, Variant& BaseIDArray, Variant& ValueIDArray,
                         Variant& LinkIDArray, Variant& SourceIDArray, Boolean& bSuccess) override {
    const std::vector<Long> found =
        host_.book_.match(BaseID, ValueID, LinkID, SourceID, InstType, Term, Expiry, Status);
    std::vector<Long> bases, values, links, sources;
    for (Long id : found) {
      const InstrumentRec* r = host_.book_.find(id);
      bases.push_back(r->BaseID), values.push_back(r->ValueID);
      links.push_back(r->LinkID), sources.push_back(r->SourceID);
    }
    InstrumentIDArray = LongArray(found);
    BaseIDArray = LongArray(bases);
    ValueIDArray = LongArray(values);
    LinkIDArray = LongArray(links);
    SourceIDArray = LongArray(sources);
    bSuccess = !found.empty();
    log("VtInstGetArrayAll",
        {{"BaseID", N(BaseID)}, {"ValueID", N(ValueID)}, {"LinkID", N(LinkID)},
         {"SourceID", N(SourceID)}, {"InstType", N(InstType)}, {"Term", N(Term)},
         {"Expiry", N(Expiry)}, {"Status", N(Status)},
         {"InstrumentIDArray", VariantText(InstrumentIDArray)}, {"bSuccess", BoolText(bSuccess)}},
        true);
  }
  void Connected(Boolean& connected) override {
    connected = host_.connected_;
    log("Connected", {{"Connected", BoolText(connected)}}, true);
  }
  void VtInstGetArray(Long& InstrumentID, Long& BaseID, Long& ValueID, Long& LinkID,
                      Long& SourceID, Integer& InstType, Integer& Term, std::string& ShortDesc,
                      std::string& LongDesc, Long& ContractSize, Date& Expiry, double& Pip,
                      double& Strike, Integer& Status, Integer& CallPut, Date& ValueDate) override {
    if (const InstrumentRec* r = host_.book_.find(InstrumentID)) {
      AnswerInstrument(*r, BaseID, ValueID, LinkID, SourceID, InstType, Term, ShortDesc, LongDesc,
                       ContractSize, Expiry, Pip, Strike, Status, CallPut, ValueDate);
    }
    log("VtInstGetArray", {{"InstrumentID", N(InstrumentID)}, {"ShortDesc", QuotedText(ShortDesc)},
                           {"Term", N(Term)}, {"Pip", N(Pip)}, {"ContractSize", N(ContractSize)}},
        true);
  }
  void VtOrderGenericNew(Long ToID, Long OrderID, Long AccountID, Long InstrumentID,
                         double Quantity, Long PrimarySecondaryQty, double Price, Long OrderType,
                         Date Duration, Date MarketTime, Date ValueDate, Long Status, Long LinkID,
                         Integer Action, Integer Reason, Long CounterpartyID, Boolean Encrypt,
                         Long DummyLive, std::string FreeFormat, Long SystemID, Integer GID,
                         Long CounterPartySystemID, Long PriceProfileID,
                         Integer Priority) override {
    Busy busy(host_);
    log("VtOrderGenericNew",
        {{"ToID", N(ToID)}, {"OrderID", N(OrderID)}, {"AccountID", N(AccountID)},
         {"InstrumentID", N(InstrumentID)}, {"Quantity", N(Quantity)},
         {"PrimarySecondaryQty", N(PrimarySecondaryQty)}, {"Price", N(Price)},
         {"OrderType", N(OrderType)}, {"Duration", DateText(Duration)},
         {"MarketTime", DateText(MarketTime)}, {"ValueDate", DateText(ValueDate)},
         {"Status", N(Status)}, {"LinkID", N(LinkID)}, {"Action", N(Action)},
         {"Reason", N(Reason)}, {"CounterpartyID", N(CounterpartyID)},
         {"Encrypt", BoolText(Encrypt)}, {"DummyLive", N(DummyLive)},
         {"FreeFormat", QuotedText(FreeFormat)}, {"SystemID", N(SystemID)}, {"GID", N(GID)},
         {"CounterPartySystemID", N(CounterPartySystemID)},
         {"PriceProfileID", N(PriceProfileID)}, {"Priority", N(Priority)}});
    if (ToID != kDealingGateway) return;  // nobody listens there
    OrderRequest r;
    r.OrderID = OrderID, r.AccountID = AccountID, r.InstrumentID = InstrumentID;
    r.Quantity = Quantity, r.PrimarySecondaryQty = PrimarySecondaryQty, r.Price = Price;
    r.OrderType = OrderType, r.Duration = Duration, r.MarketTime = MarketTime;
    r.ValueDate = ValueDate, r.Status = Status, r.LinkID = LinkID, r.Action = Action;
    r.Reason = Reason, r.CounterpartyID = CounterpartyID, r.DummyLive = DummyLive;
    r.FreeFormat = FreeFormat, r.SystemID = SystemID, r.GID = GID;
    r.CounterPartySystemID = CounterPartySystemID, r.PriceProfileID = PriceProfileID;
    host_.desk_.receiveOrder(id_, r);
  }
  void VtOrderGenericArray(Long& ToID, Variant& OrderID, Variant& AccountID,
                           Variant& InstrumentID, Variant& Quantity, Variant& PrimarySecondaryQty,
                           Variant& Price, Variant& OrderType, Variant& Duration,
                           Variant& MarketTime, Variant& ValueDate, Variant& Status,
                           Variant& Reason, Variant& CounterpartyID, Variant& FreeFormat,
                           Variant& LinkID, Variant& Action, Variant& SystemID,
                           Variant& CounterPartySystemID, Variant& PriceProfileID,
                           Long& DummyLive, Boolean& Encrypt, Integer& GID,
                           Integer& Priority) override {
    Busy busy(host_);
    log("VtOrderGenericArray",
        {{"ToID", N(ToID)}, {"OrderID", VariantText(OrderID)},
         {"AccountID", VariantText(AccountID)}, {"InstrumentID", VariantText(InstrumentID)},
         {"Quantity", VariantText(Quantity)},
         {"PrimarySecondaryQty", VariantText(PrimarySecondaryQty)},
         {"Price", VariantText(Price)}, {"OrderType", VariantText(OrderType)},
         {"Duration", VariantText(Duration)}, {"MarketTime", VariantText(MarketTime)},
         {"ValueDate", VariantText(ValueDate)}, {"Status", VariantText(Status)},
         {"Reason", VariantText(Reason)}, {"CounterpartyID", VariantText(CounterpartyID)},
         {"FreeFormat", VariantText(FreeFormat)}, {"LinkID", VariantText(LinkID)},
         {"Action", VariantText(Action)}, {"SystemID", VariantText(SystemID)},
         {"CounterPartySystemID", VariantText(CounterPartySystemID)},
         {"PriceProfileID", VariantText(PriceProfileID)}, {"DummyLive", N(DummyLive)},
         {"Encrypt", BoolText(Encrypt)}, {"GID", N(GID)}, {"Priority", N(Priority)}});
    if (ToID != kDealingGateway) return;
    try {
      OrderRequest legs[2];
      for (int i = 0; i < 2; ++i) {
        const Long e = OrderID.lbound() + i;  // the legs are elements 1 and 2
        OrderRequest& r = legs[i];
        r.OrderID = OrderID.at(e).toLong(), r.AccountID = AccountID.at(e).toLong();
        r.InstrumentID = InstrumentID.at(e).toLong(), r.Quantity = Quantity.at(e).toDouble();
        r.PrimarySecondaryQty = PrimarySecondaryQty.at(e).toLong();
        r.Price = Price.at(e).toDouble(), r.OrderType = OrderType.at(e).toLong();
        r.Duration = Duration.at(e).toDouble(), r.MarketTime = MarketTime.at(e).toDouble();
        r.ValueDate = ValueDate.at(e).toDouble(), r.Status = Status.at(e).toLong();
        r.Reason = static_cast<Integer>(Reason.at(e).toLong());
        r.CounterpartyID = CounterpartyID.at(e).toLong();
        r.FreeFormat = FreeFormat.at(e).toString(), r.LinkID = LinkID.at(e).toLong();
        r.Action = Action.at(e).toLong(), r.SystemID = SystemID.at(e).toLong();
        r.CounterPartySystemID = CounterPartySystemID.at(e).toLong();
        r.PriceProfileID = PriceProfileID.at(e).toLong();
        r.DummyLive = DummyLive, r.GID = GID;
      }
      host_.desk_.receiveOcoPair(id_, legs[0], legs[1]);
    } catch (const RuntimeError&) {
      // A pair the desk cannot read is not dealt; the log shows what came.
    }
  }
  void VtTradeGenericNew(Long ToID, Long TradeID, Long AccountID, Long InstrumentID,
                         double Quantity, Long PrimarySecondaryQty, double Price,
                         Integer TradeType, Date MarketTime, Date ValueDate, Integer Status,
                         Integer Reason, Long OrderID, Long CounterpartyID, Long LinkID,
                         Boolean Encrypt, Long DummyLive, std::string FreeFormat, Long SystemID,
                         Integer GID, Long CounterPartySystemID, Long PriceProfileID,
                         Integer Priority) override {
    Busy busy(host_);
    log("VtTradeGenericNew",
        {{"ToID", N(ToID)}, {"TradeID", N(TradeID)}, {"AccountID", N(AccountID)},
         {"InstrumentID", N(InstrumentID)}, {"Quantity", N(Quantity)},
         {"PrimarySecondaryQty", N(PrimarySecondaryQty)}, {"Price", N(Price)},
         {"TradeType", N(TradeType)}, {"MarketTime", DateText(MarketTime)},
         {"ValueDate", DateText(ValueDate)}, {"Status", N(Status)}, {"Reason", N(Reason)},
         {"OrderID", N(OrderID)}, {"CounterpartyID", N(CounterpartyID)}, {"LinkID", N(LinkID)},
         {"Encrypt", BoolText(Encrypt)}, {"DummyLive", N(DummyLive)},
         {"FreeFormat", QuotedText(FreeFormat)}, {"SystemID", N(SystemID)}, {"GID", N(GID)},
         {"CounterPartySystemID", N(CounterPartySystemID)},
         {"PriceProfileID", N(PriceProfileID)}, {"Priority", N(Priority)}});
    if (ToID != kDealingGateway) return;
    OrderRequest r;
    r.OrderID = OrderID, r.AccountID = AccountID, r.InstrumentID = InstrumentID;
    r.Quantity = Quantity, r.PrimarySecondaryQty = PrimarySecondaryQty, r.Price = Price;
    r.OrderType = TradeType, r.MarketTime = MarketTime, r.ValueDate = ValueDate;
    r.Status = Status, r.Reason = Reason, r.CounterpartyID = CounterpartyID, r.LinkID = LinkID;
    r.DummyLive = DummyLive, r.FreeFormat = FreeFormat, r.SystemID = SystemID, r.GID = GID;
    r.CounterPartySystemID = CounterPartySystemID, r.PriceProfileID = PriceProfileID;
    host_.desk_.receiveTrade(id_, r);
  }
  void VtPriceGenericRequest(Long ToID, Long InstrumentID, Long SourceID) override {
    // Every open ticket gets every tick; the request only goes to the log.
    log("VtPriceGenericRequest",
        {{"ToID", N(ToID)}, {"InstrumentID", N(InstrumentID)}, {"SourceID", N(SourceID)}});
  }
  void VtPriceGetArray(Long InstrumentID, Long SourceID, Long& CounterpartyID, double& Bid,
                       double& Offer, double& High, double& Low, Long& PriceType,
                       Date& PriceTime, Long& PriceProfileID) override {
    const PriceRec p = host_.feed_.price(InstrumentID, PriceProfileID);
    CounterpartyID = kCompanyCtrPty, Bid = p.Bid, Offer = p.Offer, High = p.High, Low = p.Low;
    PriceType = p.PriceType, PriceTime = p.PriceTime;
    log("VtPriceGetArray",
        {{"InstrumentID", N(InstrumentID)}, {"SourceID", N(SourceID)}, {"Bid", N(Bid)},
         {"Offer", N(Offer)}, {"PriceType", N(PriceType)}, {"PriceProfileID", N(PriceProfileID)}},
        true);
  }
  void SystemTime(Date& t) override { log("SystemTime", {{"SystemTime", DateText(t)}}, true); }
  void RequestEquity(Long& AccountID, Long& InstrumentID) override {
    Busy busy(host_);
    log("RequestEquity", {{"AccountID", N(AccountID)}, {"InstrumentID", N(InstrumentID)}});
    // The ticket asks for the equity of the account it trades for, its new one after a switch:
    // whether it trades live goes with that account.
    const Account* account = host_.desk_.account(AccountID);
    Clientticket* ticket = host_.ticket(id_);
    if (account && ticket) ticket->setAccountType(accountType(*account));
    host_.desk_.requestEquity(id_, AccountID);
  }
  void ResizeTicket(Integer& Action) override {
    Busy busy(host_);
    log("ResizeTicket", {{"Action", N(Action)}});
    if (host_.onResize) host_.onResize(id_, Action);
  }

 private:
  void log(const char* event, Args args, bool question = false) {
    host_.log_.add(LogEntry{id_, event, std::move(args), question});
  }

  DemoHost& host_;
  int id_;
};

DemoHost::DemoHost(MessageLoop& loop, HtmlPrinter* printer, std::uint64_t seed,
                   const Locale* locale)
    : guarded_(loop),
      printer_(printer),
      locale_(locale),
      feed_(book_, seed, loop.now()),
      desk_(book_, feed_, seed + 1) {
  for (const CurrencyInfo& c : book_.currencies()) holidays_.setCurrency(c.id, c.iso);
  desk_.addAccount({1, "Mayfair Trading", kProfileStandard, true, 250000, 5000000});
  desk_.addAccount({2, "Practice", kProfileWide, false, 20000, 1000000});
  feed_.onTick = [this](Long id) { pushTick(id); };
}

DemoHost::~DemoHost() {
  feed_.onTick = nullptr;
  tickets_.clear();
}

int DemoHost::openTicket(const TicketOptions& options) {
  const InstrumentRec* inst = book_.find(options.instrumentID);
  const Account* account =
      options.accountID == 0 ? &desk_.accounts().front() : desk_.account(options.accountID);
  if (!inst || inst->BaseID == 0 || !account) return 0;

  Busy busy(*this);
  const int id = nextTicket_++;
  TicketServices services;
  services.loop = &guarded_;
  services.holidays = &holidays_;
  services.printer = printer_;
  Slot& slot = tickets_[id];
  slot.language = options.language == 2 ? 2 : 1;
  services.locale = locale_ ? locale_ : slot.language == 2 ? &german_ : nullptr;
  slot.line = std::make_unique<TicketLine>(*this, id);
  slot.ticket = std::make_unique<Clientticket>(services);
  Clientticket& t = *slot.ticket;
  t.setHost(slot.line.get());
  t.setCompanyName("Halden Bank");
  t.setCompanyCtrPty(kCompanyCtrPty);
  t.setDealingGateway(kDealingGateway);
  t.setPriceRequestGroup(kPriceRequestGroup);
  t.setTradingDayEnd(TimeSerial(17, 0, 0));
  t.setMinOrderSize(1);
  t.setMaxOrderSize(100);
  t.setAccountType(accountType(*account));
  t.setLanguage(slot.language);
  for (const Account& a : desk_.accounts()) {
    Long aid = a.id, profile = a.profile;
    std::string name = a.name;
    t.LoadAccount(aid, name, profile);
  }
  if (options.showValueDateButton) t.form().cmdValue.setVisible(true);

  Date tradeDate = DateOnly(guarded_.now()), spot = kNoDate;
  Long instID = inst->InstrumentID;
  Date valueDate = t.Get_Settlement_Day(tradeDate, spot, instID);

  Long tradeID = 0, orderID = 0, accountID = account->id, instrumentID = inst->InstrumentID;
  double quantity = 0, price = 0, strike = 0;
  Long primSec = QTY_PRIMARY, orderType = MARKET_ORDER, status = -1, linkID = 0, action = 0;
  Date duration = kNoDate, marketTime = guarded_.now(), expiry = 0;
  Integer reason = 0;
  Long counterparty = kCompanyCtrPty, dummyLive = account->live ? LIVE_TRADING : DUMMY_TRADING;
  std::string freeFormat;
  Long systemID = 0, counterpartySystemID = 0, profile = account->profile;
  t.Initialise(tradeID, orderID, accountID, instrumentID, quantity, primSec, price, orderType,
               duration, marketTime, valueDate, status, linkID, action, reason, counterparty,
               dummyLive, freeFormat, systemID, counterpartySystemID, profile, strike, expiry);
  return id;
}

Clientticket* DemoHost::ticket(int id) const {
  auto it = tickets_.find(id);
  return it == tickets_.end() ? nullptr : it->second.ticket.get();
}

std::vector<int> DemoHost::ticketIds() const {
  std::vector<int> out;
  for (const auto& [id, slot] : tickets_) out.push_back(id);
  return out;
}

void DemoHost::closeTicket(int id) {
  if (!tickets_.count(id)) return;
  if (busy()) {
    if (std::find(closing_.begin(), closing_.end(), id) == closing_.end()) closing_.push_back(id);
    return;
  }
  tickets_.erase(id);
  desk_.ticketClosed(id);
}

void DemoHost::closePending() {
  std::vector<int> closing;
  closing.swap(closing_);
  for (int id : closing)
    if (tickets_.erase(id)) desk_.ticketClosed(id);
}

void DemoHost::step() {
  if (busy()) return;
  closePending();
  for (const DeskMessage& m : desk_.takeOutbox()) deliver(m);
  desk_.advance(guarded_.now());
  feed_.advance(guarded_.now());
  closePending();
}

Integer DemoHost::nextGid() {
  gid_ = gid_ >= 32767 ? 1 : static_cast<Integer>(gid_ + 1);
  return gid_;
}

void DemoHost::pushTick(Long instrumentID) {
  if (connected_ && !busy()) {
    const PriceRec p = feed_.price(instrumentID, kProfileStandard);
    for (int id : ticketIds()) {
      Clientticket* t = ticket(id);
      if (!t) continue;
      Busy busy(*this);
      Long inst = instrumentID, counterparty = kCompanyCtrPty, type = 2, source = kCompanyCtrPty;
      double bid = p.Bid, offer = p.Offer;
      Date time = p.PriceTime;
      t->PriceGeneric(inst, counterparty, bid, offer, type, source, time);
    }
  }
  desk_.onPrice(instrumentID);
}

void DemoHost::deliver(const DeskMessage& m) {
  if (m.ticket != 0) {
    if (Clientticket* t = ticket(m.ticket)) deliverTo(*t, m);
    return;
  }
  for (int id : ticketIds())
    if (Clientticket* t = ticket(id)) deliverTo(*t, m);
}

void DemoHost::deliverTo(Clientticket& t, const DeskMessage& msg) {
  Busy busy(*this);
  DeskMessage m = msg;  // every argument goes by reference and may come back changed
  Long from = kDealingGateway;
  Boolean encrypt = false;
  double strike = 0;
  Date expiry = 0;
  using Kind = DeskMessage::Kind;
  logCall(t, m);
  switch (m.kind) {
    case Kind::OrderGeneric:
      t.OrderGeneric(from, m.OrderID, m.AccountID, m.InstrumentID, m.Quantity,
                     m.PrimarySecondaryQty, m.Price, m.OrderType, m.Duration, m.MarketTime,
                     m.ValueDate, m.Status, m.LinkID, m.Action, m.Reason, m.CounterpartyID,
                     m.DummyLive, m.FreeFormat, m.SystemID, encrypt, m.CounterPartySystemID,
                     m.PriceProfileID, strike, expiry);
      break;
    case Kind::OrderGenericCancel:
      t.OrderGenericCancel(from, m.OrderID, m.AccountID, m.InstrumentID, m.Quantity,
                           m.PrimarySecondaryQty, m.Price, m.OrderType, m.Duration, m.MarketTime,
                           m.ValueDate, m.Status, m.Reason, m.CounterpartyID, m.DummyLive,
                           m.FreeFormat, m.SystemID, encrypt, m.CounterPartySystemID,
                           m.PriceProfileID, strike, expiry);
      break;
    case Kind::OrderGenericPending:
      t.OrderGenericPending(from, m.OrderID, m.AccountID, m.InstrumentID, m.Quantity,
                            m.PrimarySecondaryQty, m.Price, m.OrderType, m.Duration,
                            m.MarketTime, m.ValueDate, m.Status, m.LinkID, m.Action, m.Reason,
                            m.CounterpartyID, m.DummyLive, m.FreeFormat, m.SystemID, encrypt,
                            m.CounterPartySystemID, m.PriceProfileID);
      break;
    case Kind::OrderGenericQuote:
      t.OrderGenericQuote(from, m.OrderID, m.AccountID, m.InstrumentID, m.Quantity,
                          m.PrimarySecondaryQty, m.Bid, m.Offer, m.OrderType, m.Duration,
                          m.MarketTime, m.ValueDate, m.Status, m.Reason, m.CounterpartyID,
                          m.DummyLive, m.FreeFormat, m.SystemID, encrypt,
                          m.CounterPartySystemID, m.PriceProfileID, strike, expiry);
      break;
    case Kind::TradeGeneric:
      t.TradeGeneric(from, m.TradeID, m.AccountID, m.InstrumentID, m.Quantity,
                     m.PrimarySecondaryQty, m.Price, m.OrderType, m.MarketTime, m.ValueDate,
                     m.Status, m.Reason, m.OrderID, m.CounterpartyID, m.LinkID, m.DummyLive,
                     m.FreeFormat, m.SystemID, encrypt, m.CounterPartySystemID,
                     m.PriceProfileID, strike, expiry);
      break;
    case Kind::GuaranteedMsgAck: {
      Boolean success = m.Success;
      t.GuaranteedMsgAck(from, m.GID, success);
      break;
    }
    case Kind::ReceivedEquity:
      t.ReceivedEquity(m.AccountID, m.Equity, m.TradingLimit);
      break;
  }
}

void DemoHost::logCall(const Clientticket& t, const DeskMessage& m) {
  int id = 0;
  for (const auto& [n, slot] : tickets_)
    if (slot.ticket.get() == &t) id = n;
  LogEntry e;
  e.ticket = id;
  e.call = true;
  using Kind = DeskMessage::Kind;
  auto& a = e.args;
  switch (m.kind) {
    case Kind::GuaranteedMsgAck:
      e.event = "GuaranteedMsgAck";
      a = {{"GID", N(m.GID)}, {"Success", BoolText(m.Success)}};
      break;
    case Kind::ReceivedEquity:
      e.event = "ReceivedEquity";
      a = {{"Account", N(m.AccountID)}, {"Equity", N(m.Equity)},
           {"TradingLimit", N(m.TradingLimit)}};
      break;
    default:
      e.event = m.kind == Kind::OrderGeneric         ? "OrderGeneric"
                : m.kind == Kind::OrderGenericCancel  ? "OrderGenericCancel"
                : m.kind == Kind::OrderGenericPending ? "OrderGenericPending"
                : m.kind == Kind::OrderGenericQuote   ? "OrderGenericQuote"
                                                      : "TradeGeneric";
      if (m.kind == Kind::TradeGeneric) a.push_back({"TradeID", N(m.TradeID)});
      a.insert(a.end(), {{"OrderID", N(m.OrderID)}, {"AccountID", N(m.AccountID)},
                         {"InstrumentID", N(m.InstrumentID)}, {"Quantity", N(m.Quantity)},
                         {"PrimarySecondaryQty", N(m.PrimarySecondaryQty)}});
      if (m.kind == Kind::OrderGenericQuote)
        a.insert(a.end(), {{"Bid", N(m.Bid)}, {"Offer", N(m.Offer)},
                           {"Duration", DateText(m.Duration)}});
      else
        a.push_back({"Price", N(m.Price)});
      a.insert(a.end(), {{"OrderType", N(m.OrderType)}, {"Status", N(m.Status)},
                         {"LinkID", N(m.LinkID)}, {"Action", N(m.Action)},
                         {"Reason", N(m.Reason)}, {"ValueDate", DateText(m.ValueDate)}});
      break;
  }
  log_.add(std::move(e));
}

std::string DemoHost::reasonText(Integer reason, Integer language) {
  const bool de = language == 2;
  switch (reason) {
    case reasons::kQuoteExpired:
      return de ? "Das Angebot ist abgelaufen." : "The quote has expired.";
    case reasons::kClientCancelled:
      return de ? "Auf Ihren Wunsch storniert." : "Cancelled at your request.";
    case reasons::kOcoPartnerDone:
      return de ? "Storniert: der andere Auftrag des OCO-Paars wurde ausgeführt."
                : "Cancelled: the other order of the OCO pair was done.";
    case reasons::kQuoteWithdrawn:
      return de ? "Der Händler hat das Angebot zurückgezogen." : "The dealer withdrew the quote.";
    case 101:
      return de ? "Die Zustellung ist fehlgeschlagen." : "Delivery failed.";
    default:
      return "";
  }
}

}  // namespace quillon::demo
