#include "examine/told_before.h"

#include "examine/chapter_rules.h"
#include "examine/ready_rules.h"
#include "examine/setting_rules.h"
#include "examine/stream_rules.h"
#include "examine/subtitle_text_rules.h"
#include "examine/titleset_rules.h"
#include "formats/numbers.h"

#include <algorithm>
#include <array>
#include <map>
#include <optional>
#include <string>
#include <utility>

namespace corvane {
namespace {

using trait_kind = disc_trait_kind;
using whole = finding_item::whole_kind;
using part = finding_item::part_kind;

// What was told ---------------------------------------------------------------------------------

bool is_of_material(const finding& f) {
  const std::array families = {file_rules(),    ready_rules(),        video_rules(),
                               audio_rules(),   titleset_rules(),     chapter_rules(),
                               setting_rules(), subtitle_text_rules()};
  return std::ranges::any_of(families, [&](std::span<const rule> rules) {
    return std::ranges::find(rules, f.rule, &rule::id) != rules.end();
  });
}

/// Where kinds or numbers of sound streams are mixed, all of a title's come to lie elsewhere.
finding_item item_told_of(const finding& f) {
  return f.rule == "titleset-audio-kind" || f.rule == "titleset-audio-number"
             ? part_of(f.item, part::audio)
             : f.item;
}

class telling {
 public:
  explicit telling(const disc_description& d) : d_(d) {}

  void tell(const finding_item& item) {
    add({item, false});
    if (item.part != part::video && item.part != part::audio)
      return;
    if (item.whole == whole::title)
      tell_others(item, d_.titles);
    if (item.whole == whole::menu)
      tell_others(item, d_.menus);
    if (item.whole == whole::disc_menu)
      tell_others(item, d_.disc_menus);
  }

  std::vector<told_item> take() { return std::move(told_); }

 private:
  template <typename Item>
  void tell_others(finding_item item, const std::vector<Item>& all) {
    const auto own = static_cast<std::size_t>(item.number) - 1;
    if (own >= all.size())
      return;
    for (std::size_t i = 0; i < all.size(); ++i) {
      item.number = static_cast<int>(i) + 1;
      if (i != own && all[i].titleset == all[own].titleset)
        add({item, true});
    }
  }

  void add(const told_item& one) {
    if (std::ranges::find(told_, one) == told_.end())
      told_.push_back(one);
  }

  const disc_description& d_;
  std::vector<told_item> told_;
};

// What follows from it --------------------------------------------------------------------------

constexpr unsigned bit_of(part what) {
  return 1U << static_cast<unsigned>(what);
}
constexpr unsigned from_picture = bit_of(part::video), from_sound = bit_of(part::audio),
                   from_subtitle = bit_of(part::subtitle), from_chapter = bit_of(part::chapter);

/// Errors of which parts of a title or menu, besides those of the whole, make a difference.
struct causes {
  trait_kind what;
  unsigned parts;
  bool of_titleset = false;  ///< also those of another one of its titleset
};

/// mplex and spumux take sound and subtitles as far as there are pictures.
constexpr std::array causes_of_traits = {
    causes{trait_kind::standard, from_picture, true},
    causes{trait_kind::size, from_picture, true},
    causes{trait_kind::aspect, from_picture, true},
    causes{trait_kind::coding, from_picture, true},
    causes{trait_kind::shows_until, from_picture},
    causes{trait_kind::length, from_picture | from_sound},
    causes{trait_kind::chapters, from_picture | from_chapter},
    causes{trait_kind::begins, from_picture | from_chapter},
    causes{trait_kind::lands, from_picture | from_chapter},
    causes{trait_kind::audio_streams, from_sound},
    causes{trait_kind::format, from_sound, true},
    causes{trait_kind::sounds_until, from_picture | from_sound},
    causes{trait_kind::subtitles, from_picture | from_subtitle},
    causes{trait_kind::cues, from_picture | from_subtitle},
    causes{trait_kind::first_cue, from_picture | from_subtitle},
    causes{trait_kind::last_cue, from_picture | from_subtitle},
    causes{trait_kind::shown, from_picture | from_subtitle},
};

/// Of two sounds, and two subtitles, each stands for itself.
bool is_other_stream(const finding_item& a, const finding_item& b) {
  return a.part == b.part && (a.part == part::audio || a.part == part::subtitle) &&
         a.part_number != 0 && b.part_number != 0 && a.part_number != b.part_number;
}

bool explains(const told_item& told, const finding_item& item, const causes& of) {
  if (told.item.whole != item.whole || told.item.number != item.number)
    return false;
  if (told.of_titleset && !of.of_titleset)
    return false;
  if (told.item.part == part::whole)
    return true;
  return (of.parts & bit_of(told.item.part)) != 0 && !is_other_stream(told.item, item);
}

bool is_of_times(const std::string& rule) {
  return rule == "disc-clock" || rule == "disc-times";
}

/// The trait that stands or falls with what a disc must be by itself; nullopt where that does not
/// depend on the material.
std::optional<trait_kind> trait_behind(const finding& f) {
  if (f.rule == "disc-picture-stated")
    return trait_kind::standard;
  if (f.rule == "disc-sound-stated")
    return trait_kind::format;
  if (!is_of_times(f.rule))
    return std::nullopt;
  switch (f.item.part) {
    case part::video:
      return trait_kind::shows_until;
    case part::audio:
      return trait_kind::sounds_until;
    case part::subtitle:
      return trait_kind::shown;
    default:
      return trait_kind::length;
  }
}

/// How many breaks may be told of a title. dvdauthor moves the times behind one of them, which may
/// make two.
double breaks_known_of(int title, const disc_traits& foreseen) {
  const finding_item item{whole::title, title, part::whole, 0};
  const disc_trait* const breaks = foreseen.find(item, trait_kind::breaks);
  return breaks == nullptr ? 0 : 2 * leading_number(breaks->value);
}

}  // namespace

std::vector<told_item> told_of(const std::vector<finding>& accepted, const disc_description& d) {
  telling all(d);
  for (const finding& f : accepted)
    if (is_of_material(f))
      all.tell(item_told_of(f));
  return all.take();
}

bool follows_from(std::span<const told_item> told, const finding_item& item, trait_kind what) {
  const auto* const of = std::ranges::find(causes_of_traits, what, &causes::what);
  return of != causes_of_traits.end() &&
         std::ranges::any_of(told, [&](const told_item& one) { return explains(one, item, *of); });
}

void soften_what_was_told(std::vector<finding>& of_disc, const foreseen_run& asked) {
  std::map<int, double> breaks;  // of each title
  for (finding& one : of_disc) {
    if (one.severity != finding_severity::error)
      continue;
    const bool is_known_break =
        is_of_times(one.rule) && one.item.whole == whole::title &&
        ++breaks[one.item.number] <= breaks_known_of(one.item.number, asked.disc);
    const auto behind = trait_behind(one);
    if (is_known_break || (behind && follows_from(asked.told, one.item, *behind)))
      one.severity = finding_severity::warning;
  }
}

}  // namespace corvane
