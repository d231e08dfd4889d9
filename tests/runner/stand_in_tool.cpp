// A tool for tests: does what its arguments say, one after the other, and ends with status 0.
//
//   print TEXT       to standard output, "\n" (two characters) being a line end; no line end of its
//                    own
//   error TEXT       the same to standard error
//   lines N          N numbered lines
//   megabytes N      N times 1,000,000 bytes, in lines of 100
//   leave SECONDS    leaves a process behind that goes on printing "left behind" for that long
//   left SECONDS     does that itself
//   flood SECONDS    prints as fast as it can for that long, then how many bytes that were to the
//                    file flood.txt
//   silent MS        sleeps
//   status N         ends with that status
//   crash            ends as a program that accesses memory that is not there
//   copy             standard input to standard output
//   FILE.xml         the same: what a subpicture tool does that adds nothing
//   write FILE TEXT  makes a file
//   variable NAME    prints the value of a variable of its environment, or "(none)"
//   process FILE     writes its process number there
//   arguments ...    the remaining ones, each as a line [argument]
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <deque>
#include <fstream>
#include <string>
#include <thread>

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#include <process.h>
#include <windows.h>
#else
#include <unistd.h>
#endif

namespace {

int process_number() {
#ifdef _WIN32
  return ::_getpid();
#else
  return ::getpid();
#endif
}

[[noreturn]] void crash() {
#ifdef _WIN32
  // What the system does after an unhandled exception, without the debugger it would call.
  ::TerminateProcess(::GetCurrentProcess(), 0xC0000005);
#endif
  std::signal(SIGSEGV, SIG_DFL);
  std::raise(SIGSEGV);
  std::abort();
}

std::string with_line_ends(std::string text) {
  for (std::size_t at = text.find("\\n"); at != std::string::npos; at = text.find("\\n", at))
    text.replace(at, 2, "\n");
  return text;
}

void print(std::FILE* to, const std::string& text) {
  std::fwrite(text.data(), 1, text.size(), to);
  std::fflush(to);
}

void flood(double seconds) {
  const std::string line = std::string(99, 'x').append("\n");
  std::string block;
  while (block.size() < 65000)
    block += line;
  std::size_t printed = 0;
  const auto until = std::chrono::steady_clock::now() + std::chrono::duration<double>(seconds);
  while (std::chrono::steady_clock::now() < until &&
         std::fwrite(block.data(), 1, block.size(), stdout) > 0)
    printed += block.size();
  std::ofstream("flood.txt") << printed;
}

void go_on_printing(double seconds) {
  const auto until = std::chrono::steady_clock::now() + std::chrono::duration<double>(seconds);
  while (std::chrono::steady_clock::now() < until &&
         std::fwrite("left behind\n", 1, 12, stdout) == 12 && std::fflush(stdout) == 0) {
  }
}

/// The process that is left behind inherits what this one prints to.
void leave(const std::string& own_path, const std::string& seconds) {
#ifdef _WIN32
  const char* const words[] = {own_path.c_str(), "left", seconds.c_str(), nullptr};
  ::_spawnv(_P_NOWAIT, own_path.c_str(), words);
#else
  if (::fork() == 0) {
    ::execl(own_path.c_str(), own_path.c_str(), "left", seconds.c_str(), nullptr);
    ::_exit(127);
  }
#endif
}

void copy() {
  for (int c = std::getchar(); c != EOF; c = std::getchar())
    std::putchar(c);
}

class words {
 public:
  words(int argc, char** argv) : own_path(argv[0]), left_(argv + 1, argv + argc) {}
  const std::string own_path;
  bool empty() const { return left_.empty(); }
  std::string next() {
    if (left_.empty())
      return {};
    std::string word = left_.front();
    left_.pop_front();
    return word;
  }

 private:
  std::deque<std::string> left_;
};

void act(const std::string& what, words& w) {
  if (what == "print") {
    print(stdout, with_line_ends(w.next()));
  } else if (what == "error") {
    print(stderr, with_line_ends(w.next()));
  } else if (what == "lines") {
    const int count = std::stoi(w.next());
    for (int i = 1; i <= count; ++i)
      print(stdout, "line " + std::to_string(i) + "\n");
  } else if (what == "megabytes") {
    const std::string line = std::string(99, 'x').append("\n");
    for (int i = std::stoi(w.next()) * 10000; i > 0; --i)
      std::fwrite(line.data(), 1, line.size(), stdout);
  } else if (what == "leave") {
    leave(w.own_path, w.next());
  } else if (what == "left") {
    go_on_printing(std::stod(w.next()));
  } else if (what == "flood") {
    flood(std::stod(w.next()));
  } else if (what == "silent") {
    std::this_thread::sleep_for(std::chrono::milliseconds(std::stoi(w.next())));
  } else if (what == "status") {
    std::fflush(stdout);
    std::exit(std::stoi(w.next()));
  } else if (what == "crash") {
    crash();
  } else if (what == "copy" || what.ends_with(".xml")) {
    copy();
  } else if (what == "write") {
    const std::string file = w.next();
    std::ofstream(file, std::ios::binary) << w.next();
  } else if (what == "variable") {
    const char* const value = std::getenv(w.next().c_str());
    print(stdout, value == nullptr ? "(none)" : value);
  } else if (what == "process") {
    // Whole once it is there under its name.
    const std::string file = w.next();
    std::ofstream(file + ".new") << process_number();
    std::rename((file + ".new").c_str(), file.c_str());
  } else if (what == "arguments") {
    while (!w.empty())
      print(stdout, "[" + w.next() + "]\n");
  } else {
    print(stderr, "stand-in tool: what is " + what + "?\n");
    std::exit(99);
  }
}

}  // namespace

int main(int argc, char** argv) {
#ifdef _WIN32
  ::_setmode(1, _O_BINARY);
  ::_setmode(0, _O_BINARY);
#endif
  words w(argc, argv);
  while (!w.empty())
    act(w.next(), w);
  std::fflush(stdout);
  return 0;
}
