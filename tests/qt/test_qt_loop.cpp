// The Qt message loop: timers on QTimer, and a handler that ends its own form.

#include <gtest/gtest.h>

#include <QTest>
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

}  // namespace
}  // namespace quillon::view
