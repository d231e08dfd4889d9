#include "authoring/layout_report.h"

#include "formats/numbers.h"
#include "formats/sanitized.h"
#include "formats/text.h"
#include "platform/files/files.h"
#include "platform/files/paths.h"
#include "platform/text/utf8.h"
#include "project/disc_of.h"
#include "project/edited_xml.h"
#include "project/messages.h"
#include "project/post_rows.h"
#include "runner/run_files.h"

#include <cstdint>
#include <utility>

namespace corvane {
namespace {

constexpr std::string_view unknown_character = "&#65533;";

class page {
 public:
  void line(const std::string& text) { text_ += text + std::string(crlf); }
  std::string take() { return std::move(text_); }

 private:
  std::string text_;
};

std::string numbered(std::uint32_t code) {
  // Browsers read the numbers of these control characters as those of windows-1252: 128 is a Euro.
  const bool control = code < 0xA0;
  return control ? std::string(unknown_character) : "&#" + std::to_string(code) + ";";
}

std::string ascii_text(char c) {
  switch (c) {
    case '<':
      return "&lt;";
    case '>':
      return "&gt;";
    case '&':
      return "&amp;";
    case '"':
      return "&quot;";
    case '\'':
      return "&#39;";
    case '\t':
    case '\r':
    case '\n':
      return {c};
    default:
      break;
  }
  const bool control = is_control_character(c);
  return control ? std::string(unknown_character) : std::string{c};
}

/// The files of a menu without their folders.
std::string menu_files_of(const disc_menu& menu) {
  std::string names(file_name_of(menu.video()));
  if (!menu.audio().empty())
    names += "/" + std::string(file_name_of(menu.audio()));
  return names;
}

void add_contents(page& html, const disc_description& d, const std::string& size_text) {
  html.line("<ul><li>This DVD contains:" + html_text(size_text) + "<br>Titles include:<ul>");
  for (const disc_title& title : d.titles)
    html.line("<li type=disc>" + html_text(title.name) + " (" +
              std::to_string(title.chapters.size()) + " chapters)");
  html.line("</ul><br>Menus include:<ul>");
  int number = 0;
  for (const disc_menu& menu : d.menus)
    html.line("<li type=disc>menu" + trimmed(++number) + ":" + html_text(menu_files_of(menu)) +
              "  (" + std::to_string(menu.buttons.size()) + " buttons)");
  html.line("</ul><br><br>");
}

std::string first_play(const disc_description& d) {
  if (d.first_play_text != no_first_play)
    return d.first_play_text;
  return d.menus.empty() ? "Title 1" : "Menu 1";
}

std::string button_line(const disc_button& b, int number) {
  const auto edge = [](const text_number& n) { return html_text(trim(n.text)); };
  return "<li type=disc>Button" + trimmed(number) + "(" + edge(b.x0) + "x" + edge(b.y0) + "," +
         edge(b.x1) + "x" + edge(b.y1) + ") goes to:" + html_text(b.action.text);
}

void add_menu_targets(page& html, const disc_description& d) {
  html.line("<ul><li type=disc>Menus:<ul>");
  int number = 0;
  for (const disc_menu& menu : d.menus) {
    html.line("<li type=disc>Menu" + trimmed(++number) + "<ul>");
    int button = 0;
    for (const disc_button& b : menu.buttons)
      html.line(button_line(b, ++button));
    html.line("</ul>");
  }
}

// A post command is shown as it reads, whichever its kind: jumps and exit begin with their words.
void add_title_targets(page& html, const disc_description& d) {
  html.line("</ul></ul><br><ul><li type=disc>Titles:<ul>");
  int number = 0;
  for (const disc_title& title : d.titles)
    html.line("<li type=disc>Title" + trimmed(++number) +
              " goes to: " + (title.post ? html_text(title.post->text) : std::string()));
  html.line("</ul></ul>");
}

failure write_or_tell(document& doc, const std::string& file, const std::string& text) {
  const failure why = replace_file(file, text);
  if (why)
    say(doc, icon::critical, "The file \"" + file + "\" could not be written: " + *why + ".");
  return why;
}

}  // namespace

std::string html_text(std::string_view text) {
  const bool readable = is_utf8(text);
  std::string html;
  while (!text.empty()) {
    const utf8_character c = first_character(text);
    if (static_cast<unsigned char>(text[0]) < 0x80)
      html += ascii_text(text[0]);
    else
      html += readable ? numbered(c.code) : std::string(unknown_character);
    text.remove_prefix(readable ? c.length : 1);
  }
  return html;
}

std::string layout_html(const disc_description& d, const std::string& size_text, bool edited) {
  const std::string name = html_text(version_title);
  page html;
  html.line("<html><head><title>DVD Layout - " + name +
            "</title></head><body bgcolor=\"lightgrey\" topmargin=0 marginheight=0>");
  html.line("<font size=-1 face=\"verdana\"><center><b>DVD Layout, auto-generated from<br>" + name +
            "</center></b><br><br>");
  add_contents(html, d, size_text);
  html.line("<li>The DVD will begin with " + html_text(first_play(d)));
  add_menu_targets(html, d);
  add_title_targets(html, d);
  if (edited)
    html.line(
        "<br><br>The XML has been modified so the above data may be partially incorrect "
        "(depending on the modifications).  <br><a href=\"" +
        std::string(run_file::layout_xml) + "\">Preview the edited XML</a><br>");
  return html.take();
}

report_result layoutprint_command(document& doc, const std::string& app, desktop& user_desktop) {
  const std::string file = join_path(app, run_file::layout_page);
  // The copy first: a page that leads to it is there only with it.
  if (!edited_xml(doc.p).empty() &&
      write_or_tell(doc, join_path(app, run_file::layout_xml), edited_xml(doc.p)))
    return report_result::not_written;
  if (write_or_tell(doc, file,
                    layout_html(disc_of(doc.p), doc.p.dvdsizetext, !edited_xml(doc.p).empty())))
    return report_result::not_written;
  if (const failure why = user_desktop.show_page(file)) {
    say(doc, icon::exclamation,
        "The report was written, but the browser could not be started: " + sanitized(*why) +
            ".\r\nIt is the file \"" + file + "\".");
    return report_result::not_shown;
  }
  return report_result::shown;
}

}  // namespace corvane
