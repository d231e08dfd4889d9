#include "ui/disc/finding_places.h"

#include "ui/editor/menu_windows.h"
#include "ui/main_window.h"
#include "ui/subtitles/language_window.h"
#include "ui/subtitles/subtitles_window.h"
#include "ui/video/chapter_window.h"

namespace corvane {

void open_place(main_window& main, const finding_target& place) {
  if (place.title > 0)
    main.select_title(place.title - 1);
  switch (place.where) {
    case finding_target::place::chapters:
      edit_chapters_at(main, place.part);
      break;
    case finding_target::place::languages:
      edit_languages(main);
      break;
    case finding_target::place::subtitles:
      edit_subtitles_at(main, place.part, place.seconds);
      break;
    case finding_target::place::menu:
      edit_menu_at(main, place.menu, place.part);
      break;
    case finding_target::place::title_command:
      edit_navcommands_at(main, place.title);
      break;
    case finding_target::place::first_play:
      edit_navcommands_at(main, 0);
      break;
    case finding_target::place::none:
    case finding_target::place::title:
      break;
  }
}

}  // namespace corvane
