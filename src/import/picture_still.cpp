#include "import/picture_still.h"

#include "formats/aspect_code.h"
#include "formats/jpeg_check.h"
#include "formats/numbers.h"
#include "formats/sanitized.h"
#include "formats/text.h"
#include "import/import_names.h"
#include "platform/files/files.h"
#include "platform/files/program_folder.h"
#include "runner/run_files.h"
#include "tools/still_video.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <string_view>
#include <utility>

namespace corvane {
namespace {

constexpr const char* missing_end = "it is cut off; the rest of the picture is missing";
constexpr std::uintmax_t largest_jpeg_file = 256u << 20;
constexpr int still_width = 720, ntsc_lines = 480, pal_lines = 576;

struct known_form {
  std::string_view codec, form;
  bool everywhere;  ///< the gm of the Windows product reads it too
};

// By FFmpeg's names and gm's.
constexpr auto known_forms = std::to_array<known_form>({{"mjpeg", "JPEG", true},
                                                        {"png", "PNG", true},
                                                        {"apng", "PNG", true},
                                                        {"bmp", "BMP", true},
                                                        {"gif", "GIF", true},
                                                        {"ppm", "PNM", true},
                                                        {"pgm", "PNM", true},
                                                        {"pbm", "PNM", true},
                                                        {"pcx", "PCX", true},
                                                        {"tiff", "TIFF", false},
                                                        {"webp", "WEBP", false}});

int lines_of(video_standard standard) {
  return standard == video_standard::pal ? pal_lines : ntsc_lines;
}

/// Films have covers, too.
bool holds_a_picture(const source_facts& facts) {
  return facts.container.ends_with("_pipe") || facts.container == "gif" ||
         facts.container == "apng";
}

const source_stream* picture_in(const source_facts& facts) {
  const auto found = std::ranges::find_if(facts.streams, [](const source_stream& stream) {
    return stream.kind == source_kind::picture || stream.kind == source_kind::video;
  });
  return found == facts.streams.end() ? nullptr : &*found;
}

std::string readable_forms(path_style style) {
  return style == path_style::windows ? "PNG, JPEG, BMP or GIF"
                                      : "PNG, JPEG, TIFF, BMP, GIF or WebP";
}

std::string size_text(picture_size size) {
  return trimmed(size.width) + "x" + trimmed(size.height);
}

std::string place_text(int left, int top) {
  return "+" + trimmed(left) + "+" + trimmed(top);
}

/// Where a canvas begins, seen from the picture on it: to the left of it and above.
std::string canvas_text(const picture_geometry& g) {
  return size_text(g.disc) + "-" + trimmed(g.left) + "-" + trimmed(g.top);
}

/// Read from standard input, so that nothing in its name means anything to gm; only the first of
/// several pictures. What can be seen through stands on black.
std::string gm_arguments(const picture_still& still) {
  const still_source& source = still.source;
  const picture_geometry g = geometry_of(source, still.choices);
  std::string text = " convert \"" + source.form + ":-[0]\"";
  if (source.mirrored)
    text += " -flop";
  if (source.turned != 0)
    text += " -rotate " + trimmed(source.turned);
  text += " -colorspace RGB -background black -flatten";
  if (g.is_cropped(source.shown))
    text += " -crop " + size_text(g.cropped) + place_text(g.crop_left, g.crop_top) + " +page";
  text += " -filter Lanczos -resize " + size_text(g.scaled) + "! -extent " + canvas_text(g);
  return text + " -depth 8 -type TrueColor +profile \"*\" -sampling-factor 2x2 -quality 100 JPEG:-";
}

/// How much of a picture is taken, from 0 to 1.
double part_taken(const still_source& source, const picture_geometry& g) {
  const auto area = [](picture_size size) {
    return static_cast<double>(size.width) * static_cast<double>(size.height);
  };
  return area(g.cropped) / area(source.shown.size);
}

/// A name beside it that nothing has.
std::string name_aside(const std::string& file) {
  std::string aside = file + ".earlier";
  for (int number = 2; entry_exists(aside); ++number)
    aside = file + ".earlier" + trimmed(number);
  return aside;
}

/// What is replaced lies aside until the new one has its name.
failure give_name(const picture_still& still) {
  const std::string part = temporary_name(still.m2v);
  if (!still.replaces || !entry_exists(still.m2v))
    return move_entry(part, still.m2v);
  if (const failure why = why_not_writable_file(still.m2v))
    return "it " + *why;
  const std::string aside = name_aside(still.m2v);
  if (const failure why = move_entry(still.m2v, aside))
    return why;
  if (const failure why = move_entry(part, still.m2v)) {
    const failure lost = move_entry(aside, still.m2v);
    return lost ? *why + "; the earlier one is the file \"" + sanitized(aside) + "\"" : why;
  }
  remove_all(aside);
  return std::nullopt;
}

}  // namespace

bool still_source::is_drawn_for_disc() const {
  return shown.size == picture_size{still_width, ntsc_lines} ||
         shown.size == picture_size{still_width, pal_lines};
}

bool is_picture_alone(const source_facts& facts) {
  return !facts.streams.empty() &&
         std::ranges::all_of(facts.streams, [](const source_stream& stream) {
           return stream.kind == source_kind::picture;
         });
}

result<still_source> still_source_of(const std::string& file, const source_facts& facts,
                                     path_style style) {
  using found = result<still_source>;
  const source_stream* const picture = picture_in(facts);
  if (picture == nullptr || !holds_a_picture(facts))
    return found::fail("it is not a file with one picture");
  const auto form = std::ranges::find(known_forms, picture->codec, &known_form::codec);
  if (form == known_forms.end() || (style == path_style::windows && !form->everywhere))
    return found::fail("a still cannot be made of a picture in this form; please save it as " +
                       readable_forms(style));
  if (facts.cut_short)
    return found::fail(missing_end);
  return found::ok({file, std::string(form->form), shown_picture_of(picture->video),
                    picture->video.turned, picture->video.mirrored});
}

result<still_source> still_source_at(const std::string& file, const source_prober& probe,
                                     path_style style) {
  using found = result<still_source>;
  const result<source_facts> facts = probe(file);
  if (!facts)
    return found::fail(facts.error);
  result<still_source> source = still_source_of(file, *facts, style);
  if (!source || source->form != "JPEG")
    return source;
  const auto bytes = read_file(file, largest_jpeg_file);
  if (!bytes)
    return found::fail(bytes.error);
  return is_cut_off_jpeg(*bytes) ? found::fail(missing_end) : source;
}

still_choices preset_choices(const still_source& source, const titleset_demands& demands,
                             video_standard prefers) {
  still_choices choices;
  const bool is_pal_frame = source.is_drawn_for_disc() && source.shown.size.height == pal_lines;
  const bool is_ntsc_frame = source.is_drawn_for_disc() && !is_pal_frame;
  choices.standard = demands.standard ? *demands.standard
                     : is_pal_frame   ? video_standard::pal
                     : is_ntsc_frame  ? video_standard::ntsc
                                      : prefers;
  if (demands.aspect)
    choices.aspect = *demands.aspect;
  else if (!source.is_drawn_for_disc())
    choices.aspect = nearest_aspect(source.shown.shape());
  return choices;
}

picture_geometry geometry_of(const still_source& source, const still_choices& choices) {
  shown_picture shown = source.shown;
  if (source.is_drawn_for_disc())
    shown.pixel_aspect = times(ratio_of(choices.aspect), {shown.size.height, shown.size.width});
  return fit_picture(shown, {still_width, lines_of(choices.standard)}, choices.aspect, choices.fit);
}

std::string described(const still_source& source, const picture_geometry& g) {
  constexpr double whole = 100;
  if (g.is_cropped(source.shown)) {
    const double cut = whole * (1 - part_taken(source, g));
    return "about " + trimmed(std::max<std::int64_t>(1, std::lround(cut))) + " % are cut off " +
           (g.cropped.width < source.shown.size.width ? "at the sides" : "above and below");
  }
  if (g.has_bars())
    return g.scaled.width < g.disc.width ? "black bars at the sides" : "black bars above and below";
  return "it fills the whole picture";
}

std::string still_name(const std::string& picture,
                       const std::function<bool(const std::string&)>& is_taken, path_style style) {
  const auto name = std::min(picture.find_last_of(style == path_style::windows ? "\\/" : "/") + 1,
                             picture.size());
  const auto dot = picture.rfind('.');
  const std::string stem =
      dot == std::string::npos || dot <= name ? picture : picture.substr(0, dot);
  for (int number = 1;; ++number) {
    std::string m2v = stem + (number == 1 ? "" : " (" + std::to_string(number) + ")") + ".m2v";
    if (!is_taken(m2v) && !is_taken(temporary_name(m2v)))
      return m2v;
  }
}

std::vector<std::string> picture_still_lines(const std::string& app, const picture_still& still,
                                             path_style style) {
  const bool wide = still.choices.aspect == disc_aspect::sixteen_nine;
  still_video made;
  made.jpeg = join_path(app, run_file::still_picture, style);
  made.m2v = temporary_name(still.m2v);
  made.height = lines_of(still.choices.standard);
  made.frames = still.choices.frames;
  made.aspect = wide ? aspect_code::wide : aspect_code::narrow;
  const std::string jpeg = in_double_quotes(made.jpeg);
  return {in_double_quotes(tool_path(app, "gm", style)) + gm_arguments(still) + " < " +
              in_double_quotes(still.source.file) + " > " + jpeg,
          still_line(app, made, style), "erase " + jpeg};
}

std::string picture_still_script(const std::string& app, const picture_still& still,
                                 path_style style) {
  return still_script_of(picture_still_lines(app, still, style));
}

run_settled settle_picture_still(const std::string& app, const picture_still& still,
                                 run_outcome outcome) {
  run_settled settled;
  remove_all(join_path(app, run_file::still_picture));
  const std::string part = temporary_name(still.m2v);
  if (outcome != run_outcome::success) {
    remove_all(part);
    return settled;
  }
  if (const failure why = give_name(still))
    settled.warnings.push_back("The still is whole, but it could not be named \"" +
                               sanitized(still.m2v) + "\": " + *why + ".  It is the file \"" +
                               sanitized(part) + "\".");
  return settled;
}

}  // namespace corvane
