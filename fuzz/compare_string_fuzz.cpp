// CompareStringA on random triples: the order must be antisymmetric (a < b
// exactly when b > a) and transitive (a <= b and b <= c give a <= c), under any
// flags the function accepts and in each locale it knows.
#include <gvlib/gvlib.h>
#include <gvlib/platform/winnls.h>

#include <cstddef>
#include <cstdint>
#include <string>

namespace {

constexpr LCID kLocales[] = {LOCALE_USER_DEFAULT, LOCALE_INVARIANT, 1033, 1031, 1036, 1053, 1034};
constexpr DWORD kFlags[] = {NORM_IGNORECASE, NORM_IGNORENONSPACE, NORM_IGNORESYMBOLS, SORT_STRINGSORT};

// Splits the input at 0xFF bytes into three texts (which may hold NUL bytes).
void Split(uint8_t const* data, size_t size, std::string (&out)[3]) {
    size_t k = 0;
    for (size_t i = 0; i < size; ++i) {
        if (data[i] == 0xFF && k < 2)
            ++k;
        else
            out[k] += static_cast<char>(data[i]);
    }
}

int Cmp(LCID lcid, DWORD flags, std::string const& a, std::string const& b) {
    int r = CompareStringA(lcid, flags, a.data(), static_cast<int>(a.size()), b.data(), static_cast<int>(b.size()));
    if (r == 0)
        __builtin_trap();  // valid locale, flags and texts: never a failure
    return r - CSTR_EQUAL;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(uint8_t const* data, size_t size) {
    if (size < 2)
        return 0;
    LCID lcid = kLocales[data[0] % (sizeof kLocales / sizeof kLocales[0])];
    DWORD flags = 0;
    for (size_t i = 0; i < sizeof kFlags / sizeof kFlags[0]; ++i)
        if (data[1] & (1u << i))
            flags |= kFlags[i];
    std::string t[3];
    Split(data + 2, size - 2, t);
    for (int i = 0; i < 3; ++i) {
        if (Cmp(lcid, flags, t[i], t[i]) != 0)
            __builtin_trap();
        for (int j = 0; j < 3; ++j)
            if (Cmp(lcid, flags, t[i], t[j]) != -Cmp(lcid, flags, t[j], t[i]))
                __builtin_trap();
    }
    for (int a = 0; a < 3; ++a)
        for (int b = 0; b < 3; ++b)
            for (int c = 0; c < 3; ++c)
                if (Cmp(lcid, flags, t[a], t[b]) <= 0 && Cmp(lcid, flags, t[b], t[c]) <= 0 &&
                    Cmp(lcid, flags, t[a], t[c]) > 0)
                    __builtin_trap();
    return 0;
}
