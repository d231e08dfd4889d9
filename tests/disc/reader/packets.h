// The streams of a disc, sector by sector: navigation packets, and where each stream begins.
#pragma once

#include <cstdint>
#include <dvdread/dvd_reader.h>
#include <dvdread/nav_types.h>
#include <map>
#include <memory>
#include <optional>
#include <vector>

namespace corvane::disc {

struct navigation_packet {
  pci_t pci;
  dsi_t dsi;
};

struct stream_start {
  std::uint32_t first = 0;  ///< presentation time of the first packet that has one, 90 kHz
  bool timed = false;
  int packets = 0;
};

/// A subpicture as its packets carry it.
struct timed_unit {
  std::uint32_t time = 0;  ///< presentation time of its first packet, 90 kHz
  std::vector<std::uint8_t> bytes;
};

/// The menu or title streams of one titleset (0: the disc's own menus).
class streams_of {
 public:
  streams_of(dvd_reader_t* disc, int titleset, dvd_read_domain_t domain);

  bool is_open() const { return file_ != nullptr; }

  /// The navigation packet in a sector; nothing when there is none.
  std::optional<navigation_packet> navigation(std::uint32_t sector) const;

  /// Streams that have packets in `count` sectors from `first` on, by their stream id (0xe0 video,
  /// 0xc0.. MPEG audio); for private streams by 0xbd00 + substream (0x80.. AC-3, 0x20..
  /// subpictures).
  std::map<int, stream_start> starts(std::uint32_t first, int count) const;

  /// The first unit of a subpicture stream in the sectors from `first` to `last`; nothing when
  /// there is none or it is cut off.
  std::optional<timed_unit> first_subpicture(std::uint8_t substream, std::uint32_t first,
                                             std::uint32_t last) const;

  /// What the packets of a private stream (by its first byte, which is left out) carry in the
  /// sectors from `first` to `last`, joined; only as much as `enough` bytes when there is more.
  std::vector<std::uint8_t> private_bytes(std::uint8_t substream, std::uint32_t first,
                                          std::uint32_t last, std::size_t enough) const;

 private:
  struct closer {
    void operator()(dvd_file_t* file) const { DVDCloseFile(file); }
  };
  std::unique_ptr<dvd_file_t, closer> file_;
};

}  // namespace corvane::disc
