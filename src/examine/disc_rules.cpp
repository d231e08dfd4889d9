#include "examine/disc_rules.h"

#include "examine/button_looks.h"
#include "examine/cue_times.h"
#include "examine/disc_walk.h"
#include "examine/inner_stream_scan.h"
#include "examine/measures.h"
#include "examine/time_course.h"
#include "examine/told_before.h"
#include "formats/numbers.h"
#include "formats/text.h"
#include "formats/time_text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <optional>
#include <utility>

namespace corvane {
namespace {

using severity = finding_severity;
using trait_kind = disc_trait_kind;
using whole = finding_item::whole_kind;
using part = finding_item::part_kind;

constexpr std::string_view disc_tables_source = "the tables of a DVD-Video disc";
constexpr std::string_view author_again =
    "author the disc again; if it comes again, look at the log";

constexpr std::array disc_rules_table = {
    // By itself.
    rule{"disc-missing", severity::error, "There is a disc", "a VIDEO_TS folder with its tables",
         "nothing: there is no disc", author_again, disc_tables_source},
    rule{"disc-file", severity::error, "Each file of a disc can be read to its end",
         "a file that can be read", "nothing, or a part of the disc", author_again,
         disc_tables_source},
    rule{"disc-tables", severity::error,
         "The tables of a disc are whole, fit its streams, and each copy (BUP) is as its table "
         "(IFO)",
         "as the format has it", "a player that refuses the disc, stops or shows something else",
         author_again, disc_tables_source},
    rule{"disc-navigation", severity::error,
         "What each unit (its NAV pack) says of search, angles, streams, times and buttons fits "
         "the units and packs that lie there",
         "as the units lie", "a player that stumbles or stops there, above all when it searches",
         author_again, disc_tables_source},
    rule{"disc-navigation-unlike", severity::warning,
         "What the units of a cell have in common, each says alike, and no unit contradicts itself",
         "as in the other units",
         "nothing in most players; in others a stumble, or a key that does nothing for a moment",
         author_again, disc_tables_source},
    rule{"disc-picture-stated", severity::error,
         "The tables say of the pictures what the pictures say of themselves",
         "as the tables state", "a distorted picture, or none",
         "encode the title for the standard and the proportions of the disc, or author a disc of "
         "its own",
         disc_tables_source},
    rule{"disc-aspect-stated", severity::warning,
         "The tables say of the proportions what the pictures say of themselves",
         "as the tables state",
         "a squeezed picture in players that believe the stream more than the tables",
         "encode the video again and state the proportions (mpeg2enc: -a 2 or -a 3)",
         "dvdauthor 0.7.2, measured: it states 16:9 in a stream of square pixels"},
    rule{"disc-sound-stated", severity::error,
         "A sound stream that the tables state is of the kind that they state",
         "a stream of the kind that the tables state",
         "silence until the viewer changes the sound stream",
         "give each title a sound stream of the same kind", disc_tables_source},
    rule{"disc-sound-format", severity::warning,
         "The tables say of channels and samples what each sound stream says of itself",
         "as the tables state",
         "nothing in most players, which take both from the stream; others show another number of "
         "channels, or choose the wrong way to play them",
         "nothing need be done; to have both alike, author the title's sound in a titleset of its "
         "own, or encode all sound alike",
         disc_tables_source},
    rule{"disc-clock", severity::error, "The clock of a title or menu goes on without a break",
         "times without a break", "a stumble there, or a player that stops", author_again,
         disc_tables_source},
    rule{"disc-times", severity::error,
         "The time stamps of each stream of a title or menu go on without a break",
         "times without a break", "a stumble there, or a picture and a sound that part",
         author_again, disc_tables_source},
    rule{"disc-bytes", severity::error, "A title is packs from its first byte to its last",
         "packs, one behind the other", "a stumble there, or a player that stops", author_again,
         disc_tables_source},
    rule{"disc-nowhere", severity::error, "First play, titles and buttons lead somewhere",
         "a title, a menu, or the end", "a player that stops or does nothing",
         "correct the command", disc_tables_source},
    rule{"disc-no-overlay", severity::error, "A menu with buttons has a picture of them",
         "a whole subpicture in the menu", "buttons that cannot be seen", author_again,
         disc_tables_source},
    // Its image.
    rule{"image-missing", severity::error, "The image is there", "a disc image",
         "nothing: there is no image", author_again, disc_tables_source},
    rule{"image-volume", severity::error,
         "An image has an ISO 9660 and a UDF volume, with the same files",
         "both volumes, without a fault", "a player or a computer that cannot read the disc",
         author_again, "ISO 9660 and UDF 1.02"},
    rule{"image-files", severity::error, "The files of the image are those of the folder",
         "the same bytes as in the folder", "another disc than the folder holds", author_again,
         "the files of the folder"},
    // As foreseen.
    rule{"disc-titles", severity::error, "The disc has the titles of the project", "as foreseen",
         "titles that are missing, or that nobody asked for", author_again, asked_and_streams},
    rule{"disc-menus", severity::error, "The disc has the menus of the project", "as foreseen",
         "menus that are missing, or that nobody asked for", author_again, asked_and_streams},
    rule{"disc-first-play", severity::error, "The disc begins as asked", "as foreseen",
         "another beginning than was meant", "correct the first play command", asked_and_streams},
    rule{"disc-picture", severity::error, "Titles and menus have the pictures of their streams",
         "as foreseen", "a distorted or squeezed picture, or none",
         "encode the titles alike, and for the standard of the disc", asked_and_streams},
    rule{"disc-length", severity::error, "Titles and menus are as long as their streams",
         "as foreseen", "a title that ends too early or too late", author_again, asked_and_streams},
    rule{"disc-last-picture", severity::note, "The last picture of a stream is on the disc",
         "as foreseen", "nothing: the last picture of a stream without an end code is left out",
         "nothing", "mplex 2.1.0, measured"},
    rule{"disc-last-pictures", severity::warning,
         "No more than the last picture of a stream is left out", "as foreseen",
         "nothing, or an end that comes some pictures too early",
         "look at the end of the title on the finished disc; if something is missing there, encode "
         "the video again with some more pictures at its end",
         asked_and_streams},
    rule{"disc-picture-end", severity::error, "Pictures are shown to the end of their stream",
         "at least as foreseen", "a picture that stands still or is black from there on",
         "look at the stream's findings with \"check project...\"", asked_and_streams},
    rule{"disc-chapters", severity::error, "Chapters are where they were asked for", "as foreseen",
         "chapters elsewhere, or none", author_again, asked_and_streams},
    rule{"disc-sound", severity::error, "Titles and menus have the sound of their streams",
         "as foreseen", "silence, or a stream of another kind or language",
         "look at the stream's findings with \"check project...\"", asked_and_streams},
    rule{"disc-sound-end", severity::error, "Sound is heard to the end of its stream",
         "at least as foreseen", "silence from there on",
         "look at the stream's findings with \"check project...\"", asked_and_streams},
    rule{"disc-stream-bytes", severity::error,
         "Of a file that was not read to its end before the run, as many bytes are on the disc as "
         "it has",
         "the bytes of the file, but for a last picture, a last frame and what is no stream in it",
         "a picture or a sound that ends too early or has a hole",
         "author the disc again, and have the files read before the run: that tells what is wrong "
         "with them",
         "the sizes of the project's files; mplex 2.1.0 and dvdauthor 0.7.2, measured"},
    rule{"disc-subtitles", severity::error, "Titles have their text subtitles", "as foreseen",
         "subtitles that are missing, or in another language",
         "look at the subtitle's findings with \"check project...\"", asked_and_streams},
    rule{"disc-subtitle-times", severity::error, "Each subtitle comes up and goes at its time",
         "as foreseen", "a subtitle at another time, or one that stays too long or too short",
         author_again, asked_and_streams},
    rule{"disc-then", severity::error,
         "What follows a title, a menu or a cell is what was asked for", "as foreseen",
         "something else after it", "correct its command", asked_and_streams},
    rule{"disc-commands", severity::error,
         "The commands before a title or menu do what was asked for", "as foreseen",
         "something else than the title or menu", author_again, asked_and_streams},
    rule{"disc-entries", severity::error,
         "Keys and commands lead to the menus that are named for them", "as foreseen",
         "another menu than was meant", author_again, asked_and_streams},
    rule{"disc-menu", severity::error, "Titles and menus stay, or menus begin again, as asked",
         "as foreseen", "a title or menu that goes, or stays", author_again, asked_and_streams},
    rule{"disc-buttons", severity::error, "Menus have their buttons where they were placed",
         "as foreseen", "buttons that are missing or elsewhere", author_again, asked_and_streams},
    rule{"disc-button-colours", severity::error,
         "Buttons have their colours while they are highlighted and while they are selected",
         "as foreseen", "buttons in other colours, or that cannot be seen", author_again,
         asked_and_streams},
    rule{"disc-button-drawn", severity::error, "Buttons are drawn within their edges",
         "as foreseen, but for two pixels at the edges, and 32 dots and a twentieth of them",
         "buttons that cannot be seen, or of which only a part is", author_again,
         asked_and_streams},
    rule{"disc-leads-to", severity::error, "Buttons lead where they were meant to", "as foreseen",
         "another title or menu than was meant", "correct the button's command", asked_and_streams},
};

/// How a foreseen trait is held against the one that was found.
struct comparison {
  trait_kind what;
  std::string_view rule;
  enum { same, one_of, all_of, near, at_least, drawing, cues, within_unit, untold } how = same;
  double tolerance = 0;  ///< seconds
};

/// Times of navigation packs are rounded; a title ends with the last picture or the last sound.
constexpr std::array comparisons = {
    comparison{trait_kind::titles, "disc-titles"},
    comparison{trait_kind::menus, "disc-menus"},
    comparison{trait_kind::disc_menus, "disc-menus"},
    comparison{trait_kind::first_play, "disc-first-play", comparison::one_of},
    comparison{trait_kind::standard, "disc-picture"},
    comparison{trait_kind::size, "disc-picture"},
    comparison{trait_kind::aspect, "disc-picture"},
    comparison{trait_kind::coding, "disc-picture"},
    comparison{trait_kind::length, "disc-length", comparison::near, 0.3},
    comparison{trait_kind::chapters, "disc-chapters"},
    comparison{trait_kind::begins, "disc-chapters", comparison::near, 0.02},
    comparison{trait_kind::audio_streams, "disc-sound"},
    comparison{trait_kind::format, "disc-sound"},
    comparison{trait_kind::language, "disc-sound"},
    comparison{trait_kind::sounds_until, "disc-sound-end", comparison::at_least, 0.5},
    comparison{trait_kind::shows_until, "disc-picture-end", comparison::at_least, 0.5},
    comparison{trait_kind::subtitles, "disc-subtitles"},
    comparison{trait_kind::cues, "disc-subtitles"},
    comparison{trait_kind::first_cue, "disc-subtitles", comparison::near, 0.1},
    comparison{trait_kind::last_cue, "disc-subtitles", comparison::near, 0.1},
    comparison{trait_kind::before, "disc-commands", comparison::one_of},
    comparison{trait_kind::then, "disc-then", comparison::one_of},
    comparison{trait_kind::stays, "disc-menu"},
    comparison{trait_kind::entries, "disc-entries", comparison::all_of},
    comparison{trait_kind::buttons, "disc-buttons"},
    comparison{trait_kind::edges, "disc-buttons"},
    comparison{trait_kind::leads_to, "disc-leads-to", comparison::one_of},
    comparison{trait_kind::highlighted, "disc-button-colours"},
    comparison{trait_kind::selected, "disc-button-colours"},
    comparison{trait_kind::drawn, "disc-button-drawn", comparison::drawing},
    comparison{trait_kind::shown, "disc-subtitle-times", comparison::cues},
    comparison{trait_kind::lands, "disc-chapters", comparison::within_unit, 0.02},
    comparison{trait_kind::unit, "disc-chapters", comparison::untold},
    comparison{trait_kind::breaks, "disc-times", comparison::untold},
    comparison{trait_kind::bytes, "disc-stream-bytes", comparison::at_least},
};

const comparison& comparison_of(trait_kind what) {
  return *std::find_if(comparisons.begin(), comparisons.end(),
                       [&](const comparison& one) { return one.what == what; });
}

/// A picture and a half of the slowest rate.
constexpr double about_a_picture = 1.5 / 24;

/// What a trait may differ by, in seconds.
double tolerance_of(const comparison& c, const disc_trait& trait, const disc_traits& foreseen) {
  const disc_trait* const unit =
      c.how == comparison::within_unit
          ? foreseen.find(part_of(trait.item, part::whole), trait_kind::unit)
          : nullptr;
  return c.tolerance + (unit == nullptr ? 0 : leading_number(unit->value));
}

/// Of lists with ", " between.
bool has_all(const std::string& list, const std::string& wanted) {
  const std::vector<std::string> there = split(list, ", ");
  return std::ranges::all_of(split(wanted, ", "), [&there](const std::string& one) {
    return std::ranges::find(there, one) != there.end();
  });
}

bool agree(const comparison& c, const disc_trait& foreseen, const disc_trait& found,
           double tolerance) {
  if (c.how == comparison::same)
    return foreseen.value == found.value;
  if (c.how == comparison::one_of)
    return is_one_of(found.value, foreseen.value) || found.value == not_told;
  if (c.how == comparison::all_of)
    return has_all(found.value, foreseen.value);
  if (c.how == comparison::drawing)
    return is_same_drawing(foreseen.value, found.value);
  const double more = leading_number(found.value) - leading_number(foreseen.value);
  return more >= -tolerance && (c.how == comparison::at_least || more <= tolerance);
}

std::string missing_text(const disc_trait& foreseen) {
  const finding_item& item = foreseen.item;
  if (item.part == part::whole || item.part == part::video)
    return "there is none";
  return "it is not there";
}

void soften(finding& f, trait_kind what, std::span<const told_item> told) {
  if (f.severity == severity::error && follows_from(told, f.item, what))
    f.severity = severity::warning;
}

/// The first one that differs; nothing where another number of them tells enough.
std::optional<finding> difference_of_cues(const disc_trait& foreseen, const disc_traits& found,
                                          std::span<const told_item> told) {
  const disc_trait* const got = found.find(foreseen.item, foreseen.kind);
  const auto apart = got == nullptr ? std::nullopt : first_cue_apart(foreseen.value, got->value);
  if (!apart)
    return std::nullopt;
  std::string text = "cue " + std::to_string(apart->number) + " is shown " + text_of(apart->found);
  if (apart->others > 0)
    text += "; " + count_text(apart->others, "other is", "others are") + " not as foreseen, too";
  finding f = finding_of(disc_rules_table, "disc-subtitle-times", foreseen.item, std::move(text),
                         text_of(apart->foreseen));
  f.seconds = apart->foreseen.begins;
  soften(f, foreseen.kind, told);
  return f;
}

/// Seconds by which the picture of a title or menu ends too early; 0 where it is not known, or
/// where the picture is not what ends last.
double picture_too_short(const disc_trait& length, const disc_traits& all_foreseen,
                         const disc_traits& found) {
  const finding_item video = part_of(length.item, part::video);
  const disc_trait* const wanted = all_foreseen.find(video, trait_kind::shows_until);
  const disc_trait* const got = found.find(video, trait_kind::shows_until);
  if (wanted == nullptr || got == nullptr || wanted->value != length.value)
    return 0;
  return leading_number(wanted->value) - leading_number(got->value);
}

/// Of a title or menu that is nearly as long as it should be.
std::optional<finding> pictures_left_out(const disc_trait& foreseen, const disc_trait& got,
                                         const disc_traits& all_foreseen,
                                         const disc_traits& found) {
  const double less = leading_number(foreseen.value) - leading_number(got.value);
  if (less <= 0.01)
    return std::nullopt;
  if (less < about_a_picture)
    return finding_of(disc_rules_table, "disc-last-picture", foreseen.item,
                      "its last picture is not there");
  const double short_by = picture_too_short(foreseen, all_foreseen, found);
  if (short_by <= about_a_picture)
    return std::nullopt;
  return finding_of(disc_rules_table, "disc-last-pictures", foreseen.item,
                    "the last " + decimal_text(short_by, 2) + " s of its picture are not there",
                    shown_value(foreseen));
}

std::optional<finding> difference(const disc_trait& foreseen, const disc_traits& all_foreseen,
                                  const disc_traits& found, std::span<const told_item> told) {
  const comparison& c = comparison_of(foreseen.kind);
  if (c.how == comparison::untold)
    return std::nullopt;
  if (c.how == comparison::cues)
    return difference_of_cues(foreseen, found, told);
  const disc_trait* const got = found.find(foreseen.item, foreseen.kind);
  const std::string name(name_of(foreseen.kind));
  if (got != nullptr && agree(c, foreseen, *got, tolerance_of(c, foreseen, all_foreseen))) {
    return foreseen.kind == trait_kind::length
               ? pictures_left_out(foreseen, *got, all_foreseen, found)
               : std::nullopt;
  }
  finding f = finding_of(
      disc_rules_table,
      foreseen.kind == trait_kind::language && foreseen.item.part == part::subtitle
          ? "disc-subtitles"
          : c.rule,
      foreseen.item, name + ": " + (got == nullptr ? missing_text(foreseen) : shown_value(*got)),
      (foreseen.kind == trait_kind::bytes ? "at least " : "") + shown_value(foreseen));
  soften(f, foreseen.kind, told);
  return f;
}

/// Of breaks in times no more are told, whatever a disc holds.
constexpr std::size_t most_breaks = unit_trouble_list::most;

/// Whether the disc says anything of the item, so that what it does not say cannot be told.
bool is_there(const disc_traits& found, const finding_item& item) {
  return std::any_of(found.all().begin(), found.all().end(),
                     [&](const disc_trait& one) { return one.item == item; });
}

/// What only a look at all streams tells, and a walk through the commands.
bool may_be_unknown(trait_kind what) {
  return what == trait_kind::first_play || what == trait_kind::then ||
         what == trait_kind::leads_to || what == trait_kind::audio_streams ||
         what == trait_kind::sounds_until || what == trait_kind::shows_until ||
         what == trait_kind::subtitles || what == trait_kind::cues ||
         what == trait_kind::first_cue || what == trait_kind::last_cue ||
         what == trait_kind::shown || what == trait_kind::bytes;
}

/// Where nothing is said of it, another finding tells why: the button or the menu's picture is not
/// there.
bool is_of_looks(trait_kind what) {
  return what == trait_kind::highlighted || what == trait_kind::selected ||
         what == trait_kind::drawn;
}

// What a disc must be by itself.

class self_examiner {
 public:
  self_examiner(const disc_contents& disc, const disc_streams& streams)
      : disc_(disc), streams_(streams), walks_(disc) {}

