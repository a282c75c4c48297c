// A real ticket on the recording host, shown by a TicketWidget on the offscreen platform.
#pragma once

#include <QApplication>
#include <QTemporaryDir>
#include <QTest>
#include <memory>

#include "qt/html_printer.h"
#include "qt/ticket_widget.h"
#include "ticket/ticket_fixture.h"

namespace quillon::view {

class ViewTest : public TicketTest {
 protected:
  explicit ViewTest(const std::string& locale = "en_US") : TicketTest(locale) { NewTicket(); }
  ~ViewTest() override {
    view_.reset();
    ticket_.reset();
  }

  // Account 1 "Main", a live user with every right, in the given language, and a blank
  // EUR/USD ticket for value 5-Mar-2002.
  void OpenBlankTicket(Integer language = 1) {
    SetUpUser(kEveryRight, language);
    OpenBlankForValue();
  }

  // A fresh ticket printing through the Qt printer; the view of the old one goes first.
  void NewTicket() {
    view_.reset();
    TicketServices services{&loop_, nullptr, printer_.get(), &locale_};
    ticket_ = std::make_unique<Clientticket>(services);
    ticket_->setHost(&host_);
  }

  // Shows the ticket in an active window, so that focus and keys reach it.
  void Show() {
    view_ = std::make_unique<TicketWidget>(*ticket_);
    view_->show();
    view_->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(view_.get()));
  }

  template <typename W>
  W* widget(const std::string& name) {
    auto* w = qobject_cast<W*>(view_->widgetFor(name));
    EXPECT_NE(w, nullptr) << name;
    return w;
  }

  // A new ticket with a two-way request out as order 55, then the dealer's quote for it.
  void ShowQuote(Integer language = 1) {
    NewTicket();
    SetUpUser(kEveryRight, language);
    OpenActiveTwoWay();  // a 30-second quote of 1.2345/50
    Call(&Clientticket::OrderGenericQuote, 0, 55, 1, kEurUsd, 100000.0, 0, 1.2345, 1.2350, 0,
         kNoDate + 30 / 86400.0, 0.0, 0.0, 16, 8, 9, 0, std::string(), 0, false, 4, 0, 0.0, 0.0);
  }

  QTemporaryDir pdfDir_;
  std::unique_ptr<QtHtmlPrinter> printer_ = std::make_unique<QtHtmlPrinter>(pdfDir_.path());
  std::unique_ptr<TicketWidget> view_;
};

}  // namespace quillon::view
