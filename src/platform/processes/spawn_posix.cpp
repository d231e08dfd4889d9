#include "platform/processes/process.h"
#include "platform/processes/spawn.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
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

program_end end_of(int status) {
  if (WIFSIGNALED(status)) {
    const int signal = WTERMSIG(status);
    return {program_end::kind::by_signal, static_cast<std::uint32_t>(signal), ::strsignal(signal)};
  }
  return {program_end::kind::exited, static_cast<std::uint32_t>(WEXITSTATUS(status)), {}};
}

struct started_program {
  pid_t pid = -1;  ///< -1: there is nothing to wait for any more
  program_end end;
};

/// Whether the program has ended, and how; waits for it unless `how` holds WNOHANG.
bool has_ended(started_program& program, int how) {
  if (program.pid < 0)
    return true;
  int status = 0;
  pid_t got = 0;
  do {
    got = ::waitpid(program.pid, &status, how);
  } while (got < 0 && errno == EINTR);
  if (got == 0)
    return false;
  program.end = got < 0 ? not_started(errno) : end_of(status);
  program.pid = -1;
  return true;
}

bool have_ended(std::vector<started_program>& programs) {
  bool all = true;
  for (started_program& program : programs)
    all = has_ended(program, WNOHANG) && all;
  return all;
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

using steady = std::chrono::steady_clock;

/// Passes on what the programs print. A process that they left behind can keep the pipe open for as
/// long as it likes: so they are asked, now and then, whether they have ended.
class output_reader {
 public:
  output_reader(int from, const std::function<void(std::string_view)>& take)
      : from_(from), take_(take), buffer_(std::size_t{64} << 10) {}

  void read_until_end(std::vector<started_program>& programs) {
    steady::time_point next_look = steady::now() + between_looks;
    for (;;) {
      pollfd watched{from_, POLLIN, 0};
      if (::poll(&watched, 1, static_cast<int>(between_looks.count())) > 0 &&
          read(buffer_.size()) == 0)
        return;
      if (steady::now() < next_look)
        continue;
      if (have_ended(programs))
        return read_what_is_there();
      next_look = steady::now() + between_looks;
    }
  }

 private:
  static constexpr std::chrono::milliseconds between_looks{100};

  /// What the programs printed before they ended. More may come all the time, but not from them.
  void read_what_is_there() {
    int left = 0;
    if (::ioctl(from_, FIONREAD, &left) != 0)
      return;
    for (std::size_t got = 1; left > 0 && got > 0; left -= static_cast<int>(got))
      got = read(std::min(buffer_.size(), static_cast<std::size_t>(left)));
  }

  /// Takes one piece; gives its size, 0 at the end.
  std::size_t read(std::size_t most) {
    ssize_t got = 0;
    do {
      got = ::read(from_, buffer_.data(), most);
    } while (got < 0 && errno == EINTR);
    if (got <= 0)
      return 0;
    take_({buffer_.data(), static_cast<std::size_t>(got)});
    return static_cast<std::size_t>(got);
  }

  int from_;
  const std::function<void(std::string_view)>& take_;
  std::vector<char> buffer_;
};

descriptor open_input(const std::string& path) {
  return descriptor(::open(path.empty() ? "/dev/null" : path.c_str(), O_RDONLY | O_CLOEXEC));
}

descriptor open_output(const std::string& path) {
  return descriptor(::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666));
}

/// Made before the first program starts: one without the pipe that it needs would print past us.
struct pipes_of_pipeline {
  two_ends printed;  ///< closed when the programs inherit ours
  std::vector<two_ends> between;

  explicit pipes_of_pipeline(const pipeline& p) {
    if (p.take_output)
      printed = make_pipe();
    for (std::size_t i = 1; i < p.programs.size(); ++i)
      between.push_back(make_pipe());
    is_open_ = printed.write_end.is_open() == static_cast<bool>(p.take_output) &&
               std::all_of(between.begin(), between.end(),
                           [](const two_ends& pipe) { return pipe.write_end.is_open(); });
  }
  bool are_open() const { return is_open_; }

 private:
  bool is_open_ = false;
};

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
  const descriptor out = p.output.empty() ? descriptor() : open_output(p.output);
  if (!p.output.empty() && !out.is_open())
    return unusable(p.output);
  pipes_of_pipeline pipes(p);
  if (!pipes.are_open()) {
    r.ends.assign(p.programs.size(), not_started(errno));
    return r;
  }
  const int printed = pipes.printed.write_end.number();
  std::vector<started_program> programs(p.programs.size());
  for (std::size_t i = 0; i < programs.size(); ++i) {
    const bool last = i + 1 == programs.size();
    two_ends next = last ? two_ends() : std::move(pipes.between[i]);
    const int to = !last ? next.write_end.number() : out.is_open() ? out.number() : printed;
    programs[i].pid = start(p.programs[i], {in.number(), to, printed}, programs[i].end);
    in = std::move(next.read_end);
  }
  in.close();
  pipes.printed.write_end.close();
  if (p.take_output)
    output_reader(pipes.printed.read_end.number(), p.take_output).read_until_end(programs);
  pipes.printed.read_end.close();
  for (started_program& program : programs) {
    has_ended(program, 0);
    r.ends.push_back(std::move(program.end));
  }
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
