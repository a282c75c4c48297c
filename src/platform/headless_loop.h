// A message loop with a virtual clock, driven by tests and the script host.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <map>

#include "platform/message_loop.h"

namespace quillon {

class HeadlessLoop : public MessageLoop {
 public:
  // The clock starts at the given local time (default 2001-03-01 10:00:00, a Thursday).
  explicit HeadlessLoop(Date start = 36951.0 + 10.0 / 24.0);
  ~HeadlessLoop() override;

  void yield() override;
  Date now() const override;
  void startTimer(Timer& timer, Long intervalMs) override;
  void stopTimer(Timer& timer) override;

  // Sets the local clock; running timers keep their due times relative to the new time.
  void setClock(Date now);
  // Time passes: the clock moves, due timers fire in order of their due time, each firing a
  // turn of the loop of its own with posted work run after it.
  void advance(std::int64_t ms);
  // Queues work for the next turn of the loop (the next yield or runPending).
  void post(std::function<void()> work);
  // Runs the posted work now, including work posted while it runs (bounded).
  void runPending();
  bool hasPending() const { return !posted_.empty(); }
  // Number of yields so far: lets tests see where the ticket gives up control.
  std::uint64_t yieldCount() const { return yields_; }
  // Whether a timer is running, and its interval.
  bool isRunning(const Timer& timer) const;

 private:
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
  int depth_ = 0;
};

}  // namespace quillon
