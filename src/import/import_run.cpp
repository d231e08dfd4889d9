#include "import/import_run.h"

#include "import/copied_streams.h"
#include "import/encoder_complaints.h"
#include "import/encoder_progress.h"
#include "import/finish_import.h"
#include "import/import_names.h"
#include "import/import_speeds.h"
#include "import/short_film.h"
#include "import/unfinished_imports.h"
#include "platform/files/files.h"
#include "platform/files/paths.h"
#include "runner/output_lines.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace corvane {
namespace {

/// A log that is longer forgets the imports before.
constexpr std::uintmax_t largest_log = std::uintmax_t{16} << 20;

/// Nothing is said of the time before so much of it has gone.
constexpr double first_word = 3;

constexpr const char* stopped = "it was stopped";

/// Only the end is more.
constexpr double most_percent = 99.9;

/// What made a run a failure, without its mark.
std::string reason_in(const std::vector<std::string>& errors) {
  if (errors.empty())
    return "ffmpeg has failed; the log says more";
  std::string reason = errors.front();
  if (const std::size_t mark = reason.find(error_mark); mark != std::string::npos)
    reason.erase(0, mark + std::string_view(error_mark).size());
  return reason;
}

/// "the video is encoded after all: 12.5 s are missing inside it".
std::string encoded_after_all(const import_plan& before, const import_plan& now) {
  std::string text;
  for (std::size_t i = 0; i < now.streams.size(); ++i) {
    const planned_stream& stream = now.streams[i];
    if (stream.fate != before.streams[i].fate)
      text += std::string(text.empty() ? "" : "; ") +
              (stream.stream == now.video.stream ? "the video" : "sound") +
              " is encoded after all: " + stream.reason;
  }
  return text;
}

std::string folder_of(const import_job& job) {
  const std::string& file = job.files.video;
  return file.substr(0, file.size() - native_file_name(file).size());
}

}  // namespace

import_run::import_run(std::vector<import_job> jobs, import_events events, prompts& ask,
                       process_launcher& launcher, folder_lock& lock, std::string app,
                       clock seconds)
    : jobs_(std::move(jobs)),
      events_(std::move(events)),
      ask_(ask),
      lock_(lock),
      app_(std::move(app)),
      seconds_(std::move(seconds)),
      runner_(*this, ask, launcher, lock, app_) {}

