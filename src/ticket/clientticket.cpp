// The ticket's life and its form's plumbing:
//   TicketPlatform, Clientticket (construction, host), BindHandlers, UserControl_Initialize,
//   Enable, Set_Ticket_Colour, Report.

#include <utility>

#include "platform/headless_loop.h"
#include "platform/number_format.h"
#include "ticket/ticket_model.h"

namespace quillon {
namespace {

// A host that answers nothing; the ticket talks to it until a host is set.
ClientticketEvents& NoHost() {
  static ClientticketEvents host;
  return host;
}

// The default printer: a ticket without a printing path drops the document.
class DroppingPrinter : public HtmlPrinter {
 public:
  void print(const std::string&, Long, Long) override {}
};

// Runs a handler of the form as the platform does: nothing it raises leaves it. A handler is
// an entry into the ticket; a ticket destroyed inside it ends the user's action or the timer's
// tick here, or, when the ticket's own write ran the handler, unwinds on into that procedure.
template <typename Handler>
auto Guarded(const std::shared_ptr<TicketLife>& life, Handler handler) {
  return [life, handler](auto&&... args) {
    const TicketEntry entry(life);
    try {
      handler(std::forward<decltype(args)>(args)...);
    } catch (const ObjectDestroyed&) {
      entry.ended();
    } catch (...) {
    }
  };
}

}  // namespace

TicketPlatform::TicketPlatform(TicketServices services)
    : loop_(services.loop),
      holidays_(services.holidays),
      printer_(services.printer),
      locale_(services.locale) {
  if (!loop_) {
    ownLoop_ = std::make_shared<HeadlessLoop>();
    loop_ = ownLoop_.get();
  }
  if (!holidays_) {
    ownHolidays_ = std::make_unique<NoHolidays>();
    holidays_ = ownHolidays_.get();
  }
  if (!printer_) {
    ownPrinter_ = std::make_unique<DroppingPrinter>();
    printer_ = ownPrinter_.get();
  }
  if (!locale_) locale_ = &Locale::Default();
}

TicketPlatform::~TicketPlatform() = default;

Clientticket::Clientticket(TicketServices services)
    : TicketPlatform(services), TicketForm(*loop_), host_(&NoHost()) {
  BindHandlers();
  UserControl_Initialize();
}

// The calls still running in the ticket (it was destroyed inside an event or a yield) see the
// mark and touch nothing of it.
Clientticket::~Clientticket() {
  life_->destroyed = true;
  life_->keep = ownLoop_;
}

void Clientticket::setHost(ClientticketEvents* host) { host_ = host ? host : &NoHost(); }

void Clientticket::BindHandlers() {
  for (auto& [index, button] : cmdOKCancel.elements())
    button->onClick =
        Guarded(life_, [this, i = index] { cmdOKCancel_Click(static_cast<Integer>(i)); });
  for (auto& [index, button] : cmdQuote.elements())
    button->onClick =
        Guarded(life_, [this, i = index] { cmdQuote_Click(static_cast<Integer>(i)); });
  for (auto& [index, button] : cmdBuySell.elements())
    button->onClick =
        Guarded(life_, [this, i = index] { cmdBuySell_Click(static_cast<Integer>(i)); });
  for (auto& [index, button] : cmdContract.elements())
    button->onClick =
        Guarded(life_, [this, i = index] { cmdContract_Click(static_cast<Integer>(i)); });
  for (auto& [index, option] : optType.elements())
    option->onClick = Guarded(life_, [this, i = index] { optType_Click(static_cast<Integer>(i)); });
  for (auto& [index, option] : optBuySell.elements())
    option->onClick =
        Guarded(life_, [this, i = index] { optBuySell_Click(static_cast<Integer>(i)); });
  for (auto& [index, option] : optValid.elements())
    option->onClick =
        Guarded(life_, [this, i = index] { optValid_Click(static_cast<Integer>(i)); });

  txtPrimQty.onChange = Guarded(life_, [this] { txtPrimQty_Change(); });
  txtPrimQty.onKeyPress = Guarded(life_, [this](Integer& key) { txtPrimQty_KeyPress(key); });
  txtPrimQty.onGotFocus = Guarded(life_, [this] { txtPrimQty_GotFocus(); });
  txtPrimQty.onLostFocus = Guarded(life_, [this] { txtPrimQty_LostFocus(); });
  txtSecQty.onChange = Guarded(life_, [this] { txtSecQty_Change(); });
  txtSecQty.onKeyPress = Guarded(life_, [this](Integer& key) { txtSecQty_KeyPress(key); });
  txtSecQty.onGotFocus = Guarded(life_, [this] { txtSecQty_GotFocus(); });
  txtSecQty.onLostFocus = Guarded(life_, [this] { txtSecQty_LostFocus(); });
  txtPrice.onChange = Guarded(life_, [this] { txtPrice_Change(); });
  txtLimit.onChange = Guarded(life_, [this] { txtLimit_Change(); });
  txtStop.onChange = Guarded(life_, [this] { txtStop_Change(); });

  udPrim.onChange = Guarded(life_, [this] { udPrim_Change(); });
  udPrim.onMouseUp = Guarded(life_, [this] { udPrim_MouseUp(); });
  udSec.onChange = Guarded(life_, [this] { udSec_Change(); });
  udSec.onMouseUp = Guarded(life_, [this] { udSec_MouseUp(); });
  udLimit.onChange = Guarded(life_, [this] { udLimit_Change(); });
  udLimit.onMouseUp = Guarded(life_, [this] { udLimit_MouseUp(); });
  udStop.onChange = Guarded(life_, [this] { udStop_Change(); });
  udStop.onMouseUp = Guarded(life_, [this] { udStop_MouseUp(); });

  cmbAccount.onClick = Guarded(life_, [this] { cmbAccount_Click(); });
  Timer1.onTimer = Guarded(life_, [this] { Timer1_Timer(); });
  cmdValue.onClick = Guarded(life_, [this] { cmdValue_Click(); });
  calValueDate.onDateClick = Guarded(life_, [this](Date day) { calValueDate_DateClick(day); });
  calValueDate.onKeyPress = Guarded(life_, [this](Integer& key) { calValueDate_KeyPress(key); });
}

void Clientticket::UserControl_Initialize() {
  ResumeNext([&] { MaxOrderSize = 1000000; });
  // The decimal sign is the second character of 0 written as "0.0" under the user's locale.
  ResumeNext([&] {
    std::string zero = FormatNumber(0, "0.0", locale());
    std::size_t start = 1;
    std::size_t end = start + 1;
    while (end < zero.size() && (static_cast<unsigned char>(zero[end]) & 0xC0) == 0x80) ++end;
    DecimalSeparator = zero.substr(start, end - start);
  });
  ResumeNext([&] { Accounts.assign(1, AccountRec{}); });
}

void Clientticket::Enable(Boolean bEnable) {
  try {
    cmbAccount.setEnabled(bEnable);
    cmdValue.setEnabled(bEnable);
    fraConf.setVisible(false);
    fraOrderEntry.setEnabled(bEnable);
    cmdOKCancel(0).setEnabled(bEnable);
    cmdOKCancel(1).setEnabled(bEnable);
    cmdOKCancel(2).setEnabled(true);
  } catch (...) {
    Report(CurrentError(), "Enable", false);
  }
}

void Clientticket::Set_Ticket_Colour(Long lColour, Long lEditColour) {
  auto paint = [](Control& control, Long colour) {
    ResumeNext([&] { control.setBackColor(colour); });
  };
  auto paintElement = [](auto& array, int index, Long colour) {
    ResumeNext([&] { array(index).setBackColor(colour); });
  };
  paint(UserControl, lColour);
  paint(fraHide, lColour);
  paint(fraOrderType, lColour);
  paint(fraTradeConf, lColour);
  paintElement(optType, 1, lColour);
  paintElement(optType, 2, lColour);
  paintElement(optType, 3, lColour);
  paintElement(optType, 5, lColour);
  paintElement(optType, 4, lColour);
  paint(fraValid, lColour);
  paintElement(optValid, 0, lColour);
  paintElement(optValid, 1, lColour);
  paint(fraOrderEntry, lColour);
  paint(fraConf, lColour);
  paint(fraQuote, lColour);
  paint(fraSubQuote, lColour);
  paint(txtPrice, lColour);
  paint(txtBid, lColour);
  paint(txtOffer, lColour);
  paint(fraClientPrices, lColour);
  paint(lblBid, lColour);
  paint(lblOffer, lColour);
  paint(txtLimit, lEditColour);
  paint(txtStop, lEditColour);
  paint(txtPrimQty, lEditColour);
  paint(txtSecQty, lEditColour);
  paintElement(optBuySell, 0, lColour);
  paintElement(optBuySell, 1, lColour);
  paint(fraEquity, lColour);
  paint(lblEquity, lColour);
  paint(lblTradLimit, lColour);
  paint(txtEquity, lColour);
  paint(txtTradLimit, lColour);
}

void Clientticket::Report(const RuntimeError& error, const char* functionName, bool withText) {
  Long number = error.number();
  std::string text = withText ? error.description() : std::string();
  std::string name = functionName;
  ResumeNext([&] { raise(&ClientticketEvents::ErrorMsg, number, text, name); });
}

}  // namespace quillon
