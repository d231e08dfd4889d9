#include "authoring/look_before_run.h"

#include "authoring/asked_disc.h"
#include "project/disc_of.h"
#include "project/edited_xml.h"
#include "project/moved_commands.h"

#include <utility>

namespace corvane {

looked_at_disc disc_to_look_at(const document& doc, const disc_description& rows,
                               const run_paths& where) {
  const result<disc_description> asked = asked_disc(doc.p, where);
  return {asked ? *asked : rows,
          {asked ? edited_xml(doc.p) : "", where.out, where.app, {}, noted_command_targets(doc.p)}};
}

std::optional<author_result> look_before_run(document& doc, const author_equipment& e,
                                             prepared_run& run) {
  const disc_description rows = disc_of(doc.p);
  looked_at_disc look = disc_to_look_at(doc, rows, run.where);
  if (has_subtitles(rows))
    look.around.fonts = run.where.fonts;
  run.looked_at_xml = edited_xml(doc.p);
  material_answer answer =
      look_at_material(look.disc, std::move(look.around), e.material, doc.ask, run.told);
  if (answer.stopped)
    return author_result::cancelled;
  if (!answer.go_on)
    return author_result::refused;
  run.material_unseen = answer.unseen;
  run.told = std::move(answer.told);
  run.accepted = std::move(answer.accepted);
  return std::nullopt;
}

std::optional<author_result> look_at_edit(document& doc, const author_equipment& e,
                                          prepared_run& run) {
  return edited_xml(doc.p) == run.looked_at_xml ? std::nullopt : look_before_run(doc, e, run);
}

}  // namespace corvane
