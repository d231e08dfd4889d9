#include "menus/repeated_buttons.h"

#include "formats/numbers.h"
#include "formats/text.h"

#include <cstddef>
#include <optional>

namespace corvane {
namespace {

/// "jump title 2 chapter  3", as the editor writes it.
struct title_action {
  int title = 0;
  int chapter = 0;  // 0: none named

  std::string text() const {
    const std::string title_part = "jump title" + leading_blank(title);
    return chapter == 0 ? title_part : title_part + " chapter " + leading_blank(chapter);
  }
};

std::optional<int> number_of(std::string_view text) {
  const std::string_view digits = trim(text);
  if (digits.empty() || digits.size() > 4 ||
      digits.find_first_not_of("0123456789") != std::string_view::npos)
    return std::nullopt;
  return leading_whole(digits);
}

std::optional<title_action> title_action_of(std::string_view text) {
  constexpr std::string_view begin = "jump title", between = " chapter ";
  if (!text.starts_with(begin))
    return std::nullopt;
  text.remove_prefix(begin.size());
  const auto at = text.find(between);
  const auto title = number_of(text.substr(0, at));
  if (!title)
    return std::nullopt;
  if (at == std::string_view::npos)
    return title_action{*title, 0};
  const auto chapter = number_of(text.substr(at + between.size()));
  return chapter ? std::optional(title_action{*title, *chapter}) : std::nullopt;
}

/// The next one; nullopt when there is none.
std::optional<title_action> next(const title_action& a, action_count how,
                                 const std::vector<int>& chapters) {
  const int titles = static_cast<int>(chapters.size());
  const bool in_title =
      how == action_count::chapters && a.title >= 1 && a.title <= titles &&
      (a.chapter == 0 ? 1 : a.chapter) < chapters[static_cast<std::size_t>(a.title) - 1];
  if (in_title)
    return title_action{a.title, (a.chapter == 0 ? 1 : a.chapter) + 1};
  if (a.title < 0 || a.title >= titles)
    return std::nullopt;
  return title_action{a.title + 1, a.chapter == 0 && how == action_count::titles ? 0 : 1};
}

}  // namespace

std::vector<menu_rectangle> repeated_places(const menu_rectangle& first, const repetition& how,
                                            int ymax) {
  const int width = first.x1 - first.x0, height = first.y1 - first.y0;
  const int step_across = width + how.gap_across;
  int step_down = height + how.gap_down;
  if (first.y0 % 2 == 0 && first.y1 % 2 == 0)
    step_down += step_down % 2;
  std::vector<menu_rectangle> places;
  for (int row = 0; row < how.down; ++row)
    for (int column = 0; column < how.across; ++column) {
      const int x = first.x0 + column * step_across, y = first.y0 + row * step_down;
      if (x >= 0 && y >= 0 && x + width <= largest_x && y + height <= ymax)
        places.push_back({x, y, x + width, y + height});
    }
  return places;
}

std::vector<std::string> repeated_actions(const std::string& first, action_count how,
                                          const std::vector<int>& chapters, std::size_t count) {
  std::vector<std::string> actions;
  const std::optional<title_action> begin = title_action_of(first);
  if (how == action_count::same || !begin)
    return std::vector<std::string>(count, first);
  std::optional<title_action> action = begin;
  while (actions.size() < count && action) {
    actions.push_back(actions.empty() ? first : action->text());
    action = next(*action, how, chapters);
  }
  return actions;
}

action_count usual_count(const std::string& first, const std::vector<int>& chapters) {
  const std::optional<title_action> action = title_action_of(first);
  if (!action || action->chapter > 1)
    return action_count::chapters;
  const bool known = action->title >= 1 && action->title <= static_cast<int>(chapters.size());
  const bool has_others = known && chapters[static_cast<std::size_t>(action->title) - 1] > 1;
  return action->chapter == 0 || !has_others ? action_count::titles : action_count::chapters;
}

}  // namespace corvane
