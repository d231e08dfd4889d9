// Images and folders of discs, made by hand.
#include "formats/disc_image.h"

#include "made_disc.h"
#include "support/temporary_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace corvane {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using namespace testing_support;
namespace at = made_image_at;

/// "PATH SIZE SECTOR" of each file.
std::vector<std::string> listed(const image_volume& volume) {
  std::vector<std::string> all;
  for (const disc_file& file : volume.files)
    all.push_back(file.path + " " + std::to_string(file.size) + " " +
                  std::to_string(file.first_sector));
  return all;
}

disc_image read(const made_bytes& made) {
  memory_source source(made.bytes);
  return read_disc_image(source);
}

TEST(DiscImage, BothVolumesListTheFiles) {
  const disc_image image = read(made_image());
  EXPECT_EQ(texts(image.iso9660.troubles), "");
  EXPECT_EQ(texts(image.udf.troubles), "");
  for (const image_volume* volume : {&image.iso9660, &image.udf}) {
    EXPECT_TRUE(volume->found);
    EXPECT_EQ(volume->name, "A DISC");
    EXPECT_EQ(volume->sectors, at::size);
    EXPECT_THAT(listed(*volume),
                ElementsAre("VIDEO_TS/VIDEO_TS.IFO 4096 270", "VIDEO_TS/VTS_01_1.VOB 10000 272"));
    EXPECT_THAT(volume->folders, ElementsAre("VIDEO_TS"));
  }
  EXPECT_THAT(image.differences, IsEmpty());
}

TEST(DiscImage, FilesAreReadFromTheImage) {
  const made_bytes made = made_image();
  auto disc = open_image(std::make_unique<memory_source>(made.bytes));
  ASSERT_TRUE(disc) << disc.error;
  disc_files& files = **disc;
  const auto manager = read_whole(files, "video_ts/video_ts.ifo", 5000);
  ASSERT_TRUE(manager) << manager.error;
  EXPECT_THAT(*manager, SizeIs(4096));
  EXPECT_THAT(*manager, Each(1));
  EXPECT_EQ(read_whole(files, "VIDEO_TS/VTS_01_1.VOB", 5000).error,
            "VIDEO_TS/VTS_01_1.VOB is larger than it can be");
  EXPECT_EQ(read_whole(files, "VIDEO_TS/VTS_02_1.VOB", 5000).error,
            "there is no VIDEO_TS/VTS_02_1.VOB");
  const disc_file* const video = files.find("VIDEO_TS/VTS_01_1.VOB");
  ASSERT_NE(video, nullptr);
  std::vector<std::uint8_t> end(10);
  EXPECT_TRUE(files.read(*video, 9990, end));
  EXPECT_THAT(end, Each(2));
  EXPECT_FALSE(files.read(*video, 9991, end));
  EXPECT_FALSE(files.read(*video, ~std::uint64_t{0}, end));
}

TEST(DiscImage, WithoutUdfTheFilesAreThoseOfIso9660) {
  made_bytes made = made_image();
  made.text(at::recognition * 2048 + 1, "NONE!");
  const disc_image image = read(made);
  EXPECT_FALSE(image.udf.found);
  EXPECT_EQ(texts(image.udf.troubles),
            "UDF recognition sequence at byte 32768 does not name UDF\n");
  EXPECT_THAT(image.differences, IsEmpty());
  const auto disc = open_image(std::make_unique<memory_source>(made.bytes));
  ASSERT_TRUE(disc) << disc.error;
  EXPECT_THAT((*disc)->files(), SizeIs(2));
}

TEST(DiscImage, WhatIsNoImageHasNeither) {
  for (const std::size_t size : {0U, 2048U, 40000U, 600000U}) {
    const made_bytes made(size);
    const disc_image image = read(made);
    EXPECT_FALSE(image.iso9660.found || image.udf.found) << size;
    EXPECT_EQ(open_image(std::make_unique<memory_source>(made.bytes)).error,
              "there is no VIDEO_TS in the image");
  }
}

struct damage {
  std::size_t sector, byte;
  unsigned value;
  const char* text;
};

