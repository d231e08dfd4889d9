// Random editing, undone and redone: what the project would hold is the same, byte for byte.
//
// Each sequence is one of everything that the editor's model can do, in any order, with undo and
// redo between. A tenth of the sequences is taken, always the same, and all of them with
// CORVANE_WHOLE_SETS.
#include "disc/large_sets.h"
#include "editor_test.h"
#include "menus/menu_editor.h"
#include "project/project_file.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <functional>
#include <map>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace corvane {
namespace {

using testing_support::record_at;
using testing_support::rows;

constexpr int all_sequences = 2000;
constexpr std::size_t most_buttons = 40;

class dice {
 public:
  explicit dice(unsigned seed) : random_(seed) {}

  /// 0 to n - 1.
  int below(int n) { return static_cast<int>(random_() % static_cast<unsigned>(n)); }
  int between(int least, int most) { return least + below(most - least + 1); }
  bool coin() { return below(2) == 0; }
  template <typename Range>
  auto one_of(const Range& range) {
    return range[static_cast<std::size_t>(below(static_cast<int>(std::size(range))))];
  }

 private:
  std::mt19937 random_;
};

/// Gives a file at random to whoever asks for one, and says "ok" to everything else.
class generous_prompts : public prompts {
 public:
  generous_prompts(dice& d, rows files) : dice_(d), files_(std::move(files)) {}
  answer message(const message_box& /*box*/) override { return answer::ok; }
  std::string open_file(const file_dialog& /*dialog*/) override {
    return dice_.below(4) == 0 ? std::string() : dice_.one_of(files_);
  }
  std::string save_file(const file_dialog& /*dialog*/) override { return {}; }
  std::string input(const input_box& /*box*/) override { return {}; }

