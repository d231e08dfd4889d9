// The dialog `navcommands` without its window: the command that each title runs when it ends (its
// post command) and the one with which the disc begins (first play).
//
// The window makes one when it opens and keeps it until it closes; the project and the prompts must
// live as long. It calls the function of each event and then shows what the functions below give.
// The project is written by accept() alone.
#pragma once

#include "project/document.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

class navcommands {
 public:
  /// What the dialog starts with. Returns nullopt if the guard `custom` does not allow it, or if
  /// the dialog is shown already.
  static std::optional<navcommands> prepare(document& doc, bool already_shown = false);

  /// `List1`: for each title its entry in the title list, 20 characters, TAB, its post command, 25
  /// characters; both padded with blanks or cut.
  std::vector<std::string> List1() const;
  int selected() const { return selected_; }             ///< row of `List1`, 0-based; -1: none
  const std::string& Text1() const { return Text1_; }    ///< name of the selected title
  const std::string& Combo1() const { return Combo1_; }  ///< its post command
  const std::vector<std::string>& Combo1_items() const { return Combo1_items_; }
  const std::string& firstplay() const { return firstplay_; }
  const std::vector<std::string>& firstplay_items() const { return firstplay_items_; }

  /// Shows a row's title and command. A row that is not there is no change.
  void select(int row);

  /// `Combo1` changed or picked: the selected row gets it at once, cut to 25 characters. Text with
  /// control characters is refused with a message, here and as first play.
  void set_command(const std::string& text);
  void set_firstplay(const std::string& text);

  /// `Command1`: writes `postinfo` and `firstplay` into the project; the window closes.
  void accept();

  /// What stands here and was not accepted, into a copy of the project that is kept in case the
  /// program dies.
  void keep_in(project& copy) const;

 private:
  struct title_row {
    std::string title, command;  // as long as they are stored, not yet cut or padded
  };

  explicit navcommands(document& doc);
  void fill_commands();
  void fill_firstplay();

  document* doc_;
  std::vector<title_row> rows_;
  int selected_ = -1;
  std::string Text1_, Combo1_, firstplay_;
  std::vector<std::string> Combo1_items_, firstplay_items_;
};

}  // namespace corvane
