// Clientticket: one FX order ticket. One class, its procedures defined by subsystem:
//   ticket/       the host interface, intake and routing, display states, the form, messages,
//                 the trade confirmation
//   entry/        order type and validity, quantities, limit and stop, the order checks
//   prices/       the price feed, the price selection, the text of prices
//   submission/   the order statement, placing, withdrawing and closing
//   quotes/       quote intake, countdown and answers
//   valuedates/   the settlement calendar, forward instruments, the date picker
//   accounts/     accounts and equity
//   language/     the string table and the translation of captions
#pragma once

#include <memory>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "entry/box_readings.h"
#include "platform/holidays.h"
#include "platform/locale.h"
#include "platform/message_loop.h"
#include "platform/printer.h"
#include "platform/types.h"
#include "platform/variant.h"
#include "prices/price_text_memo.h"
#include "ticket/form.h"
#include "ticket/host_interface.h"
#include "ticket/records.h"
#include "ticket/ticket_life.h"

namespace quillon {

// The data of one ticket, in declared order.
struct TicketMembers {
  std::vector<AccountRec> Accounts;  // lower bound 0; element 0 stays empty
  AccountRec CurrentAccount;         // its PriceProfile is the AccountPriceProfile
  Long TradeID = 0;
  Long OrderID = 0;
  Long AccountID = 0;
  Long InstrumentID = 0;
  double Quantity = 0;
  Long PrimarySecondaryQty = QTY_PRIMARY;
  double Price = 0;  // only carried into the replay of a failed delivery
  Date Duration = 0;
  Date MarketTime = 0;
  Date ValueDate = 0;
  Long Status = ORDER_PLACED;
  Long LinkID = 0;
  Long Action = ACTION_NONE;
  Integer Reason = 0;
  Long CounterpartyID = 0;
  std::string FreeFormat;
  Long SystemID = 0;
  Long CounterPartySystemID = 0;
  Long PriceProfileID = 0;
  Long OrderType = 0;
  Long CompanyCtrPty = 0;
  std::string CompanyName;
  Long DealingGateway = 0;
  Boolean Encrypt = false;
  Integer Language = 0;
  double MaxOrderSize = 0;
  double MinOrderSize = 0;
  Long PriceRequestGroup = 0;
  Date TradingDayEnd = 0;
  Integer AccountType = 0;
  Boolean AllowMarket = false;
  Boolean AllowQuote = false;
  Boolean AllowPending = false;
  Boolean FixedSize = false;
  Boolean LiveFlag = false;
  Long DummyLive = DUMMY_TRADING;
  double MarketPrice = 0;
  double LimitPrice = 0;
  double StopPrice = 0;
  double Bid = 0;
  double Offer = 0;
  double Pip = 0;
  Integer GID = 0;
  InstrumentRec BaseInst;
  InstrumentRec ValueInst;
  std::string DecimalSeparator;
  Boolean EquityShown = false;
};

// The platform services a ticket runs on. Any left empty gets a default: a headless message
// loop, no bank holidays, a printer that drops the document, the en_US locale.
struct TicketServices {
  MessageLoop* loop = nullptr;
  HolidayLibrary* holidays = nullptr;
  HtmlPrinter* printer = nullptr;
  const Locale* locale = nullptr;
};

// The services in use, with the defaults a ticket owns. A base of Clientticket, so that the
// message loop exists before the form is built on it.
class TicketPlatform {
 public:
  explicit TicketPlatform(TicketServices services);
  ~TicketPlatform();

 protected:
  // Shared, so that a yield on it can outlive a ticket destroyed inside the yield (the ticket's
  // life keeps it then).
  std::shared_ptr<MessageLoop> ownLoop_;
  std::unique_ptr<HolidayLibrary> ownHolidays_;
  std::unique_ptr<HtmlPrinter> ownPrinter_;
  MessageLoop* loop_;
  HolidayLibrary* holidays_;
  HtmlPrinter* printer_;
  const Locale* locale_;
};

class Clientticket : private TicketPlatform, private TicketMembers, private TicketForm {
 public:
  explicit Clientticket(TicketServices services = {});
  ~Clientticket();
  Clientticket(const Clientticket&) = delete;
  Clientticket& operator=(const Clientticket&) = delete;

  // The host that receives the events; nullptr for none. Not owned.
  void setHost(ClientticketEvents* host);