  std::vector<finding> all() {
    for (const disc_trouble& trouble : disc_.troubles)
      found_.push_back(disc_file_finding("disc-tables", trouble.file, trouble.what));
    for (const auto* troubles : {&disc_.unit_troubles, &streams_.unit_troubles()})
      for (const unit_trouble& trouble : *troubles)
        look_at_unit(trouble);
    look_at_way({}, walks_.after_start());
    for (const disc_title_contents& title : disc_.titles)
      look_at_title(title);
    for (const auto& [item, menu] : menus_with_pictures(disc_))
      look_at_menu(item, *menu);
    return std::move(found_);
  }

 private:
  void add(std::string_view id, finding_item item, std::string found, std::string wanted = {}) {
    found_.push_back(finding_of(disc_rules_table, id, item, std::move(found), std::move(wanted)));
  }

  void look_at_way(const finding_item& item, const std::optional<std::string>& place) {
    if (place == "nowhere")
      add("disc-nowhere", item, "what it does leads nowhere");
  }

  void look_at_unit(const unit_trouble& trouble) {
    add(trouble.harmless ? "disc-navigation-unlike" : "disc-navigation", {},
        "unit at sector " + std::to_string(trouble.sector) + ": " + trouble.what);
    finding& f = found_.back();
    for (const disc_vobs& vobs : disc_.vobs)
      if (vobs.titleset == trouble.titleset && vobs.menus == trouble.menus)
        find_in_files(vobs, trouble.sector, f);
    for (const disc_title_contents& title : disc_.titles)
      if (title.titleset == trouble.titleset && !trouble.menus &&
          find_in_chain(title.chain, trouble, f)) {
        f.item = {whole::title, title.number, part::whole, 0};
        return;
      }
    for (const auto& [item, menu] : menus_with_pictures(disc_))
      if (menu->titleset == trouble.titleset && trouble.menus &&
          find_in_chain(menu->chain, trouble, f)) {
        f.item = item;
        return;
      }
  }

