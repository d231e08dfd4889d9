#include "ui/menu_editor_fixture.h"

#include "formats/numbers.h"
#include "formats/text.h"
#include "menus/menu_geometry.h"
#include "project/menu_rows.h"
#include "ui/editor/menu_editor_window.h"
#include "ui/main_window.h"
#include "ui/widgets/wx_text.h"

#include <wx/choice.h>
#include <wx/combobox.h>
#include <wx/scrolbar.h>
#include <wx/slider.h>
#include <wx/textctrl.h>

#include <cstdint>

namespace corvane::testing_support {

void menu_editor_test::SetUp() {
  window_test::SetUp();
  p_.chapters = {"0,1.5"};
  ask_ = ask_ui(
      [this] { return std::make_unique<wx_prompts>(*window_, bench_.prefs, folder_.path()); });
  answers_ = std::make_unique<prompts_relay::answered_by>(bench_.ask, *ask_);
}

// What a test changed and left open is discarded, as at the end of the session.
void menu_editor_test::TearDown() {
  on_ui([] {
    if (wxWindow* window = wxWindow::FindWindowByName("tsmenu"))
      window->Close(true);
  });
  EXPECT_TRUE(wait_until([] { return wxWindow::FindWindowByName("tsmenu") == nullptr; }));
  window_test::TearDown();
}

void menu_editor_test::add_menu(const std::string& native_video,
                                const std::vector<std::string>& records,
                                const std::string& native_audio) {
  p_.menulist.push_back(stored_from_native(native_video) + "/" + stored_from_native(native_audio));
  p_.moremenuoptions.emplace_back(new_menu_options);
  p_.menubuttons.resize(p_.menulist.size());
  p_.menubuttons.back() = join(records, "|");
  p_.indexer = static_cast<int>(p_.menulist.size());
}

void menu_editor_test::start() {
  const bool recall = !p_.menubuttons.back().empty();
  on_ui([this, recall] {
    new tsmenu(window_, lent_project(bench_, *ask_, "edit menu", draft_, [this] { ++closed_; }),
               recall);
  });
}

void menu_editor_test::open() {
  start();
  ASSERT_TRUE(wait_until([] {
    auto* window = dynamic_cast<wxTopLevelWindow*>(wxWindow::FindWindowByName("tsmenu"));
    return window != nullptr && window->IsActive() && window->IsShownOnScreen();
  })) << "the editor does not come up";
  // A picture can be chosen once the video has been looked through.
  ASSERT_TRUE(wait_until([] { return control("position")->IsEnabled(); }));
}

bool menu_editor_test::is_open() {
  return ask_ui([] { return wxWindow::FindWindowByName("tsmenu") != nullptr; });
}

void menu_editor_test::close() {
  if (!is_open())
    return;
  window_test::close("tsmenu");
  EXPECT_TRUE(wait_until([] { return wxWindow::FindWindowByName("tsmenu") == nullptr; }));
}

void menu_editor_test::close_and_answer(const std::string& button) {
  window_test::close("tsmenu");
  answer_keep_question(button);
}

void menu_editor_test::answer_keep_question(const std::string& button) {
  const seen_dialog seen = answer_message(
      "The menu has been changed.  Do you want to keep what was changed?\n\n"
      "Yes: it is kept, as with \"accept\".\nNo: it is discarded.\nCancel: back to the menu.",
      button);
  EXPECT_EQ(seen.picture, "warning");
  EXPECT_EQ(seen.over, "tsmenu");
  EXPECT_TRUE(no_dialog());
}

void menu_editor_test::discard() {
  close_and_answer("No");
  EXPECT_TRUE(wait_until([] { return wxWindow::FindWindowByName("tsmenu") == nullptr; }));
}

void menu_editor_test::accept() {
  click_control("Command2");
}

wxPoint menu_editor_test::on_picture(int x, int y) const {
  const wxRect place = ask_ui([] { return control("MediaPlayer1")->GetScreenRect(); });
  const int ymax = largest_y(p_.globalregion);
  return {place.x + (x * place.width + largest_x / 2) / largest_x,
          place.y + (y * place.height + ymax / 2) / ymax};
}

void menu_editor_test::choose(int number) {
  pick("Combo2", number - 1);
}

void menu_editor_test::pick(const std::string& list, int index) {
  click_control(list);
  press("Home");
  for (int i = 0; i < index; ++i)
    press("Down");
  press("Return");
  EXPECT_TRUE(wait_until([&] {
    return dynamic_cast<wxChoice*>(control(list))->GetSelection() == index;
  })) << list
      << " " << index;
}

void menu_editor_test::type_into(const std::string& name, const std::string& text,
                                 const std::string& leave) {
  click_control(name);
  press("ctrl+a");
  type_text(text);
  press(leave);
}

std::string menu_editor_test::text_of(const std::string& name) {
  return ask_ui([&name] {
    wxWindow* window = control(name);
    if (const auto* entry = dynamic_cast<wxTextEntry*>(window))
      return utf8_of(entry->GetValue());
    if (const auto* list = dynamic_cast<wxChoice*>(window))
      return utf8_of(list->GetStringSelection());
    return utf8_of(window->GetLabel());
  });
}

bool menu_editor_test::is_shown(const std::string& name) {
  return ask_ui([&name] { return control(name)->IsShownOnScreen(); });
}

bool menu_editor_test::is_enabled(const std::string& name) {
  return ask_ui([&name] { return control(name)->IsEnabled(); });
}

int menu_editor_test::slider(const std::string& name) {
  return ask_ui([&name] { return dynamic_cast<wxSlider*>(control(name))->GetValue(); });
}

int menu_editor_test::scroll_bar(const std::string& name) {
  return ask_ui([&name] { return dynamic_cast<wxScrollBar*>(control(name))->GetThumbPosition(); });
}

std::string menu_editor_test::place() {
  std::string all;
  for (const char* name : {"leftpos", "ypos", "widthpos", "heightpos"})
    all += (all.empty() ? "" : " ") + std::string(trim(text_of(name)));
  return all;
}

std::string menu_editor_test::stored() const {
  return p_.menubuttons[static_cast<std::size_t>(p_.indexer) - 1];
}

std::vector<std::string> thirty_six_buttons(const std::string& odd, const std::string& even) {
  constexpr int count = 36, beside = 6;
  std::vector<std::string> records;
  records.reserve(count);
  for (int i = 0; i < count; ++i) {
    const int x = 20 + i % beside * 115;
    const int y = 20 + i / beside * 75;
    records.push_back(leading_blank(x) + "/" + leading_blank(y) + "/" + leading_blank(x + 100) +
                      "/" + leading_blank(y + 50) + "/" + (i % 2 == 0 ? odd : even));
  }
  return records;
}

namespace {

std::string little_endian(std::uint32_t value, int bytes) {
  std::string text;
  for (int i = 0; i < bytes; ++i)
    text += static_cast<char>(value >> (8 * i) & 0xff);
  return text;
}

}  // namespace

std::string bmp(int width, int height, int bits, unsigned colour) {
  const std::uint32_t colours = bits <= 8 ? 1u << bits : 0;
  const auto row = static_cast<std::uint32_t>((width * bits + 31) / 32 * 4);
  const std::uint32_t start = 54 + 4 * colours;
  const std::uint32_t size = row * static_cast<std::uint32_t>(height);
  std::string file = "BM" + little_endian(start + size, 4) + little_endian(0, 4);
  file += little_endian(start, 4) + little_endian(40, 4);
  file += little_endian(static_cast<std::uint32_t>(width), 4);
  file += little_endian(static_cast<std::uint32_t>(height), 4);
  file += little_endian(1, 2) + little_endian(static_cast<std::uint32_t>(bits), 2);
  file += little_endian(0, 4) + little_endian(size, 4) + little_endian(0, 8);
  file += little_endian(colours, 4) + little_endian(0, 4);
  for (std::uint32_t i = 0; i < colours; ++i)
    file += little_endian(colour, 4);  // blue first; all the same
  return file + std::string(size, '\0');
}

}  // namespace corvane::testing_support
