// "corvane-author --make-menus": menus of a project's titles.
#pragma once

#include "apps/corvane-author/arguments.h"
#include "apps/corvane-author/report.h"
#include "formats/painted_page.h"
#include "import/import_batch.h"

#include <functional>

namespace corvane {

/// Makes the menus and saves the project. Returns the exit status; everything there is to say goes
/// to the report. `painter` is called once, when all else is well.
int make_menus_of_project(const author_arguments& arguments, report& out,
                          const source_prober& probe,
                          const std::function<result<page_painter>()>& painter);

}  // namespace corvane
