// Projects of material that a disc takes, made up at random: none has an error before its run, none
// a difference after it.
#include "authoring/foreseen_run.h"
#include "clips.h"
#include "command.h"
#include "disc/finding.h"
#include "examine/examination.h"
#include "examine/verification.h"
#include "judge.h"
#include "large_sets.h"
#include "project/disc_of.h"
#include "project/project_file.h"
#include "studio.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace corvane::disc {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

constexpr int clip_seconds = 4;
constexpr const char* row =
    "center,bottom,60,60,30,30,28.0,dejavusans.ttf,720,478,29.97,ISO-8859-1|";

constexpr const char* by_ffmpeg =
    " -c:v mpeg2video -b:v 2M -maxrate 6M -bufsize 1835k -g 12 -flags +cgop "
    "-sc_threshold 1000000000 -pix_fmt yuv420p -aspect ";
constexpr const char* by_mpeg2enc =
    " -pix_fmt yuv420p -vf setsar=1 -f yuv4mpegpipe - | "
    "mpeg2enc -v 0 -4 4 -2 4 -r 8 -f 8 -b 3000 ";

/// Clips of several encoders.
class clips {
 public:
  clips() {
    for (const bool pal : {false, true})
      for (const char* const aspect : {"4:3", "16:9"})
        make_videos(pal, aspect);
    sound("stereo.ac3", "-ac 2 -c:a ac3 -b:a 192k");
    sound("mono.ac3", "-ac 1 -c:a ac3 -b:a 96k");
    sound("surround.ac3", "-ac 6 -c:a ac3 -b:a 448k");
    sound("stereo.mp2", "-ac 2 -c:a mp2 -b:a 224k");
    sound("mono.mp2", "-ac 1 -c:a mp2 -b:a 128k");
    sound("twolame.mp2", "-ac 2 -c:a libtwolame -b:a 192k");
    sound("mp2enc.mp2", "-ac 2 -f wav s.wav && mp2enc -v 0 -b 192 -r 48000 <s.wav -o");
    for (const bool pal : {false, true})
      for (const char* const aspect : {"4:3", "16:9"})
        make_ready(pal, aspect);
  }

  std::string stored(const std::string& name) const { return stored_from_native(files_.at(name)); }
  /// Names of clips of this standard and these proportions.
  static std::vector<std::string> videos(bool pal, const std::string& aspect) {
    const std::string begin = begin_of(pal, aspect);
    std::vector<std::string> names = {begin + "-ffmpeg.m2v"};
    // mpeg2enc takes ten seconds for a clip.
    if (aspect == "4:3")
      names.push_back(begin + "-mpeg2enc.m2v");
    else if (!pal)
      names.push_back(begin + "-pulldown.m2v");
    return names;
  }
  /// The same of ready files, with one sound like "stereo.ac3".
  static std::vector<std::string> ready(bool pal, const std::string& aspect) {
    std::vector<std::string> names;
    for (const char* const by : {"-ready.vob", "-mplex.vob", "-disc.vob"})
      names.push_back(begin_of(pal, aspect) + by);
    return names;
  }

 private:
  static std::string begin_of(bool pal, const std::string& aspect) {
    return (pal ? "pal" : "ntsc") + aspect.substr(0, aspect.find(':'));
  }
  /// `line` makes the file whose name stands behind it.
  void make(const std::string& line, const std::string& name) {
    files_[name] = kept_clip(line, name);
  }

