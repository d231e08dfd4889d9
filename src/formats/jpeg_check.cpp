#include "formats/jpeg_check.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace corvane {
namespace {

struct component {
  int id = 0, across = 0, down = 0;  // number, sampling factors
};

/// What decides how a JPEG is decoded.
struct jpeg_header {
  bool jfif = false;
  std::optional<int> adobe_transform;  // 0: the components are RGB or CMYK as they stand
  int coding = -1;                     // number of the frame's marker: 0 baseline, 2 progressive
  int bits = 0;
  std::size_t end = 0;  // first byte behind the frame header
  std::vector<component> components;
};

int byte_at(std::string_view bytes, std::size_t at) {
  return at < bytes.size() ? static_cast<unsigned char>(bytes[at]) : 0;
}

/// SOF0 to SOF15; three numbers of that range mean something else.
bool begins_frame(int marker) {
  return marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
}

void read_frame(std::string_view segment, int marker, jpeg_header& header) {
  header.coding = marker - 0xC0;
  header.bits = byte_at(segment, 0);
  constexpr std::size_t first = 6, each = 3;
  const auto count = static_cast<std::size_t>(byte_at(segment, 5));
  for (std::size_t at = first; at < first + count * each && at + each <= segment.size();
       at += each) {
    const int factors = byte_at(segment, at + 1);
    header.components.push_back({byte_at(segment, at), factors >> 4, factors & 15});
  }
}

void read_segment(std::string_view segment, int marker, jpeg_header& header) {
  constexpr int app0 = 0xE0, app14 = 0xEE;
  constexpr std::size_t transform_at = 11;
  if (marker == app0 && segment.starts_with(std::string_view("JFIF\0", 5)))
    header.jfif = true;
  if (marker == app14 && segment.starts_with("Adobe") && segment.size() > transform_at)
    header.adobe_transform = byte_at(segment, transform_at);
  if (begins_frame(marker))
    read_frame(segment, marker, header);
}

/// Reads segments up to the frame header.
jpeg_header read_header(std::string_view bytes) {
  jpeg_header header;
  std::size_t at = 2;
  while (header.coding < 0 && at + 4 <= bytes.size() && byte_at(bytes, at) == 0xFF) {
    const int marker = byte_at(bytes, at + 1);
    if (marker == 0xFF) {  // filling
      ++at;
      continue;
    }
    const int high = byte_at(bytes, at + 2), low = byte_at(bytes, at + 3);
    const auto length = static_cast<std::size_t>(high << 8 | low);
    if (length < 2 || at + 2 + length > bytes.size())
      break;
    read_segment(bytes.substr(at + 4, length - 2), marker, header);
    at += 2 + length;
    header.end = at;
  }
  return header;
}

/// As the decoder that the tool uses tells RGB from YCbCr.
bool is_rgb(const jpeg_header& h) {
  if (h.jfif)
    return false;
  if (h.adobe_transform)
    return *h.adobe_transform == 0;
  return h.components[0].id == 'R' && h.components[1].id == 'G' && h.components[2].id == 'B';
}

bool is_once(const component& c) {
  return c.across == 1 && c.down == 1;
}

bool is_once_or_twice(const component& c) {
  return (c.across == 1 || c.across == 2) && (c.down == 1 || c.down == 2);
}

std::string factors_of(const jpeg_header& h) {
  std::string text;
  for (const component& c : h.components)
    text += (text.empty() ? "" : ", ") + std::to_string(c.across) + "x" + std::to_string(c.down);
  return text;
}

}  // namespace

bool is_cut_off_jpeg(std::string_view jpeg) {
  // Within the coded picture, this pair of bytes stands at its end only; what stands before the
  // frame header may be a whole JPEG itself, a thumbnail.
  const jpeg_header h = read_header(jpeg);
  return h.coding < 0 || jpeg.find("\xFF\xD9", h.end) == std::string_view::npos;
}

std::optional<std::string> why_not_for_jpeg2yuv(std::string_view jpeg) {
  if (byte_at(jpeg, 0) != 0xFF || byte_at(jpeg, 1) != 0xD8)
    return "is not a JPEG file";
  const jpeg_header h = read_header(jpeg);
  if (h.coding < 0)
    return "is a damaged JPEG file";
  if (h.coding > 2 || h.bits != 8)
    return "is of a kind of JPEG that is neither baseline nor progressive with 8 bits";
  if (h.components.size() == 4)
    return "has CMYK colours";
  if (h.components.size() != 1 && h.components.size() != 3)
    return "is a damaged JPEG file";
  if (h.components.size() == 3 && is_rgb(h))
    return "has RGB colours instead of YCbCr";
  const bool sampled_well = h.components.size() == 1
                                ? is_once(h.components[0])
                                : is_once_or_twice(h.components[0]) && is_once(h.components[1]) &&
                                      is_once(h.components[2]);
  if (!sampled_well)
    return "has the sampling factors " + factors_of(h);
  return std::nullopt;
}

}  // namespace corvane
