// The wrappers of the question events, one per event:
//   Is_Connected, Get_GID, Get_Reason_Desc, Get_System_Time, Price_Get_Array, Inst_Get_Array,
//   Inst_Get_Array_All.
// Each carries on after a failing statement: a host that throws leaves the answer as it was.

#include "ticket/ticket_model.h"

namespace quillon {

Boolean Clientticket::Is_Connected() {
  Boolean connected = false;
  ResumeNext([&] { raise(&ClientticketEvents::Connected, connected); });
  return connected;
}

Integer Clientticket::Get_GID() {
  Integer gid = 0;
  ResumeNext([&] { raise(&ClientticketEvents::GID, gid); });
  GID = gid;
  return GID;
}

std::string Clientticket::Get_Reason_Desc(Integer Reason) {
  std::string description;
  ResumeNext([&] { raise(&ClientticketEvents::GetReason, Reason, description); });
  return description;
}

Date Clientticket::Get_System_Time() {
  Date now = 0;
  ResumeNext([&] { now = loop().now(); });
  ResumeNext([&] { raise(&ClientticketEvents::SystemTime, now); });
  return now;
}

PriceRec Clientticket::Price_Get_Array(Long InstrumentID, Long SourceID, Long& PriceProfileID) {
  PriceRec price;
  price.InstrumentID = InstrumentID;
  price.SourceID = SourceID;
  ResumeNext([&] {
    raise(&ClientticketEvents::VtPriceGetArray, price.InstrumentID, price.SourceID,
          price.CounterpartyID, price.Bid, price.Offer, price.High, price.Low, price.PriceType,
          price.PriceTime, PriceProfileID);
  });
  return price;
}

InstrumentRec Clientticket::Inst_Get_Array(Long InstrumentID) {
  InstrumentRec inst;
  if (InstrumentID == 0) return inst;
  inst.InstrumentID = InstrumentID;
  ResumeNext([&] {
    raise(&ClientticketEvents::VtInstGetArray, inst.InstrumentID, inst.BaseID, inst.ValueID,
          inst.LinkID, inst.SourceID, inst.InstType, inst.Term, inst.ShortDesc, inst.LongDesc,
          inst.ContractSize, inst.Expiry, inst.Pip, inst.Strike, inst.Status, inst.CallPut,
          inst.ValueDate);
  });
  if (inst.LongDesc.empty()) ResumeNext([&] { inst.LongDesc = LoadResString(374); });
  if (inst.ShortDesc.empty()) ResumeNext([&] { inst.ShortDesc = LoadResString(374); });
  return inst;
}

Boolean Clientticket::Inst_Get_Array_All(Long& BaseID, Long& ValueID, Long& LinkID,
                                         Long& SourceID, Integer& InstType, Integer& Term,
                                         Date& Expiry, Integer& Status,
                                         Variant& InstrumentIDArray, Variant& BaseIDArray,
                                         Variant& ValueIDArray, Variant& LinkIDArray,
                                         Variant& SourceIDArray) {
  Boolean success = false;
  ResumeNext([&] {
    raise(&ClientticketEvents::VtInstGetArrayAll, BaseID, ValueID, LinkID, SourceID, InstType, Term,
          Expiry, Status, InstrumentIDArray, BaseIDArray, ValueIDArray, LinkIDArray, SourceIDArray,
          success);
  });
  return success;
}

}  // namespace quillon
