// CGVPath: URLs as text: schemes, hosts, legal characters, file URLs and
// comparison.
#include "gvlib/path/GVPath.h"

#include "path/path_internal.h"

using gvpath::detail::InSet;
using gvpath::detail::IsDelimiter;
using gvpath::detail::LEGAL_URL_CHARACTERS;
using gvpath::detail::URL_DOUBLE_SLASH;

namespace {

// The form CompareURL compares: no surrounding white space, no scheme, and
// without one trailing delimiter.
CGVPath ComparableURL(CGVPath url) {
    url.Trim();
    url.TrimURLScheme();
    int n = url.GetLength();
    if (n > 0 && IsDelimiter(url.GetAt(n - 1)))
        url.TrimRight(n - 1);
    return url;
}

}  // namespace

// ---- Schemes --------------------------------------------------------------------------
// Three rules find a scheme and they differ on purpose: IsURL wants the first ":"
// at 3 or later, GetURLScheme at 2 or later, and FindURLSchemeDelimiter also
// wants no path delimiter in front of it.

CGVString CGVPath::GetURLScheme() const {
    int colon = Find(CHAR_URL_SCHEME_DELIMITER);
    if (colon < 2)
        return CGVString();
    CGVString scheme = Left(colon);
    scheme.MakeLower();
    return scheme;
}

int CGVPath::FindURLSchemeDelimiter() const {
    int delimiter = FindPathDelimiter();
    int colon = Find(CHAR_URL_SCHEME_DELIMITER);
    if (delimiter >= 0 && delimiter < colon)
        return -1;
    return colon < 2 ? -1 : colon;
}

void CGVPath::TrimURLScheme() {
    int end = FindURLSchemeDelimiter();
    // Without a scheme (end -1) a leading "//" matches too and goes.
    if (Find(URL_DOUBLE_SLASH) == end + 1)
        end += 2;
    if (end >= 0)
        TrimLeft(end + 1);
}

// ---- Parts ----------------------------------------------------------------------------

CGVString CGVPath::GetURLHost() const {
    CGVPath host(*this);
    host.TrimURLScheme();
    int delimiter = host.FindPathDelimiter();
    if (delimiter > 0)
        host.TrimRight(delimiter);
    return CGVString(host);
}

CGVPath CGVPath::GetURLName() const { return CGVPath(*this).GetName(); }

CGVPath CGVPath::GetURLDirectory() const { return CGVPath(*this).GetDirectory(); }

// ---- Legal characters -------------------------------------------------------------------

CGVString CGVPath::GetLegalURLCharacters() const { return LEGAL_URL_CHARACTERS; }

int CGVPath::IsLegalURL(char const* /*unused*/) const {
    // Only what follows the first ":" is examined; without one, everything.
    char const* text = GetString();
    for (int i = Find(CHAR_URL_SCHEME_DELIMITER) + 1, n = GetLength(); i < n; ++i) {
        if (!InSet(LEGAL_URL_CHARACTERS, text[i]))
            return 0;
    }
    return 1;
}

int CGVPath::MakeLegalURL(char const* scheme, int /*unused*/) {
    if (scheme != nullptr) {
        // Put in front unexamined: a text with a scheme gets a second one.
        CGVString url(scheme);
        url += URL_SCHEME_DELIMITER;
        url += *this;
        CGVString::operator=(url);
    }
    int start = Find(CHAR_URL_SCHEME_DELIMITER) + 1;
    PrivateReplaceCharacters(LEGAL_URL_CHARACTERS, '-', 1, start);
    return 1;
}

CGVPath CGVPath::CreateFileScheme() {
    CGVPath url(URL_SCHEME_FILE + URL_SCHEME_DELIMITER);
    // A UNC path brings its own two leading slashes; a drive path gets a third.
    if (!IsUNCSpecified())
        url += CHAR_URL_PATH_DELIMITER;
    CGVString rest(*this);
    rest.Replace(CHAR_PATH_DELIMITER, CHAR_URL_PATH_DELIMITER);
    url += rest;
    return url;
}

// ---- Comparison ---------------------------------------------------------------------------

int CGVPath::CompareURL(char const* other) const {
    CGVPath theirs(other);
    int order = ComparableURL(theirs).CompareNoCase(ComparableURL(*this));
    if (order != 0)
        return order;
    // The schemes come from the texts as given, before any trimming.
    CGVString theirScheme = theirs.GetURLScheme();
    CGVString ourScheme = GetURLScheme();
    if (theirScheme.CompareNoCase(ourScheme) == 0)
        return 0;
    if (ourScheme.IsEmpty() && theirScheme.CompareNoCase(DEFAULT_URL_SCHEME) == 0)
        return 0;
    if (theirScheme.IsEmpty() && ourScheme.CompareNoCase(DEFAULT_URL_SCHEME) == 0)
        return 0;
    return -1;
}
