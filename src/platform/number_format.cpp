#include "platform/number_format.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <bit>
#include <cstdint>
#include <string>
#include <vector>

#include "platform/runtime_error.h"
#include "platform/short_text.h"

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
// The largest whole number a Double holds together with every smaller one.
constexpr std::uint64_t kExactWhole = 1ULL << 53;

// The text the short road of FormatNumberUnkept wrote last on this thread, as the whole number
// of its digits and its decimals. A ticket writes its boxes' numbers with it and reads back
// what it writes (a price box into its member, the amount in the order check), so that text
// is read without a pass over it; FormatNumber's callers keep nothing here. What
// the usual reading (ReadUsualNumber) gives a text depends on the text and the locale's two
// signs alone, and both are the key: a text of up to 16 bytes is its own key
// (platform/short_text.h), and two locales with the same signsKey have the same signs. Nothing
// else can change the reading, so the text written last need never be forgotten, only
// replaced.
struct WrittenText {
  ShortTextKey key;
  std::size_t size = 0;  // 0 for none: an empty text is never kept
  std::uint64_t signs = 0;
  std::uint64_t whole = 0;
  int decimals = 0;
};
thread_local WrittenText lastWritten;

// Which roads a call may take: the short ones for the usual numbers, or the general ones only.
enum class Road { Any, General };

// The 15-significant-digit decimal form as a whole number: M x 10^(wholeLength - 15), with
// 10^14 <= M < 10^15.
struct Digits15 {
  std::uint64_t m = 0;
  int wholeLength = 0;
};

// Powers of five that fit 64 bits with room for a 53-bit factor in 128: 5^0 to 5^22.
constexpr std::uint64_t kFives[] = {1ULL,
                                    5ULL,
                                    25ULL,
                                    125ULL,
                                    625ULL,
                                    3125ULL,
                                    15625ULL,
                                    78125ULL,
                                    390625ULL,
                                    1953125ULL,
                                    9765625ULL,
                                    48828125ULL,
                                    244140625ULL,
                                    1220703125ULL,
                                    6103515625ULL,
                                    30517578125ULL,
                                    152587890625ULL,
                                    762939453125ULL,
                                    3814697265625ULL,
                                    19073486328125ULL,
                                    95367431640625ULL,
                                    476837158203125ULL,
                                    2384185791015625ULL};
constexpr std::uint64_t kTenPow14 = 100000000000000ULL;
constexpr std::uint64_t kTenPow15 = 1000000000000000ULL;

// The fast road for the usual numbers, 1e-7 to 1e15: the value's 15 digits worked out exactly
// in whole numbers. The value is f x 2^e with a 53-bit f, so value x 10^p is f x 5^p x 2^(e+p),
// a 128-bit product shifted right; the bits shifted out round it, to even on an exact half,
// as the general road's digits are rounded. False where it does not apply.
bool FifteenDigitsFast(double magnitude, Digits15& d) {
  if (!(magnitude >= 1e-7 && magnitude < 1e15)) return false;
  const auto bits = std::bit_cast<std::uint64_t>(magnitude);
  const int biased = static_cast<int>((bits >> 52) & 0x7FF);  // a normal number in this range
  const std::uint64_t f = (bits & ((std::uint64_t{1} << 52) - 1)) | (std::uint64_t{1} << 52);
  const int e = biased - 1075;
  // The decimal exponent: floor(e2 x log10(2)) with 1233 / 4096 just below log10(2), which is
  // the exponent of the value or one below it.
  int e10 = ((biased - 1023) * 1233) >> 12;
  for (int attempt = 0; attempt < 2; ++attempt, ++e10) {
    const int p = 14 - e10;  // scale to 15 whole digits
    if (p < 0 || p > 22) return false;
    const unsigned __int128 n = static_cast<unsigned __int128>(f) * kFives[p];
    const int shift = -(e + p);  // value x 10^p = n / 2^shift, and shift > 0 here
    if (shift <= 0 || shift >= 100) return false;
    const auto whole = static_cast<std::uint64_t>(n >> shift);
    if (whole >= kTenPow15) continue;  // the exponent was one below: once more
    if (whole < kTenPow14) return false;
    const unsigned __int128 rest = n - (static_cast<unsigned __int128>(whole) << shift);
    const unsigned __int128 half = static_cast<unsigned __int128>(1) << (shift - 1);
    std::uint64_t m = whole + (rest > half || (rest == half && (whole & 1) != 0) ? 1 : 0);
    int wholeLength = e10 + 1;
    if (m == kTenPow15) {  // 999...9.5 rounds up to the next power of ten
      m = kTenPow14;
      ++wholeLength;
    }
    d.m = m;
    d.wholeLength = wholeLength;
    return true;
  }
  return false;
}

