// What of findings stands in JSON of other things, too.
#pragma once

#include "disc/finding.h"

#include <string>

namespace corvane {

/// {"of": "title", "number": 2, "part": "audio", "partNumber": 1}; of what is not set there is no
/// member.
std::string json_of_item(const finding_item& item);

}  // namespace corvane
