// How long the examination of a stream takes against "cat" of it, both with the file in memory; and
// how long the first look at a project's files.
//
//   examine_bench KIND FILE [RUNS]       5 runs of each, in turns
//   examine_bench headers FOLDER [RUNS]  the rules that the beginnings of files tell of, for the
//                                        largest project: made in FOLDER, all of its files copies
//                                        of video.m2v and sound.ac3 there
//
// KIND is video, audio, program (with the facts of the streams inside), program-counted (packets
// and times alone) or disc: FILE is a folder then, with its image beside it, FILE.iso.
#include "examine/audio_facts.h"
#include "examine/examination.h"
#include "examine/program_stream_facts.h"
#include "examine/verification.h"
#include "examine/video_facts.h"
#include "largest_project.h"
#include "platform/files/file_relay.h"
#include "platform/files/files.h"
#include "platform/files/paths.h"
#include "project/disc_of.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <string>
#include <vector>

namespace {

using steady = std::chrono::steady_clock;

double seconds_since(steady::time_point begin) {
  return std::chrono::duration<double>(steady::now() - begin).count();
}

double median(std::vector<double> numbers) {
  std::sort(numbers.begin(), numbers.end());
  return numbers.at(numbers.size() / 2);
}

[[noreturn]] void give_up(const std::string& why) {
  std::cerr << "examine_bench: " << why << "\n";
  std::exit(1);
}

template <typename Scanner>
auto facts_of(const std::string& path, Scanner scanner) {
  using corvane::file_relay;
  auto relay = file_relay::begin(
      path, 0, corvane::file_size(path).value_or(0),
      [&](std::span<const std::uint8_t> bytes) { scanner.feed(bytes.data(), bytes.size()); });
  if (!relay)
    give_up(relay.error);
  while ((*relay)->wait_for((*relay)->taken() + 1) == file_relay::state::going_on) {
  }
  scanner.finish();
  return scanner.facts();
}

std::uint64_t pictures_of(const std::string& path) {
  return facts_of(path, corvane::video_scanner()).pictures;
}

std::uint64_t frames_of(const std::string& path) {
  const corvane::audio_facts facts = facts_of(path, corvane::audio_scanner());
  if (facts.frame_bytes != facts.bytes || facts.damaged_frames > 0)
    give_up("the file is not whole");
  return facts.frames;
}

std::uint64_t packs_of(const std::string& path, corvane::inner_streams which) {
  const auto facts = facts_of(path, corvane::program_stream_scanner(which));
  const bool has_video = which == corvane::inner_streams::counted || facts.video() != nullptr;
  if (!has_video || facts.loose.count > 0 || facts.cut)
    give_up("the facts are wrong");
  return facts.packs;
}

std::uint64_t packs_and_streams_of(const std::string& path) {
  return packs_of(path, corvane::inner_streams::examined);
}

std::uint64_t packs_alone_of(const std::string& path) {
  return packs_of(path, corvane::inner_streams::counted);
}

std::uint64_t bytes_of_disc(const std::string& folder) {
  corvane::verification look({folder, folder + ".iso"}, nullptr);
  while (look.step(1000)) {
  }
  if (!look.findings().empty())
    give_up(corvane::line_of(look.findings().front()));
  return look.bytes_read();
}

struct bench_kind {
  std::string name;
  std::string what;  // is counted
  std::uint64_t (*count)(const std::string& path);
};

bench_kind kind_named(const std::string& name) {
  for (const bench_kind& kind :
       {bench_kind{"video", "pictures", pictures_of}, bench_kind{"audio", "frames", frames_of},
        bench_kind{"program", "packs", packs_and_streams_of},
        bench_kind{"program-counted", "packs", packs_alone_of},
        bench_kind{"disc", "bytes", bytes_of_disc}})
    if (kind.name == name)
      return kind;
  give_up("usage: examine_bench video|audio|program|program-counted|disc|headers FILE [RUNS]");
}

void cat(const std::string& file, const std::string& kind) {
  const std::string files =
      kind == "disc" ? "'" + file + "'/VIDEO_TS/* '" + file + ".iso'" : "'" + file + "'";
  const std::string command = "cat " + files + " >/dev/null";
  if (std::system(command.c_str()) != 0)
    give_up("cat failed");
}

template <typename Work>
double timed(Work work) {
  const auto begin = steady::now();
  work();
  return seconds_since(begin);
}

void make_copies(const corvane::disc_description& disc, const std::string& folder) {
  for (const std::string& file : corvane::files_of(disc)) {
    const std::string from = file.ends_with(".m2v") ? "video.m2v" : "sound.ac3";
    if (const auto why = corvane::copy_file(corvane::join_path(folder, from), file))
      give_up(*why);
  }
}

// As the window looks at a project after a change.
void look_at_headers(const corvane::disc_description& disc, corvane::fact_store& store) {
  corvane::examination look(disc, corvane::examination::depth::beginnings, store);
  while (look.step(1000)) {
  }
  // The buttons of its menus are more than spumux can do.
  for (const corvane::finding& f : look.findings())
    if (f.severity == corvane::finding_severity::error &&
        f.item.whole == corvane::finding_item::whole_kind::title)
      give_up(corvane::line_of(f));
}

struct header_times {
  std::vector<double> unknown, known;  // seconds; with files that are not known yet, and that are
};

header_times time_headers(const corvane::disc_description& disc, int runs) {
  header_times times;
  for (int run = 0; run <= runs; ++run) {
    corvane::fact_store store;
    const double unknown = timed([&] { look_at_headers(disc, store); });
    const double known = timed([&] { look_at_headers(disc, store); });
    if (run == 0)
      continue;  // it brought the files into memory
    times.unknown.push_back(unknown);
    times.known.push_back(known);
  }
  return times;
}

int bench_headers(const std::string& folder, int runs) {
  corvane::disc_description disc =
      corvane::disc_of(corvane::bench::largest_project(folder, corvane::bench::most_titles));
  make_copies(disc, folder);
  const header_times whole = time_headers(disc, runs);
  disc.menus.clear();
  const header_times titles = time_headers(disc, runs);
  std::printf("files %zu\n", corvane::files_of(disc).size());
  std::printf("titles_ms %.1f\nagain_ms %.1f\n", 1000 * median(titles.unknown),
              1000 * median(titles.known));
  std::printf("with_menus_ms %.1f\nwith_menus_again_ms %.1f\n", 1000 * median(whole.unknown),
              1000 * median(whole.known));
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  const std::string name = argc > 2 ? argv[1] : "";
  const int runs = argc > 3 ? std::atoi(argv[3]) : 5;
  if (name == "headers")
    return bench_headers(corvane::absolute_path(argv[2]), runs);
  const bench_kind kind = kind_named(name);
  const std::string file = argv[2];
  cat(file, kind.name);
  std::uint64_t found = 0;
  std::vector<double> scans, cats;
  for (int run = 0; run < runs; ++run) {
    scans.push_back(timed([&] { found = kind.count(file); }));
    cats.push_back(timed([&] { cat(file, kind.name); }));
  }
  std::printf("scan_s %.3f\ncat_s %.3f\nratio %.2f\n", median(scans), median(cats),
              median(scans) / median(cats));
  std::printf("%s %llu\n", kind.what.c_str(), static_cast<unsigned long long>(found));
  return 0;
}
