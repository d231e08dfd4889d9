// Each rule about finished discs, with a real disc that breaks it: one that was authored for
// another project than it is held against, or of which some bytes were changed. The finding, its
// item, and no other one.
#include "authoring/foreseen_run.h"
#include "disc/finding.h"
#include "examine/disc_rules.h"
#include "examine/examination.h"
#include "examine/verification.h"
#include "formats/ifo.h"
#include "platform/files/files.h"
#include "platform/files/paths.h"
#include "project/disc_of.h"
#include "project/subtitle_rows.h"
#include "studio.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace corvane::disc {
namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;
using testing::IsEmpty;
using testing::UnorderedElementsAreArray;

using found_rules = std::set<std::string>;  // "disc-sound at title 1, audio 1"

constexpr const char* with_buttons_drawn = "0\t00:00:00.0\t00:00:00.0\t1";

std::string bytes_of(const std::string& path) {
  const auto bytes = read_file(path, std::uintmax_t{1} << 30);
  EXPECT_TRUE(bytes) << bytes.error;
  return bytes ? *bytes : std::string();
}

std::size_t byte_of(const std::string& bytes, std::size_t at) {
  return static_cast<std::uint8_t>(bytes.at(at));
}

/// Video that ends, with an end code, where one of its sequence headers stands: about half of it.
std::string half_of_video(const std::string& stream) {
  const std::size_t at = stream.rfind("\0\0\1\xB3"s, stream.size() / 2);
  return stream.substr(0, at) + "\0\0\1\xB7"s;
}

/// The same without its last pictures.
std::string without_pictures(const std::string& stream, int pictures) {
  std::size_t at = stream.size();
  for (; pictures > 0; --pictures)
    at = stream.rfind("\0\0\1\0"s, at - 1);
  return stream.substr(0, at) + "\0\0\1\xB7"s;
}

std::string with_aspect(std::string stream, int code) {
  const std::string header = "\0\0\1\xB3"s;
  for (std::size_t at = stream.find(header); at != std::string::npos;
       at = stream.find(header, at + 1))
    stream[at + 7] = static_cast<char>((byte_of(stream, at + 7) & 0x0F) | code << 4);
  return stream;
}

/// A disc of two titles with two sounds and a menu, the first with a text, and its project.
class WrongDiscs : public ::testing::Test {
 protected:
  /// Something that is wrong, and all that is found of it.
  struct wrong {
    found_rules findings;
    /// Changes the project that the disc is held against.
    std::function<void(project&)> asked = {};
    /// Changes files of the disc.
    std::function<void()> changed = {};
  };

  WrongDiscs() {
    const std::string video = bytes_of(media("clip-ntsc.m2v")) + "\0\0\1\xB7"s;
    const std::string mp2 = bytes_of(media("clip.mp2"));
    add("whole.m2v", video);
    add("wide.m2v", with_aspect(video, 3));
    add("half.m2v", half_of_video(video));
    add("less.m2v", without_pictures(video, 4));
    add("part.mp2", mp2.substr(0, mp2.size() / 8));
    add("text.srt", cue_one + "2\n00:00:02,000 --> 00:00:03,000\nTwo\n\n");
    add("one.srt", cue_one);
    add("longer.srt", cue_one + "2\n00:00:02,000 --> 00:00:03,500\nTwo\n\n");
  }

  void add(const std::string& name, const std::string& bytes) const {
    home_.folder().add("work/" + name, bytes);
  }
  std::string made(const std::string& name) const {
    return stored_from_native(home_.folder().path("work/" + name));
  }

  project asked() const {
    project p;
    add_title(p, {made("whole.m2v"), stored_media("clip.ac3"), stored_media("clip.mp2")}, "0,0:02");
    add_title(p, {made("half.m2v"), stored_media("clip.ac3"), made("part.mp2")});
    p.subtitledata[0] = with_subtitle("<none>", made("text.srt"));
    p.subtitleoptions[0] =
        "center,bottom,60,60,30,30,28.0,dejavusans.ttf,720,478,29.97,ISO-8859-1|";
    add_menu(p, made("whole.m2v"), stored_media("clip.ac3"),
             {"100/100/200/150/jump title 1/yellow/white",
              "100/200/200/250/jump title 1 chapter 2/yellow/white"},
             with_buttons_drawn);
    p.postinfo = {"call menu                ", "call menu                "};
    p.firstplay = "jump title 1";
    p.languagetags = {"Audio tag:\tGERMAN DE ", "Audio tag:\tENGLISH EN ",
                      "Subtitle tag:\tENGLISH EN "};
    p.isocreate = true;
    return p;
  }

