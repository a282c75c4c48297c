// The forms layer: logical controls with the properties the ticket uses, the rule that a
// write runs the control's handler before it returns, control arrays with gaps, frames that
// disable what they hold, focus, and a change signal that views observe.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "platform/runtime_error.h"
#include "platform/short_text.h"
#include "platform/types.h"

namespace quillon {

class Form;
class MessageLoop;

// A handler that most controls never have: it takes a pointer's room until it is set (a ticket
// has eighty controls; two of them handle focus).
class RareHandler {
 public:
  RareHandler() = default;
  template <typename F,
            typename = std::enable_if_t<!std::is_same_v<std::decay_t<F>, RareHandler> &&
                                        !std::is_same_v<std::decay_t<F>, std::nullptr_t>>>
  RareHandler& operator=(F&& handler) {
    handler_ = std::make_unique<std::function<void()>>(std::forward<F>(handler));
    return *this;
  }
  RareHandler& operator=(std::nullptr_t) {
    handler_.reset();
    return *this;
  }
  explicit operator bool() const { return handler_ && *handler_; }
  void operator()() const { (*handler_)(); }

 private:
  std::unique_ptr<std::function<void()>> handler_;
};

enum class ControlKind {
  Surface,        // the ticket's own surface
  Frame,
  Label,
  TextBox,
  CommandButton,
  OptionButton,
  ComboBox,       // a drop-down list
  Timer,
  UpDown,         // a spinner
  MonthView,      // a month calendar
  HtmlClient,
  Line,
};

const char* KindName(ControlKind kind);

// What a change signal says changed.
enum class ControlProperty {
  Visible, Enabled, Caption, Text, Value, BackColor, ForeColor, FontStrikethru, Locked,
  Selection, ListIndex, List, Interval, Geometry, DateRange, Focus,
};

enum class Alignment { Left, Right, Center };

struct Font {
  const char* name = "MS Sans Serif";  // a face name fixed at design time
  double size = 8.25;
  bool bold = false;
};

// System colours, as 0x8000_00nn values.
namespace SystemColour {
constexpr Long kMenu = static_cast<Long>(0x80000004);
constexpr Long kWindowText = static_cast<Long>(0x80000008);
constexpr Long kHighlightText = static_cast<Long>(0x8000000E);
constexpr Long kButtonFace = static_cast<Long>(0x8000000F);
constexpr Long kButtonShadow = static_cast<Long>(0x80000010);
constexpr Long kThreeDLight = static_cast<Long>(0x80000014);
}  // namespace SystemColour

class Control {
 public:
  Control(Form& form, ControlKind kind, std::string name, int index = -1);
  virtual ~Control();
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;

  Form& form() const { return form_; }
  ControlKind kind() const { return kind_; }
  const std::string& name() const { return name_; }
  int index() const { return index_; }  // -1 for a control outside an array
  // "cmdOKCancel(3)", or the plain name.
  std::string fullName() const;
  Control* parent() const { return parent_; }
  const std::vector<Control*>& children() const { return children_; }
  void setParent(Control* parent);  // design time only

  bool Visible() const { return visible_; }
  void setVisible(bool v);
  bool Enabled() const { return enabled_; }
  // The same value again, the usual write (an order check a tick sets both side buttons), is
  // one comparison, as is the same caption or colour again.
  void setEnabled(bool v) {
    if (enabled_ != v) setNewEnabled(v);
  }
  const std::string& Caption() const { return caption_; }
  // The same caption again, the usual write, is one comparison.
  void setCaption(std::string_view v) {
    if (!SameText(caption_, v)) setNewCaption(v);
  }
  Long BackColor() const { return backColor_; }
  void setBackColor(Long v) {
    if (backColor_ != v) setNewBackColor(v);
  }
  Long ForeColor() const { return foreColor_; }
  void setForeColor(Long v) {
    if (foreColor_ != v) setNewForeColor(v);
  }
  bool FontStrikethru() const { return strikethru_; }
  void setFontStrikethru(bool v);
  double Left() const { return left_; }
  double Top() const { return top_; }
  double Width() const { return width_; }
  double Height() const { return height_; }
  void setLeft(double v);
  void setTop(double v);
  void setWidth(double v);
  void setHeight(double v);

  // Design-time settings, read by views.
  int tabIndex = -1;
  Alignment alignment = Alignment::Left;
  Font font;
  bool transparent = false;  // a label that lets its container show through
  bool wordWrap = false;
  bool border = true;        // frames: a frame with no border is a plain area

