// The numbers a ticket read from its boxes last. A tick reads the market price box back into
// its member and checks both amount boxes three times over; each text is read once, and the
// reading holds while the box keeps that text (its stamp) under the same signs.
#pragma once

#include <array>
#include <cstdint>

#include "platform/forms.h"
#include "platform/locale.h"
#include "platform/number_format.h"

namespace quillon {

class BoxReadings {
 public:
  struct Reading {
    bool numeric = false;
    double value = 0;  // 0 for a text that is not numeric
  };

  // Whether the box's text is numeric under the locale, and its value.
  Reading of(const TextBox& box, const Locale& locale) {
    const std::uint64_t stamp = box.textStamp(), signs = locale.signsKey();
    if (signs == 0) return Read(box, locale);  // signs too long to key: read every time
    Entry* room = &entries_[0];
    for (Entry& e : entries_) {
      if (e.stamp == stamp && e.signs == signs) {
        e.used = ++turn_;
        return e.reading;
      }
      if (e.used < room->used) room = &e;
    }
    const Reading reading = Read(box, locale);
    *room = Entry{stamp, signs, ++turn_, reading};
    return reading;
  }

 private:
  static Reading Read(const TextBox& box, const Locale& locale) {
    Reading r;
    r.numeric = TryReadNumericText(box.Text(), locale, r.value);
    return r;
  }

  struct Entry {
    std::uint64_t stamp = 0;  // no text has stamp 0
    std::uint64_t signs = 0;
    std::uint64_t used = 0;  // the turn of the last use
    Reading reading;
  };
  std::array<Entry, 4> entries_{};
  std::uint64_t turn_ = 0;
};

}  // namespace quillon
