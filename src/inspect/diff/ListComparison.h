#pragma once

#include "consolidated/HardwareVariable.h"
#include "consolidated/List.h"
#include "consolidated/Text.h"
#include "consolidated/Variable.h"
#include "inspect/diff/ChangeReport.h"
#include "inspect/diff/ListElements.h"
#include "inspect/diff/OrderCheck.h"
#include "lookup/Matching.h"

#include <cstddef>
#include <string_view>

namespace consolidator::inspect {

/// What elements are matched by.
inline std::string_view keyOf(const consolidated::Text& text) { return text.view(); }

inline std::string_view keyOf(const consolidated::Variable& variable) {
  return variable.name().view();
}

inline std::string_view keyOf(const consolidated::HardwareVariable& variable) {
  return variable.rtlName().view();
}

/// Whether elements with the same key agree in all else, too.
bool isSame(const consolidated::Text& before, const consolidated::Text& after);
bool isSame(const consolidated::Variable& before, const consolidated::Variable& after);
bool isSame(const consolidated::HardwareVariable& before,
            const consolidated::HardwareVariable& after);

/// What the elements of a list are called, one and all of them.
struct ListName {
  Subject element;
  std::string_view list;  ///< the list's key in JSON documents
};

/// Reports how a list of a kernel differs from the list that it became. Elements match by key, the
/// n-th of a key with the n-th. Takes linear time; holds up to 44 bytes for each element of the
/// list after the first one that is not where it was.
template <typename T>
class ListComparison {
 public:
  using List = consolidated::List<T>;
  using Iterator = typename List::Iterator;

  /// The second list is one of a file with these bytes.
  ListComparison(const List& before, const List& after, std::string_view bytesAfter)
      : before_(before), after_(after), bytesAfter_(bytesAfter) {}

  void report(const ListName& name, ChangeReport& report) const {
    Iterator before = before_.begin();
    Iterator after = after_.begin();
    for (; before != Iterator() && after != Iterator(); ++before, ++after) {
      if (keyOf(*before) != keyOf(*after)) break;
      reportPair(name.element, *before, *after, report);
    }
    reportRest(name, before, after, report);
  }

 private:
  static void reportPair(Subject subject, const T& before, const T& after, ChangeReport& report) {
    if (!isSame(before, after)) report.changed(subject, keyOf(before), before, after);
  }

  void reportRest(const ListName& name, Iterator before, Iterator after,
                  ChangeReport& report) const {
    const ListElements<T> rest(bytesAfter_, after_, after);
    Matching matching(rest, [](const T& element) { return keyOf(element); });
    OrderCheck order;
    for (; before != Iterator(); ++before) {
      const auto position = matching.take(keyOf(*before));
      if (!position) {
        report.removed(name.element, keyOf(*before), *before);
        continue;
      }
      reportPair(name.element, *before, rest[*position], report);
      order.add(*position);
    }
    for (std::size_t i = 0; i < rest.size(); ++i) {
      if (matching.isLeft(i)) report.added(name.element, keyOf(rest[i]), rest[i]);
    }
    if (order.isReordered()) report.reordered(name.list, before_, after_);
  }

  List before_;
  List after_;
  std::string_view bytesAfter_;
};

}  // namespace consolidator::inspect