  // Read access for hosts, views and tests.
  const TicketMembers& members() const { return *this; }
  const TicketForm& form() const { return *this; }
  // The form for views and hosts that deliver the user's input (Form's user events).
  TicketForm& form() { return *this; }
  const Locale& locale() const { return *locale_; }
  MessageLoop& loop() const { return *loop_; }

  // --- Properties, in interface order ---
  std::string getCompanyName() const;
  void setCompanyName(const std::string& value);
  Long getLinkInstID() const;
  Integer getAccountType() const;
  void setAccountType(Integer value);
  Long getInstrumentID() const;
  double getMinOrderSize() const;
  void setMinOrderSize(double value);
  Long getCompanyCtrPty() const;
  void setCompanyCtrPty(Long value);
  Long getDealingGateway() const;
  void setDealingGateway(Long value);
  Boolean getEncrypt() const;
  void setEncrypt(Boolean value);
  Long getAccountID() const;
  Long getPrimSec() const;
  Integer getLanguage() const;
  void setLanguage(Integer value);
  Long getLinkID() const;
  double getMaxOrderSize() const;
  void setMaxOrderSize(double value);
  Long getOrderID() const;
  Long getPriceRequestGroup() const;
  void setPriceRequestGroup(Long value);
  Date getTradingDayEnd() const;
  void setTradingDayEnd(Date value);

  // --- Methods, in interface order. Every argument may be rewritten by the procedure. ---
  Variant GuaranteedMsgAck(Long& FromID, Integer& GID, Boolean& Success);
  void LoadAccount(Long& AccountID, std::string& AccountName, Long& PriceProfile);
  Variant OrderGeneric(Long& FromID, Long& OrderID, Long& AccountID, Long& InstrumentID,
                       double& Quantity, Long& PrimarySecondaryQty, double& Price,
                       Long& OrderType, Date& Duration, Date& MarketTime, Date& ValueDate,
                       Long& Status, Long& LinkID, Long& Action, Integer& Reason,
                       Long& CounterpartyID, Long& DummyLive, std::string& FreeFormat,
                       Long& SystemID, Boolean& Encrypt, Long& CounterPartySystemID,
                       Long& PriceProfileID, double& Strike, Date& Expiry);
  Variant OrderGenericCancel(Long& FromID, Long& OrderID, Long& AccountID, Long& InstrumentID,
                             double& Quantity, Long& PrimarySecondaryQty, double& Price,
                             Long& OrderType, Date& Duration, Date& MarketTime,
                             Date& ValueDate, Long& Status, Integer& Reason,
                             Long& CounterpartyID, Long& DummyLive, std::string& FreeFormat,
                             Long& SystemID, Boolean& Encrypt, Long& CounterPartySystemID,
                             Long& PriceProfileID, double& Strike, Date& Expiry);
  Variant OrderGenericPending(Long& FromID, Long& OrderID, Long& AccountID,
                              Long& InstrumentID, double& Quantity, Long& PrimarySecondaryQty,
                              double& Price, Long& OrderType, Date& Duration, Date& MarketTime,
                              Date& ValueDate, Long& Status, Long& LinkID, Long& Action,
                              Integer& Reason, Long& CounterpartyID, Long& DummyLive,
                              std::string& FreeFormat, Long& SystemID, Boolean& Encrypt,
                              Long& CounterPartySystemID, Long& PriceProfileID);
  Variant OrderGenericQuote(Long& FromID, Long& OrderID, Long& AccountID, Long& InstrumentID,
                            double& Quantity, Long& PrimarySecondaryQty, double& Bid,
                            double& Offer, Long& OrderType, Date& Duration, Date& MarketTime,
                            Date& ValueDate, Long& Status, Integer& Reason,
                            Long& CounterpartyID, Long& DummyLive, std::string& FreeFormat,
                            Long& SystemID, Boolean& Encrypt, Long& CounterPartySystemID,
                            Long& PriceProfileID, double& Strike, Date& Expiry);
  Variant ReceivedEquity(Long& Account, double& Equity, double& TradingLimit);
  void PriceGeneric(Long& InstrumentID, Long& CounterpartyID, double& Bid, double& Offer,
                    Long& PriceType, Long& SourceID, Date& PriceTime);
  Variant Initialise(Long& TradeID, Long& OrderID, Long& AccountID, Long& InstrumentID,
                     double& Quantity, Long& PrimarySecondaryQty, double& Price, Long& OrderType,
                     Date& Duration, Date& MarketTime, Date& ValueDate, Long& Status,
                     Long& LinkID, Long& Action, Integer& Reason, Long& CounterpartyID,
                     Long& DummyLive, std::string& FreeFormat, Long& SystemID,
                     Long& CounterPartySystemID, Long& PriceProfileID, double& Strike,
                     Date& Expiry);
  Variant TradeGeneric(Long& FromID, Long& TradeID, Long& AccountID, Long& InstrumentID,
                       double& Quantity, Long& PrimarySecondaryQty, double& Price,
                       Long& TradeType, Date& MarketTime, Date& ValueDate, Long& Status,
                       Integer& Reason, Long& OrderID, Long& CounterpartyID, Long& LinkID,
                       Long& DummyLive, std::string& FreeFormat, Long& SystemID,
                       Boolean& Encrypt, Long& CounterPartySystemID, Long& PriceProfileID,
                       double& Strike, Date& Expiry);
  Boolean Valid_Value_Date(Long& lInstID, Date& dtValue);
  Date Get_Settlement_Day(Date& dTradeDate, Date& dtForward, Long& lInstID);

