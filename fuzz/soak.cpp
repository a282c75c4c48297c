// The soak: a long run of random steps against ticket after ticket, with the same promises
// checked after every step as in the fuzz target.
//   quillon-soak [STEPS] [SEED]   (default one million steps, seed 1)
// Prints what the run went through; exits 1 when the memory the program holds grew past its
// bound.

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>

#include "ticket_driver.h"

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define QUILLON_SOAK_ASAN 1
#endif
#endif
#if defined(__SANITIZE_ADDRESS__)
#define QUILLON_SOAK_ASAN 1
#endif

#ifdef QUILLON_SOAK_ASAN
#include <sanitizer/allocator_interface.h>
#else
#include <malloc.h>
#endif

namespace {

// Bytes the program holds in live allocations. Under AddressSanitizer the resident set also
// carries the sanitizer's own records, which grow with every new allocation site and stack;
// the live bytes are what a leak or an ever-growing history would show in.
std::size_t LiveBytes() {
#ifdef QUILLON_SOAK_ASAN
  return __sanitizer_get_current_allocated_bytes();
#else
  return mallinfo2().uordblks;
#endif
}

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

// AddressSanitizer keeps freed memory in quarantine, 256 MB by default; a smaller one keeps
// the run's footprint down.
extern "C" const char* __asan_default_options() { return "quarantine_size_mb=16"; }

int main(int argc, char** argv) {
  const unsigned long long steps = argc > 1 ? std::strtoull(argv[1], nullptr, 10) : 1000000ull;
  const unsigned long long seed = argc > 2 ? std::strtoull(argv[2], nullptr, 10) : 1ull;
  quillon::fuzz::RandomChoices choices(seed);
  quillon::fuzz::TicketDriver driver(choices);

  // Live memory is sampled through the run; after the first tenth, its peak may not climb
  // past the peak of that tenth by more than a few tickets' worth.
  const unsigned long long settle = steps / 10;
  std::size_t settledPeak = 0, peak = 0;
  for (unsigned long long i = 0; i < steps; ++i) {
    driver.step();
    if ((i & 0x3FF) == 0 || i + 1 == steps) {
      const std::size_t live = LiveBytes();
      if (i <= settle && live > settledPeak) settledPeak = live;
      if (live > peak) peak = live;
    }
  }

  const quillon::fuzz::DriverStats& s = driver.stats();
  std::printf("steps %llu, seed %llu\n", static_cast<unsigned long long>(s.steps), seed);
  std::printf("tickets %llu, destroyed by the host inside a call %llu\n",
              static_cast<unsigned long long>(s.tickets),
              static_cast<unsigned long long>(s.destroyedInside));
  std::printf("failing host handlers %llu\n", static_cast<unsigned long long>(s.hostFailures));
  std::printf("calls back into the ticket %llu, order events %llu, error reports %llu\n",
              static_cast<unsigned long long>(s.reentries),
              static_cast<unsigned long long>(s.orderEvents),
              static_cast<unsigned long long>(s.errorReports));
  static const char* const kStates[] = {"blank", "statement", "sent", "active", "pending",
                                        "quote", "executed", "cancelled", "other"};
  std::printf("steps ending in each state:");
  for (std::size_t i = 0; i < s.states.size(); ++i)
    std::printf(" %s %llu", kStates[i], static_cast<unsigned long long>(s.states[i]));
  std::printf("\nlive memory: peak %zu kB in the first tenth, %zu kB overall; resident %ld kB\n",
              settledPeak / 1024, peak / 1024, ResidentKb());
  constexpr std::size_t kSlack = 4u << 20;
  if (peak > settledPeak + kSlack) {
    std::fprintf(stderr, "quillon-soak: live memory grew from %zu kB to %zu kB\n",
                 settledPeak / 1024, peak / 1024);
    return 1;
  }
  return 0;
}
