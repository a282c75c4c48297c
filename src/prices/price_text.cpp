// The text of prices, and the ticket's text replacement:
//   Single_Price_As_String, Spread_Price_As_String, Change_Chars.

#include <algorithm>
#include <string>

#include "platform/number_format.h"
#include "ticket/ticket_model.h"

namespace quillon {
namespace {

// Blanks removed from both ends.
std::string Trim(const std::string& text) {
  const auto first = text.find_first_not_of(' ');
  if (first == std::string::npos) return {};
  const auto last = text.find_last_not_of(' ');
  return text.substr(first, last - first + 1);
}

// The 1-based character position of `part` in `text`, 0 when absent. Price texts are ASCII
// digits and signs around the decimal sign, so a position counts that sign as one character.
std::size_t InStr(const std::string& text, const std::string& part) {
  const auto at = text.find(part);
  if (at == std::string::npos) return 0;
  std::size_t position = 1;
  for (std::size_t i = 0; i < at; ++i)
    if ((static_cast<unsigned char>(text[i]) & 0xC0) != 0x80) ++position;
  return position;
}

// The last n characters of a text (all of it when shorter).
std::string Right(const std::string& text, std::size_t n) {
  std::size_t start = text.size();
  while (n > 0 && start > 0) {
    --start;
    while (start > 0 && (static_cast<unsigned char>(text[start]) & 0xC0) == 0x80) --start;
    --n;
  }
  return text.substr(start);
}

}  // namespace

std::string Clientticket::Single_Price_As_String(double Price, double Pip) {
  return PriceText(Price, Pip);
}

const std::string& Clientticket::PriceText(double Price, double Pip) {
  static const std::string kNoText;
  try {
    if (Price == 0) return LoadResString(230);
    // The pip's pattern is built once per pip: building it makes each digit 1 of the pip's text
    // a 0 and yields once for each, and a pattern built before yields as often.
    const PriceTextMemo::PipPattern* known = priceTexts_.pattern(Pip);
    const bool built = known != nullptr;
    if (built) {
      for (int i = 0, ones = known->ones; i < ones; ++i) yield();
      // Work run in the yields may have written prices with another pip and replaced what the
      // memory holds; a price's text, and its pip's pattern, are what they were.
      if (const std::string* text = priceTexts_.text(Price, Pip, locale().signsKey()))
        return *text;
    }
    if (!priceTexts_.pattern(Pip)) {
      std::string pattern = "0" + Trim(StrOfDouble(Pip));
      const auto ones = static_cast<int>(std::count(pattern.begin(), pattern.end(), '1'));
      if (!built) pattern = Change_Chars(pattern, "1", "0");
      // A pip that is not a power of ten (0.0005, 0.25) leaves other digits in the pattern;
      // they count as decimals like the rest, so such a pip shows as many decimals as it has.
      for (char& c : pattern)
        if (c >= '1' && c <= '9') c = '0';
      priceTexts_.rememberPattern(Pip, std::move(pattern), ones);
    }
    // The ticket keeps its price texts itself: the number layer's memory would only hold a
    // second copy of each.
    return priceTexts_.rememberText(
        Price, Pip, locale().signsKey(),
        FormatNumberUnkept(Price, priceTexts_.pattern(Pip)->pattern, locale()));
  } catch (...) {
    Report(CurrentError(), "Single_Price_As_String", true);
  }
  return kNoText;
}

std::string Clientticket::Spread_Price_As_String(double Bid, double Offer, double Pip) {
  std::string result;
  try {
    if (Bid == 0 && Offer == 0) {
      result = LoadResString(230);
      return result;
    }
    const std::string offer = Single_Price_As_String(Offer, Pip);
    const std::string& separator = DecimalSeparator;
    // One decimal shown, and a big figure of more than three digits, each add a character.
    const bool oneDecimal = !separator.empty() && Right(offer, 2).rfind(separator, 0) == 0 &&
                            Right(offer, 2).size() == separator.size() + 1;
    const bool longWhole = !separator.empty() && InStr(offer, separator) > 4;
    std::size_t tail = 2 + (oneDecimal ? 1 : 0) + (longWhole ? 1 : 0);
    result = Single_Price_As_String(Bid, Pip) + "/" + Right(offer, tail);
  } catch (...) {
    Report(CurrentError(), "Spread_Price_As_String", true);
  }
  return result;
}

std::string Clientticket::Change_Chars(std::string& Source, const std::string& Find,
                                       const std::string& Replace) {
  std::string result;
  try {
    // An empty Find, or a Replace that holds Find, would never end; the search then goes on
    // behind the replacement instead of at its start.
    const bool restartBehind = Find.empty() || Replace.find(Find) != std::string::npos;
    if (Find.empty()) {
      result = Source;
      return result;
    }
    std::size_t p = Source.find(Find);
    while (p != std::string::npos) {
      Source = Source.substr(0, p) + Replace + Source.substr(p + Find.size());
      p = Source.find(Find, restartBehind ? p + Replace.size() : p);
      yield();
    }
    result = Source;
  } catch (...) {
    Report(CurrentError(), "Change_Chars", false);
  }
  return result;
}

}  // namespace quillon
