// Language tags: the languages that a disc's audio and subtitle streams are labelled with, and the
// dialog `language` in which they are listed, without its window.
//
// The window makes one with open() and keeps it until it closes; the project and the prompts must
// live as long. The tags are written by accept() alone.
#pragma once

#include "disc/disc_description.h"
#include "project/document.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

/// The languages offered, as rows hold them: name, blank, two-letter code. Some end in one further
/// blank, which is kept; a few languages stand under two names, and some codes are the old ones.
extern const std::array<std::string_view, 139> language_entries;

/// What a new tag starts with.
inline constexpr std::string_view new_language = "ENGLISH EN";

class language {
 public:
  /// "edit language tags". Returns nullopt if hand-edited XML is to stay.
  static std::optional<language> open(document& doc);

  /// `List1`: "Audio tag:" or "Subtitle tag:", TAB, language. The n-th audio tag is the n-th audio
  /// stream's, the n-th subtitle tag the n-th subtitle stream's.
  const std::vector<std::string>& List1() const { return List1_; }
  int selected() const { return selected_; }             ///< row of `List1`, 0-based; -1: none
  const std::string& Combo1() const { return Combo1_; }  ///< text of the language drop-down

  /// What the selected tag is for: "audio stream 1 of each title"; empty when none is selected.
  std::string stream() const;

  /// Shows a row's language. A row that is not there is no change.
  void select(int row);

  /// `Command1`, `Command2`: a row in English at the end, selected.
  void add_audio_tag();
  void add_sub_tag();

  /// A language picked in `Combo1`: the selected row's, if there is one.
  void pick(const std::string& entry);

  /// `Command3`: removes the selected row; the last one left is selected then.
  void remove();

  /// `Command4`: the rows become the project's tags; the window closes. A missing file of the
  /// project is told and keeps nothing back.
  void accept();

  /// What stands here and was not accepted, into a copy of the project that is kept in case the
  /// program dies.
  void keep_in(project& copy) const;

 private:
  explicit language(document& doc);
  void add(disc_language::stream_kind kind);

  document* doc_;
  std::vector<std::string> List1_;
  int selected_ = -1;
  std::string Combo1_;
};

}  // namespace corvane
