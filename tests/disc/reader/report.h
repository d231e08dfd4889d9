// What the project asks for beside what is on the disc, row by row, and as a table.
#pragma once

#include "asked.h"
#include "disc.h"
#include "iso_volume.h"

#include <optional>
#include <string>
#include <vector>

namespace corvane::disc {

enum class verdict { not_compared, agrees, differs };

struct report_row {
  std::string name;   ///< "title 1", "  chapters"
  std::string asked;  ///< empty: nothing asked
  std::string found;
  verdict says = verdict::not_compared;
};

/// A chapter begins with the unit of video that holds its time, so it may be off by one unit: a
/// group of pictures, at most 18 of NTSC or 15 of PAL.
inline constexpr double chapter_tolerance = 0.6;

/// Rows of a disc; with `asked`, compared with it. `image` is that of the disc's image where one
/// was read.
std::vector<report_row> report(const contents& on_disc, const asked_disc* asked,
                               const iso_volume* image);

/// The post command that dvdauthor makes of a command of the project ("jump title 2" ->
/// "JumpVTS_TT 2"); nothing for commands that become more than one.
std::optional<std::string> machine_command(const std::string& post);

/// What a title (1-based) is asked to do when it has been played, the default when it is not said.
std::string post_command(const asked_disc& asked, int title);

bool all_agree(const std::vector<report_row>& rows);

/// The rows as text for a person, columns aligned; the column of what was asked only when
/// `compared`.
std::string table(const std::vector<report_row>& rows, bool compared);

/// Seconds as "0:08.008".
std::string clock_text(double seconds);

}  // namespace corvane::disc
