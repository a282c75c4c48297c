// The user's locale: the signs and names that number and date texts are written with.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

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
  // The decimal and grouping signs packed into one number, taken once: two locales have the
  // same key exactly when they have the same two signs. A cheap key for number texts kept
  // from one call to the next; 0 when the signs are too long to pack (such a locale keeps
  // none).
  std::uint64_t signsKey() const { return signsKey_; }
  // Short month name, month 1 to 12 ("Jan", "Feb" ... in English; "Jan", "Feb", "Mär" ... in
  // German), without a trailing period. A month outside 1 to 12 raises "Invalid procedure call".
  const std::string& shortMonthName(int month) const { return shortMonths_[checked(month)]; }
  const std::string& longMonthName(int month) const { return longMonths_[checked(month)]; }

 private:
  static std::size_t checked(int month) {
    if (month < 1 || month > 12) Raise(kInvalidProcedureCall);
    return static_cast<std::size_t>(month - 1);
  }

  // Each sign's length and bytes, the decimal sign in the low bytes; 0 when they do not fit.
  static constexpr std::uint64_t PackSigns(std::string_view decimal, std::string_view grouping) {
    if (decimal.empty() || decimal.size() + grouping.size() > 6) return 0;
    std::uint64_t key = 0;
    int shift = 0;
    for (const std::string_view sign : {decimal, grouping}) {
      key |= static_cast<std::uint64_t>(sign.size()) << shift;
      shift += 8;
      for (const char c : sign) {
        key |= static_cast<std::uint64_t>(static_cast<unsigned char>(c)) << shift;
        shift += 8;
      }
    }
    return key;
  }

  std::string name_;
  std::string decimal_ = ".";
  std::string grouping_ = ",";
  std::uint64_t signsKey_ = PackSigns(".", ",");
  std::array<std::string, 12> shortMonths_{};
  std::array<std::string, 12> longMonths_{};
};

}  // namespace quillon
