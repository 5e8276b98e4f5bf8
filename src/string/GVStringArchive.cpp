// CGVString's binary archive form: the framework's counted string.
#include "gvlib/platform/afxarchive.h"
#include "gvlib/string/GVString.h"

void CGVString::Serialize(CArchive& ar) {
    if (ar.IsLoading())
        ar >> static_cast<CStringT<char>&>(*this);
    else
        ar << static_cast<CStringT<char> const&>(*this);
}
