// The progress of something that is read while the main window waits, with a way past it.
#pragma once

#include <wx/string.h>

#include <cstdint>
#include <functional>

class wxWindow;

namespace corvane {

/// What the box says.
struct reading_texts {
  wxString what;  ///< is read
  wxString past;  ///< label of the button that ends it
  wxString tip;   ///< what the button does
};

/// 0 to 1; 1 if there is nothing to read.
double part_read(std::uint64_t read, std::uint64_t all);

/// Reads to the end, with a box once that takes longer than a moment. `step` reads for a moment and
/// returns false when all is read; `part` says how much of it is, 0 to 1. Returns false if the user
/// wants no more of it.
bool read_with_box(wxWindow& owner, const reading_texts& texts, const std::function<bool()>& step,
                   const std::function<double()>& part);

/// The same of an examination or a verification.
template <typename Work>
bool read_with_box(wxWindow& owner, const reading_texts& texts, Work& work) {
  constexpr int slice_milliseconds = 25;
  return read_with_box(
      owner, texts, [&work] { return work.step(slice_milliseconds); },
      [&work] { return part_read(work.bytes_read(), work.bytes_to_read()); });
}

}  // namespace corvane
