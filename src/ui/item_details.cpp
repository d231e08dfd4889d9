#include "ui/item_details.h"

#include "project/disc_of.h"
#include "project/edited_xml.h"
#include "ui/details_panel.h"

#include <utility>

namespace corvane {
namespace {

using whole = finding_item::whole_kind;

item_summary nothing_added() {
  return {"no titles yet",
          {{"", "Add a title: click \"add title\", or drop video and sound files on this window."},
           {"", "What the selected title or menu holds is shown here."}},
          ""};
}

item_summary nothing_selected() {
  return {"nothing is selected", {{"", "Select a title or a menu to see what it holds."}}, ""};
}

}  // namespace

item_details::item_details(fact_store& facts, std::function<details_panel*()> panel)
    : facts_(facts), panel_(std::move(panel)), pictures_([this] { tell(); }) {}

void item_details::show(const project& p, const finding_item& item) {
  disc_ = disc_of(p);
  hand_edited_ = !edited_xml(p).empty();
  item_ = item;
  look_.emplace(disc_, item_, facts_, counts_);
  pictures_.look_again();
  tell();
}

bool item_details::work() {
  if (panel_() == nullptr || !look_ || look_->is_done())
    return false;
  look_->step();
  tell();
  return !look_->is_done();
}

item_summary item_details::summary() const {
  if (item_.whole == whole::title && item_.number >= 1 && item_.number <= disc_.title_count())
    return title_summary(disc_, item_.number, look_->known(), hand_edited_);
  if (item_.whole == whole::menu && item_.number >= 1 && item_.number <= disc_.menu_count())
    return menu_summary(disc_, item_.number, look_->known(), hand_edited_);
  return disc_.titles.empty() && disc_.menus.empty() ? nothing_added() : nothing_selected();
}

void item_details::tell() {
  details_panel* const panel = panel_();
  if (panel == nullptr || !look_)
    return;
  const item_summary told = summary();
  panel->show(told);
  const bool has_video = !told.video.empty() && !look_->known().missing.contains(told.video);
  const first_picture* const known = has_video ? pictures_.find(told.video) : nullptr;
  pictures_.want(has_video && known == nullptr ? told.video : std::string());
  if (known != nullptr || !has_video)
    panel->show_picture(known != nullptr ? *known : first_picture());
  else
    panel->await_picture();
}

}  // namespace corvane
