#include "ui/disc/run_display.h"

#include "platform/files/paths.h"
#include "project/project.h"
#include "runner/run_files.h"
#include "runner/run_plan.h"
#include "ui/disc/log_window.h"
#include "ui/main_window.h"
#include "ui/widgets/attention.h"
#include "ui/widgets/wx_text.h"

#include <utility>

namespace corvane {

run_display::run_display(main_window& main, std::function<void()> stop)
    : main_(main), stop_(std::move(stop)) {}

run_display::~run_display() {
  if (log_ != nullptr)
    log_->Destroy();
}

log_window& run_display::log() {
  if (log_ == nullptr) {
    log_ = new log_window(stop_, join_path(main_.app(), run_file::log));
    log_->show_text(std::string(version_title) + "\r\n");
    log_->run_is_active(!main_enabled_);
  }
  return *log_;
}

void run_display::show_log() {
  if (main_enabled_ && !has_text_ && log().has_last_log())
    log().show_last_log();
  else
    log().show_run();
  bring_up_log();
}

void run_display::show_last_log() {
  log().show_last_log();
  bring_up_log();
}

void run_display::bring_up_log() {
  log().Iconize(false);
  log().Show();
  log().Raise();
  log().Update();
}

void run_display::clear_log() {
  has_text_ = false;
  log().show_text(std::string(version_title) + "\r\n");
  log().show_run();
}

void run_display::let_main(bool enabled) {
  if (main_enabled_ == enabled)
    return;
  main_enabled_ = enabled;
  main_.let_commands(enabled);
  if (log_ != nullptr)
    log_->run_is_active(!enabled);
}

void run_display::started(const run_start& run) {
  shown_ = {};
  // Cleared before it is shown: the text of the run before must not be seen again.
  log().show_text({});
  log().show_run();
  bring_up_log();
  log().show_text(run.first_lines);
  log().show_progress(0);
  log().show_whole({});
  let_main(false);
  has_text_ = true;
}

void run_display::step(const run_step& step) {
  shown_.step(step);
}

void run_display::progress(const run_progress& progress) {
  log().show_progress(progress.percent);
}

void run_display::whole(const run_whole& whole) {
  log().show_whole(whole);
  if (whole.name == removal_step || whole.name == return_step)
    log().Update();  // the windows wait for it
}

void run_display::output(std::string_view tail) {
  const log_change change = shown_.output(tail);
  if (!change.caption.empty() && log().GetTitle() != wx_text(change.caption))
    log().SetTitle(wx_text(change.caption));
  if (change.text)
    log().show_text(*change.text);
  else
    log().Refresh();
}

void run_display::broken_off() {
  main_.let_timer(false);
}

void run_display::closed() {
  main_.let_timer(false);
  let_main(true);
  log().show_text({});
  has_text_ = false;
  log().log_has_changed();
}

void run_display::finished(const run_end& end) {
  if (end.outcome == run_outcome::success || end.outcome == run_outcome::failed)
    ask_for_attention(main_);  // a long run is left alone
  if (end.outcome == run_outcome::success)
    log().show_whole({100, 0, 0, {}, {}});
  log().Hide();
  log().SetTitle("Corvane log");  // the last step's name must not greet the next run
  main_.run_has_ended(end);
  let_main(true);
}

}  // namespace corvane
