#include "runner/shelled.h"

#include "formats/text.h"
#include "platform/files/files.h"
#include "platform/files/folder_lock.h"
#include "platform/files/paths.h"
#include "platform/processes/process.h"
#include "runner/output_text.h"
#include "runner/run_files.h"
#include "runner/run_log.h"

#include <algorithm>
#include <chrono>
#include <exception>
#include <filesystem>
#include <system_error>
#include <thread>
#include <utility>

namespace corvane {
namespace {

namespace fs = std::filesystem;
using steady = std::chrono::steady_clock;

/// A pass that finds output looks for more for this long: a tool that prints faster than ten
/// pipefuls a second is not held up, and the windows stay answering.
constexpr auto pass_time = std::chrono::milliseconds(2);

/// Read at once at most: a part of what a pass can work through in its time.
constexpr std::size_t largest_piece = std::size_t{64} * 1024;

/// What the smallest pipe holds, nearly: a tool that had filled it was waiting to print more, and
/// is given the moment it takes to do so.
constexpr std::size_t smallest_pipe = 4000;

/// How the script runner ended, for the line that tells of its early end.
std::string how_ended(const std::optional<exit_status>& status) {
  if (!status)
    return {};
  if (status->by_signal)
    return " (conspawn was ended by signal " + std::to_string(status->number) + ")";
  return " (conspawn ended with status " + std::to_string(status->number) + ")";
}

/// Whether the script runner ended as one does whose script went well.
bool ended_well(const std::optional<exit_status>& status) {
  return !status || (!status->by_signal && status->number == 0);
}

/// Removes every .xml, .bat and .png file of the folder. The two copies first: so each kind has a
/// file to remove, whatever the run wrote.
void clean_up(const std::string& app) {
  for (const char* copy : run_file::copies_of_script)
    fs::copy_file(path_of(join_path(app, run_file::script)), path_of(join_path(app, copy)),
                  fs::copy_options::overwrite_existing);
  for (const std::string& name : files_in(app)) {
    const std::string extension = lower_extension_of(name);
    if (extension == "xml" || extension == "bat" || extension == "png")
      fs::remove(path_of(join_path(app, name)));
  }
}

}  // namespace

struct shelled::state {
  run_screen& screen;
  prompts& ask;
  process_launcher& launcher;
  folder_lock& lock;
  std::string app;

  std::unique_ptr<child_process> child{};  ///< while a run is going on
  run_log log{};
  line_end_normalizer normalize{};
  run_outcome outcome = run_outcome::none;

  std::string log_path() const { return join_path(app, run_file::log); }

  void refuse(const std::string& text);
  void not_started(const start_result& start);
  void pass();
  bool read_pieces();
  void take(std::string_view text);
  void show_view();
  void broke();
  void drain();
  void close_run();
  void finish();
  void say_outcome(bool failed);
  void unexpected(int number, const std::string& description);
};

/// A run that did not start.
void shelled::state::refuse(const std::string& text) {
  outcome = run_outcome::none;
  lock.release();
  ask.message({text, icon::critical, buttons::ok});
}

void shelled::state::not_started(const start_result& start) {
  if (start.failed == start_result::step::pipe)
    refuse("CreatePipe failed. Error: " + std::to_string(start.error));
  else
    refuse("Binaries not found, please reinstall the program.");
  screen.hide_log();
  screen.enable_main(true);
}

void shelled::state::take(std::string_view text) {
  log.append(text);
}

/// Reads what waits. False when the run has come to its end: the marker was read or the pipe is
/// broken.
bool shelled::state::read_pieces() {
  const auto until = steady::now() + pass_time;
  bool read_some = false;
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
    take(piece);
    read_some = true;
    much = bytes->size() >= smallest_pipe;
    if (log.holds_marker())
      return false;
    if (const std::optional<double> percent = progress_of(piece))
      screen.set_log_progress(std::clamp(*percent, 0.0, 100.0));
    if (steady::now() >= until)
      break;
  }
  if (read_some)
    show_view();
  return true;
}

void shelled::state::show_view() {
  const std::optional<log_view> view = view_of(log.tail());
  if (!view) {
    screen.refresh_log();
    return;
  }
  if (!view->caption.empty())
    screen.set_log_caption(view->caption);
  screen.set_log_text(view->text);
}

