#include "picture_file.h"

#include "platform/files/files.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

namespace corvane::disc {

dot picture_file::at(int x, int y) const {
  const auto place = (static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                      static_cast<std::size_t>(x)) *
                     3;
  const auto byte = [&](std::size_t i) { return static_cast<std::uint8_t>(bytes[place + i]); };
  return {byte(0), byte(1), byte(2), is_clear(x, y) ? 0 : 15};
}

bool picture_file::is_clear(int x, int y) const {
  const auto place = (static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                      static_cast<std::size_t>(x)) *
                     3;
  return bytes.compare(place, 3, "\1\1\1") == 0;
}

picture_file read_png(const std::string& native_path, int width, int height) {
  const testing_support::temporary_folder folder;
  command c{{"ffmpeg", "-nostdin", "-v", "error", "-i", native_path, "-pix_fmt", "rgb24", "-f",
             "rawvideo", folder.path("dots")}};
  const finished decoded = run(c);
  EXPECT_EQ(decoded.status, 0) << decoded.out;
  picture_file picture{width, height, {}};
  const std::size_t size = static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 3;
  if (file_exists(folder.path("dots")))
    picture.bytes = folder.read("dots");
  EXPECT_EQ(picture.bytes.size(), size) << native_path;
  picture.bytes.resize(size);
  return picture;
}

}  // namespace corvane::disc
