#include "ui/commands.h"

#include "authoring/avisynth_script.h"
#include "authoring/layout_report.h"
#include "menus/menu_entries.h"
#include "platform/files/program_folder.h"
#include "project/preferences.h"
#include "project/project_file.h"
#include "project/title_commands.h"
#include "tools/association.h"
#include "tools/still_video.h"
#include "tools/xml_editor.h"
#include "ui/disc/verified_window.h"
#include "ui/editor/menu_windows.h"
#include "ui/guide.h"
#include "ui/import/import_window.h"
#include "ui/main_window.h"
#include "ui/maker/maker_window.h"
#include "ui/subtitles/language_window.h"
#include "ui/subtitles/subtitles_window.h"
#include "ui/video/chapter_window.h"
#include "ui/widgets/icons.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {
namespace {

/// The name of a step, as a template's argument.
template <std::size_t size>
struct step_name {
  char text[size];
  constexpr step_name(const char (&name)[size]) { std::copy_n(name, size, text); }
};

/// A command of the core, followed by a refresh of the window.
template <step_name name, void (*command)(document&)>
void core(main_window& window) {
  window.run(name.text, command);
}

void undo(main_window& window) {
  window.undo();
}
void redo(main_window& window) {
  window.redo();
}
void quit(main_window& window) {
  window.Close();
}

void add_title(main_window& window) {
  window.add_title();
}
void author(main_window& window) {
  window.author();
}
void still(main_window& window) {
  window.still();
}
void show_log(main_window& window) {
  window.show_log();
}
void clear_log(main_window& window) {
  window.clear_log();
}
void check_project(main_window& window) {
  window.check_project();
}
void show_run_findings(main_window& window) {
  window.show_run_findings();
}
void show_disc_map(main_window& window) {
  window.show_disc_map();
}
void show_guide(main_window& window) {
  window.show_guide(guide_page_about(&window));
}
void show_keys(main_window& window) {
  window.show_guide("keys.html");
}
void drop_extras(main_window& window) {
  window.drop_down("extras");
}

std::string program_picture() {
  for (const embedded_icon& icon : embedded_icons())
    if (std::string_view(icon.name) == "corvane")
      return icon.svg;
  return {};
}

void print_layout(main_window& main) {
  main.run("generate layout report",
           [&main](document& doc) { layoutprint_command(doc, main.app(), main.user_desktop()); });
}

void create_avisynth_script(main_window& main) {
  main.run("create motion menu script",
           [&main](document& doc) { avisynth_command(doc, main.user_desktop()); });
}

void register_extension(main_window& main) {
  main.run("register .cvp extension", [&main](document& doc) {
    register_command(doc, {main.app(), own_executable(), program_picture(), user_desktop_folders(),
                           main.user_desktop()});
  });
}

menu_item command(const char* name, const char* caption, action run, const char* keys = "") {
  return {name, caption, keys, item_kind::command, run};
}
menu_item check(const char* name, const char* caption, action run) {
  return {name, caption, "", item_kind::check, run};
}
menu_item separator() {
  return {"", "", "", item_kind::separator, nullptr};
}
menu_item label(const char* name, const char* caption) {
  return {name, caption, "", item_kind::label, nullptr};
}

menu file_menu() {
  return {
      "mnufile",
      "&file",
      {command("open", "add &new title...", add_title, "Ctrl+T"),
       command("author", "&author dvd...", author, "F5"),
       command("loadproject", "&load project...", core<"load project", loadproject_command>,
               "Ctrl+O"),
       command("saveproject", "save &project...", core<"save project", saveproject_command>,
               "Ctrl+Shift+S"),
       command("showlog", "show lo&g", show_log, "Ctrl+L"),
       command("clearlog", "clea&r log", clear_log),
       label("empty", "---settings----"),
       check("isocreate", "create &iso after authoring",
             core<"change \"create iso\"", isocreate_command>),
       check("editxml", "edit &xml before authoring", core<"change \"edit xml\"", editxml_command>),
       check("cleanup", "&clean up files after authoring",
             core<"change \"clean up files\"", cleanup_command>),
       separator(),
       command("newproject", "ne&w project", core<"new project", newproject_command>, "Ctrl+N"),
       command("savefile", "&save", core<"save", savefile_command>, "Ctrl+S"),
       {"recent", "r&ecent projects", "", item_kind::submenu, nullptr},
       command("import", "i&mport...", import_chosen_files, "Ctrl+Shift+T"),
       separator(),
       command("quit", "&quit", quit, "Ctrl+Q")}};
}

menu menus_menu() {
  return {
      "menu",
      "&menus",
      {command("addmenu", "&add new titleset menu", add_menu, "Ctrl+M"),
       command("editmenu", "&edit existing titleset menu", edit_menu, "Ctrl+E"),
       command("remove", "&remove titleset menu", remove_menu),
       command("still", "&create m2v still", still, "Ctrl+I"),
       command("framecount", "set m2v &framecount", core<"set m2v framecount", framecount_command>),
       command("avisynth", "create &motion menu script", create_avisynth_script, "Ctrl+Shift+Y"),
       separator(), command("makemenus", "ma&ke menus...", open_menu_maker, "Ctrl+Shift+E"),
       separator(), command("menuup", "move menu &up", move_menu_up),
       command("menudown", "move menu &down", move_menu_down),
       command("copymenu", "co&py menu", copy_menu),
       command("menuvideo", "change &video of menu...", change_menu_video),
       command("menuaudio", "change audi&o of menu...", change_menu_audio)}};
}

menu extras_menu() {
  return {"extras",
          "e&xtras",
          {label("notice", "--highlight a title before selecting these options"),
           command("addaudiostream", "&add audio stream",
                   core<"add audio stream", addaudiostream_command>, "Ctrl+U"),
           command("addsubs", "add/edit &subtitles", edit_subtitles, "Ctrl+B"),
           command("edittags", "edit &language tags", edit_languages, "Ctrl+G"),
           command("editdelay", "edit A/V &delay", core<"edit A/V delay", editdelay_command>,
                   "Ctrl+D")}};
}

menu tools_menu() {
  return {"tools",
          "&tools",
          {check("jumptable", "use &JumpTable", core<"change JumpTable", jumptable_command>),
           command("layoutprint", "generate layout &report", print_layout, "Ctrl+R"),
           command("register", "register .&cvp extension", register_extension),
           command("mnuabout", "&about", core<"about", about_command>)}};
}

menu edit_menu_items() {
  return {"edit",
          "&edit",
          {command("undo", "&undo", undo, "Ctrl+Z"), command("redo", "&redo", redo, "Ctrl+Y")}};
}

menu check_menu() {
  return {"disc",
          "&disc",
          {command("check", "&check project...", check_project, "Ctrl+K"),
           command("verify", "&verify disc...", verify_disc, "Ctrl+Shift+K"),
           command("lastrun", "what the last run &found...", show_run_findings), separator(),
           command("discmap", "disc &map...", show_disc_map, "Ctrl+Shift+M")}};
}

menu help_menu() {
  return {"help",
          "&help",
          {command("guide", "user &guide", show_guide, "F1"), command("keys", "&keys", show_keys)}};
}

}  // namespace

