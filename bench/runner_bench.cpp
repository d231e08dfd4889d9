// A tool that prints as fast as it can: through the runner, polled every 100 ms as the windows do,
// and into "cat >/dev/null". Says how many megabytes a second came through either way, and how long
// the runner's longest pass was.
//
//   runner_bench [SECONDS]                5 seconds
//   runner_bench --flood SECONDS FILE     the tool: prints, then writes how many bytes to FILE
#include "platform/files/files.h"
#include "platform/files/folder_lock.h"
#include "platform/files/paths.h"
#include "platform/processes/process.h"
#include "runner/log_display.h"
#include "runner/shelled.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>
#include <string_view>
#include <sys/resource.h>
#include <thread>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;
using steady = std::chrono::steady_clock;

double seconds_since(steady::time_point begin) {
  return std::chrono::duration<double>(steady::now() - begin).count();
}

int flood(double seconds, const char* file) {
  std::string block;
  while (block.size() < 65000)
    block += "STAT: VOBU 12345 at 678MB, 1 PGCS, and so on to a usual length of line\n";
  std::size_t printed = 0;
  const auto begin = steady::now();
  while (seconds_since(begin) < seconds) {
    const ssize_t written = ::write(1, block.data(), block.size());
    if (written <= 0)
      return 1;
    printed += static_cast<std::size_t>(written);
  }
  const double took = seconds_since(begin);
  std::ofstream(file) << static_cast<double>(printed) / 1e6 / took;
  return 0;
}

/// Keeps what the log window would show, as a text box does.
class kept_display : public corvane::run_listener {
  corvane::log_display shown_;
  std::string text_, caption_;
  void started(const corvane::run_start& /*run*/) override {}
  void step(const corvane::run_step& step) override { shown_.step(step); }
  void progress(const corvane::run_progress& /*progress*/) override {}
  void output(std::string_view tail) override {
    const corvane::log_change change = shown_.output(tail);
    caption_ = change.caption;
    text_ = change.text.value_or(text_);
  }
  void broken_off() override {}
  void closed() override {}
  void finished(const corvane::run_end& /*end*/) override {}
};

class silent_prompts : public corvane::prompts {
  corvane::answer message(const corvane::message_box& /*box*/) override {
    return corvane::answer::cancel;
  }
  std::string open_file(const corvane::file_dialog& /*dialog*/) override { return {}; }
  std::string save_file(const corvane::file_dialog& /*dialog*/) override { return {}; }
  std::string input(const corvane::input_box& /*box*/) override { return {}; }
};

double number_in(const fs::path& file) {
  double number = 0;
  std::ifstream(file) >> number;
  return number;
}

double milliseconds(steady::duration time) {
  return std::chrono::duration<double, std::milli>(time).count();
}

/// Processor time of this thread: what a pass costs on a machine that has other things to do too.
double thread_milliseconds() {
  timespec used{};
  ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &used);
  return static_cast<double>(used.tv_sec) * 1e3 + static_cast<double>(used.tv_nsec) / 1e6;
}

/// Runs the tool through the runner; false when that did not end well.
bool through_runner(const fs::path& app, const std::string& seconds) {
  std::ofstream(app / "process.bat")
      << "@echo off\r\necho *printing\r\n\"" << (app / "bin/flood.exe").string() << "\" --flood "
      << seconds << " \"" << (app / "runner.txt").string() << "\"\r\necho *process complete\r\n";
  kept_display display;
  silent_prompts ask;
  const auto launcher = corvane::make_process_launcher();
  corvane::folder_lock lock(app.string());
  corvane::shelled runner(display, ask, *launcher, lock, app.string());
  lock.take();
  runner.ExecuteCommand((app / "process.bat").string());
  steady::duration longest{};
  double longest_cpu = 0;
  while (runner.running()) {
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    const auto begin = steady::now();
    const double cpu = thread_milliseconds();
    runner.update();
    longest = std::max(longest, steady::now() - begin);
    longest_cpu = std::max(longest_cpu, thread_milliseconds() - cpu);
  }
  rusage used{};
  ::getrusage(RUSAGE_SELF, &used);
  std::printf("runner_megabytes_per_second %.1f\n", number_in(app / "runner.txt"));
  std::printf("log_megabytes %.1f\n",
              static_cast<double>(fs::file_size(app / "CorvaneLOG.txt")) / 1e6);
  std::printf("longest_pass_ms %.2f\n", milliseconds(longest));
  std::printf("longest_pass_cpu_ms %.2f\n", longest_cpu);
  std::printf("peak_memory_mb %.1f\n", static_cast<double>(used.ru_maxrss) / 1024);
  return runner.outcome() == corvane::run_outcome::success;
}

bool into_cat(const fs::path& app, const std::string& seconds) {
  const std::string command = "'" + (app / "bin/flood.exe").string() + "' --flood " + seconds +
                              " '" + (app / "cat.txt").string() + "' | cat >/dev/null";
  const bool well = std::system(command.c_str()) == 0;
  const double cat = number_in(app / "cat.txt");
  std::printf("cat_megabytes_per_second %.1f\n", cat);
  std::printf("ratio %.4f\n", number_in(app / "runner.txt") / cat);
  return well;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc == 4 && std::string(argv[1]) == "--flood")
    return flood(std::atof(argv[2]), argv[3]);
  const std::string seconds = argc > 1 ? argv[1] : "5";
  const fs::path self = fs::canonical("/proc/self/exe");
  const fs::path app = fs::temp_directory_path() / ("runner_bench" + std::to_string(::getpid()));
  fs::create_directories(app / "bin");
  fs::create_symlink(self, app / "bin/flood.exe");
  fs::create_symlink(self.parent_path() / "conspawn", app / "bin/conspawn.exe");
  fs::current_path(app);
  const bool well = through_runner(app, seconds) && into_cat(app, seconds);
  fs::current_path("/");
  fs::remove_all(app);
  return well ? 0 : 1;
}
