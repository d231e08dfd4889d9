// What the pages of the menu maker's window hand to it.
#pragma once

#include "authoring/menus_draft.h"
#include "project/prompts.h"

#include <functional>
#include <string>

namespace corvane {

struct maker_events {
  std::function<void()> changed;  ///< the draft has
  /// A file (native path); empty: the user chose none.
  std::function<std::string(const file_dialog&)> choose_file;
};

}  // namespace corvane
