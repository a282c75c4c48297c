// The ticket's language: LoadResString, and setLanguage with its walk over the captions.

#include <cmath>
#include <string>

#include "language/string_table.h"
#include "platform/number_format.h"
#include "ticket/ticket_model.h"

namespace quillon {

const std::string& Clientticket::LoadResString(double n) {
  // The product is 16-bit: a language of 33 or more overflows and fetches nothing.
  const Integer base = IntMul(Language, 1000);
  const Long entry = CLng(base + n);
  const std::string* text = FindResString(entry);
  if (!text) {
    Raise(kResourceNotFound,
          "Resource with identifier '" + std::to_string(entry) + "' not found");
  }
  return *text;
}

void Clientticket::setLanguage(Integer value) {
  const TicketEntry entry(life_);
  try {
    ResumeNext([&] { Language = value; });
    // Every caption that reads as a number is a string number. The walk translates once:
    // after it the captions hold words, so a second setting leaves them as they are.
    for (Control* control : controls().controls()) {
      if (control->kind() == ControlKind::Surface) continue;
      switch (control->kind()) {
        case ControlKind::Frame:
        case ControlKind::OptionButton:
        case ControlKind::CommandButton:
        case ControlKind::Label:
          ResumeNext([&] {
            const std::string& caption = control->Caption();
            if (IsNumericText(caption, locale())) {
              control->setCaption(LoadResString(ReadNumericText(caption, locale())));
            }
          });
          break;
        default:
          break;
      }
      ResumeNext([&] { yield(); });
    }
  } catch (const ObjectDestroyed&) {
    entry.ended();
  }
}

}  // namespace quillon
