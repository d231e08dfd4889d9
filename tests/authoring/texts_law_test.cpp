// The law of the texts: reading what was built gives the disc that was asked for.
#include "authoring/asked_disc.h"
#include "authoring/read_texts.h"
#include "authoring/sample_projects.h"
#include "authoring/texts_of_project.h"
#include "formats/numbers.h"
#include "formats/text.h"
#include "project/menu_rows.h"
#include "project/post_rows.h"
#include "project/title_rows.h"
#include "runner/run_files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>

namespace corvane::testing_support {
namespace {

using ::testing::ElementsAre;
using ::testing::SizeIs;

run_texts texts_of(const project& p, const run_paths& where) {
  run_texts texts;
  texts["process.bat"] = work_script(p, where);
  texts["config.xml"] = config_xml(p, where);
  for (int menu = 1; menu <= menu_count(p); ++menu)
    texts["menu" + std::to_string(menu) + ".xml"] = menu_subpicture_xml(p, where, menu);
  for (int title = 1; title <= title_count(p); ++title)
    for (int sub = 1; sub <= subtitle_count(p, title); ++sub)
      texts["sub" + std::to_string(title) + "-" + std::to_string(sub) + ".xml"] =
          subtitle_xml(p, where, title, sub);
  return texts;
}

/// A command as dvdauthor takes it: without blanks of its own, and a call of the last menu as that
/// of the menu that the jump table leads on from.
void plain(disc_command& command, bool jump_table) {
  std::vector<std::string> words = split(command.text, ' ');
  std::erase(words, std::string());
  command.text = join(words, " ");
  if (!jump_table && command.text == call_last_menu_words)
    command.text = call_menu_words;
  command.form = {};
}

text_number as_value(const text_number& n) {
  return {trimmed(static_cast<int>(n.value)), n.value, true};
}

/// The disc as far as texts can tell of it.
disc_description told(disc_description d) {
  // Without a jump from one menu to another nothing in the texts needs the table.
  const bool table = d.jump_table && d.menu_count() > 1;
  d.jump_table = table;
  for (disc_title& title : d.titles) {
    title.name.clear();
    if (!title.is_multiplexed_here)
      title.delay = {};
    if (!title.post)
      title.post = command_of(&title == &d.titles.back()
                                  ? std::string("exit")
                                  : "jump title " + std::to_string(&title - d.titles.data() + 2));
    plain(*title.post, table);
  }
  for (disc_menu& menu : d.menus) {
    bool framed = false;
    for (disc_button& b : menu.buttons) {
      for (text_number* edge : {&b.x0, &b.y0, &b.x1, &b.y1})
        *edge = as_value(*edge);
      plain(b.action, table);
      const bool coloured = !b.highlight.is_bitmap || !b.select.is_bitmap;
      framed = framed || (coloured && b.y1.value - b.y0.value > 3);
    }
    menu.thickness = framed ? as_value(menu.thickness) : text_number{};
    menu.pause.clear();  // which `loop` is
    menu.is_ready = false;
  }
  for (disc_language& language : d.languages)
    language.text.clear();
  if (d.first_play)
    plain(*d.first_play, table);
  return d;
}

/// Projects that people could make, of every kind of row.
class random_projects {
 public:
  explicit random_projects(unsigned seed) : random_(seed) {}

  project next(path_style style) {
    project p;
    p.globalregion = one_of({"NTSC", "PAL"});
    p.jumptable = chance(2);
    p.isocreate = chance(2);
    titles_ = number(1, 5);
    menus_ = number(0, 4);
    for (int i = 0; i < titles_; ++i)
      add(p, style, i);
    for (int i = 0; i < menus_; ++i)
      add_menu(p, style, name("menu & ", i, ".m2v"), chance(2) ? name("menu", i, ".mp2") : "",
               options(), buttons(style));
    if (chance(2))
      for (int i = number(0, titles_); i > 0; --i)
        p.postinfo.push_back(post_row(post(p.jumptable)));
    if (chance(2))
      p.firstplay = "jump title" + leading_blank(number(1, titles_));
    for (int i = number(0, 3); i > 0; --i)
      p.languagetags.push_back(one_of({"Audio tag:\tENGLISH EN", "Subtitle tag:\tGERMAN DE "}));
    return p;
  }

