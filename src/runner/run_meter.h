// Where a run is as a whole: which step, how much of it is done, how long it will take.
//
// What is to do is known from the script (runner/run_plan.h); how far it is, from the sizes of the
// files that grow and from what tools print; how long it takes, from the times of earlier runs and
// from how this one goes. All times are seconds since the run began, and never go back.
#pragma once

#include "runner/run_listener.h"
#include "runner/run_plan.h"
#include "runner/run_speeds.h"

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

class run_meter {
 public:
  run_meter() = default;
  run_meter(std::string_view script, bool reads_back, const work_costs& costs, plan_files files,
            const std::vector<std::string>& removed = {});

  /// A line that the run has printed, without its end. Names of steps come this way too.
  void line(std::string_view text);

  /// The script has ended and what the run has left is to be set in order. `gives_up_earlier`:
  /// what the plan has as removed goes now; if not, it is put back.
  void settling(bool gives_up_earlier);

  /// What the run has left is set in order: nothing is left to do.
  void settled();

  /// Looks how far it is. To be called some times a second; what it gives never goes back and stays
  /// below 100.
  run_whole at(double now);

  /// What this run has taught of the machine, once it has done its work.
  work_costs learned() const;

  /// What was known before.
  const work_costs& known() const { return costs_; }

 private:
  struct watched_work {
    planned_work work;
    double done = 0;
  };
  struct spent {
    double time = 0;  ///< seconds
    double done = 0;  ///< in the kind's unit, in this time
  };

  void begin_step(std::size_t step);
  void end_step();
  void advance(watched_work& watched, double done);
  void look(double now);
  void look_at(watched_work& watched);
  double navigation_fixed();
  void pay(double seconds);
  double cost_of(work_kind kind) const;
  double cost_now(work_kind kind) const;
  double pace() const;
  double lately_time() const;
  double left(double now) const;

  run_plan plan_;
  plan_files files_;
  work_costs costs_{};
  std::array<spent, work_kinds> spent_{};
  std::array<spent, work_kinds> lately_{};   ///< the same, what is long ago counting less
  std::array<double, work_kinds> unpaid_{};  ///< done since time was last accounted for
  double unpaid_time_ = 0;
  std::string name_;                   ///< of the step that was printed last
  std::size_t step_ = 0;               ///< 0-based, among the plan's
  bool in_step_ = false;               ///< `step_` has begun
  std::vector<watched_work> current_;  ///< of that step
  double step_began_ = 0;
  double looked_ = 0;
  bool first_look_ = false;      ///< into `step_`
  double percent_printed_ = -1;  ///< of the part of a step that tells its own; -1: none
  bool all_fixed_ = false;       ///< of what dvdauthor has collected so far
  double fixed_before_ = 0;      ///< bytes, when it began to collect what it collects now
  double end_ = -1;              ///< when the run will have ended; -1: not guessed yet
  double shown_ = 0;
};

/// How long something will take, in words: "about 2 min 30 s left", "a few seconds left"; empty
/// where nothing is known yet.
std::string time_left_text(std::optional<double> seconds_left);

/// "step 2 of 5: authoring title(s), about 40 s left".
std::string whole_text(const run_whole& whole);

}  // namespace corvane
