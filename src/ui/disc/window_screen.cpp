#include "ui/disc/window_screen.h"

#include "project/project.h"
#include "ui/disc/log_window.h"
#include "ui/main_window.h"
#include "ui/widgets/open_text_file.h"
#include "ui/widgets/wx_text.h"

#include <utility>

namespace corvane {

window_screen::window_screen(main_window& main, std::function<void()> stop)
    : main_(main), stop_(std::move(stop)) {}

window_screen::~window_screen() {
  if (log_ != nullptr)
    log_->Destroy();
}

log_window& window_screen::log() {
  if (log_ == nullptr) {
    log_ = new log_window(stop_);
    log_->show_text(std::string(version_title) + "\r\n");
    log_->run_is_active(!main_enabled_);
  }
  return *log_;
}

std::string window_screen::main_caption() const {
  return utf8_of(main_.GetTitle());
}

void window_screen::enable_main(bool enabled) {
  main_enabled_ = enabled;
  main_.let_commands(enabled);
  if (log_ != nullptr)
    log_->run_is_active(!enabled);
}

void window_screen::enable_timer(bool enabled) {
  main_.let_timer(enabled);
}

bool window_screen::cleanup() const {
  return main_.shown_project().cleanup;
}

void window_screen::show_log() {
  log().Iconize(false);
  log().Show();
  log().Raise();
  log().Update();
}

void window_screen::hide_log() {
  if (log_ == nullptr)
    return;
  log_->Hide();
  log_->SetTitle("Corvane log");  // the last step's name must not greet the next run
}

void window_screen::refresh_log() {
  if (log_ != nullptr)
    log_->Refresh();
}

void window_screen::set_log_text(const std::string& text) {
  log().show_text(text);
}

void window_screen::set_log_caption(const std::string& caption) {
  if (log().GetTitle() != wx_text(caption))
    log().SetTitle(wx_text(caption));
}

void window_screen::set_log_progress(double percent) {
  log().show_progress(percent);
}

void window_screen::open_log(const std::string& path) {
  if (!open_text_file(path))
    main_.tell("The log cannot be opened.  It is in " + path + ".");
}

}  // namespace corvane
