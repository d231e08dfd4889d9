#include "examine/disc_streams.h"

#include "examine/last_pictures.h"
#include "examine/pack_headers.h"
#include "examine/stream_addresses.h"
#include "formats/ifo.h"
#include "formats/program_stream.h"
#include "formats/subpicture.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace corvane {

namespace {

/// The subpicture stream with which a player shows a menu's buttons, on a display of the menu's
/// proportions: the first one, also where the tables state none.
std::uint8_t stream_of_buttons(const disc_menu_contents& menu) {
  const subpicture_control& control = menu.chain.tables->subpictures.front();
  const bool wide = menu.video.aspect_code == 3;
  const int number = !control.present ? 0 : wide ? control.wide : control.standard;
  return static_cast<std::uint8_t>(first_subpicture + number);
}

}  // namespace

/// What all chains together keep of their last sectors.
constexpr std::size_t most_last_bytes = std::size_t{64} << 20;

struct disc_stream_reader::reading {
  const program_chain* chain = nullptr;
  chain_streams streams;
  program_stream_scanner scanner{inner_streams::counted};
  std::vector<std::uint8_t> head;
  bool head_looked_at = false;
  std::uint64_t sectors = 0;       // that its cells have, and that are there
  std::vector<std::uint8_t> last;  // the bytes that end_of_pictures looks at
  bool lacks_last = false;         // there was no room for them
  const disc_vobs* vobs = nullptr;
  bool wants_subtitles = false;
  /// The unit of each subpicture stream that is not whole yet.
  struct open_unit {
    stream_time stamp = 0;
    std::vector<std::uint8_t> bytes;
    bool broken = false;  ///< one of the stream's units cannot be read
  };
  std::map<int, open_unit> units;
  std::optional<std::uint8_t> overlay_stream;  // not set: none is looked for

  bool wants_overlay() const {
    const std::vector<std::uint8_t>& unit = streams.overlay;
    return overlay_stream && (unit.size() < 2 || unit.size() < stated_unit_size(unit));
  }
};

/// Sectors of VOBs that belong to one chain.
disc_stream_reader::disc_stream_reader(const disc_contents& disc) {
  const auto vobs_of = [&](int titleset, bool menus) -> const disc_vobs* {
    const auto found = std::find_if(disc.vobs.begin(), disc.vobs.end(), [&](const disc_vobs& vobs) {
      return vobs.titleset == titleset && vobs.menus == menus;
    });
    return found == disc.vobs.end() ? nullptr : &*found;
  };
  for (const disc_title_contents& title : disc.titles)
    if (const disc_vobs* const vobs = vobs_of(title.titleset, false))
      if (reading* const added = add(title.chain, *vobs); added != nullptr)
        added->wants_subtitles = true;
  for (const disc_menu_contents& menu : disc.menus)
    if (const disc_vobs* const vobs = vobs_of(menu.titleset, true))
      if (reading* const added = add(menu.chain, *vobs); added != nullptr && menu.chain.highlight)
        added->overlay_stream = stream_of_buttons(menu);
}

disc_stream_reader::~disc_stream_reader() = default;

/// Null if the chain is there already, or plays nothing.
disc_stream_reader::reading* disc_stream_reader::add(const disc_chain& chain,
                                                     const disc_vobs& vobs) {
  const bool known = std::any_of(readings_.begin(), readings_.end(),
                                 [&](const auto& one) { return one->chain == chain.tables.get(); });
  if (known || !chain.tables || chain.tables->cells.empty())
    return nullptr;
  readings_.push_back(std::make_unique<reading>());
  reading& r = *readings_.back();
  r.chain = chain.tables.get();
  r.vobs = &vobs;
  std::map<std::uint32_t, stretch>& all = stretches_[&vobs];
  std::uint64_t end = 0;
  for (const cell_playback& cell : chain.tables->cells) {
    if (cell.last_sector < cell.first_sector)
      continue;
    r.streams.in_order = r.streams.in_order && (end == 0 || cell.first_sector == end);
    end = std::uint64_t{cell.last_sector} + 1;
    const auto next = all.lower_bound(cell.first_sector);
    if (next != all.end() && next->second.first <= cell.last_sector) {
      r.streams.shared = true;
      continue;
    }
    all.emplace_hint(next, cell.last_sector, stretch{cell.first_sector, &r});
    if (cell.first_sector < vobs.sectors)
      r.sectors += std::min(end, vobs.sectors) - cell.first_sector;
  }
  return &r;
}

