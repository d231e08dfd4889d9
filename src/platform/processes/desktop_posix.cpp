#include "platform/files/paths.h"
#include "platform/files/user_folders_posix.h"
#include "platform/processes/desktop.h"
#include "platform/processes/spawn.h"

#include <array>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <optional>
#include <spawn.h>
#include <string_view>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;  // NOLINT(readability-redundant-declaration): not in every unistd.h

namespace corvane {
namespace {

// Relative values are to be ignored, says the XDG base directory text.
std::string xdg_folder(const char* variable, const char* below_home) {
  const std::string folder = environment(variable);
  return is_absolute(folder) ? folder : join_path(home_folder(), below_home);
}

/// The name of the desktop entry that opens plain text; empty when nothing tells.
std::string text_editor_entry() {
  std::FILE* const answer = ::popen("xdg-mime query default text/plain 2>/dev/null", "re");
  if (answer == nullptr)
    return {};
  std::array<char, 256> line{};
  const bool told = std::fgets(line.data(), static_cast<int>(line.size()), answer) != nullptr;
  ::pclose(answer);
  const std::string_view name =
      told ? std::string_view(line.data()).substr(0, std::strcspn(line.data(), "\r\n"))
           : std::string_view();
  const bool plain = name.ends_with(".desktop") && !name.starts_with('-');
  return plain ? std::string(name) : std::string();
}

std::string not_installed(const std::string& name) {
  return name + " is not installed";
}

class posix_desktop : public desktop {
 public:
  ~posix_desktop() override { reap(); }

  failure show_page(const std::string& file) override { return start({"xdg-open", file}); }

  failure show_folder(const std::string& folder) override { return start({"xdg-open", folder}); }

  failure play_disc(const std::string& disc) override {
    if (command_on_path("vlc"))
      return start({"vlc", "dvd://" + disc});
    if (command_on_path("mpv"))
      return start({"mpv", "--force-window", "--dvd-device=" + disc, "dvd://"});
    if (command_on_path("mplayer"))
      return start({"mplayer", "-dvd-device", disc, "dvdnav://"});
    for (const char* const player : {"totem", "smplayer"})
      if (command_on_path(player))
        return start({player, "dvd://" + disc});
    return "none of vlc, mpv, mplayer, totem and smplayer is installed";
  }

  failure edit_text(const std::string& file) override {
    const std::string entry = text_editor_entry();
    if (!entry.empty() && command_on_path("gtk-launch"))
      // Whether the entry leads to a program that is installed, only gtk-launch finds out.
      return start(
          {"/bin/sh", "-c", R"(gtk-launch "$1" "$2" || exec xdg-open "$2")", "sh", entry, file});
    return start({"xdg-open", file});
  }

  failure import_registry(const std::string&) override { return "this system has no registry"; }

  failure run(const std::vector<std::string>& words) override {
    pipeline one;
    one.programs.push_back(words);
    if (auto path = command_on_path(words[0]))
      one.programs[0][0] = *path;
    else
      return not_installed(words[0]);
    const pipeline_result r = run_pipeline(one);
    if (r.ends.empty())
      return r.why_unusable;
    const program_end& end = r.ends[0];
    if (end.how != program_end::kind::exited)
      return words[0] + ": " + end.text;
    if (end.number != 0)
      return words[0] + " ended with status " + std::to_string(end.number);
    return std::nullopt;
  }

 private:
  // In a session of its own and without our terminal: it outlives both, and holds neither up.
  failure start(std::vector<std::string> words) {
    reap();
    const auto path =
        is_absolute(words[0]) ? std::optional<std::string>(words[0]) : command_on_path(words[0]);
    if (!path)
      return not_installed(words[0]);
    std::vector<char*> pointers;
    pointers.reserve(words.size() + 1);
    for (std::string& word : words)
      pointers.push_back(word.data());
    pointers.push_back(nullptr);
    posix_spawnattr_t how;
    posix_spawn_file_actions_t files;
    ::posix_spawnattr_init(&how);
    ::posix_spawnattr_setflags(&how, POSIX_SPAWN_SETSID);
    ::posix_spawn_file_actions_init(&files);
    for (const int standard : {0, 1, 2})
      ::posix_spawn_file_actions_addopen(&files, standard, "/dev/null", O_RDWR, 0);
    pid_t pid = -1;
    const int error = ::posix_spawn(&pid, path->c_str(), &files, &how, pointers.data(), environ);
    ::posix_spawn_file_actions_destroy(&files);
    ::posix_spawnattr_destroy(&how);
    if (error != 0)
      return words[0] + ": " + std::strerror(error);
    started_.push_back(pid);
    return std::nullopt;
  }

  /// Asks for the end of those that have ended.
  void reap() {
    std::erase_if(started_, [](pid_t pid) { return ::waitpid(pid, nullptr, WNOHANG) != 0; });
  }

  std::vector<pid_t> started_;
};

}  // namespace

desktop_folders user_desktop_folders() {
  return {xdg_folder("XDG_DATA_HOME", ".local/share"), xdg_folder("XDG_CONFIG_HOME", ".config")};
}

std::unique_ptr<desktop> make_desktop() {
  return std::make_unique<posix_desktop>();
}

}  // namespace corvane
