// The findings of a project as windows show them, without a window: their order, what is said of
// them in a line, what is copied and saved, and the place that each one leads to.
#pragma once

#include "disc/disc_description.h"
#include "disc/finding.h"
#include "project/document.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace corvane {

/// How much of the project's files was looked at.
enum class files_read {
  beginnings,  ///< only what stands at their beginnings
  whole,       ///< each to its end
  some,        ///< the check was stopped: of some only the beginning
};

class finding_list {
 public:
  finding_list() = default;
  finding_list(std::vector<finding> findings, files_read read);

  /// Errors first, then warnings, then notes; each in the order in which they were given.
  const std::vector<finding>& findings() const { return findings_; }
  std::size_t count(finding_severity severity) const;

  /// "2 errors, 1 warning"; of what there is none is not spoken. Empty when there is nothing.
  std::string counts() const;

  /// The sentence above the list, also when there is nothing, and how far it can be relied on.
  std::string summary() const;

  /// The line under the list of titles, "2 errors, 1 warning: title 2: the video is PAL": what
  /// there is and the first of it. Empty unless there is an error or a warning: a project that is
  /// in order may well have notes.
  std::string headline() const;

  /// All findings as text, LF at the end of each line.
  std::string text() const;

  /// The row (0-based) that takes the place of row `before` of `earlier`: the same finding, or when
  /// that one is gone the next that is still there, or the last one. Nothing if there is none.
  std::optional<std::size_t> row_instead(const finding_list& earlier, std::size_t before) const;

  bool operator==(const finding_list&) const = default;

 private:
  std::vector<finding> findings_;
  files_read read_ = files_read::beginnings;
};

/// What is told of a finding beside its row: a label, empty for the finding itself, and its text.
struct finding_detail {
  std::string label, text;
  bool operator==(const finding_detail&) const = default;
};
std::vector<finding_detail> details_of(const finding& f);

/// Where a finding is looked at and repaired.
struct finding_target {
  enum class place {
    none,           ///< it is about the disc as a whole, or what it was about is gone
    title,          ///< the title in the main window's list
    chapters,       ///< the title's chapter dialog
    languages,      ///< the dialog of language tags
    subtitles,      ///< the title's subtitles dialog
    menu,           ///< the menu editor
    title_command,  ///< the title's command in the dialog of navigation commands
    first_play,     ///< the disc's first command, there
  };
  place where = place::none;
  int title = 0;  ///< row of the project, 1-based; 0: none
  int menu = 0;   ///< likewise
  /// The button or subtitle, or the line of the chapter, 1-based; 0: none of them in particular.
  int part = 0;
  std::optional<double> seconds;  ///< of a subtitle's cue, from the beginning of the title
  bool operator==(const finding_target&) const = default;
};

/// The place of a finding. `examined` is the disc that it was found in, whose titles and menus need
/// not have the numbers of the project's rows: hand-edited XML gives its own, and rows may have
/// been moved or removed since. `rows` is the disc of the rows as they are.
finding_target target_of(const finding& f, const disc_description& examined,
                         const disc_description& rows);

/// Asks for the file and before overwriting, and tells when it cannot be written.
void save_text(document& doc, const file_dialog& where, const std::string& text);

/// "save as text...": the same of the findings.
void save_findings(document& doc, const finding_list& findings);

}  // namespace corvane
