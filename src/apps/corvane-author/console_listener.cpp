#include "apps/corvane-author/console_listener.h"

#include "formats/numbers.h"
#include "formats/sanitized.h"
#include "runner/run_files.h"
#include "runner/run_meter.h"
#include "tools/finding_list.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace corvane {
namespace {

/// Whether the line of the log says what is found, or is the tool's line that it repeats.
bool says(const std::string& line, const finding& f) {
  const std::string found = sanitized(f.found);
  return f.severity == finding_severity::error && !found.empty() &&
         (line.find(found) != std::string::npos ||
          found.find(sanitized(line)) != std::string::npos);
}

}  // namespace

void console_listener::step(const run_step& step) {
  report_.step(step.name);
}

// A number that may be that of the step before is left out; the tools repeat theirs often.
void console_listener::progress(const run_progress& progress) {
  if (progress.of_last_step)
    report_.percent(progress.percent);
}

void console_listener::whole(const run_whole& whole) {
  const std::string at = "step " + trimmed(whole.step) + " of " + trimmed(whole.count);
  std::vector<std::string> words;
  if (const std::string time = time_left_text(whole.seconds_left); !time.empty())
    words = {"all, " + at + ", " + time, "all, " + time};
  words.push_back("all, " + at);
  words.emplace_back("all");
  report_.whole(whole.percent, std::move(words));
}

// When the log could not be written, the runner has told all of them.
void console_listener::finished(const run_end& end) {
  end_ = end;
  for (const std::string& note : end.notes)
    report_.message(note);
  const bool told = std::any_of(end.troubles.begin(), end.troubles.end(), [](const run_trouble& t) {
    return t.file.ends_with(run_file::log);
  });
  for (const run_trouble& trouble : end.troubles)
    if (!told)
      report_.message("\"" + trouble.file + "\" " + trouble.text);
}

// Each finding has had a line of its own in the log, of which only the first ones are at hand.
void console_listener::say_errors() {
  const std::vector<finding> found = end_.findings.value_or(std::vector<finding>());
  std::size_t left = count_of(found, finding_severity::error);
  for (const std::string& line : end_.errors) {
    if (std::ranges::none_of(found, [&](const finding& f) { return says(line, f); }))
      report_.message(line);
    else
      left -= std::min<std::size_t>(left, 1);
  }
  const std::size_t more = end_.error_count - end_.errors.size();
  if (more > left)
    report_.message("... and " + std::to_string(more - left) + " more");
}

void console_listener::say_findings() {
  const finding_list found(end_.findings.value_or(std::vector<finding>()), files_read::whole);
  for (const finding& f : found.findings())
    if (f.severity != finding_severity::note)
      report_.line(printable(text_of(f)) + "\n");
}

}  // namespace corvane
