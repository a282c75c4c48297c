// The record of every event the demo's tickets raise, with the arguments as text.
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "platform/types.h"
#include "platform/variant.h"

namespace quillon::demo {

struct LogEntry {
  int ticket = 0;
  std::string event;
  std::vector<std::pair<std::string, std::string>> args;  // name, value as text
  // A question the ticket asks (its arguments then hold the host's answers), as opposed to
  // an event that reports or sends something.
  bool question = false;
  // Not an event but the host's call of a ticket's method (the desk's answers).
  bool call = false;
  // "T2 VtOrderGenericNew ToID=900 OrderID=0 ...", a call as "T2 << OrderGeneric ...".
  std::string text() const;
};

class EventLog {
 public:
  void add(LogEntry entry);
  const std::vector<LogEntry>& entries() const { return entries_; }
  void clear() { entries_.clear(); }
  // Every entry as a line, questions included or not.
  std::string text(bool withQuestions) const;
  // The events of one name, in order.
  std::vector<const LogEntry*> named(const std::string& event) const;
  // The host's calls of one method, in order.
  std::vector<const LogEntry*> calls(const std::string& method) const;
  // Told of each entry as it is added.
  std::function<void(const LogEntry&)> onEntry;

 private:
  std::vector<LogEntry> entries_;
};

// Argument text: numbers as the shortest text that reads back, dates as ISO date-times,
// Booleans as true/false, texts in quotes, arrays in brackets.
std::string NumberText(double value);
std::string DateText(Date value);
std::string BoolText(bool value);
std::string QuotedText(const std::string& value);
std::string VariantText(const Variant& value);

}  // namespace quillon::demo
