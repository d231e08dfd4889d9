// Work scripts are honest batch files: given the same one, cmd.exe leaves the same files as
// conspawn.exe. Here the scripts are those of corvane-author.exe, run once by either.
#include "apps/program_windows.h"
#include "authoring/sample_projects.h"
#include "formats/text.h"
#include "platform/files/files.h"
#include "platform/files/paths.h"
#include "project/project_file.h"
#include "tools/still_video.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>
#include <iostream>
#include <map>
#include <string>

namespace corvane::testing_support {
namespace {

namespace fs = std::filesystem;

/// What all the folders are called. Without "%", which cmd.exe would expand.
const std::string odd = "a b & c ^ d !e! (f) ; g , h = i' ü 字 # @ ~ {j} [k] $l `m` + -n";

/// By path in the folder; of folders the path ends with a separator.
using tree = std::map<std::string, std::string>;

tree tree_of(const std::string& folder) {
  tree found;
  for (const auto& entry : fs::recursive_directory_iterator(path_of(folder))) {
    const std::string name = text_of(fs::relative(entry.path(), path_of(folder)));
    if (entry.is_directory())
      found[name + "\\"] = "";
    else if (!name.ends_with(".exe"))
      found[name] = *read_file(text_of(entry.path()), 1u << 30);
  }
  return found;
}

/// What the one has and the other has not, or has otherwise: a line each.
std::string difference(const tree& a, const tree& b) {
  std::string text;
  for (const auto& [name, bytes] : a)
    if (!b.contains(name))
      text += "only the first has " + name + "\n";
    else if (b.at(name) != bytes)
      text += name + " was\n" + bytes + "\nand is\n" + b.at(name) + "\n";
  for (const auto& [name, bytes] : b)
    if (!a.contains(name))
      text += "only the second has " + name + "\n";
  return text;
}

/// A project with everything a script can hold, its streams in the media folder.
project whole_project(const std::string& media) {
  const auto stored = [&](const std::string& name) {
    return stored_from_native(join_path(media, name));
  };
  project p;
  p.isocreate = true;
  p.List11 = {stored("movie.m2v") + "/" + stored("movie.ac3"), stored("ready.vob"),
              stored("extra.m2v") + "/" + stored("extra.ac3")};
  p.chapters = {"0", "0", "0"};
  p.delay = {"0", "0", "-250"};
  p.subtitledata = {stored("english.srt") + "/" + stored("deutsch.srt"), "<none>", "<none>"};
  const std::string row = "center,bottom,60,60,30,30,28.0,arial.ttf,720,478,29.97,ISO-8859-1|";
  p.subtitleoptions = {row + row, row, row};
  rebuild_List1(p);
  p.menulist = {stored("main.m2v") + "/" + stored("main.ac3"), stored("second.m2v") + "/"};
  p.moremenuoptions = {"0\t00:00:00.0\t00:00:00.0\t1", "0\t00:00:00.0\t00:00:00.0\t1"};
  p.menubuttons = {" 0/0/100/3/jump title 1/black/black| 40/ 99/ 240/ 140/jump menu 2/green/" +
                       stored("pressed.bmp"),
                   " 10/ 20/ 110/ 40/jump menu 1/white/grey"};
  return p;
}

/// One program folder, one folder of media, one of discs, made anew for either run, all below the
/// same paths.
class Cmd : public testing::Test {
 protected:
  std::string app() const { return home_.path("program " + odd); }
  std::string disc() const { return home_.path("discs " + odd + "\\disc " + odd); }
  std::string media() const { return home_.path("media " + odd); }

  void make_everything() const {
    for (const auto& entry : fs::directory_iterator(path_of(home_.path())))
      fs::remove_all(entry.path());
    install_author(app(), "stand_in_disc_tool.exe", "conspawn.exe");
    make_folders(media());
    for (const char* name : {"movie.m2v", "movie.ac3", "ready.vob", "extra.m2v", "extra.ac3",
                             "main.m2v", "main.ac3", "second.m2v", "still.jpg"})
      ASSERT_FALSE(write_file(join_path(media(), name), std::string("these are ") + name));
    for (const char* name : {"english.srt", "deutsch.srt"})
      ASSERT_FALSE(
          write_file(join_path(media(), name), "1\r\n00:00:01,000 --> 00:00:02,000\r\nText\r\n"));
    ASSERT_FALSE(write_file(join_path(media(), "pressed.bmp"), "BM\x01\x02"));
  }

  void prepare(const project& p) const {
    const std::string file = join_path(media(), "film.cvp");
    ASSERT_FALSE(write_file(file, project_text(p)));
    std::string err;
    ASSERT_EQ(run_program({join_path(app(), "corvane-author.exe"),
                           "--prepare --force \"" + file + "\" \"" + disc() + "\"", home_.path()},
                          nullptr, &err),
              0u)
        << err;
  }

  /// What is left of the script that `write` writes, run by conspawn.exe or cmd.exe in the program
  /// folder, after `spoil` was there.
  tree left_by(bool cmd, const std::function<void()>& write, const std::function<void()>& spoil) {
    make_everything();
    write();
    spoil();
    const std::string script = join_path(app(), "process.bat");
    if (cmd)
      run_program({std::string(std::getenv("ComSpec")), "/d /c process.bat", app()}, &out_, &err_);
    else
      status_ = run_program({join_path(app(), "bin\\conspawn.exe"), "\"" + script + "\"", app()});
    return tree_of(home_.path());
  }

