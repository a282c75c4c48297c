// Printing the trade confirmation: a PDF file, when no printer is used, holding its text.

#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <optional>

#include "qt/view_fixture.h"

namespace quillon::view {
namespace {

// The text of a PDF file; nothing where no extractor is installed.
std::optional<QString> PdfText(const QString& path) {
#ifdef QUILLON_PDFTOTEXT
  if (QFileInfo::exists(QStringLiteral(QUILLON_PDFTOTEXT))) {
    QProcess p;
    p.start(QStringLiteral(QUILLON_PDFTOTEXT), {QStringLiteral("-layout"), path, "-"});
    if (!p.waitForFinished(20000)) return QString();
    // Ligatures ("fi") come back as their letters.
    return QString::fromUtf8(p.readAllStandardOutput())
        .normalized(QString::NormalizationForm_KC)
        .simplified();
  }
#endif
  (void)path;
  return std::nullopt;
}

using PrinterTest = ViewTest;

TEST_F(PrinterTest, ThePrintButtonWritesTheConfirmationAsAPdf) {
  OpenBlankTicket();
  Show();
  std::vector<QString> written;
  printer_->onPdfWritten = [&](const QString& path) { written.push_back(path); };
  Execute(250000, 4711);
  ASSERT_TRUE(view_->widgetFor("fraTradeConf")->isVisible());
  QTest::mouseClick(widget<QWidget>("cmdOKCancel(6)"), Qt::LeftButton);

  ASSERT_EQ(written.size(), 1u);
  QFile pdf(written[0]);
  ASSERT_TRUE(pdf.open(QIODevice::ReadOnly));
  EXPECT_TRUE(pdf.read(5) == "%PDF-");
  const std::optional<QString> text = PdfText(written[0]);
  if (!text) GTEST_SKIP() << "pdftotext is not installed: the text goes unchecked";
  const std::string shown = text->toStdString();
  EXPECT_TRUE(text->contains("Trade ID: 4711")) << shown;
  EXPECT_TRUE(text->contains("Halden Bank confirms that you have bought 250,000.00 EUR vs USD"))
      << shown;
  EXPECT_FALSE(text->contains("<p>")) << shown;
}

}  // namespace
}  // namespace quillon::view
