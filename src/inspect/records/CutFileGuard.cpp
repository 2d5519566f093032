#include "inspect/records/CutFileGuard.h"

#include <sys/mman.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdint>
#include <limits>

namespace consolidator::inspect {

struct CutFileGuard::Slot {
  std::atomic<bool> isTaken = false;
  std::atomic<std::uintptr_t> begin = 0;
  std::atomic<std::uintptr_t> end = 0;
  std::atomic<bool> wasCut = false;
};

namespace {

// A signal handler reaches nothing else.
// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables)
std::array<CutFileGuard::Slot, 8> slots;

bool mapZeros(std::uintptr_t address) {
  const auto pageSize = static_cast<std::uintptr_t>(::sysconf(_SC_PAGESIZE));
  // NOLINTNEXTLINE(performance-no-int-to-ptr): where to map, not what to read
  void* const page = reinterpret_cast<void*>(address / pageSize * pageSize);
  return ::mmap(page, pageSize, PROT_READ, MAP_PRIVATE | MAP_ANONYMOUS | MAP_FIXED, -1, 0) !=
         MAP_FAILED;
}

void onBusError(int signal, siginfo_t* info, void* /*context*/) {
  const auto address = reinterpret_cast<std::uintptr_t>(info->si_addr);
  for (CutFileGuard::Slot& slot : slots) {
    if (address >= slot.begin && address < slot.end && mapZeros(address)) {
      slot.wasCut = true;
      return;
    }
  }
  // The instruction is tried again and now ends the process.
  static_cast<void>(std::signal(signal, SIG_DFL));
}

void installHandler() {
  struct sigaction action = {};
  action.sa_sigaction = onBusError;
  action.sa_flags = SA_SIGINFO;
  ::sigaction(SIGBUS, &action, nullptr);
}

}  // namespace

CutFileGuard::CutFileGuard() {
  for (Slot& slot : slots) {
    if (slot.isTaken.exchange(true)) continue;
    slot_ = &slot;
    slot.wasCut = false;
    slot.begin = 0;
    slot.end = std::numeric_limits<std::uintptr_t>::max();
    installHandler();
    return;
  }
}

void CutFileGuard::guardOnly(std::string_view mapped) {
  if (slot_ == nullptr) return;
  const auto begin = reinterpret_cast<std::uintptr_t>(mapped.data());
  slot_->begin = begin;
  slot_->end = begin + mapped.size();
}

CutFileGuard::~CutFileGuard() {
  if (slot_ == nullptr) return;
  slot_->end = 0;
  slot_->isTaken = false;
}

bool CutFileGuard::wasCut() const { return slot_ != nullptr && slot_->wasCut; }

}  // namespace consolidator::inspect
