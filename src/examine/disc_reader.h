// What the parts of read_disc share. Used within the room only.
#pragma once

#include "examine/read_disc.h"
#include "examine/unit_checks.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace corvane {

class disc_reader {
 public:
  disc_reader(disc_files& from, disc_contents& to, const std::function<bool()>& go_on)
      : files(from), contents(to), go_on_(go_on) {}

  void tell(const std::string& file, std::string what);
  void tell(const std::string& file, const std::vector<table_trouble>& troubles);
  /// Whether to read on; once it was told to stop, it does.
  bool goes_on() {
    stopped_ = stopped_ || (go_on_ && !go_on_());
    return !stopped_;
  }

  /// The bytes of an IFO; tells when they or those of its copy are not there or differ.
  std::vector<std::uint8_t> tables(const std::string& name);

  /// Finds the files of VOBs that have `sectors` by the tables, and reads their units. What is told
  /// of the tables is told of `ifo`.
  void read_vobs(disc_vobs vobs, std::uint64_t sectors, const vob_addresses& addresses,
                 const std::string& ifo);
  /// What plays from a chain of these VOBs (null: there are none). Damaged chains can play the same
  /// units again and again: of those no more are looked at than `may_play` was told.
  disc_chain chain_of(const std::shared_ptr<const program_chain>& tables, const disc_vobs* vobs);
  void may_play(std::size_t units) { left_ = units; }
  const disc_vobs* vobs_of(int titleset, bool menus) const;

  disc_files& files;
  disc_contents& contents;

 private:
  void find_files(disc_vobs& vobs, std::uint64_t sectors, const std::string& ifo);
  void read_unit(disc_vobs& vobs, std::uint32_t sector, const std::vector<const disc_file*>& parts,
                 unit_checks& checks);
  void tell_of_units(const disc_vobs& vobs, std::vector<unit_trouble> troubles);

  void play(disc_chain& chain, disc_cell& cell, const cell_playback& tables,
            const std::vector<disc_unit>& units);

  const std::function<bool()>& go_on_;
  bool told_of_units_ = false;
  std::size_t left_ = 0;  // units that chains may still play
  bool stopped_ = false;
};

/// "VIDEO_TS/VTS_01_0.IFO"; titleset 0: "VIDEO_TS/VIDEO_TS.IFO".
std::string table_file(int titleset, const char* extension);

}  // namespace corvane
