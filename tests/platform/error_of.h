// The run-time error a statement raises, for tests of the platform layer.
#pragma once

#include "platform/runtime_error.h"
#include "platform/types.h"

namespace quillon {

// The error number a call raises, or 0 when it returns.
template <typename F>
Long ErrorOf(F&& f) {
  try {
    f();
  } catch (const RuntimeError& e) {
    return e.number();
  }
  return 0;
}

}  // namespace quillon
