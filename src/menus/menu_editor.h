// The menu editor `tsmenu` without its window: what its controls hold and what each event does.
//
// The window makes one when it opens, for menu project::indexer, and keeps it until it closes; the
// project, the prompts and the picture loader must live as long. It calls the function of each
// event and then shows controls(). The project is written by accept() alone: destroying the editor
// discards every change.
//
// A button is chosen in `Combo2`, or just added. The chosen one's record is written by every change
// of a position, size, action or colour, from what all of these controls show. Adding a button does
// not show its values: they are shown once it is picked in `Combo2`; until then the window lets
// nobody change them (shows_another()).
//
// Every event that changes the menu is a step that can be undone; a drag is one, and so is a run of
// events of one scroll bar, one slider or the arrow keys on one button.
//
// Records come from project files too and can hold anything; they stay as they are until their
// button is picked, which brings it into the picture.
//
// Units: menu pixels, x 0 to 719, y 0 to ymax(). Buttons are 0-based here, 1-based in texts.
#pragma once

#include "menus/bitmaps.h"
#include "menus/button_alignment.h"
#include "menus/button_snapping.h"
#include "menus/look_cures.h"
#include "menus/menu_editor_controls.h"
#include "menus/menu_geometry.h"
#include "menus/menu_history.h"
#include "menus/repeated_buttons.h"
#include "project/document.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

/// Which edges of the outline a drag moves: at most one of left and right, of top and bottom.
struct dragged_edges {
  bool left = false, top = false, right = false, bottom = false;
};

/// How a drag in the picture goes.
struct drag_ways {
  bool keeps_direction = false;  ///< it moves across or down, by what it moved more
  bool free = false;             ///< nothing draws it
  bool operator==(const drag_ways&) const = default;
};

/// A button that is not the outlined one, as the picture shows it faintly.
struct faint_button {
  int index = 0;  ///< 0-based
  menu_rectangle edges;
};

class menu_editor {
 public:
  /// Load.
  menu_editor(document& doc, const picture_loader& pictures);
  menu_editor(const menu_editor&) = delete;
  menu_editor& operator=(const menu_editor&) = delete;

  const menu_editor_controls& controls() const { return c_; }
  int ymax() const { return ymax_; }

  /// Native path of the menu's video; empty when the project does not have the menu.
  std::string video() const;

  /// Native path of the menu's audio; empty when it has none.
  std::string audio() const;

  /// The last step of load: tells when the video cannot be shown (`width` of 100 or less; 0 x 0
  /// when the player could not open it) or is of the other region's height. Pixels of the video.
  void playback_check(int width, int height);

  /// After load, for a menu that existed before: its buttons.
  void recallbuttondata();

  void add_button();       ///< `Command1`
  void choose(int index);  ///< a click on `Combo2`; also a click on another button in the picture
  void pick_added() { choose(c_.Combo2_index); }  ///< the same for the button just added
  void delete_button();  ///< `deletebutton`; afterwards the next one is chosen

  // Each of these refuses with "Please add/select a button first" when no button is chosen. A value
  // that the control shows already is no change. Scroll bars and sliders keep to their range.
  void scroll_x(int value);      ///< `HScroll1`
  void scroll_y(int value);      ///< `VScroll1`
  void slide_width(int value);   ///< `Slider1`; ignored while disabled, like the next
  void slide_height(int value);  ///< `Slider2`

  // Leaving a field. A text out of the field's bounds, or without a number, is ignored: the field
  // shows its value again.
  void type_leftpos(const std::string& text);
  void type_ypos(const std::string& text);
  void type_widthpos(const std::string& text);
  void type_heightpos(const std::string& text);

  /// `Combo1` picked, changed or left. A text that a record cannot hold is refused with a message.
  void set_action(const std::string& text);

  /// The same for all selected buttons: the first of them gets the action, each other one the same
  /// or the next. Where there is no next one left, the buttons keep what they do.
  void set_actions(const std::string& first, action_count how);

  /// How many of the selected buttons it would give an action.
  int outlook_of_actions(const std::string& first, action_count how) const;

  // A pick in `Colorhighlight`, `ColorSelect`; they offer button_colours and take nothing else.
  void set_highlight(const std::string& colour);
  void set_select(const std::string& colour);

  void slide_thickness(int value);  ///< ignored while disabled
  void set_loop(bool checked);      ///< `Check1`
  void set_advanced(bool checked);  ///< `Check2`

  // Leaving `spubegin`, `spuend`. A text that the options row cannot hold is refused with a
  // message.
  void set_spubegin(const std::string& text);
  void set_spuend(const std::string& text);

  void bmphighlight();  ///< "use bmp button"
  void bmpselect();     ///< "change select"
  void removebmp();     ///< back to a black underline or box

  /// The names of the steps that are next to be undone and redone ("move button 3"); nullopt if
  /// there is none.
  std::optional<std::string> undo_name() const;
  std::optional<std::string> redo_name() const;
  void undo();
  void redo();

  /// Whether the menu is another than when the editor opened. To choose a button changes nothing.
  bool is_changed() const;

  /// Whether the chosen button was just added, so that the controls show the values of another one,
  /// which the next change would write over it.
  bool shows_another() const { return c_.Combo2_index != shown_ && c_.Combo2_index >= 0; }

  /// The pointer takes hold of a button, and lets go of it: what it moves meanwhile is one step,
  /// and is drawn to the lines near it.
  void begin_drag();
  void hold(drag_ways ways);  ///< of the drag that is on
  void end_drag();

  /// The lines on which stands what is dragged now; none without a drag.
  const std::vector<snap_guide>& guides() const;

  // Several buttons can be selected; the chosen one is one of them. To choose one selects it alone.

  /// 0-based, in order.
  const std::vector<int>& selected() const { return selected_; }
  bool is_selected(int index) const;

