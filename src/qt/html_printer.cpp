#include "qt/html_printer.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <QTextDocument>
#include <QTextFrame>
#include <QTextFrameFormat>

#include "qt/qt_convert.h"

namespace quillon::view {
namespace {

bool HeadlessPlatform() {
  const QString name = QGuiApplication::platformName();
  return name == QLatin1String("offscreen") || name == QLatin1String("minimal");
}

// The document on the ticket's colours: the text colour through the style sheet, so that it
// holds for every paragraph, and the page through the root frame.
void Lay(QTextDocument& doc, const std::string& html, Long backColor, Long foreColor) {
  const QPalette palette = QGuiApplication::palette();
  const QColor back = ToQColor(backColor, palette);
  const QColor fore = ToQColor(foreColor, palette);
  doc.setDefaultStyleSheet(QStringLiteral("body, p { color: %1; }").arg(fore.name()));
  doc.setHtml(ToQString(html));
  QTextFrameFormat root = doc.rootFrame()->frameFormat();
  root.setBackground(back);
  doc.rootFrame()->setFrameFormat(root);
}

}  // namespace

QtHtmlPrinter::QtHtmlPrinter(QString pdfFolder, QWidget* dialogParent)
    : pdfFolder_(std::move(pdfFolder)), dialogParent_(dialogParent),
      useDialog_(!HeadlessPlatform()) {}

void QtHtmlPrinter::print(const std::string& html, Long backColor, Long foreColor) {
  QTextDocument doc;
  Lay(doc, html, backColor, foreColor);

  if (useDialog_ && !QPrinterInfo::availablePrinters().isEmpty()) {
    QPrinter printer(QPrinter::HighResolution);
    QPrintDialog dialog(&printer, dialogParent_);
    dialog.setWindowTitle(QStringLiteral("Print Trade Confirmation"));
    if (dialog.exec() == QDialog::Accepted) doc.print(&printer);
    return;
  }

  QDir folder(pdfFolder_.isEmpty() ? QDir::currentPath() : pdfFolder_);
  if (!folder.exists() && !folder.mkpath(QStringLiteral("."))) return;
  // Earlier confirmations in the folder, from this printer or another, are kept.
  QString path;
  do {
    path = folder.filePath(QStringLiteral("confirmation-%1.pdf").arg(++count_));
  } while (QFileInfo::exists(path));

  QPrinter printer(QPrinter::HighResolution);
  printer.setOutputFormat(QPrinter::PdfFormat);
  printer.setOutputFileName(path);
  printer.setDocName(QStringLiteral("Trade Confirmation"));
  doc.print(&printer);
  if (QFileInfo(path).size() > 0 && onPdfWritten) onPdfWritten(path);
}

}  // namespace quillon::view
