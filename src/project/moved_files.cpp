#include "project/moved_files.h"

#include "formats/text.h"
#include "platform/files/files.h"
#include "platform/files/paths.h"
#include "project/file_lookup.h"
#include "project/menu_rows.h"
#include "project/subtitle_rows.h"
#include "project/title_rows.h"

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <functional>
#include <map>
#include <set>
#include <utility>

namespace corvane {
namespace {

/// Calls `each` with every path of a row or record, which may change it.
using path_change = std::function<void(std::string&)>;

void change_parts(std::string& row, const path_change& each, bool (*is_path)(std::string_view)) {
  std::vector<std::string> parts = split(row, '/');
  for (std::string& part : parts)
    if (is_path(part))
      each(part);
  row = join(parts, "/");
}

bool is_any(std::string_view part) {
  return !part.empty();
}

void change_paths(project& p, const path_change& each) {
  for (auto* const list : {&p.List11, &p.menulist})
    for (std::string& row : *list)
      change_parts(row, each, is_any);
  for (std::string& element : p.menubuttons) {
    std::vector<std::string> records = pieces_of(element);
    for (std::string& record : records)
      change_parts(record, each, is_bitmap);
    element = join(records, "|");
  }
  for (std::string& row : p.subtitledata)
    change_parts(row, each, is_bitmap);
}

/// How many names the paths have in common at their ends.
std::size_t alike_at_the_end(const std::string& a, const std::string& b) {
  const std::vector<std::string> x = split(a, '\\'), y = split(b, '\\');
  const auto differs = std::mismatch(x.rbegin(), x.rend(), y.rbegin(), y.rend());
  return static_cast<std::size_t>(differs.first - x.rbegin());
}

/// A name as the system tells files apart.
std::string comparable(std::string_view name) {
  return native_style() == path_style::windows ? lower(name) : std::string(name);
}

/// The files below a folder that have one of these names: their stored paths by name.
std::multimap<std::string, std::string> files_named(const std::set<std::string>& names,
                                                    const std::string& folder) {
  constexpr int most_entries = 200'000;  // of a whole disk, so that nobody waits for minutes
  std::multimap<std::string, std::string> found;
  std::error_code trouble;
  std::filesystem::recursive_directory_iterator each(
      path_of(folder), std::filesystem::directory_options::skip_permission_denied, trouble);
  for (int entries = 0; !trouble && each != std::filesystem::end(each) && entries < most_entries;
       ++entries, each.increment(trouble)) {
    const std::string name = comparable(text_of(each->path().filename()));
    std::error_code ignored;
    if (!names.contains(name) || !each->is_regular_file(ignored))
      continue;
    const std::string native = text_of(each->path());
    if (!why_not_storable(native))
      found.emplace(name, stored_from_native(native));
  }
  return found;
}

}  // namespace

std::vector<std::string> missing_files(const project& p, file_lookup& files) {
  std::vector<std::string> missing;
  std::set<std::string> known;
  project copy = p;  // nothing of it is changed
  change_paths(copy, [&](std::string& path) {
    if (known.insert(path).second && !files.size_of(path))
      missing.push_back(path);
  });
  return missing;
}

std::vector<found_file> look_for(const std::vector<std::string>& missing,
                                 const std::string& folder) {
  std::set<std::string> names;
  for (const std::string& path : missing)
    names.insert(comparable(file_name_of(path)));
  const auto there = files_named(names, folder);
  std::vector<found_file> found;
  for (const std::string& path : missing) {
    std::size_t best = 0;
    bool is_sure = false;
    std::string best_path;
    const auto [begin, end] = there.equal_range(comparable(file_name_of(path)));
    for (auto candidate = begin; candidate != end; ++candidate) {
      const std::size_t alike = alike_at_the_end(path, candidate->second);
      is_sure = alike > best || (is_sure && alike < best);
      if (alike > best)
        best_path = candidate->second;
      best = std::max(best, alike);
    }
    if (is_sure)
      found.push_back({path, best_path});
  }
  return found;
}

bool offer_to_find_files(document& doc, project& p, file_lookup& files) {
  std::string searched;
  std::size_t found_there = 0;
  for (bool changed = false;; changed = changed || found_there > 0) {
    const std::vector<std::string> missing = missing_files(p, files);
    const bool is_known = std::ranges::all_of(
        missing, [&](const std::string& path) { return doc.given_up_files.contains(path); });
    if (is_known)
      return changed;
    std::vector<std::string> native;
    native.reserve(missing.size());
    for (const std::string& path : missing)
      native.push_back(native_from_stored(path));
    const std::string folder = doc.ask.folder_of_missing({native, searched, found_there});
    if (folder.empty()) {
      doc.given_up_files.insert(missing.begin(), missing.end());
      return changed;
    }
    const std::vector<found_file> found = look_for(missing, folder);
    take_found_files(p, found);
    files = file_lookup();
    searched = folder;
    found_there = found.size();
  }
}

void take_found_files(project& p, const std::vector<found_file>& found) {
  std::map<std::string, std::string> places;
  for (const found_file& file : found)
    places.emplace(file.missing, file.found);
  change_paths(p, [&](std::string& path) {
    if (const auto place = places.find(path); place != places.end())
      path = place->second;
  });
  rebuild_List1(p);
}

}  // namespace corvane
