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
    ticket_->setAccountType(0x0004 | 0x0400 | 0x0080 | 0x0002);
    Msg m;
    m.InstrumentID = instrument;
    m.ValueDate = valueDate;
    m.Status = -1;
    Initialise(m);
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

  // The trading day itself: chosen, refused, the calendar closes with nothing changed.
  calendar().setValue(D(2001, 3, 1));
  probe().ValueClick();
  EXPECT_FALSE(calendar().Visible());
  EXPECT_EQ(m().ValueDate, D(2001, 3, 5));

  // After the end of the trading day the calendar starts on the next day.
  At(2001, 3, 1, 17);
  probe().ValueClick();
  EXPECT_EQ(calendar().MinDate(), D(2001, 3, 2));
  EXPECT_EQ(calendar().MaxDate(), D(2006, 3, 2));
}

TEST_F(DatePickerTest, HowAChoiceEnds) {
  enum How { kButton, kClick, kEnter, kSpace, kOtherKey };
  const auto mar = [](int day) { return D(2001, 3, day); };
  struct Case {
    const char* what;
    Long instrument;
    Date valueDate, chosen;
    How how;
    bool staysOpen;
    Long instrumentAfter;
    Date valueDateAfter;
    int familyQueries;
  } cases[] = {
      {"button, holiday", kSpot, mar(5), mar(16), kButton, false, kSpot, mar(5), 0},
      {"click, holiday", kSpot, mar(5), mar(16), kClick, true, kSpot, mar(5), 0},
      {"button, same date", k1W, mar(12), mar(12), kButton, false, k1W, mar(12), 1},
      {"click, same date", k1W, mar(12), mar(12), kClick, false, k1W, mar(12), 0},
      {"button, no instrument", k1M, D(2001, 4, 5), mar(2), kButton, true, k1M, D(2001, 4, 5), 0},
      {"button, found", kSpot, mar(5), mar(12), kButton, false, k1W, mar(12), 1},
      {"click, found", kSpot, mar(5), D(2001, 4, 5), kClick, false, k1M, D(2001, 4, 5), 1},
      {"enter, found", kSpot, mar(5), D(2001, 6, 5), kEnter, false, k3M, D(2001, 6, 5), 1},
      {"space, found", kSpot, mar(5), mar(20), kSpace, false, kBroken, mar(20), 1},
      {"other key", kSpot, mar(5), mar(12), kOtherKey, true, kSpot, mar(5), 0},
  };
  holidays_.days = {{kUsd, D(2001, 3, 16)}};
  for (const Case& c : cases) {
    Open(c.instrument, c.valueDate);
    const std::string caption = f().fraOrderEntry.Caption();
    probe().ValueClick();
    calendar().setValue(c.chosen);
    host_.events.clear();
    Form& form = f().controls();
    switch (c.how) {
      case kButton: probe().ValueClick(); break;
      case kClick: ASSERT_TRUE(form.userDateClick(calendar(), c.chosen)) << c.what; break;
      case kEnter: ASSERT_TRUE(form.userCalendarKey(calendar(), 13)) << c.what; break;
      case kSpace: ASSERT_TRUE(form.userCalendarKey(calendar(), 32)) << c.what; break;
      case kOtherKey: ASSERT_TRUE(form.userCalendarKey(calendar(), 65)) << c.what; break;
    }
    EXPECT_EQ(calendar().Visible(), c.staysOpen) << c.what;
    EXPECT_EQ(m().InstrumentID, c.instrumentAfter) << c.what;
    EXPECT_EQ(m().ValueDate, c.valueDateAfter) << c.what;
    EXPECT_EQ(host_.count("VtInstGetArrayAll"), c.familyQueries) << c.what;
    EXPECT_EQ(host_.count("ErrorMsg"), 0) << c.what;
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

TEST_F(DatePickerTest, ANewInstrumentKeepsTheOrderAndRefreshesThePrice) {
  host_.prices[k1W] = Price(1.2401, 1.2406);
  Open(kSpot, D(2001, 3, 5));
  const Long orderType = m().OrderType;
  const Long account = m().AccountID;
  probe().ValueClick();
  ASSERT_TRUE(f().controls().userDateClick(calendar(), D(2001, 3, 12)));
  EXPECT_EQ(m().InstrumentID, k1W);
  EXPECT_EQ(f().lblValueDate.Caption(), "12-Mar-2001");
  EXPECT_EQ(m().OrderType, orderType);
  EXPECT_EQ(m().AccountID, account);
  // The price of the new instrument is asked for after the choice.
  const RecordedEvent* price = host_.last("VtPriceGetArray");
  ASSERT_NE(price, nullptr);
  EXPECT_EQ(price->args[0], std::to_string(k1W));
}

}  // namespace
}  // namespace quillon
