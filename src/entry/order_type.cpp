// Order type, side and validity:
//   optType_Click, optBuySell_Click, optValid_Click, Set_Valid_Option.

#include "platform/date.h"
#include "ticket/ticket_model.h"

namespace quillon {
namespace {

// The settings of one order type, applied top to bottom.
struct TypeShape {
  bool priceVisible;
  bool limitLocked, limitVisible;
  bool stopLocked, stopVisible;
  bool limitSpinner, stopSpinner;
  bool sideVisible;     // Label1(10) and the optBuySell pair
  bool forceGtc;        // optValid(0) false, then optValid(1) true
  bool validity;        // fraValid enabled, then visible
  bool strikeValueDate;
  Long action;
  bool setValidOption;
};

// Market, Limit, Stop, OCO, Quote: indexes 1 to 5.
constexpr TypeShape kShapes[] = {
    {true, true, false, true, false, false, false, true, true, false, false, ACTION_NONE, false},
    {false, false, true, true, false, true, false, true, false, true, true, ACTION_NONE, true},
    {false, true, false, false, true, false, true, true, false, true, true, ACTION_NONE, true},
    {false, false, true, false, true, true, true, true, false, true, true, ACTION_OCO, true},
    {false, true, false, true, false, false, false, false, true, false, false, ACTION_NONE, false},
};

}  // namespace

void Clientticket::optType_Click(Integer Index) {
  ResumeNext([&] { OrderType = Index; });
  // The quick-deal buttons exist on a blank market ticket only.
  ResumeNext([&] {
    const bool quickDeal = OrderType == MARKET_ORDER && Status == ORDER_BLANK;
    cmdBuySell(0).setVisible(quickDeal);
    cmdBuySell(1).setVisible(quickDeal);
  });
  if (Index >= MARKET_ORDER && Index <= TWOWAY_ORDER) {
    const TypeShape& shape = kShapes[Index - 1];
    ResumeNext([&] { txtPrice.setVisible(shape.priceVisible); });
    ResumeNext([&] { txtLimit.setLocked(shape.limitLocked); });
    ResumeNext([&] { txtLimit.setVisible(shape.limitVisible); });
    ResumeNext([&] { txtStop.setLocked(shape.stopLocked); });
    ResumeNext([&] { txtStop.setVisible(shape.stopVisible); });
    // A spinner that is available is visible and active; one that is not is neither.
    ResumeNext([&] {
      udLimit.setVisible(shape.limitSpinner);
      udLimit.setEnabled(shape.limitSpinner);
    });
    ResumeNext([&] {
      udStop.setVisible(shape.stopSpinner);
      udStop.setEnabled(shape.stopSpinner);
    });
    ResumeNext([&] { Label1(10).setVisible(shape.sideVisible); });
    ResumeNext([&] {
      optBuySell(0).setVisible(shape.sideVisible);
      optBuySell(1).setVisible(shape.sideVisible);
    });
    if (shape.forceGtc) {
      ResumeNext([&] { optValid(0).setValue(false); });
      ResumeNext([&] { optValid(1).setValue(true); });
    }
    ResumeNext([&] { fraValid.setEnabled(shape.validity); });
    ResumeNext([&] { fraValid.setVisible(shape.validity); });
    ResumeNext([&] { lblValueDate.setFontStrikethru(shape.strikeValueDate); });
    ResumeNext([&] { Action = shape.action; });
    if (Index == LIMIT_ORDER) ResumeNext([&] { LimitPrice = MarketPrice; });
    if (Index == STOPLOSS_ORDER) ResumeNext([&] { StopPrice = MarketPrice; });
    if (shape.setValidOption) ResumeNext([&] { Set_Valid_Option(); });
  }
  ResumeNext([&] { Check_Price(false); });
  ResumeNext([&] { Update_Quantities(); });
}

void Clientticket::optBuySell_Click(Integer Index) {
  try {
    if (Index == 0) MarketPrice = Offer;
    else if (Index == 1) MarketPrice = Bid;
    txtPrice.setText(Single_Price_As_String(MarketPrice, Pip));
    // On a blank ticket a change of side puts limit and stop back to the new side's market.
    Check_Price(Status == ORDER_BLANK || Status == ORDER_PLACED);
    Update_Quantities();
  } catch (...) {
    Report(CurrentError(), "optBuySell_Click", false);
  }
}

void Clientticket::optValid_Click(Integer Index) {
  if (Index == 0) {
    ResumeNext([&] { Duration = Trading_Day_Of(Get_System_Time()); });
  } else if (Index == 1) {
    ResumeNext([&] { Duration = kNoDate; });
  }
}

// The click handler runs only when the button was off, so an order's own Duration survives
// while Day Order was already chosen.
void Clientticket::Set_Valid_Option() {
  if (Duration != kNoDate) {
    ResumeNext([&] { optValid(0).setValue(true); });
  } else {
    ResumeNext([&] { optValid(1).setValue(true); });
  }
}

}  // namespace quillon
