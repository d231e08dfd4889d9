#include "tools/subtitle_cleaning.h"

#include "formats/sanitized.h"
#include "formats/text.h"
#include "platform/files/files.h"
#include "platform/files/paths.h"
#include "project/messages.h"
#include "project/picked_file.h"
#include "project/subtitle_file.h"
#include "project/subtitle_rows.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace corvane {

bool cleaning_helps(const finding& f) {
  constexpr std::array<std::string_view, 4> rules = {"subtitle-markup-shown", "subtitle-text-lost",
                                                     "subtitle-rate-line",
                                                     "subtitle-wide-character"};
  return std::find(rules.begin(), rules.end(), f.rule) != rules.end();
}

subtitle_cleaning::subtitle_cleaning(document& doc, std::size_t title, std::size_t subtitle)
    : doc_(&doc), title_(title), subtitle_(subtitle) {}

std::optional<subtitle_cleaning> subtitle_cleaning::open(document& doc, int title, int subtitle) {
  const auto t = static_cast<std::size_t>(title) - 1, s = static_cast<std::size_t>(subtitle) - 1;
  const std::vector<std::string> paths = title > 0 && t < doc.p.subtitledata.size()
                                             ? subtitle_paths(doc.p.subtitledata[t])
                                             : std::vector<std::string>();
  if (subtitle < 1 || s >= paths.size()) {
    say(doc, icon::exclamation, "The title has no such subtitle any more.");
    return std::nullopt;
  }
  subtitle_cleaning made(doc, t, s);
  made.file_ = native_from_stored(paths[s]);
  made.copy_ = free_name_of_copy(made.file_);
  const result<subtitle_file> read = subtitle_file::read(made.file_);
  const subtitle_settings settings =
      parse_subtitle_settings(title_settings_rows(doc.p, title, paths.size())[s]);
  result<cleaned_subtitles> cleaned =
      read ? clean_subtitles(*read, settings) : result<cleaned_subtitles>::fail(read.error);
  if (!cleaned) {
    say(doc, icon::exclamation,
        sanitized_quoted(made.file_) + " cannot be cleaned: " + cleaned.error + ".");
    return std::nullopt;
  }
  made.cleaned_ = std::move(*cleaned);
  if (made.changes().empty()) {
    say(doc, icon::information,
        "There is nothing to clean in " + sanitized_quoted(made.file_) + " any more.");
    return std::nullopt;
  }
  return made;
}

std::string subtitle_cleaning::summary() const {
  const std::size_t count = changes().size();
  std::string text = count == 1 ? "1 cue" : std::to_string(count) + " cues";
  text += " of " + sanitized_quoted(native_file_name(file_)) + (count == 1 ? " holds" : " hold") +
          " what would be shown wrongly on the disc.";
  if (!cleaned_.rate.empty())
    text += " The file is made for " + sanitized_short(cleaned_.rate) +
            " pictures a second; this becomes its frame rate.";
  return text;
}

void subtitle_cleaning::choose_place() {
  file_dialog where;
  where.title = "save the cleaned subtitles";
  const std::string ending = lower_extension_of(native_file_name(copy_));
  where.filter = ending.empty() ? "all files|*" : "text subtitles(*." + ending + ")|*." + ending;
  where.preset = native_file_name(copy_);
  where.folder = text_of(path_of(copy_).parent_path());
  const std::string chosen = doc_->ask.save_file(where);
  if (!chosen.empty())
    copy_ = chosen;
}

bool subtitle_cleaning::is_written() {
  if (file_exists(copy_) && same_place(copy_, file_)) {
    say(*doc_, icon::exclamation,
        "The cleaned copy cannot be written over the file that it is made of. Please choose "
        "another name.");
    return false;
  }
  if (entry_exists(copy_) && !may_overwrite(*doc_))
    return false;
  const failure why = write_file(copy_, cleaned_.text);
  if (why)
    say(*doc_, icon::critical,
        "The file \"" + sanitized(copy_) + "\" could not be written: " + sanitized(*why) + ".");
  return !why;
}

bool subtitle_cleaning::write_and_use() {
  const std::optional<std::string> stored = stored_or_told(*doc_, copy_);
  if (!stored || !is_written())
    return false;
  use(*stored);
  return true;
}

void subtitle_cleaning::use(const std::string& stored) {
  project& p = doc_->p;
  std::vector<std::string> paths = subtitle_paths(p.subtitledata[title_]);
  std::vector<std::string> rows =
      title_settings_rows(p, static_cast<int>(title_) + 1, paths.size());
  paths[subtitle_] = stored;
  p.subtitledata[title_] = join(paths, "/");
  subtitle_settings settings = parse_subtitle_settings(rows[subtitle_]);
  settings[subtitle_field::character_set] = "UTF-8";
  if (!cleaned_.rate.empty() && !why_not_a_subtitle_field(cleaned_.rate))
    settings[subtitle_field::frame_rate] = cleaned_.rate;
  rows[subtitle_] = subtitle_settings_text(settings);
  row_to_write(p.subtitleoptions, static_cast<int>(title_) + 1, {}) = subtitle_options_text(rows);
  p.saved = 0;
  dvdsize(*doc_);
}

}  // namespace corvane
