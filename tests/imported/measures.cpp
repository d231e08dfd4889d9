#include "measures.h"

#include "command.h"
#include "platform/files/files.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string_view>
#include <utility>

namespace corvane::imported {
namespace {

constexpr int columns_of_moves = 352;
constexpr double black = 16;
constexpr double samples_a_second = 48000;

/// The number behind a name in a line of ffmpeg's, "pts_time:0.28"; NaN where there is none.
double number_behind(const std::string& line, std::string_view name) {
  const std::size_t at = line.find(name);
  return at == std::string::npos ? std::nan("")
                                 : std::strtod(line.c_str() + at + name.size(), nullptr);
}

std::string text(double number) {
  return std::to_string(static_cast<int>(std::lround(number)));
}

std::string contents_of(const std::string& file) {
  const auto bytes = read_file(file, std::uintmax_t{1} << 30);
  return bytes ? *bytes : std::string();
}

}  // namespace

measured_title::measured_title(std::string vob, int width, int height, double aspect, double shape)
    : vob_(std::move(vob)), width_(width), height_(height) {
  pixel_aspect_ = aspect * height / width;
  box_width_ = shape < aspect ? width * shape / aspect : width;
  box_height_ = shape > aspect ? height * aspect / shape : height;
  left_ = (width - box_width_) / 2;
  top_ = (height - box_height_) / 2;
}

std::string measured_title::crop(double x0, double y0, double x1, double y1, int lines_in) const {
  return "crop=" + text(column(x1) - column(x0)) + ":" + text((row(y1) - row(y0)) / lines_in) +
         ":" + text(column(x0)) + ":" + text(row(y0) / lines_in) + ":exact=1";
}

std::string measured_title::decode(bool has_sound, bool has_fields) {
  const std::string card = vob_ + ".card", sound = vob_ + ".sound", moves = vob_ + ".moves";
  disc::command c;
  c.words = {"ffmpeg", "-nostdin", "-hide_banner", "-nostats", "-v",
             "info",   "-y",       "-copyts",      "-i",       vob_};
  const auto add = [&](std::initializer_list<std::string> more) {
    c.words.insert(c.words.end(), more.begin(), more.end());
  };
  add({"-map", "0:v:0", "-fps_mode", "passthrough", "-vf",
       "format=gray," + crop(0.1, 0.87, 0.9, 0.95, 1) + ",scale=1:1:flags=area,showinfo", "-f",
       "null", "-"});
  add({"-map", "0:v:0", "-fps_mode", "passthrough", "-vf", "select='eq(n,10)'", "-frames:v", "1",
       "-pix_fmt", "yuv420p", "-f", "rawvideo", card});
  if (has_sound)
    add({"-map", "0:a:0", "-af", "ashowinfo,aresample=async=1", "-ac", "1", "-ar", "48000", "-f",
         "s16le", sound});
  if (has_fields)
    add({"-map", "0:v:0", "-fps_mode", "passthrough", "-vf",
         "separatefields,format=gray," + crop(0, 0.195, 1, 0.23, 2) +
             ",scale=" + std::to_string(columns_of_moves) + ":1:flags=area",
         "-frames:v", "90", "-f", "rawvideo", moves});
  const disc::finished done = disc::run(c);
  if (done.status != 0)
    return done.out;
  card_ = contents_of(card);
  if (card_.size() != static_cast<std::size_t>(width_ * height_ * 3 / 2))
    return "a card of " + std::to_string(card_.size()) + " bytes, " + std::to_string(width_) + "x" +
           std::to_string(height_) + "\n" + done.out.substr(0, 3000);
  read_times(done.out);
  if (has_sound)
    sound_ = contents_of(sound);
  if (has_fields)
    read_moves(contents_of(moves));
  return {};
}

void measured_title::read_times(const std::string& said) {
  std::istringstream lines(said);
  bool has_sound = false;
  for (std::string line; std::getline(lines, line);) {
    const double at = number_behind(line, " pts_time:");
    if (std::isnan(at))
      continue;
    if (line.find("[Parsed_showinfo") != std::string::npos) {
      times_.push_back(at);
      whites_.push_back(number_behind(line, " mean:["));
    } else if (!has_sound && line.find("[Parsed_ashowinfo") != std::string::npos) {
      sound_begins_ = at;
      has_sound = true;
    }
  }
}

void measured_title::read_moves(const std::string& bytes) {
  for (std::size_t at = 0; at + columns_of_moves <= bytes.size(); at += columns_of_moves) {
    double light = 0, moment = 0;
    for (int x = 0; x < columns_of_moves; ++x) {
      const int above =
          std::max(0, static_cast<unsigned char>(bytes[at + static_cast<std::size_t>(x)]) - 64);
      light += above;
      moment += above * (x + 0.5);
    }
    moves_.push_back(light > 0 ? moment / light / columns_of_moves : -1);
  }
}

std::vector<double> measured_title::flashes() const {
  std::vector<double> found;
  bool was_white = false;
  for (std::size_t i = 0; i < times_.size(); ++i) {
    const bool white = whites_[i] > 80;  // a field of it is enough
    if (white && !was_white)
      found.push_back(times_[i] - times_.front());
    was_white = white;
  }
  return found;
}

std::vector<double> measured_title::tones() const {
  const auto sample = [this](std::size_t at) {
    return std::abs(static_cast<std::int16_t>(static_cast<unsigned char>(sound_[at]) |
                                              static_cast<unsigned char>(sound_[at + 1]) << 8));
  };
  int loudest = 0;
  for (std::size_t at = 0; at + 2 <= sound_.size(); at += 2)
    loudest = std::max(loudest, sample(at));
  std::vector<double> found;
  std::size_t last = 0;
  for (std::size_t at = 0; at + 2 <= sound_.size(); at += 2) {
    if (loudest < 1000 || sample(at) < loudest / 3)
      continue;
    if (found.empty() || at - last > 48'000)  // half a second of silence
      found.push_back(sound_begins_ - times_.front() +
                      static_cast<double>(at) / 2 / samples_a_second);
    last = at;
  }
  return found;
}

double measured_title::shown_seconds() const {
  return times_.empty() ? 0 : times_.back() - times_.front();
}

double measured_title::plane::mean(double x0, double y0, double x1, double y1) const {
  double sum = 0;
  int count = 0;
  for (int y = static_cast<int>(y0); y < std::max(static_cast<int>(y1), static_cast<int>(y0) + 1);
       ++y)
    for (int x = static_cast<int>(x0); x < std::max(static_cast<int>(x1), static_cast<int>(x0) + 1);
         ++x) {
      sum += bytes[y * width + x];
      ++count;
    }
  return sum / count;
}

measured_title::plane measured_title::plane_of(int number) const {
  const auto* const bytes = reinterpret_cast<const unsigned char*>(card_.data());
  if (number == 0)
    return {bytes, width_};
  return {bytes + width_ * height_ + (number - 1) * width_ * height_ / 4, width_ / 2};
}

/// How much lighter the circle is than what is around it.
double measured_title::light_of_circle(const plane& y) const {
  return y.mean(column(0.45), row(0.5), column(0.55), row(0.58)) - black;
}

double measured_title::circle_width() const {
  const plane y = plane_of(0);
  double covered = 0;
  for (int x = static_cast<int>(column(0)); x < static_cast<int>(column(1)); ++x)
    covered += (y.mean(x, row(0.54) - 2, x + 1, row(0.54) + 2) - black) / light_of_circle(y);
  return covered * pixel_aspect_ / box_height_;
}

double measured_title::circle_height() const {
  const plane y = plane_of(0);
  double covered = 0;
  for (int line = static_cast<int>(row(0.265)); line < static_cast<int>(row(0.82)); ++line)
    covered +=
        (y.mean(column(0.5) - 2, line, column(0.5) + 2, line + 1) - black) / light_of_circle(y);
  return covered / box_height_;
}

std::array<double, 3> measured_title::bar(int number) const {
  std::array<double, 3> found{};
  for (int i = 0; i < 3; ++i) {
    const int part = i == 0 ? 1 : 2;
    found[static_cast<std::size_t>(i)] =
        plane_of(i).mean(column((number + 0.35) / 8) / part, row(0.07) / part,
                         column((number + 0.65) / 8) / part, row(0.11) / part);
  }
  return found;
}

}  // namespace corvane::imported
