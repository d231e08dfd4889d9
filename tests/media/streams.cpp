#include "media/streams.h"

#include <array>
#include <cstddef>
#include <cstdio>
#include <memory>

namespace corvane::media_test {

std::vector<picture> pictures_by_ffmpeg(const std::string& file, int width, int height) {
  const std::string command = "ffmpeg -nostdin -v error -i '" + file +
                              "' -map 0:v:0 -fps_mode passthrough -pix_fmt rgb24 -f rawvideo -";
  const auto close = [](std::FILE* pipe) { ::pclose(pipe); };
  const std::unique_ptr<std::FILE, decltype(close)> pipe(::popen(command.c_str(), "r"), close);
  std::vector<picture> pictures;
  if (!pipe)
    return pictures;
  picture p{width, height, {}};
  p.rgb.resize(std::size_t{3} * static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
  while (std::fread(p.rgb.data(), 1, p.rgb.size(), pipe.get()) == p.rgb.size())
    pictures.push_back(p);
  return pictures;
}

bool same(const picture& a, const picture& b) {
  return a.width == b.width && a.height == b.height && a.rgb == b.rgb;
}

}  // namespace corvane::media_test
