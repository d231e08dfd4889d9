// The files of make_sources.sh, and what is told of them.
#pragma once

#include "formats/source_facts.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace corvane::media_test {

/// Native path of a file.
std::string source(std::string_view name);

/// The facts of a file; a failure of the test, and no facts, when there are none.
source_facts probed(std::string_view name);

/// The same of one of its streams.
source_stream stream_of(std::string_view name, std::size_t index);

}  // namespace corvane::media_test
