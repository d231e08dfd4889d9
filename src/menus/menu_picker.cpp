#include "menus/menu_picker.h"

#include "formats/numbers.h"
#include "platform/files/paths.h"
#include "project/menu_rows.h"
#include "project/moved_commands.h"

#include <cstddef>
#include <utility>

namespace corvane {
namespace {

std::string entry(const project& p, int menu) {
  const menu_streams streams = parse_menu_row(p.menulist[static_cast<std::size_t>(menu) - 1]);
  return "menu" + leading_blank(menu) + ":" + std::string(file_name_of(streams.video)) +
         (streams.audio.empty() ? "(no audio)" : "(with audio)") + " (" +
         trimmed(buttoncount(p, menu)) + " buttons)";
}

/// Commands of other menus and of titles keep the numbers they name.
void erase_menu(project& p, int i) {
  note_command_targets(p);
  if (i <= UUBound(p.menubuttons))  // a damaged project can have fewer elements than menus
    ArrayRemoveItem(p, i);
  p.menulist.erase(p.menulist.begin() + i);
  if (i <= UUBound(p.moremenuoptions))
    p.moremenuoptions.erase(p.moremenuoptions.begin() + i);
  forget_removed_menu(p, i + 1);
}

}  // namespace

menu_picker::menu_picker(document& doc, std::string caption)
    : doc_(doc), caption_(std::move(caption)) {
  for (int menu = 1; menu <= UUBound(doc.p.menulist) + 1; ++menu)
    entries_.push_back(entry(doc.p, menu));
}

bool menu_picker::confirm(int i) {
  project& p = doc_.p;
  if (i < 0 || i > UUBound(p.menulist))
    return false;
  const bool erase = caption_ == picker_erase_caption;
  if (erase) {
    erase_menu(p, i);
    p.saved = 0;
  } else {
    p.indexer = i + 1;
  }
  // Also after picking a menu to edit: without titles the region is free again, menus or not.
  if (p.List1.empty() && p.buttondata.empty())
    p.Comboregion_enabled = true;
  dvdsize(doc_);
  return !erase;
}

}  // namespace corvane
