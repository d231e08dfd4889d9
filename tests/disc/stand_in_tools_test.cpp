// Tools that do half of their work and say that all is well: what they leave is never called a
// disc.
#include "command.h"
#include "large_sets.h"
#include "platform/files/files.h"
#include "platform/files/paths.h"
#include "platform/files/program_folder.h"
#include "project/project_file.h"
#include "studio.h"
#include "tools/still_video.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <string>

namespace corvane::disc {
namespace {

namespace fs = std::filesystem;
using testing::ContainsRegex;
using testing::HasSubstr;
using testing::Not;

class StandIn : public ::testing::Test {
 protected:
  StandIn() {
    for (const char* const tool :
         {"mplex", "spumux", "dvdauthor", "gm", "mkisofs", "mpeg2enc", "jpeg2yuv"})
      add(tool, "exec " + real(tool) + " \"$@\"\n");
  }

  static std::string real(const std::string& tool) {
    const char* const path = std::getenv("PATH");
    std::istringstream folders(path == nullptr ? "" : path);
    for (std::string folder; std::getline(folders, folder, ':');)
      for (const std::string& name : {tool, tool == "mkisofs" ? std::string("genisoimage") : tool})
        if (file_exists(join_path(folder, name)))
          return join_path(folder, name);
    ADD_FAILURE() << tool << " is not installed";
    return {};
  }

  void add(const std::string& tool, const std::string& body) const {
    const std::string path = home_.folder().add("tools/" + tool, "#!/bin/sh\n" + body);
    fs::permissions(path_of(path), fs::perms::owner_all);
  }

  /// `look`: options about the look at the material.
  finished author(const std::vector<std::string>& look = {}) const {
    EXPECT_FALSE(write_file(home_.project_file(), project_text(project_)));
    command c;
    c.words = {CORVANE_AUTHOR, "--replace"};
    c.words.insert(c.words.end(), look.begin(), look.end());
    c.words.insert(c.words.end(), {home_.project_file(), home_.out()});
    c.environment["CORVANE_HOME"] = home_.app();
    c.environment["PATH"] = home_.folder().path("tools") + ":/usr/bin:/bin";
    c.environment["OUT"] = home_.out();
    return run(c);
  }

  /// Of the whole set also where nobody has looked at the material.
  void expect_not_complete(const std::string& what) const {
    expect_not_complete(what, {});
    if (part_of_set(10) == 10)
      expect_not_complete_unseen(what);
  }
  void expect_not_complete_unseen(const std::string& what) const {
    expect_not_complete(what + " (without a look)", {"--skip-look"});
  }

  project project_ = small_project();
  studio home_;

