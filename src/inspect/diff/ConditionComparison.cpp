#include "inspect/diff/ConditionComparison.h"

#include "inspect/diff/ListElements.h"
#include "inspect/diff/OrderCheck.h"
#include "inspect/records/ConditionForm.h"
#include "lookup/Matching.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <utility>
#include <vector>

namespace consolidator::inspect {

namespace {

using consolidated::BreakableCondition;
using Elements = ListElements<BreakableCondition>;
using Positions = std::vector<std::uint32_t>;

constexpr std::uint32_t nowhere = std::numeric_limits<std::uint32_t>::max();

void append(std::string& key, std::uint32_t number) {
  for (int i = 0; i < 4; ++i, number >>= 8U) key += static_cast<char>(number & 0xFFU);
}

// What a condition stands for, whatever its text is.
std::string placeKey(const BreakableCondition& condition) {
  std::string key;
  append(key, static_cast<std::uint32_t>(condition.kind()));
  append(key, condition.line());
  return key.append(condition.file().view());
}

// A file name as it is read holds no zero byte.
std::string wholeKey(const BreakableCondition& condition, ConditionMatch match) {
  std::string key = placeKey(condition);
  key += '\0';
  return key.append(comparedForm(condition, match));
}

bool hasSamePlace(const BreakableCondition& before, const BreakableCondition& after) {
  return before.kind() == after.kind() && before.line() == after.line() &&
         before.file().view() == after.file().view();
}

// Some of the elements, by their positions.
struct Selection {
  std::size_t size() const { return positions.size(); }

  BreakableCondition operator[](std::size_t i) const { return (*elements)[positions[i]]; }

  const Elements* elements;
  Positions positions;
};

// Which conditions belong together.
class ConditionPairs {
 public:
  ConditionPairs(const Elements& before, const Elements& after, ConditionMatch match)
      : partners_(before.size(), nowhere), isChanged_(before.size()) {
    matchEqual(before, after, match);
    if (!added_.empty()) matchPlaces(before, after);
  }

  // The partner of a condition, or nowhere.
  std::uint32_t partner(std::size_t before) const { return partners_[before]; }

  // Whether a condition and its partner differ.
  bool isChanged(std::size_t before) const { return isChanged_[before]; }

  // The conditions without partner.
  const Positions& added() const { return added_; }

  bool isReordered() const {
    OrderCheck order;
    for (const std::uint32_t position : partners_) {
      if (position != nowhere) order.add(position);
    }
    return order.isReordered();
  }

 private:
  void matchEqual(const Elements& before, const Elements& after, ConditionMatch match) {
    const auto key = [match](const BreakableCondition& item) { return wholeKey(item, match); };
    Matching matching(after, key);
    for (std::size_t i = 0; i < before.size(); ++i) {
      const auto position = matching.take(key(before[i]));
      if (position) partners_[i] = static_cast<std::uint32_t>(*position);
    }
    for (std::size_t i = 0; i < after.size(); ++i) {
      if (matching.isLeft(i)) added_.push_back(static_cast<std::uint32_t>(i));
    }
  }

  void matchPlaces(const Elements& before, const Elements& after) {
    const Selection rest{&after, std::exchange(added_, {})};
    Matching matching(rest, placeKey);
    for (std::size_t i = 0; i < before.size(); ++i) {
      if (partners_[i] != nowhere) continue;
      const auto position = matching.take(placeKey(before[i]));
      if (!position) continue;
      partners_[i] = rest.positions[*position];
      isChanged_[i] = true;
    }
    for (std::size_t i = 0; i < rest.size(); ++i) {
      if (matching.isLeft(i)) added_.push_back(rest.positions[i]);
    }
  }

  Positions partners_;
  std::vector<bool> isChanged_;
  Positions added_;
};

}  // namespace

std::string comparedForm(const BreakableCondition& condition, ConditionMatch match) {
  const std::string_view text = condition.condition().view();
  return match == ConditionMatch::Exact ? std::string(text) : normalForm(text);
}

void ConditionComparison::report(ChangeReport& report) const {
  List::Iterator before = before_.begin();
  List::Iterator after = after_.begin();
  for (; before != List::Iterator() && after != List::Iterator(); ++before, ++after) {
    if (!isSame(*before, *after)) break;
  }
  reportRest(before, after, report);
}

bool ConditionComparison::isSame(const BreakableCondition& before,
                                 const BreakableCondition& after) const {
  if (!hasSamePlace(before, after)) return false;
  if (before.condition().view() == after.condition().view()) return true;
  return comparedForm(before, match_) == comparedForm(after, match_);
}

void ConditionComparison::reportRest(List::Iterator firstBefore, List::Iterator firstAfter,
                                     ChangeReport& report) const {
  constexpr auto subject = Subject::BreakableCondition;
  const Elements before(bytesBefore_, before_, firstBefore);
  const Elements after(bytesAfter_, after_, firstAfter);
  const ConditionPairs pairs(before, after, match_);
  for (std::size_t i = 0; i < before.size(); ++i) {
    const BreakableCondition item = before[i];
    if (pairs.partner(i) == nowhere) {
      report.removed(subject, item.condition().view(), item);
    } else if (pairs.isChanged(i)) {
      report.changed(subject, item.condition().view(), item, after[pairs.partner(i)]);
    }
  }
  for (const std::uint32_t position : pairs.added()) {
    report.added(subject, after[position].condition().view(), after[position]);
  }
  if (!pairs.isReordered()) return;
  report.reordered("breakable_conditions", ConditionList{before_, match_},
                   ConditionList{after_, match_});
}

}  // namespace consolidator::inspect