 private:
  int number(int least, int most) {
    return std::uniform_int_distribution<int>(least, most)(random_);
  }
  bool chance(int of) { return number(1, of) == 1; }
  std::string one_of(const std::vector<std::string>& all) {
    return all[static_cast<std::size_t>(number(0, static_cast<int>(all.size()) - 1))];
  }
  static std::string name(const std::string& before, int i, const std::string& after) {
    return before + std::to_string(i) + after;
  }

  void add(project& p, path_style style, int i) {
    if (chance(4)) {
      add_title(p, style, {name("ready 50%", i, ".vob")});
    } else {
      std::vector<std::string> streams = {name("video ", i, ".m2v")};
      for (int audio = number(1, 8); audio > 0; --audio)
        streams.push_back(name("sound", audio, one_of({".ac3", ".mp2"})));
      add_title(p, style, streams);
      p.delay.back() = std::to_string(number(-900, 900));
      for (int subtitle = number(0, 2); subtitle > 0; --subtitle)
        add_subtitle(p, style, subtitle);
    }
    std::vector<std::string> chapters;
    for (int chapter = number(0, 4); chapter > 0; --chapter)
      chapters.push_back("00:0" + std::to_string(number(0, 9)) + ":30.5" + std::to_string(chapter));
    p.chapters.back() = join(chapters, ",");
  }

  void add_subtitle(project& p, path_style style, int subtitle) {
    const std::string file = stored_media(name("text & ", subtitle, ".srt"), style);
    std::string& files = p.subtitledata.back();
    const bool first = files == "<none>";
    files = first ? file : files + "/" + file;
    const std::string row = one_of({"left", "center"}) + ",top,1,2,3," +
                            std::to_string(number(0, 90)) + ",2" + std::to_string(number(0, 9)) +
                            ".5,no such font.ttf,720,478,25,CP1252|";
    p.subtitleoptions.back() = first ? row : p.subtitleoptions.back() + row;
  }

  std::string options() {
    return leading_blank(number(0, 1)) + "\t00:00:00." + std::to_string(number(0, 9)) +
           "\t00:00:1" + std::to_string(number(0, 9)) + ".0\t" + leading_blank(number(0, 9));
  }

  std::string buttons(path_style style) {
    std::vector<std::string> records;
    for (int i = number(0, 6); i > 0; --i) {
      const int x = number(0, 300), y = 2 * number(0, 100);
      const button_record edges =
          button_with_edges(x, y, x + number(20, 300), y + 2 * number(1, 60));
      records.push_back(button_text(
          {edges.x0, edges.y0, edges.x1, edges.y1, action(), look(style), look(style)}));
    }
    return records.empty() ? " " : join(records, "|");
  }
  std::string look(path_style style) {
    return chance(4) ? stored_media("a button.bmp", style) : one_of({"blue", "orange", "cyan"});
  }
  std::string action() {
    const std::string title = leading_blank(number(1, titles_));
    const std::string menu = leading_blank(number(1, menus_));
    return one_of({"jump title" + title, "jump title" + title + " chapter " + title, "exit",
                   "jump menu" + menu, "jump titleset 1 menu", "jump  menu" + menu});
  }
  std::string post(bool jump_table) {
    std::vector<std::string> all = {"jump title" + leading_blank(number(1, titles_)), "exit"};
    if (menus_ > 0 && jump_table)
      all.insert(all.end(), {"call menu" + leading_blank(number(1, menus_)), "call last menu",
                             "call   menu  1"});
    else if (menus_ > 0)
      all.emplace_back("call menu");
    return one_of(all);
  }

