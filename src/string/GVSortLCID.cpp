// The collation locale shared by every string comparison. A plain global, as the
// host may read it directly; it is not guarded by a lock.
#include "gvlib/string/GVString.h"

uint32_t gvSortLCID = 1033;

void GVSetSortLCID(uint32_t lcid) { gvSortLCID = lcid; }
