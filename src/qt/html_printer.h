// Printing of the trade confirmation: the HTML document laid out by QTextDocument and sent
// to a QPrinter, on the colours the ticket gives. With a printer set up and dialogs allowed,
// the system's print dialog; otherwise a PDF file in a folder the host chooses.
#pragma once

#include <QString>
#include <functional>

#include "platform/printer.h"

class QWidget;

namespace quillon::view {

class QtHtmlPrinter : public HtmlPrinter {
 public:
  // `pdfFolder` receives "confirmation-<n>.pdf" files when no printer is used.
  explicit QtHtmlPrinter(QString pdfFolder, QWidget* dialogParent = nullptr);

  // False (the default when the platform is offscreen): never a dialog, always a PDF file.
  void setUseDialog(bool useDialog) { useDialog_ = useDialog; }
  const QString& pdfFolder() const { return pdfFolder_; }
  void setPdfFolder(QString folder) { pdfFolder_ = std::move(folder); }

  // Told the path of each PDF file written.
  std::function<void(const QString& path)> onPdfWritten;

  void print(const std::string& html, Long backColor, Long foreColor) override;

 private:
  QString pdfFolder_;
  QWidget* dialogParent_;
  bool useDialog_;
  int count_ = 0;
};

}  // namespace quillon::view
