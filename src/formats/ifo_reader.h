// What the readers of an IFO file's tables share: its bytes, the troubles, and a limit on how much
// may be read. Used within the room only.
#pragma once

#include "formats/ifo.h"
#include "formats/program_chain.h"
#include "formats/table_bytes.h"
#include "formats/table_trouble.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace corvane {

/// A table: where it begins, and where it ends by its own count, or the file if that is earlier.
struct table_range {
  std::string name;
  std::size_t begin = 0, end = 0;
};

class ifo_reader {
 public:
  ifo_reader(table_bytes bytes, std::vector<table_trouble>& troubles)
      : file(bytes), troubles_(troubles), allowance_(bytes.size() * times_over) {}

  void tell(const std::string& table, std::uint64_t at, std::string what) {
    add_trouble(troubles_, table, at, std::move(what));
  }

  /// Takes `bytes` out of what may be read; false when that is used up: in a file in order tables
  /// do not overlap, but damaged ones may lead to the same bytes without end.
  bool may_read(std::uint64_t bytes);

  /// The table whose sector stands at byte `pointer` of the head; nullopt if there is none, or none
  /// of it in the file. `ends_at` is where in it the number of its last byte stands.
  std::optional<table_range> table_at(std::uint64_t pointer, std::string name,
                                      std::size_t header = 8, std::size_t ends_at = 4);
  /// The table that begins at byte `begin`.
  std::optional<table_range> table_from(std::uint64_t begin, std::string name, std::size_t header,
                                        std::size_t ends_at, std::uint64_t pointer);

  /// How many entries of `size` bytes, of the `stated` ones, have room in the table behind its
  /// header; tells when that is not all of them.
  std::size_t entries_in(const table_range& table, std::size_t header, std::size_t size,
                         std::size_t stated);

  /// A chain (PGC) at byte `at`; null when it is not in the file. Called again for the same byte it
  /// gives the same chain.
  std::shared_ptr<const program_chain> chain_at(std::uint64_t at, const std::string& name);

  const table_bytes file;

 private:
  static constexpr std::uint64_t times_over = 4;

  std::vector<table_trouble>& troubles_;
  std::uint64_t allowance_;
  std::map<std::uint64_t, std::shared_ptr<const program_chain>> chains_;
};

/// VTS_PGCIT and, with `language` among the names, one language of a PGCI_UT.
std::vector<chain_entry> read_chains(ifo_reader& reader, const table_range& table, bool menus);
/// PGCI_UT, by the pointer in the head.
std::vector<menu_language> read_menus(ifo_reader& reader, std::uint64_t pointer,
                                      const std::string& name);

/// C_ADT and VOBU_ADMAP, by their pointers; `prefix` is that of their names ("VTSM_").
vob_addresses read_vob_addresses(ifo_reader& reader, std::uint64_t cells, std::uint64_t units,
                                 const std::string& prefix);
std::vector<title_entry> read_titles(ifo_reader& reader, std::uint64_t pointer);
std::vector<titleset_copy> read_titleset_copies(ifo_reader& reader, std::uint64_t pointer);
std::vector<std::vector<chapter_entry>> read_chapters(ifo_reader& reader, std::uint64_t pointer);
std::vector<time_map> read_time_maps(ifo_reader& reader, std::uint64_t pointer);

/// The attributes that begin at byte `at` of the file; menus have one subpicture stream.
stream_attributes read_stream_attributes(ifo_reader& reader, std::uint64_t at,
                                         const std::string& table, bool menus);

/// What contradicts another table of the same file.
void check_video_manager(ifo_reader& reader, const video_manager& manager);
void check_titleset(ifo_reader& reader, const titleset& set);

}  // namespace corvane
