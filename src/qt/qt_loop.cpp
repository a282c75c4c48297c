#include "qt/qt_loop.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QEvent>
#include <QPointer>
#include <QTimeZone>
#include <QTimer>
#include <algorithm>
#include <chrono>
#include <utility>
#include <vector>

#include "platform/date.h"
#include "platform/forms.h"

namespace quillon::view {

// The repaints a yield holds back. Each window asks for its repaint with one posted
// UpdateRequest and then waits for it, gathering every change; a yield that lets that request
// through paints the window in the middle of a road, and the road's next change asks again. So
// while a yield runs Qt's posted events the request is kept here instead, and the window is
// painted once, from a zero timer: when the host's loop next turns, or at the next yield that
// polls the system. Every change still reaches the screen; the road's intermediate states,
// which no one could see in the microseconds they stood, are not painted.
class QtMessageLoop::Repaints : public QObject {
 public:
  Repaints() {
    timer_.setSingleShot(true);
    timer_.setInterval(0);
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { paint(); });
  }
  // A window that still waits asks again, or it would wait for good.
  ~Repaints() override {
    for (const QPointer<QObject>& window : owed_)
      if (window)
        QCoreApplication::postEvent(window, new QEvent(QEvent::UpdateRequest), Qt::LowEventPriority);
  }

  // Runs Qt's posted events, keeping back the windows' repaint requests.
  void sendPostedEvents() {
    const bool outer = std::exchange(holding_, true);  // a yield may run inside another's
    QCoreApplication::sendPostedEvents();
    holding_ = outer;
  }

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (!holding_ || event->type() != QEvent::UpdateRequest || !watched->isWidgetType())
      return false;
    QPointer<QObject> window(watched);
    if (std::find(owed_.begin(), owed_.end(), window) == owed_.end()) owed_.push_back(window);
    if (!timer_.isActive()) timer_.start();
    return true;
  }

 private:
  // The requests kept back, delivered now.
  void paint() {
    // The timer may fire in a loop that runs inside a held yield (a modal dialog opened by a
    // posted event): the requests delivered here are let through all the same.
    const bool outer = std::exchange(holding_, false);
    std::vector<QPointer<QObject>> owed;
    owed.swap(owed_);
    for (const QPointer<QObject>& window : owed) {
      if (!window) continue;  // closed in the meantime
      QEvent request(QEvent::UpdateRequest);
      QCoreApplication::sendEvent(window, &request);
    }
    holding_ = outer;
  }

  bool holding_ = false;
  std::vector<QPointer<QObject>> owed_;
  QTimer timer_;
};

QtMessageLoop::QtMessageLoop() : owner_(std::make_unique<QObject>()) {}

QtMessageLoop::~QtMessageLoop() {
  timers_.clear();
  owner_.reset();  // also the timers stopped while they were firing
  repaints_.reset();
}

void QtMessageLoop::yield() {
  // A poll is a system call, a road yields many times within a millisecond, and the system
  // delivers nothing on a finer grain: timers, input and sockets wait at most kPollEvery, or
  // until the road is back in the host's loop.
  // Nothing after this call reads the ticket: a handler run here may have destroyed it.
  if (!QCoreApplication::instance()) return;  // no application, no events to run
  if (!repaints_) {
    repaints_ = std::make_unique<Repaints>();
    QCoreApplication::instance()->installEventFilter(repaints_.get());
  }
  const auto now = std::chrono::steady_clock::now();
  if (now - lastPoll_ >= kPollEvery) {
    lastPoll_ = now;
    QCoreApplication::processEvents(QEventLoop::AllEvents);
  } else {
    repaints_->sendPostedEvents();
  }
}

// The ticket asks for the time at every value date it tests. Working out the local time anew
// each time looks the zone up in the system (a file check at every call), so the offset is
// kept for as long as it holds, and the local time is the UTC clock plus the offset.
Date QtMessageLoop::now() const {
  const qint64 utcMs = QDateTime::currentMSecsSinceEpoch();
  if (utcMs < offsetFromMs_ || utcMs >= offsetUntilMs_) {
    const QDateTime local = QDateTime::fromMSecsSinceEpoch(utcMs);
    offsetMs_ = static_cast<qint64>(local.offsetFromUtc()) * 1000;
    offsetFromMs_ = utcMs;
    offsetUntilMs_ = utcMs + 60 * 1000;
    const QTimeZone::OffsetData next = QTimeZone::systemTimeZone().nextTransition(local);
    if (next.atUtc.isValid())
      offsetUntilMs_ = std::min(offsetUntilMs_, next.atUtc.toMSecsSinceEpoch());
  }
  // Whole days since 30 December 1899 (the Unix epoch is day 25569) and the time of day.
  constexpr qint64 kMsPerDay = 86400000;
  constexpr qint64 kUnixEpochDay = 25569;
  const qint64 localMs = utcMs + offsetMs_;
  qint64 day = localMs / kMsPerDay;
  if (localMs % kMsPerDay < 0) --day;
  return static_cast<double>(kUnixEpochDay + day) +
         static_cast<double>(localMs - day * kMsPerDay) / static_cast<double>(kMsPerDay);
}

void QtMessageLoop::startTimer(Timer& timer, Long intervalMs) {
  QTimer*& qtimer = timers_[&timer];
  if (!qtimer) {
    qtimer = new QTimer(owner_.get());
    qtimer->setTimerType(Qt::PreciseTimer);
    Timer* logical = &timer;
    QObject::connect(qtimer, &QTimer::timeout, qtimer, [logical] { logical->fire(); });
  }
  qtimer->start(std::max<Long>(intervalMs, 0));
}

void QtMessageLoop::stopTimer(Timer& timer) {
  auto it = timers_.find(&timer);
  if (it == timers_.end()) return;
  QTimer* qtimer = it->second;
  timers_.erase(it);
  qtimer->stop();
  qtimer->disconnect();
  // The timer may be the one firing right now (its handler closed the ticket): it goes when
  // control is back in the event loop, or with the loop.
  qtimer->deleteLater();
}

bool QtMessageLoop::isRunning(const Timer& timer) const {
  auto it = timers_.find(const_cast<Timer*>(&timer));
  return it != timers_.end() && it->second->isActive();
}

}  // namespace quillon::view
