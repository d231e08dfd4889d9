#include "project/title_rows.h"

#include "formats/text.h"
#include "platform/files/paths.h"
#include "project/moved_commands.h"
#include "project/subtitle_rows.h"

#include <cstdint>
#include <utility>

namespace corvane {
namespace {

using difference = std::vector<std::string>::difference_type;

}  // namespace

std::vector<std::string> streams_of(std::string_view row) {
  return split(row, '/');
}

bool is_program_stream(std::string_view stored) {
  const std::string extension = lower_extension_of(file_name_of(stored));
  return extension == "vob" || extension == "mpg" || extension == "mpeg";
}

std::string with_stream(std::string_view row, std::string_view stream) {
  return std::string(row) + "/" + std::string(stream);
}

std::array<std::vector<std::string>*, 6> title_lists(project& p) {
  return {&p.List1, &p.List11, &p.chapters, &p.delay, &p.subtitledata, &p.subtitleoptions};
}

void add_title(project& p, const std::string& List11_row) {
  p.List1.push_back(List1_row(static_cast<int>(p.List1.size()) + 1, List11_row));
  p.List11.push_back(List11_row);
  p.subtitledata.emplace_back(no_subtitles);
  p.subtitleoptions.push_back(default_subtitleoptions(p.globalregion));
  show_title_count(p);
  p.chapters.emplace_back("00:00:00.00");
  // A load that was taken back for missing files leaves the delays of titles that are gone.
  p.delay.resize(p.List11.size() - 1, "0");
  p.delay.emplace_back("0");
}

void remove_title(project& p, std::size_t row) {
  note_command_targets(p);
  for (auto* list : title_lists(p))
    if (row < list->size())
      list->erase(list->begin() + static_cast<difference>(row));
  p.selected = -1;
  show_title_count(p);
  rebuild_List1(p);
  if (p.List1.empty() && p.menulist.empty())
    p.Comboregion_enabled = true;
}

void swap_titles(project& p, std::size_t a, std::size_t b) {
  note_command_targets(p);
  for (auto* list : title_lists(p))
    if (a < list->size() && b < list->size())
      std::swap((*list)[a], (*list)[b]);
  rebuild_List1(p);
}

std::optional<std::size_t> selected_title(const project& p) {
  if (p.selected < 0 || static_cast<std::size_t>(p.selected) >= p.List1.size())
    return std::nullopt;
  return static_cast<std::size_t>(p.selected);
}

}  // namespace corvane
