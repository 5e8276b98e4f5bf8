// CompareStringA: locale comparison of Windows-1252 text through ICU collation,
// shaped into the Windows word sort; and the user's default locale.
#include <unicode/ucol.h>

#include <atomic>
#include <climits>
#include <cstdint>
#include <cstring>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "gvlib/platform/gvplatform.h"
#include "gvlib/platform/winnls.h"
#include "platform/codepage.h"
#include "platform/collation_weights.h"
#include "platform/lcid_collation.h"

namespace {

constexpr LCID kEnglishUnitedStates = 1033;
std::atomic<uint32_t> g_userDefaultLcid{kEnglishUnitedStates};
std::atomic<bool> g_shortcuts{true};

// Kana type and width cannot differ in Windows-1252 text: those flags change nothing.
constexpr DWORD kSupportedFlags = NORM_IGNORECASE | NORM_IGNORENONSPACE | NORM_IGNORESYMBOLS |
                                  NORM_IGNOREKANATYPE | NORM_IGNOREWIDTH | SORT_STRINGSORT;
// The flags that shape the collator itself; the others act around it.
constexpr DWORD kCollatorFlags = NORM_IGNORECASE | NORM_IGNORENONSPACE | NORM_IGNORESYMBOLS;

bool IsDefaultAlias(LCID lcid) {
    return lcid == LOCALE_NEUTRAL || lcid == LOCALE_USER_DEFAULT || lcid == LOCALE_SYSTEM_DEFAULT;
}

LCID ResolveLcid(LCID lcid) {
    if (!IsDefaultAlias(lcid))
        return lcid;
    const LCID user = g_userDefaultLcid.load(std::memory_order_relaxed);
    return IsDefaultAlias(user) ? kEnglishUnitedStates : user;
}

// ---- collators -----------------------------------------------------------------------

struct CollatorCloser {
    void operator()(UCollator* c) const noexcept { ucol_close(c); }
};
using CollatorPtr = std::unique_ptr<UCollator, CollatorCloser>;

void SetAttribute(UCollator* c, UColAttribute attribute, UColAttributeValue value, UErrorCode& err) {
    ucol_setAttribute(c, attribute, value, &err);
}

CollatorPtr OpenCollator(const std::string& locale, DWORD flags) {
    UErrorCode err = U_ZERO_ERROR;
    CollatorPtr c(ucol_open(locale.c_str(), &err));
    if (U_FAILURE(err) || !c)
        return nullptr;
    const bool ignoreCase = (flags & NORM_IGNORECASE) != 0;
    const bool ignoreAccents = (flags & NORM_IGNORENONSPACE) != 0;
    UColAttributeValue strength = UCOL_TERTIARY;
    if (ignoreAccents)
        strength = UCOL_PRIMARY;
    else if (ignoreCase)
        strength = UCOL_SECONDARY;
    SetAttribute(c.get(), UCOL_STRENGTH, strength, err);
    // Ignoring accents alone still tells 'a' from 'A'.
    SetAttribute(c.get(), UCOL_CASE_LEVEL, ignoreAccents && !ignoreCase ? UCOL_ON : UCOL_OFF, err);
    if (flags & NORM_IGNORESYMBOLS) {
        // Shifted up to the currency signs: spaces, punctuation and every symbol drop out.
        SetAttribute(c.get(), UCOL_ALTERNATE_HANDLING, UCOL_SHIFTED, err);
        ucol_setMaxVariable(c.get(), UCOL_REORDER_CODE_CURRENCY, &err);
    } else {
        SetAttribute(c.get(), UCOL_ALTERNATE_HANDLING, UCOL_NON_IGNORABLE, err);
    }
    return U_SUCCESS(err) ? std::move(c) : nullptr;
}

// One collator per (locale, flags), opened on first use and kept for the life of the
// process: comparisons run inside sorts and must not open one each. ICU collators
// may be shared between threads for comparing; the lock guards only the map, and
// the last entry used is remembered so that a sort takes no lock at all.
struct CachedSort {
    uint64_t key;
    CollatorPtr collator;
    std::unique_ptr<gvplatform::detail::CollationWeights> weights;
};

// The entry used last, for a sort that asks the same locale again and again.
// Entries are never removed, so the pointer stays valid.
std::atomic<const CachedSort*> g_lastSort{nullptr};

const CachedSort* CachedCollator(LCID lcid, DWORD flags) {
    const uint64_t key = (static_cast<uint64_t>(lcid) << 32) | (flags & kCollatorFlags);
    const CachedSort* last = g_lastSort.load(std::memory_order_acquire);
    if (last != nullptr && last->key == key)
        return last;

    static std::mutex mutex;
    static std::map<uint64_t, CachedSort> cache;
    std::lock_guard<std::mutex> lock(mutex);
    auto it = cache.find(key);
    if (it == cache.end()) {
        std::string locale;
        if (!gvplatform::detail::CollationLocaleForLcid(lcid, locale))
            return nullptr;  // not cached: unknown locales cannot fill the map
        CollatorPtr c = OpenCollator(locale, flags);
        if (!c)
            return nullptr;
        auto weights = gvplatform::detail::CollationWeights::Build(c.get());
        it = cache.emplace(key, CachedSort{key, std::move(c), std::move(weights)}).first;
    }
    g_lastSort.store(&it->second, std::memory_order_release);
    return &it->second;
}

// ---- word sort -------------------------------------------------------------------------

// Hyphen and apostrophe in the word sort: left out of the main comparison and
// remembered by position, to break an otherwise equal tie.
struct SpecialMark {
    int32_t position;
    int32_t weight;  // apostrophe before hyphen
    bool operator<(const SpecialMark& o) const {
        return position != o.position ? position < o.position : weight < o.weight;
    }
    bool operator==(const SpecialMark& o) const { return position == o.position && weight == o.weight; }
};

int32_t SpecialWeight(unsigned char byte) {
    if (byte == '\'')
        return 1;
    if (byte == '-')
        return 2;
    return 0;
}

// Decodes Windows-1252 to UTF-16 into `units` (which only ever grows, so a
// comparison inside a sort allocates nothing); with `marks`, hyphens and
// apostrophes go there instead. Answers the number of units written.
int32_t Decode(const char* text, int32_t count, std::vector<char16_t>& units, std::vector<SpecialMark>* marks) {
    const char16_t* table = gvplatform::detail::Cp1252ToUtf16Table().data();
    if (units.size() < static_cast<std::size_t>(count))
        units.resize(static_cast<std::size_t>(count));
    char16_t* const begin = units.data();
    char16_t* out = begin;
    const auto* bytes = reinterpret_cast<const unsigned char*>(text);
    if (marks == nullptr) {
        for (int32_t i = 0; i < count; ++i)
            out[i] = table[bytes[i]];
        return count;
    }
    marks->clear();
    for (int32_t i = 0; i < count; ++i) {
        const unsigned char byte = bytes[i];
        if (byte == '\'' || byte == '-')
            marks->push_back({i, SpecialWeight(byte)});
        else
            *out++ = table[byte];
    }
    return static_cast<int32_t>(out - begin);
}

// The tie-break: no marks first, then mark by mark, a shorter list before a longer.
int CompareMarks(const std::vector<SpecialMark>& a, const std::vector<SpecialMark>& b) {
    for (std::size_t i = 0; i < a.size() && i < b.size(); ++i) {
        if (!(a[i] == b[i]))
            return a[i] < b[i] ? CSTR_LESS_THAN : CSTR_GREATER_THAN;
    }
    if (a.size() == b.size())
        return CSTR_EQUAL;
    return a.size() < b.size() ? CSTR_LESS_THAN : CSTR_GREATER_THAN;
}

int ToCstr(UCollationResult r) {
    if (r == UCOL_LESS)
        return CSTR_LESS_THAN;
    return r == UCOL_EQUAL ? CSTR_EQUAL : CSTR_GREATER_THAN;
}

// A negative count means NUL-terminated; answers -1 for text too long to count.
// Most texts compared are words: a plain loop measures them before the
// library call would have set up.
int32_t CountOf(const char* text, int count) {
    if (count >= 0)
        return count;
    for (int32_t i = 0; i < 32; ++i)
        if (text[i] == '\0')
            return i;
    const std::size_t length = std::strlen(text);
    return length > static_cast<std::size_t>(INT32_MAX) ? -1 : static_cast<int32_t>(length);
}

// The length of the common prefix that can be left out: it ends just after a
// byte that collates the same whatever follows it.
int32_t SkippablePrefix(const unsigned char* a, const unsigned char* b, int32_t n,
                        const gvplatform::detail::CollationWeights& weights) {
    if (!weights.CanSkipPrefix())
        return 0;
    int32_t i = 0;
    while (i < n && a[i] == b[i])
        ++i;
    while (i > 0 && !weights.IsSafeEnd(a[i - 1]))
        --i;
    return i;
}

int Fail(DWORD error) {
    SetLastError(error);
    return 0;
}

}  // namespace

