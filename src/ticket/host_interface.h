// The ticket's events: the host's side of the conversation.
#pragma once

#include <string>

#include "platform/types.h"
#include "platform/variant.h"
#include "ticket/records.h"

namespace quillon {

// A host implements the events it cares about. Every event is synchronous: the ticket goes on
// only when the handler returns, and reads the by-reference (non-const reference) arguments
// at that moment. The default bodies answer nothing, so a host that leaves `Connected` counts
// as not connected. A handler may call back into the ticket.
class ClientticketEvents {
 public:
  virtual ~ClientticketEvents() = default;

  // 1
  virtual void CloseTicket() {}
  // 2
  virtual void ErrorMsg(Long& ErrorNum, std::string& ErrorString, std::string& FunctionName) {
    (void)ErrorNum, (void)ErrorString, (void)FunctionName;
  }
  // 3
  virtual void GetReason(Integer Reason, std::string& ReasonDesc) { (void)Reason, (void)ReasonDesc; }
  // 4
  virtual void GID(Integer& GID) { (void)GID; }
  // 5
  virtual void Message(std::string Message) { (void)Message; }
  // 6
  virtual void VtInstGetArrayAll(Long& BaseID, Long& ValueID, Long& LinkID, Long& SourceID,
                                 Integer& InstType, Integer& Term, Date& Expiry, Integer& Status,
                                 Variant& InstrumentIDArray, Variant& BaseIDArray,
                                 Variant& ValueIDArray, Variant& LinkIDArray,
                                 Variant& SourceIDArray, Boolean& bSuccess) {
    (void)BaseID, (void)ValueID, (void)LinkID, (void)SourceID, (void)InstType, (void)Term;
    (void)Expiry, (void)Status, (void)InstrumentIDArray, (void)BaseIDArray, (void)ValueIDArray;
    (void)LinkIDArray, (void)SourceIDArray, (void)bSuccess;
  }
  // 7
  virtual void Connected(Boolean& Connected) { (void)Connected; }
  // 8
  virtual void VtInstGetArray(Long& InstrumentID, Long& BaseID, Long& ValueID, Long& LinkID,
                              Long& SourceID, Integer& InstType, Integer& Term,
                              std::string& ShortDesc, std::string& LongDesc, Long& ContractSize,
                              Date& Expiry, double& Pip, double& Strike, Integer& Status,
                              Integer& CallPut, Date& ValueDate) {
    (void)InstrumentID, (void)BaseID, (void)ValueID, (void)LinkID, (void)SourceID;
    (void)InstType, (void)Term, (void)ShortDesc, (void)LongDesc, (void)ContractSize;
    (void)Expiry, (void)Pip, (void)Strike, (void)Status, (void)CallPut, (void)ValueDate;
  }
  // 9
  virtual void VtOrderGenericNew(Long ToID, Long OrderID, Long AccountID, Long InstrumentID,
                                 double Quantity, Long PrimarySecondaryQty, double Price,
                                 Long OrderType, Date Duration, Date MarketTime, Date ValueDate,
                                 Long Status, Long LinkID, Integer Action, Integer Reason,
                                 Long CounterpartyID, Boolean Encrypt, Long DummyLive,
                                 std::string FreeFormat, Long SystemID, Integer GID,
                                 Long CounterPartySystemID, Long PriceProfileID,
                                 Integer Priority) {
    (void)ToID, (void)OrderID, (void)AccountID, (void)InstrumentID, (void)Quantity;
    (void)PrimarySecondaryQty, (void)Price, (void)OrderType, (void)Duration, (void)MarketTime;
    (void)ValueDate, (void)Status, (void)LinkID, (void)Action, (void)Reason;
    (void)CounterpartyID, (void)Encrypt, (void)DummyLive, (void)FreeFormat, (void)SystemID;
    (void)GID, (void)CounterPartySystemID, (void)PriceProfileID, (void)Priority;
  }
  // 10: each Variant holds an array with one element per order.
  virtual void VtOrderGenericArray(Long& ToID, Variant& OrderID, Variant& AccountID,
                                   Variant& InstrumentID, Variant& Quantity,
                                   Variant& PrimarySecondaryQty, Variant& Price,
                                   Variant& OrderType, Variant& Duration, Variant& MarketTime,
                                   Variant& ValueDate, Variant& Status, Variant& Reason,
                                   Variant& CounterpartyID, Variant& FreeFormat, Variant& LinkID,
                                   Variant& Action, Variant& SystemID,
                                   Variant& CounterPartySystemID, Variant& PriceProfileID,
                                   Long& DummyLive, Boolean& Encrypt, Integer& GID,
                                   Integer& Priority) {
    (void)ToID, (void)OrderID, (void)AccountID, (void)InstrumentID, (void)Quantity;
    (void)PrimarySecondaryQty, (void)Price, (void)OrderType, (void)Duration, (void)MarketTime;
    (void)ValueDate, (void)Status, (void)Reason, (void)CounterpartyID, (void)FreeFormat;
    (void)LinkID, (void)Action, (void)SystemID, (void)CounterPartySystemID;
    (void)PriceProfileID, (void)DummyLive, (void)Encrypt, (void)GID, (void)Priority;
  }
  // 11
  virtual void VtTradeGenericNew(Long ToID, Long TradeID, Long AccountID, Long InstrumentID,
                                 double Quantity, Long PrimarySecondaryQty, double Price,
                                 Integer TradeType, Date MarketTime, Date ValueDate,
                                 Integer Status, Integer Reason, Long OrderID,
                                 Long CounterpartyID, Long LinkID, Boolean Encrypt,
                                 Long DummyLive, std::string FreeFormat, Long SystemID,
                                 Integer GID, Long CounterPartySystemID, Long PriceProfileID,
                                 Integer Priority) {
    (void)ToID, (void)TradeID, (void)AccountID, (void)InstrumentID, (void)Quantity;
    (void)PrimarySecondaryQty, (void)Price, (void)TradeType, (void)MarketTime, (void)ValueDate;
    (void)Status, (void)Reason, (void)OrderID, (void)CounterpartyID, (void)LinkID;
    (void)Encrypt, (void)DummyLive, (void)FreeFormat, (void)SystemID, (void)GID;
    (void)CounterPartySystemID, (void)PriceProfileID, (void)Priority;
  }
  // 12
  virtual void VtPriceGenericRequest(Long ToID, Long InstrumentID, Long SourceID) {
    (void)ToID, (void)InstrumentID, (void)SourceID;
  }
  // 13
  virtual void VtPriceGetArray(Long InstrumentID, Long SourceID, Long& CounterpartyID,
                               double& Bid, double& Offer, double& High, double& Low,
                               Long& PriceType, Date& PriceTime, Long& PriceProfileID) {
    (void)InstrumentID, (void)SourceID, (void)CounterpartyID, (void)Bid, (void)Offer;
    (void)High, (void)Low, (void)PriceType, (void)PriceTime, (void)PriceProfileID;
  }
  // 14
  virtual void SystemTime(Date& SystemTime) { (void)SystemTime; }
  // 15
  virtual void RequestEquity(Long& AccountID, Long& InstrumentID) {
    (void)AccountID, (void)InstrumentID;
  }
  // 16
  virtual void ResizeTicket(Integer& Action) { (void)Action; }
};

}  // namespace quillon
