#include "project/recovery.h"

#include "formats/numbers.h"
#include "platform/files/files.h"

#include <algorithm>
#include <cstdint>
#include <exception>
#include <filesystem>
#include <string_view>
#include <utility>

namespace corvane {
namespace {

constexpr std::string_view first_line = "Corvane kept project 2\n";
/// Without the mark of the file.
constexpr std::string_view older_first_line = "Corvane kept project 1\n";
constexpr const char* kept_file = "/project.kept";
constexpr std::uintmax_t largest = std::uintmax_t{128} << 20;

// File names have no line ends here, captions neither: the project could not name such files.
std::string kept_text(const kept_project& what) {
  return std::string(first_line) + what.file + "\n" + what.editor + "\n" + what.mark + "\n" +
         what.text;
}

std::optional<std::string> taken_line(std::string_view& text) {
  const std::size_t end = text.find('\n');
  if (end == std::string_view::npos)
    return std::nullopt;
  std::string line(text.substr(0, end));
  text.remove_prefix(end + 1);
  return line;
}

std::optional<kept_project> parsed(std::string_view text) {
  const bool older = text.starts_with(older_first_line);
  if (!older && !text.starts_with(first_line))
    return std::nullopt;
  text.remove_prefix(first_line.size());
  const auto file = taken_line(text);
  const auto editor = file ? taken_line(text) : std::nullopt;
  const auto mark = !editor || older ? std::optional<std::string>("") : taken_line(text);
  if (!editor || !mark)
    return std::nullopt;
  return kept_project{*file, *editor, std::string(text), *mark};
}

struct found_folder {
  std::string path;
  std::filesystem::file_time_type kept_at;
};

std::vector<found_folder> folders_in(const std::string& folder) {
  std::vector<found_folder> found;
  std::error_code ignored;
  std::filesystem::directory_iterator each(path_of(folder), ignored);
  for (; !ignored && each != std::filesystem::directory_iterator(); each.increment(ignored)) {
    std::error_code of_this;
    if (each->is_directory(of_this))
      found.push_back(
          {text_of(each->path()),
           std::filesystem::last_write_time(path_of(text_of(each->path()) + kept_file), of_this)});
  }
  std::ranges::sort(found, {}, &found_folder::kept_at);
  return found;
}

}  // namespace

// FNV-1a, and the length.
std::string mark_of_text(std::string_view text) {
  std::uint64_t hash = 0xCBF29CE484222325;
  for (const char c : text)
    hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001B3;
  return std::to_string(text.size()) + "-" + std::to_string(hash);
}

left_project::left_project(std::string folder, std::unique_ptr<folder_lock> lock, kept_project what)
    : folder_(std::move(folder)), lock_(std::move(lock)), what_(std::move(what)) {}

void left_project::drop() {
  remove_all(folder_ + kept_file);
  lock_->vanish();
  // Only if it is empty: another program may have made it anew for itself.
  std::error_code ignored;
  std::filesystem::remove(path_of(folder_), ignored);
}

recovery::recovery(std::string folder) : folder_(std::move(folder)) {}

recovery::~recovery() {
  {
    const std::lock_guard<std::mutex> lock(guard_);
    ending_ = true;
  }
  changed_.notify_all();
  if (writer_.joinable())
    writer_.join();
}

void recovery::keep(kept_project what) {
  std::unique_lock<std::mutex> lock(guard_);
  changed_.wait(lock, [this] { return !waiting_ && !writing_; });
  if (!writer_.joinable())
    writer_ = std::thread([this] { write(); });
  waiting_.emplace(std::move(what));
  lock.unlock();
  changed_.notify_all();
}

void recovery::forget() {
  std::unique_lock<std::mutex> lock(guard_);
  if (!writer_.joinable())
    return;  // nothing was ever kept
  changed_.wait(lock, [this] { return !waiting_ && !writing_; });
  waiting_.emplace(std::nullopt);
  lock.unlock();
  changed_.notify_all();
}

failure recovery::trouble() {
  const std::lock_guard<std::mutex> lock(guard_);
  return trouble_;
}

failure recovery::flush() {
  std::unique_lock<std::mutex> lock(guard_);
  changed_.wait(lock, [this] { return !waiting_ && !writing_; });
  return trouble_;
}

void recovery::write() {
  std::unique_lock<std::mutex> lock(guard_);
  for (;;) {
    changed_.wait(lock, [this] { return waiting_ || ending_; });
    if (!waiting_)
      return;
    const std::optional<kept_project> what = std::move(*waiting_);
    waiting_.reset();
    writing_ = true;
    lock.unlock();
    failure trouble = try_to_write(what);
    lock.lock();
    trouble_ = std::move(trouble);
    writing_ = false;
    changed_.notify_all();
  }
}

/// Whatever happens, the window waits for the next one.
failure recovery::try_to_write(const std::optional<kept_project>& what) {
  try {
    failure trouble = write_one(what);
    if (!trouble || own_.empty())
      return trouble;
    // Somebody may have removed the folder: once more, in another one.
    own_.clear();
    own_lock_.reset();
    return write_one(what);
  } catch (const std::exception& e) {
    return e.what();
  }
}

failure recovery::write_one(const std::optional<kept_project>& what) {
  if (!what) {
    if (own_.empty())
      return std::nullopt;
    left_project(std::exchange(own_, {}), std::move(own_lock_), {}).drop();
    return std::nullopt;
  }
  if (own_.empty())
    if (failure why = make_own_folder())
      return why;
  return replace_file(own_ + kept_file, kept_text(*what));
}

/// Another program may make the same one at this moment; one of them gets its lock.
failure recovery::make_own_folder() {
  constexpr int most_programs = 1000;
  for (int n = 1; n <= most_programs; ++n) {
    const std::string folder = folder_ + "/" + trimmed(n);
    if (entry_exists(folder))
      continue;
    if (failure why = make_folders(folder))
      return why;
    auto lock = std::make_unique<folder_lock>(folder);
    if (lock->take()) {
      own_ = folder;
      own_lock_ = std::move(lock);
      return std::nullopt;
    }
    // Another program has it, or has just removed it: it looked as if it had been left.
    if (!lock->is_held_elsewhere() && folder_exists(folder))
      return "no lock can be had in \"" + folder + "\"";
  }
  return "\"" + folder_ + "\" is full";
}

std::vector<left_project> recovery::left() {
  std::vector<left_project> projects;
  for (const found_folder& found : folders_in(folder_)) {
    auto lock = std::make_unique<folder_lock>(found.path);
    if (!lock->take())
      continue;
    const auto text = read_file(found.path + kept_file, largest);
    auto what = text ? parsed(*text) : std::nullopt;
    left_project project(found.path, std::move(lock), what.value_or(kept_project{}));
    if (what)
      projects.push_back(std::move(project));
    else if (!entry_exists(found.path + kept_file))
      project.drop();  // its program ended before it had kept anything
  }
  return projects;
}

}  // namespace corvane
