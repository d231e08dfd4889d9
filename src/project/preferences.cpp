#include "project/preferences.h"

namespace corvane {
namespace {

constexpr std::string_view menu_sound_preference = "menusound";

bool is_region(const std::string& text) {
  return text == "NTSC" || text == "PAL";
}

void set_default(settings& prefs, std::string_view key, std::string_view value) {
  if (prefs.get(key).empty())
    prefs.set(key, value);
}

}  // namespace

void start_up(document& doc) {
  set_default(doc.prefs, "framecount", "1");
  set_default(doc.prefs, "jumptable", "False");
  if (!is_region(doc.prefs.get("dvdregion")))
    doc.prefs.set("dvdregion", "NTSC");

  doc.p.dvdsizetext = start_up_dvdsizetext;
  doc.p.jumptable = doc.prefs.get("jumptable") == "True";
  doc.p.cleanup = doc.prefs.get("cleanup") == "yes";
  // Read back for its value, not for what was just written: a store that cannot keep anything
  // must not leave the project without a region.
  const std::string region = doc.prefs.get("dvdregion");
  doc.p.globalregion = is_region(region) ? region : "NTSC";
  doc.forget_file();
}

void cleanup_command(document& doc) {
  doc.p.cleanup = !doc.p.cleanup;
  doc.prefs.set("cleanup", doc.p.cleanup ? "yes" : "");
}

void isocreate_command(document& doc) {
  doc.p.isocreate = !doc.p.isocreate;
  doc.p.saved = 0;
}

void region_command(document& doc, const std::string& region) {
  if (!doc.p.Comboregion_enabled || !is_region(region))
    return;
  if (doc.p.globalregion != region)
    doc.p.saved = 0;
  doc.p.globalregion = region;
  doc.prefs.set("dvdregion", region);
}

bool plays_menu_sound(const settings& prefs) {
  return prefs.get(menu_sound_preference) != "no";
}

void keep_menu_sound(settings& prefs, bool plays) {
  prefs.set(menu_sound_preference, plays ? "yes" : "no");
}

}  // namespace corvane
