// The run-time error and the two ways a procedure can meet it.
#pragma once

#include <exception>
#include <string>

#include "platform/types.h"

namespace quillon {

// Classic run-time error numbers.
enum RuntimeErrorNumber : Long {
  kInvalidProcedureCall = 5,  // "Invalid procedure call or argument"
  kOverflow = 6,              // "Overflow"
  kSubscriptOutOfRange = 9,   // "Subscript out of range"
  kDivisionByZero = 11,       // "Division by zero"
  kTypeMismatch = 13,         // "Type mismatch"
  kResourceNotFound = 326,    // "Resource with identifier '...' not found"
  kAutomationError = 440,     // "Automation error": an exception from outside the ticket
};

// A run-time error raised by a platform operation. Procedure bodies catch it: at the statement
// (resume-next) or at the procedure (stop-and-report).
class RuntimeError : public std::exception {
 public:
  RuntimeError(Long number, std::string description);
  explicit RuntimeError(Long number);  // with the classic text for the number

  Long number() const noexcept { return number_; }
  const std::string& description() const noexcept { return description_; }
  const char* what() const noexcept override { return description_.c_str(); }

  // The classic text of an error number ("Overflow" for 6); empty for an unknown number.
  static std::string TextOf(Long number);

 private:
  Long number_;
  std::string description_;
};

[[noreturn]] void Raise(Long number);
[[noreturn]] void Raise(Long number, std::string description);

// Not a failure: thrown when the object whose procedure is running was destroyed by the code
// it called out to (a host that deletes its ticket inside an event or a yield). It unwinds the
// procedures to the frame where the object was entered from outside, touching nothing of the
// object on the way: resume-next and stop-and-report let it through.
struct ObjectDestroyed {};

// Turns whatever was thrown into a RuntimeError: a RuntimeError as it is, any other
// exception (for instance from a host's event handler) as an automation error. Meant for a
// catch block; outside one it gives an automation error. An ObjectDestroyed is thrown on.
RuntimeError CurrentError();

// Resume-next: runs one statement; if it fails, the failure has no effect and no report.
template <typename Statement>
inline void ResumeNext(Statement&& statement) {
  try {
    statement();
  } catch (const ObjectDestroyed&) {
    throw;
  } catch (...) {
  }
}

}  // namespace quillon
