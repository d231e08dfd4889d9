// Files of another kind are told when they are chosen.
#include "project/picked_file.h"

#include "project/project_file.h"
#include "project/stream_dialogs.h"
#include "project/title_commands.h"
#include "support/command_test.h"
#include "support/small_streams.h"

namespace corvane {
namespace {

using namespace std::string_literals;
using testing_support::bytes_of;
using testing_support::rows;
using testing_support::small_sound;
using testing_support::small_video;

class PickedFile : public testing_support::command_test {
 protected:
  std::string mp4(const char* name) const {
    return folder.add(name, "\0\0\0\x20"s + "ftypisom....");
  }
  void expect_other_kind(const std::string& file, const std::string& is, const std::string& remedy,
                         answer reply = answer::cancel, const std::string& done = "added") {
    expect_loss("\"" + file + "\" is " + is + ".\r\n\r\n" + remedy +
                    "\r\n\r\nDo you want to take it nonetheless?  With Cancel nothing is " + done +
                    ".",
                icon::exclamation, reply);
  }
  const std::string film_remedy =
      "It has to be made into an MPEG-2 video stream (*.m2v) and AC-3 or MPEG sound (*.ac3, *.mp2) "
      "first.  The user guide (F1) says how, under \"What Corvane takes\".";
  const std::string import_remedy =
      "\"import...\" in the menu \"file\" makes it into what a disc takes, and adds it as a title; "
      "with Cancel its window opens.";
  const std::string not_a_title =
      "not an MPEG-2 video stream, which a title takes its picture from";
};

TEST_F(PickedFile, AFilmOfAnotherKindAsATitleIsTold) {
  const std::string film = mp4("holiday.mp4");
  p.saved = 1;
  expect_video(film);
  expect_other_kind(film, "an MP4 film, " + not_a_title, import_remedy);
  open_command(doc);
  EXPECT_TRUE(p.List11.empty());
  EXPECT_TRUE(p.Comboregion_enabled);
  EXPECT_EQ(p.saved, 1);
}

// Whoever shows windows opens the one of imports with it.
TEST_F(PickedFile, FilmsThatAreNoTitlesAreGivenForAnImport) {
  const std::string film = mp4("holiday.mp4"), named_stream = mp4("holiday.mpg");
  expect_video(film);
  expect_other_kind(film, "an MP4 film, " + not_a_title, import_remedy);
  EXPECT_EQ(open_or_refuse(doc), film);
  expect_video(named_stream);
  expect_other_kind(named_stream,
                    "an MP4 film, not a program stream with NAV packets, as its name says",
                    import_remedy);
  EXPECT_EQ(open_or_refuse(doc), named_stream);
  const std::string packs = bytes_of({0, 0, 1, 0xBA, 0x44, 0, 4, 0, 4, 1});
  const std::string plain = folder.add("plain.mpg", packs);
  expect_video(plain);
  expect_error("NAV packets are not detected in plain.mpg.  Please demultiplex.");
  EXPECT_EQ(open_or_refuse(doc), plain);
}

TEST_F(PickedFile, WhatIsNoFilmOrIsTakenIsNotGivenForAnImport) {
  const std::string sound = folder.add("sound.m2v", small_sound());
  expect_video(sound);
  expect_other_kind(sound, "MPEG sound, " + not_a_title,
                    "Choose the video first; its sound is asked for after that, and \"add audio "
                    "stream\" adds more.");
  EXPECT_EQ(open_or_refuse(doc), "");
  expect_video(folder.add("empty.mpg", ""));
  expect_error("NAV packets are not detected in empty.mpg.  Please demultiplex.");
  EXPECT_EQ(open_or_refuse(doc), "");
  expect_video("");
  EXPECT_EQ(open_or_refuse(doc), "");
  expect_video(folder.add("film.m2v", small_video()));
  expect_audio(folder.add("film.mp2", small_sound()));
  EXPECT_EQ(open_or_refuse(doc), "");
}

TEST_F(PickedFile, IsTakenAllTheSameWhenTheUserSaysSo) {
  const std::string film = mp4("holiday.mp4"), song = folder.add("song.mp3", "ID3\x04....");
  expect_video(film);
  expect_other_kind(film, "an MP4 film, " + not_a_title, import_remedy, answer::ok);
  expect_audio(song);
  expect_other_kind(song,
                    "a sound file with an ID3 tag, as MP3 files are, not AC-3 or MPEG sound, which "
                    "a disc has",
                    "It has to be made into AC-3 or MPEG sound (*.ac3, *.mp2) of 48 kHz first.  "
                    "The user guide (F1) says how, under \"What Corvane takes\".",
                    answer::ok);
  open_command(doc);
  EXPECT_EQ(p.List1, rows{"title1:holiday.mp4/song.mp3"});
}

TEST_F(PickedFile, StreamsOfADiscAreTakenWithoutAWord) {
  expect_video(folder.add("film.m2v", small_video()));
  expect_audio(folder.add("film.mp2", small_sound()));
  open_command(doc);
  EXPECT_EQ(p.List1, rows{"title1:film.m2v/film.mp2"});
}

TEST_F(PickedFile, WhatTellsNothingIsTakenWithoutAWord) {
  EXPECT_TRUE(may_be_taken(doc, folder.add("film.m2v", ""), file_use::title));
  EXPECT_TRUE(may_be_taken(doc, folder.add("notes.srt", "some text"), file_use::subtitles));
  EXPECT_TRUE(may_be_taken(doc, folder.path("missing.ac3"), file_use::sound));
}

TEST_F(PickedFile, SoundForVideoAndVideoForSoundAreTold) {
  const std::string sound = folder.add("film.m2v", small_sound());
  const std::string video = folder.add("film.ac3", small_video());
  expect_other_kind(sound, "MPEG sound, " + not_a_title,
                    "Choose the video first; its sound is asked for after that, and \"add audio "
                    "stream\" adds more.");
  EXPECT_FALSE(may_be_taken(doc, sound, file_use::title));
  expect_other_kind(video, "an MPEG video stream, not AC-3 or MPEG sound, which a disc has",
                    "With \"add title\" it becomes the picture of a title, with \"edit menus\" "
                    "that of a menu.");
  EXPECT_FALSE(may_be_taken(doc, video, file_use::sound));
}

TEST_F(PickedFile, AProgramStreamIsATitleOnlyUnderItsName) {
  const std::string packs = bytes_of({0, 0, 1, 0xBA, 0x44, 0, 4, 0, 4, 1});
  EXPECT_TRUE(may_be_taken(doc, folder.add("film.vob", packs), file_use::title));
  const std::string named_video = folder.add("film.m2v", packs);
  expect_other_kind(named_video, "a program stream of MPEG packets, " + not_a_title,
                    "Give it a name that ends in .vob or .mpg, and choose it again.  It becomes a "
                    "title if it has NAV packets; else \"import...\" in the menu \"file\" makes "
                    "a title of it.");
  EXPECT_FALSE(may_be_taken(doc, named_video, file_use::title));
  const std::string video = folder.add("film.mpg", small_video());
  expect_other_kind(video,
                    "an MPEG video stream, not a program stream with NAV packets, as its name says",
                    "Give it a name that ends in .m2v, and choose it again.");
  EXPECT_FALSE(may_be_taken(doc, video, file_use::title));
}

TEST_F(PickedFile, APictureAsATitleIsLedToTheStill) {
  const std::string picture = folder.add("photo.jpg", "\xFF\xD8\xFF\xE0");
  expect_other_kind(picture, "a JPEG picture, " + not_a_title,
                    "\"create m2v still\" in the menu \"menus\" makes a video of a picture; so "
                    "does dropping it on the main window.");
  EXPECT_FALSE(may_be_taken(doc, picture, file_use::title));
}

TEST_F(PickedFile, WhatIsNoProjectIsToldBeforeItIsLoaded) {
  const std::string film = mp4("holiday.cvp");
  ask.expect_open({"load corvane project", testing_support::cvp_filter, ""}, film);
  expect_other_kind(film, "an MP4 film, not a project", film_remedy, answer::cancel, "loaded");
  EXPECT_FALSE(load_asked(doc));
}

TEST_F(PickedFile, EveryKindNamesWhatCanBeDone) {
  const std::string heads[] = {"\0\0\0\x20"s + "ftypisom",
                               small_video(),
                               small_sound(),
                               bytes_of({0, 0, 1, 0xBA}),
                               "RIFF....WAVE",
                               "\xFF\xD8\xFF\xE0",
                               "\x89PNG\r\n\x1A\n",
                               "WEBVTT\n",
                               "[Script Info]\r\n",
                               "Corvane 0.997",
                               "DVDVIDEO-VTS",
                               "PK\x03\x04",
                               "%PDF-",
                               "# VobSub index"};
  class last_box : public testing_support::scripted_prompts {
   public:
    answer message(const message_box& box) override {
      text = box.text;
      return answer::cancel;
    }
    std::string text;
  } told;
  document asked(told, prefs);
  for (const std::string& head : heads) {
    const std::string file = folder.add("file.bin", head);
    for (const file_use use :
         {file_use::title, file_use::menu_video, file_use::sound, file_use::jpeg, file_use::bitmap,
          file_use::subtitles, file_use::project}) {
      told.text.clear();
      if (may_be_taken(asked, file, use))
        continue;
      const std::string& text = told.text;
      const std::size_t end = text.find("\r\n\r\nDo you want to take it nonetheless?");
      const std::size_t begin = text.find("\r\n\r\n") + 4;
      ASSERT_NE(end, std::string::npos) << text;
      EXPECT_GT(end, begin + 10) << text;
      EXPECT_EQ(text[end - 1], '.') << text;
    }
  }
}

TEST_F(PickedFile, SubtitlesThatArePicturesAreToldFromTexts) {
  const std::string sub = folder.add("film.sub", bytes_of({0, 0, 1, 0xBA, 0x44, 0, 4, 0, 4, 1}));
  expect_other_kind(sub, "a program stream of MPEG packets, not a file of text subtitles",
                    "If it came with an *.idx file, its subtitles are pictures.  Only texts can be "
                    "drawn: convert it to an *.srt file first.");
  EXPECT_FALSE(may_be_taken(doc, sub, file_use::subtitles));
}

TEST_F(PickedFile, IsDescribedByItsBytes) {
  EXPECT_EQ(kind_of_file(mp4("a.m2v")), "an MP4 film");
  EXPECT_EQ(kind_of_file(folder.add("a.txt", "some text")), "");
  EXPECT_EQ(kind_of_file(folder.path("missing")), "");
}

}  // namespace
}  // namespace corvane
