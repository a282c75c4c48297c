// The demo trading host: instrument master, price feed, dealing desk and accounts behind any
// number of tickets. Each ticket gets a listener of its own that records every event in the
// event log (beside the host's own calls that carry the desk's answers) and routes it to the
// desk; the desk's answers reach the tickets on the host's
// next step(), never inside an event.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "dealing_desk.h"
#include "event_log.h"
#include "holidays/bank_holidays.h"
#include "instrument_book.h"
#include "platform/locale.h"
#include "platform/message_loop.h"
#include "platform/printer.h"
#include "price_feed.h"
#include "ticket/ticket_model.h"

namespace quillon::demo {

// Wraps the application's message loop and knows whether a yield is in progress, so that the
// host never steps (or destroys a ticket) in the middle of a ticket's procedure.
class GuardedLoop : public MessageLoop {
 public:
  explicit GuardedLoop(MessageLoop& inner) : inner_(inner) {}
  void yield() override;
  Date now() const override { return inner_.now(); }
  void startTimer(Timer& timer, Long intervalMs) override { inner_.startTimer(timer, intervalMs); }
  void stopTimer(Timer& timer) override { inner_.stopTimer(timer); }
  int yieldDepth() const { return depth_; }

 private:
  MessageLoop& inner_;
  int depth_ = 0;
};

struct TicketOptions {
  Long instrumentID = ids::kEURUSD;
  Long accountID = 0;  // 0: the first account
  Integer language = 1;  // 1 English, 2 German
  bool showValueDateButton = false;
};

// The demo's company: the bank's counterparty number and its price request group.
constexpr Long kCompanyCtrPty = 1;
constexpr Long kPriceRequestGroup = 800;

class DemoHost {
 public:
  // Prices start from `seed`; the clock is the loop's. `printer` prints trade confirmations
  // (nullptr: they are dropped). Two accounts are set up: 1 live, 2 dummy. Every ticket writes
  // its numbers and dates in `locale`; without one, a German ticket in German (de_DE) and an
  // English one in English (en_US), as a user who reads the ticket in German would expect.
  DemoHost(MessageLoop& loop, HtmlPrinter* printer = nullptr, std::uint64_t seed = 2001,
           const Locale* locale = nullptr);
  ~DemoHost();
  DemoHost(const DemoHost&) = delete;
  DemoHost& operator=(const DemoHost&) = delete;

  // Creates and opens a blank ticket; its number (from 1), or 0 for an unknown instrument
  // or account.
  int openTicket(const TicketOptions& options);
  Clientticket* ticket(int id) const;
  std::vector<int> ticketIds() const;
  // Destroys a ticket now, or at the next step when a ticket's procedure is under way.
  void closeTicket(int id);

  // Delivers the desk's answers, then moves the desk, the feed and its ticks to the loop's
  // clock. Does nothing when called from inside a ticket's procedure or event.
  void step();

  void setConnected(bool connected) { connected_ = connected; }
  bool connected() const { return connected_; }

  // What a ticket asks of its window. Defaults: a close request closes the ticket at the
  // next step; the others only go to the log.
  std::function<void(int id)> onCloseRequested;
  std::function<void(int id, Integer action)> onResize;
  std::function<void(int id, const std::string& text)> onMessage;

  MessageLoop& loop() { return guarded_; }
  DealingDesk& desk() { return desk_; }
  PriceFeed& feed() { return feed_; }
  const InstrumentBook& book() const { return book_; }
  EventLog& log() { return log_; }
  BankHolidays& holidays() { return holidays_; }
  // The words of a reason code in a language (1 English, 2 German).
  static std::string reasonText(Integer reason, Integer language);

 private:
  class TicketLine;
  struct Slot {
    std::unique_ptr<TicketLine> line;
    std::unique_ptr<Clientticket> ticket;
    Integer language = 1;
  };
  // Counts the calls into tickets and the events under way.
  struct Busy {
    explicit Busy(DemoHost& h) : host(h) { ++host.busy_; }
    ~Busy() { --host.busy_; }
    DemoHost& host;
  };
  bool busy() const { return busy_ > 0 || guarded_.yieldDepth() > 0; }
  void deliver(const DeskMessage& m);
  void deliverTo(Clientticket& t, const DeskMessage& m);
  void logCall(const Clientticket& t, const DeskMessage& m);
  void pushTick(Long instrumentID);
  void closePending();
  Integer nextGid();

  GuardedLoop guarded_;
  HtmlPrinter* printer_;
  const Locale* locale_;
  Locale german_ = Locale::ByName("de_DE");
  BankHolidays holidays_;
  InstrumentBook book_;
  PriceFeed feed_;
  DealingDesk desk_;
  EventLog log_;
  std::map<int, Slot> tickets_;
  std::vector<int> closing_;
  int nextTicket_ = 1;
  Integer gid_ = 0;
  bool connected_ = true;
  int busy_ = 0;
};

}  // namespace quillon::demo
