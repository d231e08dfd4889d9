#include "platform/processes/kept_output.h"
#include "platform/processes/process.h"
#include "platform/processes/spawn.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace corvane {
namespace {

/// A descriptor of ours, closed at the end and never inherited.
class descriptor {
 public:
  descriptor() = default;
  explicit descriptor(int number) : number_(number) {}
  ~descriptor() { close(); }
  descriptor(descriptor&& other) noexcept : number_(other.number_) { other.number_ = -1; }
  descriptor& operator=(descriptor&& other) noexcept {
    std::swap(number_, other.number_);
    return *this;
  }
  int number() const { return number_; }
  bool is_open() const { return number_ >= 0; }
  void close() {
    if (number_ >= 0)
      ::close(number_);
    number_ = -1;
  }

 private:
  int number_ = -1;
};

struct two_ends {
  descriptor read_end, write_end;
};

two_ends make_pipe() {
  std::array<int, 2> ends{-1, -1};
  if (::pipe2(ends.data(), O_CLOEXEC) != 0)
    return {};
  return {descriptor(ends[0]), descriptor(ends[1])};
}

/// What one program of a pipeline gets as its standard descriptors; -1: inherits ours.
struct standard_descriptors {
  int in, out, err;
};

void put(int from, int to) {
  if (from >= 0)
    ::dup2(from, to);
}

/// In the forked child: becomes the program, or says with the error's number why not.
[[noreturn]] void become(char* const* words, const standard_descriptors& files, int say,
                         pid_t parent) {
  // A tool whose script runner is killed ends too.
  ::prctl(PR_SET_PDEATHSIG, SIGKILL);
  if (::getppid() != parent)
    ::_exit(127);
  put(files.in, 0);
  put(files.out, 1);
  put(files.err, 2);
  ::signal(SIGPIPE, SIG_DFL);
  ::signal(SIGTERM, SIG_DFL);
  ::execv(words[0], words);
  const int error = errno;
  [[maybe_unused]] const ssize_t told = ::write(say, &error, sizeof error);
  ::_exit(127);
}

program_end not_started(int error) {
  return {program_end::kind::not_started, static_cast<std::uint32_t>(error), std::strerror(error)};
}

/// Starts one program. Its number, or -1 and `end` told.
pid_t start(std::vector<std::string> words, const standard_descriptors& files, program_end& end) {
  std::vector<char*> pointers;
  pointers.reserve(words.size() + 1);
  for (std::string& word : words)
    pointers.push_back(word.data());
  pointers.push_back(nullptr);
  two_ends trouble = make_pipe();
  const pid_t self = ::getpid();
  const pid_t pid = trouble.read_end.is_open() ? ::fork() : -1;
  if (pid == 0)
    become(pointers.data(), files, trouble.write_end.number(), self);
  if (pid < 0) {
    end = not_started(errno);
    return -1;
  }
  trouble.write_end.close();
  int error = 0;
  ssize_t got = 0;
  do {
    got = ::read(trouble.read_end.number(), &error, sizeof error);
  } while (got < 0 && errno == EINTR);
  if (got != static_cast<ssize_t>(sizeof error))
    return pid;
  ::waitpid(pid, nullptr, 0);
  end = not_started(error);
  return -1;
}

program_end wait_for(pid_t pid) {
  int status = 0;
  while (::waitpid(pid, &status, 0) < 0)
    if (errno != EINTR)
      return not_started(errno);
  if (WIFSIGNALED(status)) {
    const int signal = WTERMSIG(status);
    return {program_end::kind::by_signal, static_cast<std::uint32_t>(signal), ::strsignal(signal)};
  }
  return {program_end::kind::exited, static_cast<std::uint32_t>(WEXITSTATUS(status)), {}};
}

bool write_all(int file, std::string_view text) {
  while (!text.empty()) {
    const ssize_t written = ::write(file, text.data(), text.size());
    if (written < 0 && errno != EINTR)
      return false;
    text.remove_prefix(written > 0 ? static_cast<std::size_t>(written) : 0);
  }
  return true;
}

/// Passes standard error on until all programs have closed it; keeps what it told.
std::string pass_on(int from) {
  kept_output kept;
  std::array<char, 4096> buffer{};
  for (;;) {
    const ssize_t got = ::read(from, buffer.data(), buffer.size());
    if (got < 0 && errno == EINTR)
      continue;
    if (got <= 0)
      return kept.text();
    const std::string_view piece(buffer.data(), static_cast<std::size_t>(got));
    write_all(2, piece);
    kept.add(piece);
  }
}

descriptor open_input(const std::string& path) {
  return descriptor(::open(path.empty() ? "/dev/null" : path.c_str(), O_RDONLY | O_CLOEXEC));
}

descriptor open_output(const std::string& path) {
  return descriptor(::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666));
}

/// The parent of the process is gone: all that runs for it goes too.
void parent_is_gone(int /*signal*/) {
  if (::getpgrp() == ::getpid())
    ::kill(0, SIGKILL);
  ::_exit(1);
}

}  // namespace

pipeline_result run_pipeline(const pipeline& p) {
  pipeline_result r;
  const auto unusable = [&r](const std::string& file) {
    r.unusable_file = file;
    r.why_unusable = std::strerror(errno);
    return r;
  };
  descriptor in = open_input(p.input);
  if (!in.is_open())
    return unusable(p.input.empty() ? "/dev/null" : p.input);
  descriptor out = p.output.empty() ? descriptor() : open_output(p.output);
  if (!p.output.empty() && !out.is_open())
    return unusable(p.output);
  two_ends errors = p.watch_errors ? make_pipe() : two_ends();
  std::vector<pid_t> pids;
  for (std::size_t i = 0; i < p.programs.size(); ++i) {
    const bool last = i + 1 == p.programs.size();
    two_ends next = last ? two_ends() : make_pipe();
    const int to = last ? out.number() : next.write_end.number();
    pids.push_back(
        start(p.programs[i], {in.number(), to, errors.write_end.number()}, r.ends.emplace_back()));
    in = std::move(next.read_end);
  }
  in.close();
  errors.write_end.close();
  if (errors.read_end.is_open())
    r.errors = pass_on(errors.read_end.number());
  for (std::size_t i = 0; i < pids.size(); ++i)
    if (pids[i] > 0)
      r.ends[i] = wait_for(pids[i]);
  return r;
}

void write_output(std::string_view text) {
  write_all(1, text);
}

invocation own_invocation(int argc, char** argv) {
  invocation own;
  if (argc > 0)
    own.program = argv[0];
  for (int i = 1; i < argc; ++i)
    own.arguments.emplace_back(argv[i]);
  return own;
}

void begin_as_script_runner() {
  ::signal(SIGPIPE, SIG_IGN);
  const char* const told = std::getenv(parent_variable);
  if (told == nullptr)
    return;
  ::signal(SIGTERM, parent_is_gone);
  ::prctl(PR_SET_PDEATHSIG, SIGTERM);
  // It may have ended before the system was asked to tell.
  if (std::to_string(::getppid()) != told)
    parent_is_gone(0);
}

}  // namespace corvane
