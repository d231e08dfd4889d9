#include "formats/image_volume.h"
#include "formats/udf_descriptors.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <string_view>

namespace corvane {

namespace {

constexpr std::uint64_t anchor_sector = 256;

/// What the volume descriptor sequence tells, and its reserve again.
struct udf_layout {
  bool primary = false, partition = false, volume = false;
  std::string name;
  std::uint32_t partition_begin = 0, partition_size = 0;  // sectors
  std::uint32_t file_set = 0;                             // sector of the partition
  std::uint32_t integrity = 0;                            // sector; 0: none
  bool operator==(const udf_layout&) const = default;
};

/// A file or folder as its file entry describes it.
struct udf_entry {
  bool folder = false;
  std::uint64_t size = 0;
  std::uint32_t first_sector = 0;    // of the image
  std::vector<std::uint8_t> inside;  // what stands in the entry itself
  bool embedded = false;
};

class udf_reader {
 public:
  udf_reader(byte_source& image, image_volume& volume) : out_(image, volume), volume_(volume) {}

  void read();

 private:
  bool is_recognised();
  udf_layout read_sequence(std::uint64_t sector, std::uint64_t length);
  void read_volume(const table_bytes& bytes, udf_layout& layout, std::uint64_t at);
  bool read_layout();
  bool check(const table_bytes& bytes, int kind, std::optional<std::uint32_t> place,
             const char* table, std::uint64_t at);
  void check_integrity();
  void read_root();
  std::optional<udf_entry> entry_at(std::uint32_t block);
  void read_extents(const table_bytes& bytes, udf_entry& entry, std::uint64_t at);
  void read_folder(const waiting_folder& folder);
  std::uint64_t read_identifier(const waiting_folder& folder, const table_bytes& bytes,
                                std::uint64_t place, std::uint64_t at);
  void read_named(const waiting_folder& folder, const std::string& name, bool is_folder,
                  std::uint32_t block, std::uint64_t at);
  std::uint64_t byte_of(std::uint32_t block) const {
    return (std::uint64_t{layout_.partition_begin} + block) * image_sector;
  }

