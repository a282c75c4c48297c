// A message loop with a virtual clock, driven by tests and the script host.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>

#include "platform/message_loop.h"

namespace quillon {

class HeadlessLoop : public MessageLoop {
 public:
  // The clock starts at the given local time (default 2001-03-01 10:00:00, a Thursday).
  // Timers must not outlive the loop they run on. A time that is not a finite date raises
  // "Invalid procedure call", here and in setClock.
  explicit HeadlessLoop(Date start = 36951.0 + 10.0 / 24.0);
  ~HeadlessLoop() override;

  // Runs the posted work and fires the timers already due; deep nesting only counts.
  void yield() override;
  Date now() const override;
  void startTimer(Timer& timer, Long intervalMs) override;
  void stopTimer(Timer& timer) override;

  // Sets the local clock; running timers keep their due times relative to the new time.
  void setClock(Date now);
  // Time passes: the clock moves, due timers fire in order of their due time (the one started
  // first on a tie), each firing a turn of the loop of its own with posted work run after it.
  // A negative time raises "Invalid procedure call".
  void advance(std::int64_t ms);
  // Queues work for the next turn of the loop (the next yield or runPending).
  void post(std::function<void()> work);
  // Runs the posted work now, including work posted while it runs (at most 10000 items in one
  // outermost turn, nested yields included).
  void runPending();
  bool hasPending() const { return !posted_.empty(); }
  // Number of yields so far: lets tests see where the ticket gives up control.
  std::uint64_t yieldCount() const { return yields_; }
  // Whether a timer is running, and its interval.
  bool isRunning(const Timer& timer) const;

 private:
  // Fires the earliest timer due at or before `limit` and runs the posted work after it;
  // false when none is due. `moveClock` sets the clock to the timer's due time first.
  bool fireNext(std::int64_t limit, bool moveClock);
  void drain();

  struct Running {
    std::int64_t due;
    std::int64_t interval;
    std::uint64_t generation;
  };
  std::int64_t clockMs_;  // milliseconds since day 0
  std::map<Timer*, Running> timers_;
  std::uint64_t generation_ = 0;
  std::deque<std::function<void()>> posted_;
  std::uint64_t yields_ = 0;
  int depth_ = 0;                 // nesting of yields and runs of posted work
  std::size_t workThisTurn_ = 0;  // posted work run since the outermost yield or run began
};

}  // namespace quillon