  void make_videos(bool pal, const std::string& aspect) {
    const std::string begin = begin_of(pal, aspect);
    const std::string size = pal ? "720x576" : "720x480", rate = pal ? "25" : "30000/1001";
    const std::string time = " -t " + std::to_string(clip_seconds);
    const std::string source =
        "ffmpeg -nostdin -v error -y -f lavfi -i testsrc=s=" + size + ":r=" + rate;
    make(source + time + by_ffmpeg + aspect + " -f mpeg2video", begin + "-ffmpeg.m2v");
    if (aspect == "4:3")
      make(source + time + by_mpeg2enc + "-a 2 -n " + (pal ? "p" : "n") + " -o",
           begin + "-mpeg2enc.m2v");
    else if (!pal)
      make("ffmpeg -nostdin -v error -y -f lavfi -i testsrc=s=720x480:r=24000/1001" + time +
               by_mpeg2enc + "-p -F 1 -a 3 -n n -o",
           begin + "-pulldown.m2v");
    make(source + time + " -f lavfi -i sine=d=4:r=48000" + by_ffmpeg + aspect +
             " -c:a ac3 -b:a 192k -ac 2 -shortest -f dvd",
         begin + "-ready.vob");
  }

  /// Of mplex, and what dvdauthor made of it on a disc.
  void make_ready(bool pal, const std::string& aspect) {
    const std::string begin = begin_of(pal, aspect), file = begin + "-mplex.vob";
    make("mplex -v 0 -f 8 '" + files_.at(begin + "-ffmpeg.m2v") + "' '" + files_.at("stereo.ac3") +
             "' -o",
         file);
    make("VIDEO_FORMAT=" + std::string(pal ? "PAL" : "NTSC") + " dvdauthor -o disc -t '" +
             files_.at(file) + "' && mv disc/VIDEO_TS/VTS_01_1.VOB",
         begin + "-disc.vob");
  }

  void sound(const std::string& name, const std::string& how) {
    make("ffmpeg -nostdin -v error -y -f lavfi -i sine=d=" + std::to_string(clip_seconds) +
             ":r=48000 -ar 48000 " + how,
         name);
  }

  std::map<std::string, std::string> files_;  // native paths by the clip's name
};

/// A project made up of clips.
class made_up {
 public:
  made_up(const clips& of, const testing_support::temporary_folder& texts, unsigned seed)
      : clips_(of), texts_(texts), random_(seed) {
    pal_ = chance(50);
    p_.globalregion = pal_ ? "PAL" : "NTSC";
    const std::string aspect = chance(50) ? "16:9" : "4:3";
    videos_ = clips::videos(pal_, aspect);
    ready_ = clips::ready(pal_, aspect);
    for (int i = pick(1, 8); i > 0; --i)
      sounds_.push_back(any({"stereo.ac3", "mono.ac3", "surround.ac3", "stereo.mp2", "mono.mp2",
                             "twolame.mp2", "mp2enc.mp2"}));
    if (chance(40))
      sounds_ = {"stereo.ac3"};  // as ready files have it
    titles_ = pick(1, 4);
    menus_ = pick(0, 3);
  }

  project make() {
    for (int t = 1; t <= titles_; ++t)
      make_title();
    for (int m = 1; m <= menus_; ++m)
      make_menu();
    p_.jumptable = menus_ > 0 && chance(40);
    for (int t = 1; t <= titles_; ++t)
      p_.postinfo.push_back(padded(post()));
    p_.isocreate = chance(30);
    if (chance(40))
      p_.firstplay = "jump title " + std::to_string(pick(1, titles_));
    for (std::size_t i = 0; i < sounds_.size(); ++i)
      p_.languagetags.push_back(any({"Audio tag:\tGERMAN DE ", "Audio tag:\tENGLISH EN "}));
    return std::move(p_);
  }

 private:
  int pick(int least, int most) { return std::uniform_int_distribution<int>(least, most)(random_); }
  bool chance(int percent) { return pick(1, 100) <= percent; }
  std::string any(const std::vector<std::string>& of) {
    return of[static_cast<std::size_t>(pick(0, static_cast<int>(of.size()) - 1))];
  }
  static std::string padded(std::string text) {
    text.resize(std::max<std::size_t>(text.size(), 25), ' ');
    return text;
  }

