// The ticket driver: a host that answers with whatever the choices say, calls back into the
// ticket from inside its events and from work it posts to the loop, and sometimes destroys
// the ticket there; a user who clicks, types, pastes and spins anything; and the promises
// checked after every step.

#include "ticket_driver.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <functional>
#include <map>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "platform/date.h"
#include "platform/forms.h"
#include "platform/headless_loop.h"
#include "platform/locale.h"
#include "ticket/ticket_model.h"

namespace quillon::fuzz {

std::uint16_t Choices::u16() {
  const std::uint16_t high = byte();
  return static_cast<std::uint16_t>(high << 8 | byte());
}

std::uint32_t Choices::u32() {
  const std::uint32_t high = u16();
  return high << 16 | u16();
}

std::uint8_t RandomChoices::byte() {
  if (left_ == 0) {
    state_ ^= state_ << 13;
    state_ ^= state_ >> 7;
    state_ ^= state_ << 17;
    bits_ = state_;
    left_ = 8;
  }
  const auto b = static_cast<std::uint8_t>(bits_);
  bits_ >>= 8;
  --left_;
  return b;
}

namespace {

// The procedures that report their errors to the host, by the names they report.
const std::set<std::string>& ReportingProcedures() {
  static const std::set<std::string> names = {
      "Check_Price",      "Enable",         "MessageAck",      "LoadAccount",
      "OrderGenericQuote", "ReceivedEquity", "PriceGeneric",    "Change_Chars",
      "Initialise",       "Check_Order",    "VtDbl",           "optBuySell_Click",
      "Single_Price_As_String", "Spread_Price_As_String", "Valid_Value_Date",
      "Find_New_Inst",    "Get_Settlement_Day", "Get_Inst_Family"};
  return names;
}

// QUILLON_DRIVER_TRACE set in the environment prints every step and event, indented by
// nesting: the way to read a finding.
bool Tracing() {
  static const bool on = std::getenv("QUILLON_DRIVER_TRACE") != nullptr;
  return on;
}

// The plain-store properties: only the host's own setting changes them.
struct Stored {
  std::string companyName;
  Long ctrPty = 0, gateway = 0, group = 0;
  Boolean encrypt = false;
  double minSize = 0, maxSize = 0, dayEnd = 0;

  static Stored Of(const Clientticket& t) {
    Stored s;
    s.companyName = t.getCompanyName();
    s.ctrPty = t.getCompanyCtrPty(), s.gateway = t.getDealingGateway();
    s.group = t.getPriceRequestGroup(), s.encrypt = t.getEncrypt();
    s.minSize = t.getMinOrderSize(), s.maxSize = t.getMaxOrderSize();
    s.dayEnd = t.getTradingDayEnd();
    return s;
  }
  bool operator==(const Stored& o) const {
    auto same = [](double a, double b) { return std::memcmp(&a, &b, sizeof a) == 0; };
    return companyName == o.companyName && ctrPty == o.ctrPty && gateway == o.gateway &&
           group == o.group && encrypt == o.encrypt && same(minSize, o.minSize) &&
           same(maxSize, o.maxSize) && same(dayEnd, o.dayEnd);
  }
};

[[noreturn]] void Broken(const std::string& promise) {
  std::fprintf(stderr, "ticket driver: broken promise: %s\n", promise.c_str());
  std::fflush(stderr);
  std::abort();
}

constexpr Long kEurUsd = 10, kEur = 1, kUsd = 2, kGbpUsd = 20, kEurUsdFwd = 30;
constexpr int kMaxNesting = 3;
// A step that yields this often is taken for a walk that does not end.
constexpr std::uint64_t kMaxYieldsPerStep = 2000000;

// Texts a user or a host might send: amounts, prices, markers, separators and odd characters.
const char* const kWords[] = {
    "1000", "1,000.00", "1.000,00", "0", "-", "1.2345", "1,2345", "1e308", "-5", ".", ",",
    "<OrderType=", "2>", "4>", "x1", "\r\n", "ä", "\xe2\x82\xac", "\xf0\x9f\x92\xb6", "   -   ",
    "(1,234.50)", "999999999999", "0.0001", "\t", "&H", "%", "\x80", "\xff"};

}  // namespace

class TicketDriver::Impl : public ClientticketEvents {
 public:
  explicit Impl(Choices& choices) : c_(choices) {}
  ~Impl() override {
    dying_ = true;
    ticket_.reset();
  }

  void step();
  DriverStats stats;