void disc_stream_reader::take(reading& r, std::span<const std::uint8_t> bytes) {
  r.streams.sectors += bytes.size() / disc_sector_size;
  r.scanner.feed(bytes.data(), bytes.size());
  take_last(r, bytes);
  take_overlay(r, bytes);
  take_head(r, bytes);
}

void disc_stream_reader::take_head(reading& r, std::span<const std::uint8_t> bytes) {
  if (r.head_looked_at)
    return;
  const std::size_t more = std::min(bytes.size(), program_stream_head_bytes - r.head.size());
  r.head.insert(r.head.end(), bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(more));
  if (r.head.size() < program_stream_head_bytes)
    return;
  r.head_looked_at = true;
  if (auto facts = read_program_stream_head(r.head))
    r.streams.head = std::make_shared<const program_stream_facts>(std::move(*facts));
  r.head = {};
}

void disc_stream_reader::take_last(reading& r, std::span<const std::uint8_t> bytes) {
  const std::uint64_t left = r.sectors - std::min(r.sectors, r.streams.sectors);
  if (left >= sectors_of_last_pictures || r.lacks_last)
    return;
  const std::uint64_t wanted = sectors_of_last_pictures - left;
  bytes = bytes.last(std::min<std::uint64_t>(bytes.size(), wanted * disc_sector_size));
  r.lacks_last = bytes.size() > most_last_bytes - last_bytes_;
  if (!r.lacks_last) {
    last_bytes_ += bytes.size();
    r.last.insert(r.last.end(), bytes.begin(), bytes.end());
    if (left > 0)
      return;
    r.streams.pictures_end = end_of_pictures(r.last);
  }
  last_bytes_ -= r.last.size();
  r.last = {};
}

/// A unit begins with a packet that has a time, and may go on in others.
void disc_stream_reader::take_overlay(reading& r, std::span<const std::uint8_t> bytes) {
  std::vector<std::uint8_t>& unit = r.streams.overlay;
  const auto take_packet = [&](const stream_packet& packet, std::span<const std::uint8_t> payload) {
    if (packet.stream == private_stream_1 && packet.substream == r.overlay_stream &&
        !payload.empty() && (!unit.empty() || packet.shown))
      unit.insert(unit.end(), payload.begin() + 1, payload.end());
  };
  for (; r.wants_overlay() && bytes.size() >= disc_sector_size;
       bytes = bytes.subspan(disc_sector_size))
    each_packet_in_pack(bytes.first(disc_sector_size), take_packet);
}

/// A unit begins with a packet that has a time, and may go on in others.
void disc_stream_reader::take_subtitles(reading& r, std::span<const std::uint8_t> sector) {
  each_packet_in_pack(
      sector, [&](const stream_packet& packet, std::span<const std::uint8_t> payload) {
        const int number = packet.substream.value_or(0) - first_subpicture;
        if (payload.empty() || number < 0 || number > last_subpicture - first_subpicture)
          return;
        reading::open_unit& unit = r.units[number];
        if (packet.shown) {
          unit.broken = unit.broken || !unit.bytes.empty();
          unit.stamp = *packet.shown;
          unit.bytes.clear();
        }
        unit.bytes.insert(unit.bytes.end(), payload.begin() + 1, payload.end());
        const std::size_t size = stated_unit_size(unit.bytes);
        if (unit.bytes.size() < 2 || unit.bytes.size() < size)
          return;
        const auto times = read_subpicture_times(unit.bytes);
        unit.broken = unit.broken || !times;
        r.streams.subtitles[number].push_back({unit.stamp, times.value_or(subpicture_times{})});
        unit.bytes.clear();
      });
}

