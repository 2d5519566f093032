#include "inspect/explain/ExplainDocument.h"

#include "inspect/records/SectionItems.h"

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace consolidator::inspect {

namespace {

template <typename T>
void writeNullable(JsonDocument& document, std::string_view key, const std::optional<T>& value) {
  document.key(key);
  value ? document.value(*value) : document.null();
}

template <typename List, typename Write>
void writeList(JsonDocument& document, std::string_view key, const List& list, Write write) {
  document.key(key).beginArray();
  for (const auto& item : list) {
    document.beginObject();
    write(item);
    document.endObject();
  }
  document.endArray();
}

void writeGiven(JsonDocument& document, std::string_view key, const std::vector<GivenItem>& items) {
  writeList(document, key, items, [&](const GivenItem& item) {
    writeNullable(document, "kernel", item.kernel);
    document.member("what", item.what);
    writeNullable(document, "name", item.name);
    document.member("count", item.count);
    writeNullable(document, "reason", item.reason);
  });
}

void writeIgnored(JsonDocument& document, const std::vector<IgnoredLines>& ignored) {
  writeList(document, "ignored", ignored, [&](const IgnoredLines& lines) {
    document.member("reason", lines.reason).member("count", lines.count);
    document.key("first_lines").beginArray();
    for (const std::uint64_t line : lines.firstLines) document.value(line);
    document.endArray();
  });
}

void writeDoubtful(JsonDocument& document, const std::vector<DoubtfulNet>& nets) {
  writeList(document, "doubtful", nets, [&](const DoubtfulNet& net) {
    document.member("kernel", net.kernel).member("instance", net.instance);
    document.member("net", net.net).member("count", net.count);
    document.member("first_line", net.firstLine);
  });
}

void writeInput(JsonDocument& document, const ExplainedInput& input) {
  document.member("path", input.path).member("kind", nameOf(input.kind));
  document.member("outcome", nameOf(input.outcome));
  writeNullable(document, "reason", input.reason);
  writeNullable(document, "line", input.line);
  writeNullable(document, "lines", input.lines);
  document.member("bytes", input.bytes);
  writeGiven(document, "gave", input.gave);
  writeGiven(document, "dropped", input.dropped);
  writeIgnored(document, input.ignored);
  writeDoubtful(document, input.doubtful);
}

void writeSections(JsonDocument& document, std::string_view key,
                   const std::vector<consolidated::Section>& sections) {
  document.key(key).beginArray();
  for (const consolidated::Section& section : sections) writeItem(document, section);
  document.endArray();
}

}  // namespace

std::string_view nameOf(InputKind kind) {
  constexpr std::array<std::string_view, 7> names{"dwarf", "hierarchy", "kernel", "hls",
                                                  "aux",   "ll",        "ram"};
  return names[static_cast<std::size_t>(kind)];
}

std::string_view nameOf(InputOutcome outcome) {
  constexpr std::array<std::string_view, 5> names{"skipped", "refused", "ignored", "nothing",
                                                  "used"};
  return names[static_cast<std::size_t>(outcome)];
}

void writeMembers(JsonDocument& document, const Explanation& explanation) {
  document.member("status", std::int32_t{explanation.status});
  document.member("stdout", explanation.out).member("stderr", explanation.err);
  writeList(document, "inputs", explanation.inputs,
            [&](const ExplainedInput& input) { writeInput(document, input); });
  writeList(document, "never_found", explanation.neverFound, [&](const NeverFound& missing) {
    document.member("kernel", missing.kernel).member("instance", missing.instance);
    document.member("variable", missing.variable).member("register", missing.reg);
    writeNullable(document, "closest", missing.closest);
  });
  writeList(document, "losses", explanation.losses, [&](const Loss& loss) {
    document.member("code", loss.code).member("message", loss.message);
  });
  document.key("sections").beginObject();
  writeSections(document, "before", explanation.before);
  writeSections(document, "after", explanation.after);
  document.endObject();
  document.key("limited").beginObject();
  document.member("never_found", explanation.isNeverFoundLimited);
  document.member("closest", explanation.isClosestLimited);
  document.endObject();
}

}  // namespace consolidator::inspect
