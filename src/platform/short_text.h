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

inline bool SameText(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  if (a.size() <= 16) return KeyOfText(a) == KeyOfText(b);
  return std::memcmp(a.data(), b.data(), a.size()) == 0;
}

}  // namespace quillon
