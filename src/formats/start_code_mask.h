// Where in 64 bytes of an MPEG stream start codes begin. This is where time goes when a whole file
// is looked through: about a byte in sixty of video is a 1, so that looking for one by one is slow.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#if defined(__SSE2__)
#include <immintrin.h>
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

// On Windows the compiler may put what has 32 bytes where 16 are aligned, which the processor
// refuses.
#if defined(__GNUC__) && defined(__x86_64__) && !defined(_WIN32)
#define CORVANE_HAS_WIDE_MASKS

/// Whether the processor has what `wide_start_code_mask` is made of (AVX2).
inline bool has_wide_masks() {
  static const bool has = __builtin_cpu_supports("avx2") != 0;
  return has;
}

__attribute__((target("avx2"))) inline __m256i load_32(const std::uint8_t* from) {
  return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(from));
}

/// Bit i is set where 00 00 01 begins at data[i], of 32.
__attribute__((target("avx2"))) inline std::uint64_t wide_mask_of_32(const std::uint8_t* data) {
  const __m256i zeros =
      _mm256_cmpeq_epi8(_mm256_or_si256(load_32(data), load_32(data + 1)), _mm256_setzero_si256());
  const __m256i codes =
      _mm256_and_si256(zeros, _mm256_cmpeq_epi8(load_32(data + 2), _mm256_set1_epi8(1)));
  return static_cast<std::uint32_t>(_mm256_movemask_epi8(codes));
}

/// The same in half as many steps.
__attribute__((target("avx2"))) inline std::uint64_t wide_start_code_mask(
    const std::uint8_t* data) {
  const __m256i least = _mm256_min_epu8(_mm256_or_si256(load_32(data), load_32(data + 1)),
                                        _mm256_or_si256(load_32(data + 32), load_32(data + 33)));
  if (_mm256_movemask_epi8(_mm256_cmpeq_epi8(least, _mm256_setzero_si256())) == 0)
    return 0;
  return wide_mask_of_32(data) | wide_mask_of_32(data + 32) << 32;
}

#endif

#else

inline std::uint64_t start_code_mask(const std::uint8_t* data) {
  return portable_start_code_mask(data);
}

#endif

#ifndef CORVANE_HAS_WIDE_MASKS
inline bool has_wide_masks() {
  return false;
}
#endif

}  // namespace corvane
