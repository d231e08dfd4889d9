#include "runner/run_meter.h"

#include "formats/numbers.h"
#include "runner/output_lines.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace corvane {
namespace {

/// What was known before counts as much as so many seconds of this run: of more, where this one
/// seems to be quicker. A disk takes much at once before it goes on at its own speed.
constexpr double trust_in_kind = 3, trust_in_kind_if_quicker = 6;
constexpr double trust_in_machine = 5, trust_in_machine_if_quicker = 10;

/// The same for the runs that follow.
constexpr double trust_for_later = 2;

/// How long ago what goes on counts half and less: a disk that has taken all it can at once goes on
/// much slower. The less is left, the sooner it must be seen.
constexpr double longest_lately = 4, shortest_lately = 1.5, lately_of_left = 0.25;

/// How much of a change of speed is believed to last, as a power of it.
constexpr double trust_in_change = 0.9;

/// How much of it is believed of other kinds of work, where their speeds are known from earlier
/// runs: what slows one down, as another program, need not slow down the next.
constexpr double trust_in_pace = 0.5;

/// Nothing is said of the time before this: the first file has hardly begun to grow.
constexpr double first_word = 2;

/// A guess of the end moves to a new one in about this time, so that it does not jump.
constexpr double longest_settling = 2, shortest_settling = 0.4, settling_of_left = 0.1;

/// Only the run's end is more.
constexpr double most_percent = 99.9;

constexpr std::size_t index_of(work_kind kind) {
  return static_cast<std::size_t>(kind);
}

/// The number before a "%" that a line holds.
double percent_in(std::string_view line) {
  const std::string_view before = line.substr(0, line.find('%'));
  return std::clamp(leading_number(before.substr(before.find_last_of(' ') + 1)), 0.0, 100.0);
}

/// Whether there is anything that tells how far such work is.
bool is_seen(const planned_work& work) {
  return !work.grows.empty() || work.kind == work_kind::fix || work.kind == work_kind::read_back;
}

}  // namespace

run_meter::run_meter(std::string_view script, bool reads_back, const work_costs& costs,
                     plan_files files, const std::vector<std::string>& removed)
    : plan_(script, reads_back, files, removed), files_(std::move(files)), costs_(costs) {}

void run_meter::line(std::string_view text) {
  if (text.starts_with("STAT: fixing VOBU") || text.starts_with("INFO: reading the disc back: ")) {
    percent_printed_ = percent_in(text);
  } else if (text.starts_with("STAT: fixed ")) {
    all_fixed_ = true;
    percent_printed_ = -1;
  } else if (std::string name = step_in_line(text); !name.empty()) {
    name_ = std::move(name);
    const auto& steps = plan_.steps();
    std::size_t next = step_ + (in_step_ ? 1 : 0);
    while (next < steps.size() && steps[next].line != text)
      ++next;
    if (next < steps.size() || text.starts_with(end_marker))
      begin_step(next);
  }
}

/// Of it no line is printed.
void run_meter::settling(bool gives_up_earlier) {
  const auto& steps = plan_.steps();
  if (steps.empty() || steps.back().line != step_line(removal_step))
    return;
  name_ = gives_up_earlier ? removal_step : return_step;
  begin_step(gives_up_earlier ? steps.size() - 1 : steps.size());
}

void run_meter::settled() {
  begin_step(plan_.steps().size());
}

/// Steps that were left out have nothing more to do either.
void run_meter::begin_step(std::size_t step) {
  end_step();
  step_ = step;
  in_step_ = step < plan_.steps().size();
  current_.clear();
  if (in_step_)
    for (const planned_work& work : plan_.steps()[step].works)
      current_.push_back({work});
  step_began_ = looked_;
  first_look_ = true;
  percent_printed_ = -1;
  all_fixed_ = false;
  fixed_before_ = 0;
}