// The 15-significant-digit decimal form of |value|, the precision a Double holds reliably.
Decimal FifteenDigits(double value, Road road = Road::Any) {
  const double magnitude = std::fabs(value);
  Decimal d;
  if (magnitude == 0) {
    d.digits = "0";
    d.wholeLength = 1;
    return d;
  }
  if (Digits15 fast; road == Road::Any && FifteenDigitsFast(magnitude, fast)) {
    char buffer[16];
    d.digits.assign(buffer, std::to_chars(buffer, buffer + sizeof buffer, fast.m).ptr);
    d.wholeLength = fast.wholeLength;
    return d;
  }
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

// Powers of ten as whole numbers, 10^0 to 10^19.
constexpr std::uint64_t kTens[] = {1ULL,
                                   10ULL,
                                   100ULL,
                                   1000ULL,
                                   10000ULL,
                                   100000ULL,
                                   1000000ULL,
                                   10000000ULL,
                                   100000000ULL,
                                   1000000000ULL,
                                   10000000000ULL,
                                   100000000000ULL,
                                   1000000000000ULL,
                                   10000000000000ULL,
                                   100000000000000ULL,
                                   1000000000000000ULL,
                                   10000000000000000ULL,
                                   100000000000000000ULL,
                                   1000000000000000000ULL,
                                   10000000000000000000ULL};
// x / 10^k and its remainder, k from 0 to 19. Each division is by a constant, which the
// compiler turns into a product: a division by a divisor known only at run time is slow.
std::uint64_t DivideByTen(std::uint64_t x, int k, std::uint64_t& remainder) {
  switch (k) {
#define QUILLON_DIVIDE_CASE(K)                   \
  case K:                                        \
    remainder = x % kTens[K];                    \
    return x / kTens[K];
    QUILLON_DIVIDE_CASE(0) QUILLON_DIVIDE_CASE(1) QUILLON_DIVIDE_CASE(2) QUILLON_DIVIDE_CASE(3)
    QUILLON_DIVIDE_CASE(4) QUILLON_DIVIDE_CASE(5) QUILLON_DIVIDE_CASE(6) QUILLON_DIVIDE_CASE(7)
    QUILLON_DIVIDE_CASE(8) QUILLON_DIVIDE_CASE(9) QUILLON_DIVIDE_CASE(10) QUILLON_DIVIDE_CASE(11)
    QUILLON_DIVIDE_CASE(12) QUILLON_DIVIDE_CASE(13) QUILLON_DIVIDE_CASE(14)
    QUILLON_DIVIDE_CASE(15) QUILLON_DIVIDE_CASE(16) QUILLON_DIVIDE_CASE(17)
    QUILLON_DIVIDE_CASE(18)
    default:  // 19
      QUILLON_DIVIDE_CASE(19)
#undef QUILLON_DIVIDE_CASE
  }
}

// Digits a rounded number may have on the whole-number road: 10^18 and below fit 64 bits.
constexpr int kMaxPlainDigits = 18;
constexpr int kMaxPlainDecimals = 18;

// RoundDecimal on the 15-digit whole number: the value rounded to `decimals` decimals, halves
// away from zero, times 10^decimals. False when that has more than 18 digits.
bool RoundWhole(const Digits15& d, int decimals, std::uint64_t& n) {
  const int keep = d.wholeLength + decimals;  // digits of M that stay
  if (keep < 0) {
    n = 0;
  } else if (keep >= 15) {
    if (keep > kMaxPlainDigits) return false;
    n = d.m * kTens[keep - 15];
  } else {
    // The first dropped digit is 5 or more exactly when the dropped part is half or more.
    std::uint64_t rest = 0;
    n = DivideByTen(d.m, 15 - keep, rest);
    n += rest >= kTens[15 - keep] / 2 ? 1 : 0;
  }
  return true;
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
  // Placeholders only, at least one, and few enough decimals for a whole number of 64 bits:
  // the digits go out in one run, which FormatPlainSection writes.
  bool plain = false;
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
  const auto literal = [](const Section::Item& item) { return item.kind == Section::Item::Literal; };
  s.plain = std::none_of(s.whole.begin(), s.whole.end(), literal) &&
            std::none_of(s.fraction.begin(), s.fraction.end(), literal) &&
            s.placeholders + s.decimals > 0 && s.decimals <= kMaxPlainDecimals;
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

// FormatSection for a plain section and a number n x 10^-decimals other than 0, written from
// the whole number without digit strings in between.
std::string FormatPlainSection(const Section& s, std::uint64_t n, bool minus,
                               const Locale& locale, bool keep) {
  const int decimals = s.decimals;
  char whole[20];
  std::uint64_t rest = 0;
  const std::uint64_t wholeValue = DivideByTen(n, decimals, rest);
  // No leading zeros: a whole part of 0 has no digits of its own.
  const std::size_t wholeDigits =
      wholeValue == 0 ? 0
                      : static_cast<std::size_t>(std::to_chars(whole, whole + sizeof whole,
                                                               wholeValue).ptr - whole);
  const std::size_t length = std::max(wholeDigits, static_cast<std::size_t>(s.minDigits));
  const std::size_t padding = length - wholeDigits;
  char fraction[20];
  for (int i = decimals; i > 0; --i) {
    fraction[i - 1] = static_cast<char>('0' + rest % 10);
    rest /= 10;
  }
  // Trailing # decimals drop trailing zeros.
  int shown = decimals;
  while (shown > 0 && s.fraction[static_cast<std::size_t>(shown) - 1].kind == Section::Item::Hash &&
         fraction[shown - 1] == '0')
    --shown;

  const std::string& grouping = locale.groupingSign();
  const std::string& decimalSign = locale.decimalSign();
  const std::size_t groups = s.grouping && length > 0 ? (length - 1) / 3 : 0;
  // Written in place at its exact length: a short text stays within the string itself.
  std::string out((minus ? 1 : 0) + length + groups * grouping.size() +
                      (s.hasPoint ? decimalSign.size() : 0) + static_cast<std::size_t>(shown),
                  '0');
  char* p = out.data();
  if (minus) *p++ = '-';
  for (std::size_t i = 0; i < length; ++i) {
    *p++ = i < padding ? '0' : whole[i - padding];
    const std::size_t fromRight = length - 1 - i;
    if (s.grouping && fromRight > 0 && fromRight % 3 == 0) {
      std::memcpy(p, grouping.data(), grouping.size());
      p += grouping.size();
    }
  }
  if (s.hasPoint) {
    std::memcpy(p, decimalSign.data(), decimalSign.size());
    p += decimalSign.size();
  }
  std::memcpy(p, fraction, static_cast<std::size_t>(shown));
  // A text without a minus sign and with all its decimals is its digits, n, over 10^decimals.
  if (keep && !minus && shown == decimals && out.size() <= 16)
    lastWritten = {KeyOfText(out), out.size(), locale.signsKey(), n, decimals};
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

// The digits of a number under the locale: ASCII digits, its grouping signs in the whole
// part, one decimal sign. Calls `digit` for each digit and `point` at the decimal sign, and
// returns the position behind the last of them.
template <typename Digit, typename Point>
std::size_t ScanDigits(std::string_view text, std::size_t pos, const Locale& locale, Digit digit,
                       Point point) {
  const std::string& decimal = locale.decimalSign();
  const std::string& grouping = locale.groupingSign();
  bool afterPoint = false;
  // A sign is compared in full only where its first byte stands.
  const char decimalFirst = decimal.empty() ? '\0' : decimal[0];
  const char groupingFirst = grouping.empty() ? '\0' : grouping[0];
  while (pos < text.size()) {
    const char c = text[pos];
    if (IsDigit(c)) {
      digit(c);
      ++pos;
    } else if (!afterPoint && c == decimalFirst && StartsWith(text, pos, decimal)) {
      point();
      afterPoint = true;
      pos += decimal.size();
    } else if (!afterPoint && c == groupingFirst && StartsWith(text, pos, grouping)) {
      pos += grouping.size();
    } else {
      break;
    }
  }
  return pos;
}

// The usual number text read in one pass: at most 19 digits, with the grouping sign among the
// whole digits and at most one decimal sign, both one byte long, and nothing else (no blank,
// sign, bracket or exponent). Its value is the whole number of its digits over a power of ten,
// both exact, as the general reading's short road gives it (leading zeros add nothing to the
// whole number). False, with `value` untouched, where the text is not of that shape or its
// digits do not fit; the general reading then decides.
bool ReadUsualNumber(std::string_view text, char decimal, char grouping, bool hasGrouping,
                     double& value) {
  std::uint64_t whole = 0;
  int digits = 0, decimals = 0;
  bool point = false;
  for (const char c : text) {
    const auto digit = static_cast<unsigned>(c - '0');
    if (digit < 10) {
      whole = whole * 10 + digit;
      ++digits;
      decimals += point ? 1 : 0;
    } else if (c == decimal && !point) {
      point = true;
    } else if (!(hasGrouping && c == grouping && !point)) {
      return false;
    }
  }
  if (digits == 0 || digits > 19 || whole > kExactWhole || decimals > kMaxExactPower) return false;
  value = static_cast<double>(whole) / kExactPowers[decimals] + 0.0;
  return true;
}

// The text FormatNumberUnkept wrote last, read as the usual reading reads it where it takes
// the text: signs of one byte each that are no digits and not the same sign, a whole number
// that a Double holds exactly (16 bytes hold at most 16 digits, and 10^16 is exact). False
// for any other text, with `value` untouched.
inline bool ReadWritten(std::string_view text, const Locale& locale, double& value) {
  const WrittenText& w = lastWritten;
  if (text.size() != w.size || w.signs != locale.signsKey() || !(w.key == KeyOfText(text)))
    return false;
  const std::string& point = locale.decimalSign();
  const std::string& group = locale.groupingSign();
  const auto digit = [](char c) { return c >= '0' && c <= '9'; };
  if (point.size() != 1 || digit(point[0]) || group.size() > 1) return false;
  if (!group.empty() && (digit(group[0]) || group[0] == point[0])) return false;
  if (w.whole > kExactWhole) return false;
  value = static_cast<double>(w.whole) / kExactPowers[w.decimals] + 0.0;
  return true;
}

Reading ReadLocaleNumber(std::string_view text, const Locale& locale, double& value, Road road) {
  const std::string& decimalSign = locale.decimalSign();
  const std::string& groupingSign = locale.groupingSign();
  if (road == Road::Any && decimalSign.size() == 1 && groupingSign.size() <= 1 &&
      ReadUsualNumber(text, decimalSign[0], groupingSign.empty() ? '\0' : groupingSign[0],
                      !groupingSign.empty(), value))
    return Reading::Numeric;
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

  // The digits as a whole number, as far as 19 significant digits go, and how many of them
  // stand behind the decimal sign.
  const std::size_t digitsFrom = pos;
  bool digits = false, point = false;
  std::uint64_t whole = 0;
  int significant = 0, decimals = 0;
  pos = ScanDigits(
      text, pos, locale,
      [&](char c) {
        digits = true;
        decimals += point ? 1 : 0;
        if (significant == 0 && c == '0') return;
        if (++significant <= 19) whole = whole * 10 + static_cast<std::uint64_t>(c - '0');
      },
      [&] { point = true; });
  if (!digits) return Reading::NotNumeric;

  const std::size_t exponentFrom = pos;
  if (pos < text.size() && (text[pos] == 'e' || text[pos] == 'E')) {
    ++pos;
    if (pos < text.size() && (text[pos] == '+' || text[pos] == '-')) ++pos;
    const std::size_t from = pos;
    while (pos < text.size() && IsDigit(text[pos])) ++pos;
    if (pos == from) return Reading::NotNumeric;
  }
  const std::size_t exponentTo = pos;
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
  Reading reading = Reading::Numeric;
  if (road == Road::Any && exponentFrom == exponentTo && significant <= 19 &&
      whole <= kExactWhole && decimals <= kMaxExactPower) {
    // Both numbers are exact Doubles, and one division of exact values is correctly rounded:
    // the Double nearest to the decimal, as the general reading gives it.
    value = static_cast<double>(whole) / kExactPowers[decimals];
  } else {
    // ASCII digits, point and exponent; the sign is applied at the end.
    std::string plain;
    ScanDigits(
        text, digitsFrom, locale, [&](char c) { plain += c; }, [&] { plain += '.'; });
    if (exponentTo > exponentFrom) {
      plain += 'e';
      plain.append(text.substr(exponentFrom + 1, exponentTo - exponentFrom - 1));
    }
    reading = ReadPlain(plain, value);
  }
  if (reading == Reading::Numeric) value = (negative ? -value : value) + 0.0;
  return reading;
}

// The last few number texts written on this thread, each with everything it depends on: the
// value, the pattern and the locale's signs (by their key). A ticket's refresh writes the
// same amounts several times over; those repeats are answered from here, the least recently
// used making room for a new one. Short patterns only, under a locale whose signs have a key.
constexpr std::size_t kMemoSlots = 8;
constexpr std::size_t kMemoLongest = 40;

// A short text kept in place with its key (platform/short_text.h); a text longer than 16
// bytes compares its middle bytes too.
class ShortText {
 public:
  bool equals(std::string_view text, const ShortTextKey& key) const {
    return size_ == text.size() && key_ == key &&
           (size_ <= 16 || std::memcmp(bytes_ + 8, text.data() + 8, size_ - 16) == 0);
  }
  void assign(std::string_view text, const ShortTextKey& key) {
    key_ = key;
    size_ = std::min(text.size(), kMemoLongest);
    if (size_ > 0) std::memcpy(bytes_, text.data(), size_);
  }

 private:
  ShortTextKey key_;
  std::size_t size_ = kMemoLongest + 1;  // nothing kept yet: equal to no text
  char bytes_[kMemoLongest] = {};
};

// A memo's entries; `used` is the turn of the last use, 0 for an entry never filled. A
// look-up first tries the entry its key was last found in or put in (by a few bits of the
// key), and scans them all only when that is another's.
template <typename Entry>
struct Memo {
  Entry entries[kMemoSlots];
  std::uint8_t hints[16] = {};  // by four bits of the key
  std::uint64_t turn = 0;

  static std::size_t HintOf(std::uint64_t a, std::uint64_t b) {
    return static_cast<std::size_t>(((a ^ (b << 1)) * 0x9E3779B97F4A7C15ULL) >> 60);
  }

  // The entry that `matches`, marked as used now, or nullptr; `room` is then the least
  // recently used entry, to be filled by filled().
  template <typename Matches>
  Entry* find(std::size_t hint, Matches matches, Entry*& room) {
    Entry& hinted = entries[hints[hint]];
    if (hinted.used != 0 && matches(hinted)) {
      hinted.used = ++turn;
      return &hinted;
    }
    for (std::size_t i = 0; i < kMemoSlots; ++i) {
      Entry& e = entries[i];
      if (e.used != 0 && matches(e)) {
        e.used = ++turn;
        hints[hint] = static_cast<std::uint8_t>(i);
        return &e;
      }
    }
    std::size_t oldest = 0;
    std::uint64_t oldestUse = entries[0].used;
    for (std::size_t i = 1; i < kMemoSlots; ++i) {
      if (entries[i].used < oldestUse) {
        oldest = i;
        oldestUse = entries[i].used;
      }
    }
    hints[hint] = static_cast<std::uint8_t>(oldest);
    room = &entries[oldest];
    return nullptr;
  }
  void filled(Entry& e) { e.used = ++turn; }
};

// `keep`: the text goes to lastWritten where the short road writes it.
std::string FormatByPattern(double value, std::string_view pattern, const Locale& locale,
                            Road road, bool keep = false) {
  const std::vector<Section>& sections = ParsePattern(pattern);
  const bool negative = value < 0;
  const bool ownNegative = negative && sections.size() > 1 && !sections[1].empty;
  const Section& s = ownNegative ? sections[1] : sections[0];
  const bool minus = negative && !ownNegative;

  // The usual number in a section of placeholders: rounded and written as whole numbers.
  if (road == Road::Any && s.plain && value != 0) {
    Digits15 digits;
    std::uint64_t n = 0;
    if (FifteenDigitsFast(std::fabs(value), digits) && RoundWhole(digits, s.decimals, n) &&
        n != 0)
      return FormatPlainSection(s, n, minus, locale, keep);
  }

  const Decimal d = FifteenDigits(value, road);
  const auto formatZero = [&] {
    const Section& s = sections.size() > 2 && !sections[2].empty ? sections[2] : sections[0];
    if (s.empty) return GeneralNumber(0, locale);
    return FormatSection(s, RoundDecimal(Decimal{"0", 1}, s.decimals), false, locale);
  };
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

struct FormatEntry {
  std::uint64_t value = 0;
  std::uint64_t signs = 0;
  ShortText pattern;
  std::uint64_t used = 0;
  std::string text;
};

}  // namespace

std::string FormatNumber(double value, std::string_view pattern, const Locale& locale) {
  CheckFinite(value);
  if (pattern.empty()) return GeneralNumber(value, locale);
  const std::uint64_t signs = locale.signsKey();
  if (pattern.size() > kMemoLongest || signs == 0)
    return FormatByPattern(value, pattern, locale, Road::Any);
  thread_local Memo<FormatEntry> memo;
  const auto bits = std::bit_cast<std::uint64_t>(value);
  const ShortTextKey key = KeyOfText(pattern);
  FormatEntry* room = nullptr;
  const std::size_t hint = Memo<FormatEntry>::HintOf(bits, key.first);
  if (const FormatEntry* e = memo.find(
          hint,
          [&](const FormatEntry& e) {
            return e.value == bits && e.signs == signs && e.pattern.equals(pattern, key);
          },
          room))
    return e->text;
  std::string text = FormatByPattern(value, pattern, locale, Road::Any);
  room->value = bits;
  room->signs = signs;
  room->pattern.assign(pattern, key);
  room->text = text;
  memo.filled(*room);
  return text;
}

std::string FormatNumberUnkept(double value, std::string_view pattern, const Locale& locale) {
  CheckFinite(value);
  if (pattern.empty()) return GeneralNumber(value, locale);
  return FormatByPattern(value, pattern, locale, Road::Any, true);
}

std::string FormatNumberGeneral(double value, std::string_view pattern, const Locale& locale) {
  CheckFinite(value);
  if (pattern.empty()) return GeneralNumber(value, locale);
  return FormatByPattern(value, pattern, locale, Road::General);
}

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
  return ReadWritten(text, locale, value) ||
         ReadLocaleNumber(text, locale, value, Road::Any) == Reading::Numeric;
}

bool TryReadNumericText(std::string_view text, const Locale& locale, double& value) {
  if (ReadWritten(text, locale, value)) return true;
  double read = 0;
  if (ReadLocaleNumber(text, locale, read, Road::Any) != Reading::Numeric) return false;
  value = read;
  return true;
}

namespace {

double ValueOrRaise(Reading reading, double value) {
  switch (reading) {
    case Reading::Numeric:
      return value;
    case Reading::TooLarge:
      Raise(kOverflow);
    case Reading::NotNumeric:
      break;
  }
  Raise(kTypeMismatch);
}

}  // namespace

double ReadNumericText(std::string_view text, const Locale& locale) {
  double value = 0;
  if (ReadWritten(text, locale, value)) return value;
  const Reading reading = ReadLocaleNumber(text, locale, value, Road::Any);
  return ValueOrRaise(reading, value);
}

double ReadNumericTextGeneral(std::string_view text, const Locale& locale) {
  double value = 0;
  const Reading reading = ReadLocaleNumber(text, locale, value, Road::General);
  return ValueOrRaise(reading, value);
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
