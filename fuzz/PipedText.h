#pragma once

#include "../tests/support/PiecewisePipe.h"

#include <cstddef>
#include <string>

namespace consolidator {

/// Calls `use` with the name of a pipe that hands the text out in pieces, so that what a reader
/// holds of it moves in memory. The first byte says how long the pieces are; a text that has none
/// or that no pipe takes is left out.
template <typename Use>
void withPipe(const std::string& text, Use use) {
  constexpr std::size_t longest = PiecewisePipe::mostPieces * PiecewisePipe::largestPiece / 2;
  if (text.empty() || text.size() > longest) return;
  const auto pieceSize = static_cast<unsigned char>(text.front());
  const PiecewisePipe pipe(pieces(text, std::size_t{pieceSize} + 1));
  use(pipe.path());
}

}  // namespace consolidator
