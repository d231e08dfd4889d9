#include "formats/ac3_checksum.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <utility>
#include <vector>

namespace corvane {

namespace {

// Taken as a polynomial, its first bit the highest, a whole frame without its sync word is
// divisible by x^16 + x^15 + x^2 + 1 = (x + 1) (x^15 + x + 1): the checksum in front stands for the
// first part of the frame, the one at its end for all of it.
//
// Modulo the second factor x^15 = x + 1, and squared k times x^(15 * 2^k) = x^(2^k) + 1. So with
// digits of 2^k bits, y = x^(2^k), the rule is the same: y^15 = y + 1. It needs no table and no
// order of bytes, and the processor does several digits at once.
constexpr std::size_t digits = 15;

// As many bits as the registers of every processor with 64 bits have.
using digit __attribute__((vector_size(16))) = std::uint64_t;
using number = std::array<digit, digits>;

digit digit_at(const std::uint8_t* bytes) {
  digit value;
  std::memcpy(&value, bytes, sizeof value);
  return value;
}

// `sum` times y^15, which is `sum` and `sum` shifted by a digit, and the 15 digits at `next`.
// Without a loop, so that `sum` stays in registers; `lower` are the numbers of all digits but the
// last.
template <std::size_t... lower>
[[gnu::always_inline]] inline void add(number& sum, const std::uint8_t* next,
                                       std::index_sequence<lower...> /*unused*/) {
  const digit shifted_out = sum.front();  // y^15 once more
  ((sum[lower] ^= sum[lower + 1] ^ digit_at(next + lower * sizeof(digit))), ...);
  sum[digits - 2] ^= shifted_out;
  sum[digits - 1] ^= shifted_out ^ digit_at(next + (digits - 1) * sizeof(digit));
}

// By the same rule, for digits of `bits` / 15 bits.
std::uint64_t shortened(std::uint64_t value, int bits) {
  const std::uint64_t high = value >> bits;
  return (value & ((std::uint64_t{1} << bits) - 1)) ^ high ^ high << bits / 15;
}

// x^60 = x^4 + 1, so x^64 is x^8 + x^4, and its square:
std::uint64_t times_x64(std::uint64_t value) {
  return value << 8 ^ value << 4;
}
std::uint64_t times_x128(std::uint64_t value) {
  return value << 16 ^ value << 8;
}

std::uint64_t big_endian(const std::uint8_t* bytes) {
  std::uint64_t value = 0;
  for (int i = 0; i < 8; ++i)
    value = value << 8 | bytes[i];
  return value;
}

// What remains of the number, which stands in memory with its highest digit first.
unsigned remainder_of(const number& value) {
  // Digits of 64 bits: 15 higher ones, 15 lower ones.
  std::array<std::uint64_t, 2 * digits> halves;
  std::memcpy(halves.data(), value.data(), sizeof halves);
  std::array<std::uint8_t, sizeof(number) / 2> sum;
  for (std::size_t i = 0; i < digits; ++i) {
    std::uint64_t one = halves[i + digits] ^ halves[i];
    if (i + 1 < digits)
      one ^= halves[i + 1];
    if (i + 2 >= digits)
      one ^= halves[0];
    std::memcpy(sum.data() + i * sizeof one, &one, sizeof one);
  }
  const auto word = [&](std::size_t i) { return big_endian(sum.data() + 8 * i); };
  std::uint64_t odd = 0, even = shortened(word(0), 30);
  for (std::size_t i = 1; i < digits; i += 2) {
    odd = shortened(times_x128(odd) ^ word(i), 30);
    even = shortened(times_x128(even) ^ word(i + 1), 30);
  }
  const std::uint64_t all = times_x64(odd) ^ even;
  return static_cast<unsigned>(shortened(shortened(shortened(all, 30), 15), 15));
}

unsigned remainder_of(std::span<const std::uint8_t> bytes) {
  // What is not enough for 15 digits stands in front, behind zeros, which change nothing there.
  constexpr std::size_t step = sizeof(number);
  const std::size_t front = bytes.size() % step;
  std::array<std::uint8_t, step> first{};
  std::copy_n(bytes.begin(), front, first.end() - static_cast<std::ptrdiff_t>(front));
  number sum{};
  constexpr auto lower = std::make_index_sequence<digits - 1>();
  add(sum, first.data(), lower);
  for (std::size_t at = front; at < bytes.size(); at += step)
    add(sum, bytes.data() + at, lower);
  return remainder_of(sum);
}

constexpr std::array<std::uint8_t, 2> sync_word = {0x0B, 0x77};

}  // namespace

bool checksum_fits(std::span<const std::uint8_t> frame) {
  return frame.size() > sync_word.size() && remainder_of(frame.subspan(sync_word.size())) == 0;
}

// Of frames in a row nothing remains but what their sync words add, which no checksum covers.
checksum_of_frames::checksum_of_frames(std::size_t size) : size_(size) {
  std::vector<std::uint8_t> sync_words(frames * size);
  for (std::size_t at = 0; at < sync_words.size(); at += size)
    std::copy(sync_word.begin(), sync_word.end(),
              sync_words.begin() + static_cast<std::ptrdiff_t>(at));
  expected_ = remainder_of(sync_words);
}

bool checksum_of_frames::fit(std::span<const std::uint8_t> all) const {
  return remainder_of(all) == expected_;
}

}  // namespace corvane
