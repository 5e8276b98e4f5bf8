// The index sort and the module-wide sort state shared by every array.
#pragma once

#include <cstdint>

#include "gvlib/platform/export.h"

class CGVArray;

/// 1 sorts ascending; every other value sorts descending.
enum SORTORDER : int32_t { SORT_DESCENDING = 0, SORT_ASCENDING = 1 };

/// Exchanges the elements at two indexes.
typedef void (*GVSWAPPROC)(uint32_t i, uint32_t j);
/// Negative, 0 or positive as the element at i sorts before, with or after the one at j.
typedef int32_t (*GVCOMPAREPROC)(uint32_t i, uint32_t j);
/// A comparator in the C runtime's style: 0 on a match.
typedef int (*GVSEARCHPROC)(void const* item, void const* key);

/// Sorts the elements 0 .. count-1 that the callbacks address by index. The
/// sequence of callback calls is part of the contract: callers may log or
/// replay it. Not stable, not re-entrant (the callbacks are module-wide state).
/// 3, 1, 2 ⇒ compare(0,1) swap(0,1) compare(1,2) swap(1,2) compare(0,1).
/// A count of 0 calls nothing and leaves the stored callbacks as they were.
GVLIB_API void qsortplusplus(uint32_t count, GVSWAPPROC swap, GVCOMPAREPROC compare);

// The module-wide sort state. Callbacks keep those of the last non-empty sort;
// the array is set only while CGVArray::mSort runs; the direction (1 ascending,
// 0 descending) starts at 1 and keeps the value of the last mSort.
GVLIB_API GVSWAPPROC GVGetSortSwapProc();
GVLIB_API GVCOMPAREPROC GVGetSortCompareProc();
GVLIB_API CGVArray* GVGetSortArray();
GVLIB_API int32_t GVGetSortDirection();
