// Pages of menus, painted with the real pictures of films and files.
#pragma once

#include "formats/painted_page.h"
#include "platform/result.h"

namespace corvane {

/// Fails, with a sentence without a full stop, as `make_letter_drawer` does
/// (drawing/letter_drawer.h). Copies share what they have read.
result<page_painter> make_page_painter();

}  // namespace corvane
