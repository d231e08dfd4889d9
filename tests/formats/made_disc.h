// A small disc made by hand: the files of its tables, one of its navigation packs, an image.
#pragma once

#include "formats/table_trouble.h"
#include "made_bytes.h"

#include <cstddef>
#include <string>
#include <vector>

namespace corvane::testing_support {

/// Where the tables of a made file begin, in bytes. Each has a sector of its own.
namespace made_manager_at {
inline constexpr std::size_t head = 0, titles = 2048, menus = 2 * 2048, copies = 3 * 2048,
                             cells = 4 * 2048, units = 5 * 2048, first_play = 6 * 2048,
                             size = 7 * 2048;
}
namespace made_titleset_at {
inline constexpr std::size_t head = 0, chapters = 2048, chains = 2 * 2048, menus = 3 * 2048,
                             time_maps = 4 * 2048, menu_cells = 5 * 2048, menu_units = 6 * 2048,
                             cells = 7 * 2048, units = 8 * 2048, size = 9 * 2048;
}

/// VIDEO_TS.IFO: two titles in one titleset, a title menu in German of two cells, first play.
made_bytes made_manager();

/// VTS_01_0.IFO: title 1 of two chapters, title 2 of one; NTSC 16:9; German AC-3, English MP2;
/// French subtitles; a root menu in English and the same in German.
made_bytes made_titleset();

/// A navigation pack with three buttons.
made_bytes made_navigation_pack();

/// An image of VIDEO_TS/VIDEO_TS.IFO (4096 bytes) and VIDEO_TS/VTS_01_1.VOB (10000 bytes), in both
/// volumes at the same places. Every byte of the first is 1, of the second 2.
made_bytes made_image();
/// Sectors of it.
namespace made_image_at {
inline constexpr std::size_t primary = 16, recognition = 18, low_paths = 21, high_paths = 22,
                             root = 23, folder = 24, sequence = 32, reserve = 48, integrity = 64,
                             anchor = 256, partition = 257, udf_root = 260, udf_folder = 262,
                             manager = 270, video = 272, size = 280;
}

/// Sets the sum and the checksum of the UDF descriptor at byte `at` anew.
void seal(made_bytes& image, std::size_t at);

/// All troubles, a line each.
std::string texts(const std::vector<table_trouble>& troubles);

}  // namespace corvane::testing_support
