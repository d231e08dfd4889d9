#include "judgement.h"

#include <algorithm>
#include <dvdread/nav_types.h>

namespace corvane::disc {

namespace {

void judge_button(judgement& j, const std::string& what, const menu_button& ours,
                  const btni_t& theirs) {
  j.same(what + " colours", ours.colours, theirs.btn_coln);
  j.same(what + " left edge", ours.x0, theirs.x_start);
  j.same(what + " right edge", ours.x1, theirs.x_end);
  j.same(what + " upper edge", ours.y0, theirs.y_start);
  j.same(what + " lower edge", ours.y1, theirs.y_end);
  j.same(what + " automatic", ours.automatic, theirs.auto_action_mode != 0);
  j.same(what + " up", ours.up, theirs.up);
  j.same(what + " down", ours.down, theirs.down);
  j.same(what + " left", ours.left, theirs.left);
  j.same(what + " right", ours.right, theirs.right);
  j.same(what + " command", hex(ours.command.bytes), hex(command_of(theirs.cmd).bytes));
}

void judge_highlight(judgement& j, const std::string& what, const highlight_information& ours,
                     const hli_t& theirs) {
  const hl_gi_t& general = theirs.hl_gi;
  if (!j.same(what + " status", ours.status, general.hli_ss & 3) || ours.status == 0)
    return;
  j.same(what + " begins", ours.begins, general.hli_s_ptm);
  j.same(what + " ends", ours.ends, general.hli_e_ptm);
  j.same(what + " selection ends", ours.selection_ends, general.btn_se_e_ptm);
  j.same(what + " groups", ours.groups, general.btngr_ns);
  j.same(what + " display 1", ours.group_displays[0], general.btngr1_dsp_ty);
  j.same(what + " display 2", ours.group_displays[1], general.btngr2_dsp_ty);
  j.same(what + " display 3", ours.group_displays[2], general.btngr3_dsp_ty);
  j.same(what + " first number", ours.first_number, general.btn_ofn);
  j.same(what + " buttons", ours.buttons_stated, general.btn_ns & 63);
  j.same(what + " by number", ours.by_number, general.nsl_btn_ns & 63);
  j.same(what + " selection", ours.forced_selection, general.fosl_btnn & 63);
  j.same(what + " action", ours.forced_action, general.foac_btnn & 63);
  for (std::size_t row = 0; row < 3; ++row)
    for (std::size_t state = 0; state < 2; ++state)
      j.same(what + " colours", ours.colours[row][state], theirs.btn_colit.btn_coli[row][state]);
  const std::size_t groups = std::max<std::size_t>(general.btngr_ns, 1),
                    stated = general.btn_ns & 63;
  if (!j.same(what + " all buttons", ours.buttons.size(), groups * stated))
    return;
  for (std::size_t i = 0; i < ours.buttons.size(); ++i)
    judge_button(j, what + " button " + std::to_string(i + 1), ours.buttons[i],
                 theirs.btnit[i / stated * (36 / groups) + i % stated]);
}

}  // namespace

void judge_pack(judgement& j, const std::string& what, const navigation_pack& ours,
                const navigation_packet& theirs) {
  j.look_for_troubles(what, ours.troubles);
  const pci_gi_t& control = theirs.pci.pci_gi;
  j.same(what + " sector", ours.sector, control.nv_pck_lbn);
  j.same(what + " category", ours.category, control.vobu_cat);
  j.same(what + " prohibited", ours.prohibited, flags_of(control.vobu_uop_ctl));
  j.same(what + " begins", ours.begins, control.vobu_s_ptm);
  j.same(what + " ends", ours.ends, control.vobu_e_ptm);
  j.same(what + " sequence ends", ours.sequence_ends, control.vobu_se_e_ptm);
  if (ours.elapsed != time_of(control.e_eltm))
    j.refuse(what + " elapsed");
  judge_highlight(j, what, ours.highlight, theirs.pci.hli);
  const dsi_gi_t& search = theirs.dsi.dsi_gi;
  j.same(what + " clock", ours.search_clock, search.nv_pck_scr);
  j.same(what + " pack's clock", ours.clock / 300, search.nv_pck_scr);
  j.same(what + " search sector", ours.search_sector, search.nv_pck_lbn);
  j.same(what + " end", ours.unit_end, search.vobu_ea);
  j.same(what + " reference 1", ours.reference_ends[0], search.vobu_1stref_ea);
  j.same(what + " reference 2", ours.reference_ends[1], search.vobu_2ndref_ea);
  j.same(what + " reference 3", ours.reference_ends[2], search.vobu_3rdref_ea);
  j.same(what + " vob", ours.vob, search.vobu_vob_idn);
  j.same(what + " cell", ours.cell, search.vobu_c_idn);
  if (ours.search_elapsed != time_of(search.c_eltm))
    j.refuse(what + " search elapsed");
  j.same(what + " VOB begins", ours.vob_video_begins, theirs.dsi.sml_pbi.vob_v_s_s_ptm);
  j.same(what + " VOB ends", ours.vob_video_ends, theirs.dsi.sml_pbi.vob_v_e_e_ptm);
  const vobu_sri_t& steps = theirs.dsi.vobu_sri;
  const auto step = [&](const char* name, const unit_search& mine, std::uint32_t word) {
    const std::uint32_t distance = word & SRI_END_OF_CELL;
    j.same(what + name, mine.there, distance != SRI_END_OF_CELL);
    j.same(what + name, mine.distance, distance == SRI_END_OF_CELL ? 0 : distance);
  };
  step(" next", ours.next, steps.next_vobu);
  step(" previous", ours.previous, steps.prev_vobu);
  step(" next video", ours.next_video, steps.next_video);
  step(" previous video", ours.previous_video, steps.prev_video);
  for (std::size_t i = 0; i < ours.forward.size(); ++i) {
    j.same(what + " forward", ours.forward[i], steps.fwda[i]);
    j.same(what + " backward", ours.backward[i], steps.bwda[i]);
  }
  for (std::size_t i = 0; i < ours.audio.size(); ++i)
    j.same(what + " audio", ours.audio[i], theirs.dsi.synci.a_synca[i]);
  for (std::size_t i = 0; i < ours.subpictures.size(); ++i)
    j.same(what + " subpicture", ours.subpictures[i], theirs.dsi.synci.sp_synca[i]);
}

}  // namespace corvane::disc
