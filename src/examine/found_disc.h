// What a finished disc is, as traits: from its tables (examine/read_disc.h) and the streams of its
// titles and menus (examine/disc_streams.h).
#pragma once

#include "examine/disc_streams.h"
#include "examine/disc_traits.h"
#include "examine/read_disc.h"

#include <string>
#include <vector>

namespace corvane {

/// Titles are numbered as on the disc, menus as menus_with_pictures has them. `streams`: of those
/// that were read; what only they tell is not said of others.
disc_traits found_disc(const disc_contents& disc, const disc_streams& streams);

/// Where the chapters of a title must begin, by its units, of those asked for: traits `chapters`
/// and `begins` for what is foreseen.
void foresee_chapters(const disc_title_contents& title, const std::string& asked,
                      disc_traits& foreseen);

/// Says, of each chapter that examination foresaw (trait `lands`), where the nearest one begins.
void find_landed_chapters(const disc_title_contents& title, const disc_traits& foreseen,
                          disc_traits& found);

}  // namespace corvane
