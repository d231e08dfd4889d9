#include "track_report.h"

#include "platform/files/paths.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <sstream>

namespace corvane::disc {

namespace {

/// Times of a disc are rounded to its clocks.
constexpr double rounding = 0.002;

verdict agreement(bool agrees) {
  return agrees ? verdict::agrees : verdict::differs;
}

/// 1-based number of the unit that holds a time.
std::size_t unit_holding(const title& t, double seconds) {
  const auto after = std::upper_bound(t.units.begin(), t.units.end(), seconds + rounding);
  return std::max<std::size_t>(1, static_cast<std::size_t>(after - t.units.begin()));
}

std::string in_unit(const title& t, double seconds, const char* words) {
  return clock_text(seconds) + words + std::to_string(unit_holding(t, seconds));
}

bool is_nearest_unit(const title& t, double asked, double begins) {
  double nearest = 0, distance = HUGE_VAL;
  for (const double unit : t.units)
    if (std::fabs(unit - asked) < distance) {
      nearest = unit;
      distance = std::fabs(unit - asked);
    }
  return std::fabs(std::fabs(begins - asked) - std::fabs(nearest - asked)) < rounding;
}

/// Whether the text from `low` to `high` stands where its alignment has it in so many pixels.
bool is_aligned(const std::string& alignment, int low, int high, int pixels) {
  if (alignment == "left" || alignment == "top")
    return low < pixels / 3;
  if (alignment == "right" || alignment == "bottom")
    return high >= pixels * 2 / 3;
  const int middle = (low + high) / 2;
  return middle >= pixels / 3 && middle < pixels * 2 / 3;
}

std::string name_in(const std::string& native) {
  return std::string(file_name_of(stored_from_native(native)));
}

/// The rows of one subtitle stream.
class stream_reporter {
 public:
  stream_reporter(const title& t, std::size_t number, const asked_subtitle* asked, std::string tag)
      : title_(t), number_(number), asked_(asked), tag_(std::move(tag)) {}

  std::vector<report_row> rows() {
    const std::string file = asked_ ? name_in(asked_->file) + (tag_.empty() ? "" : " " + tag_) : "";
    const std::string name = "  subtitle " + std::to_string(number_ + 1);
    if (number_ >= title_.subpictures.size()) {
      rows_.push_back({name, file, "missing", verdict::differs});
      return std::move(rows_);
    }
    const subpicture_stream& s = title_.subpictures[number_];
    const std::string language = s.language.empty() ? "no language" : s.language;
    rows_.push_back({name, file, language + (s.first ? "" : ", nothing to be seen"),
                     asked_ ? agreement(s.language == tag_ && s.first) : verdict::not_compared});
    if (s.first) {
      add_times(*s.first);
      add_place(s.first->picture);
    }
    return std::move(rows_);
  }

 private:
  void add_times(const cue& first) {
    const double picture = title_.picture.standard == "PAL" ? 1 / 25.0 : 1001 / 30000.0;
    const auto same = [&](double a, double b) { return std::fabs(a - b) <= picture + rounding; };
    const bool known = asked_ && asked_->ends > 0;
    rows_.push_back(
        {"    first", known ? clock_text(asked_->begins) + " to " + clock_text(asked_->ends) : "",
         clock_text(first.begins) + " to " + clock_text(first.ends),
         known ? agreement(same(asked_->begins, first.begins) && same(asked_->ends, first.ends))
               : verdict::not_compared});
  }

  void add_place(const subpicture& picture) {
    const std::string asked = asked_ ? asked_->horizontal + ", " + asked_->vertical : "";
    const auto seen = seen_at_rest(picture);
    if (!seen) {
      rows_.push_back({"      place", asked, "transparent", verdict::differs});
      return;
    }
    std::ostringstream place;
    place << seen->x0 << ',' << seen->y0 << " to " << seen->x1 << ',' << seen->y1;
    const int height = title_.picture.standard == "PAL" ? 576 : 480;
    rows_.push_back({"      place", asked, place.str(),
                     asked_ ? agreement(is_aligned(asked_->horizontal, seen->x0, seen->x1, 720) &&
                                        is_aligned(asked_->vertical, seen->y0, seen->y1, height))
                            : verdict::not_compared});
  }

  const title& title_;
  std::size_t number_;
  const asked_subtitle* asked_;
  std::string tag_;
  std::vector<report_row> rows_;
};

}  // namespace

std::vector<report_row> chapter_rows(const title& found, const asked_title* asked) {
  const std::size_t wanted = asked ? asked->chapters.size() : 0, has = found.chapters.size();
  std::vector<report_row> rows;
  rows.push_back({"  chapters", asked ? std::to_string(wanted) : "",
                  std::to_string(has) + " in " + std::to_string(found.units.size()) + " units",
                  agreement(wanted == has)});
  for (std::size_t i = 0; i < std::max(wanted, has); ++i) {
    const bool both = i < wanted && i < has;
    rows.push_back(
        {"    chapter " + std::to_string(i + 1),
         i < wanted ? in_unit(found, asked->chapters[i], " within unit ") : "",
         i < has ? in_unit(found, found.chapters[i], " with unit ") : "missing",
         agreement(both && is_nearest_unit(found, asked->chapters[i], found.chapters[i]))});
  }
  return rows;
}

std::vector<report_row> subtitle_rows(const title& found, const asked_title* asked,
                                      const asked_disc* disc) {
  std::vector<report_row> rows;
  const std::size_t wanted = asked ? asked->subtitles.size() : 0;
  const bool ready = asked && asked->is_ready();  // what it carries is its own
  for (std::size_t i = 0; i < std::max(wanted, found.subpictures.size()); ++i) {
    const asked_subtitle* const a = i < wanted ? &asked->subtitles[i] : nullptr;
    const bool tagged = disc && i < disc->subtitle_languages.size();
    auto more = stream_reporter(found, i, a, tagged ? disc->subtitle_languages[i] : "").rows();
    if (asked && a == nullptr && !ready)
      more.front().says = verdict::differs;  // nobody asked for it
    rows.insert(rows.end(), more.begin(), more.end());
  }
  return rows;
}

}  // namespace corvane::disc