void disc_stream_reader::take_packs(const disc_vobs& vobs, std::uint32_t first_sector,
                                    std::span<const std::uint8_t> bytes) {
  std::vector<std::uint8_t>& packs = packs_[&vobs];
  const std::uint64_t end = first_sector + bytes.size() / disc_sector_size;
  packs.resize(std::max<std::size_t>(packs.size(), std::min(vobs.sectors, end)));
  for (std::size_t at = 0, sector = first_sector;
       at + disc_sector_size <= bytes.size() && sector < packs.size();
       at += disc_sector_size, ++sector)
    packs[sector] = stream_of_sector(bytes.subspan(at, disc_sector_size));
}

void disc_stream_reader::feed(const disc_vobs& vobs, std::uint32_t first_sector,
                              std::span<const std::uint8_t> bytes) {
  take_packs(vobs, first_sector, bytes);
  const auto all = stretches_.find(&vobs);
  const std::uint64_t end = first_sector + bytes.size() / disc_sector_size;
  if (all == stretches_.end())
    return;
  for (auto next = all->second.lower_bound(first_sector);
       next != all->second.end() && next->second.first < end; ++next) {
    const stretch& here = next->second;
    const std::uint64_t from = std::max(here.first, first_sector);
    const std::uint64_t to = std::min<std::uint64_t>(std::uint64_t{next->first} + 1, end);
    take(*here.of,
         bytes.subspan((from - first_sector) * disc_sector_size, (to - from) * disc_sector_size));
    const std::vector<std::uint8_t>& packs = packs_[&vobs];
    for (std::uint64_t sector = from; here.of->wants_subtitles && sector < to; ++sector)
      if (sector < packs.size() && packs[sector] >= first_subpicture &&
          packs[sector] <= last_subpicture)
        take_subtitles(*here.of,
                       bytes.subspan((sector - first_sector) * disc_sector_size, disc_sector_size));
  }
}

std::uint64_t disc_stream_reader::shown_bytes(const reading& r) const {
  const auto is_shown = [](std::uint8_t stream) {
    return stream >= first_sound_stream || (stream >= 0x80 && stream < private_stream_1);
  };
  const auto packs = packs_.find(r.vobs);
  std::uint64_t sectors = r.streams.sectors;
  for (auto cell = r.chain->cells.rbegin(); cell != r.chain->cells.rend() && sectors > 0; ++cell)
    for (std::uint64_t sector = std::uint64_t{cell->last_sector} + 1;
         sector > cell->first_sector && sectors > 0; --sectors)
      if (--sector < packs->second.size() && is_shown(packs->second[sector]))
        return sectors * disc_sector_size;
  return 0;
}

disc_streams disc_stream_reader::finish() {
  disc_streams all;
  for (const auto& one : readings_) {
    if (one->streams.sectors == 0)
      continue;
    if (!one->head_looked_at)
      if (auto facts = read_program_stream_head(one->head))
        one->streams.head = std::make_shared<const program_stream_facts>(std::move(*facts));
    for (const auto& [number, unit] : one->units)
      if (unit.broken || !unit.bytes.empty())
        one->streams.subtitles.erase(number);
    one->scanner.finish();
    one->streams.facts = one->scanner.facts();
    one->streams.shown_bytes = shown_bytes(*one);
    all.streams_.emplace(one->chain, std::move(one->streams));
  }
  for (const auto& [vobs, packs] : packs_)
    for (unit_trouble& trouble : stream_address_troubles(*vobs, packs))
      if (all.unit_troubles_.size() < unit_trouble_list::most)
        all.unit_troubles_.push_back(std::move(trouble));
  return all;
}

const inner_stream* stream_with(const program_stream_facts& facts, int id) {
  const auto number = [&](int first) { return id - first; };
  if (id >= 0xC0)
    return facts.find(inner_kind::mpeg_audio, number(0xC0));
  if (id >= 0xA0)
    return facts.find(inner_kind::lpcm, number(0xA0));
  if (id >= 0x88)
    return facts.find(inner_kind::dts, number(0x88));
  if (id >= 0x80)
    return facts.find(inner_kind::ac3, number(0x80));
  return facts.find(inner_kind::subpicture, number(0x20));
}

const chain_streams* disc_streams::find(const disc_chain& chain) const {
  const auto found = streams_.find(chain.tables.get());
  return found == streams_.end() ? nullptr : &found->second;
}

}  // namespace corvane
