#include "runner/shelled.h"

#include "formats/text.h"
#include "platform/files/files.h"
#include "platform/files/folder_lock.h"
#include "platform/files/paths.h"
#include "project/project.h"
#include "runner/clean_up.h"
#include "runner/line_cutter.h"
#include "runner/output_lines.h"
#include "runner/output_text.h"
#include "runner/run_files.h"
#include "runner/run_log.h"
#include "runner/run_meter.h"
#include "runner/run_output.h"
#include "runner/run_speeds.h"
#include "runner/run_steps.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <exception>
#include <future>
#include <system_error>
#include <thread>
#include <utility>

namespace corvane {
namespace {

using steady = std::chrono::steady_clock;

/// A pass that finds output looks for more for this long: a tool that prints faster than ten
/// pipefuls a second is not held up, and the windows stay answering.
constexpr auto pass_time = std::chrono::milliseconds(2);

/// Read at once at most: a part of what a pass can work through in its time.
constexpr std::size_t largest_piece = std::size_t{64} * 1024;

/// What the smallest pipe holds, nearly: a tool that had filled it was waiting to print more, and
/// is given the moment it takes to do so.
constexpr std::size_t smallest_pipe = 4000;

/// Read at most when the run is to end.
constexpr std::size_t most_unread = std::size_t{4} << 20;

/// Tools that were killed are gone within milliseconds, but for one that waits for a disk.
constexpr auto time_to_die = std::chrono::seconds(2);

/// With which conspawn ends after a script with errors; anything higher is no end of its own.
constexpr std::uint32_t worst_script_status = 1;

/// How often the listener is told where the run is.
constexpr auto whole_time = std::chrono::milliseconds(250);

/// The file of this machine's speeds is much smaller.
constexpr std::uintmax_t largest_speeds = 4096;

/// Scripts are much smaller; of a larger one no steps are known beforehand.
constexpr std::uintmax_t largest_script = std::uintmax_t{64} << 20;

/// How the script runner ended, for the line that tells of its early end.
std::string how_ended(const std::optional<exit_status>& status) {
  if (!status)
    return {};
  if (status->by_signal)
    return " (conspawn was ended by signal " + std::to_string(status->number) + ")";
  return " (conspawn ended with status " + std::to_string(status->number) + ")";
}

}  // namespace

struct shelled::state {
  run_listener& listener;
  prompts& ask;
  process_launcher& launcher;
  folder_lock& lock;
  std::string app;

  std::unique_ptr<child_process> child{};  ///< while a run is going on
  run_log log{};
  line_end_normalizer normalize{};
  run_output output{};
  run_steps steps{};
  run_meter meter{};
  line_cutter meter_lines{};
  bool metered_to_its_end = true;  ///< the meter has seen all lines as they came
  steady::time_point began{}, whole_told{};
  bool cleanup = false;
  std::string log_name = run_file::log;
  bool tells_outcome = true;
  bool keeps_lock = false;
  std::function<run_settled(run_outcome)> settle{};
  std::function<void()> alive{};
  std::function<bool()> gives_up_earlier{};
  std::vector<std::string> notes{};
  found_in_run findings{};
  std::string restored{};
  bool in_pass = false;
  bool broken_off = false;
  run_outcome outcome = run_outcome::none;

  std::string log_path() const { return join_path(app, log_name); }
  run_trouble log_trouble(const std::string& why) const {
    return {log_path(),
            (log.is_in_place() ? "could not be written whole: " : "could not be written: ") + why};
  }

