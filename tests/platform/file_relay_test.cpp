// A file looked through by two threads in turns is looked through whole and in order.
#include "platform/files/file_relay.h"

#include "pattern.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <span>
#include <stdexcept>
#include <string>

namespace corvane {
namespace {

constexpr std::size_t block = file_relay::block_size;

/// A taker that keeps everything.
struct keeper {
  std::string all;
  std::size_t largest = 0;
  std::atomic<int> inside = 0;

  file_relay::taker taker() {
    return [this](std::span<const std::uint8_t> bytes) {
      EXPECT_EQ(++inside, 1);
      all.append(bytes.begin(), bytes.end());
      largest = std::max(largest, bytes.size());
      --inside;
    };
  }
};

TEST(FileRelay, GivesAllBytesInTheirOrderToOneAtATime) {
  const testing_support::temporary_folder folder;
  for (const std::size_t size :
       {std::size_t{0}, std::size_t{1}, block - 1, block, block + 1, 2 * block, 7 * block + 3})
    for (const std::size_t from : {std::size_t{0}, std::size_t{1}, block + 5}) {
      if (from > size)
        continue;
      const std::string bytes = pattern(size);
      keeper got;
      auto relay = file_relay::begin(folder.add("file", bytes), from, size, got.taker());
      ASSERT_TRUE(relay) << relay.error;
      EXPECT_EQ((*relay)->wait_for(size), file_relay::state::ended);
      EXPECT_EQ((*relay)->taken(), size - from);
      EXPECT_TRUE(got.all == bytes.substr(from)) << size << " from " << from;
      EXPECT_LE(got.largest, block);
    }
}

TEST(FileRelay, TellsHowFarItIs) {
  const testing_support::temporary_folder folder;
  const std::string path = folder.add("file", pattern(20 * block));
  keeper got;
  auto relay = file_relay::begin(path, 0, 20 * block, got.taker());
  ASSERT_TRUE(relay) << relay.error;
  for (std::uint64_t wanted = 0; wanted <= 20 * block; wanted += block / 2) {
    EXPECT_NE((*relay)->wait_for(wanted), file_relay::state::failed);
    EXPECT_GE((*relay)->taken(), wanted);
  }
  EXPECT_EQ((*relay)->wait_for(20 * block + 1), file_relay::state::ended);
}

TEST(FileRelay, CanBeLeftAtAnyTime) {
  const testing_support::temporary_folder folder;
  const std::string path = folder.add("file", pattern(30 * block));
  for (std::uint64_t blocks = 0; blocks <= 30; ++blocks) {
    keeper got;
    auto relay = file_relay::begin(path, 0, 30 * block, got.taker());
    ASSERT_TRUE(relay) << relay.error;
    (*relay)->wait_for(blocks * block);
    relay->reset();
    EXPECT_GE(got.all.size(), blocks * block);
    EXPECT_EQ(got.all.size() % block, 0u);
  }
}

TEST(FileRelay, AFileThatBecomesShorterIsTold) {
  const testing_support::temporary_folder folder;
  for (const std::size_t left : {std::size_t{0}, block / 2, block, 4 * block + 1}) {
    keeper got;
    auto relay = file_relay::begin(folder.add("file", pattern(left)), 0, 9 * block, got.taker());
    ASSERT_TRUE(relay) << relay.error;
    EXPECT_EQ((*relay)->wait_for(9 * block), file_relay::state::failed);
    EXPECT_EQ((*relay)->wait_for(0), file_relay::state::failed);
    EXPECT_EQ(got.all.size(), left / block * block);
  }
}

TEST(FileRelay, WhatTheTakerThrowsComesToWhoWaits) {
  const testing_support::temporary_folder folder;
  int calls = 0;
  auto relay = file_relay::begin(folder.add("file", pattern(9 * block)), 0, 9 * block,
                                 [&](std::span<const std::uint8_t>) {
                                   if (++calls == 4)
                                     throw std::runtime_error("no room");
                                 });
  ASSERT_TRUE(relay) << relay.error;
  EXPECT_THROW((*relay)->wait_for(9 * block), std::runtime_error);
  EXPECT_EQ((*relay)->taken(), 3 * block);
  EXPECT_EQ(calls, 4);
}

TEST(FileRelay, WhatIsNotThereCannotBegin) {
  const testing_support::temporary_folder folder;
  keeper got;
  EXPECT_FALSE(file_relay::begin(folder.path("missing"), 0, 1, got.taker()));
}

}  // namespace
}  // namespace corvane
