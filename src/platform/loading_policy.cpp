// Process-wide loading policy: the memory budget for sizes read from input
// and the strict-loading switch.
#include "platform/loading_policy.h"

#include <atomic>
#include <cstdlib>
#include <istream>

#include "gvlib/platform/afxarchive.h"
#include "gvlib/platform/afxexcept.h"
#include "gvlib/platform/allocator.h"
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

namespace detail {

void ChargeInput(uint64_t count, uint64_t each) {
    uint64_t limit = MemoryBudget();
    if (limit < kBlockOverhead || (each != 0 && count > (limit - kBlockOverhead) / each))
        AfxThrowMemoryException();
}

char* ZeroedBlock(uint64_t bytes) {
    if (bytes == 0)
        return nullptr;
    ChargeInput(bytes);
    auto* block = static_cast<char*>(MemCalloc(static_cast<size_t>(bytes), 1));
    if (block == nullptr)
        AfxThrowMemoryException();
    return block;
}

void ThrowDamage(int cause, int64_t offset) {
    CArchiveException e(cause);
    e.m_lOffset = offset;
    throw e;
}

int64_t LoadOffset(CArchive const& ar) { return ar.GetLoadOffset(); }

int64_t LoadOffset(std::istream& is) {
    // tellg answers -1 on a failed stream, so ask with the state cleared and put
    // the state back for the caller.
    std::ios::iostate state = is.rdstate();
    is.clear();
    auto offset = static_cast<int64_t>(is.tellg());
    is.clear(state);
    return offset;
}

}  // namespace detail
}  // namespace gvplatform
