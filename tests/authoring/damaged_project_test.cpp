// Damaged project files: they are refused, or what a run makes of them is well formed.
#include "authoring/sample_projects.h"
#include "authoring/texts_of_project.h"
#include "formats/xml_reader.h"
#include "project/edited_xml.h"
#include "project/project_file.h"
#include "project/project_text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <random>
#include <string>
#include <vector>

namespace corvane::testing_support {
namespace {

/// What a run reads of a file.
project project_of(const loaded_project& l) {
  project p;
  p.List11 = l.List11;
  p.chapters = l.chapters;
  p.delay = l.delay;
  p.languagetags = l.languagetags;
  p.menulist = l.menulist;
  p.moremenuoptions = l.moremenuoptions;
  p.menubuttons = l.menubuttons;
  p.postinfo = l.postinfo;
  p.subtitledata = l.subtitledata;
  p.subtitleoptions = l.subtitleoptions;
  p.firstplay = l.firstplay;
  p.globalregion = l.globalregion;
  p.jumptable = l.jumptable;
  p.customxml = l.customxml;
  return p;
}

/// Bytes as disks, editors and people damage them.
class damage {
 public:
  explicit damage(unsigned seed) : random_(seed) {}

  std::string to(std::string text) {
    for (int left = 1 + below(3); left > 0; --left)
      once(text);
    return text;
  }

 private:
  int below(std::size_t limit) {
    return static_cast<int>(random_() % std::max<std::size_t>(limit, 1));
  }

  void once(std::string& text) {
    const auto at = static_cast<std::size_t>(below(text.size()));
    const auto length = static_cast<std::size_t>(1 + below(12));
    switch (below(6)) {
      case 0:
        text[at] = static_cast<char>(text[at] ^ (1 << below(8)));
        break;
      case 1:
        text.erase(at, length);
        break;
      case 2:
        text.insert(at, text.substr(static_cast<std::size_t>(below(text.size())), length));
        break;
      case 3:
        text[at] = static_cast<char>(below(256));
        break;
      default:
        text.insert(at, pieces[below(std::size(pieces))]);
    }
  }

  static constexpr const char* pieces[] = {"<",
                                           ">",
                                           "&",
                                           "\"",
                                           "'",
                                           "]]>",
                                           "--",
                                           "&amp;",
                                           "\\",
                                           "/",
                                           "|",
                                           "\t",
                                           ",",
                                           "\xC3\xA9",
                                           "\xE9",
                                           "\xEF\xBF\xBE",
                                           "-->",
                                           "<!",
                                           "<?",
                                           "\xEF\xBF\xBF",
                                           "\xC2\x85",
                                           "\xC2\xA0",
                                           "\xE2\x80\xA8",
                                           "\xF0\x9F\xBF\xBF",
                                           "&#1;",
                                           "%",
                                           "\r\n"};
  std::mt19937 random_;
};

std::vector<std::string> seeds() {
  std::vector<std::string> texts;
  for (sample s : all_samples(posix)) {
    texts.push_back(project_text(s.p));
    s.p.customxml = testing_support::config_xml(s.p, s.where);
    texts.push_back(project_text(s.p));
  }
  return texts;
}

/// The texts in XML that a run of the project would write; none if it is refused.
std::vector<std::string> xml_of(const project& p) {
  const disc_description d = disc_of(p);
  if (d.titles.empty() || why_not_authorable(d, edited_xml(p), posix))
    return {};
  const run_paths where = sample_run_paths(posix);
  std::vector<std::string> texts{corvane::config_xml(d, edited_xml(p), where)};
  for (int menu = 1; menu <= d.menu_count(); ++menu)
    texts.push_back(corvane::menu_subpicture_xml(d, where, menu));
  for (const disc_title& title : d.titles)
    for (const disc_subtitle& subtitle : title.subtitles)
      texts.push_back(corvane::subtitle_xml(subtitle, where));
  return texts;
}

TEST(DamagedProject, NeverLeadsToXmlThatIsNotWellFormed) {
  const std::vector<std::string> texts = seeds();
  damage damaged(20);
  constexpr int rounds = 20'000;
  int made = 0;
  for (int round = 0; round < rounds; ++round) {
    const std::string bytes = damaged.to(texts[static_cast<std::size_t>(round) % texts.size()]);
    const auto characters = project_characters_of(bytes);
    const auto loaded = characters ? parse_project(characters->text)
                                   : result<loaded_project>::fail(characters.error);
    const auto written = loaded ? xml_of(project_of(*loaded)) : std::vector<std::string>();
    made += written.empty() ? 0 : 1;
    for (const std::string& xml : written) {
      const xml_reading reading = read_xml(xml);
      EXPECT_FALSE(reading.fault) << reading.fault->what << " in line " << reading.fault->line
                                  << " of\n"
                                  << xml << "\nby\n"
                                  << bytes;
    }
  }
  EXPECT_GT(made, rounds / 10) << "else nothing is tried";
}

TEST(DamagedProject, WhatXmlAllowsNowhereIsNamed) {
  for (const std::string none : {"\xEF\xBF\xBE", "\xEF\xBF\xBF"}) {
    project p = plain_menus(posix).p;
    p.firstplay = "jump title 1" + none;
    EXPECT_EQ(why_not_authorable(disc_of(p), {}, posix)
                  .value_or("")
                  .find("The first-play command, \"jump title 1"),
              0u);
    p = muxed_titles(posix).p;
    p.List11[0] += none;
    EXPECT_NE(why_not_authorable(disc_of(p), {}, posix)
                  .value_or("")
                  .find("contains a character that no text may contain (U+FFFE or U+FFFF)"),
              std::string::npos);
  }
}

}  // namespace
}  // namespace corvane::testing_support
