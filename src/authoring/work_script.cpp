#include "authoring/work_script.h"

#include "authoring/menu_overlays.h"
#include "authoring/rows.h"
#include "authoring/subtitle_xml.h"
#include "formats/numbers.h"
#include "formats/text.h"

namespace corvane {
namespace {

std::string numbered(std::string_view before, int number, std::string_view after) {
  return std::string(before) + trimmed(number) + std::string(after);
}

void add_opening(std::string& text, const run_paths& where) {
  add_line(text, "@echo off");
  add_line(text,
           "echo Send problems with Corvane to the Corvane developers, corvane-bugs@example.org");
  add_line(text, "mkdir " + quoted(where.out));
  add_line(text, "echo ***please wait while the titles are multiplexed.");
}

// Format 8 is mplex's DVD format with navigation packs, -O the offset of the audio.
std::string title_command(const project& p, const run_paths& where, int title) {
  const std::string target = mplex_pattern(where.in_out(numbered("title", title, ".mpg")));
  std::string command = quoted(where.tool("mplex")) + " -f 8 -O " + row_of(p.delay, title, "0") +
                        "ms -o " + quoted(target) + " ";
  for (const std::string& stream : title_streams(p, title, where.style))
    command += " " + quoted(stream) + " ";
  return command;
}

void add_titles(std::string& text, const project& p, const run_paths& where) {
  for (int title = 1; title <= title_count(p); ++title) {
    if (!is_multiplexed_here(p, title))
      continue;
    add_line(text, "echo *multiplexing title:" + leading_blank(title) + ".....");
    add_line(text, title_command(p, where, title));
  }
}

void add_menu(std::string& text, const project& p, const run_paths& where, int menu) {
  const std::string plain = where.in_out(numbered("menu", menu, ".mpg"));
  const std::string with_buttons = where.in_out(numbered("menusub", menu, ".mpg"));
  const std::string control = where.in_app(numbered("menu", menu, ".xml"));
  const menu_streams streams = native_menu_streams(p, menu, where.style);

  add_line(text, "echo *multiplexing menu" + leading_blank(menu) + ".....");
  add_line(text, quoted(where.tool("mplex")) + " -f 8 -o " + quoted(mplex_pattern(plain)) + " " +
                     quoted(streams.video) +
                     (streams.audio.empty() ? "" : " " + quoted(streams.audio)));
  add_line(text, quoted(where.tool("spumux")) + " " + quoted(control) + " <" + quoted(plain) +
                     " > " + quoted(with_buttons));
  add_line(text, "erase " + quoted(plain));
}

void add_menus(std::string& text, const project& p, const run_paths& where) {
  if (menu_count(p) == 0)
    return;
  add_line(text, "echo *generating button images.......");
  for (int menu = 1; menu <= menu_count(p); ++menu)
    text += button_image_commands(p, where, menu);
  for (int menu = 1; menu <= menu_count(p); ++menu)
    add_menu(text, p, where, menu);
}

void add_subtitles(std::string& text, const project& p, const run_paths& where) {
  for (int title = 1; title <= title_count(p); ++title)
    for (int subtitle = 1; subtitle <= subtitle_count(p, title); ++subtitle)
      text += subtitle_commands(where, title, subtitle);
}

// The pattern stands outside the quotes, where cmd.exe too reads it as one.
std::string every_mpg(const run_paths& where) {
  return quoted(where.out) + separator(where.style) + "*.mpg";
}

void add_disc(std::string& text, const project& p, const run_paths& where) {
  add_line(text, "echo *authoring title(s).....");
  add_line(text, "");
  add_line(text, quoted(where.tool("dvdauthor")) + " -x " + quoted(where.in_app("config.xml")));
  add_line(text, "erase " + every_mpg(where));
  if (!p.isocreate)
    return;
  add_line(text, "echo *generating udf iso.....");
  add_line(text, quoted(where.tool("mkisofs")) + " -dvd-video -V DVDVideo -udf -o " +
                     quoted(where.out + ".iso") + " " + quoted(where.out));
}

}  // namespace

std::string work_script(const project& p, const run_paths& where) {
  std::string text;
  add_opening(text, where);
  add_titles(text, p, where);
  add_menus(text, p, where);
  add_subtitles(text, p, where);
  add_disc(text, p, where);
  // The runner takes this line for the end of the run; nothing may follow it.
  add_line(text, "echo *process complete");
  return text;
}

std::string mplex_pattern(const std::string& path) {
  return replace_all(path, "%", "%%");
}

}  // namespace corvane
