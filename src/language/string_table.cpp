// The string table. Only the entries the ticket shows are carried.

#include "language/string_table.h"

#include <algorithm>
#include <vector>
#include <utility>

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

// Entries sorted by number, each text built once.
const std::vector<std::pair<Long, std::string>>& Table() {
  static const auto table = [] {
    std::vector<std::pair<Long, std::string>> rows;
    for (const Entry& e : kEntries) {
      rows.emplace_back(1000 + e.n, e.english);
      rows.emplace_back(2000 + e.n, e.german);
    }
    std::sort(rows.begin(), rows.end(),
              [](const auto& a, const auto& b) { return a.first < b.first; });
    return rows;
  }();
  return table;
}

}  // namespace

const std::string* FindResString(Long entry) {
  const auto& table = Table();
  auto it = std::lower_bound(table.begin(), table.end(), entry,
                             [](const auto& row, Long key) { return row.first < key; });
  if (it == table.end() || it->first != entry) return nullptr;
  return &it->second;
}

}  // namespace quillon
