// The files of an import: what is known of each, what becomes of it as things are chosen
// now, in words for a person, and what has come of it.
//
// Looking into files and running is done by who owns it; here everything is at once. Rows are
// counted from 0.
#pragma once

#include "examine/item_summary.h"
#include "import/import_batch.h"
#include "import/import_run.h"
#include "import/import_speeds.h"
#include "project/project.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace corvane {

class import_list {
 public:
  /// `folder` (native, absolute) is where files are made; empty: where the first film lies.
  explicit import_list(std::string folder) : folder_(std::move(folder)) {}

  /// What the project asks of titles, and how much of the disc is taken. The beginnings of its
  /// first title's files are read.
  void follow(const project& p);

  /// How fast this machine imports, as far as it is known.
  void expect(import_speeds speeds) { speeds_ = std::move(speeds); }

  /// A file (native path) at the end; false if it is in the list already.
  bool add(const std::string& file);
  void remove(std::size_t row);

  /// The file (native path) that is to be looked into next; nullopt: all have been.
  std::optional<std::string> next_unknown() const;
  /// What was found in it. A file that is not in the list any more is passed over.
  void know(const probed_source& source);

  const import_choices& choices() const { return choices_; }
  void choose(const import_choices& choices);
  const std::string& folder() const { return folder_; }
  void put_in(std::string folder);

  struct shown_row {
    std::string file;    ///< its name
    std::string length;  ///< "1:32:05"; empty where nothing is known
    std::string what;    ///< becomes of it, or has come of it
    bool operator==(const shown_row&) const = default;
  };
  std::size_t size() const { return entries_.size(); }
  shown_row shown(std::size_t row) const;
  /// Why a file cannot be imported, a sentence without a full stop; empty if it can, or is not
  /// known.
  const std::string& why_left_out(std::size_t row) const { return entries_[row].plan.problem; }
  std::string path(std::size_t row) const { return entries_[row].source.file; }
  /// Of the film, seconds; 0 where nothing is known.
  double seconds(std::size_t row) const;
  bool has_picture(std::size_t row) const;

  /// Sound and subtitles of a file that can be left out by choice, in the order of the summary.
  struct choosable_stream {
    std::string text;  ///< "audio 1: AAC, stereo, German"
    bool wanted = true;
    bool operator==(const choosable_stream&) const = default;
  };
  std::vector<choosable_stream> choosable_streams(std::size_t row) const;
  /// Whether there are any, and the file is not being imported, or was.
  bool may_choose_streams(std::size_t row) const;
  /// Which of them are wanted, one for each. Nothing changes once the file is being imported.
  void want(std::size_t row, const std::vector<bool>& wanted);

  /// All that is known of a file: its streams with what becomes of each. No video is named.
  item_summary summary(std::size_t row) const;

  /// "2 files, 1:32:05 of film: about 4.2 GB of 65.3 GB that are free there, about 25 min; video of
  /// 6.1 Mb/s"; empty without files to import.
  std::string estimate() const;

  /// Why nothing can be imported now, and what to do: sentences; or empty.
  std::string trouble() const;

  /// Whether there is something to import, and nothing against it.
  bool may_begin() const { return trouble().empty() && importable() > 0; }

  /// The imports begin; these, in order. What failed before is tried again.
  std::vector<import_job> begin();

  // What is told of them; numbers are those of the jobs.
  void runs(std::size_t job);
  void ended(const import_end& end, bool stopped);
  /// The job as it has become; to be told before it has ended.
  void changed(std::size_t job, const import_job& now);
  /// Nothing of what `begin` gave has begun.
  void give_up();

  /// "3 titles added; 1 file was not imported", of the imports that began last.
  std::string outcome() const;
  bool all_done() const;

 private:
  enum class stage { looking, planned, waiting, importing, done, failed };
  struct entry {
    probed_source source;
    stage now = stage::looking;
    std::string failed;      ///< why
    std::string note;        ///< of `done`: what is not as it should be
    std::string no_text_in;  ///< names of subtitles that turned out to be empty; or empty
    batch_entry plan;        ///< of `planned`; of others the last one
  };

  void plan();
  std::size_t importable() const;
  std::uint64_t bytes() const;
  std::optional<std::uint64_t> free_bytes() const;

  std::vector<entry> entries_;
  std::vector<std::size_t> running_;  ///< rows of the jobs
  std::string folder_;
  import_choices choices_;
  titleset_demands demands_;
  video_standard preferred_ = video_standard::ntsc;
  std::uint64_t used_ = 0;
  std::string problem_;
  import_speeds speeds_;
};

/// "file 2 of 3: film.mkv, second pass, 84 pictures a second, about 2 min left".
std::string progress_text(const import_progress& progress, const std::vector<import_job>& jobs);

}  // namespace corvane
