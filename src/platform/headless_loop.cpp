// The headless message loop: a virtual clock in whole milliseconds, timers ordered by due
// time, and a queue of posted work, all driven by the caller.

#include "platform/headless_loop.h"

#include <algorithm>
#include <cmath>

#include "platform/date.h"
#include "platform/forms.h"
#include "platform/runtime_error.h"

namespace quillon {
namespace {

constexpr double kMsPerDay = 86400000.0;
// The clock keeps to dates within this many days of day 0, far inside 64-bit milliseconds.
constexpr double kMaxDays = 1e8;
constexpr std::int64_t kMaxClockMs = static_cast<std::int64_t>(kMaxDays * kMsPerDay);
// Posted work that keeps posting more must not hang a turn of the loop: one outermost turn,
// with the yields nested in it, runs at most this much.
constexpr std::size_t kMaxWorkPerTurn = 10000;
// Work that yields inside work that yields: deeper yields only count.
constexpr int kMaxDepth = 8;

// The clock counts milliseconds along the time line, so that time passing moves a date before
// 1900 forward too.
std::int64_t ToMs(Date date) {
  if (!std::isfinite(date) || std::fabs(date) > kMaxDays)
    Raise(kInvalidProcedureCall, "the clock cannot show this date");
  return std::llround(LinearOf(date) * kMsPerDay);
}

class DepthGuard {
 public:
  explicit DepthGuard(int& depth) : depth_(depth) { ++depth_; }
  ~DepthGuard() { --depth_; }
  DepthGuard(const DepthGuard&) = delete;
  DepthGuard& operator=(const DepthGuard&) = delete;

 private:
  int& depth_;
};

}  // namespace

HeadlessLoop::HeadlessLoop(Date start) : clockMs_(ToMs(start)) {}

HeadlessLoop::~HeadlessLoop() = default;

Date HeadlessLoop::now() const { return DateOnLine(static_cast<double>(clockMs_) / kMsPerDay); }

void HeadlessLoop::startTimer(Timer& timer, Long intervalMs) {
  if (intervalMs <= 0) {
    stopTimer(timer);
    return;
  }
  timers_[&timer] = Running{clockMs_ + intervalMs, intervalMs, ++generation_};
}

void HeadlessLoop::stopTimer(Timer& timer) { timers_.erase(&timer); }

bool HeadlessLoop::isRunning(const Timer& timer) const {
  return timers_.count(const_cast<Timer*>(&timer)) != 0;
}

void HeadlessLoop::setClock(Date now) {
  std::int64_t next = ToMs(now);
  std::int64_t shift = next - clockMs_;
  for (auto& [timer, running] : timers_) running.due += shift;
  clockMs_ = next;
}

void HeadlessLoop::advance(std::int64_t ms) {
  if (ms < 0) Raise(kInvalidProcedureCall, "time cannot run backwards");
  if (ms > kMaxClockMs - clockMs_) Raise(kInvalidProcedureCall, "the clock cannot go so far");
  const std::int64_t target = clockMs_ + ms;
  while (fireNext(target, true)) {
  }
  // A handler that set the clock itself may have left it past the target.
  clockMs_ = std::max(clockMs_, target);
  runPending();
}

bool HeadlessLoop::fireNext(std::int64_t limit, bool moveClock) {
  auto next = timers_.end();
  for (auto it = timers_.begin(); it != timers_.end(); ++it) {
    const Running& r = it->second;
    if (r.due > limit) continue;
    if (next == timers_.end() || r.due < next->second.due ||
        (r.due == next->second.due && r.generation < next->second.generation)) {
      next = it;
    }
  }
  if (next == timers_.end()) return false;

  Timer* timer = next->first;
  Running& running = next->second;
  if (moveClock) clockMs_ = std::max(clockMs_, running.due);
  // The next expiry is set before the handler runs, so a handler that stops or restarts its
  // own timer has the last word. An overdue timer fires once, not once per missed interval.
  running.due += running.interval;
  if (running.due <= clockMs_) running.due = clockMs_ + running.interval;
  timer->fire();
  runPending();
  return true;
}

void HeadlessLoop::yield() {
  ++yields_;
  // Nothing posted and no timer running: the turn has nothing to run. (The count of work run
  // in a turn is only read by a turn that runs some, and that one sets it going.)
  if (posted_.empty() && timers_.empty()) return;
  if (depth_ >= kMaxDepth) return;
  if (depth_ == 0) workThisTurn_ = 0;
  DepthGuard guard(depth_);
  drain();
  while (fireNext(clockMs_, false)) {
  }
}

void HeadlessLoop::post(std::function<void()> work) {
  if (work) posted_.push_back(std::move(work));
}

void HeadlessLoop::runPending() {
  if (depth_ >= kMaxDepth) return;
  if (depth_ == 0) workThisTurn_ = 0;
  DepthGuard guard(depth_);
  drain();
}

void HeadlessLoop::drain() {
  while (workThisTurn_ < kMaxWorkPerTurn && !posted_.empty()) {
    ++workThisTurn_;
    std::function<void()> work = std::move(posted_.front());
    posted_.pop_front();
    work();
  }
}

}  // namespace quillon
