// The whole conversation of cleaning a title's subtitle, and what the project has then.
#include "tools/subtitle_cleaning.h"

#include "examine/subtitle_text_rules.h"
#include "formats/text.h"
#include "project/disc_of.h"
#include "project/subtitle_rows.h"
#include "support/command_test.h"

#include <gmock/gmock.h>

namespace corvane {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

const char* const row_begin = "center,bottom,60,60,30,30,28.0,arial.ttf,720,478,";
const std::string marked = "1\n00:00:01,000 --> 00:00:03,000\n{\\an8}Gr\xFC\xDF &amp; so\n\n";
const std::string plain = "1\n00:00:01,000 --> 00:00:03,000\nGr\xC3\xBC\xC3\x9F & so\n\n";

class SubtitleCleaning : public testing_support::command_test {
 protected:
  SubtitleCleaning() {
    add_files_and_title({"one.m2v", "one.ac3"});
    add_files_and_title({"two.m2v", "two.ac3"});
    p.subtitledata = {"<none>", folder.stored("first.srt") + "/" + folder.stored("film.srt")};
    p.subtitleoptions = {default_subtitleoptions("NTSC"),
                         settings("29.97", "CP1252") + settings("25", "ISO-8859-1")};
    p.saved = 1;
    folder.add("first.srt", marked);
    folder.add("film.srt", marked);
  }

  static std::string settings(const std::string& rate, const std::string& charset) {
    return row_begin + rate + "," + charset + "|";
  }

  subtitle_cleaning open() {
    auto cleaning = subtitle_cleaning::open(doc, 2, 2);
    EXPECT_TRUE(cleaning);
    return *cleaning;
  }

