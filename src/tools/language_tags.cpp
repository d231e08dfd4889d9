#include "tools/language_tags.h"

#include "project/language_rows.h"

#include <algorithm>
#include <cstddef>

namespace corvane {

const std::array<std::string_view, 139> language_entries = {
    "ABKHAZIAN AB ",     "AFAN(OROMO) OM",    "AFAR AA",         "AFRIKAANS AF ",
    "ALBANIAN SQ ",      "AMHARIC AM ",       "ARABIC AR",       "ARMENIAN HY",
    "ASSAMESE AS",       "AYMARA AY",         "AZERBAIJANI AZ ", "BASHKIR BA",
    "BASQUE EU",         "BENGALI BN",        "BANGLA BN",       "BHUTANI DZ",
    "BIHARI BH",         "BISLAMA BI",        "BRETON BR",       "BULGARIAN BG",
    "BURMESE MY",        "BYELORUSSIAN BE",   "CAMBODIAN KM",    "CATALAN CA",
    "CHINESE ZH",        "CORSICAN CO",       "CROATIAN HR",     "CZECH CS",
    "DANISH DA ",        "DUTCH NL",          "ENGLISH EN",      "ESPERANTO EO",
    "ESTONIAN ET ",      "FAROESE FO ",       "FIJI FJ ",        "FINNISH FI",
    "FRENCH FR",         "FRISIAN FY",        "GALICIAN GL",     "GEORGIAN KA",
    "GERMAN DE ",        "GREEK EL ",         "GREENLANDIC KL ", "GUARANI GN ",
    "GUJARATI GU",       "HAUSA HA",          "HEBREW IW",       "HINDI HI",
    "HUNGARIAN HU",      "ICELANDIC IS ",     "INDONESIAN IN",   "INTERLINGUA IA",
    "INTERLINGUE IE",    "INUPIAK IK",        "IRISH GA",        "ITALIAN IT",
    "JAPANESE JA ",      "JAVANESE JV",       "KANNADA KN ",     "KASHMIRI KS",
    "KAZAKH KK",         "KINYARWANDA RW",    "KIRGHIZ KY",      "KURUNDI RN",
    "KOREAN KO",         "KURDISH KU",        "LAOTHIAN LO ",    "LATIN LA",
    "LATVIAN LV",        "LETTISH LV",        "LINGALA LN",      "LITHUANIAN LT",
    "MACEDONIAN MK",     "MALAGASY MG",       "MALAY MS",        "MALAYALAM ML",
    "MALTESE MT",        "MAORI MI",          "MARATHI MR ",     "MOLDAVIAN MO",
    "MONGOLIAN MN",      "NAURU NA",          "NEPALI NE ",      "NORWEGIAN NO",
    "OCCITAN OC",        "ORIYA OR",          "PASHTO PS",       "PUSHTO PS",
    "PERSIAN(farsi) FA", "POLISH PL",         "PORTUGUESE PT",   "PUNJABI PA",
    "QUECHUA QU",        "RHAETO-ROMANCE RM", "ROMANIAN RO",     "RUSSIAN RU",
    "SAMOAN SM",         "SANGHO SG",         "SANSKRIT SA",     "SCOTS-GAELIC GD",
    "SERBIAN SR",        "SERBO-CROATIAN SH", "SESOTHO ST",      "SETSWANA TN",
    "SHONA SN",          "SINDHI SD",         "SINGHALESE SI",   "SISWATI SS",
    "SLOVAK SK",         "SLOVENIAN SL",      "SOMALI SO",       "SPANISH ES",
    "SUNDANESE SU",      "SWAHILI SW",        "SWEDISH SV",      "TAGALOG TL",
    "TAJIK TG",          "TAMIL TA",          "TATAR TT",        "TELUGU TE",
    "THAI TH",           "TIBETAN BO",        "TIGRINYA TI",     "TONGA TO",
    "TSONGA TS",         "TURKISH TR",        "TURKMEN TK ",     "TWI TW",
    "UKRAINIAN UK",      "URDU UR",           "UZBEK UZ",        "VIETNAMESE VI",
    "VOLAPUK VO",        "WELSH CY",          "WOLOF WO",        "XHOSA XH ",
    "YIDDISH JI ",       "YORUBA YO ",        "ZULU ZU"};

std::optional<language> language::open(document& doc) {
  if (custom(doc) != 1)
    return std::nullopt;
  return language(doc);
}

language::language(document& doc) : doc_(&doc), List1_(doc.p.languagetags) {}

void language::select(int row) {
  if (row < 0 || row >= static_cast<int>(List1_.size()))
    return;
  selected_ = row;
  Combo1_ = language_in(List1_[static_cast<std::size_t>(row)]);
}

std::string language::stream() const {
  if (selected_ < 0)
    return {};
  const auto selected = List1_.begin() + selected_;
  const bool audio = is_audio_tag(*selected);
  const auto before = std::count_if(List1_.begin(), selected, [audio](const std::string& row) {
    return is_audio_tag(row) == audio;
  });
  return (audio ? "audio stream " : "subtitle stream ") + std::to_string(before + 1) +
         " of each title";
}

void language::add_audio_tag() {
  add(disc_language::stream_kind::audio);
}

void language::add_sub_tag() {
  add(disc_language::stream_kind::subpicture);
}

void language::add(disc_language::stream_kind kind) {
  List1_.push_back(language_row(kind, new_language));
  select(static_cast<int>(List1_.size()) - 1);
}

void language::pick(const std::string& entry) {
  Combo1_ = entry;
  if (selected_ < 0)
    return;
  std::string& row = List1_[static_cast<std::size_t>(selected_)];
  row = with_language(row, entry);
}

void language::remove() {
  if (selected_ < 0)
    return;
  List1_.erase(List1_.begin() + selected_);
  selected_ = -1;
  select(static_cast<int>(List1_.size()) - 1);
}

void language::accept() {
  keep_in(doc_->p);
  doc_->p.saved = 0;
  dvdsize(*doc_);
}

void language::keep_in(project& copy) const {
  copy.languagetags = List1_;
}

}  // namespace corvane
