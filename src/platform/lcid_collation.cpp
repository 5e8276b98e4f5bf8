// Windows locale identifiers to ICU collations. ICU's own LCID table covers
// most identifiers; the rows below are the sorts where the platform's order is
// not ICU's default for the locale it names.
#include "platform/lcid_collation.h"

#include <unicode/uloc.h>

#include <iterator>

#include "gvlib/platform/winnls.h"

namespace gvplatform::detail {
namespace {

struct TailoredSort {
    uint32_t lcid;
    const char* locale;
};

// The platform kept the older Nordic order, in which v and w are one letter
// at the primary level ("vb" after "wa"); ICU keeps it as the traditional
// collation. The Hungarian technical sort gives the double letters (cs, gy,
// sz, ...) no place of their own, which is the root order; ICU knows the
// identifier only by its language. The Georgian modern sort is ICU's default.
// Spanish traditional (1034) and German phone book (0x10407) ICU maps itself.
constexpr TailoredSort kTailoredSorts[] = {
    {0x041D, "sv_SE@collation=traditional"},  // Swedish
    {0x081D, "sv_FI@collation=traditional"},  // Swedish (Finland)
    {0x040B, "fi_FI@collation=traditional"},  // Finnish
    {0x1040E, ""},                            // Hungarian, technical sort
    {0x10437, "ka_GE"},                       // Georgian, modern sort
};

}  // namespace

bool CollationLocaleForLcid(uint32_t lcid, std::string& locale) {
    if (lcid == LOCALE_INVARIANT) {
        locale.clear();  // the root collation, not ICU's en_US_POSIX
        return true;
    }
    for (const TailoredSort& row : kTailoredSorts) {
        if (row.lcid == lcid) {
            locale = row.locale;
            return true;
        }
    }
    // ICU falls back on the language alone for an identifier it does not know
    // (0x3039 gives Hindi), which the platform would refuse, so only one that
    // ICU maps back to itself counts as known.
    char name[ULOC_FULLNAME_CAPACITY];
    UErrorCode err = U_ZERO_ERROR;
    const int32_t length = uloc_getLocaleForLCID(lcid, name, sizeof name, &err);
    if (U_FAILURE(err) || err == U_STRING_NOT_TERMINATED_WARNING || length <= 0 || uloc_getLCID(name) != lcid)
        return false;
    locale.assign(name, static_cast<std::size_t>(length));
    return true;
}

}  // namespace gvplatform::detail
