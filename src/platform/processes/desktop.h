// Handing a file to another program of the user's: the web browser, the text editor, the registry
// editor; and the desktop's own small programs that note a file type.
//
// What is shown or edited is not waited for: the programs outlive this one. A failure is that the
// program could not be started; what becomes of the file afterwards is between it and the user.
#pragma once

#include "platform/result.h"

#include <memory>
#include <string>
#include <vector>

namespace corvane {

/// Where the user's own data and configuration stand (native, absolute): $XDG_DATA_HOME or
/// ~/.local/share, $XDG_CONFIG_HOME or ~/.config. Both empty on Windows, where the registry is.
struct desktop_folders {
  std::string data;
  std::string config;
};
desktop_folders user_desktop_folders();

class desktop {
 public:
  virtual ~desktop() = default;

  /// Opens a page (native path) in the user's browser: explorer.exe, maximized; xdg-open.
  virtual failure show_page(const std::string& file) = 0;

  /// Shows a folder (native path) in the user's file manager.
  virtual failure show_folder(const std::string& folder) = 0;

  /// Plays a disc: `disc` (native path) is the folder that holds VIDEO_TS, or an image. Linux: the
  /// first of some players that is installed. Windows: the program that opens such files.
  virtual failure play_disc(const std::string& disc) = 0;

  /// Opens a text in the user's editor, whatever its name ends in: notepad.exe; what the desktop
  /// opens plain text with, and xdg-open where that cannot be started.
  virtual failure edit_text(const std::string& file) = 0;

  /// Windows: hands a registry script to regedit, which asks the user. Declining is no failure.
  virtual failure import_registry(const std::string& file) = 0;

  /// Linux: runs a program found on PATH with its arguments and waits; a failure too when it ends
  /// with a status other than 0.
  virtual failure run(const std::vector<std::string>& words) = 0;
};

std::unique_ptr<desktop> make_desktop();

}  // namespace corvane
