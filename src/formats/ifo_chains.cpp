// Program chains and the tables of them.
#include "formats/ifo_reader.h"

#include <algorithm>
#include <utility>

namespace corvane {

namespace {

// Places in a chain, and sizes of what it leads to.
constexpr std::uint64_t time_at = 4, prohibited_at = 8, audio_at = 0x0C, subpictures_at = 0x1C,
                        next_at = 0x9C, mode_at = 0xA2, palette_at = 0xA4, commands_at = 0xE4,
                        programs_at = 0xE6, playback_at = 0xE8, positions_at = 0xEA,
                        chain_size = 0xEC, command_size = 8, playback_size = 24, position_size = 4;
constexpr std::size_t most_commands = 128;

/// Reads one chain.
class chain_reader {
 public:
  chain_reader(ifo_reader& reader, std::uint64_t at, const std::string& name)
      : reader_(reader), at_(at), name_(name) {}

  std::shared_ptr<const program_chain> read();

 private:
  void tell(std::uint64_t at, std::string what) { reader_.tell(name_, at, std::move(what)); }
  std::uint64_t u8(std::uint64_t place) const { return reader_.file.u8(at_ + place); }
  std::uint64_t u16(std::uint64_t place) const { return reader_.file.u16(at_ + place); }
  std::optional<std::uint64_t> part(std::uint64_t pointer, std::uint64_t size, const char* what);
  playback_time time(std::uint64_t at);
  void read_controls();
  void read_commands();
  void read_programs(std::size_t count);
  void read_cells(std::size_t count);
  void read_positions();
  cell_playback cell_of(std::uint64_t at);
  void check_cell(const cell_playback& cell, std::uint64_t at);

