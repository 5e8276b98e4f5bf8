// The module-wide sort state, shared by the index sort and the array sorting.
#pragma once

#include <cstdint>

#include "gvlib/array/GVSort.h"

namespace gvlib::detail {

struct SortState {
    GVSWAPPROC swap = nullptr;
    GVCOMPAREPROC compare = nullptr;
    CGVArray* array = nullptr;
    int32_t ascending = 1;
};

/// One instance for the whole library, unguarded: sorting runs on one thread at a time.
extern SortState g_sortState;

}  // namespace gvlib::detail
