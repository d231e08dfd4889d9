#include "platform/text/charset.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

TEST(SystemCharset, HasAsciiAsItStands) {
  EXPECT_EQ(in_system_charset("C:\\Tools\r\n"), "C:\\Tools\r\n");
}

// Wine's is windows-1252 where the locale names no country, as in the tests.
TEST(SystemCharset, IsNotThisProgramsUtf8) {
  EXPECT_EQ(in_system_charset("C:\\J\xC3\xBCrgen"), "C:\\J\xFCrgen");
}

TEST(SystemCharset, LacksCharactersOfOtherScriptsAndLikenessesWillNotDo) {
  EXPECT_EQ(in_system_charset("C:\\\xE6\x98\xA0\xE7\x94\xBB"), std::nullopt);
  EXPECT_EQ(in_system_charset("C:\\\xC4\x80"), std::nullopt);  // A with a macron, no plain A
}

}  // namespace
}  // namespace corvane
