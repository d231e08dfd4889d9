// Each rule about streams, with a really encoded stream that breaks it: the finding, its item and
// its time, and no other finding. Streams that no encoder makes are encoded ones with some bytes
// changed.
#include "clips.h"
#include "command.h"
#include "disc/finding.h"
#include "examine/examination.h"
#include "examine/ready_rules.h"
#include "examine/stream_rules.h"
#include "examine/titleset_rules.h"
#include "project/disc_of.h"
#include "studio.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace corvane::disc {
namespace {

using namespace std::string_literals;
using testing::AllOf;
using testing::ElementsAreArray;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::IsSupersetOf;

constexpr std::size_t pack = 2048;

const std::string ff = "ffmpeg -nostdin -v error -y ";
const std::string picture = "-f lavfi -i testsrc=s=720x480:r=30000/1001,format=yuv420p ";
const std::string tone = "-f lavfi -i sine=r=48000 ";
const std::string mpeg2 =
    "-t 3 -c:v mpeg2video -b:v 2M -maxrate 6M -bufsize 1835k -g 15 -flags +cgop "
    "-sc_threshold 1000000000 -aspect 4:3 ";
const std::string ac3 = "-t 3 -c:a ac3 -b:a 192k -ac 2 -ar 48000 ";

// What is encoded. Options behind those of clean streams take their place.

std::string video(const std::string& more = {}, const std::string& source = picture) {
  return kept_clip(ff + source + mpeg2 + more + " -f mpeg2video", "v.m2v");
}
std::string sound(const std::string& more = {}, const std::string& name = "a.ac3") {
  return kept_clip(ff + tone + ac3 + more, name);
}
std::string ready(const std::string& more = {}, const std::string& format = "dvd") {
  return kept_clip(ff + picture + tone + mpeg2 + ac3 + more + " -f " + format, "r.vob");
}
/// Of about so many bits a second, whatever the encoder would like to leave out.
std::string rich_video(const std::string& rate) {
  return video("-b:v " + rate + " -minrate " + rate + " -maxrate " + rate,
               "-f lavfi -i testsrc=s=720x480:r=30000/1001,noise=alls=20:allf=t,format=yuv420p ");
}

// What is changed in it.

std::string bytes_of(const std::string& path) {
  const auto bytes = read_file(path, std::uintmax_t{1} << 30);
  EXPECT_TRUE(bytes) << bytes.error;
  return bytes ? *bytes : std::string();
}

constexpr std::string_view sequence_header("\0\0\1\xB3", 4);

/// Where the n-th of them (0-based) stands.
std::size_t nth(const std::string& stream, std::string_view code, int n) {
  std::size_t at = stream.find(code);
  while (n-- > 0)
    at = stream.find(code, at + 1);
  EXPECT_NE(at, std::string::npos);
  return at;
}

/// With zeros behind the first pictures, so that each has the wanted size.
std::string padded(const std::string& stream, const std::vector<std::size_t>& sizes) {
  std::string all;
  std::size_t begin = 0;
  bool has_picture = false;
  std::size_t number = 0;
  const auto end_picture = [&](std::size_t end) {
    const std::size_t size = end - begin;
    all.append(stream, begin, size);
    if (number < sizes.size() && size < sizes[number])
      all.append(sizes[number] - size, '\0');
    ++number;
    begin = end;
    has_picture = false;
  };
  for (std::size_t at = 0; (at = stream.find("\0\0\1"s, at)) != std::string::npos; at += 4) {
    const char code = stream[at + 3];
    if (has_picture && (code == '\0' || code == '\xB3' || code == '\xB8' || code == '\xB7'))
      end_picture(at);
    has_picture = has_picture || code == '\0';
  }
  if (has_picture)
    end_picture(stream.size());
  return all.append(stream, begin);
}

/// As a bad demultiplexer leaves it: the header of a pack before the place.
std::string with_packet_header(const std::string& stream, std::size_t at) {
  constexpr std::size_t pack_header_size = 14;
  return stream.substr(0, at) + "\0\0\1\xBA"s + std::string(pack_header_size - 4, '\x44') +
         stream.substr(at);
}

/// Its first group has neither a header of its own nor an I picture.
std::string without_first_intra(const std::string& stream) {
  constexpr std::string_view group("\0\0\1\xB8", 4), picture_header("\0\0\1\0", 4);
  const std::size_t first = stream.find(group);
  return stream.substr(0, first) + stream.substr(nth(stream, picture_header, 1));
}

std::string without_later_sequence_headers(std::string stream) {
  constexpr std::string_view group("\0\0\1\xB8", 4);
  for (std::size_t at; (at = stream.find(sequence_header, 4)) != std::string::npos;)
    stream.erase(at, stream.find(group, at) - at);
  return stream;
}

/// Where the pack's first packet behind a system header begins.
std::size_t packet_in(const std::string& stream, std::size_t begin) {
  constexpr std::size_t pack_header_size = 14;
  std::size_t at = begin + pack_header_size + (stream[begin + 13] & 7);
  if (stream.compare(at, 4, "\0\0\1\xBB"s) == 0)
    at += 6 + (std::size_t{static_cast<unsigned char>(stream[at + 4])} << 8) +
          static_cast<unsigned char>(stream[at + 5]);
  return at;
}

std::uint8_t stream_of_pack(const std::string& stream, std::size_t begin) {
  return static_cast<std::uint8_t>(stream[packet_in(stream, begin) + 3]);
}

constexpr std::uint8_t private_stream = 0xBD, picture_stream = 0xE0;

/// The bytes of a packet of private stream 1 from that of its substream on.
char* substream_of_pack(std::string& stream, std::size_t begin) {
  const std::size_t packet = packet_in(stream, begin);
  return stream.data() + packet + 9 + static_cast<unsigned char>(stream[packet + 8]);
}

/// Calls `change` with the beginning of each pack of sound.
std::string with_sound_packs(std::string stream, const std::function<void(char*)>& change) {
  for (std::size_t at = 0; at + pack <= stream.size(); at += pack)
    if (stream_of_pack(stream, at) == private_stream)
      change(substream_of_pack(stream, at));
  return stream;
}

/// Keeps the packs for which `keeps` holds, of their number (0-based) and stream.
std::string packs_of(const std::string& stream,
                     const std::function<bool(std::size_t, std::uint8_t)>& keeps) {
  std::string kept;
  for (std::size_t at = 0; at + pack <= stream.size(); at += pack)
    if (keeps(at / pack, stream_of_pack(stream, at)))
      kept.append(stream, at, pack);
  return kept;
}

/// The pack with which the n-th unit begins, 0-based.
std::size_t pack_of_unit(const std::string& stream, int n) {
  std::size_t at = 0;
  for (; at + pack <= stream.size(); at += pack)
    if (stream.find("\0\0\1\xBF"s, at) < at + pack && n-- == 0)
      break;
  return at / pack;
}

/// The last four bytes of a pack that ends with padding are the end code of a program stream.
std::string with_end_code(std::string stream) {
  constexpr std::string_view padding("\0\0\1\xBE", 4);
  for (std::size_t at = stream.size() / 2 / pack * pack; at + pack < stream.size(); at += pack) {
    const std::size_t packet = stream.find(padding, at);
    if (packet >= at + pack - 20 || stream.substr(at + pack - 4, 4) != "\xFF\xFF\xFF\xFF")
      continue;
    const std::size_t size = at + pack - packet - 6 - 4;
    stream[packet + 4] = static_cast<char>(size >> 8);
    stream[packet + 5] = static_cast<char>(size & 0xFF);
    return stream.replace(at + pack - 4, 4, "\0\0\1\xB9"s);
  }
  ADD_FAILURE() << "no pack with padding";
  return stream;
}

/// A pack of padding alone, with the header of this one, of half the size.
std::string half_pack(const std::string& stream, std::size_t begin) {
  constexpr std::size_t header = 14, size = pack / 2 - header - 6;
  return stream.substr(begin, header) + "\0\0\1\xBE"s + static_cast<char>(size >> 8) +
         static_cast<char>(size & 0xFF) + std::string(size, '\xFF');
}

class RealStreams : public ::testing::Test {
 protected:
  struct made {
    std::vector<std::string> findings;             // "rule at place"
    std::vector<std::vector<std::string>> titles;  // native paths
  };