 private:
  void expect_not_complete(const std::string& what, const std::vector<std::string>& look) const {
    const finished done = author(look);
    EXPECT_NE(done.status, 0) << what << "\n" << done.out;
    EXPECT_THAT(done.out, Not(HasSubstr("Process complete."))) << what;
    EXPECT_FALSE(file_exists(home_.image())) << what;
    EXPECT_FALSE(folder_exists(home_.out() + "/VIDEO_TS")) << what;
  }
};

/// Of a tool that writes to the file behind "-o".
std::string after_o(const std::string& then) {
  return "o=; for w in \"$@\"; do [ -z \"$next\" ] || { o=$w; next=; }; [ \"$w\" != -o ] || "
         "next=1; "
         "done\n" +
         then;
}

TEST_F(StandIn, ToolsThatDoTheirWorkMakeACompleteDisc) {
  EXPECT_EQ(author().status, 0);
  EXPECT_EQ(author({"--skip-look"}).status, 0);
}

/// Cuts the file behind "-o" in its middle.
constexpr const char* half_of_it = "truncate -s $(($(stat -c %s \"$o\") / 4096 * 2048)) \"$o\"\n";

TEST_F(StandIn, HalfAFilmThatNobodyHasLookedAtIsFoundOutByItsSize) {
  add("mplex", after_o(real("mplex") + " \"$@\"\n" + half_of_it));
  const finished done = author({"--skip-look"});
  EXPECT_NE(done.status, 0) << done.out;
  for (const char* const item : {"title 1, video", "title 1, audio 1", "menu 1, video"})
    EXPECT_THAT(done.out, ContainsRegex("error: " + std::string(item) + ": bytes: [0-9]+"));
}

TEST_F(StandIn, HalfAReadyFilmThatNobodyHasLookedAtIsFoundOutByItsSize) {
  project_ = project();
  add_title(project_, {stored_media("muxed-ntsc.vob")});
  EXPECT_EQ(author({"--skip-look"}).status, 0);
  const std::string half = home_.folder().path("half.vob");
  add("dvdauthor", "/usr/bin/head -c 614400 '" + media("muxed-ntsc.vob") + "' >'" + half +
                       "'\nsed -i 's|" + media("muxed-ntsc.vob") + "|" + half + "|' \"$2\"\nexec " +
                       real("dvdauthor") + " \"$@\"\n");
  const finished done = author({"--skip-look"});
  EXPECT_NE(done.status, 0) << done.out;
  EXPECT_THAT(done.out, ContainsRegex("error: title 1: bytes: [0-9]+"));
}

TEST_F(StandIn, MplexThatDoesHalfOfItsWorkIsFoundOut) {
  const std::string work = real("mplex") + " \"$@\"";
  const std::string half = half_of_it;
  for (const std::string& way :
       {after_o(work + "\n" + half), std::string("exit 0\n"),
        after_o("head -c 100000 /dev/zero >\"$o\"\n"),
        std::string("echo '   INFO: [mplex] MUX STATUS: no under-runs detected.' >&2\nexit 0\n"),
        after_o(work + "\n" + half + "kill -KILL $$\n")}) {
    add("mplex", way);
    expect_not_complete("mplex: " + way);
    expect_not_complete_unseen("mplex: " + way);
  }
}

TEST_F(StandIn, SpumuxThatDoesHalfOfItsWorkIsFoundOut) {
  const std::string work = real("spumux") + " \"$@\"";
  for (const std::string& way :
       {work + " | head -c 60000\n", std::string("exit 0\n"), std::string("cat\n"),
        std::string("cat\necho 'INFO: 1 subtitles added, 0 subtitles skipped' >&2\nexit 0\n"),
        work + " | head -c 60000\nkill -KILL $$\n"}) {
    add("spumux", way);
    expect_not_complete("spumux: " + way);
  }
}

/// Of a title's text: the menu's buttons are drawn as ever.
TEST_F(StandIn, SpumuxThatDoesHalfOfItsWorkOnATextIsFoundOut) {
  const std::string one = "1\n00:00:00,500 --> 00:00:01,500\nOne\n\n";
  home_.folder().add("work/other.srt", one);
  project_.subtitledata[0] = stored_from_native(
      home_.folder().add("work/text.srt", one + "2\n00:00:02,000 --> 00:00:03,000\nTwo\n\n"));
  project_.subtitleoptions[0] =
      "center,bottom,60,60,30,30,28.0,dejavusans.ttf,720,478,29.97,ISO-8859-1|";
  ASSERT_EQ(author().status, 0);
  fs::remove_all(path_of(home_.out()));
  fs::remove(path_of(home_.image()));
  const std::string work = real("spumux") + " \"$@\"";
  const std::string added = "echo 'INFO: 2 subtitles added, 0 subtitles skipped' >&2\n";
  for (const std::string& way :
       {work + " | head -c 600000\n", std::string("exit 0\n"), "cat\n" + added,
        "sed 's|text.srt|other.srt|' \"$3\" >\"$3.other\"\nexec " + real("spumux") +
            " \"$1\" \"$2\" \"$3.other\"\n",
        work + " | head -c 600000\nkill -KILL $$\n"}) {
    add("spumux", "if [ \"$1\" != -s ]; then exec " + work + "; fi\n" + way);
    expect_not_complete("spumux, text: " + way);
    expect_not_complete_unseen("spumux, text: " + way);
  }
}

TEST_F(StandIn, DvdauthorThatDoesHalfOfItsWorkIsFoundOut) {
  const std::string work = real("dvdauthor") + " \"$@\"\n";
  const std::string half =
      "f=\"$OUT/VIDEO_TS/VTS_01_1.VOB\"\ntruncate -s $(($(stat -c %s \"$f\") / 4096 * 2048)) "
      "\"$f\"\n";
  for (const std::string& way :
       {work + half, std::string("exit 0\n"),
        "mkdir -p \"$OUT/VIDEO_TS\"\necho no >\"$OUT/VIDEO_TS/VIDEO_TS.IFO\"\n" + std::string(),
        work + "rm \"$OUT/VIDEO_TS/\"VTS_01_0.*\necho 'INFO: dvdauthor creating table of contents' "
               ">&2\n",
        work + half + "kill -KILL $$\n"}) {
    add("dvdauthor", way);
    expect_not_complete("dvdauthor: " + way);
  }
}

TEST_F(StandIn, MkisofsThatDoesHalfOfItsWorkIsFoundOut) {
  const std::string work = real("mkisofs") + " \"$@\"\n";
  const std::string half = "truncate -s $(($(stat -c %s \"$o\") / 4096 * 2048)) \"$o\"\n";
  for (const std::string& way :
       {after_o(work + half), std::string("exit 0\n"),
        after_o("head -c 4000000 /dev/zero >\"$o\"\n"),
        std::string("echo ' 99.99% done, estimate finish Sat Nov 21 02:00:00 2026' >&2\nexit 0\n"),
        after_o(work + half + "kill -KILL $$\n")}) {
    add("mkisofs", way);
    expect_not_complete("mkisofs: " + way);
  }
}

TEST_F(StandIn, GmThatDoesHalfOfItsWorkIsFoundOut) {
  const std::string work = real("gm") + " \"$@\"\n";
  const std::string last = "for f in \"$@\"; do :; done\n";
  const std::string half = "[ ! -f \"$f\" ] || truncate -s $(($(stat -c %s \"$f\") / 2)) \"$f\"\n";
  for (const std::string& way :
       {work + last + half, std::string("exit 0\n"), last + "head -c 5000 /dev/zero >\"$f\"\n",
        std::string("echo done\nexit 0\n"), work + last + half + "kill -KILL $$\n"}) {
    add("gm", way);
    expect_not_complete("gm: " + way);
  }
}

/// A program folder of its own whose tools are the stand-ins, and a script of one still.
class StandInOfStills : public StandIn {
 protected:
  static constexpr int pictures = 2;

