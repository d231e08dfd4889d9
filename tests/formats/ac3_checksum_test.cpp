// The checksum of AC-3 frames, against the same computed bit by bit.
#include "formats/ac3_checksum.h"

#include "formats/audio_frames.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <vector>

namespace corvane {
namespace {

using frame_bytes = std::vector<std::uint8_t>;

// What remains of the bytes behind the sync word, x^16 + x^15 + x^2 + 1.
std::uint16_t remainder_of(const frame_bytes& frame, std::size_t end) {
  unsigned remainder = 0;
  for (std::size_t i = 2; i < end; ++i) {
    remainder ^= static_cast<unsigned>(frame[i] << 8);
    for (int bit = 0; bit < 8; ++bit)
      remainder = (remainder << 1 ^ ((remainder & 0x8000) != 0 ? 0x8005u : 0u)) & 0xFFFF;
  }
  return static_cast<std::uint16_t>(remainder);
}

frame_bytes made(std::size_t size, std::mt19937& random) {
  frame_bytes frame(size);
  for (std::uint8_t& byte : frame)
    byte = static_cast<std::uint8_t>(random());
  const std::uint16_t sum = remainder_of(frame, size - 2);
  frame[size - 2] = static_cast<std::uint8_t>(sum >> 8);
  frame[size - 1] = static_cast<std::uint8_t>(sum);
  return frame;
}

TEST(Ac3Checksum, FitsAtEverySize) {
  std::mt19937 random(1);
  for (std::size_t size = 8; size <= largest_audio_frame; size += size < 300 ? 1 : 7) {
    const frame_bytes frame = made(size, random);
    EXPECT_TRUE(checksum_fits(frame)) << size;
  }
  EXPECT_TRUE(checksum_fits(made(largest_audio_frame, random)));
}

TEST(Ac3Checksum, EveryChangedBitIsSeen) {
  std::mt19937 random(2);
  for (const std::size_t size : {8u, 138u, 174u, 768u, 835u}) {
    frame_bytes frame = made(size, random);
    for (std::size_t bit = 16; bit < 8 * size; ++bit) {
      const auto mask = static_cast<std::uint8_t>(1 << bit % 8);
      frame[bit / 8] ^= mask;
      EXPECT_FALSE(checksum_fits(frame)) << "bit " << bit << " of " << size << " bytes";
      frame[bit / 8] ^= mask;
    }
  }
}

TEST(Ac3Checksum, LostAndForeignBytesAreSeen) {
  std::mt19937 random(3);
  int unseen = 0;
  for (int n = 0; n < 1000; ++n) {
    frame_bytes frame = made(768, random);
    const auto at = static_cast<std::ptrdiff_t>(2 + random() % 700);
    frame.insert(frame.begin() + at, static_cast<std::uint8_t>(random()));
    frame.pop_back();
    unseen += checksum_fits(frame) ? 1 : 0;
  }
  EXPECT_LE(unseen, 1);  // of a random change one in 32,768
}

TEST(Ac3Checksum, OfFramesInARow) {
  std::mt19937 random(5);
  for (const std::size_t size : {8u, 240u, 242u, 768u, 835u, 4096u}) {
    frame_bytes all;
    for (std::size_t n = 0; n < checksum_of_frames::frames; ++n) {
      frame_bytes frame = made(size, random);
      frame[0] = 0x0B;
      frame[1] = 0x77;
      all.insert(all.end(), frame.begin(), frame.end());
    }
    const checksum_of_frames checksum(size);
    EXPECT_EQ(checksum.size(), size);
    EXPECT_TRUE(checksum.fit(all)) << size;
    for (std::size_t n = 0; n < checksum_of_frames::frames; ++n) {
      all[n * size + 5] ^= 1;
      EXPECT_FALSE(checksum.fit(all)) << "frame " << n << " of " << size << " bytes";
      all[n * size + 5] ^= 1;
    }
    // The same change in two of them.
    all[5] ^= 1;
    all[3 * size + 5] ^= 1;
    EXPECT_FALSE(checksum.fit(all)) << size;
  }
}

TEST(Ac3Checksum, OfASyncWordAloneThereIsNone) {
  EXPECT_FALSE(checksum_fits({}));
  EXPECT_FALSE(checksum_fits(frame_bytes(2)));
}

}  // namespace
}  // namespace corvane
