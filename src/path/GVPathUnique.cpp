// CGVPath: free names in a directory, found by numbering. Long-name volumes put
// the name into a pattern from the host's string table ("%s (%d)" by default);
// short-name volumes glue the number to a base cut to fit 8.3.
#include "gvlib/path/GVPath.h"

#include <cstring>
#include <memory>
#include <string>

#include "gvlib/array/GVStringArray.h"
#include "gvlib/platform/afxstr.h"
#include "gvlib/platform/volumes.h"
#include "platform/folded_names.h"
#include "platform/volume_map.h"
#include "path/path_internal.h"

namespace {

// Long names from this maximum component length on.
constexpr uint32_t kLongSchemeFrom = 130;
// The counter stops below this.
constexpr int kLastNumber = 99999999;

// The largest number with as many decimal digits as n: 9 for 1 to 9, 99 for 10 to 99.
int LastNumberOfItsLength(int n) {
    int last = 9;
    while (last < n)
        last = last * 10 + 9;
    return last;
}

constexpr char kDefaultNumberedPattern[] = "%s (%d)";

// The host's current directory as the kernel names it; empty when it has no name.
CGVPath CurrentDirectory() {
    char buffer[MAX_PATH + 1] = "";
    DWORD length = ::GetCurrentDirectoryA(MAX_PATH, buffer);
    return length > 0 && length < MAX_PATH ? CGVPath(buffer) : CGVPath();
}

// A string-table pattern filled in without printf: the first "%s" takes the base,
// the first "%d" the number (when there is one), "%%" is one "%". Everything else,
// further or other conversions included, stays as written: the text is the
// host's, and a stray "%n" or a second "%s" must not reach a formatter.
CGVPath FillPattern(CGVString const& pattern, CGVString const& base, int const* number) {
    std::string out;
    bool baseUsed = false, numberUsed = number == nullptr;
    char const* p = pattern.GetString();
    for (int i = 0, n = pattern.GetLength(); i < n; ++i) {
        char next = i + 1 < n ? p[i + 1] : '\0';
        if (p[i] == '%' && next == '%') {
            out += '%';
            ++i;
        } else if (p[i] == '%' && next == 's' && !baseUsed) {
            out.append(base.GetString(), static_cast<size_t>(base.GetLength()));
            baseUsed = true;
            ++i;
        } else if (p[i] == '%' && next == 'd' && !numberUsed) {
            out += std::to_string(*number);
            numberUsed = true;
            ++i;
        } else {
            out += p[i];
        }
    }
    return CGVPath(out.c_str());
}

// The conversion letters of a pattern in order, "%%" skipped, and whether any
// carries flags, a width or a precision. False for a '*', a length modifier or
// a conversion cut off by the end: such a pattern is never formatted.
bool ReadConversions(char const* p, std::string& letters, bool& decorated) {
    for (; *p != '\0'; ++p) {
        if (*p != '%')
            continue;
        if (*++p == '%')
            continue;
        char const* start = p;
        while (*p != '\0' && std::strchr("-+ #0", *p) != nullptr)
            ++p;
        while (*p >= '0' && *p <= '9')
            ++p;
        if (*p == '.')
            for (++p; *p >= '0' && *p <= '9'; ++p) {
            }
        if (*p == '\0' || *p == '*' || std::strchr("hlLIqjzt", *p) != nullptr)
            return false;
        decorated = decorated || p != start;
        letters += *p;
    }
    return true;
}

bool IsIntegerConversion(char c) {
    return c != '\0' && std::strchr("diuoxX", c) != nullptr;
}

// A string-table pattern. Plain "%s" and "%d" are filled in by FillPattern,
// which gives what the formatter would. A pattern whose conversions carry
// flags, a width or a precision ("%s_%03d") is formatted, but only when its
// conversions are exactly the arguments passed, in the order they are passed
// (the number first when the first "%d" stands before the first "%s"); any
// other pattern is filled in as a plain one, so that no conversion can read an
// argument that is not there.
class Pattern {
public:
    Pattern(CGVString const& text, bool numbered) : text_(text) {
        const int d = text.Find("%d"), s = text.Find("%s");
        numberFirst_ = numbered && d >= 0 && s >= 0 && d < s;
        std::string letters;
        bool decorated = false;
        if (!ReadConversions(text.GetString(), letters, decorated) || !decorated)
            return;
        if (!numbered)
            formatted_ = letters == "s";
        else if (letters.size() == 2)
            formatted_ = numberFirst_ ? IsIntegerConversion(letters[0]) && letters[1] == 's'
                                      : letters[0] == 's' && IsIntegerConversion(letters[1]);
    }

