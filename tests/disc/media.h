// The sample media that the disc tests author from (samples/make.sh).
#pragma once

#include "platform/files/files.h"
#include "platform/files/paths.h"

#include <string>
#include <string_view>

namespace corvane::disc {

/// Native path of a sample file.
inline std::string media(std::string_view name) {
  return join_path(CORVANE_SAMPLE_MEDIA, name);
}

/// Stored path of a sample file.
inline std::string stored_media(std::string_view name) {
  return stored_from_native(media(name));
}

}  // namespace corvane::disc
