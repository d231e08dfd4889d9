#include "authoring/menu_shapes.h"

#include "examine/file_facts.h"
#include "formats/numbers.h"
#include "menus/maker/made_menus.h"
#include "platform/files/paths.h"
#include "project/disc_of.h"
#include "project/menu_rows.h"

#include <algorithm>

namespace corvane {
namespace {

constexpr int wide_width = 16;

std::optional<bool> is_wide_video(const std::string& file) {
  const file_facts facts = read_file_head(file);
  if (!facts.video || !facts.video->shape)
    return std::nullopt;
  return facts.video->shape->aspect_width == wide_width;
}

const char* proportions(bool is_wide) {
  return is_wide ? "16:9" : "4:3";
}

}  // namespace

std::optional<bool> menu_shapes::is_wide() const {
  return known.empty() ? std::nullopt : std::optional(known.front().is_wide);
}

bool menu_shapes::are_mixed() const {
  return std::ranges::any_of(
      known, [this](const shape& one) { return one.is_wide != known.front().is_wide; });
}

menu_shapes menu_shape_reader::shapes_of(const project& p, const std::vector<int>& menus) {
  const disc_description d = disc_of(p);
  menu_shapes shapes;
  for (const int menu : menus) {
    const std::string file = native_from_stored(d.menu(menu).video());
    if (file.empty())
      continue;
    const auto [at, is_new] = is_wide_.try_emplace(file);
    if (is_new)
      at->second = is_wide_video(file);
    if (at->second)
      shapes.known.push_back({menu, *at->second});
  }
  return shapes;
}

std::vector<int> menus_that_stay(const project& p, bool replaces_own) {
  std::vector<int> kept;
  if (replaces_own)
    return kept;
  const remembered_menus remembered = menus_made_before(p);
  for (int number = 1; number <= menu_count(p); ++number)
    if (!remembered.made.contains(number))
      kept.push_back(number);
  return kept;
}

failure why_not_beside(const menu_shapes& staying, bool is_wide) {
  const auto other = std::ranges::find_if(
      staying.known, [&](const menu_shapes::shape& one) { return one.is_wide != is_wide; });
  if (other == staying.known.end())
    return std::nullopt;
  return "Menu " + trimmed(other->menu) + ", which stays, is " + proportions(other->is_wide) +
         ", and all menus of a disc are of the same proportions.  Make the new ones " +
         proportions(other->is_wide) + ", too, or replace all menus.";
}

}  // namespace corvane
