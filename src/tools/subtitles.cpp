#include "tools/subtitles.h"

#include "formats/sanitized.h"
#include "formats/text.h"
#include "platform/files/paths.h"
#include "project/messages.h"
#include "project/picked_file.h"
#include "project/subtitle_file.h"
#include "project/title_rows.h"

#include <utility>

namespace corvane {
namespace {

file_dialog subtitle_dialog() {
  file_dialog dialog;
  dialog.title = "open compatible text subtitles";
  dialog.filter =
      "text subtitles(*.sub, *.srt, *.ssa, *.smi, *.rt, *.txt, *.aqt, *.jss, *.js)|*.sub; *.srt; "
      "*.ssa; *.smi; *.rt; *.txt; *.aqt; *.jss; *.js";
  return dialog;
}

/// The character set of a file that tells its own, if the user wants it read so. Read as the set
/// that stands in the settings it would show wrong letters without a word.
std::optional<std::string> agreed_unicode(document& doc, const std::string& stored,
                                          const std::string& charset) {
  const std::string path = native_from_stored(stored);
  const auto file = subtitle_file::read(path);
  if (!file || file->unicode().empty() || file->unicode() == file->set_read(charset))
    return std::nullopt;
  const std::string set = file->unicode();
  message_box question{"\"" + sanitized(path) + "\" is " + set + " text.  Read it as " + set +
                           " instead of " + sanitized_short(charset) + "?",
                       icon::exclamation, buttons::yes_no, program_name};
  question.enter_answers_yes = true;  // with no the file cannot be read
  return doc.ask.message(question) == answer::yes ? std::optional(set) : std::nullopt;
}

}  // namespace

const std::array<std::string_view, 23> charact_items = {
    "ISO-8859-1", "ISO-8859-2",  "ISO-8859-3",  "ISO-8859-5",  "ISO-8859-6",  "ISO-8859-7",
    "ISO-8859-8", "ISO-8859-9",  "ISO-8859-10", "ISO-8859-13", "ISO-8859-15", "KOI8-R",
    "SHIFT_JIS",  "ISO-2022-JP", "EUC-JP",      "CP1250",      "CP1251",      "CP1252",
    "CP1254",     "CP850",       "MACINTOSH",   "BIG5",        "BIG5-HKSCS"};

std::optional<Subtitles> Subtitles::open(document& doc, font_list fonts) {
  if (custom(doc) != 1)
    return std::nullopt;
  const auto row = selected_title(doc.p);
  if (!row) {
    say(doc, icon::exclamation, "Please select a title to add a subtitle to.");
    return std::nullopt;
  }
  if (is_muxed(doc.p.List1[*row])) {
    say(doc, icon::exclamation,
        "Unable to add subtitles to already muxed files, please de-mux if you wish to add "
        "subtitles.");
    return std::nullopt;
  }
  return Subtitles(doc, *row, std::move(fonts));
}

Subtitles::Subtitles(document& doc, std::size_t title, font_list fonts)
    : doc_(&doc), title_(title), fonts_(std::move(fonts)) {
  const int number = static_cast<int>(title) + 1;
  row_to_write(doc.p.subtitleoptions, number, default_subtitleoptions(doc.p.globalregion));
  suboptions_ = title_settings_rows(doc.p, number, subtitle_paths(files_row()).size());
  select(0);
}

std::string& Subtitles::files_row() {
  return row_to_write(doc_->p.subtitledata, static_cast<int>(title_) + 1,
                      std::string(no_subtitles));
}

std::string Subtitles::label() const {
  return "Subtitles for: " + doc_->p.List1[title_];
}

std::vector<std::string> Subtitles::list1() const {
  std::vector<std::string> names = subtitle_paths(doc_->p.subtitledata[title_]);
  for (std::string& name : names)
    name = std::string(file_name_of(name));
  if (names.empty())
    names.emplace_back(no_subtitles);
  return names;
}

std::optional<std::string> Subtitles::file() const {
  const std::vector<std::string> paths = subtitle_paths(doc_->p.subtitledata[title_]);
  const auto row = static_cast<std::size_t>(selected_);
  return row < paths.size() ? std::optional(native_from_stored(paths[row])) : std::nullopt;
}

std::string Subtitles::video() const {
  const std::string& streams = doc_->p.List11[title_];
  return native_from_stored(std::string_view(streams).substr(0, streams.find('/')));
}

const std::string& Subtitles::region() const {
  return doc_->p.globalregion;
}

std::optional<std::size_t> Subtitles::fontface() const {
  return fonts_.index_of(shown_[subtitle_field::font_file]);
}

void Subtitles::select(int row) {
  if (row < 0 || row >= static_cast<int>(list1().size()))
    return;
  selected_ = row;
  shown_ = parse_subtitle_settings(suboptions_[static_cast<std::size_t>(row)]);
  look_at_file();
}

void Subtitles::look_at_file() {
  told_set_.clear();
  if (const auto path = file())
    if (const auto looked_at = subtitle_file::read(*path))
      told_set_ = looked_at->unicode();
}

std::vector<std::string> Subtitles::character_sets() const {
  std::vector<std::string> sets(charact_items.begin(), charact_items.end());
  if (!told_set_.empty())
    sets.push_back(told_set_);
  return sets;
}

void Subtitles::change(subtitle_field field, const std::string& text) {
  if (text == shown_[field])
    return;
  if (const auto why = why_not_a_subtitle_field(text)) {
    say(*doc_, icon::exclamation,
        std::string("The ") + name_of(field) + " \"" + sanitized_short(text) +
            "\" cannot be used: it " + *why + ".");
    return;
  }
  shown_[field] = text;
  suboptions_[static_cast<std::size_t>(selected_)] = subtitle_settings_text(shown_);
}

void Subtitles::pick_font(std::size_t row) {
  if (row < fonts_.fonts().size())
    change(subtitle_field::font_file, fonts_.fonts()[row].file);
}

void Subtitles::add_file() {
  const auto file = pick_file(*doc_, subtitle_dialog(), file_use::subtitles);
  if (!file)
    return;
  std::string& row = files_row();
  // Settings beyond the files belong to none: what comes next must be the new file's.
  const std::size_t files = subtitle_paths(row).size();
  if (files > 0) {
    suboptions_.resize(files);
    suboptions_.push_back(std::string(suboptions_.back()));
  }
  row = with_subtitle(row, *file);
  doc_->p.saved = 0;
  std::string& settings_row = suboptions_[files];
  subtitle_settings settings = parse_subtitle_settings(settings_row);
  std::string& charset = settings[subtitle_field::character_set];
  if (const auto unicode = agreed_unicode(*doc_, *file, charset)) {
    charset = *unicode;
    settings_row = subtitle_settings_text(settings);
  }
  select(static_cast<int>(files));
}

void Subtitles::reset() {
  files_row() = no_subtitles;
  suboptions_.erase(suboptions_.begin(), suboptions_.end() - 1);
  select(0);
  doc_->p.saved = 0;
}

void Subtitles::accept() {
  keep_in(doc_->p);
  doc_->p.saved = 0;
  dvdsize(*doc_);
}

void Subtitles::keep_in(project& copy) const {
  row_to_write(copy.subtitleoptions, static_cast<int>(title_) + 1, {}) =
      subtitle_options_text(suboptions_);
}

}  // namespace corvane
