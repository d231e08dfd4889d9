#include "platform/program_folder.h"

#include "platform/paths.h"

namespace corvane {
namespace {

std::string package_of(const std::string& tool) {
  for (const outside_tool& t : outside_tools())
    if (t.name == tool)
      return t.package;
  return tool;
}

}  // namespace

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

std::string missing_tools(const std::string& folder, const std::vector<std::string>& names) {
  std::string text;
  for (const std::string& name : names) {
    if (tool_is_there(folder, name))
      continue;
    text += text.empty() ? "" : "\n";
    text += name + " is not installed.  It comes with the package " + package_of(name) + ".";
  }
  return text;
}

std::string tool_path(const std::string& folder, const std::string& name) {
  return join_path(join_path(folder, "bin"), name + ".exe");
}

}  // namespace corvane
