#include "ui/disc/project_check.h"

#include "authoring/asked_disc.h"
#include "authoring/checks.h"
#include "authoring/navigation_xml.h"
#include "formats/sanitized.h"
#include "project/disc_of.h"
#include "project/edited_xml.h"
#include "project/messages.h"
#include "project/moved_commands.h"
#include "ui/disc/finding_places.h"
#include "ui/disc/reading_box.h"
#include "ui/main_window.h"
#include "ui/subtitles/clean_subtitles_window.h"

#include <wx/app.h>
#include <wx/utils.h>

#include <memory>
#include <optional>
#include <utility>

namespace corvane {
namespace {

constexpr int check_milliseconds = 25;    // somebody waits for the end, and may press "stop"
constexpr int patience_with_check = 300;  // progress that comes and goes at once only flickers

bool is_empty(const project& p) {
  return p.List11.empty() && p.menulist.empty();
}

}  // namespace

project_check::project_check(main_window& main) : main_(main) {}

// A child of the main window; it must not outlive this.
project_check::~project_check() {
  if (window_ != nullptr)
    delete window_.get();
}

/// The output folder, which hand-edited XML alone names before a run.
std::string project_check::named_output() const {
  return output_folder(folder_of_custom_xml(edited_xml(main_.shown_project())));
}

/// Where a run would write, as far as that is known before it asks: most people keep their discs in
/// one place.
std::string project_check::output() const {
  const std::string named = named_output();
  return named.empty() ? main_.last_output() : named;
}

/// The disc that the project asks for.
result<disc_description> project_check::asked() const {
  return asked_disc(main_.shown_project(), {main_.app(), named_output()});
}

std::unique_ptr<examination> project_check::examine(examination::depth how_deep) {
  return std::make_unique<examination>(
      disc_, how_deep, facts_,
      examination_around{edited_xml(main_.shown_project()), output(), main_.app(), fonts_,
                         noted_command_targets(main_.shown_project())});
}

void project_check::check() {
  if (main_.raise_editor())
    return;
  std::optional<disc_description> checked;
  main_.run("check project", [&](document& doc) {
    result<disc_description> disc = asked();
    if (is_empty(doc.p))
      say(doc, icon::exclamation, "Please add a title first: there is nothing to check yet.");
    else if (!disc)
      say(doc, icon::exclamation,
          "The hand-edited XML cannot be checked: " + sanitized(disc.error) + ".");
    else
      checked = std::move(*disc);
  });
  if (!checked)
    return;
  list_fonts(*checked);
  begin_look();
  check_ = examine(examination::depth::whole_files);
  checking_for_.Start();
  show();
}

void project_check::list_fonts(const disc_description& disc) {
  if (fonts_ || !has_subtitles(disc))
    return;
  const wxBusyCursor busy;  // the system may list its fonts for the first time
  fonts_ = system_fonts();
}

void project_check::show() {
  shows_run_ = false;
  fill_window();
  wxWakeUpIdle();
}

void project_check::fill_window() {
  findings_window& filled = window();
  filled.SetTitle(shows_run_ ? "findings of the last run" : "findings");
  filled.show_findings(shown());
  filled.Show();
  filled.come_back();
}

void project_check::take_run(std::vector<finding> findings) {
  const result<disc_description> disc = asked();
  run_disc_ = disc ? *disc : disc_description();
  run_findings_ = finding_list(std::move(findings), files_read::whole);
  had_run_ = true;
  run_is_new_ = run_findings_.count(finding_severity::error) > 0 ||
                run_findings_.count(finding_severity::warning) > 0;
  if (shows_run_ && window_ != nullptr)
    window_->show_findings(run_findings_);
  wxWakeUpIdle();
}

void project_check::show_run() {
  if (main_.raise_editor())
    return;
  if (!had_run_) {
    main_.run("check project", [](document& doc) {
      say(doc, icon::information,
          "No disc has been authored since the program was started: nothing was found yet.");
    });
    return;
  }
  stop();
  shows_run_ = true;
  fill_window();
}

findings_window& project_check::window() {
  if (window_ == nullptr) {
    findings_window::handlers on;
    on.go_to = [this](const finding& f) { go_to(f); };
    on.leads_somewhere = [this](const finding& f) { return leads_somewhere(f); };
    on.can_clean = [this](const finding& f) { return can_clean(f); };
    on.clean = [this](const finding& f) { clean(f); };
    on.check = [this] { check(); };
    on.stop = [this] { stop(); };
    on.save = [this] { save(); };
    on.closed = [this] {
      stop();
      window_ = nullptr;  // it is deleted later
    };
    window_ = new findings_window(&main_, std::move(on));
    window_->let_commands(main_.may_command());
  }
  return *window_;
}

void project_check::look() {
  looks_ = true;
}

bool project_check::work() {
  if (std::exchange(run_is_new_, false))
    show_run();
  else if (looks_)
    begin_look();
  else if (look_)
    step_look();
  else if (check_)
    step_check();
  return look_ != nullptr || check_ != nullptr;
}

// What was found before stands until the look has come to its end, which is mostly at once.
void project_check::begin_look() {
  looks_ = false;
  const result<disc_description> disc = asked();
  if (!disc || is_empty(main_.shown_project())) {
    look_.reset();
    end_check();
    disc_ = {};
    if (disc)
      take({}, files_read::beginnings);
    else
      take_with_refusal({}, files_read::beginnings);
    return;
  }
  const bool other = *disc != disc_;
  disc_ = *disc;
  if (check_ && other)
    check_ = examine(examination::depth::whole_files);
  look_ = examine(examination::depth::whole_files);
}

// After a check every file is known to its end, but for what was changed since; when nothing is
// left to be read, what was repaired goes from the list without another check.
void project_check::step_look() {
  if (look_->step_beginnings(check_milliseconds))
    return;
  const bool known = look_->bytes_to_read() == 0;
  const std::unique_ptr<examination> seen = std::move(look_);
  take_with_refusal(known ? seen->findings() : seen->findings(examination::depth::beginnings),
                    known ? files_read::whole : files_read::beginnings);
}

void project_check::step_check() {
  if (check_->step(check_milliseconds)) {
    show_progress();
    return;
  }
  take_with_refusal(check_->findings(), files_read::whole);
  end_check();
}

material_equipment project_check::material() {
  return {&facts_, [this](examination& e) { return read_before_run(e); }};
}

look_end project_check::read_before_run(examination& e) {
  const bool whole = read_with_box(main_,
                                   {"Reading the files of the project...", "&Skip",
                                    "Author without looking at the rest of the files"},
                                   e);
  return whole ? look_end::whole : look_end::skipped;
}

void project_check::show_progress() {
  if (window_ == nullptr || checking_for_.Time() < patience_with_check)
    return;
  window_->show_progress(check_progress{part_read(check_->bytes_read(), check_->bytes_to_read()),
                                        check_->current_file()});
}

void project_check::take(std::vector<finding> findings, files_read read) {
  findings_ = finding_list(std::move(findings), read);
  main_.show_findings(findings_);
  if (window_ != nullptr && !shows_run_)
    window_->show_findings(findings_);
}

/// A run would refuse the project for what no other rule may tell of.
void project_check::take_with_refusal(std::vector<finding> findings, files_read read) {
  const project& p = main_.shown_project();
  if (auto refused = finding_of_refusal(disc_of(p), edited_xml(p), native_style()))
    findings.push_back(std::move(*refused));
  take(std::move(findings), read);
}

void project_check::end_check() {
  check_.reset();
  if (window_ != nullptr)
    window_->show_progress(std::nullopt);
}

void project_check::stop() {
  if (!check_)
    return;
  take_with_refusal(check_->findings(), files_read::some);
  end_check();
}

void project_check::let_commands(bool enabled) {
  if (window_ != nullptr)
    window_->let_commands(enabled);
}

// Commands, chapters and languages of hand-edited XML are repaired in it; the editors of the rows
// would discard it.
finding_target project_check::place_of(const finding& f, const disc_description& examined) const {
  using place = finding_target::place;
  const project& p = main_.shown_project();
  finding_target to = target_of(f, examined, disc_of(p));
  const bool is_written_in_xml = to.where == place::title_command ||
                                 to.where == place::first_play || to.where == place::chapters ||
                                 to.where == place::languages;
  if (is_written_in_xml && !edited_xml(p).empty())
    to.where = to.title > 0 ? place::title : place::none;
  return to;
}

bool project_check::leads_somewhere(const finding& f) const {
  return place_of(f, shown_disc()).where != finding_target::place::none;
}

void project_check::go_to(const finding& f) {
  if (main_.raise_editor() || !main_.may_command())
    return;
  open_place(main_, place_of(f, shown_disc()));
  comes_back_ = main_.has_editor();
}

bool project_check::can_clean(const finding& f) const {
  return cleaning_helps(f) && place_of(f, shown_disc()).where == finding_target::place::subtitles;
}

void project_check::clean(const finding& f) {
  if (main_.raise_editor() || !main_.may_command())
    return;
  const finding_target to = place_of(f, shown_disc());
  clean_subtitles_of(main_, to.title, to.part);
  comes_back_ = main_.has_editor();
}

bool project_check::has_place(const finding& f) const {
  const result<disc_description> disc = asked();
  return place_of(f, disc ? *disc : disc_of(main_.shown_project())).where !=
         finding_target::place::none;
}

// The run has looked at the files and listed the fonts, so that the look here takes hardly a moment
// and finds the same.
void project_check::repair(const finding& f) {
  const result<disc_description> disc = asked();
  // Of hand-edited XML that cannot be read nothing is found; the question was about the rows.
  if (!disc) {
    open_place(main_, place_of(f, disc_of(main_.shown_project())));
    return;
  }
  list_fonts(*disc);
  begin_look();
  while (look_)
    step_look();
  show();
  window_->select(f);
  go_to(f);
}

// After the editor has given the keyboard to the main window.
void project_check::come_back() {
  if (std::exchange(comes_back_, false) && window_ != nullptr)
    window_->CallAfter([this] { window_->come_back(); });
}

void project_check::save() {
  main_.run("save findings", [this](document& doc) { save_findings(doc, shown()); });
}

}  // namespace corvane