  static void find_in_files(const disc_vobs& vobs, std::uint64_t sector, finding& f) {
    for (std::size_t i = 0; i < std::min(vobs.files.size(), vobs.file_sectors.size()); ++i) {
      if (sector < vobs.file_sectors[i]) {
        f.file = vobs.files[i];
        f.byte = sector * disc_sector_size;
        return;
      }
      sector -= vobs.file_sectors[i];
    }
  }

  /// When the unit plays in the chain; false if its cell does not.
  static bool find_in_chain(const disc_chain& chain, const unit_trouble& trouble, finding& f) {
    for (const disc_cell& cell : chain.cells)
      if (cell.vob == trouble.vob && cell.cell == trouble.cell) {
        f.seconds = cell.begins + static_cast<double>(trouble.clocks) / stamps_a_second;
        return true;
      }
    return false;
  }

  void look_at_title(const disc_title_contents& title) {
    const finding_item item{whole::title, title.number, part::whole, 0};
    look_at_way(item, walks_.after_title(title));
    const chain_streams* const streams = streams_.find(title.chain);
    if (streams == nullptr)
      return;
    look_at_picture(item, title.video, *streams);
    look_at_packs(item, *streams);
    look_at_times(item, title.audio, title.subpictures, *streams);
    if (streams->shared)
      return;
    for (std::size_t i = 0; i < title.audio.size(); ++i)
      look_at_sound(item, static_cast<int>(i) + 1, title, *streams);
  }

