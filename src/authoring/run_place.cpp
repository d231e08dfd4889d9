#include "authoring/run_place.h"

#include "platform/files/change_time.h"
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
constexpr const char* lock_name = "corvane.lock";
constexpr std::string_view place_suffix = ".earlier";

constexpr std::uintmax_t largest_record = std::uintmax_t{1} << 20;

/// More than one is somebody's own, or could not be set in order.
constexpr int most_places = 9;

/// What is kept of runs that died is not looked after any more.
constexpr int most_kept = 99;

/// What a run writes between two signs of life is kept should it die; a disk that sleeps is not
/// woken for them, since a run works on it.
constexpr auto between_signs = std::chrono::milliseconds(400);

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
  std::vector<std::string> names{real + std::string(place_suffix)};
  for (int number = 2; number <= most_places; ++number)
    names.push_back(names[0] + std::to_string(number));
  return names;
}

std::vector<std::string> names_inside(const std::string& real) {
  return {join_path(real, "corvane" + std::string(place_suffix))};
}

// For the place "dvd.earlier2": "dvd.interrupted", or one with a number.
result<std::string> make_folder_for_kept(const std::string& place) {
  using made = result<std::string>;
  const std::string first = place.substr(0, place.rfind(place_suffix)) + ".interrupted";
  for (int number = 1; number <= most_kept; ++number) {
    const std::string name = number == 1 ? first : first + std::to_string(number);
    std::error_code error;
    if (std::filesystem::create_directory(path_of(name), error))
      return made::ok(name);
    if (error && !entry_exists(name))
      return made::fail(error.message());
  }
  return made::fail("all names such as \"" + first + "\" are taken");
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
    if (entry->path().filename() != lock_name)
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

void run_place::note_alive() {
  const auto now = std::chrono::steady_clock::now();
  if (now - noted_ < between_signs)
    return;
  noted_ = now;
  // Without a sign more is kept; the run goes on.
  mark_changed(in(lock_name));
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

bool run_place::life::holds(const std::string& path) const {
  const std::optional<std::int64_t> changed = changed_at(path);
  return changed && *changed >= begin && *changed < end;
}

std::optional<run_place::life> run_place::seen_life() const {
  const auto begin = changed_at(in(begun)), end = changed_at(in(lock_name));
  return begin && end ? std::optional(life{*begin, *end}) : std::nullopt;
}

// A folder says by its own time whether something was put into it or taken out, or it was moved
// here as it is; a file, whether something was written over it. What was changed after the last
// sign of life may be the run's still; but somebody may have come at once.
bool run_place::is_known_to_be_the_runs(const std::string& path) const {
  const std::optional<life> seen = seen_life();
  if (!seen || !seen->holds(path))
    return false;
  std::error_code error;
  if (std::filesystem::symlink_status(path_of(path), error).type() !=
      std::filesystem::file_type::directory)
    return !error;
  for (std::filesystem::recursive_directory_iterator entry(path_of(path), error), end;
       !error && entry != end; entry.increment(error))
    if (!seen->holds(text_of(entry->path())))
      return false;
  return !error;
}

failure run_place::keep(const std::string& path, place_settled& done) {
  if (kept_in_.empty()) {
    const result<std::string> made = make_folder_for_kept(path_);
    if (!made)
      return made.error;
    kept_in_ = *made;
  }
  const std::string now = join_path(kept_in_, text_of(path_of(path).filename()));
  if (failure why = move_entry(path, now)) {
    std::error_code error;
    if (std::filesystem::remove(path_of(kept_in_), error))  // nothing is in it
      kept_in_.clear();
    return why;
  }
  done.kept.push_back("\"" + path +
                      "\" was changed when that run had ended, or just before: it may be half of "
                      "what the run made, or somebody's own.  It was moved to \"" +
                      now + "\".");
  return std::nullopt;
}

failure run_place::clear(const std::string& path, clearing how, place_settled& done) {
  if (how == clearing::remove_known && !is_known_to_be_the_runs(path))
    return keep(path, done);
  failure why = remove_patiently(path);
  done.removed = done.removed || !why;
  return why;
}

void run_place::clear_streams(clearing how, place_settled& done) {
  for (const std::string& name : record_->streams) {
    const std::string stream = join_path(out_, name);
    if (!entry_exists(stream) || folder_exists(stream))
      continue;
    if (const failure why = clear(stream, how, done))
      done.troubles.push_back("\"" + stream + "\", made by the run, could not be removed: " + *why +
                              ".");
  }
}

// What is put back is left alone when it is all done once more: it no longer lies here.
void run_place::put_back(const std::string& part, clearing how, place_settled& done) {
  const std::string home = home_of_part(part, out_);
  const bool lies_here = entry_exists(in(part));
  const auto& earlier = record_->earlier;
  const bool was_there = std::find(earlier.begin(), earlier.end(), part) != earlier.end();
  if (was_there && !lies_here)
    return;
  // Where a folder has the image's name, the run could not make any.
  const bool is_the_runs = part != image_part || (record_->image && !folder_exists(home));
  failure why;
  if (how != clearing::none && is_the_runs && entry_exists(home))
    why = clear(home, how, done);
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

place_settled run_place::bring_back(clearing how) {
  place_settled done;
  if (!record_) {
    dismantle();
    return done;
  }
  clear_streams(how, done);
  for (const char* const part : disc_parts)
    put_back(part, how, done);
  if (done.troubles.empty())
    dismantle();
  else
    move_entry(in(begun), in(left));
  return done;
}

place_settled run_place::bring_back() {
  return bring_back(clearing::remove);
}

place_settled run_place::settle_interrupted() {
  if (file_exists(in(finished)))
    return complete();
  const bool once_more = file_exists(in(left));
  const result<std::string> text = read_file(in(once_more ? left : begun), largest_record);
  record_ = text ? parse_record(*text) : std::nullopt;
  if (record_ && !once_more)
    return bring_back(clearing::remove_known);
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
      put_back(part, clearing::none, done);
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
