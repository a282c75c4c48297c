// The headless tour: a fixed play of the demo's main roads, with a screenshot of each stage.
#pragma once

#include <QString>
#include <iosfwd>

namespace quillon::demo {

// Plays the tour on a virtual clock: a blank ticket, a market order confirmed and filled, a
// limit order pending then filled, a two-way quote answered, a ticket in German. Writes a PNG
// of each stage and the printed trade confirmation (PDF) to `folder`, then the event log
// (questions only if asked) to `out`. 0 when every stage played; 1 with the reason on `err`.
int RunTour(const QString& folder, bool withQuestions, std::ostream& out, std::ostream& err);

}  // namespace quillon::demo
