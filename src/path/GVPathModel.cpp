// CGVPath: the constants, construction, delimiter searches, prefix tests and
// file-type tests.
#include "gvlib/path/GVPath.h"

#include "path/path_internal.h"

using gvpath::detail::IsDelimiter;
using gvpath::detail::IsSpace;

// ---- Constants ----------------------------------------------------------------------
// Every constant string lives in this file: within one translation unit they are
// constructed in the order written, the class's public ones first, then the
// implementation's, as the host has always seen them built at load.

char const CGVPath::CHAR_PATH_DELIMITER;
char const CGVPath::CHAR_UNIX_DELIMITER;
char const CGVPath::CHAR_TYPE_DELIMITER;
char const CGVPath::CHAR_DISK_DELIMITER;
char const CGVPath::CHAR_URL_SCHEME_DELIMITER;
char const CGVPath::CHAR_URL_PATH_DELIMITER;

CGVString const CGVPath::FILE_PATH_DELIMITER("\\");
CGVString const CGVPath::FILE_UNIX_DELIMITER("/");
CGVString const CGVPath::FILE_TYPE_DELIMITER(".");
CGVString const CGVPath::FILE_DISK_DELIMITER(":");
CGVString const CGVPath::FILE_WILDCARD("*.*");
CGVString const CGVPath::FILE_CURRENT_DIR(".");
CGVString const CGVPath::FILE_PARENT_DIR("..");
CGVString const CGVPath::EXTENSION_URL("URL");
CGVString const CGVPath::EXTENSION_PIF("PIF");
CGVString const CGVPath::EXTENSION_LNK("LNK");
CGVString const CGVPath::EXTENSION_COM("COM");
CGVString const CGVPath::EXTENSION_BAT("BAT");
CGVString const CGVPath::EXTENSION_EXE("EXE");
CGVString const CGVPath::EXTENSION_JAR("JAR");
CGVString const CGVPath::EXTENSION_CLASS("CLASS");
CGVString const CGVPath::EXTENSION_SSF("SSF");
CGVString const CGVPath::EXTENSION_SSX("SSX");
CGVString const CGVPath::EXTENSION_XML("XML");
CGVString const CGVPath::URL_SCHEME_FTP("ftp");
CGVString const CGVPath::URL_SCHEME_MAILTO("mailto");
CGVString const CGVPath::URL_SCHEME_NEWS("news");
CGVString const CGVPath::URL_SCHEME_NNTP("nntp");
CGVString const CGVPath::URL_SCHEME_TELNET("telnet");
CGVString const CGVPath::URL_SCHEME_GOPHER("gopher");
CGVString const CGVPath::URL_SCHEME_HTTP("http");
CGVString const CGVPath::URL_SCHEME_FILE("file");
CGVString const CGVPath::URL_SCHEME_DELIMITER("://");
// A reference bound to an object of static storage is a constant: it is set
// before any constructor of this file runs.
CGVString const& CGVPath::DEFAULT_URL_SCHEME = CGVPath::URL_SCHEME_HTTP;

namespace gvpath::detail {

CGVString const URL_DOUBLE_SLASH("//");
CGVString const SPACE_BEFORE_DELIMITER(" \\");
CGVString const TRIPLE_DOT("...");
CGVString const BAD_PATH_CHARACTERS_LONG("*?\"<>|");
CGVString const BAD_PATH_CHARACTERS_SHORT("*?\"<>|+,[]= ");
CGVString const BAD_NAME_CHARACTERS_LONG("\\/:*?\"<>|");
CGVString const BAD_NAME_CHARACTERS_SHORT("\\/:;*?\"<>|+,[]= ");
CGVString const LEGAL_URL_CHARACTERS(
    "abcdefghijklmnopqrstuvwxyz"
    "ABCDEFGHIJKLMNOPQRSTUVWXYZ"
    "0123456789"
    "\\/$-_.+!*'(), ");

}  // namespace gvpath::detail

// ---- Construction and assignment ------------------------------------------------------

CGVPath::CGVPath() = default;

CGVPath::CGVPath(CGVPath const& other) : CGVString(other) {}

CGVPath::CGVPath(CGVString const& text) : CGVString(text) {}

CGVPath::CGVPath(char ch, int nRepeat) : CGVString(ch, nRepeat) {}

CGVPath::CGVPath(char const* text) : CGVString(text) {}

CGVPath::~CGVPath() = default;

CGVPath const& CGVPath::operator=(char ch) {
    CGVString::operator=(ch);
    return *this;
}

CGVPath const& CGVPath::operator=(char const* text) {
    CGVString::operator=(text);
    return *this;
}

CGVPath const& CGVPath::operator=(wchar_t const* text) {
    CGVString::operator=(text);
    return *this;
}

CGVPath const& CGVPath::operator=(unsigned char const* text) {
    CGVString::operator=(text);
    return *this;
}

