// A program for tests that are about its own sudden end: takes the lock of a folder, runs the
// script "process.bat" in it as the current folder, polls until the run has ended, and ends.
//
//   stand_in_program FOLDER
#include "platform/files/files.h"
#include "platform/files/folder_lock.h"
#include "platform/files/paths.h"
#include "platform/processes/process.h"
#include "runner/run_screen.h"
#include "runner/shelled.h"

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <thread>

namespace {

class no_screen : public corvane::run_screen {
  std::string main_caption() const override { return "stand-in"; }
  void enable_main(bool /*enabled*/) override {}
  void enable_timer(bool /*enabled*/) override {}
  bool cleanup() const override { return false; }
  void show_log() override {}
  void hide_log() override {}
  void refresh_log() override {}
  void set_log_text(const std::string& /*text*/) override {}
  void set_log_caption(const std::string& /*caption*/) override {}
  void set_log_progress(double /*percent*/) override {}
  void open_log(const std::string& /*path*/) override {}
};

class no_prompts : public corvane::prompts {
  corvane::answer message(const corvane::message_box& /*box*/) override {
    return corvane::answer::cancel;
  }
  std::string open_file(const corvane::file_dialog& /*dialog*/) override { return {}; }
  std::string save_file(const corvane::file_dialog& /*dialog*/) override { return {}; }
  std::string input(const corvane::input_box& /*box*/) override { return {}; }
};

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2)
    return 2;
  const std::string folder = argv[1];
  std::filesystem::current_path(corvane::path_of(folder));
  no_screen screen;
  no_prompts ask;
  const auto launcher = corvane::make_process_launcher();
  corvane::folder_lock lock(folder);
  corvane::shelled runner(screen, ask, *launcher, lock, folder);
  if (!lock.take())
    return 3;
  runner.ExecuteCommand(corvane::join_path(folder, "process.bat"));
  while (runner.running()) {
    runner.update();
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  return runner.outcome() == corvane::run_outcome::success ? 0 : 1;
}