/// The pipe is broken. When the marker had not come, no tool has told what ended the script: the
/// runner adds the error line. What looks like the marker within a line is the name of a file
/// perhaps, and counts only when the script runner ended well or an error has told why it did not.
void shelled::state::broke() {
  take(normalize.rest());
  const std::optional<exit_status> status = child->ended();
  if (log.ends_with_marker() && (log.holds_error() || ended_well(status)))
    return;
  // Always after a line break: the error test wants one before the blank before "ERR".
  take(normalize("\nERR:  the work script ended before its last line" + how_ended(status)));
}

/// Takes what still waits after the command was ended.
void shelled::state::drain() {
  for (std::size_t left = 4u << 20; left > 0;) {
    const std::optional<std::size_t> waiting = child->waiting();
    if (!waiting || *waiting < 1)
      return;
    const std::optional<std::string> bytes = child->read(std::min({*waiting, largest_piece, left}));
    if (!bytes || bytes->empty())
      return;
    take(normalize(*bytes));
    left -= bytes->size();
  }
}

/// One polling pass. The timer is off meanwhile, so that no pass can begin in another.
void shelled::state::pass() {
  screen.enable_timer(false);
  const bool goes_on = read_pieces();
  screen.enable_timer(true);
  if (!goes_on)
    finish();
}

/// What every end of a run has in common.
void shelled::state::close_run() {
  screen.enable_timer(false);
  child.reset();
  take(normalize.rest());
  const failure not_written = log.finish();
  lock.release();
  screen.enable_main(true);
  screen.set_log_text({});
  if (not_written)
    ask.message({"The log file could not be written: " + *not_written, icon::critical});
}

void shelled::state::finish() {
  const bool failed = log.holds_error();
  outcome = failed ? run_outcome::failed : run_outcome::success;
  close_run();
  if (!failed && screen.cleanup())
    clean_up(app);
  screen.hide_log();
  say_outcome(failed);
}

void shelled::state::say_outcome(bool failed) {
  const message_box success{
      "Process complete.  Please review the log for more information (recommended).",
      icon::information, buttons::ok_cancel};
  const message_box trouble{"There was an error.  Please review the log.", icon::critical,
                            buttons::ok_cancel};
  if (ask.message(failed ? trouble : success) == answer::ok)
    screen.open_log(log_path());
}

/// Polling stops here: the timer stays off and the main window disabled. The run can still be
/// ended by endprocess or stop.
void shelled::state::unexpected(int number, const std::string& description) {
  const std::string about =
      std::to_string(number) + " in the update code." + std::string(crlf) + description;
  screen.enable_timer(false);
  log.copy_to(join_path(app, run_file::unexpected_error), "Unexpected error in gui" + about);
  ask.message({"Unexpected error" + about});
}

shelled::shelled(run_screen& screen, prompts& ask, process_launcher& launcher, folder_lock& lock,
                 std::string app)
    : s_(std::make_unique<state>(state{screen, ask, launcher, lock, std::move(app)})) {}

shelled::~shelled() = default;

void shelled::ExecuteCommand(std::string_view command_line,
                             const std::vector<child_variable>& variables) {
  if (running())
    return;
  s_->log.begin(s_->log_path());
  s_->normalize = {};
  s_->take(s_->screen.main_caption() + std::string(crlf));
  s_->screen.set_log_progress(0);
  s_->screen.enable_main(false);
  if (!command_line.empty())
    CommandLine = command_line;
  if (CommandLine.empty()) {
    // The main window stays disabled: nothing can have been written for this run.
    s_->refuse("Command Line empty");
    return;
  }
  start_result start = s_->launcher.start("bin/conspawn.exe \"" + CommandLine + "\"", variables);
  if (!start.child) {
    s_->not_started(start);
    return;
  }
  s_->child = std::move(start.child);
  s_->outcome = run_outcome::running;
  // Opened after the start: the child shall not inherit it.
  s_->log.open();
  s_->screen.enable_timer(true);
}

void shelled::update() {
  if (!running())
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
  s_->close_run();
}

void shelled::stop() {
  if (!running())
    return;
  s_->child->kill_all();
  s_->drain();
  s_->take(s_->normalize.rest());
  s_->take(s_->normalize(s_->log.at_line_start() ? "*** stopped by the user\n"
                                                 : "\n*** stopped by the user\n"));
  endprocess();
}

bool shelled::running() const {
  return s_->child != nullptr;
}

run_outcome shelled::outcome() const {
  return s_->outcome;
}

}  // namespace corvane
