// The forms layer: property writes compare, store, signal the change, and then run the
// control's handler, so a write by code behaves like the user's action.

#include "platform/forms.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>

#include "platform/message_loop.h"
#include "platform/short_text.h"

namespace quillon {
namespace {

// Focus handlers that keep moving the focus stop running handlers past this depth.
constexpr int kMaxFocusDepth = 8;

constexpr char32_t kReplacementCharacter = 0xFFFD;
constexpr char32_t kBackspace = 8;

template <typename T>
bool Assign(T& field, const T& value) {
  if (field == value) return false;
  field = value;
  return true;
}

// A text write that changes nothing, the usual one (a tick rewrites every price box), costs a
// comparison at the call; storing a new text is out of line.
[[gnu::noinline]] void StoreText(std::string& field, std::string_view value) {
  // A text as long as the one it replaces (a price after a price) goes over it in place; a view
  // of the field itself is the field, and moves onto itself.
  if (value.size() == field.size()) {
    if (!value.empty()) std::memmove(field.data(), value.data(), value.size());
    return;
  }
  field.assign(value);
}

// Text positions count code points. Every byte that is not a UTF-8 continuation byte starts
// one, so text that is not valid UTF-8 still has a position for every byte run.
bool IsContinuation(unsigned char c) { return (c & 0xC0) == 0x80; }

Long CodePoints(const std::string& s) {
  Long n = 0;
  for (unsigned char c : s) n += IsContinuation(c) ? 0 : 1;
  return n;
}

// The byte offset at which code point `cp` starts, or the size of the text past its end.
std::size_t ByteOffset(const std::string& s, Long cp) {
  if (cp <= 0) return 0;
  Long seen = 0;
  for (std::size_t i = 0; i < s.size(); ++i) {
    if (IsContinuation(static_cast<unsigned char>(s[i]))) continue;
    if (seen == cp) return i;
    ++seen;
  }
  return s.size();
}

std::string Utf8(char32_t cp) {
  std::string out;
  if (cp < 0x80) {
    out += static_cast<char>(cp);
  } else if (cp < 0x800) {
    out += static_cast<char>(0xC0 | (cp >> 6));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  } else if (cp < 0x10000) {
    out += static_cast<char>(0xE0 | (cp >> 12));
    out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  } else {
    out += static_cast<char>(0xF0 | (cp >> 18));
    out += static_cast<char>(0x80 | ((cp >> 12) & 0x3F));
    out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  }
  return out;
}

// Decodes the code point at `i` and moves past it; a malformed sequence reads as U+FFFD and
// consumes one byte.
char32_t NextCodePoint(const std::string& s, std::size_t& i) {
  auto byte = [&](std::size_t k) { return static_cast<unsigned char>(s[k]); };
  unsigned char lead = byte(i);
  if (lead < 0x80) {
    ++i;
    return lead;
  }
  int extra;
  char32_t cp;
  char32_t least;
  if ((lead & 0xE0) == 0xC0) {
    extra = 1, cp = lead & 0x1F, least = 0x80;
  } else if ((lead & 0xF0) == 0xE0) {
    extra = 2, cp = lead & 0x0F, least = 0x800;
  } else if ((lead & 0xF8) == 0xF0) {
    extra = 3, cp = lead & 0x07, least = 0x10000;
  } else {
    ++i;
    return kReplacementCharacter;
  }
  if (i + extra >= s.size()) {
    ++i;
    return kReplacementCharacter;
  }
  for (int k = 1; k <= extra; ++k) {
    if (!IsContinuation(byte(i + k))) {
      ++i;
      return kReplacementCharacter;
    }
    cp = (cp << 6) | (byte(i + k) & 0x3F);
  }
  if (cp < least || cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF)) {
    ++i;
    return kReplacementCharacter;
  }
  i += extra + 1;
  return cp;
}

// The key code a key-press handler sees for a character: its 16-bit code, or U+FFFD for a
// character that does not fit.
Integer KeyCodeOf(char32_t ch) {
  char32_t unit = ch <= 0xFFFF ? ch : kReplacementCharacter;
  return static_cast<Integer>(static_cast<std::uint16_t>(unit));
}

bool InsertsNothing(char32_t ch) {
  return ch < 0x20 || ch == 0x7F || (ch >= 0xD800 && ch <= 0xDFFF) || ch > 0x10FFFF;
}

void RequireFinite(Date v) {
  if (!std::isfinite(v)) Raise(kInvalidProcedureCall);
}

}  // namespace

