#include "media/tiny_stream.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace corvane::media_test {

namespace {

struct code_word {
  std::uint32_t value;
  int bits;
};

// dct_dc_size_luminance by size.
constexpr code_word luminance_sizes[] = {{4, 3},  {0, 2},  {1, 2},  {5, 3},  {6, 3},
                                         {14, 4}, {30, 5}, {62, 6}, {126, 7}};

std::string packet(std::uint8_t stream, const std::string& header, const std::string& payload) {
  const std::size_t length = header.size() + payload.size();
  std::string p{'\0', '\0', '\1', static_cast<char>(stream)};
  p += static_cast<char>(length >> 8);
  p += static_cast<char>(length & 0xFF);
  return p + header + payload;
}

}  // namespace

void tiny_stream::put(std::uint32_t value, int bits) {
  for (int bit = bits - 1; bit >= 0; --bit) {
    if (free_bits_ == 0) {
      bytes += '\0';
      free_bits_ = 8;
    }
    --free_bits_;
    const unsigned set = (value >> bit & 1u) << free_bits_;
    bytes.back() = static_cast<char>(static_cast<unsigned char>(bytes.back()) | set);
  }
}

void tiny_stream::align() {
  free_bits_ = 0;
}

void tiny_stream::code(std::uint8_t last) {
  align();
  put(1, 24);
  put(last, 8);
}

tiny_stream& tiny_stream::sequence(int rate_code, bool progressive) {
  code(start_code::sequence_header);
  put(static_cast<std::uint32_t>(width_ & 0xFFF), 12);
  put(static_cast<std::uint32_t>(height_ & 0xFFF), 12);
  put(mpeg2_ ? 2 : 12, 4);
  put(static_cast<std::uint32_t>(rate_code), 4);
  put(1000, 18);
  put(1, 1);
  put(20, 10);
  put(0, 3);
  if (mpeg2_) {
    code(start_code::extension);
    put(1, 4);
    put(0x48, 8);
    put(progressive ? 1 : 0, 1);
    put(1, 2);
    put(static_cast<std::uint32_t>(width_ >> 12), 2);
    put(static_cast<std::uint32_t>(height_ >> 12), 2);
    put(1, 13);
    put(0, 16);
  }
  align();
  return *this;
}

tiny_stream& tiny_stream::group(bool closed) {
  code(start_code::group_of_pictures);
  put(1u << 12, 25);
  put(closed ? 1 : 0, 1);
  put(0, 6);
  return *this;
}

tiny_stream& tiny_stream::add(const tiny_picture& p) {
  const auto kind = p.kind == picture_kind::other ? 4u : static_cast<std::uint32_t>(p.kind);
  code(start_code::picture);
  put(static_cast<std::uint32_t>(p.temporal_reference & 0x3FF), 10);
  put(kind, 3);
  put(0xFFFF, 16);
  const int vectors = p.kind == picture_kind::predicted       ? 1
                      : p.kind == picture_kind::bidirectional ? 2
                                                              : 0;
  for (int i = 0; i < vectors; ++i)
    put(mpeg2_ ? 7 : 1, 4);
  put(0, 1);
  if (mpeg2_) {
    code(start_code::extension);
    put(8, 4);
    put(vectors > 0 ? 0x11 : 0xFF, 8);
    put(vectors > 1 ? 0x11 : 0xFF, 8);
    put(0, 2);
    put(p.structure, 2);
    put(p.top_field_first ? 1 : 0, 1);
    put(p.structure == picture_extension::frame ? 1 : 0, 1);
    put(0, 4);
    put(p.repeat_first_field ? 1 : 0, 1);
    put(0, 3);
  }
  const int height = p.structure == picture_extension::frame ? height_ : height_ / 2;
  const int rows = (height + 15) / 16;
  for (int row = 0; row < rows && (p.slices < 0 || row < p.slices); ++row)
    slice(p, row);
  align();
  return *this;
}

// A row of intra macroblocks of one brightness: only the first block says how it differs from 128.
void tiny_stream::slice(const tiny_picture& p, int row) {
  code(static_cast<std::uint8_t>(row + 1));
  put(2, 5);
  put(0, 1);
  for (int column = 0; column < width_ / 16; ++column) {
    put(1, 1);
    put(p.kind == picture_kind::intra ? 1 : 3, p.kind == picture_kind::intra ? 1 : 5);
    for (int block = 0; block < 6; ++block) {
      const int change = column == 0 && block == 0 ? p.grey - 128 : 0;
      int size = 0;
      while (std::abs(change) >> size != 0)
        ++size;
      if (block < 4)
        put(luminance_sizes[size].value, luminance_sizes[size].bits);
      else
        put(0, 2);
      put(static_cast<std::uint32_t>(change < 0 ? change + (1 << size) - 1 : change), size);
      put(2, 2);
    }
  }
}

tiny_stream& tiny_stream::add(char kind, int grey, int temporal_reference) {
  tiny_picture p;
  p.kind = kind == 'I'   ? picture_kind::intra
           : kind == 'P' ? picture_kind::predicted
           : kind == 'B' ? picture_kind::bidirectional
                         : picture_kind::other;
  p.grey = grey;
  p.temporal_reference = temporal_reference;
  return add(p);
}

tiny_stream& tiny_stream::end() {
  code(0xB7);
  return *this;
}

tiny_stream& tiny_stream::resize(int width, int height) {
  width_ = width;
  height_ = height;
  return *this;
}

int shown_grey(int grey) {
  return std::clamp(static_cast<int>(std::lround((grey - 16) * 255.0 / 219)), 0, 255);
}

std::string in_packets(const std::string& stream, std::size_t payload, bool mpeg2) {
  using namespace std::string_literals;
  const std::string pack =
      mpeg2 ? "\x00\x00\x01\xBA\x44\x00\x04\x00\x04\x01\x00\x00\x03\xFB\xFF\xFF\xFF"s
            : "\x00\x00\x01\xBA\x21\x00\x01\x00\x01\x80\x00\x01"s;
  const std::string header =
      mpeg2 ? "\x81\x80\x05\x21\x00\x01\x00\x01"s : "\xFF\xFF\x60\x20\x21\x00\x01\x00\x01"s;
  std::string file;
  for (std::size_t at = 0; at < stream.size(); at += payload) {
    file += pack;
    if (at == 0)
      file += packet(0xBB, "", "system header");
    file += packet(0xE0, header, stream.substr(at, payload));
    file += packet(0xC0, mpeg2 ? "\x81\x00\x00"s : "\x0F"s, "sound\0\0\1\xB3, of a kind"s);
    file += packet(0xBE, "", std::string(20, '\xFF'));
    file += packet(0xE1, mpeg2 ? "\x81\x00\x00"s : "\x0F"s, "another video\0\0\1\0"s);
  }
  return file + "\x00\x00\x01\xB9"s;
}

}  // namespace corvane::media_test
