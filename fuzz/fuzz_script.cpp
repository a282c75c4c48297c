// Fuzz target: the input is a quillon-script, read line by line and played against a ticket.
// Whatever the lines hold, the host reports a bad line and stops; it never crashes or hangs.

#include <cstddef>
#include <cstdint>
#include <sstream>
#include <string>

#include "script_host.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::istringstream in(std::string(reinterpret_cast<const char*>(data), size));
  std::ostringstream out, err;
  quillon::script::ScriptHost host;
  host.run(in, out, err);
  return 0;
}
