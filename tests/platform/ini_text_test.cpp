#include "platform/settings/ini_text.h"

#include <gtest/gtest.h>

#include <string>

namespace corvane {
namespace {

std::string value(const std::string& text, const std::string& key) {
  return ini_value(text, "preferences", key).value_or("(none)");
}

TEST(IniText, ValuesStandInTheirSection) {
  const std::string text = "a = 0\n[other]\na = 1\n[preferences]\na = 2\nb=3\n[more]\na = 4\n";
  EXPECT_EQ(value(text, "a"), "2");
  EXPECT_EQ(value(text, "b"), "3");
  EXPECT_EQ(value(text, "c"), "(none)");
}

TEST(IniText, ReadingTakesWhatPeopleWrite) {
  EXPECT_EQ(value("\xEF\xBB\xBF[Preferences]\r\nA =  two words \r\n", "a"), "two words");
  EXPECT_EQ(value("  [ preferences ]\n\ta\t=\tx\n", "a"), "x");
  EXPECT_EQ(value("[preferences]\n# a = 1\n; a = 2\n", "a"), "(none)");
  EXPECT_EQ(value("[preferences]\nno sense\n=\n[\n]\na = b = c", "a"), "b = c");
  EXPECT_EQ(value("[preferences]\na = 1\na = 2\n", "a"), "2");
  EXPECT_EQ(value("[preferences]\na =\n", "a"), "");
  EXPECT_EQ(value("[preferences]\na = C:\\dvd\\q\n", "a"), "C:\\dvd\\q");
  EXPECT_EQ(value("", "a"), "(none)");
}

TEST(IniText, EveryValueComesBack) {
  std::string all_bytes;
  for (int c = 0; c < 256; ++c)
    all_bytes += static_cast<char>(c);
  for (const std::string& v : {std::string(), std::string(" "), std::string("  two  blanks  "),
                               std::string("a\nb\r\nc\td"), std::string("back\\slash \\n \\x41"),
                               std::string("[preferences]"), std::string("# x"), std::string("; x"),
                               std::string("= x"), std::string("Grüße, 字幕"), all_bytes}) {
    const std::string text = with_ini_value("", "preferences", "key", v);
    EXPECT_EQ(ini_value(text, "preferences", "key"), v) << text;
    EXPECT_EQ(unescape_ini(escape_ini(v)), v);
  }
}

TEST(IniText, AnEscapeCutShortStandsForItself) {
  EXPECT_EQ(unescape_ini("a\\"), "a\\");
  EXPECT_EQ(unescape_ini("\\x4"), "\\x4");
  EXPECT_EQ(unescape_ini("\\xzz"), "\\xzz");
  EXPECT_EQ(unescape_ini("\\x4A\\x4a"), "JJ");
}

TEST(IniText, AChangeKeepsEveryOtherByte) {
  const std::string text =
      "# mine\r\n[other]\r\nregion = x\r\n\r\n[preferences]\r\n"
      "region = NTSC\r\n; note\r\nodd line\r\n\r\n[last]\r\nz = 1";
  EXPECT_EQ(with_ini_value(text, "preferences", "region", "PAL"),
            "# mine\r\n[other]\r\nregion = x\r\n\r\n[preferences]\r\n"
            "region = PAL\r\n; note\r\nodd line\r\n\r\n[last]\r\nz = 1");
  EXPECT_EQ(with_ini_value(text, "preferences", "new", "1"),
            "# mine\r\n[other]\r\nregion = x\r\n\r\n[preferences]\r\n"
            "region = NTSC\r\nnew = 1\n; note\r\nodd line\r\n\r\n[last]\r\nz = 1");
  EXPECT_EQ(with_ini_value("\xEF\xBB\xBF# x\n", "preferences", "a", "1"),
            "\xEF\xBB\xBF# x\n\n[preferences]\na = 1\n");
}

TEST(IniText, TheSectionIsAddedWhenThereIsNone) {
  EXPECT_EQ(with_ini_value("", "preferences", "a", "1"), "[preferences]\na = 1\n");
  EXPECT_EQ(with_ini_value("[x]\nb = 2", "preferences", "a", "1"),
            "[x]\nb = 2\n\n[preferences]\na = 1\n");
  EXPECT_EQ(with_ini_value("[preferences]", "preferences", "a", "1"), "[preferences]\na = 1\n");
}

}  // namespace
}  // namespace corvane
