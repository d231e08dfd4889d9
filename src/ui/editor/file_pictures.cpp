#include "ui/editor/file_pictures.h"

#include "media/video_file.h"

#include <algorithm>

namespace corvane {

wxImage image_of(const picture& p) {
  wxImage image(p.width, p.height, false);
  std::copy(p.rgb.begin(), p.rgb.end(), image.GetData());
  return image;
}

wxBitmap bitmap_of_button(const std::string& path) {
  const result<picture> read = read_picture(path);
  if (!read)
    return {};
  wxImage image = image_of(*read);
  image.SetMaskColour(1, 1, 1);
  image.InitAlpha();  // from the mask; it can be scaled
  return wxBitmap(image);
}

result<pixel_size> media_pictures::size_of(const std::string& file) const {
  const result<picture> read = read_picture(file);
  if (!read)
    return result<pixel_size>::fail(read.error);
  return result<pixel_size>::ok({read->width, read->height});
}

}  // namespace corvane
