// A ticket with a table of bank holidays, and a small family of EUR/USD forwards.
#pragma once

#include <set>
#include <utility>
#include <vector>

#include "platform/date.h"
#include "ticket/ticket_fixture.h"

namespace quillon {

// Holidays from a table of (currency instrument, day); records every question.
class TableHolidays : public HolidayLibrary {
 public:
  std::set<std::pair<Long, Date>> days;
  bool everyDay = false;
  std::vector<std::pair<Long, Date>> asked;

  Long IsValueDateABankHol(Long instrumentID, Date date) override {
    asked.emplace_back(instrumentID, date);
    return everyDay || days.count({instrumentID, DateOnly(date)}) ? -1 : 0;
  }
};

class ValueDateTest : public TicketTest {
 protected:
  // The family: the spot instrument is the parent; 1W, 1M and 3M forwards of class 7 and a
  // broken-date instrument of term 11 link to it; 106 stays in its own class (term 6) and 107
  // has no class at all.
  static constexpr Long kSpot = 100, k1W = 101, k1M = 102, k3M = 103, kBroken = 104;
  static constexpr Long kOwnClass = 106, kNoClassInst = 107;

  ValueDateTest() {
    ticket_ = std::make_unique<Clientticket>(
        TicketServices{.loop = &loop_, .holidays = &holidays_, .locale = &locale_});
    ticket_->setHost(&host_);
    ticket_->setTradingDayEnd(TimeSerial(17, 0, 0));

    AddMember(kSpot, "EUR/USD", 0, 2, kNoDate);
    AddMember(k1W, "EUR/USD 1W", kSpot, 7, DateSerial(1990, 1, 8));
    AddMember(k1M, "EUR/USD 1M", kSpot, 7, DateSerial(1990, 2, 1));
    AddMember(k3M, "EUR/USD 3M", kSpot, 7, DateSerial(1990, 4, 1));
    AddMember(kBroken, "EUR/USD broken date", kSpot, 11, kNoDate);
    AddMember(kOwnClass, "EUR/USD own class", kSpot, 6, DateSerial(1990, 1, 8));
    AddMember(kNoClassInst, "EUR/USD no class", kSpot, 0, DateSerial(1990, 1, 8));
    family = {k1W, k1M, k3M, kBroken};
    host_.instGetArrayAll = [this](Long, Long, Long link, Variant& ids) {
      if (link != kSpot) return;
      VariantArray array;
      for (Long id : family) array.elements.push_back(Variant::FromLong(id));
      ids = Variant::FromArray(array);
    };
  }
  ~ValueDateTest() override { ticket_.reset(); }

  void AddMember(Long id, const std::string& name, Long link, Integer term, Date code) {
    InstrumentRec& r = host_.instruments[id] = Instrument(id, name, name + " forward", 0.0001);
    r.BaseID = kEur, r.ValueID = kUsd, r.LinkID = link, r.Term = term, r.ValueDate = code;
  }

  static Date D(int year, int month, int day) { return DateSerial(year, month, day); }
  // Moves the local clock to a day and time.
  void At(int year, int month, int day, int hour, int minute = 0) {
    loop_.setClock(DateSerial(year, month, day) + TimeSerial(hour, minute, 0));
  }
  Date Settle(Date trade, Date code, Long inst = kEurUsd) {
    return ticket_->Get_Settlement_Day(trade, code, inst);
  }
  bool Valid(Long inst, Date day) { return ticket_->Valid_Value_Date(inst, day); }

  TableHolidays holidays_;
  std::vector<Long> family;
};

}  // namespace quillon
