// Stand-ins for what starts a run: they keep what they were asked for, and start nothing.
#pragma once

#include "platform/processes/process.h"
#include "project/project.h"
#include "runner/run_screen.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace corvane::testing_support {

/// A child that prints nothing and does not end.
class silent_child : public child_process {
 public:
  std::optional<std::size_t> waiting() override { return 0; }
  std::optional<std::string> read(std::size_t) override { return std::string(); }
  void kill_all() override {}
  std::optional<exit_status> ended() override { return std::nullopt; }
};

/// Keeps what it was asked to start, and with which variables the last time.
class recording_launcher : public process_launcher {
 public:
  start_result start(const std::string& command_line,
                     const std::vector<child_variable>& with) override {
    started.push_back(command_line);
    variables = with;
    if (!works)
      return {nullptr, start_result::step::process, 2};
    return {std::make_unique<silent_child>(), start_result::step::none, 0};
  }
  std::vector<std::string> started;
  std::vector<child_variable> variables;
  bool works = true;
};

/// Keeps what happened to the log window.
class recording_screen : public run_screen {
 public:
  std::string main_caption() const override { return version_title; }
  void enable_main(bool) override {}
  void enable_timer(bool) override {}
  bool cleanup() const override { return false; }
  void show_log() override { log.emplace_back("show"); }
  void hide_log() override { log.emplace_back("hide"); }
  void refresh_log() override {}
  void set_log_text(const std::string& text) override { log.push_back("text " + text); }
  void set_log_caption(const std::string&) override {}
  void set_log_progress(double) override {}
  void open_log(const std::string&) override {}
  std::vector<std::string> log;
};

}  // namespace corvane::testing_support
