// The Qt message loop: timers on QTimer, a handler that ends its own form, and what a yield
// lets run: posted events at once, the system's timers soon, repaints once the road is back.

#include <gtest/gtest.h>

#include <QDateTime>
#include <QElapsedTimer>
#include <QLabel>
#include <QTest>
#include <QTimer>
#include <chrono>
#include <memory>

#include "platform/date.h"
#include "platform/forms.h"
#include "qt/qt_loop.h"

namespace quillon::view {
namespace {

TEST(QtMessageLoop, TimersStopRestartAndMayEndTheFormOfTheirOwnHandler) {
  QtMessageLoop loop;
  auto form = std::make_unique<Form>(loop);
  Timer& timer = form->create<Timer>("Timer1", -1, nullptr);
  int fired = 0;
  timer.onTimer = [&] { ++fired; };
  timer.setInterval(5);
  EXPECT_TRUE(QTest::qWaitFor([&] { return fired >= 3; }, 2000));
  timer.setTimerEnabled(false);  // stopped: nothing in a short wait
  const int atStop = fired;
  QTest::qWait(30);
  timer.setInterval(60000);  // a long interval: running, nothing within a short wait
  timer.setTimerEnabled(true);
  QTest::qWait(30);

  // A new interval restarts it; the ticket closes from inside its own timer, which fired once
  // since it stopped.
  timer.onTimer = [&] { ++fired, form.reset(); };
  timer.setInterval(1);
  EXPECT_TRUE(QTest::qWaitFor([&] { return form == nullptr; }, 2000));
  QTest::qWait(20);
  EXPECT_EQ(fired, atStop + 1);
}

// The local wall clock as a Date, worked out in full each time.
Date LocalNow() {
  const QDateTime t = QDateTime::currentDateTime();
  const QDate d = t.date();
  return DateSerial(d.year(), d.month(), d.day()) + t.time().msecsSinceStartOfDay() / 86400000.0;
}

TEST(QtMessageLoop, TheClockIsTheLocalWallClockInEveryZone) {
  const QByteArray zone = qgetenv("TZ");
  const bool hadZone = qEnvironmentVariableIsSet("TZ");
  // West and east of UTC, a half-hour offset, and UTC: the offset a loop keeps across its
  // calls is its zone's.
  for (const char* tz : {"EST5EDT,M3.2.0,M11.1.0", "IST-5:30", "UTC0"}) {
    qputenv("TZ", tz);
    QtMessageLoop loop;
    for (int i = 0; i < 3; ++i) {
      const Date before = LocalNow(), now = loop.now(), after = LocalNow();
      EXPECT_LE(before, now) << tz;
      EXPECT_LE(now, after) << tz;
    }
  }
  hadZone ? void(qputenv("TZ", zone)) : void(qunsetenv("TZ"));
}

TEST(QtMessageLoop, AYieldRunsPostedEventsAtOnceAndADueTimerWithinTheRoad) {
  QtMessageLoop loop;
  QObject target;
  int posted = 0;
  for (int i = 1; i <= 3; ++i) {  // every yield, however close to the last
    QMetaObject::invokeMethod(
        &target, [&] { ++posted; }, Qt::QueuedConnection);
    loop.yield();
    EXPECT_EQ(posted, i);
  }
  bool fired = false;  // a road that keeps yielding lets a timer of the host fire
  QTimer::singleShot(2, [&] { fired = true; });
  QElapsedTimer road;
  road.start();
  while (!fired && road.elapsed() < 2000) loop.yield();
  EXPECT_TRUE(fired);
}

// A label that counts its paints and remembers the text it last painted.
class PaintedLabel : public QLabel {
 public:
  using QLabel::QLabel;
  int paints = 0;
  QString painted;

 protected:
  void paintEvent(QPaintEvent* event) override {
    ++paints, painted = text();
    QLabel::paintEvent(event);
  }
};

TEST(QtMessageLoop, AWindowChangedInARoadIsPaintedOnceWithItsLastState) {
  QtMessageLoop loop;
  PaintedLabel label("1.2345");
  label.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&label));
  QCoreApplication::processEvents();
  loop.yield();  // polls: the road below runs within a poll interval of it
  const auto start = std::chrono::steady_clock::now();
  const int before = label.paints;
  for (const char* text : {"1.2346", "1.2347", "1.2348"}) label.setText(text), loop.yield();
  // Nothing painted half way, then one paint (unless the machine held the road up past a
  // poll, which paints what stands at that yield).
  const bool withinAPoll = std::chrono::steady_clock::now() - start < QtMessageLoop::kPollEvery;
  const int inRoad = label.paints;
  QCoreApplication::processEvents();  // the road is back in the host's loop
  EXPECT_TRUE(!withinAPoll || (inRoad == before && label.paints == before + 1))
      << before << " then " << inRoad << " then " << label.paints;
  EXPECT_EQ(label.painted.toStdString(), "1.2348");

  // A long road still paints, at the yields that poll the system; so does a loop run inside
  // a yield (a modal dialog opened by a posted event).
  const auto paintedWithin = [&](const char* text, auto turn) {
    label.setText(text);
    QElapsedTimer road;
    road.start();
    while (label.painted != text && road.elapsed() < 2000) turn();
    return label.painted.toStdString();
  };
  EXPECT_EQ(paintedWithin("1.2349", [&] { loop.yield(); }), "1.2349");
  loop.yield();
  std::string modal;
  QMetaObject::invokeMethod(
      &label, [&] { modal = paintedWithin("modal", [] { QCoreApplication::processEvents(); }); },
      Qt::QueuedConnection);
  loop.yield();
  EXPECT_EQ(modal, "modal");

  // A repaint held when the loop goes is done all the same; a window closed while its repaint
  // is held is simply not painted.
  auto doomed = std::make_unique<PaintedLabel>("x");
  doomed->show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(doomed.get()));
  {
    QtMessageLoop brief;
    brief.yield();
    label.setText("1.2350");
    brief.yield();
  }
  QCoreApplication::processEvents();
  EXPECT_EQ(label.painted.toStdString(), "1.2350");
  loop.yield();
  doomed->setText("y");
  loop.yield();
  doomed.reset();
  QCoreApplication::processEvents();
}

}  // namespace
}  // namespace quillon::view
