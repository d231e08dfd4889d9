#include "authoring/menus_draft.h"

#include "examine/menu_facts.h"
#include "formats/numbers.h"
#include "formats/sanitized.h"
#include "menus/maker/design_writer.h"
#include "platform/files/paths.h"
#include "project/disc_of.h"
#include "project/menu_rows.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

namespace corvane {
namespace {

// What is remembered beside the menus of a film behind them.
constexpr const char* film_file = "film";
constexpr const char* film_begin = "film begins at";
constexpr const char* film_length = "film lasts";
constexpr const char* film_sound = "film with sound";
constexpr double hundred = 100;

bool is_inside(const page_box& box, const page_box& around) {
  return box.left >= around.left && box.right() <= around.right() && box.top >= around.top &&
         box.bottom() <= around.bottom();
}
bool has_point(const page_box& box, int x, int y) {
  return x >= box.left && x < box.right() && y >= box.top && y < box.bottom();
}

std::string counted(int count, const std::string& what) {
  return trimmed(count) + " " + what + (count == 1 ? "" : "s");
}

std::map<std::string, std::string> remembered_film(const menu_motion& film) {
  return {{film_file, film.film},
          {film_begin, trimmed(std::llround(film.begin * hundred))},
          {film_length, trimmed(std::llround(film.length * hundred))},
          {film_sound, film.with_sound ? "1" : "0"}};
}

menu_motion film_of(const std::map<std::string, std::string>& also) {
  const auto value = [&](const char* name) {
    const auto found = also.find(name);
    return found == also.end() ? std::string() : found->second;
  };
  menu_motion film;
  film.film = value(film_file);
  if (film.film.empty())
    return film;
  film.begin = leading_whole(value(film_begin)) / hundred;
  film.length = std::clamp(leading_whole(value(film_length)) / hundred, 1.0, longest_menu_motion);
  film.with_sound = value(film_sound) != "0";
  return film;
}

}  // namespace

menus_draft::menus_draft(const project& p, std::vector<found_design> designs,
                         const making_wishes& preset, text_measure measure,
                         std::function<bool(const std::string&)> is_taken)
    : p_(p),
      designs_(std::move(designs)),
      measure_(std::move(measure)),
      is_taken_(std::move(is_taken)) {
  std::erase_if(designs_, [](const found_design& d) { return !d.design; });
  take_preset(preset);
  texts_before_ = wishes_.texts;
  plan();
}

void menus_draft::take_preset(const making_wishes& preset) {
  wishes_ = preset.menus;
  const remembered_menus before = menus_made_before(p_);
  const std::string id = before.design.empty() ? wishes_.design_id : before.design;
  const auto found = std::ranges::find(designs_, id, &found_design::id);
  design_ = found == designs_.end() ? 0 : static_cast<std::size_t>(found - designs_.begin());
  look_ = *designs_[design_].design;
  film_ = preset.motion.value_or(film_of(before.also));
  if (const auto used = read_design(before.look); !before.made.empty() && used) {
    const page_background of_design = look_.background;
    look_ = *used;
    look_.background = of_design;
    if (const auto* const colours = std::get_if<colour_background>(&used->background))
      colours_ = *colours;
    if (const auto* const picture = std::get_if<picture_background>(&used->background))
      picture_ = *picture;
    if (!film_.film.empty())
      background_ = chosen_background::film;
    else if (used->background != of_design)
      background_ = std::holds_alternative<picture_background>(used->background)
                        ? chosen_background::picture
                        : chosen_background::colours;
  }
  if (const auto* const colours = std::get_if<colour_background>(&look_.background);
      colours != nullptr && background_ == chosen_background::of_design)
    colours_ = *colours;
  if (background_ == chosen_background::of_design && !film_.film.empty())
    background_ = chosen_background::film;
}

making_wishes menus_draft::wishes() const {
  making_wishes all;
  all.menus = wishes_;
  all.menus.design_id = designs_[design_].id;
  all.menus.design = look_;
  all.menus.also.clear();
  switch (background_) {
    case chosen_background::colours:
      all.menus.design.background = colours_;
      break;
    case chosen_background::picture:
      all.menus.design.background = picture_;
      break;
    case chosen_background::film:
      all.menus.design.background = video_background{};
      all.menus.loops = true;
      all.menus.also = remembered_film(film_);
      all.motion = film_;
      break;
    case chosen_background::of_design:
      break;
  }
  // The jump table changes only where no menu stays.
  if (erases_menus())
    all.menus.replaces_own = true;
  return all;
}

void menus_draft::change(const std::function<void(menu_wishes&)>& how) {
  how(wishes_);
  plan();
}

void menus_draft::settle_shape() {
  const std::vector<int> own = menus_that_stay(p_, false);
  own_menus_ = static_cast<int>(own.size());
  own_shapes_ = shape_reader_.shapes_of(p_, own);
  if (!may_choose_shape())
    wishes_.is_wide = *own_shapes_.is_wide();
}

std::string menus_draft::trouble_with_choices() const {
  if (wishes_.folder.empty())
    return "Please choose the folder for the backgrounds of the menus.";
  if (background_ == chosen_background::film && film_.film.empty())
    return "Please choose the video that plays behind the menus.";
  if (background_ == chosen_background::picture && picture_.file.empty())
    return "Please choose the picture behind the menus.";
  if (background_ == chosen_background::of_design &&
      std::holds_alternative<video_background>(look_.background))
    return "This design is for a video behind the menus: please choose one as background.";
  if (!may_choose_shape() && own_shapes_.are_mixed())
    return "The menus that stay are 4:3 and 16:9: let them be replaced, or change some of them.";
  return {};
}

void menus_draft::add_notes() {
  if (const failure why = why_not_beside(own_shapes_, wishes_.is_wide); !may_choose_shape() && why)
    made_.notes.push_back(*why);
  else if (!may_choose_shape())
    made_.notes.push_back(std::string("The new menus are ") + (wishes_.is_wide ? "16:9" : "4:3") +
                          ", as those are that stay: all menus of a disc are of the same "
                          "proportions.  To choose others, let yours be replaced.");
  if (wishes_.is_wide && look_.most_entries() > most_wide_buttons - most_ways)
    made_.notes.push_back("A page has " + trimmed(most_wide_buttons - most_ways) +
                          " entries at most: a disc has the buttons of a 16:9 menu three times.");
  if (erases_menus())
    made_.notes.insert(made_.notes.begin(),
                       "The jump table can change only without menus: those that are there are "
                       "erased, and all are made again.");
}

void menus_draft::plan() {
  const std::string shown_before = page_ > 0 ? shown().planned.key : std::string();
  settle_shape();
  const making_wishes all = wishes();
  made_ = {};
  trouble_.clear();
  result<menus_to_make> made = menus_for(p_, all.menus, measure_, is_taken_);
  if (made)
    made_ = std::move(*made);
  trouble_ = made ? trouble_with_choices() : made.error;
  add_notes();
  const auto again = std::ranges::find(
      made_.menus, shown_before,
      [](const menu_to_make& menu) -> const std::string& { return menu.planned.key; });
  if (again != made_.menus.end())
    page_ = static_cast<int>(again - made_.menus.begin()) + 1;
  else
    page_ = std::min(std::max(page_, 1), pages());
  selected_ = std::clamp(selected_, 0, std::max(0, items() - 1));
}

// What -------------------------------------------------------------------------------------------

std::vector<menus_draft::offered_title> menus_draft::titles() const {
  const disc_description d = disc_of(p_);
  std::vector<offered_title> offered;
  for (const int title : titles_with_chapters(d)) {
    const std::string name = cleaned_name(d.title(title).video());
    const auto chapters = static_cast<int>(d.title(title).chapters.size());
    offered.push_back(
        {title, trimmed(title) + ": " + sanitized(name) + " (" + counted(chapters, "chapter") + ")",
         std::ranges::find(wishes_.choices.chapters_of, title) !=
             wishes_.choices.chapters_of.end()});
  }
  return offered;
}

void menus_draft::let_have_menu(int title, bool has) {
  std::vector<int>& chosen = wishes_.choices.chapters_of;
  std::erase(chosen, title);
  if (has)
    chosen.insert(std::ranges::lower_bound(chosen, title), title);
  plan();
}

void menus_draft::let_all_have_menus(bool have) {
  wishes_.choices.chapters_of = have ? titles_with_chapters(disc_of(p_)) : std::vector<int>();
  plan();
}

bool menus_draft::may_choose_shape() const {
  return !own_shapes_.is_wide() || wishes_.replaces_own || erases_menus();
}

bool menus_draft::uses_jump_table() const {
  return wishes_.jump_table.value_or(p_.jumptable);
}

bool menus_draft::disc_begins_elsewhere() const {
  return begins_elsewhere(p_);
}

bool menus_draft::erases_menus() const {
  return uses_jump_table() != p_.jumptable && menu_count(p_) > 0;
}

// Look -------------------------------------------------------------------------------------------

void menus_draft::choose_design(std::size_t index) {
  if (index >= designs_.size())
    return;
  design_ = index;
  look_ = *designs_[index].design;
  if (background_ == chosen_background::of_design)
    if (const auto* const colours = std::get_if<colour_background>(&look_.background))
      colours_ = *colours;
  plan();
}

void menus_draft::change_look(const std::function<void(menu_design&)>& how) {
  how(look_);
  for (design_text* const text : {&look_.heading, &look_.entry, &look_.way})
    text->least_size = std::min(text->least_size, text->style.size);
  look_ = with_entries(std::move(look_), look_.columns, look_.rows);
  plan();
}

void menus_draft::arrange(menu_arrangement arrangement) {
  const menu_design& of_design = *designs_[design_].design;
  if (arrangement == look_.arrangement)
    return;
  if (arrangement == of_design.arrangement) {
    look_.arrangement = arrangement;
    look_.entry.align = of_design.entry.align;
    look_ = with_entries(std::move(look_), of_design.columns, of_design.rows);
  } else {
    look_ = arranged(std::move(look_), arrangement);
  }
  plan();
}

void menus_draft::set_entries(int columns, int rows) {
  look_ = with_entries(std::move(look_), columns, rows);
  plan();
}

void menus_draft::choose_background(chosen_background kind) {
  background_ = kind;
  plan();
}
void menus_draft::set_colours(const colour_background& colours) {
  colours_ = colours;
  plan();
}
void menus_draft::set_picture(const picture_background& picture) {
  picture_ = picture;
  plan();
}
void menus_draft::set_film(const menu_motion& film) {
  film_ = film;
  plan();
}

drawn_page menus_draft::sample_of(std::size_t design) const {
  if (page_ == 0 || design >= designs_.size())
    return {};
  planned_menu menu = made_.menus.front().planned;
  const page_form form{disc_of(p_).standard, wishes_.is_wide};
  const menu_design look = design_for(*designs_[design].design, form);
  const auto most = static_cast<std::size_t>(look.most_entries());
  if (menu.entries.size() > most)
    menu.entries.resize(most);
  return lay_out(look, menu, form, measure_).page;
}

// Pages ------------------------------------------------------------------------------------------

void menus_draft::turn_to(int page) {
  const int turned = std::clamp(page, std::min(1, pages()), pages());
  if (turned == page_)
    return;
  page_ = turned;
  selected_ = items() > 1 ? 1 : 0;
}

std::string menus_draft::page_words() const {
  if (page_ == 0)
    return {};
  return "menu " + trimmed(page_) + " of " + trimmed(pages()) + ": " +
         sanitized(shown().planned.heading);
}

std::string menus_draft::summary() const {
  if (!trouble_.empty())
    return trouble_;
  const auto of_titles = static_cast<int>(std::ranges::count_if(
      made_.menus, [](const menu_to_make& menu) { return menu.planned.title == 0; }));
  std::string text = counted(pages(), "menu") + ": " + counted(of_titles, "page") + " of titles";
  if (pages() > of_titles)
    text += ", " + counted(pages() - of_titles, "page") + " of chapters";
  return text;
}

int menus_draft::items() const {
  return page_ == 0 ? 0 : 1 + static_cast<int>(shown().buttons.size());
}

void menus_draft::select(int item) {
  selected_ = std::clamp(item, 0, std::max(0, items() - 1));
}

const planned_entry& menus_draft::entry(int item) const {
  const planned_menu& menu = shown().planned;
  const auto button = static_cast<std::size_t>(item) - 1;
  return button < menu.entries.size() ? menu.entries[button]
                                      : menu.ways[button - menu.entries.size()];
}

std::string menus_draft::key_of(int item) const {
  return item == 0 ? shown().planned.heading_key : entry(item).key;
}

std::string menus_draft::text_of(int item) const {
  if (item < 0 || item >= items())
    return {};
  return item == 0 ? shown().planned.heading : entry(item).text;
}

void menus_draft::set_text(int item, const std::string& text) {
  if (item < 0 || item >= items() || text == text_of(item))
    return;
  const std::string key = key_of(item);
  if (text.find_first_not_of(" \t\n") == std::string::npos)
    wishes_.texts.erase(key);
  else
    wishes_.texts[key] = text;
  plan();
}

bool menus_draft::has_own_text(int item) const {
  return item >= 0 && item < items() && wishes_.texts.contains(key_of(item));
}

page_box menus_draft::place(int item) const {
  if (item < 0 || item >= items())
    return {};
  if (item == 0) {
    const drawn_page& page = shown().page;
    const auto standard = page.height > 480 ? video_standard::pal : video_standard::ntsc;
    return parts_of(look_, {standard, page.is_wide}).heading;
  }
  const menu_rectangle& r = shown().buttons[static_cast<std::size_t>(item) - 1];
  return {r.x0, r.y0, r.x1 - r.x0, r.y1 - r.y0};
}

page_box menus_draft::text_place(int item) const {
  const page_box around = place(item);
  if (page_ > 0)
    for (const page_shape& shape : shown().page.shapes)
      if (const auto* const text = std::get_if<page_text>(&shape);
          text != nullptr && is_inside(text->box, around))
        return text->box;
  return around;
}

int menus_draft::item_at(int x, int y) const {
  for (int item = items() - 1; item >= 0; --item)
    if (has_point(place(item), x, y))
      return item;
  return -1;
}

std::string menus_draft::leads_to(int item) const {
  if (item < 1 || item >= items())
    return {};
  const planned_entry& leads = entry(item);
  if (leads.menu > 0)
    return "menu " + trimmed(leads.menu) + ": " +
           sanitized(made_.menus[static_cast<std::size_t>(leads.menu) - 1].planned.heading);
  std::string text = "title " + trimmed(leads.title);
  return leads.chapter > 0 ? text + ", chapter " + trimmed(leads.chapter) : text;
}

const design_look& menus_draft::button_look(int item) const {
  const bool is_way = item > static_cast<int>(shown().planned.entries.size());
  return is_way ? look_.way_look : look_.entry_look;
}

}  // namespace corvane
