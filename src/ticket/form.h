// The ticket's form: the fixed tree of controls, created at design time, by name.
#pragma once

#include "platform/forms.h"

namespace quillon {

class MessageLoop;

// Measures are in twips (1440 to the inch). The design size of the surface.
constexpr double kTicketDesignWidth = 5550;
constexpr double kTicketDesignHeight = 5700;

// The controls of the ticket. Their names are the names the ticket's procedures use; the
// tree, geometry, captions and defaults are built in form.cpp.
class TicketForm {
 public:
  explicit TicketForm(MessageLoop& loop);
  TicketForm(const TicketForm&) = delete;
  TicketForm& operator=(const TicketForm&) = delete;

  Form& controls() { return form_; }
  const Form& controls() const { return form_; }

 private:
  Form form_;

 public:
  // Control arrays, with their gaps.
  ControlArray<CommandButton> cmdOKCancel{"cmdOKCancel"};  // 0 to 6
  ControlArray<CommandButton> cmdQuote{"cmdQuote"};        // 0 to 2
  ControlArray<CommandButton> cmdBuySell{"cmdBuySell"};    // 0, 1
  ControlArray<CommandButton> cmdContract{"cmdContract"};  // 0 to 5
  ControlArray<OptionButton> optBuySell{"optBuySell"};     // 0, 1
  ControlArray<OptionButton> optType{"optType"};           // 1 to 5, no 0
  ControlArray<OptionButton> optValid{"optValid"};         // 0, 1
  ControlArray<Label> Label1{"Label1"};                    // 0, 1, 4, 6, 10, 12
  ControlArray<Label> Label2{"Label2"};                    // 0, 1
  ControlArray<Line> Line1{"Line1"};                       // 0, 1

  // The ticket's surface.
  Control& UserControl;

  // On the surface.
  Frame& fraHide;
  MonthView& calValueDate;
  HtmlClient& WebClient1;
  Frame& fraConf;
  Frame& fraTradeConf;
  Frame& fraQuote;
  CommandButton& cmdValue;
  ComboBox& cmbAccount;
  Frame& fraOrderEntry;
  Label& lblValueDate;

  // On fraConf.
  Label& lblConfCurrs;
  Label& lblConfirm;

  // On fraTradeConf.
  Label& lblTradeConf;

  // On fraQuote and fraSubQuote.
  Frame& fraSubQuote;
  Timer& Timer1;
  Label& lblQuoteMsg;
  Label& lblQuotePrice;
  Label& lblQuoteTime;

  // On fraOrderEntry.
  Frame& fraClientPrices;
  Frame& fraEquity;
  Frame& fraOrderType;
  TextBox& txtSecQty;
  TextBox& txtPrimQty;
  UpDown& udSec;
  UpDown& udPrim;
  Label& lblOrderID;
  Label& lblOrderIDCaption;
  Label& lblReason;

  // On fraClientPrices.
  TextBox& txtBid;
  TextBox& txtOffer;
  Label& lblBid;
  Label& lblOffer;

  // On fraEquity.
  TextBox& txtTradLimit;
  TextBox& txtEquity;
  Label& lblTradLimit;
  Label& lblEquity;

  // On fraOrderType.
  Frame& fraValid;
  TextBox& txtStop;
  TextBox& txtLimit;
  TextBox& txtPrice;
  UpDown& udLimit;
  UpDown& udStop;

};

}  // namespace quillon
