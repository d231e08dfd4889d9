#include "authoring/navigation_xml.h"

#include "authoring/disc_texts.h"
#include "formats/numbers.h"
#include "formats/text.h"
#include "runner/run_files.h"

#include <algorithm>

namespace corvane {
namespace {

// What of a command stands after its word and the blank behind it ("jump menu 3" -> "3").
std::string after_word(std::string_view command, std::string_view word) {
  return std::string(command.substr(std::min(command.size(), word.size() + 1)));
}

// In jump-table mode g1 holds the menu that titles return to.
std::string button_command(const disc_description& d, const std::string& action, int menu) {
  const std::string command = interpreted(action);
  if (d.jump_table && command.starts_with(jump_menu_words))
    return "g1=" + after_word(command, jump_menu_words) + "; " + command;
  if (d.jump_table && command.starts_with(jump_title_words))
    return "g1=" + trimmed(menu) + "; " + command;
  return action;
}

// A title can call a titleset's entry menu only, which is menu 1; that one forwards to the menu in
// g1.
std::string post_command(const disc_description& d, const std::string& typed) {
  const std::string command = interpreted(typed);
  if (d.jump_table && command.starts_with(call_menu_words))
    return "g1=" + after_word(command, call_menu_words) + "; call menu";
  if (d.jump_table && command.starts_with(call_last_menu_words))
    return "call menu";
  return typed;
}

// Without a command no element is written: dvdauthor would refuse an empty one.
void add_manager(std::string& text, const disc_description& d) {
  add_line(text, "  <vmgm>  ");
  if (d.first_play)
    add_line(text, "     <fpc> " + d.first_play->text + "; </fpc>");
  add_line(text, "  </vmgm>");
}

void add_jump_table(std::string& text, int menus) {
  add_line(text, "        <pre>");
  for (int k = 2; k <= menus; ++k)
    add_line(text, "          if (g1==" + trimmed(k) + ") jump menu" + leading_blank(k) + ";");
  add_line(text, "        </pre>");
}

void add_menu(std::string& text, const disc_description& d, const run_paths& where, int menu) {
  const bool loop = d.menu(menu).loop;
  add_line(text, loop ? R"(      <pgc pause="5">)" : R"(      <pgc pause="inf">)");
  if (menu == 1 && d.jump_table && d.menu_count() >= 2)
    add_jump_table(text, d.menu_count());
  for (const disc_button& b : d.menu(menu).buttons)
    add_line(text, "        <button> " + button_command(d, b.action.text, menu) + "; </button>");
  add_line(text, "       <vob file=" +
                     in_double_quotes(where.in_out(run_file::menu_with_buttons(menu))) + " />");
  if (loop)
    add_line(text, "       <post> jump menu" + leading_blank(menu) + "; </post>");
  add_line(text, "      </pgc>");
}

void add_menus(std::string& text, const disc_description& d, const run_paths& where) {
  if (d.menu_count() == 0)
    return;
  add_line(text, "    <menus>");
  for (int menu = 1; menu <= d.menu_count(); ++menu)
    add_menu(text, d, where, menu);
  add_line(text, "    </menus>");
}

void add_languages(std::string& text, const disc_description& d) {
  for (const disc_language& language : d.languages) {
    const bool audio = language.kind == disc_language::stream_kind::audio;
    add_line(text, (audio ? "       <audio lang=" : "       <subpicture lang=") +
                       in_double_quotes(language.code) + " />");
  }
}

std::string title_file(const disc_description& d, const run_paths& where, int title) {
  if (d.title(title).is_multiplexed_here)
    return where.in_out(run_file::title_stream(title));
  return native_from_stored(d.title(title).video(), where.style);
}

// What a title without a post command does: titles play one after the other, the last one ends.
std::string default_post(const disc_description& d, int title) {
  if (title < d.title_count())
    return "          <post>jump title" + leading_blank(title + 1) + ";</post>";
  return "          <post>exit; </post>";
}

std::string title_post(const disc_description& d, int title) {
  const std::optional<disc_command>& post = d.title(title).post;
  return post ? "          <post>" + post_command(d, post->text) + ";</post>"
              : default_post(d, title);
}

void add_titles(std::string& text, const disc_description& d, const run_paths& where) {
  add_line(text, "      <titles>");
  add_line(text, "       <video format=" + in_double_quotes(lower(d.standard_text)) + " />");
  add_languages(text, d);
  for (int title = 1; title <= d.title_count(); ++title) {
    add_line(text, "        <pgc>");
    add_line(text, "          <vob file=" + in_double_quotes(title_file(d, where, title)) +
                       " chapters=" + in_double_quotes(d.title(title).chapters_text) + " />");
    add_line(text, title_post(d, title));
    add_line(text, "        </pgc>");
  }
  add_line(text, "      </titles>");
}

}  // namespace

std::string navigation_xml(const disc_description& d, const run_paths& where) {
  std::string text;
  add_line(text, R"(<?xml version="1.0" encoding="UTF-8"?>)");
  add_line(text, "<dvdauthor dest=" + in_double_quotes(where.out) + ">");
  add_line(text, "<!-- DO NOT edit the 2 lines above -->");
  add_manager(text, d);
  add_line(text, "  <titleset>");
  add_menus(text, d, where);
  add_titles(text, d, where);
  add_line(text, "  </titleset>");
  add_line(text, "</dvdauthor>");
  return text;
}

std::string escape_ampersands(std::string_view text) {
  return replace_all(text, "&", "&amp;");
}

std::string config_xml(const disc_description& d, const std::string& customxml,
                       const run_paths& where) {
  return customxml.empty() ? escape_ampersands(navigation_xml(d, where)) : customxml;
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
