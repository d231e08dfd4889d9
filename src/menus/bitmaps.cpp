#include "menus/bitmaps.h"

#include "formats/bmp_header.h"
#include "formats/sanitized.h"
#include "platform/files/files.h"
#include "platform/files/paths.h"
#include "project/menu_rows.h"
#include "project/messages.h"
#include "project/picked_file.h"

#include <cstddef>

namespace corvane {
namespace {

constexpr std::size_t bytes_read = 256;
constexpr int most_bits = 4;
constexpr int too_wide = 700, too_high = 300;

file_dialog bitmap_dialog() {
  file_dialog dialog;
  dialog.title = "select a 4 bit bitmap image";
  dialog.filter = "4 bit bitmap image(*.bmp)|*.bmp";
  return dialog;
}

void tell_unreadable(document& doc, const std::string& stored, const std::string& why) {
  say(doc, icon::critical,
      "\"" + sanitized(native_from_stored(stored)) +
          "\" cannot be used as a bitmap: " + sanitized(why) + ".");
}

/// The decoded size of a file.
std::optional<pixel_size> measured(document& doc, const picture_loader& pictures,
                                   const std::string& stored) {
  const auto size = pictures.size_of(native_from_stored(stored));
  if (size && size->width > 0 && size->height > 0)
    return *size;
  tell_unreadable(doc, stored, size ? "it is empty" : size.error);
  return std::nullopt;
}

/// Whether the file says that it has few enough bits a pixel.
bool is_shallow(document& doc, const std::string& stored) {
  const auto head = first_bytes(native_from_stored(stored), bytes_read);
  const auto bits = head ? windows_bmp_bits(*head) : std::nullopt;
  if (!bits) {
    tell_unreadable(doc, stored, head ? "the file is too short" : head.error);
    return false;
  }
  if (*bits <= most_bits)
    return true;
  say(doc, icon::exclamation,
      "Color depth is not 4BPP or less, please reduce the number of colors.");
  return false;
}

}  // namespace

std::optional<picked_bitmap> pick_highlight_bitmap(document& doc, const picture_loader& pictures) {
  const auto file = pick_file(doc, bitmap_dialog(), file_use::bitmap);
  if (!file)
    return std::nullopt;
  const auto size = measured(doc, pictures, *file);
  if (!size || !is_shallow(doc, *file))
    return std::nullopt;
  if (size->width < too_wide && size->height < too_high)
    return picked_bitmap{*file, *size};
  say(doc, icon::none, "image is larger than 700x300.");
  return std::nullopt;
}

picked_select pick_select_bitmap(document& doc, const picture_loader& pictures,
                                 const std::string& highlight) {
  const auto file = pick_file(doc, bitmap_dialog(), file_use::bitmap);
  if (!file)
    return {};
  const auto size = measured(doc, pictures, *file);
  if (!size)
    return {};
  std::optional<pixel_size> wanted;
  if (is_bitmap(highlight)) {
    wanted = measured(doc, pictures, highlight);
    if (!wanted)
      return {};
  }
  if (size != wanted) {
    say(doc, icon::none, "the select image must be the same size as the highlight image");
    return {std::nullopt, true};
  }
  return {is_shallow(doc, *file) ? file : std::nullopt, false};
}

}  // namespace corvane
