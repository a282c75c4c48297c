// The value date picker: opening the calendar and the ways a choice ends.

#include <string>

#include "valuedates/value_date_fixture.h"

namespace quillon {
namespace {

class DatePickerTest : public ValueDateTest {
 protected:
  // A blank ticket on `instrument` whose value date is `valueDate`.
  void Open(Long instrument, Date valueDate) {
    ticket_->setLanguage(1);
    ticket_->setAccountType(kEveryRight);
    Initialise(Msg{.InstrumentID = instrument, .ValueDate = valueDate, .Status = -1});
  }
  MonthView& calendar() { return f().calValueDate; }
};

TEST_F(DatePickerTest, OpeningSetsTheRangeFromTheTradingDay) {
  Open(kSpot, D(2001, 3, 5));
  probe().ValueClick();
  EXPECT_TRUE(calendar().Visible());
  EXPECT_EQ(calendar().MinDate(), D(2001, 3, 1));  // selectable, and refused on choosing
  EXPECT_EQ(calendar().MaxDate(), D(2006, 3, 1));
  EXPECT_EQ(calendar().Value(), D(2001, 3, 5));
  probe().ValueClick();

  // After the end of the trading day the calendar starts on the next day.
  At(2001, 3, 1, 17);
  probe().ValueClick();
  EXPECT_EQ(calendar().MinDate(), D(2001, 3, 2));
  EXPECT_EQ(calendar().MaxDate(), D(2006, 3, 2));
}

TEST_F(DatePickerTest, AValueDateBeyondTheRangeOpensOnTheDayAlreadySelected) {
  // The calendar refuses the value date; it opens all the same, on its own selection (pulled
  // into the new range), and closing it again changes nothing.
  Open(kSpot, D(2007, 1, 5));
  probe().ValueClick();
  EXPECT_TRUE(calendar().Visible());
  EXPECT_EQ(calendar().Value(), D(2001, 3, 1));
  probe().ValueClick();
  EXPECT_FALSE(calendar().Visible());
  EXPECT_EQ(m().ValueDate, D(2007, 1, 5));
}

// The day is read at each step: one moved while the test asks the host is the day searched for
// and taken, never the instrument of one day with the date of another.
TEST_F(DatePickerTest, ADayMovedWhileItIsTestedIsTheDaySearchedFor) {
  Open(kSpot, D(2001, 3, 5));
  probe().ValueClick();
  calendar().setValue(D(2001, 3, 12));
  host_.inside["SystemTime"] = [&] { calendar().setValue(D(2001, 6, 5)); };
  probe().ValueClick();
  EXPECT_EQ(m().InstrumentID, k3M);
  EXPECT_EQ(m().ValueDate, D(2001, 6, 5));
}

TEST_F(DatePickerTest, HowAChoiceEnds) {
  // How it ends: the value button, a click on a day, or a key (13 Enter, 32 space).
  enum How { kButton = -2, kClick = -1 };
  const auto mar = [](int day) { return D(2001, 3, day); };
  struct {
    const char* what; Long instrument; Date valueDate, chosen; int how; bool staysOpen;
    Long instrumentAfter; Date valueDateAfter; int familyQueries;
  } const cases[] = {
      {"button, trading day", kSpot, mar(5), mar(1), kButton, false, kSpot, mar(5), 0},
      {"button, holiday", kSpot, mar(5), mar(16), kButton, false, kSpot, mar(5), 0},
      {"click, holiday", kSpot, mar(5), mar(16), kClick, true, kSpot, mar(5), 0},
      {"button, same date", k1W, mar(12), mar(12), kButton, false, k1W, mar(12), 1},
      {"click, same date", k1W, mar(12), mar(12), kClick, false, k1W, mar(12), 0},
      {"button, no instrument", k1M, D(2001, 4, 5), mar(2), kButton, true, k1M, D(2001, 4, 5), 0},
      {"button, found", kSpot, mar(5), mar(12), kButton, false, k1W, mar(12), 1},
      {"enter, found", kSpot, mar(5), D(2001, 6, 5), 13, false, k3M, D(2001, 6, 5), 1},
      {"space, found", kSpot, mar(5), mar(20), 32, false, kBroken, mar(20), 1},
      {"other key", kSpot, mar(5), mar(12), 65, true, kSpot, mar(5), 0},
  };
  holidays_.days = {{kUsd, D(2001, 3, 16)}};
  for (const auto& c : cases) {
    Open(c.instrument, c.valueDate);
    const std::string caption = f().fraOrderEntry.Caption();
    const Long orderType = m().OrderType;
    probe().ValueClick();
    calendar().setValue(c.chosen);
    host_.events.clear();
    if (c.how == kButton)
      probe().ValueClick();
    else if (c.how == kClick)
      ASSERT_TRUE(f().controls().userDateClick(calendar(), c.chosen)) << c.what;
    else
      ASSERT_TRUE(f().controls().userCalendarKey(calendar(), c.how)) << c.what;
    EXPECT_EQ(calendar().Visible(), c.staysOpen) << c.what;
    EXPECT_EQ(m().InstrumentID, c.instrumentAfter) << c.what;
    EXPECT_EQ(m().ValueDate, c.valueDateAfter) << c.what;
    EXPECT_EQ(host_.count("VtInstGetArrayAll"), c.familyQueries) << c.what;
    EXPECT_EQ(host_.count("ErrorMsg"), 0) << c.what;
    EXPECT_EQ(m().OrderType, orderType) << c.what;
    if (c.instrumentAfter != c.instrument) {  // the new instrument's price is asked for
      ASSERT_NE(host_.last("VtPriceGetArray"), nullptr) << c.what;
      EXPECT_EQ(host_.last("VtPriceGetArray")->args[0], std::to_string(c.instrumentAfter));
    }
    if (c.valueDateAfter != c.valueDate) {
      EXPECT_EQ(f().lblValueDate.Caption(), FormatDateDMY(c.valueDateAfter, locale_)) << c.what;
      EXPECT_EQ(f().fraOrderEntry.Caption(), host_.instruments[c.instrumentAfter].LongDesc)
          << c.what;
    } else if (c.how != kButton || c.familyQueries == 0) {
      EXPECT_EQ(f().fraOrderEntry.Caption(), caption) << c.what;
    }
    if (calendar().Visible()) probe().ValueClick();  // close it for the next case
  }
}

}  // namespace
}  // namespace quillon