  // Whether the control shows: it and every container visible.
  bool isShowing() const;
  // Whether the control takes input: it and every container enabled.
  bool isEffectivelyEnabled() const;

  // Whether the control can hold the focus at all: boxes, buttons, options, lists and the
  // calendar; labels, frames, lines, timers, spinners and the surface never do.
  bool takesFocus() const;

  // Moves the focus here: the old control's lost-focus handler, then this one's got-focus
  // handler. Raises "Invalid procedure call" on a control that is hidden or disabled, or that
  // takes no focus.
  void SetFocus();

  // Handlers every focusable control may have; few have them.
  RareHandler onGotFocus;
  RareHandler onLostFocus;

 protected:
  void changed(ControlProperty what);
  // Called after the control's own Enabled flag changed (and the change was signalled).
  virtual void enabledChanged() {}

 private:
  // setCaption of a caption that differs from the present one.
  void setNewCaption(std::string_view v);
  // The same for a flag or colour that differs from the present one.
  void setNewEnabled(bool v);
  void setNewBackColor(Long v);
  void setNewForeColor(Long v);

  Form& form_;
  ControlKind kind_;
  std::string name_;
  int index_;
  Control* parent_ = nullptr;
  std::vector<Control*> children_;
  bool visible_ = true;
  bool enabled_ = true;
  bool strikethru_ = false;
  std::string caption_;
  Long backColor_ = SystemColour::kButtonFace;
  Long foreColor_ = SystemColour::kWindowText;
  double left_ = 0, top_ = 0, width_ = 0, height_ = 0;
};

// The ticket's surface, frames, labels and the HTML client carry nothing beyond the common
// properties.
class Surface : public Control {
 public:
  Surface(Form& form, std::string name, int index = -1)
      : Control(form, ControlKind::Surface, std::move(name), index) {}
};
class Frame : public Control {
 public:
  Frame(Form& form, std::string name, int index = -1)
      : Control(form, ControlKind::Frame, std::move(name), index) {}
};
class Label : public Control {
 public:
  Label(Form& form, std::string name, int index = -1)
      : Control(form, ControlKind::Label, std::move(name), index) {}
};
class HtmlClient : public Control {
 public:
  HtmlClient(Form& form, std::string name, int index = -1)
      : Control(form, ControlKind::HtmlClient, std::move(name), index) {}
};

class CommandButton : public Control {
 public:
  CommandButton(Form& form, std::string name, int index = -1);
  std::function<void()> onClick;
};

class OptionButton : public Control {
 public:
  OptionButton(Form& form, std::string name, int index = -1);
  bool Value() const { return value_; }
  // False to true clears the other option buttons of the same container (no handler) and
  // then runs the click handler; false, or the value it has, runs nothing.
  void setValue(bool v);
  std::function<void()> onClick;

 private:
  bool value_ = false;
};

class TextBox : public Control {
 public:
  TextBox(Form& form, std::string name, int index = -1);
  const std::string& Text() const { return text_; }
  // A text that differs from the present one runs the change handler before returning. The
  // same text again, the usual write (a tick rewrites every price box), is one comparison.
  void setText(const std::string& v) {
    if (!SameText(text_, v)) setNewText(v);
  }
  // Changes with every change of the text to a number that no text of any box of this form
  // had before: what was worked out from a text holds while the stamp is the same.
  std::uint64_t textStamp() const { return textStamp_; }
  bool Locked() const { return locked_; }
  void setLocked(bool v);
  Long SelStart() const { return selStart_; }
  Long SelLength() const { return selLength_; }
  // Positions count characters (code points), not bytes; out-of-range values are clamped.
  void setSelStart(Long v);
  void setSelLength(Long v);
  int maxLength = 0;  // 0: no limit

  std::function<void()> onChange;
  std::function<void(Integer& keyAscii)> onKeyPress;

 private:
  friend class Form;
  // A user's edit: the text and the caret change together, then the change handler runs if
  // the text changed.
  void edit(std::string text, Long caret);

  // A new text and its stamp; false, and nothing stored, for the same text again.
  bool storeText(std::string_view text);
  // A text that differs from the present one, and its stamp.
  void replaceText(std::string_view text);
  // setText of a text that differs from the present one.
  void setNewText(std::string_view text);

