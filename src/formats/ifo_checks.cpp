// What tables of one file say of each other.
#include "formats/ifo_reader.h"

#include <algorithm>
#include <functional>
#include <tuple>
#include <utility>
#include <vector>

namespace corvane {

namespace {

/// Edges of cells as C_ADT has them, in an order in which they are found quickly. A cell in
/// interleaved pieces has an entry for each.
class cell_edges {
 public:
  explicit cell_edges(const std::vector<cell_address>& cells) {
    for (const cell_address& c : cells) {
      first_.emplace_back(c.vob, c.cell, c.first_sector);
      last_.emplace_back(c.vob, c.cell, c.last_sector);
    }
    std::sort(first_.begin(), first_.end());
    std::sort(last_.begin(), last_.end());
  }
  bool hold(const cell_playback& c) const {
    return std::binary_search(first_.begin(), first_.end(),
                              std::tuple(c.vob, c.cell, c.first_sector)) &&
           std::binary_search(last_.begin(), last_.end(), std::tuple(c.vob, c.cell, c.last_sector));
  }

 private:
  using edge = std::tuple<int, int, std::uint32_t>;
  std::vector<edge> first_, last_;
};

/// Looks at chains that play from VOBs with these addresses.
class chain_checks {
 public:
  chain_checks(ifo_reader& reader, const vob_addresses& vobs, std::string prefix)
      : reader_(reader), vobs_(vobs), prefix_(std::move(prefix)), edges_(vobs.cells) {}

  void check_addresses(std::uint64_t sectors, std::uint64_t cells_at, std::uint64_t units_at);
  void check(const std::vector<chain_entry>& chains, const std::string& table);
  bool is_unit(std::uint32_t sector) const {
    return std::binary_search(vobs_.units.begin(), vobs_.units.end(), sector);
  }

 private:
  void check_cells(const program_chain& chain, const std::string& name);

