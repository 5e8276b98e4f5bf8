// Test builds only: the armed faults of the platform file layer.
#include <array>
#include <atomic>
#include <cstddef>

#include "platform/fault_injection.h"

namespace {

using gvplatform::faults::FileCall;

struct ArmedFault {
    std::atomic<int32_t> countdown{0};  // calls left before the failure; 0: none
    std::atomic<int> error{0};
};

std::array<ArmedFault, static_cast<std::size_t>(FileCall::count)> g_faults;
std::atomic<uint32_t> g_transferCap{0};

ArmedFault* Slot(FileCall call) noexcept {
    auto i = static_cast<std::size_t>(call);
    return i < g_faults.size() ? &g_faults[i] : nullptr;
}

}  // namespace

namespace gvplatform::faults {

void FailFileCall(FileCall call, int32_t nth, int error) noexcept {
    if (ArmedFault* slot = Slot(call)) {
        slot->error.store(error, std::memory_order_relaxed);
        slot->countdown.store(nth > 0 ? nth : 0, std::memory_order_relaxed);
    }
}

void LimitTransfer(uint32_t bytes) noexcept { g_transferCap.store(bytes, std::memory_order_relaxed); }

void ClearFileFaults() noexcept {
    for (ArmedFault& slot : g_faults)
        slot.countdown.store(0, std::memory_order_relaxed);
    LimitTransfer(0);
}

}  // namespace gvplatform::faults

namespace gvplatform::detail {

int InjectedFileError(faults::FileCall call) noexcept {
    ArmedFault* slot = Slot(call);
    if (slot == nullptr)
        return 0;
    int32_t left = slot->countdown.load(std::memory_order_relaxed);
    while (left > 0) {
        if (slot->countdown.compare_exchange_weak(left, left - 1, std::memory_order_relaxed))
            return left == 1 ? slot->error.load(std::memory_order_relaxed) : 0;
    }
    return 0;
}

unsigned CappedTransfer(unsigned bytes) noexcept {
    uint32_t cap = g_transferCap.load(std::memory_order_relaxed);
    return cap != 0 && bytes > cap ? cap : bytes;
}

}  // namespace gvplatform::detail
