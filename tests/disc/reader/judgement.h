// What the parts of judge.h share: each holds values of one kind of the product's reader against
// libdvdread's.
#pragma once

#include "formats/ifo.h"
#include "formats/navigation_pack.h"
#include "packets.h"

#include <cstdint>
#include <cstring>
#include <dvdread/ifo_types.h>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace corvane::disc {

/// Collects what two readers do not agree on.
class judgement {
 public:
  void refuse(std::string what) { all.push_back(std::move(what)); }

  /// Refuses numbers or texts that are not the same.
  template <typename Ours, typename Theirs>
  bool same(const std::string& what, const Ours& ours, const Theirs& theirs) {
    if constexpr (std::is_convertible_v<Ours, std::string_view>) {
      if (std::string_view(ours) == std::string_view(theirs))
        return true;
      refuse(what + ": ours " + std::string(ours) + ", theirs " + std::string(theirs));
    } else {
      if (static_cast<long long>(ours) == static_cast<long long>(theirs))
        return true;
      refuse(what + ": ours " + std::to_string(static_cast<long long>(ours)) + ", theirs " +
             std::to_string(static_cast<long long>(theirs)));
    }
    return false;
  }

  void look_for_troubles(const std::string& name, const std::vector<table_trouble>& troubles) {
    for (const table_trouble& trouble : troubles)
      refuse(name + ": " + trouble.text());
  }

  std::vector<std::string> all;
};

/// libdvdread has words of flags as bit fields, of which the first is the highest bit; in memory it
/// is the lowest.
template <typename Flags>
std::uint32_t flags_of(const Flags& flags) {
  std::uint32_t word = 0, turned = 0;
  static_assert(sizeof flags <= sizeof word);
  std::memcpy(&word, &flags, sizeof flags);
  for (std::size_t bit = 0; bit < sizeof flags * 8; ++bit)
    turned = turned << 1 | (word >> bit & 1);
  return turned;
}

playback_time time_of(const dvd_time_t& theirs);
vm_command command_of(const vm_cmd_t& theirs);

/// Menus have at most one stream of a kind in libdvdread's tables.
void judge_menu_streams(judgement& j, const std::string& what, const stream_attributes& ours,
                        const video_attr_t& picture, int sounds, const audio_attr_t& sound,
                        int pictures, const subp_attr_t& shown);
void judge_title_streams(judgement& j, const std::string& what, const stream_attributes& ours,
                         const video_attr_t& picture, int sounds, const audio_attr_t* sound,
                         int pictures, const subp_attr_t* shown);
void judge_chain(judgement& j, const std::string& what, const program_chain* ours,
                 const pgc_t* theirs);
void judge_chains(judgement& j, const std::string& what, const std::vector<chain_entry>& ours,
                  const pgcit_t* theirs, bool menus);
void judge_menus(judgement& j, const std::string& what, const std::vector<menu_language>& ours,
                 const pgci_ut_t* theirs);
void judge_pack(judgement& j, const std::string& what, const navigation_pack& ours,
                const navigation_packet& theirs);
/// What read_disc tells of the whole disc, against the contents that disc.h reads.
void judge_contents(judgement& j, const std::string& native_path);

}  // namespace corvane::disc
