#include "inspect/diff/JsonChanges.h"

#include "inspect/diff/ListKeys.h"
#include "inspect/records/KernelItems.h"
#include "inspect/records/SectionItems.h"

#include <cstdint>
#include <string_view>

namespace consolidator::inspect {

namespace {

using consolidated::KernelType;

// Writes the item that a change holds.
class JsonItemWriter {
 public:
  explicit JsonItemWriter(JsonDocument& document) : document_(&document) {}

  void operator()(std::monostate /*nothing*/) const { document_->null(); }

  void operator()(const consolidated::Text& text) const { document_->value(text.view()); }

  void operator()(KernelType type) const { document_->value(nameOf(type)); }

  void operator()(const KernelCounts& counts) const {
    document_->beginObject();
    for (const NamedCount& named : namedCounts) {
      document_->member(named.name, counts.*named.count);
    }
    document_->endObject();
  }

  void operator()(const DwarfItem& dwarf) const {
    document_->beginObject();
    document_->member("offset", dwarf.bytes.offset());
    document_->member("size", std::uint64_t{dwarf.bytes.stored().size()});
    document_->endObject();
  }

  void operator()(const KeyList& list) const {
    document_->beginArray();
    forEachKey(list, [this](std::string_view key) { document_->value(key); });
    document_->endArray();
  }

  template <typename Item>
  void operator()(const Item& item) const {
    writeItem(*document_, item);
  }

 private:
  JsonDocument* document_;
};

std::string_view nameOfChange(const Change& change) {
  if (change.isAddition()) return "added";
  return change.isRemoval() ? "removed" : "changed";
}

void writeText(JsonDocument& document, std::string_view key,
               const std::optional<std::string_view>& text) {
  document.key(key);
  text ? document.value(*text) : document.null();
}

void writeCounts(JsonDocument& document, std::string_view key, std::uint64_t before,
                 std::uint64_t after) {
  document.key(key).beginArray().value(before).value(after).endArray();
}

// Numbers without a name are all called "Unknown".
void writeTypeNumbers(JsonDocument& document, const Change& change) {
  document.key("type_numbers").beginArray();
  for (const ChangeItem* const item : {&change.before, &change.after}) {
    document.value(static_cast<std::uint32_t>(std::get<KernelType>(*item)));
  }
  document.endArray();
}

}  // namespace

void JsonChanges::take(const Change& change) {
  JsonDocument& document = *document_;
  document.beginObject();
  document.member("what", nameOf(change.subject));
  writeText(document, "kernel", change.kernel);
  writeText(document, "name", change.name);
  document.member("change", nameOfChange(change));
  document.key("before");
  std::visit(JsonItemWriter(document), change.before);
  document.key("after");
  std::visit(JsonItemWriter(document), change.after);
  if (change.subject == Subject::Type) writeTypeNumbers(document, change);
  if (change.bytesDiffer) document.member("bytes_differ", *change.bytesDiffer);
  document.endObject();
}

void writeItem(JsonDocument& document, const ComparisonResult& result) {
  const ComparedFile& before = result.before;
  const ComparedFile& after = result.after;
  document.beginObject();
  writeCounts(document, "kernels", before.kernels, after.kernels);
  for (const NamedCount& named : namedCounts) {
    writeCounts(document, named.name, before.counts.*named.count, after.counts.*named.count);
  }
  document.endObject();
}

}  // namespace consolidator::inspect
