// Letters by the toolkit's graphics context, on an image.
#include "drawing/letter_module.h"

#include <wx/app.h>
#include <wx/font.h>
#include <wx/fontenum.h>
#include <wx/graphics.h>
#include <wx/image.h>
#include <wx/init.h>
#include <wx/log.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <initializer_list>
#include <map>
#include <memory>
#include <utility>

namespace corvane {
namespace {

bool toolkit_runs() {
  if (wxTheApp != nullptr)
    return true;
  const wxLogNull silent;
  // Until the program ends: what draws later may not find it ended.
  return wxInitialize();
}

wxString in_wx(const std::string& text) {
  return wxString::FromUTF8Unchecked(text.data(), text.size());
}

#ifdef __WINDOWS__

wxGraphicsFont font_of_face(const wxGraphicsContext& context, const wxString& face,
                            const letter_font& font) {
  int flags = wxFONTFLAG_DEFAULT;
  if (font.bold)
    flags |= wxFONTFLAG_BOLD;
  if (font.italic)
    flags |= wxFONTFLAG_ITALIC;
  return context.CreateFont(font.em, face, flags, *wxWHITE);
}

/// Whether there is such a face, and one that GDI+ can draw: of those with PostScript outlines it
/// draws nothing, and says nothing.
bool draws_face(const wxString& face) {
  static std::map<wxString, bool> known;
  const auto [found, is_new] = known.try_emplace(face, false);
  if (is_new && wxFontEnumerator::IsValidFacename(face)) {
    wxImage image(1, 1);
    const std::unique_ptr<wxGraphicsContext> context(wxGraphicsContext::Create(image));
    if (context) {
      constexpr double some_size = 100;
      double width = 0, height = 0;
      context->SetFont(font_of_face(*context, face, {{}, some_size, false, false}));
      context->GetTextExtent("x", &width, &height);
      found->second = width > 0;
    }
  }
  return found->second;
}

wxString first_drawn(std::initializer_list<const char*> faces) {
  for (const char* const face : faces)
    if (draws_face(face))
      return face;
  return wxNORMAL_FONT->GetFaceName();
}

/// What stands for any font of its kind.
wxString face_of(const std::string& family) {
  if (family == "serif")
    return first_drawn({"Georgia", "Times New Roman", "DejaVu Serif", "Liberation Serif"});
  if (family == "monospace")
    return first_drawn({"Consolas", "Courier New", "DejaVu Sans Mono", "Liberation Mono"});
  if (family != "sans" && draws_face(in_wx(family)))
    return in_wx(family);
  return first_drawn({"Segoe UI", "Tahoma", "Arial", "DejaVu Sans", "Liberation Sans"});
}

wxGraphicsFont font_of(const wxGraphicsContext& context, const letter_font& font) {
  return font_of_face(context, face_of(font.family), font);
}

#else

/// By its points: of a font by pixels the toolkit asks the display's theme, which there may be none
/// of. Images have 96 pixels an inch.
wxGraphicsFont font_of(const wxGraphicsContext& context, const letter_font& font) {
  constexpr double points_a_pixel = 72.0 / 96.0;
  const wxFont wanted(wxFontInfo(font.em * points_a_pixel)
                          .FaceName(in_wx(font.family))
                          .Bold(font.bold)
                          .Italic(font.italic));
  return context.CreateFont(wanted, *wxWHITE);
}

bool draws_face(const wxString& face) {
  return wxFontEnumerator::IsValidFacename(face);
}

#endif

class wx_letter_drawer final : public letter_drawer {
 public:
  wx_letter_drawer() : measured_(1, 1), measuring_(wxGraphicsContext::Create(measured_)) {}

  bool is_usable() const { return measuring_ != nullptr; }

  bool has_family(const std::string& family) override {
    return family == "sans" || family == "serif" || family == "monospace" ||
           draws_face(in_wx(family));
  }

  letter_reach reach(const letter_font& font) override {
    const extent size = extent_of("x", font);
    return {size.height - size.descent, size.descent};
  }

  double advance(const std::string& line, const letter_font& font) override {
    return extent_of(line, font).width;
  }

  result<letter_picture> draw(const std::string& line, const letter_font& font) override {
    // Of a font without letters the toolkit draws nothing and says nothing.
    if (extent_of("x", font).width <= 0)
      return result<letter_picture>::fail("there are no letters for the font \"" + font.family +
                                          "\"");
    const extent size = extent_of(line, font);
    letter_picture drawn;
    // Letters may stick out of what a font says they take; more than an em is tried once more.
    for (const double margin : {font.em, 4 * font.em}) {
      draw_within(line, font, size, std::ceil(margin), drawn);
      if (drawn.grey.empty())
        return result<letter_picture>::fail("there is not enough memory");
      if (is_black_at_edges(drawn))
        return result<letter_picture>::ok(std::move(drawn));
    }
    return result<letter_picture>::fail("its letters are larger than their font says");
  }

 private:
  struct extent {
    double width = 0, height = 0, descent = 0;
  };

  extent extent_of(const std::string& line, const letter_font& font) {
    extent size;
    double leading = 0;
    measuring_->SetFont(font_of(*measuring_, font));
    measuring_->GetTextExtent(in_wx(line), &size.width, &size.height, &size.descent, &leading);
    return size;
  }

  /// Without pixels where there is no memory for them.
  static void draw_within(const std::string& line, const letter_font& font, const extent& size,
                          double margin, letter_picture& drawn) {
    drawn.grey.clear();
    drawn.width = static_cast<int>(std::ceil(size.width + 2 * margin));
    drawn.height = static_cast<int>(std::ceil(size.height + 2 * margin));
    drawn.baseline = static_cast<int>(std::lround(margin + size.height - size.descent));
    wxImage image(drawn.width, drawn.height);
    if (!image.IsOk())
      return;
    {
      const std::unique_ptr<wxGraphicsContext> context(wxGraphicsContext::Create(image));
      if (!context)
        return;
      context->SetAntialiasMode(wxANTIALIAS_DEFAULT);
      context->SetFont(font_of(*context, font));
      context->DrawText(in_wx(line), margin, margin);
    }
    const unsigned char* const rgb = image.GetData();
    drawn.grey.resize(static_cast<std::size_t>(drawn.width) *
                      static_cast<std::size_t>(drawn.height));
    // Where the system colours the edges of letters for a screen, the mean is what is covered.
    for (std::size_t i = 0; i < drawn.grey.size(); ++i)
      drawn.grey[i] =
          static_cast<std::uint8_t>((rgb[3 * i] + rgb[3 * i + 1] + rgb[3 * i + 2] + 1) / 3);
  }

  static bool is_black_at_edges(const letter_picture& drawn) {
    const auto black = [&](int x, int y) {
      return drawn.grey[static_cast<std::size_t>(y) * static_cast<std::size_t>(drawn.width) +
                        static_cast<std::size_t>(x)] == 0;
    };
    for (int x = 0; x < drawn.width; ++x)
      if (!black(x, 0) || !black(x, drawn.height - 1))
        return false;
    for (int y = 0; y < drawn.height; ++y)
      if (!black(0, y) || !black(drawn.width - 1, y))
        return false;
    return true;
  }

  wxImage measured_;
  std::unique_ptr<wxGraphicsContext> measuring_;
};

}  // namespace
}  // namespace corvane

corvane::letter_drawer* corvane_make_letter_drawer() {
  if (!corvane::toolkit_runs())
    return nullptr;
  auto drawer = std::make_unique<corvane::wx_letter_drawer>();
  return drawer->is_usable() ? drawer.release() : nullptr;
}
