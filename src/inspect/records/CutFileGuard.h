#pragma once

#include <atomic>
#include <cstddef>
#include <string_view>

namespace consolidator::inspect {

/// Keeps the process alive when a mapped file is made shorter while it is read. The system sends
/// SIGBUS for a page that is gone; while a guard lives, such a page reads as zeros instead, and the
/// guard remembers it. SIGBUS for an address that nothing guards ends the process as always.
///
/// A few guards may live at a time; one too many guards nothing (see isGuarding()).
class CutFileGuard {
 public:
  /// Guards all addresses, until it is told which ones: a file may be cut while it is opened.
  CutFileGuard();
  CutFileGuard(const CutFileGuard&) = delete;
  CutFileGuard& operator=(const CutFileGuard&) = delete;
  ~CutFileGuard();

  /// Guards these mapped bytes alone, which must outlive the guard.
  void guardOnly(std::string_view mapped);

  bool isGuarding() const { return slot_ != nullptr; }

  /// Whether a page was gone when it was read.
  bool wasCut() const;

  struct Slot;

 private:
  Slot* slot_ = nullptr;
};

}  // namespace consolidator::inspect
