// The ticket as a trader sees it, in English and German: every caption shown whole, in each
// state. With QUILLON_SCREENSHOT_DIR set, each state is also saved as a picture.

#include <QAbstractButton>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <ostream>

#include "qt/view_fixture.h"

namespace quillon::view {
namespace {

struct Screen {
  const char* name;
  Integer language;
};
void PrintTo(const Screen& s, std::ostream* os) { *os << s.name; }

// The captions a widget shows and cannot show whole: one line too wide for a button, an
// option or a one-line label, or wrapped text taller than its label.
std::vector<std::string> Clipped(QWidget& root) {
  std::vector<std::string> out;
  for (QWidget* w : root.findChildren<QWidget*>()) {
    if (!w->isVisibleTo(&root) || w->objectName().isEmpty()) continue;
    const QFontMetrics fm(w->font());
    if (auto* label = qobject_cast<QLabel*>(w)) {
      if (label->text().isEmpty()) continue;
      const QRect need = fm.boundingRect(QRect(0, 0, w->width(), 10000),
                                         int(label->alignment()) | (label->wordWrap() ? Qt::TextWordWrap : 0),
                                         label->text());
      if (need.width() > w->width() || need.height() > w->height())
        out.push_back(w->objectName().toStdString() + " \"" + label->text().toStdString() + "\"");
    } else if (auto* button = qobject_cast<QAbstractButton*>(w)) {
      QString text = button->text();
      text.remove('&');
      if (text.isEmpty()) continue;
      const int room = qobject_cast<QRadioButton*>(w) ? w->width() - 18 : w->width() - 6;
      if (fm.horizontalAdvance(text) > room)
        out.push_back(w->objectName().toStdString() + " \"" + text.toStdString() + "\"");
    } else if (auto* edit = qobject_cast<QLineEdit*>(w)) {
      if (fm.horizontalAdvance(edit->text()) > w->width() - 6)
        out.push_back(w->objectName().toStdString() + " \"" + edit->text().toStdString() + "\"");
    }
  }
  return out;
}

class ScreenTest : public ViewTest, public ::testing::WithParamInterface<Screen> {
 protected:
  ScreenTest() : ViewTest(GetParam().language == 2 ? "de_DE" : "en_US") {}

  void Check(const char* state) {
    QApplication::processEvents();
    const std::vector<std::string> clipped = Clipped(*view_);
    EXPECT_TRUE(clipped.empty()) << state << ": " << ::testing::PrintToString(clipped);
    const QPixmap shot = view_->grab();
    EXPECT_EQ(shot.deviceIndependentSize().toSize(), view_->size());
    const QString dir = qEnvironmentVariable("QUILLON_SCREENSHOT_DIR");
    if (!dir.isEmpty()) {
      QDir().mkpath(dir);
      shot.save(QDir(dir).filePath(QString("%1-%2.png").arg(state, GetParam().name)));
    }
  }
};

TEST_P(ScreenTest, EveryStateShowsItsCaptionsWhole) {
  OpenBlankTicket(GetParam().language);
  Show();
  Long account = 1;
  double equity = 250000, limit = 1000000;
  ticket_->ReceivedEquity(account, equity, limit);
  Check("blank");

  OpenOrderConfirmation();
  ASSERT_TRUE(f().fraConf.Visible());
  Check("confirmation");
  f().controls().userClick(f().cmdOKCancel(3));  // Yes: the order goes

  Execute(100000, 4711);
  ASSERT_TRUE(f().fraTradeConf.Visible());
  double after = 262500;
  ticket_->ReceivedEquity(account, after, limit);
  Check("trade");

  ShowQuote(GetParam().language);
  Show();
  ASSERT_TRUE(f().fraQuote.Visible());
  Check("quote");
}

INSTANTIATE_TEST_SUITE_P(Languages, ScreenTest,
                         ::testing::Values(Screen{"en", 1}, Screen{"de", 2}),
                         [](const auto& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace quillon::view
