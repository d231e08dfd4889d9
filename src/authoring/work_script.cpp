#include "authoring/work_script.h"

#include "authoring/disc_texts.h"
#include "authoring/menu_overlays.h"
#include "authoring/subtitle_xml.h"
#include "formats/numbers.h"
#include "formats/text.h"
#include "runner/output_lines.h"
#include "runner/run_files.h"

namespace corvane {
namespace {

void add_opening(std::string& text, const run_paths& where) {
  add_line(text, "@echo off");
  add_line(
      text,
      "echo Send problems with Corvane to whoever gave it to you, see Problems in its README.md");
  add_line(text, "mkdir " + in_double_quotes(where.out));
  add_line(text, "echo ***please wait while the titles are multiplexed.");
}

// Format 8 is mplex's DVD format with navigation packs, -O the offset of the audio.
std::string title_command(const disc_description& d, const run_paths& where, int title) {
  const std::string target = mplex_pattern(where.in_out(run_file::title_stream(title)));
  std::string command = in_double_quotes(where.tool("mplex")) + " -f 8 -O " +
                        d.title(title).delay.text + "ms -o " + in_double_quotes(target) + " ";
  for (const std::string& stream : native_streams(d.title(title), where.style))
    command += " " + in_double_quotes(stream) + " ";
  return command;
}

void add_work_on_titles(std::string& text, const disc_description& d, const run_paths& where) {
  for (int title = 1; title <= d.title_count(); ++title) {
    if (!d.title(title).is_multiplexed_here)
      continue;
    add_line(text, "echo *multiplexing title:" + leading_blank(title) + ".....");
    add_line(text, title_command(d, where, title));
  }
}

void add_work_on_menu(std::string& text, const disc_description& d, const run_paths& where,
                      int menu) {
  const std::string plain = where.in_out(run_file::menu_stream(menu));
  const std::string with_buttons = where.in_out(run_file::menu_with_buttons(menu));
  const std::string control = where.in_app(run_file::menu_control(menu));
  const std::string video = native_from_stored(d.menu(menu).video(), where.style);
  const std::string audio = native_from_stored(d.menu(menu).audio(), where.style);

  add_line(text, "echo *multiplexing menu" + leading_blank(menu) + ".....");
  add_line(text, in_double_quotes(where.tool("mplex")) + " -f 8 -o " +
                     in_double_quotes(mplex_pattern(plain)) + " " + in_double_quotes(video) +
                     (audio.empty() ? "" : " " + in_double_quotes(audio)));
  add_line(text, in_double_quotes(where.tool("spumux")) + " " + in_double_quotes(control) + " <" +
                     in_double_quotes(plain) + " > " + in_double_quotes(with_buttons));
  add_line(text, "erase " + in_double_quotes(plain));
}

void add_work_on_menus(std::string& text, const disc_description& d, const run_paths& where) {
  if (d.menu_count() == 0)
    return;
  add_line(text, "echo *generating button images.......");
  for (int menu = 1; menu <= d.menu_count(); ++menu)
    text += button_image_commands(d, where, menu);
  for (int menu = 1; menu <= d.menu_count(); ++menu)
    add_work_on_menu(text, d, where, menu);
}

void add_subtitles(std::string& text, const disc_description& d, const run_paths& where) {
  for (int title = 1; title <= d.title_count(); ++title)
    for (int subtitle = 1; subtitle <= std::ssize(d.title(title).subtitles); ++subtitle)
      text += subtitle_commands(where, title, subtitle);
}

// The pattern stands outside the quotes, where cmd.exe too reads it as one.
std::string every_mpg(const run_paths& where) {
  return in_double_quotes(where.out) + separator(where.style) + "*.mpg";
}

void add_disc(std::string& text, const disc_description& d, const run_paths& where) {
  add_line(text, "echo *authoring title(s).....");
  add_line(text, "");
  add_line(text, in_double_quotes(where.tool("dvdauthor")) + " -x " +
                     in_double_quotes(where.in_app(run_file::navigation)));
  add_line(text, "erase " + every_mpg(where));
  if (!d.image)
    return;
  add_line(text, "echo *generating udf iso.....");
  add_line(text, in_double_quotes(where.tool("mkisofs")) + " -dvd-video -V DVDVideo -udf -o " +
                     in_double_quotes(where.out + ".iso") + " " + in_double_quotes(where.out));
}

}  // namespace

std::string work_script(const disc_description& d, const run_paths& where) {
  std::string text;
  add_opening(text, where);
  add_work_on_titles(text, d, where);
  add_work_on_menus(text, d, where);
  add_subtitles(text, d, where);
  add_disc(text, d, where);
  // The runner takes this line for the end of the run; nothing may follow it.
  add_line(text, "echo " + std::string(end_marker));
  return text;
}

std::vector<std::string> streams_of_run(const disc_description& d) {
  std::vector<std::string> names;
  for (int title = 1; title <= d.title_count(); ++title)
    if (d.title(title).is_multiplexed_here)
      names.push_back(run_file::title_stream(title));
  for (int menu = 1; menu <= d.menu_count(); ++menu) {
    names.push_back(run_file::menu_stream(menu));
    names.push_back(run_file::menu_with_buttons(menu));
  }
  if (has_subtitles(d))
    names.emplace_back(run_file::before_subtitle);
  return names;
}

std::string mplex_pattern(const std::string& path) {
  return replace_all(path, "%", "%%");
}

}  // namespace corvane
