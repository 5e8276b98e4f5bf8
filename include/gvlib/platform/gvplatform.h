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

}  // namespace gvplatform
