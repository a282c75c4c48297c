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

#include "qt/view_fixture.h"

namespace quillon::view {
namespace {

class TicketWidgetTest : public ViewTest {};

TEST_F(TicketWidgetTest, EveryControlBecomesAWidgetAtItsPlace) {
  OpenBlankTicket();
  Show();
  ASSERT_EQ(view_->toPixels(1440), view_->logicalDpiX());
  EXPECT_EQ(view_->size(), QSize(view_->toPixels(5550), view_->toPixels(5700)));

  for (Control* c : f().controls().controls()) {
    QWidget* w = view_->widgetFor(c->fullName());
    switch (c->kind()) {
      case ControlKind::Timer:
      case ControlKind::HtmlClient:
        EXPECT_EQ(w, nullptr) << c->fullName();
        continue;
      case ControlKind::Surface:
        EXPECT_EQ(w, view_.get());
        continue;
      case ControlKind::TextBox:
        EXPECT_NE(qobject_cast<QLineEdit*>(w), nullptr) << c->fullName();
        break;
      case ControlKind::Label:
        EXPECT_NE(qobject_cast<QLabel*>(w), nullptr) << c->fullName();
        break;
      case ControlKind::CommandButton:
        EXPECT_NE(qobject_cast<QPushButton*>(w), nullptr) << c->fullName();
        break;
      case ControlKind::OptionButton:
        ASSERT_NE(qobject_cast<QRadioButton*>(w), nullptr) << c->fullName();
        EXPECT_EQ(qobject_cast<QRadioButton*>(w)->isChecked(),
                  static_cast<OptionButton*>(c)->Value())
            << c->fullName();
        break;
      case ControlKind::ComboBox:
        EXPECT_NE(qobject_cast<QComboBox*>(w), nullptr) << c->fullName();
        break;
      case ControlKind::MonthView:
        EXPECT_NE(qobject_cast<QCalendarWidget*>(w), nullptr) << c->fullName();
        break;
      default:
        ASSERT_NE(w, nullptr) << c->fullName();
    }
    if (c->kind() != ControlKind::Line) {
      const QRect design(view_->toPixels(c->Left()), view_->toPixels(c->Top()),
                         view_->toPixels(c->Left() + c->Width()) - view_->toPixels(c->Left()),
                         view_->toPixels(c->Top() + c->Height()) - view_->toPixels(c->Top()));
      if (c->kind() == ControlKind::OptionButton || c->kind() == ControlKind::Label) {
        // An option or a label may reach to the right for its caption, never into a neighbour.
        EXPECT_EQ(w->geometry().topLeft(), design.topLeft()) << c->fullName();
        EXPECT_EQ(w->height(), design.height()) << c->fullName();
        EXPECT_GE(w->width(), design.width()) << c->fullName();
        for (QWidget* other : w->parentWidget()->findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
          if (other == w || other->geometry().intersects(design)) continue;
          EXPECT_FALSE(other->geometry().intersects(w->geometry()))
              << c->fullName() << " reaches into " << other->objectName().toStdString();
        }
      } else {
        EXPECT_EQ(w->geometry(), design) << c->fullName();
      }
    }
    EXPECT_EQ(w->isVisibleTo(view_.get()), c->isShowing()) << c->fullName();
    EXPECT_EQ(w->isEnabled(), c->isEffectivelyEnabled()) << c->fullName();
  }

  // Containers hold their controls, and the first of a container lies in front.
  EXPECT_EQ(view_->widgetFor("txtBid")->parentWidget(), view_->widgetFor("fraClientPrices"));
  EXPECT_EQ(view_->childAt(view_->toPixels(4300), view_->toPixels(5300)),
            view_->widgetFor("cmdOKCancel(2)"));
  // The design-time fonts and colours.
  auto* price = widget<QLabel>("lblQuotePrice");
  EXPECT_TRUE(price->font().bold());
  EXPECT_DOUBLE_EQ(price->font().pointSizeF(), 12);
  EXPECT_EQ(price->palette().color(QPalette::WindowText), QColor(0, 255, 0));
  EXPECT_EQ(price->palette().color(QPalette::Window), QColor(0, 0, 0));
  EXPECT_EQ(widget<QLineEdit>("txtPrimQty")->alignment() & Qt::AlignHorizontal_Mask,
            Qt::AlignRight);
  EXPECT_TRUE(widget<QLineEdit>("txtBid")->isReadOnly());
  // The tab order follows the tab indexes.
  EXPECT_EQ(view_->widgetFor("cmbAccount")->nextInFocusChain(), view_->widgetFor("cmdValue"));
}

TEST_F(TicketWidgetTest, KeysReachTheBoxThroughItsKeyPressHandler) {
  OpenBlankTicket();
  Show();
  TextBox& box = f().txtPrimQty;
  std::vector<Integer> seen;
  auto original = box.onKeyPress;
  box.onKeyPress = [&, original](Integer& key) {
    seen.push_back(key);
    if (key >= 'a' && key <= 'z') key = 0;  // letters refused
    if (original) original(key);
  };
  auto* edit = widget<QLineEdit>("txtPrimQty");
  QTest::mouseClick(edit, Qt::LeftButton);
  EXPECT_EQ(f().controls().focused(), &box);
  EXPECT_EQ(QApplication::focusWidget(), edit);

  box.setText("");
  QTest::keyClicks(edit, "2x5");
  EXPECT_EQ(seen, (std::vector<Integer>{'2', 'x', '5'}));
  EXPECT_EQ(box.Text(), "25");
  EXPECT_EQ(edit->text(), "25");
  EXPECT_EQ(m().Quantity, 25);  // the change handler ran

  QTest::keyClick(edit, Qt::Key_Backspace);
  EXPECT_EQ(seen.back(), 8);
  EXPECT_EQ(box.Text(), "2");

  // Home then Delete: the character after the caret goes, with no key stroke.
  QTest::keyClicks(edit, "40");
  QTest::keyClick(edit, Qt::Key_Home);
  EXPECT_EQ(box.SelStart(), 0);
  EXPECT_EQ(edit->cursorPosition(), 0);
  const std::size_t keysBefore = seen.size();
  QTest::keyClick(edit, Qt::Key_Delete);
  EXPECT_EQ(box.Text(), "40");
  EXPECT_EQ(seen.size(), keysBefore);
  // Shift+End selects; a key replaces the selection.
  QTest::keyClick(edit, Qt::Key_End, Qt::ShiftModifier);
  EXPECT_EQ(box.SelLength(), 2);
  EXPECT_EQ(edit->selectedText(), "40");
  QTest::keyClicks(edit, "7");
  EXPECT_EQ(box.Text(), "7");

  // Paste replaces the text in one change; the clipboard's text goes through the box's rules.
  QGuiApplication::clipboard()->setText("1234567890123456789012");
  QTest::keyClick(edit, Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(box.Text(), "123456789012345678");  // at most 18 characters
  EXPECT_EQ(edit->text(), QString::fromStdString(box.Text()));

  // A read-only box takes focus but no key.
  auto* counter = widget<QLineEdit>("txtSecQty");
  const std::string counterText = f().txtSecQty.Text();
  QTest::mouseClick(counter, Qt::LeftButton);
  EXPECT_EQ(f().controls().focused(), &f().txtSecQty);
  QTest::keyClicks(counter, "99");
  QTest::keyClick(counter, Qt::Key_Backspace);
  EXPECT_EQ(f().txtSecQty.Text(), counterText);
  EXPECT_EQ(counter->text(), QString::fromStdString(counterText));
}

TEST_F(TicketWidgetTest, ClicksRunHandlersOnlyOnControlsThatTakeInput) {
  OpenBlankTicket();
  Show();
  // Cancel Req is disabled on a blank ticket: a click does nothing.
  auto* cancel = widget<QPushButton>("cmdOKCancel(1)");
  ASSERT_FALSE(f().cmdOKCancel(1).Enabled());
  EXPECT_FALSE(cancel->isEnabled());
  int cancelClicks = 0;
  f().cmdOKCancel(1).onClick = [&] { ++cancelClicks; };
  host_.events.clear();
  QTest::mouseClick(cancel, Qt::LeftButton);
  EXPECT_EQ(cancelClicks, 0);
  EXPECT_TRUE(host_.events.empty());
  auto* place = widget<QPushButton>("cmdOKCancel(0)");

  // An option button: the logical button decides, Qt's own toggling plays no part.
  auto* limit = widget<QRadioButton>("optType(2)");
  auto* market = widget<QRadioButton>("optType(1)");
  QTest::mouseClick(limit, Qt::LeftButton);
  EXPECT_TRUE(f().optType(2).Value());
  EXPECT_TRUE(limit->isChecked());
  EXPECT_FALSE(market->isChecked());
  EXPECT_TRUE(widget<QLineEdit>("txtLimit")->isVisible());  // the handler showed the box
  QTest::mouseClick(limit, Qt::LeftButton);  // a second click leaves it on
  EXPECT_TRUE(limit->isChecked());

  // With a quantity, Place Order opens the confirmation; No closes it again.
  QTest::mouseClick(market, Qt::LeftButton);
  QTest::mouseClick(widget<QRadioButton>("optBuySell(0)"), Qt::LeftButton);
  auto* qty = widget<QLineEdit>("txtPrimQty");
  QTest::mouseClick(qty, Qt::LeftButton);
  QTest::keyClick(qty, Qt::Key_A, Qt::ControlModifier);
  QTest::keyClicks(qty, "100000");
  ASSERT_TRUE(place->isEnabled());
  QTest::mouseClick(place, Qt::LeftButton);
  EXPECT_TRUE(f().fraConf.Visible());
  EXPECT_TRUE(widget<QWidget>("fraConf")->isVisible());
  EXPECT_EQ(host_.count("ResizeTicket"), 1);
  QTest::mouseClick(widget<QPushButton>("cmdOKCancel(4)"), Qt::LeftButton);
  EXPECT_FALSE(widget<QWidget>("fraConf")->isVisible());

  // Close raises CloseTicket.
  QTest::mouseClick(widget<QPushButton>("cmdOKCancel(2)"), Qt::LeftButton);
  EXPECT_EQ(host_.count("CloseTicket"), 1);
}

TEST_F(TicketWidgetTest, TheSpinnerStepsTheQuantityAndRestsAgain) {
  OpenBlankTicket();
  Show();
  auto* spinner = view_->widgetFor("udPrim");
  ASSERT_NE(spinner, nullptr);
  auto* up = spinner->findChild<QToolButton*>("up");
  auto* down = spinner->findChild<QToolButton*>("down");
  ASSERT_TRUE(up && down);
  f().controls().userPaste(f().txtPrimQty, "250,000.00");
  QTest::mouseClick(up, Qt::LeftButton);
  EXPECT_EQ(f().txtPrimQty.Text(), "350,000.00");
  EXPECT_EQ(f().udPrim.Value(), 0);  // released: back at rest
  QTest::mouseClick(down, Qt::LeftButton);
  QTest::mouseClick(down, Qt::LeftButton);
  EXPECT_EQ(f().txtPrimQty.Text(), "150,000.00");
  EXPECT_EQ(widget<QLineEdit>("txtPrimQty")->text(), "150,000.00");

  // A hidden spinner is not shown and takes no click.
  EXPECT_FALSE(view_->widgetFor("udSec")->isVisible());
}

TEST_F(TicketWidgetTest, TheCalendarIsBuiltWhenItFirstShowsOnItsDates) {
  OpenBlankTicket();
  Show();
  // A blank ticket's calendar is not shown, and not built yet.
  EXPECT_EQ(view_->findChild<QCalendarWidget*>(), nullptr);
  probe().ValueClick();  // the picker opens: the calendar shows, built on the form's dates
  auto* calendar = view_->findChild<QCalendarWidget*>();
  ASSERT_NE(calendar, nullptr);
  EXPECT_TRUE(calendar->isVisible());
  EXPECT_EQ(calendar->objectName(), "calValueDate");
  EXPECT_EQ(view_->widgetFor("calValueDate"), calendar);
  EXPECT_EQ(calendar->selectedDate(), QDate(2002, 3, 5));
  const QDate dayZero(1899, 12, 30);
  EXPECT_EQ(calendar->minimumDate(),
            dayZero.addDays(static_cast<qint64>(f().calValueDate.MinDate())));
  EXPECT_EQ(calendar->geometry().topLeft(),
            QPoint(view_->toPixels(f().calValueDate.Left()),
                   view_->toPixels(f().calValueDate.Top())));
  EXPECT_EQ(view_->findChildren<QCalendarWidget*>().size(), 1);
}

TEST_F(TicketWidgetTest, ADayClickedOrEnteredInTheCalendarReachesItsHandler) {
  OpenBlankTicket();
  Show();
  MonthView& cal = f().calValueDate;
  std::vector<Date> clicked;
  auto original = cal.onDateClick;
  cal.onDateClick = [&, original](Date day) {
    clicked.push_back(day);
    if (original) original(day);
  };
  probe().ValueClick();  // opens the calendar on the value date
  auto* calendar = widget<QCalendarWidget>("calValueDate");
  ASSERT_TRUE(calendar->isVisible());
  EXPECT_EQ(calendar->selectedDate(), QDate(2002, 3, 5));
  const QDate dayZero(1899, 12, 30);
  EXPECT_EQ(calendar->minimumDate(), dayZero.addDays(static_cast<qint64>(cal.MinDate())));
  EXPECT_EQ(calendar->maximumDate(), dayZero.addDays(static_cast<qint64>(cal.MaxDate())));

  // The cell of the 20th: the only one of the grid that shows 20.
  auto* grid = calendar->findChild<QTableView*>();
  ASSERT_NE(grid, nullptr);
  QModelIndex day20;
  for (int r = 0; r < grid->model()->rowCount(); ++r)
    for (int c = 0; c < grid->model()->columnCount(); ++c)
      if (grid->model()->index(r, c).data().toString() == "20") day20 = grid->model()->index(r, c);
  ASSERT_TRUE(day20.isValid());
  QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, grid->visualRect(day20).center());
  ASSERT_EQ(clicked.size(), 1u);
  EXPECT_EQ(clicked[0], DateSerial(2002, 3, 20));
  EXPECT_EQ(cal.Value(), DateSerial(2002, 3, 20));

  // Keys go to the calendar's key-press handler; the arrows move the selected day.
  std::vector<Integer> keys;
  auto originalKeys = cal.onKeyPress;
  cal.onKeyPress = [&, originalKeys](Integer& key) {
    keys.push_back(key);
    if (originalKeys) originalKeys(key);
  };
  if (!cal.Visible()) probe().ValueClick();
  ASSERT_TRUE(calendar->isVisible());
  const Date before = cal.Value();
  grid->setFocus();
  QTest::keyClick(grid, Qt::Key_Right);
  EXPECT_EQ(cal.Value(), before + 1);
  QTest::keyClick(grid, Qt::Key_Enter);
  QTest::keyClick(grid, Qt::Key_Space);
  EXPECT_EQ(keys, (std::vector<Integer>{13, 32}));
}

TEST_F(TicketWidgetTest, WidgetsFollowTheLogicalControls) {
  OpenBlankTicket();
  Show();
  auto* bid = widget<QLineEdit>("txtBid");
  auto* placeOrder = widget<QPushButton>("cmdOKCancel(0)");
  QWidget* entry = view_->widgetFor("fraOrderEntry");

  // A tick changes the price boxes in place.
  host_.prices[kEurUsd] = Price(1.2401, 1.2406);
  Long id = kEurUsd, counterparty = 0, type = 2, source = 0;
  double b = 1.2401, o = 1.2406;
  Date time = 0;
  ticket_->PriceGeneric(id, counterparty, b, o, type, source, time);
  EXPECT_EQ(bid->text(), QString::fromStdString(f().txtBid.Text()));
  EXPECT_EQ(bid->text(), "1.2401");
  EXPECT_EQ(view_->widgetFor("txtBid"), bid);

  f().lblReason.setCaption("Line one\r\nLine two");
  EXPECT_EQ(widget<QLabel>("lblReason")->text(), "Line one\nLine two");
  f().cmdOKCancel(0).setCaption("&Go");
  EXPECT_EQ(placeOrder->text(), "&Go");
  f().cmdOKCancel(0).setEnabled(true);
  EXPECT_TRUE(placeOrder->isEnabled());
  f().fraOrderEntry.setEnabled(false);  // a disabled frame disables what it holds
  EXPECT_FALSE(bid->isEnabled());
  EXPECT_FALSE(widget<QLineEdit>("txtPrimQty")->isEnabled());
  f().fraOrderEntry.setEnabled(true);
  EXPECT_TRUE(widget<QLineEdit>("txtPrimQty")->isEnabled());

  probe().SetColour(TicketColour::kYellow, TicketColour::kWhite);
  EXPECT_EQ(entry->palette().color(QPalette::Window), QColor(Qt::yellow));
  EXPECT_EQ(widget<QLineEdit>("txtPrimQty")->palette().color(QPalette::Base), QColor(Qt::white));
  EXPECT_EQ(bid->palette().color(QPalette::Base), QColor(Qt::yellow));
  EXPECT_EQ(view_->palette().color(QPalette::Window), QColor(Qt::yellow));
  // Disabled text stays readable on the ticket colour.
  const QColor grey = bid->palette().color(QPalette::Disabled, QPalette::Text);
  EXPECT_GT(qAbs(qGray(grey.rgb()) - qGray(QColor(Qt::yellow).rgb())), 120);

  f().lblBid.setForeColor(0x000000FF);
  EXPECT_EQ(widget<QLabel>("lblBid")->palette().color(QPalette::WindowText), QColor(Qt::red));
  f().lblBid.setFontStrikethru(true);
  EXPECT_TRUE(widget<QLabel>("lblBid")->font().strikeOut());

  f().fraValid.setVisible(true);
  EXPECT_TRUE(view_->widgetFor("optValid(1)")->isVisible());
  f().fraTradeConf.setLeft(600);
  EXPECT_EQ(view_->widgetFor("fraTradeConf")->x(), view_->toPixels(600));

  // The account list.
  auto* accounts = widget<QComboBox>("cmbAccount");
  EXPECT_EQ(accounts->count(), f().cmbAccount.ListCount());
  EXPECT_EQ(accounts->currentIndex(), f().cmbAccount.ListIndex());
  f().cmbAccount.AddItem("Second");
  EXPECT_EQ(accounts->itemText(accounts->count() - 1), "Second");

  // The logical focus moves Qt's focus.
  f().txtPrimQty.SetFocus();
  EXPECT_EQ(QApplication::focusWidget(), view_->widgetFor("txtPrimQty"));
  f().cmdOKCancel(2).SetFocus();
  EXPECT_EQ(QApplication::focusWidget(), view_->widgetFor("cmdOKCancel(2)"));
}

TEST_F(TicketWidgetTest, AQuoteArrivingOnTheShownTicketTakesTheFocusAndCountsDown) {
  OpenTwoWayRequest();
  Show();
  Quote();
  ASSERT_TRUE(view_->widgetFor("fraQuote")->isVisible());
  EXPECT_EQ(f().controls().focused(), &f().cmdQuote(1));
  EXPECT_EQ(QApplication::focusWidget(), view_->widgetFor("cmdQuote(1)"));
  auto* seconds = widget<QLabel>("lblQuoteTime");
  EXPECT_EQ(seconds->text(), "30");
  loop_.advance(2000);
  EXPECT_EQ(seconds->text(), "28");
  QTest::mouseClick(widget<QPushButton>("cmdQuote(2)"), Qt::LeftButton);
  const RecordedEvent* answer = host_.last("VtOrderGenericNew");
  ASSERT_NE(answer, nullptr);
  EXPECT_EQ(answer->args[11], "12");  // accepted
}

TEST_F(TicketWidgetTest, TabMovesTheLogicalFocusAndHidingDoesNot) {
  OpenBlankTicket();
  Show();
  int gotFocus = 0;
  f().txtPrimQty.onGotFocus = [&] { ++gotFocus; };
  auto* buy = widget<QRadioButton>("optBuySell(1)");
  buy->setFocus(Qt::OtherFocusReason);  // not the user's: the logic is not told
  EXPECT_NE(f().controls().focused(), &f().optBuySell(1));
  QTest::keyClick(buy, Qt::Key_Tab);
  EXPECT_EQ(QApplication::focusWidget(), view_->widgetFor("txtPrimQty"));
  EXPECT_EQ(f().controls().focused(), &f().txtPrimQty);
  EXPECT_EQ(gotFocus, 1);

  // Qt passes the focus on when the logic hides the focused box; that is no user's move.
  Control* before = f().controls().focused();
  f().txtPrimQty.setVisible(false);
  EXPECT_EQ(f().controls().focused(), before);
  EXPECT_EQ(gotFocus, 1);
}

TEST_F(TicketWidgetTest, TheTicketMayCloseFromItsOwnButton) {
  OpenBlankTicket();
  Show();
  // The host ends the ticket inside CloseTicket, as a host does.
  host_.inside["CloseTicket"] = [&] {
    view_->detach();
    ticket_.reset();
  };
  QTest::mouseClick(widget<QPushButton>("cmdOKCancel(2)"), Qt::LeftButton);
  EXPECT_EQ(ticket_, nullptr);
  EXPECT_EQ(view_->widgetFor("cmdOKCancel(2)"), nullptr);
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);  // the widgets go
  EXPECT_TRUE(view_->findChildren<QPushButton*>().isEmpty());
}

}  // namespace
}  // namespace quillon::view