  static void nothing() {}

  /// Both must leave the same; gives what that is. But conspawn makes no image once something went
  /// wrong, which cmd.exe does not know. On a busy machine Wine's cmd.exe now and then
  /// loses a line that erases or renames, so it gets three attempts: another reading of the script
  /// would differ in all of them.
  tree left_by_both(const std::function<void()>& write,
                    const std::function<void()>& spoil = nothing) {
    const tree conspawn = left_by(false, write, spoil);
    std::string lost = "x";
    for (int attempt = 0; attempt < 3 && !lost.empty(); ++attempt) {
      tree cmd = left_by(true, write, spoil);
      if (status_ != 0)
        cmd.erase(image_in_tree());
      lost = difference(conspawn, cmd);
      if (!lost.empty())
        std::cout << "cmd.exe, attempt " << attempt + 1 << ": " << lost << out_ << err_;
    }
    EXPECT_EQ(lost, "") << "cmd.exe said:\n" << out_ << err_;
    return conspawn;
  }
  tree left_by_both(const project& p, const std::function<void()>& spoil = nothing) {
    return left_by_both([&] { prepare(p); }, spoil);
  }

  /// Path in the tree, as tree_of has it.
  std::string in_disc(const std::string& name) const {
    return "discs " + odd + "\\disc " + odd + "\\" + name;
  }
  std::string image_in_tree() const { return "discs " + odd + "\\disc " + odd + ".iso"; }
  void add_to_bin(const std::string& name) const {
    ASSERT_FALSE(write_file(join_path(app(), "bin\\" + name), "x"));
  }
  void take_from_bin(const std::string& name) const {
    fs::remove(path_of(join_path(app(), "bin\\" + name)));
  }

  temporary_folder home_;
  std::string out_, err_;  ///< what cmd.exe and the tools under it said
  DWORD status_ = 0;       ///< of conspawn
};

// conspawn finds that the stand-ins have added neither buttons nor subtitles.
TEST_F(Cmd, LeavesTheSameDiscWithMenusAndSubtitles) {
  const tree left = left_by_both(whole_project(media()));
  const auto vob = left.find(in_disc("VIDEO_TS\\VTS_01_1.VOB"));
  ASSERT_NE(vob, left.end());
  for (const char* part : {"these are ready.vob", "[-250ms]", "[-s][1]"})
    EXPECT_NE(vob->second.find(part), std::string::npos) << part;
  EXPECT_EQ(vob->second.find("(no "), std::string::npos) << vob->second;
  EXPECT_EQ(left.count(image_in_tree()), 0u);
  EXPECT_EQ(left.count(in_disc("title1.mpg")), 0u);
  EXPECT_EQ(left.count("program " + odd + "\\highlight1.png"), 1u);
}

TEST_F(Cmd, LeavesTheSameImage) {
  project p = whole_project(media());
  p.subtitledata = {"<none>", "<none>", "<none>"};
  p.menulist.clear();
  p.moremenuoptions.clear();
  p.menubuttons = {""};
  const tree left = left_by_both(p);
  EXPECT_EQ(status_, 0u);
  EXPECT_EQ(left.count(image_in_tree()), 1u);
}

TEST_F(Cmd, LeavesTheSameStillVideo) {
  const std::string m2v = join_path(media(), "still " + odd + ".m2v");
  const tree left = left_by_both([&] {
    ASSERT_FALSE(write_file(join_path(app(), "process.bat"),
                            still_script(app(), {join_path(media(), "still.jpg"), m2v, 576, 15})));
  });
  const auto video = left.find("media " + odd + "\\still " + odd + ".m2v");
  ASSERT_NE(video, left.end());
  EXPECT_NE(video->second.find("these are still.jpg"), std::string::npos);
}

TEST_F(Cmd, LeavesTheSameWhenToolsFail) {
  for (const std::string tool : {"mplex", "gm", "spumux", "dvdauthor", "mkisofs"}) {
    SCOPED_TRACE(tool);
    const tree left = left_by_both(whole_project(media()), [&] { add_to_bin("fails-" + tool); });
    EXPECT_EQ(left.count(image_in_tree()), 0u);
  }
}

TEST_F(Cmd, LeavesTheSameWhenToolsAreNotThere) {
  for (const std::string tool : {"mplex", "gm", "spumux", "dvdauthor", "mkisofs"}) {
    SCOPED_TRACE(tool);
    left_by_both(whole_project(media()), [&] { take_from_bin(tool + ".exe"); });
  }
}

TEST_F(Cmd, LeavesTheSameInAFolderThatHoldsLeftovers) {
  left_by_both(whole_project(media()), [&] {
    for (const char* name :
         {"title1.mpg", "presub.mpg", "menusub1.mpg", "Other.MPG", "notes.txt"}) {
      make_folders(disc());
      ASSERT_FALSE(write_file(join_path(disc(), name), "left by another run"));
    }
  });
}

}  // namespace
}  // namespace corvane::testing_support
