// Stand-ins for what the runner works with: a screen that keeps what it is shown, a command whose
// output the test feeds.
#pragma once

#include "formats/text.h"
#include "platform/files/folder_lock.h"
#include "platform/processes/process.h"
#include "runner/run_screen.h"
#include "runner/shelled.h"
#include "support/scripted_prompts.h"
#include "support/temporary_folder.h"

#include <algorithm>
#include <deque>
#include <memory>
#include <stdexcept>
#include <system_error>
#include <vector>

namespace corvane::testing_support {

class fake_screen : public run_screen {
 public:
  std::string caption = "Corvane 0.997 - 1/2/2005";
  bool main_enabled = true;
  bool timer = false;
  bool clean = false;
  bool log_shown = true;
  int refreshed = 0;
  std::vector<std::string> texts, captions, opened;
  std::vector<double> progress;
  bool timer_during_text = false;  ///< whether the timer ran while a text was shown
  std::exception_ptr thrown_by_text;

  std::string main_caption() const override { return caption; }
  void enable_main(bool enabled) override { main_enabled = enabled; }
  void enable_timer(bool enabled) override { timer = enabled; }
  bool cleanup() const override { return clean; }
  void show_log() override { log_shown = true; }
  void hide_log() override { log_shown = false; }
  void refresh_log() override { ++refreshed; }
  void set_log_text(const std::string& text) override {
    if (thrown_by_text)
      std::rethrow_exception(thrown_by_text);
    texts.push_back(text);
    timer_during_text = timer_during_text || timer;
  }
  void set_log_caption(const std::string& text) override { captions.push_back(text); }
  void set_log_progress(double percent) override { progress.push_back(percent); }
  void open_log(const std::string& path) override { opened.push_back(path); }
};

/// What a test and the fake command share.
struct fake_output {
  std::deque<std::string> pieces;  ///< each read gives one
  bool broken = false;             ///< once the pieces are read
  bool read_fails = false;
  int killed = 0;
  bool closed = false;
  std::optional<exit_status> status;
};

class fake_child : public child_process {
 public:
  explicit fake_child(std::shared_ptr<fake_output> output) : output_(std::move(output)) {}
  ~fake_child() override { output_->closed = true; }
  std::optional<std::size_t> waiting() override {
    if (!output_->pieces.empty())
      return output_->pieces.front().size();
    return output_->broken ? std::nullopt : std::optional<std::size_t>(0);
  }
  std::optional<std::string> read(std::size_t count) override {
    if (output_->read_fails)
      return std::nullopt;
    std::string& front = output_->pieces.front();
    std::string piece = front.substr(0, count);
    front.erase(0, piece.size());
    if (front.empty())
      output_->pieces.pop_front();
    return piece;
  }
  void kill_all() override { ++output_->killed; }
  std::optional<exit_status> ended() override { return output_->status; }

 private:
  std::shared_ptr<fake_output> output_;
};

class fake_launcher : public process_launcher {
 public:
  std::shared_ptr<fake_output> output;  ///< of the command started last
  std::vector<std::string> started;
  std::vector<child_variable> variables;  ///< those that the last one was started with
  start_result::step fails = start_result::step::none;
  std::uint32_t error = 0;

  start_result start(const std::string& command_line,
                     const std::vector<child_variable>& with) override {
    started.push_back(command_line);
    variables = with;
    start_result r;
    r.failed = fails;
    r.error = error;
    if (fails == start_result::step::none) {
      output = std::make_shared<fake_output>();
      r.child = std::make_unique<fake_child>(output);
    }
    return r;
  }
};

/// A runner with everything around it, in a program folder of its own.
struct fake_run {
  temporary_folder app;
  fake_screen screen;
  scripted_prompts ask;
  fake_launcher launcher;
  folder_lock lock{app.path()};
  shelled runner{screen, ask, launcher, lock, app.path()};

  std::string script() const { return app.path("process.bat"); }

  /// Starts the script as the authoring driver does.
  void start() {
    EXPECT_TRUE(lock.take());
    runner.ExecuteCommand(script());
  }
  /// One piece of output and the pass that finds it.
  void feed(const std::string& piece) {
    launcher.output->pieces.push_back(piece);
    runner.update();
  }
  /// The pipe breaks, and the pass that finds it so.
  void break_pipe() {
    launcher.output->broken = true;
    runner.update();
  }
  void expect_success(answer reply = answer::cancel) {
    ask.expect({"Process complete.  Please review the log for more information (recommended).",
                icon::information, buttons::ok_cancel, "Corvane"},
               reply);
  }
  void expect_failure(answer reply = answer::cancel) {
    ask.expect({"There was an error.  Please review the log.", icon::critical, buttons::ok_cancel,
                "Corvane"},
               reply);
  }
  std::string log() const { return app.read("CorvaneLOG.txt"); }
};

}  // namespace corvane::testing_support
