#include "import/language_codes.h"

#include "formats/text.h"
#include "tools/language_tags.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace corvane {
namespace {

// Two letters, then the codes of three letters that mean the same (ISO 639-2, both of its kinds
// where they differ), in the order of the two letters.
constexpr std::string_view languages[] = {
    "aa aar",
    "ab abk",
    "af afr",
    "am amh",
    "ar ara",
    "as asm",
    "ay aym",
    "az aze",
    "ba bak",
    "be bel",
    "bg bul",
    "bi bis",
    "bn ben",
    "bo bod tib",
    "br bre",
    "bs bos",
    "ca cat",
    "co cos",
    "cs ces cze",
    "cy cym wel",
    "da dan",
    "de deu ger",
    "dz dzo",
    "el ell gre",
    "en eng",
    "eo epo",
    "es spa",
    "et est",
    "eu eus baq",
    "fa fas per",
    "fi fin",
    "fj fij",
    "fo fao",
    "fr fra fre",
    "fy fry",
    "ga gle",
    "gd gla",
    "gl glg",
    "gn grn",
    "gu guj",
    "ha hau",
    "he heb",
    "hi hin",
    "hr hrv scr",
    "hu hun",
    "hy hye arm",
    "ia ina",
    "id ind",
    "ie ile",
    "ik ipk",
    "is isl ice",
    "it ita",
    "iu iku",
    "ja jpn",
    "jv jav",
    "ka kat geo",
    "kk kaz",
    "kl kal",
    "km khm",
    "kn kan",
    "ko kor",
    "ks kas",
    "ku kur",
    "ky kir",
    "la lat",
    "lb ltz",
    "ln lin",
    "lo lao",
    "lt lit",
    "lv lav",
    "mg mlg",
    "mi mri mao",
    "mk mkd mac",
    "ml mal",
    "mn mon",
    "mr mar",
    "ms msa may",
    "mt mlt",
    "my mya bur",
    "na nau",
    "nb nob",
    "ne nep",
    "nl nld dut",
    "nn nno",
    "no nor",
    "oc oci",
    "om orm",
    "or ori",
    "pa pan",
    "pl pol",
    "ps pus",
    "pt por",
    "qu que",
    "rm roh",
    "rn run",
    "ro ron rum mol",
    "ru rus",
    "rw kin",
    "sa san",
    "sd snd",
    "sg sag",
    "si sin",
    "sk slk slo",
    "sl slv",
    "sm smo",
    "sn sna",
    "so som",
    "sq sqi alb",
    "sr srp scc",
    "ss ssw",
    "st sot",
    "su sun",
    "sv swe",
    "sw swa",
    "ta tam",
    "te tel",
    "tg tgk",
    "th tha",
    "ti tir",
    "tk tuk",
    "tl tgl fil",
    "tn tsn",
    "to ton",
    "tr tur",
    "ts tso",
    "tt tat",
    "tw twi",
    "ug uig",
    "uk ukr",
    "ur urd",
    "uz uzb",
    "vi vie",
    "vo vol",
    "wo wol",
    "xh xho",
    "yi yid",
    "yo yor",
    "za zha",
    "zh zho chi cmn yue",
    "zu zul",
};

// Codes that were changed, and what they are today.
constexpr std::array<std::array<std::string_view, 2>, 5> renamed = {
    {{"iw", "he"}, {"in", "id"}, {"ji", "yi"}, {"jw", "jv"}, {"mo", "ro"}}};

std::string_view code_in_entry(std::string_view entry) {
  constexpr std::size_t letters = 2;
  return entry.substr(name_in_entry(entry).size() + 1, letters);
}

bool is_listed(std::string_view row, std::string_view code) {
  while (!row.empty()) {
    const std::size_t end = std::min(row.find(' '), row.size());
    if (row.substr(0, end) == code)
      return true;
    row.remove_prefix(std::min(end + 1, row.size()));
  }
  return false;
}

}  // namespace

std::string language_code_of(std::string_view named) {
  // What follows a hyphen or an underscore is a country or a script.
  const std::string code = lower(named.substr(0, named.find_first_of("-_")));
  if (code.size() != 2 && code.size() != 3)
    return {};
  for (const auto& [old, now] : renamed)
    if (code == old)
      return std::string(now);
  const auto* const found =
      std::find_if(std::begin(languages), std::end(languages),
                   [&](std::string_view row) { return is_listed(row, code); });
  return found == std::end(languages) ? std::string() : std::string(found->substr(0, 2));
}

bool same_language(std::string_view a, std::string_view b) {
  const std::string code = language_code_of(a);
  return !code.empty() && code == language_code_of(b);
}

std::string_view language_entry(std::string_view named) {
  const auto* const found = std::find_if(
      language_entries.begin(), language_entries.end(),
      [&](std::string_view entry) { return same_language(code_in_entry(entry), named); });
  return found == language_entries.end() ? std::string_view() : *found;
}

std::string_view name_in_entry(std::string_view entry) {
  return entry.substr(0, entry.find(' '));
}

}  // namespace corvane
