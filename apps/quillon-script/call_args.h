// The ticket's twelve public methods as a script calls them: arguments by name, the return.
#pragma once

#include <string>
#include <vector>

#include "script_values.h"
#include "ticket/ticket_model.h"

namespace quillon::script {

struct ParamSpec {
  const char* name;
  ValueType type;
};

enum class ResultKind { None, Variant, Boolean, Date };

struct MethodSpec {
  const char* name;
  ResultKind result;
  std::vector<ParamSpec> params;  // in interface order
};

// The method of that name, or nullptr.
const MethodSpec* FindMethod(const std::string& name);
// Every method, in interface order.
const std::vector<MethodSpec>& Methods();

// The arguments of one call, in the method's order; each passed by reference.
class CallArgs {
 public:
  // Reads a call's "args" object: known arguments by name, the missing ones at their type's
  // zero. Raises ScriptError on an unknown name or a value of the wrong type.
  static CallArgs Read(const MethodSpec& method, const Json& args);

  const MethodSpec& method() const { return *method_; }
  const std::vector<Value>& values() const { return values_; }
  std::vector<Value>& values() { return values_; }

  // Typed access to argument i, for binding it to a reference parameter.
  Long& L(std::size_t i) { return std::get<Long>(values_.at(i)); }
  Integer& I(std::size_t i) { return std::get<Integer>(values_.at(i)); }
  double& D(std::size_t i) { return std::get<double>(values_.at(i)); }
  bool& B(std::size_t i) { return std::get<bool>(values_.at(i)); }
  std::string& S(std::size_t i) { return std::get<std::string>(values_.at(i)); }

  // The arguments whose value differs from `before` (the same method's), by name in order.
  Json ChangedSince(const CallArgs& before) const;

 private:
  const MethodSpec* method_ = nullptr;
  std::vector<Value> values_;
};

// Calls the method on the ticket with a copy of `given` and returns the line to print:
// {"return": METHOD, "value": V (methods with a result), "args": {changed arguments}}.
Json Invoke(Clientticket& ticket, const CallArgs& given);

}  // namespace quillon::script
