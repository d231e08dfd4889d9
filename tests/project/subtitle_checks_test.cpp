#include "project/subtitle_checks.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

refusal with(subtitle_field field, const std::string& text) {
  subtitle_settings s = default_subtitle_settings("NTSC");
  s[field] = text;
  return why_not_drawable(s);
}

TEST(SubtitleChecks, WhatANewTitleBeginsWithCanBeDrawn) {
  for (const char* const region : {"NTSC", "PAL"})
    EXPECT_EQ(why_not_drawable(default_subtitle_settings(region)), std::nullopt) << region;
}

TEST(SubtitleChecks, AlignmentsAreTheThreeThatThereAre) {
  for (const std::string_view item : halign_items)
    EXPECT_EQ(with(subtitle_field::horizontal_alignment, std::string(item)), std::nullopt) << item;
  for (const std::string_view item : valign_items)
    EXPECT_EQ(with(subtitle_field::vertical_alignment, std::string(item)), std::nullopt) << item;
  EXPECT_EQ(with(subtitle_field::horizontal_alignment, "middle"),
            "the horizontal alignment \"middle\", which is neither left, center nor right");
  EXPECT_EQ(with(subtitle_field::vertical_alignment, ""),
            "the vertical alignment \"\", which is neither top, center nor bottom");
}

TEST(SubtitleChecks, MarginsAndTheMoviesSizeAreWholePixels) {
  using enum subtitle_field;
  for (const auto field :
       {left_margin, right_margin, top_margin, bottom_margin, movie_width, movie_height}) {
    for (const char* const good : {"0", "60", " 60", "+3", "2048"})
      EXPECT_EQ(with(field, good), std::nullopt) << good;
    const std::string setting = std::string("the ") + name_of(field);
    for (const char* const bad : {"-5", "4.5", "60."})
      EXPECT_EQ(with(field, bad),
                setting + " \"" + bad + "\", which is not a whole number of pixels");
    for (const char* const bad : {"2049", "99999999999999999999"})
      EXPECT_EQ(with(field, bad), setting + " \"" + bad + "\", which is more than 2048 pixels");
    EXPECT_EQ(with(field, "60 "), setting + " \"60 \", which ends with a blank");
    for (const char* const bad : {"", "x", "60px", "1e3"})
      EXPECT_EQ(with(field, bad), setting + " \"" + bad + "\", which is not a number");
  }
}

TEST(SubtitleChecks, FontSizeAndFrameRateAreAboveZero) {
  using enum subtitle_field;
  for (const auto field : {font_size, frame_rate}) {
    for (const char* const good : {"28.0", "28.", ".5", "29.97", "+25"})
      EXPECT_EQ(with(field, good), std::nullopt) << good;
    const std::string setting = std::string("the ") + name_of(field);
    for (const char* const bad : {"0", "-1", "0.00"})
      EXPECT_EQ(with(field, bad), setting + " \"" + bad + "\", which is not above 0");
    for (const char* const bad : {"", "big", "25,5"})
      EXPECT_EQ(with(field, bad), setting + " \"" + bad + "\", which is not a number");
  }
}

TEST(SubtitleChecks, TextsMustNotBreakTheControlFile) {
  EXPECT_EQ(with(subtitle_field::character_set, "\" image=\"x"),
            "the character set \"\" image=\"x\", which contains a quote");
  EXPECT_EQ(with(subtitle_field::font_file, "a<b.ttf"),
            "the font \"a<b.ttf\", which contains a less-than sign (<)");
}

}  // namespace
}  // namespace corvane
