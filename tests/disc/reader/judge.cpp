#include "judge.h"

#include "formats/disc_image.h"
#include "judgement.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <dvdread/dvd_udf.h>
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

class judge : private judgement {
 public:
  judge(const std::string& path, disc_handle theirs, std::unique_ptr<disc_files> ours)
      : path_(path), theirs_(std::move(theirs)), ours_(std::move(ours)) {}

  std::vector<std::string> judged();

 private:
  std::vector<std::uint8_t> tables_of(const std::string& name);

  void addresses(const std::string& what, const vob_addresses& ours, const c_adt_t* cells,
                 const vobu_admap_t* units);
  void manager_head(const video_manager& ours, const vmgi_mat_t& theirs);
  void titles(const video_manager& ours, const tt_srpt_t* theirs);
  void copies(const video_manager& ours, const vts_atrt_t* theirs);
  int manager();
  void titleset_head(const std::string& what, const titleset& ours, const vtsi_mat_t& theirs);
  void chapters(const std::string& what, const titleset& ours, const vts_ptt_srpt_t* theirs);
  void time_maps(const std::string& what, const titleset& ours, const vts_tmapt_t* theirs);
  void one_titleset(int number);
  void packs(const std::string& what, int number, bool menus, const vob_addresses& addresses);
  void image();

  std::string path_;
  disc_handle theirs_;
  std::unique_ptr<disc_files> ours_;
};

std::vector<std::uint8_t> judge::tables_of(const std::string& name) {
  auto file = read_whole(*ours_, "VIDEO_TS/" + name + ".IFO", largest_ifo);
  const auto copy = read_whole(*ours_, "VIDEO_TS/" + name + ".BUP", largest_ifo);
  if (!file || !copy || *file != *copy) {
    refuse(name + " and its copy: " + file.error + " " + copy.error);
    return {};
  }
  return std::move(*file);
}

void judge::addresses(const std::string& what, const vob_addresses& ours, const c_adt_t* cells,
                      const vobu_admap_t* units) {
  const std::size_t cell_count =
      cells == nullptr ? 0 : (cells->last_byte + 1 - C_ADT_SIZE) / sizeof(cell_adr_t);
  same(what + " vobs", ours.vobs, cells == nullptr ? 0 : cells->nr_of_vobs);
  if (same(what + " cells", ours.cells.size(), cell_count))
    for (std::size_t i = 0; i < cell_count; ++i) {
      const cell_adr_t& c = cells->cell_adr_table[i];
      if (ours.cells[i] != cell_address{c.vob_id, c.cell_id, c.start_sector, c.last_sector})
        refuse(what + " cell " + std::to_string(i));
    }
  const std::size_t unit_count =
      units == nullptr ? 0 : (units->last_byte + 1 - VOBU_ADMAP_SIZE) / sizeof(std::uint32_t);
  if (same(what + " units", ours.units.size(), unit_count))
    for (std::size_t i = 0; i < unit_count; ++i)
      same(what + " unit", ours.units[i], units->vobu_start_sectors[i]);
}

void judge::manager_head(const video_manager& ours, const vmgi_mat_t& theirs) {
  same("manager last sector", ours.head.last_sector, theirs.vmg_last_sector);
  same("manager last IFO sector", ours.head.last_ifo_sector, theirs.vmgi_last_sector);
  same("manager version", ours.head.version, theirs.specification_version);
  same("manager category", ours.head.category, theirs.vmg_category);
  same("manager last byte", ours.head.last_byte, theirs.vmgi_last_byte);
  same("manager menus", ours.head.menu_vobs_sector, theirs.vmgm_vobs);
  same("manager volumes", ours.volumes, theirs.vmg_nr_of_volumes);
  same("manager volume", ours.volume, theirs.vmg_this_volume_nr);
  same("manager side", ours.side, theirs.disc_side);
  same("manager titlesets", ours.titlesets, theirs.vmg_nr_of_title_sets);
  same("manager regions", ours.forbidden_regions, theirs.vmg_category >> 16 & 0xff);
  std::string provider(theirs.provider_identifier, sizeof theirs.provider_identifier);
  provider.erase(provider.find_last_not_of(std::string(" \0", 2)) + 1);
  same("manager provider", ours.provider, provider);
  same("manager position", ours.position_code, theirs.vmg_pos_code);
  judge_menu_streams(*this, "manager", ours.menu_streams, theirs.vmgm_video_attr,
                     theirs.nr_of_vmgm_audio_streams, theirs.vmgm_audio_attr,
                     theirs.nr_of_vmgm_subp_streams, theirs.vmgm_subp_attr);
}

