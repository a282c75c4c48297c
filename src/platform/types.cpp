#include "platform/types.h"

#include <cmath>
#include <limits>

#include "platform/runtime_error.h"

namespace quillon {

namespace {

// Nearest whole number, halves to the even neighbour, independent of the FPU rounding mode.
double RoundHalfEven(double value) {
  const double down = std::floor(value);
  const double diff = value - down;
  if (diff < 0.5) return down;
  if (diff > 0.5) return down + 1;
  return std::fmod(down, 2.0) == 0 ? down : down + 1;
}

template <typename T>
T CheckedRound(double value) {
  if (std::isnan(value)) Raise(kOverflow);
  const double r = RoundHalfEven(value);
  if (r < static_cast<double>(std::numeric_limits<T>::min()) ||
      r > static_cast<double>(std::numeric_limits<T>::max())) {
    Raise(kOverflow);
  }
  return static_cast<T>(r);
}

template <typename T>
T Fit(long long value) {
  if (value < std::numeric_limits<T>::min() || value > std::numeric_limits<T>::max()) {
    Raise(kOverflow);
  }
  return static_cast<T>(value);
}

}  // namespace

Integer CInt(double value) { return CheckedRound<Integer>(value); }
Long CLng(double value) { return CheckedRound<Long>(value); }

Integer IntMul(Integer a, Integer b) { return Fit<Integer>(static_cast<long long>(a) * b); }
Integer IntAdd(Integer a, Integer b) { return Fit<Integer>(static_cast<long long>(a) + b); }
Long LngMul(Long a, Long b) { return Fit<Long>(static_cast<long long>(a) * b); }
Long LngAdd(Long a, Long b) { return Fit<Long>(static_cast<long long>(a) + b); }

}  // namespace quillon
