// A place for a settings store that is the test's own: a file, or on Windows a key in the registry.
#pragma once

#include "support/temporary_folder.h"

#ifdef _WIN32
#include "platform/text/utf16_windows.h"

#include <windows.h>
#endif

#include <random>
#include <string>

namespace corvane::testing_support {

class settings_place {
 public:
#ifdef _WIN32
  settings_place() : name_("Software\\Corvane-test-" + std::to_string(std::random_device()())) {}
  ~settings_place() {
    ::RegDeleteTreeW(HKEY_CURRENT_USER, utf16(name_).c_str());
  }
#else
  settings_place() : name_(folder_.path("corvane/preferences")) {}
#endif
  settings_place(const settings_place&) = delete;
  settings_place& operator=(const settings_place&) = delete;

  const std::string& name() const {
    return name_;
  }

 private:
  temporary_folder folder_;
  std::string name_;
};

}  // namespace corvane::testing_support
