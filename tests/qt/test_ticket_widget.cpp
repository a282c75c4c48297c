// The ticket's widgets: built from the form's tree, following the logical controls, and
// handing the user's keys and clicks to the form's user events.

#include <QCalendarWidget>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTableView>
#include <QToolButton>
#include <QWheelEvent>
#include <map>
#include <utility>

#include "qt/view_fixture.h"

namespace quillon::view {
namespace {

// A blank ticket, shown.
class TicketWidgetTest : public ViewTest {
 protected:
  void SetUp() override {
    OpenBlankTicket();
    Show();
  }
  void Click(const std::string& name) { QTest::mouseClick(widget<QWidget>(name), Qt::LeftButton); }
};

TEST_F(TicketWidgetTest, KeysReachTheBoxThroughItsKeyPressHandlerAndTheSpinnerStepsIt) {
  TextBox& box = f().txtPrimQty;
  std::vector<Integer> seen;
  box.onKeyPress = [&, original = box.onKeyPress](Integer& key) {
    seen.push_back(key);
    if (key >= 'a' && key <= 'z') key = 0;  // letters refused
    if (original) original(key);
  };
  auto* edit = widget<QLineEdit>("txtPrimQty");
  QTest::mouseClick(edit, Qt::LeftButton);
  EXPECT_EQ(f().controls().focused(), &box);
  box.setText("");
  QTest::keyClicks(edit, "2x5");
  QTest::keyClick(edit, Qt::Key_Backspace);
  EXPECT_EQ(seen, (std::vector<Integer>{'2', 'x', '5', 8}));
  EXPECT_EQ(edit->text(), "2");

  // Home then Delete: the character after the caret goes; neither is a key stroke.
  QTest::keyClicks(edit, "40");
  QTest::keyClick(edit, Qt::Key_Home);
  QTest::keyClick(edit, Qt::Key_Delete);
  EXPECT_EQ(box.Text(), "40");
  EXPECT_EQ(seen.size(), 6u);
  // A character goes in at the caret.
  QTest::keyClick(edit, Qt::Key_Right);
  QTest::keyClicks(edit, "5");
  EXPECT_EQ(box.Text(), "450");

  // Paste replaces the text in one change; the clipboard's text goes through the box's rules.
  QGuiApplication::clipboard()->setText("1234567890123456789012");
  QTest::keyClick(edit, Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(edit->text(), "123456789012345678");  // at most 18 characters

  // The spinner steps the quantity, and rests again when released.
  auto* up = widget<QWidget>("udPrim")->findChild<QToolButton*>("up");
  auto* down = widget<QWidget>("udPrim")->findChild<QToolButton*>("down");
  ASSERT_TRUE(up && down);
  f().controls().userPaste(box, "250,000.00");
  QTest::mouseClick(up, Qt::LeftButton);
  EXPECT_EQ(box.Text(), "350,000.00");
  EXPECT_EQ(f().udPrim.Value(), 0);
  QTest::mouseClick(down, Qt::LeftButton);
  QTest::mouseClick(down, Qt::LeftButton);
  EXPECT_EQ(edit->text(), "150,000.00");
  // An arrow held down is one step, however long it is held.
  QTest::mousePress(up, Qt::LeftButton);
  QTest::qWait(up->autoRepeatDelay() + 3 * up->autoRepeatInterval());
  QTest::mouseRelease(up, Qt::LeftButton);
  EXPECT_EQ(edit->text(), "250,000.00");
}

TEST_F(TicketWidgetTest, ASelectionGrowsFromWhereItStartedByKeysOrByTheMouse) {
  TextBox& box = f().txtPrimQty;
  auto* edit = widget<QLineEdit>("txtPrimQty");
  QTest::mouseClick(edit, Qt::LeftButton);
  f().controls().userPaste(box, "12345678");
  const auto selection = [&] { return std::pair(box.SelStart(), box.SelLength()); };
  // Leftwards from the end: the caret moves away from the anchor at 8.
  QTest::keyClick(edit, Qt::Key_End);
  QTest::keyClick(edit, Qt::Key_Left, Qt::ShiftModifier);
  QTest::keyClick(edit, Qt::Key_Left, Qt::ShiftModifier);
  EXPECT_EQ(selection(), (std::pair<Long, Long>(6, 2)));
  EXPECT_EQ(edit->cursorPosition(), 6);

  // A drag leftwards from 8 past 2 to 1.
  std::map<int, QPoint> at;
  for (int i : {1, 2, 8}) {
    edit->setCursorPosition(i);
    at[i] = edit->inputMethodQuery(Qt::ImCursorRectangle).toRect().center();
  }
  QTest::mousePress(edit, Qt::LeftButton, {}, at[8]);
  for (int i : {2, 1}) {
    QMouseEvent move(QEvent::MouseMove, at[i], edit->mapToGlobal(at[i]), Qt::NoButton,
                     Qt::LeftButton, {});
    QApplication::sendEvent(edit, &move);
  }
  QTest::mouseRelease(edit, Qt::LeftButton, {}, at[1]);
  EXPECT_EQ(selection(), (std::pair<Long, Long>(1, 7)));
  EXPECT_EQ(edit->selectedText(), "2345678");
}

// The account list turns, by the wheel or the arrow keys, only when the user has put the
// focus there: not in a new window, nor while the user works in another box.
TEST_F(TicketWidgetTest, TheAccountListTurnsOnlyWithTheFocusTheUserGaveIt) {
  Call(&Clientticket::LoadAccount, 2, "Second", 0);
  auto* list = widget<QComboBox>("cmbAccount");
  const Long before = f().cmbAccount.ListIndex();
  // The window has just come up, and the ticket has given no control the focus.
  ASSERT_EQ(f().controls().focused(), nullptr);
  EXPECT_FALSE(list->hasFocus());
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
  EXPECT_EQ(f().cmbAccount.ListIndex(), before);
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
  EXPECT_EQ(f().controls().focused(), &f().cmbAccount);  // Tab goes on from the ticket
  auto wheel = [&] {
    const QPointF at(list->width() / 2.0, list->height() / 2.0);
    QWheelEvent event(at, list->mapToGlobal(at), QPoint(), QPoint(0, -120), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(list, &event);
  };
  Click("txtPrimQty");
  wheel();
  EXPECT_EQ(f().cmbAccount.ListIndex(), before);
  list->setFocus(Qt::MouseFocusReason);
  wheel();
  EXPECT_NE(f().cmbAccount.ListIndex(), before);
  EXPECT_EQ(m().AccountID, 2);
}

TEST_F(TicketWidgetTest, ClicksGoThroughTheLogicalControlsAndCloseMayEndTheTicket) {
  // An option button: the logical button decides, and its group follows.
  Click("optType(2)");
  EXPECT_TRUE(widget<QRadioButton>("optType(2)")->isChecked());
  EXPECT_FALSE(widget<QRadioButton>("optType(1)")->isChecked());
  EXPECT_TRUE(widget<QLineEdit>("txtLimit")->isVisible());  // the handler showed the box

  // Close raises CloseTicket, and the host ends the ticket inside it, as a host does.
  host_.inside["CloseTicket"] = [&] { view_->detach(), ticket_.reset(); };
  Click("cmdOKCancel(2)");
  EXPECT_EQ(ticket_, nullptr);
  EXPECT_EQ(view_->widgetFor("cmdOKCancel(2)"), nullptr);
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);  // the widgets go
  EXPECT_TRUE(view_->findChildren<QPushButton*>().isEmpty());
}

TEST_F(TicketWidgetTest, TheTicketMayEndInsideTheFocusMoveOfAClickIntoABox) {
  // Leaving an empty amount writes 0.00, whose refresh asks the host for a price: the host
  // closes the ticket there, while the click into the next box is still under way.
  QTest::mouseClick(widget<QLineEdit>("txtPrimQty"), Qt::LeftButton);
  f().controls().userPaste(f().txtPrimQty, "");
  host_.inside["VtPriceGetArray"] = [&] { view_->detach(), ticket_.reset(); };
  QTest::mouseClick(widget<QLineEdit>("txtSecQty"), Qt::LeftButton);
  EXPECT_EQ(ticket_, nullptr);
}

TEST_F(TicketWidgetTest, TheCalendarIsBuiltWhenItFirstShowsAndHandsOnDaysAndKeys) {
  EXPECT_EQ(view_->findChild<QCalendarWidget*>(), nullptr);  // not shown, not built yet
  MonthView& cal = f().calValueDate;
  std::vector<Date> clicked;
  cal.onDateClick = [&, original = cal.onDateClick](Date day) {
    clicked.push_back(day);
    if (original) original(day);
  };
  std::vector<Integer> keys;
  cal.onKeyPress = [&, original = cal.onKeyPress](Integer& key) {
    keys.push_back(key);
    if (original) original(key);
  };
  probe().ValueClick();  // the picker opens: the calendar shows, built on the form's dates
  auto* calendar = widget<QCalendarWidget>("calValueDate");
  ASSERT_TRUE(calendar->isVisible());
  EXPECT_EQ(calendar->selectedDate(), QDate(2002, 3, 5));

  // The cell of the 20th: the only one of the grid that shows 20.
  auto* grid = calendar->findChild<QTableView*>();
  ASSERT_NE(grid, nullptr);
  QModelIndex day20;
  for (int r = 0; r < grid->model()->rowCount(); ++r)
    for (int c = 0; c < grid->model()->columnCount(); ++c)
      if (grid->model()->index(r, c).data().toString() == "20") day20 = grid->model()->index(r, c);
  ASSERT_TRUE(day20.isValid());
  QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, grid->visualRect(day20).center());
  EXPECT_EQ(clicked, std::vector<Date>{DateSerial(2002, 3, 20)});

  // Keys go to the calendar's key-press handler; the arrows move the selected day.
  if (!cal.Visible()) probe().ValueClick();
  ASSERT_TRUE(calendar->isVisible());
  grid->setFocus();
  QTest::keyClick(grid, Qt::Key_Right);
  EXPECT_EQ(cal.Value(), DateSerial(2002, 3, 21));
  QTest::keyClick(grid, Qt::Key_Enter);
  QTest::keyClick(grid, Qt::Key_Space);
  EXPECT_EQ(keys, (std::vector<Integer>{13, 32}));
  // Enter on the value date closes the calendar, which has the focus. Qt passes its focus on,
  // but to no other box: the ticket's focus is still on the calendar.
  cal.setValue(DateSerial(2002, 3, 5));
  QTest::keyClick(grid, Qt::Key_Enter);
  ASSERT_FALSE(calendar->isVisible());
  EXPECT_EQ(QApplication::focusWidget(), view_.get());
  EXPECT_EQ(f().controls().focused(), &cal);
  EXPECT_EQ(view_->findChildren<QCalendarWidget*>().size(), 1);
}

TEST_F(TicketWidgetTest, WidgetsFollowTheLogicalControls) {
  auto* bid = widget<QLineEdit>("txtBid");
  auto* qty = widget<QLineEdit>("txtPrimQty");
  host_.prices[kEurUsd] = Price(1.2401, 1.2406);  // a tick changes the price boxes in place
  Call(&Clientticket::PriceGeneric, kEurUsd, 0, 1.2401, 1.2406, 2, 0, 0.0);
  EXPECT_EQ(bid->text(), "1.2401");
  f().lblReason.setCaption("Line one\r\nLine two");
  EXPECT_EQ(widget<QLabel>("lblReason")->text(), "Line one\nLine two");
  f().fraOrderEntry.setEnabled(false);  // a disabled frame disables what it holds
  EXPECT_FALSE(bid->isEnabled());
  EXPECT_FALSE(qty->isEnabled());
  f().fraOrderEntry.setEnabled(true);
  EXPECT_TRUE(qty->isEnabled());

  // The ticket's colour; disabled text stays readable on it.
  probe().SetColour(TicketColour::kYellow, TicketColour::kWhite);
  EXPECT_EQ(qty->palette().color(QPalette::Base), QColor(Qt::white));
  EXPECT_EQ(bid->palette().color(QPalette::Base), QColor(Qt::yellow));
  const QColor grey = bid->palette().color(QPalette::Disabled, QPalette::Text);
  EXPECT_GT(qAbs(qGray(grey.rgb()) - qGray(QColor(Qt::yellow).rgb())), 120);

  // The logical focus moves Qt's focus; Tab moves the logical focus; hiding does not.
  f().cmdOKCancel(2).SetFocus();
  EXPECT_EQ(QApplication::focusWidget(), view_->widgetFor("cmdOKCancel(2)"));
  int gotFocus = 0;
  f().txtPrimQty.onGotFocus = [&] { ++gotFocus; };
  auto* buy = widget<QRadioButton>("optBuySell(1)");
  buy->setFocus(Qt::OtherFocusReason);  // not the user's: the logic is not told
  EXPECT_NE(f().controls().focused(), &f().optBuySell(1));
  QTest::keyClick(buy, Qt::Key_Tab);
  EXPECT_EQ(QApplication::focusWidget(), qty);
  EXPECT_EQ(f().controls().focused(), &f().txtPrimQty);
  f().txtPrimQty.setVisible(false);  // Qt passes the focus on; that is no user's move
  EXPECT_EQ(f().controls().focused(), &f().txtPrimQty);
  EXPECT_EQ(gotFocus, 1);
}

}  // namespace
}  // namespace quillon::view
