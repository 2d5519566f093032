#include "inspect/explain/ExplainText.h"

#include "inspect/explain/ExplainDocument.h"
#include "inspect/output/PlainText.h"
#include "inspect/records/SectionItems.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <string_view>

namespace consolidator::inspect {

namespace {

constexpr std::size_t mostLines = 5;
constexpr std::size_t mostItems = 20;

class TextWriter {
 public:
  template <typename... Values>
  void line(fmt::format_string<Values...> form, const Values&... values) {
    fmt::vformat_to(std::back_inserter(text_), form, fmt::make_format_args(values...));
    text_ += '\n';
  }

  std::string take() { return std::move(text_); }

 private:
  std::string text_;
};

// Calls `write` for the first items and says how many more there are.
template <typename List, typename Write>
void writeFirst(TextWriter& out, const List& list, Write write) {
  std::for_each_n(list.begin(), std::min(list.size(), mostItems), write);
  if (list.size() > mostItems) out.line("    ... and {} more", list.size() - mostItems);
}

std::string spaced(std::string_view what) {
  std::string text(what);
  std::ranges::replace(text, '_', ' ');
  return text;
}

std::string described(const GivenItem& item) {
  std::string text = spaced(item.what);
  if (item.count != 1) text = fmt::format("{} x {}", item.count, text);
  if (item.name) text += fmt::format(" {}", plain(*item.name));
  if (item.kernel && item.what == "kernel") {
    text += fmt::format(" {}", plain(*item.kernel));
  } else if (item.kernel) {
    text += fmt::format(" of kernel {}", plain(*item.kernel));
  }
  if (item.reason) text += fmt::format(": {}", *item.reason);
  return text;
}

std::string linesOf(const IgnoredLines& lines) {
  if (lines.firstLines.empty()) return {};
  std::string text = lines.count == 1 ? " (line" : " (lines";
  const std::size_t shown = std::min(lines.firstLines.size(), mostLines);
  for (std::size_t i = 0; i < shown; ++i) {
    text += fmt::format("{} {}", i == 0 ? "" : ",", lines.firstLines[i]);
  }
  return text + (lines.count > shown ? ", ...)" : ")");
}

void writeInput(TextWriter& out, const ExplainedInput& input) {
  std::string head =
      fmt::format("{} ({}): {}", plain(input.path), nameOf(input.kind), nameOf(input.outcome));
  if (input.reason) head += fmt::format(": {}", plain(*input.reason));
  if (input.line) head += fmt::format(" (line {})", *input.line);
  out.line("{}", head);
  writeFirst(out, input.gave,
             [&](const GivenItem& item) { out.line("  gave {}", described(item)); });
  writeFirst(out, input.dropped,
             [&](const GivenItem& item) { out.line("  dropped {}", described(item)); });
  for (const IgnoredLines& lines : input.ignored) {
    out.line("  ignored {} x {}{}", lines.count, lines.reason, linesOf(lines));
  }
  writeFirst(out, input.doubtful, [&](const DoubtfulNet& net) {
    out.line("  doubtful {} taken for instance {} of kernel {} (line {})", plain(net.net),
             plain(net.instance), plain(net.kernel), net.firstLine);
  });
}

void writeNeverFound(TextWriter& out, const NeverFound& missing) {
  const std::string closest =
      missing.closest ? fmt::format("; closest: {}", plain(*missing.closest)) : std::string();
  out.line("  {} of kernel {} in {}: no net of register {}{}", plain(missing.variable),
           plain(missing.kernel), plain(missing.instance), plain(missing.reg), closest);
}

void writeSections(TextWriter& out, std::string_view title,
                   const std::vector<consolidated::Section>& sections) {
  out.line("{}:{}", title, sections.empty() ? " none" : "");
  writeFirst(out, sections, [&](const consolidated::Section& section) {
    out.line("  {} at {:#x}, {} bytes", spaced(nameOf(section.kind)), section.offset, section.size);
  });
}

// Each line on its own, so that nothing in it moves the cursor.
void writePrinted(TextWriter& out, std::string_view title, std::string_view printed) {
  if (printed.empty()) return;
  out.line("{}:", title);
  while (!printed.empty()) {
    const std::size_t end = std::min(printed.find('\n'), printed.size());
    out.line("  {}", plain(printed.substr(0, end)));
    printed.remove_prefix(std::min(end + 1, printed.size()));
  }
}

}  // namespace

std::string explainText(const Explanation& explanation) {
  TextWriter out;
  for (const ExplainedInput& input : explanation.inputs) writeInput(out, input);
  if (!explanation.neverFound.empty()) out.line("Never found:");
  writeFirst(out, explanation.neverFound,
             [&](const NeverFound& missing) { writeNeverFound(out, missing); });
  if (explanation.isNeverFoundLimited) out.line("  There are more than were looked for.");
  if (explanation.isClosestLimited) out.line("  Not all nets were compared with these.");
  if (!explanation.losses.empty()) out.line("Losses:");
  for (const Loss& loss : explanation.losses) {
    out.line("  {} [{}]", plain(loss.message), loss.code);
  }
  writeSections(out, "Sections before", explanation.before);
  writeSections(out, "Sections after", explanation.after);
  writePrinted(out, "Standard output", explanation.out);
  writePrinted(out, "Standard error", explanation.err);
  out.line("Status: {}", explanation.status);
  return out.take();
}

}  // namespace consolidator::inspect
