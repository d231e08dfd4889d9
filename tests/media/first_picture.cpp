// Tells the size of the first picture of the video or still picture in a file, or why there is
// none; before and after, whether FFmpeg is in memory. A program of its own, so that a test can put
// it where it has its module and where it has not.
#include "media/video_file.h"

#include <fstream>
#include <iostream>
#include <string>

namespace {

bool ffmpeg_in_memory() {
  std::ifstream maps("/proc/self/maps");
  for (std::string line; std::getline(maps, line);)
    if (line.find("libavcodec") != std::string::npos || line.find("libavutil") != std::string::npos)
      return true;
  return false;
}

corvane::result<corvane::picture> first_picture(const std::string& file) {
  if (file.size() > 4 && file.compare(file.size() - 4, 4, ".bmp") == 0)
    return corvane::read_picture(file);
  const auto video = corvane::video_file::open(file);
  if (!video)
    return corvane::result<corvane::picture>::fail(video.error);
  return (*video)->first_picture();
}

}  // namespace

int main(int argc, char** argv) {
  const char* const loaded[] = {"without", "with"};
  const bool before = ffmpeg_in_memory();
  const auto picture = first_picture(argc > 1 ? argv[1] : "");
  std::cout << loaded[before ? 1 : 0] << " FFmpeg; ";
  if (picture)
    std::cout << picture->width << " x " << picture->height;
  else
    std::cout << picture.error;
  std::cout << "; " << loaded[ffmpeg_in_memory() ? 1 : 0] << " FFmpeg\n";
  return picture ? 0 : 1;
}