 private:
  dice& dice_;
  rows files_;
};

// Everything that can be done ---------------------------------------------------------------------

/// A button of the menu, sometimes one that there is not.
int any_button(const menu_editor& e, dice& d) {
  return d.below(static_cast<int>(e.controls().List1.size()) + 2) - 1;
}

drag_ways any_ways(dice& d) {
  const bool keeps = d.below(4) == 0, free = d.below(4) == 0;
  return {keeps, free};
}

dragged_edges any_edges(dice& d) {
  dragged_edges which;
  (d.coin() ? which.left : which.right) = d.below(3) != 0;
  (d.coin() ? which.top : which.bottom) = d.below(3) != 0;
  return which;
}

void drag_somewhere(menu_editor& e, dice& d) {
  e.begin_drag();
  const bool moves = d.coin();
  const dragged_edges which = any_edges(d);
  for (int i = d.below(6); i >= 0; --i) {
    e.hold(any_ways(d));
    const int x = d.between(-40, 760), y = d.between(-40, 520);
    if (moves)
      e.move_to(x, y);
    else
      e.drag_edges(which, x, y);
  }
  e.end_drag();
}

void select_some(menu_editor& e, dice& d) {
  std::vector<int> buttons;
  for (int i = d.below(6); i > 0; --i)
    buttons.push_back(any_button(e, d));
  e.select(buttons, any_button(e, d));
}

repetition any_repetition(dice& d) {
  return {d.between(0, 3), d.between(0, 3), d.below(30), d.below(30),
          static_cast<action_count>(d.below(3))};
}

std::string any_number(dice& d) {
  return d.below(8) == 0 ? "x" : std::to_string(d.between(-20, 800));
}

std::string any_time(dice& d) {
  return d.below(8) == 0 ? "0\t1" : "00:00:0" + std::to_string(d.below(9)) + ".0";
}

const std::array<const char*, 4> colours = {"black", "cyan", "white", "orange"};
const std::array<const char*, 5> actions = {"exit", "jump menu 1", "call me",
                                            "jump title 1 chapter  2", "a/b"};

using one_event = void (*)(menu_editor&, dice&);

/// Whether it can change the menu, and must have done so in one sequence or the other.
struct named_event {
  const char* name;
  bool changes;
  one_event run;
};

const std::vector<named_event> events = {
    {"add", true, [](menu_editor& e, dice&) { e.add_button(); }},
    {"add and pick", true,
     [](menu_editor& e, dice&) {
       e.add_button();
       e.pick_added();
     }},
    {"choose", false, [](menu_editor& e, dice& d) { e.choose(any_button(e, d)); }},
    {"delete", true, [](menu_editor& e, dice&) { e.delete_button(); }},
    {"delete selected", true, [](menu_editor& e, dice&) { e.delete_selected(); }},
    {"HScroll1", true, [](menu_editor& e, dice& d) { e.scroll_x(d.below(800)); }},
    {"VScroll1", true, [](menu_editor& e, dice& d) { e.scroll_y(d.below(600)); }},
    {"Slider1", true, [](menu_editor& e, dice& d) { e.slide_width(d.below(800)); }},
    {"Slider2", true, [](menu_editor& e, dice& d) { e.slide_height(d.below(600)); }},
    {"leftpos", true, [](menu_editor& e, dice& d) { e.type_leftpos(any_number(d)); }},
    {"ypos", true, [](menu_editor& e, dice& d) { e.type_ypos(any_number(d)); }},
    {"widthpos", true, [](menu_editor& e, dice& d) { e.type_widthpos(any_number(d)); }},
    {"heightpos", true, [](menu_editor& e, dice& d) { e.type_heightpos(any_number(d)); }},
    {"action", true, [](menu_editor& e, dice& d) { e.set_action(d.one_of(actions)); }},
    {"highlight", true, [](menu_editor& e, dice& d) { e.set_highlight(d.one_of(colours)); }},
    {"select", true, [](menu_editor& e, dice& d) { e.set_select(d.one_of(colours)); }},
    {"thickness", true, [](menu_editor& e, dice& d) { e.slide_thickness(d.below(25)); }},
    {"loop", true, [](menu_editor& e, dice& d) { e.set_loop(d.coin()); }},
    {"advanced", false, [](menu_editor& e, dice& d) { e.set_advanced(d.coin()); }},
    {"spu begin", true, [](menu_editor& e, dice& d) { e.set_spubegin(any_time(d)); }},
    {"spu end", true, [](menu_editor& e, dice& d) { e.set_spuend(any_time(d)); }},
    {"use bmp button", true, [](menu_editor& e, dice&) { e.bmphighlight(); }},
    {"change select", true, [](menu_editor& e, dice&) { e.bmpselect(); }},
    {"remove bmp", true, [](menu_editor& e, dice&) { e.removebmp(); }},
    {"move to", true,
     [](menu_editor& e, dice& d) { e.move_to(d.between(-40, 760), d.between(-40, 520)); }},
    {"arrow keys", true,
     [](menu_editor& e, dice& d) {
       for (int i = d.below(4); i >= 0; --i)
         e.move_by(d.between(-10, 10), d.between(-10, 10));
     }},
    {"arrow keys with Shift", true,
     [](menu_editor& e, dice& d) {
       for (int i = d.below(4); i >= 0; --i)
         e.size_by(d.between(-10, 10), d.between(-10, 10));
     }},
    {"drag", true, drag_somewhere},
    {"drag edges", true,
     [](menu_editor& e, dice& d) { e.drag_edges(any_edges(d), d.below(760), d.below(520)); }},
    {"press", false, [](menu_editor& e, dice& d) { e.press(any_button(e, d), d.coin()); }},
    {"press with more", false, [](menu_editor& e, dice& d) { e.press(any_button(e, d), true); }},
    {"select some", false, select_some},
    {"select all", false, [](menu_editor& e, dice&) { e.select_all(); }},
    {"up", true, [](menu_editor& e, dice&) { e.move_up(); }},
    {"down", true, [](menu_editor& e, dice&) { e.move_down(); }},
    {"before", true, [](menu_editor& e, dice& d) { e.move_before(any_button(e, d)); }},
    {"duplicate", true, [](menu_editor& e, dice&) { e.duplicate(); }},
    {"align", true, [](menu_editor& e, dice& d) { e.align(static_cast<alignment>(d.below(6))); }},
    {"distribute", true,
     [](menu_editor& e, dice& d) { e.distribute(static_cast<direction>(d.below(2))); }},
    {"same gap", true,
     [](menu_editor& e, dice& d) { e.make_gaps_equal(static_cast<direction>(d.below(2))); }},
    {"same width", true, [](menu_editor& e, dice&) { e.make_same_width(); }},
    {"same height", true, [](menu_editor& e, dice&) { e.make_same_height(); }},
    {"even lines", true, [](menu_editor& e, dice&) { e.put_on_even_lines(); }},
    {"repeat", true, [](menu_editor& e, dice& d) { e.repeat(any_repetition(d)); }},
    {"undo", false, [](menu_editor& e, dice&) { e.undo(); }},
    {"redo", false, [](menu_editor& e, dice&) { e.redo(); }},
};

// ------------------------------------------------------------------------------------------------

class MenuEditorRandom : public testing_support::editor_test {
 protected:
  MenuEditorRandom() {
    add_files_and_title({"one.vob"});
    add_files_and_title({"two.vob"});
    p.chapters = {"00:00:00.00,00:05:00.00,00:10:00.00", "00:00:00.00,00:05:00.00"};
  }
  /// Files of bitmaps: two of one size, one of another, one that has too many colours.
  rows bitmaps() {
    rows files;
    for (const auto& [name, width, bits] :
         {std::tuple{"a.bmp", 60, 4}, {"b.bmp", 60, 4}, {"c.bmp", 90, 2}, {"d.bmp", 60, 24}}) {
      std::string file(300, '\x7f');
      file[28] = static_cast<char>(bits);
      pictures.set(folder.path(name), width, 30);
      files.push_back(folder.add(name, file));
    }
    return files;
  }
  /// The whole project as it would be saved if the menu was kept now.
  std::string kept(const menu_editor& e) const {
    project copy = p;
    e.keep_in(copy);
    return project_text(copy);
  }
  /// Does `count` things at random; tells which of them changed the menu.
  void edit_at_random(menu_editor& e, dice& d, int count) {
    for (int i = 0; i < count; ++i) {
      const named_event& event = d.one_of(events);
      const std::string before = kept(e);
      event.run(e, d);
      if (kept(e) != before)
        ++changes_[event.name];
      if (e.controls().List1.size() > most_buttons) {
        e.select_all();
        e.select({e.selected().begin() + 5, e.selected().end()}, 5);
        e.delete_selected();
      }
    }
    while (e.redo_name())
      e.redo();
  }
  void expect_undone_and_redone(menu_editor& e, const std::string& begin) {
    rows states = {kept(e)};
    while (e.undo_name()) {
      e.undo();
      states.push_back(kept(e));
    }
    EXPECT_EQ(states.back(), begin);
    EXPECT_FALSE(e.is_changed());
    for (std::size_t i = states.size() - 1; i-- > 0;) {
      ASSERT_TRUE(e.redo_name());
      e.redo();
      EXPECT_EQ(kept(e), states[i]) << i << " steps from the end";
    }
    EXPECT_FALSE(e.redo_name());
    steps_ += states.size() - 1;
  }

