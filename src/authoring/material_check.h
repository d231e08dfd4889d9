// The look at a project's material before a run writes anything: what would make it fail, or the
// disc wrong, is shown before, all of it at once.
#pragma once

#include "disc/disc_description.h"
#include "examine/examination.h"
#include "project/prompts.h"

#include <functional>
#include <vector>

namespace corvane {

/// How far a look at the whole files came. Skipped, only what the files' beginnings tell is known;
/// stopped, nothing more is wanted of it.
enum class look_end { whole, skipped, stopped };

/// What of the program around it the look needs.
struct material_equipment {
  /// What is known of files; null: material is not looked at.
  fact_store* facts = nullptr;
  /// Has the examination done, with progress for the user. Not set: it is done without a sign.
  std::function<look_end(examination&)> examine = {};
};

struct material_answer {
  bool go_on = true;                   ///< false: something is wrong, and the user does not want it
  bool unseen = false;                 ///< the user skipped the look at the whole files
  bool stopped = false;                ///< the user stopped the look; nothing was asked
  std::vector<finding> told = {};      ///< what the user has been asked about
  std::vector<finding> accepted = {};  ///< the errors in spite of which the user goes on
  bool operator==(const material_answer&) const = default;
};

/// Examines and, if there are errors or warnings, asks once about all (prompts::go_on_despite).
/// Not where none is among them but those that the user was `told` of, and went on.
material_answer look_at_material(const disc_description& d, examination_around around,
                                 const material_equipment& e, prompts& ask,
                                 const std::vector<finding>& told = {});

/// What is wrong with a project that cannot be authored at all, as far as it is known without
/// reading whole files: errors first, then warnings. Nothing without a store.
std::vector<finding> known_faults(const disc_description& d, examination_around around,
                                  const material_equipment& e);

/// What the log says of a look that was skipped.
inline constexpr const char* skipped_look =
    "INFO: the files of the project were not examined before this run.";

}  // namespace corvane
