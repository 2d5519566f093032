#include "inspect/explain/ExplainObserver.h"

#include "inspect/explain/MissingNets.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <system_error>

namespace consolidator::inspect {

namespace {

constexpr std::size_t mostListed = 20;      // lines of one reason, items dropped for one
constexpr std::size_t mostGiven = 100'000;  // entries of one input
constexpr std::size_t mostLosses = 100;     // of one code

std::string_view itemName(Item item) {
  constexpr std::array<std::string_view, 10> names{"kernel",
                                                   "type",
                                                   "instance_path",
                                                   "argument",
                                                   "variable",
                                                   "instance_bits",
                                                   "hardware_variable",
                                                   "logic_location",
                                                   "breakable_condition",
                                                   "bram"};
  return names[static_cast<std::size_t>(item)];
}

consolidated::Section sectionAt(std::size_t index, std::uint32_t kind, std::uint64_t offset,
                                std::uint32_t size) {
  return {static_cast<std::uint32_t>(index), static_cast<consolidated::SectionKind>(kind), offset,
          size};
}

std::optional<std::string> named(std::string_view name) {
  return name.empty() ? std::nullopt : std::optional<std::string>(name);
}

// An error in XML begins with its line, which is told apart.
std::string_view withoutLine(std::string_view reason, std::uint64_t line) {
  const std::string start = fmt::format("line {}: ", line);
  return reason.starts_with(start) ? reason.substr(start.size()) : reason;
}

// The entry that counts what there is no room for.
GivenItem& summary(std::vector<GivenItem>& items, std::string_view what, std::string_view reason) {
  const auto found = std::find_if(items.rbegin(), items.rend(), [&](const GivenItem& item) {
    return !item.kernel && item.what == what && item.reason == named(reason);
  });
  if (found != items.rend()) return *found;
  return items.emplace_back(
      GivenItem{std::nullopt, std::string(what), std::nullopt, 0, named(reason)});
}

}  // namespace

void ExplainObserver::finish(bool namesLogicLocations) {
  if (!namesLogicLocations) return;
  if (!nets_) nets_.emplace(*kernels_);
  MissingNets(*kernels_, *nets_).find(explanation_);
}

void ExplainObserver::onInputBegin(InputKind kind, std::string_view path) {
  ExplainedInput& begun = explanation_.inputs.emplace_back();
  begun.kind = kind;
  begun.path = path;
  isDecided_ = false;
  droppedCounts_.clear();
  if (kind != InputKind::LogicLocations || nets_) return;
  nets_.emplace(*kernels_);
  doubtful_.emplace(*kernels_, nets_->paths());
}

void ExplainObserver::onInputEnd(const InputExtent& extent) {
  input().bytes = extent.bytes;
  input().lines = extent.lines;
  if (input().kind == InputKind::Dwarf && extent.bytes > 0) {
    input().gave.push_back({std::nullopt, "dwarf", std::nullopt, 1, std::nullopt});
  }
  if (input().kind == InputKind::LogicLocations && doubtful_) input().doubtful = doubtful_->take();
  if (isDecided_) return;
  input().outcome = input().gave.empty() ? InputOutcome::Nothing : InputOutcome::Used;
}

void ExplainObserver::onSkipped(int error) {
  end(InputOutcome::Skipped, std::generic_category().message(error));
}

void ExplainObserver::onRefused(std::string_view reason, const InputPlace& place) {
  if (place.line > 0) input().line = place.line;
  const std::string_view fault = withoutLine(reason, place.line);
  end(InputOutcome::Refused,
      place.column > 0 ? fmt::format("{}, column {}", fault, place.column) : std::string(fault));
}

void ExplainObserver::onUnread(std::string_view reason) {
  end(InputOutcome::Ignored, std::string(reason));
}

void ExplainObserver::end(InputOutcome outcome, std::string reason) {
  isDecided_ = true;
  input().outcome = outcome;
  input().reason = std::move(reason);
}

// There are few reasons.
void ExplainObserver::onIgnored(std::string_view reason, std::uint64_t line) {
  std::vector<IgnoredLines>& ignored = input().ignored;
  const auto found = std::ranges::find(ignored, reason, &IgnoredLines::reason);
  IgnoredLines& lines = found == ignored.end()
                            ? ignored.emplace_back(IgnoredLines{std::string(reason), 0, {}})
                            : *found;
  ++lines.count;
  if (line > 0 && lines.firstLines.size() < mostListed) lines.firstLines.push_back(line);
}

void ExplainObserver::onNet(std::string_view net, std::uint64_t line, std::size_t owners) {
  hardwareName_ = '/';
  hardwareName_ += net;
  const InstanceNets::Paths& inside = nets_->around(hardwareName_);
  if (!inside.empty()) nets_->keep(hardwareName_, inside);
  if (owners == 0) {
    onIgnored(inside.empty() ? "a net outside every instance"
                             : "a net inside an instance, but of no known register",
              line);
  } else if (doubtful_->note(hardwareName_, line, inside)) {
    onIgnored("a doubtful net that there is no room to list", line);
  }
}

void ExplainObserver::onProgress(std::uint64_t bytes) { progress_.say(input().path, bytes); }

bool ExplainObserver::isEmptied(const std::string& path) {
  if (!files_.isEmptied(path)) return false;
  if (!input().reason) {
    input().reason = "the consolidated file itself, which is empty by then";
    onLoss("input-is-file", fmt::format("{} is the consolidated file itself: it is empty when it "
                                        "is read as an input",
                                        path));
  }
  return true;
}

void ExplainObserver::onGiven(std::string_view kernel, Item what, std::string_view name,
                              std::uint64_t count) {
  std::vector<GivenItem>& gave = input().gave;
  if (gave.size() >= mostGiven) {
    summary(gave, itemName(what), {}).count += count;
  } else {
    gave.push_back(
        {std::string(kernel), std::string(itemName(what)), named(name), count, std::nullopt});
  }
}

void ExplainObserver::onDropped(std::string_view kernel, Item what, std::string_view name,
                                std::uint64_t count, std::string_view reason) {
  if (what == Item::Register) {
    onLoss("locations-differ",
           fmt::format("the locations of \"{}\" in kernel \"{}\" differ from the stored ones and "
                       "are not taken",
                       name, kernel));
  }
  std::size_t& counted = droppedCounts_[fmt::format("{} {}", itemName(what), reason)];
  if (counted++ >= mostListed) {
    summary(input().dropped, itemName(what), reason).count += count;
  } else {
    input().dropped.push_back({std::string(kernel), std::string(itemName(what)), named(name), count,
                               std::string(reason)});
  }
}

void ExplainObserver::onStoredSection(std::uint32_t kind, std::uint64_t offset,
                                      std::uint32_t size) {
  explanation_.before.push_back(sectionAt(explanation_.before.size(), kind, offset, size));
}

void ExplainObserver::onLoss(std::string_view code, const std::string& message) {
  const auto [counted, isNew] = lossCounts_.try_emplace(std::string(code), 0);
  if (++counted->second <= mostLosses) {
    explanation_.losses.push_back({std::string(code), message});
  } else if (counted->second == mostLosses + 1) {
    explanation_.losses.push_back({std::string(code), "and more of these"});
  }
}

void ExplainObserver::onCondition(const PreparedCondition& condition) {
  if (const auto finding = conditions_.look(condition)) onLoss(finding->code, finding->message);
}

void ExplainObserver::onSavedSection(std::uint32_t kind, std::uint64_t offset, std::uint32_t size,
                                     bool isWritten) {
  explanation_.after.push_back(sectionAt(explanation_.after.size(), kind, offset, size));
  if (isWritten) return;
  onLoss("section-unwritten", fmt::format("section {} begins at 2 GiB or beyond and is not written",
                                          explanation_.after.size() - 1));
}

}  // namespace consolidator::inspect
