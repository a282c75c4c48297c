#include "qt/control_widgets.h"

#include <QApplication>
#include <QClipboard>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QPaintEvent>
#include <QProxyStyle>
#include <QStyleOption>
#include <QPainter>
#include <QPointer>
#include <QStyle>
#include <QToolButton>
#include <algorithm>
#include <array>
#include <compare>
#include <map>

#include "qt/qt_convert.h"

namespace quillon::view {
namespace {

constexpr Integer kBackspace = 8;
constexpr Integer kEnter = 13;
constexpr Integer kEscape = 27;

bool Printable(char32_t ch) { return ch >= 0x20 && ch != 0x7F && !(ch >= 0x80 && ch < 0xA0); }

// The application's style, with the panel of a text box drawn once per size, state and colours
// and copied after: a box repaints at every new price, and the style's antialiased frame
// costs more than the text inside it. The copy holds the same pixels the style draws, on the
// face of the box's container, which shows in the corners the rounded frame leaves: the box
// paints every pixel of its rectangle with that one copy.
class PanelCacheStyle : public QProxyStyle {
 private:
  struct PanelKey {
    int width, height;
    uint state;
    int lineWidth;
    qreal ratio;
    std::array<QRgb, 10> colours;
    auto operator<=>(const PanelKey&) const = default;
  };
  mutable std::map<PanelKey, QPixmap> panels_;

