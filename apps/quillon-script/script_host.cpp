#include "script_host.h"

#include "holidays/bank_holidays.h"

#include <algorithm>
#include <initializer_list>
#include <istream>
#include <limits>
#include <ostream>
#include <set>
#include <unordered_set>

#include "call_args.h"
#include "platform/runtime_error.h"
#include "script_inspect.h"

namespace quillon::script {
namespace {

// Commands run inside events and posted work may nest this deep: an `on` whose commands raise
// its own event again stops here instead of exhausting the stack.
constexpr int kMaxDepth = 64;
// `do` lists inside `do` lists on one line.
constexpr int kMaxListDepth = 16;
// Arrays and objects on one line nest at most this deep, so that nothing recursive (the
// parser's tree, the text of a value in a message) can exhaust the stack.
constexpr int kMaxJsonDepth = 100;
// No command has near this many fields. An object keeps its keys in order and looks each new
// one up among them, so a line of a great many different keys would take quadratic time to
// read; past this many it is refused instead.
constexpr std::size_t kMaxFields = 100;
// The longest single `advance`: one day.
constexpr std::int64_t kMaxAdvanceMs = 86'400'000;

const std::set<std::string>& EventNames() {
  static const std::set<std::string> names = {"CloseTicket",       "ErrorMsg",
                                              "GetReason",         "GID",
                                              "Message",           "VtInstGetArrayAll",
                                              "Connected",         "VtInstGetArray",
                                              "VtOrderGenericNew", "VtOrderGenericArray",
                                              "VtTradeGenericNew", "VtPriceGenericRequest",
                                              "VtPriceGetArray",   "SystemTime",
                                              "RequestEquity",     "ResizeTicket"};
  return names;
}

std::string FieldName(const std::string& name) { return "field " + Quoted(name); }

// The fields of one command: only the op's own are allowed.
class Fields {
 public:
  Fields(const Json& command, const std::string& op, std::initializer_list<const char*> allowed)
      : command_(command), op_(op) {
    for (const auto& item : command.items()) {
      if (item.key() == "op") continue;
      bool known = std::any_of(allowed.begin(), allowed.end(),
                               [&](const char* name) { return item.key() == name; });
      if (!known)
        throw ScriptError("unknown field " + Quoted(item.key()) + " for op " + Quoted(op));
    }
  }
  const Json* Optional(const char* name) const {
    auto it = command_.find(name);
    return it == command_.end() ? nullptr : &*it;
  }
  const Json& Required(const char* name) const {
    const Json* value = Optional(name);
    if (!value) throw ScriptError("op " + Quoted(op_) + " needs field " + Quoted(name));
    return *value;
  }

 private:
  const Json& command_;
  const std::string& op_;
};

// Reads an optional field of a record into `target` when it is there.
template <typename Target>
void ReadInto(const Fields& f, const char* name, ValueType type, Target& target) {
  if (const Json* v = f.Optional(name))
    target = std::get<Target>(ReadValue(*v, type, FieldName(name)));
}

// The deepest nesting of arrays and objects in a JSON text, strings skipped.
int NestingDepth(const std::string& text) {
  int depth = 0, deepest = 0;
  bool inString = false, escaped = false;
  for (char c : text) {
    if (inString) {
      if (escaped)
        escaped = false;
      else if (c == '\\')
        escaped = true;
      else if (c == '"')
        inString = false;
    } else if (c == '"') {
      inString = true;
    } else if (c == '[' || c == '{') {
      deepest = std::max(deepest, ++depth);
    } else if (c == ']' || c == '}') {
      --depth;
    }
  }
  return deepest;
}

// Parses one line, counting the different keys of each object as they come.
Json ParseLine(const std::string& text) {
  std::vector<std::unordered_set<std::string>> keys;  // of each object open, innermost last
  return Json::parse(text, [&](int, Json::parse_event_t event, Json& parsed) {
    if (event == Json::parse_event_t::object_start) {
      keys.emplace_back();
    } else if (event == Json::parse_event_t::object_end) {
      keys.pop_back();
    } else if (event == Json::parse_event_t::key) {
      keys.back().insert(parsed.get<std::string>());
      if (keys.back().size() > kMaxFields)
        throw ScriptError("an object with more than " + std::to_string(kMaxFields) +
                          " different fields");
    }
    return true;
  });
}

std::string ParseMessage(const std::string& what) {
  std::string text = what;
  std::size_t column = text.find("column ");
  if (column != std::string::npos) return "bad JSON at " + text.substr(column);
  std::size_t bracket = text.find("] ");
  if (bracket != std::string::npos) text = text.substr(bracket + 2);
  return "bad JSON: " + text;
}

// The arguments of an event, by name in the event's order.
class Args {
 public:
  Args& num(const char* name, double v) {
    json_[name] = NumberJson(v);
    return *this;
  }
  Args& date(const char* name, Date v) {
    json_[name] = DateJson(v);
    return *this;
  }
  Args& flag(const char* name, bool v) {
    json_[name] = v;
    return *this;
  }
  Args& text(const char* name, const std::string& v) {
    json_[name] = v;
    return *this;
  }
  Args& var(const char* name, const Variant& v) {
    json_[name] = VariantJson(v);
    return *this;
  }
  operator Json() const { return json_; }

