// From starting a program to the first pixels in its window, and the memory it holds a second
// later, for two programs that take turns.
//
//   first_paint RUNS PROGRAM BASELINE
//
// Prints the medians, the fastest starts, and their ratios. Needs an X server of its own at
// $DISPLAY, without a window manager: scripts/bench.sh starts one.
#include "painted_window.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <spawn.h>
#include <string>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

using std::chrono::steady_clock;

struct measured {
  std::vector<double> milliseconds;
  std::vector<double> resident_kb;      ///< what the process holds, shared pages counted whole
  std::vector<double> proportional_kb;  ///< shared pages counted by how many share them
};

[[noreturn]] void give_up(const std::string& why) {
  std::cerr << "first_paint: " << why << "\n";
  std::exit(1);
}

double field_of(pid_t process, const std::string& name) {
  std::ifstream file("/proc/" + std::to_string(process) + "/smaps_rollup");
  for (std::string line; std::getline(file, line);)
    if (line.rfind(name + ":", 0) == 0)
      return std::strtod(line.c_str() + name.size() + 1, nullptr);
  give_up("cannot read the memory of process " + std::to_string(process));
}

pid_t start(const std::string& program) {
  std::string name = program;
  char* const arguments[] = {name.data(), nullptr};
  pid_t process = 0;
  if (const int error =
          posix_spawn(&process, program.c_str(), nullptr, nullptr, arguments, environ))
    give_up(program + ": error " + std::to_string(error));
  return process;
}

void end(pid_t process) {
  kill(process, SIGKILL);
  while (waitpid(process, nullptr, 0) < 0 && errno == EINTR) {
  }
  // The server takes the windows down after its client is gone.
  std::this_thread::sleep_for(std::chrono::milliseconds(200));
}

void measure(corvane::bench::painted_window& screen, const std::string& program, measured& into) {
  screen.clear();
  const auto begin = steady_clock::now();
  const pid_t process = start(program);
  const bool painted = screen.wait(std::chrono::seconds(20));
  const std::chrono::duration<double, std::milli> taken = steady_clock::now() - begin;
  if (!painted) {
    end(process);
    give_up(program + " painted no window within 20 s");
  }
  std::this_thread::sleep_for(std::chrono::seconds(1));
  into.milliseconds.push_back(taken.count());
  into.resident_kb.push_back(field_of(process, "Rss"));
  into.proportional_kb.push_back(field_of(process, "Pss"));
  end(process);
}

double median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

double smallest(const std::vector<double>& values) {
  return *std::min_element(values.begin(), values.end());
}

void print(const char* what, const std::vector<double>& program, const std::vector<double>& base) {
  std::printf("%s %.1f %.1f %.2f\n", what, median(program), median(base),
              median(program) / median(base));
}

}  // namespace

int main(int argc, char** argv) {
  const int runs = argc == 4 ? std::atoi(argv[1]) : 0;
  if (runs < 1) {
    std::cerr << "usage: first_paint RUNS PROGRAM BASELINE\n";
    return 2;
  }
  corvane::bench::painted_window screen;
  measured unused;
  measured program;
  measured baseline;
  // The first start of each reads it from the disk.
  measure(screen, argv[2], unused);
  measure(screen, argv[3], unused);
  for (int run = 0; run < runs; ++run) {
    measure(screen, argv[2], program);
    measure(screen, argv[3], baseline);
  }
  std::printf("median of %d runs: program, baseline, ratio\n", runs);
  print("first-paint-ms", program.milliseconds, baseline.milliseconds);
  // What is left when nothing else had the processor.
  print("first-paint-fastest-ms", {smallest(program.milliseconds)},
        {smallest(baseline.milliseconds)});
  print("resident-kB", program.resident_kb, baseline.resident_kb);
  print("proportional-kB", program.proportional_kb, baseline.proportional_kb);
  return 0;
}
