#include "platform/number_format.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <bit>
#include <cstdint>
#include <string>
#include <vector>

#include "platform/runtime_error.h"

namespace quillon {

namespace {

// A non-negative decimal number as a digit string: the value is 0.digits x 10^wholeLength,
// so wholeLength digits stand before the point (none, or leading zeros, when it is 0 or less).
struct Decimal {
  std::string digits;
  int wholeLength = 0;
};

// The digits and the decimal exponent of a text "d.ddde+XX" that to_chars wrote.
Decimal DigitsOf(const char* p, const char* end) {
  Decimal d;
  for (; p != end && *p != 'e'; ++p)
    if (*p >= '0' && *p <= '9') d.digits += *p;
  int exponent = 0;
  if (p != end) std::from_chars(p + (p[1] == '+' ? 2 : 1), end, exponent);
  d.wholeLength = exponent + 1;
  return d;
}

// Powers of ten that a Double holds exactly.
constexpr double kExactPowers[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                   1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                   1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
constexpr int kMaxExactPower = 22;

// The fast road for the usual numbers: M, 15 digits, such that M x 10^(wholeLength - 15)
// reads back as the value. Such an M is the value rounded to 15 digits, since 15-digit
// decimals lie further apart than Doubles do, so no other one comes as near. The check is
// exact: M and the power of ten are exact Doubles, and one division or product of exact
// values is correctly rounded. False where it does not apply.
bool FifteenDigitsFast(double magnitude, Decimal& d) {
  if (!(magnitude >= 1e-7 && magnitude < 1e15)) return false;
  // The decimal exponent; a wrong guess at a power of ten leaves the range below.
  int e10 = static_cast<int>(std::floor(std::log10(magnitude)));
  const int p = 14 - e10;  // scale to 15 whole digits
  if (p < 0 || p > kMaxExactPower) return false;
  const double scaled = magnitude * kExactPowers[p];
  if (!(scaled >= 1e14 && scaled < 1e15)) return false;
  const auto m = static_cast<long long>(std::llround(scaled));
  if (m >= 1000000000000000LL) return false;
  if (static_cast<double>(m) / kExactPowers[p] != magnitude) return false;
  char buffer[16];
  const auto written = std::to_chars(buffer, buffer + sizeof buffer, m);
  d.digits.assign(buffer, written.ptr);
  d.wholeLength = e10 + 1;
  return true;
}

// The 15-significant-digit decimal form of |value|, the precision a Double holds reliably.
Decimal FifteenDigits(double value) {
  const double magnitude = std::fabs(value);
  Decimal d;
  if (magnitude == 0) {
    d.digits = "0";
    d.wholeLength = 1;
    return d;
  }
  if (FifteenDigitsFast(magnitude, d)) return d;
  // "d.dddddddddddddde+XX", correctly rounded like printf's "%.14e"; 40 characters hold it.
  char buffer[40];
  const std::to_chars_result written = std::to_chars(
      buffer, buffer + sizeof buffer, magnitude, std::chars_format::scientific, 14);
  d = DigitsOf(buffer, written.ptr);
  if (d.digits.find_first_not_of('0') == std::string::npos) {
    d.digits = "0";
    d.wholeLength = 1;
  }
  return d;
}

// The whole digits (without leading zeros, empty for 0) and exactly `decimals` fraction digits
// of a decimal rounded to that many decimals, halves away from zero.
struct Rounded {
  std::string whole;
  std::string fraction;
  bool isZero() const {
    return whole.empty() && fraction.find_first_not_of('0') == std::string::npos;
  }
};

Rounded RoundDecimal(Decimal d, int decimals) {
  const long keep = static_cast<long>(d.wholeLength) + decimals;
  std::string all = d.digits;
  if (keep < 0) {
    all.clear();
    d.wholeLength = -decimals;
  } else if (static_cast<std::size_t>(keep) >= all.size()) {
    all.append(keep - all.size(), '0');
  } else {
    const bool up = all[keep] >= '5';
    all.resize(keep);
    if (up) {
      std::size_t i = all.size();
      while (i > 0 && all[i - 1] == '9') all[--i] = '0';
      if (i == 0) {
        all.insert(all.begin(), '1');
        ++d.wholeLength;
      } else {
        ++all[i - 1];
      }
    }
  }
  Rounded r;
  if (d.wholeLength > 0) {
    r.whole = all.substr(0, d.wholeLength);
    r.whole.append(d.wholeLength - r.whole.size(), '0');
    r.fraction = all.substr(r.whole.size());
  } else {
    r.fraction = std::string(-d.wholeLength, '0') + all;
  }
  r.fraction.resize(decimals, '0');
  const auto firstNonZero = r.whole.find_first_not_of('0');
  r.whole.erase(0, firstNonZero == std::string::npos ? r.whole.size() : firstNonZero);
  return r;
}

void CheckFinite(double value) {
  if (!std::isfinite(value)) Raise(kOverflow);
}

// The plain decimal text of |value| to 15 significant digits, never an exponent.
Rounded PlainDigits(double value) {
  Decimal d = FifteenDigits(value);
  const auto last = d.digits.find_last_not_of('0');
  const int significant = last == std::string::npos ? 0 : static_cast<int>(last) + 1;
  const int decimals = std::max(0, significant - d.wholeLength);
  return RoundDecimal(d, decimals);
}

// One section of a pattern.
struct Section {
  struct Item {
    enum Kind { Zero, Hash, Literal } kind;
    char literal;
  };
  std::vector<Item> whole;     // before the decimal point
  std::vector<Item> fraction;  // after it
  bool hasPoint = false;
  bool grouping = false;
  bool empty = true;
  int decimals = 0;      // placeholders after the point
  int placeholders = 0;  // placeholders before it
  int minDigits = 0;     // whole digits always shown: from the leftmost 0 to the point
};

Section ParseSection(std::string_view text) {
  Section s;
  s.empty = text.empty();
  for (const char c : text) {
    std::vector<Section::Item>& items = s.hasPoint ? s.fraction : s.whole;
    if (c == '0') {
      items.push_back({Section::Item::Zero, c});
    } else if (c == '#') {
      items.push_back({Section::Item::Hash, c});
    } else if (c == '.' && !s.hasPoint) {
      s.hasPoint = true;
    } else if (c == ',' && !s.hasPoint) {
      s.grouping = true;
    } else {
      items.push_back({Section::Item::Literal, c});
    }
  }
  for (const Section::Item& item : s.fraction) s.decimals += item.kind != Section::Item::Literal;
  int firstZero = 0;  // 1-based among the whole placeholders, 0 for none
  for (const Section::Item& item : s.whole) {
    if (item.kind == Section::Item::Literal) continue;
    ++s.placeholders;
    if (item.kind == Section::Item::Zero && firstZero == 0) firstZero = s.placeholders;
  }
  s.minDigits = firstZero == 0 ? 0 : s.placeholders - firstZero + 1;
  return s;
}

std::string FormatSection(const Section& s, const Rounded& r, bool minus, const Locale& locale) {
  // Whole part: the digits fill the placeholders from the right; the leftmost placeholder
  // takes every digit left over, so a number never loses digits to a short pattern.
  const int placeholders = s.placeholders;
  const std::size_t length = std::max(r.whole.size(), static_cast<std::size_t>(s.minDigits));
  const std::size_t padding = length - r.whole.size();  // leading zeros the pattern asks for
  const std::string& grouping = locale.groupingSign();
  std::string out;
  out.reserve(length * (1 + grouping.size()) + s.whole.size() + s.fraction.size() + 4);
  if (minus) out += '-';
  // Digit i of the whole part, with the grouping sign that follows it.
  const auto appendDigit = [&](std::size_t i) {
    out += i < padding ? '0' : r.whole[i - padding];
    const std::size_t fromRight = length - 1 - i;
    if (s.grouping && fromRight > 0 && fromRight % 3 == 0) out += grouping;
  };
  // Placeholder j from the left (1-based) is placeholder placeholders-j+1 from the right; the
  // first takes the digits that the others leave.
  const long total = static_cast<long>(length);
  int j = 0;
  for (const Section::Item& item : s.whole) {
    if (item.kind == Section::Item::Literal) {
      out += item.literal;
      continue;
    }
    ++j;
    if (j == 1) {
      const long rest = std::max(0L, total - placeholders + 1);
      for (long i = 0; i < rest; ++i) appendDigit(static_cast<std::size_t>(i));
    } else {
      const long i = total - (placeholders - j + 1);
      if (i >= 0) appendDigit(static_cast<std::size_t>(i));
    }
  }
  const int decimals = s.decimals;
  if (placeholders == 0 && decimals > 0) {
    // A pattern such as ".00" still shows the whole digits, just before the point.
    for (std::size_t i = 0; i < length; ++i) appendDigit(i);
  }

  if (s.hasPoint) out += locale.decimalSign();
  // Fraction part: left to right; trailing # placeholders drop trailing zeros.
  int shown = decimals;
  {
    int i = decimals;
    for (auto it = s.fraction.rbegin(); it != s.fraction.rend() && i > 0; ++it) {
      if (it->kind == Section::Item::Literal) continue;
      if (it->kind != Section::Item::Hash || r.fraction[i - 1] != '0') break;
      shown = --i;
    }
  }
  int index = 0;
  for (const Section::Item& item : s.fraction) {
    if (item.kind == Section::Item::Literal) {
      out += item.literal;
    } else {
      if (index < shown) out += r.fraction[index];
      ++index;
    }
  }
  return out;
}

// The sections of a pattern, parsed once per thread for the patterns in recent use: a ticket
// writes every price and amount with one of a handful of patterns.
const std::vector<Section>& ParsePattern(std::string_view pattern) {
  constexpr std::size_t kSlots = 8;
  struct Cache {
    std::string keys[kSlots];
    std::vector<Section> values[kSlots];
    std::size_t size = 0;
    std::size_t next = 0;
  };
  thread_local Cache cache;
  for (std::size_t i = 0; i < cache.size; ++i)
    if (cache.keys[i] == pattern) return cache.values[i];

  std::vector<Section> sections;
  std::size_t from = 0;
  while (sections.size() < 3) {
    const std::size_t semicolon = pattern.find(';', from);
    sections.push_back(ParseSection(pattern.substr(from, semicolon - from)));
    if (semicolon == std::string_view::npos) break;
    from = semicolon + 1;
  }
  const std::size_t slot = cache.next;
  cache.next = (cache.next + 1) % kSlots;
  cache.size = std::max(cache.size, slot + 1);
  cache.keys[slot].assign(pattern);
  cache.values[slot] = std::move(sections);
  return cache.values[slot];
}

bool IsBlank(char c) { return c == ' ' || c == '\t'; }
bool IsDigit(char c) { return c >= '0' && c <= '9'; }

enum class Reading { Numeric, NotNumeric, TooLarge };

bool StartsWith(std::string_view text, std::size_t pos, const std::string& sign) {
  return !sign.empty() && text.compare(pos, sign.size(), sign) == 0;
}

// Reads a plain ASCII number ("-123.45e6"); a magnitude beyond a Double is TooLarge, one below
// its smallest is 0.
Reading ReadPlain(const std::string& plain, double& value) {
  const auto [end, ec] = std::from_chars(plain.data(), plain.data() + plain.size(), value);
  if (ec == std::errc() && end == plain.data() + plain.size()) return Reading::Numeric;
  if (ec != std::errc::result_out_of_range) return Reading::NotNumeric;
  // Out of range: too large or too small? Compare the decimal exponent of the first
  // significant digit with 0.
  long long exponent = 0;
  const auto e = plain.find('e');
  if (e != std::string::npos) {
    std::size_t i = e + 1;
    const bool negative = plain[i] == '-';
    if (plain[i] == '-' || plain[i] == '+') ++i;
    for (; i < plain.size(); ++i) exponent = std::min(exponent * 10 + (plain[i] - '0'), 1LL << 40);
    if (negative) exponent = -exponent;
  }
  const std::string mantissa = plain.substr(0, e);
  const auto point = mantissa.find('.');
  const long long beforePoint =
      static_cast<long long>(point == std::string::npos ? mantissa.size() : point);
  const auto first = mantissa.find_first_of("123456789");
  const long long position = static_cast<long long>(first) - (first > point ? 1 : 0);
  const long long magnitude = beforePoint - position - 1 + exponent;
  if (magnitude >= 0) return Reading::TooLarge;
  value = 0;
  return Reading::Numeric;
}

Reading ReadLocaleNumber(std::string_view text, const Locale& locale, double& value) {
  std::size_t pos = 0, end = text.size();
  while (pos < end && IsBlank(text[pos])) ++pos;
  while (end > pos && IsBlank(text[end - 1])) --end;
  text = text.substr(0, end);
  const auto skipBlanks = [&] {
    while (pos < text.size() && IsBlank(text[pos])) ++pos;
  };

  bool bracket = false;
  char sign = 0;
  if (pos < text.size() && text[pos] == '(') {
    bracket = true;
    ++pos;
    skipBlanks();
  }
  if (pos < text.size() && (text[pos] == '+' || text[pos] == '-')) {
    sign = text[pos++];
    skipBlanks();
  }

  std::string plain;  // ASCII digits, point and exponent; the sign is applied at the end
  bool digits = false, point = false;
  while (pos < text.size()) {
    if (IsDigit(text[pos])) {
      plain += text[pos++];
      digits = true;
    } else if (!point && StartsWith(text, pos, locale.decimalSign())) {
      plain += '.';
      point = true;
      pos += locale.decimalSign().size();
    } else if (!point && StartsWith(text, pos, locale.groupingSign())) {
      pos += locale.groupingSign().size();
    } else {
      break;
    }
  }
  if (!digits) return Reading::NotNumeric;

  if (pos < text.size() && (text[pos] == 'e' || text[pos] == 'E')) {
    ++pos;
    plain += 'e';
    if (pos < text.size() && (text[pos] == '+' || text[pos] == '-')) plain += text[pos++];
    const std::size_t from = pos;
    while (pos < text.size() && IsDigit(text[pos])) plain += text[pos++];
    if (pos == from) return Reading::NotNumeric;
  }
  skipBlanks();
  if (!sign && pos < text.size() && (text[pos] == '+' || text[pos] == '-')) {
    sign = text[pos++];
    skipBlanks();
  }
  if (bracket) {
    if (sign || pos >= text.size() || text[pos] != ')') return Reading::NotNumeric;
    ++pos;
  }
  if (pos != text.size()) return Reading::NotNumeric;

  const bool negative = bracket || sign == '-';
  const Reading reading = ReadPlain(plain, value);
  if (reading == Reading::Numeric) value = (negative ? -value : value) + 0.0;
  return reading;
}

// The last few number texts read and written on this thread, each with everything its result
// depends on: the text or the value and pattern, and the locale's two signs. A ticket's refresh
// reads back the boxes it has just written and checks the same amounts several times over;
// those repeats are answered from here. Short texts only.
constexpr std::size_t kMemoSlots = 8;
constexpr std::size_t kMemoLongest = 40;

bool SameSigns(const std::string& decimal, const std::string& grouping, const Locale& locale) {
  return decimal == locale.decimalSign() && grouping == locale.groupingSign();
}

struct ReadMemo {
  struct Entry {
    std::string text, decimal, grouping;
    Reading reading = Reading::NotNumeric;
    double value = 0;
    bool used = false;
  };
  Entry entries[kMemoSlots];
  std::size_t next = 0;
};

Reading ReadLocaleNumberOnce(std::string_view text, const Locale& locale, double& value) {
  if (text.size() > kMemoLongest) return ReadLocaleNumber(text, locale, value);
  thread_local ReadMemo memo;
  for (const ReadMemo::Entry& e : memo.entries) {
    if (e.used && e.text == text && SameSigns(e.decimal, e.grouping, locale)) {
      value = e.value;
      return e.reading;
    }
  }
  const Reading reading = ReadLocaleNumber(text, locale, value);
  ReadMemo::Entry& e = memo.entries[memo.next];
  memo.next = (memo.next + 1) % kMemoSlots;
  e.text.assign(text);
  e.decimal = locale.decimalSign();
  e.grouping = locale.groupingSign();
  e.reading = reading;
  e.value = value;
  e.used = true;
  return reading;
}

std::string FormatByPattern(double value, std::string_view pattern, const Locale& locale);

}  // namespace

std::string FormatNumber(double value, std::string_view pattern, const Locale& locale) {
  CheckFinite(value);
  if (pattern.empty()) return GeneralNumber(value, locale);
  if (pattern.size() > kMemoLongest) return FormatByPattern(value, pattern, locale);
  struct Entry {
    std::uint64_t value = 0;
    std::string pattern, decimal, grouping, text;
    bool used = false;
  };
  thread_local Entry entries[kMemoSlots];
  thread_local std::size_t next = 0;
  const auto bits = std::bit_cast<std::uint64_t>(value);
  for (const Entry& e : entries)
    if (e.used && e.value == bits && e.pattern == pattern &&
        SameSigns(e.decimal, e.grouping, locale))
      return e.text;
  std::string text = FormatByPattern(value, pattern, locale);
  Entry& e = entries[next];
  next = (next + 1) % kMemoSlots;
  e.value = bits;
  e.pattern.assign(pattern);
  e.decimal = locale.decimalSign();
  e.grouping = locale.groupingSign();
  e.text = text;
  e.used = true;
  return text;
}

namespace {

std::string FormatByPattern(double value, std::string_view pattern, const Locale& locale) {
  const std::vector<Section>& sections = ParsePattern(pattern);

  const Decimal d = FifteenDigits(value);
  const auto formatZero = [&] {
    const Section& s = sections.size() > 2 && !sections[2].empty ? sections[2] : sections[0];
    if (s.empty) return GeneralNumber(0, locale);
    return FormatSection(s, RoundDecimal(Decimal{"0", 1}, s.decimals), false, locale);
  };

  const bool negative = value < 0;
  const bool ownNegative = negative && sections.size() > 1 && !sections[1].empty;
  const Section& s = ownNegative ? sections[1] : sections[0];
  const bool minus = negative && !ownNegative;
  if (s.empty) {
    if (value == 0) return formatZero();
    const std::string general = GeneralNumber(std::fabs(value), locale);
    return minus ? "-" + general : general;
  }
  // A value that rounds to zero is zero: no minus sign, and the zero section if there is one.
  const Rounded rounded = RoundDecimal(d, s.decimals);
  if (rounded.isZero()) return formatZero();
  return FormatSection(s, rounded, minus, locale);
}

}  // namespace

std::string StrOfDouble(double value) {
  CheckFinite(value);
  const Rounded r = PlainDigits(value);
  std::string out = value < 0 && !r.isZero() ? "-" : " ";
  if (r.isZero()) return out + "0";
  out += r.whole;
  if (!r.fraction.empty()) out += "." + r.fraction;
  return out;
}

std::string GeneralNumber(double value, const Locale& locale) {
  CheckFinite(value);
  const Rounded r = PlainDigits(value);
  if (r.isZero()) return "0";
  std::string out = value < 0 ? "-" : "";
  out += r.whole.empty() ? "0" : r.whole;
  if (!r.fraction.empty()) out += locale.decimalSign() + r.fraction;
  return out;
}

bool IsNumericText(std::string_view text, const Locale& locale) {
  double value = 0;
  return ReadLocaleNumberOnce(text, locale, value) == Reading::Numeric;
}

double ReadNumericText(std::string_view text, const Locale& locale) {
  double value = 0;
  switch (ReadLocaleNumberOnce(text, locale, value)) {
    case Reading::Numeric:
      return value;
    case Reading::TooLarge:
      Raise(kOverflow);
    case Reading::NotNumeric:
      break;
  }
  Raise(kTypeMismatch);
}

double Val(std::string_view text) {
  // Blanks, tabs and line feeds count for nothing anywhere in the text.
  std::string plain;
  std::size_t pos = 0;
  const auto peek = [&]() -> char {
    while (pos < text.size() &&
           (text[pos] == ' ' || text[pos] == '\t' || text[pos] == '\n' || text[pos] == '\r'))
      ++pos;
    return pos < text.size() ? text[pos] : '\0';
  };
  bool negative = false;
  if (peek() == '+' || peek() == '-') negative = text[pos++] == '-';
  bool digits = false, point = false;
  for (char c = peek(); IsDigit(c) || (c == '.' && !point); c = peek()) {
    plain += c;
    digits = digits || IsDigit(c);
    point = point || c == '.';
    ++pos;
  }
  if (!digits) return 0;
  char c = peek();
  if (c == 'e' || c == 'E' || c == 'd' || c == 'D') {
    const std::size_t mark = pos;
    ++pos;
    std::string exponent = "e";
    if (peek() == '+' || peek() == '-') exponent += text[pos++];
    bool any = false;
    for (c = peek(); IsDigit(c); c = peek()) {
      exponent += c;
      any = true;
      ++pos;
    }
    if (any)
      plain += exponent;
    else
      pos = mark;
  }
  if (plain.front() == '.') plain.insert(0, "0");
  double value = 0;
  if (ReadPlain(plain, value) == Reading::TooLarge) Raise(kOverflow);
  return (negative ? -value : value) + 0.0;
}

}  // namespace quillon
