// What the tests of the menu editor share: a project with a menu, a picture loader, an editor.
#pragma once

#include "menus/menu_editor.h"
#include "project/menu_rows.h"
#include "support/command_test.h"

#include <map>
#include <memory>
#include <string>

namespace corvane::testing_support {

/// Pictures whose sizes a test sets; any other file cannot be decoded.
class known_pictures : public picture_loader {
 public:
  void set(const std::string& native, int width, int height) { sizes_[native] = {width, height}; }
  result<pixel_size> size_of(const std::string& file) const override {
    const auto known = sizes_.find(file);
    return known == sizes_.end() ? result<pixel_size>::fail("it is no picture")
                                 : result<pixel_size>::ok(known->second);
  }

 private:
  std::map<std::string, pixel_size> sizes_;
};

/// Menu 1 of a project; `edit` opens the editor on it with the buttons it is given.
class editor_test : public command_test {
 protected:
  static constexpr const char* choose_first = "Please add/select a button first";

  editor_test() {
    folder.add("menu.m2v");
    p.menulist = {folder.stored("menu.m2v") + "/"};
    p.moremenuoptions = {new_menu_options};
    p.menubuttons = {"", ""};
    p.indexer = 1;
    p.saved = 1;
  }

  /// The editor for menu 1, which has these records (joined by "|").
  menu_editor& edit(const std::string& records = {}) {
    p.menubuttons[0] = records;
    editor_ = std::make_unique<menu_editor>(doc, pictures);
    editor_->recallbuttondata();
    return *editor_;
  }
  /// The same with the first button chosen.
  menu_editor& edit_first(const std::string& records) {
    edit(records).choose(0);
    return *editor_;
  }
  const menu_editor_controls& shown() const { return editor_->controls(); }
  std::string record(std::size_t index = 0) const { return shown().List1.at(index); }

  void expect_choose_first() { ask.expect(box(choose_first, icon::information)); }
  void expect_note(const std::string& text) { ask.expect(box(text, icon::none)); }

  known_pictures pictures;

 private:
  std::unique_ptr<menu_editor> editor_;
};

/// A record of a black underline or box that exits.
inline std::string record_at(int x0, int y0, int x1, int y1) {
  button_record b = button_with_edges(x0, y0, x1, y1);
  b.action = "exit";
  b.highlight = b.select = "black";
  return button_text(b);
}

}  // namespace corvane::testing_support
