#include "apps/corvane-author/import_files.h"

#include "apps/corvane-author/author_project.h"
#include "apps/corvane-author/console_prompts.h"
#include "import/finish_import.h"
#include "import/import_list.h"
#include "import/import_run.h"
#include "import/unfinished_imports.h"
#include "platform/files/files.h"
#include "platform/files/paths.h"
#include "platform/files/program_folder.h"
#include "platform/processes/interrupt.h"
#include "platform/processes/process.h"
#include "project/missing_tools.h"
#include "project/preferences.h"
#include "project/project_file.h"
#include "runner/run_meter.h"

#include <chrono>
#include <memory>
#include <utility>

namespace corvane {
namespace {

using namespace std::chrono_literals;

// Streams that are copied take about half a second a gigabyte: nothing is to be waited for.
constexpr auto look_interval = 20ms;

/// One import from the console: the project and everything around it.
class console_import {
 public:
  console_import(const author_arguments& arguments, report& out, const source_prober& probe)
      : arguments_(arguments),
        out_(out),
        probe_(probe),
        project_(absolute_path(arguments.project)),
        folder_(absolute_path(arguments.to)),
        app_(program_folder()),
        ask_(out, {}, false),
        doc_(ask_, prefs_) {
    // Before the current folder changes.
    for (const std::string& file : arguments.imported)
      files_.push_back(absolute_path(file));
  }

  int run() {
    if (const failure why = enter_program_folder(app_))
      return refused(*why);
    if (const std::string missing = missing_tools(app_, {import_tool().name}); !missing.empty()) {
      out_.message(missing);
      return tool_not_installed;
    }
    if (!open_project())
      return not_authorable;
    return plan_and_run();
  }

 private:
  int refused(const std::string& why) {
    out_.message(why + ".");
    return not_authorable;
  }

  bool open_project() {
    start_up(doc_);
    if (!entry_exists(project_))
      doc_.set_file(project_, {});
    else if (!loadprojectf(doc_, project_) || custom(doc_) != 1)
      return false;
    if (arguments_.pal && title_count(doc_.p) == 0 && menu_count(doc_.p) == 0)
      doc_.p.globalregion = "PAL";
    return true;
  }

  /// Their names would be taken.
  void remove_what_was_left() {
    folder_lock lock(app_);
    if (lock.take())
      remove_left_imports(app_);
  }

  int plan_and_run() {
    remove_what_was_left();
    import_list list(folder_);
    list.follow(doc_.p);
    list.choose(arguments_.choices);
    list.expect(read_import_speeds(app_));
    for (const std::string& file : files_)
      list.add(file);
    while (const auto file = list.next_unknown())
      list.know(look_into(*file, probe_));
    for (std::size_t row = 0; row < list.size(); ++row)
      tell_plan(list, row);
    if (const std::string trouble = list.trouble(); !trouble.empty()) {
      out_.message(trouble);
      return not_authorable;
    }
    if (const failure why = prepare_import_folder(folder_)) {
      out_.message(*why);
      return not_authorable;
    }
    out_.line(list.estimate());
    std::vector<import_job> jobs = list.begin();
    all_well_ = jobs.size() == list.size();
    return run_jobs(std::move(jobs));
  }

  void tell_plan(const import_list& list, std::size_t row) {
    if (const std::string& why = list.why_left_out(row); !why.empty()) {
      out_.message("\"" + list.path(row) + "\" is left out: " + why + ".");
      return;
    }
    const item_summary summary = list.summary(row);
    out_.line(printable(summary.heading));
    for (const summary_line& line : summary.lines)
      out_.line(printable("  " + (line.name.empty() ? "" : line.name + ": ") + line.text));
  }

  int run_jobs(std::vector<import_job> jobs) {
    folder_lock lock(app_);
    const auto launcher = make_process_launcher();
    import_events events;
    events.progress = [this](const import_progress& p) { tell_progress(p); };
    events.again = [this](std::size_t job, const std::string& why) {
      out_.end_progress();
      out_.message("\"" + run_->jobs()[job].source + "\": " + why + ".");
    };
    events.ended = [this](const import_end& end) { take(end); };
    import_run run(std::move(jobs), std::move(events), ask_, *launcher, lock, app_);
    run_ = &run;
    if (const failure why = run.start())
      return refused(*why);
    while (run.running()) {
      wait_or_interrupt(look_interval);
      if (interrupt_number() != 0)
        run.stop();
      else
        run.update();
    }
    out_.end_progress();
    out_.line("log: " + join_path(app_, run_file::import_log));
    if (interrupt_number() != 0) {
      out_.message("stopped; what was not complete was removed.");
      return 128 + interrupt_number();
    }
    return all_well_ ? disc_authored : tool_reported_error;
  }

  void tell_progress(const import_progress& p) {
    const import_job& job = run_->jobs()[p.job];
    const std::string step =
        p.finishing ? "finishing " + native_file_name(job.source) : import_step(job, p.first_pass);
    if (step != step_)
      out_.step(step);
    step_ = step;
    const std::string time = time_left_text(p.seconds_left);
    out_.whole(p.percent, {time.empty() ? "all" : "all, " + time, "all"});
  }

  void take(const import_end& end) {
    out_.end_progress();
    const import_job& job = run_->jobs()[end.job];
    if (!end.problem.empty()) {
      all_well_ = false;
      if (interrupt_number() == 0)
        out_.message("\"" + job.source + "\" was not imported: " + end.problem + ".");
      return;
    }
    {
      const document::step step(doc_, "import");
      add_to_project(doc_, job);
    }
    savefile_command(doc_);
    all_well_ = all_well_ && doc_.p.saved == 1;
    tell_made(job);
    if (doc_.p.saved != 1)
      out_.message("The title is not in \"" + project_ +
                   "\"; the files that were made for it stay.");
    if (!end.note.empty()) {
      all_well_ = false;
      out_.message("\"" + job.source + "\" was imported, but " + end.note + ".");
    }
  }

  void tell_made(const import_job& job) {
    out_.line(job.files.video);
    for (const std::string& file : job.files.sounds)
      out_.line(file);
    for (std::size_t i = 0; i < job.files.texts.size(); ++i)
      out_.line(has_text(job, i) ? job.files.texts[i]
                                 : "there is no text for " + native_file_name(job.files.texts[i]));
  }

  const author_arguments& arguments_;
  report& out_;
  const source_prober& probe_;
  std::string project_, folder_, app_;
  std::vector<std::string> files_;
  memory_settings prefs_;
  console_prompts ask_;
  document doc_;
  import_run* run_ = nullptr;
  std::string step_;
  bool all_well_ = true;
};

}  // namespace

int import_into_project(const author_arguments& arguments, report& out,
                        const source_prober& probe) {
  return console_import(arguments, out, probe).run();
}

}  // namespace corvane
