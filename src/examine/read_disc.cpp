#include "examine/read_disc.h"

#include "examine/disc_reader.h"

#include <algorithm>
#include <utility>

namespace corvane {

namespace {

/// More than any disc has: what a damaged table states beyond is not looked at.
constexpr std::size_t most_titles_read = 99;
constexpr std::size_t most_menus_read = 2000;
/// Units that chains play, for each unit that there is: damaged chains can play the same ones again
/// and again.
constexpr std::size_t most_times_played = 128;

/// The first sector of the copy of the tables, behind the VOBs.
std::uint64_t copy_sector(const file_head& head) {
  const std::uint64_t all = std::uint64_t{head.last_sector} + 1,
                      own = std::uint64_t{head.last_ifo_sector} + 1;
  return all > own ? all - own : 0;
}

std::uint64_t sectors_between(std::uint64_t begin, std::uint64_t end) {
  return begin != 0 && begin < end ? end - begin : 0;
}

class contents_reader {
 public:
  contents_reader(disc_files& files, disc_contents& contents, const std::function<bool()>& go_on)
      : reader_(files, contents, go_on), contents_(contents) {}

  /// False: there is no video manager, or reading was stopped.
  bool read();

 private:
  bool read_manager();
  void read_titleset(int number);
  void check_copy(int number);
  void check_places(int number, const file_head& head, std::uint64_t title_vobs);
  void check_titleset_place(int number);
  void check_other_titlesets();
  void read_title(std::size_t index);
  void read_title_streams(disc_title_contents& title, const stream_attributes& streams);
  void read_menus(int titleset, const std::vector<menu_language>& languages,
                  const video_attributes& video);
  void read_menu(disc_menu_contents menu, const chain_entry& entry);