CGVPath& CGVPath::operator=(CGVPath const& other) {
    CGVString::operator=(static_cast<CGVString const&>(other));
    return *this;
}

CGVPath const& CGVPath::operator=(CGVString const& text) {
    CGVString::operator=(text);
    return *this;
}

// ---- Delimiters -----------------------------------------------------------------------

int CGVPath::IsCharPathDelimiter(char ch) { return IsDelimiter(ch) ? 1 : 0; }

int CGVPath::IsLegalDriveLetter(char ch) {
    return ((ch >= 'A' && ch <= 'Z') || (ch >= 'a' && ch <= 'z')) ? 1 : 0;
}

CGVPath CGVPath::FormatFilePathDelimiters() {
    CGVPath result(*this);
    result.Replace(CHAR_UNIX_DELIMITER, CHAR_PATH_DELIMITER);
    return result;
}

void CGVPath::MakeDelimitersCanonical() {
    TrimRightDelimiters(0);
    Replace(CHAR_PATH_DELIMITER, CHAR_UNIX_DELIMITER);
}

int CGVPath::FindLastPathDelimiter() const {
    int i = ReverseFind(CHAR_PATH_DELIMITER);
    return i >= 0 ? i : ReverseFind(CHAR_UNIX_DELIMITER);
}

int CGVPath::FindPathDelimiter() const {
    int i = Find(CHAR_PATH_DELIMITER);
    return i >= 0 ? i : Find(CHAR_UNIX_DELIMITER);
}

int CGVPath::FindWhitespace() const {
    char const* text = GetString();
    for (int i = 0, n = GetLength(); i < n; ++i) {
        if (IsSpace(text[i]))
            return i;
    }
    return -1;
}

int CGVPath::FindLastTypeDelimiter() const {
    int dot = ReverseFind(CHAR_TYPE_DELIMITER);
    return dot > FindLastPathDelimiter() ? dot : -1;
}

// ---- Prefixes ---------------------------------------------------------------------------

int CGVPath::IsUNCSpecified() const {
    return (GetLength() >= 3 && GetAt(0) == CHAR_PATH_DELIMITER && GetAt(1) == CHAR_PATH_DELIMITER) ? 1 : 0;
}

int CGVPath::IsDriveSpecified() const {
    int n = GetLength();
    if (n < 2 || !IsLegalDriveLetter(GetAt(0)) || GetAt(1) != CHAR_DISK_DELIMITER)
        return 0;
    return (n == 2 || IsDelimiter(GetAt(2))) ? 1 : 0;
}

int CGVPath::IsFullPathName() const {
    return (GetLength() >= 3 && (IsUNCSpecified() || IsDriveSpecified())) ? 1 : 0;
}

int CGVPath::IsURL() const { return Find(CHAR_URL_SCHEME_DELIMITER) >= 3 ? 1 : 0; }

int CGVPath::IsQualified() const {
    return (GetLength() >= 2 && (IsUNCSpecified() || IsDriveSpecified() || IsURL())) ? 1 : 0;
}

CGVPath CGVPath::GetDriveLetter() {
    if (!IsDriveSpecified())
        return CGVPath();
    return CGVPath(GetAt(0), 1);
}

CGVPath CGVPath::GetUNCVolume() { return CGVPath(); }

// ---- File types -------------------------------------------------------------------------

int CGVPath::IsType(char const* type) const {
    CString wanted(type);
    wanted.Trim();
    int n = GetLength();
    int typeLength = wanted.GetLength();
    if (typeLength == 0)
        return (n > 0 && GetAt(n - 1) == CHAR_TYPE_DELIMITER) ? 1 : 0;
    // A type without its "." needs one more character in front of it; a path too
    // short for the comparison is of no type.
    bool dotted = wanted.GetAt(0) == CHAR_TYPE_DELIMITER;
    if (n < typeLength + (dotted ? 0 : 1))
        return 0;
    // _strnicmp of the last typeLength characters, in the "C" locale.
    char const* tail = GetString() + (n - typeLength);
    for (int i = 0; i < typeLength; ++i) {
        if (gvplatform::detail::ToLower(tail[i]) != gvplatform::detail::ToLower(wanted.GetAt(i)))
            return 0;
    }
    return (dotted || GetAt(n - typeLength - 1) == CHAR_TYPE_DELIMITER) ? 1 : 0;
}

int CGVPath::IsType(int id) const {
    CString type;
    if (!type.LoadString(static_cast<UINT>(id)))
        return 0;
    return IsType(type.GetString());
}

int CGVPath::IsTypeShortcut() const { return (IsType(EXTENSION_LNK) || IsType(EXTENSION_PIF)) ? 1 : 0; }

int CGVPath::IsHTMLFile() const {
    int dot = FindLastTypeDelimiter();
    CGVString extension = dot < 0 ? CGVString() : Mid(dot + 1);
    return (extension.CompareNoCase("html") == 0 || extension.CompareNoCase("htm") == 0) ? 1 : 0;
}