  /// Selects these, of which `chosen` is the one whose values are shown; blank records cannot be
  /// selected. None: no button is chosen.
  void select(std::vector<int> buttons, int chosen);
  void select_all();

  /// The pointer presses on a button in the picture. With `more` it joins the others, or leaves
  /// them. Without, it is chosen, and those selected with it stay so, to be moved together.
  void press(int index, bool more);

  /// The same without a pointer: presses on the button behind the chosen one, or before it, as long
  /// as there is one. Where none is chosen, on the first, or the last.
  void press_next(bool back, bool more);

  // The order of the buttons: numbers and actions go along.
  void move_up();
  void move_down();
  void move_before(int index);  ///< the selected ones come before this one; behind all: the count

  void delete_selected();  ///< all of them; of one, `deletebutton`
  void duplicate();        ///< below, or beside, or a little aside; the copies are selected

  // Each does nothing unless two buttons are selected. The chosen one gives size to the others;
  // bitmaps keep theirs.
  void align(alignment to);
  void distribute(direction along);
  void make_gaps_equal(direction along);
  void make_same_width();
  void make_same_height();

  void put_on_even_lines();  ///< of each selected button, upper and lower edge

  // The looks: pairs of highlight and select.

  /// Whether spumux would find a way to show them, and if not, what helps.
  bool are_looks_good() const;
  look_cures cures_for_looks() const;
  void order_by_look();    ///< those of one look follow each other
  void use_fewer_looks();  ///< what cures_for_looks() has of it
  void make_same_look();   ///< gives the other selected ones that of the chosen button

  /// How many buttons there would be of the chosen one, itself included, and why not more.
  struct repeat_outlook {
    int wanted = 0;
    int made = 0;
    bool picture_is_full = false;  ///< not all of them fit into it
    bool no_more_actions = false;  ///< there are no more titles or chapters
  };
  repeat_outlook outlook(const repetition& how) const;
  /// What is most likely wanted of the chosen one.
  action_count usual_repetition() const;
  void repeat(const repetition& how);

  /// The user closes the window. True: it may close; what was changed is kept, or he discards it,
  /// or there is nothing. False: it stays, since he said so or what he wants to keep is refused.
  bool may_close();

  /// `Command2`: true when the menu was written back, and the window closes; false when buttons
  /// overlap, which was told.
  bool accept();

  /// What stands here and was not accepted, into a copy of the project that is kept in case the
  /// program dies.
  void keep_in(project& copy) const;

  /// How often an event was refused with a message so far, because no button was chosen or a text
  /// could not be used.
  int refusals() const { return refusals_; }

  /// The outline `Shape1`, `Shape2`: the button whose values are shown; nothing before the first.
  std::optional<menu_rectangle> outline() const;
  std::vector<faint_button> others() const;

  /// The button at a place, the outlined one first, then the one drawn last; -1: none.
  int button_at(int x, int y) const;

  // Changes from the picture; they go the way of scroll bars and sliders. They are of the outlined
  // button, which is chosen again where another one was added since.
  void move_to(int x0, int y0);  ///< kept inside the picture
  void move_by(int dx, int dy);
  void size_by(int dw, int dh);  ///< the top left corner stays
  /// Moves edges to x, y. The opposite edges stay, the button keeps its least size and stays in the
  /// picture. A bitmap's size cannot be changed.
  void drag_edges(dragged_edges which, int x, int y);

 private:
  struct place;  // position and size of a button
  class event;   // menus/menu_editor_event.h
  /// Consecutive events of one control on one button.
  struct event_run {
    std::string_view source;  ///< empty: none
    int button = -1;
    bool operator==(const event_run&) const = default;
  };
  struct drag_state {
    menu_editor_state before;
    std::vector<int> buttons;  // those that are moved; empty until the first move
    std::vector<menu_rectangle> starts;
    drag_ways ways;
    std::vector<snap_guide> guides;
  };

  void load_options();
  void load_actions();
  void show_no_button();
  void show_record(int index);
  void set_sizes(int width, int height);
  bool button_chosen();
  void updatebutton();
  void show_display_mode();
  void keep_in_picture();
  void write_record();
  void show_fields();
  void choose_outlined();
  place shown_place() const;
  void set_place(const place& p);
  bool refuse_field(const std::string& name, const std::string& text);

  void number_chooser();
  void show_chosen(int index);
  std::vector<menu_rectangle> places_of(const std::vector<int>& buttons) const;
  std::vector<menu_rectangle> places_of_others() const;
  void put(const std::vector<int>& buttons, const std::vector<menu_rectangle>& places);
  template <typename F>
  void arrange(const char* step, std::size_t least, F f);
  void reorder(const std::vector<int>& order);
  void give_look(const std::vector<int>& buttons, int as);
  void append(const std::vector<std::string>& records);
  std::string brought_in(const std::string& record) const;
  std::vector<int> chapter_counts() const;
  void move_selected_to(int x0, int y0);
  menu_point draw_to_lines(menu_rectangle dragged, const snapped_parts& parts);
  menu_editor_state state();
  void restore(menu_editor_state to);
  std::string step_name(std::string text) const;
  void end_event(const std::string& what, std::string_view source, menu_editor_state before);
  void end_run();
  void begin_history();

  document& doc_;
  const picture_loader& pictures_;
  menu_editor_controls c_;
  int ymax_;
  int shown_ = -1;  // the button whose values the controls show
  int refusals_ = 0;
  std::vector<int> selected_;
  menu_history history_;
  menu_editor_controls opened_;  // as the menu was then
  int events_on_ = 0;            // within each other
  event_run run_;
  bool run_has_step_ = false;
  std::optional<drag_state> drag_;
};

}  // namespace corvane
