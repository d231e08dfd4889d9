#include "authoring/avisynth_script.h"

#include "formats/sanitized.h"
#include "formats/text.h"
#include "platform/files/files.h"
#include "project/disc_of.h"
#include "project/messages.h"

#include <optional>
#include <vector>

namespace corvane {
namespace {

constexpr const char* avisynth_site = "http://avisynth.nl";
constexpr const char* plugin_page = "http://avisynth.nl/index.php/External_filters";

constexpr int frame_width = 720;
constexpr int thumbnail_width = 100;
constexpr int left_offset = 80, top_offset = 100;
constexpr int column_advance = thumbnail_width * 3 / 2;
constexpr int row_end = 600 - thumbnail_width;
constexpr int row_gap = 100;
constexpr int border = 2;  // around a thumbnail, and again between that and its button

/// What the video standard decides.
struct frame_form {
  int height = 576;
  std::string rate = "2500";  ///< frames in 100 seconds
  int thumbnail_height() const { return height * thumbnail_width / frame_width; }
};

frame_form form_of(const disc_description& d) {
  return d.standard == video_standard::ntsc ? frame_form{480, "2997"} : frame_form{};
}

/// Where a thumbnail stands, its border included.
struct place {
  int x, y;
};

std::vector<place> places_of(std::size_t titles, const frame_form& form) {
  std::vector<place> all;
  int x = 0;
  int y = 0;
  for (std::size_t i = 0; i < titles; ++i) {
    all.push_back({x + left_offset, y + top_offset});
    x += column_advance;
    if (x >= row_end) {
      x = 0;
      y += form.thumbnail_height() + row_gap;
    }
  }
  return all;
}

std::string caption_of(const std::string& title) {
  const auto colon = title.find(':');
  std::string name = title.substr(colon == std::string::npos ? 0 : colon + 1);
  name = name.substr(0, name.find('/'));
  const auto dot = name.rfind('.');
  if (dot != std::string::npos && dot > 0)
    name.resize(dot);
  return replace_all(sanitized(trim_left(name)), "\"", "'");
}

class script {
 public:
  void line(const std::string& text) { text_ += text + std::string(crlf); }
  const std::string& text() const { return text_; }

