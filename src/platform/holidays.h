// The bank-holiday library the ticket asks about value dates.
#pragma once

#include "platform/types.h"

namespace quillon {

class HolidayLibrary {
 public:
  virtual ~HolidayLibrary() = default;
  // Non-zero when `date` is a bank holiday of the currency of instrument `instrumentID`.
  virtual Long IsValueDateABankHol(Long instrumentID, Date date) = 0;
};

// A library that knows no holidays.
class NoHolidays : public HolidayLibrary {
 public:
  Long IsValueDateABankHol(Long, Date) override { return 0; }
};

}  // namespace quillon
