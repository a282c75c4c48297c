#include "platform/locale.h"

#include <unicode/dcfmtsym.h>
#include <unicode/dtfmtsym.h>
#include <unicode/locid.h>
#include <unicode/unistr.h>

namespace quillon {

namespace {

std::string Utf8(const icu::UnicodeString& text) {
  std::string out;
  text.toUTF8String(out);
  return out;
}

// Month names as they stand alone (not inside a date, where some languages decline or
// abbreviate them with a period), without a trailing period.
void ReadMonths(const icu::DateFormatSymbols& symbols, icu::DateFormatSymbols::DtWidthType width,
                std::array<std::string, 12>& out) {
  int32_t count = 0;
  const icu::UnicodeString* names =
      symbols.getMonths(count, icu::DateFormatSymbols::STANDALONE, width);
  for (int32_t i = 0; i < count && i < 12; ++i) {
    std::string name = Utf8(names[i]);
    if (!name.empty() && name.back() == '.') name.pop_back();
    if (!name.empty()) out[i] = std::move(name);
  }
}

constexpr std::array<const char*, 12> kEnglishShort = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                       "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
constexpr std::array<const char*, 12> kEnglishLong = {
    "January", "February", "March",     "April",   "May",      "June",
    "July",    "August",   "September", "October", "November", "December"};

}  // namespace

Locale Locale::ByName(const std::string& name) {
  Locale locale;
  locale.name_ = name;
  for (int i = 0; i < 12; ++i) {
    locale.shortMonths_[i] = kEnglishShort[i];
    locale.longMonths_[i] = kEnglishLong[i];
  }
  const icu::Locale icuLocale(name.c_str());
  const std::string language = icuLocale.getLanguage();
  if (name.empty() || icuLocale.isBogus() || language.empty()) return locale;

  // ICU answers a language it has no data for with the process's default locale; such a name
  // keeps the neutral signs and English names, so that the result never depends on the
  // environment.
  const auto ownData = [&](const icu::Locale& actual) { return language == actual.getLanguage(); };

  UErrorCode status = U_ZERO_ERROR;
  const icu::DecimalFormatSymbols numbers(icuLocale, status);
  UErrorCode actualStatus = U_ZERO_ERROR;
  if (U_SUCCESS(status) && ownData(numbers.getLocale(ULOC_ACTUAL_LOCALE, actualStatus))) {
    std::string decimal =
        Utf8(numbers.getSymbol(icu::DecimalFormatSymbols::kDecimalSeparatorSymbol));
    std::string grouping =
        Utf8(numbers.getSymbol(icu::DecimalFormatSymbols::kGroupingSeparatorSymbol));
    if (!decimal.empty() && grouping != decimal) {
      locale.decimal_ = std::move(decimal);
      locale.grouping_ = std::move(grouping);
      locale.signsKey_ = PackSigns(locale.decimal_, locale.grouping_);
    }
  }

  status = U_ZERO_ERROR;
  const icu::DateFormatSymbols dates(icuLocale, status);
  actualStatus = U_ZERO_ERROR;
  if (U_SUCCESS(status) && ownData(dates.getLocale(ULOC_ACTUAL_LOCALE, actualStatus))) {
    ReadMonths(dates, icu::DateFormatSymbols::ABBREVIATED, locale.shortMonths_);
    ReadMonths(dates, icu::DateFormatSymbols::WIDE, locale.longMonths_);
  }
  return locale;
}

const Locale& Locale::Default() {
  static const Locale locale = ByName("en_US");
  return locale;
}

}  // namespace quillon