  std::map<std::string, int> changes_;  ///< by the name of the event
  std::size_t steps_ = 0;
};

TEST_F(MenuEditorRandom, SequencesUndoneAndRedoneAreEqualByteForByte) {
  const rows files = bitmaps();
  const std::string bitmap_record =
      " 10/ 20/ 70/ 50/exit/" + folder.stored("a.bmp") + "/" + folder.stored("b.bmp");
  const rows beginnings = {
      "", record_at(100, 100, 200, 140),
      record_at(100, 100, 200, 140) + "|" + bitmap_record + "|" + record_at(400, 300, 450, 302),
      record_at(0, 0, 9, 3) + "| | 700/ 470/ 900/ 900/call me/red/blue"};
  const int sequences = disc::part_of_set(all_sequences);
  for (int i = 0; i < sequences && !HasFailure(); ++i) {
    SCOPED_TRACE("sequence " + std::to_string(i));
    dice d(static_cast<unsigned>(i) + 1);
    generous_prompts user(d, files);
    const prompts_relay::answered_by answers(doc.ask, user);
    menu_editor& e = edit(d.one_of(beginnings));
    const std::string begin = kept(e);
    edit_at_random(e, d, i % 100 == 0 ? 1500 : d.between(5, 60));
    expect_undone_and_redone(e, begin);
  }
  for (const named_event& event : events)
    EXPECT_TRUE(!event.changes || changes_[event.name] > 0) << event.name << " did nothing";
  EXPECT_GT(steps_, static_cast<std::size_t>(sequences) * 12);
}

}  // namespace
}  // namespace corvane
