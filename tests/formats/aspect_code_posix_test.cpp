// A stream that its user may not write.
#include "formats/aspect_code.h"
#include "support/ordinary_user_posix.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace corvane {
namespace {

TEST(AspectCodePosix, WriteProtectedStreamIsNamedAndLeftAlone) {
  const testing_support::temporary_folder folder;
  const std::string stream(
      "\0\0\1\xB3\x2D\x01\xE0\x14\x12\x4F\xA3\x80\0\0\1\xB5\x14\x82\0\1\0\0\0\0\1\xB7", 26);
  const std::string file = folder.add("video.m2v", stream);
  std::filesystem::permissions(path_of(file), std::filesystem::perms::owner_read);
  const testing_support::ordinary_user user(folder);
  EXPECT_EQ(set_aspect_code(file, aspect_code::narrow), "it cannot be written: Permission denied");
  EXPECT_EQ(folder.read("video.m2v"), stream);
}

}  // namespace
}  // namespace corvane
