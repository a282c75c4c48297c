#include "platform/runtime_error.h"

#include <utility>

namespace quillon {

RuntimeError::RuntimeError(Long number, std::string description)
    : number_(number), description_(std::move(description)) {}

RuntimeError::RuntimeError(Long number) : number_(number), description_(TextOf(number)) {
  if (description_.empty()) description_ = "Application-defined or object-defined error";
}

std::string RuntimeError::TextOf(Long number) {
  switch (number) {
    case 3:
      return "Return without GoSub";
    case kInvalidProcedureCall:
      return "Invalid procedure call or argument";
    case kOverflow:
      return "Overflow";
    case 7:
      return "Out of memory";
    case kSubscriptOutOfRange:
      return "Subscript out of range";
    case 10:
      return "This array is fixed or temporarily locked";
    case kDivisionByZero:
      return "Division by zero";
    case kTypeMismatch:
      return "Type mismatch";
    case 28:
      return "Out of stack space";
    case 91:
      return "Object variable or With block variable not set";
    case 94:
      return "Invalid use of Null";
    case kResourceNotFound:
      return "Resource with identifier not found";
    case 380:
      return "Invalid property value";
    case 438:
      return "Object doesn't support this property or method";
    case kAutomationError:
      return "Automation error";
    default:
      return {};
  }
}

void Raise(Long number) { throw RuntimeError(number); }

void Raise(Long number, std::string description) {
  throw RuntimeError(number, std::move(description));
}

RuntimeError CurrentError() {
  const std::exception_ptr current = std::current_exception();
  if (!current) return RuntimeError(kAutomationError);
  try {
    std::rethrow_exception(current);
  } catch (const RuntimeError& e) {
    return e;
  } catch (const ObjectDestroyed&) {
    throw;
  } catch (...) {
    // Whatever else was thrown (a host's exception, the standard library's) came from outside
    // the ticket's own operations.
    return RuntimeError(kAutomationError);
  }
}

}  // namespace quillon