// ---- Win32 interface -------------------------------------------------------------------

namespace gvplatform {

void SetUserDefaultLCID(uint32_t lcid) { g_userDefaultLcid.store(lcid, std::memory_order_relaxed); }

void SetCollationShortcuts(bool enabled) { g_shortcuts.store(enabled, std::memory_order_relaxed); }

}  // namespace gvplatform

LCID GetUserDefaultLCID() { return ResolveLcid(LOCALE_USER_DEFAULT); }

LCID GetSystemDefaultLCID() { return ResolveLcid(LOCALE_SYSTEM_DEFAULT); }

int CompareStringA(LCID Locale, DWORD dwCmpFlags, LPCSTR lpString1, int cchCount1, LPCSTR lpString2, int cchCount2) {
    if (!lpString1 || !lpString2)
        return Fail(ERROR_INVALID_PARAMETER);
    if ((dwCmpFlags & ~kSupportedFlags) != 0)
        return Fail(ERROR_INVALID_FLAGS);
    const int32_t count1 = CountOf(lpString1, cchCount1);
    const int32_t count2 = CountOf(lpString2, cchCount2);
    if (count1 < 0 || count2 < 0)
        return Fail(ERROR_INVALID_PARAMETER);
    const CachedSort* sort = CachedCollator(ResolveLcid(Locale), dwCmpFlags);
    if (!sort)
        return Fail(ERROR_INVALID_PARAMETER);
    const auto* bytes1 = reinterpret_cast<const unsigned char*>(lpString1);
    const auto* bytes2 = reinterpret_cast<const unsigned char*>(lpString2);
    const bool shortcuts = g_shortcuts.load(std::memory_order_relaxed);
    const int32_t skip =
        shortcuts ? SkippablePrefix(bytes1, bytes2, count1 < count2 ? count1 : count2, *sort->weights) : 0;
    // Ignoring symbols drops hyphen and apostrophe with the rest; the string sort
    // keeps them as ordinary symbols. Only the word sort sets them apart.
    const bool wordSort = (dwCmpFlags & (SORT_STRINGSORT | NORM_IGNORESYMBOLS)) == 0;
    const int fast =
        shortcuts ? sort->weights->Compare(bytes1 + skip, count1 - skip, bytes2 + skip, count2 - skip, wordSort) : 0;
    if (fast != 0)
        return fast;
    // One block per thread, so that a comparison inside a sort allocates nothing.
    thread_local struct {
        std::vector<char16_t> units1, units2;
        std::vector<SpecialMark> marks1, marks2;
    } scratch;
    auto& units1 = scratch.units1;
    auto& units2 = scratch.units2;
    auto& marks1 = scratch.marks1;
    auto& marks2 = scratch.marks2;
    const int32_t n1 = Decode(lpString1 + skip, count1 - skip, units1, wordSort ? &marks1 : nullptr);
    const int32_t n2 = Decode(lpString2 + skip, count2 - skip, units2, wordSort ? &marks2 : nullptr);
    const UCollationResult main = ucol_strcoll(sort->collator.get(), reinterpret_cast<const UChar*>(units1.data()),
                                               n1, reinterpret_cast<const UChar*>(units2.data()), n2);
    if (main != UCOL_EQUAL || !wordSort)
        return ToCstr(main);
    // Marks in the skipped prefix stand at the same places on both sides.
    return CompareMarks(marks1, marks2);
}
