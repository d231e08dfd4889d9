#include "ui/robot.h"

#include "ui/display_order.h"
#include "ui/gtk_sight.h"
#include "ui/widgets/wx_text.h"

#include <gtest/gtest.h>
#include <wx/app.h>
#include <wx/clipbrd.h>
#include <wx/dataobj.h>
#include <wx/listbox.h>
#include <wx/toplevel.h>
#include <wx/window.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <thread>

namespace corvane::testing_support {
namespace {

void pause_for(std::chrono::milliseconds time) {
  std::this_thread::sleep_for(time);
}

std::string quoted(const std::string& text) {
  std::string whole = "'";
  for (const char c : text)
    whole += c == '\'' ? std::string("'\\''") : std::string(1, c);
  return whole + "'";
}

void xdotool(const std::string& arguments) {
  const std::string command = "xdotool " + arguments;
  ASSERT_EQ(std::system(command.c_str()), 0) << command;
}

/// Returns when the windows have dealt with what the pointer and the keys did: the window manager
/// passed it on, the toolkit took it from the display and drew what came of it.
void let_it_happen() {
  wait_for_window_manager();
  on_ui([] { take_from_display(); });
  on_ui([] {});                              // after the events taken
  pause_for(std::chrono::milliseconds(20));  // one picture of the toolkit's clock, and a bit
  on_ui([] {});
}

/// As xdotool wants it: in pixels of the display.
std::string at(wxPoint p) {
  static const int scale = ask_ui([] { return display_scale(); });
  return std::to_string(p.x * scale) + " " + std::to_string(p.y * scale);
}

struct last_press {
  wxPoint place;
  std::chrono::steady_clock::time_point time;
};
last_press& pressed() {
  static last_press last;
  return last;
}

/// Two clicks at one place are a double click to the toolkit unless this much time is between them.
void keep_from_double_click(wxPoint screen) {
  const wxPoint moved = screen - pressed().place;
  if (std::abs(moved.x) <= 5 && std::abs(moved.y) <= 5)
    std::this_thread::sleep_until(pressed().time + std::chrono::milliseconds(450));
}

/// The button went down there, just now: a busy display takes its time until then.
void note_press(wxPoint screen) {
  pressed() = {screen, std::chrono::steady_clock::now()};
}

/// Waits until something has stood at one place of the screen for a moment (a window manager moves
/// new windows about) and gives its middle.
wxPoint settled(const std::function<std::optional<wxPoint>()>& look, const std::string& what) {
  std::optional<wxPoint> before;
  int agreed = 0;
  const bool seen = wait_until([&] {
    const std::optional<wxPoint> now = look();
    agreed = now && now == before ? agreed + 1 : 0;
    before = now;
    return agreed >= 4;
  });
  EXPECT_TRUE(seen) << "not on the screen: " << what;
  return before.value_or(wxPoint());
}

wxPoint middle_of(const std::string& text, label_place place) {
  return settled([&] { return find_label(text, place); }, text);
}

wxWindow* find(const std::string& name, const std::string& window) {
  if (window.empty())
    return wxWindow::FindWindowByName(name);
  const wxWindow* within = wxWindow::FindWindowByName(window);
  return within == nullptr ? nullptr : wxWindow::FindWindowByName(name, within);
}

/// Types the text; what no key of the keyboard gives is pasted. A key that is made for a character
/// on the fly comes as another one when the machine is busy.
void enter_text(const std::string& text) {
  const bool on_keyboard =
      std::all_of(text.begin(), text.end(), [](char c) { return c >= ' ' && c <= '~'; });
  if (on_keyboard) {
    type_text(text);
    return;
  }
  on_ui([&text] {
    const wxClipboardLocker open;
    wxTheClipboard->SetData(new wxTextDataObject(wx_text(text)));
  });
  press("ctrl+v");
}

}  // namespace

wxPoint middle_of_row(int row, const std::string& window) {
  const wxRect place = ask_ui([&] { return control("List1", window)->GetScreenRect(); });
  const int height = ask_ui([&] { return list_row_height(*control("List1", window)); });
  return {place.x + 40, place.y + 3 + height * row + height / 2};
}

bool wait_for_dialog(const std::string& title) {
  const bool seen = wait_until([&] {
    const auto dialog = look_at_dialog();
    return dialog && dialog->title == title;
  });
  EXPECT_TRUE(seen) << "no dialog \"" << title << '"';
  wait_until(dialog_has_the_keys, 1);
  return seen;
}

void on_ui(const std::function<void()>& f) {
  auto done = std::make_shared<std::promise<void>>();
  std::future<void> finished = done->get_future();
  wxTheApp->CallAfter([&f, done] {
    f();
    done->set_value();
  });
  if (finished.wait_for(std::chrono::seconds(20)) != std::future_status::ready) {
    // The function may still run later with references to what is gone then.
    ADD_FAILURE() << "the window does not answer";
    std::abort();
  }
}

bool wait_until(const std::function<bool()>& condition, double seconds) {
  const auto end = std::chrono::steady_clock::now() + std::chrono::duration<double>(seconds);
  for (;;) {
    if (ask_ui(condition))
      return true;
    if (std::chrono::steady_clock::now() > end)
      return false;
    pause_for(std::chrono::milliseconds(15));
  }
}

bool eventually(const std::function<bool()>& condition, double seconds) {
  const auto end = std::chrono::steady_clock::now() + std::chrono::duration<double>(seconds);
  while (!condition()) {
    if (std::chrono::steady_clock::now() > end)
      return false;
    pause_for(std::chrono::milliseconds(50));
  }
  return true;
}

void hover_at(wxPoint screen) {
  xdotool("mousemove " + at(screen));
}

void click_at(wxPoint screen) {
  keep_from_double_click(screen);
  xdotool("mousemove " + at(screen));
  let_it_happen();
  xdotool("mousedown 1 mouseup 1");
  note_press(screen);
  let_it_happen();
}

void double_click_at(wxPoint screen) {
  keep_from_double_click(screen);
  xdotool("mousemove " + at(screen));
  let_it_happen();
  xdotool("click --repeat 2 --delay 60 1");
  note_press(screen);
  let_it_happen();
}

void right_click_at(wxPoint screen) {
  keep_from_double_click(screen);
  xdotool("mousemove " + at(screen));
  let_it_happen();
  xdotool("click 3");
  note_press(screen);
  let_it_happen();
}

void turn_wheel_at(wxPoint screen, wheel way, int notches) {
  xdotool("mousemove " + at(screen));
  let_it_happen();
  xdotool("click --repeat " + std::to_string(notches) + " --delay 30 " +
          (way == wheel::up ? "4" : "5"));
  let_it_happen();
}

void drag(wxPoint from, wxPoint to) {
  drag_until(from, to, nullptr);
}

void drag_until(wxPoint from, wxPoint to, const std::function<bool()>& condition) {
  constexpr int steps = 5;
  keep_from_double_click(from);
  xdotool("mousemove " + at(from));
  let_it_happen();
  xdotool("mousedown 1");
  for (int step = 1; step <= steps; ++step) {
    pause_for(std::chrono::milliseconds(20));
    xdotool("mousemove " + at(from + (to - from) * step / steps));
  }
  let_it_happen();
  // No hand holds still, and GTK does not pass on every motion of a pointer that then does.
  for (int i = 0; condition && i < 150 && !ask_ui(condition); ++i) {
    xdotool("mousemove " + at(to + wxPoint(i % 2, 0)));
    pause_for(std::chrono::milliseconds(100));
  }
  xdotool("mouseup 1");
  note_press(to);
  let_it_happen();
}

void press(const std::string& keys) {
  // A key of the window manager's own is for the window that it takes for the active one, and it
  // learns of a window that has got the keys later than that window.
  if (keys == "alt+F4") {
    const char* const agree = "[ \"$(xdotool getactivewindow)\" = \"$(xdotool getwindowfocus)\" ]";
    EXPECT_TRUE(wait_until([agree] { return std::system(agree) == 0; }));
  }
  xdotool("key --clearmodifiers " + quoted(keys));
  // The toolkit shows a button pressed for a quarter of a second before it does what a key of its
  // label asks for, and has the keyboard meanwhile.
  if (keys.rfind("alt+", 0) == 0)
    pause_for(std::chrono::milliseconds(260));
  let_it_happen();
}

void type_text(const std::string& text) {
  xdotool("type --clearmodifiers --delay 8 -- " + quoted(text));
  let_it_happen();
}

wxWindow* control(const std::string& name, const std::string& window) {
  wxWindow* found = find(name, window);
  EXPECT_NE(found, nullptr) << window << " " << name;
  return found;
}

bool is_seen(const std::string& name, const std::string& window) {
  const wxWindow* const found = find(name, window);
  return found != nullptr && found->IsShownOnScreen();
}

std::string label_of(const std::string& name) {
  return ask_ui([&] { return utf8_of(control(name)->GetLabel()); });
}

namespace {

/// The middle of the control of that name, once it stands still.
wxPoint middle_of_control(const std::string& name, const std::string& window) {
  return settled(
      [&]() -> std::optional<wxPoint> {
        const wxWindow* found = find(name, window);
        if (found == nullptr || !found->IsShownOnScreen())
          return std::nullopt;
        const wxRect place = found->GetScreenRect();
        if (place.width <= 1)
          return std::nullopt;
        return wxPoint(place.x + place.width / 2, place.y + place.height / 2);
      },
      name);
}

}  // namespace

void click_control(const std::string& name, const std::string& window) {
  click_at(middle_of_control(name, window));
}

void turn_wheel_over(const std::string& name, wheel way, const std::string& window) {
  turn_wheel_at(middle_of_control(name, window), way);
}

void click_row(int row, const std::string& window) {
  click_at(middle_of_row(row, window));
}

void double_click_row(int row, const std::string& window) {
  double_click_at(middle_of_row(row, window));
}

bool window_comes(const std::string& name) {
  const bool seen = wait_until([&] {
    const wxWindow* window = wxWindow::FindWindowByName(name);
    return window != nullptr && window->IsShownOnScreen();
  });
  let_it_happen();
  // Not every window gets the keys, and the window manager gives them after it has shown it.
  wait_until(
      [&] {
        auto* window = dynamic_cast<wxTopLevelWindow*>(wxWindow::FindWindowByName(name));
        return window == nullptr || window->IsActive();
      },
      0.2);
  return seen;
}

bool window_goes(const std::string& name) {
  return wait_until([&] { return wxWindow::FindWindowByName(name) == nullptr; });
}

std::vector<std::string> list_rows(const std::string& window) {
  return ask_ui([&] {
    std::vector<std::string> all;
    for (const wxString& row : dynamic_cast<wxListBox*>(control("List1", window))->GetStrings())
      all.push_back(utf8_of(row));
    return all;
  });
}

void click_menu(const std::string& menu, const std::string& item) {
  click_at(middle_of(menu, label_place::menu));
  click_menu_item(item);
}

void click_menu_item(const std::string& item) {
  click_at(middle_of(item, label_place::menu));
}

void click_tool(const std::string& caption) {
  click_at(middle_of(caption, label_place::toolbar));
}

void click_tool_arrow(const std::string& caption) {
  click_at(settled([&] { return find_tool_arrow(caption); }, "arrow of " + caption));
}

void click_button(const std::string& label) {
  click_at(middle_of(label, label_place::button));
}

std::optional<seen_dialog> top_dialog() {
  return ask_ui(look_at_dialog);
}

seen_dialog answer_message(const std::string& text, const std::string& button) {
  std::optional<seen_dialog> seen;
  const bool came = wait_until([&] {
    seen = look_at_dialog();
    return seen && seen->text == text;
  });
  EXPECT_TRUE(came) << "no message \"" << text << "\"; instead "
                    << (seen ? "\"" + seen->text + "\" " + seen->title : std::string("none"));
  if (!came)
    return seen.value_or(seen_dialog());
  click_at(middle_of(button, label_place::button));
  EXPECT_TRUE(wait_until([&] {
    const auto now = look_at_dialog();
    return !now || now->text != text;
  })) << "still there: "
      << text;
  return *seen;
}

seen_dialog answer_message_with(const std::string& part, const std::string& button) {
  std::optional<seen_dialog> seen;
  const bool came = wait_until([&] {
    seen = look_at_dialog();
    return seen && seen->text.find(part) != std::string::npos;
  });
  EXPECT_TRUE(came) << "no message with \"" << part << "\"; instead "
                    << (seen ? "\"" + seen->text + "\" " + seen->title : std::string("none"));
  return came ? answer_message(seen->text, button) : seen_dialog();
}

void answer_file(const std::string& title, const std::string& path) {
  if (!wait_for_dialog(title))
    return;
  const bool saves = top_dialog()->saves;
  if (!saves)
    press("ctrl+l");
  press("ctrl+a");
  enter_text(path);
  EXPECT_TRUE(wait_until([&] { return chosen_path() == path; })) << path;
  pause_for(std::chrono::milliseconds(150));
  // The list of completions that drops down may take the first Return for itself.
  const auto closed = [&title] {
    const auto now = look_at_dialog();
    return !now || now->title != title;
  };
  press("Return");
  if (!wait_until(closed, 1.5))
    press("Return");
  EXPECT_TRUE(wait_until(closed)) << title << " does not take " << path;
}

void cancel_dialog(const std::string& title) {
  if (!wait_for_dialog(title))
    return;
  press("Escape");
  EXPECT_TRUE(wait_until([&] {
    const auto now = look_at_dialog();
    return !now || now->title != title;
  })) << title;
}

void answer_input(const std::string& title, const std::string& text) {
  if (!wait_for_dialog(title))
    return;
  press("ctrl+a");
  type_text(text);
  press("Return");
  EXPECT_TRUE(no_dialog());
}

bool no_dialog() {
  return wait_until([] { return !look_at_dialog().has_value(); });
}

void screenshot(const std::string& name) {
  const char* folder = std::getenv("CORVANE_SCREENSHOTS");
  if (folder == nullptr)
    return;
  pause_for(std::chrono::milliseconds(300));
  const std::string command =
      "import -window root " + quoted(std::string(folder) + "/" + name + ".png");
  EXPECT_EQ(std::system(command.c_str()), 0) << command;
}

}  // namespace corvane::testing_support
