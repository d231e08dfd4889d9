// The commands of the "menus" menu and the jump-table switch: whole conversations through
// `prompts`. A menu stands in three lists by its number (project/project.h): its streams in
// `menulist`, its options in `moremenuoptions`, its buttons in `menubuttons`.
#pragma once

#include "project/document.h"

namespace corvane {

/// "add new titleset menu": asks for the video and for the audio, which may be none, and adds the
/// menu without buttons. True: the editor is to be shown for the new menu, whose number is in
/// project::indexer. False: the user cancelled or was refused; nothing has changed.
bool addmenu_command(document& doc);

/// The dialog in which a menu's video is chosen.
file_dialog menu_video_dialog();

/// Whether the project takes one more menu; when not, that is told.
bool has_room_for_menu(document& doc);

/// "edit existing titleset menu", "remove titleset menu": true when the picker is to be shown with
/// its caption for it (menus/menu_picker.h). False, without a word, when there are no menus.
bool editmenu_command(document& doc);
bool remove_menu_command(document& doc);

/// "use JumpTable": toggles the check mark and the preference while the project has no menus.
void jumptable_command(document& doc);

}  // namespace corvane
