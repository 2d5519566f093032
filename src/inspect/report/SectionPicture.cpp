#include "inspect/report/SectionPicture.h"

#include "inspect/records/SectionItems.h"
#include "inspect/report/PageParts.h"
#include "inspect/report/PageText.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>

namespace consolidator::inspect {

namespace {

using consolidated::File;
using consolidated::Section;
using consolidated::SectionKind;

constexpr std::uint32_t mostShown = 100;
constexpr double barWidth = 1000;
constexpr double leastWidth = 3;  // so that a few bytes of many can be seen

struct Piece {
  std::string_view kind;
  std::string_view name;
  std::uint64_t offset;
  std::uint64_t size;
};

std::string_view titleOf(SectionKind kind) {
  switch (kind) {
    case SectionKind::ProjectName:
      return "Project name";
    case SectionKind::Dwarf:
      return "DWARF";
    case SectionKind::KernelRecords:
      return "Kernel records";
    case SectionKind::Json:
      return "JSON text";
    default:
      return "Unknown kind";
  }
}

Piece headOf(const File& file) {
  return {"head", "Header and table", 0, 16 + std::uint64_t{24} * file.sections().size()};
}

Piece pieceOf(const Section& section) {
  return {nameOf(section.kind), titleOf(section.kind), section.offset, section.size};
}

template <typename Visit>
void forEachPiece(const File& file, Visit visit) {
  visit(headOf(file));
  for (const Section section : file.sections()) {
    if (section.index == mostShown) break;
    visit(pieceOf(section));
  }
}

std::string shareOf(const Piece& piece, std::uint64_t size) {
  return fmt::format("{:.1f} %",
                     100.0 * static_cast<double>(piece.size) / static_cast<double>(size));
}

std::string describe(const Piece& piece) {
  return fmt::format("{}: {} at {:#x}", piece.name, counted(piece.size, "byte"), piece.offset);
}

void writePiece(HtmlWriter& html, const Piece& piece, std::uint64_t size) {
  if (piece.size == 0 || piece.offset >= size) return;
  const double scale = barWidth / static_cast<double>(size);
  const double x = std::min(static_cast<double>(piece.offset) * scale, barWidth - leastWidth);
  const double width =
      std::clamp(static_cast<double>(piece.size) * scale, leastWidth, barWidth - x);
  html.add(part::barPiece, piece.kind, fmt::format("{:.2f}", x), fmt::format("{:.2f}", width),
           describe(piece));
}

void writeBar(HtmlWriter& html, const File& file) {
  std::string summary;
  forEachPiece(file, [&](const Piece& piece) {
    summary += (summary.empty() ? "" : "; ") + describe(piece);
  });
  html.add(part::barBegin, summary);
  forEachPiece(file, [&](const Piece& piece) { writePiece(html, piece, file.bytes().size()); });
  html.add(part::barEnd);
}

void writeTable(HtmlWriter& html, const File& file) {
  html.add(part::sectionsTable);
  forEachPiece(file, [&](const Piece& piece) {
    html.add(part::sectionRow, piece.kind, piece.name, fmt::format("{:#x}", piece.offset),
             grouped(piece.size), shareOf(piece, file.bytes().size()));
  });
  if (file.sections().size() > mostShown) {
    html.add(part::sectionsMore, grouped(file.sections().size() - mostShown));
  }
  html.add(part::sectionsTableEnd);
}

}  // namespace

void writeSectionPicture(HtmlWriter& html, const File& file) {
  html.add(part::sectionsBegin, grouped(file.bytes().size()));
  writeBar(html, file);
  writeTable(html, file);
}

}  // namespace consolidator::inspect
