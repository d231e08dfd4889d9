// Films as people have them become discs: imported on the console, examined, authored, read back
// and verified, and then measured. The card has eight bars of three quarters' colour at its top, a
// circle of half its height, and a strip below that is white at each mark; where there are fields,
// a bar moves between bars and circle.
#include "command.h"
#include "disc.h"
#include "films.h"
#include "judge.h"
#include "measures.h"
#include "platform/files/files.h"
#include "support/temporary_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <fstream>
#include <string>
#include <vector>

namespace corvane::imported {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

constexpr double together = 0.020;  ///< seconds: marks of picture and sound
// A mark of the picture comes with a picture: with fields made of others, up to a picture later.
constexpr double when_it_should_be = 0.045;
constexpr double as_round = 0.015;
constexpr double levels = 3;

std::string film_path(const film& f) {
  return std::string(CORVANE_FILMS "/") + f.file;
}

class ImportedFilm : public testing::TestWithParam<film> {
 protected:
  disc::finished author(const std::vector<std::string>& words) const {
    disc::command c;
    c.words = {CORVANE_AUTHOR};
    c.words.insert(c.words.end(), words.begin(), words.end());
    c.environment["CORVANE_HOME"] = folder_.path("home");
    return disc::run(c);
  }

  disc::finished import() const {
    return author(
        {"--import", film_path(GetParam()), "--to", streams_, "--constant", "2", project_});
  }

  /// Nothing is found by this look, not even a note.
  void expect_nothing_found(const std::vector<std::string>& words) const {
    const disc::finished look = author(words);
    EXPECT_EQ(look.status, 0) << look.out;
    EXPECT_THAT(look.out, HasSubstr("\"errors\": 0, \"warnings\": 0, \"notes\": 0,"));
  }

  void make_disc() {
    const disc::finished imported = import();
    ASSERT_EQ(imported.status, 0) << imported.out;
    said_ = imported.out;
    expect_nothing_found({"--check", "--json", project_});
    const disc::finished authored = author({"--no-iso", project_, disc_});
    ASSERT_EQ(authored.status, 0) << authored.out;
    expect_nothing_found({"--verify", "--json", project_, disc_});
    EXPECT_EQ(disc::disagreement_text(disc_), "");
    auto contents = disc::read_disc(disc_);
    ASSERT_TRUE(contents) << contents.error;
    ASSERT_EQ(contents->titles.size(), 1u);
    title_ = contents->titles[0];
  }

  /// By the header of the stream: libdvdread takes 704 pixels for 352.
  measured_title measured() const {
    std::array<int, 3> sizes{};
    for (const std::string& name : files_in(streams_))
      if (name.ends_with(".m2v")) {
        std::ifstream stream(streams_ + "/" + name, std::ios::binary);
        stream.ignore(4);  // the start code
        for (int& byte : sizes)
          byte = stream.get();
      }
    const double aspect = title_.picture.aspect == "4:3" ? 4.0 / 3 : 16.0 / 9;
    return {disc_ + "/VIDEO_TS/VTS_01_1.VOB", sizes[0] << 4 | sizes[1] >> 4,
            (sizes[1] & 15) << 8 | sizes[2], aspect, GetParam().shape};
  }