/// What it has made is known now, and with it more of what is still to do.
void run_meter::end_step() {
  for (watched_work& watched : current_) {
    const planned_work& work = watched.work;
    const double made = work.grows.empty() ? 0 : files_.size_of(work.grows).value_or(0);
    // Of one that made nothing, as a failed one, nothing can be learned.
    if (work.grows.empty() || made > 0 || watched.done > 0)
      advance(watched, work.amount);
    if (made > 0)
      plan_.was_made(work.command, made);
  }
  current_.clear();
}

void run_meter::advance(watched_work& watched, double done) {
  unpaid_[index_of(watched.work.kind)] += done - watched.done;
  watched.done = done;
}

void run_meter::look(double now) {
  // What a step replaces may still lie where it will lie itself.
  if (!std::exchange(first_look_, false)) {
    for (watched_work& watched : current_)
      look_at(watched);
    for (watched_work& watched : current_)
      if (current_.back().done > 0 && watched.work.command < current_.back().work.command)
        advance(watched, watched.work.amount);
  }
  pay(now - looked_);
  looked_ = now;
}

void run_meter::look_at(watched_work& watched) {
  const planned_work& work = watched.work;
  if (!work.grows.empty() && work.grows_to > 0) {
    if (const std::optional<double> bytes = files_.size_of(work.grows))
      advance(watched, work.amount * std::min(1.0, *bytes / work.grows_to));
  } else if (work.kind == work_kind::fix) {
    advance(watched, std::min(work.amount, navigation_fixed()));
  } else if (work.kind == work_kind::read_back && percent_printed_ >= 0) {
    advance(watched, work.amount * percent_printed_ / 100);
  }
}

/// Bytes. dvdauthor fixes what it has collected when it has collected a whole titleset, or its
/// menus, and then collects on.
double run_meter::navigation_fixed() {
  double collected = 0;
  for (const watched_work& watched : current_)
    if (watched.work.kind == work_kind::collect)
      collected = watched.done;
  if (std::exchange(all_fixed_, false))
    fixed_before_ = collected;
  const double share = std::max(0.0, percent_printed_) / 100;
  return fixed_before_ + std::max(0.0, collected - fixed_before_) * share;
}

/// The time is that of whatever was done in it.
void run_meter::pay(double seconds) {
  unpaid_time_ += seconds;
  double likely = 0;
  for (std::size_t kind = 0; kind < work_kinds; ++kind)
    likely += std::max(0.0, unpaid_[kind]) * costs_[kind];
  if (likely <= 0)
    return;
  for (std::size_t kind = 0; kind < work_kinds; ++kind) {
    spent_[kind].time += unpaid_time_ * std::max(0.0, unpaid_[kind]) * costs_[kind] / likely;
    spent_[kind].done += unpaid_[kind];
    const double fading = std::exp(-unpaid_time_ / lately_time());
    const double share = std::max(0.0, unpaid_[kind]) * costs_[kind] / likely;
    lately_[kind].time = lately_[kind].time * fading + unpaid_time_ * share;
    lately_[kind].done = lately_[kind].done * fading + std::max(0.0, unpaid_[kind]);
  }
  unpaid_ = {};
  unpaid_time_ = 0;
}

double run_meter::lately_time() const {
  return end_ < 0 ? longest_lately
                  : std::clamp((end_ - looked_) * lately_of_left, shortest_lately, longest_lately);
}

/// How much longer things take than they are known to: the machine may have other things to do.
double run_meter::pace() const {
  double took = 0;
  double likely = 0;
  for (std::size_t kind = 0; kind < work_kinds; ++kind) {
    took += spent_[kind].time;
    likely += std::max(0.0, spent_[kind].done) * costs_[kind];
  }
  const double trust = took < likely ? trust_in_machine_if_quicker : trust_in_machine;
  const double slower = std::clamp((trust + took) / (trust + likely), 1.0 / 3, 3.0);
  return costs_ == usual_costs() ? slower : std::pow(slower, trust_in_pace);
}

