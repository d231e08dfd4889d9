// Files by their native UTF-8 path: existence, size, reading, and writing that is all or nothing.
#pragma once

#include "platform/result.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

/// A native UTF-8 path as the standard library takes it.
std::filesystem::path path_of(std::string_view native);

/// A standard path as native UTF-8 text.
std::string text_of(const std::filesystem::path& path);

/// Whether a file (not a folder; links are followed) stands there.
bool file_exists(std::string_view native);
bool folder_exists(std::string_view native);

/// Size in bytes; nullopt if there is no such file.
std::optional<std::uintmax_t> file_size(std::string_view native);

/// Whether the current folder holds at least one file (folders do not count).
bool current_folder_holds_a_file();

/// The first `count` bytes, or as many as there are. Fails when the file cannot be opened or read,
/// and on anything but a regular file.
result<std::string> first_bytes(std::string_view native, std::size_t count);

/// A whole file. Fails on anything but a regular file, on one larger than `limit` bytes (told by
/// its size, without reading it), and when reading fails.
result<std::string> read_file(std::string_view native, std::uintmax_t limit);

/// Writes the whole text: beside the target, flushed to the disk, then renamed over it. Whatever
/// happens, the target holds either its old bytes or all of the new ones. A target that is a link
/// keeps being one: the file it points at is replaced, or made where there is none. Fails for a
/// file that is write-protected. Where the target may be written but its folder does not let it be
/// replaced, it is written into, while a copy of what it held is kept in the system's folder for
/// temporary files; the reason names the copy where the old bytes could not be put back. What
/// programs that are gone have left beside the target goes.
failure write_file(std::string_view native, std::string_view text);

/// The same for a file in a folder of the program's own: a target that is a link is replaced
/// itself, and what it points at stays as it is.
failure replace_file(std::string_view native, std::string_view text);

/// Why a file (links followed) is not to be written into or replaced, as the end of a sentence
/// about it ("is write-protected"); nullopt when nothing speaks against it or there is none.
failure why_not_writable_file(std::string_view native);

/// Why nothing can be written into a folder that is there, found by writing so many bytes and
/// removing them again; nullopt when they could be.
failure try_writing_in(std::string_view native_folder, std::size_t bytes);

/// Removes from a folder of the program's own what programs that are gone have left of texts that
/// they were writing ("process.bat.corvane-part1234").
void remove_left_parts(std::string_view native_folder);

/// Gives a file, folder or link another name on the same disk. Fails, and changes nothing, when
/// there is something of the new name or it lies on another disk. On Windows what another program
/// has open is tried again for half a second.
failure move_entry(std::string_view from, std::string_view to);

/// Whether anything has this name: a file, a folder, a link wherever it leads.
bool entry_exists(std::string_view native);

/// Names (not paths) of the files in a folder, sorted; empty when it cannot be read.
std::vector<std::string> files_in(std::string_view native_folder);

/// Removes one file or a folder with all it holds. Missing is success.
failure remove_all(std::string_view native);

/// Copies a file; one that stands at `to` has its content replaced, and may be left half written.
failure copy_file(std::string_view from, std::string_view to);

/// Makes a folder and the ones above it. There already is success.
failure make_folders(std::string_view native);

/// The path made absolute against the current folder and tidied of "." and "..", with no trailing
/// separator (but for a root).
std::string absolute_path(std::string_view native);

/// Whether two native paths name the same file or folder (both must exist; links followed).
bool same_place(std::string_view a, std::string_view b);

/// A disk, in bytes.
struct disk_room {
  std::uintmax_t free = 0;  ///< that this user may still fill
  std::uintmax_t size = 0;
  bool operator==(const disk_room&) const = default;
};

/// Of the disk on which a folder lies, or would lie if it is not there yet. Returns nullopt if the
/// system does not say.
std::optional<disk_room> room_at(std::string_view native_folder);

}  // namespace corvane
