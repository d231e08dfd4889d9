// Pages as those who make menus get them.
#include "drawing/page_painting.h"

#include "drawing/block_letters.h"
#include "drawing/sample_pages.h"
#include "media/source_probe.h"
#include "support/temporary_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace corvane {
namespace {

using drawing_test::empty_page;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class PagePainting : public testing::Test {
 protected:
  PagePainting() {
    auto made = make_page_painter();
    EXPECT_TRUE(made) << made.error;
    if (made)
      painter_ = std::move(*made);
  }

  /// The PNG file read back.
  source_facts facts_of(const painted_page& painted) const {
    const auto facts = probe_source(folder_.add("page.png", painted.png));
    EXPECT_TRUE(facts) << facts.error;
    return facts ? *facts : source_facts();
  }

  testing_support::temporary_folder folder_;
  page_painter painter_;
};

TEST_F(PagePainting, IsOpaqueButOverAVideo) {
  drawn_page page = empty_page(576, false);
  const auto opaque = painter_.paint(page);
  ASSERT_TRUE(opaque) << opaque.error;
  ASSERT_EQ(facts_of(*opaque).streams.size(), 1u);
  EXPECT_EQ(facts_of(*opaque).streams[0].video.width, 720);
  EXPECT_EQ(facts_of(*opaque).streams[0].video.height, 576);
  EXPECT_FALSE(facts_of(*opaque).streams[0].video.alpha);
  EXPECT_THAT(opaque->missing, IsEmpty());
  page.background = video_background{};
  const auto over_video = painter_.paint(page);
  ASSERT_TRUE(over_video) << over_video.error;
  EXPECT_TRUE(facts_of(*over_video).streams.at(0).video.alpha);
}

TEST_F(PagePainting, TellsOfAFileWithoutAPictureOnce) {
  drawn_page page = empty_page(480, false);
  page_thumbnail thumbnail;
  thumbnail.file = folder_.add("no film.m2v", "nothing");
  thumbnail.box = {100, 100, 80, 60};
  page.shapes = {thumbnail, thumbnail};
  painter_.fetch(page);
  const auto painted = painter_.paint(page);
  ASSERT_TRUE(painted) << painted.error;
  EXPECT_THAT(painted->missing, ElementsAre(HasSubstr("There is no picture of \"")));
}

TEST_F(PagePainting, APageWithoutItsLettersIsNotPainted) {
  auto letters = std::make_unique<drawing_test::block_letters>();
  letters->trouble = "there are no letters for the font \"sans\"";
  painter_ = page_painter_of(std::make_unique<page_drawer>(std::move(letters)));
  drawn_page page = empty_page(480, false);
  EXPECT_TRUE(painter_.paint(page)) << "it has none";
  page_text text;
  text.text = "Titles";
  text.box = {100, 100, 300, 60};
  page.shapes.emplace_back(text);
  for (int time = 0; time < 2; ++time)
    EXPECT_EQ(painter_.paint(page).error, "there are no letters for the font \"sans\"");
}

TEST_F(PagePainting, MeasuresAsItDraws) {
  EXPECT_GT(painter_.measure("Titles", {}, 0, 1).width, 20);
}

}  // namespace
}  // namespace corvane
