#include "import/sidecars.h"

#include "formats/text.h"
#include "import/language_codes.h"
#include "platform/files/paths.h"
#include "platform/text/charset.h"
#include "project/subtitle_file.h"

#include <algorithm>
#include <array>

namespace corvane {
namespace {

// What our ffmpeg reads as text subtitles; ".sub" may be pictures, and is found out by probing.
constexpr std::array<std::string_view, 5> endings = {"srt", "ass", "ssa", "vtt", "smi"};

struct usual_charset {
  std::string_view charset;
  std::string_view languages;  ///< two letters each
};

// What Windows programs wrote before Unicode, and what files of that time still are.
constexpr std::array<usual_charset, 12> usual_charsets = {{
    {"CP1250", "bs cs hr hu pl ro sk sl sq"},
    {"CP1251", "be bg kk ky mk mn ru sr tg uk"},
    {"CP1253", "el"},
    {"CP1254", "az tr"},
    {"CP1255", "he yi"},
    {"CP1256", "ar fa ur"},
    {"CP1257", "et lt lv"},
    {"CP1258", "vi"},
    {"CP874", "th"},
    {"CP932", "ja"},
    {"CP949", "ko"},
    {"GB18030", "zh"},
}};

constexpr std::string_view western = "CP1252";

std::string usual_charset_of(const std::string& language) {
  for (const usual_charset& one : usual_charsets)
    if (!language.empty() && one.languages.find(language) != std::string_view::npos)
      return std::string(one.charset);
  return std::string(western);
}

bool is_beyond_ascii(char c) {
  return static_cast<unsigned char>(c) >= 0x80;
}

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

void look_into_text(sidecar& text) {
  const result<subtitle_file> file = subtitle_file::read(text.file);
  if (!file) {
    text.problem = file.error;
    return;
  }
  const bool is_unicode = !file->unicode().empty();
  if (!is_unicode && file->bytes().find('\0') != std::string::npos) {
    text.problem = "it is not a text file";
    return;
  }
  if (is_unicode || std::ranges::none_of(file->bytes(), is_beyond_ascii))
    return;
  text.charset = usual_charset_of(text.language);
  // Not every system knows all of these sets.
  if (const decoded_bytes found = decode(file->bytes(), text.charset); !found.is_known || found.bad)
    text.problem = "its characters are neither UTF-8 nor " + text.charset + "; save it as UTF-8";
}

}  // namespace corvane
