// The room of a disc as a picture: how much is used, and where the two sizes of disc end.
#pragma once

#include <wx/window.h>

#include <cstdint>

namespace corvane {

class space_bar : public wxWindow {
 public:
  explicit space_bar(wxWindow* parent);

  void show_used(std::uint64_t bytes);
  std::uint64_t used() const { return used_; }

  /// The place where so many bytes end, in pixels from the left.
  int place_of(std::uint64_t bytes) const;

  bool AcceptsFocus() const override { return false; }

 protected:
  wxSize DoGetBestClientSize() const override;

 private:
  void on_paint();

  std::uint64_t used_ = 0;
};

}  // namespace corvane
