#include "platform/system_version.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace corvane {
namespace {

using testing::HasSubstr;

TEST(SystemVersion, TheTestsRunOnOneThatWillDo) {
  EXPECT_EQ(why_system_is_too_old(), std::nullopt);
}

TEST(SystemVersion, OfWindowsIsAtLeast10Of1903) {
  EXPECT_FALSE(why_windows_is_too_old(18362, 65001));
  EXPECT_FALSE(why_windows_is_too_old(22631, 65001));
  const failure why = why_windows_is_too_old(17763, 1252);
  ASSERT_TRUE(why);
  EXPECT_THAT(*why, HasSubstr("Windows 10, version 1903"));
  EXPECT_THAT(*why, HasSubstr("17763"));
  EXPECT_TRUE(why_windows_is_too_old(0, 1252));
}

TEST(SystemVersion, AnOlderWindowsWithUtf8ForAllProgramsWillDo) {
  EXPECT_FALSE(why_windows_is_too_old(17763, 65001));
}

}  // namespace
}  // namespace corvane
