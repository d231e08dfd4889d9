#include "project/font_list.h"

#include "formats/text.h"
#include "project/subtitle_rows.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <tuple>

namespace corvane {
namespace {

bool is_truetype(std::string_view lower_file) {
  return lower_file.ends_with("ttf") || lower_file.ends_with("ttc");
}

/// Quotes and "<" would break the subtitle tool's control file.
bool is_nameable(const offered_font& font, path_style style) {
  return !why_not_a_subtitle_field(font.file) &&
         font.file.find_first_of("\"'<") == std::string::npos &&
         !why_not_storable(font.path, style);
}

bool stands_before(const offered_font& a, const offered_font& b) {
  return std::tuple(lower(a.name), a.file, a.path) < std::tuple(lower(b.name), b.file, b.path);
}

}  // namespace

font_list::font_list(std::vector<installed_font> installed, path_style style) {
  for (installed_font& font : installed) {
    offered_font offer{std::move(font.name), lower(font.file), std::move(font.path)};
    if (is_truetype(offer.file) && is_nameable(offer, style))
      fonts_.push_back(std::move(offer));
  }
  std::sort(fonts_.begin(), fonts_.end(), stands_before);
  std::map<std::string, std::string> known;
  std::erase_if(fonts_, [&known](const offered_font& font) {
    return known.emplace(font.file, font.path).first->second != font.path;
  });
}

std::optional<std::size_t> font_list::index_of(std::string_view file) const {
  const auto found = std::find_if(
      fonts_.begin(), fonts_.end(),
      [wanted = lower(file)](const offered_font& font) { return font.file == wanted; });
  if (found == fonts_.end())
    return std::nullopt;
  return static_cast<std::size_t>(found - fonts_.begin());
}

std::optional<std::string> font_list::path_of_file(std::string_view file) const {
  const auto index = index_of(file);
  return index ? std::optional(fonts_[*index].path) : std::nullopt;
}

font_list system_fonts() {
  return font_list(installed_fonts());
}

}  // namespace corvane
