#include "runner/tools/spumux.h"

#include "runner/output_lines.h"
#include "runner/tools/known_messages.h"
#include "runner/tools/spumux_fonts.h"
#include "runner/tools/spumux_subtitles.h"
#include "runner/tools/tool_outcomes.h"

namespace corvane {
namespace {

/// From here on a menu can take spumux more than a second.
constexpr int many_buttons = 19;

/// A menu, and how many buttons are put on it.
struct menu_overlay {
  std::string menu;
  int buttons = 0;
};

menu_overlay overlay_of(const tool_call& call, tool_files& files) {
  const auto menu = menu_of_overlay(call.words);
  return menu ? menu_overlay{*menu, files.buttons_asked_for(call.words[1])} : menu_overlay{};
}

/// That none was put on, spumux tells in its output only, if at all.
std::vector<finding> judge_menu(const tool_call& call, tool_files& files) {
  const menu_overlay overlay = overlay_of(call, files);
  const std::string why = overlay.buttons > 0 ? files.why_no_buttons_seen(call.output) : "";
  if (why.empty())
    return {};
  return {outcome_finding("spumux-buttons", item_of_call(call.words, call.output),
                          "the buttons of menu " + overlay.menu + " will not be seen: " + why)};
}

/// The lines among spumux's output that matter do not say whose subtitle it was.
std::vector<finding> judge_subtitle(const run_file::subtitle_name& subtitle, const tool_call& call,
                                    const tool_result& result, tool_files& files) {
  if (result.ends.empty())
    return {};  // it has been told why it did not run
  const std::string control = files.control_text(call.words.back());
  const std::string about = "subtitle " + subtitle.number + " of title " + subtitle.title + " (" +
                            subtitle_file_in(control) + ")";
  const std::string end = complaint_about(name_in_path(call.words[0]), result.ends[0]);
  const auto say = [&call](const std::string& what) {
    return std::vector{
        outcome_finding("spumux-subtitle", item_of_call(call.words, call.output), what)};
  };
  const std::string why =
      why_not_subtitled(result.printed + (end.empty() ? "" : "\n" + std::string(error_mark) + end));
  if (!why.empty())
    return say(about + " is not on the disc: " + why);
  const std::string missing = what_is_missing(result.printed, control);
  if (!missing.empty())
    return say(about + " is not as it should be: " + missing);
  return {};
}

}  // namespace

/// For many buttons of many colours spumux works silently for minutes.
std::vector<std::string> spumux_ways::announce(const tool_call& call, tool_files& files) const {
  const menu_overlay overlay = overlay_of(call, files);
  if (overlay.buttons < many_buttons)
    return {};
  return {"INFO: menu " + overlay.menu + " has " + std::to_string(overlay.buttons) +
          " buttons; when their colours are many too, this takes some minutes"};
}

std::vector<finding> spumux_ways::judge(const tool_call& call, const tool_result& result,
                                        tool_files& files) const {
  if (const auto subtitle = subtitle_of(call.words))
    return judge_subtitle(*subtitle, call, result, files);
  return judge_menu(call, files);
}

std::vector<finding> spumux_ways::explain(const tool_call& call, const tool_result& result,
                                          tool_files& files) const {
  const auto font =
      font_that_stands_in(result.printed, item_of_call(call.words, call.output), files);
  return font ? std::vector<finding>{*font} : std::vector<finding>{};
}

std::optional<std::string> menu_of_overlay(const script_words& spumux) {
  return spumux.size() == 2 ? run_file::menu_of_control(name_in_path(spumux[1])) : std::nullopt;
}

std::optional<run_file::subtitle_name> subtitle_of(const script_words& spumux) {
  return run_file::subtitle_of_control(name_in_path(spumux.back()));
}

}  // namespace corvane