 private:
  friend struct TicketProbe;  // tests reach the private procedures through it

  // --- ticket/: wrappers of the question events ---
  Boolean Is_Connected();
  Integer Get_GID();
  std::string Get_Reason_Desc(Integer Reason);
  Date Get_System_Time();
  PriceRec Price_Get_Array(Long InstrumentID, Long SourceID, Long& PriceProfileID);
  InstrumentRec Inst_Get_Array(Long InstrumentID);
  Boolean Inst_Get_Array_All(Long& BaseID, Long& ValueID, Long& LinkID, Long& SourceID,
                             Integer& InstType, Integer& Term, Date& Expiry, Integer& Status,
                             Variant& InstrumentIDArray, Variant& BaseIDArray,
                             Variant& ValueIDArray, Variant& LinkIDArray,
                             Variant& SourceIDArray);

  // --- ticket/: the form ---
  void UserControl_Initialize();
  void Enable(Boolean bEnable);
  void Set_Ticket_Colour(Long lColour, Long lEditColour);
  void BindHandlers();

  // --- ticket/: intake, routing and display states ---
  void Show_Status(const PriceRec& price, const InstrumentRec& inst, double messagePrice);
  void Show_Blank_Form(const PriceRec& price, const InstrumentRec& inst);

  // --- ticket/: trade confirmation ---
  std::string Get_Pair_Desc();
  void Show_Trade_Confirm();
  void Print_Trade_Confirm(std::string& sText, Long& lTradeID);

  // --- entry/ ---
  void optType_Click(Integer Index);
  void optBuySell_Click(Integer Index);
  void optValid_Click(Integer Index);
  void Set_Valid_Option();
  // The value of a box's text, 0 for a text that is not numeric.
  double VtDbl(const TextBox& Box);
  void Update_Quantities();
  // Writes an amount into a quantity box with the amount pattern.
  void WriteAmount(TextBox& Box, double Amount);
  void Refresh_Quantity();  // the ruling box's refresh: PriceGeneric from the members
  void txtPrimQty_Change();
  void txtPrimQty_GotFocus();
  void txtPrimQty_KeyPress(Integer& KeyAscii);
  void txtPrimQty_LostFocus();
  void txtSecQty_Change();
  void txtSecQty_GotFocus();
  void txtSecQty_KeyPress(Integer& KeyAscii);
  void txtSecQty_LostFocus();
  void udPrim_Change();
  void udPrim_MouseUp();
  void udSec_Change();
  void udSec_MouseUp();
  void cmdContract_Click(Integer Index);
  void txtPrice_Change();
  void txtLimit_Change();
  void txtStop_Change();
  void udLimit_Change();
  void udLimit_MouseUp();
  void udStop_Change();
  void udStop_MouseUp();
  Boolean Check_Order();
  double Contract_Remainder(double Quantity, Long ContractSize);

  // --- prices/ ---
  void Check_Price(Boolean bReset);
  std::string Single_Price_As_String(double Price, double Pip);
  // Single_Price_As_String without the copy: the text stays as it is until the next price
  // text is asked for (the price boxes take it at once).
  const std::string& PriceText(double Price, double Pip);
  std::string Spread_Price_As_String(double Bid, double Offer, double Pip);
  std::string Change_Chars(std::string& Source, const std::string& Find,
                           const std::string& Replace);

