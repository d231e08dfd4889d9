#include "examine/video_scan.h"

#include "formats/program_stream.h"

namespace corvane {

namespace {

bool is_second_of(const gathered_frame& first, const gathered_headers& second) {
  if (!first.half || second.sequence || second.group || !second.picture || !second.extension)
    return false;
  return second.extension->structure == (*first.half == picture_extension::top_field
                                             ? picture_extension::bottom_field
                                             : picture_extension::top_field);
}

bool is_slice(std::uint8_t code) {
  return code >= start_code::first_slice && code <= start_code::last_slice;
}

}  // namespace

void video_scan::feed(const std::uint8_t* data, std::size_t size) {
  stray_.slice_begins(data, size, facts.bytes);
  facts.bytes += size;
  scanner_.feed(data, size);
  stray_.slice_ends();
}

void video_scan::start_code_found(std::uint8_t code, std::uint64_t position,
                                  const std::uint8_t* bytes) {
  if (is_slice(code)) {
    slice_found(code, position);
  } else {
    switch (code) {
      case start_code::sequence_header:
        sequence_found(position, bytes);
        break;
      case start_code::group_of_pictures:
        open_headers(position).group = position;
        headers_->group_flags = read_group_header(bytes);
        break;
      case start_code::picture:
        picture_found(position, bytes);
        break;
      case start_code::extension:
        extension_found(bytes);
        break;
      case start_code::sequence_end:
        end_found(position, bytes);
        break;
      case start_code::user_data:
        break;
      default:
        other_found(code, position);
    }
  }
  any_code_ = true;
}

// A header stands here, and with it the last picture is over.
gathered_headers& video_scan::open_headers(std::uint64_t position) {
  if (stated_)
    stop_stray(position);
  if (!headers_) {
    complete_rows(position);
    headers_.emplace().position = position;
  }
  drop_picture_header();
  return *headers_;
}

// No slice has come, and another header has.
void video_scan::drop_picture_header() {
  if (!headers_ || !headers_->picture)
    return;
  if (stated_)
    damaged(video_damage_kind::picture_without_slices, place(*headers_->picture));
  headers_->picture.reset();
}

void video_scan::sequence_found(std::uint64_t position, const std::uint8_t* bytes) {
  const auto shape = read_sequence_header(bytes);
  gathered_headers& here = open_headers(position);
  if (shape && !stated_) {
    stop_stray(position);
    here.position = position;  // any header before it is stray
  }
  if (!shape) {
    if (stated_)
      damaged(video_damage_kind::bad_sequence_header, place(position));
    return;
  }
  here.sequence = position;
  if (facts.kind == video_kind::none)
    facts.kind = video_kind::elementary;
  stated_ = shape;
  demands_ = read_video_demands(bytes);
  display_size_.reset();
}

void video_scan::picture_found(std::uint64_t position, const std::uint8_t* bytes) {
  gathered_headers& here = open_headers(position);
  here.picture = position;
  here.kind = read_picture_kind(bytes);
  here.vbv_delay = read_vbv_delay(bytes);
  here.extension.reset();
}

void video_scan::extension_found(const std::uint8_t* bytes) {
  if (!headers_)
    return;
  if (headers_->picture) {
    if (const auto extension = read_picture_extension(bytes))
      headers_->extension = extension;
    return;
  }
  if (!headers_->sequence)
    return;
  // A second sequence extension would add to the first.
  if (!stated_->mpeg2 && read_sequence_extension(bytes, *stated_))
    read_demands_extension(bytes, demands_);
  if (const auto size = read_display_size(bytes))
    display_size_ = size;
}

void video_scan::end_found(std::uint64_t position, const std::uint8_t* bytes) {
  if (!headers_)
    complete_rows(position);
  drop_picture_header();
  settle_frame(position);
  headers_.reset();
  if (!stated_ || stray_.watching())
    return;
  stray_.watch(position + 4, bytes, header_bytes);
  if (started_)
    ended_ = place(position);
}

void video_scan::other_found(std::uint8_t code, std::uint64_t position) {
  if (code >= start_code::first_system_code) {
    // A file of packets begins with one, or with the rest of one that was cut.
    if (!any_code_ || (code == pack_header && !stated_))
      facts.kind = video_kind::packets;
    facts.system_codes.add(place(position));
  } else if (stated_) {
    damaged(video_damage_kind::reserved_code, place(position));
  }
}

void video_scan::slice_found(std::uint8_t code, std::uint64_t position) {
  if (headers_)
    picture_begins();
  if (!in_picture_) {
    if (!astray_ && stated_)
      damaged(video_damage_kind::slices_without_picture, place(position));
    astray_ = true;
    return;
  }
  const auto found = rows_.slice(code);
  if (found != slice_rows::found::nothing)
    damaged(found == slice_rows::found::gap ? video_damage_kind::missing_rows
                                            : video_damage_kind::rows_out_of_order,
            place(position));
}

// The first slice behind headers.
void video_scan::picture_begins() {
  astray_ = in_picture_ = false;
  if (!headers_->picture || !stated_) {
    settle_frame(headers_->position);
  } else {
    if (frame_ && is_second_of(*frame_, *headers_)) {
      frame_->half.reset();
    } else {
      settle_frame(headers_->position);
      frame_begins();
    }
    in_picture_ = true;
    rows_.begin(*stated_, headers_->extension.value_or(picture_extension{}));
  }
  headers_.reset();
}

void video_scan::beginning_read() {
  if (!facts.shape && stated_)
    state_shape();
}

void video_scan::finish() {
  scanner_.finish();
  beginning_read();
  if (headers_ && stated_)
    damaged(video_damage_kind::cut_at_end, place(headers_->position));
  else if (in_picture_ && !rows_.complete())
    damaged(video_damage_kind::cut_at_end, place(frame_->position));
  settle_frame(facts.bytes);
  settle_group();
  window_.end();
  settle_rates();
  facts.need_of_video = reading_.of_video();
  facts.needs_in_packs = reading_.in_packs();
  stop_stray(facts.bytes);
  facts.end_code = ended_.has_value();
  facts.whole = true;
}

}  // namespace corvane
