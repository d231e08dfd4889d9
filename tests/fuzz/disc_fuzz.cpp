// Any bytes as something of a finished disc: the first byte says what, the rest is it. Reading ends
// soon, what is given fits into the bytes, and what is read twice is the same.
#include "examine/stream_addresses.h"
#include "examine/unit_checks.h"
#include "formats/disc_image.h"
#include "formats/ifo.h"
#include "formats/navigation_pack.h"
#include "formats/subpicture.h"
#include "formats/vm_command.h"
#include "formats/vm_machine.h"
#include "must.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace {

using bytes = std::span<const std::uint8_t>;

void check_commands(const std::vector<corvane::vm_command>& commands) {
  for (const corvane::vm_command& command : commands) {
    must(!command.text().empty(), "every command has a text");
    must(command.target() == corvane::target_of(command.bytes), "a target is what its bytes say");
  }
  corvane::vm_registers registers;
  const auto to = corvane::run_commands(commands, registers).to;
  must(!to || (to->where != corvane::vm_target::place::nowhere && !to->conditional),
       "what is done leads somewhere");
}

void check_chain(const corvane::program_chain* chain, std::size_t size) {
  if (chain == nullptr)
    return;
  must(chain->at < size, "a chain is in the file");
  must(chain->cells.size() <= 255 && chain->programs.size() <= 255, "a chain is as large as any");
  check_commands(chain->pre);
  check_commands(chain->post);
  check_commands(chain->cell_commands);
}

void check_chains(const std::vector<corvane::chain_entry>& chains, std::size_t size) {
  must(chains.size() * 8 <= size, "entries of chains are in the file");
  for (const corvane::chain_entry& entry : chains)
    check_chain(entry.chain.get(), size);
}

void check_menus(const std::vector<corvane::menu_language>& menus, std::size_t size) {
  for (const corvane::menu_language& language : menus)
    check_chains(language.chains, size);
}

void check_troubles(const std::vector<corvane::table_trouble>& troubles) {
  must(troubles.size() <= corvane::most_troubles, "troubles are not without end");
  for (const corvane::table_trouble& trouble : troubles)
    must(!trouble.table.empty() && !trouble.what.empty(), "a trouble says what it is");
}

void check_manager(bytes file) {
  const corvane::video_manager manager = corvane::read_video_manager(file);
  check_troubles(manager.troubles);
  must(manager.titles.size() * 12 <= file.size(), "titles are in the file");
  check_chain(manager.first_play.get(), file.size());
  check_menus(manager.menus, file.size());
}

void check_titleset(bytes file) {
  const corvane::titleset set = corvane::read_titleset(file);
  check_troubles(set.troubles);
  must(set.title_vobs.units.size() * 4 <= file.size(), "units are in the file");
  check_chains(set.chains, file.size());
  check_menus(set.menus, file.size());
}

void check_pack(bytes sector) {
  const auto pack = corvane::read_navigation_pack(sector);
  must(pack.value.has_value() == corvane::is_navigation_pack(sector), "a pack is read or is none");
  if (!pack)
    return;
  check_troubles(pack->troubles);
  must(pack->highlight.buttons.size() <= 36, "there are no more buttons than a table holds");
}

/// The runs are all of the picture, line by line.
void check_subpicture(bytes unit) {
  const auto picture = corvane::read_subpicture(unit, 720, 576);
  must(picture.value.has_value() == picture.error.empty(), "a unit is read or refused");
  if (!picture)
    return;
  int x = picture->x0, y = picture->y0;
  for (const corvane::subpicture_run& run : picture->runs) {
    must(run.y == y && run.x0 == x && run.x1 >= x && run.x1 <= picture->x1 && run.code <= 3,
         "a run begins where the one before it ends");
    const bool line_ends = run.x1 == picture->x1;
    x = line_ends ? picture->x0 : run.x1 + 1;
    y += line_ends ? 1 : 0;
  }
  must(x == picture->x0 && y == picture->y1 + 1 && picture->x1 < 720 && picture->y1 < 576,
       "the runs are the whole picture");
}

void check_unit_troubles(const std::vector<corvane::unit_trouble>& troubles) {
  must(troubles.size() <= corvane::unit_trouble_list::most, "troubles are not without end");
  for (const corvane::unit_trouble& trouble : troubles)
    must(!trouble.what.empty(), "a trouble says what it is");
}

