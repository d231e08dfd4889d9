#include "examine/video_scan.h"

#include <algorithm>
#include <utility>

namespace corvane {

void video_scan::frame_begins() {
  const bool intra = headers_->kind == picture_kind::intra;
  const video_place header = place(*headers_->picture);
  if (headers_->kind == picture_kind::other)
    damaged(video_damage_kind::bad_picture_header, header);
  if (stated_->mpeg2 && !headers_->extension)
    damaged(video_damage_kind::no_picture_extension, header);
  if (headers_->group && !intra)
    damaged(video_damage_kind::group_without_intra, place(*headers_->group));
  started_ = started_ || intra;
  frame_.emplace().position = headers_->position;
  if (headers_->kind == picture_kind::other)
    return;
  if (started_)
    count_frame();
  else
    ++facts.pictures_before_intra;
}

void video_scan::count_frame() {
  const picture_extension extension = headers_->extension.value_or(picture_extension{});
  adopt_shape();
  if (ended_) {
    facts.middle_end_codes.add(*ended_);
    if (!headers_->sequence)
      facts.missing_sequence_headers.add(place(headers_->position));
    ended_.reset();
  }
  gathered_frame& here = *frame_;
  look_at_group();
  here.counts = true;
  here.hidden = look_at_references();
  here.kind = headers_->kind;
  here.fields = static_cast<std::uint64_t>(shown_fields(*stated_, extension));
  ++facts.pictures;
  if (extension.structure != picture_extension::frame) {
    here.half = extension.structure;
    ++facts.field_pictures;
  }
  if (here.hidden) {
    ++facts.hidden_pictures;
    facts.first_group_open = true;
  }
}

void video_scan::look_at_group() {
  const bool intra = headers_->kind == picture_kind::intra;
  if (intra && !headers_->group)
    facts.intra_without_group_header.add(place(*headers_->picture));
  if (headers_->group && !headers_->sequence)
    facts.groups_without_sequence_header.add(place(*headers_->group));
  if (headers_->group && headers_->group_flags.broken_link)
    facts.broken_links.add(place(*headers_->group));
  if (group_ && !headers_->group && !(headers_->sequence && intra))
    return;
  settle_group();
  group_.emplace().place = place(headers_->position);
  ++facts.groups;
  group_closed_ = headers_->group && headers_->group_flags.closed;
  group_references_ = 0;
  group_open_ = false;
}

// B pictures behind the first I or P picture of their group need the group before, unless it is
// closed; nobody can decode those of the first one. True if this is such a picture.
bool video_scan::look_at_references() {
  if (headers_->kind == picture_kind::intra) {
    references_ = 0;
    if (facts.intra_pictures < video_facts::most_units)
      facts.unit_begins.push_back(seconds_before());
    else
      facts.unit_begins.clear();
    if (++facts.intra_pictures == 1)
      first_closed_ = group_closed_;
  }
  if (headers_->kind != picture_kind::bidirectional) {
    ++references_;
    ++group_references_;
    return false;
  }
  if (group_references_ == 1 && !group_closed_ && !group_open_) {
    group_open_ = true;
    ++facts.open_groups;
  }
  return facts.intra_pictures == 1 && references_ == 1 && !first_closed_;
}

// The shape that the next picture is of.
void video_scan::adopt_shape() {
  const auto same_rate = [](const video_shape& a, const video_shape& b) {
    return std::int64_t{a.rate_numerator} * b.rate_denominator ==
           std::int64_t{b.rate_numerator} * a.rate_denominator;
  };
  if (!shape_) {
    state_shape();
    facts.variable_bit_rate = !facts.bit_rate || headers_->vbv_delay == variable_vbv_delay;
  } else if (*shape_ == *stated_) {
    return;
  } else {
    note_changes(!same_rate(*shape_, *stated_));
  }
  if (!shape_ || !same_rate(*shape_, *stated_)) {
    earlier_seconds_ = seconds_before();
    fields_at_rate_ = 0;
    window_.begin(stated_->rate_numerator, stated_->rate_denominator);
    reading_.begin(stated_->mpeg2);
  }
  shape_ = stated_;
}

void video_scan::note_changes(bool rate) {
  const video_shape &before = *shape_, &after = *stated_;
  const video_change change{place(headers_->sequence.value_or(headers_->position)), before, after};
  if (before.width != after.width || before.height != after.height)
    facts.size_changes.add(change);
  if (rate)
    facts.rate_changes.add(change);
  if (before.mpeg2 != after.mpeg2)
    facts.coding_changes.add(change);
  else if (before.aspect_code != after.aspect_code)
    facts.aspect_changes.add(change);
  if (standard_of(before) != standard_of(after))
    facts.standard_changes.add(change);
}

void video_scan::state_shape() {
  facts.shape = stated_;
  facts.standard = standard_of(*stated_);
  facts.profile_and_level = demands_.profile_and_level;
  facts.chroma_format = demands_.chroma_format;
  facts.low_delay = demands_.low_delay;
  facts.bit_rate = demands_.bit_rate();
  facts.variable_bit_rate = !facts.bit_rate;
  facts.vbv_bytes = demands_.vbv_bytes();
  facts.display_size = display_size_;
}

// The slices of a picture end here.
void video_scan::complete_rows(std::uint64_t end) {
  if (in_picture_ && !rows_.complete())
    damaged(video_damage_kind::missing_rows, place(end));
  in_picture_ = false;
}

// The last frame is whole, up to `end`.
void video_scan::settle_frame(std::uint64_t end) {
  if (!frame_ || !frame_->counts) {
    frame_.reset();
    return;
  }
  const gathered_frame done = *frame_;
  frame_.reset();
  const video_place here{done.position, seconds_before()};
  if (done.half)
    damaged(video_damage_kind::lone_field, here);
  const std::uint64_t bytes = end - done.position;
  facts.picture_bytes += bytes;
  if (bytes > facts.largest_picture) {
    facts.largest_picture = bytes;
    facts.largest_picture_place = here;
  }
  ++group_->pictures;
  group_->fields += done.fields;
  window_.add({here.byte, here.seconds, bytes, done.fields});
  reading_.add({here.byte, here.seconds, bytes, seconds_of(fields_to_next(done)),
                done.kind == picture_kind::intra});
  if (!done.hidden) {
    facts.fields += done.fields;
    fields_at_rate_ += done.fields;
    facts.repeated_fields += done.fields - 2;
  }
  settle_rates();
}

// Until the next picture is decoded. An I or P picture is decoded when the one before begins to be
// shown, and a B picture when it is shown itself.
std::uint64_t video_scan::fields_to_next(const gathered_frame& done) {
  if (done.kind == picture_kind::bidirectional)
    return done.fields;
  return std::exchange(reference_fields_, done.fields);
}

void video_scan::settle_group() {
  if (!group_)
    return;
  const std::size_t longest = facts.groups_by_fields.size() - 1;
  ++facts.groups_by_fields.at(std::min<std::uint64_t>(group_->fields, longest));
  if (group_->fields > video_facts::long_group)
    facts.long_groups.add(*group_);
  if (!facts.longest_group || group_->fields > facts.longest_group->fields)
    facts.longest_group = group_;
  group_.reset();
}

void video_scan::settle_rates() {
  facts.seconds = seconds_before();
  facts.average_rate =
      facts.seconds > 0 ? 8 * static_cast<double>(facts.picture_bytes) / facts.seconds : 0;
  facts.peak_rate = window_.highest().rate;
  facts.peak_place = {window_.highest().byte, window_.highest().seconds};
}

void video_scan::stop_stray(std::uint64_t position) {
  if (!stray_.watching())
    return;
  if (const auto from = stray_.stop(position)) {
    facts.stray_bytes.add({place(*from), position - *from});
    facts.stray_bytes_in_all += position - *from;
  }
}

double video_scan::seconds_of(std::uint64_t fields) const {
  return shape_ ? static_cast<double>(fields) * shape_->rate_denominator /
                      (2.0 * shape_->rate_numerator)
                : 0;
}

// Of the pictures before the last one.
double video_scan::seconds_before() const {
  return earlier_seconds_ + seconds_of(fields_at_rate_);
}

video_place video_scan::place(std::uint64_t position) const {
  const bool behind = headers_ && frame_ && frame_->counts && !frame_->hidden;
  return {position, earlier_seconds_ + seconds_of(fields_at_rate_ + (behind ? frame_->fields : 0))};
}

}  // namespace corvane
