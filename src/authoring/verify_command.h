// "verify disc...": whether a finished disc is what it must be, and what the project asks for.
#pragma once

#include "authoring/material_check.h"
#include "disc/finding.h"
#include "examine/verification.h"
#include "project/document.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace corvane {

/// What of the program around it the command needs.
struct verification_equipment {
  std::string app;  ///< program folder, native and absolute
  /// For what the project's files foresee; a look that the user skips foresees less.
  material_equipment material = {};
  /// Has the disc read, with progress for the user. Returns false if he stopped it. Not set: it is
  /// done without a sign.
  std::function<bool(verification&)> read = {};
};

struct verified_disc {
  std::string path;               ///< of the folder or image, native
  bool compared = false;          ///< with the project
  std::vector<finding> findings;  ///< errors first
  std::string table;              ///< what is on the disc, beside what was asked for if compared
};

/// Asks for the disc, by its VIDEO_TS.IFO or its image, and whether it is that of the project that
/// is open, and reads all of it. Returns nullopt if the user cancelled or stopped it.
std::optional<verified_disc> verify_command(document& doc, const verification_equipment& e);

/// What is shown, copied and saved of it: the findings, then the table; LF at line ends.
std::string verified_text(const verified_disc& disc);

/// "save as text...": asks for the file and before overwriting, and tells when it cannot be
/// written.
void save_verified(document& doc, const verified_disc& disc);

}  // namespace corvane
