// CGVPath: a CGVString read as a file path or a URL. Only the volume members
// (and legality and uniqueness, which ask them) touch the disk.
#pragma once

#include <cstdint>

#include "gvlib/platform/export.h"
#include "gvlib/string/GVString.h"

class CGVStringArray;
struct GVPathTestAccess;

/// A path or URL held as narrow text. It has no data of its own and keeps the
/// string's virtual interface: mCopy and mNew of a path give a CGVString, and a
/// path serializes as a string.
///
/// Both the backslash and the slash delimit components; wherever a member looks
/// for "the last delimiter" the backslash wins: in a\b/c the last delimiter is
/// the backslash at index 1. A "." starts an extension only after that
/// delimiter. Positions are zero-based, -1 means not found; tests answer 1 or 0.
/// An editing member that runs out of memory raises CMemoryException and leaves
/// the path as it was.
class GVLIB_API CGVPath : public CGVString {
    friend struct GVPathTestAccess;

public:
    /// What a volume query answered. Only GetVolumeInfo fills it.
    struct VolumeInfo {
        CGVString root;  ///< the root queried, ending in a delimiter (C:\); the cache key
        CGVString volumeName;
        CGVString fileSystemName;
        uint32_t maxComponentLength = 0;
        uint32_t serialNumber = 0;
        uint32_t fileSystemFlags = 0;
    };

    // ---- Characters (in this order) --------------------------------------------
    static char const CHAR_PATH_DELIMITER = '\\';
    static char const CHAR_UNIX_DELIMITER = '/';
    static char const CHAR_TYPE_DELIMITER = '.';
    static char const CHAR_DISK_DELIMITER = ':';
    static char const CHAR_URL_SCHEME_DELIMITER = ':';
    static char const CHAR_URL_PATH_DELIMITER = '/';

    // ---- Strings, constructed at load in this order ------------------------------
    static CGVString const FILE_PATH_DELIMITER;   ///< "\"
    static CGVString const FILE_UNIX_DELIMITER;   ///< "/"
    static CGVString const FILE_TYPE_DELIMITER;   ///< "."
    static CGVString const FILE_DISK_DELIMITER;   ///< ":"
    static CGVString const FILE_WILDCARD;         ///< "*.*"
    static CGVString const FILE_CURRENT_DIR;      ///< "."
    static CGVString const FILE_PARENT_DIR;       ///< ".."
    static CGVString const EXTENSION_URL;         ///< "URL"
    static CGVString const EXTENSION_PIF;         ///< "PIF"
    static CGVString const EXTENSION_LNK;         ///< "LNK"
    static CGVString const EXTENSION_COM;         ///< "COM"
    static CGVString const EXTENSION_BAT;         ///< "BAT"
    static CGVString const EXTENSION_EXE;         ///< "EXE"
    static CGVString const EXTENSION_JAR;         ///< "JAR"
    static CGVString const EXTENSION_CLASS;       ///< "CLASS"
    static CGVString const EXTENSION_SSF;         ///< "SSF"
    static CGVString const EXTENSION_SSX;         ///< "SSX"
    static CGVString const EXTENSION_XML;         ///< "XML"
    static CGVString const URL_SCHEME_FTP;        ///< "ftp"
    static CGVString const URL_SCHEME_MAILTO;     ///< "mailto"
    static CGVString const URL_SCHEME_NEWS;       ///< "news"
    static CGVString const URL_SCHEME_NNTP;       ///< "nntp"
    static CGVString const URL_SCHEME_TELNET;     ///< "telnet"
    static CGVString const URL_SCHEME_GOPHER;     ///< "gopher"
    static CGVString const URL_SCHEME_HTTP;       ///< "http"
    static CGVString const URL_SCHEME_FILE;       ///< "file"
    static CGVString const URL_SCHEME_DELIMITER;  ///< "://"
    /// The scheme a URL without one is taken to have: URL_SCHEME_HTTP itself.
    static CGVString const& DEFAULT_URL_SCHEME;

    // ---- Construction and assignment ---------------------------------------------
    CGVPath();
    CGVPath(CGVPath const& other);
    CGVPath(CGVString const& text);
    CGVPath(char ch, int nRepeat);
    CGVPath(char const* text);
    ~CGVPath() override;

    CGVPath const& operator=(char ch);
    CGVPath const& operator=(char const* text);
    CGVPath const& operator=(wchar_t const* text);
    CGVPath const& operator=(unsigned char const* text);
    CGVPath& operator=(CGVPath const& other);
    CGVPath const& operator=(CGVString const& text);

