#include "windows/window_program.h"

#include "platform/files/program_folder.h"
#include "platform/text/utf16_windows.h"

#include <array>
#include <chrono>
#include <filesystem>
#include <iterator>
#include <thread>
#include <utility>

namespace corvane::testing_support {
namespace {

namespace fs = std::filesystem;

constexpr UINT answer_milliseconds = 20000;
constexpr const char* main_caption = "Corvane 0.997 - 1/2/2005";

/// A message's answer; 0 when the window does not answer.
LRESULT ask(HWND window, UINT message, WPARAM first = 0, LPARAM second = 0) {
  DWORD_PTR answer = 0;
  ::SendMessageTimeoutW(window, message, first, second, SMTO_NORMAL, answer_milliseconds, &answer);
  return static_cast<LRESULT>(answer);
}

std::string class_of(HWND window) {
  std::array<wchar_t, 256> name{};
  ::GetClassNameW(window, name.data(), static_cast<int>(name.size()));
  return utf8_of_utf16(name.data());
}

std::vector<std::string> texts_of(HWND list, UINT count, UINT length, UINT get) {
  std::vector<std::string> all;
  const LRESULT rows = ask(list, count);
  for (LRESULT row = 0; row < rows; ++row) {
    const auto number = static_cast<WPARAM>(row);
    std::wstring text(static_cast<std::size_t>(ask(list, length, number)) + 1, L'\0');
    ask(list, get, number, reinterpret_cast<LPARAM>(text.data()));
    all.push_back(utf8_of_utf16(text.c_str()));
  }
  return all;
}

struct wanted {
  DWORD process;
  std::string kind, text;
  HWND found = nullptr;
};

BOOL CALLBACK look_at_control(HWND control, LPARAM to) {
  auto* w = reinterpret_cast<wanted*>(to);
  if (class_of(control) != w->kind || (!w->text.empty() && text_of_window(control) != w->text))
    return TRUE;
  w->found = control;
  return FALSE;
}

BOOL CALLBACK look_at_window(HWND window, LPARAM to) {
  auto* w = reinterpret_cast<wanted*>(to);
  DWORD process = 0;
  ::GetWindowThreadProcessId(window, &process);
  if (process != w->process || ::IsWindowVisible(window) == 0 || text_of_window(window) != w->text)
    return TRUE;
  w->found = window;
  return FALSE;
}

}  // namespace

std::string text_of_window(HWND window) {
  std::wstring text(static_cast<std::size_t>(ask(window, WM_GETTEXTLENGTH)) + 1, L'\0');
  ask(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
  return utf8_of_utf16(text.c_str());
}

std::vector<std::string> rows_of(HWND list) {
  return texts_of(list, LB_GETCOUNT, LB_GETTEXTLEN, LB_GETTEXT);
}

std::vector<std::string> entries_of(HWND drop_down) {
  return texts_of(drop_down, CB_GETCOUNT, CB_GETLBTEXTLEN, CB_GETLBTEXT);
}

HWND find_control(HWND window, const std::string& kind, const std::string& text) {
  wanted w{0, kind, text};
  ::EnumChildWindows(window, look_at_control, reinterpret_cast<LPARAM>(&w));
  return w.found;
}

bool wait_until(const std::function<bool()>& holds, const std::string& what) {
  const auto end = std::chrono::steady_clock::now() + std::chrono::minutes(1);
  while (!holds()) {
    if (std::chrono::steady_clock::now() > end) {
      ADD_FAILURE() << "waited in vain for " << what;
      return false;
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
  }
  return true;
}

window_program::window_program() {
  const fs::path built = path_of(own_executable()).parent_path();
  const fs::path own = path_of(folder_.path("program"));
  fs::create_directories(own / "bin");
  fs::copy_file(built / "corvane.exe", own / "corvane.exe");
  fs::copy_file(built / "stand_in_conspawn.exe", own / "bin" / "conspawn.exe");
  for (const outside_tool& tool : outside_tools())
    fs::copy_file(built / "test_apps_tool.exe", own / "bin" / (tool.name + ".exe"));
}

window_program::~window_program() {
  if (info_.hProcess == nullptr)
    return;
  ::TerminateProcess(info_.hProcess, 1);
  ::WaitForSingleObject(info_.hProcess, answer_milliseconds);
  ::CloseHandle(info_.hProcess);
}

void window_program::start(const std::string& arguments) {
  const std::string program = folder_.path("program\\corvane.exe");
  std::wstring line = utf16("\"" + program + "\" " + arguments);
  STARTUPINFOW how{};
  how.cb = sizeof how;
  ASSERT_NE(::CreateProcessW(utf16(program).c_str(), line.data(), nullptr, nullptr, FALSE, 0,
                             nullptr, utf16(folder_.path()).c_str(), &how, &info_),
            0);
  ::CloseHandle(info_.hThread);
  main_ = window(main_caption);
}

HWND window_program::find(const std::string& caption) const {
  wanted w{info_.dwProcessId, {}, caption};
  ::EnumWindows(look_at_window, reinterpret_cast<LPARAM>(&w));
  return w.found;
}

HWND window_program::window(const std::string& caption) const {
  HWND found = nullptr;
  wait_until([&] { return (found = find(caption)) != nullptr; }, "the window \"" + caption + "\"");
  wait_until(
      [&] {
        ::SetForegroundWindow(found);
        return ::GetForegroundWindow() == found;
      },
      "the focus in \"" + caption + "\"");
  return found;
}

bool window_program::has_window(const std::string& caption) const {
  return find(caption) != nullptr;
}

// Not waited for: what it does may be a dialog.
void window_program::click(HWND button) {
  ::PostMessageW(button, BM_CLICK, 0, 0);
}

bool window_program::close() {
  ::PostMessageW(main_, WM_CLOSE, 0, 0);
  const bool ended = ::WaitForSingleObject(info_.hProcess, answer_milliseconds) == WAIT_OBJECT_0;
  if (ended)
    ::CloseHandle(std::exchange(info_.hProcess, nullptr));
  return ended;
}

}  // namespace corvane::testing_support
