// A ticket that its host destroys while the ticket is still running: inside an event, or
// inside a yield (work the host posted to the loop), or in anything those reach.
//
// The ticket and the calls running in it share one TicketLife, which outlives both. The
// destructor marks it. After every event and every yield the ticket looks; when it is gone it
// throws ObjectDestroyed, which unwinds the ticket's procedures without touching them
// (resume-next and stop-and-report let it through) to the frame where the ticket was entered
// from outside: a public method the host called, or a form handler the platform ran for a
// user's action or a timer. There the call ends quietly. Where the ticket entered itself (a
// message method calling Initialise, a handler run by the ticket's own write to a control)
// the unwinding goes on to the outer entry.
#pragma once

#include <memory>
#include <utility>

#include "platform/runtime_error.h"

namespace quillon {

struct TicketLife {
  bool destroyed = false;
  bool inTicket = false;  // the innermost running code is the ticket's own, not the host's
  int entries = 0;        // entries running, each holding the life
  // What the calls still running need once the ticket is gone: the loop a ticket made for
  // itself, which a yield may be running when its host destroys the ticket.
  std::shared_ptr<void> keep;

  // Ends the ticket's procedure when the ticket is gone.
  void check() const {
    if (destroyed) throw ObjectDestroyed{};
  }
};

// An entry into the ticket, for as long as the call runs. The outermost entry holds the life;
// one inside it (a handler the ticket's own write runs, a call the host makes from an event)
// ends before it does and needs no hold of its own, which would be a pair of atomic
// operations.
class TicketEntry {
 public:
  explicit TicketEntry(const std::shared_ptr<TicketLife>& life)
      : hold_(life->entries > 0 ? nullptr : life),
        life_(life.get()),
        fromTicket_(life_->inTicket) {
    life_->inTicket = true;
    ++life_->entries;
  }
  ~TicketEntry() {
    life_->inTicket = fromTicket_;
    --life_->entries;
  }
  TicketEntry(const TicketEntry&) = delete;
  TicketEntry& operator=(const TicketEntry&) = delete;

  // In a handler of ObjectDestroyed: the unwinding goes on when the ticket entered itself,
  // otherwise the call ends here. `this` of the ticket is not to be touched after either.
  void ended() const {
    if (fromTicket_) throw;
  }

  // Runs a stop-and-report procedure's report, from its catch block. The host's ErrorMsg
  // handler may destroy the ticket: then the answer is false and the caller returns at once
  // (or, where the ticket entered itself, the unwinding goes on).
  template <typename Report>
  bool report(Report&& report) const {
    try {
      report();
      return true;
    } catch (const ObjectDestroyed&) {
      ended();
      return false;
    }
  }

 private:
  std::shared_ptr<TicketLife> hold_;
  TicketLife* life_;
  bool fromTicket_;
};

// The host's code running inside the ticket's call: an event handler, a yield's work.
class HostTurn {
 public:
  explicit HostTurn(TicketLife& life) : life_(life), was_(life.inTicket) { life_.inTicket = false; }
  ~HostTurn() { life_.inTicket = was_; }
  HostTurn(const HostTurn&) = delete;
  HostTurn& operator=(const HostTurn&) = delete;

 private:
  TicketLife& life_;
  bool was_;
};

}  // namespace quillon
