#include "judgement.h"

namespace corvane::disc {

namespace {

void judge_commands(judgement& j, const std::string& what, const std::vector<vm_command>& ours,
                    const vm_cmd_t* theirs, int count) {
  if (!j.same(what, ours.size(), count))
    return;
  for (std::size_t i = 0; i < ours.size(); ++i)
    j.same(what + " " + std::to_string(i), hex(ours[i].bytes), hex(command_of(theirs[i]).bytes));
}

void judge_cell(judgement& j, const std::string& what, const cell_playback& ours,
                const cell_playback_t& theirs, const cell_position_t& place) {
  j.same(what + " block mode", ours.block_mode, theirs.block_mode);
  j.same(what + " block type", ours.block_type, theirs.block_type);
  j.same(what + " seamless", ours.seamless, theirs.seamless_play);
  j.same(what + " interleaved", ours.interleaved, theirs.interleaved);
  j.same(what + " clock", ours.clock_restarts, theirs.stc_discontinuity);
  j.same(what + " seamless angle", ours.seamless_angle, theirs.seamless_angle);
  j.same(what + " still units", ours.still_after_each_unit, theirs.playback_mode);
  j.same(what + " restricted", ours.restricted, theirs.restricted);
  j.same(what + " kind", ours.kind, theirs.cell_type);
  j.same(what + " still", ours.still_seconds, theirs.still_time);
  j.same(what + " command", ours.command, theirs.cell_cmd_nr);
  if (ours.time != time_of(theirs.playback_time))
    j.refuse(what + " time");
  j.same(what + " first sector", ours.first_sector, theirs.first_sector);
  j.same(what + " interleaved end", ours.first_interleaved_end, theirs.first_ilvu_end_sector);
  j.same(what + " last unit", ours.last_unit_sector, theirs.last_vobu_start_sector);
  j.same(what + " last sector", ours.last_sector, theirs.last_sector);
  j.same(what + " vob", ours.vob, place.vob_id_nr);
  j.same(what + " cell", ours.cell, place.cell_nr);
}

}  // namespace

playback_time time_of(const dvd_time_t& theirs) {
  return read_playback_time(std::uint32_t{theirs.hour} << 24 | std::uint32_t{theirs.minute} << 16 |
                            std::uint32_t{theirs.second} << 8 | theirs.frame_u);
}

vm_command command_of(const vm_cmd_t& theirs) {
  vm_command command;
  std::memcpy(command.bytes.data(), theirs.bytes, command.bytes.size());
  return command;
}

void judge_chain(judgement& j, const std::string& what, const program_chain* ours,
                 const pgc_t* theirs) {
  if (!j.same(what + " is there", ours != nullptr, theirs != nullptr) || ours == nullptr)
    return;
  if (ours->time != time_of(theirs->playback_time))
    j.refuse(what + " time");
  j.same(what + " prohibited", ours->prohibited, flags_of(theirs->prohibited_ops));
  for (std::size_t i = 0; i < ours->audio.size(); ++i)
    j.same(what + " audio control", ours->audio[i].present ? 0x80 + ours->audio[i].stream : 0,
           (theirs->audio_control[i] & 0x8000) != 0 ? theirs->audio_control[i] >> 8 : 0);
  for (std::size_t i = 0; i < ours->subpictures.size(); ++i) {
    const subpicture_control& s = ours->subpictures[i];
    const std::uint32_t word =
        (s.present ? 0x80000000U : 0U) |
        static_cast<std::uint32_t>(s.standard << 24 | s.wide << 16 | s.letterbox << 8 | s.pan_scan);
    j.same(what + " subpicture control", word, theirs->subp_control[i]);
  }
  j.same(what + " next", ours->next, theirs->next_pgc_nr);
  j.same(what + " previous", ours->previous, theirs->prev_pgc_nr);
  j.same(what + " up", ours->up, theirs->goup_pgc_nr);
  j.same(what + " mode", ours->playback_mode, theirs->pg_playback_mode);
  j.same(what + " still", ours->still_seconds, theirs->still_time);
  for (std::size_t i = 0; i < ours->palette.size(); ++i)
    j.same(what + " palette", ours->palette[i], theirs->palette[i]);
  const pgc_command_tbl_t none{};
  const pgc_command_tbl_t& t = theirs->command_tbl != nullptr ? *theirs->command_tbl : none;
  judge_commands(j, what + " pre", ours->pre, t.pre_cmds, t.nr_of_pre);
  judge_commands(j, what + " post", ours->post, t.post_cmds, t.nr_of_post);
  judge_commands(j, what + " cell commands", ours->cell_commands, t.cell_cmds, t.nr_of_cell);
  if (j.same(what + " programs", ours->programs.size(), theirs->nr_of_programs))
    for (std::size_t i = 0; i < ours->programs.size(); ++i)
      j.same(what + " program", ours->programs[i], theirs->program_map[i]);
  if (j.same(what + " cells", ours->cells.size(), theirs->nr_of_cells))
    for (std::size_t i = 0; i < ours->cells.size(); ++i)
      judge_cell(j, what + " cell " + std::to_string(i), ours->cells[i], theirs->cell_playback[i],
                 theirs->cell_position[i]);
}

void judge_chains(judgement& j, const std::string& what, const std::vector<chain_entry>& ours,
                  const pgcit_t* theirs, bool menus) {
  if (!j.same(what + " chains", ours.size(), theirs == nullptr ? 0 : theirs->nr_of_pgci_srp))
    return;
  for (std::size_t i = 0; i < ours.size(); ++i) {
    const std::string name = what + " chain " + std::to_string(i + 1);
    const pgci_srp_t& entry = theirs->pgci_srp[i];
    j.same(name + " id",
           (ours[i].entry ? 0x80 : 0) + (menus ? static_cast<int>(ours[i].menu) : ours[i].title),
           entry.entry_id);
    j.same(name + " block mode", ours[i].block_mode, entry.block_mode);
    j.same(name + " block type", ours[i].block_type, entry.block_type);
    j.same(name + " parental", ours[i].parental, entry.ptl_id_mask);
    judge_chain(j, name, ours[i].chain.get(), entry.pgc);
  }
}

void judge_menus(judgement& j, const std::string& what, const std::vector<menu_language>& ours,
                 const pgci_ut_t* theirs) {
  if (!j.same(what + " languages", ours.size(), theirs == nullptr ? 0 : theirs->nr_of_lus))
    return;
  for (std::size_t i = 0; i < ours.size(); ++i) {
    const pgci_lu_t& unit = theirs->lu[i];
    j.same(what + " language", ours[i].language, language_of(unit.lang_code));
    j.same(what + " language extension", ours[i].language_extension, unit.lang_extension);
    j.same(what + " kinds", ours[i].kinds, unit.exists);
    judge_chains(j, what + " " + ours[i].language, ours[i].chains, unit.pgcit, true);
  }
}

}  // namespace corvane::disc
