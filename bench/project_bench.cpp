// How long the largest project takes to load and to save, whether that grows with its size, and
// the memory it needs.
//
//   project_bench [GOOGLE BENCHMARK OPTIONS]
//   project_bench --write FOLDER        makes FOLDER/largest.cvp and the (empty) files it names
//   project_bench --peak FOLDER         loads that once; prints resident kB before, and the peak
#include "largest_project.h"
#include "platform/files/files.h"
#include "platform/files/paths.h"
#include "platform/settings/settings.h"
#include "project/document.h"
#include "project/project_file.h"
#include "project/project_text.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>

namespace {

using namespace std::string_literals;

// Answers the save dialog and its question; anything else would mean that what is measured failed.
class saving_prompts : public corvane::prompts {
 public:
  explicit saving_prompts(std::string file) : file_(std::move(file)) {}
  corvane::answer message(const corvane::message_box& box) override {
    if (box.choice == corvane::buttons::yes_no)
      return corvane::answer::yes;
    std::cerr << "project_bench: " << box.text << "\n";
    std::exit(1);
  }
  std::string open_file(const corvane::file_dialog& dialog) override { return unasked(dialog); }
  std::string save_file(const corvane::file_dialog&) override { return file_; }
  std::string input(const corvane::input_box&) override { return ""; }

 private:
  static std::string unasked(const corvane::file_dialog& dialog) {
    std::cerr << "project_bench: asked for " << dialog.title << "\n";
    std::exit(1);
  }
  std::string file_;
};

// A folder with a project of `titles` titles and its streams, and who works on it.
struct bench_project {
  bench_project(const std::string& in, int titles)
      : folder(in),
        file(corvane::join_path(in, "largest.cvp")),
        p(corvane::bench::largest_project(in, titles)) {
    corvane::bench::make_files(p);
    if (const auto why = corvane::write_file(file, corvane::project_text(p))) {
      std::cerr << "project_bench: " << *why << "\n";
      std::exit(1);
    }
  }
  std::string folder;
  std::string file;
  corvane::project p;
};

std::string own_folder(int titles) {
  const char* base = std::getenv("CORVANE_BENCH_FOLDER");
  return corvane::text_of(std::filesystem::absolute(corvane::path_of(
      (base != nullptr ? base : "bench-project"s) + "-" + std::to_string(titles))));
}

int titles_of(const benchmark::State& state) {
  return static_cast<int>(state.range(0));
}

void load(benchmark::State& state) {
  const bench_project largest(own_folder(titles_of(state)), titles_of(state));
  for (auto _ : state) {
    corvane::memory_settings prefs;
    saving_prompts ask("");
    corvane::document doc(ask, prefs);
    if (!corvane::loadprojectf(doc, largest.file) || doc.p.List11 != largest.p.List11)
      state.SkipWithError("the project did not load");
    benchmark::DoNotOptimize(doc.p);
  }
  state.SetComplexityN(state.range(0));
}

void save(benchmark::State& state) {
  const bench_project largest(own_folder(titles_of(state)), titles_of(state));
  corvane::memory_settings prefs;
  saving_prompts ask(largest.file);
  corvane::document doc(ask, prefs);
  doc.p = largest.p;
  for (auto _ : state)
    if (corvane::save_project(doc) != corvane::save_outcome::saved)
      state.SkipWithError("the project was not saved");
  state.SetComplexityN(state.range(0));
}

void parse(benchmark::State& state) {
  const std::string text =
      corvane::project_text(corvane::bench::largest_project("/media", titles_of(state)));
  for (auto _ : state) {
    auto loaded = corvane::parse_project(text);
    if (!loaded)
      state.SkipWithError(loaded.error.c_str());
    benchmark::DoNotOptimize(loaded);
  }
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
  state.SetComplexityN(state.range(0));
}

void build_text(benchmark::State& state) {
  const corvane::project p = corvane::bench::largest_project("/media", titles_of(state));
  for (auto _ : state)
    benchmark::DoNotOptimize(corvane::project_text(p));
  state.SetComplexityN(state.range(0));
}

// A quarter, a half, the whole.
void sizes(benchmark::internal::Benchmark* bench) {
  bench->Arg(25)->Arg(50)->Arg(corvane::bench::most_titles);
  bench->Unit(benchmark::kMillisecond)->UseRealTime();
}
BENCHMARK(load)->Apply(sizes);
BENCHMARK(save)->Apply(sizes);
BENCHMARK(parse)->Apply(sizes);
BENCHMARK(build_text)->Apply(sizes);

std::string status_line(const std::string& name) {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);)
    if (line.rfind(name + ":", 0) == 0)
      return line.substr(name.size() + 1);
  return " unknown";
}

int peak(const std::string& folder) {
  std::cout << "before" << status_line("VmRSS") << "\n";
  corvane::memory_settings prefs;
  saving_prompts ask("");
  corvane::document doc(ask, prefs);
  if (!corvane::loadprojectf(doc, corvane::join_path(folder, "largest.cvp")))
    return 1;
  std::cout << "peak" << status_line("VmHWM") << "\n";
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc == 3 && argv[1] == "--write"s) {
    const bench_project largest(argv[2], corvane::bench::most_titles);
    std::cout << "bytes " << std::filesystem::file_size(corvane::path_of(largest.file)) << "\n";
    return 0;
  }
  if (argc == 3 && argv[1] == "--peak"s)
    return peak(argv[2]);
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv))
    return 1;
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
