// The Qt view of a ticket: one widget per control, built once from the form's tree, then kept
// in step with the logical controls property by property through the form's change signal.

#include "qt/ticket_widget.h"

#include <QApplication>
#include <QComboBox>
#include <QEvent>
#include <QFocusEvent>
#include <QHash>
#include <QKeyEvent>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QStyle>
#include <QTextCharFormat>
#include <algorithm>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "qt/control_widgets.h"
#include "qt/qt_convert.h"
#include "ticket/ticket_model.h"

namespace quillon::view {
namespace {

constexpr double kTwipsPerInch = 1440.0;

// Disabled text that stays readable on the ticket's light colours and on dark ones.
QColor DisabledText(const QColor& back) {
  return back.lightness() > 110 ? QColor(0x5A, 0x5A, 0x5A) : QColor(0xB0, 0xB0, 0xB0);
}

QString CaptionText(const std::string& caption) {
  QString text = ToQString(caption);
  text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
  text.replace(QLatin1Char('\r'), QLatin1Char('\n'));
  return text;
}

// Sets a caption's font narrower, then a quarter point smaller at a time, till `fits` says the
// caption fits, never below four fifths of the design's size.
template <typename Fits>
void Condense(QFont& f, double designSize, Fits fits) {
  if (fits()) return;
  f.setStretch(QFont::Condensed);
  const double smallest = designSize * 0.8;
  while (!fits() && f.pointSizeF() - 0.25 >= smallest) f.setPointSizeF(f.pointSizeF() - 0.25);
}

// The rectangle at least `height` high, grown evenly up and down.
QRect AtLeastHigh(QRect r, int height) {
  if (r.height() < height) {
    const int grow = height - r.height();
    r.adjust(0, -(grow / 2), 0, grow - grow / 2);
  }
  return r;
}

bool UserFocusReason(Qt::FocusReason reason) {
  return reason == Qt::MouseFocusReason || reason == Qt::TabFocusReason ||
         reason == Qt::BacktabFocusReason || reason == Qt::ShortcutFocusReason;
}

Qt::Alignment AlignmentOf(Alignment a) {
  switch (a) {
    case Alignment::Right:
      return Qt::AlignRight;
    case Alignment::Center:
      return Qt::AlignHCenter;
    case Alignment::Left:
      break;
  }
  return Qt::AlignLeft;
}

}  // namespace

struct TicketWidget::Impl {
  explicit Impl(TicketWidget& v, Clientticket& t) : view(v), ticket(&t) {}

  TicketWidget& view;
  Clientticket* ticket;
  ViewLink link;
  int observer = 0;
  double dpi = 96;
  std::unordered_map<const Control*, QWidget*> widgets;
  QHash<const QObject*, Control*> inputs;  // widgets, and the widgets inside them, by control

  int px(double twips) const { return qRound(twips * dpi / kTwipsPerInch); }
  QRect rectOf(const Control& c) const {
    const int x = px(c.Left()), y = px(c.Top());
    return QRect(x, y, std::max(px(c.Left() + c.Width()) - x, 0),
                 std::max(px(c.Top() + c.Height()) - y, 0));
  }
  // Where a control's widget stands: its design rectangle, but an option button is never
  // lower than its round indicator with a pixel of room above and below for the rim. The
  // design's 195 twips are 13 pixels, which cut the rim off at some scales; the button then
  // grows evenly up and down.
  QRect placeOf(const Control& c, const QWidget* w) const {
    const QRect r = rectOf(c);
    if (c.kind() != ControlKind::OptionButton) return r;
    const int indicator = w->style()->pixelMetric(QStyle::PM_ExclusiveIndicatorHeight, nullptr, w);
    return AtLeastHigh(r, indicator + 2);
  }

  // A month calendar is built when it first shows (or is asked for): it weighs more than the
  // rest of the form, and most tickets never open it. Till then a plain widget holds its place.
  std::unordered_set<const Control*> pendingCalendars;
  QWidget* materialise(Control& c);
  void materialiseShowing();

  void build();
  QWidget* create(Control& c, QWidget* parent, bool calendarNow = false);
  void watchInput(Control& c, QWidget* w);
  void show(Control& c, ControlProperty what);

