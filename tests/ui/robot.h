// A user at the display: looks at what is on the screen, moves the real pointer, presses real keys.
//
// The windows run in the main thread, the tests in another. What the tests read of a window they
// read in the main thread (on_ui), which works while a dialog is open too.
#pragma once

#include <wx/gdicmn.h>

#include <functional>
#include <future>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

class wxWindow;

namespace corvane::testing_support {

/// Runs a function in the main thread; fails the test when that does not happen in 20 seconds.
void on_ui(const std::function<void()>& f);

/// The same for a function with a result.
template <typename F>
auto ask_ui(F f) -> decltype(f()) {
  decltype(f()) result{};
  on_ui([&] { result = f(); });
  return result;
}

/// Waits until a condition, tried in the main thread, holds. False when it did not in time.
bool wait_until(const std::function<bool()>& condition, double seconds = 15);

/// The same for a condition that is tried in the test's own thread, as one that asks the windows.
bool eventually(const std::function<bool()>& condition, double seconds = 30);

// The pointer and the keys.
void click_at(wxPoint screen);
void double_click_at(wxPoint screen);
void right_click_at(wxPoint screen);
void hover_at(wxPoint screen);
void drag(wxPoint from, wxPoint to);  ///< in a few steps, as a hand does
/// Holds it there until a condition, tried in the main thread, holds.
void drag_until(wxPoint from, wxPoint to, const std::function<bool()>& condition);
enum class wheel { up, down };
void turn_wheel_at(wxPoint screen, wheel way, int notches = 1);
void press(const std::string& keys);  ///< as xdotool names them: "ctrl+s", "Return"
void type_text(const std::string& text);

// A control's name is looked for in `window` (the name of one), the first of them otherwise.

/// Clicks on the middle of the control of that name, which must be on the screen.
void click_control(const std::string& name, const std::string& window = "");

/// Turns the wheel over the middle of the control of that name, one notch.
void turn_wheel_over(const std::string& name, wheel way, const std::string& window = "");

/// Clicks on a row (0-based) of the list `List1`, or on the empty place below the rows.
void click_row(int row, const std::string& window = "");
void double_click_row(int row, const std::string& window = "");

/// The middle of its left part.
wxPoint middle_of_row(int row, const std::string& window = "");

/// The control of that name; only for use in the main thread.
wxWindow* control(const std::string& name, const std::string& window = "");

/// Whether a control of that name is there and can be seen; only for use in the main thread.
bool is_seen(const std::string& name, const std::string& window = "");

/// The control's label.
std::string label_of(const std::string& name);

/// Whether a window of that name is on the screen, waited for; whether it is gone, waited for.
bool window_comes(const std::string& name);
bool window_goes(const std::string& name);

/// The rows of the list `List1` as they are shown.
std::vector<std::string> list_rows(const std::string& window = "");

/// Opens a menu of the menu bar and clicks on one of its items.
void click_menu(const std::string& menu, const std::string& item);

/// Clicks on the toolbar's button of that caption, or on the arrow beside it.
void click_tool(const std::string& caption);
void click_tool_arrow(const std::string& caption);

/// Clicks on the button of that label.
void click_button(const std::string& label);

/// Clicks on an item of the drop-down that is open.
void click_menu_item(const std::string& item);

/// A message box or another dialog as it stands on the screen.
struct seen_dialog {
  std::string title;
  std::string text;     ///< of a message box
  std::string picture;  ///< of a message box: "info", "warning", "error", "question", "none"
  std::vector<std::string> buttons;
  std::string over;  ///< name of the window that it belongs to
  bool chooses_file = false;
  std::string folder;  ///< that a file dialog shows
  bool saves = false;
};

/// The dialog that is on top; nothing when there is none.
std::optional<seen_dialog> top_dialog();

/// Waits for a message box with this text and clicks on the button of that label. Gives what was
/// seen of it.
seen_dialog answer_message(const std::string& text, const std::string& button);

/// Likewise, for a text that holds this part.
seen_dialog answer_message_with(const std::string& part, const std::string& button);

/// Waits for a dialog with this title; false, with a failed test, when none comes.
bool wait_for_dialog(const std::string& title);

/// Waits for a file dialog with this title, types the path and accepts.
void answer_file(const std::string& title, const std::string& path);

/// Waits for a dialog with this title and presses Escape.
void cancel_dialog(const std::string& title);

/// Waits for an input box with this title, replaces its text and accepts.
void answer_input(const std::string& title, const std::string& text);

/// Whether no dialog is on the screen, waited for.
bool no_dialog();

/// Writes a picture of the screen beside the tests' other results when CORVANE_SCREENSHOTS names a
/// folder; else does nothing.
void screenshot(const std::string& name);

}  // namespace corvane::testing_support
