// The headless host: one ticket, played from a JSON Lines script of host answers, calls,
// user actions and looks, with every event the ticket raises printed as JSON Lines.
#pragma once

#include <functional>
#include <iosfwd>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/headless_loop.h"
#include "platform/locale.h"
#include "platform/printer.h"
#include "script_holidays.h"
#include "script_values.h"
#include "ticket/ticket_model.h"

namespace quillon::script {

struct ScriptOptions {
  bool trace = false;            // print the question events and the holiday library's calls
  std::string locale = "en_US";  // the user's locale
};

class ScriptHost : public ClientticketEvents {
 public:
  // Creates the ticket on a headless loop whose clock starts at 2001-03-01T10:00:00.
  explicit ScriptHost(ScriptOptions options = {});
  ~ScriptHost() override;
  ScriptHost(const ScriptHost&) = delete;
  ScriptHost& operator=(const ScriptHost&) = delete;

  // Plays a script: 0 when every line ran; 2 at the first line that cannot be read or carried
  // out, with "line N: what is wrong" on `err` and everything printed before it kept.
  int run(std::istream& in, std::ostream& out, std::ostream& err);

  Clientticket& ticket() { return *ticket_; }
  HeadlessLoop& loop() { return loop_; }
  // The holiday library; a real calendar source can be plugged into it.
  ScriptHolidays& holidays() { return holidays_; }

  // --- Events ---
  void CloseTicket() override;
  void ErrorMsg(Long& ErrorNum, std::string& ErrorString, std::string& FunctionName) override;
  void GetReason(Integer Reason, std::string& ReasonDesc) override;
  void GID(Integer& GID) override;
  void Message(std::string Message) override;
  void VtInstGetArrayAll(Long& BaseID, Long& ValueID, Long& LinkID, Long& SourceID,
                         Integer& InstType, Integer& Term, Date& Expiry, Integer& Status,
                         Variant& InstrumentIDArray, Variant& BaseIDArray, Variant& ValueIDArray,
                         Variant& LinkIDArray, Variant& SourceIDArray, Boolean& bSuccess) override;
  void Connected(Boolean& Connected) override;
  void VtInstGetArray(Long& InstrumentID, Long& BaseID, Long& ValueID, Long& LinkID, Long& SourceID,
                      Integer& InstType, Integer& Term, std::string& ShortDesc,
                      std::string& LongDesc, Long& ContractSize, Date& Expiry, double& Pip,
                      double& Strike, Integer& Status, Integer& CallPut, Date& ValueDate) override;
  void VtOrderGenericNew(Long ToID, Long OrderID, Long AccountID, Long InstrumentID,
                         double Quantity, Long PrimarySecondaryQty, double Price, Long OrderType,
                         Date Duration, Date MarketTime, Date ValueDate, Long Status, Long LinkID,
                         Integer Action, Integer Reason, Long CounterpartyID, Boolean Encrypt,
                         Long DummyLive, std::string FreeFormat, Long SystemID, Integer GID,
                         Long CounterPartySystemID, Long PriceProfileID, Integer Priority) override;
  void VtOrderGenericArray(Long& ToID, Variant& OrderID, Variant& AccountID, Variant& InstrumentID,
                           Variant& Quantity, Variant& PrimarySecondaryQty, Variant& Price,
                           Variant& OrderType, Variant& Duration, Variant& MarketTime,
                           Variant& ValueDate, Variant& Status, Variant& Reason,
                           Variant& CounterpartyID, Variant& FreeFormat, Variant& LinkID,
                           Variant& Action, Variant& SystemID, Variant& CounterPartySystemID,
                           Variant& PriceProfileID, Long& DummyLive, Boolean& Encrypt, Integer& GID,
                           Integer& Priority) override;
  void VtTradeGenericNew(Long ToID, Long TradeID, Long AccountID, Long InstrumentID,
                         double Quantity, Long PrimarySecondaryQty, double Price, Integer TradeType,
                         Date MarketTime, Date ValueDate, Integer Status, Integer Reason,
                         Long OrderID, Long CounterpartyID, Long LinkID, Boolean Encrypt,
                         Long DummyLive, std::string FreeFormat, Long SystemID, Integer GID,
                         Long CounterPartySystemID, Long PriceProfileID, Integer Priority) override;
  void VtPriceGenericRequest(Long ToID, Long InstrumentID, Long SourceID) override;
  void VtPriceGetArray(Long InstrumentID, Long SourceID, Long& CounterpartyID, double& Bid,
                       double& Offer, double& High, double& Low, Long& PriceType, Date& PriceTime,
                       Long& PriceProfileID) override;
  void SystemTime(Date& SystemTime) override;
  void RequestEquity(Long& AccountID, Long& InstrumentID) override;
  void ResizeTicket(Integer& Action) override;

 private:
  // One command of the script, read and checked, ready to run (possibly many times).
  struct Action {
    int line = 0;
    std::function<void()> run;
  };
  using Actions = std::shared_ptr<const std::vector<Action>>;
  // Commands that run inside the next `remaining` raises of an event.
  struct Handler {
    std::int64_t remaining = 0;
    Actions actions;
  };
  class Printer : public HtmlPrinter {
   public:
    explicit Printer(ScriptHost& host) : host_(host) {}
    void print(const std::string& html, Long backColor, Long foreColor) override;

   private:
    ScriptHost& host_;
  };

  // Reading: turns one command object into an Action, or raises ScriptError.
  Action Compile(const Json& command, int line, int depth);
  Actions CompileList(const Json& list, const std::string& what, int line, int depth);
  Control& FindControl(const Json& name, const std::string& what) const;
  Form& UserForm() { return ticket_->form().controls(); }

  // Running: every failure, at any depth, is kept as the script's first failure.
  void Execute(const Action& action);
  void Fail(int line, const std::string& message);
  void Emit(const Json& line);
  // Prints an event (a question only with --trace), then leaves the answer to the caller.
  void Show(const char* event, bool question, Json args);
  // Runs the commands set with `on` for this raise of the event.
  void RunHandlers(const char* event);
  // A user action: refused (and printed) when the control does not take input.
  bool Refused(const Control& control);
  void ForcedClick(Control& control);

  ScriptOptions options_;
  HeadlessLoop loop_;
  Locale locale_;
  QuantLibCalendars calendars_;
  ScriptHolidays holidays_;
  Printer printer_{*this};
  std::ostream* out_ = nullptr;

  // How the host answers the ticket's questions.
  bool connected_ = false;
  std::optional<Integer> nextGid_;
  std::optional<Date> systemTime_;
  std::vector<InstrumentRec> instruments_;  // in the order they were added
  std::map<Long, PriceRec> pricesAnyProfile_;
  std::map<std::pair<Long, Long>, PriceRec> pricesByProfile_;
  std::map<Integer, std::string> reasons_;
  std::map<std::string, std::vector<std::shared_ptr<Handler>>> handlers_;

  int depth_ = 0;
  std::optional<std::pair<int, std::string>> failure_;

  std::unique_ptr<Clientticket> ticket_;  // last: built on everything above
};

}  // namespace quillon::script
