#include "call_args.h"

#include <stdexcept>

namespace quillon::script {
namespace {

constexpr ValueType L = ValueType::Long;
constexpr ValueType I = ValueType::Integer;
constexpr ValueType D = ValueType::Double;
constexpr ValueType T = ValueType::Date;
constexpr ValueType B = ValueType::Boolean;
constexpr ValueType S = ValueType::String;

const std::vector<MethodSpec>& Table() {
  static const std::vector<MethodSpec> table = {
      {"GuaranteedMsgAck", ResultKind::Variant, {{"FromID", L}, {"GID", I}, {"Success", B}}},
      {"LoadAccount",
       ResultKind::None,
       {{"AccountID", L}, {"AccountName", S}, {"PriceProfile", L}}},
      {"OrderGeneric",
       ResultKind::Variant,
       {{"FromID", L},         {"OrderID", L},   {"AccountID", L},
        {"InstrumentID", L},   {"Quantity", D},  {"PrimarySecondaryQty", L},
        {"Price", D},          {"OrderType", L}, {"Duration", T},
        {"MarketTime", T},     {"ValueDate", T}, {"Status", L},
        {"LinkID", L},         {"Action", L},    {"Reason", I},
        {"CounterpartyID", L}, {"DummyLive", L}, {"FreeFormat", S},
        {"SystemID", L},       {"Encrypt", B},   {"CounterPartySystemID", L},
        {"PriceProfileID", L}, {"Strike", D},    {"Expiry", T}}},
      {"OrderGenericCancel",
       ResultKind::Variant,
       {{"FromID", L},
        {"OrderID", L},
        {"AccountID", L},
        {"InstrumentID", L},
        {"Quantity", D},
        {"PrimarySecondaryQty", L},
        {"Price", D},
        {"OrderType", L},
        {"Duration", T},
        {"MarketTime", T},
        {"ValueDate", T},
        {"Status", L},
        {"Reason", I},
        {"CounterpartyID", L},
        {"DummyLive", L},
        {"FreeFormat", S},
        {"SystemID", L},
        {"Encrypt", B},
        {"CounterPartySystemID", L},
        {"PriceProfileID", L},
        {"Strike", D},
        {"Expiry", T}}},
      {"OrderGenericPending",
       ResultKind::Variant,
       {{"FromID", L},         {"OrderID", L},   {"AccountID", L},
        {"InstrumentID", L},   {"Quantity", D},  {"PrimarySecondaryQty", L},
        {"Price", D},          {"OrderType", L}, {"Duration", T},
        {"MarketTime", T},     {"ValueDate", T}, {"Status", L},
        {"LinkID", L},         {"Action", L},    {"Reason", I},
        {"CounterpartyID", L}, {"DummyLive", L}, {"FreeFormat", S},
        {"SystemID", L},       {"Encrypt", B},   {"CounterPartySystemID", L},
        {"PriceProfileID", L}}},
      {"OrderGenericQuote",
       ResultKind::Variant,
       {{"FromID", L},
        {"OrderID", L},
        {"AccountID", L},
        {"InstrumentID", L},
        {"Quantity", D},
        {"PrimarySecondaryQty", L},
        {"Bid", D},
        {"Offer", D},
        {"OrderType", L},
        {"Duration", T},
        {"MarketTime", T},
        {"ValueDate", T},
        {"Status", L},
        {"Reason", I},
        {"CounterpartyID", L},
        {"DummyLive", L},
        {"FreeFormat", S},
        {"SystemID", L},
        {"Encrypt", B},
        {"CounterPartySystemID", L},
        {"PriceProfileID", L},
        {"Strike", D},
        {"Expiry", T}}},
      {"ReceivedEquity", ResultKind::Variant, {{"Account", L}, {"Equity", D}, {"TradingLimit", D}}},
      {"PriceGeneric",
       ResultKind::None,
       {{"InstrumentID", L},
        {"CounterpartyID", L},
        {"Bid", D},
        {"Offer", D},
        {"PriceType", L},
        {"SourceID", L},
        {"PriceTime", T}}},
      {"Initialise", ResultKind::Variant, {{"TradeID", L},        {"OrderID", L},
                                           {"AccountID", L},      {"InstrumentID", L},
                                           {"Quantity", D},       {"PrimarySecondaryQty", L},
                                           {"Price", D},          {"OrderType", L},
                                           {"Duration", T},       {"MarketTime", T},
                                           {"ValueDate", T},      {"Status", L},
                                           {"LinkID", L},         {"Action", L},
                                           {"Reason", I},         {"CounterpartyID", L},
                                           {"DummyLive", L},      {"FreeFormat", S},
                                           {"SystemID", L},       {"CounterPartySystemID", L},
                                           {"PriceProfileID", L}, {"Strike", D},
                                           {"Expiry", T}}},
      {"TradeGeneric", ResultKind::Variant, {{"FromID", L},         {"TradeID", L},
                                             {"AccountID", L},      {"InstrumentID", L},
                                             {"Quantity", D},       {"PrimarySecondaryQty", L},
                                             {"Price", D},          {"TradeType", L},
                                             {"MarketTime", T},     {"ValueDate", T},
                                             {"Status", L},         {"Reason", I},
                                             {"OrderID", L},        {"CounterpartyID", L},
                                             {"LinkID", L},         {"DummyLive", L},
                                             {"FreeFormat", S},     {"SystemID", L},
                                             {"Encrypt", B},        {"CounterPartySystemID", L},
                                             {"PriceProfileID", L}, {"Strike", D},
                                             {"Expiry", T}}},
      {"Valid_Value_Date", ResultKind::Boolean, {{"lInstID", L}, {"dtValue", T}}},
      {"Get_Settlement_Day",
       ResultKind::Date,
       {{"dTradeDate", T}, {"dtForward", T}, {"lInstID", L}}},
  };
  return table;
}

// Binds the arguments to the method's reference parameters, in order.
Variant Dispatch(Clientticket& t, CallArgs& a) {
  const std::string& name = a.method().name;
  if (name == "GuaranteedMsgAck") return t.GuaranteedMsgAck(a.L(0), a.I(1), a.B(2));
  if (name == "LoadAccount") {
    t.LoadAccount(a.L(0), a.S(1), a.L(2));
    return {};
  }
  if (name == "OrderGeneric")
    return t.OrderGeneric(a.L(0), a.L(1), a.L(2), a.L(3), a.D(4), a.L(5), a.D(6), a.L(7), a.D(8),
                          a.D(9), a.D(10), a.L(11), a.L(12), a.L(13), a.I(14), a.L(15), a.L(16),
                          a.S(17), a.L(18), a.B(19), a.L(20), a.L(21), a.D(22), a.D(23));
  if (name == "OrderGenericCancel")
    return t.OrderGenericCancel(a.L(0), a.L(1), a.L(2), a.L(3), a.D(4), a.L(5), a.D(6), a.L(7),
                                a.D(8), a.D(9), a.D(10), a.L(11), a.I(12), a.L(13), a.L(14),
                                a.S(15), a.L(16), a.B(17), a.L(18), a.L(19), a.D(20), a.D(21));
  if (name == "OrderGenericPending")
    return t.OrderGenericPending(a.L(0), a.L(1), a.L(2), a.L(3), a.D(4), a.L(5), a.D(6), a.L(7),
                                 a.D(8), a.D(9), a.D(10), a.L(11), a.L(12), a.L(13), a.I(14),
                                 a.L(15), a.L(16), a.S(17), a.L(18), a.B(19), a.L(20), a.L(21));
  if (name == "OrderGenericQuote")
    return t.OrderGenericQuote(a.L(0), a.L(1), a.L(2), a.L(3), a.D(4), a.L(5), a.D(6), a.D(7),
                               a.L(8), a.D(9), a.D(10), a.D(11), a.L(12), a.I(13), a.L(14), a.L(15),
                               a.S(16), a.L(17), a.B(18), a.L(19), a.L(20), a.D(21), a.D(22));
  if (name == "ReceivedEquity") return t.ReceivedEquity(a.L(0), a.D(1), a.D(2));
  if (name == "PriceGeneric") {
    t.PriceGeneric(a.L(0), a.L(1), a.D(2), a.D(3), a.L(4), a.L(5), a.D(6));
    return {};
  }
  if (name == "Initialise")
    return t.Initialise(a.L(0), a.L(1), a.L(2), a.L(3), a.D(4), a.L(5), a.D(6), a.L(7), a.D(8),
                        a.D(9), a.D(10), a.L(11), a.L(12), a.L(13), a.I(14), a.L(15), a.L(16),
                        a.S(17), a.L(18), a.L(19), a.L(20), a.D(21), a.D(22));
  if (name == "TradeGeneric")
    return t.TradeGeneric(a.L(0), a.L(1), a.L(2), a.L(3), a.D(4), a.L(5), a.D(6), a.L(7), a.D(8),
                          a.D(9), a.L(10), a.I(11), a.L(12), a.L(13), a.L(14), a.L(15), a.S(16),
                          a.L(17), a.B(18), a.L(19), a.L(20), a.D(21), a.D(22));
  if (name == "Valid_Value_Date") return Variant::FromBoolean(t.Valid_Value_Date(a.L(0), a.D(1)));
  if (name == "Get_Settlement_Day")
    return Variant::FromDate(t.Get_Settlement_Day(a.D(0), a.D(1), a.L(2)));
  throw std::logic_error("no dispatch for method " + name);
}

}  // namespace

const std::vector<MethodSpec>& Methods() { return Table(); }

const MethodSpec* FindMethod(const std::string& name) {
  for (const MethodSpec& m : Table())
    if (name == m.name) return &m;
  return nullptr;
}

CallArgs CallArgs::Read(const MethodSpec& method, const Json& args) {
  if (!args.is_null() && !args.is_object())
    throw ScriptError("field \"args\": expected an object of arguments by name, got " +
                      Describe(args));
  CallArgs out;
  out.method_ = &method;
  for (const ParamSpec& p : method.params) out.values_.push_back(DefaultValue(p.type));
  if (args.is_null()) return out;
  for (const auto& [key, value] : args.items()) {
    std::size_t i = 0;
    while (i < method.params.size() && key != method.params[i].name) ++i;
    if (i == method.params.size())
      throw ScriptError("unknown argument " + Quoted(key) + " of " + method.name);
    out.values_[i] = ReadValue(value, method.params[i].type, "argument " + Quoted(key));
  }
  return out;
}

Json CallArgs::ChangedSince(const CallArgs& before) const {
  Json changed = Json::object();
  for (std::size_t i = 0; i < values_.size() && i < before.values_.size(); ++i) {
    if (SameValue(values_[i], before.values_[i])) continue;
    const ParamSpec& p = method_->params[i];
    changed[p.name] = ValueJson(values_[i], p.type);
  }
  return changed;
}

Json Invoke(Clientticket& ticket, const CallArgs& given) {
  CallArgs args = given;
  Variant result = Dispatch(ticket, args);
  const MethodSpec& m = given.method();
  Json line = {{"return", m.name}};
  switch (m.result) {
    case ResultKind::None:
      break;
    case ResultKind::Variant:
      line["value"] = VariantJson(result);
      break;
    case ResultKind::Boolean:
      line["value"] = result.toBoolean();
      break;
    case ResultKind::Date:
      line["value"] = DateJson(result.toDouble());
      break;
  }
  Json changed = args.ChangedSince(given);
  if (!changed.empty()) line["args"] = std::move(changed);
  return line;
}

}  // namespace quillon::script
