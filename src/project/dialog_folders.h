// Where file dialogs open: where the user is now, or was with a dialog of that kind the last time.
#pragma once

#include "platform/settings/settings.h"
#include "project/prompts.h"

#include <map>
#include <string>

namespace corvane {

class dialog_folders {
 public:
  /// `first` (native path): where dialogs open that nothing is remembered for.
  dialog_folders(settings& prefs, std::string first);

  /// The folder (native path) that a dialog opens in, the first of these that is still there: the
  /// one that it asks for; the one where a dialog of its kind was left by this program; where any
  /// dialog was left; where one of its kind was left by an earlier program; else the first.
  std::string folder_for(const file_dialog& dialog);

  /// The user chose a file (native, absolute) in it, or typed its path.
  void left_at(const file_dialog& dialog, const std::string& path);

  /// Where the user is, for a dialog of no kind.
  const std::string& last() const { return last_; }

 private:
  settings& prefs_;
  std::string last_;
  bool moved_ = false;  ///< `last_` is of a dialog of this program
  std::map<std::string, std::string> by_kind_;
  std::map<std::string, std::string> earlier_;  ///< of an earlier program; empty: it is not there
};

}  // namespace corvane
