// Fuzz target: the input is a stream of choices that the ticket driver turns into the host's
// calls and answers and the user's actions against one ticket (fuzz/ticket_driver.h).

#include <cstddef>
#include <cstdint>

#include "ticket_driver.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  quillon::fuzz::BufferChoices choices(data, size);
  // A few hundred steps reach every state; longer runs belong to the soak.
  quillon::fuzz::Play(choices, 400);
  return 0;
}
