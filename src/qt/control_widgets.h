// The widgets that stand for the ticket's controls where Qt has no ready one that keeps to the
// forms layer's rules: a text box that never edits itself, an option button that never checks
// itself, frames, lines and a spinner. Private to the view.
#pragma once

#include <QCalendarWidget>
#include <QLineEdit>
#include <QRadioButton>
#include <QWidget>

#include "platform/forms.h"

class QToolButton;

namespace quillon::view {

// What the control widgets share with their ticket view.
struct ViewLink {
  Form* form = nullptr;  // the form followed; null once the view is detached
  int showing = 0;       // above 0 while the view shows a logical change
};

// A frame: its background, and with a border an etched box with the caption in its top edge.
class FrameWidget : public QWidget {
 public:
  FrameWidget(bool border, QWidget* parent);
  void setCaption(const QString& caption);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  bool border_;
  QString caption_;
};

// A line between two points of its container, painted in one colour.
class LineWidget : public QWidget {
 public:
  LineWidget(QPoint from, QPoint to, QColor colour, QWidget* parent);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QPoint from_, to_;  // in the container's coordinates
  QColor colour_;
};

// A text box: every key goes to the form as the user's key stroke; the text and the caret
// shown are always the logical box's.
class TextBoxWidget : public QLineEdit {
 public:
  TextBoxWidget(TextBox& box, ViewLink& link, QWidget* parent);
  // Shows the logical text and selection.
  void showText();
  void showSelection();

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void inputMethodEvent(QInputMethodEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;

 private:
  void type(const QString& text);
  // Takes the selection out of the text with no key stroke (Delete, Cut).
  void removeSelection(bool orNextCharacter);
  void moveCaret(int key, bool extend);
  // Selects from `anchor` to `caret` in the logical box, and shows it.
  void select(long anchor, long caret);
  // The selection made with the mouse goes to the logical box.
  void pushSelection();

  TextBox& box_;
  ViewLink& link_;
  long anchor_ = 0;  // the fixed end of a selection made with the keyboard or the mouse
  bool focusedByMouse_ = false;  // the press that brought the focus has yet to arrive
};

// An option button whose checked state only the logical button decides.
class OptionWidget : public QRadioButton {
 public:
  using QRadioButton::QRadioButton;

 protected:
  void nextCheckState() override {}
};

// A spinner: an up and a down arrow, each click a step for the logical up-down.
class SpinnerWidget : public QWidget {
 public:
  SpinnerWidget(UpDown& spinner, ViewLink& link, QWidget* parent);
  QToolButton* upButton() const { return up_; }
  QToolButton* downButton() const { return down_; }

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  QToolButton* up_;
  QToolButton* down_;
};

}  // namespace quillon::view