    // ---- Delimiters and prefixes (model) -----------------------------------------
    /// 1 for a backslash or a slash.
    static int IsCharPathDelimiter(char ch);
    /// 1 for an ASCII letter; bytes of 128 and more are never letters.
    static int IsLegalDriveLetter(char ch);
    /// A copy with every slash turned into a backslash; this path is unchanged.
    CGVPath FormatFilePathDelimiters();
    /// Drops every trailing delimiter, then turns backslashes into slashes:
    /// C:\a\b\\ ⇒ C:/a/b.
    void MakeDelimitersCanonical();

    /// At least 3 characters, the first two backslashes: \\s ⇒ 1, \\ ⇒ 0, //s ⇒ 0.
    int IsUNCSpecified() const;
    /// A letter, ":", then the end or a delimiter: C: ⇒ 1, C:\ ⇒ 1, C:x ⇒ 0.
    int IsDriveSpecified() const;
    /// UNC or drive form and at least 3 characters: C: ⇒ 0, C:\ ⇒ 1.
    int IsFullPathName() const;
    /// The first ":" stands at index 3 or later: ftp:x ⇒ 1, ab:x ⇒ 0.
    int IsURL() const;
    /// At least 2 characters in UNC, drive or URL form.
    int IsQualified() const;
    /// The drive letter in its own case, or empty without a drive.
    CGVPath GetDriveLetter();
    /// Always empty: callers fall back to GetVolume.
    CGVPath GetUNCVolume();

    /// Whether the path ends in the given type, ignoring case and surrounding
    /// white space of the type: notes.txt is of type "txt", ".TXT" and " txt ",
    /// but notestxt is not; an empty type matches a path ending in ".".
    int IsType(char const* type) const;
    /// IsType of string-table entry `id`; 0 when there is no such entry.
    int IsType(int id) const;
    /// Of type LNK or PIF.
    int IsTypeShortcut() const;
    /// The extension is html or htm in any case: index.HTM ⇒ 1, index.html5 ⇒ 0.
    int IsHTMLFile() const;

    // ---- Components --------------------------------------------------------------
    /// The text after the last delimiter: C:\dir\ ⇒ empty, C:file.txt ⇒ C:file.txt.
    CGVPath GetName();
    /// GetName without its extension: C:\dir\file.txt ⇒ file.
    CGVPath GetNameOnly();
    /// The text after the extension's ".": archive.tar.gz ⇒ gz, dir.x\name ⇒ empty.
    CGVPath GetExtension();
    /// Appends "." and the text unchecked: "" leaves the path ending in ".".
    void AppendExtension(char const* extension);
    /// Replaces the extension; a null or empty text changes nothing: a.b.c + txt ⇒ a.b.txt.
    void SetExtension(char const* extension);
    /// SetExtension of string-table entry `id`; nothing when there is none.
    void SetExtension(int id);
    /// Drops the "." and the extension: "name." ⇒ "name".
    void TrimExtension();
    /// The text before the last delimiter; a drive-relative name gets its root:
    /// C:\file ⇒ C:, C:file ⇒ C:\, name ⇒ empty.
    CGVPath GetDirectory();
    /// The directory above, always ending in a delimiter: C:\dir ⇒ C:\, C:\ ⇒ C:\,
    /// name ⇒ name\; an empty path gives an empty result.
    CGVPath GetParentDirectory();
    /// Joins a tail with one delimiter; an empty path stays empty. With `delimiter`
    /// 0 the path's own last delimiter kind is used (a backslash when it has none)
    /// and both kinds are trimmed at the joint; otherwise only `delimiter` is.
    /// A nonzero `whitespace` trims white space at the joint too.
    /// C:\dir\ + \sub ⇒ C:\dir\sub, a/b + c ⇒ a/b/c, C:\dir + "" ⇒ C:\dir\.
    void AppendPath(char const* tail, char delimiter, int whitespace);
    /// AppendPath of string-table entry `id` (an empty tail when there is none).
    void AppendPath(int id, char delimiter, int whitespace);
    /// AppendPath(text, 0, 0): with FILE_PATH_DELIMITER, ends a non-empty path in
    /// exactly one delimiter.
    void AppendDelimiter(char const* text);
    /// C:\dir ⇒ C:\dir\*.*
    void AppendWildcard();
    /// Drops the last component, keeping a root whole: C:\file ⇒ C:\,
    /// \\server\share ⇒ \\server\, C:\dir\ ⇒ C:\dir, \file ⇒ empty, a\b ⇒ a\.
    void TrimRightPath();
    /// The volume prefix: C:\x ⇒ C:, \\server\share\x ⇒ \\server\, \dir ⇒ empty,
    /// http://host ⇒ empty (a scheme beginning with a letter looks like no drive).
    CGVPath GetVolume();
    /// Removes the volume prefix: C:\x ⇒ \x, \\server\share\x ⇒ share\x.
    void TrimVolume();
    /// Puts another volume in front of the rest; a path without a volume is
    /// unchanged, and an empty volume leaves an empty path.
    void SetVolume(char const* volume);
    /// Splits into the volume and the non-empty components between delimiters:
    /// C:\dir\\sub\file.txt ⇒ C: and dir, sub, file.txt. A rooted path loses its
    /// leading delimiter.
    void Explode(CGVPath& volume, CGVStringArray& parts) const;
    /// Joins a volume and components with AppendPath, skipping empty components:
    /// "" and a, "", b ⇒ a\b.
    void Implode(char const* volume, CGVStringArray const& parts);

