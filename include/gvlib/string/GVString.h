// CGVString: the library's narrow text value, both a value object and a counted string.
#pragma once

#include <cstdint>

#include "gvlib/core/GVObject.h"
#include "gvlib/platform/afxstr.h"
#include "gvlib/platform/export.h"

/// Narrow (Windows-1252) text. Copies share storage until one changes. Element
/// access past the end answers NUL instead of failing: GetAt(GetLength()) is '\0'
/// and SetAt(GetLength(), 'x') does nothing; a negative index still raises
/// CInvalidArgException. The 30 comparison operators use byte order (Compare);
/// only mCompare uses the collation locale gvSortLCID.
class GVLIB_API CGVString : public CGVObject, public CStringT<char> {
public:
    CGVString();
    CGVString(CGVString const& other);
    CGVString(char ch, int nRepeat);
    CGVString(wchar_t const* text);
    CGVString(char const* text);
    ~CGVString() override;

    CGVString const& operator=(CGVString const& other);
    CGVString const& operator=(char ch);
    CGVString const& operator=(unsigned char const* text);
    CGVString const& operator=(wchar_t const* text);
    CGVString const& operator=(char const* text);
    CGVString const& operator+=(CGVString const& other);
    CGVString const& operator+=(char ch) {
        CStringT<char>::AppendChar(ch);
        return *this;
    }
    CGVString const& operator+=(char const* text);

    char GetAt(int i) const;
    char operator[](int i) const;
    void SetAt(int i, char c);

    int Compare(char const* text) const;
    int CompareNoCase(char const* text) const;
    int Collate(char const* text) const;
    int CollateNoCase(char const* text) const;

    /// Substrings as the platform string clamps them, cut at the first NUL.
    CGVString Mid(int first) const;
    CGVString Mid(int first, int count) const;
    CGVString Left(int count) const;
    CGVString Right(int count) const;

    // Comparisons by Compare, answering 1 or 0. Non-const, so that for a
    // non-const left side they win over the free forms without ambiguity.
    int operator==(CGVString const& right);
    int operator!=(CGVString const& right);
    int operator<(CGVString const& right);
    int operator>(CGVString const& right);
    int operator<=(CGVString const& right);
    int operator>=(CGVString const& right);
    int operator==(char const* right);
    int operator!=(char const* right);
    int operator<(char const* right);
    int operator>(char const* right);
    int operator<=(char const* right);
    int operator>=(char const* right);

    // Value-object slots. mClear is not supplied: clearing leaves the text.
    CGVObject* mCopy() const override;
    CGVObject* mNew() const override;
    /// Copies the text of a CGVString (or CGVPath); other classes change nothing.
    CGVObject& operator=(CGVObject const& other) override;
    /// Locale order under gvSortLCID: -1, 0, 1; -2 when the locale comparison
    /// fails; -1 for an object of another class.
    int32_t mCompare(CGVObject const* other) const override;
    int32_t mVisit(CGVObjectVisitor* visitor, int32_t param) override;
    void mConvertFromDBVariant(CDBVariant const& variant) override;
    void mConvertFromOleVariant(COleVariant const& variant) override;
    /// Gives a VT_BSTR holding the narrow bytes unconverted.
    void mConvertToOleVariant(COleVariant* variant) const override;
    /// "T", the length before the first NUL, a space, the text, a space.
    void Serialize(std::ostream& os) override;
    void Serialize(std::istream& is) override;
    /// The framework's counted-string form; embedded NULs are kept.
    void Serialize(CArchive& ar) override;
    using CGVObject::mNew;
};

GVLIB_API int operator==(CGVString const& left, CGVString const& right);
GVLIB_API int operator!=(CGVString const& left, CGVString const& right);
GVLIB_API int operator<(CGVString const& left, CGVString const& right);
GVLIB_API int operator>(CGVString const& left, CGVString const& right);
GVLIB_API int operator<=(CGVString const& left, CGVString const& right);
GVLIB_API int operator>=(CGVString const& left, CGVString const& right);
GVLIB_API int operator==(CGVString const& left, char const* right);
GVLIB_API int operator!=(CGVString const& left, char const* right);
GVLIB_API int operator<(CGVString const& left, char const* right);
GVLIB_API int operator>(CGVString const& left, char const* right);
GVLIB_API int operator<=(CGVString const& left, char const* right);
GVLIB_API int operator>=(CGVString const& left, char const* right);
GVLIB_API int operator==(char const* left, CGVString const& right);
GVLIB_API int operator!=(char const* left, CGVString const& right);
GVLIB_API int operator<(char const* left, CGVString const& right);
GVLIB_API int operator>(char const* left, CGVString const& right);
GVLIB_API int operator<=(char const* left, CGVString const& right);
GVLIB_API int operator>=(char const* left, CGVString const& right);

/// Concatenations, each cut at the first NUL of the joined text.
GVLIB_API CGVString operator+(CGVString const& left, CGVString const& right);
GVLIB_API CGVString operator+(CGVString const& left, char right);
GVLIB_API CGVString operator+(char left, CGVString const& right);
GVLIB_API CGVString operator+(CGVString const& left, char const* right);
GVLIB_API CGVString operator+(char const* left, CGVString const& right);

extern "C" {
/// The Windows locale identifier that CGVString::mCompare collates by; 1033 at load.
GVLIB_API extern uint32_t gvSortLCID;
/// Sets gvSortLCID for every later string comparison and sort.
GVLIB_API void GVSetSortLCID(uint32_t lcid);
}
