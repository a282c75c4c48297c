// The Qt message loop: timers on QTimer, a handler that ends its own form, and what a yield
// lets run: posted events at once, the system's timers soon, repaints once the road is back.

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QLabel>
#include <QTest>
#include <QTimer>
#include <chrono>
#include <memory>

#include "platform/forms.h"
#include "qt/qt_loop.h"

namespace quillon::view {
namespace {

TEST(QtMessageLoop, TimersFireUntilStoppedAndRestartOnANewInterval) {
  QtMessageLoop loop;
  Form form(loop);
  Timer& timer = form.create<Timer>("Timer1", -1, nullptr);
  int fired = 0;
  timer.onTimer = [&] { ++fired; };
  timer.setInterval(5);
  EXPECT_TRUE(QTest::qWaitFor([&] { return fired >= 3; }, 2000));
  timer.setTimerEnabled(false);
  EXPECT_FALSE(loop.isRunning(timer));
  const int atStop = fired;
  QTest::qWait(30);
  EXPECT_EQ(fired, atStop);
  timer.setInterval(60000);  // a long interval: running, nothing within a short wait
  timer.setTimerEnabled(true);
  QTest::qWait(30);
  EXPECT_EQ(fired, atStop);
  EXPECT_TRUE(loop.isRunning(timer));
}

TEST(QtMessageLoop, AHandlerMayDestroyTheFormOfItsOwnTimer) {
  QtMessageLoop loop;
  auto form = std::make_unique<Form>(loop);
  Timer& timer = form->create<Timer>("Timer1", -1, nullptr);
  int fired = 0;
  timer.onTimer = [&] {
    ++fired;
    form.reset();  // the ticket closed from inside its own timer
  };
  timer.setInterval(1);
  EXPECT_TRUE(QTest::qWaitFor([&] { return form == nullptr; }, 2000));
  QTest::qWait(20);
  EXPECT_EQ(fired, 1);
}

// A label that counts its paints and remembers the text it last painted.
class PaintedLabel : public QLabel {
 public:
  using QLabel::QLabel;
  int paints = 0;
  QString painted;

 protected:
  void paintEvent(QPaintEvent* event) override {
    ++paints;
    painted = text();
    QLabel::paintEvent(event);
  }
};

TEST(QtMessageLoop, AYieldRunsPostedEventsAtOnceAndADueTimerWithinTheRoad) {
  QtMessageLoop loop;
  QObject target;
  int posted = 0;
  for (int i = 0; i < 3; ++i) {
    QMetaObject::invokeMethod(&target, [&] { ++posted; }, Qt::QueuedConnection);
    loop.yield();
    EXPECT_EQ(posted, i + 1);  // every yield, however close to the last
  }

  // A road that keeps yielding lets a timer of the host fire before it returns.
  bool fired = false;
  QTimer::singleShot(2, [&] { fired = true; });
  QElapsedTimer road;
  road.start();
  while (!fired && road.elapsed() < 2000) loop.yield();
  EXPECT_TRUE(fired);
}

TEST(QtMessageLoop, AWindowChangedInARoadIsPaintedOnceWithItsLastState) {
  QtMessageLoop loop;
  PaintedLabel label("1.2345");
  label.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&label));
  QCoreApplication::processEvents();
  loop.yield();  // polls: the road below runs within a poll interval of it
  const auto start = std::chrono::steady_clock::now();
  const int before = label.paints;

  for (const char* text : {"1.2346", "1.2347", "1.2348"}) {
    label.setText(text);
    loop.yield();
  }
  // Nothing painted half way, then one paint (unless the machine held the road up past a
  // poll, which paints what stands at that yield).
  const bool withinAPoll = std::chrono::steady_clock::now() - start < QtMessageLoop::kPollEvery;
  if (withinAPoll) {
    EXPECT_EQ(label.paints, before);
  }
  QCoreApplication::processEvents();  // the road is back in the host's loop
  if (withinAPoll) {
    EXPECT_EQ(label.paints, before + 1);
  }
  EXPECT_EQ(label.painted.toStdString(), "1.2348");

  // A long road still paints, at the yields that poll the system.
  label.setText("1.2349");
  QElapsedTimer road;
  road.start();
  while (label.painted != "1.2349" && road.elapsed() < 2000) loop.yield();
  EXPECT_EQ(label.painted.toStdString(), "1.2349");

  // A loop run inside a yield (a modal dialog opened by a posted event) paints as it turns.
  loop.yield();
  QMetaObject::invokeMethod(
      &label,
      [&] {
        label.setText("modal");
        QElapsedTimer open;
        open.start();
        while (label.painted != "modal" && open.elapsed() < 2000) QCoreApplication::processEvents();
      },
      Qt::QueuedConnection);
  loop.yield();
  EXPECT_EQ(label.painted.toStdString(), "modal");

  // A window whose repaint waits when the loop goes is painted all the same.
  {
    QtMessageLoop brief;
    brief.yield();
    label.setText("1.2350");
    brief.yield();
  }
  QCoreApplication::processEvents();
  EXPECT_EQ(label.painted.toStdString(), "1.2350");

  // A window closed while its repaint waits is simply not painted.
  auto doomed = std::make_unique<PaintedLabel>("x");
  doomed->show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(doomed.get()));
  QCoreApplication::processEvents();
  loop.yield();
  doomed->setText("y");
  loop.yield();
  doomed.reset();
  QCoreApplication::processEvents();
}

}  // namespace
}  // namespace quillon::view