    CGVPath Fill(CGVString const& base, int const* number) const {
        if (!formatted_)
            return FillPattern(text_, base, number);
        CString out;
        if (number == nullptr)
            out.Format(text_.GetString(), base.GetString());
        else if (numberFirst_)
            out.Format(text_.GetString(), *number, base.GetString());
        else
            out.Format(text_.GetString(), base.GetString(), *number);
        return CGVPath(out.GetString());
    }

private:
    CGVString text_;
    bool numberFirst_ = false;
    bool formatted_ = false;
};

// A filled-in name with the extension, when there is one, made a legal URL
// name when asked.
CGVPath Finish(CGVPath name, CGVString const& extension, int legalURL) {
    if (!extension.IsEmpty())
        name.AppendExtension(extension);
    if (legalURL)
        name.MakeLegalURL(nullptr, 0);
    return name;
}

CGVPath Join(CGVString const& directory, CGVString const& name) {
    CGVPath path(directory);
    path.AppendPath(name, '\0', 0);
    return path;
}

// Whether the file system holds a candidate name. The first few candidates are
// asked one status query each, as most calls need no more; after that the
// folder is listed once into a case-folded set and each later candidate is one
// look-up in it, which keeps a call linear in the names already taken.
class FolderNames {
public:
    bool IsTaken(CGVPath const& candidate, CGVPath const& name) {
        if (++asked_ > kAskedOneByOne && !listed_)
            List(candidate, name);
        if (names_ != nullptr && InFolder(candidate, name))
            return names_->Contains(name.GetString());
        return candidate.IsAvailable() != 0;
    }

private:
    static constexpr int kAskedOneByOne = 4;

    // A name the status query would read as written: one component, no
    // wildcard, nothing the kernel trims from its end.
    static bool IsPlain(CGVPath const& name) {
        const char* text = name.GetString();
        const std::size_t length = std::strlen(text);
        return length > 0 && static_cast<int>(length) == name.GetLength() &&
               std::strpbrk(text, "\\/:*?\"<>|") == nullptr && text[length - 1] != '.' && text[length - 1] != ' ';
    }

    // The candidate is the listed folder's text followed by the name, and its
    // full path fits the status record (a longer one is never found).
    bool InFolder(CGVPath const& candidate, CGVPath const& name) const {
        const int prefix = candidate.GetLength() - name.GetLength();
        return IsPlain(name) && prefix == static_cast<int>(prefix_.size()) &&
               std::strcmp(candidate.GetString() + prefix, name.GetString()) == 0 &&
               prefix_.compare(0, prefix_.size(), candidate.GetString(), prefix_.size()) == 0 &&
               fullLength_ + name.GetLength() < _MAX_PATH;
    }

    // Lists the folder the kernel would search for this candidate.
    void List(CGVPath const& candidate, CGVPath const& name) {
        listed_ = true;
        gvplatform::detail::WindowsPath full;
        if (!IsPlain(name) || candidate.GetLength() < name.GetLength() ||
            !gvplatform::detail::FullWindowsPath(candidate.GetString(), full) || full.components.empty() ||
            full.components.back() != name.GetString())
            return;
        fullLength_ = static_cast<int>(full.Text().size()) - name.GetLength();
        full.components.pop_back();
        full.trailingDelimiter = false;
        prefix_.assign(candidate.GetString(), static_cast<std::size_t>(candidate.GetLength() - name.GetLength()));
        names_ = gvplatform::detail::ListDirectoryNames(full);
    }

