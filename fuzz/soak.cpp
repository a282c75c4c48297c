// The soak: a long run of random steps against ticket after ticket, with the same promises
// checked after every step as in the fuzz target.
//   quillon-soak [STEPS] [SEED]   (default one million steps, seed 1)
// Prints what the run went through; exits 1 when the resident memory grew past its bound.

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>

#include "ticket_driver.h"

namespace {

// The resident set in kB, from /proc; 0 where there is none.
long ResidentKb() {
  std::ifstream status("/proc/self/status");
  std::string line;
  while (std::getline(status, line)) {
    if (line.rfind("VmRSS:", 0) == 0) return std::strtol(line.c_str() + 6, nullptr, 10);
  }
  return 0;
}

}  // namespace

// AddressSanitizer keeps freed memory in quarantine, 256 MB by default; a smaller one lets the
// resident set settle early, so that growth after it means the ticket holds on to memory.
extern "C" const char* __asan_default_options() { return "quarantine_size_mb=16"; }

int main(int argc, char** argv) {
  const unsigned long long steps = argc > 1 ? std::strtoull(argv[1], nullptr, 10) : 1000000ull;
  const unsigned long long seed = argc > 2 ? std::strtoull(argv[2], nullptr, 10) : 1ull;
  quillon::fuzz::RandomChoices choices(seed);
  quillon::fuzz::TicketDriver driver(choices);

  // Memory is measured once the run has settled and again at the end; a ticket that leaks or
  // a history that grows shows as growth between the two.
  const unsigned long long settle = steps / 10;
  long settled = 0, peak = 0;
  for (unsigned long long i = 0; i < steps; ++i) {
    driver.step();
    if (i == settle) settled = ResidentKb();
    if ((i & 0xFFFF) == 0) {
      const long now = ResidentKb();
      if (now > peak) peak = now;
    }
  }
  const long end = ResidentKb();
  if (end > peak) peak = end;

  const quillon::fuzz::DriverStats& s = driver.stats();
  std::printf("steps %llu, seed %llu\n", static_cast<unsigned long long>(s.steps), seed);
  std::printf("tickets %llu, destroyed by the host inside a call %llu\n",
              static_cast<unsigned long long>(s.tickets),
              static_cast<unsigned long long>(s.destroyedInside));
  std::printf("calls back into the ticket %llu, order events %llu, error reports %llu\n",
              static_cast<unsigned long long>(s.reentries),
              static_cast<unsigned long long>(s.orderEvents),
              static_cast<unsigned long long>(s.errorReports));
  static const char* const kStates[] = {"blank", "statement", "sent", "active", "pending",
                                        "quote", "executed", "cancelled", "other"};
  std::printf("steps ending in each state:");
  for (std::size_t i = 0; i < s.states.size(); ++i)
    std::printf(" %s %llu", kStates[i], static_cast<unsigned long long>(s.states[i]));
  std::printf("\nresident memory: %ld kB settled, %ld kB at the end, %ld kB peak\n", settled, end,
              peak);
  // Bounded memory: past the settling the run may not grow by more than a quarter plus 64 MB.
  if (settled > 0 && end > settled + settled / 4 + 65536) {
    std::fprintf(stderr, "quillon-soak: memory grew from %ld kB to %ld kB\n", settled, end);
    return 1;
  }
  return 0;
}
