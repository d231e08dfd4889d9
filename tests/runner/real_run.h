// A program folder with the real conspawn and stand-in tools, as the current folder, and the real
// runner over it.
#pragma once

#include "support/fake_run.h"

#include <chrono>
#include <filesystem>
#include <system_error>
#include <thread>

namespace corvane::testing_support {

class real_run {
 public:
  real_run() {
    put(CORVANE_CONSPAWN, "conspawn.exe");
    for (const char* tool : {"mplex.exe", "gm.exe", "spumux.exe", "dvdauthor.exe", "mkisofs.exe"})
      put(CORVANE_STAND_IN_TOOL, tool);
    std::filesystem::current_path(path_of(app.path()));
  }
  ~real_run() { std::filesystem::current_path(before_); }
  real_run(const real_run&) = delete;
  real_run& operator=(const real_run&) = delete;

  temporary_folder app;
  fake_screen screen;
  scripted_prompts ask;
  std::unique_ptr<process_launcher> launcher = make_process_launcher();
  folder_lock lock{app.path()};
  shelled runner{screen, ask, *launcher, lock, app.path()};

  /// A tool's path as scripts hold it, in quotes.
  std::string tool(const std::string& name) const {
    return '"' + join_path(join_path(app.path(), "bin"), name + ".exe") + '"';
  }
  void remove_tool(const std::string& name) const {
    std::filesystem::remove(path_of(join_path(join_path(app.path(), "bin"), name)));
  }

  /// Writes the script: the usual first lines, these lines, the marker; and starts it.
  void start(const std::string& lines, const std::vector<child_variable>& variables = {}) {
    app.add("process.bat", "@echo off\r\necho Send problems to us\r\necho *first step\r\n" + lines +
                               "echo *process complete\r\n");
    ASSERT_TRUE(lock.take());
    runner.ExecuteCommand(app.path("process.bat"), {variables, {}, false});
  }

  /// Polls until the run has ended. Gives the log without title line, CR and the blanks that the
  /// runner puts around line ends.
  std::string finish(std::chrono::seconds limit = std::chrono::seconds(60)) {
    const auto until = std::chrono::steady_clock::now() + limit;
    while (runner.running() && std::chrono::steady_clock::now() < until) {
      const auto begin = std::chrono::steady_clock::now();
      runner.update();
      longest_pass = std::max(longest_pass, std::chrono::steady_clock::now() - begin);
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    EXPECT_FALSE(runner.running()) << "the run did not end";
    return log();
  }
  std::string log() const {
    std::string text = replace_all(app.read("CorvaneLOG.txt"), " \r\n ", "\n");
    text = replace_all(text, "\r\n", "\n");
    return text.substr(text.find('\n') + 1);
  }

  /// What a run of these lines must tell, and its log.
  std::string succeeds(const std::string& lines,
                       const std::vector<child_variable>& variables = {}) {
    ask.expect({"Process complete.  Please review the log for more information (recommended).",
                icon::information, buttons::ok_cancel, "Corvane"},
               answer::cancel);
    start(lines, variables);
    const std::string text = finish();
    EXPECT_EQ(runner.outcome(), run_outcome::success);
    return text;
  }
  std::string fails(const std::string& lines) {
    ask.expect({"There was an error.  Please review the log.", icon::critical, buttons::ok_cancel,
                "Corvane"},
               answer::cancel);
    start(lines);
    const std::string text = finish();
    EXPECT_EQ(runner.outcome(), run_outcome::failed);
    return text;
  }

  std::chrono::steady_clock::duration longest_pass{};

 private:
  void put(const char* built, const std::string& name) const {
    const auto target = path_of(join_path(join_path(app.path(), "bin"), name));
    std::filesystem::create_directories(target.parent_path());
    // Of a program that runs somewhere, Windows removes no name.
    std::error_code error = std::make_error_code(std::errc::not_supported);
    if (native_style() != path_style::windows)
      std::filesystem::create_hard_link(path_of(built), target, error);
    if (error)
      std::filesystem::copy_file(path_of(built), target);
  }

  std::filesystem::path before_ = std::filesystem::current_path();
};

}  // namespace corvane::testing_support