  std::string file(const std::string& name, const std::string& bytes) const {
    folder_.add(name, bytes);
    return folder_.path(name);
  }

  static project project_of(const std::vector<std::vector<std::string>>& titles) {
    project p;
    for (const std::vector<std::string>& streams : titles) {
      std::vector<std::string> stored;
      for (const std::string& one : streams)
        stored.push_back(stored_from_native(one));
      add_title(p, stored);
    }
    return p;
  }

  static std::vector<std::string> found(const project& p) {
    fact_store store;
    examination e(disc_of(p), examination::depth::whole_files, store);
    while (e.step(1000)) {
    }
    std::vector<std::string> texts;
    for (const finding& f : e.findings())
      texts.push_back(f.rule + " at " + place_text(f));
    return texts;
  }

  void expect(const std::vector<made>& table) {
    for (const made& one : table) {
      EXPECT_THAT(found(project_of(one.titles)), ElementsAreArray(one.findings));
      for (const std::string& finding : one.findings)
        shown_.insert(finding.substr(0, finding.find(' ')));
    }
  }

  std::vector<made> videos() const;
  std::vector<made> more_videos() const;
  std::vector<made> sounds() const;
  std::vector<made> ready_titles() const;
  std::vector<made> titles_together() const;

  testing_support::temporary_folder folder_;
  std::set<std::string> shown_;  // rules
};

std::vector<RealStreams::made> RealStreams::videos() const {
  const std::string a = sound(), a_minute = sound("-t 60");
  const std::string quiet = bytes_of(video("-t 60 -b:v 1M -bf 0",
                                           "-f lavfi -i "
                                           "color=s=720x480:r=30000/1001,format=yuv420p "));
  const auto constant_video = [&](double rate, std::size_t pictures = 1798) {
    return file(std::to_string(rate) + ".m2v",
                padded(quiet, std::vector<std::size_t>(
                                  pictures, static_cast<std::size_t>(rate / 8 * 1001 / 30000))));
  };
  return {
      {{}, {{video(), a}}},
      {{"video-none at title 1, video"}, {{file("text.m2v", "no video at all"), a}}},
      {{"video-packets at title 1, video"}, {{ready(), a}}},
      {{"video-rate at title 1, video"},
       {{video({}, "-f lavfi -i testsrc=s=720x480:r=24000/1001,format=yuv420p "), a}}},
      {{"video-aspect at title 1, video"}, {{video("-aspect 2.21"), a}}},
      {{"video-aspect-square at title 1, video"}, {{video("-aspect 3:2"), a}}},
      {{"video-aspect-narrow at title 1, video"},
       {{video("-aspect 16:9", "-f lavfi -i testsrc=s=352x480:r=30000/1001,format=yuv420p "), a}}},
      {{"video-chroma at title 1, video"}, {{video("-pix_fmt yuv422p"), a}}},
      {{"video-profile at title 1, video"}, {{video("-profile:v main -level:v high"), a}}},
      {{"video-low-delay at title 1, video"}, {{video("-bf 0 -flags +low_delay+cgop"), a}}},
      {{"video-buffer at title 1, video"}, {{video("-bufsize 4M"), a}}},
      {{"video-high-rate at title 1, video, 00:00:00"}, {{constant_video(9.9e6, 60), a_minute}}},
      {{"video-peak-rate at title 1, video, 00:00:02"}, {{constant_video(10.4e6), a_minute}}},
      {{"total-rate at title 1, 00:00:11"}, {{constant_video(9.8e6), a_minute}}},
      {{}, {{constant_video(9.6e6), a_minute}}},
      {{"video-large-beginning at title 1, 00:00:00"},
       {{file("large.m2v", padded(bytes_of(video()), {130'000})), a}}},
      {{"gop-length at title 1, video, 00:00:00"}, {{video("-g 30"), a}}},
      {{"gop-sequence-header at title 1, video, 00:00:00"},
       {{file("bare.m2v", without_later_sequence_headers(bytes_of(video()))), a}}},
  };
}

std::vector<RealStreams::made> RealStreams::more_videos() const {
  const std::string a = sound(), long_sound = sound("-t 6"), v = bytes_of(video());
  const std::string open = bytes_of(video("-flags 0 -bf 2"));
  const std::string small =
      bytes_of(video({}, "-f lavfi -i testsrc=s=352x480:r=30000/1001,format=yuv420p "));
  std::string hole = v;
  hole.erase(nth(v, sequence_header, 4) + 5000, 4000);
  return {
      {{"first-gop-open at title 1, video"},
       {{file("open.m2v", open.substr(nth(open, sequence_header, 1))), a}}},
      {{"video-changes at title 1, video, 00:00:03"},
       {{file("joined.m2v", v + small), long_sound}}},
      {{"video-aspect-changes at title 1, video, 00:00:03"},
       {{file("wider.m2v", v + bytes_of(video("-aspect 16:9"))), long_sound}}},
      {{"video-end-code at title 1, video, 00:00:03"},
       {{file("ends.m2v", v + "\0\0\1\xB7"s + v), long_sound}}},
      {{"video-stray-bytes at title 1, video, 00:00:00"}, {{file("late.m2v", "late" + v), a}}},
      {{"video-packet-codes at title 1, video, 00:00:01"},
       {{file("packed.m2v", with_packet_header(v, nth(v, sequence_header, 4))), a}}},
      {{"video-beginning at title 1, video"}, {{file("behind.m2v", without_first_intra(v)), a}}},
      {{"video-damage at title 1, video, 00:00:02"}, {{file("hole.m2v", hole), a}}},
      {{"video-cut at title 1, video, 00:00:02"},
       {{file("cut.m2v", v.substr(0, v.size() - 500)), a}}},
  };
}

std::vector<RealStreams::made> RealStreams::sounds() const {
  const std::string v = video(), a = bytes_of(sound()), layer_2 = "-c:a mp2 -b:a 192k";
  const std::string mp2 = bytes_of(sound(layer_2, "a.mp2"));
  const std::string long_video = video("-t 6");
  std::string damaged = a;
  damaged[a.size() / 2 / 768 * 768 + 400] ^= 0x10;
  std::string tag = "TAG" + std::string(125, '\0');
  return {
      {{"audio-kind at title 1, audio 1"}, {{v, file("text.ac3", "no sound at all")}}},
      {{"audio-optional-kind at title 1, audio 1"},
       {{v, sound("-c:a dca -strict -2 -b:a 768k", "a.dts")}}},
      {{"audio-sample-rate at title 1, audio 1"}, {{v, sound("-ar 44100")}}},
      {{"audio-bit-rate at title 1, audio 1"}, {{v, sound("-b:a 640k")}}},
      {{"audio-rate-varies at title 1, audio 1"},
       {{long_video, file("rates.ac3", a + bytes_of(sound("-b:a 224k")))}}},
      {{"audio-changes at title 1, audio 1, 00:00:03"},
       {{long_video, file("joined.ac3", a + bytes_of(sound("-ac 1")))}}},
      {{"audio-leading-bytes at title 1, audio 1, 00:00:00"}, {{v, file("late.ac3", "late" + a)}}},
      {{"audio-trailing-bytes at title 1, audio 1, 00:00:03"}, {{v, file("tag.mp2", mp2 + tag)}}},
      {{"audio-gap at title 1, audio 1, 00:00:03"},
       {{v, file("behind.ac3", a + std::string(100, 'x'))}}},
      {{"audio-cut at title 1, audio 1, 00:00:02"},
       {{v, file("cut.ac3", a.substr(0, a.size() - 100))}}},
      {{"audio-damage at title 1, audio 1, 00:00:01"}, {{v, file("damaged.ac3", damaged)}}},
      {{"audio-short at title 1, audio 1, 00:00:01"}, {{v, sound("-t 1")}}},
      {{"audio-long at title 1, audio 1, 00:00:03"}, {{v, sound("-t 5")}}},
  };
}

std::vector<RealStreams::made> RealStreams::ready_titles() const {
  const std::string r = bytes_of(ready()), v = video();
  const std::size_t half = r.size() / 2 / pack * pack;
  const std::size_t second = pack_of_unit(r, 1), third = pack_of_unit(r, 2),
                    fifth = pack_of_unit(r, 4);
  const std::string lpcm = bytes_of(ready("-c:a pcm_dvd"));
  return {
      {{}, {{file("clean.vob", r)}}},
      {{}, {{ready("-c:a pcm_dvd -ar 96000")}}},
      {{}, {{ready("-map 0 -map 1 -map 1 -c:a:0 mp2")}}},
      {{"audio-optional-kind at title 1, audio 1"}, {{ready("-c:a dca -strict -2 -b:a 768k")}}},
      {{"ready-not-program-stream at title 1"}, {{v}}},
      {{"ready-without-nav-packs at title 1"}, {{ready({}, "vob")}}},
      {{"ready-without-video at title 1"},
       {{file("blind.vob",
              packs_of(r, [](std::size_t, std::uint8_t s) { return s != picture_stream; }))}}},
      {{"ready-beginning at title 1, 00:00:00"}, {{file("late.vob", std::string(pack, 'x') + r)}}},
      {{"ready-bytes at title 1"},
       {{file("loose.vob", r.substr(0, half) + std::string(100, 'x') + r.substr(half))}}},
      {{"ready-packs at title 1"},
       {{file("halves.vob",
              r.substr(0, half) + half_pack(r, half) + half_pack(r, half) + r.substr(half))}}},
      {{"ready-cut at title 1"}, {{file("cut.vob", r.substr(0, r.size() - 1))}}},
      {{"ready-end-code at title 1"}, {{file("ends.vob", with_end_code(r))}}},
      {{"ready-clock at title 1, 00:00:03"}, {{file("twice.vob", r + r)}}},
      {{"ready-clock-jump at title 1, 00:00:01", "audio-damage at title 1, audio 1, 00:00:01"},
       {{file("again.vob", r.substr(0, fifth * pack) + r.substr(second * pack))}}},
      {{"ready-times at title 1, audio 1, 00:00:00", "audio-damage at title 1, audio 1, 00:00:00",
        "audio-short at title 1, audio 1, 00:00:01"},
       {{file("silent.vob", packs_of(r,
                                     [&](std::size_t number, std::uint8_t stream) {
                                       return stream != private_stream || number < third ||
                                              number >= pack_of_unit(r, 5);
                                     }))}}},
      {{"ready-times at title 1, video", "audio-damage at title 1, audio 1, 00:00:00"},
       {{file("hole.vob", r.substr(0, second * pack) + r.substr(third * pack))}}},
      {{"audio-short at title 1, audio 1, 00:00:00", "audio-cut at title 1, audio 1, 00:00:00"},
       {{file("quiet.vob", packs_of(r,
                                    [&](std::size_t number, std::uint8_t stream) {
                                      return stream != private_stream || number < third;
                                    }))}}},
      {{"audio-samples at title 1, audio 1"},
       {{file("samples.vob", with_sound_packs(lpcm, [](char* s) { s[5] |= '\xC0'; }))}}},
      {{"audio-sample-rate at title 1, audio 1"},
       {{file("rate.vob", with_sound_packs(lpcm, [](char* s) { s[5] |= '\x20'; }))}}},
  };
}

std::vector<RealStreams::made> RealStreams::titles_together() const {
  const std::string v = video(), a = sound(), b = sound("-c:a mp2 -b:a 192k", "a.mp2"), r = ready();
  const std::string lpcm = ready("-c:a pcm_dvd");
  const std::string fine = ready("-c:a pcm_dvd -sample_fmt s32 -bits_per_raw_sample 24");
  const std::string loud = sound("-b:a 448k");
  const std::vector<std::string> loudest(8, loud);
  std::vector<std::string> too_much = {rich_video("9900k")};
  too_much.insert(too_much.end(), loudest.begin(), loudest.end());
  return {
      {{"file-missing at title 1, audio 1"}, {{v, folder_.path("gone.ac3")}}},
      {{"file-empty at title 1, audio 1"}, {{v, file("empty.ac3", "")}}},
      {{"total-rate at title 1, 00:00:00", "video-high-rate at title 1, video, 00:00:00"},
       {too_much}},
      {{"video-standard at title 1, video"},
       {{video({}, "-f lavfi -i testsrc=s=720x576:r=25,format=yuv420p "), a}}},
      {{"titleset-audio-kind at title 2, audio 1"}, {{v, a}, {lpcm}}},
      {{"titleset-audio-kind at title 2, audio 1"}, {{lpcm}, {v, b}}},
      {{"titleset-audio-samples at title 2, audio 1"}, {{lpcm}, {fine}}},
      {{"titleset-audio-number at title 2"},
       {{r}, {file("second.vob", with_sound_packs(bytes_of(r), [](char* s) { s[0] = '\x81'; }))}}},
      {{"titleset-audio-count at title 2"}, {{v, a, b}, {v, a}}},
      {{"titleset-audio-channels at title 2, audio 1"}, {{v, a}, {v, sound("-ac 6")}}},
      {{"titleset-aspect at title 2, video"}, {{v, a}, {video("-aspect 16:9"), a}}},
      {{"titleset-size at title 2, video"},
       {{v, a}, {video({}, "-f lavfi -i testsrc=s=352x480:r=30000/1001,format=yuv420p "), a}}},
  };
}

TEST_F(RealStreams, VideosHaveTheirFindings) {
  expect(videos());
  expect(more_videos());
}

/// What the rules say of bits is what mplex does.
TEST_F(RealStreams, MplexTakesTheBitsThatTheRulesTake) {
  for (const made& one : videos()) {
    const std::string first = one.findings.empty() ? "clean" : one.findings[0];
    const bool is_error = first.starts_with("video-peak-rate") || first.starts_with("total-rate") ||
                          first.starts_with("video-large-beginning");
    if (!one.findings.empty() && !is_error && !first.starts_with("video-high-rate"))
      continue;
    command c{{"mplex", "-v", "0", "-f", "8", "-o", folder_.path("out.mpg"), one.titles[0][0],
               one.titles[0][1]}};
    EXPECT_EQ(run(c).status != 0, is_error) << first;
  }
}

TEST_F(RealStreams, SoundsHaveTheirFindings) {
  expect(sounds());
}

TEST_F(RealStreams, ReadyTitlesHaveTheirFindings) {
  expect(ready_titles());
}

/// An error means that the run fails or that the look at the finished disc finds it wrong; a disc
/// of which there are only warnings is made.
TEST_F(RealStreams, RunsOfReadyTitlesEndAsTheRulesSay) {
  const auto is_error = [](const std::string& finding) {
    for (const rule& one : ready_rules())
      if (finding.starts_with(std::string(one.id) + " ") && one.severity == finding_severity::error)
        return true;
    return false;
  };
  for (const made& one : ready_titles()) {
    const std::string first = one.findings.empty() ? "clean" : one.findings[0];
    if (!one.findings.empty() && !first.starts_with("ready-"))
      continue;
    const studio s;
    const finished run = s.author(project_of(one.titles), {"--force"});
    EXPECT_EQ(run.status != 0, is_error(first)) << first << "\n" << run.out;
  }
}

TEST_F(RealStreams, TitlesTogetherHaveTheirFindings) {
  expect(titles_together());
}

/// What was told before the run is found on the disc that was wanted all the same.
TEST_F(RealStreams, SoundOfAnotherKindThanTheTablesStateIsFoundOnTheDisc) {
  const auto told = [&](const std::string& first, const std::string& second) {
    const studio s;
    return s.author(project_of({{first}, {second}}), {"--force"}).out;
  };
  const std::string plain = ready(), dts = ready("-c:a dca -strict -2 -b:a 768k"),
                    lpcm = ready("-c:a pcm_dvd");
  // Before the run the kind of the other title stands behind it.
  EXPECT_THAT(told(plain, lpcm), AllOf(HasSubstr("title 1, audio 2: the sound is AC-3.\n"),
                                       HasSubstr("title 2, audio 1: the sound is LPCM.\n")));
  EXPECT_THAT(told(dts, plain), AllOf(HasSubstr("title 1, audio 1: the sound is DTS.\n"),
                                      HasSubstr("title 2, audio 2: the sound is AC-3.\n")))
      << "dvdauthor states AC-3 first";
}

TEST_F(RealStreams, MenusOfOneTitlesetAreCompared) {
  project p = project_of({{video(), sound()}});
  const auto menu = [&](const std::string& v, const std::string& a) {
    add_menu(p, stored_from_native(v), stored_from_native(a),
             {"100/100/200/150/jump title 1/yellow/white"});
  };
  menu(video(), sound());
  menu(video("-aspect 16:9"), sound("-c:a mp2 -b:a 192k", "a.mp2"));
  EXPECT_THAT(found(p), IsSupersetOf({"menus-video at menu 2, video"s,
                                      "menus-audio-kind at menu 2, audio"s}));
}

TEST_F(RealStreams, AStillOfSquarePixelsIsNamedAsTheMenuThatItIs) {
  const std::string still = kept_clip(
      ff + "-f lavfi -i testsrc=s=720x480 -frames:v 1 -pix_fmt yuvj420p -update 1 s.jpg && "
           "jpeg2yuv -v 0 -n 1 -I p -f 29.97 -j s.jpg | mpeg2enc -v 0 -f 8 -n n -o",
      "still.m2v");
  project p = project_of({{video(), sound()}});
  add_menu(p, stored_from_native(still), stored_from_native(sound()),
           {"100/100/200/150/jump title 1/yellow/white"});
  EXPECT_THAT(found(p), IsSupersetOf({"video-aspect-square at menu 1, video"s}));
}

TEST_F(RealStreams, AButtonLeadsElsewhereWhereAChapterIsAdded) {
  for (const std::vector<std::string>& title : {std::vector{video(), sound()}, {ready()}}) {
    project p = project_of({title});
    p.chapters = {"00:00:01.00,00:00:02.30,00:00:02.40"};
    add_menu(p, stored_from_native(video()), stored_from_native(sound()),
             {"100/100/200/150/jump title 1 chapter 2/yellow/white"});
    EXPECT_THAT(found(p), IsSupersetOf({"chapter-added at title 1"s, "chapter-moved at title 1"s,
                                        "chapter-merged at title 1, chapter 3, 00:00:02"s,
                                        "chapter-number at menu 1, button 1"s}));
  }
}

/// A rule that comes later gets a stream here, or a name where another test has one.
TEST_F(RealStreams, EachRuleAboutStreamsHasOne) {
  for (const auto& table : {videos(), more_videos(), sounds(), ready_titles(), titles_together()})
    for (const made& one : table)
      for (const std::string& finding : one.findings)
        shown_.insert(finding.substr(0, finding.find(' ')));
  const std::set<std::string> elsewhere = {"video-size", "titleset-coding", "menus-video",
                                           "menus-audio-kind"};
  std::vector<std::string> none;
  for (const auto rules :
       {file_rules(), ready_rules(), video_rules(), audio_rules(), titleset_rules()})
    for (const rule& one : rules)
      if (!shown_.contains(std::string(one.id)) && !elsewhere.contains(std::string(one.id)))
        none.emplace_back(one.id);
  EXPECT_THAT(none, IsEmpty());
}

}  // namespace
}  // namespace corvane::disc