  void look_at_picture(finding_item item, const video_attributes& stated,
                       const chain_streams& streams) {
    item.part = part::video;
    const inner_stream* const video = streams.head ? streams.head->video() : nullptr;
    if (video == nullptr || !video->video || !video->video->shape) {
      add("disc-picture-stated", item, "there is no picture in it");
      return;
    }
    const video_facts& v = *video->video;
    const auto compare = [&](std::string_view is, std::string_view said,
                             std::string_view id = "disc-picture-stated") {
      if (is != said)
        add(id, item, "the picture is " + std::string(is), std::string(said));
    };
    if (v.standard != video_standard::other)
      compare(v.standard == video_standard::pal ? "PAL" : "NTSC", stated.standard());
    compare(size_text(*v.shape),
            std::to_string(stated.width()) + "x" + std::to_string(stated.height()));
    compare(v.shape->mpeg2 && v.shape->aspect_code == 3 ? "16:9" : "4:3", stated.aspect(),
            "disc-aspect-stated");
    compare(v.shape->mpeg2 ? "MPEG-2" : "MPEG-1", stated.coding == 1 ? "MPEG-2" : "MPEG-1");
  }

  /// A kind of sound, and its first stream.
  struct stated_sound {
    int first;
    std::string_view name;
  };
  static constexpr std::array stated_sounds = {
      stated_sound{0x80, "AC-3"}, stated_sound{0x88, "DTS"}, stated_sound{0xA0, "LPCM"},
      stated_sound{0xC0, "MPEG audio"}};

