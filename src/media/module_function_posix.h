// Functions in shared objects of the program's own (decoder_module.h, source_module.h,
// sound_module.h).
#pragma once

#include "platform/result.h"

namespace corvane {

/// The function of this name in the module with this file name, which is loaded if it is not yet,
/// and never unloaded. Looked for each time, so that a module that was put back is found. Fails
/// when the module is missing, cannot be loaded or has no such function.
result<void*> module_function(const char* module_name, const char* function);

}  // namespace corvane
