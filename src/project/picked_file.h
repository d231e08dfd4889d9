// Files that the user chooses: in the form that rows hold, and told at once when they are of
// another kind than what they were chosen for.
#pragma once

#include "project/document.h"

#include <optional>
#include <string>

namespace corvane {

/// What a file is chosen for.
enum class file_use { title, menu_video, sound, jpeg, bitmap, subtitles, project };

/// Shows the open dialog and gives the chosen file in stored form. Returns nullopt if the user
/// cancelled, if the name cannot be stored (a message was shown), or if the file is of another kind
/// and the user does not want it.
std::optional<std::string> pick_file(document& doc, const file_dialog& dialog, file_use use);

/// A file that the user chose (native path), in stored form. Returns nullopt if its name cannot be
/// stored (a message was shown).
std::optional<std::string> stored_or_told(document& doc, const std::string& native);

/// Whether a file (native path) may be taken. One whose first bytes say that it is something else
/// is told, with what it is and what can be done with it, and taken only if the user says so; one
/// that cannot be read, or tells nothing, may be taken.
bool may_be_taken(document& doc, const std::string& native, file_use use);

/// Whether a file (native path) that is no title is one for "import...": a film that is neither
/// video nor a program stream, whatever its name is, or a program stream that was refused.
bool is_for_import(const std::string& native);

/// Whether a file (native path) is a film, by its first bytes, in whatever form.
bool is_film(const std::string& native);

/// Whether a file (native path) is a picture, by its first bytes, of whatever kind.
bool is_picture_file(const std::string& native);

/// What a file (native path) is by its first bytes, as in a sentence: "an MP4 film"; empty when
/// they tell nothing.
std::string kind_of_file(const std::string& native);

}  // namespace corvane
