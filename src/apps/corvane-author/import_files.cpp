#include "apps/corvane-author/import_files.h"

#include "apps/corvane-author/author_project.h"
#include "apps/corvane-author/console_prompts.h"
#include "examine/measures.h"
#include "import/import_run.h"
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

constexpr auto look_interval = 100ms;

std::string gigabytes(std::uint64_t bytes) {
  return decimal_text(static_cast<double>(bytes) / 1e9, 1) + " GB";
}

std::string short_name(const std::string& path) {
  return std::string(file_name_of(stored_from_native(path)));
}

const char* word_of(stream_fate fate) {
  switch (fate) {
    case stream_fate::copied:
      return "copied";
    case stream_fate::encoded:
      return "encoded";
    case stream_fate::left_out:
      break;
  }
  return "left out";
}

const char* word_of(source_kind kind) {
  switch (kind) {
    case source_kind::video:
      return "video";
    case source_kind::picture:
      return "picture";
    case source_kind::audio:
      return "audio";
    case source_kind::text:
    case source_kind::bitmap_text:
      return "subtitles";
    case source_kind::other:
      break;
  }
  return "stream";
}

const source_stream* stream_of(const source_facts& facts, int index) {
  for (const source_stream& stream : facts.streams)
    if (stream.index == index)
      return &stream;
  return nullptr;
}

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
    if (const failure why = make_folders(folder_))
      return refused("the folder \"" + folder_ + "\" cannot be made: " + *why);
    return plan_and_run();
  }

 private:
  int refused(const std::string& why) {
    out_.message(why + ".");
    return not_authorable;
  }

  bool open_project() {
    start_up(doc_);
    if (entry_exists(project_))
      return loadprojectf(doc_, project_) && custom(doc_) == 1;
    doc_.set_file(project_, {});
    return true;
  }

  import_place place() const {
    import_place to;
    to.folder = folder_;
    to.choices = arguments_.choices;
    to.preferred = arguments_.pal ? video_standard::pal : video_standard::ntsc;
    to.used = doc_.p.dvdsize_bytes;
    to.is_taken = [](const std::string& file) { return entry_exists(file); };
    return to;
  }

  int plan_and_run() {
    std::vector<probed_source> sources;
    for (const std::string& file : files_)
      sources.push_back(look_into(file, probe_));
    const import_batch batch = plan_batch(sources, demands_of_project(doc_.p), place());
    for (std::size_t i = 0; i < sources.size(); ++i)
      tell_plan(sources[i], batch.entries[i]);
    if (!batch.problem.empty())
      return refused(batch.problem);
    if (const failure why = why_no_room(batch))
      return refused(*why);
    std::vector<import_job> jobs;
    for (const batch_entry& entry : batch.entries)
      if (entry.problem.empty())
        jobs.push_back(entry.job);
    all_well_ = jobs.size() == sources.size();
    return jobs.empty() ? static_cast<int>(not_authorable) : run_jobs(std::move(jobs));
  }

  failure why_no_room(const import_batch& batch) const {
    const auto room = room_at(folder_);
    if (!room || room->free >= batch.bytes())
      return std::nullopt;
    return "the disk of \"" + folder_ + "\" has " + gigabytes(room->free) +
           " left, and the files will have about " + gigabytes(batch.bytes());
  }

  void tell_plan(const probed_source& source, const batch_entry& entry) {
    if (!entry.problem.empty()) {
      out_.message("\"" + source.file + "\" is left out: " + entry.problem + ".");
      all_well_ = false;
      return;
    }
    out_.line(printable(short_name(source.file)));
    for (const planned_stream& stream : entry.job.plan.streams) {
      const source_stream* const of = stream_of(source.facts, stream.stream);
      out_.line(printable("  " + std::string(of != nullptr ? word_of(of->kind) : "stream") + " " +
                          std::to_string(stream.stream) + ": " + word_of(stream.fate) +
                          (stream.reason.empty() ? "" : ", " + stream.reason)));
    }
    for (const sidecar& text : source.beside)
      out_.line(printable("  subtitles " + short_name(text.file)));
  }

  int run_jobs(std::vector<import_job> jobs) {
    folder_lock lock(app_);
    const auto launcher = make_process_launcher();
    import_events events;
    events.progress = [this](const import_progress& p) { tell_progress(p); };
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
        p.finishing ? "finishing " + short_name(job.source) : import_step(job, p.first_pass);
    if (step != step_)
      out_.step(step);
    step_ = step;
    run_whole whole;
    whole.seconds_left = p.seconds_left;
    const std::string time = time_left_text(whole);
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
    for (const std::string& file : job.files.all())
      out_.line(file);
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
