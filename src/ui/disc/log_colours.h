// The colours of a log's lines: errors, warnings, steps.
#pragma once

#include "runner/last_log.h"

class wxTextAttr;

namespace corvane {

/// The look of a line by what it is, readable on the theme's ground. A plain one has none of its
/// own.
wxTextAttr look_of_log_line(log_line_kind kind);

}  // namespace corvane
