#include "runner/tools/dvdauthor.h"

#include "formats/chapter_list.h"

#include <cstddef>
#include <optional>

namespace corvane {
namespace {

constexpr std::string_view attribute = " chapters=\"";

void look_at_title(int title, std::string_view chapters, std::vector<left_out_chapter>& found) {
  double latest = 0;
  std::string latest_time;
  for (const std::string& time : chapter_entries(chapters)) {
    const std::optional<double> seconds = chapter_entry_seconds(time);
    if (!seconds)
      continue;
    if (*seconds < latest) {
      found.push_back({title, time, latest_time});
    } else {
      latest = *seconds;
      latest_time = time;
    }
  }
}

/// Its navigation XML, where it is called with one.
std::string navigation_of(const script_words& words) {
  return words.size() == 3 && words[1] == "-x" ? words[2] : std::string();
}

}  // namespace

std::vector<std::string> dvdauthor_ways::announce(const tool_call& call, tool_files& files) const {
  const std::string navigation = navigation_of(call.words);
  if (navigation.empty())
    return {};
  std::vector<std::string> lines;
  for (const left_out_chapter& chapter : chapters_left_out(files.control_text(navigation)))
    lines.push_back("INFO: the chapter " + chapter.time + " of title " +
                    std::to_string(chapter.title) +
                    " is not on the disc, since it stands behind the later one " + chapter.after);
  return lines;
}

std::vector<left_out_chapter> chapters_left_out(std::string_view navigation_xml) {
  std::vector<left_out_chapter> found;
  int title = 0;
  for (std::size_t at = navigation_xml.find(attribute); at != std::string_view::npos;
       at = navigation_xml.find(attribute, at + 1)) {
    const std::string_view rest = navigation_xml.substr(at + attribute.size());
    look_at_title(++title, rest.substr(0, rest.find('"')), found);
  }
  return found;
}

}  // namespace corvane
