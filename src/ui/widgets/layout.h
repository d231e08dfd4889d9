// Distances between controls, in pixels at 100 %; wxWindow::FromDIP turns them into the screen's.
#pragma once

namespace corvane {

/// Of a progress bar: a tenth of a percent is seen moving.
inline constexpr int progress_steps = 1000;

}  // namespace corvane

namespace corvane::layout {

inline constexpr int window_border = 10;  ///< between a window's edge and its controls
inline constexpr int group_gap = 10;      ///< between groups
inline constexpr int control_gap = 6;     ///< between controls that belong together
inline constexpr int column_gap = 20;     ///< between columns of one box
inline constexpr int label_gap = 2;       ///< between a picture and the words for it
inline constexpr int box_border = 8;      ///< inside a captioned box

inline constexpr int column_least_height = 160;  ///< of a column that scrolls
inline constexpr int scroll_step = 10;           ///< of one

inline constexpr int tool_icon = 32;    ///< edge of a toolbar picture
inline constexpr int button_icon = 16;  ///< edge of a picture on a button

inline constexpr int main_width = 900;
inline constexpr int main_height = 480;
inline constexpr int list_height = 120;         ///< least of a list, also of its width
inline constexpr int titles_height = 60;        ///< least of the title list, which shares its place
inline constexpr int menus_height = 38;         ///< least of the list of menus
inline constexpr int menus_row = 6;             ///< what a row of it has above and below its text
inline constexpr int menus_percent = 35;        ///< most of the height that it shares with them
inline constexpr int details_from_width = 560;  ///< in less, the lists take their place
inline constexpr int details_picture_percent = 40;        ///< most of their height
inline constexpr int lists_share = 5, details_share = 4;  ///< of the width

inline constexpr int picker_width = 420;
inline constexpr int picker_height = 180;

inline constexpr int commands_height = 180;  ///< least height of the list of post commands

inline constexpr int tags_width = 300;  ///< least size of the list of language tags
inline constexpr int tags_height = 160;

inline constexpr int subtitles_height = 90;  ///< least height of the list of subtitle files
inline constexpr int font_width = 260;       ///< most that a long name of a font asks for
inline constexpr int preview_width = 480;    ///< of the preview, where the screen is large enough
inline constexpr int preview_least_width = 320;
inline constexpr int preview_least_height = 240;

inline constexpr int clean_width = 720;  ///< of the cleaned subtitles, before and after
inline constexpr int clean_height = 470;
inline constexpr int clean_time_width = 100;
inline constexpr int clean_text_width = 290;
inline constexpr int clean_list_height = 58;  ///< least of the list, and of the texts below it
inline constexpr int clean_text_height = 44;

inline constexpr int chapters_width = 400;       ///< of the title that chapters are typed for
inline constexpr int chapters_height = 220;      ///< least height of the typed chapter times
inline constexpr int chapter_times_width = 150;  ///< least width of the list beside the player

inline constexpr int xml_width = 820;
inline constexpr int xml_height = 560;
inline constexpr int place_width = 170;  ///< of the status bar's "line 1234, column 123"

inline constexpr int findings_width = 620;
inline constexpr int findings_height = 440;
inline constexpr int findings_question_width = 740;
inline constexpr int findings_least_height = 90;  ///< of the list, and of the text below it
inline constexpr int findings_severity_width = 90;
inline constexpr int findings_item_width = 180;

inline constexpr int map_width = 1200;  ///< of the map of the disc
inline constexpr int map_height = 760;
inline constexpr int map_least_width = 420;
inline constexpr int map_least_height = 240;
inline constexpr int map_find_width = 180;

inline constexpr int log_width = 720;
inline constexpr int log_height = 460;
inline constexpr int log_least_width = 320;
inline constexpr int log_least_height = 200;

inline constexpr int import_width = 900;
inline constexpr int import_height = 600;
inline constexpr int import_least_height = 110;  ///< of the list of files
inline constexpr int import_name_width = 170;
inline constexpr int import_length_width = 70;
inline constexpr int import_what_width = 220;

inline constexpr int maker_width = 1160;  ///< of the menu maker
inline constexpr int maker_height = 780;
inline constexpr int maker_choices_width = 380;
inline constexpr int maker_page_width = 400;  ///< least of the picture of a page
inline constexpr int maker_page_height = 240;
inline constexpr int maker_sample_width = 80;  ///< of a design in the list of them
inline constexpr int maker_sample_height = 60;
inline constexpr int maker_designs_height = 130;  ///< least of that list
inline constexpr int maker_notes_height = 52;

inline constexpr int still_width = 720;  ///< of the text above the still that a picture becomes
inline constexpr int still_picture_width = 400;  ///< of that still
inline constexpr int still_picture_height = 300;

inline constexpr int menu_image_width = 150;  ///< most of a button's bitmap beside the menu
inline constexpr int menu_image_height = 70;

}  // namespace corvane::layout
