#include "event_log.h"

#include <cmath>
#include <cstdio>

#include "platform/date.h"
#include "platform/runtime_error.h"

namespace quillon::demo {

std::string LogEntry::text() const {
  std::string out = "T" + std::to_string(ticket) + (call ? " << " : " ") + event;
  for (const auto& [name, value] : args) out += " " + name + "=" + value;
  return out;
}

void EventLog::add(LogEntry entry) {
  entries_.push_back(std::move(entry));
  if (onEntry) onEntry(entries_.back());
}

std::string EventLog::text(bool withQuestions) const {
  std::string out;
  for (const LogEntry& e : entries_)
    if (withQuestions || !e.question) out += e.text() + "\n";
  return out;
}

std::vector<const LogEntry*> EventLog::named(const std::string& event) const {
  std::vector<const LogEntry*> out;
  for (const LogEntry& e : entries_)
    if (e.event == event && !e.call) out.push_back(&e);
  return out;
}

std::vector<const LogEntry*> EventLog::calls(const std::string& method) const {
  std::vector<const LogEntry*> out;
  for (const LogEntry& e : entries_)
    if (e.event == method && e.call) out.push_back(&e);
  return out;
}

std::string NumberText(double value) {
  char buffer[40];
  std::snprintf(buffer, sizeof buffer, "%.15g", value);
  return buffer;
}

std::string DateText(Date value) {
  try {
    return FormatIsoDateTime(value);
  } catch (const RuntimeError&) {
    return NumberText(value);
  }
}

std::string BoolText(bool value) { return value ? "true" : "false"; }

std::string QuotedText(const std::string& value) {
  std::string out = "\"";
  for (char c : value) {
    if (c == '\r') out += "\\r";
    else if (c == '\n') out += "\\n";
    else if (c == '"') out += "\\\"";
    else out += c;
  }
  return out + "\"";
}

std::string VariantText(const Variant& value) {
  if (!value.isArray()) {
    if (value.isEmpty()) return "Empty";
    if (value.type() == Variant::Type::String) return QuotedText(value.toString());
    return NumberText(value.toDouble());
  }
  std::string out = "[";
  for (const Variant& e : value.array().elements) {
    if (out.size() > 1) out += ",";
    out += VariantText(e);
  }
  return out + "]";
}

}  // namespace quillon::demo
