#include "tools/subtitle_preview.h"

#include "formats/sanitized.h"
#include "formats/text.h"
#include "platform/files/files.h"
#include "platform/files/program_folder.h"
#include "platform/files/scratch_folder.h"
#include "platform/processes/process.h"
#include "project/subtitle_checks.h"
#include "project/subtitle_control.h"
#include "project/subtitle_file.h"
#include "runner/tools/spumux_subtitles.h"
#include "runner/video_format.h"
#include "tools/cue_stream.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <system_error>
#include <utility>

namespace corvane {
namespace {

using clock = std::chrono::steady_clock;

/// How many cues are drawn when this one is wanted: the user will look at the next ones, and spumux
/// can only begin with the first one again.
constexpr std::size_t enough_for(std::size_t number) {
  return 2 * number + 100;
}

/// What of spumux's output can be the reason of a failure is at its end.
constexpr std::size_t longest_output = 1u << 16;

constexpr double stamps_a_second = 90000;

/// What a drawing depends on, but for the number of the cue.
struct drawing_source {
  std::string file;
  subtitle_settings settings;
  std::string region;
  std::optional<std::uintmax_t> size;
  std::filesystem::file_time_type written;

  bool operator==(const drawing_source&) const = default;
};

drawing_source source_of(const preview_request& r) {
  std::error_code error;
  const auto written = std::filesystem::last_write_time(path_of(r.file), error);
  return {r.file, r.settings, r.region, file_size(r.file), written};
}

/// Why spumux need not be started, as the end of a sentence.
refusal why_not_started(const preview_request& r, const std::string& app) {
  const auto file = subtitle_file::read(r.file);
  if (!file)
    return file.error;
  if (const refusal why = file->why_not(r.settings[subtitle_field::character_set]))
    return why;
  if (const refusal why = why_not_usable_path(r.file, native_style()))
    return "its name " + *why;
  if (const refusal why = why_not_drawable(r.settings))
    return "its settings have " + *why;
  for (const char* const tool : {"spumux", "conspawn"})
    if (!tool_is_there(app, tool))
      return std::string(tool) + ", which draws it, is not installed";
  return std::nullopt;
}

/// A spumux that draws the cues of a file, from the first one on.
class drawing {
 public:
  /// The error is the end of a sentence.
  static result<std::unique_ptr<drawing>> start(const preview_request& r, const std::string& app,
                                                const font_list& fonts,
                                                process_launcher& launcher) {
    using started = result<std::unique_ptr<drawing>>;
    auto folder = scratch_folder::make();
    if (!folder)
      return started::fail(folder.error);
    std::unique_ptr<drawing> d(new drawing(std::move(*folder)));
    if (const failure why = d->write_files(r, app, fonts))
      return started::fail(*why);
    start_result s = launcher.start(in_double_quotes(tool_path(app, "conspawn")) + " " +
                                        in_double_quotes(d->folder_->path(script_name)),
                                    {video_format(r.region)});
    if (!s.child)
      return started::fail("conspawn could not be started");
    d->child_ = std::move(s.child);
    return started::ok(std::move(d));
  }
  ~drawing() { stop(); }
  drawing(const drawing&) = delete;
  drawing& operator=(const drawing&) = delete;

  /// Takes what has been drawn and printed until now.
  void look() {
    if (!running())
      return;
    const bool ended = !take_output();
    if (stream_.read(folder_->path(drawn_name)))
      last_news_ = clock::now();
    else if (ended)
      child_.reset();  // and all that it wrote has been read
  }

  void stop() {
    if (!child_)
      return;
    child_->kill_all();
    child_.reset();
    stopped_ = true;
  }

  bool running() const { return child_ != nullptr; }
  bool stopped() const { return stopped_; }  ///< before its end
  bool stuck(clock::duration patience) const {
    return running() && clock::now() - last_news_ > patience;
  }
  const std::vector<stream_cue>& cues() const { return stream_.cues(); }
  const std::string& output() const { return output_; }

 private:
  static constexpr const char* control_name = "cue.xml";
  static constexpr const char* video_name = "video.mpg";
  static constexpr const char* drawn_name = "drawn.mpg";
  static constexpr const char* script_name = "draw.bat";

  explicit drawing(std::unique_ptr<scratch_folder> folder) : folder_(std::move(folder)) {}

  failure write_files(const preview_request& r, const std::string& app, const font_list& fonts) {
    const std::string control = folder_->path(control_name), video = folder_->path(video_name);
    const std::string script = in_double_quotes(tool_path(app, "spumux")) + " -s 0 " +
                               in_double_quotes(control) + " <" + in_double_quotes(video) + " > " +
                               in_double_quotes(folder_->path(drawn_name)) + "\r\n";
    for (const auto& [name, text] :
         {std::pair(control, subtitle_control_text(r.file, r.settings, fonts, native_style())),
          std::pair(video, stream_for_cues()), std::pair(folder_->path(script_name), script)})
      if (const failure why = write_file(name, text))
        return why;
    return std::nullopt;
  }

