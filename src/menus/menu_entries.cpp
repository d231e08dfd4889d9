#include "menus/menu_entries.h"

#include "formats/numbers.h"
#include "project/menu_rows.h"
#include "project/messages.h"
#include "project/picked_file.h"
#include "project/project_file.h"
#include "project/stream_dialogs.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>

namespace corvane {
namespace {

/// The audio's stored path; empty when the user wants none. A file whose name cannot be stored, or
/// that is of another kind and not wanted, is not "none": the user is asked again.
std::string pick_menu_audio(document& doc) {
  file_dialog dialog = audio_dialog();
  dialog.title = "select audio stream (If no audio is needed for the menu, press cancel)";
  for (;;) {
    const std::string native = doc.ask.open_file(dialog);
    if (native.empty())
      return {};
    const auto stored = stored_or_told(doc, native);
    if (stored && may_be_taken(doc, native, file_use::sound))
      return *stored;
  }
}

void add_menu(project& p, const menu_streams& streams) {
  p.indexer = static_cast<int>(p.menulist.size()) + 1;
  p.menulist.push_back(menu_row_text(streams));
  p.moremenuoptions.resize(p.menulist.size() - 1, new_menu_options);
  p.moremenuoptions.emplace_back(new_menu_options);
  p.Comboregion_enabled = false;
  // The array grows by one whatever it holds: after the only menu was removed it has an element
  // already, which serves the new menu, and one more.
  p.menubuttons.resize(std::max(p.menubuttons.size() + 1, p.menulist.size()));
  // Elements beyond the menus are empty, but for those that a load left which was rolled back: the
  // buttons of menus that are gone must not come back with new ones.
  const auto new_one = static_cast<std::ptrdiff_t>(p.menulist.size()) - 1;
  std::fill(p.menubuttons.begin() + new_one, p.menubuttons.end(), std::string());
}

}  // namespace

file_dialog menu_video_dialog() {
  file_dialog dialog = video_dialog(false);
  dialog.filter = "mpeg elementry stream(*.m2v, *.mpv)|*.m2v;*.mpv";
  return dialog;
}

bool has_room_for_menu(document& doc) {
  if (doc.p.menulist.size() < static_cast<std::size_t>(most_menus))
    return true;
  say(doc, icon::exclamation,
      "A project holds at most " + trimmed(most_menus) + " menus.  Please remove one first.");
  return false;
}

bool addmenu_command(document& doc) {
  if (custom(doc) != 1 || !has_room_for_menu(doc))
    return false;
  const auto video = pick_file(doc, menu_video_dialog(), file_use::menu_video);
  if (!video)
    return false;
  add_menu(doc.p, {*video, pick_menu_audio(doc)});
  doc.p.saved = 0;
  dvdsize(doc);
  return true;
}

bool editmenu_command(document& doc) {
  return custom(doc) == 1 && !doc.p.menulist.empty();
}

bool remove_menu_command(document& doc) {
  return custom(doc) == 1 && !doc.p.menulist.empty();
}

void jumptable_command(document& doc) {
  if (!doc.p.menulist.empty()) {
    say(doc, icon::exclamation,
        "Jumptable cannot be enabled/disabled, since menus have already been created");
    return;
  }
  if (!doc.p.jumptable)
    say(doc, icon::information,
        "This will allow titles to jump to any menu, instead of just the first menu.  It uses "
        "virtual machine scripting in the XML(instead of using jumppad)");
  doc.p.jumptable = !doc.p.jumptable;
  doc.p.saved = 0;
  doc.prefs.set("jumptable", doc.p.jumptable ? "True" : "False");
}

}  // namespace corvane
