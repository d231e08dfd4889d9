#include "apps/program_posix.h"

#include <gtest/gtest.h>

#include <array>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <poll.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

namespace corvane::testing_support {
namespace {

struct ends {
  int ours = -1;
  int theirs = -1;
};

ends make_pipe() {
  std::array<int, 2> both{-1, -1};
  EXPECT_EQ(::pipe2(both.data(), O_CLOEXEC), 0);
  return {both[0], both[1]};
}

ends make_terminal() {
  ends both;
  winsize size{};
  size.ws_col = 40;
  size.ws_row = 24;
  EXPECT_EQ(::openpty(&both.ours, &both.theirs, nullptr, nullptr, &size), 0);
  ::fcntl(both.ours, F_SETFD, FD_CLOEXEC);
  ::fcntl(both.theirs, F_SETFD, FD_CLOEXEC);
  return both;
}

/// After fork, in the child.
[[noreturn]] void become(const program_start& start, int out, int err) {
  ::dup2(::open("/dev/null", O_RDONLY), 0);
  ::dup2(out, 1);
  ::dup2(err, 2);
  for (const int file : start.closed_files)
    ::close(file);
  for (const int number : start.ignored_signals)
    std::signal(number, SIG_IGN);
  for (const auto& [name, value] : start.environment)
    ::setenv(name.c_str(), value.c_str(), 1);
  if (!start.folder.empty() && ::chdir(start.folder.c_str()) != 0)
    ::_exit(125);
  std::vector<char*> words{const_cast<char*>(start.program.c_str())};
  for (const std::string& word : start.arguments)
    words.push_back(const_cast<char*>(word.c_str()));
  words.push_back(nullptr);
  ::execv(start.program.c_str(), words.data());
  ::_exit(126);
}

/// Appends what is there; false at the end.
bool take(int file, std::string& text) {
  std::array<char, 65536> buffer{};
  const ssize_t count = ::read(file, buffer.data(), buffer.size());
  if (count > 0)
    text.append(buffer.data(), static_cast<std::size_t>(count));
  return count > 0;
}

}  // namespace

running_program::running_program(const program_start& start) {
  const ends out = start.on_terminal ? make_terminal() : make_pipe();
  const ends err = make_pipe();
  process_ = ::fork();
  if (process_ == 0)
    become(start, out.theirs, err.theirs);
  EXPECT_GT(process_, 0);
  ::close(out.theirs);
  ::close(err.theirs);
  out_pipe_ = out.ours;
  err_pipe_ = err.ours;
  if (start.output_unread) {
    ::close(out_pipe_);
    out_pipe_ = -1;
  }
}

running_program::~running_program() {
  if (!reaped_) {
    ::kill(process_, SIGKILL);
    ::waitpid(process_, &status_, 0);
  }
  ::close(out_pipe_);
  ::close(err_pipe_);
}

void running_program::send(int signal) const {
  if (!reaped_)
    ::kill(process_, signal);
}

void running_program::collect(std::chrono::milliseconds time) {
  std::array<pollfd, 2> files{{{out_pipe_, POLLIN, 0}, {err_pipe_, POLLIN, 0}}};
  ::poll(files.data(), files.size(), static_cast<int>(time.count()));
  if (files[0].revents != 0 && !take(out_pipe_, out_)) {
    ::close(out_pipe_);
    out_pipe_ = -1;
  }
  if (files[1].revents != 0 && !take(err_pipe_, err_)) {
    ::close(err_pipe_);
    err_pipe_ = -1;
  }
}

bool running_program::has_ended() {
  if (!reaped_ && ::waitpid(process_, &status_, WNOHANG) == process_)
    reaped_ = true;
  return reaped_;
}

int running_program::wait() {
  using namespace std::chrono_literals;
  const auto end = std::chrono::steady_clock::now() + 60s;
  while (!has_ended() || out_pipe_ >= 0 || err_pipe_ >= 0) {
    if (std::chrono::steady_clock::now() > end) {
      ADD_FAILURE() << "the program did not end\n" << out_ << err_;
      return -1000;
    }
    collect(20ms);
  }
  return WIFEXITED(status_) ? WEXITSTATUS(status_) : -WTERMSIG(status_);
}

bool process_runs(pid_t process) {
  std::ifstream stat("/proc/" + std::to_string(process) + "/stat");
  std::string text;
  if (!std::getline(stat, text))
    return false;
  // "12 (name) S ...": the state follows the last parenthesis.
  const auto state = text.rfind(')') + 2;
  return state < text.size() && text[state] != 'Z' && text[state] != 'X';
}

}  // namespace corvane::testing_support