const char* KindName(ControlKind kind) {
  switch (kind) {
    case ControlKind::Surface:
      return "Surface";
    case ControlKind::Frame:
      return "Frame";
    case ControlKind::Label:
      return "Label";
    case ControlKind::TextBox:
      return "TextBox";
    case ControlKind::CommandButton:
      return "CommandButton";
    case ControlKind::OptionButton:
      return "OptionButton";
    case ControlKind::ComboBox:
      return "ComboBox";
    case ControlKind::Timer:
      return "Timer";
    case ControlKind::UpDown:
      return "UpDown";
    case ControlKind::MonthView:
      return "MonthView";
    case ControlKind::HtmlClient:
      return "HtmlClient";
    case ControlKind::Line:
      return "Line";
  }
  return "Control";
}

// ---- Control ----------------------------------------------------------------------------

Control::Control(Form& form, ControlKind kind, std::string name, int index)
    : form_(form), kind_(kind), name_(std::move(name)), index_(index) {}

Control::~Control() = default;

std::string Control::fullName() const {
  if (index_ < 0) return name_;
  return name_ + "(" + std::to_string(index_) + ")";
}

void Control::setParent(Control* parent) {
  if (parent == parent_) return;
  if (parent) {
    if (&parent->form_ != &form_) Raise(kInvalidProcedureCall, "container on another form");
    for (Control* c = parent; c; c = c->parent_)
      if (c == this) Raise(kInvalidProcedureCall, "a control cannot contain itself");
  }
  if (parent_) {
    auto& siblings = parent_->children_;
    siblings.erase(std::remove(siblings.begin(), siblings.end(), this), siblings.end());
  }
  parent_ = parent;
  if (parent_) parent_->children_.push_back(this);
}

void Control::changed(ControlProperty what) { form_.notify(*this, what); }

void Control::setVisible(bool v) {
  if (Assign(visible_, v)) changed(ControlProperty::Visible);
}

void Control::setNewEnabled(bool v) {
  enabled_ = v;
  changed(ControlProperty::Enabled);
  enabledChanged();
}

void Control::setNewCaption(std::string_view v) {
  StoreText(caption_, v);
  changed(ControlProperty::Caption);
}

void Control::setNewBackColor(Long v) {
  backColor_ = v;
  changed(ControlProperty::BackColor);
}

void Control::setNewForeColor(Long v) {
  foreColor_ = v;
  changed(ControlProperty::ForeColor);
}

void Control::setFontStrikethru(bool v) {
  if (Assign(strikethru_, v)) changed(ControlProperty::FontStrikethru);
}

void Control::setLeft(double v) {
  if (Assign(left_, v)) changed(ControlProperty::Geometry);
}

void Control::setTop(double v) {
  if (Assign(top_, v)) changed(ControlProperty::Geometry);
}

void Control::setWidth(double v) {
  if (Assign(width_, v)) changed(ControlProperty::Geometry);
}

void Control::setHeight(double v) {
  if (Assign(height_, v)) changed(ControlProperty::Geometry);
}

bool Control::isShowing() const {
  for (const Control* c = this; c; c = c->parent_)
    if (!c->visible_) return false;
  return true;
}

bool Control::isEffectivelyEnabled() const {
  for (const Control* c = this; c; c = c->parent_)
    if (!c->enabled_) return false;
  return true;
}

bool Control::takesFocus() const {
  switch (kind_) {
    case ControlKind::TextBox:
    case ControlKind::CommandButton:
    case ControlKind::OptionButton:
    case ControlKind::ComboBox:
    case ControlKind::MonthView:
      return true;
    default:
      return false;
  }
}

void Control::SetFocus() {
  if (!takesFocus() || !isShowing() || !isEffectivelyEnabled()) Raise(kInvalidProcedureCall);
  form_.moveFocus(this);
}

const char* InputRefusal(const Control& control) {
  if (!control.isShowing()) return "hidden";
  if (!control.isEffectivelyEnabled()) return "disabled";
  return nullptr;
}

// ---- Controls with values ---------------------------------------------------------------

CommandButton::CommandButton(Form& form, std::string name, int index)
    : Control(form, ControlKind::CommandButton, std::move(name), index) {}

OptionButton::OptionButton(Form& form, std::string name, int index)
    : Control(form, ControlKind::OptionButton, std::move(name), index) {}

void OptionButton::setValue(bool v) {
  if (!Assign(value_, v)) return;
  changed(ControlProperty::Value);
  if (!v) return;
  if (parent()) {
    for (Control* sibling : parent()->children()) {
      if (sibling == this || sibling->kind() != ControlKind::OptionButton) continue;
      auto& other = static_cast<OptionButton&>(*sibling);
      if (Assign(other.value_, false)) other.changed(ControlProperty::Value);
    }
  }
  if (onClick) onClick();
}

