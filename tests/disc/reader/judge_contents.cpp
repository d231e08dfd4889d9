#include "disc.h"
#include "examine/read_disc.h"
#include "formats/disc_image.h"
#include "judgement.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace corvane::disc {

namespace {

void judge_times(judgement& j, const std::string& what, const std::vector<double>& ours,
                 const std::vector<double>& theirs) {
  if (!j.same(what, ours.size(), theirs.size()))
    return;
  for (std::size_t i = 0; i < ours.size(); ++i)
    if (std::abs(ours[i] - theirs[i]) > 1e-6)
      j.refuse(what + " " + std::to_string(i) + ": ours " + std::to_string(ours[i]) + ", theirs " +
               std::to_string(theirs[i]));
}

void judge_title(judgement& j, const disc_title_contents& ours, const title& theirs) {
  const std::string what = "title " + std::to_string(ours.number);
  j.same(what + " titleset", ours.titleset, theirs.titleset);
  j.same(what + " number in titleset", ours.number_in_titleset, theirs.number_in_titleset);
  j.same(what + " standard", ours.video.standard(), theirs.picture.standard);
  j.same(what + " aspect", ours.video.aspect(), theirs.picture.aspect);
  judge_times(j, what + " length", {ours.chain.seconds}, {theirs.chain.seconds});
  judge_times(j, what + " chapters", ours.chapters, theirs.chapters);
  judge_times(j, what + " units", ours.chain.units, theirs.units);
  if (j.same(what + " audio", ours.audio.size(), theirs.audio.size()))
    for (std::size_t i = 0; i < ours.audio.size(); ++i) {
      j.same(what + " format", ours.audio[i].attributes.format(), theirs.audio[i].format);
      j.same(what + " language", ours.audio[i].attributes.language, theirs.audio[i].language);
    }
  if (j.same(what + " subpictures", ours.subpictures.size(), theirs.subpictures.size()))
    for (std::size_t i = 0; i < ours.subpictures.size(); ++i)
      j.same(what + " language", ours.subpictures[i].attributes.language,
             theirs.subpictures[i].language);
}

void judge_menu(judgement& j, const disc_menu_contents& ours, const menu& theirs) {
  const std::string what =
      "menu " + std::to_string(theirs.number) + " of titleset " + std::to_string(theirs.titleset);
  j.same(what + " titleset", ours.titleset, theirs.titleset);
  j.same(what + " number", ours.number, theirs.number);
  j.same(what + " language", ours.language, theirs.language);
  judge_times(j, what + " length", {ours.chain.seconds}, {theirs.chain.seconds});
  const std::span<const menu_button> buttons =
      ours.chain.highlight ? ours.chain.highlight->first_group() : std::span<const menu_button>();
  if (!j.same(what + " buttons", buttons.size(), theirs.buttons.size()))
    return;
  for (std::size_t i = 0; i < buttons.size(); ++i) {
    j.same(what + " left edge", buttons[i].x0, theirs.buttons[i].x0);
    j.same(what + " command", buttons[i].command.text(), theirs.buttons[i].command.text());
  }
}

}  // namespace

void judge_contents(judgement& j, const std::string& native_path) {
  auto files = open_disc(native_path);
  const auto theirs = read_disc(native_path);
  if (!files || !theirs)
    return j.refuse("contents: " + files.error + theirs.error);
  const auto ours = corvane::read_disc(**files);
  if (!ours)
    return j.refuse("contents: " + ours.error);
  for (const unit_trouble& trouble : ours->unit_troubles)
    j.refuse("unit at sector " + std::to_string(trouble.sector) + ": " + trouble.what);
  for (const disc_trouble& trouble : ours->troubles)
    j.refuse(trouble.file + ": " + trouble.what);
  if (j.same("titles", ours->titles.size(), theirs->titles.size()))
    for (std::size_t i = 0; i < theirs->titles.size(); ++i)
      judge_title(j, ours->titles[i], theirs->titles[i]);
  if (j.same("menus", ours->menus.size(), theirs->menus.size()))
    for (std::size_t i = 0; i < theirs->menus.size(); ++i)
      judge_menu(j, ours->menus[i], theirs->menus[i]);
  j.same("first play", ours->first_play != nullptr, theirs->first_play.has_value());
}

}  // namespace corvane::disc
