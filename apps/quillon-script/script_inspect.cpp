#include "script_inspect.h"

#include <utility>
#include <vector>

namespace quillon::script {
namespace {

using T = ValueType;

const std::vector<PropertySpec>& Properties() {
  using C = Clientticket;
  static const std::vector<PropertySpec> table = {
      {"CompanyName", T::String, [](const C& t) -> Value { return t.getCompanyName(); },
       [](C& t, const Value& v) { t.setCompanyName(std::get<std::string>(v)); }},
      {"LinkInstID", T::Long, [](const C& t) -> Value { return t.getLinkInstID(); }, {}},
      {"AccountType", T::Integer, [](const C& t) -> Value { return t.getAccountType(); },
       [](C& t, const Value& v) { t.setAccountType(std::get<Integer>(v)); }},
      {"InstrumentID", T::Long, [](const C& t) -> Value { return t.getInstrumentID(); }, {}},
      {"MinOrderSize", T::Double, [](const C& t) -> Value { return t.getMinOrderSize(); },
       [](C& t, const Value& v) { t.setMinOrderSize(std::get<double>(v)); }},
      {"CompanyCtrPty", T::Long, [](const C& t) -> Value { return t.getCompanyCtrPty(); },
       [](C& t, const Value& v) { t.setCompanyCtrPty(std::get<Long>(v)); }},
      {"DealingGateway", T::Long, [](const C& t) -> Value { return t.getDealingGateway(); },
       [](C& t, const Value& v) { t.setDealingGateway(std::get<Long>(v)); }},
      {"Encrypt", T::Boolean, [](const C& t) -> Value { return t.getEncrypt(); },
       [](C& t, const Value& v) { t.setEncrypt(std::get<bool>(v)); }},
      {"AccountID", T::Long, [](const C& t) -> Value { return t.getAccountID(); }, {}},
      {"PrimSec", T::Long, [](const C& t) -> Value { return t.getPrimSec(); }, {}},
      {"Language", T::Integer, [](const C& t) -> Value { return t.getLanguage(); },
       [](C& t, const Value& v) { t.setLanguage(std::get<Integer>(v)); }},
      {"LinkID", T::Long, [](const C& t) -> Value { return t.getLinkID(); }, {}},
      {"MaxOrderSize", T::Double, [](const C& t) -> Value { return t.getMaxOrderSize(); },
       [](C& t, const Value& v) { t.setMaxOrderSize(std::get<double>(v)); }},
      {"OrderID", T::Long, [](const C& t) -> Value { return t.getOrderID(); }, {}},
      {"PriceRequestGroup", T::Long, [](const C& t) -> Value { return t.getPriceRequestGroup(); },
       [](C& t, const Value& v) { t.setPriceRequestGroup(std::get<Long>(v)); }},
      {"TradingDayEnd", T::Date, [](const C& t) -> Value { return t.getTradingDayEnd(); },
       [](C& t, const Value& v) { t.setTradingDayEnd(std::get<double>(v)); }},
  };
  return table;
}

using MemberReader = Json (*)(const TicketMembers&);

#define QUILLON_PLAIN(name)                                    \
  {                                                            \
#name, [](const TicketMembers& m) { return Json(m.name); } \
  }
#define QUILLON_NUMBER(name)                                         \
  {                                                                  \
#name, [](const TicketMembers& m) { return NumberJson(m.name); } \
  }
#define QUILLON_DATE(name)                                         \
  {                                                                \
#name, [](const TicketMembers& m) { return DateJson(m.name); } \
  }

const std::vector<std::pair<const char*, MemberReader>>& Members() {
  static const std::vector<std::pair<const char*, MemberReader>> table = {
      {"Accounts",
       [](const TicketMembers& m) {
         Json out = Json::array();
         for (const AccountRec& a : m.Accounts) out.push_back(RecordJson(a));
         return out;
       }},
      {"CurrentAccount", [](const TicketMembers& m) { return RecordJson(m.CurrentAccount); }},
      QUILLON_PLAIN(TradeID),
      QUILLON_PLAIN(OrderID),
      QUILLON_PLAIN(AccountID),
      QUILLON_PLAIN(InstrumentID),
      QUILLON_NUMBER(Quantity),
      QUILLON_PLAIN(PrimarySecondaryQty),
      QUILLON_NUMBER(Price),
      QUILLON_DATE(Duration),
      QUILLON_DATE(MarketTime),
      QUILLON_DATE(ValueDate),
      QUILLON_PLAIN(Status),
      QUILLON_PLAIN(LinkID),
      QUILLON_PLAIN(Action),
      QUILLON_PLAIN(Reason),
      QUILLON_PLAIN(CounterpartyID),
      QUILLON_PLAIN(FreeFormat),
      QUILLON_PLAIN(SystemID),
      QUILLON_PLAIN(CounterPartySystemID),
      QUILLON_PLAIN(PriceProfileID),
      QUILLON_PLAIN(OrderType),
      QUILLON_PLAIN(CompanyCtrPty),
      QUILLON_PLAIN(CompanyName),
      QUILLON_PLAIN(DealingGateway),
      QUILLON_PLAIN(Encrypt),
      QUILLON_PLAIN(Language),
      QUILLON_NUMBER(MaxOrderSize),
      QUILLON_NUMBER(MinOrderSize),
      QUILLON_PLAIN(PriceRequestGroup),
      QUILLON_DATE(TradingDayEnd),
      QUILLON_PLAIN(AccountType),
      QUILLON_PLAIN(AllowMarket),
      QUILLON_PLAIN(AllowQuote),
      QUILLON_PLAIN(AllowPending),
      QUILLON_PLAIN(FixedSize),
      QUILLON_PLAIN(LiveFlag),
      QUILLON_PLAIN(DummyLive),
      QUILLON_NUMBER(MarketPrice),
      QUILLON_NUMBER(LimitPrice),
      QUILLON_NUMBER(StopPrice),
      QUILLON_NUMBER(Bid),
      QUILLON_NUMBER(Offer),
      QUILLON_NUMBER(Pip),
      QUILLON_PLAIN(GID),
      {"BaseInst", [](const TicketMembers& m) { return RecordJson(m.BaseInst); }},
      {"ValueInst", [](const TicketMembers& m) { return RecordJson(m.ValueInst); }},
      QUILLON_PLAIN(DecimalSeparator),
      QUILLON_PLAIN(EquityShown),
      // Not a member of its own: the price profile of the current account.
      {"AccountPriceProfile",
       [](const TicketMembers& m) { return Json(m.CurrentAccount.PriceProfile); }},
  };
  return table;
}

#undef QUILLON_PLAIN
#undef QUILLON_NUMBER
#undef QUILLON_DATE

const MemberReader* FindMember(const std::string& name) {
  for (const auto& [memberName, reader] : Members())
    if (name == memberName) return &reader;
  return nullptr;
}

bool HasCaption(ControlKind k) {
  return k == ControlKind::Frame || k == ControlKind::Label || k == ControlKind::CommandButton ||
         k == ControlKind::OptionButton;
}

}  // namespace

const PropertySpec* FindProperty(const std::string& name) {
  for (const PropertySpec& p : Properties())
    if (name == p.name) return &p;
  return nullptr;
}

std::optional<Json> MemberJson(const TicketMembers& members, const std::string& name) {
  const MemberReader* reader = FindMember(name);
  if (!reader) return std::nullopt;
  return (*reader)(members);
}

bool IsMember(const std::string& name) { return FindMember(name) != nullptr; }

Json RecordJson(const AccountRec& r) {
  return {
      {"AccountID", r.AccountID}, {"AccountName", r.AccountName}, {"PriceProfile", r.PriceProfile}};
}

Json RecordJson(const InstrumentRec& r) {
  return {{"InstrumentID", r.InstrumentID}, {"ShortDesc", r.ShortDesc},
          {"LongDesc", r.LongDesc},         {"BaseID", r.BaseID},
          {"SourceID", r.SourceID},         {"LinkID", r.LinkID},
          {"InstType", r.InstType},         {"Term", r.Term},
          {"CallPut", r.CallPut},           {"ValueID", r.ValueID},
          {"Strike", NumberJson(r.Strike)}, {"ValueDate", DateJson(r.ValueDate)},
          {"Expiry", DateJson(r.Expiry)},   {"Pip", NumberJson(r.Pip)},
          {"ContractSize", r.ContractSize}, {"Status", r.Status}};
}

Json ControlJson(const Control& c) {
  const ControlKind kind = c.kind();
  Json out = {{"control", c.fullName()}, {"Visible", c.Visible()}, {"Enabled", c.Enabled()}};
  if (HasCaption(kind)) out["Caption"] = c.Caption();
  if (kind == ControlKind::TextBox) out["Text"] = static_cast<const TextBox&>(c).Text();
  if (kind == ControlKind::OptionButton) out["Value"] = static_cast<const OptionButton&>(c).Value();
  if (kind == ControlKind::UpDown) out["Value"] = static_cast<const UpDown&>(c).Value();
  if (kind == ControlKind::MonthView)
    out["Value"] = DateJson(static_cast<const MonthView&>(c).Value());
  if (kind == ControlKind::TextBox) out["Locked"] = static_cast<const TextBox&>(c).Locked();
  if (kind == ControlKind::Timer) {
    out["Interval"] = static_cast<const Timer&>(c).Interval();
    return out;  // a timer has no look
  }
  out["BackColor"] = ColourText(c.BackColor());
  out["ForeColor"] = ColourText(c.ForeColor());
  out["FontStrikethru"] = c.FontStrikethru();
  if (kind == ControlKind::TextBox) {
    const auto& box = static_cast<const TextBox&>(c);
    out["SelStart"] = box.SelStart();
    out["SelLength"] = box.SelLength();
  }
  if (kind == ControlKind::ComboBox) {
    const auto& list = static_cast<const ComboBox&>(c);
    out["ListIndex"] = list.ListIndex();
    Json items = Json::array();
    for (const ListItem& item : list.items())
      items.push_back({{"text", item.text}, {"data", item.data}});
    out["List"] = std::move(items);
  }
  out["Left"] = NumberJson(c.Left());
  out["Top"] = NumberJson(c.Top());
  out["Width"] = NumberJson(c.Width());
  out["Height"] = NumberJson(c.Height());
  if (kind == ControlKind::MonthView) {
    const auto& calendar = static_cast<const MonthView&>(c);
    out["MinDate"] = DateJson(calendar.MinDate());
    out["MaxDate"] = DateJson(calendar.MaxDate());
  }
  return out;
}

}  // namespace quillon::script
