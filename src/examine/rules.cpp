#include "examine/rules.h"

#include "examine/button_rules.h"
#include "examine/chapter_rules.h"
#include "examine/disc_rules.h"
#include "examine/navigation_rules.h"
#include "examine/project_rules.h"
#include "examine/ready_rules.h"
#include "examine/setting_rules.h"
#include "examine/space_rules.h"
#include "examine/stream_rules.h"
#include "examine/subtitle_text_rules.h"
#include "examine/titleset_rules.h"
#include "examine/tool_rules.h"

#include <algorithm>
#include <utility>

namespace corvane {
namespace {

std::string sentence(std::string_view text) {
  return std::string(text) + ".";
}

std::string section_of(const rule& r) {
  std::string text = "### `" + std::string(r.id) + "`\n\n";
  text += sentence(r.subject) + "\n\n";
  text += "- Severity: " + std::string(name_of(r.severity)) + "\n";
  text += "- Must be: " + sentence(r.wanted) + "\n";
  text += "- A viewer would see: " + sentence(r.consequence) + "\n";
  text += "- What to do: " + sentence(r.remedy) + "\n";
  return text + "- Source: " + sentence(r.source) + "\n";
}

}  // namespace

std::vector<rule_family> rule_families() {
  return {{"The project", project_rules()},
          {"Files", file_rules()},
          {"Ready titles", ready_rules()},
          {"Video", video_rules()},
          {"Sound", audio_rules()},
          {"Titles and menus together", titleset_rules()},
          {"Chapters", chapter_rules()},
          {"Settings of titles", setting_rules()},
          {"Text subtitles", subtitle_text_rules()},
          {"Navigation", navigation_rules()},
          {"Menus and buttons", button_rules()},
          {"Room", space_rules()},
          {"What the tools say", tool_rules()},
          {"Finished discs", disc_rules()}};
}

finding finding_of(std::span<const rule> rules, std::string_view id, finding_item item,
                   std::string found, std::string wanted) {
  const auto r =
      std::find_if(rules.begin(), rules.end(), [&](const rule& one) { return one.id == id; });
  finding f;
  f.rule = id;
  f.item = item;
  f.found = std::move(found);
  f.wanted = std::move(wanted);
  if (r == rules.end())
    return f;
  f.severity = r->severity;
  if (f.wanted.empty())
    f.wanted = r->wanted;
  f.consequence = r->consequence;
  f.remedy = r->remedy;
  return f;
}

std::string rules_document() {
  std::string text =
      "# The rules\n"
      "\n"
      "What material is held against before a run, what the tools say meanwhile, and what a disc\n"
      "is held against after it. An error means that the run fails or the disc is wrong; a\n"
      "warning, that some players have trouble or that the disc is probably not what was meant; a\n"
      "note is worth knowing. Written from the program's own tables.\n";
  for (const rule_family& family : rule_families()) {
    text += "\n## " + std::string(family.name) + "\n";
    for (const rule& r : family.rules)
      text += "\n" + section_of(r);
  }
  return text;
}

}  // namespace corvane
