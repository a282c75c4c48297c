// The message loop the ticket runs on: the yield, timers and the local clock.
#pragma once

#include "platform/types.h"

namespace quillon {

class Timer;

class MessageLoop {
 public:
  virtual ~MessageLoop() = default;

  // Lets pending events run (posted work, due timers) and returns.
  virtual void yield() = 0;
  // The local date and time.
  virtual Date now() const = 0;
  // (Re)starts a timer: it fires every intervalMs from now until stopped.
  virtual void startTimer(Timer& timer, Long intervalMs) = 0;
  virtual void stopTimer(Timer& timer) = 0;
};

}  // namespace quillon
