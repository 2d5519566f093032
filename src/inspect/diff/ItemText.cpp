#include "inspect/diff/ItemText.h"

#include "inspect/diff/ListKeys.h"
#include "inspect/output/PlainText.h"
#include "inspect/records/KernelItems.h"
#include "inspect/records/LocationText.h"
#include "inspect/records/SectionItems.h"

#include <fmt/format.h>

#include <cstdint>
#include <string_view>

namespace consolidator::inspect {

namespace {

using consolidated::BreakableCondition;
using consolidated::ConditionKind;
using consolidated::KernelType;
using consolidated::Locations;

// Writes the item that a change holds.
class TextItemWriter {
 public:
  explicit TextItemWriter(OutputSink& out) : out_(&out) {}

  void operator()(std::monostate /*nothing*/) const {}

  void operator()(const consolidated::Text& text) const { out_->write(plain(text.view())); }

  void operator()(KernelType type) const {
    out_->write(fmt::format("{} ({})", nameOf(type), static_cast<std::uint32_t>(type)));
  }

  void operator()(const consolidated::Variable& variable) const {
    out_->write(fmt::format("{}: {}, register {}", plain(variable.name().view()),
                            plain(variable.cType().view()), plain(variable.second().view())));
    for (const Locations& bits : variable.instanceBits()) {
      out_->write(", instance bits");
      write(bits);
    }
  }

  void operator()(const consolidated::HardwareVariable& variable) const {
    out_->write(fmt::format("{}:", plain(variable.rtlName().view())));
    write(variable.logicLocations());
  }

  void operator()(const BreakableCondition& condition) const {
    out_->write(nameOf(condition.kind()));
    if (condition.kind() == ConditionKind::SourceLine) {
      out_->write(fmt::format(" {}:{}", plain(condition.file().view()), condition.line()));
    }
    out_->write(fmt::format(": {}", plain(condition.condition().view())));
  }

  void operator()(const KernelCounts& counts) const {
    std::string_view separator;
    for (const NamedCount& named : namedCounts) {
      out_->write(fmt::format("{}{} {}", separator, named.name, counts.*named.count));
      separator = ", ";
    }
  }

  void operator()(const DwarfItem& dwarf) const {
    out_->write(fmt::format("{} bytes", dwarf.bytes.stored().size()));
  }

  void operator()(const consolidated::Section& section) const {
    out_->write(
        fmt::format("{}: {:#x}, {} bytes", nameOf(section.kind), section.offset, section.size));
  }

  void operator()(const KeyList& list) const {
    std::string_view separator;
    forEachKey(list, [&](std::string_view key) {
      out_->write(separator);
      out_->write(plain(key));
      separator = ", ";
    });
  }

 private:
  void write(const Locations& locations) const {
    for (const consolidated::Location location : locations) {
      out_->put(' ');
      out_->write(textOf(location));
    }
    if (locations.empty()) out_->write(" none");
  }

  OutputSink* out_;
};

}  // namespace

void writeItemText(OutputSink& out, const ChangeItem& item) {
  std::visit(TextItemWriter(out), item);
}

}  // namespace consolidator::inspect
