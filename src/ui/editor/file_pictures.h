// Pictures of the media library as the toolkit takes them.
#pragma once

#include "menus/bitmaps.h"

#include <wx/bitmap.h>
#include <wx/image.h>

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

}  // namespace corvane
