#include "project/recent_projects.h"

#include "formats/numbers.h"

#include <algorithm>
#include <cstddef>

namespace corvane {
namespace {

/// "recent1" is the last one.
std::string key_of(int place) {
  return "recent" + trimmed(place);
}

}  // namespace

std::vector<std::string> recent_projects(const settings& prefs) {
  std::vector<std::string> files;
  for (int place = 1; place <= most_recent_projects; ++place)
    if (std::string file = prefs.get(key_of(place)); !file.empty())
      files.push_back(std::move(file));
  return files;
}

void note_recent_project(settings& prefs, const std::string& path) {
  std::vector<std::string> files = recent_projects(prefs);
  if (!files.empty() && files.front() == path)
    return;
  std::erase(files, path);
  files.insert(files.begin(), path);
  files.resize(std::min<std::size_t>(files.size(), most_recent_projects));
  for (std::size_t i = 0; i < files.size(); ++i)
    prefs.set(key_of(static_cast<int>(i) + 1), files[i]);
}

}  // namespace corvane
