// Menu subpictures: spumux control files and the gm commands that draw the button pictures.
#pragma once

#include "authoring/run_paths.h"
#include "disc/disc_description.h"

#include <string>

namespace corvane {

/// "720x480", or "720x576" for "PAL".
std::string video_size(const disc_description& d);

/// Text of <app>/menu<m>.xml for menu `menu` (1-based).
std::string menu_subpicture_xml(const disc_description& d, const run_paths& where, int menu);

/// The script lines that draw highlight<m>.png and select<m>.png, each ended by CR LF.
std::string button_image_commands(const disc_description& d, const run_paths& where, int menu);

}  // namespace corvane
