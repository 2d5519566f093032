#pragma once

#include "inspect/diff/Change.h"

#include <optional>
#include <string_view>

namespace consolidator::inspect {

/// Makes changes of what is found in one kernel, or in the file itself, and hands them on.
class ChangeReport {
 public:
  ChangeReport(ChangeSink& sink, std::optional<std::string_view> kernel)
      : sink_(&sink), kernel_(kernel) {}

  void added(Subject subject, std::optional<std::string_view> name, const ChangeItem& item) {
    sink_->take({subject, kernel_, name, {}, item, {}});
  }

  void removed(Subject subject, std::optional<std::string_view> name, const ChangeItem& item) {
    sink_->take({subject, kernel_, name, item, {}, {}});
  }

  void changed(Subject subject, std::optional<std::string_view> name, const ChangeItem& before,
               const ChangeItem& after, std::optional<bool> bytesDiffer = {}) {
    sink_->take({subject, kernel_, name, before, after, bytesDiffer});
  }

  void reordered(std::string_view list, const KeyList& before, const KeyList& after) {
    changed(Subject::Order, list, before, after);
  }

 private:
  ChangeSink* sink_;
  std::optional<std::string_view> kernel_;
};

}  // namespace consolidator::inspect
