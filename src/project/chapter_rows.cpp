#include "project/chapter_rows.h"

#include "formats/text.h"

namespace corvane {

std::vector<std::string> chapter_times(std::string_view row) {
  return split(row, ',');
}

std::string chapter_row(const std::vector<std::string>& times) {
  return join(times, ",");
}

bool is_storable_chapter(std::string_view time) {
  return time.find(',') == std::string_view::npos && !holds_control_character(time);
}

}  // namespace corvane
