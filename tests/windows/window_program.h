// corvane.exe in a program folder of its own, used from outside as a person would: by what its
// windows show, by keys and by clicks. Needs a display.
#pragma once

#include "support/temporary_folder.h"

#include <functional>
#include <string>
#include <vector>
#include <windows.h>

namespace corvane::testing_support {

/// Text of a window or control; a message is sent, so that it may belong to another process.
std::string text_of_window(HWND window);

/// Rows of a list box, or of a drop-down list.
std::vector<std::string> rows_of(HWND list);
std::vector<std::string> entries_of(HWND drop_down);

/// The first control inside `window`, at any depth, of a class ("ListBox", "Button") and, where one
/// is given, with this text; null when there is none.
HWND find_control(HWND window, const std::string& kind, const std::string& text = {});

/// Waits, a minute at most, until it holds. Fails the test when the time runs out.
bool wait_until(const std::function<bool()>& holds, const std::string& what);

class window_program {
 public:
  /// Makes the program folder: corvane.exe, and stand-ins for all tools.
  window_program();
  /// Ends the program the hard way when it still runs.
  ~window_program();
  window_program(const window_program&) = delete;
  window_program& operator=(const window_program&) = delete;

  /// Starts it with a command line and waits for its main window.
  void start(const std::string& arguments = {});

  HWND main() const { return main_; }
  const temporary_folder& folder() const { return folder_; }

  /// Waits for a window of the program with this caption, which is in front then.
  HWND window(const std::string& caption) const;
  bool has_window(const std::string& caption) const;

  static void click(HWND button);

  /// Closes the main window; whether the program then ended.
  bool close();

 private:
  HWND find(const std::string& caption) const;

  temporary_folder folder_;
  PROCESS_INFORMATION info_{};
  HWND main_ = nullptr;
};

}  // namespace corvane::testing_support
