// Titles that an import adds.
#include "project/imported_title.h"

#include "project/subtitle_rows.h"
#include "support/command_test.h"

namespace corvane {
namespace {

using testing_support::rows;

class ImportedTitle : public testing_support::command_test {
 protected:
  imported_title title() {
    imported_title made;
    made.streams = {stored_from_native(folder.add("film.m2v")),
                    stored_from_native(folder.add("film.de.ac3")),
                    stored_from_native(folder.add("film.en.ac3"))};
    return made;
  }
};

TEST_F(ImportedTitle, HasItsStreamsAndIsSelected) {
  const imported_title made = title();
  add_imported_title(doc, made, video_standard::ntsc);
  EXPECT_EQ(doc.p.List11, rows{made.streams[0] + "/" + made.streams[1] + "/" + made.streams[2]});
  EXPECT_EQ(doc.p.List1, rows{"title1:film.m2v/film.de.ac3/film.en.ac3"});
  EXPECT_EQ(doc.p.chapters, rows{"00:00:00.00"});
  EXPECT_EQ(doc.p.delay, rows{"0"});
  EXPECT_EQ(doc.p.subtitledata, rows{"<none>"});
  EXPECT_EQ(doc.p.selected, 0);
  EXPECT_FALSE(doc.p.Comboregion_enabled);
  EXPECT_EQ(doc.p.saved, 0);
}

TEST_F(ImportedTitle, HasItsChaptersBehindTheBeginningEachOnce) {
  imported_title made = title();
  made.chapters = {0, 65.5, 65.501, 3725.5};
  made.delay = -250;
  add_imported_title(doc, made, video_standard::ntsc);
  EXPECT_EQ(doc.p.chapters, rows{"00:00:00.00,00:01:05.50,01:02:05.50"});
  EXPECT_EQ(doc.p.delay, rows{"-250"});
}

TEST_F(ImportedTitle, HasSubtitlesThatAreReadAsUtf8) {
  imported_title made = title();
  made.subtitles = {stored_from_native(folder.add("film.de.srt")),
                    stored_from_native(folder.add("film.en.srt"))};
  add_imported_title(doc, made, video_standard::pal);
  EXPECT_EQ(subtitle_paths(doc.p.subtitledata[0]), made.subtitles);
  const rows settings = subtitle_settings_rows(doc.p.subtitleoptions[0]);
  ASSERT_EQ(settings.size(), 2u);
  EXPECT_TRUE(settings[0].ends_with(",574,25,UTF-8")) << settings[0];
  EXPECT_EQ(settings[1], settings[0]);
}

TEST_F(ImportedTitle, DecidesTheStandardOfAProjectWithoutTitlesAndOfNoOther) {
  add_imported_title(doc, title(), video_standard::pal);
  EXPECT_EQ(doc.p.globalregion, "PAL");
  add_imported_title(doc, title(), video_standard::ntsc);
  EXPECT_EQ(doc.p.globalregion, "PAL");
}

TEST_F(ImportedTitle, LeavesTheCommandsAfterOtherTitles) {
  add_imported_title(doc, title(), video_standard::ntsc);
  doc.p.postinfo = {"call menu;               "};
  add_imported_title(doc, title(), video_standard::ntsc);
  EXPECT_EQ(doc.p.postinfo, rows{"call menu;               "});
  EXPECT_EQ(doc.p.selected, 1);
}

TEST_F(ImportedTitle, TagsAreReplacedKindByKind) {
  using kind = disc_language::stream_kind;
  doc.p.languagetags = {"Audio tag:\tFRENCH FR", "Subtitle tag:\tFRENCH FR"};
  set_language_tags(doc, kind::audio, {"GERMAN DE", "ENGLISH EN"});
  EXPECT_EQ(doc.p.languagetags,
            (rows{"Subtitle tag:\tFRENCH FR", "Audio tag:\tGERMAN DE", "Audio tag:\tENGLISH EN"}));
  set_language_tags(doc, kind::subpicture, {});
  EXPECT_EQ(doc.p.languagetags, (rows{"Audio tag:\tGERMAN DE", "Audio tag:\tENGLISH EN"}));
}

}  // namespace
}  // namespace corvane
