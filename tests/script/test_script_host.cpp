// The script host end to end: line numbers of errors, commands inside events, posted work.
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <string>

#include "call_args.h"
#include "script_host.h"

namespace quillon::script {
namespace {

struct Played { int status; std::string out, err; };

// Plays a script on a fresh host, or on the one given to be asked afterwards.
Played Play(const std::string& script, ScriptHost* given = nullptr) {
  ScriptHost fresh;
  std::istringstream in(script);
  std::ostringstream out, err;
  int status = (given ? *given : fresh).run(in, out, err);
  return {status, out.str(), err.str()};
}

TEST(ScriptHost, AnUnreadableLineStopsTheScriptNamingItsLine) {
  const std::string get = R"({"op": "get", "name": "LinkInstID"})";
  const std::string printed = R"({"get":"LinkInstID","value":-1})";
  // An object of very many different keys is refused as a whole, not read key by key.
  std::string wide = R"({"op": "call", "method": "Initialise", "args": {)";
  for (int i = 0; i <= 100; ++i) wide += (i ? ", \"k" : "\"k") + std::to_string(i) + "\": 0";
  wide += "}}";
  // The bad line comes after a comment, a blank line and a `get`: line 4.
  const std::pair<std::string, std::string> cases[] = {
      {wide, "an object with more than 100 different fields"},
      {R"([1, 2])", "expected a command object, got [1,2]"},
      {R"({"name": "x"})", "missing field \"op\""},
      {R"({"op": "click", "contrl": "cmdValue"})", "unknown field \"contrl\" for op \"click\""},
      {R"({"op": "click"})", "op \"click\" needs field \"control\""},
      // A name with a line break or a NUL in it is written escaped: still one whole line.
      {R"({"op": "member", "name": "a\nb"})", R"(unknown member "a\nb")"},
      {R"({"op": "cl\u0000ik"})", R"(unknown op "cl\u0000ik")"},
      // A raw NUL byte is no JSON, and what follows it is not dropped unread.
      {std::string(R"({"op": "focused"})") + '\0' + R"({"op": "nope"})",
       "bad JSON at column 18: a NUL byte"},
      {R"({"op": "call", "method": "Initialise", "args": {"Sta\r\ntus": 1}})",
       R"(unknown argument "Sta\r\ntus" of Initialise)"},
      {R"({"op": "call", "method": "Initialize"})", "unknown method \"Initialize\""},
      {R"({"op": "type", "control": "lblBid", "text": "1"})",
       "control \"lblBid\" is not a text box"},
      {R"({"op": "spin", "control": "udPrim", "direction": "left"})",
       "field \"direction\": expected \"up\" or \"down\", got \"left\""},
      {R"({"op": "on", "event": "Closed", "do": []})", "unknown event \"Closed\""},
      {R"({"op": "post", "do": [{"op": "get", "name": "x"}]})", "do[0]: unknown property \"x\""},
      {R"({"op": "currency", "InstrumentID": 1, "code": "eur"})",
       "field \"code\": expected an ISO currency code"},
      // Found only when it runs: the list holds no such entry.
      {R"({"op": "select", "control": "cmbAccount", "index": 5})",
       "cmbAccount has no entry 5 (it holds 0)"},
  };
  for (const auto& [bad, error] : cases) {
    SCOPED_TRACE(bad);
    // Every stop ends with status 2 (the golden host_errors scripts).
    Played p = Play("# a comment\n\n" + get + "\n" + bad + "\n" + get + "\n");
    EXPECT_EQ(p.out, printed + "\n");
    EXPECT_EQ(p.err.rfind("line 4: " + error, 0), 0u) << p.err;
    EXPECT_EQ(std::count(p.err.begin(), p.err.end(), '\n'), 1) << p.err;
  }
}

TEST(ScriptHost, EveryMethodCanBeCalledWithItsArgumentsLeftOut) {
  std::string script;
  for (const MethodSpec& m : Methods())
    script += std::string(R"({"op": "call", "method": ")") + m.name + "\"}\n";
  Played p = Play(script);
  EXPECT_EQ(p.status, 0) << p.err;
  // Each method returns, in the order called.
  std::size_t at = 0;
  for (const MethodSpec& m : Methods()) {
    at = p.out.find(std::string(R"({"return":")") + m.name + "\"", at);
    ASSERT_NE(at, std::string::npos) << m.name << " did not return:\n" << p.out;
  }
}

// Answers the scripted host gives; the events are raised here directly, as the ticket would.
TEST(ScriptHost, AnswersTheQuestionsAsTheScriptSays) {
  ScriptHost host;
  const Played p = Play(R"js({"op": "gid", "next": 32767}
{"op": "system_time", "time": "2001-03-02T09:00:00"}
{"op": "reason", "Reason": 2, "text": "Expired"}
{"op": "instrument", "InstrumentID": 10, "BaseID": 1, "ValueID": 2, "ShortDesc": "old"}
{"op": "instrument", "InstrumentID": 1, "ShortDesc": "EUR", "ContractSize": 100000}
{"op": "instrument", "InstrumentID": 20, "BaseID": 1, "ValueID": 3, "SourceID": 4}
{"op": "instrument", "InstrumentID": 10, "BaseID": 1, "ValueID": 2, "ShortDesc": "EUR/USD", "LongDesc": "Euro", "Pip": 0.0001, "ValueDate": 32881, "Status": 1}
{"op": "price", "InstrumentID": 10, "Bid": 1.2345, "Offer": 1.235, "PriceType": 2, "PriceTime": "2001-03-01T09:59:00"}
{"op": "price", "InstrumentID": 10, "PriceProfileID": 5, "Bid": 1.2, "Offer": 1.3}
{"op": "holiday", "InstrumentID": 1, "date": "2001-03-05T15:00:00"}
{"op": "holiday", "InstrumentID": 1, "date": "1899-12-29T18:00:00"}
{"op": "currency", "InstrumentID": 2, "code": "USD"}
)js", &host);
  ASSERT_EQ(p.status, 0) << p.err;

  Integer gid = 0;
  host.GID(gid);
  host.GID(gid);
  EXPECT_EQ(gid, -32768);  // round within 16 bits
  Date now = 1;
  host.SystemTime(now);
  EXPECT_NEAR(now, 36952.375, 1e-9);
  std::string reason;
  host.GetReason(2, reason);
  EXPECT_EQ(reason, "Expired");
  Long id = 10, base = 0, value = 0, link = 0, source = 0, size = 0;
  Integer type = 0, term = 0, status = 0, callPut = 0;
  std::string shortDesc, longDesc;
  Date expiry = 0, valueDate = 0;
  double pip = 0, strike = 0;
  host.VtInstGetArray(id, base, value, link, source, type, term, shortDesc, longDesc, size, expiry,
                      pip, strike, status, callPut, valueDate);
  EXPECT_EQ(shortDesc, "EUR/USD");  // the later instrument replaced the first
  EXPECT_EQ(valueDate, 32881);
  Long missing = 99;
  std::string kept = "kept";
  host.VtInstGetArray(missing, base, value, link, source, type, term, kept, longDesc, size, expiry,
                      pip, strike, status, callPut, valueDate);
  EXPECT_EQ(kept, "kept");
  EXPECT_EQ(base, 1);

  // Every instrument on base 1, in the order added (10 kept its place); 0 matches anything.
  Long wantBase = 1, any = 0, anyLink = 0, anySource = 0;
  Variant ids, bases, values, links, sources;
  Boolean success = false;
  host.VtInstGetArrayAll(wantBase, any, anyLink, anySource, type, term, expiry, status, ids, bases,
                         values, links, sources, success);
  EXPECT_TRUE(success);
  EXPECT_EQ(VariantJson(ids).dump(), "[10,20]");
  EXPECT_EQ(VariantJson(sources).dump(), "[0,4]");

  // A profile with a price of its own gets it; any other gets the price with no profile.
  struct { Long instrument, profile; double bid, offer; } const prices[] = {
      {10, 5, 1.2, 1.3}, {10, 7, 1.2345, 1.235}, {11, 0, -1, -1}};
  for (const auto& c : prices) {
    SCOPED_TRACE(c.profile);
    Long counterparty = 0, priceType = 0, profile = c.profile;
    double bid = -1, offer = -1, high = 0, low = 0;
    Date time = 0;
    host.VtPriceGetArray(c.instrument, 0, counterparty, bid, offer, high, low, priceType, time,
                         profile);
    EXPECT_EQ(bid, c.bid);
    EXPECT_EQ(offer, c.offer);
    EXPECT_EQ(profile, c.profile);
  }

  // Holidays by whole day; a currency answers from the calendars plugged in.
  struct Calendars : CurrencyCalendars {
    bool IsHoliday(const std::string& code, Date day) const override {
      return code == "USD" && day == 36955;
    }
  } calendars;
  auto& holidays = host.holidays();
  EXPECT_EQ(holidays.IsValueDateABankHol(1, 36955.25), 1);
  EXPECT_EQ(holidays.IsValueDateABankHol(1, 36956), 0);
  // Before day 0 the fraction still counts forward from the day: -1.25 is 29 Dec 1899 06:00.
  EXPECT_EQ(holidays.IsValueDateABankHol(1, -1.25), 1);
  EXPECT_EQ(holidays.IsValueDateABankHol(1, -2), 0);
  EXPECT_EQ(holidays.IsValueDateABankHol(2, 36955.5), 0);  // no calendars yet
  holidays.SetCalendars(&calendars);
  EXPECT_EQ(holidays.IsValueDateABankHol(2, 36955.5), 1);

  // Null answers leave the arguments as passed.
  ASSERT_EQ(Play(R"js({"op": "gid", "next": null}
{"op": "system_time", "time": null}
)js", &host).status, 0);
  gid = 3;
  host.GID(gid);
  EXPECT_EQ(gid, 3);
  now = 36951.5;
  host.SystemTime(now);
  EXPECT_EQ(now, 36951.5);
}

}  // namespace
}  // namespace quillon::script
