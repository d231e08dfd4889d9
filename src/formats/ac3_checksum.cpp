#include "formats/ac3_checksum.h"

#include "formats/audio_frames.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>

namespace corvane {

namespace {

// Taken as a polynomial, its first bit the highest, a whole frame without its sync word is
// divisible by x^16 + x^15 + x^2 + 1 = (x + 1) (x^15 + x + 1): the checksum in front stands for the
// first part of the frame, the one at its end for all of it.
//
// Modulo the second factor x^15 = x + 1, and squared k times x^(15 * 2^k) = x^(2^k) + 1: a word of
// 2^k bits may be added to the words 15 and 14 further down instead. That needs no table and no
// order of bytes, and the processor does several words at once.
constexpr std::size_t step = 15;

// Shortens `count` words (at least `step`) to their last `step`, which have the same remainder.
template <typename Word>
void shorten(Word* words, std::size_t count) {
  constexpr std::size_t block = step - 1;  // of words that do not depend on each other
  std::size_t at = 0;
  for (; at + block + step <= count; at += block) {
    std::array<Word, block> high;
    std::copy_n(words + at, block, high.begin());
    for (std::size_t i = 0; i < block; ++i)
      words[at + block + i] ^= high[i];
    for (std::size_t i = 0; i < block; ++i)
      words[at + step + i] ^= high[i];
  }
  for (; at + step < count; ++at) {
    words[at + step - 1] ^= words[at];
    words[at + step] ^= words[at];
  }
}

template <typename To, typename From>
std::array<To, 2 * step> halves(const From* words) {
  static_assert(sizeof(To) * 2 == sizeof(From));
  std::array<To, 2 * step> smaller;
  std::memcpy(smaller.data(), words, sizeof smaller);
  return smaller;
}

bool divides(std::span<const std::uint8_t> bytes) {
  unsigned remainder = 0;  // below x^15
  for (const std::uint8_t byte : bytes) {
    remainder = remainder << 8 | byte;
    const unsigned high = remainder >> 15;
    remainder = (remainder & 0x7FFF) ^ high ^ high << 1;
  }
  return remainder == 0;
}

}  // namespace

bool checksum_fits(std::span<const std::uint8_t> frame) {
  constexpr std::size_t sync_word = 2;
  if (frame.size() <= sync_word || frame.size() > largest_audio_frame)
    return false;
  const std::span<const std::uint8_t> covered = frame.subspan(sync_word);
  // Zeros in front of the highest bit change nothing: the first word is filled up with them, and
  // there are never fewer words than one step.
  constexpr std::size_t word = sizeof(std::uint64_t);
  std::array<std::uint64_t, largest_audio_frame / word> words;
  const std::size_t count = std::max(step, (covered.size() + word - 1) / word);
  const std::size_t zeros = count * word - covered.size();
  std::memset(words.data(), 0, zeros);
  std::memcpy(reinterpret_cast<std::uint8_t*>(words.data()) + zeros, covered.data(),
              covered.size());
  shorten(words.data(), count);
  auto of_32_bits = halves<std::uint32_t>(words.data() + (count - step));
  shorten(of_32_bits.data(), of_32_bits.size());
  auto of_16_bits = halves<std::uint16_t>(of_32_bits.data() + step);
  shorten(of_16_bits.data(), of_16_bits.size());
  auto of_8_bits = halves<std::uint8_t>(of_16_bits.data() + step);
  shorten(of_8_bits.data(), of_8_bits.size());
  return divides(std::span<const std::uint8_t>(of_8_bits).last(step));
}

}  // namespace corvane
