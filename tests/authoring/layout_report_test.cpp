// The layout report: its lines, what hostile names do to it, and the command's conversation.
#include "authoring/layout_report.h"

#include "authoring/html_lists.h"
#include "authoring/texts_of_project.h"
#include "project/menu_rows.h"
#include "support/command_test.h"
#include "support/recorded_desktop.h"

#include <algorithm>
#include <random>

namespace corvane {
namespace {

using testing_support::layout_html;
using testing_support::list_items;
using testing_support::recorded_desktop;
using testing_support::rows;

bool holds(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

class LayoutReport : public testing_support::command_test {
 protected:
  report_result print() { return layoutprint_command(doc, folder.path("app"), user_desktop); }
  void add_menu(const std::string& row, const std::string& buttons) {
    if (p.menulist.empty())
      p.menubuttons.clear();
    p.menulist.push_back(row);
    p.moremenuoptions.emplace_back(new_menu_options);
    p.menubuttons.push_back(buttons);
  }
  bool written(const std::string& name) { return file_exists(folder.path("app/" + name)); }

  recorded_desktop user_desktop;
  bool made = (make_folders(folder.path("app")), true);
};

// The page ---------------------------------------------------------------------------------------

TEST_F(LayoutReport, OfAnEmptyProjectIsTheFrameWithEmptyLists) {
  p.dvdsizetext = "0 titles\r\n0 menus\r\n0 gig total";
  EXPECT_EQ(layout_html(p),
            "<html><head><title>DVD Layout - Corvane 0.997 - 1/2/2005</title></head>"
            "<body bgcolor=\"lightgrey\" topmargin=0 marginheight=0>\r\n"
            "<font size=-1 face=\"verdana\"><center><b>DVD Layout, auto-generated from<br>"
            "Corvane 0.997 - 1/2/2005</center></b><br><br>\r\n"
            "<ul><li>This DVD contains:0 titles\r\n0 menus\r\n0 gig total"
            "<br>Titles include:<ul>\r\n"
            "</ul><br>Menus include:<ul>\r\n"
            "</ul><br><br>\r\n"
            "<li>The DVD will begin with Title 1\r\n"
            "<ul><li type=disc>Menus:<ul>\r\n"
            "</ul></ul><br><ul><li type=disc>Titles:<ul>\r\n"
            "</ul></ul>\r\n");
}

TEST_F(LayoutReport, CountsThreeChaptersAndNone) {
  add_title(p, "\\v\\a.m2v/\\v\\a.ac3");
  add_title(p, "\\v\\b.vob");
  p.chapters = {"00:00:00.00,00:01:00.00,00:02:00.00", ""};
  const std::string html = layout_html(p);
  EXPECT_TRUE(holds(html, "<li type=disc>title1:a.m2v/a.ac3 (3 chapters)\r\n"));
  EXPECT_TRUE(holds(html, "<li type=disc>title2:b.vob (0 chapters)\r\n"));
}

TEST_F(LayoutReport, DefaultFirstPlayWithoutMenusIsTitle1) {
  add_title(p, "\\v\\a.vob");
  EXPECT_TRUE(holds(layout_html(p), "\r\n<li>The DVD will begin with Title 1\r\n"));
}

TEST_F(LayoutReport, DefaultFirstPlayWithAMenuIsMenu1) {
  add_menu("\\v\\menu.m2v/", first_button);
  EXPECT_TRUE(holds(layout_html(p), "\r\n<li>The DVD will begin with Menu 1\r\n"));
}

TEST_F(LayoutReport, AnotherFirstPlayIsNamed) {
  p.firstplay = "jump title 2";
  EXPECT_TRUE(holds(layout_html(p), "\r\n<li>The DVD will begin with jump title 2\r\n"));
}

TEST_F(LayoutReport, MenusAreNamedByTheirFilesWithoutFolders) {
  add_menu("\\my media\\main.m2v/\\my media\\main.ac3",
           " 0/ 0/ 100/ 3/jump title 1/black/black| 40/ 100/ 240/ 140/exit/blue/orange");
  add_menu("\\my media\\still.m2v/", "");
  const std::string html = layout_html(p);
  EXPECT_TRUE(holds(html, "<li type=disc>menu1:main.m2v/main.ac3  (2 buttons)\r\n"));
  EXPECT_TRUE(holds(html, "<li type=disc>menu2:still.m2v  (0 buttons)\r\n"));
}

TEST_F(LayoutReport, ButtonsAreShownWithTheirRectangleAndTarget) {
  add_menu("\\v\\m.m2v/",
           " 0/0/100/3/jump title 1/black/black| 40/ 100/ 240/ 140/jump menu 2/blue/orange");
  add_menu("\\v\\n.m2v/", " 1/ 2/ 3/ 4/exit/black/black");
  EXPECT_TRUE(holds(layout_html(p),
                    "<ul><li type=disc>Menus:<ul>\r\n"
                    "<li type=disc>Menu1<ul>\r\n"
                    "<li type=disc>Button1(0x0,100x3) goes to:jump title 1\r\n"
                    "<li type=disc>Button2(40x100,240x140) goes to:jump menu 2\r\n"
                    "</ul>\r\n"
                    "<li type=disc>Menu2<ul>\r\n"
                    "<li type=disc>Button1(1x2,3x4) goes to:exit\r\n"
                    "</ul>\r\n"
                    "</ul></ul><br><ul><li type=disc>Titles:<ul>\r\n"));
}

TEST_F(LayoutReport, AMenuWhoseButtonsAreAllGoneHasNone) {
  add_menu("\\v\\m.m2v/", " ");
  EXPECT_TRUE(holds(layout_html(p), "menu1:m.m2v  (0 buttons)\r\n"));
}

TEST_F(LayoutReport, PostCommandsAreShownWithoutTheirPadding) {
  for (const char* const row : {"\\v\\a.vob", "\\v\\b.vob", "\\v\\c.vob"})
    add_title(p, row);
  p.postinfo = {"jump title 3             ", "exit                     ",
                "call last menu           "};
  EXPECT_TRUE(holds(layout_html(p),
                    "<li type=disc>Title1 goes to: jump title 3\r\n"
                    "<li type=disc>Title2 goes to: exit\r\n"
                    "<li type=disc>Title3 goes to: call last menu\r\n"
                    "</ul></ul>\r\n"));
}

TEST_F(LayoutReport, ATitleWithoutAPostCommandHasAnEmptyTarget) {
  add_title(p, "\\v\\a.vob");
  EXPECT_TRUE(holds(layout_html(p), "<li type=disc>Title1 goes to: \r\n</ul></ul>\r\n"));
}

TEST_F(LayoutReport, OfHandEditedXmlSaysSoAndLeadsToTheCopy) {
  p.customxml = "<x/>";
  EXPECT_TRUE(layout_html(p).ends_with(
      "</ul></ul>\r\n<br><br>The XML has been modified so the above data may be partially "
      "incorrect (depending on the modifications).  <br><a href=\"layoutconfig.xml\">Preview the "
      "edited XML</a><br>\r\n"));
}

// Hostile names ----------------------------------------------------------------------------------

TEST(HtmlText, EscapesWhatIsMarkup) {
  EXPECT_EQ(html_text("<a href=\"x\">Tom & 'Jerry'</a>"),
            "&lt;a href=&quot;x&quot;&gt;Tom &amp; &#39;Jerry&#39;&lt;/a&gt;");
}

TEST(HtmlText, WritesCharactersOutsideAsciiAsNumbers) {
  EXPECT_EQ(html_text("\xC3\xA9t\xC3\xA9 \xE2\x82\xAC \xF0\x9F\x93\x80"),
            "&#233;t&#233; &#8364; &#128192;");
}

TEST(HtmlText, ReplacesWhatNoPageMayHold) {
  EXPECT_EQ(html_text(std::string("a\0b\x1B", 4)), "a&#65533;b&#65533;");
  EXPECT_EQ(html_text("a\xC2\x80"
                      "b\xC2\x9F\xC2\xA0"),
            "a&#65533;b&#65533;&#160;");
  EXPECT_EQ(html_text("caf\xE9"), "caf&#65533;");
  EXPECT_EQ(html_text("\xF0\x9F"), "&#65533;&#65533;");
}

TEST_F(LayoutReport, NamesWithMarkupAreShownAsText) {
  add_title(p, "\\v\\</ul><script>alert(1)</script>.vob");
  add_menu("\\v\\<b>.m2v/\\v\\\"&amp;\".ac3", "1/2/3/4/<i>/a/b");
  p.postinfo = {"</li><h1>"};
  p.firstplay = "<img src=x onerror=alert(1)>";
  const std::string html = layout_html(p);
  for (const char* const markup : {"<script", "<b>.m2v", "<i>", "<h1>", "<img"})
    EXPECT_FALSE(holds(html, markup)) << markup;
  EXPECT_TRUE(holds(html, "title1:&lt;/ul&gt;&lt;script&gt;"));
  EXPECT_TRUE(holds(html, "menu1:&lt;b&gt;.m2v/&quot;&amp;amp;&quot;.ac3"));
}

// Fifty random projects: what a reader of the page finds in its lists is what the project holds.

class random_project {
 public:
  explicit random_project(unsigned seed) : dice_(seed) {
    const int titles = number(6);
    for (int t = 0; t < titles; ++t) {
      add_title(p, "\\v\\" + name() + ".m2v/\\v\\" + name() + ".ac3");
      p.chapters.back() = number(3) == 0 ? "" : "0" + std::string(unsigned(number(4)), ',');
      p.postinfo.push_back("call " + name());
    }
    p.menubuttons.clear();
    const int menus = number(4);
    for (int m = 0; m < menus; ++m) {
      p.menulist.push_back("\\m\\" + name() + "/" + (number(2) == 0 ? "" : "\\m\\" + name()));
      std::string buttons;
      const int count = number(4);
      for (int b = 0; b < count; ++b)
        buttons += (b == 0 ? " 1/ 2/ 3/ " : "| 1/ 2/ 3/ ") + std::to_string(number(480)) +
                   "/jump " + name() + "/red/blue";
      p.menubuttons.push_back(buttons);
    }
    if (number(2) == 0)
      p.firstplay = "jump " + name();
  }
  project p;

 private:
  int number(int below) { return std::uniform_int_distribution<int>(0, below - 1)(dice_); }
  /// With what breaks pages; without what ends a name in a row ("/", "|", "\").
  std::string name() {
    static const rows pieces = {"a",
                                "Z9",
                                "<",
                                ">",
                                "&",
                                "\"",
                                "'",
                                "<b",
                                "&amp;",
                                "<!--",
                                "-->",
                                "é",
                                "\xE2\x82\xAC",
                                "x",
                                "&#0;",
                                "<ul>",
                                "<script>",
                                " y",
                                "\xF0\x9F\x93\x80"};
    std::string text = "n";
    const int count = 1 + number(5);
    for (int i = 0; i < count; ++i)
      text += pieces[static_cast<std::size_t>(number(static_cast<int>(pieces.size())))];
    return text;
  }
  std::mt19937 dice_;
};

std::size_t chapter_count(const std::string& row) {
  return row.empty() ? 0 : 1 + static_cast<std::size_t>(std::count(row.begin(), row.end(), ','));
}

std::string name_in(const std::string& path) {
  return path.substr(path.rfind('\\') + 1);
}

/// The items as the project has them, in the order of the page.
rows expected_items(const project& p) {
  rows items;
  for (std::size_t t = 0; t < p.List1.size(); ++t)
    items.push_back(p.List1[t] + " (" + std::to_string(chapter_count(p.chapters[t])) +
                    " chapters)");
  std::vector<rows> buttons;
  for (std::size_t m = 0; m < p.menulist.size(); ++m) {
    buttons.push_back(split(p.menubuttons[m], '|'));
    const rows streams = split(p.menulist[m] + " ", '/');
    const std::string audio = streams[1] == " " ? "" : "/" + name_in(streams[1]);
    items.push_back("menu" + std::to_string(m + 1) + ":" + name_in(streams[0]) +
                    std::string(trim(audio)) + "  (" + std::to_string(buttons.back().size()) +
                    " buttons)");
  }
  const std::string first = p.menulist.empty() ? "Title 1" : "Menu 1";
  items.push_back("The DVD will begin with " + (p.firstplay == "<default>" ? first : p.firstplay));
  items.emplace_back("Menus:");
  for (std::size_t m = 0; m < buttons.size(); ++m) {
    items.push_back("Menu" + std::to_string(m + 1));
    for (std::size_t b = 0; b < buttons[m].size(); ++b) {
      const rows fields = split(buttons[m][b], '/');
      items.push_back("Button" + std::to_string(b + 1) + "(1x2,3x" + std::string(trim(fields[3])) +
                      ") goes to:" + fields[4]);
    }
  }
  items.emplace_back("Titles:");
  for (std::size_t t = 0; t < p.List1.size(); ++t)
    items.push_back("Title" + std::to_string(t + 1) + " goes to: " + p.postinfo[t]);
  return items;
}

TEST(LayoutReportLists, ReadBackFromThePageAreThoseOfFiftyRandomProjects) {
  for (unsigned seed = 1; seed <= 50; ++seed) {
    SCOPED_TRACE(seed);
    const random_project made(seed);
    rows items = list_items(layout_html(made.p));
    ASSERT_FALSE(items.empty());
    EXPECT_TRUE(items.front().starts_with("This DVD contains:"));
    items.erase(items.begin());
    for (std::string& item : items)
      item = std::string(trim_right(item));
    rows expected = expected_items(made.p);
    for (std::string& item : expected)
      item = std::string(trim_right(item));
    EXPECT_EQ(items, expected);
  }
}

// The command ------------------------------------------------------------------------------------

TEST_F(LayoutReport, IsWrittenAndShownWithoutAQuestion) {
  add_title(p, "\\v\\a.vob");
  p.saved = 1;
  EXPECT_EQ(print(), report_result::shown);
  EXPECT_EQ(folder.read("app/layout.html"), layout_html(p));
  EXPECT_EQ(user_desktop.asked, rows{"show " + join_path(folder.path("app"), "layout.html")});
  EXPECT_EQ(p.saved, 1);
}

TEST_F(LayoutReport, WithoutHandEditedXmlWritesNoCopyAndNoNote) {
  EXPECT_EQ(print(), report_result::shown);
  EXPECT_FALSE(written("layoutconfig.xml"));
  EXPECT_FALSE(holds(folder.read("app/layout.html"), "has been modified"));
}

TEST_F(LayoutReport, KeepsACopyOfHandEditedXmlAsItStands) {
  p.customxml = "<?xml?>\r\n<dvdauthor dest=\"a&amp;b\">\r\n";
  EXPECT_EQ(print(), report_result::shown);
  EXPECT_EQ(folder.read("app/layoutconfig.xml"), p.customxml);
  EXPECT_TRUE(holds(folder.read("app/layout.html"), "has been modified"));
}

TEST_F(LayoutReport, ReplacesAnEarlierOne) {
  folder.add("app/layout.html", std::string(100000, 'x'));
  EXPECT_EQ(print(), report_result::shown);
  EXPECT_EQ(folder.read("app/layout.html"), layout_html(p));
}

TEST_F(LayoutReport, ThatCannotBeWrittenIsTold) {
  make_folders(folder.path("app/layout.html/in the way"));
  const std::string file = join_path(folder.path("app"), "layout.html");
  const failure why = write_file(file, "x");
  ASSERT_TRUE(why);
  expect_error("The file \"" + file + "\" could not be written: " + *why + ".");
  EXPECT_EQ(print(), report_result::not_written);
  EXPECT_TRUE(user_desktop.asked.empty());
}

TEST_F(LayoutReport, WhoseCopyCannotBeWrittenIsNotMade) {
  p.customxml = "<x/>";
  make_folders(folder.path("app/layoutconfig.xml/in the way"));
  const std::string file = join_path(folder.path("app"), "layoutconfig.xml");
  const failure why = write_file(file, "x");
  ASSERT_TRUE(why);
  expect_error("The file \"" + file + "\" could not be written: " + *why + ".");
  EXPECT_EQ(print(), report_result::not_written);
  EXPECT_FALSE(written("layout.html"));
}

TEST_F(LayoutReport, ThatNoBrowserShowsIsToldWithItsPlace) {
  user_desktop.fails = "xdg-open is not installed";
  expect_refusal(
      "The report was written, but the browser could not be started: xdg-open is not "
      "installed.\r\nIt is the file \"" +
      join_path(folder.path("app"), "layout.html") + "\".");
  EXPECT_EQ(print(), report_result::not_shown);
  EXPECT_TRUE(written("layout.html"));
}

}  // namespace
}  // namespace corvane
