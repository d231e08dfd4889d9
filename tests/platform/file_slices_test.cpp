// A file is read whole, in order, whatever its size.
#include "platform/files/file_slices.h"

#include "pattern.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <fstream>
#include <string>

namespace corvane {
namespace {

TEST(FileSlices, AreTheFile) {
  const testing_support::temporary_folder folder;
  for (const std::size_t size :
       {std::size_t{0}, std::size_t{1}, file_slices::slice_size - 1, file_slices::slice_size,
        file_slices::slice_size + 1, 3 * file_slices::slice_size}) {
    const std::string bytes = pattern(size);
    auto file = file_slices::open(folder.add("file", bytes));
    ASSERT_TRUE(file) << file.error;
    EXPECT_EQ(file->size(), size);
    std::string all;
    for (;;) {
      const auto slice = file->next();
      ASSERT_TRUE(slice) << slice.error;
      if (slice->empty())
        break;
      EXPECT_EQ(reinterpret_cast<std::uintptr_t>(slice->data()) % 64, 0u);
      all.append(slice->begin(), slice->end());
    }
    EXPECT_TRUE(all == bytes) << size;
  }
}

TEST(FileSlices, WhatIsNoFileCannotBeOpened) {
  const testing_support::temporary_folder folder;
  EXPECT_FALSE(file_slices::open(folder.path()));
  EXPECT_FALSE(file_slices::open(folder.path("missing")));
}

TEST(FileSlices, AFileThatBecomesShorterIsTold) {
  const testing_support::temporary_folder folder;
  const std::string path = folder.add("file", pattern(10 * file_slices::slice_size));
  auto file = file_slices::open(path);
  ASSERT_TRUE(file) << file.error;
  ASSERT_TRUE(file->next());
  std::filesystem::resize_file(path_of(path), 2 * file_slices::slice_size + 5);
  EXPECT_TRUE(file->next());
  EXPECT_FALSE(file->next());
}

TEST(FileSlices, WhatIsAddedLaterIsNotRead) {
  const testing_support::temporary_folder folder;
  const std::string path = folder.add("file", "1234");
  auto file = file_slices::open(path);
  ASSERT_TRUE(file) << file.error;
  std::ofstream(path_of(path), std::ios::binary | std::ios::app) << "5678";
  EXPECT_EQ(file->next()->size(), 4u);
  EXPECT_TRUE(file->next()->empty());
}

}  // namespace
}  // namespace corvane
