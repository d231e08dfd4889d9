// The menu picker `menuselect` without its window: what it lists and what a double click does.
//
// The window keeps it while it is shown; it looks at the project once, when it is made. The main
// window is disabled meanwhile, so that the list stays right.
#pragma once

#include "project/document.h"

#include <string>
#include <vector>

namespace corvane {

/// Captions of the picker. What a double click does depends on them.
inline constexpr const char* picker_default_caption = "please select menu";
inline constexpr const char* picker_edit_caption = "Please select menu to edit";
inline constexpr const char* picker_erase_caption = "Please select menu to erase";

class menu_picker {
 public:
  explicit menu_picker(document& doc, std::string caption = picker_default_caption);

  const std::string& caption() const { return caption_; }

  /// "menu 1:intro.m2v(with audio) (3 buttons)", one for each menu. The first is preselected.
  const std::vector<std::string>& entries() const { return entries_; }

  /// Double click on entry `i` (0-based); the window closes then. True: the editor is to be shown
  /// for menu project::indexer and its buttons recalled. False: the menu was erased. An entry that
  /// is not there changes nothing.
  bool confirm(int i);

 private:
  document& doc_;
  std::string caption_;
  std::vector<std::string> entries_;
};

}  // namespace corvane