  // --- events ---
  void CloseTicket() override {
    event("CloseTicket");
    // The host destroys the ticket, as the event asks; a careless host now and then does not.
    if (c_.byte() < 230) destroyInside();  // 0, the plain choice, destroys
  }
  void ErrorMsg(Long& num, std::string& text, std::string& name) override {
    event("ErrorMsg");
    ++stats.errorReports;
    if (!ReportingProcedures().count(name)) Broken("ErrorMsg names \"" + name + "\"");
    // Only the price texts and the value-date procedures send the error's text along.
    static const std::set<std::string> withText = {
        "Single_Price_As_String", "Spread_Price_As_String", "Valid_Value_Date",
        "Find_New_Inst", "Get_Settlement_Day", "Get_Inst_Family"};
    if (!withText.count(name) && !text.empty())
      Broken("ErrorMsg from " + name + " carries a text: " + text);
    if (Tracing())
      std::fprintf(stderr, "%*s  %s: %d %s\n", 2 * nesting_ + 2, "", name.c_str(),
                   static_cast<int>(num), text.c_str());
    reported_ = true;
    answerInside();
  }
  void GetReason(Integer, std::string& desc) override {
    event("GetReason");
    if (c_.flag()) desc = text();
    answerInside();
  }
  void GID(Integer& gid) override {
    event("GID");
    switch (c_.pick(4)) {
      case 2: break;  // left as passed
      case 3: gid = static_cast<Integer>(c_.u16()); break;
      default: gid = nextGid_++; break;
    }
    answerInside();
  }
  void Message(std::string) override {
    event("Message");
    answerInside();
  }
  void VtInstGetArrayAll(Long& BaseID, Long& ValueID, Long& LinkID, Long&, Integer&, Integer&,
                         Date&, Integer&, Variant& InstrumentIDArray, Variant& BaseIDArray,
                         Variant&, Variant&, Variant&, Boolean& bSuccess) override {
    event("VtInstGetArrayAll");
    (void)BaseID, (void)ValueID, (void)LinkID;
    if (c_.flag()) {
      VariantArray ids;
      ids.lowerBound = c_.pick(3) == 0 ? static_cast<Long>(c_.u16() % 5) - 2 : 0;
      const std::size_t n = c_.pick(5);
      for (std::size_t i = 0; i < n; ++i) ids.elements.push_back(Variant::FromLong(instrumentId()));
      InstrumentIDArray = Variant::FromArray(ids);
      if (c_.flag()) BaseIDArray = Variant::FromArray(ids);
    } else if (c_.flag()) {
      InstrumentIDArray = Variant::FromString(text());
    }
    bSuccess = c_.byte() < 200;
    answerInside();
  }
  void Connected(Boolean& connected) override {
    event("Connected");
    connected = connectedMode_ == 0 ? true : connectedMode_ == 1 ? false : c_.flag();
    if (connectedAnswer_ == 0) connectedAnswer_ = connected ? 2 : 1;
    answerInside();
  }
  void VtInstGetArray(Long& InstrumentID, Long& BaseID, Long& ValueID, Long& LinkID,
                      Long& SourceID, Integer& InstType, Integer& Term, std::string& ShortDesc,
                      std::string& LongDesc, Long& ContractSize, Date& Expiry, double& Pip,
                      double& Strike, Integer& Status, Integer& CallPut,
                      Date& ValueDate) override {
    event("VtInstGetArray");
    if (c_.byte() >= 240) {
      // Anything at all.
      BaseID = instrumentId(), ValueID = instrumentId(), LinkID = instrumentId();
      InstType = static_cast<Integer>(c_.u16()), Term = static_cast<Integer>(c_.u16());
      ShortDesc = text(), LongDesc = text();
      ContractSize = static_cast<Long>(c_.u32());
      Expiry = number(), Pip = number(), Strike = number(), ValueDate = number();
      Status = static_cast<Integer>(c_.u16()), CallPut = static_cast<Integer>(c_.u16());
      (void)SourceID;
    } else {
      auto it = instruments_.find(InstrumentID);
      if (it != instruments_.end()) {
        const InstrumentRec& r = it->second;
        AnswerInstrument(r, BaseID, ValueID, LinkID, SourceID, InstType, Term, ShortDesc, LongDesc,
                         ContractSize, Expiry, Pip, Strike, Status, CallPut, ValueDate);
      }
    }
    answerInside();
  }
  void VtOrderGenericNew(Long, Long, Long, Long, double, Long, double, Long, Date, Date, Date,
                         Long, Long, Integer, Integer, Long, Boolean, Long, std::string, Long,
                         Integer, Long, Long, Integer) override {
    orderEvent("VtOrderGenericNew");
  }
  void VtOrderGenericArray(Long&, Variant& OrderID, Variant&, Variant&, Variant&, Variant&,
                           Variant&, Variant&, Variant&, Variant&, Variant&, Variant&, Variant&,
                           Variant&, Variant&, Variant&, Variant&, Variant&, Variant&, Variant&,
                           Long&, Boolean&, Integer&, Integer&) override {
    if (!OrderID.isArray() || OrderID.array().elements.size() != 2)
      Broken("an OCO pair does not go out as two legs");
    orderEvent("VtOrderGenericArray");
  }
  void VtTradeGenericNew(Long, Long, Long, Long, double, Long, double, Integer, Date, Date,
                         Integer, Integer, Long, Long, Long, Boolean, Long, std::string, Long,
                         Integer, Long, Long, Integer) override {
    orderEvent("VtTradeGenericNew");
  }
  void VtPriceGenericRequest(Long, Long, Long) override {
    event("VtPriceGenericRequest");
    answerInside();
  }
  void VtPriceGetArray(Long InstrumentID, Long, Long& CounterpartyID, double& Bid, double& Offer,
                       double& High, double& Low, Long& PriceType, Date& PriceTime,
                       Long& PriceProfileID) override {
    event("VtPriceGetArray");
    if (c_.byte() >= 240) {
      CounterpartyID = static_cast<Long>(c_.u32());
      Bid = number(), Offer = number(), High = number(), Low = number();
      PriceType = static_cast<Long>(c_.pick(5));
      PriceTime = number();
      if (c_.flag()) PriceProfileID = static_cast<Long>(c_.u32());
    } else {
      auto it = prices_.find(InstrumentID);
      if (it != prices_.end()) {
        Bid = it->second.Bid, Offer = it->second.Offer;
        PriceType = PRICE_TRADED;
      }
    }
    answerInside();
  }
  void SystemTime(Date& t) override {
    event("SystemTime");
    if (c_.byte() >= 232) t = number();
    answerInside();
  }
  void RequestEquity(Long& AccountID, Long&) override {
    event("RequestEquity");
    if (c_.byte() >= 192 && canReenter()) {
      Long account = c_.flag() ? AccountID : instrumentId();
      double equity = number(), limit = number();
      reenter([&] { ticket_->ReceivedEquity(account, equity, limit); });
    }
    answerInside();
  }
  void ResizeTicket(Integer&) override {
    event("ResizeTicket");
    answerInside();
  }

