#include "platform/files/files.h"
#include "platform/files/paths.h"
#include "platform/files/user_folders_posix.h"
#include "platform/settings/ini_text.h"
#include "platform/settings/settings_store.h"

#include <cstdint>
#include <map>
#include <utility>

namespace corvane {
namespace {

constexpr const char* section = "preferences";
constexpr std::uintmax_t largest_file = 1u << 20;

/// Values that were set are kept in memory, those that were not are read from the file as it is at
/// that moment. A write changes one line of the file as it then is, so two windows that change
/// different preferences do not undo each other.
class ini_settings : public settings {
 public:
  explicit ini_settings(std::string path) : path_(std::move(path)) {}

  std::string get(std::string_view key) const override {
    if (const auto own = unwritten_.find(key); own != unwritten_.end())
      return own->second;
    const auto text = read_file(path_, largest_file);
    return text ? ini_value(*text, section, key).value_or(std::string()) : std::string();
  }

  void set(std::string_view key, std::string_view value) override {
    if (write(key, value))
      unwritten_.erase(std::string(key));
    else
      unwritten_[std::string(key)] = value;
  }

 private:
  bool write(std::string_view key, std::string_view value) const {
    std::string old;
    if (file_exists(path_)) {
      const auto text = read_file(path_, largest_file);
      // A file that cannot be read is not ours to replace.
      if (!text)
        return false;
      old = *text;
    }
    if (ini_value(old, section, key) == value)
      return true;
    const std::string folder = text_of(path_of(path_).parent_path());
    return !make_folders(folder) && !write_file(path_, with_ini_value(old, section, key, value));
  }

  std::string path_;
  std::map<std::string, std::string, std::less<>> unwritten_;
};

}  // namespace

std::string user_settings_place() {
  // Relative values are to be ignored, says the XDG base directory text.
  if (const std::string config = environment("XDG_CONFIG_HOME"); is_absolute(config))
    return join_path(config, "corvane/preferences");
  return join_path(home_folder(), ".config/corvane/preferences");
}

std::unique_ptr<settings> settings_at(const std::string& place) {
  return std::make_unique<ini_settings>(place);
}

std::unique_ptr<settings> user_settings() {
  return settings_at(user_settings_place());
}

}  // namespace corvane
