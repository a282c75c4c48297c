// The ticket as a trader sees it, in English and German: every caption shown whole, in each
// state.

#include <QAbstractButton>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QStyle>
#include <algorithm>

#include "qt/view_fixture.h"

namespace quillon::view {
namespace {

// The captions a widget shows and cannot show whole: one line too wide for a button, an
// option or a one-line label, wrapped text taller than its label, or an option too low for
// its round indicator and the rim around it.
std::vector<std::string> Clipped(QWidget& root) {
  std::vector<std::string> out;
  for (QWidget* w : root.findChildren<QWidget*>()) {
    if (!w->isVisibleTo(&root) || w->objectName().isEmpty()) continue;
    const QFontMetrics fm(w->font());
    QString text;
    bool clipped = false;
    if (auto* label = qobject_cast<QLabel*>(w)) {
      text = label->text();
      const int flags = int(label->alignment()) | (label->wordWrap() ? Qt::TextWordWrap : 0);
      const QRect need = fm.boundingRect(QRect(0, 0, w->width(), 10000), flags, text);
      clipped = need.width() > w->width() || need.height() > w->height();
    } else if (auto* button = qobject_cast<QAbstractButton*>(w)) {
      text = button->text().remove('&');
      const bool option = qobject_cast<QRadioButton*>(w) != nullptr;
      const int room = option ? w->width() - 18 : w->width() - 6;
      const QStringList lines = text.split('\n');
      for (const QString& line : lines) clipped = clipped || fm.horizontalAdvance(line) > room;
      const int rim = w->style()->pixelMetric(QStyle::PM_ExclusiveIndicatorHeight, nullptr, w) + 2;
      if (option)
        clipped = clipped || w->height() < std::max<int>(rim, lines.size() * fm.lineSpacing());
    } else if (auto* edit = qobject_cast<QLineEdit*>(w)) {
      text = edit->text();
      clipped = fm.horizontalAdvance(text) > w->width() - 6;
    }
    if (clipped && !text.isEmpty())
      out.push_back(w->objectName().toStdString() + " \"" + text.toStdString() + "\"");
  }
  return out;
}

// The parameter is the user's language: 1 English, 2 German.
class ScreenTest : public ViewTest, public ::testing::WithParamInterface<Integer> {
 protected:
  ScreenTest() : ViewTest(GetParam() == 2 ? "de_DE" : "en_US") {}

  void Check(const char* state) {
    QApplication::processEvents();
    const std::vector<std::string> clipped = Clipped(*view_);
    EXPECT_TRUE(clipped.empty()) << state << ": " << ::testing::PrintToString(clipped);
  }
};

TEST_P(ScreenTest, EveryStateShowsItsCaptionsWhole) {
  OpenBlankTicket(GetParam());
  Show();
  Call(&Clientticket::ReceivedEquity, 1, 250000.0, 1000000.0);
  Check("blank");
  f().controls().userClick(f().optType(2));  // a limit order: its validity shows
  ASSERT_TRUE(f().fraValid.Visible());
  Check("limit");
  f().controls().userClick(f().optType(1));

  f().controls().userPaste(f().txtPrimQty, "100000");  // a market buy: Place Order
  f().controls().userClick(f().optBuySell(0));
  f().controls().userClick(f().cmdOKCancel(0));
  ASSERT_TRUE(f().fraConf.Visible());
  Check("confirmation");
  f().controls().userClick(f().cmdOKCancel(3));  // Yes: the order goes

  Execute(100000, 4711);
  ASSERT_TRUE(f().fraTradeConf.Visible());
  Call(&Clientticket::ReceivedEquity, 1, 262500.0, 1000000.0);
  Check("trade");

  // An OCO order resting in the market: the long warning below the order.
  Initialise(Msg{.AccountID = 1, .InstrumentID = kEurUsd, .Quantity = 100000,
                 .OrderType = OCO_ORDER, .ValueDate = 37320, .Status = ORDER_PENDING, .Action = 1});
  ASSERT_TRUE(f().lblReason.Caption().starts_with("OCO order pending"));
  Check("OCO pending");

  ShowQuote(GetParam());
  Show();
  ASSERT_TRUE(f().fraQuote.Visible());
  Check("quote");
}

INSTANTIATE_TEST_SUITE_P(Languages, ScreenTest, ::testing::Values(Integer{1}, Integer{2}),
                         [](const auto& info) { return info.param == 2 ? "de" : "en"; });

}  // namespace
}  // namespace quillon::view