TextBox::TextBox(Form& form, std::string name, int index)
    : Control(form, ControlKind::TextBox, std::move(name), index),
      textStamp_(form.newTextStamp()) {}

bool TextBox::storeText(std::string_view text) {
  if (SameText(text_, text)) return false;
  replaceText(text);
  return true;
}

void TextBox::replaceText(std::string_view text) {
  StoreText(text_, text);
  textStamp_ = form().newTextStamp();
}

void TextBox::setNewText(std::string_view v) {
  replaceText(v);
  changed(ControlProperty::Text);
  if (selStart_ != 0 || selLength_ != 0) {
    selStart_ = 0;
    selLength_ = 0;
    changed(ControlProperty::Selection);
  }
  if (onChange) onChange();
}

void TextBox::edit(std::string text, Long caret) {
  bool textChanged = storeText(text);
  if (textChanged) changed(ControlProperty::Text);
  if (selStart_ != caret || selLength_ != 0) {
    selStart_ = caret;
    selLength_ = 0;
    changed(ControlProperty::Selection);
  }
  if (textChanged && onChange) onChange();
}

void TextBox::setLocked(bool v) {
  if (Assign(locked_, v)) changed(ControlProperty::Locked);
}

void TextBox::setSelStart(Long v) {
  // Moving the caret collapses the selection, as in any edit box.
  Long start = std::clamp<Long>(v, 0, CodePoints(text_));
  if (start == selStart_ && selLength_ == 0) return;
  selStart_ = start;
  selLength_ = 0;
  changed(ControlProperty::Selection);
}

void TextBox::setSelLength(Long v) {
  Long length = std::clamp<Long>(v, 0, std::max<Long>(0, CodePoints(text_) - selStart_));
  if (Assign(selLength_, length)) changed(ControlProperty::Selection);
}

ComboBox::ComboBox(Form& form, std::string name, int index)
    : Control(form, ControlKind::ComboBox, std::move(name), index) {}

void ComboBox::setListIndex(Long v) {
  if (v < -1 || v >= ListCount()) Raise(kInvalidProcedureCall);
  if (!Assign(listIndex_, v)) return;
  changed(ControlProperty::ListIndex);
  if (v >= 0 && onClick) onClick();
}

const std::string& ComboBox::List(Long i) const {
  if (i < 0 || i >= ListCount()) Raise(kInvalidProcedureCall);
  return items_[static_cast<std::size_t>(i)].text;
}

Long ComboBox::ItemData(Long i) const {
  if (i < 0 || i >= ListCount()) Raise(kInvalidProcedureCall);
  return items_[static_cast<std::size_t>(i)].data;
}

void ComboBox::setItemData(Long i, Long data) {
  if (i < 0 || i >= ListCount()) Raise(kInvalidProcedureCall);
  if (Assign(items_[static_cast<std::size_t>(i)].data, data)) changed(ControlProperty::List);
}

void ComboBox::AddItem(const std::string& text) {
  items_.push_back({text, 0});
  changed(ControlProperty::List);
}

void ComboBox::Clear() {
  bool hadItems = !items_.empty();
  items_.clear();
  if (Assign(listIndex_, Long{-1})) changed(ControlProperty::ListIndex);
  if (hadItems) changed(ControlProperty::List);
}

std::string ComboBox::Text() const {
  return listIndex_ >= 0 ? items_[static_cast<std::size_t>(listIndex_)].text : std::string();
}

Timer::Timer(Form& form, std::string name, int index)
    : Control(form, ControlKind::Timer, std::move(name), index) {}

Timer::~Timer() { form().loop().stopTimer(*this); }

void Timer::setInterval(Long v) {
  if (v < 0) Raise(kInvalidProcedureCall);
  if (!Assign(interval_, v)) return;
  changed(ControlProperty::Interval);
  reschedule();
}

void Timer::setTimerEnabled(bool v) { setEnabled(v); }

void Timer::enabledChanged() { reschedule(); }

void Timer::reschedule() {
  if (Enabled() && interval_ > 0) {
    form().loop().startTimer(*this, interval_);
  } else {
    form().loop().stopTimer(*this);
  }
}

void Timer::fire() {
  if (Enabled() && interval_ > 0 && onTimer) onTimer();
}

UpDown::UpDown(Form& form, std::string name, int index)
    : Control(form, ControlKind::UpDown, std::move(name), index) {}

void UpDown::setValue(Long v) {
  if (v < Min || v > Max) Raise(kInvalidProcedureCall);
  if (!Assign(value_, v)) return;
  changed(ControlProperty::Value);
  if (onChange) onChange();
}