  StandInOfStills() {
    const fs::path before = fs::current_path();
    EXPECT_FALSE(enter_program_folder(home_.app()));
    fs::current_path(before);
    for (const char* const tool : {"jpeg2yuv", "mpeg2enc"}) {
      const std::string link = tool_path(home_.app(), tool);
      fs::remove(path_of(link));
      fs::create_symlink(path_of(home_.folder().path(std::string("tools/") + tool)), path_of(link));
    }
    EXPECT_FALSE(
        write_file(join_path(home_.app(), "process.bat"),
                   still_script(home_.app(), {media("chapter-menu.jpg"), m2v_, 480, pictures})));
  }

  finished make() const {
    return run({{tool_path(home_.app(), "conspawn"), join_path(home_.app(), "process.bat")}});
  }

  /// Where an earlier still lies, which is harder to find out; of the whole set also without one.
  void expect_error(const std::string& what) const {
    for (const bool earlier : {false, true}) {
      if (!earlier && part_of_set(10) < 10)
        continue;
      fs::remove(path_of(m2v_));
      if (earlier) {
        EXPECT_FALSE(write_file(m2v_, earlier_));
      }
      const finished done = make();
      EXPECT_EQ(done.status, 1) << what << "\n" << done.out;
      EXPECT_THAT(done.out, HasSubstr("ERR")) << what;
    }
  }

  const std::string m2v_ = home_.folder().path("work/still.m2v");
  std::string earlier_;
};

TEST_F(StandInOfStills, ToolsThatDoTheirWorkMakeAWholeStill) {
  const finished done = make();
  EXPECT_EQ(done.status, 0) << done.out;
  EXPECT_THAT(done.out, Not(HasSubstr("ERR")));
}

/// mpeg2enc that makes its still out of reach afterwards, as another program might.
TEST_F(StandInOfStills, StillThatCannotBeWrittenAgainIsAnError) {
  add("mpeg2enc", after_o(real("mpeg2enc") + " \"$@\"\nchattr +i \"$o\" || exit 9\n"));
  const finished done = make();
  run({{"/usr/bin/chattr", "-i", m2v_}});
  if (done.out.find("status 9") != std::string::npos)
    GTEST_SKIP() << "no file can be made immutable here";
  EXPECT_EQ(done.status, 1);
  EXPECT_THAT(done.out, ContainsRegex("ERR:  the still video .* does not get the proportions of a "
                                      "DVD: it cannot be written: "));
}

TEST_F(StandInOfStills, Jpeg2yuvThatDoesHalfOfItsWorkIsFoundOut) {
  ASSERT_EQ(make().status, 0);
  earlier_ = *read_file(m2v_, 1u << 24);
  // A picture of 720x480, 4:2:0, has 518,400 bytes.
  const std::string work = real("jpeg2yuv") + " \"$@\"", half = " | head -c 600000";
  for (const std::string& way : {work + half + "\n", work + " | head -c 300000\n",
                                 std::string("exit 0\n"), std::string("head -c 100000 /dev/zero\n"),
                                 std::string("echo '   INFO: [jpeg2yuv] done' >&2\nexit 0\n"),
                                 work + half + "\nkill -KILL $$\n"}) {
    add("jpeg2yuv", way);
    expect_error("jpeg2yuv: " + way);
  }
}

TEST_F(StandInOfStills, Mpeg2encThatDoesHalfOfItsWorkIsFoundOut) {
  ASSERT_EQ(make().status, 0);
  earlier_ = *read_file(m2v_, 1u << 24);
  const std::string work = real("mpeg2enc") + " \"$@\"\n";
  const std::string half = "truncate -s $(($(stat -c %s \"$o\") / 2)) \"$o\"\n";
  for (const std::string& way :
       {after_o(work + half), std::string("cat >/dev/null\nexit 0\n"),
        after_o("cat >/dev/null\nhead -c 100000 /dev/zero >\"$o\"\n"),
        std::string("cat >/dev/null\necho '   INFO: [mpeg2enc] Guesstimated final muxing size = 1' "
                    ">&2\nexit 0\n"),
        after_o(work + half + "kill -KILL $$\n")}) {
    add("mpeg2enc", way);
    expect_error("mpeg2enc: " + way);
  }
}

}  // namespace
}  // namespace corvane::disc