double import_run::steady_seconds() {
  return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

import_run::~import_run() {
  if (running_) {
    events_ = {};
    stop();
  }
}

failure import_run::start() {
  if (!lock_.take())
    return "another run of the program is going on";
  remove_all(join_path(app_, run_file::import_log));
  remove_left_imports(app_);
  hold_folders();
  running_ = true;
  began_ = seconds_();
  job_ = 0;
  begin_script();
  return std::nullopt;
}

void import_run::hold_folders() {
  for (const import_job& job : jobs_)
    folders_.try_emplace(folder_of(job), folder_of(job));
}

const held_folder& import_run::target() const {
  return folders_.at(folder_of(jobs_[job_]));
}

std::string import_run::target_trouble() const {
  if (!target().is_elsewhere())
    return {};
  const std::string folder = folder_of(jobs_[job_]);
  return "the folder \"" + folder.substr(0, folder.size() - 1) +
         "\" is not there any more; it was renamed or moved, or its disk was taken out";
}

// What is finished behind the encoder is little: its video has been looked through by then.
double import_run::work_of(const import_job& job) const {
  return std::max(job.plan.seconds, 1.0) * (has_two_passes(job) ? 2 : 1);
}

void import_run::begin_script() {
  now_ = {job_, has_two_passes(jobs_[job_]), false, now_.percent, {}, now_.seconds_left};
  in_pass_ = 0;
  job_began_ = seconds_();
  script_end_.reset();
  tell();
  if (std::string why = target_trouble(); !why.empty()) {
    script_end_ = std::move(why);
    return;
  }
  const std::string script = join_path(app_, run_file::import_script);
  note_unfinished(app_, jobs_[job_]);  // if it cannot be written, nor can the script
  video_ = std::make_unique<followed_video>(temporary_name(jobs_[job_].files.video));
  if (const failure why = write_file(script, import_script({jobs_[job_]}, app_))) {
    script_end_ = "\"" + script + "\" cannot be written: " + *why;
    return;
  }
  run_options options;
  options.log = run_file::import_log;
  options.tells_outcome = false;
  options.keeps_lock = true;  // nobody else may take what is being finished for something left
  runner_.ExecuteCommand(script, options);
}

void import_run::step(const run_step& step) {
  if (now_.first_pass && step.name == import_step(jobs_[job_], false)) {
    now_.first_pass = false;
    in_pass_ = 0;
  }
}

// What came before the step is of another pass.
void import_run::output(std::string_view tail) {
  const std::string line = step_line(import_step(jobs_[job_], now_.first_pass));
  if (const std::size_t at = tail.rfind(line); at != std::string_view::npos)
    tail.remove_prefix(at + line.size());
  if (const auto status = encoder_progress_in(tail)) {
    in_pass_ = std::clamp(status->seconds, in_pass_, std::max(jobs_[job_].plan.seconds, in_pass_));
    now_.pictures_a_second = status->pictures_a_second;
  }
}

/// Each run has written a log of its own. Returns that of the last one.
std::string import_run::join_logs() {
  const std::string log = join_path(app_, run_file::import_log);
  const auto written = read_file(log, largest_log);
  if (!written)
    return {};
  if (log_.size() + written->size() > largest_log)
    log_.clear();
  log_ += *written;
  replace_file(log, log_);
  return *written;
}

void import_run::finished(const run_end& end) {
  const std::string trouble = writing_trouble_in(join_logs());
  if (std::string why = target_trouble(); !why.empty())
    script_end_ = std::move(why);
  else if (!trouble.empty())
    script_end_ = trouble;
  else if (end.outcome == run_outcome::success)
    script_end_ = "";
  else if (end.outcome == run_outcome::none)
    script_end_ = "the script could not be started";
  else if (!entry_exists(jobs_[job_].source))
    script_end_ = "the file is not there any more";
  else
    script_end_ = reason_in(end.errors);
}

void import_run::tell() {
  double all = 0;
  for (const import_job& job : jobs_)
    all += work_of(job);
  const double film = std::max(jobs_[job_].plan.seconds, 1.0);
  const bool second = has_two_passes(jobs_[job_]) && !now_.first_pass;
  const double done = done_before_ + std::min(in_pass_, film) + (second ? film : 0);
  now_.percent = std::max(now_.percent, std::min(most_percent, 100 * done / all));
  const double took = seconds_() - began_;
  if (took >= first_word && done > 0)
    now_.seconds_left = took / done * (all - done);
  if (events_.progress)
    events_.progress(now_);
}

void import_run::finish_streams() {
  now_.finishing = true;
  tell();
  finishing_ = std::async(std::launch::async, [this, job = jobs_[job_]] { return finish(job); });
}

import_run::finished_job import_run::finish(import_job job) {
  finished_job done{std::move(job), {}, {}};
  const file_facts made = video_->facts();
  if (made.kind == file_kind::unreadable && entry_exists(temporary_name(done.job.files.video))) {
    done.problem = done.job.files.video + ": " + made.why_unreadable;
    return done;
  }
  done.again = encode_what_cannot_stay(done.job, made, [this] { return !given_up_; });
  if (given_up_)
    done.problem = stopped;
  if (done.again || given_up_)
    return done;
  if (const double missing = missing_seconds(done.job, made); missing > 0) {
    done.note = missing_text(done.job.plan, missing);
    if (source_has_changed(done.job))
      done.problem = "the file was changed, or went away, while it was read: " + done.note;
    else
      done.problem = end_earlier(done.job, missing).value_or("");
  }
  if (done.problem.empty())
    done.problem = finish_import(done.job).value_or("");
  return done;
}

void import_run::take_finished() {
  finished_job done = finishing_.get();
  if (done.again && stopping_)
    return end_job(stopped);
  if (done.again) {
    return run_again(std::move(done.job));
  }
  if (std::string why = target_trouble(); !why.empty())
    done.problem = std::move(why);
  if (done.problem.empty())
    jobs_[job_] = std::move(done.job);
  end_job(std::move(done.problem), std::move(done.note));
}

/// Streams of it could not stay as they were.
void import_run::run_again(import_job job) {
  const std::string why = encoded_after_all(jobs_[job_].plan, job.plan);
  log_ += "INFO: \"" + job.source + "\": " + why + "\r\n";
  remove_unfinished(jobs_[job_]);
  jobs_[job_] = std::move(job);
  now_.percent = 0;
  if (events_.again)
    events_.again(job_, why);
  begin_script();
}

/// For what is told before the next import. A file that cannot be written costs it its guess.
void import_run::keep_speed() const {
  import_speeds speeds = read_import_speeds(app_);
  const import_speeds before = speeds;
  learn_speed(speeds, jobs_[job_], seconds_() - job_began_);
  if (speeds != before)
    replace_file(join_path(app_, run_file::import_speeds), import_speeds_text(speeds));
}

/// The script's own log does not name what was found behind it.
void import_run::log_end(const import_end& end) {
  const std::string& what = end.problem.empty() ? end.note : end.problem;
  if (what.empty())
    return;
  log_ += (end.problem.empty() ? "INFO: \"" : std::string(error_mark) + "\"") +
          jobs_[end.job].source +
          (end.problem.empty() ? "\" was imported, but " : "\" was not imported: ") + what + "\r\n";
  replace_file(join_path(app_, run_file::import_log), log_);
}

void import_run::end_job(std::string problem, std::string note) {
  script_end_.reset();
  video_.reset();
  if (!problem.empty()) {
    remove_unfinished(jobs_[job_]);
    for (const std::string& name : temporary_files(jobs_[job_].files))
      target().remove(native_file_name(name));
    note.clear();
  } else {
    keep_speed();
  }
  remove_left_imports(app_);
  done_before_ += work_of(jobs_[job_]);
  const import_end end{job_, std::move(problem), std::move(note)};
  log_end(end);
  if (events_.ended)
    events_.ended(end);
  next();
}

void import_run::next() {
  if (++job_ < jobs_.size() && !stopping_)
    return begin_script();
  running_ = false;
  lock_.release();
  if (events_.done)
    events_.done(stopping_);
}

void import_run::update() {
  if (!running_)
    return;
  if (finishing_.valid()) {
    if (finishing_.wait_for(std::chrono::seconds(0)) == std::future_status::ready)
      take_finished();
    return;
  }
  if (runner_.running()) {
    runner_.update();
    if (runner_.running() && !runner_.watching())
      runner_.stop();
  }
  if (!script_end_)
    return tell();
  if (script_end_->empty())
    finish_streams();
  else
    end_job(*script_end_);
}

void import_run::stop() {
  if (!running_)
    return;
  stopping_ = true;
  if (finishing_.valid()) {
    given_up_ = true;
    video_->give_up();
    return take_finished();
  }
  runner_.stop();
  // It may have come to its end by itself; its streams are not finished then.
  end_job(stopped);
}

}  // namespace corvane
