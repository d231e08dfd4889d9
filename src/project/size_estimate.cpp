#include "formats/numbers.h"
#include "formats/text.h"
#include "project/disc_of.h"
#include "project/document.h"
#include "project/file_lookup.h"
#include "project/messages.h"

#include <cmath>
#include <cstdint>
#include <string>

namespace corvane {
namespace {

constexpr double bytes_of_a_disc = 4.7e9;      // what a single-layer disc is sold as
constexpr double bytes_of_a_gig = 1073741824;  // what the figure counts in

struct files_found {
  double bytes = 0;
  bool missing = false;
};

void add_file(document& doc, file_lookup& files, const std::string& part, files_found& found) {
  if (const auto size = files.size_of(part)) {
    found.bytes += static_cast<double>(*size);
  } else {
    say_missing(doc, part);
    found.missing = true;
  }
}

files_found look_at_all_files(document& doc, file_lookup& files) {
  files_found found;
  const disc_description d = disc_of(doc.p);
  for (const disc_title& title : d.titles)
    for (const std::string& stream : title.streams)
      add_file(doc, files, stream, found);
  for (const disc_menu& menu : d.menus)
    for (const std::string& file : menu.files)
      if (!file.empty())  // a menu without audio
        add_file(doc, files, file, found);
  return found;
}

/// "3.000": rounded half up, and with a point whatever the user's locale has.
std::string gigs(double bytes) {
  const auto thousandths =
      static_cast<std::int64_t>(std::floor(bytes * 1000 / bytes_of_a_gig + 0.5));
  std::string decimals = trimmed(thousandths % 1000);
  decimals.insert(0, 3 - decimals.size(), '0');
  return trimmed(thousandths / 1000) + "." + decimals;
}

std::string row_count(const std::vector<std::string>& rows) {
  return trimmed(static_cast<std::int64_t>(rows.size()));
}

}  // namespace

void dvdsize(document& doc) {
  file_lookup files;
  dvdsize(doc, files);
}

void dvdsize(document& doc, file_lookup& files) {
  const files_found found = look_at_all_files(doc, files);
  if (found.missing)
    return;
  project& p = doc.p;
  p.dvdsizetext_red = found.bytes > bytes_of_a_disc;
  p.dvdsizetext = row_count(p.List1) + " titles\r\n" + row_count(p.menulist) + " menus\r\n" +
                  gigs(found.bytes) + " gig total";
}

}  // namespace corvane