    // ---- Trimming, quoting ---------------------------------------------------------
    /// Keeps the text from position q on, q counted from the end when negative;
    /// only for 0 < q <= length: abcdef with 3 or -3 ⇒ def, with 0 or 7 unchanged.
    void TrimLeft(int position);
    /// Keeps the text before position q, q counted from the end when negative;
    /// only for 0 <= q < length: abcdef with 3 or -3 ⇒ abc, with 0 ⇒ empty.
    void TrimRight(int position);
    /// Removes leading and trailing white space.
    void Trim();
    /// Removes the leading run of characters of `set` (and white space when
    /// `whitespace` is nonzero). A null set counts as empty.
    void TrimLeftCharacters(char const* set, int whitespace);
    /// The same for the trailing run.
    void TrimRightCharacters(char const* set, int whitespace);
    /// With `remove` nonzero removes every character of `set`; with 0 keeps only
    /// them: an empty set and 0 empties the text.
    void TrimCharacters(char const* set, int remove);
    /// Removes leading backslashes and slashes (and white space when asked).
    void TrimLeftDelimiters(int whitespace);
    /// Removes trailing backslashes and slashes (and white space when asked);
    /// with 0, a trailing space stops the walk: "C:\dir\ " stays as it is.
    void TrimRightDelimiters(int whitespace);
    /// Trailing delimiters only: /a/b/ ⇒ /a/b.
    void TrimDelimiters();
    /// Removes the leading and trailing runs of double quotes; inner ones stay.
    /// The argument has no effect.
    void TrimQuotes(int unused);
    /// Exactly one pair of double quotes around the text: "" ⇒ "\"\"".
    void AddQuotes();
    /// Subtracts 32 from the first byte without looking at it: abc ⇒ Abc, but
    /// Abc ⇒ !bc.
    void Capitalize();

    // ---- URLs -------------------------------------------------------------------
    /// The 76 characters a legal URL may hold after its scheme.
    CGVString GetLegalURLCharacters() const;
    /// 1 when every character after the first ":" (all of them when there is
    /// none) is legal; the argument is not consulted. C:\dir\x ⇒ 1, a%20b ⇒ 0.
    int IsLegalURL(char const* unused) const;
    /// Optionally puts `scheme` and "://" in front, then turns every illegal
    /// character after the first ":" into '-': http://host/a#b?c=d ⇒
    /// http://host/a-b-c-d. Always 1; the integer has no effect.
    int MakeLegalURL(char const* scheme, int unused);
    /// The path as a file URL, backslashes turned into slashes:
    /// C:\dir\a b.htm ⇒ file:///C:/dir/a b.htm, \\srv\a ⇒ file:////srv/a.
    CGVPath CreateFileScheme();
    /// The text before the first ":" in lower case when it has 2 or more
    /// characters: HTTP://Host ⇒ http, C:\dir ⇒ empty.
    CGVString GetURLScheme() const;
    /// Removes the scheme, its ":" and a "//" right behind it; a text without a
    /// scheme that starts with "//" loses the two slashes.
    void TrimURLScheme();
    /// What lies between the scheme and the first delimiter:
    /// http://host/dir/p.htm ⇒ host, file:///C:/x ⇒ /C:/x.
    CGVString GetURLHost() const;
    /// GetName: http://host/a\b/c.htm ⇒ b/c.htm (a backslash anywhere wins).
    CGVPath GetURLName() const;
    /// GetDirectory: http://host/dir/p.htm ⇒ http://host/dir.
    CGVPath GetURLDirectory() const;
    /// 0 when both name the same resource, ignoring case, surrounding white space,
    /// the scheme and one trailing delimiter, where no scheme counts as http.
    /// Differing schemes give -1 in both directions; otherwise the no-case order
    /// of the argument's remainder against this one's.
    int CompareURL(char const* other) const;

