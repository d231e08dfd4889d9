#include "ui/map/project_map.h"

#include "authoring/asked_disc.h"
#include "authoring/checks.h"
#include "authoring/map_cards.h"
#include "authoring/map_svg.h"
#include "authoring/navigation_xml.h"
#include "examine/navigation_map.h"
#include "formats/numbers.h"
#include "formats/sanitized.h"
#include "platform/files/files.h"
#include "project/edited_xml.h"
#include "project/messages.h"
#include "ui/editor/menu_windows.h"
#include "ui/main_window.h"
#include "ui/video/chapter_window.h"

#include <wx/app.h>
#include <wx/utils.h>

#include <algorithm>
#include <utility>

namespace corvane {
namespace {

using map_kind = map_place::kind;

/// Of a picture, for a screen of twice the resolution.
constexpr int thumbnail_height = 2 * static_cast<int>(map_measures::picture_height);

/// "24:10 min, 1.2 GB", "about 24 s, 8.6 MB", and not what is said where it is not known.
bool is_length(const std::string& text) {
  return !text.empty() && (is_digit(text.front()) || text.starts_with("about "));
}

std::string target_name(const lead_target& to) {
  return name_of(to.place) + (to.chapter > 1 ? ", chapter " + trimmed(to.chapter) : std::string());
}

lead_source source_of(const map_place& place, int exit) {
  return {place, place.what == map_kind::menu ? exit : 0};
}

std::string words_of_source(const lead_source& from) {
  if (from.button > 0)
    return "button " + trimmed(from.button) + " of " + name_of(from.place);
  return from.place.what == map_kind::title ? "the end of " + name_of(from.place)
                                            : "the beginning of the disc";
}

/// In the proportions that it is shown in.
wxImage small_picture(const first_picture& picture) {
  if (!picture.image.IsOk())
    return {};
  const int width = thumbnail_height * picture.proportions.x / picture.proportions.y;
  return picture.image.Scale(width, thumbnail_height, wxIMAGE_QUALITY_BOX_AVERAGE);
}

}  // namespace

project_map::project_map(main_window& main, fact_store& facts)
    : main_(main), facts_(facts), pictures_([this] {
        gather_pictures();
        fill_window();
      }) {}

// A child of the main window; it must not outlive this.
project_map::~project_map() {
  if (window_ != nullptr)
    delete window_.get();
}

void project_map::show() {
  if (main_.raise_editor())
    return;
  const bool opens = window_ == nullptr;
  if (opens) {
    map_window::handlers on;
    on.open = [this](const map_place& place, int exit) { open(place, exit); };
    on.items = [this](const map_place& place, int exit) { return items_of(place, exit); };
    on.lead = [this](const map_place& from, int exit, const map_place& to) {
      drag_lead(from, exit, to);
    };
    on.save_svg = [this] { save_svg(); };
    on.save_png = [this] { save_png(); };
    on.closed = [this] {
      pictures_.want({});
      window_ = nullptr;  // it is deleted later
    };
    window_ = new map_window(&main_, std::move(on));
    window_->let_commands(main_.may_command());
  }
  make_map();
  if (opens)
    window_->grow_to_map();
  window_->Show();
  window_->come_back();
  wxWakeUpIdle();
}

// The map -----------------------------------------------------------------------------------------

bool project_map::work() {
  if (window_ == nullptr)
    return false;
  if (looks_)
    make_map();
  return gather_lengths();
}

void project_map::make_map() {
  looks_ = false;
  const project& p = main_.shown_project();
  hand_edited_ = !edited_xml(p).empty();
  const std::string output = output_folder(folder_of_custom_xml(edited_xml(p)));
  const result<disc_description> disc = asked_disc(p, {main_.app(), output});
  trouble_ = disc ? "" : "The hand-edited XML cannot be read: " + sanitized(disc.error) + ".";
  disc_ = disc ? *disc : disc_description();
  disc_map map = disc ? map_of(disc_, hand_edited_) : disc_map();
  if (map != map_ || layout_.boxes.size() != map.nodes.size()) {
    map_ = std::move(map);
    layout_ = lay_out(map_);
  }
  lengths_.clear();
  unmeasured_.clear();
  measuring_.reset();
  for (const map_node& node : map_.nodes)
    if (node.place.what == map_kind::title || node.place.what == map_kind::menu)
      unmeasured_.push_back(node.place);
  pictures_.look_again();
  take_known_lengths();
  gather_pictures();
  fill_window();
}

summary_look& project_map::measuring() {
  const map_place place = unmeasured_.front();
  if (!measuring_)
    measuring_.emplace(disc_,
                       finding_item{place.what == map_kind::title ? finding_item::whole_kind::title
                                                                  : finding_item::whole_kind::menu,
                                    place.number, finding_item::part_kind::whole, 0},
                       facts_, counts_);
  return *measuring_;
}

void project_map::take_known_lengths() {
  while (!unmeasured_.empty() && measuring().is_done())
    take_length();
}

/// One file's beginning at most; true when there is more to do.
bool project_map::gather_lengths() {
  if (unmeasured_.empty())
    return false;
  if (!measuring().is_done())
    measuring().step();
  take_known_lengths();
  if (unmeasured_.empty())
    fill_window();
  return !unmeasured_.empty();
}

void project_map::take_length() {
  const map_place place = unmeasured_.front();
  const bool is_title = place.what == map_kind::title;
  const item_summary summary =
      is_title ? title_summary(disc_, place.number, measuring_->known(), hand_edited_)
               : menu_summary(disc_, place.number, measuring_->known(), hand_edited_);
  for (const summary_line& line : summary.lines)
    if (line.name == "length" && is_length(line.text))
      lengths_[place] = line.text.substr(0, line.text.find(", "));
  measuring_.reset();
  unmeasured_.pop_front();
}

/// Takes what has come, and wishes for the next one.
void project_map::gather_pictures() {
  if (window_ == nullptr)
    return;
  std::string wanted;
  for (const map_card& card : cards_of(disc_, map_, {})) {
    if (card.video.empty() || !file_exists(card.video))
      continue;
    const auto known = thumbnails_.find(card.video);
    if (known != thumbnails_.end() && known->second.stamp == stamp_of(card.video))
      continue;
    if (const first_picture* const came = pictures_.find(card.video))
      thumbnails_[card.video] = {stamp_of(card.video), small_picture(*came)};
    else if (wanted.empty())
      wanted = card.video;
  }
  pictures_.want(wanted);
}

drawn_map project_map::drawn() const {
  drawn_map drawn{map_, cards_of(disc_, map_, lengths_), layout_, {}};
  for (const map_card& card : drawn.cards)
    if (const auto known = thumbnails_.find(card.video);
        known != thumbnails_.end() && known->second.image.IsOk())
      drawn.pictures[card.place] = known->second.image;
  return drawn;
}

void project_map::fill_window() {
  if (window_ != nullptr)
    window_->show_map(drawn(), trouble_);
}

void project_map::let_commands(bool enabled) {
  if (window_ != nullptr)
    window_->let_commands(enabled);
}

// After the editor has given the keyboard to the main window.
void project_map::come_back() {
  if (std::exchange(comes_back_, false) && window_ != nullptr)
    window_->CallAfter([this] {
      if (window_ != nullptr)
        window_->come_back();
    });
}

// What is done here -------------------------------------------------------------------------------

bool project_map::may_change() {
  return !main_.raise_editor() && main_.may_command();
}

void project_map::open(const map_place& place, int exit) {
  if (!may_change())
    return;
  if (place.what == map_kind::menu)
    edit_menu_at(main_, place.number, exit);
  else if (place.what == map_kind::title)
    edit_navcommands_at(main_, place.number);
  else if (place.what == map_kind::first_play)
    edit_navcommands_at(main_, 0);
  comes_back_ = main_.has_editor();
}

std::vector<map_window::item> project_map::items_of(const map_place& place, int exit) {
  std::vector<map_window::item> items;
  if (place.what == map_kind::disc_menu)
    return {{"a menu of hand-edited XML", [] {}}};
  items.push_back({place.what == map_kind::menu ? "edit the menu..." : "navigation commands...",
                   [this, place, exit] { open(place, exit); }});
  if (place.what == map_kind::title) {
    items.push_back({"chapters...", [this, place] {
                       if (!may_change())
                         return;
                       main_.select_title(place.number - 1);
                       edit_chapters(main_);
                       comes_back_ = main_.has_editor();
                     }});
    items.push_back({"show in the main window", [this, place] {
                       if (may_change())
                         main_.select_title(place.number - 1);
                     }});
  }
  add_leads(items, place, exit);
  return items;
}

/// Of a menu's buttons the one that was pointed at, or all.
void project_map::add_leads(std::vector<map_window::item>& items, const map_place& place,
                            int exit) {
  items.push_back({"", {}});
  const auto add = [&](const std::string& caption, int button) {
    items.push_back({caption, [this, place, button] { choose_lead({place, button}); }});
  };
  if (place.what == map_kind::title)
    return add("lead elsewhere after its end...", 0);
  if (place.what == map_kind::first_play)
    return add("begin elsewhere...", 0);
  for (const map_node& node : map_.nodes)
    for (int button = 1; node.place == place && button <= node.exits; ++button)
      if (exit == 0 || exit == button)
        add("lead button " + trimmed(button) + " elsewhere...", button);
}

void project_map::lead(const std::function<void(document&)>& command) {
  if (!may_change())
    return;
  main_.run("change where it leads", command);
  if (window_ != nullptr)
    window_->come_back();
}

/// To a title of several chapters: which of them is asked.
void project_map::drag_lead(const map_place& from, int exit, const map_place& to) {
  lead([&](document& doc) {
    const lead_source source = source_of(from, exit);
    std::vector<lead_target> targets = targets_from(disc_, source);
    std::erase_if(targets, [&to](const lead_target& target) { return target.place != to; });
    std::vector<std::string> names;
    names.reserve(targets.size());
    for (const lead_target& target : targets)
      names.push_back(target.chapter > 1 ? "chapter " + trimmed(target.chapter) : "its beginning");
    if (targets.size() < 2 || hand_edited_) {
      lead_command(doc, source, {to, 0});
      return;
    }
    const int picked = window_->pick("Where in " + name_of(to) + "?", names, 0);
    if (picked >= 0)
      lead_command(doc, source, targets[static_cast<std::size_t>(picked)]);
  });
}

void project_map::choose_lead(const lead_source& from) {
  lead([&](document& doc) {
    const std::vector<lead_target> targets = targets_from(disc_, from);
    if (targets.empty() || hand_edited_) {
      lead_command(doc, from, {from.place, 0});
      return;
    }
    std::vector<std::string> names;
    names.reserve(targets.size());
    for (const lead_target& target : targets)
      names.push_back(target_name(target));
    const int picked = window_->pick("Where should " + words_of_source(from) + " lead?", names,
                                     led_to_now(from, targets));
    if (picked >= 0)
      lead_command(doc, from, targets[static_cast<std::size_t>(picked)]);
  });
}

/// The one of the targets that it leads to now, 0-based; the first one if it leads elsewhere.
int project_map::led_to_now(const lead_source& from,
                            const std::vector<lead_target>& targets) const {
  for (const map_arrow& arrow : map_.arrows)
    for (std::size_t i = 0; i < targets.size(); ++i)
      if (arrow.from == from.place && arrow.button == from.button && arrow.to == targets[i].place &&
          arrow.end == map_arrow::end_kind::place &&
          std::max(1, arrow.chapter) == std::max(1, targets[i].chapter))
        return static_cast<int>(i);
  return 0;
}

// Pictures ----------------------------------------------------------------------------------------

void project_map::save(const char* title, const char* filter, const char* name,
                       const std::function<result<std::string>()>& picture) {
  main_.run("save the map", [&](document& doc) {
    const std::string file = doc.ask.save_file({title, filter, name});
    if (file.empty() || (file_exists(file) && !may_overwrite(doc)))
      return;
    const wxBusyCursor busy;
    const result<std::string> bytes = picture();
    const failure why = bytes ? write_file(file, *bytes) : failure(bytes.error);
    if (why)
      say(doc, icon::critical,
          "The file \"" + sanitized(file) + "\" could not be written: " + sanitized(*why) + ".");
  });
}

void project_map::save_svg() {
  save("save the map of the disc", "SVG picture(*.svg)|*.svg", "disc-map.svg", [this] {
    const drawn_map map = drawn();
    return result<std::string>::ok(svg_of(map.map, map.cards, map.layout, png_pictures(map)));
  });
}

void project_map::save_png() {
  save("save the map of the disc", "PNG picture(*.png)|*.png", "disc-map.png",
       [this] { return png_of(drawn()); });
}

}  // namespace corvane
