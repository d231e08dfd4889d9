#include "runner/tools/tool_ways.h"

#include "runner/tools/dvdauthor.h"
#include "runner/tools/gm.h"
#include "runner/tools/jpeg2yuv.h"
#include "runner/tools/mkisofs.h"
#include "runner/tools/mplex.h"
#include "runner/tools/spumux.h"

#include <array>
#include <cstdint>
#include <cstdio>

namespace corvane {
namespace {

std::string hexadecimal(std::uint32_t number) {
  std::array<char, 16> text{};
  std::snprintf(text.data(), text.size(), "0x%08X", static_cast<unsigned>(number));
  return text.data();
}

}  // namespace

const tool_ways& ways_of(std::string_view name) {
  static const tool_ways none;
  static const spumux_ways spumux;
  static const dvdauthor_ways dvdauthor;
  static const gm_ways gm;
  static const jpeg2yuv_ways jpeg2yuv;
  static const mkisofs_ways mkisofs;
  static const mplex_ways mplex;
  if (name == "spumux.exe")
    return spumux;
  if (name == "dvdauthor.exe")
    return dvdauthor;
  if (name == "gm.exe")
    return gm;
  if (name == "jpeg2yuv.exe")
    return jpeg2yuv;
  if (name == "mkisofs.exe")
    return mkisofs;
  if (name == "mplex.exe")
    return mplex;
  return none;
}

std::string name_in_path(const std::string& path) {
  const auto last = path.find_last_of(path_separators);
  return last == std::string::npos ? path : path.substr(last + 1);
}

std::string complaint_about(const std::string& name, const program_end& end) {
  switch (end.how) {
    case program_end::kind::exited:
      if (end.number == 0)
        return {};
      return name + " ended with status " + std::to_string(end.number);
    case program_end::kind::by_signal:
      return name + " was ended by signal " + std::to_string(end.number) + " (" + end.text + ")";
    case program_end::kind::by_exception:
      return name + " was ended by exception " + hexadecimal(end.number) + " (" + end.text + ")";
    case program_end::kind::not_started:
      break;
  }
  return name + " could not be started: " + end.text;
}

}  // namespace corvane