MonthView::MonthView(Form& form, std::string name, int index)
    : Control(form, ControlKind::MonthView, std::move(name), index) {}

void MonthView::setValue(Date v) {
  RequireFinite(v);
  if (v < minDate_ || v > maxDate_) Raise(kInvalidProcedureCall);
  if (Assign(value_, v)) changed(ControlProperty::Value);
}

void MonthView::setMinDate(Date v) {
  RequireFinite(v);
  if (v > maxDate_) Raise(kInvalidProcedureCall);
  if (!Assign(minDate_, v)) return;
  changed(ControlProperty::DateRange);
  setValue(std::clamp(value_, minDate_, maxDate_));
}

void MonthView::setMaxDate(Date v) {
  RequireFinite(v);
  if (v < minDate_) Raise(kInvalidProcedureCall);
  if (!Assign(maxDate_, v)) return;
  changed(ControlProperty::DateRange);
  setValue(std::clamp(value_, minDate_, maxDate_));
}

Line::Line(Form& form, std::string name, int index)
    : Control(form, ControlKind::Line, std::move(name), index) {}

// ---- Form -------------------------------------------------------------------------------

Form::Form(MessageLoop& loop) : loop_(loop) {}

Form::~Form() {
  *alive_ = false;
  observers_.clear();
  focused_ = nullptr;
  while (!order_.empty()) {  // contents before their containers
    std::unique_ptr<Control> last(order_.back());
    order_.pop_back();
  }
}

// The form looks its controls up by name only now and then (a view's or a script's request),
// so it keeps no index: a walk over a few dozen controls is quick, and a ticket open many
// times over holds no copy of every name.
Control* Form::lookUp(std::string_view name, int index) const {
  for (Control* c : order_)
    if (c->index() == index && c->name() == name) return c;
  return nullptr;
}

void Form::adopt(std::unique_ptr<Control> control, Control* parent) {
  if (lookUp(control->name(), control->index()))
    Raise(kInvalidProcedureCall, "duplicate control " + control->fullName());
  control->setParent(parent);
  order_.reserve(order_.size() + 1);
  order_.push_back(control.release());
}

Control* Form::find(const std::string& fullName) const {
  auto open = fullName.find('(');
  if (open == std::string::npos) return lookUp(fullName, -1);
  if (fullName.back() != ')' || open == 0) return nullptr;
  std::string digits = fullName.substr(open + 1, fullName.size() - open - 2);
  if (digits.empty() || digits.size() > 9) return nullptr;
  if (!std::all_of(digits.begin(), digits.end(), [](char c) { return c >= '0' && c <= '9'; }))
    return nullptr;
  return lookUp(std::string_view(fullName).substr(0, open), std::stoi(digits));
}

void Form::moveFocus(Control* to) {
  if (to == focused_) return;
  Control* from = focused_;
  focused_ = to;
  if (from) notify(*from, ControlProperty::Focus);
  if (to) notify(*to, ControlProperty::Focus);
  // Focus handlers may move the focus again; past a few levels the moves still happen but
  // run no more handlers, so two handlers that pass the focus back and forth end.
  if (focusDepth_ >= kMaxFocusDepth) return;
  struct Depth {
    int& d;
    std::shared_ptr<bool> alive;
    Depth(int& depth, std::shared_ptr<bool> formAlive) : d(depth), alive(std::move(formAlive)) {
      ++d;
    }
    ~Depth() {
      if (*alive) --d;
    }
  } depth(focusDepth_, alive_);
  if (from && from->onLostFocus) from->onLostFocus();
  if (!*depth.alive) return;
  // A lost-focus handler that moved the focus elsewhere has the last word.
  if (to && focused_ == to && to->onGotFocus) to->onGotFocus();
}

int Form::addObserver(Observer observer) {
  int id = nextObserver_++;
  observers_[id] = std::move(observer);
  return id;
}

void Form::removeObserver(int id) { observers_.erase(id); }

void Form::tellObservers(Control& control, ControlProperty what) {
  // Observers may add or remove observers while they run: walk by id, copy each before the
  // call, and leave out those added during this signal.
  const int end = nextObserver_;
  int last = 0;
  for (;;) {
    auto it = observers_.upper_bound(last);
    if (it == observers_.end() || it->first >= end) break;
    last = it->first;
    Observer observer = it->second;
    if (observer) observer(control, what);
  }
}

