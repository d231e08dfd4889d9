#include "authoring/navigation_xml.h"

#include "authoring/navigation_command.h"
#include "authoring/rows.h"
#include "formats/numbers.h"
#include "formats/text.h"

#include <algorithm>

namespace corvane {
namespace {

// What of a command stands after its word and the blank behind it ("jump menu 3" -> "3").
std::string after_word(std::string_view command, std::string_view word) {
  return std::string(command.substr(std::min(command.size(), word.size() + 1)));
}

// In jump-table mode g1 holds the menu that titles return to.
std::string button_command(const project& p, const std::string& action, int menu) {
  const std::string command = interpreted(action);
  if (p.jumptable && command.starts_with(jump_menu_words))
    return "g1=" + after_word(command, jump_menu_words) + "; " + command;
  if (p.jumptable && command.starts_with(jump_title_words))
    return "g1=" + trimmed(menu) + "; " + command;
  return action;
}

// A title can call a titleset's entry menu only, which is menu 1; that one forwards to the menu in
// g1.
std::string post_command(const project& p, const std::string& typed) {
  const std::string command = interpreted(typed);
  if (p.jumptable && command.starts_with(call_menu_words))
    return "g1=" + after_word(command, call_menu_words) + "; call menu";
  if (p.jumptable && command.starts_with(call_last_menu_words))
    return "call menu";
  return typed;
}

// "<default>" writes none, and neither does the empty entry that a rolled-back load leaves, for
// which dvdauthor would refuse the element.
void add_manager(std::string& text, const project& p) {
  add_line(text, "  <vmgm>  ");
  if (!p.firstplay.empty() && p.firstplay != "<default>")
    add_line(text, "     <fpc> " + p.firstplay + "; </fpc>");
  add_line(text, "  </vmgm>");
}

void add_jump_table(std::string& text, int menus) {
  add_line(text, "        <pre>");
  for (int k = 2; k <= menus; ++k)
    add_line(text, "          if (g1==" + trimmed(k) + ") jump menu" + leading_blank(k) + ";");
  add_line(text, "        </pre>");
}

void add_menu(std::string& text, const project& p, const run_paths& where, int menu) {
  const bool loop = options_of(p, menu).loop;
  add_line(text, loop ? R"(      <pgc pause="5">)" : R"(      <pgc pause="inf">)");
  if (menu == 1 && p.jumptable && menu_count(p) >= 2)
    add_jump_table(text, menu_count(p));
  for (const button_record& b : buttons_of(p, menu))
    add_line(text, "        <button> " + button_command(p, b.action, menu) + "; </button>");
  add_line(text,
           "       <vob file=" + quoted(where.in_out("menusub" + trimmed(menu) + ".mpg")) + " />");
  if (loop)
    add_line(text, "       <post> jump menu" + leading_blank(menu) + "; </post>");
  add_line(text, "      </pgc>");
}

void add_menus(std::string& text, const project& p, const run_paths& where) {
  if (menu_count(p) == 0)
    return;
  add_line(text, "    <menus>");
  for (int menu = 1; menu <= menu_count(p); ++menu)
    add_menu(text, p, where, menu);
  add_line(text, "    </menus>");
}

void add_languages(std::string& text, const project& p) {
  for (const std::string& row : p.languagetags) {
    const language_tag tag = parse_language_tag(row);
    if (tag.audio)
      add_line(text, "       <audio lang=" + quoted(tag.code) + " />");
    else if (tag.subpicture)
      add_line(text, "       <subpicture lang=" + quoted(tag.code) + " />");
  }
}

std::string title_file(const project& p, const run_paths& where, int title) {
  if (is_multiplexed_here(p, title))
    return where.in_out("title" + trimmed(title) + ".mpg");
  return native_from_stored(row_of(p.List11, title, {}), where.style);
}

// What a title without a post command does: titles play one after the other, the last one ends. The
// list of post commands is emptied and filled as a whole but can be shorter than the titles (a
// title was loaded without its row), and a row can be blank, for which dvdauthor would refuse the
// element; both count as a title without one.
std::string default_post(const project& p, int title) {
  if (title < title_count(p))
    return "          <post>jump title" + leading_blank(title + 1) + ";</post>";
  return "          <post>exit; </post>";
}

std::string title_post(const project& p, int title) {
  const std::string row = row_of(p.postinfo, title, {});
  const std::string command(trim(row));
  if (command.empty())
    return default_post(p, title);
  return "          <post>" + post_command(p, command) + ";</post>";
}

void add_titles(std::string& text, const project& p, const run_paths& where) {
  add_line(text, "      <titles>");
  add_line(text, "       <video format=" + quoted(lower(p.globalregion)) + " />");
  add_languages(text, p);
  for (int title = 1; title <= title_count(p); ++title) {
    add_line(text, "        <pgc>");
    add_line(text, "          <vob file=" + quoted(title_file(p, where, title)) +
                       " chapters=" + quoted(chapters_of(p, title)) + " />");
    add_line(text, title_post(p, title));
    add_line(text, "        </pgc>");
  }
  add_line(text, "      </titles>");
}

}  // namespace

std::string navigation_xml(const project& p, const run_paths& where) {
  std::string text;
  add_line(text, R"(<?xml version="1.0" encoding="UTF-8"?>)");
  add_line(text, "<dvdauthor dest=" + quoted(where.out) + ">");
  add_line(text, "<!-- DO NOT edit the 2 lines above -->");
  add_manager(text, p);
  add_line(text, "  <titleset>");
  add_menus(text, p, where);
  add_titles(text, p, where);
  add_line(text, "  </titleset>");
  add_line(text, "</dvdauthor>");
  return text;
}

std::string escape_ampersands(std::string_view text) {
  return replace_all(text, "&", "&amp;");
}

std::string config_xml(const project& p, const run_paths& where) {
  return p.customxml.empty() ? escape_ampersands(navigation_xml(p, where)) : p.customxml;
}

bool names_folder(std::string_view customxml) {
  const std::vector<std::string> lines = split(customxml, '\n');
  if (lines.size() < 2 || folder_of_custom_xml(customxml).empty())
    return false;
  const std::string_view second = trim_left(lines[1]);
  return second.starts_with("<dvdauthor") && second.find("dest") < second.find('"');
}

std::string folder_of_custom_xml(std::string_view customxml) {
  const std::vector<std::string> lines = split(customxml, '\n');
  if (lines.size() < 2)
    return {};
  const auto begin = lines[1].find('"');
  const auto end = begin == std::string::npos ? begin : lines[1].find('"', begin + 1);
  if (end == std::string::npos)
    return {};
  return replace_all(std::string_view(lines[1]).substr(begin + 1, end - begin - 1), "&amp;", "&");
}

}  // namespace corvane
