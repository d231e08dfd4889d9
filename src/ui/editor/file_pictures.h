// Pictures of the media library as the toolkit takes them.
#pragma once

#include "menus/bitmaps.h"
#include "menus/menu_overlay.h"
#include "platform/files/file_stamp.h"

#include <wx/bitmap.h>
#include <wx/image.h>

#include <map>
#include <optional>
#include <string>

namespace corvane {

struct picture;

/// The picture as an image of its own.
wxImage image_of(const picture& p);

/// The bitmap of a button (native path) as the disc shows it: #010101 is transparent. A null bitmap
/// when it cannot be read.
wxBitmap bitmap_of_button(const std::string& path);

/// Measures the bitmaps of buttons and the pictures of still menus.
class media_pictures : public picture_loader {
 public:
  result<pixel_size> size_of(const std::string& file) const override;
};

/// The bitmaps of buttons by their stored paths, each read once.
class file_bitmaps : public bitmap_reader {
 public:
  const button_bitmap* read(const std::string& stored) override;

  /// Forgets the files that have changed since they were read; true when there were any.
  bool forget_changed();

 private:
  struct read_file {
    std::optional<file_stamp> stamp;
    std::optional<button_bitmap> bitmap;  ///< not set: it cannot be read
  };
  std::map<std::string, read_file> files_;  ///< by native path
};

}  // namespace corvane