bool Form::userClick(Control& control) {
  if (InputRefusal(control)) return false;
  if (control.kind() == ControlKind::CommandButton) {
    auto& button = static_cast<CommandButton&>(control);
    if (button.onClick) button.onClick();
  } else if (control.kind() == ControlKind::OptionButton) {
    static_cast<OptionButton&>(control).setValue(true);
  }
  return true;
}

bool Form::userFocus(Control& control) {
  if (InputRefusal(control) || !control.takesFocus()) return false;
  moveFocus(&control);
  return true;
}

bool Form::userKey(TextBox& box, Integer keyAscii) {
  if (InputRefusal(box)) return false;
  keyStroke(box, static_cast<std::uint16_t>(keyAscii), TypeAt::Caret);
  return true;
}

bool Form::userType(TextBox& box, const std::string& text, TypeAt at) {
  if (InputRefusal(box)) return false;
  const std::shared_ptr<bool> alive = alive_;
  std::size_t i = 0;
  while (i < text.size()) {
    // A handler may hide or disable the box part way, or destroy the form: the rest of the
    // keys go nowhere.
    if (!*alive || InputRefusal(box)) break;
    keyStroke(box, NextCodePoint(text, i), at);
  }
  return true;
}

void Form::keyStroke(TextBox& box, char32_t ch, TypeAt at) {
  const Integer sent = KeyCodeOf(ch);
  Integer key = sent;
  if (box.onKeyPress) {
    const std::shared_ptr<bool> alive = alive_;
    box.onKeyPress(key);
    if (!*alive) return;
  }
  if (key == 0 || box.Locked()) return;
  if (key != sent) ch = static_cast<std::uint16_t>(key);

  const std::string& text = box.Text();
  const Long length = CodePoints(text);
  const Long start = std::min(box.SelStart(), length);
  const Long selected = std::min(box.SelLength(), length - start);
  auto cut = [&](Long from, Long count) {
    std::size_t a = ByteOffset(text, from);
    std::size_t b = ByteOffset(text, from + count);
    return text.substr(0, a) + text.substr(b);
  };

  std::string next;
  Long caret;
  if (ch == kBackspace) {
    // With nothing selected it deletes back from where a character would go in.
    const Long from = at == TypeAt::Caret ? start : length;
    if (selected > 0) {
      next = cut(start, selected);
      caret = start;
    } else if (from > 0) {
      next = cut(from - 1, 1);
      caret = from - 1;
    } else {
      return;
    }
  } else {
    if (InsertsNothing(ch)) return;
    const Long kept = length - selected;
    if (box.maxLength > 0 && kept + 1 > box.maxLength) return;
    const Long from = selected > 0 || at == TypeAt::Caret ? start : length;
    const std::size_t a = ByteOffset(text, from);
    const std::size_t b = ByteOffset(text, from + selected);
    next = text.substr(0, a) + Utf8(ch) + text.substr(b);
    caret = from + 1;
  }
  box.edit(std::move(next), caret);
}

bool Form::userPaste(TextBox& box, const std::string& text) {
  if (InputRefusal(box)) return false;
  if (box.Locked()) return true;
  const std::shared_ptr<bool> alive = alive_;
  if (box.maxLength > 0 && CodePoints(text) > box.maxLength) {
    box.setText(text.substr(0, ByteOffset(text, box.maxLength)));
  } else {
    box.setText(text);
  }
  // The caret ends behind the pasted text, where the user's next key goes.
  if (*alive) box.setSelStart(CodePoints(box.Text()));
  return true;
}

bool Form::userSpin(UpDown& spinner, bool up) {
  if (InputRefusal(spinner)) return false;
  const std::shared_ptr<bool> alive = alive_;
  spinner.setValue(up ? 1 : -1);
  if (*alive && spinner.onMouseUp) spinner.onMouseUp();
  return true;
}

bool Form::userSelect(ComboBox& list, Long index) {
  if (InputRefusal(list)) return false;
  // A user picks an entry; only code clears the choice.
  if (index < 0) Raise(kInvalidProcedureCall);
  list.setListIndex(index);
  return true;
}

bool Form::userDateClick(MonthView& calendar, Date day) {
  if (InputRefusal(calendar)) return false;
  // The calendar offers no day outside its range: the click lands on the nearest day it shows.
  calendar.setValue(std::clamp(day, calendar.MinDate(), calendar.MaxDate()));
  if (calendar.onDateClick) calendar.onDateClick(calendar.Value());
  return true;
}

bool Form::userCalendarKey(MonthView& calendar, Integer keyAscii) {
  if (InputRefusal(calendar)) return false;
  if (calendar.onKeyPress) calendar.onKeyPress(keyAscii);
  return true;
}

}  // namespace quillon
