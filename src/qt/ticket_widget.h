// The Qt view of one ticket: a real widget for every control of the ticket's form, placed at
// its geometry, following the logical controls through the form's change signal, and handing
// the user's input to the form as the platform's user events. It decides no business rule.
#pragma once

#include <QWidget>
#include <memory>
#include <string>

namespace quillon {
class Clientticket;
class Control;
}  // namespace quillon

namespace quillon::view {

class TicketWidget : public QWidget {
  Q_OBJECT
 public:
  // The ticket must outlive the widget, or be destroyed only after detach().
  explicit TicketWidget(Clientticket& ticket, QWidget* parent = nullptr);
  ~TicketWidget() override;

  // Stops following the ticket (call before destroying a ticket the widget still shows).
  void detach();

  // The widget that shows a control, by its full name ("cmdOKCancel(3)", "txtPrimQty");
  // nullptr when the form has no such control or it has no widget of its own (a timer).
  QWidget* widgetFor(const std::string& fullName) const;

  // Twips to device-independent pixels at this screen's resolution.
  int toPixels(double twips) const;

  QSize sizeHint() const override;

  struct Impl;  // the controls' widgets and the plumbing between them and the form

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  std::unique_ptr<Impl> d_;
};

}  // namespace quillon::view
