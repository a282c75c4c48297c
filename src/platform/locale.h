// The user's locale: the signs and names that number and date texts are written with.
#pragma once

#include <array>
#include <string>

#include "platform/runtime_error.h"

namespace quillon {

class Locale {
 public:
  // The locale of a name such as "en_US" or "de_DE", its data taken from ICU ("de_AT" without
  // data of its own gets "de"). A name whose language ICU does not know gets "." and "," and
  // English month names, whatever the process's own locale.
  static Locale ByName(const std::string& name);
  // en_US.
  static const Locale& Default();

  const std::string& name() const { return name_; }
  const std::string& decimalSign() const { return decimal_; }
  const std::string& groupingSign() const { return grouping_; }
  // Short month name, month 1 to 12 ("Jan", "Feb" ... in English; "Jan", "Feb", "Mär" ... in
  // German), without a trailing period. A month outside 1 to 12 raises "Invalid procedure call".
  const std::string& shortMonthName(int month) const { return shortMonths_[checked(month)]; }
  const std::string& longMonthName(int month) const { return longMonths_[checked(month)]; }

 private:
  static std::size_t checked(int month) {
    if (month < 1 || month > 12) Raise(kInvalidProcedureCall);
    return static_cast<std::size_t>(month - 1);
  }

  std::string name_;
  std::string decimal_ = ".";
  std::string grouping_ = ",";
  std::array<std::string, 12> shortMonths_{};
  std::array<std::string, 12> longMonths_{};
};

}  // namespace quillon