  volume_reader out_;
  image_volume& volume_;
  udf_layout layout_;
};

bool udf_reader::is_recognised() {
  constexpr std::uint64_t first = 16, last = 64;
  bool begun = false, named = false, ended = false;
  for (std::uint64_t number = first; number < last; ++number) {
    const auto sector = out_.bytes(number * image_sector, 7);
    const std::string mark(sector.begin(), sector.end());
    using namespace std::string_literals;
    begun = begun || mark == "\0BEA01\1"s;
    named = named || (begun && mark == "\0NSR02\1"s);
    if (mark == "\0TEA01\1"s) {
      ended = true;
      break;
    }
  }
  if (!named)
    out_.tell("UDF recognition sequence", first * image_sector, "does not name UDF");
  else if (!ended)
    out_.tell("UDF recognition sequence", first * image_sector, "has no end");
  return named;
}

bool udf_reader::check(const table_bytes& bytes, int kind, std::optional<std::uint32_t> place,
                       const char* table, std::uint64_t at) {
  const auto why_not = why_not_tag(bytes, kind, place);
  if (why_not)
    out_.tell(table, at, *why_not);
  return !why_not;
}

void udf_reader::read_volume(const table_bytes& bytes, udf_layout& layout, std::uint64_t at) {
  constexpr const char* table = "UDF volume descriptor";
  layout.volume = true;
  layout.name = udf_field(bytes, 84, 128);
  layout.file_set = bytes.le32(252);
  layout.integrity = bytes.le32(432) == 0 ? 0 : bytes.le32(436);
  if (bytes.le32(212) != image_sector)
    out_.tell(table, at + 212, "states sectors of another size than 2048 bytes");
  if (bytes.le32(268) != 1 || bytes.u8(440) != 1)
    out_.tell(table, at + 268, "has other than one plain partition");
}

udf_layout udf_reader::read_sequence(std::uint64_t sector, std::uint64_t length) {
  constexpr const char* table = "UDF volume descriptor";
  constexpr std::uint64_t most = 64;
  const std::uint64_t count = std::min(length / image_sector, most);
  udf_layout layout;
  for (std::uint64_t i = 0; i < count; ++i) {
    const std::uint64_t at = (sector + i) * image_sector;
    const auto data = out_.sector(sector + i);
    const table_bytes bytes(data);
    const int kind = tag_of(bytes);
    if (!check(bytes, kind, static_cast<std::uint32_t>(sector + i), table, at))
      continue;
    if (kind == udf_tag::terminator)
      return layout;
    layout.primary = layout.primary || kind == udf_tag::primary;
    if (kind == udf_tag::partition && !layout.partition) {
      layout.partition = true;
      layout.partition_begin = bytes.le32(188);
      layout.partition_size = bytes.le32(192);
    } else if (kind == udf_tag::logical_volume && !layout.volume) {
      read_volume(bytes, layout, at);
    }
  }
  out_.tell("UDF volume descriptors", sector * image_sector, "do not end");
  return layout;
}

bool udf_reader::read_layout() {
  constexpr std::uint64_t at = anchor_sector * image_sector;
  const auto data = out_.sector(anchor_sector);
  const table_bytes anchor(data);
  if (!check(anchor, udf_tag::anchor, anchor_sector, "UDF anchor", at) &&
      tag_of(anchor) != udf_tag::anchor)
    return false;
  layout_ = read_sequence(anchor.le32(20), anchor.le32(16));
  const udf_layout reserve = read_sequence(anchor.le32(28), anchor.le32(24));
  if (layout_ != reserve)
    out_.tell("UDF anchor", at + 16, "has volume descriptors that their reserve contradicts");
  if (!layout_.partition || !layout_.volume)
    layout_ = reserve;
  if (!layout_.primary || !layout_.partition || !layout_.volume)
    out_.tell("UDF volume descriptors", at, "are without a volume or a partition");
  return layout_.partition && layout_.volume;
}

void udf_reader::check_integrity() {
  constexpr std::uint64_t kind_at = 28;
  if (layout_.integrity == 0)
    return;
  const std::uint64_t at = layout_.integrity * image_sector;
  const auto data = out_.sector(layout_.integrity);
  const table_bytes bytes(data);
  constexpr const char* table = "UDF integrity descriptor";
  if (check(bytes, udf_tag::integrity, layout_.integrity, table, at) && bytes.le32(kind_at) != 1)
    out_.tell(table, at + kind_at, "says that the volume was not closed");
}

/// Pieces of a file: they must follow each other, as a player takes for granted.
void udf_reader::read_extents(const table_bytes& bytes, udf_entry& entry, std::uint64_t at) {
  constexpr std::uint64_t fixed = 176;
  constexpr const char* table = "UDF file entry";
  const std::uint64_t begin = fixed + bytes.le32(168), length = bytes.le32(172);
  const unsigned kind = bytes.le16(34) & 7U;
  if (!bytes.holds(begin, length)) {
    out_.tell(table, at + 172, "states more pieces than it has room for");
    return;
  }
  if (kind == 3) {
    const auto inside =
        bytes.all().subspan(static_cast<std::size_t>(begin), static_cast<std::size_t>(length));
    entry.embedded = true;
    entry.inside.assign(inside.begin(), inside.end());
    return;
  }
  const std::uint64_t size = kind == 0 ? 8 : 16;
  if (kind > 1)
    out_.tell(table, at + 34, "has pieces of no kind that there is");
  std::uint64_t total = 0, next = 0;
  for (std::uint64_t place = begin; kind <= 1 && place + size <= begin + length; place += size) {
    const std::uint32_t piece = bytes.le32(place) & 0x3FFFFFFFU;
    if (piece == 0)
      break;
    if ((bytes.le32(place) >> 30) != 0)
      out_.tell(table, at + place, "has a piece that is not recorded");
    const std::uint64_t sector = std::uint64_t{layout_.partition_begin} + bytes.le32(place + 4);
    if (sector > std::numeric_limits<std::uint32_t>::max())
      out_.tell(table, at + place, "has a piece past the end of any disc");
    else if (total == 0)
      entry.first_sector = static_cast<std::uint32_t>(sector);
    else if (sector != next)
      out_.tell(table, at + place, "has pieces that do not follow each other");
    total += piece;
    next = sector + (piece + image_sector - 1) / image_sector;
  }
  if (total != entry.size)
    out_.tell(table, at + 56,
              "states " + std::to_string(entry.size) + " bytes; its pieces have " +
                  std::to_string(total));
}

std::optional<udf_entry> udf_reader::entry_at(std::uint32_t block) {
  constexpr const char* table = "UDF file entry";
  constexpr int folder = 4, file = 5;
  const std::uint64_t at = byte_of(block);
  const auto data = out_.bytes(at, image_sector);
  const table_bytes bytes(data);
  if (block >= layout_.partition_size)
    out_.tell(table, at, "is not in the partition");
  if (!check(bytes, udf_tag::file_entry, block, table, at) && tag_of(bytes) != udf_tag::file_entry)
    return std::nullopt;
  udf_entry entry;
  const int kind = bytes.u8(27);
  if (kind != folder && kind != file)
    out_.tell(table, at + 27, "is neither of a file nor of a folder");
  entry.folder = kind == folder;
  entry.size = bytes.le64(56);
  read_extents(bytes, entry, at);
  return entry;
}

void udf_reader::read_named(const waiting_folder& folder, const std::string& name, bool is_folder,
                            std::uint32_t block, std::uint64_t at) {
  constexpr const char* table = "UDF folder";
  if (is_folder) {
    out_.add_folder(table, at,
                    {folder.path + name + "/", block, folder.place, 0, folder.depth + 1});
    return;
  }
  const auto entry = out_.is_full() ? std::nullopt : entry_at(block);
  if (!entry)
    return;
  if (entry->folder)
    out_.tell(table, at, "calls the folder " + folder.path + name + " a file");
  out_.add_file(table, at, {folder.path + name, entry->size, entry->first_sector});
}

/// Reads the identifier at `place`; gives its length, 0 when there is none.
std::uint64_t udf_reader::read_identifier(const waiting_folder& folder, const table_bytes& bytes,
                                          std::uint64_t place, std::uint64_t at) {
  constexpr const char* table = "UDF folder";
  constexpr std::uint64_t fixed = 38;
  constexpr unsigned is_folder = 2, is_deleted = 4, is_parent = 8;
  const std::uint64_t use = bytes.le16(place + 36), name_length = bytes.u8(place + 19);
  const std::uint64_t length = fixed + use + name_length;
  if (!bytes.holds(place, fixed) || !bytes.holds(place, length)) {
    out_.tell(table, at + place, "has an entry that does not fit into it");
    return 0;
  }
  const auto all = bytes.all().subspan(
      static_cast<std::size_t>(place),
      static_cast<std::size_t>(std::min((length + 3) / 4 * 4, bytes.left(place))));
  if (!check(table_bytes(all), udf_tag::file_identifier, std::nullopt, "UDF file identifier",
             at + place) &&
      tag_of(table_bytes(all)) != udf_tag::file_identifier)
    return 0;
  const unsigned flags = bytes.u8(place + 18);
  const std::uint32_t block = bytes.le32(place + 24);
  if ((flags & is_parent) != 0) {
    if (block != folder.parent)
      out_.tell(table, at + place,
                "names sector " + std::to_string(block) + " of the partition as the folder above");
  } else if ((flags & is_deleted) == 0) {
    const std::string name = udf_text(
        all.subspan(static_cast<std::size_t>(fixed + use), static_cast<std::size_t>(name_length)));
    read_named(folder, name, (flags & is_folder) != 0, block, at + place);
  }
  return (length + 3) / 4 * 4;
}

void udf_reader::read_folder(const waiting_folder& folder) {
  const auto entry = entry_at(static_cast<std::uint32_t>(folder.place));
  if (!entry)
    return;
  if (!entry->folder)
    out_.tell("UDF file entry", byte_of(static_cast<std::uint32_t>(folder.place)),
              "is of a file where a folder is");
  const std::uint64_t at = entry->first_sector * image_sector;
  const auto data = entry->embedded ? entry->inside : out_.table("UDF folder", at, entry->size);
  const table_bytes bytes(data);
  for (std::uint64_t place = 0; place < bytes.size();) {
    const std::uint64_t length = read_identifier(folder, bytes, place, at);
    if (length == 0)
      return;
    place += length;
  }
}

void udf_reader::read_root() {
  const std::uint64_t at = byte_of(layout_.file_set);
  const auto data = out_.bytes(at, image_sector);
  const table_bytes bytes(data);
  constexpr const char* table = "UDF file set descriptor";
  if (!check(bytes, udf_tag::file_set, layout_.file_set, table, at) &&
      tag_of(bytes) != udf_tag::file_set)
    return;
  volume_.found = true;
  waiting_folder root;
  root.place = root.parent = bytes.le32(404);
  out_.add_folder(table, at + 400, root);
  waiting_folder folder;
  while (out_.next_folder(folder))
    read_folder(folder);
}

void udf_reader::read() {
  if (!is_recognised())
    return;
  if (!read_layout())
    return;
  volume_.name = layout_.name;
  volume_.sectors = std::uint64_t{layout_.partition_begin} + layout_.partition_size;
  out_.check_size("UDF partition", std::uint64_t{layout_.partition_begin} * image_sector);
  check_integrity();
  read_root();
  out_.finish();
}

}  // namespace

image_volume read_udf(byte_source& image) {
  image_volume volume;
  udf_reader(image, volume).read();
  return volume;
}

}  // namespace corvane