  void begin(const std::string& first_lines);
  void give_lock_back();
  void refuse(const std::string& text);
  void not_started(const start_result& start);
  void pass();
  bool read_pieces();
  void take(const std::string& bytes);
  bool tell_steps();
  void begin_meter(std::string_view script, const run_options& options);
  void tell_whole();
  void keep_speeds();
  void broke();
  bool has_ended();
  void drain();
  run_settled settled();
  std::vector<std::string> settle_run();
  void warn(const std::vector<std::string>& warnings);
  failure close_run();
  std::string places_of_logs() const;
  void tell_log_trouble(const std::string& why);
  std::vector<run_trouble> cleaned_up() const;
  void finish();
  void leave();
  void note(const std::vector<run_trouble>& troubles);
  void tell(const std::vector<run_trouble>& troubles);
  run_end end_of_run(std::vector<run_trouble> troubles) const;
  void say_outcome(bool failed);
  void unexpected(int number, const std::string& description);
};

/// Forgets the run before.
void shelled::state::begin(const std::string& first_lines) {
  log.begin(log_path());
  log.append(first_lines.empty() ? version_title + std::string(crlf) : first_lines);
  normalize = {};
  output = {};
  notes.clear();
  findings.reset();
  restored.clear();
  broken_off = false;
}

void shelled::state::give_lock_back() {
  if (!keeps_lock)
    lock.release();
}

/// A run that did not start.
void shelled::state::refuse(const std::string& text) {
  outcome = run_outcome::none;
  const std::vector<std::string> warnings = settle_run();
  give_lock_back();
  warn(warnings);
  ask.message({text, icon::critical, buttons::ok});
}

void shelled::state::not_started(const start_result& start) {
  if (start.failed == start_result::step::pipe)
    refuse("CreatePipe failed. Error: " + std::to_string(start.error));
  else
    refuse(missing_script_runner);
  listener.finished({});
}

/// Tells the steps that were read; whether there was one.
bool shelled::state::tell_steps() {
  const std::vector<std::string> lines = output.take_steps();
  for (const std::string& line : lines)
    listener.step(steps.at(line));
  return !lines.empty();
}

void shelled::state::begin_meter(std::string_view script, const run_options& options) {
  const bool makes_disc =
      std::any_of(options.variables.begin(), options.variables.end(),
                  [](const child_variable& v) { return v.name == run_file::makes_disc_variable; });
  const result<std::string> speeds = read_file(join_path(app, run_file::speeds), largest_speeds);
  meter = run_meter(script, makes_disc, parse_costs(speeds ? *speeds : std::string()),
                    files_on_disk(), options.removed);
  meter_lines = {};
  metered_to_its_end = true;
  began = whole_told = steady::now();
}

void shelled::state::tell_whole() {
  whole_told = steady::now();
  const run_whole whole = meter.at(std::chrono::duration<double>(whole_told - began).count());
  if (whole.count > 0)
    listener.whole(whole);
}

/// Of a run that did all its work. A file that cannot be written costs the next run its guess.
void shelled::state::keep_speeds() {
  if (const work_costs learned = meter.learned(); learned != meter.known())
    replace_file(join_path(app, run_file::speeds), costs_text(learned));
}

/// Reads what waits. False when the run has come to its end: the marker was read or the pipe is
/// broken.
bool shelled::state::read_pieces() {
  const auto until = steady::now() + pass_time;
  bool read_some = false;
  bool come_to_step = false;
  bool much = false;
  for (;;) {
    const std::optional<std::size_t> waiting = child->waiting();
    if (!waiting) {
      broke();
      return false;
    }
    if (*waiting < 1) {
      if (!much || steady::now() >= until)
        break;
      std::this_thread::yield();
      continue;
    }
    const std::optional<std::string> bytes = child->read(std::min(*waiting, largest_piece));
    if (!bytes) {
      broke();
      return false;
    }
    const std::string piece = normalize(*bytes);
    log.append(piece);
    output.feed(*bytes);
    meter_lines.feed(*bytes, [this](std::string_view line) { meter.line(line); });
    const bool new_step = tell_steps();
    read_some = true;
    come_to_step = come_to_step || new_step;
    much = bytes->size() >= smallest_pipe;
    if (log.holds_marker())
      return false;
    if (const std::optional<double> percent = progress_of(piece))
      listener.progress({std::clamp(*percent, 0.0, 100.0), !new_step});
    if (steady::now() >= until)
      break;
  }
  if (read_some)
    listener.output(log.tail());
  if (come_to_step || steady::now() - whole_told >= whole_time)
    tell_whole();
  return true;
}

/// The pipe is broken before the marker came. No tool has told what ended the script: the runner
/// adds the error line.
void shelled::state::broke() {
  log.append(normalize.rest());
  // Always after a line break: the error test wants one before the blank before "ERR".
  log.append(normalize("\n" + std::string(error_mark) +
                       "the work script ended before its last line" + how_ended(child->ended())));
}

void shelled::state::take(const std::string& bytes) {
  log.append(normalize(bytes));
  output.feed(bytes);
  tell_steps();
}

/// Whether the run has come to its end by itself, of which no pass knows yet: nor is it known how
/// long ago.
bool shelled::state::has_ended() {
  metered_to_its_end = false;
  for (std::size_t left = most_unread; left > 0;) {
    const std::optional<std::size_t> waiting = child->waiting();
    if (waiting && *waiting < 1)
      return false;
    const std::optional<std::string> bytes =
        waiting ? child->read(std::min({*waiting, largest_piece, left})) : std::nullopt;
    if (!bytes) {
      // Who asks for the end may have ended conspawn too: Ctrl-C reaches every program of a
      // console.
      const std::optional<exit_status> status = child->ended();
      const bool by_itself = status && !status->by_signal && status->number <= worst_script_status;
      if (by_itself)
        broke();
      return by_itself;
    }
    take(*bytes);
    if (log.holds_marker())
      return true;
    left -= std::min(left, bytes->size());
  }
  return false;
}

/// Takes what still comes after the command was ended, until nothing of it is left that could write
/// into the disc.
void shelled::state::drain() {
  const auto until = steady::now() + time_to_die;
  for (std::size_t left = most_unread; left > 0;) {
    const std::optional<std::size_t> waiting = child->waiting();
    if (!waiting || (*waiting < 1 && steady::now() >= until))
      return;
    if (*waiting < 1) {
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
      continue;
    }
    const std::optional<std::string> bytes = child->read(std::min({*waiting, largest_piece, left}));
    if (!bytes || bytes->empty())
      return;
    take(*bytes);
    left -= bytes->size();
  }
}

/// Does so in a thread: an earlier disc goes from a slow disk in some seconds, of which the
/// listener is told.
run_settled shelled::state::settled() {
  const auto work = std::exchange(settle, nullptr);
  std::future<run_settled> done = std::async(std::launch::async | std::launch::deferred,
                                             [&work, as = outcome] { return work(as); });
  while (done.wait_for(whole_time) == std::future_status::timeout)
    if (outcome == run_outcome::success)
      tell_whole();
  // Here, for what is told next waits for the user.
  meter.settled();
  meter.at(std::chrono::duration<double>(steady::now() - began).count());
  return done.get();
}

/// What the run has left is set in order, and the log says what was done. Gives what the user has
/// to know.
std::vector<std::string> shelled::state::settle_run() {
  alive = nullptr;
  gives_up_earlier = nullptr;  // it may hold a lock
  if (!settle)
    return {};
  run_settled done = settled();
  notes = done.notes;
  findings = std::move(done.findings);
  restored = done.restored;
  for (const std::vector<std::string>* lines : {&done.notes, &done.warnings})
    for (const std::string& line : *lines)
      log.append(normalize((log.at_line_start() ? "INFO: " : "\nINFO: ") + line + "\n"));
  return done.warnings;
}

void shelled::state::warn(const std::vector<std::string>& warnings) {
  std::string text;
  for (const std::string& warning : warnings)
    text += (text.empty() ? "" : "\n") + warning;
  if (!text.empty())
    ask.message({text, icon::exclamation});
}

/// One polling pass. None begins in another, while a message stands for instance.
void shelled::state::pass() {
  if (in_pass)
    return;
  struct mark {
    bool& flag;
    explicit mark(bool& f) : flag(f) { flag = true; }
    ~mark() { flag = false; }
  } const passing(in_pass);
  if (alive)
    alive();
  if (!read_pieces())
    finish();
}

/// What every end of a run has in common. Gives the reason when the log file could not be written,
/// which has been told.
failure shelled::state::close_run() {
  child.reset();
  log.append(normalize.rest());
  const std::vector<std::string> warnings = settle_run();
  failure not_written = log.finish();
  give_lock_back();
  listener.closed();
  warn(warnings);
  if (not_written)
    tell_log_trouble(*not_written);
  return not_written;
}

/// Where the log of this run is that has not its place, and whose log has it; empty: there is
/// neither.
std::string shelled::state::places_of_logs() const {
  std::vector<std::string> sentences;
  if (const std::string& part = log.left_beside(); !part.empty())
    sentences.push_back("The log of this run is in \"" + part + "\".");
  if (file_exists(log_path()))
    sentences.push_back("\"" + log_path() + "\" is that of an earlier run.");
  return sentences.empty() ? std::string() : ".  " + join(sentences, "  ");
}

void shelled::state::tell_log_trouble(const std::string& why) {
  if (log.is_in_place())
    ask.message(
        {"The log could not be written whole: " + why + ".  It is kept as far as it was written.",
         icon::exclamation});
  else
    ask.message({"The log file could not be written: " + why + places_of_logs(), icon::critical});
}

/// Whatever goes wrong with what a good run leaves, it was a good run.
std::vector<run_trouble> shelled::state::cleaned_up() const {
  try {
    return clean_up(app);
  } catch (const std::system_error& error) {
    return {{app, std::string("could not be cleaned up: ") + error.what()}};
  }
}

void shelled::state::finish() {
  output.end();  // the marker's line end may not have been read
  meter_lines.end([this](std::string_view line) { meter.line(line); });
  tell_steps();
  const bool failed = log.holds_error();
  if (!failed) {
    const auto asked = std::exchange(gives_up_earlier, nullptr);
    meter.settling(!asked || asked());
    tell_whole();  // what is done now may take some seconds
  }
  outcome = failed ? run_outcome::failed : run_outcome::success;
  std::vector<run_trouble> troubles;
  const failure not_written = close_run();
  if (!failed && metered_to_its_end)
    keep_speeds();
  if (!failed && cleanup)
    troubles = cleaned_up();
  if (not_written) {
    tell(troubles);
    troubles.insert(troubles.begin(), log_trouble(*not_written));
  } else {
    note(troubles);
  }
  listener.finished(end_of_run(std::move(troubles)));
  if (tells_outcome)
    say_outcome(failed);
}

void shelled::state::leave() {
  std::vector<run_trouble> troubles;
  if (const failure not_written = close_run())
    troubles.push_back(log_trouble(*not_written));
  listener.finished(end_of_run(std::move(troubles)));
}

/// The log is in its place already, and nothing of this makes the run a failure.
void shelled::state::note(const std::vector<run_trouble>& troubles) {
  for (const run_trouble& trouble : troubles)
    log.add_line("INFO: \"" + trouble.file + "\" " + trouble.text);
}

/// The same where there is no log.
void shelled::state::tell(const std::vector<run_trouble>& troubles) {
  std::string text = "The clean-up could not do everything:";
  for (const run_trouble& trouble : troubles)
    text += "\n\"" + trouble.file + "\" " + trouble.text;
  if (!troubles.empty())
    ask.message({text, icon::exclamation});
}

run_end shelled::state::end_of_run(std::vector<run_trouble> troubles) const {
  return {outcome,  output.errors(), output.error_count(), std::move(troubles), notes,
          findings, restored};
}

void shelled::state::say_outcome(bool failed) {
  const message_box success{
      "Process complete.  Please review the log for more information (recommended).",
      icon::information, buttons::ok_cancel};
  const message_box trouble{"There was an error.  Please review the log.", icon::critical,
                            buttons::ok_cancel};
  // Of a log that is not there the user knows; an earlier one would be taken for this run's.
  if (ask.message(failed ? trouble : success) == answer::ok && log.is_in_place() &&
      !ask.show_text_file(log_path()))
    ask.message({"The log cannot be opened.  It is in " + log_path() + ".", icon::information});
}

/// Polling stops here. The run can still be ended by endprocess or stop.
void shelled::state::unexpected(int number, const std::string& description) {
  const std::string about =
      std::to_string(number) + " in the update code." + std::string(crlf) + description;
  broken_off = true;
  listener.broken_off();
  log.copy_to(join_path(app, run_file::unexpected_error), "Unexpected error in gui" + about);
  ask.message({"Unexpected error" + about});
}

shelled::shelled(run_listener& listener, prompts& ask, process_launcher& launcher,
                 folder_lock& lock, std::string app)
    : s_(std::make_unique<state>(state{listener, ask, launcher, lock, std::move(app)})) {}

shelled::~shelled() = default;

void shelled::ExecuteCommand(std::string_view command_line, const run_options& options) {
  if (running())
    return;
  s_->log_name = options.log;
  s_->tells_outcome = options.tells_outcome;
  s_->keeps_lock = options.keeps_lock;
  s_->begin(options.first_lines);
  if (!command_line.empty())
    CommandLine = command_line;
  const result<std::string> script = read_file(CommandLine, largest_script);
  s_->steps.begin(script ? *script : std::string());
  s_->begin_meter(script ? *script : std::string(), options);
  s_->cleanup = options.cleanup;
  s_->settle = options.settle;
  s_->alive = options.alive;
  s_->gives_up_earlier = options.gives_up_earlier;
  s_->listener.started({s_->steps.count(), options.first_lines});
  if (CommandLine.empty()) {
    // The listener takes the run as begun for good: nothing can have been written for it.
    s_->refuse("Command Line empty");
    return;
  }
  start_result start =
      s_->launcher.start("bin/conspawn.exe \"" + CommandLine + "\"", options.variables);
  if (!start.child) {
    s_->not_started(start);
    return;
  }
  s_->child = std::move(start.child);
  s_->outcome = run_outcome::running;
  // Opened after the start: the child shall not inherit it.
  s_->log.open();
}

void shelled::update() {
  if (!watching())
    return;
  try {
    s_->pass();
  } catch (const std::system_error& error) {
    s_->unexpected(error.code().value(), error.what());
  } catch (const std::exception& error) {
    s_->unexpected(0, error.what());
  }
}

void shelled::endprocess() {
  if (!running())
    return;
  s_->outcome = run_outcome::stopped;
  s_->settle = nullptr;
  s_->alive = nullptr;
  s_->gives_up_earlier = nullptr;
  s_->leave();
}

void shelled::stop() {
  if (!running())
    return;
  // After an unexpected error nobody knows what of the output was lost.
  const bool may_have_ended = watching() && !s_->in_pass;
  if (may_have_ended && s_->has_ended())
    return s_->finish();
  s_->child->kill_all();
  s_->drain();
  if (may_have_ended && s_->log.holds_marker())
    return s_->finish();
  s_->outcome = run_outcome::stopped;
  s_->log.append(s_->normalize.rest());
  s_->log.append(s_->normalize(s_->log.at_line_start() ? "*** stopped by the user\n"
                                                       : "\n*** stopped by the user\n"));
  s_->leave();
}

bool shelled::running() const {
  return s_->child != nullptr;
}

bool shelled::watching() const {
  return running() && !s_->broken_off;
}

run_outcome shelled::outcome() const {
  return s_->outcome;
}

}  // namespace corvane