 private:
  // --- the world the host answers from ---
  void buildWorld();
  void newTicket();
  void openScenario(std::size_t scenario);

  // --- choices ---
  double number();
  std::string text();
  Long instrumentId();
  Long orderId();

  // --- steps ---
  void hostCall();
  void initialiseLike();
  void tick();
  void quote();
  void userAction();
  void clickSomething();
  void checkYes(CommandButton& yes);
  void checkPromises(const char* what);
  void noteState();

  // --- re-entry and destruction ---
  void event(const char* name);
  bool canReenter() const { return ticket_ && nesting_ < kMaxNesting && !dying_; }
  template <typename Call>
  void reenter(Call&& call) {
    if (Tracing())
      std::fprintf(stderr, "%*s>> host calls in\n", 2 * nesting_ + 2, "");
    ++nesting_;
    ++stats.reentries;
    reentered_ = true;
    guarded("a call back into the ticket", call);
    --nesting_;
  }
  void answerInside();
  void answerOrder();
  // An order going out: counted, then perhaps answered from inside the event.
  void orderEvent(const char* name) {
    event(name);
    ++orderEvents_;
    ++stats.orderEvents;
    answerOrder();
  }
  void destroyInside();
  template <typename Call>
  void guarded(const char* what, Call&& call) {
    try {
      call();
    } catch (const std::exception& e) {
      Broken(std::string("an exception left ") + what + ": " + e.what());
    } catch (...) {
      Broken(std::string("an exception left ") + what);
    }
  }

