// Short texts compared by whole-word loads. The texts of boxes, captions and number patterns
// are mostly no longer than 16 bytes, which two 8-byte loads cover; a call of memcmp costs
// more than the comparison itself at that length.
#pragma once

#include <cstdint>
#include <cstring>
#include <string_view>

namespace quillon {

// Loads that overlap where the text is not a multiple of eight bytes long: with the text's
// length, the two words are the text itself up to 16 bytes.
struct ShortTextKey {
  std::uint64_t first = 0, last = 0;
  bool operator==(const ShortTextKey&) const = default;
};

namespace short_text_detail {
template <typename Word>
Word Load(const char* p) {
  Word w;
  std::memcpy(&w, p, sizeof w);
  return w;
}
inline std::uint64_t Byte(char c) { return static_cast<unsigned char>(c); }
}  // namespace short_text_detail

inline ShortTextKey KeyOfText(std::string_view text) {
  using short_text_detail::Byte;
  using short_text_detail::Load;
  const char* p = text.data();
  const std::size_t n = text.size();
  ShortTextKey key;
  if (n >= 8) {
    key.first = Load<std::uint64_t>(p);
    key.last = Load<std::uint64_t>(p + n - 8);
  } else if (n >= 4) {
    key.first = Load<std::uint32_t>(p) | std::uint64_t{Load<std::uint32_t>(p + n - 4)} << 32;
  } else if (n > 0) {
    key.first = Byte(p[0]) | Byte(p[n / 2]) << 8 | Byte(p[n - 1]) << 16;
  }
  return key;
}

// Texts of one length up to 16 bytes are compared as the words that make their keys.
inline bool SameText(std::string_view a, std::string_view b) {
  using short_text_detail::Load;
  const std::size_t n = a.size();
  if (n != b.size()) return false;
  const char *p = a.data(), *q = b.data();
  if (n > 16) return std::memcmp(p, q, n) == 0;
  if (n >= 8) {
    return ((Load<std::uint64_t>(p) ^ Load<std::uint64_t>(q)) |
            (Load<std::uint64_t>(p + n - 8) ^ Load<std::uint64_t>(q + n - 8))) == 0;
  }
  if (n >= 4) {
    return ((Load<std::uint32_t>(p) ^ Load<std::uint32_t>(q)) |
            (Load<std::uint32_t>(p + n - 4) ^ Load<std::uint32_t>(q + n - 4))) == 0;
  }
  return n == 0 || (p[0] == q[0] && p[n / 2] == q[n / 2] && p[n - 1] == q[n - 1]);
}

}  // namespace quillon