  /// A ready title may lack a stream that others of its titleset have: then it has none of that
  /// number, of any kind.
  void look_at_sound(finding_item item, int number, const disc_title_contents& title,
                     const chain_streams& streams) {
    const disc_audio_stream& stated = title.audio[static_cast<std::size_t>(number) - 1];
    item.part = part::audio;
    item.part_number = number;
    look_at_format(item, stated, streams);
    constexpr int of_a_kind = 8;
    const auto said = std::ranges::find_if(stated_sounds, [&](const stated_sound& one) {
      return stated.id >= one.first && stated.id < one.first + of_a_kind;
    });
    if (said == stated_sounds.end() || stream_with(streams.facts, stated.id) != nullptr)
      return;
    for (const stated_sound& other : stated_sounds) {
      const int there = stated.id - said->first + other.first;
      if (stream_with(streams.facts, there) == nullptr || !is_instead(title, stated.id, there))
        continue;
      add("disc-sound-stated", item, "the sound is " + std::string(other.name),
          std::string(said->name));
      return;
    }
  }

  /// Whether this stream of the title is there for the stated one, and not beside it. dvdauthor
  /// states the streams of all titles of a titleset for each of them: what tells is that the title,
  /// or the titleset's first one, lacks what the other has.
  bool is_instead(const disc_title_contents& title, int stated, int there) const {
    if (std::ranges::find(title.audio, there, &disc_audio_stream::id) == title.audio.end())
      return true;
    const auto has_the_stated = [&](const disc_title_contents& one) {
      const chain_streams* const streams =
          one.titleset == title.titleset ? streams_.find(one.chain) : nullptr;
      return streams != nullptr && !streams->shared &&
             stream_with(streams->facts, stated) != nullptr &&
             stream_with(streams->facts, there) == nullptr;
    };
    const auto first =
        std::ranges::find(disc_.titles, title.titleset, &disc_title_contents::titleset);
    return &*first == &title ? std::ranges::any_of(disc_.titles, has_the_stated)
                             : has_the_stated(*first);
  }