    // ---- Volumes and the file system -----------------------------------------------
    /// Always 260, whatever the volume.
    uint32_t GetVolumeMaxPath() const;
    /// The volume's longest component: 0 without a volume (a relative path or a
    /// URL), 256 when the volume cannot be queried.
    uint32_t GetVolumeMaxComponent() const;
    /// 3 unless the volume allows components of 260 or more, then 256; a volume
    /// of 255-character components still gets 3.
    uint32_t GetVolumeMaxExtension() const;
    /// Components longer than 12 characters are allowed.
    int IsVolumeLongFileNameEnabled() const;
    /// C:, C:\ or C:/ on a drive that exists; C:\dir and any UNC text ⇒ 0.
    int IsVolume() const;
    /// An existing file: not a directory, not a volume label.
    int IsFile() const;
    /// An existing directory, with or without a trailing delimiter; a bare
    /// existing volume such as C: ⇒ 1.
    int IsDirectory() const;
    /// IsFile or IsDirectory.
    int IsAvailable() const;
    /// The path or one of its ancestors is an existing directory.
    int IsBaseAvailable() const;
    /// The path when it exists, else its nearest existing ancestor directory
    /// (C:\existing\missing\f.txt ⇒ C:\existing), else empty.
    CGVPath GetAvailable();
    /// The full path name, relative forms resolved against `directory` when one
    /// is given (the process's current directory is changed for the call); the
    /// path unchanged when it cannot be resolved.
    CGVPath GetFullPathNameA(char const* directory);
    /// Whether two texts name the same file: existing files compare by their
    /// spelling on disk, others as text, both without regard to case.
    static int CompareFiles(char const* first, char const* second);
    /// CompareFiles of this path and `other`.
    int CompareFile(char const* other) const;
    /// The no-case order of the two volumes: C:\a against c:\b ⇒ 0.
    int CompareVolume(char const* other) const;
    /// Both lose their last component and then match without regard to case:
    /// C:\dir\a.txt is in the directory of C:\dir\b.txt and of C:\dir\, not of C:\dir.
    int IsInDirectoryOf(char const* other) const;
    /// 1 for a UNC path; any other path stays as it is, with 0.
    int MakeUNCSpecified();

    // ---- Legal names and paths ---------------------------------------------------
    /// The characters a path may not hold on a long-name (nonzero) or a
    /// short-name volume; delimiters and the colon are allowed.
    CGVString GetBadPathCharacters(int longNames) const;
    /// The characters a single name may not hold; delimiters and the colon included.
    CGVString GetBadNameCharacters(int longNames) const;
    /// Whether the path may be used on the volume of `volume` (any path on it),
    /// or on its own volume when null. A relative path counts as short-name.
    int IsLegal(char const* volume) const;
    /// `length` (the path's own when negative) is at most 260.
    int IsLegalLength(int length) const;
    /// `length` is at most GetVolumeMaxComponent(); when negative, every
    /// component of the path is measured.
    int IsLegalComponentLength(int length) const;
    /// `length` (the extension's when negative) is at most GetVolumeMaxExtension().
    int IsLegalExtensionLength(int length) const;
    /// Makes this single name legal in `directory`: bad characters go, short
    /// volumes get 8.3 names, and a name too long for the directory is cut,
    /// keeping only its first character when just the extension fits
    /// (room 10: abcdefgh.txt ⇒ a.txt). A name that vanishes becomes "----". Always 1.
    int MakeLegalName(char const* directory);
    /// Makes every component legal for the path's own volume; the total length is
    /// not checked: C:\dir:x\file?.txt ⇒ C:\dirx\file.txt. Always 1.
    int MakeLegalPath();

