#include "platform/files/files.h"

#include "platform/files/durable_write.h"
#include "platform/files/scratch_folder.h"

#include <fstream>
#include <system_error>

namespace corvane {

namespace fs = std::filesystem;

fs::path path_of(std::string_view native) {
  return fs::path(std::u8string(native.begin(), native.end()));
}

std::string text_of(const fs::path& path) {
  const std::u8string text = path.u8string();
  return std::string(text.begin(), text.end());
}

bool file_exists(std::string_view native) {
  std::error_code error;
  return fs::is_regular_file(path_of(native), error);
}

bool folder_exists(std::string_view native) {
  std::error_code error;
  return fs::is_directory(path_of(native), error);
}

std::optional<std::uintmax_t> file_size(std::string_view native) {
  std::error_code error;
  // One question to the system, not two: libstdc++ gives a size for regular files only.
  const auto size = fs::file_size(path_of(native), error);
  if (error)
    return std::nullopt;
  return size;
}

result<std::string> first_bytes(std::string_view native, std::size_t count) {
  // Of a pipe or a terminal the opening alone may last for ever.
  if (!file_size(native))
    return result<std::string>::fail("the file cannot be opened");
  std::ifstream file(path_of(native), std::ios::binary);
  if (!file)
    return result<std::string>::fail("the file cannot be opened");
  std::string bytes(count, '\0');
  file.read(bytes.data(), static_cast<std::streamsize>(count));
  if (file.bad())
    return result<std::string>::fail("the file cannot be read");
  bytes.resize(static_cast<std::size_t>(file.gcount()));
  return result<std::string>::ok(std::move(bytes));
}

result<std::string> read_file(std::string_view native, std::uintmax_t limit) {
  const auto size = file_size(native);
  if (!size)
    return result<std::string>::fail(folder_exists(native) ? "it is a folder, not a file"
                                                           : "the file does not exist");
  if (*size > limit)
    return result<std::string>::fail("the file is too large");
  std::ifstream file(path_of(native), std::ios::binary);
  if (!file)
    return result<std::string>::fail("the file cannot be opened");
  std::string bytes(static_cast<std::size_t>(*size), '\0');
  file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  if (file.bad())
    return result<std::string>::fail("the file cannot be read");
  bytes.resize(static_cast<std::size_t>(file.gcount()));
  return result<std::string>::ok(std::move(bytes));
}

namespace {

failure write_in_place_of(const fs::path& target, std::string_view text) {
  std::error_code error;
  const fs::path beside = unused_name_beside(target);
  fs::remove(beside, error);  // left by a process of the same number, or a link put there
  if (failure why = write_durably(beside, text)) {
    fs::remove(beside, error);
    return why;
  }
  if (failure why = replace_durably(beside, target)) {
    fs::remove(beside, error);
    return why;
  }
  return std::nullopt;
}

constexpr std::uintmax_t largest_kept = std::uintmax_t{1} << 30;

/// Writes into the file itself, with a copy of what it held kept elsewhere meanwhile.
failure write_into(const fs::path& target, std::string_view text) {
  const result<std::string> old = read_file(text_of(target), largest_kept);
  if (!old)
    return "its folder lets nothing be put beside it, and it cannot be kept: " + old.error;
  auto place = scratch_folder::make(text_of(lasting_temporary_folder()));
  const failure not_kept =
      place ? write_durably(path_of((*place)->path("copy")), *old) : failure(place.error);
  if (not_kept)
    return "its folder lets nothing be put beside it, and no copy can be kept: " + *not_kept;
  failure why = overwrite_durably(target, text);
  if (why && read_file(text_of(target), largest_kept).value != old.value &&
      overwrite_durably(target, *old)) {
    *why += ", and what it held could not be put back; that is kept in \"" +
            (*place)->path("copy") + "\"";
    (*place)->keep();
  }
  return why;
}

/// Where a path leads when all links at its end are followed; there may be nothing.
result<fs::path> end_of_links(fs::path path) {
  constexpr int most_links = 40;
  std::error_code error;
  for (int links = 0; fs::is_symlink(path, error); ++links) {
    const fs::path next = fs::read_symlink(path, error);
    if (error || links == most_links)
      return result<fs::path>::fail(error ? error.message() : "its links lead round in a circle");
    path = path.parent_path() / next;  // an absolute one replaces all of it
  }
  return result<fs::path>::ok(std::move(path));
}

}  // namespace

failure write_file(std::string_view native, std::string_view text) {
  std::error_code error;
  const result<fs::path> end = end_of_links(path_of(native));
  if (!end)
    return end.error;
  const fs::path& target = *end;
  const bool exists = fs::exists(target, error);
  if (exists && !fs::is_regular_file(target, error))
    return fs::is_directory(target, error) ? "it is a folder, not a file" : "it is not a file";
  if (const failure why = why_write_protected(target))
    return "it " + *why;
  if (exists && must_stay_this_file(target))
    return write_into(target, text);
  failure why = write_in_place_of(target, text);
  if (!why)
    remove_left_parts_of(target);
  return why;
}

failure why_not_writable_file(std::string_view native) {
  return why_write_protected(path_of(native));
}

failure try_writing_in(std::string_view native_folder, std::size_t bytes) {
  const fs::path target = path_of(native_folder) / "corvane";
  remove_left_parts_of(target);
  const fs::path tried = unused_name_beside(target);
  std::error_code error;
  fs::remove(tried, error);
  failure why = write_durably(tried, std::string(bytes, '.'));
  fs::remove(tried, error);
  return why;
}

void remove_left_parts(std::string_view native_folder) {
  // Each target is known by its part alone.
  for (const std::string& name : files_in(native_folder))
    if (const auto target = target_of_part(path_of(native_folder) / path_of(name)))
      remove_left_parts_of(*target);
}

failure replace_file(std::string_view native, std::string_view text) {
  std::error_code error;
  const fs::path target = path_of(native);
  const fs::file_status there = fs::symlink_status(target, error);
  if (fs::exists(there) && !fs::is_regular_file(there) && !fs::is_symlink(there))
    return fs::is_directory(there) ? "it is a folder, not a file" : "it is not a file";
  return write_in_place_of(target, text);
}

bool entry_exists(std::string_view native) {
  std::error_code error;
  return fs::exists(fs::symlink_status(path_of(native), error));
}

failure make_folders(std::string_view native) {
  std::error_code error;
  fs::create_directories(path_of(native), error);
  if (error)
    return error.message();
  return std::nullopt;
}

bool same_place(std::string_view a, std::string_view b) {
  std::error_code error;
  return fs::equivalent(path_of(a), path_of(b), error) && !error;
}

std::optional<disk_room> room_at(std::string_view native_folder) {
  std::error_code error;
  fs::path folder = fs::absolute(path_of(native_folder), error);
  while (!fs::exists(folder, error) && folder.has_relative_path())
    folder = folder.parent_path();
  const fs::space_info space = fs::space(folder, error);
  if (error)
    return std::nullopt;
  return disk_room{space.available, space.capacity};
}

}  // namespace corvane
