// Where in 64 bytes of an MPEG stream start codes begin. This is where time goes when a whole file
// is looked through: about a byte in sixty of video is a 1, so that looking for one by one is slow.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace corvane {

/// How many bytes a mask is for; two more are read.
inline constexpr std::size_t mask_bytes = 64;

/// Bit i is set where 00 00 01 begins at data[i]. On any processor.
inline std::uint64_t portable_start_code_mask(const std::uint8_t* data) {
  // Compilers make this a few instructions for many bytes.
  std::uint8_t least = 0xFF;
  for (std::size_t i = 0; i < mask_bytes; ++i)
    least = std::min(least, static_cast<std::uint8_t>(data[i] | data[i + 1] | (data[i + 2] ^ 1)));
  if (least != 0)
    return 0;
  std::uint64_t mask = 0;
  for (std::size_t i = 0; i < mask_bytes; ++i)
    if (data[i] == 0 && data[i + 1] == 0 && data[i + 2] == 1)
      mask |= std::uint64_t{1} << i;
  return mask;
}

#if defined(__SSE2__)

inline __m128i load_16(const std::uint8_t* from) {
  return _mm_loadu_si128(reinterpret_cast<const __m128i*>(from));
}

/// Bit i is set where 00 00 01 begins at data[i], of 16.
inline std::uint64_t start_code_mask_of_16(const std::uint8_t* data) {
  const __m128i zeros =
      _mm_cmpeq_epi8(_mm_or_si128(load_16(data), load_16(data + 1)), _mm_setzero_si128());
  const __m128i codes = _mm_and_si128(zeros, _mm_cmpeq_epi8(load_16(data + 2), _mm_set1_epi8(1)));
  return static_cast<std::uint64_t>(static_cast<unsigned>(_mm_movemask_epi8(codes)));
}

/// Bit i is set where 00 00 01 begins at data[i].
inline std::uint64_t start_code_mask(const std::uint8_t* data) {
  // Two zeros, one after the other, are rare where no start code is.
  const auto pairs = [data](std::size_t at) {
    return _mm_or_si128(load_16(data + at), load_16(data + at + 1));
  };
  const __m128i least =
      _mm_min_epu8(_mm_min_epu8(pairs(0), pairs(16)), _mm_min_epu8(pairs(32), pairs(48)));
  if (_mm_movemask_epi8(_mm_cmpeq_epi8(least, _mm_setzero_si128())) == 0)
    return 0;
  return start_code_mask_of_16(data) | start_code_mask_of_16(data + 16) << 16 |
         start_code_mask_of_16(data + 32) << 32 | start_code_mask_of_16(data + 48) << 48;
}

#else

inline std::uint64_t start_code_mask(const std::uint8_t* data) {
  return portable_start_code_mask(data);
}

#endif

}  // namespace corvane
