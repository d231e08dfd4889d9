#include "project/subtitle_rows.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

using rows = std::vector<std::string>;

TEST(SubtitleRows, DefaultOptionsFollowTheRegion) {
  EXPECT_EQ(default_subtitleoptions("NTSC"),
            "center,bottom,60,60,30,30,28.0,arial.ttf,720,478,29.97,ISO-8859-1|");
  EXPECT_EQ(default_subtitleoptions("PAL"),
            "center,bottom,60,60,30,30,28.0,arial.ttf,720,574,25,ISO-8859-1|");
}

TEST(SubtitleRows, FieldsStandInTheRowsOrder) {
  const subtitle_settings s = parse_subtitle_settings("a,b,1,2,3,4,5.5,f.ttf,6,7,8,c");
  using enum subtitle_field;
  EXPECT_EQ(s[horizontal_alignment], "a");
  EXPECT_EQ(s[vertical_alignment], "b");
  EXPECT_EQ(s[left_margin], "1");
  EXPECT_EQ(s[right_margin], "2");
  EXPECT_EQ(s[top_margin], "3");
  EXPECT_EQ(s[bottom_margin], "4");
  EXPECT_EQ(s[font_size], "5.5");
  EXPECT_EQ(s[font_file], "f.ttf");
  EXPECT_EQ(s[movie_width], "6");
  EXPECT_EQ(s[movie_height], "7");
  EXPECT_EQ(s[frame_rate], "8");
  EXPECT_EQ(s[character_set], "c");
}

TEST(SubtitleRows, WhatWasSplitIsJoinedAgain) {
  for (const char* const row : {"center,bottom,60,60,30,30,28.0,arial.ttf,720,478,29.97,ISO-8859-1",
                                " 1,,,,,,,,,,,", "a,b,c,d,e,f,g,\xC3\xA9.ttf,i,j,k,"})
    EXPECT_EQ(subtitle_settings_text(parse_subtitle_settings(row)), row);
}

TEST(SubtitleRows, MissingFieldsAreEmptyAndMoreThanTwelveAreLeftOut) {
  EXPECT_EQ(subtitle_settings_text(parse_subtitle_settings("left")), "left,,,,,,,,,,,");
  EXPECT_EQ(subtitle_settings_text(parse_subtitle_settings("")), ",,,,,,,,,,,");
  EXPECT_EQ(subtitle_settings_text(parse_subtitle_settings("1,2,3,4,5,6,7,8,9,10,11,12,13")),
            "1,2,3,4,5,6,7,8,9,10,11,12");
}

TEST(SubtitleRows, FieldsAreCounted) {
  EXPECT_EQ(subtitle_fields_in("1,2,3,4,5,6,7,8,9,10,11,12"), subtitle_field_count);
  EXPECT_EQ(subtitle_fields_in(",,,,,,,,,,,"), subtitle_field_count);
  EXPECT_EQ(subtitle_fields_in("1,2"), 2u);
  EXPECT_EQ(subtitle_fields_in(""), 0u);
}

TEST(SubtitleRows, EachSettingsRowIsFollowedByABar) {
  EXPECT_EQ(subtitle_options_text({"a", "b"}), "a|b|");
  EXPECT_EQ(subtitle_options_text({}), "");
  EXPECT_EQ(subtitle_settings_rows("a|b|"), (rows{"a", "b"}));
  EXPECT_EQ(subtitle_settings_rows("|a||b"), (rows{"a", "b"}));
  EXPECT_EQ(subtitle_settings_rows(""), rows{});
}

TEST(SubtitleRows, ATypedTextMustNotCutTheRow) {
  EXPECT_EQ(why_not_a_subtitle_field("28,5"), "contains \",\"");
  EXPECT_EQ(why_not_a_subtitle_field("a|b"), "contains \"|\"");
  EXPECT_EQ(why_not_a_subtitle_field("1\n2"),
            "contains a line break, a tab or another control character");
  for (const char* const text : {"", "28.5", "Times New Roman", "a/b\\c", "\xC3\xA9"})
    EXPECT_EQ(why_not_a_subtitle_field(text), std::nullopt) << text;
}

TEST(SubtitleRows, FilesAreJoinedBySlashesAndNoneIsWritten) {
  EXPECT_EQ(subtitle_paths("<none>"), rows{});
  EXPECT_EQ(subtitle_paths(""), rows{});
  EXPECT_EQ(subtitle_paths("\\a\\b.srt/\\c.sub"), (rows{"\\a\\b.srt", "\\c.sub"}));
  EXPECT_EQ(with_subtitle("<none>", "\\a.srt"), "\\a.srt");
  EXPECT_EQ(with_subtitle("\\a.srt", "\\b.srt"), "\\a.srt/\\b.srt");
}

TEST(SubtitleRows, FieldsHaveTheNamesThatMessagesUse) {
  EXPECT_STREQ(name_of(subtitle_field::horizontal_alignment), "horizontal alignment");
  EXPECT_STREQ(name_of(subtitle_field::font_file), "font");
  EXPECT_STREQ(name_of(subtitle_field::character_set), "character set");
}

}  // namespace
}  // namespace corvane