  std::string text_;
  std::uint64_t textStamp_;
  bool locked_ = false;
  Long selStart_ = 0;
  Long selLength_ = 0;
};

struct ListItem {
  std::string text;
  Long data = 0;
};

class ComboBox : public Control {
 public:
  ComboBox(Form& form, std::string name, int index = -1);
  Long ListIndex() const { return listIndex_; }
  // Another entry runs the click handler; -1 clears the choice; an index past the list
  // raises "Invalid procedure call".
  void setListIndex(Long v);
  Long ListCount() const { return static_cast<Long>(items_.size()); }
  const std::vector<ListItem>& items() const { return items_; }
  const std::string& List(Long i) const;    // "Invalid procedure call" outside the list
  Long ItemData(Long i) const;               // likewise
  void setItemData(Long i, Long data);
  void AddItem(const std::string& text);     // at the end
  void Clear();                              // empties the list, ListIndex -1
  // The text of the chosen entry, or empty.
  std::string Text() const;

  std::function<void()> onClick;

 private:
  std::vector<ListItem> items_;
  Long listIndex_ = -1;
};

class Timer : public Control {
 public:
  Timer(Form& form, std::string name, int index = -1);
  ~Timer() override;
  Long Interval() const { return interval_; }
  // Enabled with an Interval above 0 runs the timer handler at each expiry; changing either
  // property restarts the count. A negative Interval raises "Invalid procedure call".
  void setInterval(Long v);
  void setTimerEnabled(bool v);
  bool TimerEnabled() const { return Enabled(); }
  // Called by the message loop at an expiry.
  void fire();

  std::function<void()> onTimer;

 protected:
  void enabledChanged() override;

 private:
  void reschedule();
  Long interval_ = 0;
};

class UpDown : public Control {
 public:
  UpDown(Form& form, std::string name, int index = -1);
  Long Value() const { return value_; }
  // A new value within Min..Max runs the change handler; the same value runs nothing.
  void setValue(Long v);
  Long Min = -1;
  Long Max = 1;

  std::function<void()> onChange;
  std::function<void()> onMouseUp;

 private:
  Long value_ = 0;
};

class MonthView : public Control {
 public:
  MonthView(Form& form, std::string name, int index = -1);
  Date Value() const { return value_; }
  // The selected day; a day outside MinDate..MaxDate, or one that is not finite, raises
  // "Invalid procedure call" and the selection stays. Runs no handler.
  void setValue(Date v);
  Date MinDate() const { return minDate_; }
  Date MaxDate() const { return maxDate_; }
  // A range whose ends cross, or a date that is not finite, raises "Invalid procedure call";
  // the selected day is moved into the new range.
  void setMinDate(Date v);
  void setMaxDate(Date v);

  std::function<void(Date)> onDateClick;
  std::function<void(Integer& keyAscii)> onKeyPress;

 private:
  Date value_ = 0;
  Date minDate_ = -657434;  // 1 Jan 100
  Date maxDate_ = 2958465;  // 31 Dec 9999
};

class Line : public Control {
 public:
  Line(Form& form, std::string name, int index = -1);
  double X1 = 0, Y1 = 0, X2 = 0, Y2 = 0;
  Long BorderColor = SystemColour::kWindowText;
};

// A control array: elements by index, with gaps. Asking for a missing element raises
// "Subscript out of range".
template <typename T>
class ControlArray {
 public:
  explicit ControlArray(std::string name) : name_(std::move(name)) {}
  T& operator()(int index) const {
    if (index >= 0 && static_cast<std::size_t>(index) < byIndex_.size() && byIndex_[index])
      return *byIndex_[index];
    auto it = elements_.find(index);
    if (it == elements_.end()) Raise(kSubscriptOutOfRange);
    return *it->second;
  }
  bool has(int index) const { return elements_.count(index) != 0; }
  void add(int index, T& element) {
    elements_[index] = &element;
    if (index >= 0 && index < kDirect) {
      if (byIndex_.size() <= static_cast<std::size_t>(index)) byIndex_.resize(index + 1, nullptr);
      byIndex_[index] = &element;
    }
  }
  const std::string& name() const { return name_; }
  const std::map<int, T*>& elements() const { return elements_; }