/// Navigation packs as units of VOBs. The first bytes: how many sectors each unit has, how many
/// units a cell.
void check_units(bytes content) {
  constexpr std::size_t head = 2;
  if (content.size() < head)
    return;
  const std::uint32_t step = content[0] + 1U, units_a_cell = content[1] % 8 + 1U;
  content = content.subspan(head);
  const auto count = static_cast<std::uint32_t>(content.size() / corvane::disc_sector_size);
  corvane::vob_addresses addresses;
  for (std::uint32_t i = 0; i < count; ++i) {
    if (i % units_a_cell == 0)
      addresses.cells.push_back({1, static_cast<int>(addresses.cells.size()) + 1, i * step,
                                 (i + units_a_cell) * step - 1});
    addresses.units.push_back(i * step);
  }
  corvane::unit_checks checks(addresses);
  corvane::disc_vobs vobs;
  vobs.sectors = content.size();
  for (std::uint32_t i = 0; i < count; ++i) {
    const auto pack = corvane::read_navigation_pack(
        content.subspan(i * corvane::disc_sector_size, corvane::disc_sector_size));
    if (!pack)
      continue;
    checks.add(*pack, i * step);
    corvane::disc_unit unit;
    unit.sector = i * step;
    unit.begins = pack->begins;
    unit.vob = pack->vob;
    unit.cell = pack->cell;
    unit.reference_ends = pack->reference_ends;
    unit.audio = pack->audio;
    vobs.units.push_back(unit);
  }
  check_unit_troubles(checks.judge());
  // Any bytes do for the streams of the sectors.
  check_unit_troubles(corvane::stream_address_troubles(vobs, content));
}

void check_files(const corvane::image_volume& volume, corvane::byte_source& image) {
  check_troubles(volume.troubles);
  must(volume.files.size() + volume.folders.size() <= corvane::most_image_files,
       "there are no more files than are looked at");
  std::uint8_t first = 0;
  for (const corvane::disc_file& file : volume.files)
    if (file.size > 0)
      image.read(std::uint64_t{file.first_sector} * corvane::disc_sector_size, {&first, 1});
}

/// An image whose first sectors are zeros is what most inputs would have to begin with: `content`
/// is put at sector 16, where the descriptors are.
void check_image(bytes content) {
  std::vector<std::uint8_t> bytes_of_image(std::size_t{16} * corvane::disc_sector_size);
  bytes_of_image.insert(bytes_of_image.end(), content.begin(), content.end());
  corvane::memory_source image(bytes_of_image);
  const corvane::disc_image read = corvane::read_disc_image(image);
  check_files(read.iso9660, image);
  check_files(read.udf, image);
}

/// Sectors, each given by its number and its beginning, in an image that is empty otherwise: so
/// that an input can be small although UDF begins at sector 256. A piece is: sector (2 bytes,
/// lowest first), length (2 bytes), bytes.
void check_sparse_image(bytes pieces) {
  constexpr std::size_t sectors = 300;
  std::vector<std::uint8_t> whole(sectors * corvane::disc_sector_size);
  while (pieces.size() >= 4) {
    const std::size_t at =
        (pieces[0] + pieces[1] * std::size_t{256}) % sectors * corvane::disc_sector_size;
    const std::size_t length =
        std::min({pieces[2] + pieces[3] * std::size_t{256}, pieces.size() - 4, whole.size() - at});
    std::copy_n(pieces.begin() + 4, length, whole.begin() + static_cast<std::ptrdiff_t>(at));
    pieces = pieces.subspan(4 + length);
  }
  corvane::memory_source image(whole);
  const corvane::disc_image read = corvane::read_disc_image(image);
  check_files(read.iso9660, image);
  check_files(read.udf, image);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0)
    return 0;
  const bytes content(data + 1, size - 1);
  switch (data[0]) {
    case 'm':
      check_manager(content);
      break;
    case 't':
      check_titleset(content);
      break;
    case 'n':
      check_pack(content);
      break;
    case 'p':
      check_subpicture(content);
      break;
    case 'u':
      check_units(content);
      break;
    case 'i':
      check_image(content);
      break;
    case 's':
      check_sparse_image(content);
      break;
    default:
      break;
  }
  return 0;
}