double run_meter::cost_of(work_kind kind) const {
  const double known = costs_[index_of(kind)];
  const spent& now = spent_[index_of(kind)];
  const double done = std::max(0.0, now.done);
  const double trust = now.time < done * known ? trust_in_kind_if_quicker : trust_in_kind;
  return (trust * pace() + now.time) / (trust / known + done);
}

/// Of what is being done: nearer to what it takes now than to what it took so far, though that may
/// be a hitch.
double run_meter::cost_now(work_kind kind) const {
  const double so_far = cost_of(kind);
  const spent& now = lately_[index_of(kind)];
  if (now.time < shortest_lately / 2 || now.done <= 0)
    return so_far;
  const double change = std::clamp(now.time / now.done / so_far, 0.1, 10.0);
  return so_far * std::pow(change, trust_in_change);
}

double run_meter::left(double now) const {
  double seconds = 0;
  bool seen = false;
  for (const watched_work& watched : current_) {
    seconds += std::max(0.0, watched.work.amount - watched.done) * cost_now(watched.work.kind);
    seen = seen || (is_seen(watched.work) && watched.done > 0);
  }
  // Calls of which nothing is seen, or not yet, go on by the clock.
  if (!seen)
    seconds = std::max(seconds / 20, seconds - (now - step_began_));
  for (std::size_t step = step_ + (in_step_ ? 1 : 0); step < plan_.steps().size(); ++step)
    for (const planned_work& work : plan_.steps()[step].works)
      seconds += work.amount * cost_of(work.kind);
  return seconds;
}

run_whole run_meter::at(double now) {
  const double passed = now - looked_;
  look(now);
  const double guess = now + left(now);
  const double settling =
      std::clamp((guess - now) * settling_of_left, shortest_settling, longest_settling);
  end_ = end_ < 0 ? guess : end_ + (guess - end_) * (1 - std::exp(-passed / settling));
  const double seconds = std::max(0.0, end_ - now);
  if (now > 0)
    shown_ = std::max(shown_, std::min(most_percent, 100 * now / (now + seconds)));
  const int count = static_cast<int>(plan_.steps().size());
  run_whole whole{shown_, std::min(static_cast<int>(step_) + 1, count), count, name_, std::nullopt};
  if (now >= first_word)
    whole.seconds_left = seconds;
  return whole;
}

work_costs run_meter::learned() const {
  work_costs costs = costs_;
  for (std::size_t kind = 0; kind < work_kinds; ++kind)
    if (spent_[kind].done > 0)
      costs[kind] = (trust_for_later + spent_[kind].time) /
                    (trust_for_later / costs_[kind] + spent_[kind].done);
  return costs;
}

std::string time_left_text(std::optional<double> seconds_left) {
  if (!seconds_left)
    return {};
  const double seconds = *seconds_left;
  if (seconds < 4.5)
    return "a few seconds left";
  if (seconds < 9.5)
    return "about " + trimmed(std::lround(seconds)) + " s left";
  if (seconds < 57.5)
    return "about " + trimmed(std::lround(seconds / 5) * 5) + " s left";
  if (seconds < 600) {
    const long tens = std::lround(seconds / 10);
    const std::string rest = tens % 6 == 0 ? "" : " " + trimmed(tens % 6 * 10) + " s";
    return "about " + trimmed(tens / 6) + " min" + rest + " left";
  }
  const long minutes = std::lround(seconds / 60);
  if (minutes < 60)
    return "about " + trimmed(minutes) + " min left";
  const std::string rest = minutes % 60 == 0 ? "" : " " + trimmed(minutes % 60) + " min";
  return "about " + trimmed(minutes / 60) + " h" + rest + " left";
}

std::string whole_text(const run_whole& whole) {
  if (whole.count == 0)
    return {};
  std::string text = "step " + trimmed(whole.step) + " of " + trimmed(whole.count);
  if (!whole.name.empty())
    text += ": " + whole.name;
  if (const std::string time = time_left_text(whole.seconds_left); !time.empty())
    text += ", " + time;
  return text;
}

}  // namespace corvane
