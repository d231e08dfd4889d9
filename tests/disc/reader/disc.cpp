#include "disc.h"

#include "packets.h"

#include <algorithm>
#include <cstdarg>
#include <cstring>
#include <dvdread/ifo_read.h>
#include <memory>

namespace corvane::disc {

namespace {

struct disc_closer {
  void operator()(dvd_reader_t* disc) const { DVDClose(disc); }
};
struct table_closer {
  void operator()(ifo_handle_t* tables) const { ifoClose(tables); }
};
using disc_handle = std::unique_ptr<dvd_reader_t, disc_closer>;
using tables = std::unique_ptr<ifo_handle_t, table_closer>;

void say_nothing(void*, dvd_logger_level_t, const char*, va_list) {}

constexpr double ticks_a_second = 90000;

std::vector<vm_command> commands(const vm_cmd_t* first, int count) {
  std::vector<vm_command> all;
  for (int i = 0; first != nullptr && i < count; ++i) {
    vm_command command;
    std::memcpy(command.bytes.data(), first[i].bytes, command.bytes.size());
    all.push_back(command);
  }
  return all;
}

std::string language(std::uint16_t code) {
  const char high = static_cast<char>(code >> 8), low = static_cast<char>(code & 0xff);
  return code == 0 || code == 0xffff ? std::string() : std::string{high, low};
}

/// A table's time in seconds; used only where the streams themselves say nothing.
double seconds_of(const dvd_time_t& t) {
  const auto decimal = [](unsigned v) { return static_cast<int>((v >> 4 & 15) * 10 + (v & 15)); };
  const bool ntsc = (t.frame_u & 0xc0) == 0xc0;
  return decimal(t.hour) * 3600 + decimal(t.minute) * 60 + decimal(t.second) +
         decimal(t.frame_u & 0x3f) / (ntsc ? 30000.0 / 1001 : 25.0);
}

/// How long a cell plays, by the clock of its first and last navigation packets.
double cell_seconds(const streams_of& streams, const cell_playback_t& cell) {
  const auto first = streams.navigation(cell.first_sector);
  const auto last = streams.navigation(cell.last_vobu_start_sector);
  if (!first || !last)
    return seconds_of(cell.playback_time);
  return (last->pci.pci_gi.vobu_e_ptm - first->pci.pci_gi.vobu_s_ptm) / ticks_a_second;
}

/// Start times of all cells of a chain, and at the end its whole length.
std::vector<double> cell_times(const streams_of& streams, const pgc_t& pgc) {
  std::vector<double> times{0};
  for (int i = 0; pgc.cell_playback != nullptr && i < pgc.nr_of_cells; ++i)
    times.push_back(times.back() + cell_seconds(streams, pgc.cell_playback[i]));
  return times;
}

program_chain chain_of(const streams_of* streams, const pgc_t& pgc) {
  program_chain chain;
  if (pgc.command_tbl != nullptr) {
    const pgc_command_tbl_t& t = *pgc.command_tbl;
    chain.pre = commands(t.pre_cmds, t.nr_of_pre);
    chain.post = commands(t.post_cmds, t.nr_of_post);
    chain.cell = commands(t.cell_cmds, t.nr_of_cell);
  }
  chain.still_seconds = pgc.still_time;
  if (streams != nullptr)
    chain.seconds = cell_times(*streams, pgc).back();
  if (chain.still_seconds == 0 && pgc.cell_playback != nullptr && pgc.nr_of_cells > 0)
    chain.still_seconds = pgc.cell_playback[pgc.nr_of_cells - 1].still_time;
  return chain;
}

picture_format picture_of(const video_attr_t& video) {
  picture_format picture;
  const bool pal = video.video_format == 1;
  picture.standard = pal ? "PAL" : "NTSC";
  picture.aspect = video.display_aspect_ratio == 3 ? "16:9" : "4:3";
  static const int widths[] = {720, 704, 352, 352};
  const int height = (pal ? 576 : 480) / (video.picture_size == 3 ? 2 : 1);
  picture.size = std::to_string(widths[video.picture_size]) + "x" + std::to_string(height);
  return picture;
}

struct audio_kind {
  const char* name;
  int stream;  ///< id of the format's first stream, as packets.h gives ids
};

audio_kind kind_of(const audio_attr_t& audio) {
  switch (audio.audio_format) {
    case 0:
      return {"ac3", 0xbd80};
    case 2:
      return {"mp2", 0xc0};
    case 3:
      return {"mpeg2 extended", 0xc0};
    case 4:
      return {"lpcm", 0xbda0};
    case 6:
      return {"dts", 0xbd88};
    default:
      return {"unknown", 0};
  }
}

/// The audio streams that the chain has, in the order in which a player numbers them.
std::vector<audio_stream> audio_of(const vtsi_mat_t& vts, const pgc_t& pgc,
                                   const streams_of& streams) {
  std::map<int, stream_start> starts;
  if (pgc.cell_playback != nullptr && pgc.nr_of_cells > 0)
    starts = streams.starts(pgc.cell_playback[0].first_sector, 500);
  const stream_start picture = starts.count(0xe0) != 0 ? starts[0xe0] : stream_start{};
  std::vector<audio_stream> all;
  for (int i = 0; i < vts.nr_of_vts_audio_streams && i < 8; ++i) {
    const std::uint16_t control = pgc.audio_control[i];
    if ((control & 0x8000) == 0)
      continue;
    const audio_attr_t& attributes = vts.vts_audio_attr[i];
    const audio_kind kind = kind_of(attributes);
    audio_stream stream;
    stream.format = kind.name;
    stream.channels = attributes.channels + 1;
    if (attributes.lang_type == 1)
      stream.language = language(attributes.lang_code);
    const auto packets = starts.find(kind.stream + (control >> 8 & 7));
    if (packets != starts.end()) {
      stream.packets = packets->second.packets;
      stream.begins =
          static_cast<std::int32_t>(packets->second.first - picture.first) / ticks_a_second;
    }
    all.push_back(std::move(stream));
  }
  return all;
}

/// The first subtitle of a stream, timed by the first picture of the chain.
std::optional<cue> first_cue(const streams_of& streams, const pgc_t& pgc, unsigned stream) {
  if (pgc.cell_playback == nullptr || pgc.nr_of_cells == 0)
    return std::nullopt;
  const cell_playback_t& first = pgc.cell_playback[0];
  const cell_playback_t& last = pgc.cell_playback[pgc.nr_of_cells - 1];
  const auto origin = streams.navigation(first.first_sector);
  const auto unit = streams.first_subpicture(static_cast<std::uint8_t>(0x20 + stream),
                                             first.first_sector, last.last_sector);
  if (!origin || !unit)
    return std::nullopt;
  const auto picture = decode_subpicture(unit->bytes);
  if (!picture)
    return std::nullopt;
  const double at =
      static_cast<std::int32_t>(unit->time - origin->pci.pci_gi.vobu_s_ptm) / ticks_a_second;
  return cue{at + picture->begins, at + picture->ends, *picture};
}

std::vector<subpicture_stream> subpictures_of(const vtsi_mat_t& vts, const pgc_t& pgc,
                                              const streams_of& streams) {
  std::vector<subpicture_stream> all;
  for (int i = 0; i < vts.nr_of_vts_subp_streams && i < 32; ++i) {
    const subp_attr_t& attributes = vts.vts_subp_attr[i];
    const std::uint32_t control = pgc.subp_control[i];
    if ((control & 0x80000000u) != 0)
      all.push_back({attributes.type == 1 ? language(attributes.lang_code) : std::string(),
                     first_cue(streams, pgc, control >> 24 & 31)});
  }
  return all;
}

/// Start times of the units of video of all cells.
std::vector<double> units_of(const streams_of& streams, const pgc_t& pgc) {
  std::vector<double> units;
  const std::vector<double> cells = cell_times(streams, pgc);
  for (std::size_t i = 0; i + 1 < cells.size(); ++i) {
    const cell_playback_t& cell = pgc.cell_playback[i];
    std::optional<std::uint32_t> origin;
    for (std::uint32_t sector = cell.first_sector; sector <= cell.last_vobu_start_sector;) {
      const auto packet = streams.navigation(sector);
      if (!packet)
        break;
      const std::uint32_t time = packet->pci.pci_gi.vobu_s_ptm;
      if (!origin)
        origin = time;
      units.push_back(cells[i] + (time - *origin) / ticks_a_second);
      const std::uint32_t next = sector + packet->dsi.dsi_gi.vobu_ea + 1;
      if (next <= sector)  // a damaged disc
        break;
      sector = next;
    }
  }
  return units;
}

/// The program chain that a title starts with; null when the tables lead nowhere.
const pgc_t* first_chain(const ifo_handle_t& vts, const ttu_t& parts) {
  if (parts.nr_of_ptts == 0 || vts.vts_pgcit == nullptr)
    return nullptr;
  const int number = parts.ptt[0].pgcn;
  if (number < 1 || number > vts.vts_pgcit->nr_of_pgci_srp)
    return nullptr;
  return vts.vts_pgcit->pgci_srp[number - 1].pgc;
}

std::vector<double> chapters_of(const ttu_t& parts, const pgc_t& pgc, const streams_of& streams) {
  const std::vector<double> times = cell_times(streams, pgc);
  std::vector<double> chapters;
  for (int i = 0; i < parts.nr_of_ptts; ++i) {
    const int program = parts.ptt[i].pgn;
    if (parts.ptt[i].pgcn != parts.ptt[0].pgcn || program < 1 || program > pgc.nr_of_programs)
      continue;
    const std::size_t cell = pgc.program_map[program - 1];
    if (cell >= 1 && cell <= times.size() - 1)
      chapters.push_back(times[cell - 1]);
  }
  return chapters;
}

/// Fills the titles of one titleset among all titles of the disc.
bool read_titles(dvd_reader_t* disc, const ifo_handle_t& vts, int titleset, contents& on_disc) {
  if (vts.vtsi_mat == nullptr || vts.vts_ptt_srpt == nullptr)
    return false;
  const streams_of streams(disc, titleset, DVD_READ_TITLE_VOBS);
  for (title& t : on_disc.titles) {
    if (t.titleset != titleset)
      continue;
    if (t.number_in_titleset < 1 || t.number_in_titleset > vts.vts_ptt_srpt->nr_of_srpts)
      return false;
    const ttu_t& parts = vts.vts_ptt_srpt->title[t.number_in_titleset - 1];
    const pgc_t* pgc = first_chain(vts, parts);
    if (pgc == nullptr)
      return false;
    t.picture = picture_of(vts.vtsi_mat->vts_video_attr);
    t.chain = chain_of(&streams, *pgc);
    t.chapters = chapters_of(parts, *pgc, streams);
    t.audio = audio_of(*vts.vtsi_mat, *pgc, streams);
    t.subpictures = subpictures_of(*vts.vtsi_mat, *pgc, streams);
    for (std::size_t colour = 0; colour < t.palette.size(); ++colour)
      t.palette[colour] = pgc->palette[colour];  // packed: no reference to the whole array
    t.units = units_of(streams, *pgc);
  }
  return true;
}

button button_of(const btni_t& info, const btn_colit_t& colours) {
  button b;
  b.x0 = static_cast<int>(info.x_start);
  b.y0 = static_cast<int>(info.y_start);
  b.x1 = static_cast<int>(info.x_end);
  b.y1 = static_cast<int>(info.y_end);
  b.up = static_cast<int>(info.up);
  b.down = static_cast<int>(info.down);
  b.left = static_cast<int>(info.left);
  b.right = static_cast<int>(info.right);
  std::memcpy(b.command.bytes.data(), info.cmd.bytes, b.command.bytes.size());
  if (info.btn_coln >= 1 && info.btn_coln <= 3) {
    b.highlighted = code_looks::of(colours.btn_coli[info.btn_coln - 1][0]);
    b.pressed = code_looks::of(colours.btn_coli[info.btn_coln - 1][1]);
  }
  return b;
}

/// The buttons of a menu: those of its first unit of video that has any.
std::vector<button> buttons_of(const streams_of& streams, const pgc_t& pgc) {
  for (int i = 0; pgc.cell_playback != nullptr && i < pgc.nr_of_cells; ++i) {
    const cell_playback_t& cell = pgc.cell_playback[i];
    std::uint32_t sector = cell.first_sector;
    while (sector <= cell.last_vobu_start_sector) {
      const auto packet = streams.navigation(sector);
      if (!packet)
        break;
      const hli_t& highlight = packet->pci.hli;
      if ((highlight.hl_gi.hli_ss & 3) != 0 && highlight.hl_gi.btn_ns != 0) {
        std::vector<button> all;
        for (int b = 0; b < std::min<int>(highlight.hl_gi.btn_ns, 36); ++b)
          all.push_back(button_of(highlight.btnit[b], highlight.btn_colit));
        return all;
      }
      sector += packet->dsi.dsi_gi.vobu_ea + 1;
    }
  }
  return {};
}

/// The picture of the menu's buttons: the first unit of its first subpicture.
std::optional<overlay> overlay_of(const streams_of& streams, const pgc_t& pgc) {
  constexpr std::size_t largest_unit = 65536;
  for (int i = 0; pgc.cell_playback != nullptr && i < pgc.nr_of_cells; ++i) {
    const cell_playback_t& cell = pgc.cell_playback[i];
    const auto picture = decode_subpicture(
        streams.private_bytes(0x20, cell.first_sector, cell.last_sector, largest_unit));
    if (!picture)
      continue;
    overlay shown;
    shown.picture = *picture;
    // One by one: a reference to the whole array, which is packed, would be one to a copy of it.
    for (std::size_t colour = 0; colour < shown.palette.size(); ++colour)
      shown.palette[colour] = pgc.palette[colour];
    return shown;
  }
  return std::nullopt;
}

std::vector<std::string> sounds_of(const streams_of& streams, const pgc_t& pgc) {
  std::vector<std::string> sounds;
  if (pgc.cell_playback == nullptr || pgc.nr_of_cells == 0)
    return sounds;
  const cell_playback_t& cell = pgc.cell_playback[0];
  for (const auto& [id, stream] :
       streams.starts(cell.first_sector, static_cast<int>(cell.last_sector - cell.first_sector))) {
    if (id >= 0xc0 && id < 0xe0)
      sounds.emplace_back("mp2");
    else if (id >= 0xbd80 && id < 0xbd88)
      sounds.emplace_back("ac3");
  }
  return sounds;
}

std::string entry_of(std::uint8_t id) {
  static const char* const names[] = {"",           "",      "title", "root",
                                      "subpicture", "audio", "angle", "chapter"};
  if ((id & 0x80) == 0)
    return "";
  return (id & 15) < 8 ? names[id & 15] : "unknown";
}

void read_menus(dvd_reader_t* disc, const ifo_handle_t& info, int titleset, contents& on_disc) {
  if (info.pgci_ut == nullptr)
    return;
  const streams_of streams(disc, titleset, DVD_READ_MENU_VOBS);
  for (int l = 0; l < info.pgci_ut->nr_of_lus; ++l) {
    const pgci_lu_t& unit = info.pgci_ut->lu[l];
    for (int i = 0; unit.pgcit != nullptr && i < unit.pgcit->nr_of_pgci_srp; ++i) {
      const pgci_srp_t& entry = unit.pgcit->pgci_srp[i];
      if (entry.pgc == nullptr)
        continue;
      menu m;
      m.titleset = titleset;
      m.number = i + 1;
      m.language = language(unit.lang_code);
      m.entry = entry_of(entry.entry_id);
      m.chain = chain_of(&streams, *entry.pgc);
      m.buttons = buttons_of(streams, *entry.pgc);
      m.sounds = sounds_of(streams, *entry.pgc);
      m.shown = overlay_of(streams, *entry.pgc);
      on_disc.menus.push_back(std::move(m));
    }
  }
}

void list_titles(const tt_srpt_t& table, contents& on_disc) {
  for (int i = 0; i < table.nr_of_srpts; ++i) {
    title t;
    t.number = i + 1;
    t.titleset = table.title[i].title_set_nr;
    t.number_in_titleset = table.title[i].vts_ttn;
    on_disc.titles.push_back(std::move(t));
  }
}

}  // namespace

dot overlay::at(int x, int y, const button* lit, button_state state) const {
  const int code = picture.code_at(x, y);
  if (code < 0)
    return {};
  const bool within =
      lit != nullptr && x >= lit->x0 && x <= lit->x1 && y >= lit->y0 && y <= lit->y1;
  const code_looks& looks = !within                              ? picture.at_rest
                            : state == button_state::highlighted ? lit->highlighted
                                                                 : lit->pressed;
  const auto index = static_cast<std::size_t>(code);
  dot shown = colour_of(palette[static_cast<std::size_t>(looks.colour[index])]);
  shown.opacity = looks.opacity[index];
  return shown;
}

result<contents> read_disc(const std::string& native_path) {
  const dvd_logger_cb log{say_nothing};
  const disc_handle disc(DVDOpen2(nullptr, &log, native_path.c_str()));
  if (!disc)
    return result<contents>::fail("no disc at " + native_path);
  const tables manager(ifoOpen(disc.get(), 0));
  if (!manager || manager->vmgi_mat == nullptr || manager->tt_srpt == nullptr)
    return result<contents>::fail("no video manager on the disc at " + native_path);

  contents on_disc;
  on_disc.titlesets = manager->vmgi_mat->vmg_nr_of_title_sets;
  on_disc.forbidden_regions = static_cast<int>(manager->vmgi_mat->vmg_category >> 16 & 0xff);
  if (manager->first_play_pgc != nullptr)
    on_disc.first_play = chain_of(nullptr, *manager->first_play_pgc);
  list_titles(*manager->tt_srpt, on_disc);
  read_menus(disc.get(), *manager, 0, on_disc);
  for (int n = 1; n <= on_disc.titlesets; ++n) {
    const tables titleset(ifoOpen(disc.get(), n));
    if (!titleset || !read_titles(disc.get(), *titleset, n, on_disc))
      return result<contents>::fail("titleset " + std::to_string(n) + " cannot be read");
    read_menus(disc.get(), *titleset, n, on_disc);
  }
  return result<contents>::ok(std::move(on_disc));
}

}  // namespace corvane::disc
