// Whether this system can run the program.
#pragma once

#include "platform/result.h"

namespace corvane {

/// Why it cannot, as a sentence for the user: a Windows before Windows 10, version 1903, gives no
/// program UTF-8 as its code page, and would mangle every name with letters beyond English ones.
/// Other systems always can.
failure why_system_is_too_old();

/// The same of a Windows by its build number and the code page that it gives this program.
failure why_windows_is_too_old(unsigned long build, unsigned code_page);

}  // namespace corvane
