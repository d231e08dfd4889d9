#include "authoring/checks.h"
#include "authoring/disc_texts.h"
#include "authoring/row_checks.h"
#include "formats/numbers.h"
#include "formats/sanitized.h"
#include "formats/text.h"
#include "project/subtitle_checks.h"
#include "project/subtitle_file.h"

namespace corvane {
namespace {

// What a titleset can hold. dvdauthor takes more titles and audio streams in silence and makes a
// disc on which they cannot be reached.
constexpr std::size_t most_titles = 99;
constexpr std::size_t most_audio_streams = 8;

std::string title_named(int title) {
  return "Title " + trimmed(title);
}

refusal why_not_streams(const disc_description& d, int title, path_style style) {
  const std::vector<std::string> streams = native_streams(d.title(title), style);
  if (streams.empty())
    return title_named(title) + " names no file.  Please remove it and add it again.";
  if (streams.size() > most_audio_streams + 1)
    return title_named(title) + " has " + std::to_string(streams.size() - 1) +
           " audio streams, but a DVD title holds at most 8.  Please remove the title and add it "
           "again with fewer.";
  for (const std::string& stream : streams)
    if (const refusal why = why_not_usable_path(stream, style))
      return title_named(title) + " cannot be authored: the file name " + sanitized_quoted(stream) +
             " " + *why + ".  Please remove the title, rename the file and add the title again.";
  return std::nullopt;
}

// The delay stands in the script outside quotes, so it must be a number and nothing else.
refusal why_not_delay(const disc_description& d, int title) {
  const text_number& delay = d.title(title).delay;
  if (!d.title(title).is_multiplexed_here || delay.is_number)
    return std::nullopt;
  return title_named(title) + " has the A/V delay " + sanitized_quoted(delay.text) +
         ", which is not a number of milliseconds.  Please set the delay again.";
}

refusal why_not_settings(const disc_subtitle& s, int title, int subtitle) {
  const std::string advice = "  Please set the subtitle's options again.";
  const std::string subject =
      "Subtitle " + trimmed(subtitle) + " of title " + trimmed(title) + " has ";
  if (s.field_count != subtitle_field_count)
    return subject + std::to_string(s.field_count) + " settings instead of 12." + advice;
  if (const refusal why = why_not_drawable(*s.settings))
    return subject + *why + "." + advice;
  return std::nullopt;
}

refusal why_not_subtitles(const disc_title& t, int title, path_style style) {
  if (!t.subtitles.empty() && !t.is_multiplexed_here)
    return title_named(title) +
           " is an already multiplexed file, to which no subtitles can be added.  Please remove "
           "the title and add it again.";
  if (t.subtitles.size() > most_subpictures)
    return title_named(title) + " has " + std::to_string(t.subtitles.size()) +
           " subtitles, but a DVD title holds at most 32.  Please reset its subtitles.";
  int number = 0;
  for (const disc_subtitle& s : t.subtitles) {
    ++number;
    const std::string file = native_from_stored(s.file, style);
    if (const refusal why = why_not_usable_path(file, style))
      return "Subtitle " + trimmed(number) + " of title " + trimmed(title) +
             " cannot be authored: the file name " + sanitized_quoted(file) + " " + *why +
             ".  Please rename the file and add the subtitle again.";
    if (const refusal why = why_not_settings(s, title, number))
      return why;
  }
  return std::nullopt;
}

// What to do depends on what is wrong: a file that is Unicode is one whose settings are.
std::string advice_about(const subtitle_file& file, const std::string& charset) {
  if (!file.unicode().empty() && charset != file.unicode())
    return "Please reset the title's subtitles, add the file again and have it read as " +
           file.unicode() + ".";
  return "Please reset the title's subtitles and add one that can be read.";
}

refusal why_not_this_subtitle(const disc_subtitle& s, int title, int subtitle, path_style style) {
  const std::string path = native_from_stored(s.file, style);
  const std::string subject = "Subtitle " + trimmed(subtitle) + " of title " + trimmed(title) +
                              " cannot be authored: the file " + sanitized_quoted(path) +
                              " cannot be used, since ";
  const result<subtitle_file> file = subtitle_file::read(path);
  if (!file)
    return subject + file.error +
           ".  Please put it back, or reset the title's subtitles and add another one.";
  const std::string& charset = (*s.settings)[subtitle_field::character_set];
  if (const refusal why = file->why_not(charset))
    return subject + *why + ".  " + advice_about(*file, charset);
  return std::nullopt;
}

}  // namespace

refusal why_not_these_subtitles(const disc_description& d, path_style style) {
  for (int title = 1; title <= d.title_count(); ++title) {
    int number = 0;
    for (const disc_subtitle& s : d.title(title).subtitles)
      if (const refusal why = why_not_this_subtitle(s, title, ++number, style))
        return why;
  }
  return std::nullopt;
}

refusal why_not_titles(const disc_description& d, path_style style) {
  if (d.titles.size() > most_titles)
    return "The project has " + std::to_string(d.titles.size()) +
           " titles, but a DVD holds at most 99.  Please remove some.";
  for (int title = 1; title <= d.title_count(); ++title) {
    if (const refusal why = why_not_streams(d, title, style))
      return why;
    if (const refusal why = why_not_delay(d, title))
      return why;
    if (const refusal why = why_not_subtitles(d.title(title), title, style))
      return why;
  }
  return std::nullopt;
}

}  // namespace corvane