  // --- submission/ ---
  void Show_Order_Confirm();
  void cmdOKCancel_Click(Integer Index);
  void cmdBuySell_Click(Integer Index);
  void Timer1_Timer();

  // --- quotes/ ---
  void cmdQuote_Click(Integer Index);
  void Quote_Tick();  // Timer1_Timer on a quoted order: one second of the countdown

  // --- valuedates/ ---
  Date Trading_Day_Of(Date dt);
  Long Find_New_Inst(Long& lInstID, Date& dtValue);
  Boolean Get_Inst_Family(Long lInstID, std::vector<Long>& Family);
  void cmdValue_Click();
  void calValueDate_DateClick(Date DateClicked);
  void calValueDate_KeyPress(Integer& KeyAscii);

  // --- accounts/ ---
  void cmbAccount_Click();

  // --- language/ ---
  // Resource string n in the ticket's language; raises a run-time error when there is none.
  // The string table lives as long as the process.
  const std::string& LoadResString(double n);

  // --- events and errors ---
  // Raises an event. The host's handler may call back into the ticket, or destroy it: then
  // ObjectDestroyed unwinds to where the host entered the ticket (ticket/ticket_life.h).
  template <typename... Params, typename... Args>
  void raise(void (ClientticketEvents::*event)(Params...), Args&&... args) {
    outside([&] { (host_->*event)(std::forward<Args>(args)...); });
  }
  // Raises an order event whose GID is fetched while its arguments are filled, just before the
  // event: the arguments ahead of the GID are read before the host is asked (it may call back
  // into the ticket while it answers), the two members after it once it has answered, and the
  // priority is 0.
  template <typename... Params, typename... Head>
  void raiseWithGid(void (ClientticketEvents::*event)(Params...), const std::tuple<Head...>& head,
                    const Long& counterPartySystemID) {
    const Integer gid = Get_GID();
    std::apply(
        [&](const auto&... a) {
          raise(event, a..., gid, counterPartySystemID, PriceProfileID, Integer{0});
        },
        head);
  }
  // Runs the host's code (an event handler, the loop's work, the printer) inside a call.
  // The life must outlast the call, which may destroy the ticket: a running entry holds it
  // already (a count, where another hold would be a pair of atomic operations a call); a call
  // outside any entry takes a hold of its own.
  template <typename Call>
  void outside(Call&& call) {
    TicketLife& life = *life_;
    if (life.entries > 0) return runOutside(life, call);
    const std::shared_ptr<TicketLife> hold = life_;
    runOutside(*hold, call);
  }
  template <typename Call>
  static void runOutside(TicketLife& life, Call& call) {
    try {
      const HostTurn turn(life);
      call();
    } catch (...) {
      life.check();
      throw;
    }
    life.check();
  }
  // Raises ErrorMsg for a stop-and-report procedure that met `error`.
  void Report(const RuntimeError& error, const char* functionName, bool withText);
  // The loop the ticket owns stays until the yield has returned, even if the ticket does not:
  // the yield runs holding the life, which a destroyed ticket leaves its own loop to.
  void yield() {
    outside([loop = loop_] { loop->yield(); });
  }

  ClientticketEvents* host_;
  PriceTextMemo priceTexts_;  // the pip's pattern and the prices written last
  BoxReadings boxReadings_;   // the numbers read from the boxes' texts last
  // The last contract remainder worked out, by the bits of its quantity, the contract size
  // and the locale's signs: the order check asks for the same one several times a tick.
  struct RemainderMemo {
    std::uint64_t quantity = 0;
    Long contractSize = 0;
    std::uint64_t signs = 0;
    double result = 0;
    bool known = false;
  } remainder_;
  // The amount whose text this ticket wrote last, and the box and text (its stamp) it went to:
  // a tick writes the counter amount twice over, as a rule the same.
  struct AmountWritten {
    const TextBox* box = nullptr;
    std::uint64_t stamp = 0;  // no text has stamp 0
    std::uint64_t amount = 0;
    std::uint64_t signs = 0;
  } amountWritten_;
  std::shared_ptr<TicketLife> life_ = std::make_shared<TicketLife>();
};

}  // namespace quillon