 private:
  // Small indices, the usual ones, are found by position; the rest in the map.
  static constexpr int kDirect = 64;
  std::string name_;
  std::map<int, T*> elements_;
  std::vector<T*> byIndex_;
};

// Why a user action on a control is refused, or nullptr when the control takes it.
// "hidden": the control or a frame that holds it is hidden; "disabled": likewise disabled.
const char* InputRefusal(const Control& control);

// The owner of the controls: creation at design time, lookup by name, focus, the change
// signal, and the platform's user events.
class Form {
 public:
  explicit Form(MessageLoop& loop);
  ~Form();
  Form(const Form&) = delete;
  Form& operator=(const Form&) = delete;

  MessageLoop& loop() const { return loop_; }
  // The stamp of a box's next text (TextBox::textStamp).
  std::uint64_t newTextStamp() { return ++textStamps_; }

  // Creates a control at design time; the form owns it. Its container is `parent`.
  template <typename T>
  T& create(std::string name, int index, Control* parent) {
    auto control = std::make_unique<T>(*this, std::move(name), index);
    T& ref = *control;
    adopt(std::move(control), parent);
    return ref;
  }

  // Every control in creation order (the order of the control collection).
  const std::vector<Control*>& controls() const { return order_; }
  // A control by "name" or "name(index)"; nullptr if the form has none such.
  Control* find(const std::string& fullName) const;

  Control* focused() const { return focused_; }
  void moveFocus(Control* to);  // lost-focus of the old, then got-focus of the new

  // The change signal: called after every property write that changed something.
  using Observer = std::function<void(Control&, ControlProperty)>;
  int addObserver(Observer observer);
  void removeObserver(int id);
  // A form nobody watches, as a headless ticket's, tells nobody at the cost of one test.
  void notify(Control& control, ControlProperty what) {
    if (!observers_.empty()) tellObservers(control, what);
  }

  // User input, as the platform delivers it. Each returns false, and does nothing, when the
  // control does not take input (InputRefusal).
  bool userClick(Control& control);
  // False, too, for a control that takes no focus (Control::takesFocus).
  bool userFocus(Control& control);
  // Where a character typed with nothing selected goes: at the caret, as in an edit box the
  // user clicked into, or at the end of the text, for a host that types without placing a
  // caret (a script).
  enum class TypeAt { Caret, End };
  // One key stroke into a text box: the key-press handler (which may cancel the key by
  // setting it to 0), then the character replaces the selection or goes in at the caret (a
  // locked box takes none, a full box no more; 8 deletes back from the caret; other control
  // characters insert nothing), then the change handler if the text changed. The key is a
  // 16-bit character code.
  bool userKey(TextBox& box, Integer keyAscii);
  // Types a UTF-8 text, one key stroke per character, with nothing selected going in where
  // `at` says; "\b" deletes back from there. A character beyond 16 bits reaches the key-press
  // handler as U+FFFD and goes in as itself unless the handler changes the key.
  bool userType(TextBox& box, const std::string& text, TypeAt at = TypeAt::Caret);
  // The whole text replaced in one change, no key-press; a locked box takes none, a box with
  // a maximum length takes that many characters. The caret ends behind the text.
  bool userPaste(TextBox& box, const std::string& text);
  // A spinner click: the value goes to 1 (up) or -1 (down), then the mouse is released.
  bool userSpin(UpDown& spinner, bool up);
  // An entry of the list; any other index, -1 too, raises "Invalid procedure call".
  bool userSelect(ComboBox& list, Long index);
  // A day clicked in a month calendar: its value, then its date-click handler.
  bool userDateClick(MonthView& calendar, Date day);
  bool userCalendarKey(MonthView& calendar, Integer keyAscii);

 private:
  void adopt(std::unique_ptr<Control> control, Control* parent);
  Control* lookUp(std::string_view name, int index) const;
  // One character into a text box, after its key-press handler.
  void keyStroke(TextBox& box, char32_t ch, TypeAt at);

  MessageLoop& loop_;
  // False once the form is destroyed. A handler may destroy the form (its owner closed inside
  // a user's action): what runs after the handler looks here first and touches nothing.
  std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
  std::vector<Control*> order_;  // owned; destroyed last to first, contents before containers
  Control* focused_ = nullptr;
  int focusDepth_ = 0;  // nesting of focus moves made by focus handlers
  void tellObservers(Control& control, ControlProperty what);
  std::map<int, Observer> observers_;
  int nextObserver_ = 1;
  std::uint64_t textStamps_ = 0;
};

}  // namespace quillon
