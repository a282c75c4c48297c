// The message loop of a Qt application: the yield lets Qt's pending events run, each timer
// control runs on a QTimer, the clock is the local wall clock.
#pragma once

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

  // QCoreApplication::processEvents. A handler run from here may close and destroy the
  // ticket that yielded; the loop itself must outlive every ticket that uses it.
  void yield() override;
  Date now() const override;
  void startTimer(Timer& timer, Long intervalMs) override;
  void stopTimer(Timer& timer) override;

  // Whether a timer is running.
  bool isRunning(const Timer& timer) const;

 private:
  std::unique_ptr<QObject> owner_;  // parent of every QTimer, stopped ones included
  std::map<Timer*, QTimer*> timers_;
};

}  // namespace quillon::view
