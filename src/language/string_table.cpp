// The string table. Only the entries the ticket shows are carried.

#include "language/string_table.h"

#include <array>
#include <cstdint>
#include <iterator>
#include <vector>

namespace quillon {
namespace {

struct Entry {
  Long n;
  const char* english;
  const char* german;
};

constexpr Entry kEntries[] = {
    {1, "&OK", "&OK"},
    {28, "&Place Order", "&Ausführen"},
    {31, "Account ID", "Kontonummer"},
    {37, "Buy", "Kauf"},
    {38, "Sell", "Verkauf"},
    {40, "Qty", "Anzahl"},
    {41, "Total", "Betrag"},
    {54, "1c", "1c"},
    {55, "5c", "5c"},
    {56, "10c", "10c"},
    {113, "Value Date", "Valuta"},
    {143, "You want to place the following order:", "Ich möchte folgende Order aufgeben:"},
    {162, "Yes", "Ja"},
    {163, "No", "Nein"},
    {171, "&Close", "&Schließen"},
    {208, "Type", "Typ"},
    {230, "   -   ", "   -   "},
    {301, "Seconds", "Sekunden"},
    {302, "Sell", "Verkauf"},
    {303, "Nothing", "Abbrechen"},
    {304, "Buy", "Kauf"},
    {336, "Quote", "Preisstellung"},
    {374, "Unknown", "Unbekannt"},
    {495, "Market", "Markt"},
    {502, "Limit", "Limit"},
    {503, "Stop", "Stop"},
    {504, "Day Order", "Tagesgültige Order"},
    {505, "GTC", "Gültig bis Storno"},
    {603, "You are not currently connected", "Verbindung unterbrochen"},
    {619, "ID # ", "ID # "},
};

// The texts, each built once, and where each entry's text stands: entries run from 1000 to
// 2999, so a look-up is one index instead of a search.
struct Table {
  static constexpr Long kFirst = 1000, kLast = 2999;
  std::vector<std::string> texts;
  std::array<std::uint8_t, kLast - kFirst + 1> at{};  // 0: no entry, else the text's place + 1
};

const Table& TheTable() {
  static const Table table = [] {
    static_assert(2 * std::size(kEntries) < 255, "an entry's place must fit its byte");
    Table t;
    t.texts.reserve(2 * std::size(kEntries));
    auto add = [&t](Long entry, const char* text) {
      t.texts.emplace_back(text);
      t.at[static_cast<std::size_t>(entry - Table::kFirst)] =
          static_cast<std::uint8_t>(t.texts.size());
    };
    for (const Entry& e : kEntries) {
      add(1000 + e.n, e.english);
      add(2000 + e.n, e.german);
    }
    return t;
  }();
  return table;
}

}  // namespace

const std::string* FindResString(Long entry) {
  if (entry < Table::kFirst || entry > Table::kLast) return nullptr;
  const Table& table = TheTable();
  const std::uint8_t place = table.at[static_cast<std::size_t>(entry - Table::kFirst)];
  return place == 0 ? nullptr : &table.texts[place - 1];
}

}  // namespace quillon
