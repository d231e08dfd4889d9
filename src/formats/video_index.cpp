#include "formats/video_index.h"

#include <algorithm>

namespace corvane {

namespace {

// How a picture is packed: kind in bits 0 and 1, fields in 2 to 4, then the flags, then the
// position.
constexpr unsigned fields_shift = 2;
constexpr unsigned position_shift = 8;
constexpr std::uint64_t kind_mask = 3;
constexpr std::uint64_t fields_mask = 7;
constexpr std::uint64_t leading_flag = 1u << 5;
constexpr std::uint64_t hidden_flag = 1u << 6;

}  // namespace

byte_range video_index::bytes_of(std::size_t coded) const {
  const std::uint64_t begin = coded_.at(coded) >> position_shift;
  const std::uint64_t end = coded + 1 < settled_ ? coded_[coded + 1] >> position_shift : end_;
  return {begin, std::max(begin, end) - begin};
}

picture_kind video_index::kind_of(std::size_t coded) const {
  return static_cast<picture_kind>(coded_.at(coded) & kind_mask);
}

bool video_index::leading(std::size_t coded) const {
  return (coded_.at(coded) & leading_flag) != 0;
}

std::size_t video_index::group_of(std::size_t coded) const {
  const auto after = std::upper_bound(
      groups_.begin(), groups_.end(), coded,
      [](std::size_t number, const picture_group& group) { return number < group.first_coded; });
  return after == groups_.begin() ? 0 : static_cast<std::size_t>(after - groups_.begin()) - 1;
}

std::size_t video_index::group_shown(std::size_t shown) const {
  const auto after = std::upper_bound(first_shown_.begin(), first_shown_.end(), shown);
  return after == first_shown_.begin() ? 0
                                       : static_cast<std::size_t>(after - first_shown_.begin()) - 1;
}

std::size_t video_index::begin_shown(std::size_t group) const {
  std::size_t shown = first_shown(group);
  while (shown > 0 && leading(coded_of(shown - 1)) && group_of(coded_of(shown - 1)) == group)
    --shown;
  return shown;
}

std::uint64_t video_index::fields_before(std::size_t shown) const {
  return fields_.empty() ? std::uint64_t{2} * shown : fields_.at(shown);
}

std::size_t video_index::shown_at_field(std::uint64_t field) const {
  if (fields_.empty())
    return static_cast<std::size_t>(std::min<std::uint64_t>(field / 2, shown()));
  const auto after = std::upper_bound(fields_.begin(), fields_.end(), field);
  return static_cast<std::size_t>(after - fields_.begin()) - 1;
}

void video_index_builder::feed(const std::uint8_t* data, std::size_t size) {
  fed_ += size;
  scanner_.feed(data, size);
}

void video_index_builder::finish() {
  scanner_.finish();
  settle_last(fed_);
  if (waiting_)
    show(*waiting_);
  waiting_.reset();
}

void video_index_builder::start_code_found(std::uint8_t code, std::uint64_t position,
                                           const std::uint8_t* bytes) {
  switch (code) {
    case start_code::sequence_header:
    case start_code::group_of_pictures:
    case start_code::picture:
      if (!headers_)
        headers_.emplace().position = position;
      header_found(code, bytes);
      if (code == start_code::sequence_header && headers_->sequence)
        sequence_position_ = position;
      break;
    case start_code::extension:
      extension_found(bytes);
      break;
    default:
      if (code >= start_code::first_slice && code <= start_code::last_slice)
        slice_found();
  }
}

void video_index_builder::header_found(std::uint8_t code, const std::uint8_t* bytes) {
  if (code == start_code::picture) {
    headers_->picture = true;
    headers_->kind = read_picture_kind(bytes);
    headers_->extension = {};
    return;
  }
  headers_->picture = false;
  if (code == start_code::group_of_pictures) {
    headers_->group = true;
    headers_->closed = read_group_header(bytes).closed;
  } else if (const auto shape = read_sequence_header(bytes)) {
    headers_->sequence = true;
    shape_ = shape;
  }
}

void video_index_builder::extension_found(const std::uint8_t* bytes) {
  if (!headers_)
    return;
  if (headers_->picture) {
    if (const auto extension = read_picture_extension(bytes))
      headers_->extension = *extension;
  } else if (headers_->sequence && !shape_->mpeg2) {
    read_sequence_extension(bytes, *shape_);
  }
}

// A picture counts once its first slice is there: headers alone show nothing.
void video_index_builder::slice_found() {
  if (!headers_)
    return;
  if (second_field()) {
    half_.reset();
  } else {
    settle_last(headers_->position);
    keep_picture();
  }
  headers_.reset();
}

bool video_index_builder::second_field() const {
  using kind = picture_extension::structure_kind;
  if (!half_ || headers_->sequence || headers_->group || !headers_->picture)
    return false;
  return headers_->extension.structure ==
         (half_->structure == kind::top_field ? kind::bottom_field : kind::top_field);
}

// At every I picture, whether headers stand before it or not: with any of them decoding can begin,
// and multiplexers begin a VOBU.
bool video_index_builder::begins_group() const {
  return headers_->kind == picture_kind::intra;
}

void video_index_builder::begin_group() {
  picture_group group;
  group.sequence_position = sequence_position_;
  group.first_coded = static_cast<std::uint32_t>(index_.coded_.size());
  group.sequence_here = headers_->sequence;
  group.closed = headers_->group && headers_->closed;
  index_.groups_.push_back(group);
  references_in_group_ = 0;
}

void video_index_builder::keep_picture() {
  half_.reset();
  if (!shape_ || !headers_->picture || headers_->kind == picture_kind::other ||
      index_.coded_.size() >= video_index::most_pictures)
    return;
  if (begins_group())
    begin_group();
  if (index_.groups_.empty())
    return;
  if (!index_.shape_)
    index_.shape_ = shape_;
  std::uint64_t flags = 0;
  if (headers_->kind != picture_kind::bidirectional) {
    ++references_in_group_;
  } else if (references_in_group_ == 1) {
    const bool first_group = index_.groups_.size() == 1;
    flags = leading_flag | (first_group && !index_.groups_[0].closed ? hidden_flag : 0);
  }
  const auto fields = static_cast<std::uint64_t>(shown_fields(*shape_, headers_->extension));
  index_.coded_.push_back(headers_->position << position_shift | flags | fields << fields_shift |
                          static_cast<std::uint64_t>(headers_->kind));
  if (headers_->extension.structure != picture_extension::frame)
    half_ = headers_->extension;
}

// The last picture is whole, up to `end`: now its place on the screen is given.
void video_index_builder::settle_last(std::uint64_t end) {
  if (index_.settled_ == index_.coded_.size())
    return;
  const auto coded = static_cast<std::uint32_t>(index_.settled_++);
  index_.end_ = end;
  if (index_.kind_of(coded) == picture_kind::bidirectional) {
    if ((index_.coded_[coded] & hidden_flag) == 0)
      show(coded);
    return;
  }
  if (waiting_)
    show(*waiting_);
  waiting_ = coded;
}

void video_index_builder::show(std::uint32_t coded) {
  const std::size_t group = index_.first_shown_.size();
  if (group < index_.groups_.size() && index_.groups_[group].first_coded == coded)
    index_.first_shown_.push_back(static_cast<std::uint32_t>(index_.order_.size()));
  const std::uint64_t fields = index_.coded_[coded] >> fields_shift & fields_mask;
  if (fields != 2 && index_.fields_.empty())
    for (std::size_t shown = 0; shown <= index_.order_.size(); ++shown)
      index_.fields_.push_back(std::uint64_t{2} * shown);
  if (!index_.fields_.empty())
    index_.fields_.push_back(index_.fields_.back() + fields);
  index_.order_.push_back(coded);
}

}  // namespace corvane