  /// By what the stream's first frame, or packet, says of it.
  void look_at_format(const finding_item& item, const disc_audio_stream& stated,
                      const chain_streams& streams) {
    const audio_attributes& said = stated.attributes;
    const inner_stream* const sound =
        streams.head ? stream_with(*streams.head, stated.id) : nullptr;
    if (sound == nullptr)
      return;
    const auto compare = [&](int is, int tables, const char* what, const char* many) {
      const auto text = [&](int n) {
        return count_text(static_cast<std::uint64_t>(n), what, many);
      };
      if (is > 0 && tables > 0 && is != tables)
        add("disc-sound-format", item, "the sound has " + text(is),
            text(tables) + ", as the tables state");
    };
    const auto frame = sound->audio ? sound->audio->first : std::nullopt;
    const int rate = frame ? frame->sample_rate : sound->lpcm ? sound->lpcm->sample_rate : 0;
    const int channels = frame ? frame->channels : sound->lpcm ? sound->lpcm->channels : 0;
    compare(rate, said.sample_rate(), "sample a second", "samples a second");
    // Of MPEG audio dvdauthor states two channels, whatever it has: nobody can mend that.
    if (sound->kind != inner_kind::mpeg_audio)
      compare(channels, said.channels, "channel", "channels");
    if (sound->lpcm)
      compare(sound->lpcm->bits, 16 + 4 * said.quantization, "bit in a sample", "bits in a sample");
  }

