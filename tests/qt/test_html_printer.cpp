// Printing the trade confirmation: a PDF file when no printer is used, holding the document's
// text on the colours the ticket gives.

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QProcess>
#include <QPushButton>

#include "qt/view_fixture.h"

namespace quillon::view {
namespace {

// The text of a PDF file, or an empty string where no extractor is installed.
QString PdfText(const QString& path) {
#ifdef QUILLON_PDFTOTEXT
  QProcess p;
  p.start(QStringLiteral(QUILLON_PDFTOTEXT), {QStringLiteral("-layout"), path, QStringLiteral("-")});
  if (!p.waitForFinished(20000)) return {};
  // Ligatures ("fi") come back as their letters.
  return QString::fromUtf8(p.readAllStandardOutput()).normalized(QString::NormalizationForm_KC).simplified();
#else
  (void)path;
  return {};
#endif
}

bool HaveExtractor() {
#ifdef QUILLON_PDFTOTEXT
  return QFileInfo::exists(QStringLiteral(QUILLON_PDFTOTEXT));
#else
  return false;
#endif
}

class PrinterTest : public ViewTest {};

TEST_F(PrinterTest, ThePrintButtonWritesTheConfirmationAsAPdf) {
  OpenBlankTicket();
  Show();
  std::vector<QString> written;
  printer_->onPdfWritten = [&](const QString& path) { written.push_back(path); };
  Execute(250000, 4711);
  ASSERT_TRUE(view_->widgetFor("fraTradeConf")->isVisible());
  auto* print = qobject_cast<QPushButton*>(view_->widgetFor("cmdOKCancel(6)"));
  ASSERT_NE(print, nullptr);
  QTest::mouseClick(print, Qt::LeftButton);

  ASSERT_EQ(written.size(), 1u);
  EXPECT_EQ(written[0], QDir(pdfDir_.path()).filePath("confirmation-1.pdf"));
  QFile pdf(written[0]);
  ASSERT_TRUE(pdf.open(QIODevice::ReadOnly));
  EXPECT_TRUE(pdf.read(5) == "%PDF-");
  EXPECT_GT(pdf.size(), 1000);
  if (!HaveExtractor()) GTEST_SKIP() << "pdftotext is not installed: the text goes unchecked";
  const QString text = PdfText(written[0]);
  EXPECT_TRUE(text.contains("Trade Confirmation")) << text.toStdString();
  EXPECT_TRUE(text.contains("Trade ID: 4711")) << text.toStdString();
  EXPECT_TRUE(text.contains("Halden Bank confirms that you have bought 250,000.00 EUR vs USD"))
      << text.toStdString();
  EXPECT_FALSE(text.contains("<p>")) << text.toStdString();
}

TEST_F(PrinterTest, FilesAreNumberedAndNeverOverwritten) {
  QtHtmlPrinter printer(pdfDir_.path() + "/sub/folder");  // made when missing
  std::vector<QString> written;
  printer.onPdfWritten = [&](const QString& path) { written.push_back(QFileInfo(path).fileName()); };
  QDir().mkpath(pdfDir_.path() + "/sub/folder");
  QFile existing(pdfDir_.path() + "/sub/folder/confirmation-2.pdf");
  ASSERT_TRUE(existing.open(QIODevice::WriteOnly));
  existing.write("someone else's");
  existing.close();

  printer.print("<html><body><p>One</p></body></html>", 0x00FFFFFF, 0);
  printer.print("<html><body><p>Two</p></body></html>", 0x00FFFFFF, 0);
  EXPECT_EQ(written, (std::vector<QString>{"confirmation-1.pdf", "confirmation-3.pdf"}));
  ASSERT_TRUE(existing.open(QIODevice::ReadOnly));
  EXPECT_EQ(existing.readAll(), "someone else's");

  // A folder that cannot be made: nothing written, nothing thrown.
  QFile blocker(pdfDir_.path() + "/file");
  ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
  blocker.close();
  printer.setPdfFolder(pdfDir_.path() + "/file/below");
  printer.print("<p>x</p>", 0x00FFFFFF, 0);
  EXPECT_EQ(written.size(), 2u);
}

TEST_F(PrinterTest, ThePageTakesTheColoursGiven) {
#ifndef QUILLON_PDFTOTEXT
  GTEST_SKIP() << "poppler-utils are not installed";
#else
  const QString renderer = QFileInfo(QStringLiteral(QUILLON_PDFTOTEXT)).dir().filePath("pdftoppm");
  if (!QFileInfo::exists(renderer)) GTEST_SKIP() << "pdftoppm is not installed";
  QString path;
  printer_->onPdfWritten = [&](const QString& p) { path = p; };
  // Yellow paper, blue text.
  printer_->print("<html><body><p>" + std::string(400, 'M') + "</p></body></html>", 0x0000FFFF,
                  0x00FF0000);
  ASSERT_FALSE(path.isEmpty());
  QProcess p;
  const QString png = pdfDir_.path() + "/page";
  p.start(renderer, {"-png", "-r", "60", "-singlefile", path, png});
  ASSERT_TRUE(p.waitForFinished(20000));
  QImage page(png + ".png");
  ASSERT_FALSE(page.isNull());
  int yellow = 0, blue = 0;
  for (int y = 0; y < page.height(); ++y)
    for (int x = 0; x < page.width(); ++x) {
      const QColor c = page.pixelColor(x, y);
      if (c.red() > 200 && c.green() > 200 && c.blue() < 60) ++yellow;
      if (c.blue() > c.red() + 80 && c.blue() > c.green() + 80) ++blue;
    }
  EXPECT_GT(yellow, page.width() * page.height() / 4);
  EXPECT_GT(blue, 10);
#endif
}

}  // namespace
}  // namespace quillon::view