  Choices& c_;
  HeadlessLoop loop_;
  Locale locale_ = Locale::ByName("en_US");
  std::unique_ptr<Clientticket> ticket_;
  std::map<Long, InstrumentRec> instruments_;
  std::map<Long, PriceRec> prices_;
  int connectedMode_ = 0;  // 0 yes, 1 no, 2 as the choices say
  Integer nextGid_ = 1;
  int nesting_ = 0;
  bool reentered_ = false;
  bool looseClock_ = false;
  bool reported_ = false;
  bool propertySet_ = false;  // the host set a property in this step
  Stored stored_;             // the properties before the step
  Long accountsListed_ = 0;   // entries of cmbAccount: loaded accounts are never lost  // an ErrorMsg in this step: a procedure stopped part way  // Timer1 left running without a panel by a re-entered step
  bool dying_ = false;
  int connectedAnswer_ = 0;  // 0 none yet in this step, else 1 + the first answer
  std::uint64_t orderEvents_ = 0;
};

// --- the world ---

void TicketDriver::Impl::buildWorld() {
  auto add = [&](Long id, const char* shortDesc, const char* longDesc, double pip) {
    InstrumentRec r;
    r.InstrumentID = id;
    r.ShortDesc = shortDesc;
    r.LongDesc = longDesc;
    r.Pip = pip;
    r.ContractSize = 100000;
    instruments_[id] = r;
    return &instruments_[id];
  };
  add(kEur, "EUR", "Euro", 0);
  add(kUsd, "USD", "US Dollar", 0);
  InstrumentRec* eurUsd = add(kEurUsd, "EUR/USD", "Euro vs US Dollar", 0.0001);
  eurUsd->BaseID = kEur, eurUsd->ValueID = kUsd;
  InstrumentRec* gbpUsd = add(kGbpUsd, "GBP/USD", "Sterling vs US Dollar", 0.0001);
  gbpUsd->ValueID = kUsd;
  InstrumentRec* forward = add(kEurUsdFwd, "EUR/USD 1M", "Euro vs US Dollar 1M", 0.0001);
  forward->BaseID = kEur, forward->ValueID = kUsd, forward->LinkID = kEurUsd;
  forward->ValueDate = 36981, forward->Term = 1;
  prices_[kEurUsd].Bid = 1.2345, prices_[kEurUsd].Offer = 1.2350;
  prices_[kGbpUsd].Bid = 1.4501, prices_[kGbpUsd].Offer = 1.4506;
  prices_[kEurUsdFwd].Bid = 1.2365, prices_[kEurUsdFwd].Offer = 1.2372;
}

void TicketDriver::Impl::newTicket() {
  if (instruments_.empty()) buildWorld();
  // The first choice of a ticket is where it starts: with a zero tail a seed of one byte k
  // reaches state k by the ordinary road with the plain answers.
  const std::size_t scenario = c_.pick(7);
  if (Tracing()) std::fprintf(stderr, "new ticket, scenario %zu\n", scenario);
  static const char* const kLocales[] = {"en_US", "de_DE", "fr_CH", "en_GB"};
  locale_ = Locale::ByName(kLocales[c_.pick(4)]);
  TicketServices services;
  services.loop = &loop_;
  services.locale = &locale_;
  guarded("the ticket's constructor", [&] { ticket_ = std::make_unique<Clientticket>(services); });
  ticket_->setHost(this);
  ++stats.tickets;
  looseClock_ = false;
  reentered_ = false;
  connectedMode_ = 0;
  guarded("the opening of a ticket", [&] { openScenario(scenario); });
  propertySet_ = true;
  accountsListed_ = 0;
  if (ticket_) checkPromises("the opening of a ticket");
}

// A ticket set up as a host would, then taken to one of the deep states by the ordinary road:
// a blank form, the order statement, an order sent, active, pending, a quote, an execution.
void TicketDriver::Impl::openScenario(std::size_t scenario) {
  // Work the host posted earlier may destroy the ticket at any yield: each call looks afresh.
  auto on = [&](auto&& call) {
    if (ticket_) call(*ticket_);
    return ticket_ != nullptr;
  };
  const auto language = static_cast<Integer>(1 + c_.pick(2));
  on([&](Clientticket& t) { t.setLanguage(language); });
  Integer rights = 0x0004 | 0x0400 | 0x0080 | 0x0002;
  if (c_.byte() >= 224) rights = static_cast<Integer>(c_.u16());
  on([&](Clientticket& t) {
    t.setAccountType(rights);
    t.setDealingGateway(42);
    t.setPriceRequestGroup(7);
  });
  Long id = 1, profile = c_.flag() ? -1 : 0;
  std::string name = "Main";
  on([&](Clientticket& t) { t.LoadAccount(id, name, profile); });
  if (c_.flag()) {
    Long second = 2, noProfile = -1;
    std::string other = "Second";
    on([&](Clientticket& t) { t.LoadAccount(second, other, noProfile); });
  }
  if (!ticket_) return;

  Long tradeID = 0, orderID = 0, account = 1, instrument = kEurUsd, primSec = 0,
       type = MARKET_ORDER, status = ORDER_BLANK, link = 0, action = 0, counterparty = 0,
       dummy = 0, system = 0, cpSystem = 0, priceProfile = 0;
  double quantity = 0, price = 0, strike = 0;
  Date duration = 0, marketTime = 0, valueDate = 37320, expiry = 0;
  Integer reason = 0;
  std::string freeFormat;
  auto initialise = [&] {
    if (!ticket_) return;
    ticket_->Initialise(tradeID, orderID, account, instrument, quantity, primSec, price, type,
                        duration, marketTime, valueDate, status, link, action, reason,
                        counterparty, dummy, freeFormat, system, cpSystem, priceProfile, strike,
                        expiry);
  };
  initialise();
  if (scenario == 0 || !ticket_) return;

  // The host may destroy the ticket inside any of these: each looks afresh.
  const bool twoWay = scenario == 5;
  auto click = [&](auto pickControl) {
    if (!ticket_) return false;
    TicketForm& f = ticket_->form();
    f.controls().userClick(pickControl(f));
    return ticket_ != nullptr;
  };
  if (twoWay && !click([](TicketForm& f) -> Control& { return f.optType(5); })) return;
  if (scenario == 6 && !click([](TicketForm& f) -> Control& { return f.optType(2); })) return;
  const char* amount = c_.flag() ? "1000" : "250000";
  if (!on([&](Clientticket& t) { t.form().controls().userPaste(t.form().txtPrimQty, amount); }))
    return;
  if (!click([](TicketForm& f) -> Control& { return f.cmdOKCancel(0); })) return;
  if (scenario == 1) return;
  if (!click([](TicketForm& f) -> Control& { return f.cmdOKCancel(3); })) return;
  if (scenario == 2) return;

  // The server's first answer is adopted by its status and instrument.
  orderID = 555;
  status = ORDER_ACTIVE;
  quantity = 1000;
  price = 1.2350;
  type = twoWay ? TWOWAY_ORDER : scenario == 6 ? LIMIT_ORDER : MARKET_ORDER;
  duration = kNoDate;
  initialise();
  if (scenario == 3 || !ticket_) return;
  if (scenario == 4 || scenario == 6) {
    status = scenario == 4 ? ORDER_PENDING : ORDER_EXECUTED;
    initialise();
    return;
  }
  // A two-way quote for the request.
  Long from = 0, quoteType = 0, quoteStatus = 16, cp = 9, noSystem = 0, cpSys = 4;
  double bid = 1.2345, offer = 1.2350, strike2 = 0;
  Date seconds = kNoDate + 30.0 / 86400.0, zero = 0, value = 0, expiry2 = 0;
  Integer quoteReason = 8;
  std::string text2;
  Boolean encrypt = false;
  if (ticket_)
    ticket_->OrderGenericQuote(from, orderID, account, instrument, quantity, primSec, bid, offer,
                               quoteType, seconds, zero, value, quoteStatus, quoteReason, cp,
                               dummy, text2, noSystem, encrypt, cpSys, priceProfile, strike2,
                               expiry2);
}

// --- choices ---

double TicketDriver::Impl::number() {
  switch (c_.pick(20)) {
    case 0: return 0;
    case 1: return 1000;
    case 2: return -5000;
    case 3: return 1.2345;
    case 4: return 1.2350;
    case 5: return 1e9;
    case 6: return -1e300;
    case 7: return std::nan("");
    case 8: return HUGE_VAL;
    case 9: return -HUGE_VAL;
    case 10: return kNoDate;
    case 11: return 37320;
    case 12: {
      std::uint64_t bits = static_cast<std::uint64_t>(c_.u32()) << 32 | c_.u32();
      double d;
      std::memcpy(&d, &bits, sizeof d);
      return d;
    }
    case 13: return c_.u16();
    case 14: return 0.0001;
    case 15: return -1;
    case 16: return 36951.5 + c_.pick(200);
    case 17: return 32767.5;
    case 18: return 2147483648.0;
    default: return static_cast<double>(static_cast<std::int32_t>(c_.u32())) / 100.0;
  }
}

std::string TicketDriver::Impl::text() {
  std::string out;
  const std::size_t parts = c_.pick(6);
  for (std::size_t i = 0; i < parts; ++i) {
    if (c_.byte() < 200) {
      out += kWords[c_.pick(std::size(kWords))];
    } else {
      out += static_cast<char>(c_.byte());
    }
  }
  return out;
}

Long TicketDriver::Impl::instrumentId() {
  switch (c_.pick(8)) {
    case 0: case 1: case 2: return kEurUsd;
    case 3: return kGbpUsd;
    case 4: return kEurUsdFwd;
    case 5: return 0;
    case 6: return kEur;
    default: return static_cast<Long>(c_.u32());
  }
}

Long TicketDriver::Impl::orderId() {
  const TicketMembers& m = ticket_->members();
  switch (c_.pick(7)) {
    case 0: return 0;
    case 1: case 2: return m.OrderID;
    case 3: return m.LinkID;
    case 4: return 555;
    case 5: return 55;
    default: return static_cast<Long>(c_.u32());
  }
}

// --- events: what runs inside them ---

void TicketDriver::Impl::event(const char* name) {
  if (Tracing()) {
    const TicketMembers& m = ticket_ ? ticket_->members() : TicketMembers{};
    std::fprintf(stderr, "%*s%s (Status %d)\n", 2 * nesting_ + 2, "", name,
                 static_cast<int>(m.Status));
  }
  if (!ticket_) Broken(std::string("a destroyed ticket raised ") + name);
  if (dying_) return;
}

void TicketDriver::Impl::answerInside() {
  if (!canReenter()) return;
  const std::uint8_t b = c_.byte();
  if (b == 255 && c_.byte() < 32) {
    destroyInside();
  } else if (b >= 246) {
    reenter([&] { hostCall(); });
  } else if (b == 245 && c_.byte() < 64) {
    // A host whose handler fails: its exception goes into the ticket, which must absorb it.
    ++stats.hostFailures;
    throw std::runtime_error("the host's handler failed");
  }
}

// The answer to an order may come while the order is still on its way out.
void TicketDriver::Impl::answerOrder() {
  if (!canReenter()) return;
  const std::uint8_t b = c_.byte();
  if (b >= 252) {
    destroyInside();
  } else if (b >= 176) {
    reenter([&] { initialiseLike(); });
  } else if (b >= 156) {
    reenter([&] {
      Long from = 0;
      Integer gid = ticket_->members().GID;
      Boolean ok = c_.flag();
      ticket_->GuaranteedMsgAck(from, gid, ok);
    });
  }
}

void TicketDriver::Impl::destroyInside() {
  if (!ticket_ || dying_) return;
  if (Tracing())
      std::fprintf(stderr, "%*sxx host destroys the ticket\n", 2 * nesting_ + 2, "");
  ++stats.destroyedInside;
  reentered_ = true;
  ticket_.reset();
}

// --- steps ---

void TicketDriver::Impl::initialiseLike() {
  if (!ticket_) return;
  const TicketMembers& m = ticket_->members();
  Long from = 0, tradeID = c_.flag() ? m.TradeID : static_cast<Long>(c_.u32());
  Long orderID = orderId(), account = c_.byte() < 200 ? 1 : static_cast<Long>(c_.u32());
  Long instrument = instrumentId();
  double quantity = number(), price = number(), strike = number();
  Long primSec = c_.byte() < 200 ? static_cast<Long>(c_.pick(2)) : static_cast<Long>(c_.u32());
  static const Long kTypes[] = {1, 2, 3, 4, 5, 6, 7, 8, 0, -1, 11};
  Long type = kTypes[c_.pick(std::size(kTypes))];
  static const Long kStatuses[] = {-1, 0, 1, 2, 3, 5, 9, 19, 20, 21, 29, 6, 7, 4, 100, -7};
  Long status = kStatuses[c_.pick(std::size(kStatuses))];
  Date duration = c_.flag() ? kNoDate : number(), marketTime = number(), valueDate = number();
  Date expiry = number();
  Long link = c_.flag() ? 0 : orderId();
  Long action = static_cast<Long>(c_.pick(3));
  Integer reason = static_cast<Integer>(c_.byte() < 200 ? c_.pick(8) : c_.u16());
  Long counterparty = static_cast<Long>(c_.pick(10)), dummy = static_cast<Long>(c_.pick(3));
  std::string freeFormat = text();
  if (type == MANUAL_ORDER && c_.flag()) freeFormat = "<OrderType=" + text();
  Long system = static_cast<Long>(c_.pick(5)), cpSystem = 4,
       profile = c_.flag() ? 0 : static_cast<Long>(c_.u32());
  Boolean encrypt = c_.flag();
  const std::size_t method = c_.pick(5);
  if (Tracing())
    std::fprintf(stderr, "%*smessage %zu: order %d status %d type %d instrument %d\n",
                 2 * nesting_ + 2, "", method, static_cast<int>(orderID),
                 static_cast<int>(status), static_cast<int>(type), static_cast<int>(instrument));
  switch (method) {
    case 0:
      ticket_->Initialise(tradeID, orderID, account, instrument, quantity, primSec, price, type,
                          duration, marketTime, valueDate, status, link, action, reason,
                          counterparty, dummy, freeFormat, system, cpSystem, profile, strike,
                          expiry);
      break;
    case 1:
      ticket_->OrderGeneric(from, orderID, account, instrument, quantity, primSec, price, type,
                            duration, marketTime, valueDate, status, link, action, reason,
                            counterparty, dummy, freeFormat, system, encrypt, cpSystem, profile,
                            strike, expiry);
      break;
    case 2:
      ticket_->OrderGenericCancel(from, orderID, account, instrument, quantity, primSec, price,
                                  type, duration, marketTime, valueDate, status, reason,
                                  counterparty, dummy, freeFormat, system, encrypt, cpSystem,
                                  profile, strike, expiry);
      break;
    case 3:
      ticket_->OrderGenericPending(from, orderID, account, instrument, quantity, primSec, price,
                                   type, duration, marketTime, valueDate, status, link, action,
                                   reason, counterparty, dummy, freeFormat, system, encrypt,
                                   cpSystem, profile);
      break;
    default:
      ticket_->TradeGeneric(from, tradeID, account, instrument, quantity, primSec, price, type,
                            marketTime, valueDate, status, reason, orderID, counterparty, link,
                            dummy, freeFormat, system, encrypt, cpSystem, profile, strike,
                            expiry);
      break;
  }
}

void TicketDriver::Impl::tick() {
  Long instrument = c_.byte() < 220 ? kEurUsd : instrumentId();
  Long counterparty = 0, source = static_cast<Long>(c_.pick(4));
  Long type = c_.byte() < 220 ? PRICE_TRADED : static_cast<Long>(c_.pick(5));
  double bid, offer;
  if (c_.byte() < 200) {
    bid = 1.2 + static_cast<double>(c_.pick(1000)) / 10000.0;
    offer = bid + static_cast<double>(c_.pick(10)) / 10000.0;
  } else {
    bid = number(), offer = number();
  }
  Date time = number();
  if (c_.flag() && prices_.count(instrument)) {
    prices_[instrument].Bid = bid;
    prices_[instrument].Offer = offer;
  }
  ticket_->PriceGeneric(instrument, counterparty, bid, offer, type, source, time);
}

void TicketDriver::Impl::quote() {
  const TicketMembers& m = ticket_->members();
  Long from = 0, orderID = c_.byte() < 220 ? m.OrderID : orderId();
  Long account = 1, instrument = m.InstrumentID, type = static_cast<Long>(c_.pick(6));
  Long status = 16, counterparty = 9, dummy = 0, system = 0, cpSystem = 4, profile = 0;
  Long primSec = static_cast<Long>(c_.pick(2));
  double quantity = c_.flag() ? m.Quantity : number();
  double bid = 0, offer = 0;
  switch (c_.pick(4)) {
    case 0: break;  // suspended
    case 1: bid = number(), offer = number(); break;
    default: bid = 1.2345, offer = 1.2350; break;
  }
  double strike = 0;
  Date duration = c_.byte() < 200 ? kNoDate + static_cast<double>(c_.pick(90)) / 86400.0
                                  : number();
  Date marketTime = 0, valueDate = number(), expiry = 0;
  Integer reason = static_cast<Integer>(c_.pick(10));
  std::string freeFormat = text();
  Boolean encrypt = false;
  ticket_->OrderGenericQuote(from, orderID, account, instrument, quantity, primSec, bid, offer,
                             type, duration, marketTime, valueDate, status, reason, counterparty,
                             dummy, freeFormat, system, encrypt, cpSystem, profile, strike,
                             expiry);
}

// One call of the host, at the top or inside an event or a yield.
void TicketDriver::Impl::hostCall() {
  if (!ticket_) return;
  Clientticket& t = *ticket_;
  const std::size_t call = c_.pick(16);
  if (Tracing()) std::fprintf(stderr, "%*shost call %zu\n", 2 * nesting_ + 2, "", call);
  switch (call) {
    case 0: case 1: case 2: initialiseLike(); break;
    case 3: case 4: tick(); break;
    case 5: quote(); break;
    case 6: {
      Long account = c_.byte() < 200 ? t.members().AccountID : static_cast<Long>(c_.u32());
      double equity = number(), limit = number();
      t.ReceivedEquity(account, equity, limit);
      break;
    }
    case 7: {
      Long from = 0;
      Integer gid = c_.byte() < 200 ? t.members().GID : static_cast<Integer>(c_.u16());
      Boolean ok = c_.flag();
      t.GuaranteedMsgAck(from, gid, ok);
      break;
    }
    case 8: {
      Long id = c_.byte() < 128 ? static_cast<Long>(1 + c_.pick(4)) : static_cast<Long>(c_.u32());
      Long profile = static_cast<Long>(c_.pick(3)) - 1;
      std::string name = text();
      t.LoadAccount(id, name, profile);
      break;
    }
    case 9: {
      Long instrument = instrumentId();
      Date value = c_.flag() ? 36950 + static_cast<double>(c_.pick(60)) : number();
      t.Valid_Value_Date(instrument, value);
      break;
    }
    case 10: {
      Date trade = c_.flag() ? 36951 + static_cast<double>(c_.pick(30)) : number();
      Date forward = c_.flag() ? 0 : c_.flag() ? 36981 : number();
      Long instrument = instrumentId();
      t.Get_Settlement_Day(trade, forward, instrument);
      break;
    }
    case 11: t.setLanguage(static_cast<Integer>(c_.byte() < 200 ? c_.pick(3) : c_.u16())); break;
    case 12: t.setAccountType(static_cast<Integer>(c_.u16())); break;
    case 13:
      propertySet_ = true;
      switch (c_.pick(8)) {
        case 0: t.setMinOrderSize(number()); break;
        case 1: t.setMaxOrderSize(number()); break;
        case 2: t.setCompanyCtrPty(static_cast<Long>(c_.pick(5))); break;
        case 3: t.setEncrypt(c_.flag()); break;
        case 4: t.setTradingDayEnd(number()); break;
        case 5: t.setCompanyName(text()); break;
        case 6: t.setPriceRequestGroup(static_cast<Long>(c_.u32())); break;
        default: t.setDealingGateway(static_cast<Long>(c_.u32())); break;
      }
      break;
    default: {
      // The getters answer whatever the ticket holds.
      (void)t.getCompanyName(), (void)t.getLinkInstID(), (void)t.getAccountType();
      (void)t.getInstrumentID(), (void)t.getMinOrderSize(), (void)t.getCompanyCtrPty();
      (void)t.getDealingGateway(), (void)t.getEncrypt(), (void)t.getAccountID();
      (void)t.getPrimSec(), (void)t.getLanguage(), (void)t.getLinkID();
      (void)t.getMaxOrderSize(), (void)t.getOrderID(), (void)t.getPriceRequestGroup();
      (void)t.getTradingDayEnd();
      break;
    }
  }
}

// Exactly one order event per Yes: when the host neither re-entered nor destroyed the ticket,
// a Yes that the form took and that found a connection sends one order, and without a
// connection none.
void TicketDriver::Impl::checkYes(CommandButton& yes) {
  Form& form = ticket_->form().controls();
  const bool refused = InputRefusal(yes) != nullptr;
  const std::uint64_t before = orderEvents_;
  form.userClick(yes);
  if (refused || reentered_ || !ticket_) return;
  const std::uint64_t sent = orderEvents_ - before;
  const std::uint64_t expected = connectedAnswer_ == 2 ? 1 : 0;
  if (sent != expected) {
    Broken("a Yes sent " + std::to_string(sent) + " orders, expected " +
           std::to_string(expected));
  }
}

void TicketDriver::Impl::clickSomething() {
  TicketForm& f = ticket_->form();
  Form& form = f.controls();
  const std::uint8_t b = c_.byte();
  if (Tracing()) std::fprintf(stderr, "  click choice %d\n", b);
  if (b < 60) {
    const int index = static_cast<int>(c_.pick(7));
    if (index == 3) {
      checkYes(f.cmdOKCancel(3));
      return;
    }
    form.userClick(f.cmdOKCancel(index));
  } else if (b < 80) {
    form.userClick(f.cmdQuote(static_cast<int>(c_.pick(3))));
  } else if (b < 95) {
    form.userClick(f.cmdBuySell(static_cast<int>(c_.pick(2))));
  } else if (b < 125) {
    form.userClick(f.optType(static_cast<int>(1 + c_.pick(5))));
  } else if (b < 140) {
    form.userClick(f.optBuySell(static_cast<int>(c_.pick(2))));
  } else if (b < 155) {
    form.userClick(f.optValid(static_cast<int>(c_.pick(2))));
  } else if (b < 170) {
    form.userClick(f.cmdContract(static_cast<int>(c_.pick(6))));
  } else if (b < 185) {
    form.userClick(f.cmdValue);
  } else {
    const auto& all = form.controls();
    form.userClick(*all[c_.pick(all.size())]);
  }
}

void TicketDriver::Impl::userAction() {
  TicketForm& f = ticket_->form();
  Form& form = f.controls();
  TextBox* const boxes[] = {&f.txtPrimQty, &f.txtSecQty, &f.txtPrice, &f.txtLimit, &f.txtStop,
                            &f.txtEquity, &f.txtTradLimit};
  TextBox& box = *boxes[c_.byte() < 160 ? c_.pick(2) : c_.pick(std::size(boxes))];
  const std::size_t action = c_.pick(10);
  if (Tracing()) std::fprintf(stderr, "  user action %zu on %s\n", action, box.fullName().c_str());
  switch (action) {
    case 0: case 1: case 2: clickSomething(); break;
    case 3: form.userType(box, text()); break;
    case 4: form.userPaste(box, text()); break;
    case 5: form.userKey(box, static_cast<Integer>(c_.byte() < 200 ? c_.byte() : c_.u16())); break;
    case 6: {
      UpDown* const spinners[] = {&f.udPrim, &f.udSec, &f.udLimit, &f.udStop};
      form.userSpin(*spinners[c_.pick(4)], c_.flag());
      break;
    }
    case 7: {
      // A user picks one of the entries there are.
      const Long count = f.cmbAccount.ListCount();
      if (count > 0)
        form.userSelect(f.cmbAccount,
                        static_cast<Long>(c_.pick(static_cast<std::size_t>(count))));
      break;
    }
    case 8: {
      MonthView& calendar = f.calValueDate;
      if (c_.flag()) {
        const Date day = calendar.MinDate() + static_cast<double>(c_.pick(120));
        form.userDateClick(calendar, day);
      } else {
        form.userCalendarKey(calendar, static_cast<Integer>(c_.byte()));
      }
      break;
    }
    default: {
      const auto& all = form.controls();
      form.userFocus(*all[c_.pick(all.size())]);
      break;
    }
  }
}

void TicketDriver::Impl::checkPromises(const char* what) {
  const TicketForm& f = ticket_->form();
  if (f.fraHide.Visible()) Broken(std::string("fraHide left visible after ") + what);
  // What the ticket holds for the host is kept: messages, clicks and errors leave the stored
  // properties and the loaded accounts alone.
  if (!propertySet_ && !(Stored::Of(*ticket_) == stored_))
    Broken(std::string("a stored property changed in ") + what);
  if (f.cmbAccount.ListCount() < accountsListed_)
    Broken(std::string("a loaded account was lost in ") + what);
  // Timer1 runs only while the statement or the quote panel shows. Narrowed: a host call made
  // inside Initialise after it stopped the clock and before it hid the quote panel (inside an
  // event raised by the option, side or amount handlers) can take a quote there; the quote
  // starts the clock and Initialise then hides its panel, so the clock runs on with no panel
  // until its next tick on a blank form, the end of the quote's countdown or the next
  // Initialise stops it. Likewise a quote whose figures overflow (the host sends anything)
  // stops with an error after Enable(False) has hidden the statement and before its own panel
  // shows, and the statement's clock runs on; a stop-and-report procedure keeps what it did so
  // far. Neither is a fault, so a loose clock is allowed when the step that left it re-entered
  // or reported an error.
  const bool loose =
      loop_.isRunning(f.Timer1) && !f.fraConf.Visible() && !f.fraQuote.Visible();
  if (!loose) {
    looseClock_ = false;
  } else if (reentered_ || reported_) {
    looseClock_ = true;
  } else if (!looseClock_) {
    Broken(std::string("Timer1 runs with neither the statement nor the quote up after ") + what +
           " (Status " + std::to_string(ticket_->members().Status) + ", interval " +
           std::to_string(f.Timer1.Interval()) + ")");
  }
}

void TicketDriver::Impl::noteState() {
  const TicketForm& f = ticket_->form();
  const Long status = ticket_->members().Status;
  std::size_t state = 8;
  if (f.fraConf.Visible()) state = 1;
  else if (f.fraQuote.Visible()) state = 5;
  else if (f.fraTradeConf.Visible()) state = 6;
  else if (status == ORDER_BLANK) state = 0;
  else if (status == ORDER_ACTIVE_INTERNAL) state = 2;
  else if (status == ORDER_ACTIVE) state = 3;
  else if (status == ORDER_PENDING) state = 4;
  else if (status == 2) state = 7;
  ++stats.states[state];
}

void TicketDriver::Impl::step() {
  if (!ticket_) newTicket();
  if (!ticket_) return;
  ++stats.steps;
  reentered_ = false;
  reported_ = false;
  propertySet_ = false;
  stored_ = Stored::Of(*ticket_);
  accountsListed_ = ticket_->form().cmbAccount.ListCount();
  connectedAnswer_ = 0;
  const std::uint64_t yieldsBefore = loop_.yieldCount();
  const char* what = "a step";
  const std::uint8_t kind = c_.byte();
  if (Tracing())
      std::fprintf(stderr, "step %llu kind %d\n", static_cast<unsigned long long>(stats.steps), kind);
  if (kind < 90) {
    what = "a host call";
    guarded(what, [&] { hostCall(); });
  } else if (kind < 190) {
    what = "a user action";
    guarded(what, [&] { userAction(); });
  } else if (kind < 215) {
    what = "time passing";
    static const std::int64_t kSteps[] = {0, 1, 999, 1000, 4999, 5000, 30000, 86400000};
    const std::int64_t ms = kSteps[c_.pick(std::size(kSteps))];
    guarded(what, [&] { loop_.advance(ms); });
  } else if (kind < 235) {
    // Work the host posts for the loop's next turn: a call, or the ticket's end.
    what = "posted work";
    const bool destroy = c_.byte() < 24;
    loop_.post([this, destroy] {
      if (!ticket_ || dying_) return;
      if (destroy) {
        destroyInside();
      } else if (nesting_ < kMaxNesting) {
        reenter([&] { hostCall(); });
      }
    });
    if (c_.flag()) guarded(what, [&] { loop_.yield(); });
  } else if (kind < 250) {
    what = "a change of the host's answers";
    connectedMode_ = static_cast<int>(c_.pick(3));
    if (c_.flag()) {
      auto& p = prices_[kEurUsd];
      p.Bid = number(), p.Offer = number();
    }
  } else {
    what = "the host's end of the ticket";
    ticket_.reset();
    return;
  }
  if (loop_.yieldCount() - yieldsBefore > kMaxYieldsPerStep)
    Broken(std::string("no end to the yields of ") + what);
  if (!ticket_) return;
  checkPromises(what);
  noteState();
}

TicketDriver::TicketDriver(Choices& choices) : impl_(std::make_unique<Impl>(choices)) {}
TicketDriver::~TicketDriver() = default;
void TicketDriver::step() { impl_->step(); }
const DriverStats& TicketDriver::stats() const { return impl_->stats; }

void Play(Choices& choices, std::size_t maxSteps) {
  TicketDriver driver(choices);
  for (std::size_t i = 0; i < maxSteps && !choices.exhausted(); ++i) driver.step();
}

}  // namespace quillon::fuzz
