#include "ui/editor/file_pictures.h"

#include "media/video_file.h"
#include "platform/files/paths.h"

#include <algorithm>
#include <utility>

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

const button_bitmap* file_bitmaps::read(const std::string& stored) {
  const std::string path = native_from_stored(stored);
  const auto [file, is_new] = files_.try_emplace(path);
  if (is_new) {
    file->second.stamp = stamp_of(path);
    if (result<picture> p = read_picture(path))
      file->second.bitmap = button_bitmap{p->width, p->height, std::move(p->rgb)};
  }
  return file->second.bitmap ? &*file->second.bitmap : nullptr;
}

bool file_bitmaps::forget_changed() {
  return std::erase_if(files_, [](const auto& file) {
           return stamp_of(file.first) != file.second.stamp;
         }) > 0;
}

}  // namespace corvane
