// What a file is by its first bytes.
#include "formats/file_signature.h"

#include "support/small_streams.h"

#include <gtest/gtest.h>

#include <string>

namespace corvane {
namespace {

using namespace std::string_literals;
using testing_support::bytes_of;
using testing_support::small_sound;
using testing_support::small_video;

std::optional<file_signature> signature(const std::string& head) {
  return signature_of({reinterpret_cast<const std::uint8_t*>(head.data()), head.size()});
}

std::string name(const std::string& head) {
  const auto found = signature(head);
  return found ? std::string(found->name) : "nothing";
}

file_family family(const std::string& head) {
  return signature(head).value_or(file_signature{file_family::document, ""}).family;
}

std::string padded(std::string head, std::size_t size = 4096) {
  head.resize(size, 'x');
  return head;
}

TEST(FileSignature, StreamsOfDiscs) {
  EXPECT_EQ(family(small_video()), file_family::dvd_video);
  EXPECT_EQ(family(bytes_of({0, 0, 0, 0, 0}) + small_video()), file_family::dvd_video);
  EXPECT_EQ(family(small_sound()), file_family::dvd_sound);
  EXPECT_EQ(family(small_sound() + small_sound()), file_family::dvd_sound);
  EXPECT_EQ(family(bytes_of({0, 0, 1, 0xBA, 0x44, 0, 4, 0, 4, 1})), file_family::program_stream);
  EXPECT_EQ(family("\x7F\xFE\x80\x01"s + "..."), file_family::dvd_sound);
}

TEST(FileSignature, FilmsOfOtherKinds) {
  const std::pair<std::string, const char*> films[] = {
      {"\0\0\0\x20"s + "ftypisom", "an MP4 film"},
      {"\0\0\0\x14"s + "ftypqt  ", "a QuickTime film"},
      {"\0\0\0\x08"s + "wide", "a QuickTime film"},
      {"\x1A\x45\xDF\xA3", "a Matroska or WebM film"},
      {"RIFF....AVI LIST", "an AVI film"},
      {"\x30\x26\xB2\x75\x8E\x66\xCF\x11", "a Windows Media file"},
      {"FLV\x01", "a Flash film"},
      {"\x1F\x07\0"s, "a DV film"},
      {"\0\0\0\x01\x67\x64\0\x1F"s, "an H.264 video stream"},
      {"\0\0\0\x01\x09\xF0"s, "an H.264 video stream"},
      {"\0\0\0\x01\x40\x01"s, "an H.265 video stream"},
      {"\0\0\x01\xB0\x01"s, "an MPEG-4 video stream"},
  };
  for (const auto& [head, wanted] : films) {
    EXPECT_EQ(name(padded(head)), wanted);
    EXPECT_EQ(family(padded(head)), file_family::film) << wanted;
  }
}

TEST(FileSignature, ATransportStreamIsKnownByItsSyncBytes) {
  for (const auto& [first, distance] : {std::pair{0, 188}, {4, 192}}) {
    std::string head(2048, '\0');
    for (std::size_t at = static_cast<std::size_t>(first); at < head.size();
         at += static_cast<std::size_t>(distance))
      head[at] = 0x47;
    EXPECT_EQ(family(head), file_family::film) << distance;
    head[static_cast<std::size_t>(first + distance)] = 0x46;
    EXPECT_EQ(name(head), "nothing") << distance;
  }
}

TEST(FileSignature, SoundOfOtherKinds) {
  EXPECT_EQ(name("RIFF....WAVEfmt "), "a WAV sound file");
  EXPECT_EQ(name("FORM....AIFF"), "an AIFF sound file");
  EXPECT_EQ(name("fLaC...."), "a FLAC sound file");
  EXPECT_EQ(name("OggS...."), "an Ogg file");
  EXPECT_EQ(name("ID3\x04..."), "a sound file with an ID3 tag, as MP3 files are");
  EXPECT_EQ(name("\0\0\0\x1C"s + "ftypM4A "), "an MPEG-4 sound file");
  EXPECT_EQ(name(padded("\xFF\xF1\x50\x80")), "AAC sound");
  // Layer III, 128 kb/s at 44.1 kHz: 417 bytes.
  const std::string frame = padded("\xFF\xFB\x90\x64", 417);
  EXPECT_EQ(name(frame + frame), "an MP3 file");
}

TEST(FileSignature, Pictures) {
  EXPECT_EQ(name("\xFF\xD8\xFF\xE0"), "a JPEG picture");
  EXPECT_EQ(name("\x89PNG\r\n\x1A\n"), "a PNG picture");
  EXPECT_EQ(name("GIF89a"), "a GIF picture");
  EXPECT_EQ(name("II*\0"s), "a TIFF picture");
  EXPECT_EQ(name("RIFF....WEBPVP8 "), "a WebP picture");
  EXPECT_EQ(name("\0\0\0\x18"s + "ftypheic"), "a HEIF picture");
  EXPECT_EQ(name("BM"s + std::string(12, '\0') + "\x28\0\0\0"s), "a Windows bitmap");
}

TEST(FileSignature, Subtitles) {
  EXPECT_EQ(family("1\r\n00:00:01,000 --> 00:00:02,000\r\nHello"), file_family::text_subtitles);
  EXPECT_EQ(family("\xEF\xBB\xBF"
                   "1\n00:00:01,000 --> 00:00:02,000\nHello"),
            file_family::text_subtitles);
  EXPECT_EQ(family("[Script Info]\r\n"), file_family::text_subtitles);
  EXPECT_EQ(family("WEBVTT\n\n00:01.000 --> 00:02.000"), file_family::other_subtitles);
  EXPECT_EQ(family("# VobSub index file, v7"), file_family::other_subtitles);
}

TEST(FileSignature, WhatBelongsToOthersThanStreams) {
  EXPECT_EQ(family("Corvane 0.997 - 1/2/2005\r\n"), file_family::project);
  EXPECT_EQ(family("DVDVIDEO-VMG"), file_family::disc_table);
  EXPECT_EQ(family("DVDVIDEO-VTS"), file_family::disc_table);
  EXPECT_EQ(family("PK\x03\x04"), file_family::archive);
  EXPECT_EQ(family("%PDF-1.7"), file_family::document);
}

TEST(FileSignature, TheImageOfADiscIsKnownByItsVolume) {
  std::string image(signature_bytes, '\0');
  image.replace(32769, 5, "CD001");
  EXPECT_EQ(family(image), file_family::disc_image);
  EXPECT_EQ(name(image.substr(0, 32770)), "nothing");
}

TEST(FileSignature, NothingIsSaidOfWhatTellsNothing) {
  const std::string heads[] = {"", "x", "RIFF", std::string(5000, '\0'),
                               "{0}{50}A text of MicroDVD",
                               "Dear all, see you at 10:30 --> the hall",
                               // A slice of MPEG video whose code is that of a unit of H.264.
                               "\0\0\x01\x27\x13\xF8"s,
                               // The mark of a UTF-16 text.
                               "\xFF\xFE"
                               "1\0\n\0"s,
                               // One header of MPEG sound, and no second one where it ends.
                               padded("\xFF\xFB\x90\x64"), "BM is not a bitmap, as many words"};
  for (const std::string& head : heads)
    EXPECT_EQ(name(head), "nothing") << head;
}

}  // namespace
}  // namespace corvane
