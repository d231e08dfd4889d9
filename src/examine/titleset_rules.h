// Rules about the streams of a disc together: what the titles of one titleset, and its menus, must
// share, since the disc's tables state it once for all of them.
#pragma once

#include "disc/disc_description.h"
#include "examine/file_facts.h"
#include "examine/rules.h"

#include <functional>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace corvane {

/// What is known of files, by native path. One that is not there has not been read.
using facts_by_path = std::map<std::string, std::shared_ptr<const file_facts>>;

std::span<const rule> file_rules();
std::span<const rule> titleset_rules();

/// All findings about the streams of the titles and menus, each stream by itself and together.
std::vector<finding> stream_findings(const disc_description& d, const facts_by_path& facts);

}  // namespace corvane