void judge::titles(const video_manager& ours, const tt_srpt_t* theirs) {
  if (!same("titles", ours.titles.size(), theirs == nullptr ? 0 : theirs->nr_of_srpts))
    return;
  for (std::size_t i = 0; i < ours.titles.size(); ++i) {
    const std::string name = "title " + std::to_string(i + 1);
    const title_entry& mine = ours.titles[i];
    const title_info_t& title = theirs->title[i];
    same(name + " playback", mine.playback, flags_of(title.pb_ty));
    same(name + " angles", mine.angles, title.nr_of_angles);
    same(name + " chapters", mine.chapters, title.nr_of_ptts);
    same(name + " parental", mine.parental, title.parental_id);
    same(name + " titleset", mine.titleset, title.title_set_nr);
    same(name + " number", mine.number_in_titleset, title.vts_ttn);
    same(name + " sector", mine.titleset_sector, title.title_set_sector);
  }
}

void judge::copies(const video_manager& ours, const vts_atrt_t* theirs) {
  if (!same("copies", ours.titlesets_again.size(), theirs == nullptr ? 0 : theirs->nr_of_vtss))
    return;
  for (std::size_t i = 0; i < ours.titlesets_again.size(); ++i) {
    const std::string name = "copy " + std::to_string(i + 1);
    const titleset_copy& mine = ours.titlesets_again[i];
    const vts_attributes_t& copy = theirs->vts[i];
    same(name + " category", mine.category, copy.vts_cat);
    judge_menu_streams(*this, name + " menus", mine.menus, copy.vtsm_vobs_attr,
                       copy.nr_of_vtsm_audio_streams, copy.vtsm_audio_attr,
                       copy.nr_of_vtsm_subp_streams, copy.vtsm_subp_attr);
    judge_title_streams(*this, name, mine.titles, copy.vtstt_vobs_video_attr,
                        copy.nr_of_vtstt_audio_streams, copy.vtstt_audio_attr,
                        copy.nr_of_vtstt_subp_streams, copy.vtstt_subp_attr);
  }
}

/// Gives the number of titlesets.
int judge::manager() {
  const tables theirs(ifoOpen(theirs_.get(), 0));
  if (!theirs || theirs->vmgi_mat == nullptr) {
    refuse("libdvdread reads no video manager");
    return 0;
  }
  const auto bytes = tables_of("VIDEO_TS");
  const video_manager ours = read_video_manager(bytes);
  look_for_troubles("VIDEO_TS", ours.troubles);
  manager_head(ours, *theirs->vmgi_mat);
  titles(ours, theirs->tt_srpt);
  copies(ours, theirs->vts_atrt);
  judge_chain(*this, "first play", ours.first_play.get(), theirs->first_play_pgc);
  judge_menus(*this, "manager menus", ours.menus, theirs->pgci_ut);
  addresses("manager menus", ours.menu_vobs, theirs->menu_c_adt, theirs->menu_vobu_admap);
  packs("manager menus", 0, true, ours.menu_vobs);
  return theirs->vmgi_mat->vmg_nr_of_title_sets;
}

void judge::titleset_head(const std::string& what, const titleset& ours, const vtsi_mat_t& theirs) {
  same(what + " last sector", ours.head.last_sector, theirs.vts_last_sector);
  same(what + " last IFO sector", ours.head.last_ifo_sector, theirs.vtsi_last_sector);
  same(what + " version", ours.head.version, theirs.specification_version);
  same(what + " category", ours.head.category, theirs.vts_category);
  same(what + " last byte", ours.head.last_byte, theirs.vtsi_last_byte);
  same(what + " menus", ours.head.menu_vobs_sector, theirs.vtsm_vobs);
  same(what + " titles", ours.title_vobs_sector, theirs.vtstt_vobs);
  judge_menu_streams(*this, what + " menus", ours.menu_streams, theirs.vtsm_video_attr,
                     theirs.nr_of_vtsm_audio_streams, theirs.vtsm_audio_attr,
                     theirs.nr_of_vtsm_subp_streams, theirs.vtsm_subp_attr);
  judge_title_streams(*this, what, ours.title_streams, theirs.vts_video_attr,
                      theirs.nr_of_vts_audio_streams, theirs.vts_audio_attr,
                      theirs.nr_of_vts_subp_streams, theirs.vts_subp_attr);
}

void judge::chapters(const std::string& what, const titleset& ours, const vts_ptt_srpt_t* theirs) {
  if (!same(what + " titles", ours.titles.size(), theirs == nullptr ? 0 : theirs->nr_of_srpts))
    return;
  for (std::size_t t = 0; t < ours.titles.size(); ++t) {
    const ttu_t& title = theirs->title[t];
    if (!same(what + " chapters", ours.titles[t].size(), title.nr_of_ptts))
      continue;
    for (std::size_t c = 0; c < ours.titles[t].size(); ++c)
      if (ours.titles[t][c] != chapter_entry{title.ptt[c].pgcn, title.ptt[c].pgn})
        refuse(what + " chapter " + std::to_string(c + 1));
  }
}

