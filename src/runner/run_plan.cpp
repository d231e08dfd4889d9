#include "runner/run_plan.h"

#include "formats/text.h"
#include "formats/xml_reader.h"
#include "platform/files/files.h"
#include "platform/files/paths.h"
#include "runner/output_lines.h"
#include "runner/tools/tool_ways.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <system_error>
#include <utility>

namespace corvane {
namespace {

namespace fs = std::filesystem;

/// By which streams grow in mplex: heads of packs and packets, and the navigation packs.
constexpr double multiplexed = 1.02;
/// By which they grow in spumux.
constexpr double overlaid = 1.003;

constexpr std::uintmax_t largest_text = std::uintmax_t{16} << 20;

std::optional<double> bytes_at(const std::string& path) {
  std::error_code error;
  if (!folder_exists(path)) {
    const auto size = file_size(path);
    return size ? std::optional<double>(static_cast<double>(*size)) : std::nullopt;
  }
  double bytes = 0;
  for (fs::directory_iterator at(path_of(path), error), end; !error && at != end;
       at.increment(error)) {
    std::error_code gone;
    const std::uintmax_t size = at->is_regular_file(gone) ? at->file_size(gone) : 0;
    bytes += gone ? 0 : static_cast<double>(size);
  }
  return bytes;
}

std::string folder_with(const std::string& path) {
  return path.substr(0, path.size() - name_in_path(path).size());
}

/// "mplex" of "/home/user/bin/mplex.exe".
std::string tool_of(const script_words& words) {
  const std::string name = lower(name_in_path(words[0]));
  return name.substr(0, name.rfind('.'));
}

/// The word behind an option; empty when it is not given.
std::string behind(const script_words& words, std::string_view option) {
  const auto at = std::find(words.begin(), words.end(), option);
  return at == words.end() || at + 1 == words.end() ? std::string() : *(at + 1);
}

double count_of(std::string_view text, std::string_view what) {
  double count = 0;
  for (auto at = text.find(what); at != std::string_view::npos;
       at = text.find(what, at + what.size()))
    ++count;
  return count;
}

/// A kind of work and what it makes.
planned_work work_of(work_kind kind, double amount) {
  planned_work work;
  work.kind = kind;
  work.amount = amount;
  return work;
}

}  // namespace

double cues_in(std::string_view text) {
  double most = 0;
  for (const std::string_view mark : {"-->", "\nDialogue:", "<SYNC", "<sync", "<Sync", "\n{"})
    most = std::max(most, count_of(text, mark));
  return most > 0 ? most : count_of(text, "\n") / 2;
}

plan_files files_on_disk() {
  return {bytes_at, [](const std::string& path) {
            const result<std::string> text = read_file(path, largest_text);
            return text ? *text : std::string();
          }};
}

/// One way through the commands, with the sizes of what they make.
class run_plan::walk {
 public:
  walk(run_plan& plan) : plan_(plan) {}

  void go() {
    plan_.steps_.clear();
    for (number_ = 0; number_ < plan_.commands_.size(); ++number_)
      take(plan_.commands_[number_]);
    // Its line is in no script: conspawn prints it.
    if (plan_.reads_back_ && disc_ > 0)
      add(step_line("reading the disc back"), work_of(work_kind::read_back, disc_ + image_));
    if (plan_.removed_ > 0)
      add(step_line(removal_step), work_of(work_kind::remove, plan_.removed_));
  }

 private:
  void take(const command_of_step& c) {
    if (c.command.verb == script_verb::rename)
      sizes_[folder_with(c.command.operands[0]) + c.command.operands[1]] =
          size_of(c.command.operands[0]);
    if (c.command.verb != script_verb::run)
      return;
    const script_words& words = c.command.pipeline[0];
    const std::string tool = tool_of(words);
    if (tool == "mplex")
      multiplex(c, words);
    else if (tool == "spumux")
      overlay(c, words);
    else if (tool == "dvdauthor")
      author(c, words);
    else if (tool == "mkisofs")
      image(c, words);
    else
      add(c.step, work_of(tool == "gm" ? work_kind::draw : work_kind::other, 1));
  }

