#include "platform/system_version.h"

namespace corvane {
namespace {

/// Of version 1903.
constexpr unsigned long least_build = 18362;
constexpr unsigned utf8_code_page = 65001;

}  // namespace

// An older one may have been given UTF-8 for all programs, by its "beta" setting.
failure why_windows_is_too_old(unsigned long build, unsigned code_page) {
  if (build >= least_build || code_page == utf8_code_page)
    return std::nullopt;
  return "Corvane needs Windows 10, version 1903 (build 18362), or later; this is build " +
         std::to_string(build) + ".  Names with other than English letters would be damaged here.";
}

}  // namespace corvane
