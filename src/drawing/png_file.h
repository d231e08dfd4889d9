// Pages as PNG files, which the tools that make stills, and everything else, read.
#pragma once

#include "drawing/page_canvas.h"
#include "media/picture.h"
#include "platform/result.h"

#include <string>

namespace corvane {

/// The bytes of a PNG file, not compressed: it is read once and goes.
std::string png_of(const picture& shown);
/// With what can be seen through.
std::string png_of(const page_canvas& canvas);

}  // namespace corvane