  // Its options have a value each.
  void multiplex(const command_of_step& c, const script_words& words) {
    double bytes = 0;
    for (std::size_t i = 1; i < words.size(); ++i)
      if (words[i].starts_with('-'))
        ++i;
      else
        bytes += size_of(words[i]);
    add_writing(c.step, work_kind::multiplex, replace_all(behind(words, "-o"), "%%", "%"),
                bytes * multiplexed);
  }

  void overlay(const command_of_step& c, const script_words& words) {
    const double bytes = size_of(c.command.input) * overlaid;
    const double cues = plan_.cues_of(words.back());
    add_writing(c.step, work_kind::overlay, c.command.output, bytes);
    if (cues > 0)
      add_writing(c.step, work_kind::cues, c.command.output, bytes, cues);
  }

  void author(const command_of_step& c, const script_words& words) {
    plan_.read_navigation(behind(words, "-x"));
    double bytes = 0;
    for (const std::string& vob : plan_.vobs_)
      bytes += size_of(vob);
    add_writing(c.step, work_kind::collect, plan_.video_ts_, bytes);
    disc_ = sizes_[plan_.video_ts_];
    add(c.step, work_of(work_kind::fix, disc_));
  }

  void image(const command_of_step& c, const script_words& words) {
    const std::string file = behind(words, "-o");
    add_writing(c.step, work_kind::image, file, disc_);
    image_ = sizes_[file];
  }

  /// Of a work that makes a file or folder of about that many bytes.
  void add_writing(const std::string& step, work_kind kind, const std::string& path, double bytes,
                   std::optional<double> amount = std::nullopt) {
    const auto made = plan_.made_.find(number_);
    if (made != plan_.made_.end())
      bytes = made->second;
    sizes_[path] = bytes;
    planned_work work = work_of(kind, amount.value_or(bytes));
    work.grows = path;
    work.grows_to = bytes;
    add(step, work);
  }

  void add(const std::string& step, planned_work work) {
    work.command = number_;
    if (plan_.steps_.empty() || plan_.steps_.back().line != step)
      plan_.steps_.push_back({step, {}});
    plan_.steps_.back().works.push_back(std::move(work));
  }

  double size_of(const std::string& path) {
    const auto made = sizes_.find(path);
    return made != sizes_.end() ? made->second : plan_.input_size(path);
  }

  run_plan& plan_;
  std::size_t number_ = 0;
  std::map<std::string, double> sizes_;
  double disc_ = 0;
  double image_ = 0;
};

run_plan::run_plan(std::string_view script, bool reads_back, plan_files files,
                   const std::vector<std::string>& removed)
    : reads_back_(reads_back), files_(std::move(files)) {
  for (const std::string& path : removed)
    removed_ += files_.size_of(path).value_or(0);
  std::string step;
  while (!script.empty()) {
    const std::string_view line = script.substr(0, script.find('\n'));
    const result<script_command> command = parse_script_line(line);
    script.remove_prefix(std::min(script.size(), line.size() + 1));
    if (!command)
      continue;
    if (command->verb == script_verb::echo && !step_in_line(command->text).empty())
      step = command->text;
    if (command->verb == script_verb::run || command->verb == script_verb::rename)
      commands_.push_back({step, *command});
  }
  work_out();
}

void run_plan::was_made(std::size_t command, double bytes) {
  made_[command] = bytes;
  work_out();
}

void run_plan::work_out() {
  walk(*this).go();
}

double run_plan::input_size(const std::string& path) {
  const auto [known, is_new] = inputs_.try_emplace(path);
  if (is_new)
    known->second = files_.size_of(path).value_or(0);
  return known->second;
}

double run_plan::cues_of(const std::string& control) {
  const auto [known, is_new] = cues_.try_emplace(control);
  if (is_new)
    for (const xml_element& element : read_xml(files_.text_of(control)).elements)
      if (const std::string* file = attribute_of(element, "filename"); element.name == "textsub")
        known->second = file == nullptr ? 0 : cues_in(files_.text_of(*file));
  return known->second;
}

void run_plan::read_navigation(const std::string& control) {
  if (std::exchange(navigation_is_read_, true))
    return;
  for (const xml_element& element : read_xml(files_.text_of(control)).elements)
    if (element.name == "dvdauthor")
      video_ts_ = join_path(attribute_text(element, "dest"), "VIDEO_TS");
    else if (element.name == "vob")
      vobs_.push_back(attribute_text(element, "file"));
}

}  // namespace corvane