TEST(DiscImage, DamageOfIso9660IsTold) {
  // Records in the folder: itself, the one above, then each file.
  const damage damages[] = {
      {at::primary, 0, 9, "ISO 9660 descriptor at byte 32768 is not there"},
      {at::primary, 80, 9, "ISO 9660 descriptor at byte 32848 has a number that is 265 in one"},
      {at::primary, 129, 4, "ISO 9660 descriptor at byte 32896 states sectors of another size"},
      {at::low_paths, 2, 25, "ISO 9660 path table at byte 43008 does not list the folders"},
      {at::high_paths, 19, 'X', "ISO 9660 path table at byte 45056 does not list the folders"},
      {at::high_paths, 10, 99, "ISO 9660 path table at byte 45066 has an entry that does not fit"},
      {at::root, 2, 99, "ISO 9660 folder at byte 47104 names sector 99 as its own"},
      {at::folder, 34 + 2, 99, "ISO 9660 folder at byte 49186 names sector 99 as the folder above"},
      {at::folder, 34, 0, "ISO 9660 folder at byte 49188 has bytes that belong to no entry"},
      {at::folder, 68, 33, "ISO 9660 folder at byte 49220 has an entry that does not fit"},
      {at::folder, 68 + 5, 1, "has VIDEO_TS/VIDEO_TS.IFO end past the end of the image"},
      {at::folder, 68 + 13, 1, "has VIDEO_TS/VIDEO_TS.IFO end past the end of the image"},
      {at::root, 68 + 2, at::root, "has the folder VIDEO_TS/ in two places"}};
  for (const damage& d : damages) {
    made_bytes made = made_image();
    made.u8(d.sector * 2048 + d.byte, d.value);
    EXPECT_THAT(texts(read(made).iso9660.troubles), HasSubstr(d.text)) << d.sector << " " << d.byte;
  }
}

TEST(DiscImage, DamagedUdfDescriptorsAreTold) {
  const damage damages[] = {
      {at::anchor, 0, 9, "UDF anchor at byte 524288 is no descriptor of its kind"},
      {at::anchor, 4, 9, "UDF anchor at byte 524288 has a tag with a wrong sum"},
      {at::anchor, 30, 9, "UDF anchor at byte 524288 has a wrong checksum"},
      {at::sequence + 1, 90, 9, "UDF volume descriptor at byte 67584 has a wrong checksum"},
      {at::reserve + 2, 190, 9, "UDF volume descriptor at byte 102400 has a wrong checksum"},
      {at::sequence + 3, 0, 1, "UDF volume descriptor at byte 71680 has a tag with a wrong sum"},
      {at::integrity, 28, 0, "UDF integrity descriptor at byte 131072 has a wrong checksum"},
      {at::partition, 404, 9, "UDF file set descriptor at byte 526336 has a wrong checksum"},
      {at::partition + 4, 57, 9, "UDF file entry at byte 534528 has a wrong checksum"},
      {at::udf_folder, 60, 9, "UDF file identifier at byte 536616 has a wrong checksum"}};
  for (const damage& d : damages) {
    made_bytes made = made_image();
    made.u8(d.sector * 2048 + d.byte, d.value);
    EXPECT_THAT(texts(read(made).udf.troubles), HasSubstr(d.text)) << d.sector << " " << d.byte;
  }
}

/// With tags in order: somebody wrote it so.
TEST(DiscImage, WrongUdfDescriptorsAreTold) {
  const damage damages[] = {
      {at::anchor, 28, at::sequence + 1, "UDF anchor at byte 524304 has volume descriptors that"},
      {at::sequence + 1, 213, 4, "UDF volume descriptor at byte 67796 states sectors of another"},
      {at::sequence + 1, 268, 2, "UDF volume descriptor at byte 67852 has other than one plain"},
      {at::sequence + 2, 193, 9, "UDF partition at byte 526336 states that there are"},
      {at::integrity, 28, 0, "UDF integrity descriptor at byte 131100 says that the volume was"},
      {at::partition + 4, 12, 9, "says that it stands in sector 9"},
      {at::partition + 4, 27, 4,
       "UDF folder at byte 536616 calls the folder VIDEO_TS/VIDEO_TS.IFO"},
      {at::partition + 4, 27, 9, "is neither of a file nor of a folder"},
      {at::partition + 4, 34, 5, "has pieces of no kind that there is"},
      {at::partition + 4, 57, 9, "states 2304 bytes; its pieces have 4096"},
      {at::partition + 4, 179, 0x40, "has a piece that is not recorded"},
      {at::partition + 4, 182, 1, "has VIDEO_TS/VIDEO_TS.IFO end past the end of the image"},
      {at::partition + 4, 173, 9, "states more pieces than it has room for"},
      {at::partition + 2, 27, 5, "is of a file where a folder is"},
      {at::udf_folder, 24, 9, "names sector 9 of the partition as the folder above"},
      {at::udf_folder, 40 + 37, 99, "has an entry that does not fit into it"}};
  for (const damage& d : damages) {
    made_bytes made = made_image();
    made.u8(d.sector * 2048 + d.byte, d.value);
    // Identifiers: each begins behind the last one.
    seal(made, d.sector * 2048 + (d.sector == at::udf_folder && d.byte >= 40 ? 40 : 0));
    EXPECT_THAT(texts(read(made).udf.troubles), HasSubstr(d.text)) << d.sector << " " << d.byte;
  }
}

