#include "examine/space_rules.h"

#include "formats/numbers.h"
#include "platform/files/files.h"
#include "project/file_lookup.h"

#include <algorithm>
#include <array>

namespace corvane {
namespace {

using severity = finding_severity;

// A pack of 2048 bytes has a pack header of 14 bytes and a packet header of 9 or more.
constexpr std::uint64_t pack_bytes = 2048;
constexpr std::uint64_t most_payload = pack_bytes - 14 - 9;

// Of the program folder: log, script and control files, and the two pictures of a menu.
constexpr std::uint64_t texts_bytes = 5'000'000;
constexpr std::uint64_t menu_pictures_bytes = 20'000;

constexpr std::array space_rules_table = {
    rule{"disc-over-single-layer", severity::note, "The disc fits on a single-layer disc (DVD-5)",
         "at most 4,700,372,992 bytes for a single-layer disc",
         "nothing, if it is burnt on a double-layer disc",
         "burn it on a double-layer disc, or leave out titles or encode them with fewer bits",
         "ECMA-267, 120 mm single-layer"},
    rule{"disc-over-double-layer", severity::error, "The disc fits on a double-layer disc (DVD-9)",
         "at most 8,543,666,176 bytes", "no disc: none holds so much",
         "leave out titles or encode them with fewer bits", "ECMA-267, 120 mm double-layer"},
    rule{"space-output", severity::error,
         "The disk of the output folder has room for all that the run writes there",
         "room for the multiplexed streams, the disc and the image",
         "nothing: the run fails when the disk is full",
         "free space on the disk, or choose an output folder on another one",
         "what the run writes"},
    rule{"space-program", severity::error,
         "The disk of the program folder has room for the run's control files",
         "room for control files, pictures of menus and the log",
         "nothing: the run fails when the disk is full", "free space on the disk",
         "what the run writes"},
};

/// "4,812,345,678".
std::string bytes_text(std::uint64_t bytes) {
  std::string digits = std::to_string(bytes);
  for (std::size_t at = digits.size(); at > 3;) {
    at -= 3;
    digits.insert(at, ",");
  }
  return digits;
}

std::uint64_t in_packs(std::uint64_t payload) {
  return (payload + most_payload - 1) / most_payload * pack_bytes;
}

/// No disk is larger; what a system says of a device can be.
std::uint64_t sane(std::optional<std::uintmax_t> size) {
  constexpr std::uintmax_t most = std::uintmax_t{1} << 40;
  return std::min(size.value_or(0), most);
}

finding about_disc(std::string_view rule, std::string found, std::string wanted = {}) {
  return finding_of(space_rules_table, rule, {}, std::move(found), std::move(wanted));
}

std::string room_text(const std::string& folder, const disk_room& room, std::uint64_t needed) {
  return "the disk of the " + folder + " has " + bytes_text(room.free) +
         " bytes free, but the run needs " + bytes_text(needed);
}

}  // namespace

std::span<const rule> space_rules() {
  return space_rules_table;
}

space_wanted space_wanted_by(
    const disc_description& d,
    const std::function<std::optional<std::uintmax_t>(const std::string&)>& size_of) {
  std::uint64_t multiplexed = 0, ready = 0, menus = 0, largest_with_subtitles = 0;
  const auto add_file = [&](const title_file& file) {
    std::uint64_t payload = 0;
    for (const std::string& stream : file.streams)
      payload += sane(size_of(stream));
    if (!file.is_multiplexed_here) {
      ready += payload;
      return;
    }
    multiplexed += in_packs(payload);
    if (!file.subtitles.empty())
      largest_with_subtitles = std::max(largest_with_subtitles, in_packs(payload));
  };
  for (const disc_title& t : d.titles)
    for (const title_file* const file : t.files())
      add_file(*file);
  for (const auto* const all : {&d.menus, &d.disc_menus})
    for (const disc_menu& m : *all) {
      std::uint64_t payload = 0;
      for (const std::string& file : {m.video(), m.audio()})
        if (!file.empty())
          payload += sane(size_of(file));
      menus += in_packs(payload);
    }
  space_wanted wanted;
  wanted.disc = multiplexed + ready + menus;
  // First the streams, one of them twice while a subtitle goes into it; then they and the disc; and
  // when they are gone, the disc and its image.
  const std::uint64_t streams = multiplexed + menus;
  wanted.output = std::max(streams + largest_with_subtitles, streams + wanted.disc);
  wanted.image = d.image ? wanted.disc : 0;
  wanted.program = texts_bytes + menu_pictures_bytes * (d.menus.size() + d.disc_menus.size());
  return wanted;
}

std::vector<finding> space_findings(const space_wanted& wanted, const disks_of_run& disks) {
  std::vector<finding> findings;
  const std::string size = "the disc has at least " + bytes_text(wanted.disc) + " bytes";
  if (wanted.disc > double_layer_bytes)
    findings.push_back(about_disc("disc-over-double-layer", size));
  else if (wanted.disc > single_layer_bytes)
    findings.push_back(about_disc("disc-over-single-layer", size));
  const auto are_one = [](const std::optional<disk_room>& a, const std::optional<disk_room>& b) {
    return a && b && a->size == b->size;
  };
  const auto look = [&](std::string_view rule, const std::string& folder,
                        const std::optional<disk_room>& disk, std::uint64_t needed) {
    if (disk && needed > disk->free)
      findings.push_back(about_disc(rule, room_text(folder, *disk, needed)));
  };
  // Two disks that are taken for one: the few megabytes of the program folder make no difference.
  std::uint64_t in_output = wanted.output;
  const bool holds_image = !disks.beside_output || are_one(disks.output, disks.beside_output);
  if (holds_image)
    in_output = std::max(in_output, wanted.disc + wanted.image);
  if (are_one(disks.output, disks.program))
    in_output += wanted.program;
  look("space-output", "output folder", disks.output, in_output);
  if (!holds_image)
    look("space-output", "folder of the image", disks.beside_output, wanted.image);
  look("space-program", "program folder", disks.program, wanted.program);
  return findings;
}

std::vector<finding> space_findings(const disc_description& d, const std::string& output_folder,
                                    const std::string& program_folder) {
  file_lookup files;
  const space_wanted wanted =
      space_wanted_by(d, [&files](const std::string& stored) { return files.size_of(stored); });
  const auto room_of = [](const std::string& folder) {
    return folder.empty() ? std::nullopt : room_at(folder);
  };
  const std::string beside = text_of(path_of(output_folder).parent_path());
  std::vector<finding> findings =
      space_findings(wanted, {room_of(output_folder), room_of(program_folder), room_of(beside)});
  for (finding& f : findings)
    if (f.rule == "space-output")
      f.file = output_folder;
    else if (f.rule == "space-program")
      f.file = program_folder;
  return findings;
}

}  // namespace corvane
