// The arguments of a scripted call: reading them by name, and reporting what a call changed.
#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "call_args.h"

namespace quillon::script {
namespace {

std::size_t IndexOf(const MethodSpec& m, const std::string& name) {
  for (std::size_t i = 0; i < m.params.size(); ++i)
    if (name == m.params[i].name) return i;
  ADD_FAILURE() << "no argument " << name;
  return 0;
}

TEST(CallArgs, RefusesUnknownNamesAndWrongTypes) {
  struct { const char *method, *args, *error; } const cases[] = {
      {"Initialise", R"({"Status": "1"})", "argument \"Status\": expected a whole number"},
      {"LoadAccount", R"([1, 2])", "field \"args\": expected an object"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.args);
    try {
      CallArgs::Read(*FindMethod(c.method), Json::parse(c.args));
      ADD_FAILURE() << "no error";
    } catch (const ScriptError& e) {
      EXPECT_NE(std::string(e.what()).find(c.error), std::string::npos) << e.what();
    }
  }
  EXPECT_EQ(FindMethod("initialise"), nullptr);
}

TEST(CallArgs, ReportsOnlyChangedArgumentsInArgumentOrder) {
  const MethodSpec& m = *FindMethod("OrderGeneric");
  const CallArgs before =
      CallArgs::Read(m, Json::parse(R"({"OrderType": 1, "FreeFormat": "a", "Price": 1.5})"));
  CallArgs after = before;
  // Changed in an order other than the arguments'.
  after.S(IndexOf(m, "FreeFormat")) = "b";
  after.D(IndexOf(m, "Duration")) = 32874;
  after.L(IndexOf(m, "OrderType")) = 2;
  after.B(IndexOf(m, "Encrypt")) = true;
  after.D(IndexOf(m, "Price")) = 1.5;  // written, not changed
  EXPECT_EQ(after.ChangedSince(before).dump(),
            R"({"OrderType":2,"Duration":"1990-01-01T00:00:00","FreeFormat":"b","Encrypt":true})");

  CallArgs nan = before;
  nan.D(IndexOf(m, "Strike")) = std::nan("");
  EXPECT_EQ(CallArgs(nan).ChangedSince(nan), Json::object());
  EXPECT_EQ(nan.ChangedSince(before).dump(), R"({"Strike":null})");
}

}  // namespace
}  // namespace quillon::script