  void make_title() {
    const bool ready = sounds_.size() == 1 && sounds_[0] == "stereo.ac3" && chance(40);
    std::vector<std::string> streams = {clips_.stored(any(ready ? ready_ : videos_))};
    if (!ready)
      for (const std::string& sound : sounds_)
        streams.push_back(clips_.stored(sound));
    std::string chapters = "00:00:00.00";
    const int more = pick(0, 2);
    for (int i = 1; i <= more; ++i)
      chapters += ",00:00:0" + std::to_string(i) + ".00";
    chapters_.push_back(more + 1);
    add_title(p_, streams, chapters, std::to_string(ready ? 0 : pick(-2, 2) * 100));
    if (!ready && chance(30))
      add_subtitles();
  }

  void add_subtitles() {
    const std::string name = "text" + std::to_string(p_.List11.size()) + ".srt";
    p_.subtitledata.back() = stored_from_native(
        texts_.add(name,
                   "1\n00:00:00,500 --> 00:00:01,500\nOne\n\n2\n00:00:02,000 --> "
                   "00:00:03,000\nTwo\n\n"));
    p_.subtitleoptions.back() = row;
  }

  std::string title_place() {
    const int title = pick(1, titles_);
    if (chance(50))
      return "jump title " + std::to_string(title);
    return "jump title " + std::to_string(title) + " chapter " +
           std::to_string(pick(1, chapters_[static_cast<std::size_t>(title) - 1]));
  }

  void make_menu() {
    std::vector<std::string> buttons;
    const int count = pick(1, 6);
    for (int b = 0; b < count; ++b) {
      const int y = 60 + b * 60;
      const std::string action =
          chance(30) ? "jump menu " + std::to_string(pick(1, menus_)) : title_place();
      buttons.push_back("100/" + std::to_string(y) + "/300/" + std::to_string(y + 40) + "/" +
                        action + "/yellow/white");
    }
    add_menu(p_, clips_.stored(any(videos_)), chance(50) ? clips_.stored("stereo.ac3") : "",
             buttons, chance(30) ? "1\t00:00:00.0\t00:00:00.0\t2" : "0\t00:00:00.0\t00:00:00.0\t2");
  }

  std::string post() {
    if (menus_ == 0 || chance(40))
      return chance(30) ? "exit" : title_place();
    if (!p_.jumptable)
      return "call menu";
    return chance(50) ? "call last menu" : "call menu " + std::to_string(pick(1, menus_));
  }

  const clips& clips_;
  const testing_support::temporary_folder& texts_;
  std::mt19937 random_;
  project p_;
  bool pal_ = false;
  std::vector<std::string> videos_, ready_, sounds_;
  int titles_ = 1, menus_ = 0;
  std::vector<int> chapters_;
};

/// What differs on the disc from what the beginnings of the project's files tell.
std::vector<std::string> found_unseen(const studio& s, const project& p) {
  fact_store facts;
  examination e(disc_of(p), examination::depth::beginnings, facts);
  while (e.step(1000)) {
  }
  const run_paths where{s.app(), s.out()};
  verification look({s.out(), {}},
                    std::make_shared<const foreseen_run>(foreseen_of(p, where, &facts, {})));
  while (look.step(1000)) {
  }
  std::vector<std::string> lines;
  for (const finding& f : look.findings())
    lines.push_back(line_of(f));
  return lines;
}

TEST(CleanProjects, HaveNoErrorBeforeTheirRunAndNoDifferenceAfterIt) {
  const clips of;
  for (int i = 0; i < part_of_set(200); ++i) {
    SCOPED_TRACE("project " + std::to_string(i));
    const studio s;
    const project p = made_up(of, s.folder(), 1000u + static_cast<unsigned>(i)).make();
    const finished done = s.author(p);
    EXPECT_EQ(done.status, 0) << done.out << "\n" << project_text(p);
    EXPECT_THAT(done.out, Not(HasSubstr("error: ")));
    EXPECT_THAT(done.out, Not(HasSubstr("unit at sector")));
    EXPECT_EQ(disagreement_text(s.out()), "");
    EXPECT_THAT(found_unseen(s, p), IsEmpty());
  }
}

}  // namespace
}  // namespace corvane::disc
