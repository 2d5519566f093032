#pragma once

#include "inspect/command/Command.h"
#include "inspect/listing/FindQuery.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace consolidator::inspect {

class FindReport;

/// Finds a variable, a register or a kernel by its name, and what is at a location.
class FindCommand : public Command {
 public:
  void declare(Options& options) override;
  Status run(Console& console) override;

  std::string_view documentFormat() const override { return "consolidator-find/1"; }

 private:
  /// What a search of all kernels came to.
  struct Outcome {
    std::uint64_t count = 0;
    std::optional<consolidated::Fault> fault;  // that ended the reading early
  };

  static Outcome find(const ConsolidatedInput& input, const FindQuery& query, FindReport& report);
  Outcome writeDocument(Console& console, const ConsolidatedInput& input,
                        const FindQuery& query) const;

  std::string path_;
  std::string wanted_;
};

}  // namespace consolidator::inspect
