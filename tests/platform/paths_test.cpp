#include "platform/files/paths.h"

#include <gtest/gtest.h>

using namespace std::string_literals;

namespace corvane {
namespace {

constexpr auto win = path_style::windows;
constexpr auto posix = path_style::posix;

TEST(Paths, StoredFormHasBackslashesOnBothSystems) {
  EXPECT_EQ(stored_from_native("/home/u/movie.m2v", posix), "\\home\\u\\movie.m2v");
  EXPECT_EQ(stored_from_native("C:\\v\\movie.m2v", win), "C:\\v\\movie.m2v");
}

TEST(Paths, NativeFormUndoesTheStoredForm) {
  for (const auto* path : {"/home/u/movie.m2v", "/", "/a b/c&d.m2v"})
    EXPECT_EQ(native_from_stored(stored_from_native(path, posix), posix), path);
  EXPECT_EQ(native_from_stored("C:\\v", win), "C:\\v");
}

TEST(Paths, FileNameIsTheLastComponent) {
  EXPECT_EQ(file_name_of("\\home\\u\\movie.m2v"), "movie.m2v");
  EXPECT_EQ(file_name_of("movie.m2v"), "movie.m2v");
  EXPECT_EQ(file_name_of("C:\\"), "");
}

// A "\" is a character like others on Linux, if a rare one.
TEST(Paths, NativeFileNameEndsAtTheSeparatorsOfItsSystem) {
  EXPECT_EQ(native_file_name("/films/a\\b.mp4", posix), "a\\b.mp4");
  EXPECT_EQ(native_file_name("a.mp4", posix), "a.mp4");
  EXPECT_EQ(native_file_name("C:\\films\\a.mp4", win), "a.mp4");
  EXPECT_EQ(native_file_name("C:/films/a.mp4", win), "a.mp4");
  EXPECT_EQ(native_file_name("C:\\", win), "");
}

TEST(Paths, ExtensionIsLowerCaseAndTheLastOne) {
  EXPECT_EQ(lower_extension_of("A.B.VOB"), "vob");
  EXPECT_EQ(lower_extension_of("vob"), "");
  EXPECT_EQ(lower_extension_of("x."), "");
}

TEST(Paths, AbsoluteMeansFromTheRoot) {
  EXPECT_TRUE(is_absolute("/a", posix));
  EXPECT_FALSE(is_absolute("a/b", posix));
  EXPECT_TRUE(is_absolute("C:\\a", win));
  EXPECT_TRUE(is_absolute("\\\\server\\share\\a", win));
  EXPECT_FALSE(is_absolute("C:a", win));
  EXPECT_FALSE(is_absolute("\\a", win));
}

TEST(Paths, JoinPutsOneSeparator) {
  EXPECT_EQ(join_path("/", "a", posix), "/a");
  EXPECT_EQ(join_path("/x", "a", posix), "/x/a");
  EXPECT_EQ(join_path("D:\\", "a", win), "D:\\a");
}

TEST(Paths, NamesThatRowsAndScriptsHold) {
  for (const auto* path : {"/a b/c&d'e%f!g#h^i$j`k.m2v", "/\xc3\xbc/\xe6\x98\xa0\xe7\x94\xbb.m2v"})
    EXPECT_FALSE(why_not_storable(path, posix)) << path;
  EXPECT_FALSE(why_not_storable("C:\\a b\\c.m2v", win));
}

TEST(Paths, NamesThatCannotBeStoredSayWhy) {
  EXPECT_EQ(why_not_storable("/a\"b", posix), "contains a double quote (\")");
  EXPECT_EQ(why_not_storable("/a|b", posix), "contains a vertical bar (|)");
  EXPECT_EQ(why_not_storable("/a<b", posix), "contains a less-than sign (<)");
  EXPECT_EQ(why_not_storable("/a\\b", posix), "contains a backslash (\\)");
  EXPECT_EQ(why_not_storable("/a\nb", posix), "contains a control character");
  EXPECT_EQ(why_not_storable("/a\0b"s, posix), "contains a control character");
  EXPECT_EQ(why_not_storable("/a\xff", posix), "contains bytes that are not UTF-8 text");
  EXPECT_EQ(why_not_storable("C:/a", win), "contains a slash (/)");
}

TEST(Paths, NamesOfDevicesAreNoFiles) {
  for (const auto* path :
       {"C:\\dvd\\con", "C:\\dvd\\Nul.cvp", "C:\\aux\\a.m2v", "lpt9", "C:\\PRN .x.y"})
    EXPECT_TRUE(why_not_storable(path, win)) << path;
  EXPECT_EQ(why_not_storable("C:\\dvd\\com1.iso", win),
            "has \"com1.iso\" in it, which Windows takes for a device");
  EXPECT_EQ(why_not_storable("\\\\.\\con", win), "is that of a device");
  for (const auto* path : {"C:\\dvd\\const", "C:\\com0", "C:\\com", "C:\\a.con", "C:\\com10\\a",
                           "\\\\server\\share\\a", "..\\a", "C:\\"})
    EXPECT_FALSE(why_not_storable(path, win)) << path;
  EXPECT_FALSE(why_not_storable("/home/con/nul", posix));
}

}  // namespace
}  // namespace corvane
