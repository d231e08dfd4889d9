// The work of a video_scanner (examine/video_facts.h): takes start codes as they come, puts headers
// together to pictures and pictures to groups, and fills in the facts.
//
// Headers are gathered until the first slice behind them, with which their picture begins; a
// picture is settled (its bytes and its time are known) when the next one begins or the sequence
// ends.
#pragma once

#include "examine/rate_window.h"
#include "examine/read_ahead.h"
#include "examine/slice_rows.h"
#include "examine/stray_bytes.h"
#include "examine/video_facts.h"
#include "formats/start_code_scanner.h"
#include "formats/video_headers.h"

#include <cstddef>
#include <cstdint>
#include <optional>

namespace corvane {

/// What stands between two slices: the headers of the picture that the second one begins.
struct gathered_headers {
  std::uint64_t position = 0;             // of the first one
  std::optional<std::uint64_t> sequence;  // positions of the last ones; of a valid sequence header
  std::optional<std::uint64_t> group;
  std::optional<std::uint64_t> picture;
  group_header group_flags;
  picture_kind kind = picture_kind::other;
  int vbv_delay = 0;
  std::optional<picture_extension> extension;
};

/// A frame, or one or both of its fields.
struct gathered_frame {
  std::uint64_t position = 0;
  std::uint64_t fields = 0;
  bool counts = false;
  bool hidden = false;
  picture_kind kind = picture_kind::other;
  // The field that is there, while the other one is not.
  std::optional<picture_extension::structure_kind> half;
};

class video_scan : private start_code_sink {
 public:
  explicit video_scan(bool to_multiplex) : reading_(to_multiplex) { stray_.watch(0); }

  void feed(const std::uint8_t* data, std::size_t size);
  /// No more will be fed, though there may be more.
  void beginning_read();
  void finish();

  video_facts facts;

 private:
  void start_code_found(std::uint8_t code, std::uint64_t position,
                        const std::uint8_t* bytes) override;
  void sequence_found(std::uint64_t position, const std::uint8_t* bytes);
  void picture_found(std::uint64_t position, const std::uint8_t* bytes);
  void extension_found(const std::uint8_t* bytes);
  void end_found(std::uint64_t position, const std::uint8_t* bytes);
  void other_found(std::uint8_t code, std::uint64_t position);
  void slice_found(std::uint8_t code, std::uint64_t position);

  gathered_headers& open_headers(std::uint64_t position);
  void drop_picture_header();
  void picture_begins();
  void frame_begins();
  void count_frame();
  void look_at_group();
  bool look_at_references();
  void adopt_shape();
  void note_changes(bool rate);
  void state_shape();
  void complete_rows(std::uint64_t end);
  void settle_frame(std::uint64_t end);
  void settle_group();
  void settle_rates();
  std::uint64_t fields_to_next(const gathered_frame& done);
  void stop_stray(std::uint64_t position);

  double seconds_of(std::uint64_t fields) const;
  double seconds_before() const;
  video_place place(std::uint64_t position) const;
  void damaged(video_damage_kind kind, const video_place& where) {
    facts.damage.add({kind, where});
  }

  start_code_scanner scanner_{*this};
  stray_bytes stray_;
  rate_window window_;
  read_ahead reading_;
  slice_rows rows_;
  std::optional<gathered_headers> headers_;  // since the last slice
  std::optional<gathered_frame> frame_;      // the last one, while bytes of it may come
  bool in_picture_ = false;                  // its slices are checked
  bool astray_ = false;                      // slices without a picture have been told of
  bool any_code_ = false;
  bool started_ = false;                     // with an I picture
  std::optional<video_shape> stated_;        // by the last valid sequence header
  std::optional<video_shape> shape_;         // of the last picture
  video_demands demands_;                    // by the last valid sequence header
  std::optional<stored_size> display_size_;  // the same
  std::optional<video_place> ended_;         // an end code, and no picture since
  std::optional<video_group> group_;         // the last one
  bool group_closed_ = false;
  bool group_open_ = false;             // a B picture of it needs the group before
  std::uint64_t group_references_ = 0;  // I and P pictures of the group
  std::uint64_t references_ = 0;        // the same since the last I picture
  bool first_closed_ = false;           // the first I picture stands in a closed group
  double earlier_seconds_ = 0;          // at rates before this one
  std::uint64_t fields_at_rate_ = 0;    // shown, at the rate of now
  std::uint64_t reference_fields_ = 2;  // of the last I or P picture
};

}  // namespace corvane
