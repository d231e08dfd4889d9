#include "formats/numbers.h"
#include "formats/text.h"
#include "project/disc_of.h"
#include "project/document.h"
#include "project/file_lookup.h"
#include "project/messages.h"
#include "project/moved_files.h"

#include <cmath>
#include <cstdint>
#include <string>
#include <vector>

namespace corvane {
namespace {

constexpr double bytes_of_a_disc = 4.7e9;      // what a single-layer disc is sold as
constexpr double bytes_of_a_gig = 1073741824;  // what the figure counts in

/// The files of titles and menus, and those of them that are not there.
struct files_found {
  std::uint64_t bytes = 0;
  std::vector<std::string> missing;
};

files_found look_at_all_files(const project& p, file_lookup& files) {
  files_found found;
  const auto add = [&](const std::string& file) {
    if (const auto size = files.size_of(file))
      found.bytes += *size;
    else
      found.missing.push_back(file);
  };
  const disc_description d = disc_of(p);
  for (const disc_title& title : d.titles)
    for (const std::string& stream : title.streams)
      add(stream);
  for (const disc_menu& menu : d.menus)
    for (const std::string& file : menu.files)
      if (!file.empty())  // a menu without audio
        add(file);
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

void show_size(project& p, std::uint64_t size) {
  const auto bytes = static_cast<double>(size);
  p.dvdsize_bytes = size;
  p.dvdsizetext_red = bytes > bytes_of_a_disc;
  p.dvdsizetext = row_count(p.List1) + " titles\r\n" + row_count(p.menulist) + " menus\r\n" +
                  gigs(bytes) + " gig total";
}

}  // namespace

void dvdsize(document& doc) {
  file_lookup files;
  if (offer_to_find_files(doc, doc.p, files))
    doc.p.saved = 0;
  dvdsize(doc, files);
}

void dvdsize(document& doc, file_lookup& files) {
  const files_found found = look_at_all_files(doc.p, files);
  for (const std::string& file : found.missing)
    say_missing(doc, file);
  if (found.missing.empty())
    show_size(doc.p, found.bytes);
}

void show_size_of_what_is_there(project& p) {
  file_lookup files;
  show_size(p, look_at_all_files(p, files).bytes);
}

}  // namespace corvane