 private:
  std::string text_;
};

void add_head(script& s) {
  const std::string row(96, '#');
  s.line(row);
  s.line(std::string("#auto generated from ") + version_title);
  s.line(
      "#Using this script will require a basic working knowledge of avisynth.  For more info, "
      "visit " +
      std::string(avisynth_site));
  s.line("#This script will require mpegdecoder.dll from " + std::string(plugin_page) +
         "  You will also need the latest Avisynth (2.5.5)");
  s.line("#edit the variables located below to customize this script");
  s.line("#Edit the title text in the subtitle ");
  s.line("#NOTE:  If you do not like the solid background, you can use any source for the back, ");
  s.line("#including still images by using the imagereader() function");
  s.line(
      "#For example, substituting the blankclip function for "
      "imagereader(\"c:\\dvd\\weddingpic.bmp\").assumefps(29.97)");
  s.line("#sets the bmp image as the background (at 29.97 fps)");
  s.line(row);
}

void add_variables(script& s, const disc_description& d) {
  s.line("header=\"header text\"");
  s.line("bordercolor=$00ffff     #Edit this line to change the border color.");
  s.line("backgroundcolor=$333333 #Edit this line to change the background color.");
  s.line("textcolor=$ffffff       #Edit this line to change the text color");
  s.line("halocolor=$101010       #Border around the text");
  s.line("fontsize=18             #Font size");
  s.line("fontface=\"verdana\"      #Font style");
  for (std::size_t i = 0; i < d.titles.size(); ++i)
    s.line("TitleText" + std::to_string(i + 1) + "=\"" + caption_of(d.titles[i].name) + "\"");
  s.line(
      "length=1200          #length of the clip in frames.  eg: 1200 frames is appx 40 seconds "
      "(NTSC)");
  s.line("");
  s.line(std::string(97, '#'));
}

void add_clips(script& s, const disc_description& d, const frame_form& form, path_style style) {
  for (std::size_t i = 0; i < d.titles.size(); ++i)
    s.line("title" + std::to_string(i + 1) + "=mpegsource(\"" +
           native_from_stored(d.titles[i].video(), style) + "\").bilinearresize(" +
           std::to_string(thumbnail_width) + "," + std::to_string(form.thumbnail_height()) +
           ").addborders(2,2,2,2,bordercolor)");
  s.line("blankclip(length," + std::to_string(frame_width) + "," + std::to_string(form.height) +
         ",\"yuy2\"," + form.rate + ",100,color=backgroundcolor).killaudio()");
}

/// The caption's baseline is one letter's height below the thumbnail.
void add_thumbnail(script& s, std::size_t number, const place& at, const frame_form& form) {
  const std::string n = std::to_string(number);
  const int below = at.y + form.thumbnail_height() + 2 * border;
  s.line("overlay(title" + n + "," + std::to_string(at.x) + "," + std::to_string(at.y) + ")");
  s.line("subtitle(TitleText" + n + ", " + std::to_string(at.x) + ", fontsize+" +
         std::to_string(below) +
         ", font=fontface, size=fontsize, text_color=textcolor, halo_color=halocolor) ");
}

std::string button_note(std::size_t number, const place& at, const frame_form& form) {
  constexpr int around = 4 * border;  // the thumbnail's border and the button's, on both sides
  return "#Button" + std::to_string(number) +
         " coordinates are: Left=" + std::to_string(at.x - border) +
         " width=" + std::to_string(thumbnail_width + around) +
         " top=" + std::to_string(at.y - border) +
         " height=" + std::to_string(form.thumbnail_height() + around);
}

file_dialog script_dialog() {
  file_dialog dialog;
  dialog.title = "save the avisynth script";
  dialog.filter = "avisynth script(*.avs)|*.avs";
  return dialog;
}

/// A project file may come from a stranger: no path may end its quotes and go on as script.
std::optional<std::string> why_not_in_script(const disc_description& d) {
  for (std::size_t i = 0; i < d.titles.size(); ++i) {
    const std::string video = native_from_stored(d.titles[i].video());
    if (const auto why = why_not_storable(video))
      return "The video \"" + sanitized(video) + "\" of title " + std::to_string(i + 1) +
             " cannot stand in a script: its name " + *why + ".";
  }
  return std::nullopt;
}

bool is_a_stream(const disc_description& d, const std::string& file) {
  for (const disc_title& title : d.titles)
    for (const std::string& stream : title.streams)
      if (same_place(file, native_from_stored(stream)))
        return true;
  return false;
}

/// The script's native path; empty when the user cancelled.
std::string choose_file(document& doc, const disc_description& d) {
  for (;;) {
    const std::string file = doc.ask.save_file(script_dialog());
    if (file.empty() || !file_exists(file))
      return file;
    if (is_a_stream(d, file))
      say(doc, icon::exclamation, "The script cannot be written over a stream of the project.");
    else if (may_overwrite(doc))
      return file;
  }
}

void offer_to_edit(document& doc, desktop& user_desktop, const std::string& file) {
  message_box question;
  question.text =
      "Script created.  Make sure that the latest Avisynth (2.5.5 or greater) is installed and "
      "that mpegdecoder.dll is in the plugins directory to use this script.  Mpegdecoder.dll can "
      "be downloaded at " +
      std::string(plugin_page) +
      ". \r\nIf you choose to use rectangular buttons for the menu, the coordinates needed are "
      "located at the bottom of the script.\r\n   Edit script now?";
  question.picture = icon::information;
  question.choice = buttons::ok_cancel;
  if (doc.ask.message(question) != answer::ok)
    return;
  if (const failure why = user_desktop.edit_text(file))
    say(doc, icon::exclamation,
        "The editor could not be started: " + sanitized(*why) + ".\r\nThe script is the file \"" +
            sanitized(file) + "\".");
}

}  // namespace

std::string avisynth_script(const disc_description& d, path_style style) {
  const frame_form form = form_of(d);
  const std::vector<place> places = places_of(d.titles.size(), form);
  script s;
  add_head(s);
  add_variables(s, d);
  add_clips(s, d, form, style);
  for (std::size_t i = 0; i < places.size(); ++i)
    add_thumbnail(s, i + 1, places[i], form);
  s.line(
      "subtitle(header, 72, 90, font=fontface, size=(fontsize+10), text_color=textcolor, "
      "halo_color=halocolor) ");
  s.line("#If you want to use rectangular buttons in the menu editor, use these coordinates:");
  for (std::size_t i = 0; i < places.size(); ++i)
    s.line(button_note(i + 1, places[i], form));
  s.line("#use a suggested width of at least 3 pixels");
  s.line("");
  return s.text();
}

avisynth_result avisynth_command(document& doc, desktop& user_desktop) {
  const disc_description d = disc_of(doc.p);
  if (d.titles.empty()) {
    say(doc, icon::exclamation, "please add more titles");
    return avisynth_result::no_title;
  }
  if (const auto why = why_not_in_script(d)) {
    say(doc, icon::exclamation, *why);
    return avisynth_result::refused;
  }
  say(doc, icon::information,
      "This will generate a simple avisynth script based on the titles that are loaded.  Be sure "
      "to edit this script for your needs, then encode in an mpeg encoder to an mpeg2 elementry "
      "stream.");
  const std::string file = choose_file(doc, d);
  if (file.empty())
    return avisynth_result::cancelled;
  if (const failure why = write_file(file, avisynth_script(d))) {
    say(doc, icon::critical,
        "The file \"" + sanitized(file) + "\" could not be written: " + sanitized(*why) + ".");
    return avisynth_result::not_written;
  }
  offer_to_edit(doc, user_desktop, file);
  return avisynth_result::written;
}

}  // namespace corvane