 public:
  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override {
    const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
    if (element != PE_PanelLineEdit || !frame || option->rect.isEmpty()) {
      QProxyStyle::drawPrimitive(element, option, painter, widget);
      return;
    }
    const qreal ratio = painter->device() ? painter->device()->devicePixelRatio() : 1.0;
    const QPalette& pal = option->palette;
    PanelKey key{option->rect.width(), option->rect.height(), static_cast<uint>(option->state),
                 frame->lineWidth, ratio, {}};
    std::size_t i = 0;
    for (QPalette::ColorRole role : {QPalette::Base, QPalette::Window, QPalette::WindowText,
                                     QPalette::Highlight, QPalette::Button, QPalette::Light,
                                     QPalette::Dark, QPalette::Mid, QPalette::Shadow})
      key.colours[i++] = pal.color(role).rgba();
    const QWidget* container = widget ? widget->parentWidget() : nullptr;
    const QColor face = (container ? container->palette() : pal).color(QPalette::Window);
    key.colours[i] = face.rgba();
    auto it = panels_.find(key);
    if (it == panels_.end()) {
      if (panels_.size() >= 256) panels_.clear();  // sizes and colours seldom vary this much
      QPixmap panel(option->rect.size() * ratio);
      panel.setDevicePixelRatio(ratio);
      panel.fill(face);
      QPainter p(&panel);
      QStyleOptionFrame at = *frame;
      at.rect = QRect(QPoint(0, 0), option->rect.size());
      QProxyStyle::drawPrimitive(element, &at, &p, widget);
      p.end();
      it = panels_.emplace(key, std::move(panel)).first;
    }
    const QPixmap& panel = it->second;
    painter->drawPixmap(option->rect.topLeft(), panel);
  }
};

QStyle* PanelStyle() {
  static QPointer<PanelCacheStyle> style;
  if (!style) {
    style = new PanelCacheStyle;
    style->setParent(qApp);
  }
  return style;
}

}  // namespace

// ---- FrameWidget ------------------------------------------------------------------------

FrameWidget::FrameWidget(bool border, QWidget* parent) : QWidget(parent), border_(border) {}

void FrameWidget::setCaption(const QString& caption) {
  if (caption == caption_) return;
  caption_ = caption;
  update();
}

void FrameWidget::paintEvent(QPaintEvent*) {
  QPainter p(this);
  const QColor back = palette().color(QPalette::Window);
  p.fillRect(rect(), back);
  if (!border_) return;
  const QFontMetrics fm(font());
  const int top = caption_.isEmpty() ? 0 : fm.height() / 2;
  // An etched edge: a shade darker than the face, then a highlight inside it.
  const QRect edge = rect().adjusted(0, top, -2, -2);
  p.setPen(back.darker(165));
  p.drawRect(edge);
  p.setPen(back.lightness() > 235 ? QColor(Qt::white).darker(108) : back.lighter(160));
  p.drawRect(edge.translated(1, 1));
  if (caption_.isEmpty()) return;
  const int flags = Qt::AlignLeft | Qt::AlignTop | Qt::TextShowMnemonic | Qt::TextSingleLine;
  QRect text = fm.boundingRect(QRect(0, 0, width(), fm.height()), flags, caption_);
  text.moveTo(8, 0);
  p.fillRect(text.adjusted(-2, 0, 2, 0), back);
  style()->drawItemText(&p, text, flags, palette(), isEnabled(), caption_, QPalette::WindowText);
}

// ---- LineWidget -------------------------------------------------------------------------

LineWidget::LineWidget(QPoint from, QPoint to, QColor colour, QWidget* parent)
    : QWidget(parent), from_(from), to_(to), colour_(colour) {
  setAttribute(Qt::WA_TransparentForMouseEvents);
  const QRect box = QRect(from, to).normalized();
  setGeometry(box.x(), box.y(), std::max(box.width(), 1), std::max(box.height(), 1));
}

void LineWidget::paintEvent(QPaintEvent*) {
  QPainter p(this);
  if (from_.y() == to_.y() || from_.x() == to_.x()) {
    p.fillRect(rect(), colour_);
    return;
  }
  p.setRenderHint(QPainter::Antialiasing);
  p.setPen(QPen(colour_, 1));
  p.drawLine(from_ - pos(), to_ - pos());
}

// ---- TextBoxWidget ----------------------------------------------------------------------

TextBoxWidget::TextBoxWidget(TextBox& box, ViewLink& link, QWidget* parent)
    : QLineEdit(parent), box_(box), link_(link) {
  // No path may edit the widget behind the box's back: no menu, no drops, no undo.
  setContextMenuPolicy(Qt::NoContextMenu);
  setAcceptDrops(false);
  setDragEnabled(false);
  setMaxLength(32767);
  // The box paints every pixel of its rectangle (its panel carries the container's face in
  // its corners), so a new text repaints the box alone, not the frame behind it.
  setAttribute(Qt::WA_OpaquePaintEvent);
  setStyle(PanelStyle());
  // A last guard: should anything still edit the widget itself, the box's text comes back.
  connect(this, &QLineEdit::textEdited, this, [this] { showText(); });
  showText();
}

// Both read the logical box: once the view is detached there may be none (the ticket ended
// inside the user's action that is still under way, a focus move into this box among them).
void TextBoxWidget::showText() {
  if (!link_.form) return;
  const QString text = ToQString(box_.Text());
  if (text != this->text()) setText(text);
  showSelection();
}

void TextBoxWidget::showSelection() {
  if (!link_.form) return;
  const QString t = text();
  const long start = box_.SelStart();
  const long length = box_.SelLength();
  if (length <= 0) {
    anchor_ = start;
    setCursorPosition(Utf16Offset(t, start));
    return;
  }
  const int a = Utf16Offset(t, start);
  const int b = Utf16Offset(t, start + length);
  // The caret sits at the end away from the anchor.
  if (anchor_ == start + length) {
    setSelection(b, a - b);
  } else {
    anchor_ = start;
    setSelection(a, b - a);
  }
}

void TextBoxWidget::type(const QString& text) {
  QPointer<TextBoxWidget> self(this);
  const QList<uint> characters = text.toUcs4();
  for (uint ch : characters) {
    if (!self || !link_.form) return;
    if (!Printable(ch)) continue;
    if (ch <= 0xFFFF) {
      if (!link_.form->userKey(box_, static_cast<Integer>(static_cast<quint16>(ch)))) return;
    } else {
      const char32_t wide = ch;
      const std::string one = FromQString(QString::fromUcs4(&wide, 1));
      if (!link_.form->userType(box_, one)) return;
    }
  }
}

void TextBoxWidget::removeSelection(bool orNextCharacter) {
  const QString t = ToQString(box_.Text());
  const long length = CodePointOffset(t, static_cast<int>(t.size()));
  const long start = std::min<long>(box_.SelStart(), length);
  long count = std::min<long>(box_.SelLength(), length - start);
  if (count <= 0) {
    if (!orNextCharacter || start >= length) return;
    count = 1;
  }
  const int a = Utf16Offset(t, start);
  const int b = Utf16Offset(t, start + count);
  const QString next = t.left(a) + t.mid(b);
  QPointer<TextBoxWidget> self(this);
  if (!link_.form->userPaste(box_, FromQString(next))) return;
  if (self && link_.form && box_.Text() == FromQString(next)) box_.setSelStart(start);
}

void TextBoxWidget::moveCaret(int key, bool extend) {
  const long length = CodePointOffset(text(), static_cast<int>(text().size()));
  const long start = box_.SelStart();
  const long selected = box_.SelLength();
  long anchor = start;
  long caret = start;
  if (selected > 0) {
    const bool caretAtEnd = anchor_ != start + selected;
    anchor = caretAtEnd ? start : start + selected;
    caret = caretAtEnd ? start + selected : start;
  }
  long to = caret;
  switch (key) {
    case Qt::Key_Left:
      to = (!extend && selected > 0) ? start : caret - 1;
      break;
    case Qt::Key_Right:
      to = (!extend && selected > 0) ? start + selected : caret + 1;
      break;
    case Qt::Key_Home:
      to = 0;
      break;
    default:
      to = length;
      break;
  }
  to = std::clamp<long>(to, 0, length);
  select(extend ? anchor : to, to);
}

void TextBoxWidget::select(long anchor, long caret) {
  box_.setSelStart(static_cast<Long>(std::min(anchor, caret)));
  box_.setSelLength(static_cast<Long>(std::abs(caret - anchor)));
  // Each write above showed itself, the first as a bare caret that took the anchor with it:
  // the anchor is set once both are in, and the caret shown at its end even when the range
  // itself did not change.
  anchor_ = anchor;
  showSelection();
}

void TextBoxWidget::keyPressEvent(QKeyEvent* event) {
  if (!link_.form) return;
  Form& form = *link_.form;
  if (event->matches(QKeySequence::Copy)) {
    copy();
    return;
  }
  if (event->matches(QKeySequence::Paste)) {
    form.userPaste(box_, FromQString(QGuiApplication::clipboard()->text()));
    return;
  }
  if (event->matches(QKeySequence::Cut)) {
    if (box_.SelLength() > 0 && !box_.Locked()) {
      copy();
      removeSelection(false);
    }
    return;
  }
  if (event->matches(QKeySequence::SelectAll)) {
    anchor_ = 0;
    box_.setSelStart(0);
    box_.setSelLength(static_cast<Long>(CodePointOffset(text(), static_cast<int>(text().size()))));
    return;
  }
  const bool shift = event->modifiers() & Qt::ShiftModifier;
  switch (event->key()) {
    case Qt::Key_Backspace:
      form.userKey(box_, kBackspace);
      return;
    case Qt::Key_Delete:
      removeSelection(true);
      return;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      form.userKey(box_, kEnter);
      return;
    case Qt::Key_Escape:
      form.userKey(box_, kEscape);
      return;
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Home:
    case Qt::Key_End:
      moveCaret(event->key(), shift);
      return;
    default:
      break;
  }
  // A character: with Control alone it is a command, with AltGr (Control and Alt) a letter.
  const auto mods = event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
  const bool command = mods == Qt::ControlModifier || mods == Qt::MetaModifier;
  const QString text = event->text();
  if (!command && !text.isEmpty() && Printable(text.at(0).unicode())) {
    type(text);
    return;
  }
  event->ignore();
}

void TextBoxWidget::inputMethodEvent(QInputMethodEvent* event) {
  event->accept();
  if (link_.form && !event->commitString().isEmpty()) type(event->commitString());
}

void TextBoxWidget::mousePressEvent(QMouseEvent* event) {
  if (event->button() == Qt::MiddleButton) return;  // no paste of the X11 selection behind the box
  if (focusedByMouse_) {
    // The click that entered the box keeps what its got-focus handler selected, so that a
    // trader who clicks into the amount and types replaces it.
    focusedByMouse_ = false;
    showSelection();
    return;
  }
  QLineEdit::mousePressEvent(event);
  pushSelection();
}

void TextBoxWidget::mouseMoveEvent(QMouseEvent* event) {
  QLineEdit::mouseMoveEvent(event);
  if ((event->buttons() & Qt::LeftButton) && hasSelectedText()) pushSelection();
}

void TextBoxWidget::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() == Qt::MiddleButton) return;
  QLineEdit::mouseReleaseEvent(event);
  pushSelection();
}

