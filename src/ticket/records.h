// The records, enumerations, flag bits and colours of the ticket's vocabulary.
#pragma once

#include <string>

#include "platform/types.h"

namespace quillon {

// One account.
struct AccountRec {
  Long AccountID = 0;
  std::string AccountName;
  Long PriceProfile = 0;
  bool operator==(const AccountRec&) const = default;
};

// One instrument as the host returns it.
struct InstrumentRec {
  Long InstrumentID = 0;
  std::string ShortDesc;
  std::string LongDesc;
  Long BaseID = 0;
  Long SourceID = 0;
  Long LinkID = 0;
  Integer InstType = 0;
  Integer Term = 0;
  Integer CallPut = 0;
  Long ValueID = 0;
  double Strike = 0;
  Date ValueDate = 0;  // the forward period as a tenor code, not a calendar date
  Date Expiry = 0;
  double Pip = 0;
  Long ContractSize = 0;
  Integer Status = 0;  // 1: dealt on a quote, not at market
  bool operator==(const InstrumentRec&) const = default;
};

// A host's answer to VtInstGetArray from its record of the instrument: every out-argument but
// the instrument's own number.
inline void AnswerInstrument(const InstrumentRec& r, Long& BaseID, Long& ValueID, Long& LinkID,
                             Long& SourceID, Integer& InstType, Integer& Term,
                             std::string& ShortDesc, std::string& LongDesc, Long& ContractSize,
                             Date& Expiry, double& Pip, double& Strike, Integer& Status,
                             Integer& CallPut, Date& ValueDate) {
  BaseID = r.BaseID, ValueID = r.ValueID, LinkID = r.LinkID, SourceID = r.SourceID;
  InstType = r.InstType, Term = r.Term, ShortDesc = r.ShortDesc, LongDesc = r.LongDesc;
  ContractSize = r.ContractSize, Expiry = r.Expiry, Pip = r.Pip, Strike = r.Strike;
  Status = r.Status, CallPut = r.CallPut, ValueDate = r.ValueDate;
}

// One price as the host returns it.
struct PriceRec {
  double Bid = 0;
  double Offer = 0;
  double High = 0;
  double Low = 0;
  Date PriceTime = 0;
  Long CounterpartyID = 0;
  Long SourceID = 0;
  Long InstrumentID = 0;
  Long PriceType = 0;
  bool operator==(const PriceRec&) const = default;
};

// The enumerations travel in messages as their numbers; a message may carry any number, so
// members and arguments hold them as Long.
enum StatusOfOrder : Long {
  ORDER_BLANK = -1,  // no name in the interface: the blank ticket
  ORDER_PLACED = 0,
  ORDER_ACTIVE = 1,
  ORDER_CANCELLED = 2,
  ORDER_EXECUTED = 3,
  ORDER_QUOTED = 4,
  ORDER_PENDING = 5,
  ORDER_EXECUTED_INTERNAL = 6,
  ORDER_CANCELLED_INTERNAL = 7,
  ORDER_MATCHED = 8,
  ORDER_VALID_TO_TRADE = 9,
  ORDER_TRADER_ACCEPTED = 10,
  ORDER_TRADER_CANCELLED = 11,
  ORDER_CLIENT_ACCEPTED = 12,
  ORDER_CLIENT_CANCELLED = 13,
  ORDER_MATCHED_FAILED = 14,
  ORDER_TRADER_PENDING = 15,
  ORDER_TRADER_QUOTED = 16,
  ORDER_MATCHED_WITH_INTERFACE = 17,
  ORDER_MATCHED_FAILED_WITH_INTERFACE = 18,
  ORDER_CANCEL_REQUEST = 19,
  TRADE_MANUAL = 20,
  ORDER_ACTIVE_INTERNAL = 21,
  ORDER_MANUAL = 22,
  TRADE_CANCEL = 23,
  TRADE_CANCEL_INTERNAL = 24,
  ORDER_WAITING = 26,
  ORDER_CLIENT_QUOTED = 27,
  ORDER_CANCEL_REQUEST_REJECT = 29,
};

enum TypeOfOrder : Long {
  MARKET_ORDER = 1,
  LIMIT_ORDER = 2,
  STOPLOSS_ORDER = 3,
  OCO_ORDER = 4,
  TWOWAY_ORDER = 5,
  MANUAL_ORDER = 6,
  MANUAL_TRADE = 7,
  ONEWAY_QUOTE = 8,
  CASH_TRADE = 9,
  ORDER_NEGOTIABLE = 10,
  ORDER_REINVEST_NEGOTIABLE = 11,
};

enum TypeOfPrimarySecondaryQty : Long { QTY_PRIMARY = 0, QTY_SECONDARY = 1 };
enum TypeOfTrading : Long { DUMMY_TRADING = 0, LIVE_TRADING = 1 };
enum TypeOfAction : Long { ACTION_NONE = 0, ACTION_OCO = 1, ACTION_OTO = 2 };
enum TypeOfPrice : Long { PRICE_INDICATIVE = 1, PRICE_TRADED = 2, PRICE_BOTH = 3 };

// Bits of AccountType.
namespace AccountBits {
constexpr Integer kLive = 0x0002;
constexpr Integer kMarket = 0x0004;
constexpr Integer kFixedSize = 0x0008;
constexpr Integer kPendingA = 0x0080;
constexpr Integer kPendingB = 0x0200;
constexpr Integer kQuote = 0x0400;
constexpr Integer kLiveFlag = 0x0800;
}  // namespace AccountBits

// The ticket's colours, 0x00BBGGRR or system colours with the high bit set.
namespace TicketColour {
constexpr Long kButtonFace = static_cast<Long>(0x8000000F);
constexpr Long kHighlightText = static_cast<Long>(0x8000000E);
constexpr Long kMenu = static_cast<Long>(0x80000004);
constexpr Long kYellow = 0x0000FFFF;
constexpr Long kWhite = 0x00FFFFFF;
constexpr Long kGreen = 0x0000FF00;
constexpr Long kCyan = 0x00FFFF00;
constexpr Long kBlack = 0x00000000;
}  // namespace TicketColour

// The pattern of every amount: grouping, two decimals, a negative number in brackets.
inline constexpr const char* kAmountPattern = "#,##0.00;(#,##0.00)";

// The bank's own name in the ticket's wording.
inline constexpr const char* kCompanyNameLong = "Halden Bank";

}  // namespace quillon
