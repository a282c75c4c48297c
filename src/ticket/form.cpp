// The ticket's form: every control with its container, geometry, tab index, design caption and
// defaults. A caption of digits is a string number that setting Language translates.

#include "ticket/form.h"

#include <string>

#include "ticket/records.h"

namespace quillon {
namespace {

// System colour 5, the background of an edit box.
constexpr Long kWindowBackground = static_cast<Long>(0x80000005);

struct Geometry {
  double left, top, width, height;
};

template <typename T>
T& Place(Form& form, const char* name, int index, Control* parent, Geometry g, int tab,
         const std::string& caption = {}) {
  T& control = form.create<T>(name, index, parent);
  control.setLeft(g.left);
  control.setTop(g.top);
  control.setWidth(g.width);
  control.setHeight(g.height);
  control.tabIndex = tab;
  control.setCaption(caption);
  return control;
}

template <typename T>
T& Find(Form& form, const char* name) {
  return static_cast<T&>(*form.find(name));
}

void MarkLabel(Control& label, Long background) {
  label.transparent = true;
  label.setBackColor(background);
}

// Builds the tree, container by container, each front to back.
void BuildTree(Form& f, TicketForm& t) {
  Control& uc = f.create<Surface>("UserControl", -1, nullptr);
  uc.setWidth(kTicketDesignWidth);
  uc.setHeight(kTicketDesignHeight);
  uc.tabIndex = -1;

  // The surface.
  Frame& fraHide = Place<Frame>(f, "fraHide", -1, &uc, {0, 0, 5550, 5685}, 27);
  fraHide.border = false;
  Place<MonthView>(f, "calValueDate", -1, &uc, {2790, 360, 2700, 2370}, 64).setVisible(false);
  Place<HtmlClient>(f, "WebClient1", -1, &uc, {1290, 5640, 1500, 750}, 63).setVisible(false);
  Frame& fraConf = Place<Frame>(f, "fraConf", -1, &uc, {30, 30, 5505, 5595}, 28);
  fraConf.setVisible(false);
  Frame& fraTradeConf =
      Place<Frame>(f, "fraTradeConf", -1, &uc, {300, 930, 4965, 3705}, 51, "Trade Confirmation");
  fraTradeConf.setVisible(false);
  Frame& fraQuote = Place<Frame>(f, "fraQuote", -1, &uc, {240, 450, 5100, 4725}, 31);
  fraQuote.setVisible(false);
  t.cmdOKCancel.add(2, Place<CommandButton>(f, "cmdOKCancel", 2, &uc, {4230, 5250, 1245, 345}, 22, "171"));
  auto& cancelReq =
      Place<CommandButton>(f, "cmdOKCancel", 1, &uc, {2160, 5250, 1245, 345}, 21, "Cancel &Req");
  cancelReq.setEnabled(false);
  t.cmdOKCancel.add(1, cancelReq);
  auto& placeOrder =
      Place<CommandButton>(f, "cmdOKCancel", 0, &uc, {135, 5250, 1245, 345}, 20, "28");
  placeOrder.setEnabled(false);
  t.cmdOKCancel.add(0, placeOrder);
  Place<CommandButton>(f, "cmdValue", -1, &uc, {5220, 90, 285, 285}, 1, "...").setVisible(false);
  Place<ComboBox>(f, "cmbAccount", -1, &uc, {1020, 60, 1815, 315}, 0);
  Frame& fraOrderEntry =
      Place<Frame>(f, "fraOrderEntry", -1, &uc, {90, 450, 5385, 4710}, 37, "619");
  MarkLabel(Place<Label>(f, "lblValueDate", -1, &uc, {4110, 120, 1095, 195}, 44),
            SystemColour::kHighlightText);
  auto& valueDateCaption = Place<Label>(f, "Label1", 1, &uc, {3180, 120, 855, 195}, 45, "113");
  MarkLabel(valueDateCaption, SystemColour::kHighlightText);
  t.Label1.add(1, valueDateCaption);
  auto& accountCaption = Place<Label>(f, "Label1", 0, &uc, {90, 120, 855, 195}, 42, "31");
  MarkLabel(accountCaption, SystemColour::kHighlightText);
  t.Label1.add(0, accountCaption);

  // The confirmation panel.
  t.cmdOKCancel.add(3, Place<CommandButton>(f, "cmdOKCancel", 3, &fraConf, {720, 4050, 1155, 345}, 25, "162"));
  t.cmdOKCancel.add(4, Place<CommandButton>(f, "cmdOKCancel", 4, &fraConf, {3480, 4050, 1155, 345}, 26, "163"));
  Label& confCurrs = Place<Label>(f, "lblConfCurrs", -1, &fraConf, {720, 240, 3915, 315}, 50, "0");
  confCurrs.alignment = Alignment::Center;
  confCurrs.font = {"MS Sans Serif", 12, true};
  Place<Label>(f, "lblConfirm", -1, &fraConf, {720, 600, 3915, 2535}, 30, "143").font.size = 9.75;
  Label& note = Place<Label>(
      f, "Label1", 12, &fraConf, {720, 3240, 3915, 615}, 29,
      "NOTE: This order is not executed until confirmed by [COMPANY_NAME_LONG] with a green "
      "order ticket.");
  note.font.bold = true;
  note.wordWrap = true;
  t.Label1.add(12, note);

  // The trade confirmation panel.
  t.cmdOKCancel.add(6, Place<CommandButton>(f, "cmdOKCancel", 6, &fraTradeConf, {3060, 2880, 1245, 345}, 62, "&Print"));
  t.cmdOKCancel.add(5, Place<CommandButton>(f, "cmdOKCancel", 5, &fraTradeConf, {570, 2880, 1245, 345}, 52, "1"));
  Place<Label>(f, "lblTradeConf", -1, &fraTradeConf, {240, 330, 4485, 2385}, 53, "Label3")
      .transparent = true;

  // The quote panel.
  t.cmdQuote.add(0, Place<CommandButton>(f, "cmdQuote", 0, &fraQuote, {390, 3930, 1245, 345}, 23, "302"));
  t.cmdQuote.add(1, Place<CommandButton>(f, "cmdQuote", 1, &fraQuote, {1890, 3930, 1245, 345}, 24, "303"));
  t.cmdQuote.add(2, Place<CommandButton>(f, "cmdQuote", 2, &fraQuote, {3450, 3930, 1245, 345}, 36, "304"));
  Frame& fraSubQuote = Place<Frame>(f, "fraSubQuote", -1, &fraQuote, {525, 870, 3960, 3405}, 32);
  fraSubQuote.border = false;
  f.create<Timer>("Timer1", -1, &fraSubQuote);
  Place<Label>(f, "lblQuoteMsg", -1, &fraSubQuote, {3960, 1590, 4185, 1755}, 33).transparent = true;
  Label& quotePrice =
      Place<Label>(f, "lblQuotePrice", -1, &fraSubQuote, {1590, 150, 1695, 285}, 47, "QuotePrice");
  quotePrice.setBackColor(TicketColour::kBlack);
  quotePrice.setForeColor(TicketColour::kGreen);
  quotePrice.font = {"MS Sans Serif", 12, true};
  auto& newQuote = Place<Label>(f, "Label2", 0, &fraSubQuote, {225, 180, 1155, 225}, 46, "New Quote");
  newQuote.transparent = true;
  t.Label2.add(0, newQuote);
  auto& seconds = Place<Label>(f, "Label2", 1, &fraSubQuote, {225, 570, 1155, 225}, 35, "301");
  seconds.transparent = true;
  t.Label2.add(1, seconds);
  Label& quoteTime =
      Place<Label>(f, "lblQuoteTime", -1, &fraSubQuote, {1590, 540, 825, 285}, 34, "QuoteTime");
  quoteTime.setBackColor(TicketColour::kBlack);
  quoteTime.setForeColor(TicketColour::kGreen);
  quoteTime.font = {"MS Sans Serif", 12, true};

  // The order entry frame.
  Frame& fraClientPrices =
      Place<Frame>(f, "fraClientPrices", -1, &fraOrderEntry, {90, 2700, 5145, 645}, 69);
  Frame& fraEquity = Place<Frame>(f, "fraEquity", -1, &fraOrderEntry, {90, 1530, 2805, 1170}, 54, "Equity");
  Frame& fraOrderType =
      Place<Frame>(f, "fraOrderType", -1, &fraOrderEntry, {2940, 210, 2295, 2490}, 43, "Order Type");
  auto contract = [&](int index, Geometry g, int tab, const char* caption, bool visible) {
    auto& button = Place<CommandButton>(f, "cmdContract", index, &fraOrderEntry, g, tab, caption);
    button.setVisible(visible);
    t.cmdContract.add(index, button);
  };
  contract(5, {2130, 1320, 495, 225}, 11, "56", false);
  contract(4, {1620, 1320, 525, 225}, 10, "55", false);
  contract(3, {1110, 1320, 525, 225}, 9, "54", false);
  TextBox& txtSecQty = Place<TextBox>(f, "txtSecQty", -1, &fraOrderEntry, {1110, 1110, 1515, 285}, 8);
  txtSecQty.setLocked(true);
  txtSecQty.alignment = Alignment::Right;
  txtSecQty.maxLength = 18;
  txtSecQty.setBackColor(kWindowBackground);
  contract(2, {2130, 780, 495, 225}, 7, "56", true);
  contract(1, {1620, 780, 525, 225}, 6, "55", true);
  contract(0, {1110, 780, 525, 225}, 5, "54", true);
  TextBox& txtPrimQty = Place<TextBox>(f, "txtPrimQty", -1, &fraOrderEntry, {1110, 510, 1515, 285}, 4);
  txtPrimQty.alignment = Alignment::Right;
  txtPrimQty.maxLength = 18;
  txtPrimQty.setBackColor(kWindowBackground);
  t.optBuySell.add(1, Place<OptionButton>(f, "optBuySell", 1, &fraOrderEntry, {2040, 240, 885, 255}, 3, "38"));
  t.optBuySell.add(0, Place<OptionButton>(f, "optBuySell", 0, &fraOrderEntry, {1140, 240, 885, 255}, 2, "37"));
  Place<UpDown>(f, "udSec", -1, &fraOrderEntry, {2610, 1100, 240, 285}, 65).setVisible(false);
  Place<UpDown>(f, "udPrim", -1, &fraOrderEntry, {2610, 510, 240, 285}, 66);
  Label& orderID = Place<Label>(f, "lblOrderID", -1, &fraOrderEntry, {1470, 3675, 1005, 195}, 49);
  orderID.setVisible(false);
  MarkLabel(orderID, SystemColour::kHighlightText);
  Label& orderIDCaption =
      Place<Label>(f, "lblOrderIDCaption", -1, &fraOrderEntry, {480, 3675, 975, 195}, 48, "Order ID:");
  orderIDCaption.setVisible(false);
  MarkLabel(orderIDCaption, SystemColour::kHighlightText);
  auto& qtyCaption = Place<Label>(f, "Label1", 4, &fraOrderEntry, {150, 540, 855, 255}, 41, "40");
  qtyCaption.transparent = true;
  qtyCaption.font.size = 9.75;
  t.Label1.add(4, qtyCaption);
  auto& totalCaption = Place<Label>(f, "Label1", 6, &fraOrderEntry, {150, 1050, 855, 255}, 40, "41");
  totalCaption.transparent = true;
  totalCaption.font.size = 9.75;
  t.Label1.add(6, totalCaption);
  auto line = [&](int index, double y, Long colour) {
    Line& l = f.create<Line>("Line1", index, &fraOrderEntry);
    l.X1 = 1080;
    l.X2 = 4110;
    l.Y1 = l.Y2 = y;
    l.BorderColor = colour;
    t.Line1.add(index, l);
  };
  line(0, 3490, SystemColour::kButtonShadow);
  line(1, 3510, SystemColour::kThreeDLight);
  Label& lblReason = Place<Label>(f, "lblReason", -1, &fraOrderEntry, {450, 3915, 4395, 675}, 39);
  MarkLabel(lblReason, SystemColour::kHighlightText);
  lblReason.wordWrap = true;
  auto& typeCaption = Place<Label>(f, "Label1", 10, &fraOrderEntry, {150, 270, 885, 195}, 38, "208");
  typeCaption.transparent = true;
  t.Label1.add(10, typeCaption);

  // The client prices.
  auto& offerButton =
      Place<CommandButton>(f, "cmdBuySell", 1, &fraClientPrices, {2700, 210, 945, 315}, 75, "Offer");
  offerButton.setVisible(false);
  t.cmdBuySell.add(1, offerButton);
  auto& bidButton =
      Place<CommandButton>(f, "cmdBuySell", 0, &fraClientPrices, {120, 210, 945, 315}, 74, "Bid");
  bidButton.setVisible(false);
  t.cmdBuySell.add(0, bidButton);
  auto readOnlyBox = [&](const char* name, Control* parent, Geometry g, int tab) {
    TextBox& box = Place<TextBox>(f, name, -1, parent, g, tab);
    box.setLocked(true);
    box.alignment = Alignment::Right;
    box.setBackColor(SystemColour::kMenu);
  };
  readOnlyBox("txtBid", &fraClientPrices, {1125, 225, 1275, 285}, 71);
  readOnlyBox("txtOffer", &fraClientPrices, {3705, 225, 1275, 285}, 70);
  Place<Label>(f, "lblBid", -1, &fraClientPrices, {150, 255, 885, 195}, 73, "Bid");
  Place<Label>(f, "lblOffer", -1, &fraClientPrices, {2730, 270, 900, 195}, 72, "Offer");

  // Equity.
  readOnlyBox("txtTradLimit", &fraEquity, {1395, 675, 1275, 285}, 56);
  readOnlyBox("txtEquity", &fraEquity, {1395, 315, 1275, 285}, 55);
  Place<Label>(f, "lblTradLimit", -1, &fraEquity, {90, 720, 1050, 195}, 58, "Trading Limit");
  Place<Label>(f, "lblEquity", -1, &fraEquity, {90, 360, 1230, 195}, 57, "Tradable Equity");

  // Order type.
  Frame& fraValid = Place<Frame>(f, "fraValid", -1, &fraOrderType, {90, 1845, 2070, 555}, 59, "Order Valid");
  fraValid.setVisible(false);
  t.optType.add(4, Place<OptionButton>(f, "optType", 4, &fraOrderType, {120, 1530, 825, 195}, 15, "OCO"));
  auto priceBox = [&](const char* name, Geometry g, int tab, bool visible) -> TextBox& {
    TextBox& box = Place<TextBox>(f, name, -1, &fraOrderType, g, tab);
    box.setVisible(visible);
    box.alignment = Alignment::Right;
    box.maxLength = 15;
    box.setBackColor(kWindowBackground);
    return box;
  };
  priceBox("txtStop", {990, 1215, 975, 285}, 19, false);
  priceBox("txtLimit", {990, 870, 975, 285}, 17, false);
  TextBox& txtPrice = priceBox("txtPrice", {990, 270, 975, 285}, 13, true);
  txtPrice.setLocked(true);
  txtPrice.setBackColor(SystemColour::kButtonFace);
  t.optType.add(3, Place<OptionButton>(f, "optType", 3, &fraOrderType, {120, 1230, 825, 195}, 18, "503"));
  t.optType.add(2, Place<OptionButton>(f, "optType", 2, &fraOrderType, {120, 930, 825, 195}, 16, "502"));
  t.optType.add(5, Place<OptionButton>(f, "optType", 5, &fraOrderType, {120, 600, 825, 225}, 14, "336"));
  t.optType.add(1, Place<OptionButton>(f, "optType", 1, &fraOrderType, {120, 300, 825, 195}, 12, "495"));
  Place<UpDown>(f, "udLimit", -1, &fraOrderType, {1950, 870, 240, 285}, 67).setVisible(false);
  Place<UpDown>(f, "udStop", -1, &fraOrderType, {1950, 1200, 240, 285}, 68).setVisible(false);

  // Validity.
  auto& dayOrder = Place<OptionButton>(f, "optValid", 0, &fraValid, {90, 225, 1065, 195}, 61, "504");
  dayOrder.setValue(true);
  t.optValid.add(0, dayOrder);
  t.optValid.add(1, Place<OptionButton>(f, "optValid", 1, &fraValid, {1170, 225, 810, 195}, 60, "505"));
}

}  // namespace

// The tree is built while the first reference is bound; the control arrays, declared before
// the references, are filled by the build.
TicketForm::TicketForm(MessageLoop& loop)
    : form_(loop),
      UserControl((BuildTree(form_, *this), *form_.find("UserControl"))),
      fraHide(Find<Frame>(form_, "fraHide")),
      calValueDate(Find<MonthView>(form_, "calValueDate")),
      WebClient1(Find<HtmlClient>(form_, "WebClient1")),
      fraConf(Find<Frame>(form_, "fraConf")),
      fraTradeConf(Find<Frame>(form_, "fraTradeConf")),
      fraQuote(Find<Frame>(form_, "fraQuote")),
      cmdValue(Find<CommandButton>(form_, "cmdValue")),
      cmbAccount(Find<ComboBox>(form_, "cmbAccount")),
      fraOrderEntry(Find<Frame>(form_, "fraOrderEntry")),
      lblValueDate(Find<Label>(form_, "lblValueDate")),
      lblConfCurrs(Find<Label>(form_, "lblConfCurrs")),
      lblConfirm(Find<Label>(form_, "lblConfirm")),
      lblTradeConf(Find<Label>(form_, "lblTradeConf")),
      fraSubQuote(Find<Frame>(form_, "fraSubQuote")),
      Timer1(Find<Timer>(form_, "Timer1")),
      lblQuoteMsg(Find<Label>(form_, "lblQuoteMsg")),
      lblQuotePrice(Find<Label>(form_, "lblQuotePrice")),
      lblQuoteTime(Find<Label>(form_, "lblQuoteTime")),
      fraClientPrices(Find<Frame>(form_, "fraClientPrices")),
      fraEquity(Find<Frame>(form_, "fraEquity")),
      fraOrderType(Find<Frame>(form_, "fraOrderType")),
      txtSecQty(Find<TextBox>(form_, "txtSecQty")),
      txtPrimQty(Find<TextBox>(form_, "txtPrimQty")),
      udSec(Find<UpDown>(form_, "udSec")),
      udPrim(Find<UpDown>(form_, "udPrim")),
      lblOrderID(Find<Label>(form_, "lblOrderID")),
      lblOrderIDCaption(Find<Label>(form_, "lblOrderIDCaption")),
      lblReason(Find<Label>(form_, "lblReason")),
      txtBid(Find<TextBox>(form_, "txtBid")),
      txtOffer(Find<TextBox>(form_, "txtOffer")),
      lblBid(Find<Label>(form_, "lblBid")),
      lblOffer(Find<Label>(form_, "lblOffer")),
      txtTradLimit(Find<TextBox>(form_, "txtTradLimit")),
      txtEquity(Find<TextBox>(form_, "txtEquity")),
      lblTradLimit(Find<Label>(form_, "lblTradLimit")),
      lblEquity(Find<Label>(form_, "lblEquity")),
      fraValid(Find<Frame>(form_, "fraValid")),
      txtStop(Find<TextBox>(form_, "txtStop")),
      txtLimit(Find<TextBox>(form_, "txtLimit")),
      txtPrice(Find<TextBox>(form_, "txtPrice")),
      udLimit(Find<UpDown>(form_, "udLimit")),
      udStop(Find<UpDown>(form_, "udStop")) {}

}  // namespace quillon