  void look_at_packs(const finding_item& item, const chain_streams& streams) {
    const program_stream_facts& facts = streams.facts;
    if (facts.loose_bytes_in_all > 0)
      add("disc-bytes", item,
          count_text(facts.loose_bytes_in_all, "byte belongs", "bytes belong") + " to no pack");
    if (facts.uneven_packs.count > 0)
      add("disc-bytes", item,
          count_text(facts.uneven_packs.count, "pack does", "packs do") +
              " not begin where a sector begins");
  }

  /// Whether its times tell anything: all of it was read, in its order.
  static bool has_times(const chain_streams& streams) {
    return streams.in_order && !streams.shared;
  }

  void look_at_times(const finding_item& item, std::span<const disc_audio_stream> sounds,
                     std::span<const disc_subpicture_stream> subpictures,
                     const chain_streams& streams) {
    if (!has_times(streams))
      return;
    for (const time_break& one : streams.facts.clock_breaks.kept) {
      // spumux puts buttons and subtitles that come up after the end behind it, at their time.
      const bool is_late = one.position >= streams.shown_bytes;
      if (item.whole != whole::title && is_late)
        break;
      const bool is_told = add_break("disc-clock", item, one, "the clock", clocks_a_second);
      if (!is_late || !is_told)
        continue;
      say_it_is_late(found_.back());
      break;
    }
    for (const inner_stream& one : streams.facts.streams)
      for (const time_break& at : one.breaks.kept)
        add_break("disc-times", item_of(item, sounds, subpictures, one), at, "its time stamps",
                  stamps_a_second);
  }

  static void say_it_is_late(finding& of_clock) {
    of_clock.severity = severity::warning;
    of_clock.consequence = "nothing in most players; in others a stop at the end of the title";
    of_clock.remedy =
        "delete the cues that come after the end of the title, or correct their times";
  }

