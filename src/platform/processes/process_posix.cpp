#include "platform/processes/process.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <string_view>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <utility>
#include <vector>

extern char** environ;  // NOLINT(readability-redundant-declaration): not in every unistd.h

namespace corvane {
namespace {

/// Children that nobody watches any more and whose end the system has yet to be asked for.
class leftovers {
 public:
  ~leftovers() { reap(); }
  void add(pid_t pid) { pids_.push_back(pid); }
  void reap() {
    std::erase_if(pids_, [](pid_t pid) { return ::waitpid(pid, nullptr, WNOHANG) != 0; });
  }

 private:
  std::vector<pid_t> pids_;
};

std::vector<std::string> words_of(std::string_view line) {
  std::vector<std::string> words;
  bool quoted = false;
  bool open = false;
  for (const char c : line) {
    if (c == ' ' && !quoted) {
      open = false;
      continue;
    }
    if (!open)
      words.emplace_back();
    open = true;
    if (c == '"')
      quoted = !quoted;
    else
      words.back() += c;
  }
  return words;
}

class posix_child : public child_process {
 public:
  posix_child(pid_t pid, int read_end, std::shared_ptr<leftovers> rest)
      : pid_(pid), read_end_(read_end), rest_(std::move(rest)) {}
  ~posix_child() override {
    ::close(read_end_);
    // Most often it has just ended or is about to.
    for (int i = 0; i < 20 && !reaped(); ++i)
      std::this_thread::sleep_for(std::chrono::microseconds(100));
    if (!reaped_)
      rest_->add(pid_);
  }
  posix_child(const posix_child&) = delete;
  posix_child& operator=(const posix_child&) = delete;

  std::optional<std::size_t> waiting() override {
    pollfd watched{read_end_, POLLIN, 0};
    if (::poll(&watched, 1, 0) < 0)
      return errno == EINTR ? std::optional<std::size_t>(0) : std::nullopt;
    int count = 0;
    if (::ioctl(read_end_, FIONREAD, &count) != 0)
      return std::nullopt;
    if (count > 0)
      return static_cast<std::size_t>(count);
    if ((watched.revents & (POLLHUP | POLLERR | POLLNVAL)) != 0)
      return std::nullopt;
    return 0;
  }

  std::optional<std::string> read(std::size_t count) override {
    std::string bytes(count, ' ');
    ssize_t got = 0;
    do {
      got = ::read(read_end_, bytes.data(), count);
    } while (got < 0 && errno == EINTR);
    if (got <= 0)
      return std::nullopt;
    bytes.resize(static_cast<std::size_t>(got));
    return bytes;
  }

  // The child leads its own group, and stays a zombie until this object is gone: the number
  // cannot have become another group's.
  void kill_all() override { ::kill(-pid_, SIGKILL); }

  std::optional<exit_status> ended() override {
    const auto until = std::chrono::steady_clock::now() + std::chrono::milliseconds(2);
    const bool broken = !waiting();
    for (;;) {
      siginfo_t info{};
      if (::waitid(P_PID, static_cast<id_t>(pid_), &info, WEXITED | WNOHANG | WNOWAIT) != 0)
        return std::nullopt;
      if (info.si_pid == pid_)
        return exit_status{info.si_code != CLD_EXITED, static_cast<std::uint32_t>(info.si_status)};
      if (!broken || std::chrono::steady_clock::now() >= until)
        return std::nullopt;
      std::this_thread::sleep_for(std::chrono::microseconds(100));
    }
  }

 private:
  bool reaped() { return reaped_ = reaped_ || ::waitpid(pid_, nullptr, WNOHANG) != 0; }

  pid_t pid_;
  int read_end_;
  bool reaped_ = false;
  std::shared_ptr<leftovers> rest_;
};

/// A pipe that holds as much as the system lets an ordinary program have: the reader looks ten
/// times a second, and a tool that prints much should not have to wait for it.
bool open_pipe(std::array<int, 2>& ends) {
  if (::pipe2(ends.data(), O_CLOEXEC) != 0)
    return false;
  for (int size = 1 << 20; size > (1 << 16); size /= 2)
    if (::fcntl(ends[1], F_SETPIPE_SZ, size) >= 0)
      break;
  return true;
}

/// Our environment with these variables in it.
std::vector<std::string> environment_with(const std::vector<child_variable>& added) {
  const auto is_replaced = [&added](std::string_view variable) {
    return std::any_of(added.begin(), added.end(), [variable](const child_variable& one) {
      return variable.starts_with(one.name + "=");
    });
  };
  std::vector<std::string> variables;
  for (char** variable = environ; variable != nullptr && *variable != nullptr; ++variable)
    if (!is_replaced(*variable))
      variables.emplace_back(*variable);
  for (const child_variable& one : added)
    variables.push_back(one.name + "=" + one.value);
  return variables;
}

std::vector<char*> pointers_to(std::vector<std::string>& texts) {
  std::vector<char*> pointers;
  pointers.reserve(texts.size() + 1);
  for (std::string& text : texts)
    pointers.push_back(text.data());
  pointers.push_back(nullptr);
  return pointers;
}

/// Own process group, no signals blocked or ignored, no descriptor but the three standard ones.
int spawn(std::vector<std::string> words, std::vector<child_variable> added, int write_end,
          pid_t& pid) {
  posix_spawn_file_actions_t files;
  posix_spawnattr_t how;
  ::posix_spawn_file_actions_init(&files);
  ::posix_spawnattr_init(&how);
  ::posix_spawn_file_actions_addopen(&files, 0, "/dev/null", O_RDONLY, 0);
  ::posix_spawn_file_actions_adddup2(&files, write_end, 1);
  ::posix_spawn_file_actions_adddup2(&files, write_end, 2);
  ::posix_spawn_file_actions_addclosefrom_np(&files, 3);
  sigset_t none;
  sigset_t all;
  ::sigemptyset(&none);
  ::sigfillset(&all);
  ::posix_spawnattr_setsigmask(&how, &none);
  ::posix_spawnattr_setsigdefault(&how, &all);
  ::posix_spawnattr_setpgroup(&how, 0);
  ::posix_spawnattr_setflags(
      &how, POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
  added.push_back({parent_variable, std::to_string(::getpid())});
  std::vector<std::string> variables = environment_with(added);
  const int error = ::posix_spawn(&pid, words[0].c_str(), &files, &how, pointers_to(words).data(),
                                  pointers_to(variables).data());
  ::posix_spawnattr_destroy(&how);
  ::posix_spawn_file_actions_destroy(&files);
  return error;
}

class posix_launcher : public process_launcher {
 public:
  start_result start(const std::string& command_line,
                     const std::vector<child_variable>& variables) override {
    rest_->reap();
    start_result r;
    std::array<int, 2> ends{};
    if (!open_pipe(ends)) {
      r.failed = start_result::step::pipe;
      r.error = static_cast<std::uint32_t>(errno);
      return r;
    }
    std::vector<std::string> words = words_of(command_line);
    pid_t pid = 0;
    const int error = words.empty() ? ENOENT : spawn(std::move(words), variables, ends[1], pid);
    ::close(ends[1]);
    if (error != 0) {
      ::close(ends[0]);
      r.failed = start_result::step::process;
      r.error = static_cast<std::uint32_t>(error);
      return r;
    }
    r.child = std::make_unique<posix_child>(pid, ends[0], rest_);
    return r;
  }

 private:
  std::shared_ptr<leftovers> rest_ = std::make_shared<leftovers>();
};

}  // namespace

std::unique_ptr<process_launcher> make_process_launcher() {
  return std::make_unique<posix_launcher>();
}

}  // namespace corvane