  /// False when the pipe is broken: all have ended.
  bool take_output() {
    for (;;) {
      const auto count = child_->waiting();
      if (!count || *count == 0)
        return count.has_value();
      const auto bytes = child_->read(*count);
      if (!bytes)
        return false;
      output_ += *bytes;
      if (output_.size() > 2 * longest_output)
        output_.erase(0, output_.size() - longest_output);
    }
  }

  std::unique_ptr<scratch_folder> folder_;
  std::unique_ptr<child_process> child_;  // nothing when it has ended
  cue_stream stream_;
  std::string output_;
  bool stopped_ = false;
  clock::time_point last_news_ = clock::now();
};

}  // namespace

struct subtitle_preview::work {
  work(std::string program_folder, font_list offered, clock::duration longest_wait)
      : app(std::move(program_folder)), fonts(std::move(offered)), patience(longest_wait) {}

  void want(const preview_request& r);
  void poll();
  void begin();
  std::optional<std::size_t> number_wanted() const;
  void finish(std::size_t number);
  void fail(const std::string& why);
  void give_up();

  std::string app;
  font_list fonts;
  clock::duration patience;
  std::unique_ptr<process_launcher> launcher = make_process_launcher();
  preview_request request;
  drawing_source source;
  std::unique_ptr<drawing> drawn;  // of the source; nullptr if it failed
  state now = state::idle;
  drawn_cue cue;
  std::string reason;
};

void subtitle_preview::work::fail(const std::string& why) {
  now = state::failed;
  reason = sanitized_quoted(text_of(path_of(request.file).filename())) +
           " cannot be shown: " + why + ".";
}

void subtitle_preview::work::want(const preview_request& r) {
  request = r;
  drawing_source wanted = source_of(r);
  const bool same = drawn && wanted == source;
  source = std::move(wanted);
  now = state::drawing;
  // One that was stopped on the way may not have got so far.
  const bool stopped_before = same && drawn->stopped() && !number_wanted();
  if (!same || stopped_before)
    begin();
}

void subtitle_preview::work::begin() {
  drawn.reset();
  if (const refusal why = why_not_started(request, app)) {
    fail(*why);
    return;
  }
  auto started = drawing::start(request, app, fonts, *launcher);
  if (!started)
    fail(started.error);
  else
    drawn = std::move(*started);
}

void subtitle_preview::work::poll() {
  if (!drawn)
    return;
  drawn->look();
  const std::optional<std::size_t> number = number_wanted();
  if (number && drawn->cues().size() >= enough_for(*number))
    drawn->stop();
  if (now != state::drawing)
    return;
  if (number)
    finish(*number);
  else if (!drawn->running())
    give_up();
  else if (drawn->stuck(patience)) {
    drawn.reset();
    fail("spumux did not finish drawing it");
  }
}

/// The number of the cue that is wanted, once it is drawn.
std::optional<std::size_t> subtitle_preview::work::number_wanted() const {
  const std::vector<stream_cue>& cues = drawn->cues();
  const auto number = static_cast<std::size_t>(std::max(request.cue, 1));
  if (!request.at)
    return cues.size() >= number ? std::optional(number) : std::nullopt;
  const auto found = std::find_if(cues.begin(), cues.end(), [this](const stream_cue& one) {
    return one.end / stamps_a_second > *request.at;
  });
  if (found != cues.end())
    return static_cast<std::size_t>(found - cues.begin()) + 1;
  const bool all_drawn = !drawn->running() && !drawn->stopped();
  return all_drawn && !cues.empty() ? std::optional(cues.size()) : std::nullopt;
}

void subtitle_preview::work::finish(std::size_t number) {
  const stream_cue& found = drawn->cues()[number - 1];
  cue = {};
  cue.number = static_cast<int>(number);
  cue.begin = found.begin / stamps_a_second;
  cue.end = found.end / stamps_a_second;
  cue.height = request.region == "PAL" ? 576 : 480;
  if (const failure why = paint_unit(found.unit, found.palette, cue))
    fail(*why);
  else
    now = state::ready;
}

void subtitle_preview::work::give_up() {
  const std::string why = why_not_subtitled(drawn->output());
  const std::size_t count = drawn->cues().size();
  if (!why.empty())
    fail(why);
  else if (count == 0)
    fail("spumux found no text in it");
  else
    fail("it has " + std::to_string(count) + (count == 1 ? " subtitle" : " subtitles") +
         ", no number " + std::to_string(request.cue));
}

subtitle_preview::subtitle_preview(std::string app, font_list fonts,
                                   std::chrono::milliseconds patience)
    : w_(std::make_unique<work>(std::move(app), std::move(fonts), patience)) {}

subtitle_preview::~subtitle_preview() = default;

void subtitle_preview::want(const preview_request& r) {
  w_->want(r);
}

subtitle_preview::state subtitle_preview::poll() {
  w_->poll();
  return w_->now;
}

const drawn_cue& subtitle_preview::cue() const {
  return w_->cue;
}

std::string subtitle_preview::missing() const {
  if (!w_->drawn)
    return {};
  return what_is_missing(
      w_->drawn->output(),
      subtitle_control_text(w_->source.file, w_->source.settings, w_->fonts, native_style()));
}

const std::string& subtitle_preview::reason() const {
  return w_->reason;
}

}  // namespace corvane