    int asked_ = 0;
    bool listed_ = false;
    std::string prefix_;
    int fullLength_ = 0;
    std::shared_ptr<gvplatform::detail::FoldedNames const> names_;
};

}  // namespace

// ---- Freedom of one name ----------------------------------------------------------------

int CGVPath::PrivateIsArrayElement(CGVStringArray const* array, char const* text, int matchCase) {
    if (array == nullptr)
        return 0;
    for (int32_t i = 0; i < array->mGetNumItems(); ++i) {
        // An empty slot leaves the destination alone: it reads as the empty text.
        CGVString item;
        array->mGetArrayItem(&item, i);
        if ((matchCase ? item.Compare(text) : item.CompareNoCase(text)) == 0)
            return 1;
    }
    return 0;
}

int CGVPath::PrivateIsUniquePath(char const* path, char const* name, CGVStringArray const* taken,
                                 CGVStringArray const* reusable) {
    if (PrivateIsArrayElement(taken, name, 0))
        return 0;
    if (!CGVPath(path).IsAvailable())
        return 1;
    return PrivateIsArrayElement(reusable, name, 0);
}

int CGVPath::IsUnique(char const* directory) const {
    if (directory != nullptr) {
        CGVPath path(directory);
        path.AppendPath(CGVPath(*this).GetName(), '\0', 0);
        return path.IsAvailable() ? 0 : 1;
    }
    if (IsQualified())
        return IsAvailable() ? 0 : 1;
    CGVPath path = CurrentDirectory();
    path.AppendPath(*this, '\0', 0);
    return path.IsAvailable() ? 0 : 1;
}

// ---- Making a name free -----------------------------------------------------------------

int CGVPath::MakeUnique(int firstPatternId, int numberedPatternId, CGVStringArray const* taken,
                        CGVStringArray const* reusable) {
    return PrivateMakeUnique(nullptr, firstPatternId, numberedPatternId, taken, reusable, 0);
}

int CGVPath::MakeUnique(char const* directory, int firstPatternId, int numberedPatternId,
                        CGVStringArray const* taken, CGVStringArray const* reusable) {
    return PrivateMakeUnique(directory, firstPatternId, numberedPatternId, taken, reusable, 0);
}

int CGVPath::MakeUniqueLegalURL(int firstPatternId, int numberedPatternId, CGVStringArray const* taken,
                                CGVStringArray const* reusable) {
    return PrivateMakeUnique(nullptr, firstPatternId, numberedPatternId, taken, reusable, 1);
}

int CGVPath::MakeUniqueLegalURL(char const* directory, int firstPatternId, int numberedPatternId,
                                CGVStringArray const* taken, CGVStringArray const* reusable) {
    return PrivateMakeUnique(directory, firstPatternId, numberedPatternId, taken, reusable, 1);
}

int CGVPath::PrivateMakeUnique(char const* directory, int firstPatternId, int numberedPatternId,
                               CGVStringArray const* taken, CGVStringArray const* reusable, int legalURL) {
    gvpath::detail::KeepTextOnFailure keep(*this);
    CGVPath folder;
    if (directory != nullptr)
        folder = directory;
    else if (IsQualified())
        folder = GetDirectory();
    else
        folder = CurrentDirectory();
    int result = folder.GetVolumeMaxComponent() >= kLongSchemeFrom
                     ? PrivateMakeUniqueLongName(folder, firstPatternId, numberedPatternId, taken, reusable, legalURL)
                     : PrivateMakeUniqueShortName(folder, taken, reusable, legalURL);
    if (directory != nullptr)
        *this = GetName();
    return result;
}

