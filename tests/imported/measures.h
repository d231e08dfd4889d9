// What a player would show and sound of a disc's title, measured on what ffmpeg decodes of its VOB.
//
// Places on the card are parts of the picture that is shown, bars around it left out: (0, 0) is its
// upper left corner, (1, 1) the lower right one.
#pragma once

#include <array>
#include <string>
#include <vector>

namespace corvane::imported {

/// What is decoded is put beside the VOB.
class measured_title {
 public:
  /// `shape`: width over height of the picture that is shown.
  measured_title(std::string vob, int width, int height, double aspect, double shape);

  /// Decodes it; what ffmpeg said where that fails, or nothing.
  std::string decode(bool has_sound, bool has_fields);

  /// Seconds, the first picture at 0, at which the strip becomes white and the tone begins.
  std::vector<double> flashes() const;
  std::vector<double> tones() const;
  /// From the first picture's time to the last one's.
  double shown_seconds() const;

  /// Width and height of the circle, in heights of the picture as it is shown.
  double circle_width() const;
  double circle_height() const;
  /// The mean of a bar, 0 to 7: Y', Cb, Cr.
  std::array<double, 3> bar(int number) const;
  /// Where the bar is that moves, in parts of the picture, in each field in the order of time.
  const std::vector<double>& moves() const { return moves_; }

 private:
  struct plane {
    const unsigned char* bytes;
    int width;
    double mean(double x0, double y0, double x1, double y1) const;
  };
  plane plane_of(int number) const;
  double light_of_circle(const plane& y) const;
  double column(double x) const { return left_ + x * box_width_; }
  double row(double y) const { return top_ + y * box_height_; }
  std::string crop(double x0, double y0, double x1, double y1, int lines_in) const;
  void read_times(const std::string& said);
  void read_moves(const std::string& bytes);

  std::string vob_;
  int width_, height_;
  double pixel_aspect_ = 1;
  double left_ = 0, top_ = 0, box_width_ = 0, box_height_ = 0;  ///< the picture without its bars
  std::string card_, sound_;
  std::vector<double> times_, whites_;  ///< of each picture
  double sound_begins_ = 0;
  std::vector<double> moves_;
};

}  // namespace corvane::imported
