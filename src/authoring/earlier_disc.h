// The disc that was there: put aside before a run, brought back after one that failed, was stopped
// or died, and given up once the new one is complete.
#pragma once

#include "authoring/run_place.h"
#include "authoring/run_record.h"
#include "platform/files/folder_lock.h"
#include "project/document.h"
#include "runner/run_listener.h"

#include <memory>
#include <string>

namespace corvane {

/// A run whose earlier disc is put aside; or why it cannot begin, with everything as it was.
struct begun_run {
  std::shared_ptr<run_place> place;  ///< holds the output folder's lock
  bool in_use = false;               ///< another run works there
  std::string why;                   ///< a sentence
};

/// Makes the run's place for the output folder `out`, writes down in the program folder `app` that
/// the run has begun, and puts the earlier disc aside.
begun_run begin_run(const std::string& app, const std::string& out, const run_record& record);

/// Whether a run has made the disc that it was to make, so that the earlier one may go. What else
/// is to be known of a disc before it counts belongs here.
bool is_complete(run_outcome outcome, const std::string& out, const run_record& record);

/// Sets the output folder in order after a run with this outcome.
run_settled settle_run(const std::string& app, const run_record& record, run_place& place,
                       run_outcome outcome);

/// Sets in order what runs of this program folder left that died, their log among it
/// (runner/lost_log.h), and tells the user. Does nothing
/// while another run uses the program folder. `lock` is that folder's, and is held afterwards if it
/// was before. What lies on a disk that is not there waits for it.
void settle_interrupted_runs(document& doc, const std::string& app, folder_lock& lock);

/// Does the same for what a run of any program folder left at the output folder `out`. False when
/// one works there now.
bool settle_interrupted_at(document& doc, const std::string& out);

/// What is told then.
std::string output_folder_in_use(const std::string& out);

/// What is told where the lock of the program folder `app` could not be taken.
std::string program_folder_not_taken(const std::string& app, const folder_lock& lock);

}  // namespace corvane