  std::mt19937 random_;
  int titles_ = 0, menus_ = 0;
};

class TextsLaw : public ::testing::TestWithParam<path_style> {};

TEST_P(TextsLaw, ReadingWhatWasBuiltGivesTheDiscThatWasAskedFor) {
  random_projects projects(1);
  for (int i = 0; i < 100; ++i) {
    const project p = projects.next(GetParam());
    const run_paths where = sample_run_paths(GetParam());
    const disc_description asked = told(disc_of(p));
    const disc_description got = told(read_texts(texts_of(p, where), where));
    ASSERT_EQ(got.titles, asked.titles) << "project " << i;
    ASSERT_EQ(got.menus, asked.menus) << "project " << i;
    ASSERT_EQ(got, asked) << "project " << i << "\n" << config_xml(p, where);
  }
}

TEST_P(TextsLaw, HandEditedTextThatNobodyChangedAsksForTheSameDisc) {
  random_projects projects(2);
  for (int i = 0; i < 200; ++i) {
    project p = projects.next(GetParam());
    const run_paths where = sample_run_paths(GetParam());
    const disc_description asked = told(disc_of(p));
    p.customxml = config_xml(p, where);
    const auto from_xml = asked_disc(p, where);
    ASSERT_TRUE(from_xml) << from_xml.error;
    const disc_description got = told(*from_xml);
    ASSERT_EQ(got, asked) << "project " << i << "\n" << p.customxml;
  }
}

INSTANTIATE_TEST_SUITE_P(BothStyles, TextsLaw,
                         ::testing::Values(path_style::windows, path_style::posix),
                         [](const ::testing::TestParamInfo<path_style>& style) {
                           return style.param == path_style::windows ? "windows" : "linux";
                         });

TEST(AskedDisc, WithoutAnEditIsThatOfTheRows) {
  const sample s = jump_table(path_style::posix);
  const auto asked = asked_disc(s.p, s.where);
  ASSERT_TRUE(asked);
  EXPECT_EQ(*asked, disc_of(s.p));
}

TEST(AskedDisc, WithAnEditIsThatOfTheXml) {
  sample s = jump_table(path_style::posix);
  s.p.customxml = replace_all(config_xml(s.p, s.where), "jump title 2;", "jump title 4;");
  s.p.customxml = replace_all(s.p.customxml, "chapters=\"00:00:00.00,00:05:10.25\"",
                              "chapters=\"00:00:01.00\" note=\"by hand\"");
  const auto asked = asked_disc(s.p, s.where);
  ASSERT_TRUE(asked) << asked.error;
  ASSERT_TRUE(asked->first_play);
  EXPECT_EQ(asked->first_play->text, "jump title 4");
  EXPECT_THAT(asked->title(1).chapters, ElementsAre(text_time{"00:00:01.00", 1.0}));
  EXPECT_EQ(asked->title(1).streams, disc_of(s.p).title(1).streams) << "from the rows";
  EXPECT_THAT(asked->menu(1).buttons, SizeIs(3));
}

/// What a disc of these elements asks for, beside the rows of the project.
disc_description asked_by(const std::string& elements, project p = {}) {
  p.customxml = "<dvdauthor dest=\"/dvd\">" + elements + "</dvdauthor>";
  const auto asked = asked_disc(p, sample_run_paths(path_style::posix));
  EXPECT_TRUE(asked) << asked.error;
  return asked ? *asked : disc_description();
}

TEST(AskedDisc, TheStandardIsTheRowsWhereTheXmlStatesNone) {
  project p;
  p.globalregion = "PAL";
  const std::string title = "<titles><pgc><vob file=\"/m/a.vob\"/></pgc></titles>";
  EXPECT_EQ(asked_by("<titleset>" + title + "</titleset>", p).standard, video_standard::pal);
  EXPECT_EQ(asked_by("<titleset>" + title + "</titleset>", p).picture_height(), 576);
  const std::string stated = "<titles><video format=\"ntsc\"/></titles>";
  EXPECT_EQ(asked_by("<titleset>" + stated + "</titleset>", p).standard, video_standard::ntsc);
  EXPECT_EQ(asked_by("<titleset>" + stated +
                         "</titleset><titleset><titles><video aspect=\"4:3\"/>"
                         "</titles></titleset>",
                     p)
                .standard,
            video_standard::ntsc)
      << "of the titleset that states one";
}

TEST(AskedDisc, ButtonsLookAsTheRunDrawsThemUnlessTheXmlSaysOtherwise) {
  const sample s = jump_table(path_style::posix);
  const auto has_other_looks = [&](const std::string& xml) {
    project p = s.p;
    p.customxml = xml;
    const auto asked = asked_disc(p, s.where);
    EXPECT_TRUE(asked) << asked.error;
    return asked && asked->menu(1).has_other_looks;
  };
  const std::string xml = config_xml(s.p, s.where);
  EXPECT_FALSE(has_other_looks(xml));
  EXPECT_TRUE(has_other_looks(replace_all(xml, "<pgc", "<pgc palette=\"x.rgb\"")));
  EXPECT_TRUE(has_other_looks(replace_all(xml, "<menus>", "<menus><subpicture lang=\"en\"/>")));
  const std::size_t button = xml.find("<button>"), end = xml.find("</button>") + 9;
  ASSERT_NE(button, std::string::npos);
  EXPECT_TRUE(has_other_looks(std::string(xml).erase(button, end - button)));
}

TEST(AskedDisc, MenusAreNumberedInTheirTitleset) {
  const disc_description d = asked_by(
      "<titleset><menus><pgc><post>exit;</post></pgc></menus></titleset><titleset><menus>"
      "<pgc><button>g1=1; jump title 2;</button><post> jump menu 1; </post></pgc>"
      "<pgc><post> jump menu 1; </post></pgc></menus></titleset>");
  ASSERT_EQ(d.menu_count(), 3);
  EXPECT_FALSE(d.menu(1).loop);
  EXPECT_TRUE(d.menu(2).loop);
  EXPECT_EQ(d.menu(2).titleset, 2);
  EXPECT_EQ(d.menu(2).buttons.at(0).action.text, "jump title 2");
  EXPECT_FALSE(d.menu(3).loop);
}

TEST(AskedDisc, LanguagesLabelTheStreamsOfTheirTitlesetAlsoBehindOneWithout) {
  const disc_description d = asked_by(
      "<titleset><titles><audio format=\"ac3\"/><audio lang=\"de\"/></titles></titleset>"
      "<titleset><titles><subpicture lang=\"en\"/></titles></titleset>");
  using kind = disc_language::stream_kind;
  EXPECT_THAT(d.languages, ElementsAre(disc_language{kind::audio, "", "", 1},
                                       disc_language{kind::audio, "", "de", 1},
                                       disc_language{kind::subpicture, "", "en", 2}));
}

TEST(AskedDisc, SecondFileOfAMenuIsNotItsSound) {
  const disc_description d = asked_by(
      "<titleset><menus><pgc><vob file=\"/a.mpg\"/><vob "
      "file=\"/b.mpg\"/></pgc></menus></titleset>");
  EXPECT_THAT(d.menu(1).files, ElementsAre("\\a.mpg"));
  EXPECT_EQ(d.menu(1).audio(), "");
}

TEST(AskedDisc, TitlesThatTheRunMakesMayBeJoined) {
  project p;
  add_title(p, "\\m\\a.m2v/\\m\\a.ac3");
  add_title(p, "\\m\\b.m2v/\\m\\b.ac3");
  const disc_description rows = disc_of(p);
  const run_paths where = sample_run_paths(path_style::posix);
  const auto file_of = [&](int title, const std::string& chapters) {
    return "<vob file=\"" + where.in_out(run_file::title_stream(title)) + "\" chapters=\"" +
           chapters + "\"/>";
  };
  const disc_description d =
      asked_by("<titleset><titles><pgc>" + file_of(2, "0,5") + file_of(1, "0:07") +
                   "<vob file=\"/m/other.vob\"/></pgc></titles></titleset>",
               p);
  ASSERT_EQ(d.title_count(), 1);
  ASSERT_EQ(d.title(1).further.size(), 2u);
  EXPECT_EQ(d.title(1).streams, rows.title(2).streams);
  EXPECT_EQ(d.title(1).delay, rows.title(2).delay);
  EXPECT_EQ(d.title(1).chapters_text, "0,5");
  EXPECT_EQ(d.title(1).further[0].streams, rows.title(1).streams);
  EXPECT_TRUE(d.title(1).further[0].is_multiplexed_here);
  EXPECT_THAT(d.title(1).further[0].chapters, ElementsAre(text_time{"0:07", 7.0}));
  EXPECT_THAT(d.title(1).further[1].streams, ElementsAre("\\m\\other.vob"));
  EXPECT_FALSE(d.title(1).further[1].is_multiplexed_here);
}

TEST(AskedDisc, CommandsEntriesAndPausesAreThoseOfTheXml) {
  const disc_description d = asked_by(
      "<vmgm><menus lang=\"en\"><pgc entry=\"title\"/></menus><menus lang=\"de\"><pgc/></menus>"
      "</vmgm><titleset><menus><video aspect=\"16:9\"/><pgc entry=\"root, ptt\" pause=\"4\"><pre>"
      "g2=1; </pre><vob file=\"/a\"><cell>g3=1;</cell></vob><post>jump title "
      "1;</post></pgc></menus>"
      "<titles><pgc pause=\"inf\"><pre>jump title 2;</pre><vob file=\"/b\"><cell>exit;</cell>"
      "</vob><vob file=\"/c\"/></pgc><video aspect=\"4:3\"/></titles></titleset>");
  ASSERT_EQ(d.disc_menus.size(), 2u);
  EXPECT_EQ(d.disc_menus[0].titleset, 0);
  EXPECT_THAT(d.disc_menus[0].entries, ElementsAre("title"));
  EXPECT_EQ(d.disc_menus[1].language, 1);
  ASSERT_EQ(d.menu_count(), 1);
  const disc_menu& menu = d.menu(1);
  EXPECT_THAT(menu.entries, ElementsAre("root", "ptt"));
  EXPECT_EQ(menu.pause, "4");
  EXPECT_EQ(menu.aspect, "16:9");
  EXPECT_EQ(menu.pre.value().text, "g2=1");
  EXPECT_EQ(menu.post.value().text, "jump title 1");
  EXPECT_THAT(menu.cell_commands, ElementsAre(command_of("g3=1")));
  EXPECT_TRUE(menu.has_parts);
  const disc_title& title = d.title(1);
  EXPECT_EQ(title.pre.value().text, "jump title 2");
  EXPECT_EQ(title.pause, "inf");
  EXPECT_EQ(title.aspect, "4:3");
  EXPECT_TRUE(title.has_cells);
  EXPECT_FALSE(title.further.at(0).has_cells);
  EXPECT_THAT(title.cell_commands, ElementsAre(command_of("exit")));
  EXPECT_TRUE(asked_by("").menus.empty());
  EXPECT_TRUE(d.has_other_paths);
  EXPECT_FALSE(d.has_jump_pad);
}

TEST(AskedDisc, TitlesOfTheSameFileHaveTheirOwnRows) {
  project p;
  add_title(p, "\\m\\a.vob");
  add_title(p, "\\m\\a.vob");
  ASSERT_NE(disc_of(p).title(1).name, disc_of(p).title(2).name);
  const std::string title = "<pgc><vob file=\"/m/a.vob\"/></pgc>";
  const disc_description d =
      asked_by("<titleset><titles>" + title + title + title + "</titles></titleset>", p);
  EXPECT_EQ(d.title(1).name, disc_of(p).title(1).name);
  EXPECT_EQ(d.title(2).name, disc_of(p).title(2).name);
  EXPECT_EQ(d.title(3).name, disc_of(p).title(1).name) << "which has no row of its own";
  EXPECT_EQ(d.first_play_text, "<default>");
}

TEST(AskedDisc, XmlThatIsNotWellFormedIsAReason) {
  project p;
  p.customxml = "<dvdauthor>\n<titleset></dvdauthor>";
  const auto asked = asked_disc(p, sample_run_paths(path_style::posix));
  EXPECT_FALSE(asked);
  EXPECT_THAT(asked.error, ::testing::StartsWith("in line 2, "));
}

}  // namespace
}  // namespace corvane::testing_support
