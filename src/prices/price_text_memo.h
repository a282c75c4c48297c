// The price texts a ticket wrote last. A tick writes the same prices several times over
// (market, bid, offer, limit, stop) with the pattern of one pip: each pip's pattern is built
// once and each price is formatted once, the rest are copies of texts already written. Six
// texts hold a tick's four prices and the two its new bid and offer replace.
#pragma once

#include <array>
#include <bit>
#include <cstdint>
#include <string>
#include <utility>

namespace quillon {

class PriceTextMemo {
 public:
  // The pattern of a pip, and how many of its digits 1 were made 0 on the way.
  struct PipPattern {
    std::string pattern;
    int ones = 0;
  };

  // The pattern remembered for a pip, or nullptr.
  const PipPattern* pattern(double pip) const {
    return pipKey_ == Key(pip) && hasPattern_ ? &pip_ : nullptr;
  }
  void rememberPattern(double pip, std::string pattern, int ones) {
    pipKey_ = Key(pip);
    pip_.pattern = std::move(pattern);
    pip_.ones = ones;
    hasPattern_ = true;
  }

  // The text remembered for a price with a pip's pattern under the locale's signs, or nullptr.
  // Signs of 0 (too long to key) are never remembered.
  const std::string* text(double price, double pip, std::uint64_t signs) {
    if (textsPip_ != Key(pip) || textsSigns_ != signs || signs == 0) return nullptr;
    const std::uint64_t p = Key(price);
    for (Entry& e : texts_) {
      if (e.price == p && e.used != 0) {
        e.used = ++turn_;
        return &e.text;
      }
    }
    return nullptr;
  }
  // Takes the place of the text used least recently: a tick's limit and stop stay while its
  // bid and offer move. The texts kept are those of one pip and one locale's signs: another
  // pip's text, or one written under other signs, replaces them.
  const std::string& rememberText(double price, double pip, std::uint64_t signs,
                                  std::string text) {
    if (textsPip_ != Key(pip) || textsSigns_ != signs) {
      for (Entry& e : texts_) e.used = 0;
      textsPip_ = Key(pip);
      textsSigns_ = signs;
    }
    Entry* room = &texts_[0];
    for (Entry& e : texts_)
      if (e.used < room->used) room = &e;
    room->price = Key(price);
    room->text = std::move(text);
    room->used = ++turn_;
    return room->text;
  }

 private:
  // Values compare by their bits: a price is the same price only when it is the same Double.
  static std::uint64_t Key(double v) { return std::bit_cast<std::uint64_t>(v); }

  struct Entry {
    std::uint64_t price = 0;
    std::string text;
    std::uint64_t used = 0;  // the turn of the last use, 0 for never
  };
  std::uint64_t pipKey_ = 0;
  bool hasPattern_ = false;
  PipPattern pip_;
  std::uint64_t textsPip_ = 0;
  std::uint64_t textsSigns_ = 0;
  std::array<Entry, 6> texts_;
  std::uint64_t turn_ = 0;
};

}  // namespace quillon
