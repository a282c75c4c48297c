// The price texts a ticket wrote last. A tick writes the same two prices several times over
// (market, bid, offer, limit, stop) with the pattern of one pip: each pip's pattern is built
// once and each price is formatted once, the rest are copies of texts already written.
#pragma once

#include <array>
#include <bit>
#include <cstdint>
#include <string>

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

  // The text remembered for a price with a pip's pattern, or nullptr.
  const std::string* text(double price, double pip) const {
    const std::uint64_t p = Key(price), q = Key(pip);
    for (const Entry& e : texts_)
      if (e.used && e.price == p && e.pip == q) return &e.text;
    return nullptr;
  }
  void rememberText(double price, double pip, const std::string& text) {
    Entry& e = texts_[next_];
    next_ = (next_ + 1) % texts_.size();
    e.price = Key(price);
    e.pip = Key(pip);
    e.text = text;
    e.used = true;
  }

 private:
  // Values compare by their bits: a price is the same price only when it is the same Double.
  static std::uint64_t Key(double v) { return std::bit_cast<std::uint64_t>(v); }

  struct Entry {
    std::uint64_t price = 0;
    std::uint64_t pip = 0;
    std::string text;
    bool used = false;
  };
  std::uint64_t pipKey_ = 0;
  bool hasPattern_ = false;
  PipPattern pip_;
  std::array<Entry, 4> texts_;
  std::size_t next_ = 0;
};

}  // namespace quillon
