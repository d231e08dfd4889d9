#include "made_audio.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace corvane::examine_test {

namespace {

std::string text_of(const std::vector<int>& bytes) {
  std::string text;
  for (const int byte : bytes)
    text += static_cast<char>(byte);
  return text;
}

std::span<const std::uint8_t> span_of(std::string_view text) {
  return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

// Fills the frame up to the size that its header tells, with headers of other frames in it.
std::string whole(const std::string& header, const std::string& false_header) {
  const auto frame = read_audio_frame(span_of(header));
  EXPECT_TRUE(frame) << "a header that is none";
  std::string bytes = header;
  while (frame && bytes.size() < frame->size)
    bytes += false_header + junk(61);
  bytes.resize(frame ? frame->size : 0);
  return bytes;
}

// Puts the checksum of all bytes behind the sync word at the end.
void put_checksum(std::string& frame) {
  unsigned sum = 0;
  for (std::size_t i = 2; i < frame.size() - 2; ++i) {
    sum ^= static_cast<unsigned>(static_cast<std::uint8_t>(frame[i])) << 8;
    for (int bit = 0; bit < 8; ++bit)
      sum = (sum << 1 ^ ((sum & 0x8000) != 0 ? 0x8005u : 0u)) & 0xFFFF;
  }
  frame[frame.size() - 2] = static_cast<char>(sum >> 8);
  frame[frame.size() - 1] = static_cast<char>(sum & 0xFF);
}

}  // namespace

std::string ac3_frame(made_ac3 of) {
  // lfeon stands behind the fields for levels, whose number depends on the channels.
  const int levels = (of.mode == 2 ? 1 : 0) + ((of.mode & 1) != 0 && of.mode != 1 ? 1 : 0) +
                     ((of.mode & 4) != 0 ? 1 : 0);
  const int flag = of.low_frequency ? 0x10 >> 2 * levels : 0;
  const auto header = [&](int size_code) {
    return text_of({0x0B, 0x77, 0, 0, of.rate_code << 6 | size_code, 0x40, of.mode << 5 | flag, 0});
  };
  std::string frame = whole(header(of.size_code), header(of.size_code - 2));
  put_checksum(frame);
  return frame;
}

std::string eac3_frame(bool dependent, int words) {
  const std::string header = dependent ? text_of({0x0B, 0x77, 0x40, words - 1, 0x32, 0x80, 0, 0})
                                       : text_of({0x0B, 0x77, 0, words - 1, 0x34, 0x80, 0, 0});
  std::string frame = whole(header, header.substr(0, 2));
  put_checksum(frame);
  return frame;
}

std::string mpeg_frame(made_mpeg of) {
  const auto header = [&](int bit_rate_index) {
    return text_of({0xFF, 0xF0 | (of.mpeg2 ? 0 : 8) | (4 - of.layer) << 1 | 1,
                    bit_rate_index << 4 | of.rate_code << 2 | (of.padded ? 2 : 0), of.mode << 6});
  };
  return whole(header(of.bit_rate_index), header(of.bit_rate_index - 1));
}

std::string times(int count, const std::string& text) {
  std::string all;
  for (int n = 0; n < count; ++n)
    all += text;
  return all;
}

std::string junk(std::size_t size) {
  std::string bytes(size, 'j');
  for (std::size_t i = 0; i < size; ++i)
    bytes[i] = static_cast<char>('a' + i * 7 % 26);
  return bytes;
}

std::string id3v1_tag() {
  std::string tag = "TAGA title";
  tag.resize(128);
  return tag;
}

std::string id3v2_tag(const std::string& content) {
  const std::size_t size = content.size();
  const auto seven_bits = [&](int shift) { return static_cast<char>(size >> shift & 0x7F); };
  std::string tag = text_of({'I', 'D', '3', 4, 0, 0});
  for (const int shift : {21, 14, 7, 0})
    tag += seven_bits(shift);
  return tag + content;
}

audio_facts audio_facts_of(std::string_view bytes, std::size_t slice) {
  const auto all = span_of(bytes);
  audio_scanner scanner;
  for (std::size_t at = 0; at < all.size(); at += slice)
    scanner.feed(all.data() + at, std::min(slice, all.size() - at));
  scanner.finish();
  return scanner.facts();
}

}  // namespace corvane::examine_test