  /// False if it is none, or no more are told. `unit`: how many of the times make a second.
  bool add_break(std::string_view id, const finding_item& item, const time_break& one,
                 const std::string& what, std::uint64_t unit) {
    if (one.new_vob || breaks_ == most_breaks)
      return false;
    ++breaks_;
    const auto seconds = [unit](std::uint64_t time) {
      return static_cast<double>(time) / static_cast<double>(unit);
    };
    const std::int64_t step =
        way_between(one.before, one.after, unit / stamps_a_second * stamp_turn);
    const bool plural = id == "disc-times";
    add(id, item,
        what +
            (step < 0 ? plural ? " go back by " : " goes back by "
             : plural ? " leave out "
                      : " leaves out ") +
            seconds_text(seconds(static_cast<std::uint64_t>(std::abs(step)))));
    found_.back().seconds = seconds(one.elapsed);
    return true;
  }

  /// The stream's own item, where the tables state it.
  static finding_item item_of(const finding_item& whole_item,
                              std::span<const disc_audio_stream> sounds,
                              std::span<const disc_subpicture_stream> subpictures,
                              const inner_stream& stream) {
    const auto number_in = [](auto streams, int id) {
      const auto at = std::ranges::find(streams, id, [](const auto& one) { return one.id; });
      return at == streams.end() ? 0 : static_cast<int>(at - streams.begin()) + 1;
    };
    switch (stream.kind) {
      case inner_kind::video:
        return part_of(whole_item, part::video);
      case inner_kind::mpeg_audio:
        return part_of(whole_item, part::audio, number_in(sounds, 0xC0 + stream.number));
      case inner_kind::ac3:
        return part_of(whole_item, part::audio, number_in(sounds, 0x80 + stream.number));
      case inner_kind::dts:
        return part_of(whole_item, part::audio, number_in(sounds, 0x88 + stream.number));
      case inner_kind::lpcm:
        return part_of(whole_item, part::audio, number_in(sounds, 0xA0 + stream.number));
      case inner_kind::subpicture:
        return part_of(whole_item, part::subtitle, number_in(subpictures, 0x20 + stream.number));
      default:
        return whole_item;
    }
  }

  void look_at_menu(const finding_item& item, const disc_menu_contents& menu) {
    const chain_streams* const streams = streams_.find(menu.chain);
    const auto& shown = menu.chain.highlight;
    const std::size_t buttons = shown ? shown->first_group().size() : 0;
    for (std::size_t i = 0; i < buttons; ++i) {
      finding_item button = item;
      button.part = part::button;
      button.part_number = static_cast<int>(i) + 1;
      look_at_way(button, walks_.after_button(menu, i));
    }
    if (streams == nullptr)
      return;
    look_at_picture(item, menu.video, *streams);
    look_at_packs(item, *streams);
    look_at_times(item, {}, {}, *streams);
    if (buttons > 0 && !streams->shared)
      look_at_overlay(item, *streams);
  }

  void look_at_overlay(const finding_item& item, const chain_streams& streams) {
    if (streams.facts.count_of(inner_kind::subpicture) == 0)
      add("disc-no-overlay", item, "its buttons have no picture");
    else if (const auto picture = picture_of_buttons(streams); !picture)
      add("disc-no-overlay", item, "the picture of its buttons " + picture.error);
  }

  const disc_contents& disc_;
  const disc_streams& streams_;
  disc_walks walks_;
  std::vector<finding> found_;
  std::size_t breaks_ = 0;
};

}  // namespace

std::span<const rule> disc_rules() {
  return disc_rules_table;
}

finding disc_file_finding(std::string_view id, const std::string& path, std::string found) {
  finding f = finding_of(disc_rules_table, id, {}, std::move(found));
  f.file = path;
  return f;
}

std::vector<finding> disc_findings(const disc_contents& disc, const disc_streams& streams) {
  return self_examiner(disc, streams).all();
}

std::vector<finding> differences(const disc_traits& foreseen, const disc_traits& found,
                                 std::span<const told_item> told) {
  std::vector<finding> all;
  for (const disc_trait& trait : foreseen.all()) {
    if (found.find(trait.item, trait.kind) == nullptr &&
        (is_of_looks(trait.kind) || (may_be_unknown(trait.kind) && is_there(found, trait.item))))
      continue;
    if (auto one = difference(trait, foreseen, found, told))
      all.push_back(std::move(*one));
  }
  return all;
}

}  // namespace corvane
