// Process-wide loading policy: the memory budget for sizes read from input
// and the strict-loading switch.
#include <atomic>

#include "gvlib/platform/gvplatform.h"

namespace gvplatform {
namespace {
std::atomic<uint64_t> budget{uint64_t{2} << 30};
std::atomic<bool> strict{false};
}  // namespace

void SetMemoryBudget(uint64_t bytes) { budget.store(bytes, std::memory_order_relaxed); }
uint64_t MemoryBudget() { return budget.load(std::memory_order_relaxed); }
void SetStrictLoading(bool on) { strict.store(on, std::memory_order_relaxed); }
bool StrictLoading() { return strict.load(std::memory_order_relaxed); }

}  // namespace gvplatform
