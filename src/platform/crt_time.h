// Internal: the original runtime's strftime, which the date text calls.
#pragma once

#include <cstddef>
#include <ctime>

namespace gvplatform::detail {

/// strftime as the original runtime wrote it. In the "C" locale %c is
/// "%m/%d/%y %H:%M:%S" (03/05/24 14:07:09), not the POSIX "Tue Mar  5 ...";
/// %x, %X, %p and the names already agree. Under any other LC_TIME locale the
/// host's own forms are used. Answers the length written, or 0 (with an empty
/// text when size allows) when the result does not fit.
std::size_t CrtStrftime(char* buffer, std::size_t size, const char* format, const std::tm* time);

}  // namespace gvplatform::detail

#include <cstdint>

#include "gvlib/platform/crttime.h"

namespace gvplatform::detail {

/// The local broken-down time of t as _localtime32 gives it, without the copy
/// into the per-thread block; null where _localtime32 answers null. The
/// pointer stays valid until the thread's next time call.
const std::tm* LocalFieldsOf(__time32_t t);

}  // namespace gvplatform::detail