int CGVPath::PrivateMakeUniqueLongName(char const* directory, int firstPatternId, int numberedPatternId,
                                       CGVStringArray const* taken, CGVStringArray const* reusable, int legalURL) {
    CGVPath folder(directory);
    if (IsEmpty() || folder.IsEmpty() || folder.IsFile())
        return 0;
    // The order of the checks is PrivateIsUniquePath's; the folder's names
    // answer for the file system.
    FolderNames onDisk;
    auto isFree = [&](CGVPath const& path, CGVPath const& leaf) {
        if (PrivateIsArrayElement(taken, leaf, 0))
            return false;
        return !onDisk.IsTaken(path, leaf) || PrivateIsArrayElement(reusable, leaf, 0);
    };
    // The name as it stands, not made legal, not even as a URL.
    CGVPath name = GetName();
    CGVPath candidate = Join(folder, name);
    if (isFree(candidate, name)) {
        *this = candidate;
        return 1;
    }
    CGVPath base(name);
    base.TrimExtension();
    CGVPath extension = GetExtension();

    CString pattern;
    if (firstPatternId != 0 && pattern.LoadString(static_cast<UINT>(firstPatternId)) && !pattern.IsEmpty()) {
        const Pattern first(CGVString(pattern.GetString()), false);
        name = Finish(first.Fill(base, nullptr), extension, legalURL);
        candidate = Join(folder, name);
        if (isFree(candidate, name)) {
            *this = candidate;
            return 1;
        }
    }
    // Filling by conversion rather than by position makes the order of "%s" and
    // "%d" in a plain pattern take care of itself.
    CGVString numbered = kDefaultNumberedPattern;
    if (numberedPatternId != 0 && pattern.LoadString(static_cast<UINT>(numberedPatternId)))
        numbered = pattern.GetString();
    const Pattern numbering(numbered, true);
    CGVPath previous;
    for (int n = 2; n < kLastNumber; ++n) {
        name = Finish(numbering.Fill(base, &n), extension, legalURL);
        candidate = Join(folder, name);
        // A pattern without "%d" gives one candidate over and over: give up at once.
        if (candidate.Compare(previous) == 0)
            return 0;
        if (isFree(candidate, name)) {
            *this = candidate;
            return 1;
        }
        previous = candidate;
    }
    return 0;
}

int CGVPath::PrivateMakeUniqueShortName(char const* directory, CGVStringArray const* taken,
                                        CGVStringArray const* reusable, int legalURL) {
    CGVPath folder(directory);
    if (IsEmpty() || folder.IsEmpty() || folder.IsFile())
        return 0;
    FolderNames onDisk;
    auto isFree = [&](CGVPath const& path, CGVPath const& leaf) {
        if (PrivateIsArrayElement(taken, leaf, 0))
            return false;
        return !onDisk.IsTaken(path, leaf) || PrivateIsArrayElement(reusable, leaf, 0);
    };
    CGVPath name = GetName();
    name.MakeLegalName(folder);
    name = Finish(name, CGVString(), legalURL);
    CGVPath candidate = Join(folder, name);
    if (isFree(candidate, name)) {
        *this = candidate;
        return 1;
    }
    CGVPath base(name);
    base.TrimExtension();
    CGVPath extension = name.GetExtension();
    if (legalURL)
        extension.MakeLegalURL(nullptr, 0);
    // Signed: a volume without a volume (limit 0) must not wrap to a huge limit.
    int64_t limit = static_cast<int64_t>(folder.GetVolumeMaxComponent()) - folder.GetVolumeMaxExtension() - 1;
    CGVPath previous;
    for (int n = 1; n <= kLastNumber; ++n) {
        CGVString number(std::to_string(n).c_str());
        int64_t keep = limit - number.GetLength();
        if (base.GetLength() + number.GetLength() > limit && keep >= 0)
            base.TrimRight(static_cast<int>(keep));
        candidate = Join(folder, Finish(CGVPath(base + number), CGVString(), legalURL));
        candidate.SetExtension(extension);
        // The extension can swallow the number (a base holding a full stop on a
        // volume of 13 to 129 characters). The base stays as it is until the
        // number gains a digit, so every try up to then would be this one: go on
        // from the next digit length, where a further cut may drop that stop.
        if (candidate.Compare(previous) == 0) {
            n = LastNumberOfItsLength(n);
            continue;
        }
        if (isFree(candidate, CGVPath(candidate).GetName())) {
            *this = candidate;
            return 1;
        }
        previous = candidate;
    }
    Empty();
    return 0;
}
