// A file is read whole, in order, whatever its size.
#include "platform/files/file_slices.h"

#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <fstream>
#include <string>

namespace corvane {
namespace {

std::string pattern(std::size_t size) {
  std::string bytes(size, '\0');
  for (std::size_t i = 0; i < size; ++i)
    bytes[i] = static_cast<char>(i * 7 + i / 251);
  return bytes;
}

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

TEST(FileSlices, ReadAheadAreTheFileToo) {
  const testing_support::temporary_folder folder;
  for (const std::size_t slices : {0, 1, 3, 4, 5, 16, 17, 40}) {
    const std::string bytes = pattern(slices * file_slices::slice_size + slices);
    auto file = file_slices::open(folder.add("file", bytes));
    ASSERT_TRUE(file) << file.error;
    std::string all;
    for (bool more = true; more;) {
      const auto slice = file->next(all.empty() ? 1000 : file_slices::slice_size);
      ASSERT_TRUE(slice) << slice.error;
      all.append(slice->begin(), slice->end());
      more = !slice->empty();
      file->read_ahead();
    }
    EXPECT_TRUE(file->next()->empty());
    EXPECT_TRUE(all == bytes) << slices;
  }
}

TEST(FileSlices, ReadAheadCanBeLeftAtAnyTime) {
  const testing_support::temporary_folder folder;
  const std::string path = folder.add("file", pattern(40 * file_slices::slice_size));
  for (int slices = 0; slices < 30; ++slices) {
    auto file = file_slices::open(path);
    ASSERT_TRUE(file) << file.error;
    file->read_ahead();
    for (int i = 0; i < slices; ++i)
      EXPECT_EQ(file->next()->size(), file_slices::slice_size);
  }
}

TEST(FileSlices, AFileReadAheadThatBecomesShorterIsTold) {
  const testing_support::temporary_folder folder;
  const std::string path = folder.add("file", pattern(100 * file_slices::slice_size));
  auto file = file_slices::open(path);
  ASSERT_TRUE(file) << file.error;
  file->read_ahead();
  ASSERT_TRUE(file->next());
  std::filesystem::resize_file(path_of(path), 50 * file_slices::slice_size + 5);
  int slices = 1;
  while (file->next())
    ASSERT_LT(++slices, 60);
  EXPECT_GE(slices, 40);
  EXPECT_FALSE(file->next());
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
