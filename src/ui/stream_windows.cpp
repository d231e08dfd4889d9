#include "ui/stream_windows.h"

#include "project/font_list.h"
#include "tools/language_tags.h"
#include "tools/subtitles.h"
#include "ui/main_window.h"
#include "ui/subtitles/language_window.h"
#include "ui/subtitles/subtitles_window.h"

#include <wx/utils.h>

#include <optional>
#include <utility>

namespace corvane {
namespace {

/// Takes long when the system lists its fonts for the first time.
font_list fonts_of_system() {
  const wxBusyCursor busy;
  return system_fonts();
}

}  // namespace

void edit_subtitles(main_window& main) {
  std::optional<Subtitles> model;
  main.run([&model](document& doc) { model = Subtitles::open(doc, fonts_of_system()); });
  if (model)
    main.open_editor([&](document&, std::function<void()> closed) -> wxTopLevelWindow* {
      auto* dialog = new subtitles_window(&main, main.app(), std::move(*model), std::move(closed));
      dialog->Show();
      return dialog;
    });
}

void edit_tags(main_window& main) {
  std::optional<language> model;
  main.run([&model](document& doc) { model = language::open(doc); });
  if (model)
    main.open_editor([&](document&, std::function<void()> closed) -> wxTopLevelWindow* {
      auto* dialog = new language_window(&main, std::move(*model), std::move(closed));
      dialog->Show();
      return dialog;
    });
}

}  // namespace corvane
