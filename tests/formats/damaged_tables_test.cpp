// Tables of a disc with one byte or a few changed at random, thousands of times: whatever they
// hold, reading ends, and what is given fits into the bytes. The sanitizers look for the rest.
#include "formats/disc_image.h"
#include "formats/ifo.h"
#include "formats/navigation_pack.h"
#include "made_disc.h"

#include <gtest/gtest.h>

#include <random>

namespace corvane {
namespace {

using namespace testing_support;

constexpr int tables = 3000, images = 300;

/// Gives `look` the bytes with one to eight of them changed, `times` over. Sectors are mostly
/// empty: it is their beginnings that are changed.
template <typename Look>
void damage_bytes(const made_bytes& made, unsigned seed, int times, Look look) {
  constexpr std::size_t sector = 2048, beginning = 256;
  std::mt19937 random(seed);
  // The same on every system, as the distributions of the standard library are not.
  const auto below = [&random](std::size_t end) { return random() % end; };
  std::vector<std::uint8_t> bytes = made.bytes;
  for (int i = 0; i < times && !testing::Test::HasFatalFailure(); ++i) {
    std::vector<std::size_t> changed;
    for (std::size_t changes = i % 2 == 0 ? 1 : 1 + below(8); changes > 0; --changes) {
      changed.push_back(below(bytes.size() / sector) * sector + below(beginning));
      bytes[changed.back()] = static_cast<std::uint8_t>(below(3) == 0 ? 0xFF : below(256));
    }
    look(bytes);
    for (const std::size_t at : changed)
      bytes[at] = made.bytes[at];
  }
}

std::size_t cells_of(const std::vector<chain_entry>& chains) {
  std::size_t cells = 0;
  for (const chain_entry& entry : chains)
    cells += entry.chain ? entry.chain->cells.size() : 0;
  return cells;
}

TEST(DamagedTables, TitlesetsAreReadToTheEnd) {
  std::size_t told = 0;
  damage_bytes(made_titleset(), 1, tables, [&told](const std::vector<std::uint8_t>& bytes) {
    const titleset set = read_titleset(bytes);
    told += set.troubles.empty() ? 0 : 1;
    ASSERT_LE(set.troubles.size(), most_troubles);
    ASSERT_LE(cells_of(set.chains), bytes.size());
    ASSERT_LE(set.title_vobs.units.size() + set.title_vobs.cells.size(), bytes.size());
  });
  EXPECT_GT(told, std::size_t{tables} / 10);
}

TEST(DamagedTables, ManagersAreReadToTheEnd) {
  std::size_t told = 0;
  damage_bytes(made_manager(), 2, tables, [&told](const std::vector<std::uint8_t>& bytes) {
    const video_manager manager = read_video_manager(bytes);
    told += manager.troubles.empty() ? 0 : 1;
    ASSERT_LE(manager.troubles.size(), most_troubles);
    ASSERT_LE(manager.titles.size(), bytes.size());
  });
  EXPECT_GT(told, std::size_t{tables} / 10);
}

TEST(DamagedTables, NavigationPacksAreReadToTheEnd) {
  damage_bytes(made_navigation_pack(), 3, tables, [](const std::vector<std::uint8_t>& bytes) {
    const auto pack = read_navigation_pack(bytes);
    if (pack) {
      ASSERT_LE(pack->highlight.buttons.size(), 36u);
    }
  });
}

TEST(DamagedTables, ImagesAreReadToTheEnd) {
  std::size_t told = 0;
  damage_bytes(made_image(), 4, images, [&told](const std::vector<std::uint8_t>& bytes) {
    memory_source source(bytes);
    const disc_image image = read_disc_image(source);
    told += image.iso9660.troubles.empty() && image.udf.troubles.empty() ? 0 : 1;
    ASSERT_LE(image.iso9660.files.size() + image.udf.files.size(), std::size_t{2} * 200);
  });
  EXPECT_GT(told, std::size_t{images} / 20);
}

}  // namespace
}  // namespace corvane
