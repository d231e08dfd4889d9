// Subtitles beside a film: what characters they are taken to be in, and those that are no text.
#include "import/sidecars.h"
#include "support/temporary_folder.h"

#include <gmock/gmock.h>

#include <string>
#include <string_view>

namespace corvane {
namespace {

using namespace std::string_literals;
using testing::HasSubstr;
using testing::StartsWith;

const std::string times = "1\r\n00:00:01,000 --> 00:00:02,000\r\n";

class SidecarText : public testing::Test {
 protected:
  sidecar text(const std::string& bytes, const std::string& language = {}) {
    sidecar found{folder_.add("film.srt", bytes), language};
    look_into_text(found);
    return found;
  }

  testing_support::temporary_folder folder_;
};

TEST_F(SidecarText, OfAsciiAndUnicodeNeedsNoCharset) {
  for (const std::string& bytes :
       {times + "plain\r\n", times + "f\xC3\xBCr\r\n", "\xEF\xBB\xBF" + times + "f\xC3\xBCr\r\n",
        "\xFF\xFE"s + "1\0\r\0\n\0"s}) {
    const sidecar found = text(bytes);
    EXPECT_EQ(found.charset, "");
    EXPECT_EQ(found.problem, "");
  }
}

TEST_F(SidecarText, OfOldProgramsHasTheCharsetOfItsLanguage) {
  const std::string old = times + "\xE8\xFC\r\n";
  EXPECT_EQ(text(old).charset, "CP1252");
  EXPECT_EQ(text(old, "de").charset, "CP1252");
  EXPECT_EQ(text(old, "cs").charset, "CP1250");
  EXPECT_EQ(text(old, "ru").charset, "CP1251");
  EXPECT_EQ(text(old, "el").charset, "CP1253");
  EXPECT_EQ(text(old, "tr").charset, "CP1254");
  EXPECT_EQ(text(old, "he").charset, "CP1255");
  EXPECT_EQ(text(old, "ar").charset, "CP1256");
  EXPECT_EQ(text(old, "lt").charset, "CP1257");
  EXPECT_EQ(text(old, "vi").charset, "CP1258");
  EXPECT_EQ(text(times + "\xA1\xA2\r\n", "th").charset, "CP874");
  EXPECT_EQ(text(times + "\x93\xFA\x96\x7B\r\n", "ja").charset, "CP932");
  EXPECT_EQ(text(times + "\xC7\xD1\r\n", "ko").charset, "CP949");
  EXPECT_EQ(text(times + "\xD6\xD0\r\n", "zh").charset, "GB18030");
  for (const char* const language : {"", "cs", "ru", "ja", "zh"})
    EXPECT_EQ(text(times + "plain\r\n", language).charset, "");
}

TEST_F(SidecarText, ThatCannotBeReadIsSaid) {
  EXPECT_EQ(text("").problem, "it is empty");
  EXPECT_EQ(text("PK\x03\x04\0\0\xE0"s).problem, "it is not a text file");
  EXPECT_THAT(text(times + "\x81\x8D\r\n").problem,
              StartsWith("its characters are neither UTF-8 nor "));
  EXPECT_THAT(text(times + "\x93\r\n", "ja").problem, HasSubstr("save it as UTF-8"));
  sidecar missing{folder_.path("none.srt"), ""};
  look_into_text(missing);
  EXPECT_EQ(missing.problem, "it is missing");
}

}  // namespace
}  // namespace corvane
