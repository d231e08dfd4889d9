#include "menus/maker/made_menus.h"

#include "disc/disc_description.h"
#include "examine/button_neighbours.h"
#include "formats/numbers.h"
#include "formats/sanitized.h"
#include "formats/text.h"
#include "menus/maker/design_writer.h"
#include "platform/files/files.h"
#include "platform/files/paths.h"
#include "platform/text/utf8.h"
#include "project/button_data.h"
#include "project/disc_of.h"
#include "project/menu_rows.h"
#include "project/moved_commands.h"
#include "project/post_rows.h"
#include "project/project_file.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <set>
#include <utility>

namespace corvane {
namespace {

/// Which menus of the project stay, and where the new ones stand among them.
struct menu_places {
  std::vector<int> removed;  ///< numbers, rising
  int before = 0;            ///< menus that stay and stand before the new ones
  int kept = 0;
};

menu_places places_for(const project& p, const remembered_menus& remembered, bool replaces_own) {
  menu_places places;
  bool is_before = true;
  for (int number = 1; number <= menu_count(p); ++number) {
    if (replaces_own || remembered.made.contains(number)) {
      places.removed.push_back(number);
      is_before = false;
      continue;
    }
    ++places.kept;
    places.before += is_before ? 1 : 0;
  }
  return places;
}

/// What a file can be called after.
std::string file_stem(const std::string& subject) {
  std::string stem;
  for (const char c : subject) {
    const bool is_kept = static_cast<unsigned char>(c) >= 0x80 || is_digit(c) ||
                         (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
    if (is_kept)
      stem += c;
    else if (!stem.empty() && stem.back() != '-')
      stem += '-';
  }
  constexpr std::size_t most = 40;
  stem = std::string(first_characters(stem, most));
  while (stem.ends_with('-'))
    stem.pop_back();
  return stem.empty() || why_not_storable(stem) ? "menu" : stem;
}

class file_namer {
 public:
  file_namer(std::string folder, const std::function<bool(const std::string&)>& is_taken)
      : folder_(std::move(folder)), is_taken_(is_taken) {}

  /// Native path of the background of a menu.
  std::string name(const planned_menu& menu) {
    const std::string stem = file_stem(menu.subject) + "-" + trimmed(menu.page);
    for (int time = 1;; ++time) {
      std::string path =
          join_path(folder_, stem + (time == 1 ? "" : " (" + trimmed(time) + ")") + ".m2v");
      if (is_taken_(path) || is_taken_(memory_file(path)) || !given_.insert(lower(path)).second)
        continue;
      return path;
    }
  }

 private:
  std::string folder_;
  const std::function<bool(const std::string&)>& is_taken_;
  std::set<std::string> given_;
};

std::string record_of(const planned_entry& entry, const menu_rectangle& r, const design_look& look,
                      int before) {
  button_record record = button_with_edges(r.x0, r.y0, r.x1, r.y1);
  record.action = action_of(entry, before);
  record.highlight = look.highlight;
  record.select = look.select;
  return button_text(record);
}

std::vector<remembered_button> buttons_for(const planned_menu& menu, const laid_out_menu& laid_out,
                                           const menu_design& design, int before) {
  std::vector<remembered_button> buttons;
  const std::size_t entries = menu.entries.size();
  for (std::size_t i = 0; i < laid_out.buttons.size(); ++i) {
    const bool is_entry = i < entries;
    const planned_entry& entry = is_entry ? menu.entries[i] : menu.ways[i - entries];
    buttons.push_back(
        {move_key(menu, i), record_of(entry, laid_out.buttons[i],
                                      is_entry ? design.entry_look : design.way_look, before)});
  }
  return buttons;
}

/// What every menu of one making remembers alike.
menu_memory common_memory(const disc_description& d, const menu_wishes& wishes) {
  menu_memory memory;
  memory.design = wishes.design_id;
  memory.is_wide = wishes.is_wide;
  memory.choices = wishes.choices;
  memory.choices.chapters_of.clear();
  for (const int title : wishes.choices.chapters_of)
    if (title >= 1 && title <= d.title_count())
      memory.chapters_of.push_back(d.title(title).video());
  memory.texts = wishes.texts;
  memory.moves = wishes.moves;
  memory.look = written_design(wishes.design);
  memory.also = wishes.also;
  return memory;
}

void note_unreachable(const laid_out_menu& laid_out, int number, std::vector<std::string>& notes) {
  std::vector<button_edges> edges;
  for (const menu_rectangle& r : laid_out.buttons)
    edges.push_back({r.x0, r.y0, r.x1, r.y1});
  for (const int button : buttons_out_of_reach(edges))
    notes.push_back("No arrow keys lead to button " + trimmed(button) + " of menu " +
                    trimmed(number) + ".");
}

void add_general_notes(const project& p, const menu_wishes& wishes, const menu_places& places,
                       std::vector<std::string>& notes) {
  if (wishes.sets_ends && wishes.choices.play_all && title_count(p) > 1)
    notes.emplace_back(
        "\"Play all\" lets each title go on with the next one, also when it was chosen by its own "
        "button.");
  if (begins_elsewhere(p) && !wishes.begins_with_menus)
    notes.push_back("The disc begins with " + sanitized_quoted(p.firstplay) +
                    ", and not with its menus.  Mark \"the disc begins with the menus\", or choose "
                    "\"<default>\" in \"nav cmds\", to change that.");
  if (places.before > 0)
    notes.emplace_back(
        "The menus that are there stay before the new ones: the disc begins with them, and titles "
        "come back to them.");
}

/// The jump table with which the disc will be made.
result<bool> jump_table_for(const project& p, const menu_wishes& wishes,
                            const menu_places& places) {
  const bool wanted = wishes.jump_table.value_or(p.jumptable);
  if (wanted != p.jumptable && places.kept > 0)
    return result<bool>::fail(
        "The jump table can change only without menus, and there are menus that stay.");
  return result<bool>::ok(wanted);
}

void remove_menus(project& p, const std::vector<int>& numbers) {
  const std::size_t menus = p.menulist.size();
  p.moremenuoptions.resize(menus, new_menu_options);
  p.menubuttons.resize(menus);
  for (auto number = numbers.rbegin(); number != numbers.rend(); ++number) {
    const std::ptrdiff_t index = *number - 1;
    for (auto* const list : {&p.menulist, &p.moremenuoptions, &p.menubuttons})
      list->erase(list->begin() + index);
    forget_removed_menu(p, *number);
  }
}

void insert_menus(project& p, int before, const menu_wishes& wishes, const menus_to_make& made) {
  const std::size_t count = made.menus.size();
  p.menulist.insert(p.menulist.begin() + before, count, {});
  p.moremenuoptions.insert(p.moremenuoptions.begin() + before, count, new_menu_options);
  p.menubuttons.insert(p.menubuttons.begin() + before, count, {});
  note_inserted_menus(p, before + 1, static_cast<int>(count));
  menu_options options;
  options.loop = wishes.loops;
  options.thickness = wishes.design.frame;
  int number = before;
  for (const menu_to_make& menu : made.menus) {
    row_to_write(p.menulist, ++number, {}) = menu_row_text({menu.video, made.sound});
    std::vector<std::string> records;
    for (const remembered_button& button : menu.memory.buttons)
      records.push_back(button.record);
    store_edited_menu(p, static_cast<std::int16_t>(number), records, menu_options_text(options));
  }
}

/// What led to a menu made before leads to the one that is made in its place.
void follow_made_menus(project& p, const std::map<std::string, std::string>& before,
                       const menus_to_make& made) {
  for (const menu_to_make& menu : made.menus)
    if (const auto old = before.find(menu.memory.menu); old != before.end())
      follow_video(p, old->second, menu.video);
}

void set_ends(project& p, const menu_choices& choices) {
  p.postinfo.clear();
  for (const std::string& end : ends_of_titles(disc_of(p), choices))
    p.postinfo.push_back(post_row(end));
}

failure write_memories(const menus_to_make& made) {
  for (const menu_to_make& menu : made.menus) {
    const std::string file = memory_file(native_from_stored(menu.video));
    if (const failure why = write_file(file, memory_text(menu.memory)))
      return file + " could not be written: " + *why +
             ".  Without it, what you change in the menus is lost when they are made again.";
  }
  return std::nullopt;
}

}  // namespace

std::vector<menu_background> menus_to_make::backgrounds() const {
  std::vector<menu_background> all;
  for (const menu_to_make& menu : menus)
    all.push_back({native_from_stored(menu.video), menu.page});
  return all;
}

bool begins_elsewhere(const project& p) {
  const disc_description d = disc_of(p);
  return d.first_play && d.first_play->form.what != verb::jump_titleset;
}

result<menus_to_make> menus_for(const project& p, const menu_wishes& wishes,
                                const text_measure& measure,
                                const std::function<bool(const std::string&)>& is_taken) {
  using made_or_why = result<menus_to_make>;
  if (const auto why = why_not_storable(wishes.folder))
    return made_or_why::fail("The folder " + sanitized_quoted(wishes.folder) + " " + *why);
  const menu_places places = places_for(p, menus_made_before(p), wishes.replaces_own);
  const result<bool> jump_table = jump_table_for(p, wishes, places);
  if (!jump_table)
    return made_or_why::fail(jump_table.error);
  disc_description d = disc_of(p);
  d.jump_table = *jump_table;

  const page_form form{d.standard, wishes.is_wide};
  const menu_design design = design_for(wishes.design, form);
  menu_plan plan = plan_menus(d, wishes.choices, {design.most_entries(), most_menus - places.kept},
                              wishes.texts);
  if (plan.menus.empty())
    return made_or_why::fail(plan.notes.empty() ? "There is nothing to make" : plan.notes.front());
  menus_to_make made;
  made.notes = std::move(plan.notes);
  file_namer namer(wishes.folder, is_taken);
  menu_memory memory = common_memory(d, wishes);
  int number = places.before;
  for (const planned_menu& menu : plan.menus) {
    laid_out_menu laid_out = lay_out(design, menu, form, measure, wishes.moves);
    made.notes.insert(made.notes.end(), laid_out.notes.begin(), laid_out.notes.end());
    note_unreachable(laid_out, ++number, made.notes);
    memory.menu = menu.key;
    memory.buttons = buttons_for(menu, laid_out, wishes.design, places.before);
    made.menus.push_back({stored_from_native(namer.name(menu)), std::move(laid_out.page), memory,
                          menu, std::move(laid_out.buttons)});
  }
  add_general_notes(p, wishes, places, made.notes);
  return made_or_why::ok(std::move(made));
}

failure put_menus(document& doc, const menu_wishes& wishes, const menus_to_make& made) {
  const document::step step(doc, "make menus");
  project& p = doc.p;
  const remembered_menus remembered = menus_made_before(p);
  const menu_places places = places_for(p, remembered, wishes.replaces_own);
  std::map<std::string, std::string> videos;
  for (const auto& [number, memory] : remembered.made)
    videos[memory.menu] = parse_menu_row(row_of(p.menulist, number, {})).video;

  note_command_targets(p);
  remove_menus(p, places.removed);
  insert_menus(p, places.before, wishes, made);
  follow_made_menus(p, videos, made);
  carry_commands_along(doc);
  p.jumptable = wishes.jump_table.value_or(p.jumptable);
  if (wishes.sets_ends)
    set_ends(p, wishes.choices);
  if (wishes.begins_with_menus && begins_elsewhere(p))
    p.firstplay = no_first_play;
  p.Comboregion_enabled = false;
  p.saved = 0;
  dvdsize(doc);
  return write_memories(made);
}

result<std::vector<std::string>> make_menus(document& doc, const menu_wishes& wishes,
                                            const text_measure& measure,
                                            const background_maker& make) {
  using notes_or_why = result<std::vector<std::string>>;
  const document::step step(doc, "make menus");
  const std::string xml = doc.p.customxml;
  const int saved = doc.p.saved;
  if (custom(doc) != 1)
    return notes_or_why::fail({});
  result<menus_to_make> made = menus_for(doc.p, wishes, measure, entry_exists);
  const failure why_not = made ? make(made->backgrounds()) : failure(made.error);
  if (why_not) {
    doc.p.customxml = xml;
    doc.p.saved = saved;
    return notes_or_why::fail(*why_not);
  }
  std::vector<std::string> notes = std::move(made->notes);
  if (const failure why = put_menus(doc, wishes, *made))
    notes.push_back(*why);
  return notes_or_why::ok(std::move(notes));
}

}  // namespace corvane
