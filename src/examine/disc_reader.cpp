#include "examine/disc_reader.h"

#include "examine/unit_facts.h"

#include <algorithm>
#include <cstdio>
#include <utility>

namespace corvane {

namespace {

constexpr std::size_t most_told = 300;
/// No part of VOBs is larger, so that old file systems hold it.
constexpr std::uint64_t largest_part = std::uint64_t{1} << 30;

std::string at_sector(std::uint32_t sector) {
  return "unit at sector " + std::to_string(sector);
}

/// What a navigation pack says that its place contradicts, with the unit after it in the tables.
std::string why_not_here(const navigation_pack& pack, std::uint32_t sector) {
  if (pack.sector != sector)
    return "says that it is at sector " + std::to_string(pack.sector);
  if (!pack.troubles.empty())
    return pack.troubles.front().text();
  return {};
}

}  // namespace

std::string table_file(int titleset, const char* extension) {
  char name[32];
  if (titleset == 0)
    std::snprintf(name, sizeof name, "VIDEO_TS/VIDEO_TS.%s", extension);
  else
    std::snprintf(name, sizeof name, "VIDEO_TS/VTS_%02d_0.%s", titleset, extension);
  return name;
}

void disc_reader::tell(const std::string& file, std::string what) {
  if (contents.troubles.size() < most_told)
    contents.troubles.push_back({file, std::move(what)});
}

void disc_reader::tell(const std::string& file, const std::vector<table_trouble>& troubles) {
  for (const table_trouble& trouble : troubles)
    tell(file, trouble.text());
}

std::vector<std::uint8_t> disc_reader::tables(const std::string& name) {
  auto file = read_whole(files, name, largest_ifo);
  const std::string copy_name = name.substr(0, name.size() - 3) + "BUP";
  const auto copy = read_whole(files, copy_name, largest_ifo);
  if (!file)
    tell(name, file.error);
  if (!copy)
    tell(copy_name, copy.error);
  else if (file && *copy != *file)
    tell(copy_name, "is not the same as " + name);
  return file ? std::move(*file) : std::vector<std::uint8_t>();
}

/// VIDEO_TS.VOB, VTS_nn_0.VOB, or VTS_nn_1.VOB and those that follow it.
void disc_reader::find_files(disc_vobs& vobs, std::uint64_t sectors, const std::string& ifo) {
  std::string name = table_file(vobs.titleset, "VOB");
  const std::size_t digit = name.size() - 5;
  std::uint64_t bytes = 0;
  for (char part = vobs.menus ? '0' : '1'; part <= '9'; ++part) {
    if (vobs.titleset > 0)
      name[digit] = part;
    const disc_file* const file = files.find(name);
    if (file == nullptr)
      break;
    if (file->size > largest_part || file->size % disc_sector_size != 0)
      tell(name, "has " + std::to_string(file->size) + " bytes, which no VOB has");
    const disc_file* const before = vobs.files.empty() ? nullptr : files.find(vobs.files.back());
    if (before != nullptr && file->first_sector != 0 &&
        file->first_sector != before->first_sector + before->size / disc_sector_size)
      tell(name, "does not follow " + before->path + " on the disc");
    if (bytes % disc_sector_size == 0) {
      vobs.files.push_back(name);
      vobs.file_sectors.push_back(file->size / disc_sector_size);
    }
    bytes += file->size;
    if (vobs.menus)
      break;
  }
  vobs.sectors = bytes / disc_sector_size;
  if (bytes == sectors * disc_sector_size)
    return;
  const std::string what = vobs.menus ? "menus" : "titles";
  tell(vobs.files.empty() ? ifo : vobs.files.front(),
       "the VOBs of " + what + " have " + std::to_string(bytes) + " bytes; the tables say " +
           std::to_string(sectors * disc_sector_size));
}

void disc_reader::read_unit(disc_vobs& vobs, std::uint32_t sector,
                            const std::vector<const disc_file*>& parts, unit_checks& checks) {
  std::uint64_t at = std::uint64_t{sector} * disc_sector_size;
  std::size_t part = 0;
  while (part < parts.size() && at >= parts[part]->size)
    at -= parts[part++]->size;
  std::vector<std::uint8_t> bytes(disc_sector_size);
  if (part == parts.size() || !files.read(*parts[part], at, bytes)) {
    tell(part == parts.size() ? table_file(vobs.titleset, "IFO") : parts[part]->path,
         at_sector(sector) + " cannot be read");
    return;
  }
  auto pack = read_navigation_pack(bytes);
  if (!pack) {
    tell(parts[part]->path, at_sector(sector) + " does not begin with a navigation pack");
    return;
  }
  if (std::string why_not = why_not_here(*pack, sector); !why_not.empty())
    tell(parts[part]->path, at_sector(sector) + ": " + std::move(why_not));
  checks.add(*pack, sector);
  disc_unit unit;
  unit.sector = sector;
  unit.last_sector = sector + std::min<std::uint32_t>(pack->unit_end, 0xFFFFFFFFU - sector);
  unit.begins = pack->begins;
  unit.ends = pack->ends;
  unit.vob = pack->vob;
  unit.cell = pack->cell;
  unit.reference_ends = pack->reference_ends;
  unit.audio = pack->audio;
  if (pack->highlight.status != 0 && !pack->highlight.buttons.empty()) {
    const auto& before = vobs.units.empty() ? nullptr : vobs.units.back().highlight;
    const bool same = before && before->buttons == pack->highlight.buttons &&
                      before->colours == pack->highlight.colours;
    unit.highlight =
        same ? before : std::make_shared<const highlight_information>(std::move(pack->highlight));
  }
  if (!vobs.units.empty() && vobs.units.back().last_sector + 1 != sector)
    tell(parts[part]->path, at_sector(vobs.units.back().sector) + " ends at sector " +
                                std::to_string(vobs.units.back().last_sector) +
                                ", the next begins at " + std::to_string(sector));
  vobs.units.push_back(std::move(unit));
}

void disc_reader::tell_of_units(const disc_vobs& vobs, std::vector<unit_trouble> troubles) {
  for (unit_trouble& trouble : troubles) {
    if (contents.unit_troubles.size() >= most_told)
      return;
    trouble.titleset = vobs.titleset;
    trouble.menus = vobs.menus;
    contents.unit_troubles.push_back(std::move(trouble));
  }
}

void disc_reader::read_vobs(disc_vobs vobs, std::uint64_t sectors, const vob_addresses& addresses,
                            const std::string& ifo) {
  find_files(vobs, sectors, ifo);
  std::vector<const disc_file*> parts;
  for (const std::string& name : vobs.files)
    parts.push_back(files.find(name));
  std::uint64_t next = 0;
  unit_checks checks(addresses);
  for (const std::uint32_t sector : addresses.units) {
    if (!goes_on())
      return;
    // Those that are not in order were told of; each sector is read once.
    if (sector >= next && sector < vobs.sectors)
      read_unit(vobs, sector, parts, checks);
    next = std::max<std::uint64_t>(next, std::uint64_t{sector} + 1);
  }
  tell_of_units(vobs, checks.judge());
  if (!vobs.units.empty() && vobs.units.back().last_sector + std::uint64_t{1} != vobs.sectors)
    tell(vobs.files.back(), "its last unit ends at sector " +
                                std::to_string(vobs.units.back().last_sector) + " of " +
                                std::to_string(vobs.sectors));
  if (!vobs.files.empty() || sectors > 0)
    contents.vobs.push_back(std::move(vobs));
}

const disc_vobs* disc_reader::vobs_of(int titleset, bool menus) const {
  for (const disc_vobs& vobs : contents.vobs)
    if (vobs.titleset == titleset && vobs.menus == menus)
      return &vobs;
  return nullptr;
}

void disc_reader::play(disc_chain& chain, disc_cell& cell, const cell_playback& tables,
                       const std::vector<disc_unit>& units) {
  auto unit =
      std::lower_bound(units.begin(), units.end(), tables.first_sector,
                       [](const disc_unit& u, std::uint32_t sector) { return u.sector < sector; });
  const auto first = unit;
  for (; left_ > 0 && unit != units.end() && unit->sector <= tables.last_unit_sector; ++unit) {
    --left_;
    // Interleaved cells of other angles lie between.
    if (unit->vob != tables.vob || unit->cell != tables.cell)
      continue;
    chain.units.push_back(cell.begins + seconds_between_units(first->begins, unit->begins));
    cell.seconds = std::max(cell.seconds, seconds_between_units(first->begins, unit->ends));
    if (!chain.highlight)
      chain.highlight = unit->highlight;
  }
}

disc_chain disc_reader::chain_of(const std::shared_ptr<const program_chain>& tables,
                                 const disc_vobs* vobs) {
  disc_chain chain;
  chain.tables = tables;
  for (const cell_playback& cell : tables->cells) {
    disc_cell found{cell.vob, cell.cell, chain.seconds, 0};
    if (vobs != nullptr)
      play(chain, found, cell, vobs->units);
    if (left_ == 0 && vobs != nullptr && !vobs->units.empty() && !told_of_units_) {
      told_of_units_ = true;
      tell(table_file(vobs->titleset, "IFO"), "its chains play the same units again and again");
    }
    chain.seconds += found.seconds;
    chain.cells.push_back(found);
  }
  for (const int cell : tables->programs)
    if (cell >= 1 && cell <= static_cast<int>(chain.cells.size()))
      chain.programs.push_back(chain.cells[static_cast<std::size_t>(cell) - 1].begins);
  return chain;
}

}  // namespace corvane