const std::vector<menu>& main_menus() {
  static const std::vector<menu> menus = {file_menu(),  menus_menu(),      extras_menu(),
                                          tools_menu(), edit_menu_items(), check_menu(),
                                          help_menu()};
  return menus;
}

const std::vector<command_key>& main_keys() {
  static const std::vector<command_key> keys = {
      {"Alt+Up", "move the title up", core<"move title up", titleup_command>},
      {"Alt+Down", "move the title down", core<"move title down", titledown_command>},
      {"Ctrl+H", "chapters of the title", edit_chapters},
      {"Ctrl+J", "nav cmds", edit_navcommands},
      {"Ctrl+Shift+Z", "redo", redo}};
  return keys;
}

const std::vector<drop_item>& title_items() {
  static const std::vector<drop_item> items = {
      {"chapters", "chapters...", edit_chapters},
      {"subtitles", "add/edit subtitles", edit_subtitles},
      {"addaudio", "add audio stream", core<"add audio stream", addaudiostream_command>},
      {"editdelay", "edit A/V delay", core<"edit A/V delay", editdelay_command>},
      {"navcommands", "nav cmds...", edit_navcommands},
      {"", "", nullptr},
      {"titleup", "move up", core<"move title up", titleup_command>},
      {"titledown", "move down", core<"move title down", titledown_command>},
      {"", "", nullptr},
      {"remove", "remove title", core<"remove title", remove_title_command>}};
  return items;
}

const std::vector<drop_item>& menu_items() {
  static const std::vector<drop_item> items = {{"editmenu", "edit menu...", edit_selected_menu},
                                               {"addmenu", "add menu...", add_menu},
                                               {"", "", nullptr},
                                               {"menuvideo", "change video...", change_menu_video},
                                               {"menuaudio", "change audio...", change_menu_audio},
                                               {"copymenu", "copy menu", copy_menu},
                                               {"menuup", "move up", move_menu_up},
                                               {"menudown", "move down", move_menu_down},
                                               {"", "", nullptr},
                                               {"remove", "remove menu", remove_selected_menu}};
  return items;
}

const std::vector<tool>& main_tools() {
  static const std::vector<tool> tools = {
      {"add-title",
       "add title",
       "add a basic mpeg video stream, and the complimentry audio stream",
       "add a basic video and audio stream",
       add_title,
       {}},
      {"remove-title",
       "remove title",
       "remove title",
       "highlight a title in the list and click remove.",
       core<"remove title", remove_title_command>,
       {}},
      {"chapters",
       "chapters",
       "add chapter points to the selected title",
       "add chapter points to the selected title",
       edit_chapters,
       {}},
      {"nav-commands",
       "nav cmds",
       "change the command executed after the selected title has finished",
       "edit the post cmds of the titles on the dvd",
       edit_navcommands,
       {}},
      {"menus",
       "menus",
       "add/edit menus",
       "add/edit menus",
       add_or_edit_menu,
       {{"add", "add titleset menu", add_menu},
        {"edit", "edit titleset menu", edit_menu},
        {"remove", "remove titleset menu", remove_menu}}},
      {"extras",
       "extras",
       "add extra audio streams, or subtitles",
       "add extra audio streams, or subtitles",
       drop_extras,
       {{"addaudio", "add additional audio track",
         core<"add audio stream", addaudiostream_command>},
        {"subtitles", "add/edit subtitles", edit_subtitles},
        {"edittags", "edit language tags", edit_languages},
        {"editdelay", "edit A/V delay", core<"edit A/V delay", editdelay_command>}}},
      {"author-dvd", "author dvd", "author the dvd", "begin the authoring process", author, {}},
  };
  return tools;
}

}  // namespace corvane
