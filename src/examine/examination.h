// The examination of a project before a run: facts of all files that it names, held against the
// rules.
//
// Polled like a run: `step` works for a moment and returns, so that a window stays alive, shows
// progress and can stop; also while beginnings are read, of which a slow disk gives few a second.
// Facts of files are kept in a `fact_store` from one examination to the next; a file is read again
// only when its size or time of change differ.
#pragma once

#include "disc/command_target.h"
#include "disc/disc_description.h"
#include "disc/finding.h"
#include "examine/file_facts.h"
#include "examine/titleset_rules.h"
#include "platform/files/file_stamp.h"
#include "project/font_list.h"

#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace corvane {

/// Facts by native path.
class fact_store {
 public:
  /// What is known of the file as it is now on its disk; null if nothing is, or only its beginning
  /// where `whole` is asked for.
  std::shared_ptr<const file_facts> find(const std::string& path, bool whole) const;

  /// The same, at least of its beginning, which is read if nothing is known. Never null.
  std::shared_ptr<const file_facts> beginning(const std::string& path);

  /// `stamp`: the file as it was before it was read.
  void keep(const std::string& path, const file_stamp& stamp, file_facts facts);

 private:
  struct entry;
  std::map<std::string, std::shared_ptr<const entry>> entries_;
};

/// What there is beside the disc and its files.
struct examination_around {
  std::string customxml;  ///< hand-edited navigation XML that the disc was read from, or empty
  std::string output_folder,
      program_folder;                       ///< native; empty: room on its disk is not looked at
  std::optional<font_list> fonts;           ///< those that are installed; not set: not looked at
  std::vector<command_target> led_to = {};  ///< what commands led to before numbers moved
};

class examination {
 public:
  enum class depth {
    beginnings,  ///< only what the files' beginnings tell
    whole_files,
  };

  /// Reads nothing yet. `store` must outlive it.
  examination(disc_description disc, depth how_deep, fact_store& store,
              examination_around around = {});

  /// Works for about `milliseconds`, at least for a file's beginning or a slice; false when
  /// everything is done. The beginnings of all files that the store does not know come first.
  bool step(int milliseconds);
  /// The same, but for these beginnings alone.
  bool step_beginnings(int milliseconds);
  /// Bytes of files that the store does not know, as far as it was looked, and how many of them
  /// have been read.
  std::uint64_t bytes_to_read() const { return bytes_to_read_; }
  std::uint64_t bytes_read() const;
  /// The file being read, native path; empty before and at the end.
  const std::string& current_file() const { return scanned_; }

  /// Errors first, then warnings, then notes; each in the order of titles and menus. Before the
  /// end, what the files' beginnings and those read so far tell.
  std::vector<finding> findings() const { return findings(depth_); }
  /// The same, as if no more had been asked for.
  std::vector<finding> findings(depth how_deep) const;

 private:
  void look_at_next_beginning();
  void begin_next_file();
  void finish_file();

  disc_description disc_;
  depth depth_;
  fact_store& store_;
  examination_around around_;
  facts_by_path facts_;
  std::deque<std::string> unseen_;   // files whose beginnings are not known yet
  std::deque<std::string> waiting_;  // files to be read whole
  std::uint64_t bytes_to_read_ = 0;
  std::uint64_t bytes_of_files_read_ = 0;
  std::optional<file_scan> scan_;
  std::optional<file_stamp> stamp_;  // of the file being read
  std::string scanned_;
};

/// The native paths of the streams that a disc names, each once, in their order.
std::vector<std::string> files_of(const disc_description& d);

/// Puts errors before warnings and these before notes, and keeps the order otherwise.
void sort_by_severity(std::vector<finding>& findings);

}  // namespace corvane
