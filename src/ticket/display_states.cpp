// The display state a Status leads to, as the last stage of Initialise:
//   Show_Status, Show_Blank_Form.

#include <string>
#include <type_traits>

#include "platform/number_format.h"
#include "ticket/ticket_model.h"

namespace quillon {
namespace {

constexpr const char* kBlankText = "Please enter your order details.";
constexpr const char* kReceivedText =
    "Your order has been received, please wait for a confirmation";
constexpr const char* kNotReceivedText =
    "Your order may not have been received by Norvane.  Please contact the dealers.";
constexpr const char* kNoEquityText = "You do not have enough equity to cancel this order";
constexpr const char* kPendingText = "Order pending";
constexpr const char* kOcoPendingText =
    "OCO order pending\r\nShould you decide to offset your position by placing another order, "
    "it is your responsibility to cancel this OCO order.";

}  // namespace

// Runs inside Initialise's error handling: a failure ends the row where it stands.
void Clientticket::Show_Status(const PriceRec& price, const InstrumentRec& inst,
                               double messagePrice) {
  auto showOrderNumber = [&] {
    lblOrderID.setCaption(std::to_string(OrderID));
    lblOrderID.setVisible(true);
    lblOrderIDCaption.setVisible(true);
  };
  // The columns of a row: colour, Enable, Cancel Req, the order number, the reason. A reason the
  // host gives comes as a call, made when the row reaches it.
  auto row = [&](const Long* colour, bool cancelRequest, bool orderNumber, const auto& reason) {
    if (colour) Set_Ticket_Colour(*colour, *colour);
    Enable(false);
    cmdOKCancel(1).setEnabled(cancelRequest);
    if (orderNumber) showOrderNumber();
    if constexpr (std::is_invocable_v<decltype(reason)>) {
      lblReason.setCaption(reason());
    } else {
      lblReason.setCaption(reason);
    }
  };
  static constexpr Long kYellow = TicketColour::kYellow, kWhite = TicketColour::kWhite,
                        kGreen = TicketColour::kGreen, kCyan = TicketColour::kCyan;

  switch (Status) {
    case ORDER_BLANK:
      Show_Blank_Form(price, inst);
      break;
    case ORDER_ACTIVE:
    case ORDER_VALID_TO_TRADE:
      row(&kYellow, true, true, kReceivedText);
      break;
    case ORDER_CANCELLED: {
      row(&kWhite, false, true, [&] { return Get_Reason_Desc(Reason); });
      const std::string plain = GeneralNumber(messagePrice, locale());
      txtLimit.setText(plain);
      txtStop.setText(plain);
      txtPrice.setText(plain);
      fraValid.setVisible(false);
      break;
    }
    case ORDER_EXECUTED:
      for (int type = MARKET_ORDER; type <= TWOWAY_ORDER; ++type) optType(type).setValue(false);
      txtPrice.setVisible(true);
      txtLimit.setVisible(false);
      txtStop.setVisible(false);
      txtPrice.setText(Single_Price_As_String(messagePrice, inst.Pip));
      showOrderNumber();
      Show_Trade_Confirm();
      row(&kGreen, false, true, "");
      break;
    case ORDER_PENDING:
      row(&kCyan, true, true, kPendingText);
      if (Action == ACTION_OCO) {
        lblReason.setVisible(false);
        lblReason.setCaption(kOcoPendingText);
        lblReason.setVisible(true);
      }
      break;
    case ORDER_ACTIVE_INTERNAL:
      row(nullptr, false, false, kNotReceivedText);
      break;
    case ORDER_CANCEL_REQUEST_REJECT:
      row(&kCyan, false, true, kNoEquityText);
      break;
    default:
      row(nullptr, false, true, "");
      break;
  }
}

void Clientticket::Show_Blank_Form(const PriceRec& price, const InstrumentRec& inst) {
  cmbAccount_Click();
  MarketPrice = price.Offer;
  LimitPrice = price.Offer;
  StopPrice = price.Offer;
  InstrumentID = inst.InstrumentID;
  Bid = price.Bid;
  Offer = price.Offer;
  PrimarySecondaryQty = QTY_PRIMARY;
  Set_Ticket_Colour(TicketColour::kButtonFace, TicketColour::kHighlightText);
  Check_Price(true);
  txtSecQty.setBackColor(TicketColour::kButtonFace);
  fraTradeConf.setVisible(false);
  Enable(true);
  if (!optType(MARKET_ORDER).Enabled()) {
    // A user who may not deal at market gets a quote, else a stop; a limit is never chosen.
    optType(MARKET_ORDER).setValue(false);
    if (optType(TWOWAY_ORDER).Enabled()) {
      optType(TWOWAY_ORDER).setValue(true);
    } else if (optType(STOPLOSS_ORDER).Enabled()) {
      optType(STOPLOSS_ORDER).setValue(true);
    }
  }
  lblOrderID.setVisible(false);
  lblOrderIDCaption.setVisible(false);
  optValid(0).setValue(true);
  optValid(1).setValue(false);
  txtPrice.setText(Single_Price_As_String(price.Offer, inst.Pip));
  txtBid.setText(Single_Price_As_String(price.Bid, inst.Pip));
  txtOffer.setText(Single_Price_As_String(price.Offer, inst.Pip));
  optBuySell(0).setValue(true);
  optBuySell(1).setValue(false);
  lblReason.setCaption(kBlankText);
  cmdOKCancel(1).setEnabled(false);
  if (Is_Connected()) {
    raise(&ClientticketEvents::VtPriceGenericRequest, PriceRequestGroup, InstrumentID,
          CompanyCtrPty);
  }
  cmdOKCancel(0).setEnabled(Check_Order());
  txtPrimQty.setText(FormatNumber(BaseInst.ContractSize, kAmountPattern, locale()));
  Long allInstruments = -1;
  raise(&ClientticketEvents::RequestEquity, AccountID, allInstruments);
}

}  // namespace quillon
