// The highest bit rate of a video stream over a second of its display.
#pragma once

#include <cstdint>
#include <deque>

namespace corvane {

/// Takes the pictures of a stretch of one picture rate, in the order of the stream. Keeps those of
/// the last second.
class rate_window {
 public:
  struct picture {
    std::uint64_t byte = 0;  ///< where it begins
    double seconds = 0;      ///< when
    std::uint64_t bytes = 0;
    std::uint64_t fields = 0;
  };
  struct peak {
    double rate = 0;  ///< bits a second
    std::uint64_t byte = 0;
    double seconds = 0;
  };

  /// A new stretch, of `numerator` / `denominator` pictures a second, both greater than 0.
  void begin(int numerator, int denominator);
  /// `fields` is greater than 0.
  void add(const picture& one);
  /// The stretch ends. One that is shorter than a second counts as lasting one.
  void end();

  const peak& highest() const { return highest_; }

 private:
  bool lasts_a_second(std::uint64_t fields) const;

  std::deque<picture> pictures_;
  std::uint64_t bytes_ = 0;   // of them
  std::uint64_t fields_ = 0;  // of them
  std::uint64_t numerator_ = 1, denominator_ = 1;
  bool full_ = false;  // the stretch lasted a second
  peak highest_;
};

}  // namespace corvane
