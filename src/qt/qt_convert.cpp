#include "qt/qt_convert.h"

#include <cmath>

namespace quillon::view {
namespace {

constexpr quint32 kSystemFlag = 0x80000000u;

QColor SystemColour(int index, const QPalette& p) {
  switch (index) {
    case 1:   // desktop
    case 12:  // application workspace
      return p.color(QPalette::Dark);
    case 2:   // active title bar
    case 13:  // highlight
      return p.color(QPalette::Highlight);
    case 3:  // inactive title bar
      return p.color(QPalette::Mid);
    case 5:  // window background
      return p.color(QPalette::Base);
    case 6:   // window frame
    case 21:  // 3-D dark shadow
      return p.color(QPalette::Shadow);
    case 7:   // menu text
    case 19:  // inactive title text
      return p.color(QPalette::WindowText);
    case 8:  // window text
      return p.color(QPalette::Text);
    case 9:   // active title text
    case 14:  // highlight text
      return p.color(QPalette::HighlightedText);
    case 15:  // button face
      return p.color(QPalette::Button);
    case 16:  // button shadow
      return p.color(QPalette::Dark);
    case 17:  // grey text
      return p.color(QPalette::Disabled, QPalette::Text);
    case 18:  // button text
      return p.color(QPalette::ButtonText);
    case 20:  // button highlight
      return p.color(QPalette::Light);
    case 22:  // 3-D light
      return p.color(QPalette::Midlight);
    case 23:  // tooltip text
      return p.color(QPalette::ToolTipText);
    case 24:  // tooltip background
      return p.color(QPalette::ToolTipBase);
    default:  // scroll bar, menu, borders and the rest: the window's own face
      return p.color(QPalette::Window);
  }
}

}  // namespace

QColor ToQColor(Long colour, const QPalette& palette) {
  const auto value = static_cast<quint32>(colour);
  if ((value & 0xFF000000u) == kSystemFlag) return SystemColour(value & 0xFFu, palette);
  // Anything else is read as its low three bytes, red first.
  return QColor(value & 0xFFu, (value >> 8) & 0xFFu, (value >> 16) & 0xFFu);
}

QDate ToQDate(Date day) {
  if (!std::isfinite(day) || std::fabs(day) > 1e7) return {};
  return QDate(1899, 12, 30).addDays(static_cast<qint64>(std::floor(day)));
}

Date FromQDate(const QDate& day) {
  return static_cast<Date>(QDate(1899, 12, 30).daysTo(day));
}

int Utf16Offset(const QString& text, long codePoint) {
  int i = 0;
  for (long seen = 0; i < text.size() && seen < codePoint; ++seen)
    i += (text.at(i).isHighSurrogate() && i + 1 < text.size() && text.at(i + 1).isLowSurrogate())
             ? 2
             : 1;
  return i;
}

long CodePointOffset(const QString& text, int utf16) {
  long n = 0;
  for (int i = 0; i < utf16 && i < text.size(); ++n)
    i += (text.at(i).isHighSurrogate() && i + 1 < text.size() && text.at(i + 1).isLowSurrogate())
             ? 2
             : 1;
  return n;
}

}  // namespace quillon::view
