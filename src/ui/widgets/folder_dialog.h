// A save dialog that names a folder.
#pragma once

#include <string>

class wxFileDialog;

namespace corvane {

/// Lets a save dialog take the name of a folder, one that exists included, where the toolkit would
/// go into that folder instead (GTK). `name` is the name offered. To be called before it is shown.
/// GTK makes the folder when it is accepted.
void let_name_folder(wxFileDialog& dialog, const std::string& name);

}  // namespace corvane
