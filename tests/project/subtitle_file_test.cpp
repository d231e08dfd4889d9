#include "project/subtitle_file.h"

#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace corvane {
namespace {

using namespace std::string_literals;
using testing_support::temporary_folder;

const std::string head = "1\n00:00:01,000 --> 00:00:02,000\n";

subtitle_file file_of(const std::string& bytes, const std::string& name = "a.srt") {
  return {name, bytes};
}

std::string why_unusable(const std::string& bytes, const std::string& charset = "ISO-8859-1",
                         const std::string& name = "a.srt") {
  return file_of(bytes, name).why_not(charset).value_or("");
}

TEST(SubtitleFile, ThatIsGoneAFolderOrEmptyIsToldApart) {
  const temporary_folder folder;
  EXPECT_EQ(subtitle_file::read(folder.path("a.srt")).error, "it is missing");
  EXPECT_EQ(subtitle_file::read(folder.path()).error, "it is missing");
  EXPECT_EQ(subtitle_file::read(folder.add("a.srt", "")).error, "it is empty");
  EXPECT_TRUE(subtitle_file::read(folder.add("a.srt", head)));
}

TEST(SubtitleFile, OfAHundredMegabytesIsNotRead) {
  const temporary_folder folder;
  const std::string file = folder.add("a.srt");
  std::filesystem::resize_file(path_of(file), 100u << 20);
  EXPECT_EQ(subtitle_file::read(file).error, "it is too large for a text subtitle file");
}

TEST(SubtitleFile, OfSixteenMegabytesIsTheLargestThatIsRead) {
  const temporary_folder folder;
  const std::string file = folder.add("a.srt");
  std::filesystem::resize_file(path_of(file), 16u << 20);
  EXPECT_EQ(subtitle_file::read(file).error, "");
  std::filesystem::resize_file(path_of(file), (16u << 20) + 1);
  EXPECT_EQ(subtitle_file::read(file).error, "it is too large for a text subtitle file");
}

TEST(SubtitleFile, WithNulBytesIsNoText) {
  EXPECT_EQ(why_unusable(head + "A\0B\n"s), "it is not a text file");
}

TEST(SubtitleFile, InUtf16IsRefusedUnlessItsSetSaysSo) {
  for (const std::string& mark : {"\xFF\xFE"s, "\xFE\xFF"s}) {
    EXPECT_EQ(why_unusable(mark + "1\0\n\0"s),
              "it is UTF-16 text, but its character set is ISO-8859-1");
    EXPECT_EQ(why_unusable(mark + "1\0\n\0"s, "UTF-16"), "");
    EXPECT_EQ(file_of(mark + "1\0"s).unicode(), "UTF-16");
  }
}

TEST(SubtitleFile, WhoseLinesEndWithCrAloneIsRefused) {
  EXPECT_EQ(why_unusable("1\r00:00:01,000 --> 00:00:02,000\rText\r"),
            "its lines end with CR alone, which spumux does not read");
  EXPECT_EQ(why_unusable("1\r\n00:00:01,000 --> 00:00:02,000\r\nText\r\n"), "");
}

TEST(SubtitleFile, InEveryFormatThatSpumuxReadsIsTaken) {
  for (const char* const text :
       {"1\n00:00:01,000 --> 00:00:02,000\nText\n", "{30}{75}Text\n",
        "[INFORMATION]\n[SUBTITLE]\n00:00:01.00,00:00:02.50\nText\n", "{T 00:00:01:00\nText\n}\n",
        "[00:00:01]\nText\n", "[Script Info]\nDialogue: Marked=0,0:00:01.00,0:00:02.50,,Text\n",
        "<SAMI>\n<BODY>\n<SYNC Start=1000><P>Text\n",
        "<window>\n<time begin=\"0:01\" end=\"0:02\"/><clear/>Text\n", "00:00:01:Text\n",
        "-->> 000030\nText\n", "0:00:01.00 0:00:02.50 D Text\n", "@30 @75 D Text\n",
        "FORMAT=TIME\n\n1 1.5\nText\n", "30,75,\"Text\"\n"})
    EXPECT_EQ(why_unusable(text), "") << text;
}

TEST(SubtitleFile, WithoutATimeInItsFirstHundredLinesIsInNoFormat) {
  const std::string none = "it is in none of the subtitle formats that spumux reads";
  EXPECT_EQ(why_unusable("Dear reader,\nthis is no. 1.\n"), none);
  EXPECT_EQ(why_unusable(std::string(98, '\n') + head), "");
  EXPECT_EQ(why_unusable(std::string(100, '\n') + head), none);
}

TEST(SubtitleFile, ThatIsUtf8TellsSoByItsLettersBeyondAscii) {
  EXPECT_EQ(file_of(head + "Caf\xC3\xA9").unicode(), "UTF-8");
  EXPECT_EQ(file_of("\xEF\xBB\xBF" + head + "Caf\xC3\xA9").unicode(), "UTF-8");
  EXPECT_EQ(file_of(head + "Cafe").unicode(), "");
  EXPECT_EQ(file_of("\xEF\xBB\xBF" + head + "Cafe").unicode(), "");
  EXPECT_EQ(file_of(head + "Caf\xE9").unicode(), "");
}

TEST(SubtitleFile, ThatIsUtf8IsRefusedWhereItWouldBeReadAsAnotherSet) {
  const std::string cafe = head + "Caf\xC3\xA9\n";
  for (const char* const set : {"ISO-8859-1", "CP1250", "KOI8-R", "MACINTOSH", "CP850"})
    EXPECT_EQ(why_unusable(cafe, set), std::string("it is UTF-8 text, but its character set is ") +
                                           set + ", so its letters would come out wrong");
  EXPECT_EQ(why_unusable("\xEF\xBB\xBF" + cafe, "SHIFT_JIS"),
            "it is UTF-8 text, but its character set is SHIFT_JIS, so its letters would come out "
            "wrong");
  for (const char* const set : {"UTF-8", "utf-8", "utf8"})
    EXPECT_EQ(why_unusable("\xEF\xBB\xBF" + cafe, set), "");
}

TEST(SubtitleFile, NamedUtf8IsReadAsThatWhateverTheSet) {
  for (const char* const name : {"a.utf8", "a.UTF-8", "a.utf"}) {
    EXPECT_EQ(why_unusable(head + "Caf\xC3\xA9\n", "ISO-8859-1", name), "");
  }
}

TEST(SubtitleFile, WithBytesThatItsSetDoesNotHaveIsRefusedWithTheLine) {
  EXPECT_EQ(why_unusable(head + "Caf\xE9\n", "UTF-8"),
            "its line 3 holds bytes that its character set, UTF-8, does not have");
  EXPECT_EQ(why_unusable(head + "good\nbad \xD2\n", "ISO-8859-7"),
            "its line 4 holds bytes that its character set, ISO-8859-7, does not have");
  EXPECT_EQ(why_unusable(head + "Caf\xE9\n", "ISO-8859-1"), "");
}

TEST(SubtitleFile, InASetThatTheSystemDoesNotKnowIsLeftToSpumux) {
  EXPECT_EQ(why_unusable(head + "Caf\xE9\n", "KLINGON"), "");
  EXPECT_EQ(why_unusable(head + "Caf\xE9\n", ""), "");
}

}  // namespace
}  // namespace corvane
