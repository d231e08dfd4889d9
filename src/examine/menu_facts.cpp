#include "examine/menu_facts.h"

#include "examine/examination.h"
#include "platform/files/paths.h"

#include <cstddef>
#include <memory>
#include <string>

namespace corvane {
namespace {

/// In MPEG-1 the codes are proportions of pixels: 3 and 6 make 16:9 of PAL and NTSC, 8 and 12 make
/// 4:3. dvdauthor passes over all other codes.
std::optional<bool> named_wide(const video_shape& shape) {
  const int code = shape.aspect_code;
  const bool wide = shape.mpeg2 ? code == 3 : code == 3 || code == 6;
  const bool narrow = shape.mpeg2 ? code == 2 : code == 8 || code == 12;
  return wide || narrow ? std::optional(wide) : std::nullopt;
}

const video_facts* video_in(const file_facts& file) {
  if (file.video)
    return &*file.video;
  const inner_stream* const inside = file.program ? file.program->video() : nullptr;
  return inside != nullptr && inside->video ? &*inside->video : nullptr;
}

/// What the menus of a titleset are on the disc; not set: nothing tells.
std::optional<bool> is_wide_on_disc(const std::vector<disc_menu>& menus, int titleset,
                                    std::span<const menu_facts> facts) {
  for (const disc_menu& m : menus)
    if (m.titleset == titleset && !m.aspect.empty())
      return m.aspect == "16:9";
  for (std::size_t i = 0; i < menus.size() && i < facts.size(); ++i)
    if (menus[i].titleset == titleset && facts[i].is_wide)
      return facts[i].is_wide;
  return std::nullopt;
}

}  // namespace

menu_facts menu_facts_of(const file_facts& file) {
  const video_facts* const video = video_in(file);
  if (video == nullptr)
    return {};
  menu_facts facts;
  if (file.whole)
    facts.seconds = video->seconds;
  if (video->shape)
    facts.is_wide = named_wide(*video->shape);
  return facts;
}

std::vector<menu_facts> facts_of_first_menus(const disc_description& d, fact_store& store) {
  std::vector<menu_facts> all;
  all.reserve(d.menus.size());
  for (const disc_menu& m : d.menus) {
    all.push_back({{}, menu_facts_of(*store.beginning(native_from_stored(m.video()))).is_wide});
    if (all.back().is_wide)
      break;
  }
  return all;
}

int copies_of_buttons(const std::vector<disc_menu>& menus, int titleset,
                      std::span<const menu_facts> facts) {
  return is_wide_on_disc(menus, titleset, facts).value_or(false) ? 3 : 1;
}

}  // namespace corvane
