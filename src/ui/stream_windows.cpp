#include "ui/stream_windows.h"

#include "tools/language_tags.h"
#include "ui/language_window.h"
#include "ui/main_window.h"

#include <optional>
#include <utility>

namespace corvane {

void edit_tags(main_window& main) {
  std::optional<language> model;
  main.run([&model](workbench& w) { model = language::open(w); });
  if (model)
    main.lend([&](workbench&, std::function<void()> closed) -> wxTopLevelWindow* {
      auto* dialog = new language_window(&main, std::move(*model), std::move(closed));
      dialog->Show();
      return dialog;
    });
}

}  // namespace corvane