  testing_support::temporary_folder folder_;
  std::string streams_ = folder_.path("streams"), project_ = folder_.path("film.cvp"),
              disc_ = folder_.path("disc"), said_;
  disc::title title_;
};

/// ITU-R BT.601 of bar `number`: three quarters of white, yellow, cyan, green, magenta, red, blue;
/// black.
std::array<double, 3> colour_of_bar(int number) {
  constexpr double full = 191.0 / 255;
  constexpr std::array<int, 8> parts{7, 6, 3, 2, 5, 4, 1, 0};  // red 4, green 2, blue 1
  const int of = parts[static_cast<std::size_t>(number)];
  const double r = (of & 4) != 0 ? full : 0, g = (of & 2) != 0 ? full : 0,
               b = (of & 1) != 0 ? full : 0;
  const double y = 0.299 * r + 0.587 * g + 0.114 * b;
  return {16 + 219 * y, 128 + 224 * (b - y) / 1.772, 128 + 224 * (r - y) / 1.402};
}

void expect_colours(const measured_title& title) {
  for (int bar = 0; bar < 8; ++bar) {
    const std::array<double, 3> seen = title.bar(bar), wanted = colour_of_bar(bar);
    for (std::size_t part = 0; part < 3; ++part)
      EXPECT_NEAR(seen[part], wanted[part], levels) << "bar " << bar + 1 << ", part " << part;
  }
}

void expect_round(const measured_title& title) {
  EXPECT_NEAR(title.circle_width() / title.circle_height(), 1, as_round);
  EXPECT_NEAR(title.circle_height(), 0.5, 0.5 * as_round);
}

void expect_marks(const measured_title& title, const film& f) {
  const double moves = f.seconds - f.held;
  const std::vector<double> at{1, moves / 2, moves - 2};
  const std::vector<double> seen = title.flashes();
  ASSERT_EQ(seen.size(), 3u);
  for (std::size_t mark = 0; mark < 3; ++mark)
    EXPECT_NEAR(seen[mark], at[mark], when_it_should_be) << "mark " << mark + 1;
  if ((f.measured & in_step) == 0)
    return;
  const std::vector<double> heard = title.tones();
  ASSERT_EQ(heard.size(), 3u);
  for (std::size_t mark = 0; mark < 3; ++mark)
    EXPECT_NEAR(heard[mark] - seen[mark], 0, together) << "mark " << mark + 1;
}

/// The bar goes on by as much in each field; with fields in the wrong order it goes to and fro.
void expect_fields(const measured_title& title) {
  const std::vector<double>& at = title.moves();
  ASSERT_GE(at.size(), 80u);
  const double step = (at[70] - at[10]) / 60;
  EXPECT_GT(step, 0.005);
  for (std::size_t field = 10; field < 70; ++field)
    EXPECT_NEAR(at[field + 1] - at[field], step, 0.6 * step) << "field " << field;
}

TEST_P(ImportedFilm, BecomesADiscOrIsRefused) {
  const film& f = GetParam();
  if (f.seconds == 0) {
    const disc::finished refused = import();
    EXPECT_NE(refused.status, 0) << refused.out;
    EXPECT_THAT(refused.out, HasSubstr(f.file + "\" is left out: " + f.refusal));
    EXPECT_FALSE(file_exists(project_));
    EXPECT_THAT(files_in(streams_), IsEmpty());
    return;
  }
  make_disc();
  if (HasFatalFailure())
    return;
  EXPECT_EQ(title_.picture.standard, f.standard);
  EXPECT_EQ(title_.audio.size(), f.sounds);
  const std::string of_video = said_.substr(said_.find("  video: "));
  EXPECT_EQ(of_video.find(" - copied") < of_video.find('\n'), f.is_copied) << said_;
  EXPECT_THAT(said_, HasSubstr(f.said));
  // The script that ran last: copied bytes may have shown that they cannot stay.
  EXPECT_EQ(folder_.read("home/import.bat").find(" -c:v copy ") != std::string::npos, f.is_copied);
  measured_title title = measured();
  ASSERT_EQ(
      title.decode((f.measured & in_step) != 0, (f.measured & (top_first | bottom_first)) != 0),
      "");
  EXPECT_NEAR(title.shown_seconds(), f.seconds, 0.25);
  if ((f.measured & (in_step | marked)) != 0)
    expect_marks(title, f);
  if ((f.measured & is_round) != 0)
    expect_round(title);
  if ((f.measured & coloured) != 0)
    expect_colours(title);
  if ((f.measured & (top_first | bottom_first)) != 0)
    expect_fields(title);
}

std::string name_of_test(const testing::TestParamInfo<film>& info) {
  std::string name = info.param.file;
  std::replace_if(
      name.begin(), name.end(), [](char c) { return c == '-' || c == '.'; }, '_');
  return name;
}

INSTANTIATE_TEST_SUITE_P(Films, ImportedFilm, testing::ValuesIn(films()), name_of_test);

}  // namespace

}  // namespace corvane::imported
