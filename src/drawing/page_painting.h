// Pages of menus, painted with the real pictures of films and files.
#pragma once

#include "drawing/page_drawer.h"
#include "formats/painted_page.h"
#include "platform/result.h"

#include <memory>

namespace corvane {

/// Fails, with a sentence without a full stop, as `make_letter_drawer` does
/// (drawing/letter_drawer.h). Copies share what they have read.
result<page_painter> make_page_painter();

/// The same with a drawer that is there. Pages whose letters cannot all be drawn are not painted.
page_painter page_painter_of(std::unique_ptr<page_drawer> drawer);

}  // namespace corvane