  ifo_reader& reader_;
  std::uint64_t at_;
  const std::string& name_;
  program_chain chain_;
};

/// Where the part is whose place in the chain stands at `pointer`; nullopt if it is not there.
std::optional<std::uint64_t> chain_reader::part(std::uint64_t pointer, std::uint64_t size,
                                                const char* what) {
  const std::uint64_t offset = u16(pointer);
  if (offset < chain_size)
    tell(at_ + pointer, std::string(offset == 0 ? "has no " : "has its own head as ") + what);
  else if (!reader_.file.holds(at_ + offset, size))
    tell(at_ + pointer, std::string("has ") + what + " past the end of the file");
  else if (!reader_.may_read(size))
    tell(at_ + pointer, "overlaps other tables");
  else
    return at_ + offset;
  return std::nullopt;
}

playback_time chain_reader::time(std::uint64_t at) {
  const playback_time time = read_playback_time(reader_.file.u32(at));
  if (!time.valid)
    tell(at, "has a time that is none");
  return time;
}

void chain_reader::read_controls() {
  for (std::size_t i = 0; i < chain_.audio.size(); ++i) {
    const std::uint64_t word = u16(audio_at + 2 * i);
    chain_.audio[i] = {(word & 0x8000) != 0, static_cast<int>(word >> 8 & 7)};
  }
  for (std::size_t i = 0; i < chain_.subpictures.size(); ++i) {
    const std::uint32_t word = reader_.file.u32(at_ + subpictures_at + 4 * i);
    const auto stream = [word](int shift) { return static_cast<int>(word >> shift & 31); };
    chain_.subpictures[i] = {(word & 0x80000000U) != 0, stream(24), stream(16), stream(8),
                             stream(0)};
  }
  for (std::size_t i = 0; i < chain_.palette.size(); ++i)
    chain_.palette[i] = reader_.file.u32(at_ + palette_at + 4 * i);
}

void chain_reader::read_commands() {
  if (u16(commands_at) == 0)
    return;
  constexpr std::uint64_t head = 8;
  const auto table = part(commands_at, head, "commands");
  if (!table)
    return;
  std::size_t stated = 0;
  for (const std::uint64_t place : {0U, 2U, 4U})
    stated += reader_.file.u16(*table + place);
  const std::uint64_t last = reader_.file.u16(*table + 6);
  const std::uint64_t room = std::min(last + 1, reader_.file.left(*table));
  const auto fit = room < head ? std::size_t{0} : static_cast<std::size_t>((room - head) / 8);
  if (stated > fit || stated > most_commands)
    tell(*table, "states " + std::to_string(stated) + " commands; there can be " +
                     std::to_string(std::min(fit, most_commands)));
  std::size_t left = std::min({stated, fit, most_commands});
  if (!reader_.may_read(left * command_size)) {
    tell(*table, "overlaps other tables");
    return;
  }
  std::uint64_t next = *table + head;
  const auto take = [&](std::uint64_t place, std::vector<vm_command>& commands) {
    const std::size_t count = std::min<std::size_t>(left, reader_.file.u16(*table + place));
    left -= count;
    for (std::size_t i = 0; i < count; ++i, next += command_size)
      commands.push_back({reader_.file.take<command_size>(next)});
  };
  take(0, chain_.pre);
  take(2, chain_.post);
  take(4, chain_.cell_commands);
}

void chain_reader::read_programs(std::size_t count) {
  const auto table = count == 0 ? std::nullopt : part(programs_at, count, "programs");
  for (std::size_t i = 0; table && i < count; ++i) {
    const int cell = reader_.file.u8(*table + i);
    const int before = chain_.programs.empty() ? 0 : chain_.programs.back();
    if (cell <= before || cell > static_cast<int>(chain_.cells.size()))
      tell(*table + i, "has program " + std::to_string(i + 1) + " begin with cell " +
                           std::to_string(cell) + " of " + std::to_string(chain_.cells.size()) +
                           ", after one that begins with cell " + std::to_string(before));
    chain_.programs.push_back(cell);
  }
}

cell_playback chain_reader::cell_of(std::uint64_t at) {
  const std::uint8_t first = reader_.file.u8(at), second = reader_.file.u8(at + 1);
  cell_playback cell;
  cell.block_mode = first >> 6 & 3;
  cell.block_type = first >> 4 & 3;
  cell.seamless = (first & 8) != 0;
  cell.interleaved = (first & 4) != 0;
  cell.clock_restarts = (first & 2) != 0;
  cell.seamless_angle = (first & 1) != 0;
  cell.still_after_each_unit = (second & 0x40) != 0;
  cell.restricted = (second & 0x20) != 0;
  cell.kind = second & 31;
  cell.still_seconds = reader_.file.u8(at + 2);
  cell.command = reader_.file.u8(at + 3);
  cell.time = time(at + 4);
  cell.first_sector = reader_.file.u32(at + 8);
  cell.first_interleaved_end = reader_.file.u32(at + 12);
  cell.last_unit_sector = reader_.file.u32(at + 16);
  cell.last_sector = reader_.file.u32(at + 20);
  return cell;
}

void chain_reader::check_cell(const cell_playback& cell, std::uint64_t at) {
  if (cell.first_sector > cell.last_unit_sector || cell.last_unit_sector > cell.last_sector)
    tell(at + 8, "has a cell that ends before it begins");
  if (cell.command > static_cast<int>(chain_.cell_commands.size()))
    tell(at + 3, "has a cell with command " + std::to_string(cell.command) + " of " +
                     std::to_string(chain_.cell_commands.size()));
}

void chain_reader::read_cells(std::size_t count) {
  const auto table = count == 0 ? std::nullopt : part(playback_at, count * playback_size, "cells");
  for (std::size_t i = 0; table && i < count; ++i) {
    const std::uint64_t at = *table + i * playback_size;
    chain_.cells.push_back(cell_of(at));
    check_cell(chain_.cells.back(), at);
  }
}

void chain_reader::read_positions() {
  const std::size_t count = chain_.cells.size();
  const auto table =
      count == 0 ? std::nullopt : part(positions_at, count * position_size, "cell positions");
  for (std::size_t i = 0; table && i < count; ++i) {
    const std::uint64_t at = *table + i * position_size;
    chain_.cells[i].vob = reader_.file.u16(at);
    chain_.cells[i].cell = reader_.file.u8(at + 3);
  }
}

std::shared_ptr<const program_chain> chain_reader::read() {
  chain_.at = at_;
  chain_.time = time(at_ + time_at);
  chain_.prohibited = reader_.file.u32(at_ + prohibited_at);
  read_controls();
  chain_.next = static_cast<int>(u16(next_at));
  chain_.previous = static_cast<int>(u16(next_at + 2));
  chain_.up = static_cast<int>(u16(next_at + 4));
  chain_.playback_mode = static_cast<int>(u8(mode_at));
  chain_.still_seconds = static_cast<int>(u8(mode_at + 1));
  read_commands();
  read_cells(static_cast<std::size_t>(u8(3)));
  read_programs(static_cast<std::size_t>(u8(2)));
  read_positions();
  return std::make_shared<const program_chain>(std::move(chain_));
}

std::string name_of(std::size_t number, const table_range& table) {
  return "PGC " + std::to_string(number) + " of " + table.name;
}

}  // namespace

std::shared_ptr<const program_chain> ifo_reader::chain_at(std::uint64_t at,
                                                          const std::string& name) {
  const auto known = chains_.find(at);
  if (known != chains_.end())
    return known->second;
  std::shared_ptr<const program_chain>& chain = chains_[at];
  if (!file.holds(at, chain_size))
    tell(name, at, "is past the end of the file");
  else if (!may_read(chain_size))
    tell(name, at, "overlaps other tables");
  else
    chain = chain_reader(*this, at, name).read();
  return chain;
}

std::vector<chain_entry> read_chains(ifo_reader& reader, const table_range& table, bool menus) {
  constexpr std::size_t head = 8, entry_size = 8;
  const std::size_t count =
      reader.entries_in(table, head, entry_size, reader.file.u16(table.begin));
  std::vector<chain_entry> entries(count);
  for (std::size_t i = 0; i < count; ++i) {
    const std::uint64_t at = table.begin + head + i * entry_size;
    chain_entry& entry = entries[i];
    const std::uint8_t category = reader.file.u8(at), block = reader.file.u8(at + 1);
    entry.entry = (category & 0x80) != 0;
    if (menus) {
      const int kind = category & 15;
      entry.menu = kind <= 7 ? static_cast<menu_kind>(kind) : menu_kind::none;
      if (entry.entry && (kind < 2 || kind > 7))
        reader.tell(table.name, at, "has an entry for a menu of no kind that there is");
    } else {
      entry.title = category & 0x7F;
    }
    entry.block_mode = block >> 6 & 3;
    entry.block_type = block >> 4 & 3;
    entry.parental = reader.file.u16(at + 2);
    const std::uint64_t place = table.begin + std::uint64_t{reader.file.u32(at + 4)};
    if (place < table.begin + head + count * entry_size || place + chain_size > table.end)
      reader.tell(table.name, at + 4,
                  "has its PGC " + std::to_string(i + 1) + " outside of itself");
    entry.chain = reader.chain_at(place, name_of(i + 1, table));
  }
  return entries;
}

std::vector<menu_language> read_menus(ifo_reader& reader, std::uint64_t pointer,
                                      const std::string& name) {
  constexpr std::size_t head = 8, entry_size = 8;
  const auto table = reader.table_at(pointer, name);
  if (!table)
    return {};
  const std::size_t count =
      reader.entries_in(*table, head, entry_size, reader.file.u16(table->begin));
  std::vector<menu_language> languages(count);
  for (std::size_t i = 0; i < count; ++i) {
    const std::uint64_t at = table->begin + head + i * entry_size;
    menu_language& language = languages[i];
    language.language = language_of(reader.file.u16(at));
    language.language_extension = reader.file.u8(at + 2);
    language.kinds = reader.file.u8(at + 3);
    const std::uint64_t begin = table->begin + std::uint64_t{reader.file.u32(at + 4)};
    const std::string unit =
        name + " (" + (language.language.empty() ? "no language" : language.language) + ")";
    if (const auto chains = reader.table_from(begin, unit, 8, 4, at + 4))
      language.chains = read_chains(reader, *chains, true);
  }
  return languages;
}

}  // namespace corvane
