// The steps of an all-or-nothing write, most of them system-dependent.
#pragma once

#include "platform/result.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace corvane {

/// A name in the target's folder for the text while it is being written: the beginning of the
/// target's name, ".corvane-part" and this process's number, so that two programs do not meet
/// there. Not longer than systems allow, however long the target's is.
std::filesystem::path unused_name_beside(const std::filesystem::path& target);

/// The target, or one that has the same names beside it, of what has such a name; nullopt when it
/// is no such name.
std::optional<std::filesystem::path> target_of_part(const std::filesystem::path& part);

/// Removes from the target's folder what programs that are gone have left of such names for it.
void remove_left_parts_of(const std::filesystem::path& target);

/// The number of this process, and whether none of a number is running any more.
unsigned long process_number();
bool has_ended(unsigned long process);

/// Why the user does not want this file written, or nobody can, as the end of a sentence about it
/// ("is write-protected"); nullopt when it may be written or there is none.
failure why_write_protected(const std::filesystem::path& file);

/// Whether the folder of this file, which is there, does not let it be replaced by another.
bool must_stay_this_file(const std::filesystem::path& file);

/// Writes the text into a file that is there, and flushes it to the disk. Where the disk has no
/// room for it the file stays as it was; after any other failure it may hold some of both texts.
failure overwrite_durably(const std::filesystem::path& file, std::string_view text);

/// A folder for files that shall outlive a system that is started anew, where it has one.
std::filesystem::path lasting_temporary_folder();

/// Creates the file, writes the text and flushes it to the disk. Fails when anything has that name
/// already.
failure write_durably(const std::filesystem::path& path, std::string_view text);

/// Renames `from` over `to`, replacing it (itself, when it is a link) in one step; keeps `to`'s
/// access rights where there was such a file (on Windows it has those that its folder gives). What
/// another program has open is tried again for half a second there.
failure replace_durably(const std::filesystem::path& from, const std::filesystem::path& to);

}  // namespace corvane
