#include "project/button_data.h"

#include "formats/text.h"
#include "project/menu_rows.h"
#include "project/moved_commands.h"
#include "project/project.h"

#include <algorithm>

namespace corvane {

void storebuttondata(project& p, const std::int16_t& indexed) {
  const std::string element = join(p.buttondata, "|");
  p.buttondata.clear();
  if (indexed < 1)
    return;
  const auto index = static_cast<std::size_t>(indexed) - 1;
  if (index >= p.menubuttons.size())
    p.menubuttons.resize(index + 1);
  p.menubuttons[index] = element;
}

std::vector<std::string> recallbuttondata(project& p, std::int16_t indexed) {
  p.buttondata.clear();
  if (indexed < 1 || indexed - 1 > UUBound(p.menubuttons))
    return {};
  const std::string& element = p.menubuttons[static_cast<std::size_t>(indexed) - 1];
  return trim(element).empty() ? std::vector<std::string>() : pieces_of(element);
}

void store_edited_menu(project& p, std::int16_t indexed, const std::vector<std::string>& records,
                       const std::string& options_row) {
  if (!records.empty() && indexed >= 1) {
    p.buttondata = records;
    // A project cut off in the file can have fewer rows than menus.
    row_to_write(p.moremenuoptions, indexed, new_menu_options) = options_row;
  }
  storebuttondata(p, indexed);
  forget_targets_of_menu(p, indexed);
}

}  // namespace corvane
