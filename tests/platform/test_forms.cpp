// The forms layer: handler rules, frames, control arrays, typing, focus and the change signal.

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <functional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "platform/error_of.h"
#include "platform/forms.h"
#include "platform/headless_loop.h"

namespace quillon {
namespace {

// A small tree: a surface with a frame of three option buttons, a second frame with one, a
// text box, a list, a spinner and a calendar, and a log that handlers write to.
using Log = std::vector<std::string>;

class FormsTest : public ::testing::Test {
 protected:
  FormsTest() {
    for (OptionButton* o : {&opt0, &opt1, &opt2, &optOther})
      o->onClick = [this, o] { log.push_back(o->fullName() + " click"); };
    cmd.onClick = [this] { log.push_back("cmd click"); };
    txt.onChange = [this] { log.push_back("change " + txt.Text()); };
    cmb.onClick = [this] { log.push_back("cmb click " + std::to_string(cmb.ListIndex())); };
    ud.onChange = [this] { log.push_back("ud change " + std::to_string(ud.Value())); };
    cal.onDateClick = [this](Date d) { log.push_back("date " + std::to_string(Long(d))); };
  }

  Log take() { return std::exchange(log, {}); }

  HeadlessLoop loop{0.0};
  Form form{loop};
  Surface& surface = form.create<Surface>("UserControl", -1, nullptr);
  Frame& fraA = form.create<Frame>("fraA", -1, &surface);
  Frame& fraB = form.create<Frame>("fraB", -1, &surface);
  OptionButton& opt0 = form.create<OptionButton>("opt", 0, &fraA);
  OptionButton& opt1 = form.create<OptionButton>("opt", 1, &fraA);
  OptionButton& opt2 = form.create<OptionButton>("opt", 2, &fraA);
  OptionButton& optOther = form.create<OptionButton>("optOther", -1, &fraB);
  CommandButton& cmd = form.create<CommandButton>("cmd", -1, &fraA);
  TextBox& txt = form.create<TextBox>("txt", -1, &fraA);
  ComboBox& cmb = form.create<ComboBox>("cmb", -1, &surface);
  UpDown& ud = form.create<UpDown>("ud", -1, &fraA);
  MonthView& cal = form.create<MonthView>("cal", -1, &surface);
  Log log;
};

TEST_F(FormsTest, WritesRunTheHandlerBeforeReturningAndSameValuesRunNothing) {
  txt.setText("12");
  txt.setText("12");
  EXPECT_EQ(take(), Log{"change 12"});

  // A list clicks for another entry; -1, the same entry and Clear do not.
  cmb.AddItem("A");
  cmb.AddItem("B");
  cmb.setListIndex(1);
  cmb.setListIndex(1);
  EXPECT_EQ(take(), Log{"cmb click 1"});
  cmb.setListIndex(-1);
  cmb.setListIndex(0);
  cmb.Clear();
  EXPECT_EQ(take(), Log{"cmb click 0"});
  EXPECT_EQ(cmb.ListIndex(), -1);

  // A calendar refuses a day outside its range and keeps its selection; a narrower range
  // moves the selection inside, with no handler; a user's click lands on the nearest day shown.
  cal.setMinDate(100);
  cal.setMaxDate(200);
  cal.setValue(180);
  EXPECT_EQ(ErrorOf([&] { cal.setValue(250); }), kInvalidProcedureCall);
  EXPECT_EQ(ErrorOf([&] { cal.setValue(99); }), kInvalidProcedureCall);
  EXPECT_EQ(cal.Value(), 180);
  cal.setMaxDate(150);
  EXPECT_EQ(cal.Value(), 150);
  EXPECT_EQ(take(), Log{});
  ASSERT_TRUE(form.userDateClick(cal, 40));
  EXPECT_EQ(cal.Value(), 100);
  EXPECT_EQ(take(), Log{"date 100"});
}

TEST_F(FormsTest, BadArgumentsRaiseTheRunTimeError) {
  cmb.AddItem("only");
  const std::vector<std::pair<const char*, std::function<void()>>> cases = {
      {"ListIndex past the list", [&] { cmb.setListIndex(1); }},
      {"spinner above Max", [&] { ud.setValue(2); }},
      {"calendar range crossed", [&] { cal.setMinDate(3e6); }},
      {"calendar not a date", [&] { cal.setValue(std::nan("")); }},
      {"negative interval", [&] { form.create<Timer>("tmrBad", -1, &surface).setInterval(-1); }},
      {"duplicate name", [&] { form.create<Label>("opt", 1, &fraA); }},
      {"user picks outside the list", [&] { form.userSelect(cmb, 5); }},
      {"user picks no entry", [&] { form.userSelect(cmb, -1); }},
  };
  for (const auto& [what, run] : cases) EXPECT_EQ(ErrorOf(run), kInvalidProcedureCall) << what;
  EXPECT_EQ(cmb.ListIndex(), -1);
  EXPECT_EQ(ud.Value(), 0);
  EXPECT_EQ(take(), Log{});
}

TEST_F(FormsTest, FramesHideAndDisableWhatTheyHoldWithoutTouchingTheirFlags) {
  fraA.setEnabled(false);
  EXPECT_TRUE(cmd.Enabled());
  EXPECT_STREQ(InputRefusal(cmd), "disabled");
  EXPECT_FALSE(form.userType(txt, "5"));
  EXPECT_EQ(ErrorOf([&] { txt.SetFocus(); }), kInvalidProcedureCall);
  surface.setVisible(false);
  EXPECT_TRUE(cmd.Visible());
  EXPECT_STREQ(InputRefusal(cmd), "hidden") << "hidden is told before disabled";

  surface.setVisible(true);
  fraA.setEnabled(true);
  // A chosen option takes a second click without its handler; a frame takes one and does nothing.
  EXPECT_TRUE(form.userClick(cmd) && form.userClick(opt2) && form.userClick(opt2) &&
              form.userClick(fraA));
  EXPECT_EQ(take(), (Log{"cmd click", "opt(2) click"}));
  EXPECT_EQ(txt.Text(), "");
}

TEST_F(FormsTest, ControlArraysHaveGapsAndNamesFindElements) {
  ControlArray<OptionButton> opt("opt");
  opt.add(0, opt0);
  opt.add(100, opt1);  // far indices as well as near ones
  EXPECT_EQ(&opt(100), &opt1);
  for (int gap : {1, 99, -1}) EXPECT_EQ(ErrorOf([&] { opt(gap); }), kSubscriptOutOfRange);

  const std::vector<std::pair<std::string, Control*>> lookups = {
      {"opt(01)", &opt1}, {"txt", &txt},     {"opt", nullptr},
      {"opt()", nullptr}, {"opt(1", nullptr}, {"opt(-1)", nullptr},
  };
  for (const auto& [name, control] : lookups) EXPECT_EQ(form.find(name), control) << name;
}

TEST_F(FormsTest, TypingFollowsTheKeyPressLockAndLengthRules) {
  // what, text, selection start and length, locked, maxLength, typed -> text, caret, changes
  const struct { const char* what; std::string text; Long selStart, selLength; bool locked;
                 int maxLength; std::string typed, expected; Long caret; int changes; } cases[] = {
      {"goes in at the caret", "12", 1, 0, false, 0, "34", "1342", 3, 2},
      {"replaces a middle selection", "abcd", 1, 2, false, 0, "X", "aXd", 2, 1},
      {"backspace at the start", "123", 0, 0, false, 0, "\b", "123", 0, 0},
      {"backspace deletes the selection", "12345", 1, 3, false, 0, "\b", "15", 1, 1},
      {"locked takes nothing", "12", 2, 0, true, 0, "3\b", "12", 2, 0},
      {"full box, backspace", "123", 3, 0, false, 3, "\b4", "124", 3, 2},
      {"length in characters", "\u00FC\u00FC", 2, 0, false, 3, "ab", "\u00FC\u00FCa", 3, 1},
      {"backspace over a character", "a\u00FCb", 2, 0, false, 0, "\b", "ab", 1, 1},
      {"control characters insert nothing", "1", 1, 0, false, 0, "\n\t", "1", 1, 0},
      {"broken UTF-8 reads as U+FFFD", "", 0, 0, false, 0, "\xC3", "\uFFFD", 1, 1},
  };
  int changes = 0;
  Long caretInHandler = 0;
  txt.onChange = [&] { ++changes; caretInHandler = txt.SelStart(); };
  for (const auto& c : cases) {
    txt.setText(c.text);
    txt.setSelStart(c.selStart);
    txt.setSelLength(c.selLength);
    txt.setLocked(c.locked);
    txt.maxLength = c.maxLength;
    changes = 0;
    caretInHandler = c.caret;
    ASSERT_TRUE(form.userType(txt, c.typed)) << c.what;
    // text, caret, selection, changes, and the caret the last change handler saw
    EXPECT_EQ(std::tuple(txt.Text(), txt.SelStart(), txt.SelLength(), changes, caretInHandler),
              std::tuple(c.expected, c.caret, Long{0}, c.changes, c.caret)) << c.what;
  }
  // A host that types without placing a caret types at the end; a selection is still replaced.
  txt.setText("12");
  form.userType(txt, "3", Form::TypeAt::End);
  EXPECT_EQ(std::pair(txt.Text(), txt.SelStart()), std::pair(std::string("123"), Long{3}));
  txt.setSelStart(0);
  txt.setSelLength(1);
  form.userType(txt, "4", Form::TypeAt::End);
  EXPECT_EQ(txt.Text(), "423");
  // A backspace there deletes back from the end too, wherever the caret was left.
  txt.setSelStart(0);
  form.userType(txt, "\b", Form::TypeAt::End);
  EXPECT_EQ(std::pair(txt.Text(), txt.SelStart()), std::pair(std::string("42"), Long{2}));
}

TEST_F(FormsTest, KeyPressRunsFirstAndMayCancelOrChangeTheKey) {
  txt.onKeyPress = [this](Integer& key) {
    log.push_back("key " + std::to_string(static_cast<std::uint16_t>(key)));
    if (key == 'x') key = 0;
    if (key == 'a') key = 'A';
  };
  // A character beyond 16 bits shows as U+FFFD (65533) to the handler and goes in whole.
  form.userType(txt, "ax\U0001F600");
  EXPECT_EQ(txt.Text(), "A\U0001F600");
  EXPECT_EQ(take(), (Log{"key 97", "change A", "key 120", "key 65533", "change A\U0001F600"}));

  txt.setLocked(true);
  form.userKey(txt, '5');
  EXPECT_EQ(take(), Log{"key 53"}) << "a locked box still sees the key";
}

TEST_F(FormsTest, PasteSpinAndSelect) {
  txt.setText("old");
  txt.setSelStart(3);
  txt.maxLength = 4;
  take();
  EXPECT_TRUE(form.userPaste(txt, "\u00FC12345"));
  EXPECT_EQ(txt.Text(), "\u00FC123");
  EXPECT_EQ(txt.SelStart(), 4);  // the caret behind the pasted text
  txt.setLocked(true);
  form.userPaste(txt, "x");
  EXPECT_EQ(take(), Log{"change \u00FC123"});

  ud.onMouseUp = [this] { log.push_back("ud up"); ud.setValue(0); };
  EXPECT_TRUE(form.userSpin(ud, true));
  EXPECT_TRUE(form.userSpin(ud, false));
  EXPECT_EQ(take(),
            (Log{"ud change 1", "ud up", "ud change 0", "ud change -1", "ud up", "ud change 0"}));

  cmb.AddItem("A");
  EXPECT_TRUE(form.userSelect(cmb, 0));
  EXPECT_EQ(take(), Log{"cmb click 0"});
}

TEST_F(FormsTest, FocusMovesLostBeforeGotAndEndsWhenHandlersPassItOn) {
  for (Control* c : std::vector<Control*>{&txt, &cmd, &opt0}) {
    c->onGotFocus = [this, c] { log.push_back(c->fullName() + " got"); };
    c->onLostFocus = [this, c] { log.push_back(c->fullName() + " lost"); };
  }
  EXPECT_TRUE(form.userFocus(txt));
  txt.SetFocus();  // already there: nothing
  cmd.SetFocus();
  EXPECT_EQ(take(), (Log{"txt got", "txt lost", "cmd got"}));

  // A lost-focus handler that sends the focus elsewhere wins over the move that lost it.
  cmd.onLostFocus = [this] { log.push_back("cmd lost"); form.moveFocus(&opt0); };
  txt.SetFocus();
  EXPECT_EQ(form.focused(), &opt0);
  EXPECT_EQ(take(), (Log{"cmd lost", "txt lost", "opt(0) got"}));

  // Two got-focus handlers that pass the focus back and forth stop.
  txt.onGotFocus = [this] { form.moveFocus(&cmd); };
  cmd.onGotFocus = [this] { form.moveFocus(&txt); };
  for (Control* c : std::vector<Control*>{&txt, &cmd, &opt0}) c->onLostFocus = nullptr;
  form.moveFocus(&txt);
  EXPECT_NE(form.focused(), &opt0);

  // Labels, frames, spinners, timers and the surface take no focus: the focused box keeps it.
  txt.onGotFocus = nullptr;
  txt.SetFocus();
  txt.onLostFocus = [this] { log.push_back("txt lost"); };
  Label& lbl = form.create<Label>("lbl", -1, &surface);
  Timer& tmr = form.create<Timer>("tmr", -1, &surface);
  for (Control* c : std::vector<Control*>{&lbl, &fraA, &ud, &tmr, &surface}) {
    EXPECT_FALSE(form.userFocus(*c)) << c->fullName();
    EXPECT_EQ(ErrorOf([&] { c->SetFocus(); }), kInvalidProcedureCall) << c->fullName();
  }
  EXPECT_EQ(form.focused(), &txt);
  EXPECT_EQ(take(), Log{});
}

TEST_F(FormsTest, TheChangeSignalReportsRealChangesToEveryObserver) {
  using P = ControlProperty;
  std::vector<std::pair<Control*, P>> seen;
  int second = 0;
  int first = form.addObserver([&](Control& c, P p) {
    seen.emplace_back(&c, p);
    form.removeObserver(second);  // removing another during the signal is safe
  });
  second = form.addObserver([&](Control&, P) { seen.emplace_back(nullptr, P::Visible); });

  txt.setText("1");
  txt.setSelStart(1);
  txt.setText("2");  // resets the caret: a selection change too
  txt.setText("2");
  cmd.setCaption("Go");
  opt0.setValue(true);
  opt1.setValue(true);
  cmb.AddItem("A");
  cmb.setListIndex(0);
  cmb.Clear();
  EXPECT_EQ(seen, (std::vector<std::pair<Control*, P>>{
                      {&txt, P::Text}, {&txt, P::Selection}, {&txt, P::Text}, {&txt, P::Selection},
                      {&cmd, P::Caption}, {&opt0, P::Value}, {&opt1, P::Value}, {&opt0, P::Value},
                      {&cmb, P::List}, {&cmb, P::ListIndex}, {&cmb, P::ListIndex},
                      {&cmb, P::List}}));

  seen.clear();
  form.removeObserver(first);
  cmd.SetFocus();
  EXPECT_TRUE(seen.empty());
}

TEST_F(FormsTest, TimerFollowsItsEnabledFlagAndInterval) {
  Timer& tmr = form.create<Timer>("tmr", -1, &fraA);
  int ticks = 0;
  tmr.onTimer = [&] { ++ticks; };
  tmr.setInterval(100);
  fraA.setEnabled(false);
  loop.advance(250);
  EXPECT_EQ(ticks, 2) << "a disabled frame does not stop a timer";

  tmr.setEnabled(false);
  tmr.fire();
  EXPECT_EQ(ticks, 2) << "a disabled timer does not run its handler";
  tmr.setTimerEnabled(true);
  loop.advance(99);
  EXPECT_EQ(ticks, 2) << "enabling restarts the count";
  loop.advance(1);
  EXPECT_EQ(ticks, 3);
  tmr.setInterval(0);
  EXPECT_FALSE(loop.isRunning(tmr));
}

}  // namespace
}  // namespace quillon
