#include "authoring/foreseen_run.h"

#include "authoring/asked_disc.h"
#include "examine/foreseen_disc.h"
#include "examine/told_before.h"
#include "project/disc_of.h"
#include "project/edited_xml.h"

namespace corvane {

foreseen_run foreseen_of(const project& p, const run_paths& where, const fact_store* facts,
                         const std::vector<finding>& accepted) {
  foreseen_run run;
  run.out = where.out;
  run.image = disc_of(p).image;
  const result<disc_description> asked = asked_disc(p, where);
  if (!asked)
    return run;
  run.told = told_of(accepted, *asked);
  facts_by_path known;
  if (facts != nullptr)
    for (const std::string& file : files_of(*asked))
      if (auto found = facts->find(file, false))
        known.emplace(file, std::move(found));
  run.disc = foreseen_disc(*asked, known, !edited_xml(p).empty());
  foresee_cues(*asked, run.disc);
  run.chapters = chapters_asked(*asked);
  return run;
}

}  // namespace corvane
