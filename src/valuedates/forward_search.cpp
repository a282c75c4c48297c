// Forward instruments: Get_Inst_Family, Find_New_Inst.

#include <limits>

#include "platform/date.h"
#include "ticket/ticket_model.h"

namespace quillon {
namespace {

// Terms of an instrument that mean something to the search.
constexpr Integer kTermSpot = 2;
constexpr Integer kTermOwnClass = 6;
constexpr Integer kTermForward = 7;
constexpr Integer kTermFallback = 11;
constexpr Integer kNoClass = 0;

// The class searched for a date `daysFromSpot` away from spot, from an instrument of `term`.
Integer ClassOf(Long daysFromSpot, Integer term) {
  if (daysFromSpot == 0) return kTermSpot;
  if (term == kTermOwnClass) return kTermOwnClass;
  if (daysFromSpot > 0) {
    if (term == kTermForward || term == kTermSpot || term == kTermFallback) return kTermForward;
    return kNoClass;
  }
  return term == kTermFallback ? kTermForward : kNoClass;
}

}  // namespace

Boolean Clientticket::Get_Inst_Family(Long lInstID, std::vector<Long>& Family) {
  try {
    const InstrumentRec parent = Inst_Get_Array(lInstID);
    Long baseID = parent.BaseID;
    Long valueID = parent.ValueID;
    Long linkID = parent.InstrumentID;
    Long sourceID = 0;
    Integer instType = 0, term = 0, status = 0;
    Date expiry = 0;
    Variant ids;
    Variant scratch;  // stands for the four arrays whose contents the search never reads
    Inst_Get_Array_All(baseID, valueID, linkID, sourceID, instType, term, expiry, status, ids,
                       scratch, scratch, scratch, scratch);
    // No array raises "Type mismatch" here, an empty one "Subscript out of range" below.
    const Long upper = ids.ubound();
    if (upper < 0) Raise(kSubscriptOutOfRange);
    // The 16-bit counter could not pass this bound: refuse before sizing the family.
    if (upper >= std::numeric_limits<Integer>::max()) Raise(kOverflow);
    Family.assign(static_cast<std::size_t>(upper) + 1, 0);
    for (Integer i = 0; i <= upper; i = IntAdd(i, 1)) {
      Family[static_cast<std::size_t>(i)] = ids.at(i).toLong();
      yield();
    }
    return true;
  } catch (...) {
    Report(CurrentError(), "Get_Inst_Family", true);
  }
  return false;
}

Long Clientticket::Find_New_Inst(Long& lInstID, Date& dtValue) {
  Long result = -1;
  try {
    const InstrumentRec current = Inst_Get_Array(lInstID);
    InstrumentRec parent = current.LinkID != 0 ? Inst_Get_Array(current.LinkID) : current;
    Date tradingDay = Trading_Day_Of(Get_System_Time());
    Date spotCode = kNoDate;
    const Date spot = Get_Settlement_Day(tradingDay, spotCode, parent.InstrumentID);

    const Integer wanted = ClassOf(DiffDays(spot, dtValue), current.Term);
    if (wanted == kNoClass) return result;

    std::vector<Long> family;
    if (!Get_Inst_Family(parent.InstrumentID, family)) return result;

    Long fallback = -1;
    for (Long memberID : family) {
      tradingDay = Trading_Day_Of(Get_System_Time());
      const InstrumentRec member = Inst_Get_Array(memberID);
      // The parent's currencies decide the holidays; the code goes in as a copy.
      Date code = member.ValueDate;
      const Date settles = Get_Settlement_Day(tradingDay, code, parent.InstrumentID);
      if (member.Term == kTermFallback) {
        fallback = memberID;
      } else if (DiffDays(settles, dtValue) == 0 && member.Term == wanted) {
        result = memberID;
        return result;
      }
      yield();
    }
    result = fallback != -1 && wanted == kTermForward ? fallback : parent.InstrumentID;
  } catch (...) {
    Report(CurrentError(), "Find_New_Inst", true);
  }
  return result;
}

}  // namespace quillon
