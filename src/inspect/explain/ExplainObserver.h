#pragma once

#include "inspect/explain/ConditionWatch.h"
#include "inspect/explain/DoubtfulNets.h"
#include "inspect/explain/Explanation.h"
#include "inspect/explain/InstanceNets.h"
#include "inspect/explain/ObservedFiles.h"
#include "inspect/explain/Progress.h"
#include "model/KernelRecord.h"
#include "observer/RunObserver.h"

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace consolidator::inspect {

/// Collects what a run tells of itself.
class ExplainObserver final : public RunObserver {
 public:
  /// Everything but the files is added to the explanation; all must outlive this object.
  ExplainObserver(Explanation& explanation, const ObservedFiles& files, Progress& progress)
      : explanation_(explanation), files_(files), progress_(progress) {}

  /// The kernels of the run, whatever it does to them. To be told before the run.
  void watch(const KernelList& kernels) { kernels_ = &kernels; }

  /// To be called when the run is over: adds the registers that were never found.
  void finish(bool namesLogicLocations);

  void onInputBegin(InputKind kind, std::string_view path) override;
  void onInputEnd(const InputExtent& extent) override;
  void onSkipped(int error) override;
  void onRefused(std::string_view reason, const InputPlace& place) override;
  void onUnread(std::string_view reason) override;
  void onIgnored(std::string_view reason, std::uint64_t line) override;
  void onNet(std::string_view net, std::uint64_t line, std::size_t owners) override;
  void onProgress(std::uint64_t bytes) override;
  bool isEmptied(const std::string& path) override;
  void onGiven(std::string_view kernel, Item what, std::string_view name,
               std::uint64_t count) override;
  void onDropped(std::string_view kernel, Item what, std::string_view name, std::uint64_t count,
                 std::string_view reason) override;
  void onStoredSection(std::uint32_t kind, std::uint64_t offset, std::uint32_t size) override;
  void onLoss(std::string_view code, const std::string& message) override;
  void onCondition(const PreparedCondition& condition) override;
  void onSavedSection(std::uint32_t kind, std::uint64_t offset, std::uint32_t size,
                      bool isWritten) override;

 private:
  ExplainedInput& input() { return explanation_.inputs.back(); }

  void end(InputOutcome outcome, std::string reason);

  Explanation& explanation_;
  const ObservedFiles& files_;
  Progress& progress_;
  const KernelList* kernels_ = nullptr;
  bool isDecided_ = false;  // whether the outcome of the input is known before its end
  std::map<std::string, std::size_t, std::less<>> lossCounts_;
  std::map<std::string, std::size_t, std::less<>> droppedCounts_;  // of the input
  std::optional<InstanceNets> nets_;
  std::string hardwareName_;  // of the last net
  std::optional<DoubtfulNets> doubtful_;
  ConditionWatch conditions_;
};

}  // namespace consolidator::inspect
