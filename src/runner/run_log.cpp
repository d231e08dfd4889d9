#include "runner/run_log.h"

#include "formats/text.h"
#include "platform/files/files.h"
#include "runner/output_lines.h"
#include "runner/output_text.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <system_error>
#include <utility>

namespace corvane {
namespace {

bool is_link(const std::string& path) {
  std::error_code error;
  return std::filesystem::is_symlink(path_of(path), error);
}

std::string reason(int error) {
  return error == 0 ? std::string("the file could not be written")
                    : std::generic_category().message(error);
}

}  // namespace

std::string run_log::part_of(const std::string& path) {
  return path + ".part";
}

void run_log::begin(std::string path) {
  file_ = std::ofstream();
  path_ = std::move(path);
  tail_.clear();
  opened_ = error_ = marker_ = in_place_ = false;
  left_beside_.clear();
  trouble_.reset();
}

void run_log::open() {
  opened_ = true;
  // A link of that name would have it written elsewhere.
  std::error_code error;
  std::filesystem::remove(path_of(part_of(path_)), error);
  errno = 0;
  file_.open(path_of(part_of(path_)), std::ios::binary | std::ios::trunc);
  if (!file_)
    trouble_ = reason(errno);
  write(tail_);
}

void run_log::append(std::string_view text) {
  look_at(text);
  // Cut only now and then: each cut moves what stays.
  tail_ += text.substr(text.size() - std::min(text.size(), view_length));
  if (tail_.size() > 4 * view_length)
    tail_.erase(0, tail_.size() - view_length);
  if (opened_)
    write(text);
}

void run_log::look_at(std::string_view text) {
  std::string seen = tail_.substr(tail_.size() - std::min(tail_.size(), longest_mark));
  seen += text;
  error_ = error_ || holds_error_line(seen);
  marker_ = marker_ || holds_marker_line(seen);
}

void run_log::write(std::string_view text) {
  if (trouble_)
    return;
  errno = 0;
  // At once: what is still here goes with the program, should that die.
  file_.write(text.data(), static_cast<std::streamsize>(text.size()));
  if (!file_.flush())
    trouble_ = reason(errno);
}

bool run_log::at_line_start() const {
  const std::string_view end = trim_right(tail_);
  return end.empty() || end.substr(end.size() - 1) == "\n";
}

failure run_log::finish() {
  append(crlf);
  errno = 0;
  file_.close();
  if (!file_ && !trouble_)
    trouble_ = reason(errno);
  std::error_code error;
  const bool holds_something = file_size(part_of(path_)).value_or(0) > 0;
  if (!trouble_ || holds_something) {
    std::filesystem::rename(path_of(part_of(path_)), path_of(path_), error);
    // On Windows a program that shows the old log can keep it from being replaced, though not from
    // being rewritten.
    const failure not_placed = !error           ? std::nullopt
                               : is_link(path_) ? failure(error.message())
                                                : copy_file(part_of(path_), path_);
    in_place_ = !not_placed;
    if (!trouble_)
      trouble_ = not_placed;
  }
  if (holds_something && !in_place_)
    leave_beside();
  else
    std::filesystem::remove(path_of(part_of(path_)), error);
  opened_ = false;
  return trouble_;
}

void run_log::leave_beside() {
  left_beside_ = part_of(path_);
  std::ofstream(path_of(left_beside_), std::ios::binary | std::ios::app)
      << not_placed_mark << trouble_.value_or("") << crlf;
}

void run_log::add_line(std::string_view line) {
  std::ofstream(path_of(path_), std::ios::binary | std::ios::app) << line << crlf;
}

failure run_log::copy_to(const std::string& path, std::string_view last) {
  file_.flush();
  std::error_code error;
  std::filesystem::remove(path_of(path), error);
  const bool copied = !copy_file(opened_ ? part_of(path_) : path_, path);
  std::ofstream file(path_of(path), std::ios::binary | (copied ? std::ios::app : std::ios::trunc));
  if (!copied)
    file << tail_;
  file << crlf << last << crlf;
  file.close();
  if (!file)
    return std::string("the file could not be written");
  return std::nullopt;
}

}  // namespace corvane
