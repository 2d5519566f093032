// Any bytes are taken for the DWARF of a file: reading them in a child process ends, and whatever
// it tells is well-formed. Each line table that is read knows its own lines.

#include "Require.h"
#include "inspect/lines/LineTables.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>

namespace consolidator {

namespace {

using inspect::LineTables;
using inspect::LineTableState;

constexpr inspect::ChildLimits limits{std::uint64_t{512} << 20U, std::uint64_t{64} << 20U,
                                      std::chrono::seconds(10), std::chrono::seconds(100)};

void requireLines(const LineTables& tables) {
  const bool isRead = tables.state() == LineTableState::Read;
  for (const std::string_view file : {"k.c", "src/k.c", "../k.c", "", "/"}) {
    for (std::uint32_t line = 0; line < 20; ++line) {
      const auto path = tables.pathOf(file, line);
      if (!path) continue;
      require(isRead && path->find("k.c") != std::string_view::npos, "a line is that of its file");
    }
  }
}

}  // namespace

}  // namespace consolidator

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace consolidator;  // NOLINT(google-build-using-namespace)
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const LineTables tables = LineTables::of(bytes, limits);
  require(tables.state() == LineTableState::Read || !tables.problem().empty(),
          "what cannot be read has a reason");
  requireLines(tables);
  // The same bytes as the answer of a child that does not do what it should.
  if (auto lines = inspect::decode(bytes)) requireLines(LineTables(std::move(*lines)));
  return 0;
}
