#include "platform/program_folder.h"

#include "platform/paths.h"

namespace corvane {

const std::vector<outside_tool>& outside_tools() {
  static const std::vector<outside_tool> tools{
      {"mplex", {"mplex"}, "mjpegtools"},
      {"mpeg2enc", {"mpeg2enc"}, "mjpegtools"},
      {"jpeg2yuv", {"jpeg2yuv"}, "mjpegtools"},
      {"gm", {"gm"}, "graphicsmagick"},
      {"spumux", {"spumux"}, "dvdauthor"},
      {"dvdauthor", {"dvdauthor"}, "dvdauthor"},
      // Debian's fork of mkisofs has a name of its own; the original, where installed, goes first.
      {"mkisofs", {"mkisofs", "genisoimage"}, "genisoimage"},
  };
  return tools;
}

std::string tool_path(const std::string& folder, const std::string& name) {
  return join_path(join_path(folder, "bin"), name + ".exe");
}

}  // namespace corvane
