// Conversions between the ticket's values and Qt's: colours, dates, texts. Private to the view.
#pragma once

#include <QColor>
#include <QDate>
#include <QPalette>
#include <QString>
#include <string>

#include "platform/types.h"

namespace quillon::view {

// A colour as the ticket writes it: 0x00BBGGRR, or a system colour 0x800000nn, which is taken
// from the palette.
QColor ToQColor(Long colour, const QPalette& palette);

// The day of a Date (its time of day dropped), and a day as a Date. A Date outside Qt's
// calendar gives an invalid QDate.
QDate ToQDate(Date day);
Date FromQDate(const QDate& day);

inline QString ToQString(const std::string& utf8) { return QString::fromStdString(utf8); }
inline std::string FromQString(const QString& text) { return text.toStdString(); }

// Text positions: the forms layer counts code points, Qt counts UTF-16 units.
int Utf16Offset(const QString& text, long codePoint);
long CodePointOffset(const QString& text, int utf16);

}  // namespace quillon::view
