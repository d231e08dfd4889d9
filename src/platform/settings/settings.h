// The per-user settings store: application "Corvane", section "preferences", text keys and values.
//
// Linux: $XDG_CONFIG_HOME/corvane/preferences (else ~/.config/corvane/preferences), an INI file
// with the section [preferences]. Windows: HKEY_CURRENT_USER\Software\Corvane\preferences.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>

namespace corvane {

/// What the program asks of the store. A key that is absent reads as the empty text. A value that
/// cannot be written is forgotten when the program ends; nothing else fails.
class settings {
 public:
  virtual ~settings() = default;
  virtual std::string get(std::string_view key) const = 0;
  virtual void set(std::string_view key, std::string_view value) = 0;
};

/// Settings that last as long as the object; for tests and for the console program, which must
/// not change what the window remembers.
class memory_settings : public settings {
 public:
  std::string get(std::string_view key) const override;
  void set(std::string_view key, std::string_view value) override;

 private:
  std::map<std::string, std::string, std::less<>> values_;
};

/// The user's own store.
std::unique_ptr<settings> user_settings();

}  // namespace corvane
