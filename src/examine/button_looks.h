// How the buttons of a menu look to a viewer: the colours of each while it is highlighted and while
// it is selected, and what is drawn of it. Foreseen from what is asked for, and read back from the
// highlight information, the palette and the subpicture of a disc.
//
// All are texts, for traits (examine/disc_traits.h): "yellow", "orange and white", "#102030, 47 %
// transparent", "nothing"; of what is drawn, "798 dots within 100,100 to 198,139", with the right
// and bottom edge included. An empty text: not known.
#pragma once

#include "disc/disc_description.h"
#include "examine/disc_streams.h"
#include "examine/read_disc.h"
#include "formats/subpicture.h"
#include "platform/result.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

struct seen_button {
  std::string highlighted, selected;  ///< its colours
  std::string drawn;                  ///< while it is highlighted
};

/// An edge or a thickness, if it is a whole number from 0 to `most`.
std::optional<int> whole_number(const text_number& edge, int most);

/// As a run draws them (authoring/menu_overlays.h), one for each button of the menu. Not known of a
/// state in which any button of the menu is a bitmap, of buttons that touch another one, and of
/// all when one has edges or the menu a thickness that are not whole numbers within the picture.
std::vector<seen_button> foreseen_buttons(const disc_description& d, const disc_menu& menu);

/// The picture of a menu's buttons. Fails, with what can stand behind "the picture", when it cannot
/// be read; where there is none, it has no dots.
result<subpicture> picture_of_buttons(const chain_streams& streams);

/// As a player shows the menu's buttons (the first group), one for each. Of those that a table
/// gives no colours, what is seen at rest.
std::vector<seen_button> buttons_on_disc(const disc_menu_contents& menu, const subpicture& picture);

/// Whether two texts of what is drawn are of the same: edges within two pixels and the number of
/// dots within 32 and a twentieth, since the rounded corners of a button are not foreseen.
bool is_same_drawing(std::string_view foreseen, std::string_view found);

}  // namespace corvane
