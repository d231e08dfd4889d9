// A program for tests that are about its own sudden end: takes the lock of a folder, runs the
// script "process.bat" in it as the current folder, polls until the run has ended, and ends.
//
//   stand_in_program FOLDER
#include "platform/files/files.h"
#include "platform/files/folder_lock.h"
#include "platform/files/paths.h"
#include "platform/processes/process.h"
#include "runner/shelled.h"

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <thread>

namespace {

class no_listener : public corvane::run_listener {
  void started(const corvane::run_start& /*run*/) override {}
  void step(const corvane::run_step& /*step*/) override {}
  void progress(const corvane::run_progress& /*progress*/) override {}
  void output(std::string_view /*tail*/) override {}
  void broken_off() override {}
  void closed() override {}
  void finished(const corvane::run_end& /*end*/) override {}
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
  no_listener listener;
  no_prompts ask;
  const auto launcher = corvane::make_process_launcher();
  corvane::folder_lock lock(folder);
  corvane::shelled runner(listener, ask, *launcher, lock, folder);
  if (!lock.take())
    return 3;
  runner.ExecuteCommand(corvane::join_path(folder, "process.bat"));
  while (runner.running()) {
    runner.update();
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  return runner.outcome() == corvane::run_outcome::success ? 0 : 1;
}