  found_rules found(const project& p) const {
    fact_store facts;
    examination e(disc_of(p), examination::depth::whole_files, facts);
    while (e.step(1000)) {
    }
    run_paths where;
    where.app = home_.app();
    where.out = home_.out();
    return found(std::make_shared<const foreseen_run>(foreseen_of(p, where, &facts, {})));
  }
  found_rules found(std::shared_ptr<const foreseen_run> foreseen) const {
    verification look({home_.out(), with_image_ ? home_.image() : ""}, std::move(foreseen));
    while (look.step(1000)) {
    }
    found_rules rules;
    for (finding f : look.findings()) {
      f.seconds.reset();
      rules.insert(f.rule + " at " + place_text(f));
    }
    return rules;
  }

  std::string file(const std::string& name) const { return home_.out() + "/VIDEO_TS/" + name; }
  static void change(const std::string& path, const std::function<void(std::string&)>& how) {
    std::string bytes = bytes_of(path);
    how(bytes);
    EXPECT_FALSE(write_file(path, bytes));
  }
  /// A table and its copy.
  void change_tables(const std::string& name, const std::function<void(std::string&)>& how) const {
    for (const char* const kind : {".IFO", ".BUP"})
      change(file(name + kind), how);
  }

  std::vector<wrong> other_projects() const;
  std::vector<wrong> other_menus() const;
  std::vector<wrong> changed_tables() const;
  std::vector<wrong> changed_streams() const;
  std::vector<wrong> changed_images() const;

  void expect(const std::vector<wrong>& table) const;

  const std::string cue_one = "1\n00:00:00,500 --> 00:00:01,500\nOne\n\n";
  studio home_;
  bool with_image_ = false;  ///< the disc's image is looked at, too
};

void WrongDiscs::expect(const std::vector<wrong>& table) const {
  const project right = asked();
  home_.authored(right);
  ASSERT_THAT(found(right), IsEmpty());
  const std::string kept = home_.folder().path("kept");
  fs::copy(path_of(home_.out()), path_of(kept), fs::copy_options::recursive);
  fs::copy(path_of(home_.image()), path_of(kept + ".iso"));
  for (const wrong& one : table) {
    project p = right;
    if (one.asked)
      one.asked(p);
    if (one.changed)
      one.changed();
    EXPECT_THAT(found(p), UnorderedElementsAreArray(one.findings));
    fs::remove_all(path_of(home_.out()));
    fs::copy(path_of(kept), path_of(home_.out()), fs::copy_options::recursive);
    fs::copy(path_of(kept + ".iso"), path_of(home_.image()), fs::copy_options::overwrite_existing);
  }
}

// Another project -------------------------------------------------------------------------------

std::vector<WrongDiscs::wrong> WrongDiscs::other_projects() const {
  const auto streams = [this](const std::string& video, const std::string& first,
                              const std::string& second) {
    return [=](project& p) { p.List11[1] = video + "/" + first + "/" + second; };
  };
  const std::string half = made("half.m2v"), part = made("part.mp2"),
                    ac3 = stored_media("clip.ac3");
  return {
      {{"disc-titles at disc"},
       [](project& p) {
         for (auto* const rows : {&p.List1, &p.List11, &p.chapters, &p.delay, &p.subtitledata,
                                  &p.subtitleoptions, &p.postinfo})
           rows->pop_back();
       }},
      {{"disc-menus at disc"},
       [](project& p) {
         p.menulist.clear();
         p.moremenuoptions.clear();
         p.menubuttons.clear();
       }},
      {{"disc-first-play at disc"}, [](project& p) { p.firstplay = "jump title 2"; }},
      {{"disc-picture at title 1, video"},
       [this](project& p) {
         p.List11[0] =
             made("wide.m2v") + "/" + stored_media("clip.ac3") + "/" + stored_media("clip.mp2");
       }},
      {{"disc-length at title 2"}, streams(half, stored_media("garden-english.ac3"), part)},
      {{"disc-picture-end at title 2, video"}, streams(made("whole.m2v"), ac3, part)},
      {{"disc-sound-end at title 2, audio 2"}, streams(half, ac3, stored_media("clip.mp2"))},
      {{"disc-sound at title 1, audio 2", "disc-sound at title 2, audio 2"},
       [](project& p) { p.languagetags[1] = "Audio tag:\tFRENCH FR "; }},
      {{"disc-chapters at title 1, chapter 2"}, [](project& p) { p.chapters[0] = "0,0:01"; }},
      {{"disc-then at title 2"}, [](project& p) { p.postinfo[1] = "exit                     "; }},
      {{"disc-subtitles at title 1, subtitle 1"},
       [this](project& p) { p.subtitledata[0] = made("one.srt"); }},
      {{"disc-subtitle-times at title 1, subtitle 1"},
       [this](project& p) { p.subtitledata[0] = made("longer.srt"); }},
  };
}