void TextBoxWidget::mouseDoubleClickEvent(QMouseEvent* event) {
  QLineEdit::mouseDoubleClickEvent(event);
  pushSelection();
}

void TextBoxWidget::focusInEvent(QFocusEvent* event) {
  focusedByMouse_ = event->reason() == Qt::MouseFocusReason;
  QLineEdit::focusInEvent(event);
  // Qt selects the whole text on a tab into a line edit; the box keeps its own selection.
  showSelection();
}

void TextBoxWidget::pushSelection() {
  if (!link_.form) return;
  const QString t = text();
  if (t != ToQString(box_.Text())) return showText();
  if (!hasSelectedText()) {
    const long caret = CodePointOffset(t, cursorPosition());
    anchor_ = caret;
    box_.setSelStart(static_cast<Long>(caret));
    return;
  }
  const int a = selectionStart();
  const int b = a + static_cast<int>(selectedText().size());
  const long start = CodePointOffset(t, a);
  const long end = CodePointOffset(t, b);
  const bool caretAtStart = cursorPosition() == a;
  const long anchor = caretAtStart ? end : start, caret = caretAtStart ? start : end;
  if (box_.SelStart() == start && box_.SelLength() == end - start) {
    anchor_ = anchor;
    return;
  }
  select(anchor, caret);
}

// ---- SpinnerWidget ----------------------------------------------------------------------

SpinnerWidget::SpinnerWidget(UpDown& spinner, ViewLink& link, QWidget* parent)
    : QWidget(parent), up_(new QToolButton(this)), down_(new QToolButton(this)) {
  const auto setUp = [&](QToolButton* button, bool up) {
    button->setObjectName(up ? QStringLiteral("up") : QStringLiteral("down"));
    button->setArrowType(up ? Qt::UpArrow : Qt::DownArrow);
    // No auto-repeat: an arrow held down is one click, as on a spinner whose value stays at
    // the end of its range of -1 to 1 till the release sets it back.
    button->setFocusPolicy(Qt::NoFocus);  // a step leaves the focus in the box it steps
    connect(button, &QToolButton::clicked, this, [&spinner, &link, up] {
      if (link.form) link.form->userSpin(spinner, up);
    });
  };
  setUp(up_, true);
  setUp(down_, false);
}

void SpinnerWidget::resizeEvent(QResizeEvent*) {
  const int half = height() / 2;
  up_->setGeometry(0, 0, width(), half);
  down_->setGeometry(0, half, width(), height() - half);
}

}  // namespace quillon::view
