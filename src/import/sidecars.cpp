#include "import/sidecars.h"

#include "formats/text.h"
#include "import/language_codes.h"
#include "platform/files/paths.h"

#include <algorithm>
#include <array>

namespace corvane {
namespace {

// What our ffmpeg reads as text subtitles; ".sub" may be pictures, and is found out by probing.
constexpr std::array<std::string_view, 5> endings = {"srt", "ass", "ssa", "vtt", "smi"};

std::string_view stem_of(std::string_view name) {
  return name.substr(0, name.rfind('.'));
}

std::string language_in_words(std::string_view words) {
  while (!words.empty()) {
    const std::size_t point = std::min(words.find('.'), words.size());
    std::string code = language_code_of(words.substr(0, point));
    if (!code.empty())
      return code;
    words.remove_prefix(std::min(point + 1, words.size()));
  }
  return {};
}

}  // namespace

std::vector<sidecar> sidecars_of(std::string_view film, const std::vector<std::string>& listing) {
  const std::string stem = lower(stem_of(film));
  std::vector<sidecar> found;
  for (const std::string& name : listing) {
    const std::string ending = lower_extension_of(name);
    if (std::find(endings.begin(), endings.end(), ending) == endings.end())
      continue;
    const std::string own = lower(stem_of(name));
    if (own == stem)
      found.push_back({name, {}});
    else if (own.starts_with(stem + "."))
      found.push_back({name, language_in_words(std::string_view(own).substr(stem.size() + 1))});
  }
  return found;
}

}  // namespace corvane
