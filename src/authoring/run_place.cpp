#include "authoring/run_place.h"

#include "platform/files/durable_write.h"
#include "platform/files/files.h"
#include "platform/files/paths.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <system_error>
#include <thread>
#include <utility>

namespace corvane {
namespace {

constexpr const char* begun = "run.txt";
constexpr const char* finished = "done.txt";
constexpr const char* left = "left.txt";

constexpr std::uintmax_t largest_record = std::uintmax_t{1} << 20;

/// More than one is somebody's own, or could not be set in order.
constexpr int most_places = 9;

// Names -----------------------------------------------------------------------------------------

// A folder that is reached through a link has its place where it really is: one folder, one lock.
std::string real_path(const std::string& out) {
  if (native_style() == path_style::windows)
    return out;
  std::error_code error;
  const std::filesystem::path real = std::filesystem::weakly_canonical(path_of(out), error);
  return error ? out : text_of(real);
}

std::vector<std::string> names_beside(const std::string& real) {
  std::vector<std::string> names{real + ".earlier"};
  for (int number = 2; number <= most_places; ++number)
    names.push_back(names[0] + std::to_string(number));
  return names;
}

std::vector<std::string> names_inside(const std::string& real) {
  return {join_path(real, "corvane.earlier")};
}

// What stands there -----------------------------------------------------------------------------

bool has_record(const std::string& path) {
  for (const char* const name : {begun, finished, left})
    if (file_exists(join_path(path, name)))
      return true;
  return false;
}

// A run that died before it had written its record leaves a folder with nothing but the lock.
bool holds_nothing(const std::string& path) {
  std::error_code error;
  for (std::filesystem::directory_iterator entry(path_of(path), error), end; !error && entry != end;
       entry.increment(error))
    if (entry->path().filename() != "corvane.lock")
      return false;
  return !error;
}

bool is_a_place(const std::string& path) {
  std::error_code error;
  return std::filesystem::symlink_status(path_of(path), error).type() ==
             std::filesystem::file_type::directory &&
         (has_record(path) || holds_nothing(path));
}

// On Windows a tool that was ended has its files open for a moment longer.
failure remove_patiently(const std::string& path) {
  using namespace std::chrono_literals;
  failure why = remove_all(path);
  for (int tries = 0; why && native_style() == path_style::windows && tries < 10; ++tries) {
    std::this_thread::sleep_for(50ms);
    why = remove_all(path);
  }
  return why;
}

std::string of_the_earlier_dvd(const std::string& path) {
  return "\"" + path + "\" of the earlier DVD ";
}

}  // namespace

run_place::run_place(std::string out, std::string path)
    : out_(std::move(out)), path_(std::move(path)) {}

std::string run_place::in(const std::string& name) const {
  return join_path(path_, name);
}

bool run_place::take() {
  if (!lock_)
    lock_ = std::make_unique<folder_lock>(path_);
  return lock_->take() || !lock_->is_held_elsewhere();
}

failure run_place::put_aside(const run_record& record) {
  const std::string file = in(begun);
  if (const failure why = write_durably(path_of(file), record_text(record)))
    return "The file \"" + file + "\" could not be written: " + *why + ".";
  record_ = record;
  for (const std::string& part : record.earlier) {
    const std::string home = home_of_part(part, out_);
    if (const failure why = entry_exists(home) ? move_entry(home, in(part)) : std::nullopt)
      return of_the_earlier_dvd(home) + "could not be put aside: " + *why + ".";
  }
  return std::nullopt;
}

place_settled run_place::complete() {
  // In one step: from now on nothing here comes back.
  if (move_entry(in(begun), in(finished)))
    remove_all(in(begun));
  place_settled done;
  for (const char* const part : disc_parts)
    if (const failure why = remove_patiently(in(part)))
      done.troubles.push_back(of_the_earlier_dvd(in(part)) + "could not be removed: " + *why +
                              ".  You can remove the folder \"" + path_ + "\" yourself.");
  if (done.troubles.empty())
    dismantle();
  return done;
}

// What is put back is left alone when it is all done once more: it no longer lies here.
void run_place::put_back(const std::string& part, bool may_remove, place_settled& done) const {
  const std::string home = home_of_part(part, out_);
  const bool lies_here = entry_exists(in(part));
  const auto& earlier = record_->earlier;
  const bool was_there = std::find(earlier.begin(), earlier.end(), part) != earlier.end();
  if (was_there && !lies_here)
    return;
  // Where a folder has the image's name, the run could not make any.
  const bool is_the_runs = part != image_part || (record_->image && !folder_exists(home));
  failure why;
  if (may_remove && is_the_runs && entry_exists(home)) {
    why = remove_patiently(home);
    done.removed = done.removed || !why;
  }
  if (why && !lies_here)
    done.troubles.push_back("\"" + home +
                            "\", which is not complete, could not be removed: " + *why + ".");
  if (!lies_here)
    return;
  if (!why)
    why = move_entry(in(part), home);
  if (why)
    done.troubles.push_back(of_the_earlier_dvd(home) + "could not be put back: " + *why +
                            ".  It lies in \"" + path_ + "\".");
  else
    done.brought_back = true;
}

place_settled run_place::bring_back() {
  place_settled done;
  if (!record_) {
    dismantle();
    return done;
  }
  for (const std::string& name : record_->streams) {
    const std::string stream = join_path(out_, name);
    if (!entry_exists(stream) || folder_exists(stream))
      continue;
    if (const failure why = remove_patiently(stream))
      done.troubles.push_back("\"" + stream + "\", made by the run, could not be removed: " + *why +
                              ".");
    else
      done.removed = true;
  }
  for (const char* const part : disc_parts)
    put_back(part, true, done);
  if (done.troubles.empty())
    dismantle();
  else
    move_entry(in(begun), in(left));
  return done;
}

place_settled run_place::settle_interrupted() {
  if (file_exists(in(finished)))
    return complete();
  const bool once_more = file_exists(in(left));
  const result<std::string> text = read_file(in(once_more ? left : begun), largest_record);
  record_ = text ? parse_record(*text) : std::nullopt;
  if (record_ && !once_more)
    return bring_back();
  // Without a whole record nothing has been put here yet; if something lies here nevertheless, it
  // goes back where nothing stands in its place.
  if (!record_) {
    record_.emplace();
    for (const char* const part : disc_parts)
      if (entry_exists(in(part)))
        record_->earlier.emplace_back(part);
  }
  place_settled done;
  const auto& earlier = record_->earlier;
  for (const std::string& part : earlier)
    if (!entry_exists(home_of_part(part, out_)))
      put_back(part, false, done);
  if (std::none_of(earlier.begin(), earlier.end(),
                   [this](const std::string& part) { return entry_exists(in(part)); }))
    dismantle();
  return done;
}

bool run_place::is_settled() const {
  return !has_record(path_);
}

// The folder goes only when nothing else is in it.
void run_place::dismantle() {
  for (const char* const name : {begun, finished, left})
    remove_all(in(name));
  if (lock_)
    lock_->vanish();
  std::error_code error;
  std::filesystem::remove(path_of(path_), error);
}

std::vector<std::string> places_of(const std::string& out) {
  std::vector<std::string> found;
  const std::string real = real_path(out);
  for (const auto& names : {names_beside(real), names_inside(real)})
    for (const std::string& name : names)
      if (is_a_place(name))
        found.push_back(name);
  return found;
}

result<std::unique_ptr<run_place>> make_place(const std::string& out, bool inside) {
  using made = result<std::unique_ptr<run_place>>;
  const std::string real = real_path(out);
  const std::vector<std::string> names = inside ? names_inside(real) : names_beside(real);
  const std::string parent = text_of(path_of(names[0]).parent_path());
  if (const failure why = folder_exists(parent) ? std::nullopt : make_folders(parent))
    return made::fail(*why);
  for (const std::string& name : names) {
    std::error_code error;
    if (entry_exists(name)) {
      if (!is_a_place(name))
        continue;
    } else if (std::filesystem::create_directory(path_of(name), error); error) {
      return made::fail(error.message());
    }
    auto place = std::make_unique<run_place>(out, name);
    if (!place->take())
      return made::ok(nullptr);
    if (!has_record(name))
      return made::ok(std::move(place));
  }
  return made::fail("all names for a folder beside it are taken");
}

}  // namespace corvane
