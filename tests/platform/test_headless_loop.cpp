// The headless loop: the virtual clock, timer order, handlers that stop or restart their own
// timer, posted work and the yield.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "platform/error_of.h"
#include "platform/forms.h"
#include "platform/headless_loop.h"

namespace quillon {
namespace {

using Log = std::vector<std::string>;

// A loop that starts at day 0 and a form with three timers whose handlers log the time in ms.
class HeadlessLoopTest : public ::testing::Test {
 protected:
  HeadlessLoopTest() {
    for (Timer* t : {&a, &b, &c}) t->onTimer = [this, t] { note(t->name()); };
  }

  void note(const std::string& what) {
    log.push_back(what + "@" + std::to_string(std::llround(loop.now() * 86400000.0)));
  }
  Log take() { return std::exchange(log, {}); }

  HeadlessLoop loop{0.0};
  Form form{loop};
  Timer& a = form.create<Timer>("a", -1, nullptr);
  Timer& b = form.create<Timer>("b", -1, nullptr);
  Timer& c = form.create<Timer>("c", -1, nullptr);
  Log log;
};

TEST_F(HeadlessLoopTest, ClockStartsWhereToldAndKeepsTimersRelative) {
  a.setInterval(1000);
  loop.advance(400);
  loop.setClock(1.5);  // noon of day 1: the timer still has 600 ms to go
  loop.advance(599);
  EXPECT_EQ(take(), Log{});
  loop.advance(1);
  EXPECT_EQ(take(), Log{"a@129600600"});

  EXPECT_EQ(ErrorOf([&] { loop.advance(-1); }), kInvalidProcedureCall);
  EXPECT_EQ(ErrorOf([&] { loop.advance(INT64_MAX); }), kInvalidProcedureCall);
  EXPECT_EQ(ErrorOf([&] { loop.setClock(NAN); }), kInvalidProcedureCall);
  EXPECT_DOUBLE_EQ(loop.now(), 1.5 + 600.0 / 86400000.0);

  // Before day 0 time still runs forward: 29 Dec 1899 06:00 (-1.25), six hours on, is noon
  // (-1.5), and twelve more is midnight of 30 Dec (0).
  a.setEnabled(false);
  loop.setClock(-1.25);
  loop.advance(6 * 3600000);
  EXPECT_DOUBLE_EQ(loop.now(), -1.5);
  loop.advance(12 * 3600000);
  EXPECT_DOUBLE_EQ(loop.now(), 0.0);
}

TEST_F(HeadlessLoopTest, TimersFireInDueOrderAndAHandlerStoppingItsOwnTimerHasTheLastWord) {
  // a stops itself at the first tick; b restarts with a longer interval; c switches off and
  // on and keeps running. Ties go to the timer started first.
  a.onTimer = [this] { note("a"); a.setTimerEnabled(false); };
  b.onTimer = [this] { note("b"); b.setInterval(250); };
  int cTicks = 0;
  c.onTimer = [&] {
    note("c");
    if (++cTicks > 1) return;
    loop.advance(0);  // a nested turn changes nothing
    c.setTimerEnabled(false);
    c.setTimerEnabled(true);
  };
  b.setInterval(100);
  a.setInterval(100);
  c.setInterval(150);
  loop.advance(700);
  EXPECT_EQ(take(), (Log{"b@100", "a@100", "c@150", "c@300", "b@350", "c@450", "b@600", "c@600"}));
}

TEST_F(HeadlessLoopTest, PostedWorkRunsAfterEachTickAndAtEveryYield) {
  a.onTimer = [this] { note("a"); loop.post([this] { note("after a"); }); };
  a.setInterval(100);
  loop.advance(200);
  EXPECT_EQ(take(), (Log{"a@100", "after a@100", "a@200", "after a@200"}));

  // A yield runs the queue, work posted by work included, and counts.
  loop.post([this] { log.push_back("one"); loop.post([this] { log.push_back("two"); }); });
  loop.yield();
  EXPECT_EQ(loop.yieldCount(), 1u);
  EXPECT_EQ(take(), (Log{"one", "two"}));

  // A timer due at the same moment fires inside a handler that yields, and only then.
  a.setTimerEnabled(false);
  b.onTimer = [this] { log.push_back("b in"); loop.yield(); log.push_back("b out"); };
  b.setInterval(100);
  c.setInterval(100);
  loop.advance(100);
  EXPECT_EQ(take(), (Log{"b in", "c@300", "b out"}));
}

TEST_F(HeadlessLoopTest, WorkThatKeepsPostingOrYieldingDoesNotHang) {
  // Work that posts more and yields inside itself: the nesting stops at a fixed depth and
  // the whole turn at a bound.
  bool repost = true;
  int runs = 0, deepest = 0, depth = 0;
  std::function<void()> nested = [&] {
    ++runs;
    deepest = std::max(deepest, ++depth);
    if (repost) loop.post(nested);
    loop.yield();
    --depth;
  };
  loop.post(nested);
  loop.yield();
  EXPECT_EQ(deepest, 8);
  EXPECT_EQ(runs, 10000);
  EXPECT_TRUE(loop.hasPending()) << "what is left waits for the next turn";
  repost = false;
  loop.runPending();
  EXPECT_FALSE(loop.hasPending());
}

}  // namespace
}  // namespace quillon