void judge::time_maps(const std::string& what, const titleset& ours, const vts_tmapt_t* theirs) {
  if (!same(what + " maps", ours.time_maps.size(), theirs == nullptr ? 0 : theirs->nr_of_tmaps))
    return;
  for (std::size_t m = 0; m < ours.time_maps.size(); ++m) {
    const time_map& mine = ours.time_maps[m];
    const vts_tmap_t& map = theirs->tmap[m];
    same(what + " map step", mine.step, map.tmu);
    if (same(what + " map entries", mine.sectors.size(), map.nr_of_entries))
      for (std::size_t i = 0; i < mine.sectors.size(); ++i)
        same(what + " map entry", mine.sectors[i] | (mine.clock_breaks[i] ? 0x80000000U : 0U),
             map.map_ent[i]);
  }
}

void judge::one_titleset(int number) {
  char name[16];
  std::snprintf(name, sizeof name, "VTS_%02d_0", number);
  const std::string what = name;
  const tables theirs(ifoOpen(theirs_.get(), number));
  if (!theirs || theirs->vtsi_mat == nullptr) {
    refuse("libdvdread does not read " + what);
    return;
  }
  const auto bytes = tables_of(what);
  const titleset ours = read_titleset(bytes);
  look_for_troubles(what, ours.troubles);
  titleset_head(what, ours, *theirs->vtsi_mat);
  chapters(what, ours, theirs->vts_ptt_srpt);
  judge_chains(*this, what, ours.chains, theirs->vts_pgcit, false);
  judge_menus(*this, what + " menus", ours.menus, theirs->pgci_ut);
  time_maps(what, ours, theirs->vts_tmapt);
  addresses(what + " menus", ours.menu_vobs, theirs->menu_c_adt, theirs->menu_vobu_admap);
  addresses(what, ours.title_vobs, theirs->vts_c_adt, theirs->vts_vobu_admap);
  packs(what + " menus", number, true, ours.menu_vobs);
  packs(what, number, false, ours.title_vobs);
}

void judge::packs(const std::string& what, int number, bool menus, const vob_addresses& addresses) {
  if (addresses.units.empty())
    return;
  char name[32];
  // The first part of titles' VOBs: the discs of the tests have no second one.
  std::snprintf(name, sizeof name,
                number == 0 ? "VIDEO_TS/VIDEO_TS.VOB" : "VIDEO_TS/VTS_%02d_%d.VOB", number,
                menus ? 0 : 1);
  const disc_file* const file = ours_->find(name);
  if (file == nullptr) {
    refuse(what + ": there is no " + name);
    return;
  }
  const streams_of streams(theirs_.get(), number, menus ? DVD_READ_MENU_VOBS : DVD_READ_TITLE_VOBS);
  std::vector<std::uint8_t> sector(disc_sector_size);
  for (const std::uint32_t unit : addresses.units) {
    const std::string place = what + " unit at sector " + std::to_string(unit);
    const auto theirs = streams.navigation(unit);
    const bool read = ours_->read(*file, std::uint64_t{unit} * disc_sector_size, sector);
    const auto ours = read_navigation_pack(sector);
    if (!read || !ours || !theirs)
      refuse(place + " is not read");
    else
      judge_pack(*this, place, *ours, *theirs);
  }
}

/// Places of files, by UDF as libdvdread reads it.
void judge::image() {
  const auto source = open_bytes(path_);
  if (!source)
    return;
  const disc_image image = read_disc_image(**source);
  look_for_troubles("ISO 9660", image.iso9660.troubles);
  look_for_troubles("UDF", image.udf.troubles);
  for (const std::string& difference : image.differences)
    refuse(difference);
  for (const disc_file& file : image.udf.files) {
    if (file.path.rfind("VIDEO_TS/", 0) != 0)
      continue;  // its name may have letters that libdvdread does not know
    std::uint32_t size = 0;
    same(file.path + " sector", file.first_sector,
         UDFFindFile(theirs_.get(), ("/" + file.path).c_str(), &size));
    same(file.path + " size", file.size, size);
  }
  char name[64] = "";
  if (UDFGetVolumeIdentifier(theirs_.get(), name, sizeof name) > 0)
    same("name of the volume", image.udf.name, std::string(name));
}

std::vector<std::string> judge::judged() {
  const int titlesets = manager();
  for (int number = 1; number <= titlesets; ++number)
    one_titleset(number);
  image();
  judge_contents(*this, path_);
  return std::move(all);
}

}  // namespace

std::vector<std::string> disagreements(const std::string& native_path) {
  const dvd_logger_cb log{say_nothing};
  disc_handle theirs(DVDOpen2(nullptr, &log, native_path.c_str()));
  auto ours = open_disc(native_path);
  if (!theirs || !ours)
    return {"cannot be read: " + ours.error};
  return judge(native_path, std::move(theirs), std::move(*ours)).judged();
}

std::string disagreement_text(const std::string& native_path) {
  std::string text;
  for (const std::string& line : disagreements(native_path))
    text += line + "\n";
  return text;
}

}  // namespace corvane::disc
