// Host configuration of the platform layer: what the Windows host supplied from
// its resources and settings, a Linux host supplies through these calls.
#pragma once

#include <cstdint>

#include "gvlib/platform/export.h"

namespace gvplatform {

/// Sets string-table entry `id` (what LoadString reads); a null text removes it.
/// As in a Windows string table, an empty text is the same as no entry.
GVLIB_API void SetStringResource(uint32_t id, char const* text);
/// Removes every string-table entry.
GVLIB_API void ClearStringResources();

/// The user's default locale (LOCALE_USER_DEFAULT, 0x400): 1033 until set.
GVLIB_API void SetUserDefaultLCID(uint32_t lcid);

/// Whether CompareStringA may skip common prefixes and compare plain text
/// through its weight tables (on until set). The answers are the same either
/// way; switching it off lets a test hold the shortcut against the full path.
GVLIB_API void SetCollationShortcuts(bool enabled);

/// The memory an input may make the library allocate, in bytes (2 GiB until
/// set, as in the 32-bit address space the saved data came from). A size read
/// from input (a length, a count, items times their size) that exceeds it
/// raises CMemoryException before anything is allocated.
GVLIB_API void SetMemoryBudget(uint64_t bytes);
/// The current memory budget in bytes.
GVLIB_API uint64_t MemoryBudget();

/// Strict loading (off until set): short or inconsistent input raises the
/// archive exception and leaves the target unchanged, instead of the
/// original's outcome (keep what arrived, zero the rest).
GVLIB_API void SetStrictLoading(bool strict);
/// Whether strict loading is on.
GVLIB_API bool StrictLoading();

}  // namespace gvplatform
