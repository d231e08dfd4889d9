#include "authoring/run_record.h"

#include "formats/line_reader.h"
#include "platform/files/files.h"
#include "platform/files/paths.h"
#include "runner/run_files.h"

#include <algorithm>
#include <cstdint>
#include <iterator>

namespace corvane {
namespace {

constexpr std::string_view first_line = "Corvane: what an authoring run replaces and makes";
constexpr std::string_view last_line = "end";
constexpr std::string_view earlier_word = "earlier ", stream_word = "stream ", image_word = "image";

constexpr std::uintmax_t largest_list = std::uintmax_t{1} << 20;

std::string runs_file(const std::string& app) {
  return join_path(app, run_file::unfinished);
}

failure write_runs(const std::string& app, const std::vector<unfinished_run>& runs) {
  if (runs.empty())
    return remove_all(runs_file(app));
  // A path in it holds no control character.
  std::string text;
  for (const unfinished_run& run : runs)
    text += run.out + "\t" + run.place + "\n";
  return replace_file(runs_file(app), text);
}

bool is_part(std::string_view name) {
  return std::find(std::begin(disc_parts), std::end(disc_parts), name) != std::end(disc_parts);
}

void take_line(run_record& record, std::string_view line) {
  if (line == image_word) {
    record.image = true;
  } else if (line.starts_with(earlier_word)) {
    line.remove_prefix(earlier_word.size());
    if (is_part(line))
      record.earlier.emplace_back(line);
  } else if (line.starts_with(stream_word)) {
    line.remove_prefix(stream_word.size());
    if (run_file::is_stream(line))
      record.streams.emplace_back(line);
  }
}

}  // namespace

std::string home_of_part(const std::string& part, const std::string& out) {
  return part == image_part ? out + ".iso" : join_path(out, part);
}

std::string record_text(const run_record& record) {
  std::string text = std::string(first_line) + "\n";
  if (record.image)
    text += std::string(image_word) + "\n";
  for (const std::string& part : record.earlier)
    text += std::string(earlier_word) + part + "\n";
  for (const std::string& stream : record.streams)
    text += std::string(stream_word) + stream + "\n";
  return text + std::string(last_line) + "\n";
}

std::optional<run_record> parse_record(std::string_view text) {
  line_reader lines(text);
  const auto first = lines.next();
  if (!first || *first != first_line)
    return std::nullopt;
  run_record record;
  while (const auto line = lines.next()) {
    if (*line == last_line)
      return record;
    take_line(record, *line);
  }
  return std::nullopt;
}

std::vector<unfinished_run> unfinished_runs(const std::string& app) {
  std::vector<unfinished_run> runs;
  const result<std::string> text = read_file(runs_file(app), largest_list);
  if (!text)
    return runs;
  line_reader lines(*text);
  while (const auto line = lines.next()) {
    const auto tab = line->find('\t');
    if (tab == std::string_view::npos)
      continue;
    unfinished_run run{std::string(line->substr(0, tab)), std::string(line->substr(tab + 1))};
    if (is_absolute(run.out) && is_absolute(run.place))
      runs.push_back(std::move(run));
  }
  return runs;
}

failure add_unfinished_run(const std::string& app, const unfinished_run& run) {
  std::vector<unfinished_run> runs = unfinished_runs(app);
  if (std::find(runs.begin(), runs.end(), run) == runs.end())
    runs.push_back(run);
  return write_runs(app, runs);
}

failure drop_unfinished_run(const std::string& app, const unfinished_run& run) {
  std::vector<unfinished_run> runs = unfinished_runs(app);
  if (std::erase(runs, run) == 0)
    return std::nullopt;
  return write_runs(app, runs);
}

}  // namespace corvane
