#include "platform/files/files.h"
#include "platform/files/paths.h"
#include "platform/processes/desktop.h"
#include "platform/text/utf16_windows.h"

#include <system_error>
#include <windows.h>
// After windows.h, which it needs.
#include <shellapi.h>

namespace corvane {
namespace {

// Through the shell, because regedit wants rights that a plain start of a process cannot give.
failure start(const wchar_t* program, const std::string& file, int show) {
  const std::wstring quoted = file.empty() ? std::wstring() : utf16("\"" + file + "\"");
  SHELLEXECUTEINFOW how{};
  how.cbSize = sizeof how;
  how.fMask = SEE_MASK_FLAG_NO_UI | SEE_MASK_NOASYNC;
  how.lpFile = program;
  how.lpParameters = quoted.c_str();
  how.nShow = show;
  if (::ShellExecuteExW(&how) != 0)
    return std::nullopt;
  const DWORD error = ::GetLastError();
  if (error == ERROR_CANCELLED)  // the user declined
    return std::nullopt;
  return utf8_of_utf16(program) + ": " + std::system_category().message(static_cast<int>(error));
}

class windows_desktop : public desktop {
 public:
  failure show_page(const std::string& file) override {
    return start(L"explorer.exe", file, SW_SHOWMAXIMIZED);
  }
  failure show_folder(const std::string& folder) override {
    return start(L"explorer.exe", folder, SW_SHOWNORMAL);
  }
  failure play_disc(const std::string& disc) override {
    const std::string tables = join_path(join_path(disc, "VIDEO_TS"), "VIDEO_TS.IFO");
    return start(utf16(file_exists(tables) ? tables : disc).c_str(), {}, SW_SHOWNORMAL);
  }
  failure edit_text(const std::string& file) override {
    return start(L"notepad.exe", file, SW_SHOWNORMAL);
  }
  failure import_registry(const std::string& file) override {
    return start(L"regedit.exe", file, SW_SHOWNORMAL);
  }
  failure run(const std::vector<std::string>& words) override {
    return words[0] + " is not for this system";
  }
};

}  // namespace

desktop_folders user_desktop_folders() {
  return {};
}

std::unique_ptr<desktop> make_desktop() {
  return std::make_unique<windows_desktop>();
}

}  // namespace corvane
