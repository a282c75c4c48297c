#include "qt/qt_loop.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QTimer>
#include <algorithm>

#include "platform/date.h"
#include "platform/forms.h"

namespace quillon::view {

QtMessageLoop::QtMessageLoop() : owner_(std::make_unique<QObject>()) {}

QtMessageLoop::~QtMessageLoop() {
  timers_.clear();
  owner_.reset();  // also the timers stopped while they were firing
}

void QtMessageLoop::yield() {
  // Nothing after this call reads the ticket: a handler run here may have destroyed it.
  QCoreApplication::processEvents(QEventLoop::AllEvents);
}

Date QtMessageLoop::now() const {
  const QDateTime t = QDateTime::currentDateTime();
  const QDate d = t.date();
  return DateSerial(d.year(), d.month(), d.day()) +
         static_cast<double>(t.time().msecsSinceStartOfDay()) / 86400000.0;
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
