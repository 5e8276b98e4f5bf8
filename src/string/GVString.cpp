// CGVString: construction, element access and substrings.
#include "gvlib/string/GVString.h"

namespace {

// A platform result taken as C text: up to its first NUL.
CGVString UpToNul(CStringT<char> const& s) { return CGVString(s.GetString()); }

}  // namespace

CGVString::CGVString() = default;

CGVString::CGVString(CGVString const& other) : CGVObject(), CStringT<char>(other) {}

CGVString::CGVString(char ch, int nRepeat) : CStringT<char>(ch, nRepeat) {}

CGVString::CGVString(wchar_t const* text) : CStringT<char>(text) {}

CGVString::CGVString(char const* text) : CStringT<char>(text) {}

CGVString::~CGVString() = default;

CGVString const& CGVString::operator=(CGVString const& other) {
    CStringT<char>::operator=(other);
    return *this;
}

CGVString const& CGVString::operator=(char ch) {
    CStringT<char>::operator=(ch);
    return *this;
}

CGVString const& CGVString::operator=(unsigned char const* text) {
    CStringT<char>::operator=(text);
    return *this;
}

CGVString const& CGVString::operator=(wchar_t const* text) {
    CStringT<char>::operator=(text);
    return *this;
}

CGVString const& CGVString::operator=(char const* text) {
    CStringT<char>::operator=(text);
    return *this;
}

CGVString const& CGVString::operator+=(CGVString const& other) {
    CStringT<char>::operator+=(other);
    return *this;
}

CGVString const& CGVString::operator+=(char const* text) {
    CStringT<char>::operator+=(text);
    return *this;
}

char CGVString::GetAt(int i) const {
    if (i >= GetLength())
        return '\0';
    return CStringT<char>::GetAt(i);
}

char CGVString::operator[](int i) const {
    if (i >= GetLength())
        return '\0';
    return CStringT<char>::operator[](i);
}

void CGVString::SetAt(int i, char c) {
    if (i < GetLength())
        CStringT<char>::SetAt(i, c);
}

int CGVString::Compare(char const* text) const { return CStringT<char>::Compare(text); }

int CGVString::CompareNoCase(char const* text) const { return CStringT<char>::CompareNoCase(text); }

int CGVString::Collate(char const* text) const { return CStringT<char>::Collate(text); }

int CGVString::CollateNoCase(char const* text) const { return CStringT<char>::CollateNoCase(text); }

CGVString CGVString::Mid(int first) const { return UpToNul(CStringT<char>::Mid(first)); }

CGVString CGVString::Mid(int first, int count) const { return UpToNul(CStringT<char>::Mid(first, count)); }

CGVString CGVString::Left(int count) const { return UpToNul(CStringT<char>::Left(count)); }

CGVString CGVString::Right(int count) const { return UpToNul(CStringT<char>::Right(count)); }
