#include "sample_project.h"

#include "formats/numbers.h"
#include "formats/text.h"
#include "project/title_rows.h"

#include <random>

namespace corvane::testing_support {
namespace {

std::string post_command(const std::string& text) {
  std::string padded(text);
  while (padded.size() < 25)
    padded += ' ';
  return padded;
}

class random_rows {
 public:
  explicit random_rows(std::uint32_t seed) : numbers_(seed) {}

  std::size_t up_to(std::size_t most) { return numbers_() % (most + 1); }
  bool maybe() { return up_to(1) == 1; }

  /// A stored path with letters, blanks and signs that names may have.
  std::string path() {
    static const char* const names[] = {
        "movie", "a b",     "M\xC3\xBCller", "100%", "R&D", "it's", "x;y,z", "\xE6\x98\xA0",
        "*",     "menu01:", "$HOME`",        "^#!=", "(1)", "***x", "-"};
    std::string path = maybe() ? "C:" : "";
    for (std::size_t depth = up_to(3) + 1; depth > 0; --depth)
      path += "\\" + std::string(names[up_to(std::size(names) - 1)]);
    return path;
  }
  std::string number() { return trimmed(static_cast<std::int64_t>(up_to(2000)) - 1000); }
  std::string record() {
    std::string record;
    for (int i = 0; i < 4; ++i)
      record += leading_blank(static_cast<std::int64_t>(up_to(719))) + "/";
    return record + "jump title " + number() + "/" + (maybe() ? "cyan" : path()) + "/black";
  }
  std::string buttons() {
    if (up_to(4) == 0)
      return maybe() ? "" : " ";
    std::string element = record();
    for (std::size_t more = up_to(5); more > 0; --more)
      element += "|" + record();
    return element;
  }

 private:
  std::mt19937 numbers_;
};

void add_random_title(project& p, random_rows& r) {
  std::string row = r.path();
  for (std::size_t audio = r.up_to(8); audio > 0; --audio)
    row += "/" + r.path();
  add_title(p, row);
  p.delay.back() = r.number();
  for (std::size_t more = r.up_to(5); more > 0; --more)
    p.chapters.back() += ",00:0" + std::to_string(more) + ":00.00";
  if (r.maybe())
    p.subtitledata.back() = r.path() + "/" + r.path();
  if (r.maybe())
    p.postinfo.push_back(post_command("jump menu " + r.number()));
}

void add_random_menu(project& p, random_rows& r) {
  p.menulist.push_back(r.path() + "/" + (r.maybe() ? r.path() : ""));
  p.moremenuoptions.push_back(" 1\t00:00:00.0\t00:01:00.0\t" + leading_blank(4));
  p.menubuttons.resize(p.menulist.size());
  p.menubuttons.back() = r.buttons();
}

}  // namespace

project sample_project(const std::string& root) {
  project p;
  p.globalregion = "PAL";
  add_title(p, root + "\\movie.m2v/" + root + "\\english.ac3/" + root +
                   "\\fran\xC3\xA7"
                   "ais.mp2");
  add_title(p, root + "\\vts_01_1.vob");
  p.chapters[0] = "00:00:00.00,00:05:00.00";
  p.delay[0] = "-120";
  p.languagetags = {"Audio tag:\tenglish en", "Subtitle tag:\tgerman de"};
  p.menulist = {root + "\\intro.m2v/" + root + "\\intro.ac3", root + "\\still.m2v/",
                root + "\\new.m2v/"};
  p.moremenuoptions = {" 1\t00:00:00.0\t00:00:30.0\t 3", " 0\t00:00:00.0\t00:00:00.0\t 1",
                       "0\t00:00:00.0\t00:00:00.0\t1"};
  p.menubuttons = {" 10/ 20/ 110/ 23/jump title 1/black/" + root + "\\select.bmp" +
                       "| 10/ 120/ 110/ 123/exit/cyan/white",
                   " ", ""};
  p.postinfo = {post_command("jump menu 1"), post_command("exit")};
  p.subtitledata[0] = root + "\\movie.srt";
  p.firstplay = "jump menu 1";
  p.isocreate = true;
  p.customxml = "<dvdauthor jumppad=\"on\">\r\n\t<!-- by hand -->\r\n\r\n</dvdauthor>\r\n";
  return p;
}

std::string sample_project_text(const std::string& root) {
  const std::vector<std::string> lines = {
      "Corvane 0.997 - 1/2/2005",
      root + "\\movie.m2v/" + root + "\\english.ac3/" + root +
          "\\fran\xC3\xA7"
          "ais.mp2",
      root + "\\vts_01_1.vob",
      "***",
      "00:00:00.00,00:05:00.00",
      "00:00:00.00",
      "***",
      "-120",
      "0",
      "***",
      "Audio tag:\tenglish en",
      "Subtitle tag:\tgerman de",
      "***",
      root + "\\intro.m2v/" + root + "\\intro.ac3",
      root + "\\still.m2v/",
      root + "\\new.m2v/",
      "***",
      " 1\t00:00:00.0\t00:00:30.0\t 3",
      " 0\t00:00:00.0\t00:00:00.0\t 1",
      "0\t00:00:00.0\t00:00:00.0\t1",
      "***",
      "menu01: 10/ 20/ 110/ 23/jump title 1/black/" + root + "\\select.bmp",
      "menu01: 10/ 120/ 110/ 123/exit/cyan/white",
      "menu02: ",
      "***",
      "jump menu 1              ",
      "exit                     ",
      "***",
      root + "\\movie.srt",
      "<none>",
      "***",
      "center,bottom,60,60,30,30,28.0,arial.ttf,720,574,25,ISO-8859-1|",
      "center,bottom,60,60,30,30,28.0,arial.ttf,720,574,25,ISO-8859-1|",
      "***",
      "jump menu 1",
      "PAL",
      "True",
      "False",
      "<dvdauthor jumppad=\"on\">",
      "\t<!-- by hand -->",
      "",
      "</dvdauthor>"};
  return join(lines, crlf) + std::string(crlf);
}

project random_project(std::uint32_t seed) {
  random_rows r(seed);
  project p;
  p.globalregion = r.maybe() ? "PAL" : "NTSC";
  for (std::size_t titles = r.up_to(12); titles > 0; --titles)
    add_random_title(p, r);
  for (std::size_t menus = r.up_to(12); menus > 0; --menus)
    add_random_menu(p, r);
  for (std::size_t tags = r.up_to(3); tags > 0; --tags)
    p.languagetags.push_back("Audio tag:\tenglish " + r.number());
  p.firstplay = r.maybe() ? "<default>" : "jump title" + leading_blank(3);
  p.isocreate = r.maybe();
  p.jumptable = r.maybe();
  for (std::size_t lines = r.up_to(4); lines > 0; --lines)
    p.customxml += (r.maybe() ? "<vob file=\"" + r.path() + "\"/>" : "***") + "\r\n";
  return p;
}

loaded_project contents_of(const project& p) {
  loaded_project c;
  c.List11 = p.List11;
  c.chapters = p.chapters;
  c.delay = p.delay;
  c.languagetags = p.languagetags;
  c.menulist = p.menulist;
  c.moremenuoptions = p.moremenuoptions;
  c.menubuttons = p.menubuttons;
  c.postinfo = p.postinfo;
  c.subtitledata = p.subtitledata;
  c.subtitleoptions = p.subtitleoptions;
  c.firstplay = p.firstplay;
  c.globalregion = p.globalregion;
  c.isocreate = p.isocreate;
  c.jumptable = p.jumptable;
  c.customxml = p.customxml;
  return c;
}

}  // namespace corvane::testing_support
