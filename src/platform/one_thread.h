// Whether the process runs a single thread, for the counts and lists that
// may then skip their locked operations.
#pragma once

#if __has_include(<sys/single_threaded.h>)
#include <sys/single_threaded.h>
#define GVLIB_KNOWS_SINGLE_THREADED 1
#endif

namespace gvplatform::detail {

/// True while no other thread can see what this one touches. The C library
/// clears its flag for good before a second thread starts (the standard
/// library's shared pointers rely on the same); without the flag the answer
/// is always no.
inline bool OneThread() noexcept {
#ifdef GVLIB_KNOWS_SINGLE_THREADED
    return __libc_single_threaded != 0;
#else
    return false;
#endif
}

}  // namespace gvplatform::detail
