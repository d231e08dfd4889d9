// The pictures of message boxes.
#pragma once

namespace corvane {

/// From now on every message box shows the picture of its kind. GTK 3 leaves it out by itself; on
/// Windows the system draws it.
void show_message_pictures();

}  // namespace corvane
