#include "examine/program_stream_facts.h"

#include "examine/program_stream_scan.h"

#include <algorithm>
#include <utility>

namespace corvane {

program_stream_scanner::program_stream_scanner(inner_streams streams)
    : scan_(std::make_unique<program_stream_scan>(streams)) {}
program_stream_scanner::program_stream_scanner(program_stream_scanner&&) noexcept = default;
program_stream_scanner& program_stream_scanner::operator=(program_stream_scanner&&) noexcept =
    default;
program_stream_scanner::~program_stream_scanner() = default;

void program_stream_scanner::feed(const std::uint8_t* data, std::size_t size) {
  scan_->feed({data, size});
}

void program_stream_scanner::finish() {
  scan_->end(true);
}

void program_stream_scanner::stop() {
  scan_->end(false);
}

const program_stream_facts& program_stream_scanner::facts() const {
  return scan_->facts;
}

const inner_stream* program_stream_facts::find(inner_kind kind, int number) const {
  const auto found = std::ranges::find_if(
      streams, [&](const inner_stream& one) { return one.kind == kind && one.number == number; });
  return found == streams.end() ? nullptr : &*found;
}

const inner_stream* program_stream_facts::video() const {
  const auto first = std::ranges::min_element(
      streams, {}, [](const inner_stream& one) { return std::pair(one.kind, one.number); });
  return first == streams.end() || first->kind != inner_kind::video ? nullptr : &*first;
}

int program_stream_facts::count_of(inner_kind kind) const {
  return static_cast<int>(std::ranges::count(streams, kind, &inner_stream::kind));
}

std::optional<program_stream_facts> read_program_stream_head(
    std::span<const std::uint8_t> beginning) {
  beginning = beginning.first(std::min(beginning.size(), program_stream_head_bytes));
  program_stream_scanner scanner;
  scanner.feed(beginning.data(), beginning.size());
  scanner.stop();
  const program_stream_facts& facts = scanner.facts();
  const bool any = !facts.streams.empty() || facts.nav_packs > 0 || facts.padding_bytes > 0;
  return facts.packs > 0 && any ? std::optional(facts) : std::nullopt;
}

}  // namespace corvane
