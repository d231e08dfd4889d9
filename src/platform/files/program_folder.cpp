#include "platform/files/program_folder.h"

namespace corvane {

const std::vector<outside_tool>& outside_tools() {
  static const std::vector<outside_tool> tools{
      {"mplex", {"mplex"}, "mjpegtools", "https://mjpeg.sourceforge.io"},
      {"mpeg2enc", {"mpeg2enc"}, "mjpegtools", "https://mjpeg.sourceforge.io"},
      {"jpeg2yuv", {"jpeg2yuv"}, "mjpegtools", "https://mjpeg.sourceforge.io"},
      {"gm", {"gm"}, "graphicsmagick", "http://www.graphicsmagick.org"},
      {"spumux", {"spumux"}, "dvdauthor", "https://dvdauthor.sourceforge.net"},
      {"dvdauthor", {"dvdauthor"}, "dvdauthor", "https://dvdauthor.sourceforge.net"},
      // Debian's fork of mkisofs has a name of its own; the original, where installed, goes first.
      {"mkisofs", {"mkisofs", "genisoimage"}, "genisoimage", "http://cdrtools.sourceforge.net"},
  };
  return tools;
}

const outside_tool& import_tool() {
  static const outside_tool ffmpeg{"ffmpeg", {"ffmpeg"}, "ffmpeg", "https://ffmpeg.org"};
  return ffmpeg;
}

std::string tool_path(const std::string& folder, const std::string& name, path_style style) {
  return join_path(join_path(folder, "bin", style), name + ".exe", style);
}

std::string_view after_program(std::string_view command_line) {
  const bool in_quotes = command_line.starts_with('"');
  const auto end = command_line.find_first_of(in_quotes ? "\"" : " \t", 1);
  if (end == std::string_view::npos)
    return {};
  command_line.remove_prefix(end + 1);
  const auto first = command_line.find_first_not_of(" \t");
  if (first == std::string_view::npos)
    return {};
  return command_line.substr(first, command_line.find_last_not_of(" \t") + 1 - first);
}

}  // namespace corvane
