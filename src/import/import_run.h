// Runs imports one after the other: the script of each through the runner, the finishing of its
// streams behind it, and what came of it. A failure ends one import and not the next.
//
// The runs have a log of their own, which holds all of them. Never blocks; polled like the runner.
#pragma once

#include "import/followed_video.h"
#include "import/import_script.h"
#include "platform/files/folder_lock.h"
#include "platform/files/held_folder.h"
#include "project/prompts.h"
#include "runner/run_files.h"
#include "runner/shelled.h"

#include <atomic>
#include <cstddef>
#include <functional>
#include <future>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

/// How far the imports are.
struct import_progress {
  std::size_t job = 0;  ///< 0-based, among all
  bool first_pass = false;
  bool finishing = false;  ///< its streams get what the encoder has left out
  /// Of all imports' work. Goes back only where streams that were copied are encoded after all.
  double percent = 0;
  std::optional<double> pictures_a_second{};
  std::optional<double> seconds_left{};  ///< of all; not set as long as nothing can be said
};

/// What came of one.
struct import_end {
  std::size_t job = 0;
  std::string problem;  ///< why it failed, a sentence without a full stop; empty: it is done
  /// Of one that is done, what is not as it should be, likewise; empty: nothing.
  std::string note{};
};

struct import_events {
  std::function<void(const import_progress&)> progress;
  /// What was to be copied could not stay as it was, for the reasons in `why`, a sentence without a
  /// full stop: the import runs once more, and `jobs` has it as it is now.
  std::function<void(std::size_t job, const std::string& why)> again;
  /// An import has ended. Its files have their names now, or none of them is there.
  std::function<void(const import_end&)> ended;
  /// The last one has ended, or they were stopped; nothing goes on any more.
  std::function<void(bool stopped)> done;
};

class import_run : private run_listener {
 public:
  /// Seconds since some moment, by which an import's time is measured.
  using clock = std::function<double()>;

  /// `app`: the program folder (native, absolute). All must outlive it; `lock` is that folder's.
  import_run(std::vector<import_job> jobs, import_events events, prompts& ask,
             process_launcher& launcher, folder_lock& lock, std::string app,
             clock seconds = steady_seconds);
  ~import_run() override;

  /// Begins with the first. Returns why nothing can be begun: another run is going on.
  failure start();

  /// One pass; to be called some times a second while `running`.
  void update();

  /// Ends what goes on; what is not complete is removed. Streams that are being finished are
  /// complete when that is nearly done, and not otherwise; it is waited for.
  void stop();

  bool running() const { return running_; }
  /// Of those that have ended, as they have become: a film whose end could not be read is shorter,
  /// and has no chapters there; streams may have been encoded after all.
  const std::vector<import_job>& jobs() const { return jobs_; }

 private:
  static double steady_seconds();

  void started(const run_start&) override {}
  void step(const run_step& step) override;
  void progress(const run_progress&) override {}
  void output(std::string_view tail) override;
  void broken_off() override {}
  void closed() override {}
  void finished(const run_end& end) override;

  void hold_folders();
  const held_folder& target() const;
  /// Why files can no longer be made in a job's folder; empty if they can.
  std::string target_trouble() const;
  void next();
  void begin_script();
  /// What came of finishing a job: the job as it has become.
  struct finished_job {
    import_job job;
    std::string problem, note;
    bool again = false;  ///< its script has to run once more, as the job is now
  };
  finished_job finish(import_job job);
  void take_finished();
  void run_again(import_job job);
  void end_job(std::string problem, std::string note = {});
  void log_end(const import_end& end);
  void keep_speed() const;
  void finish_streams();
  std::string join_logs();
  void tell();
  double work_of(const import_job& job) const;

  std::vector<import_job> jobs_;
  std::map<std::string, held_folder> folders_;  ///< that files are made in
  import_events events_;
  prompts& ask_;
  folder_lock& lock_;
  std::string app_;
  clock seconds_;
  shelled runner_;
  bool running_ = false;
  bool stopping_ = false;
  std::size_t job_ = 0;
  std::string log_;                        ///< of the imports that have ended
  std::optional<std::string> script_end_;  ///< what the script failed for, or empty; not set: runs
  std::unique_ptr<followed_video> video_;  ///< of the script that runs, or has run
  std::atomic<bool> given_up_{false};      ///< what is being finished is not wanted any more
  std::future<finished_job> finishing_;
  import_progress now_;
  double began_ = 0;        ///< of the clock, seconds
  double done_before_ = 0;  ///< work of the imports before this one
  double job_began_ = 0;    ///< likewise
  double in_pass_ = 0;      ///< seconds of film done in this pass
};

}  // namespace corvane
