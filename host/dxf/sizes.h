// Sizes of the pieces that memory is taken in and given back. Small in fuzzing, where short inputs shall meet the seams
// between pieces.
#pragma once

#include <cstddef>

namespace qrs::dxf {

#if defined(QRS_SMALL_PIECES)
constexpr unsigned kRecordPieceBits = 3;
constexpr std::size_t kArenaPiece = 512;
constexpr std::size_t kLargeArenaPiece = 2048;
constexpr unsigned kTextSlots = 16;
constexpr std::size_t kTextsKept = 4096;
#else
constexpr unsigned kRecordPieceBits = 14;                  // records of a piece, as a power of two
constexpr std::size_t kArenaPiece = std::size_t{1} << 18;  // bytes of changed records
constexpr std::size_t kLargeArenaPiece = std::size_t{16} << 20;
constexpr unsigned kTextSlots = 2048;                     // records of a binary drawing found again as text
constexpr std::size_t kTextsKept = std::size_t{4} << 20;  // bytes of such texts that stay in place at least
#endif

// So many pieces of changed records are taken before they become large.
constexpr std::size_t kFewArenaPieces = 8;

// So much of a mapped file is read or written before it is given back.
constexpr std::size_t kReleaseStep = std::size_t{8} << 20;

}  // namespace qrs::dxf