TEST(DiscImage, TheReserveStandsInForDamagedVolumeDescriptors) {
  made_bytes made = made_image();
  made.u8((at::sequence + 1) * 2048 + 90, 9);
  EXPECT_THAT(read(made).udf.files, SizeIs(2));
}

TEST(DiscImage, FilesElsewhereOrInOneVolumeOnlyAreDifferences) {
  made_bytes moved = made_image();
  const std::size_t record = at::folder * 2048 + 68 + 48;
  moved.u8(record + 2, 273 - 256);
  moved.u8(record + 9, 273 - 256);
  EXPECT_THAT(read(moved).differences,
              ElementsAre("VIDEO_TS/VTS_01_1.VOB has 10000 bytes from sector 272 in UDF, 10000 "
                          "bytes from sector 273 in ISO 9660"));
  made_bytes renamed = made_image();
  renamed.text(record + 33, "VTS_01_2.VOB");
  EXPECT_THAT(read(renamed).differences,
              ElementsAre("VIDEO_TS/VTS_01_1.VOB is listed by UDF and not by ISO 9660",
                          "VIDEO_TS/VTS_01_2.VOB is listed by ISO 9660 and not by UDF"));
}

TEST(DiscFiles, FolderIsReadInAnyCaseOfLetters) {
  const temporary_folder folder;
  folder.add("disc/video_ts/vts_01_1.vob", "video");
  folder.add("disc/video_ts/Video_TS.ifo", "tables");
  folder.add("disc/notes.txt");
  for (const char* const path : {"disc", "disc/video_ts"}) {
    auto disc = open_disc(folder.path(path));
    ASSERT_TRUE(disc) << disc.error;
    std::vector<std::string> paths;
    for (const disc_file& file : (*disc)->files())
      paths.push_back(file.path + " " + std::to_string(file.size));
    EXPECT_THAT(paths, ElementsAre("VIDEO_TS/VIDEO_TS.IFO 6", "VIDEO_TS/VTS_01_1.VOB 5"));
    const auto tables = read_whole(**disc, "VIDEO_TS/VIDEO_TS.IFO", 100);
    ASSERT_TRUE(tables) << tables.error;
    EXPECT_EQ(std::string(tables->begin(), tables->end()), "tables");
    const auto video = read_whole(**disc, "VIDEO_TS/VTS_01_1.VOB", 100);
    ASSERT_TRUE(video) << video.error;
    EXPECT_EQ(std::string(video->begin(), video->end()), "video");
  }
}

TEST(DiscFiles, WhatIsNoDiscIsRefused) {
  const temporary_folder folder;
  folder.add("notes.txt");
  EXPECT_EQ(open_disc(folder.path()).error, "there is no VIDEO_TS in " + folder.path());
  EXPECT_EQ(open_disc(folder.path("nowhere")).error, "there is no file " + folder.path("nowhere"));
  EXPECT_EQ(open_disc(folder.path("notes.txt")).error, "there is no VIDEO_TS in the image");
}

TEST(DiscFiles, FileThatIsCutWhileItIsReadFails) {
  const temporary_folder folder;
  const std::string file = folder.add("image", std::string(100000, 'x'));
  auto bytes = open_bytes(file);
  ASSERT_TRUE(bytes) << bytes.error;
  std::vector<std::uint8_t> read(1000);
  EXPECT_TRUE((*bytes)->read(99000, read));
  EXPECT_FALSE((*bytes)->read(99001, read));
  std::filesystem::resize_file(path_of(file), 50000);
  EXPECT_FALSE((*bytes)->read(90000, read));
  EXPECT_TRUE((*bytes)->read(0, read));
  EXPECT_EQ(read[999], 'x');
}

}  // namespace
}  // namespace corvane
