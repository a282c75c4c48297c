// The ticket's numbered string table: entry 1000 + n is English, 2000 + n German.
#pragma once

#include <string>

#include "platform/types.h"

namespace quillon {

// The text of an entry, or nullptr when the table has no such entry.
const std::string* FindResString(Long entry);

}  // namespace quillon
