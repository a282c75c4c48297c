// The message loop of a Qt application: the yield lets Qt's pending events run, each timer
// control runs on a QTimer, the clock is the local wall clock.
#pragma once

#include <chrono>
#include <map>
#include <memory>

#include "platform/message_loop.h"

class QObject;
class QTimer;

namespace quillon::view {

class QtMessageLoop : public MessageLoop {
 public:
  QtMessageLoop();
  ~QtMessageLoop() override;

  // Lets Qt's pending events run. Qt's own queue of posted events runs at every call; the
  // system (timers, input, sockets) is polled with QCoreApplication::processEvents at most
  // once every kPollEvery. Windows repaint once the road that yields is back in the host's
  // loop, or at a yield that polls. A handler run from here may close and destroy the ticket
  // that yielded; the loop itself must outlive every ticket that uses it.
  void yield() override;
  Date now() const override;
  void startTimer(Timer& timer, Long intervalMs) override;
  void stopTimer(Timer& timer) override;

  // Whether a timer is running.
  bool isRunning(const Timer& timer) const;

  static constexpr std::chrono::microseconds kPollEvery{1000};

 private:
  class Repaints;
  std::unique_ptr<QObject> owner_;  // parent of every QTimer, stopped ones included
  std::map<Timer*, QTimer*> timers_;
  std::unique_ptr<Repaints> repaints_;
  std::chrono::steady_clock::time_point lastPoll_{};  // the last yield that polled the system
  // The local time's offset from UTC, and the span of UTC instants it holds for: up to the
  // zone's next transition, and a minute at the most (the system's zone may be changed).
  mutable long long offsetMs_ = 0;
  mutable long long offsetFromMs_ = 0;
  mutable long long offsetUntilMs_ = 0;  // nothing known yet
};

}  // namespace quillon::view
