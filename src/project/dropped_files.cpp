#include "project/dropped_files.h"

#include "formats/numbers.h"
#include "formats/sanitized.h"
#include "platform/files/files.h"
#include "platform/files/paths.h"
#include "project/dropped_match.h"
#include "project/messages.h"
#include "project/picked_file.h"
#include "project/project_file.h"
#include "project/title_commands.h"

#include <deque>
#include <utility>

namespace corvane {
namespace {

constexpr std::size_t most_named_files = 10;

/// Answers a command's open dialogs with dropped files, one after the other; passes every other
/// question on to the user.
class dropped_answers : public prompts_relay {
 public:
  dropped_answers(prompts& user, std::deque<std::string> files)
      : prompts_relay(user), files_(std::move(files)) {}

  std::string open_file(const file_dialog& dialog) override {
    if (files_.empty())
      return prompts_relay::open_file(dialog);
    std::string file = std::move(files_.front());
    files_.pop_front();
    return file;
  }

 private:
  std::deque<std::string> files_;
};

/// Runs a command whose open dialogs are answered with `files`; gives what it gives.
template <class Result>
Result run_with(document& doc, Result (*command)(document&), std::deque<std::string> files) {
  dropped_answers ask(doc.ask.asked(), std::move(files));
  const prompts_relay::answered_by dropped(doc.ask, ask);
  return command(doc);
}

/// Adds audio to the selected title until one is not taken (the command has said why).
void add_audio(document& doc, const std::vector<std::string>& audio) {
  for (const std::string& file : audio) {
    const auto before = doc.p.List11;
    run_with(doc, addaudiostream_command, {file});
    if (doc.p.List11 == before)
      return;
  }
}

/// Adds a title; its first audio goes with the video, the others are added to it. Gives it back if
/// it was refused, but is for an import.
std::string add_dropped_title(document& doc, const dropped_title& title) {
  std::deque<std::string> answers{title.video};
  std::vector<std::string> further = title.audio;
  if (!title.muxed && !further.empty()) {
    answers.push_back(further.front());
    further.erase(further.begin());
  }
  const std::size_t before = doc.p.List1.size();
  std::string refused = run_with(doc, open_or_refuse, std::move(answers));
  if (doc.p.List1.size() == before)
    return refused;
  const int selected = doc.p.selected;
  doc.p.selected = static_cast<int>(before);
  add_audio(doc, further);
  doc.p.selected = selected;
  return {};
}

/// What a file is, where its first bytes tell more than that it is a second project.
std::string described(const std::string& native) {
  const std::string kind =
      lower_extension_of(native) == "cvp" ? std::string() : kind_of_file(native);
  return kind.empty() ? kind : ": " + kind;
}

void name_unusable(document& doc, const std::vector<std::string>& files) {
  std::string text = "These files are neither streams nor a project:\r\n";
  for (std::size_t i = 0; i < files.size() && i < most_named_files; ++i)
    text += sanitized(files[i]) + described(files[i]) + "\r\n";
  if (files.size() > most_named_files)
    text +=
        "and " + trimmed(static_cast<std::int64_t>(files.size() - most_named_files)) + " more\r\n";
  text +=
      "Video (*.m2v, *.m1v, *.mpv), video with NAV packets (*.vob, *.mpg, *.mpeg), audio (*.ac3, "
      "*.mp2, *.mpa) and one project file (*.cvp) can be dropped here.  How other films and sounds "
      "are made into those, the user guide (F1) says under \"What Corvane takes\".";
  say(doc, icon::exclamation, std::move(text));
}

std::vector<std::string> add_dropped_streams(document& doc, const dropped_set& dropped) {
  std::vector<std::string> refused;
  // Asked once here, so that a user who keeps the hand-edited XML is not asked for every file.
  if (custom(doc) != 1)
    return refused;
  for (const dropped_title& title : dropped.titles)
    if (std::string film = add_dropped_title(doc, title); !film.empty())
      refused.push_back(std::move(film));
  add_audio(doc, dropped.audio);
  return refused;
}

}  // namespace

std::vector<std::string> drop_files(document& doc, const std::vector<std::string>& native_paths) {
  std::vector<std::string> refused;
  const dropped_set dropped = sort_dropped(native_paths);
  // The streams belong to the project that was dropped with them.
  if (!dropped.project.empty() && !run_with(doc, load_asked, {dropped.project}))
    return refused;
  if (!dropped.titles.empty() || !dropped.audio.empty())
    refused = add_dropped_streams(doc, dropped);
  if (!dropped.unusable.empty())
    name_unusable(doc, dropped.unusable);
  return refused;
}

std::vector<std::string> films_to_import(const std::vector<std::string>& native_paths) {
  std::vector<std::string> films = sort_dropped(native_paths).unusable;
  std::erase_if(films, [](const std::string& file) { return !is_film(file); });
  return films;
}

std::vector<std::string> pictures_for_stills(const std::vector<std::string>& native_paths) {
  std::vector<std::string> pictures = sort_dropped(native_paths).unusable;
  std::erase_if(pictures, [](const std::string& file) { return !is_picture_file(file); });
  return pictures;
}

}  // namespace corvane
