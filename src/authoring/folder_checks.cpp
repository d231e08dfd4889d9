#include "authoring/checks.h"
#include "authoring/disc_texts.h"
#include "authoring/row_checks.h"
#include "formats/sanitized.h"
#include "formats/text.h"
#include "platform/files/files.h"

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <system_error>

namespace corvane {
namespace {

// Comparing places ------------------------------------------------------------------------------

// The folders of a path from the root on, tidied of "." and ".."; on Windows in lower case, since
// names there differ in more than case.
std::vector<std::string> steps_of(std::string_view native, path_style style) {
  std::string text(native);
  if (style == path_style::windows)
    text = lower(replace_all(text, "/", "\\"));
  std::vector<std::string> steps;
  for (const std::string& step : split(text, separator(style))) {
    if (step == ".." && !steps.empty())
      steps.pop_back();
    if (!step.empty() && step != "." && step != "..")
      steps.push_back(step);
  }
  return steps;
}

bool same_or_below(const std::vector<std::string>& path, const std::vector<std::string>& folder) {
  return path.size() >= folder.size() && std::equal(folder.begin(), folder.end(), path.begin());
}

// The path with the links on it followed, as far as it exists; only where the system that the
// program runs on writes paths in this style.
std::string resolved(const std::string& native, path_style style) {
  if (style != native_style())
    return native;
  std::error_code error;
  const std::filesystem::path real = std::filesystem::weakly_canonical(path_of(native), error);
  return error ? native : text_of(real);
}

std::string parent_of(const std::string& native, path_style style) {
  const auto last = native.rfind(separator(style));
  return last == std::string::npos ? std::string() : native.substr(0, last);
}

std::string name_of(const std::string& native, path_style style) {
  return native.substr(native.rfind(separator(style)) + 1);
}

// A file counts as being in a folder by the name it was picked with (a link there would be erased)
// and by the place it really has.
bool is_below(const std::string& file, const std::string& folder, path_style style) {
  const auto where = steps_of(resolved(folder, style), style);
  const std::string by_name =
      join_path(resolved(parent_of(file, style), style), name_of(file, style), style);
  return same_or_below(steps_of(by_name, style), where) ||
         same_or_below(steps_of(resolved(file, style), style), where);
}

bool is_the_same(const std::string& a, const std::string& b, path_style style) {
  return steps_of(resolved(a, style), style) == steps_of(resolved(b, style), style);
}

// What lies in the folder -----------------------------------------------------------------------

// What erase takes for *.mpg.
bool is_mpg(const std::string& name, path_style style) {
  return (style == path_style::windows ? lower(name) : name).ends_with(".mpg");
}

std::filesystem::file_type type_of(const std::string& native) {
  std::error_code error;
  return std::filesystem::symlink_status(path_of(native), error).type();
}

// Every file that the run reads, native.
std::vector<std::string> files_of(const disc_description& d, path_style style) {
  std::vector<std::string> files;
  const auto add = [&files, style](const std::string& stored) {
    files.push_back(native_from_stored(stored, style));
  };
  for (const disc_title& title : d.titles) {
    for (const std::string& stream : title.streams)
      add(stream);
    for (const disc_subtitle& subtitle : title.subtitles)
      add(subtitle.file);
  }
  for (const disc_menu& menu : d.menus) {
    add(menu.video());
    if (!menu.audio().empty())
      add(menu.audio());
    for (const disc_button& b : menu.buttons)
      for (const disc_look& look : {b.highlight, b.select})
        if (look.is_bitmap)
          add(look.text);
  }
  return files;
}

// The refusals ----------------------------------------------------------------------------------

/// More than what a full disk has left in its last block.
constexpr std::size_t enough_for_a_beginning = std::size_t{64} << 10;

const std::string advice = "  Please choose another folder.";

// "C:\\" has lost its separator as any folder named with one.
bool is_bare_drive(const run_paths& where) {
  return where.style == path_style::windows && where.out.size() == 2 && where.out[1] == ':';
}

bool windows_forbids(std::string_view native) {
  const std::string_view behind_drive =
      native.size() >= 2 && native[1] == ':' ? native.substr(2) : native;
  return behind_drive.find_first_of(":*?>") != std::string_view::npos;
}

// The longest path that a run makes in a folder.
refusal why_too_long_in(const std::string& folder, const char* inner, const char* name,
                        path_style style) {
  const refusal why = why_too_long(join_path(join_path(folder, inner, style), name, style), style);
  return why ? refusal("the path of " + std::string(name) + " in it " + *why) : std::nullopt;
}

refusal why_not_path(const run_paths& where) {
  const std::string folder = "The output folder " + sanitized_quoted(where.out);
  if (where.out.empty() || is_bare_drive(where))
    return "The top folder of a disk cannot be the output folder." + advice;
  if (const refusal why = why_not_usable_path(where.out, where.style))
    return folder + " cannot be used: it " + *why + "." + advice;
  if (where.style == path_style::windows && windows_forbids(where.out))
    return folder + " cannot be used: it contains a character that is not allowed in names." +
           advice;
  if (const refusal why = why_too_long_in(where.out, "VIDEO_TS", "VTS_01_0.IFO", where.style))
    return folder + " cannot be used: " + *why + "." + advice;
  if (const refusal why = why_too_long_in(where.app, "bin", "dvdauthor.exe", where.style))
    return "The program folder " + sanitized_quoted(where.app) + " cannot be used: " + *why +
           ".  Please let the program work in another folder.";
  if (const refusal why = why_not_usable_path(where.app, where.style))
    return "The program folder " + sanitized_quoted(where.app) + " cannot be used: it " + *why +
           ".  Please let the program work in another folder.";
  return std::nullopt;
}

refusal why_not_place(const run_paths& where) {
  const std::string folder = "The output folder \"" + where.out + "\"";
  const auto type = type_of(where.out);
  if (type != std::filesystem::file_type::not_found && !folder_exists(where.out))
    return folder + " is a file, not a folder." + advice;
  if (is_below(where.app, where.out, where.style))
    return folder + " holds the program's own folder \"" + where.app +
           "\", in which authoring writes and erases files." + advice;
  return std::nullopt;
}

refusal why_not_a_project_file(const std::string& file, const disc_description& d,
                               const run_paths& where) {
  const path_style style = where.style;
  const std::string subject = "The project uses the file \"" + file + "\", ";
  const bool in_out = is_the_same(parent_of(file, style), where.out, style) ||
                      is_the_same(parent_of(resolved(file, style), style), where.out, style);
  if (in_out &&
      (is_mpg(name_of(file, style), style) || is_mpg(name_of(resolved(file, style), style), style)))
    return subject + "and authoring erases all .mpg files in its output folder \"" + where.out +
           "\"." + advice;
  for (const char* disc : {"VIDEO_TS", "AUDIO_TS"})
    if (is_below(file, where.in_out(disc), style))
      return subject + "which would be lost when the DVD in the output folder \"" + where.out +
             "\" is replaced." + advice;
  if (d.image && is_the_same(file, where.out + ".iso", style))
    return subject + "which the disc image would replace." + advice;
  return std::nullopt;
}

}  // namespace

std::optional<std::string> why_not_this_folder(const disc_description& d, const run_paths& where) {
  if (const refusal why = why_not_path(where))
    return why;
  if (const refusal why = why_not_place(where))
    return why;
  for (const std::string& file : files_of(d, where.style))
    if (const refusal why = why_not_a_project_file(file, d, where))
      return why;
  return std::nullopt;
}

std::optional<std::string> why_not_what_lies_there(const run_paths& where) {
  for (const std::string& name : files_in(where.out))
    if (is_mpg(name, where.style))
      return "The output folder holds the file " + sanitized_quoted(where.in_out(name)) +
             ", and authoring erases all .mpg files there.  Please move the file or choose "
             "another folder.";
  return std::nullopt;
}

// Tools would each find it out for themselves, and say so in many lines.
std::optional<std::string> why_nothing_is_written_there(const run_paths& where) {
  std::error_code error;
  std::filesystem::path there = path_of(where.out);
  while (!std::filesystem::exists(there, error) && there.has_relative_path())
    there = there.parent_path();
  const failure why = try_writing_in(text_of(there), enough_for_a_beginning);
  if (!why)
    return std::nullopt;
  if (there == path_of(where.out))
    return "Nothing can be written into the output folder \"" + where.out + "\": " + *why + "." +
           advice;
  return "The output folder \"" + where.out +
         "\" cannot be made, for nothing can be written into \"" + text_of(there) + "\": " + *why +
         "." + advice;
}

std::vector<std::string> earlier_disc(const run_paths& where, bool image) {
  std::vector<std::string> found;
  for (const char* folder : {"VIDEO_TS", "AUDIO_TS"})
    if (type_of(where.in_out(folder)) != std::filesystem::file_type::not_found)
      found.push_back(where.in_out(folder));
  // A folder of the image's name is somebody's own; mkisofs will say that it cannot write there.
  const auto type = type_of(where.out + ".iso");
  if (image &&
      (type == std::filesystem::file_type::regular || type == std::filesystem::file_type::symlink))
    found.push_back(where.out + ".iso");
  return found;
}

}  // namespace corvane
