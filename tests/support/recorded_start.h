// Stand-ins for what starts a run: they keep what they were asked for, and start nothing.
#pragma once

#include "platform/processes/process.h"
#include "runner/run_listener.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane::testing_support {

/// A child that prints nothing and does not end by itself.
class silent_child : public child_process {
 public:
  std::optional<std::size_t> waiting() override {
    return killed_ ? std::nullopt : std::optional<std::size_t>(0);
  }
  std::optional<std::string> read(std::size_t) override { return std::string(); }
  void kill_all() override { killed_ = true; }
  std::optional<exit_status> ended() override { return std::nullopt; }

 private:
  bool killed_ = false;
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

/// Keeps how runs were started.
class recording_listener : public run_listener {
 public:
  void started(const run_start& run) override { starts.push_back(run); }
  void step(const run_step&) override {}
  void progress(const run_progress&) override {}
  void output(std::string_view) override {}
  void broken_off() override {}
  void closed() override {}
  void finished(const run_end&) override {}
  std::vector<run_start> starts;
};

}  // namespace corvane::testing_support
