// Drives one ticket with a stream of choices: the host's calls and answers, the user's actions
// and the passing of time, and checks after every step what the ticket promises a host. Used
// by the fuzz target (choices from the fuzzer's input) and by the soak (choices from a seeded
// generator). A broken promise ends the process with a message on standard error.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

namespace quillon::fuzz {

// Where the driver's choices come from.
class Choices {
 public:
  virtual ~Choices() = default;
  virtual std::uint8_t byte() = 0;
  // No more real choices: every further byte is 0.
  virtual bool exhausted() const = 0;

  bool flag() { return byte() & 1; }
  std::uint16_t u16();
  std::uint32_t u32();
  // One of n, n at least 1.
  std::size_t pick(std::size_t n) { return n <= 256 ? byte() % n : u32() % n; }
};

// The fuzzer's input, byte by byte.
class BufferChoices : public Choices {
 public:
  BufferChoices(const std::uint8_t* data, std::size_t size) : data_(data), size_(size) {}
  std::uint8_t byte() override { return pos_ < size_ ? data_[pos_++] : 0; }
  bool exhausted() const override { return pos_ >= size_; }

 private:
  const std::uint8_t* data_;
  std::size_t size_;
  std::size_t pos_ = 0;
};

// An endless stream from a 64-bit seed (xorshift).
class RandomChoices : public Choices {
 public:
  explicit RandomChoices(std::uint64_t seed) : state_(seed ? seed : 0x9E3779B97F4A7C15ull) {}
  std::uint8_t byte() override;
  bool exhausted() const override { return false; }

 private:
  std::uint64_t state_;
  std::uint64_t bits_ = 0;
  int left_ = 0;
};

// What a run went through, for the soak's report.
struct DriverStats {
  std::uint64_t steps = 0;
  std::uint64_t tickets = 0;         // tickets created
  std::uint64_t destroyedInside = 0; // destroyed by the host while the ticket ran
  std::uint64_t reentries = 0;       // host calls made inside an event or a yield
  std::uint64_t hostFailures = 0;    // exceptions thrown by the host's event handlers
  std::uint64_t orderEvents = 0;
  std::uint64_t errorReports = 0;
  // Steps that ended with the ticket in each state: blank, statement up, sent (21), active,
  // pending, quote up, executed (trade panel up), cancelled, other.
  std::array<std::uint64_t, 9> states{};
};

class TicketDriver {
 public:
  explicit TicketDriver(Choices& choices);
  ~TicketDriver();
  TicketDriver(const TicketDriver&) = delete;
  TicketDriver& operator=(const TicketDriver&) = delete;

  // One step: a host call, a user action, time passing or a change of the host's answers.
  // A ticket the host destroyed is replaced by a new one before the step.
  void step();
  const DriverStats& stats() const;

 private:
  class Impl;
  std::unique_ptr<Impl> impl_;
};

// Plays at most `maxSteps` steps, fewer when the choices run out.
void Play(Choices& choices, std::size_t maxSteps);

}  // namespace quillon::fuzz
