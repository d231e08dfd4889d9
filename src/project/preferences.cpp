#include "project/preferences.h"

namespace corvane {
namespace {

bool is_region(const std::string& text) {
  return text == "NTSC" || text == "PAL";
}

void set_default(settings& prefs, std::string_view key, std::string_view value) {
  if (prefs.get(key).empty())
    prefs.set(key, value);
}

}  // namespace

void start_up(workbench& w) {
  set_default(w.prefs, "framecount", "1");
  set_default(w.prefs, "jumptable", "False");
  if (!is_region(w.prefs.get("dvdregion")))
    w.prefs.set("dvdregion", "NTSC");

  w.p.dvdsizetext = start_up_dvdsizetext;
  w.p.jumptable = w.prefs.get("jumptable") == "True";
  w.p.cleanup = w.prefs.get("cleanup") == "yes";
  // Read back for its value, not for what was just written: a store that cannot keep anything
  // must not leave the project without a region.
  const std::string region = w.prefs.get("dvdregion");
  w.p.globalregion = is_region(region) ? region : "NTSC";
}

void cleanup_command(workbench& w) {
  w.p.cleanup = !w.p.cleanup;
  w.prefs.set("cleanup", w.p.cleanup ? "yes" : "");
}

void isocreate_command(workbench& w) {
  w.p.isocreate = !w.p.isocreate;
}

void region_command(workbench& w, const std::string& region) {
  if (!w.p.Comboregion_enabled || !is_region(region))
    return;
  w.p.globalregion = region;
  w.prefs.set("dvdregion", region);
}

}  // namespace corvane