TEST_F(WrongDiscs, AreFoundOfAnotherProject) {
  expect(other_projects());
}

std::vector<WrongDiscs::wrong> WrongDiscs::other_menus() const {
  const auto second = [](const std::string& button) {
    return [button](project& p) {
      p.menubuttons[0] = "100/100/200/150/jump title 1/yellow/white|" + button;
    };
  };
  return {
      {{"disc-menu at menu 1"},
       [](project& p) { p.moremenuoptions[0] = "1\t00:00:00.0\t00:00:00.0\t1"; }},
      {{"disc-leads-to at menu 1, button 2"}, second("100/200/200/250/jump title 2/yellow/white")},
      {{"disc-buttons at menu 1, button 2", "disc-button-drawn at menu 1, button 2"},
       second("120/200/200/250/jump title 1 chapter 2/yellow/white")},
      {{"disc-button-colours at menu 1, button 2"},
       second("100/200/200/250/jump title 1 chapter 2/cyan/white")},
  };
}

TEST_F(WrongDiscs, AreFoundOfOtherMenus) {
  expect(other_menus());
}

// Changed bytes ---------------------------------------------------------------------------------

std::vector<WrongDiscs::wrong> WrongDiscs::changed_tables() const {
  return {
      {{"disc-tables at disc"},
       {},
       [this] { change(file("VTS_01_0.BUP"), [](std::string& table) { table[5000] ^= 0x55; }); }},
      {{"disc-nowhere at disc", "disc-first-play at disc"},
       {},
       [this] {
         change_tables("VIDEO_TS", [](std::string& table) {
           const std::string jump("\x30\x02\0\0\0\1\0\0", 8);
           const std::size_t at = table.find(jump);
           ASSERT_NE(at, std::string::npos);
           table[at + 5] = 9;
         });
       }},
      {{"disc-missing at disc"}, {}, [this] { fs::remove_all(path_of(home_.out())); }},
  };
}

TEST_F(WrongDiscs, AreFoundByTheirTables) {
  expect(changed_tables());
}

constexpr std::size_t pack_header = 14;

/// The buttons' picture, a substream of private stream 1.
constexpr std::uint8_t private_stream = 0xBD, overlay = 0x20;

/// Where the n-th pack (0-based) of this stream begins, which the last byte of a start code names;
/// of private stream 1, the first sound. The pack of a unit has a system header (0xBB).
std::size_t pack_with(const std::string& vobs, std::uint8_t stream, int n) {
  const std::uint8_t code = stream == overlay ? private_stream : stream;
  const std::uint8_t substream = stream == overlay ? overlay : 0x80;

  for (std::size_t at = 0; at + disc_sector_size <= vobs.size(); at += disc_sector_size) {
    if (byte_of(vobs, at + pack_header + 3) != code)
      continue;
    const std::size_t payload = at + pack_header + 9 + byte_of(vobs, at + pack_header + 8);
    if ((code != private_stream || byte_of(vobs, payload) == substream) && n-- == 0)
      return at;
  }
  ADD_FAILURE() << "there is no such pack";
  return 0;
}

/// Of a pack's clock and of a stamp, the bit of some seconds.
void turn_back(std::string& vobs, std::size_t clock) {
  vobs[clock] = static_cast<char>(vobs[clock] ^ 0x80);
}

std::vector<WrongDiscs::wrong> WrongDiscs::changed_streams() const {
  const auto titles = [this](const std::function<void(std::string&)>& how) {
    return [this, how] { change(file("VTS_01_1.VOB"), how); };
  };
  const auto header = [&](std::size_t at, int value) {
    return titles(
        [=](std::string& vobs) { vobs[vobs.find("\0\0\1\xB3"s) + at] = static_cast<char>(value); });
  };
  const auto unit = [&](std::size_t at) {
    return titles([=](std::string& vobs) {
      const std::size_t place = pack_with(vobs, 0xBB, 3) + at;
      vobs[place] = static_cast<char>(vobs[place] ^ 1);
    });
  };
  constexpr std::size_t end_of_first_picture = 0x407 + 14, locked_keys = 0x38;
  return {
      {{"disc-navigation at title 1"}, {}, unit(end_of_first_picture)},
      {{"disc-navigation-unlike at title 1"}, {}, unit(locked_keys)},
      {{"disc-picture-stated at title 1, video"}, {}, header(4, 0x2C)},
      {{"disc-aspect-stated at title 1, video"}, {}, header(7, 0x34)},
      {{"disc-clock at title 1"}, {}, titles([](std::string& vobs) {
         turn_back(vobs, pack_with(vobs, 0xE0, 40) + 6);
       })},
      {{"disc-times at title 1, audio 1"}, {}, titles([](std::string& vobs) {
         turn_back(vobs, pack_with(vobs, 0xBD, 9) + pack_header + 9 + 3);
       })},
      {{"disc-bytes at title 1"}, {}, titles([](std::string& vobs) {
         vobs[pack_with(vobs, 0xE0, 40) + 3] = 0;
       })},
      {{"disc-no-overlay at menu 1"},
       {},
       [this] {
         change(file("VTS_01_0.VOB"), [](std::string& vobs) {
           const std::size_t at = pack_with(vobs, overlay, 0);
           vobs[at + pack_header + 9 + byte_of(vobs, at + pack_header + 8) + 3] ^= 0x55;
         });
       }},
  };
}