  void expect_place(const std::string& chosen) {
    file_dialog where{"save the cleaned subtitles", "text subtitles(*.srt)|*.srt",
                      "film.cleaned.srt"};
    where.folder = folder.path();
    ask.expect_save(where, chosen);
  }
};

TEST_F(SubtitleCleaning, CopyIsWrittenBesideTheFileAndUsedAsUtf8) {
  subtitle_cleaning cleaning = open();
  EXPECT_EQ(cleaning.file(), folder.path("film.srt"));
  EXPECT_EQ(cleaning.copy(), folder.path("film.cleaned.srt"));
  ASSERT_THAT(cleaning.changes(), SizeIs(1));
  EXPECT_EQ(cleaning.changes()[0].after, "Gr\xC3\xBC\xC3\x9F & so");
  EXPECT_EQ(cleaning.summary(),
            "1 cue of \"film.srt\" holds what would be shown wrongly on the disc.");
  EXPECT_EQ(p.saved, 1);
  EXPECT_TRUE(cleaning.write_and_use());
  EXPECT_EQ(folder.read("film.cleaned.srt"), plain);
  EXPECT_EQ(folder.read("film.srt"), marked);
  EXPECT_EQ(p.subtitledata[1],
            folder.stored("first.srt") + "/" + folder.stored("film.cleaned.srt"));
  EXPECT_EQ(p.subtitleoptions[1], settings("29.97", "CP1252") + settings("25", "UTF-8"));
  EXPECT_EQ(p.subtitledata[0], "<none>");
  EXPECT_EQ(p.saved, 0);
}

TEST_F(SubtitleCleaning, ExaminationFindsNothingOfItAnyMore) {
  const auto found = [this] {
    std::vector<std::string> rules;
    for (const finding& f : subtitle_findings(disc_of(p), native_style()))
      if (cleaning_helps(f))
        rules.push_back(f.rule);
    return rules;
  };
  EXPECT_THAT(found(), SizeIs(2)) << "one for each file";
  EXPECT_TRUE(open().write_and_use());
  EXPECT_THAT(found(), SizeIs(1));
  EXPECT_TRUE(subtitle_cleaning::open(doc, 2, 1)->write_and_use());
  EXPECT_THAT(found(), IsEmpty());
}

TEST_F(SubtitleCleaning, OneStepTakesItBack) {
  const std::string before = p.subtitledata[1], options = p.subtitleoptions[1];
  {
    const document::step step(doc, "clean subtitles");
    EXPECT_TRUE(open().write_and_use());
  }
  EXPECT_NE(p.subtitledata[1], before);
  doc.undo();
  EXPECT_EQ(p.subtitledata[1], before);
  EXPECT_EQ(p.subtitleoptions[1], options);
  EXPECT_EQ(folder.read("film.cleaned.srt"), plain) << "files on the disk stay";
}

TEST_F(SubtitleCleaning, RateLineBecomesTheFrameRate) {
  folder.add("film.srt", "{1}{1}23.976\n{25}{50}{y:i}a\n{75}{90}b\n");
  subtitle_cleaning cleaning = open();
  EXPECT_EQ(cleaning.summary(),
            "2 cues of \"film.srt\" hold what would be shown wrongly on the disc. The file is made "
            "for 23.976 pictures a second; this becomes its frame rate.");
  EXPECT_TRUE(cleaning.write_and_use());
  EXPECT_EQ(folder.read("film.cleaned.srt"), "{25}{50}a\n{75}{90}b\n");
  EXPECT_EQ(p.subtitleoptions[1], settings("29.97", "CP1252") + settings("23.976", "UTF-8"));
}

TEST_F(SubtitleCleaning, SettingsThatAreMissingAreThoseOfTheFileBefore) {
  p.subtitleoptions[1] = settings("29.97", "CP1252");
  EXPECT_TRUE(open().write_and_use());
  EXPECT_EQ(p.subtitleoptions[1], settings("29.97", "CP1252") + settings("29.97", "UTF-8"));
}

TEST_F(SubtitleCleaning, NothingIsOverwrittenUnasked) {
  subtitle_cleaning cleaning = open();
  folder.add("film.cleaned.srt", "another program's");
  ask.expect(box("File exists.  Overwrite?", icon::exclamation, buttons::yes_no), answer::no);
  EXPECT_FALSE(cleaning.write_and_use());
  EXPECT_EQ(folder.read("film.cleaned.srt"), "another program's");
  EXPECT_EQ(p.saved, 1);
  ask.expect(box("File exists.  Overwrite?", icon::exclamation, buttons::yes_no), answer::yes);
  EXPECT_TRUE(cleaning.write_and_use());
  EXPECT_EQ(folder.read("film.cleaned.srt"), plain);
}

TEST_F(SubtitleCleaning, PlaceCanBeChosen) {
  subtitle_cleaning cleaning = open();
  expect_place("");
  cleaning.choose_place();
  EXPECT_EQ(cleaning.copy(), folder.path("film.cleaned.srt"));
  expect_place(folder.path("other.srt"));
  cleaning.choose_place();
  EXPECT_TRUE(cleaning.write_and_use());
  EXPECT_EQ(folder.read("other.srt"), plain);
  EXPECT_EQ(p.subtitledata[1], folder.stored("first.srt") + "/" + folder.stored("other.srt"));
}

TEST_F(SubtitleCleaning, FileItselfIsNeverTheCopy) {
  subtitle_cleaning cleaning = open();
  expect_place(folder.path("film.srt"));
  cleaning.choose_place();
  expect_refusal(
      "The cleaned copy cannot be written over the file that it is made of. Please choose another "
      "name.");
  EXPECT_FALSE(cleaning.write_and_use());
  EXPECT_EQ(folder.read("film.srt"), marked);
}

TEST_F(SubtitleCleaning, CopyThatCannotBeWrittenIsTold) {
  subtitle_cleaning cleaning = open();
  expect_place(join_path(folder.path("gone"), "copy.srt"));
  cleaning.choose_place();
  const failure why = write_file(join_path(folder.path("gone"), "copy.srt"), "x");
  ASSERT_TRUE(why);
  expect_error("The file \"" + join_path(folder.path("gone"), "copy.srt") +
               "\" could not be written: " + *why + ".");
  EXPECT_FALSE(cleaning.write_and_use());
  EXPECT_EQ(p.saved, 1);
}

TEST_F(SubtitleCleaning, WhatCannotBeCleanedIsTold) {
  folder.add("film.srt", plain);
  p.subtitleoptions[1] = settings("25", "UTF-8") + settings("25", "UTF-8");
  ask.expect(box("There is nothing to clean in \"" + folder.path("film.srt") + "\" any more.",
                 icon::information));
  EXPECT_FALSE(subtitle_cleaning::open(doc, 2, 2));
  remove_all(folder.path("film.srt"));
  expect_refusal("\"" + folder.path("film.srt") + "\" cannot be cleaned: it is missing.");
  EXPECT_FALSE(subtitle_cleaning::open(doc, 2, 2));
  for (const auto& [title, subtitle] : {std::pair{1, 1}, {2, 3}, {2, 0}, {3, 1}, {0, 1}}) {
    expect_refusal("The title has no such subtitle any more.");
    EXPECT_FALSE(subtitle_cleaning::open(doc, title, subtitle));
  }
}

}  // namespace
}  // namespace corvane
