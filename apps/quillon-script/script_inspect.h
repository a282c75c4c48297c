// What a script reads and writes of the ticket by name: properties, members and controls.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "script_values.h"
#include "ticket/ticket_model.h"

namespace quillon::script {

// One property of the ticket's interface.
struct PropertySpec {
  const char* name;
  ValueType type;
  std::function<Value(const Clientticket&)> get;
  std::function<void(Clientticket&, const Value&)> set;  // empty for a read-only property
};

// The property of that name, or nullptr.
const PropertySpec* FindProperty(const std::string& name);

// The member of that name as JSON (records as objects, Accounts as an array from element 0,
// AccountPriceProfile as CurrentAccount.PriceProfile); nullopt for an unknown name.
std::optional<Json> MemberJson(const TicketMembers& members, const std::string& name);
// Whether a member of that name exists.
bool IsMember(const std::string& name);

Json RecordJson(const AccountRec& r);
Json RecordJson(const InstrumentRec& r);

// {"control": NAME, ...properties by kind}, keys in the order: Visible, Enabled, Caption,
// Text, Value, Locked, BackColor, ForeColor, FontStrikethru, SelStart, SelLength, ListIndex,
// List, Interval, Left, Top, Width, Height, MinDate, MaxDate.
Json ControlJson(const Control& control);

}  // namespace quillon::script
