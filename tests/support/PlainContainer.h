#pragma once

#include "Bytes.h"
#include "MemoryStream.h"
#include "PlainRecords.h"
#include "consolidated/SectionEntry.h"
#include "model/KernelRecord.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace consolidator {

/// A consolidated file in memory, read and written on strings with no thought of speed: the measure
/// of the code that does it on files. Only the JSON text comes from that code.
class PlainContainer {
 public:
  std::string header = ::consolidator::header(0);  ///< the first 12 bytes count
  std::vector<SectionEntry> table;
  std::string projectName;
  std::optional<std::string> dwarf;
  KernelSequence kernels;

  /// What reading a file with these bytes leaves in memory.
  explicit PlainContainer(std::string_view bytes) : file_(bytes) {
    bytes.substr(0, header.size()).copy(header.data(), header.size());
    if (bytes.size() < header.size() || numberAt(header, 0, 4) != 0xBEEFDAD4U) return;
    try {
      readTable();
      for (SectionEntry& entry : table) readSection(entry);
    } catch (const ShortRead&) {
      complete_ = false;
      return;
    }
  }

  /// Whether all of the file could be read.
  bool complete() const { return complete_; }

  /// The bytes that a dump of the first section of this kind gives.
  std::string dump(SectionKind kind) const {
    for (const SectionEntry& entry : table) {
      if (entry.kind != kind) continue;
      try {
        PlainBytes in = bytesAt(entry);
        return std::string(in.take(entry.size));
      } catch (const ShortRead&) {
        return {};
      }
    }
    return {};
  }

  /// The bytes that saving writes; prepares the conditions and fills the table in, as saving does.
  std::string save() {
    ensure(SectionKind::Json);
    if (!kernels.empty()) ensure(SectionKind::KernelRecords);
    const std::size_t start = header.size() + 24 * table.size();
    std::string sections;
    std::string entries;
    for (SectionEntry& entry : table) {
      entry.offset = start + sections.size();
      sections += section(entry);
      entries += ::consolidator::entry(entry.kind, entry.offset, entry.size);
    }
    header.replace(12, 4, u32(static_cast<std::uint32_t>(table.size())));
    return header + entries + sections;
  }

 private:
  void readTable() {
    PlainBytes in(file_, header.size());
    const auto count = static_cast<std::uint32_t>(numberAt(header, 12, 4));
    for (std::uint32_t i = 0; i < count; ++i) {
      PlainBytes fields(in.take(24), 0);
      SectionEntry entry;
      entry.kind = static_cast<SectionKind>(fields.number());
      fields.number();
      entry.offset = fields.longNumber();
      entry.size = fields.number();
      table.push_back(entry);
    }
  }

  PlainBytes bytesAt(const SectionEntry& entry) const {
    const auto position = static_cast<std::int32_t>(static_cast<std::uint32_t>(entry.offset));
    if (position < 0) throw ShortRead();
    return {file_, static_cast<std::size_t>(position)};
  }

  void readSection(SectionEntry& entry) {
    entry.size = std::min(entry.size, 0xFFFFFFFEU);
    switch (entry.kind) {
      case SectionKind::ProjectName: {
        const std::string_view name = bytesAt(entry).take(entry.size);
        projectName = name.substr(0, name.find('\0'));
        return;
      }
      case SectionKind::Dwarf: {
        PlainBytes in = bytesAt(entry);
        dwarf.reset();
        dwarf = in.take(entry.size);
        return;
      }
      case SectionKind::KernelRecords: {
        PlainBytes in = bytesAt(entry);
        const std::uint32_t count = in.number();
        for (std::uint32_t i = 0; i < count; ++i) kernels.push_back(PlainRecordReader(in).kernel());
        return;
      }
      case SectionKind::Json:
        return;
      default:
        throw ShortRead();
    }
  }

  void ensure(SectionKind kind) {
    for (const SectionEntry& entry : table) {
      if (entry.kind == kind) return;
    }
    table.push_back({kind, 0, 0});
  }

  std::string section(SectionEntry& entry) {
    std::string bytes;
    switch (entry.kind) {
      case SectionKind::ProjectName:
        bytes = projectName;
        break;
      case SectionKind::Dwarf:
        return dwarf.value_or("").substr(0, entry.size);
      case SectionKind::KernelRecords:
        bytes = u32(static_cast<std::uint32_t>(kernels.size()));
        for (const KernelRecord& kernel : kernels) bytes += PlainRecordWriter::kernel(kernel);
        break;
      case SectionKind::Json:
        bytes = renderJson() + '\0';
        break;
      default:
        return {};
    }
    entry.size = static_cast<std::uint32_t>(bytes.size());
    return bytes;
  }

  std::string renderJson() {
    KernelList list;
    for (const KernelRecord& kernel : kernels) list.append(kernel);
    std::string text = json(list);
    kernels.assign(list.begin(), list.end());
    return text;
  }

  std::string file_;
  bool complete_ = true;
};

}  // namespace consolidator
