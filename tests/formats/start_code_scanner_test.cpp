// Start codes are found wherever they stand, in slices of any size, each of them once.
#include "formats/start_code_scanner.h"

#include "formats/start_code_mask.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace corvane {
namespace {

using namespace std::string_literals;

struct found_code {
  int code;
  std::uint64_t position;
  std::string bytes;
  bool operator==(const found_code&) const = default;
};

std::ostream& operator<<(std::ostream& out, const found_code& f) {
  return out << std::hex << f.code << " at " << std::dec << f.position;
}

class collector : public start_code_sink {
 public:
  std::vector<found_code> all;

  void start_code_found(std::uint8_t code, std::uint64_t position,
                        const std::uint8_t* bytes) override {
    all.push_back({code, position, std::string(bytes, bytes + header_bytes)});
  }
};

std::vector<found_code> codes_in(const std::string& bytes, std::size_t slice) {
  collector sink;
  start_code_scanner scanner(sink);
  for (std::size_t at = 0; at < bytes.size(); at += slice)
    scanner.feed(reinterpret_cast<const std::uint8_t*>(bytes.data()) + at,
                 std::min(slice, bytes.size() - at));
  scanner.finish();
  return sink.all;
}

// The same the slow way.
std::vector<found_code> codes_by_hand(const std::string& bytes) {
  std::vector<found_code> codes;
  const std::string padded = bytes + std::string(4 + header_bytes, '\0');
  for (std::size_t at = 0; at + 2 < bytes.size(); ++at)
    if (bytes.compare(at, 3, "\0\0\1"s) == 0)
      codes.push_back(
          {static_cast<unsigned char>(padded[at + 3]), at, padded.substr(at + 4, header_bytes)});
  return codes;
}

TEST(StartCodeScanner, TellsCodePlaceAndTheBytesBehind) {
  const auto codes = codes_in("ab\0\0\1\xB3"s + "01234567and more"s, 1000);
  ASSERT_EQ(codes.size(), 1u);
  EXPECT_EQ(codes[0], (found_code{0xB3, 2, "01234567"}));
}

TEST(StartCodeScanner, FindsTheSameInSlicesOfAnySize) {
  std::string bytes = "\0\0\1\xB3"s;
  for (std::size_t i = 0; i < 200; ++i)
    bytes += i % 7 == 0 ? "\0\0\1"s + static_cast<char>(i)
                        : std::string(i % 5, i % 3 != 0 ? '\0' : '\1');
  bytes += "\0\0\1\0\0\1\0\0\1\xB7"s;
  const auto expected = codes_by_hand(bytes);
  ASSERT_GT(expected.size(), 30u);
  for (std::size_t slice = 1; slice <= bytes.size(); ++slice)
    ASSERT_EQ(codes_in(bytes, slice), expected) << "slices of " << slice;
}

TEST(StartCodeScanner, ACodeSplitBetweenTwoSlicesIsFoundOnce) {
  const std::string bytes = std::string(20, 'x') + "\0\0\1\xB8"s + std::string(20, 'y');
  for (std::size_t split = 0; split <= bytes.size(); ++split) {
    collector sink;
    start_code_scanner scanner(sink);
    const auto* data = reinterpret_cast<const std::uint8_t*>(bytes.data());
    scanner.feed(data, split);
    scanner.feed(data + split, bytes.size() - split);
    scanner.finish();
    ASSERT_EQ(sink.all, (std::vector<found_code>{{0xB8, 20, "yyyyyyyy"}})) << split;
  }
}

TEST(StartCodeScanner, AtTheEndTheMissingBytesAreZeros) {
  EXPECT_EQ(codes_in("....\0\0\1\xB7"s, 3),
            (std::vector<found_code>{{0xB7, 4, std::string(8, '\0')}}));
  EXPECT_EQ(codes_in("....\0\0\1\xB8xyz"s, 3),
            (std::vector<found_code>{{0xB8, 4, "xyz\0\0\0\0\0"s}}));
}

TEST(StartCodeScanner, BytesWithoutCodesHaveNone) {
  EXPECT_TRUE(codes_in("", 1).empty());
  EXPECT_TRUE(codes_in(std::string(5000, '\0'), 999).empty());
  EXPECT_TRUE(codes_in(std::string(5000, '\1'), 999).empty());
  EXPECT_TRUE(codes_in("\0\1\0\1\0\0\2\0\0"s, 2).empty());
}

TEST(StartCodeScanner, AMaskIsTheSameOnEveryProcessor) {
  std::mt19937 random(1);
  std::uint64_t any = 0;
  for (int round = 0; round < 20000; ++round) {
    std::array<std::uint8_t, mask_bytes + 2> bytes{};
    for (std::uint8_t& byte : bytes)
      byte = static_cast<std::uint8_t>(std::array{0, 0, 0, 1, 1, 2, 0x80, 0xFF}[random() % 8]);
    std::uint64_t expected = 0;
    for (std::size_t i = 0; i < mask_bytes; ++i)
      if (bytes[i] == 0 && bytes[i + 1] == 0 && bytes[i + 2] == 1)
        expected |= std::uint64_t{1} << i;
    any |= expected;
    ASSERT_EQ(start_code_mask(bytes.data()), expected) << round;
    ASSERT_EQ(portable_start_code_mask(bytes.data()), expected) << round;
#ifdef CORVANE_HAS_WIDE_MASKS
    if (has_wide_masks()) {
      ASSERT_EQ(wide_start_code_mask(bytes.data()), expected) << round;
    }
#endif
  }
  EXPECT_EQ(any, ~std::uint64_t{0});
}

}  // namespace
}  // namespace corvane
