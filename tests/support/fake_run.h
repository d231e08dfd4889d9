// Stand-ins for what the runner works with: a listener that keeps what it is told, a command whose
// output the test feeds.
#pragma once

#include "formats/text.h"
#include "platform/files/folder_lock.h"
#include "platform/processes/process.h"
#include "runner/log_display.h"
#include "runner/shelled.h"
#include "support/scripted_prompts.h"
#include "support/temporary_folder.h"

#include <algorithm>
#include <deque>
#include <functional>
#include <memory>
#include <vector>

namespace corvane::testing_support {

/// What the windows would show, worked out as they do.
class fake_screen : public run_listener {
 public:
  bool main_enabled = true;
  bool log_shown = false;
  int refreshed = 0;
  std::vector<std::string> texts, captions;
  std::vector<double> bar;  ///< the values of the progress bar
  std::vector<run_start> starts;
  std::vector<run_step> steps;
  std::vector<run_progress> percents;
  std::vector<run_whole> wholes;
  std::vector<run_end> ends;
  std::vector<std::string> events;  ///< the names of the last ones' kinds, in order
  std::function<void()> during_output, during_closed, during_finished;

  void started(const run_start& run) override {
    events.emplace_back("started");
    starts.push_back(run);
    shown_ = {};
    log_shown = true;
    bar.push_back(0);
    main_enabled = false;
  }
  void step(const run_step& step) override {
    steps.push_back(step);
    shown_.step(step);
  }
  void progress(const run_progress& progress) override {
    percents.push_back(progress);
    bar.push_back(progress.percent);
  }
  void whole(const run_whole& whole) override { wholes.push_back(whole); }
  void output(std::string_view tail) override {
    if (during_output)
      during_output();
    const log_change change = shown_.output(tail);
    if (!change.caption.empty())
      captions.push_back(change.caption);
    if (change.text)
      texts.push_back(*change.text);
    else
      ++refreshed;
  }
  void broken_off() override { events.emplace_back("broken off"); }
  void closed() override {
    events.emplace_back("closed");
    if (during_closed)
      during_closed();
    main_enabled = true;
    texts.emplace_back();
  }
  void finished(const run_end& end) override {
    events.emplace_back("finished");
    if (during_finished)
      during_finished();
    ends.push_back(end);
    log_shown = false;
    main_enabled = true;
  }

 private:
  log_display shown_;
};

/// What a test and the fake command share.
struct fake_output {
  std::deque<std::string> pieces;  ///< each read gives one
  bool broken = false;             ///< once the pieces are read
  bool read_fails = false;
  int killed = 0;
  bool closed = false;
  std::optional<exit_status> status;
  std::function<void()> during_kill;
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
  void kill_all() override {
    ++output_->killed;
    output_->broken = true;
    if (output_->during_kill)
      output_->during_kill();
  }
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
  bool clean = false;  ///< check mark of "clean up files after authoring"
  shelled runner{screen, ask, launcher, lock, app.path()};

  std::string script() const { return app.path("process.bat"); }

  /// Starts the script as the authoring driver does.
  void start() {
    EXPECT_TRUE(lock.take());
    runner.ExecuteCommand(script(), {{}, {}, clean});
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