  disc_reader reader_;
  disc_contents& contents_;
};

bool contents_reader::read_manager() {
  const std::string name = table_file(0, "IFO");
  const auto bytes = reader_.tables(name);
  contents_.manager = read_video_manager(bytes);
  const video_manager& manager = contents_.manager;
  reader_.tell(name, manager.troubles);
  contents_.first_play = manager.first_play;
  reader_.read_vobs({0, true, {}, {}, 0, {}},
                    sectors_between(manager.head.menu_vobs_sector, copy_sector(manager.head)),
                    manager.menu_vobs, name);
  check_places(0, manager.head, 0);
  return manager.titlesets > 0 || !manager.titles.empty();
}

/// What the video manager says of the titleset's streams.
void contents_reader::check_copy(int number) {
  const auto index = static_cast<std::size_t>(number) - 1;
  const video_manager& manager = contents_.manager;
  if (index >= manager.titlesets_again.size())
    return;
  const titleset& set = contents_.titlesets[index];
  const titleset_copy& copy = manager.titlesets_again[index];
  if (copy.category != set.head.category || copy.menus != set.menu_streams ||
      copy.titles != set.title_streams)
    reader_.tell(table_file(0, "IFO"), "VMG_VTS_ATRT says of the streams of titleset " +
                                           std::to_string(number) + " what its own tables do not");
}

/// Where the files of a titleset (0: of the video manager) are in an image: as far from the first
/// of them as its tables say.
void contents_reader::check_places(int number, const file_head& head, std::uint64_t title_vobs) {
  const disc_file* const ifo = reader_.files.find(table_file(number, "IFO"));
  if (ifo == nullptr || ifo->first_sector == 0)
    return;
  const auto must_be_at = [&](const std::string& file, std::uint64_t sector) {
    const disc_file* const found = reader_.files.find(file);
    if (found != nullptr && found->size > 0 && sector != 0 &&
        found->first_sector != ifo->first_sector + sector)
      reader_.tell(file, "is at sector " + std::to_string(found->first_sector) +
                             "; by its tables at " + std::to_string(ifo->first_sector + sector));
  };
  must_be_at(table_file(number, "BUP"), copy_sector(head));
  must_be_at(table_file(number, "VOB"), head.menu_vobs_sector);
  if (number == 0)
    return;
  std::string first_part = table_file(number, "VOB");
  first_part[first_part.size() - 5] = '1';
  must_be_at(first_part, title_vobs);
}

/// Where the titles' table has a titleset in an image, by its distance from the video manager.
void contents_reader::check_titleset_place(int number) {
  const disc_file* const ifo = reader_.files.find(table_file(number, "IFO"));
  const disc_file* const manager = reader_.files.find(table_file(0, "IFO"));
  if (ifo == nullptr || manager == nullptr || ifo->first_sector == 0)
    return;
  for (const title_entry& title : contents_.manager.titles) {
    const std::uint64_t sector = std::uint64_t{manager->first_sector} + title.titleset_sector;
    if (title.titleset != number || sector == ifo->first_sector)
      continue;
    reader_.tell(table_file(0, "IFO"), "TT_SRPT has titleset " + std::to_string(number) +
                                           " at sector " + std::to_string(sector) + "; it is at " +
                                           std::to_string(ifo->first_sector));
    return;
  }
}

void contents_reader::read_titleset(int number) {
  const std::string name = table_file(number, "IFO");
  const auto bytes = reader_.tables(name);
  contents_.titlesets.push_back(corvane::read_titleset(bytes));
  const titleset& set = contents_.titlesets.back();
  reader_.tell(name, set.troubles);
  reader_.read_vobs(
      {number, true, {}, {}, 0, {}},
      sectors_between(set.head.menu_vobs_sector,
                      set.title_vobs_sector != 0 ? set.title_vobs_sector : copy_sector(set.head)),
      set.menu_vobs, name);
  reader_.read_vobs({number, false, {}, {}, 0, {}},
                    sectors_between(set.title_vobs_sector, copy_sector(set.head)), set.title_vobs,
                    name);
  check_copy(number);
  check_places(number, set.head, set.title_vobs_sector);
  check_titleset_place(number);
}

/// Tables of titlesets that the video manager does not count.
void contents_reader::check_other_titlesets() {
  for (int number = contents_.manager.titlesets + 1; number <= 99; ++number)
    if (const std::string name = table_file(number, "IFO"); reader_.files.find(name) != nullptr)
      reader_.tell(name, "is a titleset that the video manager does not know");
}

void contents_reader::read_title_streams(disc_title_contents& title,
                                         const stream_attributes& streams) {
  const program_chain& chain = *title.chain.tables;
  title.video = streams.video;
  for (std::size_t i = 0; i < streams.audio.size() && i < chain.audio.size(); ++i)
    if (chain.audio[i].present)
      title.audio.push_back(
          {streams.audio[i], streams.audio[i].first_stream() + chain.audio[i].stream});
  const bool wide = streams.video.aspect_code == 3;
  for (std::size_t i = 0; i < streams.subpictures.size() && i < chain.subpictures.size(); ++i) {
    const subpicture_control& control = chain.subpictures[i];
    if (control.present)
      title.subpictures.push_back(
          {streams.subpictures[i], 0x20 + (wide ? control.wide : control.standard)});
  }
}

void contents_reader::read_title(std::size_t index) {
  const title_entry& entry = contents_.manager.titles[index];
  disc_title_contents title;
  title.number = static_cast<int>(index) + 1;
  title.titleset = entry.titleset;
  title.number_in_titleset = entry.number_in_titleset;
  title.angles = entry.angles;
  const auto lost = [&](const std::string& why) {
    reader_.tell(table_file(0, "IFO"),
                 "title " + std::to_string(title.number) + " leads to " + why);
  };
  if (entry.titleset < 1 || entry.titleset > static_cast<int>(contents_.titlesets.size()))
    return lost("titleset " + std::to_string(entry.titleset) + ", which is not there");
  const titleset& set = contents_.titlesets[static_cast<std::size_t>(entry.titleset) - 1];
  const int number = entry.number_in_titleset;
  if (number < 1 || number > static_cast<int>(set.titles.size()))
    return lost("title " + std::to_string(number) + " of titleset " +
                std::to_string(entry.titleset) + ", which is not there");
  const auto& chapters = set.titles[static_cast<std::size_t>(number) - 1];
  if (static_cast<int>(chapters.size()) != entry.chapters)
    lost(std::to_string(entry.chapters) + " chapters; its titleset has " +
         std::to_string(chapters.size()));
  const int chain = chapters.empty() ? 0 : chapters.front().chain;
  if (chain < 1 || chain > static_cast<int>(set.chains.size()) ||
      !set.chains[static_cast<std::size_t>(chain) - 1].chain)
    return lost("a chain that is not there");
  title.chain = reader_.chain_of(set.chains[static_cast<std::size_t>(chain) - 1].chain,
                                 reader_.vobs_of(entry.titleset, false));
  for (const chapter_entry& chapter : chapters)
    if (chapter.chain == chain && chapter.program >= 1 &&
        chapter.program <= static_cast<int>(title.chain.programs.size()))
      title.chapters.push_back(title.chain.programs[static_cast<std::size_t>(chapter.program) - 1]);
  read_title_streams(title, set.title_streams);
  contents_.titles.push_back(std::move(title));
}

void contents_reader::read_menu(disc_menu_contents menu, const chain_entry& entry) {
  menu.entry = entry.entry ? entry.menu : menu_kind::none;
  menu.chain = reader_.chain_of(entry.chain, reader_.vobs_of(menu.titleset, true));
  contents_.menus.push_back(std::move(menu));
}

void contents_reader::read_menus(int titleset, const std::vector<menu_language>& languages,
                                 const video_attributes& video) {
  for (const menu_language& language : languages)
    for (std::size_t i = 0; i < language.chains.size(); ++i) {
      if (!language.chains[i].chain || contents_.menus.size() >= most_menus_read ||
          !reader_.goes_on())
        continue;
      disc_menu_contents menu;
      menu.titleset = titleset;
      menu.number = static_cast<int>(i) + 1;
      menu.language = language.language;
      menu.video = video;
      read_menu(std::move(menu), language.chains[i]);
    }
}

bool contents_reader::read() {
  if (!read_manager())
    return false;
  const video_manager& manager = contents_.manager;
  for (int number = 1; number <= std::min(manager.titlesets, 99) && reader_.goes_on(); ++number)
    read_titleset(number);
  check_other_titlesets();
  std::size_t units = 0;
  for (const disc_vobs& vobs : contents_.vobs)
    units += vobs.units.size();
  reader_.may_play(units * most_times_played);
  for (std::size_t i = 0; i < std::min(manager.titles.size(), most_titles_read); ++i)
    if (reader_.goes_on())
      read_title(i);
  read_menus(0, manager.menus, manager.menu_streams.video);
  for (std::size_t i = 0; i < contents_.titlesets.size(); ++i)
    read_menus(static_cast<int>(i) + 1, contents_.titlesets[i].menus,
               contents_.titlesets[i].menu_streams.video);
  return reader_.goes_on();
}

}  // namespace

result<disc_contents> read_disc(disc_files& files, const std::function<bool()>& go_on) {
  disc_contents contents;
  if (contents_reader(files, contents, go_on).read())
    return result<disc_contents>::ok(std::move(contents));
  if (go_on && !go_on())
    return result<disc_contents>::fail("stopped");
  return result<disc_contents>::fail(contents.troubles.empty()
                                         ? "there is no video manager"
                                         : contents.troubles.front().file + ": " +
                                               contents.troubles.front().what);
}

}  // namespace corvane
