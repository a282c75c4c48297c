// The settlement calendar: the trading day, valid value dates, spot and forward dates.

#include <string>

#include "valuedates/value_date_fixture.h"

namespace quillon {
namespace {

class SettlementTest : public ValueDateTest {};

TEST_F(SettlementTest, TradingDayRollsAtTheEndOfTheTradingDay) {
  struct Case { Date end, moment, expected; } cases[] = {
      {TimeSerial(17, 0, 0), D(2001, 3, 1) + TimeSerial(17, 0, 0), D(2001, 3, 2)},
      // Weekends are not looked at: Friday evening belongs to Saturday.
      {TimeSerial(17, 0, 0), D(2001, 3, 2) + TimeSerial(18, 0, 0), D(2001, 3, 3)},
      // Only the time of day of the end counts.
      {D(1999, 7, 7) + TimeSerial(9, 30, 0), D(2001, 3, 1) + TimeSerial(9, 29, 59), D(2001, 3, 1)},
      // Never set, the day ends at midnight: every moment belongs to tomorrow.
      {0, D(2001, 3, 1), D(2001, 3, 2)},
  };
  for (const Case& c : cases) {
    ticket_->setTradingDayEnd(c.end);
    EXPECT_EQ(probe().TradingDayOf(c.moment), c.expected) << "moment " << c.moment;
  }
}

TEST_F(SettlementTest, ValidValueDateTestsInOrderOnTheHostsClockAndReportsFailures) {
  holidays_.days = {{kEur, D(2001, 3, 5)}, {kUsd, D(2001, 3, 6)}};
  // At 10:00 on Thursday 1 March 2001 the trading day is 1 March.
  // Each with the currencies the library was asked about, in order.
  struct Case { Date day; bool valid; std::vector<Long> asked; } cases[] = {
      {D(2001, 2, 28), false, {}},
      {D(2001, 3, 1) + TimeSerial(12, 0, 0), false, {}},  // the trading day itself
      {D(2001, 3, 4), false, {}},                          // Sunday
      {D(2001, 3, 5), false, {kEur}},
      {D(2001, 3, 6), false, {kEur, kUsd}},  // a holiday of the value currency alone
      {D(2001, 3, 7), true, {kEur, kUsd}},
  };
  for (const Case& c : cases) {
    holidays_.asked.clear();
    EXPECT_EQ(Valid(kEurUsd, c.day), c.valid) << "day " << c.day;
    std::vector<Long> asked;
    for (const auto& q : holidays_.asked) asked.push_back(q.first);
    EXPECT_EQ(asked, c.asked) << "day " << c.day;
  }
  // The library gets the date as given, time of day included.
  Valid(kEurUsd, D(2001, 3, 7) + 0.5);
  EXPECT_EQ(holidays_.asked.back().second, D(2001, 3, 7) + 0.5);

  // A host clock of record moves the trading day; instrument 0 asks about currency 0.
  struct Clock : RecordingHost {
    Date time = 0;
    void SystemTime(Date& t) override { t = time; }
  } host;
  host.instruments = host_.instruments;
  ticket_->setHost(&host);
  host.time = D(2001, 3, 1) + TimeSerial(17, 0, 0);
  EXPECT_FALSE(Valid(kEurUsd, D(2001, 3, 2)));
  holidays_.asked.clear();
  EXPECT_TRUE(Valid(0, D(2001, 3, 5)));
  const std::pair<Long, Date> currency0{0, D(2001, 3, 5)};
  EXPECT_EQ(holidays_.asked, (std::vector<std::pair<Long, Date>>{currency0, currency0}));
  EXPECT_EQ(host.count("VtInstGetArray"), 1);  // only for the first call

  // A date that is no date: the check fails, reports, and answers false.
  EXPECT_FALSE(Valid(kEurUsd, 1e12));
  ASSERT_EQ(host.count("ErrorMsg"), 1);
  EXPECT_EQ(host.last("ErrorMsg")->args,
            (std::vector<std::string>{"6", "Overflow", "Valid_Value_Date"}));
  ticket_->setHost(&host_);
}

// Each with the code as the ticket rewrites it, to its days past the sentinel or to spot.
TEST_F(SettlementTest, SpotAndForwardDates) {
  holidays_.days = {{kUsd, D(2001, 3, 16)}, {kEur, D(2001, 4, 13)}};
  struct Case { Date trade, code, expected, after; } cases[] = {
      {D(2001, 3, 3), kNoDate, D(2001, 3, 6), kNoDate},  // a Saturday trade date gives Tuesday
      {D(2001, 3, 1), 0, D(2001, 3, 5), kNoDate},        // no code, or a bare time, is spot
      {D(2001, 3, 1), TimeSerial(23, 59, 59), D(2001, 3, 5), kNoDate},
      // One year three months and 14 days after spot.
      {D(2001, 3, 1), D(1991, 4, 15), D(2002, 6, 19), D(1990, 1, 15)},
      // Spot 31 January: one month is the end of February.
      {D(2002, 1, 29), D(1990, 2, 1), D(2002, 2, 28), kNoDate},
      // One month lands on Friday 13 April, an EUR holiday, and rolls on to Monday.
      {D(2001, 3, 9), D(1990, 2, 1), D(2001, 4, 16), kNoDate},
      // Spot Wednesday 30 May: Saturday 30 June rolls into July and turns back to Friday.
      {D(2001, 5, 28), D(1990, 2, 1), D(2001, 6, 29), kNoDate},
      // Spot Thursday 30 August: Sunday 30 September rolls on to Monday 1 October and stays.
      {D(2001, 8, 28), D(1990, 2, 1), D(2001, 10, 1), kNoDate},
      // A code before the sentinel counts days from the trade date, not from spot.
      {D(2001, 3, 1), D(1989, 12, 29), D(2001, 3, 5), D(1989, 12, 29)},
      {D(2001, 3, 1), D(1989, 12, 31), D(2001, 3, 2), D(1989, 12, 31)},
  };
  for (const Case& c : cases) {
    Date trade = c.trade, code = c.code;
    Long inst = kEurUsd;
    EXPECT_EQ(ticket_->Get_Settlement_Day(trade, code, inst), c.expected) << "code " << c.code;
    EXPECT_EQ(code, c.after) << "code " << c.code;
  }
  EXPECT_EQ(host_.count("ErrorMsg"), 0);
}

TEST_F(SettlementTest, CodesTooFarOutAndEndlessWalksReport) {
  // A code too far out gives spot and is left as it was; so is a bare time (a day of 1899).
  for (const Date far : {kNoDate + 40000, TimeSerial(12, 0, 0)}) {
    host_.events.clear();
    Date trade = D(2001, 3, 1), code = far;
    Long inst = kEurUsd;
    EXPECT_EQ(ticket_->Get_Settlement_Day(trade, code, inst), D(2001, 3, 5)) << far;
    EXPECT_EQ(code, far);
    ASSERT_EQ(host_.count("ErrorMsg"), 1);
    EXPECT_EQ(host_.last("ErrorMsg")->args,
              (std::vector<std::string>{"6", "Overflow", "Get_Settlement_Day"}));
  }

  // Every day a holiday: spot is never found.
  host_.events.clear();
  holidays_.everyDay = true;
  EXPECT_EQ(Settle(D(2001, 3, 1), kNoDate), D(2001, 3, 1) + 3660);
  EXPECT_EQ(host_.count("ErrorMsg"), 1);
  EXPECT_EQ(host_.last("ErrorMsg")->args,
            (std::vector<std::string>{"5", "No valid value date within 3660 days",
                                      "Get_Settlement_Day"}));

  // A backward roll that reaches the trading day: one day after Friday 29 June 2001, on that
  // day, rolls into July, turns back, and no date before it can pass any more.
  holidays_.everyDay = false;
  host_.events.clear();
  At(2001, 6, 29, 10);
  Settle(D(2001, 6, 29), D(1989, 12, 31));
  ASSERT_EQ(host_.count("ErrorMsg"), 1);
  EXPECT_EQ(host_.last("ErrorMsg")->args[2], "Get_Settlement_Day");
}

}  // namespace
}  // namespace quillon
