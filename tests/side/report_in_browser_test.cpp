// The layout report as a real browser shows it.
#include "authoring/layout_report.h"
#include "disc/command.h"
#include "formats/sanitized.h"
#include "platform/files/files.h"
#include "side/browser.h"
#include "side/dom.h"
#include "side/made_report.h"
#include "side/shown_report.h"
#include "support/command_test.h"
#include "support/recorded_desktop.h"

#include <cstdlib>

namespace corvane::side {
namespace {

using testing_support::recorded_desktop;
using testing_support::rows;

/// The elements that a report is built of; another one comes from a name in it.
const std::set<std::string> own_elements = {"html", "head", "title", "body", "font", "center",
                                            "b",    "br",   "ul",    "li",   "a"};

class ReportInBrowser : public testing_support::command_test {
 protected:
  /// Has the command write the report of a project, and gives the page's path.
  std::string page_of(const project& made, const std::string& name) {
    document made_bench(ask, prefs);
    made_bench.p = made;
    const std::string app = folder.path(name);
    EXPECT_FALSE(make_folders(app));
    EXPECT_EQ(layoutprint_command(made_bench, app, user_desktop), report_result::shown);
    return join_path(app, "layout.html");
  }
  /// The page's elements; an empty one, with a failed test, when the browser's text is none.
  static element parsed(const std::string& html) {
    std::string why;
    const auto root = parse_dom(html, why);
    EXPECT_TRUE(root) << why;
    return root.value_or(element());
  }
  element sanitized(const std::string& file) { return parsed(reader.page(file).value_or("")); }

  recorded_desktop user_desktop;
  browser reader{folder.path()};
};

std::string title_of(const element& page) {
  const element* const title = find(page, "title");
  return title == nullptr ? "(none)" : title->text;
}

TEST_F(ReportInBrowser, ListsAreThoseOfFiftyRandomProjects) {
  std::vector<made_report> made;
  rows files;
  for (unsigned seed = 1; seed <= 50; ++seed) {
    made.emplace_back(seed);
    files.push_back(page_of(made.back().p, std::to_string(seed)));
  }
  const auto pages = reader.pages(files);
  ASSERT_TRUE(pages);
  for (std::size_t i = 0; i < made.size(); ++i) {
    SCOPED_TRACE("seed " + std::to_string(i + 1));
    const element page = parsed((*pages)[i]);
    std::string why;
    const auto report = read_report(page, why);
    ASSERT_TRUE(report) << why << "\n" << (*pages)[i];
    EXPECT_EQ(*report, made[i].expected);
    for (const std::string& name : names_in(page))
      EXPECT_TRUE(own_elements.contains(name)) << "<" << name << ">";
    EXPECT_EQ(title_of(page), "DVD Layout - Corvane 0.997 - 1/2/2005");
  }
}

TEST_F(ReportInBrowser, FileNameWithHtmlInItIsShownAsText) {
  const std::string picture = "<img src=x onerror=\"document.title=1\">";
  const std::string script = "<script>document.title=2<b>";
  add_title(p, "\\v\\" + picture + ".m2v/\\v\\" + script + ".ac3");
  p.postinfo = {"exit"};
  const element page = sanitized(page_of(p, "app"));
  std::string why;
  const auto report = read_report(page, why);
  ASSERT_TRUE(report) << why;
  ASSERT_EQ(report->titles.size(), 1u);
  EXPECT_EQ(report->titles[0].name, "title1:" + picture + ".m2v/" + script + ".ac3");
  EXPECT_EQ(title_of(page), "DVD Layout - Corvane 0.997 - 1/2/2005");
  EXPECT_EQ(find(page, "img"), nullptr);
  EXPECT_EQ(find(page, "script"), nullptr);
}

TEST_F(ReportInBrowser, NoteLeadsToTheEditedXml) {
  p.customxml = "<dvdauthor dest=\"d\"><titleset><audio lang=\"fr\"/></titleset></dvdauthor>";
  const std::string file = page_of(p, "app");
  const element page = sanitized(file);
  const element* const link = find(page, "a");
  ASSERT_NE(link, nullptr);
  EXPECT_EQ(link->text, "Preview the edited XML");
  const std::string copy = file.substr(0, file.rfind('/') + 1) + link->attributes.at("href");
  const std::string opened = reader.page(copy).value_or("");
  EXPECT_NE(opened.find("fr"), std::string::npos) << opened;
}

// A project as people make them; with CORVANE_SCREENSHOTS its picture is kept for a look.
TEST_F(ReportInBrowser, IsDrawn) {
  for (const char* const row :
       {"\\v\\summer.m2v/\\v\\summer.ac3", "\\v\\Größe 漢字.m2v/\\v\\a.mp2"})
    add_title(p, row);
  p.chapters = {"00:00:00.00,00:05:00.00,00:10:00.00", ""};
  p.postinfo = {"jump title 2             ", "exit                     "};
  p.menulist = {"\\v\\main.m2v/\\v\\main.ac3", "\\v\\more <b>.m2v/"};
  p.menubuttons = {
      " 100/ 200/ 300/ 240/jump title 1/red/blue| 100/ 260/ 300/ 300/jump menu 2/red/blue",
      " 1/ 2/ 30/ 40/jump title 2/red/blue"};
  p.customxml = "<dvdauthor/>";
  p.dvdsizetext = "2 titles\r\n2 menus\r\n 1.25 gig total";
  const char* const folder_of_pictures = std::getenv("CORVANE_SCREENSHOTS");
  const std::string png =
      std::string(folder_of_pictures == nullptr ? folder.path() : folder_of_pictures) +
      "/layout-report.png";
  ASSERT_TRUE(reader.picture(page_of(p, "app"), png));
  const disc::finished colours = disc::run({{"gm", "identify", "-format", "%k", png}});
  ASSERT_EQ(colours.status, 0) << colours.out;
  EXPECT_GT(std::stoi(colours.out), 20);
}

}  // namespace
}  // namespace corvane::side
