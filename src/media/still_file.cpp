#include "formats/still_header.h"
#include "media/picture.h"
#include "media/picture_decoder.h"
#include "platform/files/files.h"

#include <memory>

namespace corvane {

result<picture> read_picture(const std::string& path) {
  using read = result<picture>;
  constexpr std::uintmax_t largest_file = std::uintmax_t{64} * 1024 * 1024;
  const auto text = read_file(path, largest_file);
  if (!text)
    return read::fail(text.error);
  std::vector<std::uint8_t> bytes(text->begin(), text->end());
  const still_kind kind = kind_of_still(bytes);
  if (kind == still_kind::unknown)
    return read::fail("it is neither a bitmap nor a JPEG picture");
  if (kind == still_kind::bitmap)
    if (const failure why = prepare_bitmap(bytes))
      return read::fail(*why);
  auto decoder = make_picture_decoder(kind == still_kind::bitmap ? picture_coding::bitmap
                                                                 : picture_coding::jpeg);
  if (!decoder)
    return read::fail(decoder.error);
  const std::unique_ptr<decoded_frame> frame = (*decoder)->decode(bytes);
  if (!frame)
    return read::fail("the picture cannot be decoded");
  return (*decoder)->convert(*frame);
}

}  // namespace corvane
