#include "examine/made_video.h"

namespace corvane::examine_test {

void video_maker::put(std::uint32_t value, int bits) {
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

void video_maker::code(std::uint8_t last) {
  free_bits_ = 0;
  put(1, 24);
  put(last, 8);
}

video_maker& video_maker::sequence(const made_sequence& another) {
  sequence_ = another;
  return sequence();
}

video_maker& video_maker::sequence() {
  const auto number = [](int n) { return static_cast<std::uint32_t>(n); };
  const made_sequence& s = sequence_;
  code(start_code::sequence_header);
  put(number(s.width & 0xFFF), 12);
  put(number(s.height & 0xFFF), 12);
  put(number(s.aspect_code), 4);
  put(number(s.rate_code), 4);
  put(s.bit_rate_value & 0x3FFFF, 18);
  put(1, 1);
  put(s.vbv_value & 0x3FF, 10);
  put(0, 3);
  if (!s.mpeg2)
    return *this;
  code(start_code::extension);
  put(1, 4);
  put(number(s.profile_and_level), 8);
  put(s.progressive ? 1 : 0, 1);
  put(number(s.chroma_format), 2);
  put(number(s.width >> 12), 2);
  put(number(s.height >> 12), 2);
  put(s.bit_rate_value >> 18, 12);
  put(1, 1);
  put(s.vbv_value >> 10, 8);
  put(s.low_delay ? 1 : 0, 1);
  put(0, 7);
  if (s.display_size) {
    code(start_code::extension);
    put(0x2A, 8);
    put(number(s.display_size->width), 14);
    put(1, 1);
    put(number(s.display_size->height), 14);
    put(0, 3);
  }
  return *this;
}

video_maker& video_maker::group(bool closed, bool broken_link) {
  code(start_code::group_of_pictures);
  put(1u << 12, 25);
  put(closed ? 1 : 0, 1);
  put(broken_link ? 1 : 0, 1);
  put(0, 5);
  return *this;
}

int video_maker::rows(const made_picture& one) const {
  if (!sequence_.mpeg2)
    return 1;
  return one.structure == picture_extension::frame ? (sequence_.height + 15) / 16
                                                   : (sequence_.height + 31) / 32;
}

video_maker& video_maker::picture(const made_picture& one) {
  const std::size_t begin = bytes.size();
  const std::uint32_t kind = one.kind == 'I' ? 1 : one.kind == 'P' ? 2 : one.kind == 'B' ? 3 : 4;
  code(start_code::picture);
  put(0, 10);
  put(kind, 3);
  put(static_cast<std::uint32_t>(one.vbv_delay), 16);
  put(0, 3);
  if (sequence_.mpeg2 && one.extension) {
    code(start_code::extension);
    put(8, 4);
    put(0xFFFF, 16);
    put(0, 2);
    put(one.structure, 2);
    put(one.top_field_first ? 1 : 0, 1);
    put(0, 5);
    put(one.repeat_first_field ? 1 : 0, 1);
    put(0, 9);
  }
  std::vector<int> all = one.rows.value_or(std::vector<int>{});
  for (int row = 1; !one.rows && row <= rows(one); ++row)
    all.push_back(row);
  for (const int row : all) {
    code(static_cast<std::uint8_t>(row));
    bytes += "\x22\xFE";
  }
  free_bits_ = 0;
  if (bytes.size() - begin < one.size)
    bytes.resize(begin + one.size, '\x55');
  return *this;
}

video_maker& video_maker::pictures(const std::string& kinds) {
  for (const char kind : kinds) {
    made_picture one;
    one.kind = kind;
    picture(one);
  }
  return *this;
}

video_maker& video_maker::whole_group(const std::string& kinds, bool closed) {
  return sequence().group(closed).pictures(kinds);
}

video_maker& video_maker::end() {
  code(start_code::sequence_end);
  return *this;
}

video_maker& video_maker::raw(const std::string& any) {
  free_bits_ = 0;
  bytes += any;
  return *this;
}

}  // namespace corvane::examine_test
