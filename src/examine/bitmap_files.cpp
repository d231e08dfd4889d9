#include "examine/bitmap_files.h"

#include "examine/titleset_rules.h"
#include "platform/files/files.h"
#include "platform/files/paths.h"

#include <map>
#include <string>
#include <utility>

namespace corvane {
namespace {

class bitmap_files {
 public:
  /// Many buttons may have the same bitmap.
  bool has(const std::string& file) {
    const auto [known, is_new] = seen_.try_emplace(file);
    if (is_new)
      known->second = file_exists(file);
    return known->second;
  }

 private:
  std::map<std::string, bool> seen_;
};

finding bitmap_finding(int menu, int button, std::string file) {
  finding f =
      finding_of(file_rules(), "file-missing",
                 {finding_item::whole_kind::menu, menu, finding_item::part_kind::button, button},
                 "its bitmap is not there");
  f.file = std::move(file);
  return f;
}

}  // namespace

std::vector<finding> bitmap_file_findings(const disc_description& d) {
  std::vector<finding> findings;
  bitmap_files files;
  for (int menu = 1; menu <= d.menu_count(); ++menu) {
    int button = 0;
    for (const disc_button& b : d.menu(menu).buttons) {
      ++button;
      std::string told;
      for (const disc_look* const look : {&b.highlight, &b.select}) {
        const std::string file = native_from_stored(look->text, native_style());
        if (!look->is_bitmap || file == told || files.has(file))
          continue;
        findings.push_back(bitmap_finding(menu, button, file));
        told = file;
      }
    }
  }
  return findings;
}

}  // namespace corvane