TEST_F(WrongDiscs, AreFoundByTheirStreams) {
  expect(changed_streams());
}

std::vector<WrongDiscs::wrong> WrongDiscs::changed_images() const {
  return {
      {{"image-missing at disc"}, {}, [this] { fs::remove(path_of(home_.image())); }},
      {{"image-volume at disc"},
       {},
       [this] {
         constexpr std::size_t first_descriptor = 16 * disc_sector_size;
         change(home_.image(), [](std::string& image) { image[first_descriptor + 1] = 'X'; });
       }},
      {{"image-files at disc"},
       {},
       [this] {
         change(home_.image(), [](std::string& image) { image[image.size() * 3 / 4] ^= 0x55; });
       }},
  };
}

TEST_F(WrongDiscs, AreFoundByTheirImages) {
  with_image_ = true;
  expect(changed_images());
}

TEST_F(WrongDiscs, LastPicturesThatAreMissingAreTold) {
  project p;
  add_title(p, {made("whole.m2v"), made("part.mp2")});
  home_.authored(p);
  EXPECT_THAT(found(p), IsEmpty());
  p.List11[0] = made("less.m2v") + "/" + made("part.mp2");
  home_.authored(p, {"--replace"});
  EXPECT_THAT(found(p), IsEmpty());
  p.List11[0] = made("whole.m2v") + "/" + made("part.mp2");
  EXPECT_THAT(found(p), testing::ElementsAre("disc-last-pictures at title 1"));
}

/// dvdauthor states the channels of the first title for all of a titleset.
TEST_F(WrongDiscs, SoundOfOtherChannelsThanTheTablesStateIsTold) {
  project p = asked();
  p.List11[1] =
      made("half.m2v") + "/" + stored_media("clip-six-channels.ac3") + "/" + made("part.mp2");
  home_.authored(p);
  EXPECT_THAT(found(p), testing::ElementsAre("disc-sound-format at title 2, audio 1"));
}

/// As on a disk that fails.
TEST_F(WrongDiscs, AFileThatEndsWhileItIsReadIsTold) {
  home_.authored(asked());
  fs::resize_file(path_of(file("VTS_01_1.VOB")), std::uintmax_t{1} << 30);
  verification look({home_.out(), {}}, nullptr);
  while (look.step(1) && look.bytes_read() < std::uint64_t{1} << 24) {
  }
  fs::resize_file(path_of(file("VTS_01_1.VOB")), 0);
  while (look.step(1000)) {
  }
  std::vector<std::string> rules;
  for (const finding& f : look.findings())
    rules.push_back(f.rule);
  EXPECT_THAT(rules, testing::Contains("disc-file"));
}

/// A rule that comes later gets a disc here, or a name where another test has one.
TEST_F(WrongDiscs, EachRuleAboutDiscsHasOne) {
  found_rules shown = {"disc-file", "disc-sound-format", "disc-last-pictures"};
  for (const auto& table :
       {other_projects(), other_menus(), changed_tables(), changed_streams(), changed_images()})
    for (const wrong& one : table)
      for (const std::string& finding : one.findings)
        shown.insert(finding.substr(0, finding.find(' ')));
  // RealStreams.SoundOfAnotherKindThanTheTablesStateIsFoundOnTheDisc, StandIn.HalfAFilm...,
  // Verify.ALastPictureThatIsNotThereIsANote, VerifyXmlNavigation.IsToldWhereItIsAnother
  shown.insert({"disc-sound-stated", "disc-stream-bytes", "disc-last-picture", "disc-commands",
                "disc-entries"});
  std::vector<std::string> none;
  for (const rule& one : disc_rules())
    if (!shown.contains(std::string(one.id)))
      none.emplace_back(one.id);
  EXPECT_THAT(none, IsEmpty());
}

}  // namespace
}  // namespace corvane::disc
