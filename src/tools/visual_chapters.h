// The visual chapter editor `vchapters` without its window and its player: the list of chapter
// times taken from playing positions.
//
// The window makes one when it opens and keeps it until it closes. The chapter dialog, whose text
// accept() replaces, and the prompts must live as long.
#pragma once

#include "project/document.h"
#include "tools/chapters.h"

#include <optional>
#include <string>
#include <vector>

namespace corvane {

class vchapters {
 public:
  /// `vedit`: shows the note on how exact times are, then lists the dialog's lines that are longer
  /// than 3 characters.
  vchapters(document& doc, chapter& dialog);

  /// Native path of the video to play.
  std::string video() const { return dialog_->video(); }

  const std::vector<std::string>& List1() const { return List1_; }
  int selected() const { return selected_; }  ///< row of `List1`, 0-based; -1: none

  /// A row that is not there is no change.
  void select(int row);

  /// `Command1`, "add chapter": the playing position (seconds) as a row at the end.
  void add(double seconds);

  /// Double click on a row: the position (seconds) to play from. Returns nullopt if the row is not
  /// there or no time.
  std::optional<double> position_of(int row) const;

  /// Whether a disc will not have the chapter of a row, which stands behind one of a later time.
  bool left_out(int row) const;

  /// `remove`: the selected row goes, but never the first one.
  void remove();

  /// The rows as a chapter text.
  std::string text() const;

  /// `accept`: the rows replace the chapter dialog's text; the window closes.
  void accept();

 private:
  chapter* dialog_;
  std::vector<std::string> List1_;
  int selected_ = -1;
};

}  // namespace corvane
