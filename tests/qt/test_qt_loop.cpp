// The Qt message loop: timers on QTimer, the yield, the wall clock.

#include <gtest/gtest.h>

#include <QDateTime>
#include <QTest>
#include <QTimer>
#include <cmath>
#include <memory>

#include "platform/date.h"
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
  EXPECT_TRUE(loop.isRunning(timer));
  EXPECT_TRUE(QTest::qWaitFor([&] { return fired >= 3; }, 2000));

  timer.setTimerEnabled(false);
  EXPECT_FALSE(loop.isRunning(timer));
  const int atStop = fired;
  QTest::qWait(30);
  EXPECT_EQ(fired, atStop);

  // A long interval: nothing within a short wait.
  timer.setInterval(60000);
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

TEST(QtMessageLoop, YieldRunsPendingEventsAndTheClockIsTheWallClock) {
  QtMessageLoop loop;
  bool ran = false;
  QTimer::singleShot(0, [&] { ran = true; });
  loop.yield();
  EXPECT_TRUE(ran);

  const QDateTime wall = QDateTime::currentDateTime();
  const Date now = loop.now();
  const DateParts parts = PartsOf(now);
  EXPECT_EQ(parts.year, wall.date().year());
  EXPECT_EQ(parts.month, wall.date().month());
  EXPECT_EQ(parts.day, wall.date().day());
  const double wallSeconds = wall.time().msecsSinceStartOfDay() / 1000.0;
  const double loopSeconds = (now - std::floor(now)) * 86400.0;
  EXPECT_NEAR(loopSeconds, wallSeconds, 2.0);
}

}  // namespace
}  // namespace quillon::view
