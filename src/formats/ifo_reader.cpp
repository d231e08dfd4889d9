#include "formats/ifo_reader.h"

#include <algorithm>
#include <array>

namespace corvane {

bool ifo_reader::may_read(std::uint64_t bytes) {
  if (bytes > allowance_)
    return false;
  allowance_ -= bytes;
  return true;
}

std::optional<table_range> ifo_reader::table_at(std::uint64_t pointer, std::string name,
                                                std::size_t header, std::size_t ends_at) {
  const std::uint64_t sector = file.u32(pointer);
  if (sector == 0)
    return std::nullopt;
  return table_from(sector * disc_sector_size, std::move(name), header, ends_at, pointer);
}

std::optional<table_range> ifo_reader::table_from(std::uint64_t begin, std::string name,
                                                  std::size_t header, std::size_t ends_at,
                                                  std::uint64_t pointer) {
  if (!file.holds(begin, header)) {
    tell(name, begin,
         "is past the end of the file (its place stands at byte " + std::to_string(pointer) + ")");
    return std::nullopt;
  }
  table_range table{std::move(name), static_cast<std::size_t>(begin), file.size()};
  const std::uint64_t length = std::uint64_t{file.u32(begin + ends_at)} + 1;
  if (length < header)
    tell(table.name, begin + ends_at, "ends before its first entry");
  else if (!file.holds(begin, length))
    tell(table.name, begin + ends_at, "ends past the end of the file");
  else
    table.end = static_cast<std::size_t>(begin + length);
  return table;
}

std::size_t ifo_reader::entries_in(const table_range& table, std::size_t header, std::size_t size,
                                   std::size_t stated) {
  const std::size_t room = (table.end - table.begin - header) / size;
  if (stated > room)
    tell(table.name, table.begin,
         "states " + std::to_string(stated) + " entries but has room for " + std::to_string(room));
  const std::size_t count = std::min(stated, room);
  if (may_read(std::uint64_t{count} * size))
    return count;
  tell(table.name, table.begin, "overlaps other tables");
  return 0;
}

stream_attributes read_stream_attributes(ifo_reader& reader, std::uint64_t at,
                                         const std::string& table, bool menus) {
  constexpr std::uint64_t audio_count = 2, audio = 4, audio_size = 8, most_audio = 8,
                          subpicture_count = 0x54, subpictures = 0x56, subpicture_size = 6;
  const std::uint64_t most_subpictures = menus ? 1 : 32;
  const auto count_of = [&](std::uint64_t place, std::uint64_t most, const char* what) {
    const std::uint64_t stated = reader.file.u16(at + place);
    if (stated > most)
      reader.tell(table, at + place,
                  "states " + std::to_string(stated) + " " + what + " streams; there can be " +
                      std::to_string(most));
    return std::min(stated, most);
  };
  stream_attributes streams;
  const auto video = reader.file.take<2>(at);
  streams.video = read_video_attributes(video);
  const std::uint64_t sounds = count_of(audio_count, most_audio, "audio");
  for (std::uint64_t i = 0; i < sounds; ++i) {
    const auto bytes = reader.file.take<audio_size>(at + audio + i * audio_size);
    streams.audio.push_back(read_audio_attributes(bytes));
    if (streams.audio.back().format().empty())
      reader.tell(table, at + audio + i * audio_size, "states no kind of audio that there is");
  }
  const std::uint64_t pictures = count_of(subpicture_count, most_subpictures, "subpicture");
  for (std::uint64_t i = 0; i < pictures; ++i) {
    const auto bytes = reader.file.take<subpicture_size>(at + subpictures + i * subpicture_size);
    streams.subpictures.push_back(read_subpicture_attributes(bytes));
  }
  const video_attributes& v = streams.video;
  if (v.coding > 1 || v.standard().empty() || v.aspect().empty() || v.width() == 0)
    reader.tell(table, at, "states no kind of video that there is");
  return streams;
}

}  // namespace corvane
