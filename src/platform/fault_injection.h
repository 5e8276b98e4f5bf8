// Test builds only: arms failures of the platform allocator and the file layer,
// so that tests can prove what a caller sees when the machine fails.
#pragma once

#include <cstdint>

#include "gvlib/platform/export.h"

namespace gvplatform::faults {

/// The `nth` allocation from now (1 = the next) answers null; 0 disarms.
/// One failure only: later allocations succeed again, as after a transient shortage.
GVLIB_API void FailAllocation(int32_t nth) noexcept;
/// Whether the armed allocation failure has happened since it was armed.
GVLIB_API bool AllocationFailureFired() noexcept;

/// The file calls that can be made to fail.
enum class FileCall : int32_t { open, read, write, seek, stat, flush, close, count };

/// The `nth` call of kind `call` from now fails with errno `error`; 0 disarms it.
GVLIB_API void FailFileCall(FileCall call, int32_t nth, int error) noexcept;
/// Caps every read or write at `bytes` per system call (0: no cap), as a pipe,
/// a socket or a signal can.
GVLIB_API void LimitTransfer(uint32_t bytes) noexcept;
/// Disarms every file fault.
GVLIB_API void ClearFileFaults() noexcept;

}  // namespace gvplatform::faults

namespace gvplatform::detail {

/// The errno an armed fault gives the current call of kind `call`, or 0 to let it run.
int InjectedFileError(faults::FileCall call) noexcept;
/// `bytes`, cut down to the armed transfer cap.
unsigned CappedTransfer(unsigned bytes) noexcept;

}  // namespace gvplatform::detail
