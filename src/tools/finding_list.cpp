#include "tools/finding_list.h"

#include "formats/sanitized.h"
#include "platform/files/files.h"
#include "project/messages.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace corvane {
namespace {

constexpr finding_severity severities[] = {finding_severity::error, finding_severity::warning,
                                           finding_severity::note};

std::string with_capital(std::string text) {
  if (!text.empty() && text.front() >= 'a' && text.front() <= 'z')
    text.front() = static_cast<char>(text.front() - 'a' + 'A');
  return text;
}

/// A clause of the finding that is not there is left out; `end` is its full stop, if it has one.
void add_detail(std::vector<finding_detail>& details, const char* label, const std::string& text,
                const char* end = ".") {
  if (!text.empty())
    details.push_back({label, sanitized(text) + end});
}

/// The number (1-based) of the row that a title or menu of the examined disc is made of: its own,
/// or else the first one of the same files. 0 if there is none.
template <typename T, typename F>
int row_number(const std::vector<T>& examined, const std::vector<T>& rows, int number,
               F same_files) {
  const auto i = static_cast<std::size_t>(number) - 1;
  if (number < 1 || i >= examined.size())
    return 0;
  const auto is_it = [&](const T& row) { return same_files(row, examined[i]); };
  if (i < rows.size() && is_it(rows[i]))
    return number;
  const auto found = std::find_if(rows.begin(), rows.end(), is_it);
  return found == rows.end() ? 0 : static_cast<int>(found - rows.begin()) + 1;
}

/// Whether it is of a title's chapters together, of which no one is wrong by itself.
bool is_of_chapters(const finding& f) {
  return f.item.part == finding_item::part_kind::whole &&
         (f.rule.starts_with("chapter-") || f.rule == "title-too-many-chapters");
}

finding_target title_target(const finding& f, int title) {
  using part_kind = finding_item::part_kind;
  using place = finding_target::place;
  finding_target to{place::title, title, 0, 0, std::nullopt};
  if (f.item.part == part_kind::chapter || is_of_chapters(f)) {
    to.where = place::chapters;
    to.part = f.item.part_number;
  } else if (f.item.part == part_kind::subtitle) {
    to.where = place::subtitles;
    to.part = f.item.part_number;
    to.seconds = f.seconds;
  } else if (f.item.part == part_kind::command) {
    to.where = place::title_command;
  }
  return to;
}

}  // namespace

finding_list::finding_list(std::vector<finding> findings, files_read read)
    : findings_(std::move(findings)), read_(read) {
  std::stable_sort(findings_.begin(), findings_.end(),
                   [](const finding& a, const finding& b) { return a.severity > b.severity; });
}

std::size_t finding_list::count(finding_severity severity) const {
  return count_of(findings_, severity);
}

std::string finding_list::counts() const {
  std::string text;
  for (const finding_severity severity : severities) {
    const std::size_t number = count(severity);
    if (number == 0)
      continue;
    text += (text.empty() ? "" : ", ") + std::to_string(number) + " " + name_of(severity) +
            (number == 1 ? "" : "s");
  }
  return text;
}

std::string finding_list::summary() const {
  const bool nothing = findings_.empty();
  switch (read_) {
    case files_read::whole:
      return nothing ? "Nothing was found that would spoil this disc." : counts();
    case files_read::beginnings:
      return (nothing ? "Nothing was found yet" : counts()) +
             ". Only the beginnings of the files were read.";
    case files_read::some:
      break;
  }
  return nothing ? "Nothing was found before the check was stopped."
                 : counts() + ". The check was stopped before its end.";
}

std::string finding_list::headline() const {
  if (findings_.empty() || findings_.front().severity == finding_severity::note)
    return {};
  const finding& first = findings_.front();
  return counts() + ": " + place_text(first) + ": " + sanitized(first.found);
}

std::string finding_list::text() const {
  std::string all;
  for (const finding& f : findings_)
    all += text_of(f) + "\n";
  return all;
}

std::optional<std::size_t> finding_list::row_instead(const finding_list& earlier,
                                                     std::size_t before) const {
  if (findings_.empty())
    return std::nullopt;
  for (std::size_t i = before; i < earlier.findings_.size(); ++i) {
    const auto same = std::find(findings_.begin(), findings_.end(), earlier.findings_[i]);
    if (same != findings_.end())
      return static_cast<std::size_t>(same - findings_.begin());
  }
  return earlier.findings_.empty() ? 0 : findings_.size() - 1;
}

std::vector<finding_detail> details_of(const finding& f) {
  std::vector<finding_detail> details;
  add_detail(details, "", with_capital(f.found));
  add_detail(details, "Must be", f.wanted);
  add_detail(details, "A viewer would see", f.consequence);
  add_detail(details, "What to do", f.remedy);
  add_detail(details, "File", f.file, "");
  add_detail(details, "Rule", f.rule, "");
  return details;
}

finding_target target_of(const finding& f, const disc_description& examined,
                         const disc_description& rows) {
  using place = finding_target::place;
  const int number = f.item.number;
  finding_target to;
  if (f.item.whole == finding_item::whole_kind::title) {
    const int title =
        row_number(examined.titles, rows.titles, number,
                   [](const disc_title& a, const disc_title& b) { return a.streams == b.streams; });
    if (title != 0)
      to = title_target(f, title);
  } else if (f.item.whole == finding_item::whole_kind::menu) {
    to.menu = row_number(examined.menus, rows.menus, number,
                         [](const disc_menu& a, const disc_menu& b) { return a.files == b.files; });
    if (to.menu != 0)
      to.where = place::menu;
    if (to.menu != 0 && f.item.part == finding_item::part_kind::button)
      to.part = f.item.part_number;
  } else if (f.item.whole == finding_item::whole_kind::disc &&
             f.item.part == finding_item::part_kind::command) {
    to.where = place::first_play;
  } else if (f.rule.starts_with("language-")) {
    to.where = place::languages;
  }
  return to;
}

void save_text(document& doc, const file_dialog& where, const std::string& text) {
  const std::string file = doc.ask.save_file(where);
  if (file.empty() || (file_exists(file) && !may_overwrite(doc)))
    return;
  if (const failure why = write_file(file, text))
    say(doc, icon::critical,
        "The file \"" + sanitized(file) + "\" could not be written: " + sanitized(*why) + ".");
}

void save_findings(document& doc, const finding_list& findings) {
  save_text(doc, {"save the findings", "text file(*.txt)|*.txt", "findings.txt"}, findings.text());
}

}  // namespace corvane
