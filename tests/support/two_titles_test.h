// A project of two titles for menus: "my_film-1.m2v" with three chapters and "other.m2v" with one.
#pragma once

#include "project/menu_rows.h"
#include "support/command_test.h"

#include <string>

namespace corvane::testing_support {

class two_titles_test : public command_test {
 protected:
  two_titles_test() {
    add_files_and_title({"my_film-1.m2v", "a.ac3"});
    add_files_and_title({"other.m2v", "b.ac3"});
    p.chapters[0] = "00:00:00.00,00:01:00.00,00:02:00.00";
  }

  /// A menu of the user's own with this file and no buttons.
  void add_own_menu(const std::string& name) {
    folder.add(name);
    p.menulist.push_back(menu_row_text({folder.stored(name), {}}));
    p.moremenuoptions.emplace_back(new_menu_options);
    p.menubuttons.resize(p.menulist.size());
  }
};

}  // namespace corvane::testing_support