    // ---- Unique names ------------------------------------------------------------
    /// Nothing exists under this path's name in `directory`; without a directory,
    /// at this path (a relative one taken from the current directory).
    int IsUnique(char const* directory) const;
    /// Numbers this path's name until it is free in its own directory (or the
    /// current one): free means nothing of that name exists, or the name is on
    /// `reusable`, and it is not on `taken` (lists compared without regard to
    /// case; either may be null). Long-name volumes use the string-table patterns
    /// `firstPatternId` (one %s, tried once) and `numberedPatternId` (%s and %d,
    /// "%s (%d)" when 0 or missing) from 2 on: report.txt ⇒ report (3).txt.
    /// Short-name volumes glue 1, 2, … to a base cut to fit: REPORT.TXT ⇒
    /// REPOR100.TXT. The path keeps the full free path; 1 on success, else 0.
    int MakeUnique(int firstPatternId, int numberedPatternId, CGVStringArray const* taken,
                   CGVStringArray const* reusable);
    /// The same in `directory`; the path is then reduced to the free name.
    int MakeUnique(char const* directory, int firstPatternId, int numberedPatternId, CGVStringArray const* taken,
                   CGVStringArray const* reusable);
    /// MakeUnique with every numbered candidate made a legal URL name.
    int MakeUniqueLegalURL(int firstPatternId, int numberedPatternId, CGVStringArray const* taken,
                           CGVStringArray const* reusable);
    int MakeUniqueLegalURL(char const* directory, int firstPatternId, int numberedPatternId,
                           CGVStringArray const* taken, CGVStringArray const* reusable);

    // ---- Relative paths ----------------------------------------------------------
    /// The way from directory `base` to this path with backslashes:
    /// C:\site\pages\a.htm from C:\site\img ⇒ ..\pages\a.htm. Empty when either
    /// is no full path name or they share nothing (another drive).
    CGVString GetRelativePath(char const* base) const;
    /// The same as a relative link: ../pages/a.htm, trailing delimiters dropped.
    CGVString GetUrlRelativePath(char const* base) const;

private:
    // ---- Searches ---------------------------------------------------------------
    /// The last backslash; only without any backslash, the last slash.
    int FindLastPathDelimiter() const;
    /// The first backslash; only without any backslash, the first slash.
    int FindPathDelimiter() const;
    int FindWhitespace() const;
    /// The last "." when it follows FindLastPathDelimiter: a\b.c/d ⇒ 3.
    int FindLastTypeDelimiter() const;

    // ---- Components --------------------------------------------------------------
    /// Drops the last component at `delimiter` when it occurs, otherwise at the
    /// last backslash, otherwise at the last slash.
    void PrivateTrimRightPath(char delimiter);

    // ---- Replacement -------------------------------------------------------------
    int PrivateReplace(char from, char to, int limit);
    int PrivateReplaceWhitespace(char to);
    int PrivateReplaceCharacters(char const* set, char replacement, int keepSet, int start);
    int PrivateReplaceGroup(char first, char last, char replacement, int limit);

    // ---- URLs -------------------------------------------------------------------
    /// The first ":" when it stands at 2 or later with no delimiter before it.
    int FindURLSchemeDelimiter() const;

    // ---- Volumes ----------------------------------------------------------------
    /// Queries the volume whose root is `volume` (a delimiter is added), through
    /// the one-entry cache of the last fixed drive or UNC root. 0 on failure,
    /// with the numbers of `info` zeroed.
    int GetVolumeInfo(char const* volume, VolumeInfo& info) const;

    // ---- Legality ---------------------------------------------------------------
    /// The name rewrite both legalisations share, for the given volume limits.
    void PrivateMakeLegal(uint32_t maxComponent, uint32_t maxExtension);
    /// MakeLegalPath step by step: `trimmed` exploded, each component rewritten
    /// for a volume of `maxComponent`, and the parts imploded into this path.
    void PrivateMakeLegalComponents(CGVPath const& trimmed, uint32_t maxComponent);

    // ---- Uniqueness -------------------------------------------------------------
    int PrivateMakeUnique(char const* directory, int firstPatternId, int numberedPatternId,
                          CGVStringArray const* taken, CGVStringArray const* reusable, int legalURL);
    int PrivateMakeUniqueLongName(char const* directory, int firstPatternId, int numberedPatternId,
                                  CGVStringArray const* taken, CGVStringArray const* reusable, int legalURL);
    int PrivateMakeUniqueShortName(char const* directory, CGVStringArray const* taken,
                                   CGVStringArray const* reusable, int legalURL);
    /// Whether a candidate is free: `name` not taken, and nothing at `path` or
    /// `name` reusable.
    static int PrivateIsUniquePath(char const* path, char const* name, CGVStringArray const* taken,
                                   CGVStringArray const* reusable);
    /// Some item equals `text` (by case when `matchCase` is nonzero); a null array
    /// holds nothing.
    static int PrivateIsArrayElement(CGVStringArray const* array, char const* text, int matchCase);

    // ---- Relative paths ---------------------------------------------------------
    CGVString PrivateGetRelativePath(char const* base, char delimiter) const;
};