  void showColours(Control& c, QWidget* w);
  void showFont(Control& c, QWidget* w);
  void showCaption(Control& c, QWidget* w);
  void showOptionLines(Control& c, QRadioButton* w, QFont& f, int inset);
  void showList(ComboBox& list, QComboBox* w);
  void showDates(MonthView& cal, QCalendarWidget* w);
  void showFocus(Control& c, QWidget* w);
  void refocus();
  int roomToTheRight(const QWidget* w, const QRect& design) const;

  bool built = false;  // every widget exists: the room around a caption can be measured
};

// ---- Building ---------------------------------------------------------------------------

void TicketWidget::Impl::build() {
  Form& form = *link.form;
  QWidget* surfaceWidget = &view;
  std::vector<Control*> focusable;
  for (Control* c : form.controls()) {
    if (c->kind() == ControlKind::Surface) {
      widgets[c] = surfaceWidget;
      showColours(*c, surfaceWidget);
      continue;
    }
    QWidget* parent = surfaceWidget;
    if (c->parent()) {
      auto it = widgets.find(c->parent());
      if (it != widgets.end()) parent = it->second;
    }
    QWidget* w = create(*c, parent);
    if (!w) continue;
    widgets[c] = w;
    // Controls come front to back: each new one goes behind its elder siblings.
    w->lower();
    if (c->takesFocus() && c->tabIndex >= 0) focusable.push_back(c);
  }
  std::stable_sort(focusable.begin(), focusable.end(),
                   [](const Control* a, const Control* b) { return a->tabIndex < b->tabIndex; });
  for (std::size_t i = 1; i < focusable.size(); ++i)
    QWidget::setTabOrder(widgets[focusable[i - 1]], widgets[focusable[i]]);
  if (Control* f = form.focused()) {
    auto it = widgets.find(f);
    if (it != widgets.end()) showFocus(*f, it->second);
  }
  // With every neighbour in place, a caption too long for its control may take free room.
  built = true;
  for (auto& [control, w] : widgets)
    if (w != &view) showFont(*const_cast<Control*>(control), w);
}

QWidget* TicketWidget::Impl::materialise(Control& c) {
  auto it = widgets.find(&c);
  QWidget* placeholder = it->second;
  pendingCalendars.erase(&c);
  QWidget* w = create(c, placeholder->parentWidget(), true);
  w->stackUnder(placeholder);
  if (placeholder->focusPolicy() != Qt::NoFocus) QWidget::setTabOrder(placeholder, w);
  inputs.remove(placeholder);
  widgets[&c] = w;
  delete placeholder;
  return w;
}

void TicketWidget::Impl::materialiseShowing() {
  std::vector<Control*> now;
  for (const Control* c : pendingCalendars)
    if (c->isShowing()) now.push_back(const_cast<Control*>(c));
  for (Control* c : now) materialise(*c);
}

QWidget* TicketWidget::Impl::create(Control& c, QWidget* parent, bool calendarNow) {
  QWidget* w = nullptr;
  // A click on a button or an option is the user's click on its control.
  const auto forwardClicks = [&c, l = &link](QAbstractButton* button) {
    Control* control = &c;
    QObject::connect(button, &QAbstractButton::clicked, button, [l, control] {
      if (l->form) l->form->userClick(*control);
    });
  };
  switch (c.kind()) {
    case ControlKind::Surface:
    case ControlKind::Timer:
    case ControlKind::HtmlClient:  // prints through the host's printer; never shown
      return nullptr;
    case ControlKind::Frame: {
      auto* frame = new FrameWidget(c.border, parent);
      frame->setAutoFillBackground(false);
      w = frame;
      break;
    }
    case ControlKind::Label: {
      auto* label = new QLabel(parent);
      label->setTextFormat(Qt::PlainText);
      label->setAutoFillBackground(!c.transparent);
      w = label;
      break;
    }
    case ControlKind::TextBox: {
      auto& box = static_cast<TextBox&>(c);
      auto* edit = new TextBoxWidget(box, link, parent);
      edit->setAlignment(AlignmentOf(c.alignment) | Qt::AlignVCenter);
      edit->setReadOnly(box.Locked());
      w = edit;
      break;
    }
    case ControlKind::CommandButton: {
      auto* button = new QPushButton(parent);
      button->setAutoDefault(false);
      forwardClicks(button);
      w = button;
      break;
    }
    case ControlKind::OptionButton: {
      auto* option = new OptionWidget(parent);
      option->setAutoExclusive(false);
      // Its face is the container's colour, not a button's.
      option->setBackgroundRole(QPalette::Window);
      option->setForegroundRole(QPalette::WindowText);
      option->setAutoFillBackground(true);
      option->setChecked(static_cast<OptionButton&>(c).Value());
      forwardClicks(option);
      w = option;
      break;
    }
    case ControlKind::ComboBox: {
      auto& list = static_cast<ComboBox&>(c);
      auto* combo = new QComboBox(parent);
      showList(list, combo);
      ViewLink* l = &link;
      QObject::connect(combo, &QComboBox::activated, combo, [l, &list, combo](int index) {
        QPointer<QComboBox> guard(combo);
        if (l->form) l->form->userSelect(list, index);
        // Refused or not, the list shows the logical choice.
        if (guard && l->form && combo->currentIndex() != list.ListIndex()) {
          const QSignalBlocker block(combo);
          combo->setCurrentIndex(list.ListIndex());
        }
      });
      w = combo;
      break;
    }
    case ControlKind::UpDown:
      w = new SpinnerWidget(static_cast<UpDown&>(c), link, parent);
      break;
    case ControlKind::MonthView: {
      if (!calendarNow && !c.isShowing()) {
        pendingCalendars.insert(&c);
        w = new QWidget(parent);
        break;
      }
      auto& cal = static_cast<MonthView&>(c);
      auto* calendar = new QCalendarWidget(parent);
      calendar->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
      calendar->setHorizontalHeaderFormat(QCalendarWidget::ShortDayNames);
      calendar->setGridVisible(false);
      showDates(cal, calendar);
      ViewLink* l = &link;
      QObject::connect(calendar, &QCalendarWidget::clicked, calendar, [l, &cal](QDate day) {
        if (l->form) l->form->userDateClick(cal, FromQDate(day));
      });
      // Moving through the days with the keys moves the calendar's selected day; only a click,
      // Enter or Space chooses one.
      QObject::connect(calendar, &QCalendarWidget::selectionChanged, calendar, [l, &cal, calendar] {
        if (!l->form || l->showing > 0 || InputRefusal(cal)) return;
        // The widget's range is whole days; the calendar's ends may carry a time of day.
        cal.setValue(std::clamp(FromQDate(calendar->selectedDate()), cal.MinDate(), cal.MaxDate()));
      });
      w = calendar;
      break;
    }
    case ControlKind::Line: {
      auto& line = static_cast<Line&>(c);
      w = new LineWidget(QPoint(px(line.X1), px(line.Y1)), QPoint(px(line.X2), px(line.Y2)),
                         ToQColor(line.BorderColor, QApplication::palette()), parent);
      w->setVisible(c.Visible());
      return w;
    }
  }
  w->setObjectName(ToQString(c.fullName()));
  w->setGeometry(placeOf(c, w));
  w->setFocusPolicy(c.takesFocus() ? Qt::StrongFocus : Qt::NoFocus);
  showFont(c, w);
  showColours(c, w);
  showCaption(c, w);
  w->setEnabled(c.Enabled());
  w->setVisible(c.Visible());
  watchInput(c, w);
  return w;
}

void TicketWidget::Impl::watchInput(Control& c, QWidget* w) {
  if (!c.takesFocus()) return;
  inputs.insert(w, &c);
  w->installEventFilter(&view);
  for (QWidget* inner : w->findChildren<QWidget*>()) {
    inputs.insert(inner, &c);
    inner->installEventFilter(&view);
  }
}

// ---- Showing the logical state ----------------------------------------------------------

void TicketWidget::Impl::showColours(Control& c, QWidget* w) {
  const QPalette& system = QApplication::palette();
  const QColor back = ToQColor(c.BackColor(), system);
  const QColor fore = ToQColor(c.ForeColor(), system);
  QPalette p = w->palette();
  auto both = [&](QPalette::ColorRole role, const QColor& colour, const QColor& disabled) {
    p.setColor(QPalette::Active, role, colour);
    p.setColor(QPalette::Inactive, role, colour);
    p.setColor(QPalette::Disabled, role, disabled);
  };
  switch (c.kind()) {
    case ControlKind::TextBox:
      both(QPalette::Base, back, back);
      both(QPalette::Window, back, back);
      both(QPalette::Text, fore, DisabledText(back));
      break;
    case ControlKind::CommandButton:
      both(QPalette::Button, back, back);
      both(QPalette::ButtonText, fore, DisabledText(back));
      break;
    case ControlKind::ComboBox:
      both(QPalette::Base, back, back);
      both(QPalette::Text, fore, DisabledText(back));
      both(QPalette::ButtonText, fore, DisabledText(back));
      break;
    case ControlKind::MonthView:
      return;  // the platform's own calendar colours
    default:
      both(QPalette::Window, back, back);
      both(QPalette::WindowText, fore, DisabledText(back));
      break;
  }
  if (c.kind() == ControlKind::Surface) w->setAutoFillBackground(true);
  w->setPalette(p);
}

void TicketWidget::Impl::showFont(Control& c, QWidget* w) {
  // The design's captions were measured for a narrow dialog font: the platform's sans serif,
  // a little condensed, keeps them whole in the same room.
  QFont f = QApplication::font();
  f.setStyleHint(QFont::SansSerif);
  f.setStretch(QFont::SemiCondensed);
  f.setPointSizeF(c.font.size);
  f.setBold(c.font.bold);
  f.setStrikeOut(c.FontStrikethru());
  // A box shows prices and amounts and is rewritten at every tick: digits and Latin text need
  // no shaping, which would be most of the cost of laying out and measuring each new text.
  // Scripts that do need it are still shaped.
  if (qobject_cast<QLineEdit*>(w)) f.setStyleStrategy(QFont::PreferNoShaping);

  // A caption that would be cut first takes the free room to its right, where no neighbour
  // stands (a translated option beside an empty stretch of its frame), if it is an option or a
  // label that reads from the left on its container's colour. A one-line caption still too
  // long, or wrapped text taller than its label, is set narrower, then slightly smaller, never
  // below four fifths of the design's size.
  QString text;
  int inset = 0;
  bool widens = false;
  auto* label = qobject_cast<QLabel*>(w);
  if (label && label->wordWrap()) {
    const QString wrapped = label->text();
    const int flags = int(label->alignment()) | Qt::TextWordWrap;
    const auto height = [&] {
      const QRect all(0, 0, w->width(), 100000);
      return QFontMetrics(f).boundingRect(all, flags, wrapped).height();
    };
    if (!wrapped.isEmpty() && w->width() > 0)
      Condense(f, c.font.size, [&] { return height() <= w->height(); });
  } else if (label) {
    text = label->text();
    widens = (label->alignment() & Qt::AlignHorizontal_Mask) == Qt::AlignLeft && c.parent() &&
             c.parent()->BackColor() == c.BackColor();
  } else if (qobject_cast<QRadioButton*>(w)) {
    text = ToQString(c.Caption());  // the shown text may be the caption broken in two
    inset = w->style()->pixelMetric(QStyle::PM_ExclusiveIndicatorWidth, nullptr, w) +
            w->style()->pixelMetric(QStyle::PM_RadioButtonLabelSpacing, nullptr, w) + 2;
    widens = true;
  } else if (auto* button = qobject_cast<QPushButton*>(w)) {
    text = button->text();
    inset = 8;
  }
  text.remove(QLatin1Char('&'));
  if (!text.isEmpty()) {
    const auto advance = [&] { return QFontMetrics(f).horizontalAdvance(text); };
    int width = w->width();
    if (widens && built) {
      const QRect design = rectOf(c);
      width = design.width();
      if (advance() > width - inset)
        width = std::max(width, std::min(advance() + inset, roomToTheRight(w, design)));
      if (width != w->width()) w->resize(width, w->height());
    }
    const int room = width - inset;
    if (room > 0) Condense(f, c.font.size, [&] { return advance() <= room; });
  }
  if (auto* option = qobject_cast<QRadioButton*>(w)) showOptionLines(c, option, f, inset);
  if (w->font() != f) w->setFont(f);
}

void TicketWidget::Impl::showOptionLines(Control& c, QRadioButton* w, QFont& f, int inset) {
  // An option whose caption is still cut on one line (a translation in a narrow row of
  // options) breaks it at the blank that leaves the shorter longer line, and grows evenly up
  // and down to hold the two lines.
  const QString caption = ToQString(c.Caption());
  QString shown = caption;
  QRect place = placeOf(c, w);
  place.setWidth(w->width());
  const int room = w->width() - inset;
  const auto width = [](const QFont& font, QString part) {
    return QFontMetrics(font).horizontalAdvance(part.remove(QLatin1Char('&')));
  };
  if (built && room > 0 && width(f, caption) > room) {
    QFont two = f;
    two.setStretch(QFont::SemiCondensed);
    two.setPointSizeF(c.font.size);
    int best = -1, longest = 0;
    for (int i = caption.indexOf(QLatin1Char(' ')); i > 0;
         i = caption.indexOf(QLatin1Char(' '), i + 1)) {
      const int line = std::max(width(two, caption.left(i)), width(two, caption.mid(i + 1)));
      if (best < 0 || line < longest) best = i, longest = line;
    }
    if (best > 0) {
      const QString first = caption.left(best), second = caption.mid(best + 1);
      Condense(two, c.font.size,
               [&] { return std::max(width(two, first), width(two, second)) <= room; });
      f = two;
      shown = first + QLatin1Char('\n') + second;
      place = AtLeastHigh(place, 2 * QFontMetrics(f).lineSpacing() + 2);
    }
  }
  if (w->text() != shown) w->setText(shown);
  if (w->geometry() != place) w->setGeometry(place);
}

int TicketWidget::Impl::roomToTheRight(const QWidget* w, const QRect& design) const {
  const QWidget* parent = w->parentWidget();
  if (!parent) return design.width();
  int right = parent->width() - 4;  // short of the container's border
  for (const QObject* o : parent->children()) {
    const auto* s = qobject_cast<const QWidget*>(o);
    if (!s || s == w || s->isWindow()) continue;
    const QRect g = s->geometry();
    if (g.bottom() < design.top() || g.top() > design.bottom()) continue;
    if (g.left() <= design.left()) {
      if (g.right() >= design.left()) return design.width();  // something already stands there
      continue;
    }
    right = std::min(right, g.left() - 2);
  }
  return std::max(right - design.left(), design.width());
}

void TicketWidget::Impl::showCaption(Control& c, QWidget* w) {
  switch (c.kind()) {
    case ControlKind::Frame:
      static_cast<FrameWidget*>(w)->setCaption(ToQString(c.Caption()));
      break;
    case ControlKind::Label: {
      auto* label = static_cast<QLabel*>(w);
      const QString text = CaptionText(c.Caption());
      // A label of more than one line's height wraps its text, as the classic labels do.
      QFont design = w->font();
      design.setPointSizeF(c.font.size);
      const bool wrap = c.wordWrap || text.contains(QLatin1Char('\n')) ||
                        w->height() >= 2 * QFontMetrics(design).lineSpacing();
      label->setWordWrap(wrap);
      label->setAlignment(AlignmentOf(c.alignment) | Qt::AlignTop);
      label->setText(text);
      break;
    }
    case ControlKind::CommandButton:
      static_cast<QPushButton*>(w)->setText(ToQString(c.Caption()));
      break;
    case ControlKind::OptionButton:
      static_cast<QRadioButton*>(w)->setText(ToQString(c.Caption()));
      break;
    default:
      return;
  }
  showFont(c, w);  // the size that keeps the new caption whole
}

void TicketWidget::Impl::showList(ComboBox& list, QComboBox* w) {
  const QSignalBlocker block(w);
  w->clear();
  for (const ListItem& item : list.items()) w->addItem(ToQString(item.text));
  w->setCurrentIndex(list.ListIndex());
}

void TicketWidget::Impl::showDates(MonthView& cal, QCalendarWidget* w) {
  const QSignalBlocker block(w);
  const QDate from = ToQDate(cal.MinDate()), to = ToQDate(cal.MaxDate());
  if (from.isValid() && to.isValid()) w->setDateRange(from, to);
  const QDate day = ToQDate(cal.Value());
  if (day.isValid()) w->setSelectedDate(day);
}

void TicketWidget::Impl::showFocus(Control& c, QWidget* w) {
  if (link.form->focused() != &c || w->focusPolicy() == Qt::NoFocus) return;
  if (!w->hasFocus()) w->setFocus(Qt::OtherFocusReason);
}

void TicketWidget::Impl::refocus() {
  // The logic may focus a control before the panel that holds it shows or opens.
  Control* c = link.form->focused();
  QWidget* w = nullptr;
  if (c) {
    auto it = widgets.find(c);
    if (it != widgets.end() && it->second != &view) w = it->second;
  }
  if (w && w->isVisible() && w->isEnabled()) {
    if (!w->hasFocus()) showFocus(*c, w);
    return;
  }
  // The logical focus is on no control the user can reach: on none yet, or on one hidden or
  // disabled. Qt passes its focus on to a neighbour (a new window's first control, the box
  // after a closed calendar), where keys and the wheel would work a control the logic never
  // gave them. The focus comes back to the ticket itself; Tab goes on from there.
  QWidget* now = QApplication::focusWidget();
  if (now && now != &view && view.isAncestorOf(now)) view.setFocus(Qt::OtherFocusReason);
}

void TicketWidget::Impl::show(Control& c, ControlProperty what) {
  auto it = widgets.find(&c);
  if (it == widgets.end()) return;
  QWidget* w = it->second;
  ++link.showing;
  struct Done {
    int& n;
    ~Done() { --n; }
  } done{link.showing};
  const bool surface = w == &view;
  if (pendingCalendars.count(&c)) {
    if (c.isShowing()) {
      w = materialise(c);
    } else if (what == ControlProperty::Value || what == ControlProperty::DateRange ||
               what == ControlProperty::Focus) {
      return;  // the calendar takes its dates when it is built
    }
  }
  switch (what) {
    case ControlProperty::Visible:
      if (!surface) w->setVisible(c.Visible());
      if (c.Visible() && !pendingCalendars.empty()) materialiseShowing();
      refocus();
      break;
    case ControlProperty::Enabled:
      if (!surface) w->setEnabled(c.Enabled());
      refocus();
      break;
    case ControlProperty::Caption:
      showCaption(c, w);
      break;
    case ControlProperty::Text:
    case ControlProperty::Selection:
      if (c.kind() == ControlKind::TextBox) static_cast<TextBoxWidget*>(w)->showText();
      break;
    case ControlProperty::Value:
      if (c.kind() == ControlKind::OptionButton)
        static_cast<QRadioButton*>(w)->setChecked(static_cast<OptionButton&>(c).Value());
      else if (c.kind() == ControlKind::MonthView)
        showDates(static_cast<MonthView&>(c), static_cast<QCalendarWidget*>(w));
      break;
    case ControlProperty::DateRange:
      showDates(static_cast<MonthView&>(c), static_cast<QCalendarWidget*>(w));
      break;
    case ControlProperty::BackColor:
    case ControlProperty::ForeColor:
      showColours(c, w);
      break;
    case ControlProperty::FontStrikethru:
      showFont(c, w);
      break;
    case ControlProperty::Locked:
      static_cast<QLineEdit*>(w)->setReadOnly(static_cast<TextBox&>(c).Locked());
      break;
    case ControlProperty::ListIndex: {
      auto* combo = static_cast<QComboBox*>(w);
      const QSignalBlocker block(combo);
      combo->setCurrentIndex(static_cast<ComboBox&>(c).ListIndex());
      break;
    }
    case ControlProperty::List:
      showList(static_cast<ComboBox&>(c), static_cast<QComboBox*>(w));
      break;
    case ControlProperty::Geometry:
      if (surface) {
        view.updateGeometry();
        view.resize(view.sizeHint());
      } else {
        w->setGeometry(placeOf(c, w));
        showFont(c, w);  // the caption's room may have changed
      }
      break;
    case ControlProperty::Focus:
      showFocus(c, w);
      break;
    case ControlProperty::Interval:
      break;
  }
}

// ---- TicketWidget -----------------------------------------------------------------------

TicketWidget::TicketWidget(Clientticket& ticket, QWidget* parent)
    : QWidget(parent), d_(std::make_unique<Impl>(*this, ticket)) {
  d_->dpi = logicalDpiX() > 0 ? logicalDpiX() : 96;
  d_->link.form = &ticket.form().controls();
  d_->build();
  Impl* d = d_.get();
  d_->observer = d_->link.form->addObserver([d](Control& c, ControlProperty what) { d->show(c, what); });
  resize(sizeHint());
}

TicketWidget::~TicketWidget() {
  detach();
  // The control widgets go before the plumbing they use.
  const QObjectList kids = children();
  for (QObject* child : kids)
    if (child->isWidgetType()) delete child;
}

void TicketWidget::detach() {
  if (!d_->link.form) return;
  d_->link.form->removeObserver(d_->observer);
  d_->link.form = nullptr;
  d_->ticket = nullptr;
  d_->inputs.clear();
  // The widgets point at the ticket's controls: they go, later, since one of them may be the
  // button whose click closed the ticket.
  for (auto& [control, w] : d_->widgets) {
    if (w == this || w->parent() != this) continue;
    w->hide();
    w->deleteLater();
  }
  d_->widgets.clear();
}

QWidget* TicketWidget::widgetFor(const std::string& fullName) const {
  if (!d_->link.form) return nullptr;
  Control* c = d_->link.form->find(fullName);
  if (!c) return nullptr;
  auto it = d_->widgets.find(c);
  if (it == d_->widgets.end()) return nullptr;
  if (d_->pendingCalendars.count(c)) return d_->materialise(*c);
  return it->second;
}

int TicketWidget::toPixels(double twips) const { return d_->px(twips); }

QSize TicketWidget::sizeHint() const {
  if (!d_->ticket) return QWidget::sizeHint();
  const Control& surface = d_->ticket->form().UserControl;
  return QSize(toPixels(surface.Width()), toPixels(surface.Height()));
}

bool TicketWidget::eventFilter(QObject* watched, QEvent* event) {
  const QEvent::Type type = event->type();
  if (type != QEvent::FocusIn && type != QEvent::KeyPress && type != QEvent::Wheel) return false;
  Form* form = d_->link.form;
  if (!form) return false;
  Control* c = d_->inputs.value(watched, nullptr);
  if (!c) return false;

  if (type == QEvent::Wheel) {
    // The wheel turns the account list only once the user has put the focus there: a trader
    // scrolling over the ticket does not switch its account by chance.
    auto* list = qobject_cast<QComboBox*>(watched);
    return list && !list->hasFocus();
  }

  if (type == QEvent::FocusIn) {
    // Only the user's own moves: focus that Qt passes on because a control was hidden or
    // disabled, or that follows the logical focus, is no user event.
    auto* focus = static_cast<QFocusEvent*>(event);
    if (d_->link.showing == 0 && form->focused() != c) {
      if (UserFocusReason(focus->reason()))
        form->userFocus(*c);
      else if (focus->reason() == Qt::ActiveWindowFocusReason)
        d_->refocus();  // a window that comes up puts the focus where the logic holds it
    }
    return false;
  }

  if (c->kind() != ControlKind::MonthView) return false;
  auto* key = static_cast<QKeyEvent*>(event);
  auto& cal = static_cast<MonthView&>(*c);
  if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
    form->userCalendarKey(cal, 13);
    return true;
  }
  if (key->key() == Qt::Key_Space) {
    form->userCalendarKey(cal, 32);
    return true;
  }
  const QString text = key->text();
  if (text.size() == 1 && text.at(0).unicode() >= 0x20)
    form->userCalendarKey(cal, static_cast<Integer>(text.at(0).unicode()));
  return false;
}

}  // namespace quillon::view
