#include "examine/cue_times.h"

#include "examine/measures.h"
#include "formats/numbers.h"
#include "formats/text.h"
#include "formats/time_text.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace corvane {
namespace {

constexpr double longest_title = 10.0 * 60 * 60;
constexpr double highest_rate = 1000;
constexpr double tolerance = 0.1;
/// What spumux gives a cue without an end, and leaves of one that it cuts.
constexpr double usual_length = 6;
/// Cues that overlap by less share the time.
constexpr double shared_time = 0.2;
/// The time at which a unit goes is counted in 16 bits.
constexpr double longest_cue = 65'535 * 1024 / 90'000.0;

/// A cue in the steps in which spumux counts: hundredths of a second, or pictures.
struct counted_cue {
  std::int64_t begin = 0, end = 0;  ///< not after `begin`: there is none
};

class cue_counter {
 public:
  cue_counter(const subtitle_cues& all, double rate)
      : all_(all), rate_(all.format == subtitle_format::microdvd ? rate : 100) {}

  std::vector<cue_time> times() {
    if (!(rate_ > 0 && rate_ <= highest_rate))
      return {};
    for (const text_cue& cue : all_.cues) {
      if (cue.begin > longest_title)
        return {};
      cues_.push_back({steps(cue.begin), steps(std::min(cue.end.value_or(0), 2 * longest_title))});
    }
    if (all_.format == subtitle_format::sami && !are_plain())
      return {};
    std::stable_sort(cues_.begin(), cues_.end(),
                     [](const counted_cue& a, const counted_cue& b) { return a.begin < b.begin; });
    for (std::size_t i = 0; i < cues_.size(); ++i)
      if (!adjust(i))
        return {};
    return left();
  }

 private:
  std::int64_t steps(double seconds) const {
    return static_cast<std::int64_t>(std::floor(std::max(seconds, 0.0) * rate_ + 1e-6));
  }
  double seconds(std::int64_t steps) const { return static_cast<double>(steps) / rate_; }

  bool are_plain() const {
    std::int64_t before = 0;
    for (const counted_cue& cue : cues_) {
      if (cue.begin < before || cue.end <= cue.begin)
        return false;
      before = cue.end;
    }
    return true;
  }

  /// False if it is not sure what becomes of the cue.
  bool adjust(std::size_t i) {
    counted_cue& cue = cues_[i];
    if (cue.end <= cue.begin)
      cue.end = cue.begin + steps(usual_length);
    if (i + 1 == cues_.size())
      return true;
    counted_cue& next = cues_[i + 1];
    const std::int64_t overlap = cue.end - next.begin, shared = steps(shared_time);
    const bool is_cut = overlap > 0 || (overlap == 0 && cue.end - cue.begin > steps(usual_length));
    if (is_cut && all_.format == subtitle_format::ssa)
      return false;
    if (overlap == shared + 1)
      return false;  // the limit is no whole number of pictures
    if (overlap > 0 && overlap <= shared) {
      cue.end -= overlap / 2 + 1;
      next.begin += overlap - overlap / 2;
    }
    if (cue.end >= next.begin)
      cue.end = std::min(next.begin - 1, cue.begin + steps(usual_length));
    return cue.end >= cue.begin - 1;
  }

  /// Without those that end before they begin.
  std::vector<cue_time> left() const {
    std::vector<cue_time> times;
    for (const counted_cue& cue : cues_) {
      if (cue.end < cue.begin)
        continue;
      times.push_back({seconds(cue.begin), seconds(cue.end)});
      if (seconds(cue.end - cue.begin) > longest_cue)
        times.back().ends.reset();
    }
    return times;
  }

  const subtitle_cues& all_;
  double rate_;
  std::vector<counted_cue> cues_;
};

std::vector<cue_time> read_cue_times(std::string_view text) {
  std::vector<cue_time> times;
  for (const std::string& one : split(text, ' ')) {
    const std::size_t line = one.find('-', 1);
    if (line == std::string::npos)
      continue;
    times.push_back({leading_number(std::string_view(one).substr(0, line)), std::nullopt});
    if (line + 1 < one.size())
      times.back().ends = leading_number(std::string_view(one).substr(line + 1));
  }
  return times;
}

bool is_apart(const cue_time& foreseen, const cue_time& found) {
  if (std::abs(foreseen.begins - found.begins) > tolerance)
    return true;
  if (!foreseen.ends)
    return false;
  return !found.ends || std::abs(*foreseen.ends - *found.ends) > tolerance;
}

}  // namespace

std::vector<cue_time> cue_times_of(const subtitle_cues& all, double rate) {
  return cue_counter(all, rate).times();
}

std::string cue_times_text(const std::vector<cue_time>& times) {
  std::string text;
  for (const cue_time& one : times)
    text += (text.empty() ? "" : " ") + decimal_text(one.begins, 3) + "-" +
            (one.ends ? decimal_text(*one.ends, 3) : "");
  return text;
}

std::optional<cues_apart> first_cue_apart(std::string_view foreseen, std::string_view found) {
  const std::vector<cue_time> asked = read_cue_times(foreseen), got = read_cue_times(found);
  std::optional<cues_apart> first;
  for (std::size_t i = 0; asked.size() == got.size() && i < asked.size(); ++i) {
    if (!is_apart(asked[i], got[i]))
      continue;
    if (first)
      ++first->others;
    else
      first = {i + 1, asked[i], got[i], 0};
  }
  return first;
}

std::string text_of(const cue_time& cue) {
  const std::string begins = "from " + time_text(cue.begins);
  return cue.ends ? begins + " to " + time_text(*cue.ends) : begins + " on";
}

}  // namespace corvane