 private:
  Json json_ = Json::object();
};

}  // namespace

// --- Construction ---

ScriptHost::ScriptHost(ScriptOptions options)
    : options_(std::move(options)), locale_(Locale::ByName(options_.locale)) {
  holidays_.SetCalendars(&calendars_);
  holidays_.onQuestion = [this](Long instrumentID, Date date, Long result) {
    if (!options_.trace) return;
    Emit({{"library", "IsValueDateABankHol"},
          {"args", {{"InstrumentID", instrumentID}, {"Date", DateJson(date)}}},
          {"result", result}});
  };
  TicketServices services;
  services.loop = &loop_;
  services.holidays = &holidays_;
  services.printer = &printer_;
  services.locale = &locale_;
  ticket_ = std::make_unique<Clientticket>(services);
  ticket_->setHost(this);
}

ScriptHost::~ScriptHost() {
  if (ticket_) ticket_->setHost(nullptr);
  ticket_.reset();
}

void ScriptHost::Printer::print(const std::string& html, Long backColor, Long foreColor) {
  host_.Emit({{"print",
               {{"html", html},
                {"BackColor", ColourText(backColor)},
                {"ForeColor", ColourText(foreColor)}}}});
}

// --- Playing ---

int ScriptHost::run(std::istream& in, std::ostream& out, std::ostream& err) {
  out_ = &out;
  auto stop = [&](int line, const std::string& message) {
    out.flush();
    err << "line " << line << ": " << message << '\n';
    err.flush();
    out_ = nullptr;
    return 2;
  };
  std::string text;
  int line = 0;
  while (std::getline(in, text)) {
    ++line;
    if (!text.empty() && text.back() == '\r') text.pop_back();
    std::size_t start = text.find_first_not_of(" \t");
    if (start == std::string::npos || text[start] == '#') continue;
    // The parser takes a NUL byte for the end of its input and would drop what follows it;
    // JSON has no place for one, not even inside a text.
    if (std::size_t nul = text.find('\0'); nul != std::string::npos)
      return stop(line, "bad JSON at column " + std::to_string(nul + 1) + ": a NUL byte");
    if (NestingDepth(text) > kMaxJsonDepth)
      return stop(line, "JSON nested more than " + std::to_string(kMaxJsonDepth) + " deep");
    Action action;
    try {
      action = Compile(ParseLine(text), line, 0);
    } catch (const Json::exception& e) {
      return stop(line, ParseMessage(e.what()));
    } catch (const ScriptError& e) {
      return stop(line, e.what());
    }
    Execute(action);
    // Work posted by this line and not yet taken by a yield runs now.
    if (!failure_ && loop_.hasPending()) {
      try {
        loop_.runPending();
      } catch (const std::exception& e) {
        Fail(line, std::string("unexpected failure: ") + e.what());
      }
    }
    if (failure_) return stop(failure_->first, failure_->second);
    out.flush();
  }
  if (in.bad()) return stop(line + 1, "cannot read the script");
  out.flush();
  out_ = nullptr;
  return 0;
}

void ScriptHost::Execute(const Action& action) {
  if (failure_) return;
  if (depth_ >= kMaxDepth) {
    Fail(action.line,
         "commands run inside events nested more than " + std::to_string(kMaxDepth) + " deep");
    return;
  }
  ++depth_;
  try {
    action.run();
  } catch (const ScriptError& e) {
    Fail(action.line, e.what());
  } catch (const RuntimeError& e) {
    Fail(action.line, "the ticket let run-time error " + std::to_string(e.number()) + " (" +
                          e.description() + ") escape");
  } catch (const std::exception& e) {
    Fail(action.line, std::string("unexpected failure: ") + e.what());
  } catch (...) {
    Fail(action.line, "unexpected failure");
  }
  --depth_;
}

void ScriptHost::Fail(int line, const std::string& message) {
  if (!failure_) failure_.emplace(line, message);
}

void ScriptHost::Emit(const Json& line) {
  if (failure_ || !out_) return;
  *out_ << line.dump(-1, ' ', false, Json::error_handler_t::replace) << '\n';
}

void ScriptHost::Show(const char* event, bool question, Json args) {
  if (question && !options_.trace) return;
  Emit({{"event", event}, {"args", std::move(args)}});
}

void ScriptHost::RunHandlers(const char* event) {
  auto it = handlers_.find(event);
  if (it == handlers_.end()) return;
  std::vector<std::shared_ptr<Handler>> now;
  for (const auto& handler : it->second) {
    if (handler->remaining <= 0) continue;
    --handler->remaining;
    now.push_back(handler);
  }
  std::erase_if(it->second, [](const auto& handler) { return handler->remaining <= 0; });
  // The handlers may register more, or raise this event again: `now` is ours alone.
  for (const auto& handler : now)
    for (const Action& action : *handler->actions) Execute(action);
}

bool ScriptHost::Refused(const Control& control) {
  const char* why = InputRefusal(control);
  if (!why) return false;
  Emit({{"refused", control.fullName()}, {"why", why}});
  return true;
}

// A click the form would refuse, delivered anyway: what the control does when clicked.
void ScriptHost::ForcedClick(Control& control) {
  if (control.kind() == ControlKind::CommandButton) {
    auto& button = static_cast<CommandButton&>(control);
    if (button.onClick) button.onClick();
  } else if (control.kind() == ControlKind::OptionButton) {
    static_cast<OptionButton&>(control).setValue(true);
  }
}

// --- Reading commands ---

Control& ScriptHost::FindControl(const Json& name, const std::string& what) const {
  std::string text = ReadString(name, what);
  Control* control = ticket_->form().controls().find(text);
  if (!control) throw ScriptError("unknown control " + Quoted(text));
  return *control;
}

ScriptHost::Actions ScriptHost::CompileList(const Json& list, const std::string& what, int line,
                                            int depth) {
  if (!list.is_array())
    throw ScriptError(what + ": expected a list of commands, got " + Describe(list));
  if (depth >= kMaxListDepth)
    throw ScriptError("commands nested more than " + std::to_string(kMaxListDepth) + " deep");
  auto actions = std::make_shared<std::vector<Action>>();
  for (std::size_t i = 0; i < list.size(); ++i) {
    try {
      actions->push_back(Compile(list[i], line, depth + 1));
    } catch (const ScriptError& e) {
      throw ScriptError("do[" + std::to_string(i) + "]: " + e.what());
    }
  }
  return actions;
}

ScriptHost::Action ScriptHost::Compile(const Json& command, int line, int depth) {
  if (!command.is_object())
    throw ScriptError("expected a command object, got " + Describe(command));
  auto opField = command.find("op");
  if (opField == command.end()) throw ScriptError("missing field \"op\"");
  const std::string op = ReadString(*opField, FieldName("op"));

  // Host answers.
  if (op == "connected") {
    Fields f(command, op, {"value"});
    bool value = ReadBoolean(f.Required("value"), FieldName("value"));
    return {line, [this, value] { connected_ = value; }};
  }
  if (op == "gid") {
    Fields f(command, op, {"next"});
    const Json& next = f.Required("next");
    std::optional<Integer> value;
    if (!next.is_null()) value = ReadInteger(next, FieldName("next"));
    return {line, [this, value] { nextGid_ = value; }};
  }
  if (op == "system_time") {
    Fields f(command, op, {"time"});
    const Json& time = f.Required("time");
    std::optional<Date> value;
    if (!time.is_null()) value = ReadDate(time, FieldName("time"));
    return {line, [this, value] { systemTime_ = value; }};
  }
  if (op == "clock") {
    Fields f(command, op, {"time"});
    Date time = ReadDate(f.Required("time"), FieldName("time"));
    return {line, [this, time] { loop_.setClock(time); }};
  }
  if (op == "instrument") {
    Fields f(command, op,
             {"InstrumentID", "ShortDesc", "LongDesc", "BaseID", "SourceID", "LinkID", "InstType",
              "Term", "CallPut", "ValueID", "Strike", "ValueDate", "Expiry", "Pip", "ContractSize",
              "Status"});
    InstrumentRec r;
    r.InstrumentID = ReadLong(f.Required("InstrumentID"), FieldName("InstrumentID"));
    ReadInto(f, "ShortDesc", ValueType::String, r.ShortDesc);
    ReadInto(f, "LongDesc", ValueType::String, r.LongDesc);
    ReadInto(f, "BaseID", ValueType::Long, r.BaseID);
    ReadInto(f, "SourceID", ValueType::Long, r.SourceID);
    ReadInto(f, "LinkID", ValueType::Long, r.LinkID);
    ReadInto(f, "InstType", ValueType::Integer, r.InstType);
    ReadInto(f, "Term", ValueType::Integer, r.Term);
    ReadInto(f, "CallPut", ValueType::Integer, r.CallPut);
    ReadInto(f, "ValueID", ValueType::Long, r.ValueID);
    ReadInto(f, "Strike", ValueType::Double, r.Strike);
    ReadInto(f, "ValueDate", ValueType::Date, r.ValueDate);
    ReadInto(f, "Expiry", ValueType::Date, r.Expiry);
    ReadInto(f, "Pip", ValueType::Double, r.Pip);
    ReadInto(f, "ContractSize", ValueType::Long, r.ContractSize);
    ReadInto(f, "Status", ValueType::Integer, r.Status);
    return {line, [this, r] {
              auto same = [&](const InstrumentRec& i) { return i.InstrumentID == r.InstrumentID; };
              auto it = std::find_if(instruments_.begin(), instruments_.end(), same);
              if (it != instruments_.end())
                *it = r;  // a replaced instrument keeps its place in the order
              else
                instruments_.push_back(r);
            }};
  }
  if (op == "price") {
    Fields f(command, op,
             {"InstrumentID", "PriceProfileID", "Bid", "Offer", "High", "Low", "PriceTime",
              "CounterpartyID", "SourceID", "PriceType"});
    PriceRec p;
    p.InstrumentID = ReadLong(f.Required("InstrumentID"), FieldName("InstrumentID"));
    std::optional<Long> profile;
    if (const Json* v = f.Optional("PriceProfileID"); v && !v->is_null())
      profile = ReadLong(*v, FieldName("PriceProfileID"));
    ReadInto(f, "Bid", ValueType::Double, p.Bid);
    ReadInto(f, "Offer", ValueType::Double, p.Offer);
    ReadInto(f, "High", ValueType::Double, p.High);
    ReadInto(f, "Low", ValueType::Double, p.Low);
    ReadInto(f, "PriceTime", ValueType::Date, p.PriceTime);
    ReadInto(f, "CounterpartyID", ValueType::Long, p.CounterpartyID);
    ReadInto(f, "SourceID", ValueType::Long, p.SourceID);
    ReadInto(f, "PriceType", ValueType::Long, p.PriceType);
    return {line, [this, p, profile] {
              if (profile)
                pricesByProfile_[{p.InstrumentID, *profile}] = p;
              else
                pricesAnyProfile_[p.InstrumentID] = p;
            }};
  }
  if (op == "reason") {
    Fields f(command, op, {"Reason", "text"});
    Integer reason = ReadInteger(f.Required("Reason"), FieldName("Reason"));
    std::string text = ReadString(f.Required("text"), FieldName("text"));
    return {line, [this, reason, text] { reasons_[reason] = text; }};
  }
  if (op == "holiday") {
    Fields f(command, op, {"InstrumentID", "date"});
    Long id = ReadLong(f.Required("InstrumentID"), FieldName("InstrumentID"));
    Date day = ReadDate(f.Required("date"), FieldName("date"));
    return {line, [this, id, day] { holidays_.AddHoliday(id, day); }};
  }
  if (op == "currency") {
    Fields f(command, op, {"InstrumentID", "code"});
    Long id = ReadLong(f.Required("InstrumentID"), FieldName("InstrumentID"));
    std::string code = ReadString(f.Required("code"), FieldName("code"));
    bool iso = code.size() == 3 &&
               std::all_of(code.begin(), code.end(), [](char c) { return c >= 'A' && c <= 'Z'; });
    if (!iso)
      throw ScriptError("field \"code\": expected an ISO currency code such as \"EUR\", got " +
                        Describe(code));
    if (!BankHolidays::knowsCurrency(code)) {
      std::string known;
      for (const std::string& k : BankHolidays::knownCurrencies())
        known += (known.empty() ? "" : " ") + k;
      throw ScriptError("field \"code\": no holiday calendar for " + Describe(code) +
                        "; known: " + known);
    }
    return {line, [this, id, code] { holidays_.SetCurrency(id, code); }};
  }
  if (op == "on") {
    Fields f(command, op, {"event", "do", "times"});
    std::string event = ReadString(f.Required("event"), FieldName("event"));
    if (!EventNames().count(event)) throw ScriptError("unknown event " + Quoted(event));
    std::int64_t times = 1;
    if (const Json* v = f.Optional("times"))
      times = ReadWhole(*v, FieldName("times"), 1, std::numeric_limits<Long>::max());
    Actions actions = CompileList(f.Required("do"), FieldName("do"), line, depth);
    return {line, [this, event, times, actions] {
              auto handler = std::make_shared<Handler>();
              handler->remaining = times;
              handler->actions = actions;
              handlers_[event].push_back(std::move(handler));
            }};
  }
  if (op == "post") {
    Fields f(command, op, {"do"});
    Actions actions = CompileList(f.Required("do"), FieldName("do"), line, depth);
    return {line, [this, actions] {
              loop_.post([this, actions] {
                for (const Action& action : *actions) Execute(action);
              });
            }};
  }

  // The ticket's interface.
  if (op == "set" || op == "get") {
    Fields f(command, op,
             op == "set" ? std::initializer_list<const char*>{"name", "value"}
                         : std::initializer_list<const char*>{"name"});
    std::string name = ReadString(f.Required("name"), FieldName("name"));
    const PropertySpec* property = FindProperty(name);
    if (!property) throw ScriptError("unknown property " + Quoted(name));
    if (op == "get")
      return {line, [this, property] {
                Emit({{"get", property->name},
                      {"value", ValueJson(property->get(*ticket_), property->type)}});
              }};
    if (!property->set)
      throw ScriptError("property " + Quoted(name) + " is read-only: it cannot be set");
    Value value = ReadValue(f.Required("value"), property->type, FieldName("value"));
    return {line, [this, property, value] { property->set(*ticket_, value); }};
  }
  if (op == "call") {
    Fields f(command, op, {"method", "args"});
    std::string name = ReadString(f.Required("method"), FieldName("method"));
    const MethodSpec* method = FindMethod(name);
    if (!method) throw ScriptError("unknown method " + Quoted(name));
    const Json* args = f.Optional("args");
    CallArgs given = CallArgs::Read(*method, args ? *args : Json());
    return {line, [this, given] { Emit(Invoke(*ticket_, given)); }};
  }

  // The user.
  if (op == "click") {
    Fields f(command, op, {"control", "force"});
    Control* control = &FindControl(f.Required("control"), FieldName("control"));
    bool force = false;
    if (const Json* v = f.Optional("force")) force = ReadBoolean(*v, FieldName("force"));
    return {line, [this, control, force] {
              if (!InputRefusal(*control))
                UserForm().userClick(*control);
              else if (force)
                ForcedClick(*control);
              else
                Refused(*control);
            }};
  }
  if (op == "focus") {
    Fields f(command, op, {"control"});
    Control* control = &FindControl(f.Required("control"), FieldName("control"));
    return {line, [this, control] {
              if (!Refused(*control)) UserForm().userFocus(*control);
            }};
  }
  if (op == "type" || op == "paste") {
    Fields f(command, op, {"control", "text"});
    Control& control = FindControl(f.Required("control"), FieldName("control"));
    if (control.kind() != ControlKind::TextBox)
      throw ScriptError("control " + Quoted(control.fullName()) + " is not a text box");
    auto* box = static_cast<TextBox*>(&control);
    std::string text = ReadString(f.Required("text"), FieldName("text"));
    bool paste = op == "paste";
    return {line, [this, box, text, paste] {
              if (Refused(*box)) return;
              if (paste)
                UserForm().userPaste(*box, text);
              else
                UserForm().userType(*box, text, Form::TypeAt::End);
            }};
  }
  if (op == "spin") {
    Fields f(command, op, {"control", "direction"});
    Control& control = FindControl(f.Required("control"), FieldName("control"));
    if (control.kind() != ControlKind::UpDown)
      throw ScriptError("control " + Quoted(control.fullName()) + " is not a spinner");
    auto* spinner = static_cast<UpDown*>(&control);
    std::string direction = ReadString(f.Required("direction"), FieldName("direction"));
    if (direction != "up" && direction != "down")
      throw ScriptError("field \"direction\": expected \"up\" or \"down\", got " +
                        Describe(direction));
    bool up = direction == "up";
    return {line, [this, spinner, up] {
              if (!Refused(*spinner)) UserForm().userSpin(*spinner, up);
            }};
  }
  if (op == "select") {
    Fields f(command, op, {"control", "index"});
    Control& control = FindControl(f.Required("control"), FieldName("control"));
    if (control.kind() != ControlKind::ComboBox)
      throw ScriptError("control " + Quoted(control.fullName()) + " is not a list");
    auto* list = static_cast<ComboBox*>(&control);
    Long index = ReadLong(f.Required("index"), FieldName("index"));
    return {line, [this, list, index] {
              if (Refused(*list)) return;
              if (index < 0 || index >= list->ListCount())
                throw ScriptError(list->fullName() + " has no entry " + std::to_string(index) +
                                  " (it holds " + std::to_string(list->ListCount()) + ")");
              UserForm().userSelect(*list, index);
            }};
  }
  if (op == "date_click") {
    Fields f(command, op, {"date"});
    Date day = ReadDate(f.Required("date"), FieldName("date"));
    MonthView* calendar = &ticket_->form().calValueDate;
    return {line, [this, calendar, day] {
              if (!Refused(*calendar)) UserForm().userDateClick(*calendar, day);
            }};
  }
  if (op == "calendar_key") {
    Fields f(command, op, {"key"});
    Integer key = ReadInteger(f.Required("key"), FieldName("key"));
    MonthView* calendar = &ticket_->form().calValueDate;
    return {line, [this, calendar, key] {
              if (!Refused(*calendar)) UserForm().userCalendarKey(*calendar, key);
            }};
  }
  if (op == "advance") {
    Fields f(command, op, {"ms"});
    std::int64_t ms = ReadWhole(f.Required("ms"), FieldName("ms"), 0, kMaxAdvanceMs);
    return {line, [this, ms] { loop_.advance(ms); }};
  }

  // Looking.
  if (op == "control") {
    Fields f(command, op, {"name"});
    const Control* control = &FindControl(f.Required("name"), FieldName("name"));
    return {line, [this, control] { Emit(ControlJson(*control)); }};
  }
  if (op == "member") {
    Fields f(command, op, {"name"});
    std::string name = ReadString(f.Required("name"), FieldName("name"));
    if (!IsMember(name)) throw ScriptError("unknown member " + Quoted(name));
    return {line, [this, name] {
              Emit({{"member", name}, {"value", *MemberJson(ticket_->members(), name)}});
            }};
  }
  if (op == "focused") {
    Fields f(command, op, {});
    return {line, [this] {
              const Control* focused = UserForm().focused();
              Emit({{"focused", focused ? Json(focused->fullName()) : Json(nullptr)}});
            }};
  }
  throw ScriptError("unknown op " + Quoted(op));
}

// --- Events ---

void ScriptHost::CloseTicket() {
  Show("CloseTicket", false, Json::object());
  RunHandlers("CloseTicket");
}

void ScriptHost::ErrorMsg(Long& ErrorNum, std::string& ErrorString, std::string& FunctionName) {
  Show("ErrorMsg", false,
       Args()
           .num("ErrorNum", ErrorNum)
           .text("ErrorString", ErrorString)
           .text("FunctionName", FunctionName));
  RunHandlers("ErrorMsg");
}

void ScriptHost::GetReason(Integer Reason, std::string& ReasonDesc) {
  Show("GetReason", true, Args().num("Reason", Reason).text("ReasonDesc", ReasonDesc));
  auto it = reasons_.find(Reason);
  if (it != reasons_.end()) ReasonDesc = it->second;
  RunHandlers("GetReason");
}

void ScriptHost::GID(Integer& GID) {
  Show("GID", true, Args().num("GID", GID));
  if (nextGid_) {
    GID = *nextGid_;
    // Numbers go round within the 16 bits of an Integer.
    nextGid_ = *nextGid_ == std::numeric_limits<Integer>::max()
                   ? std::numeric_limits<Integer>::min()
                   : static_cast<Integer>(*nextGid_ + 1);
  }
  RunHandlers("GID");
}

void ScriptHost::Message(std::string Message) {
  Show("Message", false, Args().text("Message", Message));
  RunHandlers("Message");
}

void ScriptHost::VtInstGetArrayAll(Long& BaseID, Long& ValueID, Long& LinkID, Long& SourceID,
                                   Integer& InstType, Integer& Term, Date& Expiry, Integer& Status,
                                   Variant& InstrumentIDArray, Variant& BaseIDArray,
                                   Variant& ValueIDArray, Variant& LinkIDArray,
                                   Variant& SourceIDArray, Boolean& bSuccess) {
  Show("VtInstGetArrayAll", true,
       Args()
           .num("BaseID", BaseID)
           .num("ValueID", ValueID)
           .num("LinkID", LinkID)
           .num("SourceID", SourceID)
           .num("InstType", InstType)
           .num("Term", Term)
           .date("Expiry", Expiry)
           .num("Status", Status)
           .var("InstrumentIDArray", InstrumentIDArray)
           .var("BaseIDArray", BaseIDArray)
           .var("ValueIDArray", ValueIDArray)
           .var("LinkIDArray", LinkIDArray)
           .var("SourceIDArray", SourceIDArray)
           .flag("bSuccess", bSuccess));
  VariantArray ids, bases, values, links, sources;
  auto matches = [](Long wanted, Long have) { return wanted == 0 || wanted == have; };
  for (const InstrumentRec& r : instruments_) {
    if (!matches(BaseID, r.BaseID) || !matches(ValueID, r.ValueID) || !matches(LinkID, r.LinkID) ||
        !matches(SourceID, r.SourceID))
      continue;
    ids.elements.push_back(Variant::FromLong(r.InstrumentID));
    bases.elements.push_back(Variant::FromLong(r.BaseID));
    values.elements.push_back(Variant::FromLong(r.ValueID));
    links.elements.push_back(Variant::FromLong(r.LinkID));
    sources.elements.push_back(Variant::FromLong(r.SourceID));
  }
  InstrumentIDArray = Variant::FromArray(std::move(ids));
  BaseIDArray = Variant::FromArray(std::move(bases));
  ValueIDArray = Variant::FromArray(std::move(values));
  LinkIDArray = Variant::FromArray(std::move(links));
  SourceIDArray = Variant::FromArray(std::move(sources));
  bSuccess = true;
  RunHandlers("VtInstGetArrayAll");
}

void ScriptHost::Connected(Boolean& Connected) {
  Show("Connected", true, Args().flag("Connected", Connected));
  Connected = connected_;
  RunHandlers("Connected");
}

void ScriptHost::VtInstGetArray(Long& InstrumentID, Long& BaseID, Long& ValueID, Long& LinkID,
                                Long& SourceID, Integer& InstType, Integer& Term,
                                std::string& ShortDesc, std::string& LongDesc, Long& ContractSize,
                                Date& Expiry, double& Pip, double& Strike, Integer& Status,
                                Integer& CallPut, Date& ValueDate) {
  Show("VtInstGetArray", true,
       Args()
           .num("InstrumentID", InstrumentID)
           .num("BaseID", BaseID)
           .num("ValueID", ValueID)
           .num("LinkID", LinkID)
           .num("SourceID", SourceID)
           .num("InstType", InstType)
           .num("Term", Term)
           .text("ShortDesc", ShortDesc)
           .text("LongDesc", LongDesc)
           .num("ContractSize", ContractSize)
           .date("Expiry", Expiry)
           .num("Pip", Pip)
           .num("Strike", Strike)
           .num("Status", Status)
           .num("CallPut", CallPut)
           .date("ValueDate", ValueDate));
  auto it = std::find_if(instruments_.begin(), instruments_.end(),
                         [&](const InstrumentRec& r) { return r.InstrumentID == InstrumentID; });
  if (it != instruments_.end()) {
    const InstrumentRec& r = *it;
    AnswerInstrument(r, BaseID, ValueID, LinkID, SourceID, InstType, Term, ShortDesc, LongDesc,
                     ContractSize, Expiry, Pip, Strike, Status, CallPut, ValueDate);
  }
  RunHandlers("VtInstGetArray");
}

void ScriptHost::VtOrderGenericNew(Long ToID, Long OrderID, Long AccountID, Long InstrumentID,
                                   double Quantity, Long PrimarySecondaryQty, double Price,
                                   Long OrderType, Date Duration, Date MarketTime, Date ValueDate,
                                   Long Status, Long LinkID, Integer Action, Integer Reason,
                                   Long CounterpartyID, Boolean Encrypt, Long DummyLive,
                                   std::string FreeFormat, Long SystemID, Integer GID,
                                   Long CounterPartySystemID, Long PriceProfileID,
                                   Integer Priority) {
  Show("VtOrderGenericNew", false,
       Args()
           .num("ToID", ToID)
           .num("OrderID", OrderID)
           .num("AccountID", AccountID)
           .num("InstrumentID", InstrumentID)
           .num("Quantity", Quantity)
           .num("PrimarySecondaryQty", PrimarySecondaryQty)
           .num("Price", Price)
           .num("OrderType", OrderType)
           .date("Duration", Duration)
           .date("MarketTime", MarketTime)
           .date("ValueDate", ValueDate)
           .num("Status", Status)
           .num("LinkID", LinkID)
           .num("Action", Action)
           .num("Reason", Reason)
           .num("CounterpartyID", CounterpartyID)
           .flag("Encrypt", Encrypt)
           .num("DummyLive", DummyLive)
           .text("FreeFormat", FreeFormat)
           .num("SystemID", SystemID)
           .num("GID", GID)
           .num("CounterPartySystemID", CounterPartySystemID)
           .num("PriceProfileID", PriceProfileID)
           .num("Priority", Priority));
  RunHandlers("VtOrderGenericNew");
}

void ScriptHost::VtOrderGenericArray(
    Long& ToID, Variant& OrderID, Variant& AccountID, Variant& InstrumentID, Variant& Quantity,
    Variant& PrimarySecondaryQty, Variant& Price, Variant& OrderType, Variant& Duration,
    Variant& MarketTime, Variant& ValueDate, Variant& Status, Variant& Reason,
    Variant& CounterpartyID, Variant& FreeFormat, Variant& LinkID, Variant& Action,
    Variant& SystemID, Variant& CounterPartySystemID, Variant& PriceProfileID, Long& DummyLive,
    Boolean& Encrypt, Integer& GID, Integer& Priority) {
  Show("VtOrderGenericArray", false,
       Args()
           .num("ToID", ToID)
           .var("OrderID", OrderID)
           .var("AccountID", AccountID)
           .var("InstrumentID", InstrumentID)
           .var("Quantity", Quantity)
           .var("PrimarySecondaryQty", PrimarySecondaryQty)
           .var("Price", Price)
           .var("OrderType", OrderType)
           .var("Duration", Duration)
           .var("MarketTime", MarketTime)
           .var("ValueDate", ValueDate)
           .var("Status", Status)
           .var("Reason", Reason)
           .var("CounterpartyID", CounterpartyID)
           .var("FreeFormat", FreeFormat)
           .var("LinkID", LinkID)
           .var("Action", Action)
           .var("SystemID", SystemID)
           .var("CounterPartySystemID", CounterPartySystemID)
           .var("PriceProfileID", PriceProfileID)
           .num("DummyLive", DummyLive)
           .flag("Encrypt", Encrypt)
           .num("GID", GID)
           .num("Priority", Priority));
  RunHandlers("VtOrderGenericArray");
}

void ScriptHost::VtTradeGenericNew(Long ToID, Long TradeID, Long AccountID, Long InstrumentID,
                                   double Quantity, Long PrimarySecondaryQty, double Price,
                                   Integer TradeType, Date MarketTime, Date ValueDate,
                                   Integer Status, Integer Reason, Long OrderID,
                                   Long CounterpartyID, Long LinkID, Boolean Encrypt,
                                   Long DummyLive, std::string FreeFormat, Long SystemID,
                                   Integer GID, Long CounterPartySystemID, Long PriceProfileID,
                                   Integer Priority) {
  Show("VtTradeGenericNew", false,
       Args()
           .num("ToID", ToID)
           .num("TradeID", TradeID)
           .num("AccountID", AccountID)
           .num("InstrumentID", InstrumentID)
           .num("Quantity", Quantity)
           .num("PrimarySecondaryQty", PrimarySecondaryQty)
           .num("Price", Price)
           .num("TradeType", TradeType)
           .date("MarketTime", MarketTime)
           .date("ValueDate", ValueDate)
           .num("Status", Status)
           .num("Reason", Reason)
           .num("OrderID", OrderID)
           .num("CounterpartyID", CounterpartyID)
           .num("LinkID", LinkID)
           .flag("Encrypt", Encrypt)
           .num("DummyLive", DummyLive)
           .text("FreeFormat", FreeFormat)
           .num("SystemID", SystemID)
           .num("GID", GID)
           .num("CounterPartySystemID", CounterPartySystemID)
           .num("PriceProfileID", PriceProfileID)
           .num("Priority", Priority));
  RunHandlers("VtTradeGenericNew");
}

void ScriptHost::VtPriceGenericRequest(Long ToID, Long InstrumentID, Long SourceID) {
  Show("VtPriceGenericRequest", false,
       Args().num("ToID", ToID).num("InstrumentID", InstrumentID).num("SourceID", SourceID));
  RunHandlers("VtPriceGenericRequest");
}

void ScriptHost::VtPriceGetArray(Long InstrumentID, Long SourceID, Long& CounterpartyID,
                                 double& Bid, double& Offer, double& High, double& Low,
                                 Long& PriceType, Date& PriceTime, Long& PriceProfileID) {
  Show("VtPriceGetArray", true,
       Args()
           .num("InstrumentID", InstrumentID)
           .num("SourceID", SourceID)
           .num("CounterpartyID", CounterpartyID)
           .num("Bid", Bid)
           .num("Offer", Offer)
           .num("High", High)
           .num("Low", Low)
           .num("PriceType", PriceType)
           .date("PriceTime", PriceTime)
           .num("PriceProfileID", PriceProfileID));
  const PriceRec* price = nullptr;
  if (auto own = pricesByProfile_.find({InstrumentID, PriceProfileID});
      own != pricesByProfile_.end())
    price = &own->second;
  else if (auto any = pricesAnyProfile_.find(InstrumentID); any != pricesAnyProfile_.end())
    price = &any->second;
  if (price) {
    CounterpartyID = price->CounterpartyID, Bid = price->Bid, Offer = price->Offer;
    High = price->High, Low = price->Low, PriceType = price->PriceType;
    PriceTime = price->PriceTime;
  }
  RunHandlers("VtPriceGetArray");
}

void ScriptHost::SystemTime(Date& SystemTime) {
  Show("SystemTime", true, Args().date("SystemTime", SystemTime));
  if (systemTime_) SystemTime = *systemTime_;
  RunHandlers("SystemTime");
}

void ScriptHost::RequestEquity(Long& AccountID, Long& InstrumentID) {
  Show("RequestEquity", false,
       Args().num("AccountID", AccountID).num("InstrumentID", InstrumentID));
  RunHandlers("RequestEquity");
}

void ScriptHost::ResizeTicket(Integer& Action) {
  Show("ResizeTicket", false, Args().num("Action", Action));
  RunHandlers("ResizeTicket");
}

}  // namespace quillon::script
