#pragma once

#include "inspect/Change.h"

#include <optional>
#include <string_view>
#include <utility>

namespace consolidator::inspect {

/// Makes changes of what is found in one kernel, or in the file itself, and hands them on.
class ChangeReport {
 public:
  ChangeReport(ChangeSink& sink, std::optional<std::string_view> kernel)
      : sink_(&sink), kernel_(kernel) {}

  void added(Subject subject, std::optional<std::string_view> name, ChangeItem item) {
    sink_->take({subject, kernel_, name, {}, std::move(item), {}});
  }

  void removed(Subject subject, std::optional<std::string_view> name, ChangeItem item) {
    sink_->take({subject, kernel_, name, std::move(item), {}, {}});
  }

  void changed(Subject subject, std::optional<std::string_view> name, ChangeItem before,
               ChangeItem after, std::optional<bool> bytesDiffer = {}) {
    sink_->take({subject, kernel_, name, std::move(before), std::move(after), bytesDiffer});
  }

  void reordered(std::string_view list, KeyList before, KeyList after) {
    changed(Subject::Order, list, std::move(before), std::move(after));
  }

 private:
  ChangeSink* sink_;
  std::optional<std::string_view> kernel_;
};

}  // namespace consolidator::inspect