  ifo_reader& reader_;
  const vob_addresses& vobs_;
  std::string prefix_;
  cell_edges edges_;
};

std::uint64_t place_of_table(const ifo_reader& reader, std::uint64_t pointer) {
  return std::uint64_t{reader.file.u32(pointer)} * disc_sector_size;
}

/// `sectors` is how many there are of VOBs, `cells_at` and `units_at` the pointers to the tables.
void chain_checks::check_addresses(std::uint64_t sectors, std::uint64_t cells_at,
                                   std::uint64_t units_at) {
  for (std::size_t i = 0; i < vobs_.cells.size(); ++i) {
    const cell_address& c = vobs_.cells[i];
    if (c.vob < 1 || c.vob > vobs_.vobs || c.cell < 1 || c.first_sector > c.last_sector ||
        c.last_sector >= sectors || !is_unit(c.first_sector))
      reader_.tell(prefix_ + "C_ADT", place_of_table(reader_, cells_at) + 8 + 12 * i,
                   "has a cell that cannot be");
  }
  for (std::size_t i = 0; i < vobs_.units.size(); ++i)
    if (vobs_.units[i] >= sectors || (i > 0 && vobs_.units[i] <= vobs_.units[i - 1]))
      reader_.tell(prefix_ + "VOBU_ADMAP", place_of_table(reader_, units_at) + 4 + 4 * i,
                   "has a unit at sector " + std::to_string(vobs_.units[i]) +
                       ", which is not behind the one before or not in the VOBs");
}

void chain_checks::check_cells(const program_chain& chain, const std::string& name) {
  for (std::size_t i = 0; i < chain.cells.size(); ++i) {
    const cell_playback& cell = chain.cells[i];
    if (!edges_.hold(cell))
      reader_.tell(name, chain.at,
                   "has a cell " + std::to_string(i + 1) + " that is not in " + prefix_ + "C_ADT");
    if (!is_unit(cell.first_sector) || !is_unit(cell.last_unit_sector))
      reader_.tell(name, chain.at,
                   "has a cell " + std::to_string(i + 1) + " whose units are not in " + prefix_ +
                       "VOBU_ADMAP");
  }
}

void chain_checks::check(const std::vector<chain_entry>& chains, const std::string& table) {
  const auto most = static_cast<int>(chains.size());
  for (std::size_t i = 0; i < chains.size(); ++i) {
    if (!chains[i].chain)
      continue;
    const program_chain& chain = *chains[i].chain;
    const std::string name = "PGC " + std::to_string(i + 1) + " of " + table;
    for (const int other : {chain.next, chain.previous, chain.up})
      if (other > most)
        reader_.tell(name, chain.at,
                     "leads to PGC " + std::to_string(other) + " of " + std::to_string(most));
    check_cells(chain, name);
  }
}

void check_menus(chain_checks& checks, const std::vector<menu_language>& menus,
                 const std::string& table) {
  for (const menu_language& language : menus)
    checks.check(
        language.chains,
        table + " (" + (language.language.empty() ? "no language" : language.language) + ")");
}

/// Sectors from the file's `first` one up to `end`; 0 when there are none.
std::uint64_t sectors_between(std::uint64_t first, std::uint64_t end) {
  return first != 0 && first < end ? end - first : 0;
}

/// The first sector of the copy of the file, behind the VOBs.
std::uint64_t copy_sector(const file_head& head) {
  const std::uint64_t all = std::uint64_t{head.last_sector} + 1,
                      own = std::uint64_t{head.last_ifo_sector} + 1;
  return all > own ? all - own : 0;
}

void check_vobs_place(ifo_reader& reader, const std::string& table, std::uint64_t pointer,
                      const file_head& head) {
  const std::uint32_t sector = reader.file.u32(pointer);
  if (sector != 0 && (sector <= head.last_ifo_sector || sector >= copy_sector(head)))
    reader.tell(table, pointer,
                "has VOBs at sector " + std::to_string(sector) +
                    ", which is not between the file and its copy");
}

void check_title(ifo_reader& reader, const video_manager& manager, std::size_t index) {
  const title_entry& title = manager.titles[index];
  const bool right = title.titleset >= 1 && title.titleset <= manager.titlesets &&
                     title.number_in_titleset >= 1 && title.number_in_titleset <= 99 &&
                     title.angles >= 1 && title.angles <= 9 && title.chapters >= 1 &&
                     title.chapters <= 999;
  if (!right)
    reader.tell("TT_SRPT", place_of_table(reader, 0xC4) + 8 + 12 * index,
                "has a title " + std::to_string(index + 1) + " that cannot be");
}

void check_chapters(ifo_reader& reader, const titleset& set) {
  for (std::size_t t = 0; t < set.titles.size(); ++t) {
    const auto tell = [&](std::string what) {
      reader.tell("VTS_PTT_SRPT", place_of_table(reader, 0xC8),
                  "has a title " + std::to_string(t + 1) + std::move(what));
    };
    if (set.titles[t].empty())
      tell(" without chapters");
    for (std::size_t c = 0; c < set.titles[t].size(); ++c) {
      const chapter_entry& chapter = set.titles[t][c];
      const bool there = chapter.chain >= 1 && chapter.chain <= static_cast<int>(set.chains.size());
      const program_chain* chain =
          there ? set.chains[static_cast<std::size_t>(chapter.chain) - 1].chain.get() : nullptr;
      if (!there ||
          (chain != nullptr &&
           (chapter.program < 1 || chapter.program > static_cast<int>(chain->programs.size()))))
        tell(" whose chapter " + std::to_string(c + 1) + " is program " +
             std::to_string(chapter.program) + " of PGC " + std::to_string(chapter.chain) +
             ", which is not there");
    }
  }
}

// A chain that plays a part twice, or parts in another order than they lie there, goes back.
bool goes_on(const chain_entry& entry) {
  if (!entry.chain)
    return true;
  const std::vector<cell_playback>& cells = entry.chain->cells;
  return std::ranges::adjacent_find(cells, std::ranges::greater_equal{},
                                    &cell_playback::first_sector) == cells.end();
}

void check_time_maps(ifo_reader& reader, const titleset& set, const chain_checks& checks) {
  if (set.time_maps.size() > set.chains.size())
    reader.tell("VTS_TMAPT", place_of_table(reader, 0xD4), "has more maps than there are PGCs");
  for (std::size_t m = 0; m < set.time_maps.size(); ++m) {
    const time_map& map = set.time_maps[m];
    const bool in_order = m >= set.chains.size() || goes_on(set.chains[m]);
    for (std::size_t i = 0; i < map.sectors.size(); ++i)
      if (!checks.is_unit(map.sectors[i]) ||
          (in_order && i > 0 && map.sectors[i] < map.sectors[i - 1]))
        reader.tell("VTS_TMAPT", place_of_table(reader, 0xD4),
                    "has in map " + std::to_string(m + 1) + " an entry " + std::to_string(i + 1) +
                        " that is no unit, or one behind the next");
  }
}

void check_chain_titles(ifo_reader& reader, const titleset& set) {
  for (std::size_t i = 0; i < set.chains.size(); ++i) {
    const int title = set.chains[i].title;
    if (title < 1 || title > static_cast<int>(set.titles.size()))
      reader.tell("VTS_PGCIT", place_of_table(reader, 0xCC) + 8 + 8 * i,
                  "has PGC " + std::to_string(i + 1) + " in title " + std::to_string(title) +
                      " of " + std::to_string(set.titles.size()));
  }
}

}  // namespace

void check_video_manager(ifo_reader& reader, const video_manager& manager) {
  const std::string table = "VMGI_MAT";
  check_vobs_place(reader, table, 0xC0, manager.head);
  if (manager.titlesets < 1 || manager.titlesets > 99)
    reader.tell(table, 0x3E, "states " + std::to_string(manager.titlesets) + " titlesets");
  if (manager.titles.size() > 99)
    reader.tell("TT_SRPT", place_of_table(reader, 0xC4), "has more than 99 titles");
  for (std::size_t i = 0; i < manager.titles.size(); ++i)
    check_title(reader, manager, i);
  if (!manager.titlesets_again.empty() &&
      static_cast<int>(manager.titlesets_again.size()) != manager.titlesets)
    reader.tell("VMG_VTS_ATRT", place_of_table(reader, 0xD0),
                "has not one entry for each titleset");
  chain_checks checks(reader, manager.menu_vobs, "VMGM_");
  checks.check_addresses(sectors_between(manager.head.menu_vobs_sector, copy_sector(manager.head)),
                         0xD8, 0xDC);
  check_menus(checks, manager.menus, "VMGM_PGCI_UT");
}

void check_titleset(ifo_reader& reader, const titleset& set) {
  const std::string table = "VTSI_MAT";
  check_vobs_place(reader, table, 0xC0, set.head);
  check_vobs_place(reader, table, 0xC4, set.head);
  if (set.titles.size() > 99)
    reader.tell("VTS_PTT_SRPT", place_of_table(reader, 0xC8), "has more than 99 titles");
  check_chapters(reader, set);
  check_chain_titles(reader, set);
  chain_checks titles(reader, set.title_vobs, "VTS_");
  titles.check_addresses(sectors_between(set.title_vobs_sector, copy_sector(set.head)), 0xE0, 0xE4);
  titles.check(set.chains, "VTS_PGCIT");
  check_time_maps(reader, set, titles);
  chain_checks menus(reader, set.menu_vobs, "VTSM_");
  menus.check_addresses(sectors_between(set.head.menu_vobs_sector, set.title_vobs_sector), 0xD8,
                        0xDC);
  check_menus(menus, set.menus, "VTSM_PGCI_UT");
}

}  // namespace corvane
