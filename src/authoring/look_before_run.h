// The look at what a run is asked to make and at its files: when the run is prepared, and once more
// when it starts, if the XML editor has left another disc to be made by then.
#pragma once

#include "authoring/author.h"

#include <optional>

namespace corvane {

/// A disc and what stands around it, as rules look at them.
struct looked_at_disc {
  disc_description disc;
  examination_around around;
};

/// With hand-edited XML the disc that it asks for; `rows`, if it cannot be read.
looked_at_disc disc_to_look_at(const document& doc, const disc_description& rows,
                               const run_paths& where);

/// Looks and asks; the user is not asked about what he was told in a look of this run before. Notes
/// the answer in `run`. Nothing when the run goes on.
std::optional<author_result> look_before_run(document& doc, const author_equipment& e,
                                             prepared_run& run);

/// The same, if another disc is asked for than at the look before.
std::optional<author_result> look_at_edit(document& doc, const author_equipment& e,
                                          prepared_run& run);

}  // namespace corvane
