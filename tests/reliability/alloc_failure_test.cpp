// Every operation of the table, with each of its allocations failing in turn:
// the memory exception reaches the caller, the target keeps its state, and the
// same call succeeds afterwards. Leaks show under the leak sanitiser.
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <sstream>
#include <string>

#include "gvlib/array/GVLongArray.h"
#include "gvlib/array/GVStringArray.h"
#include "gvlib/buffer/GVBuffer.h"
#include "gvlib/core/GVLong.h"
#include "gvlib/datetime/GVDate.h"
#include "gvlib/datetime/GVMoney.h"
#include "gvlib/path/GVPath.h"
#include "gvlib/platform/afxdb.h"
#include "gvlib/platform/afxdisp.h"
#include "gvlib/platform/afxexcept.h"
#include "gvlib/platform/gvplatform.h"
#include "path/volume_fixture.h"
#include "platform/fault_injection.h"
#include "support/archive_bytes.h"

namespace {

using gvplatform::faults::AllocationFailureFired;
using gvplatform::faults::FailAllocation;

// One run of an operation with the nth allocation failing (0: none fails).
struct Trial {
    int32_t nth = 0;
    bool threw = false, fired = false;
    std::string other, before, end, retried;

    template <class Op, class State>
    void Run(Op op, State state) {
        before = state();
        FailAllocation(nth);
        try {
            op();
        } catch (CMemoryException const&) {
            threw = true;
        } catch (std::exception const& e) {
            other = e.what();
        } catch (...) {
            other = "a non-standard exception";
        }
        fired = AllocationFailureFired();
        FailAllocation(0);
        end = state();
        if (threw) {
            op();  // the object must still be usable
            retried = state();
        }
    }
};

struct Row {
    const char* name;
    std::function<void(Trial&)> body;
};

std::string S(CString const& s) { return std::string(s.GetString(), static_cast<size_t>(s.GetLength())); }
std::string B(CGVBuffer const& b) {
    return std::string(b.mGetBuffer() ? b.mGetBuffer() : "", static_cast<size_t>(b.mGetLength())) + "|" +
           std::to_string(b.mGetLength()) + (b.mIsLocked() ? "L" : "");
}
std::string A(CGVArray const& a) {
    std::string out = std::to_string(a.mGetNumItems()) + ":";
    for (int32_t i = 0; i < a.mGetNumItems(); ++i) {
        if (a.mGetElementSize() == 0) {
            CGVString item;
            a.mGetArrayItem(&item, i);
            out += S(item) + ",";
        } else {
            out += std::string(static_cast<char const*>(a.mItemPtr(i)), static_cast<size_t>(a.mGetElementSize()));
        }
    }
    return out;
}
// The low bytes of a wide text: enough to tell the texts of these tests apart.
CString W(BSTR b) {
    CString out;
    for (; b && *b; ++b)
        out += static_cast<char>(*b);
    return out;
}
std::string O(std::unique_ptr<CGVObject> const& p) {
    if (!p)
        return "null";
    std::ostringstream os;
    os << *p;
    return os.str();
}
std::string Text(CGVObject& o) {
    std::ostringstream os;
    os << o;
    return os.str();
}
// The helpers below may run while a failure is armed: they own what they build.
CGVStringArray* Strings(std::initializer_list<const char*> items) {
    auto a = std::make_unique<CGVStringArray>();
    for (const char* t : items) {
        CGVString s(t);
        a->mAdd(&s);
    }
    return a.release();
}
CGVLongArray* Longs(int32_t n) {
    auto a = std::make_unique<CGVLongArray>();
    for (int32_t i = 0; i < n; ++i)
        a->mAdd(&i);
    return a.release();
}

// An operation on a fresh target: `op` changes *t, `state` describes it.
template <class T, class Make, class Op>
std::function<void(Trial&)> On(Make make, Op op, std::function<std::string(T&)> state) {
    return [=](Trial& trial) {
        std::shared_ptr<T> t(make());
        trial.Run([&] { op(*t); }, [&] { return state(*t); });
    };
}
// An operation that produces a value: the state is the value held in `out`.
template <class Out, class Op>
std::function<void(Trial&)> Make(Op op, std::function<std::string(Out&)> state) {
    return [=](Trial& trial) {
        Out out{};
        trial.Run([&] { op(out); }, [&] { return state(out); });
    };
}

using Str = std::function<std::string(CString&)>;
using GStr = std::function<std::string(CGVString&)>;
using Buf = std::function<std::string(CGVBuffer&)>;
using Arr = std::function<std::string(CGVArray&)>;
using Obj = std::function<std::string(std::unique_ptr<CGVObject>&)>;
using Path = std::function<std::string(CGVPath&)>;

Str kStr = [](CString& s) { return S(s); };
GStr kGStr = [](CGVString& s) { return S(s); };
Buf kBuf = [](CGVBuffer& b) { return B(b); };
Arr kArr = [](CGVArray& a) { return A(a); };
Obj kObj = [](std::unique_ptr<CGVObject>& p) { return O(p); };
Path kPath = [](CGVPath& p) { return S(p); };

CString* Shared() {
    static CString original("The quick brown fox");
    return new CString(original);  // shares its block: every change forks first
}
CGVBuffer* Bytes() {
    auto b = std::make_unique<CGVBuffer>();
    b->mInit("a,b,a,b,a", 9);
    return b.release();
}
std::string Saved(CGVArray& a) {
    CGVBuffer b;
    a.mSave(b);
    return B(b);
}
CGVBuffer* SavedOf(CGVArray* a) {
    std::unique_ptr<CGVArray> owned(a);
    auto b = std::make_unique<CGVBuffer>();
    owned->mSave(*b);
    return b.release();
}
std::function<void(std::unique_ptr<CGVObject>&)> Factory(std::string form) {
    return [form](std::unique_ptr<CGVObject>& out) {
        std::istringstream is(form);
        out.reset(CGVObject::mNew(is));
    };
}

// Archive bytes of an object, made before any failure is armed.
std::vector<BYTE> Archived(CGVObject* o) {
    std::unique_ptr<CGVObject> owned(o);
    return gvtest::Stored(*owned);
}
// Stores with an explicit Close: the archive's destructor drops errors, as the framework's did.
std::string StoreClosed(CGVObject& o) {
    CMemFile file;
    CArchive ar(&file, CArchive::store);
    o.Serialize(ar);
    ar.Close();
    return std::to_string(file.GetLength());
}

std::vector<Row> ValueRows() {
    auto fromBytes = [](std::vector<BYTE> const& bytes, CGVObject& o) { gvtest::Load(bytes, o); };
    auto buffer500 = [] {
        auto b = std::make_unique<CGVBuffer>();
        b->mInit(std::string(500, 'z').c_str(), 500);
        return b.release();
    };
    return {
        {"CString fork on SetAt", On<CString>(Shared, [](CString& s) { s.SetAt(0, 't'); }, kStr)},
        {"CString Append", On<CString>(Shared, [](CString& s) { s.Append(" jumps over"); }, kStr)},
        {"CString += string", On<CString>(Shared, [](CString& s) { s += CString(" and more"); }, kStr)},
        {"CString AppendChar", On<CString>(Shared, [](CString& s) { s.AppendChar('!'); }, kStr)},
        {"CString operator+", Make<CString>([](CString& o) { o = CString("ab") + "cd"; }, kStr)},
        {"CString Mid", Make<CString>([](CString& o) { o = CString("abcdef").Mid(2, 3); }, kStr)},
        {"CString Replace", On<CString>(Shared, [](CString& s) { s.Replace("o", "OO"); }, kStr)},
        {"CString Insert", On<CString>(Shared, [](CString& s) { s.Insert(3, "--"); }, kStr)},
        {"CString Delete", On<CString>(Shared, [](CString& s) { s.Delete(0, 4); }, kStr)},
        {"CString MakeUpper", On<CString>(Shared, [](CString& s) { s.MakeUpper(); }, kStr)},
        {"CString TrimLeft", On<CString>(Shared, [](CString& s) { s.TrimLeft("T"); }, kStr)},
        {"CString Format", On<CString>(Shared, [](CString& s) { s.Format("%s=%5.2f %d", "x", 2.5, 7); }, kStr)},
        {"CString AppendFormat", On<CString>(Shared, [](CString& s) { s.AppendFormat("%08X", 255u); }, kStr)},
        {"CString from wide", Make<CString>([](CString& o) { o = L"wide \u00e9"; }, kStr)},
        {"CString GetBuffer", On<CString>(Shared, [](CString& s) { s.GetBuffer(200); s.ReleaseBuffer(); }, kStr)},
        {"CString Tokenize", Make<CString>([](CString& o) { int i = 0; o = CString("a;b").Tokenize(";", i); }, kStr)},
        {"CString LoadString", On<CString>(Shared, [](CString& s) { s.LoadString(4711); }, kStr)},
        {"CString AllocSysString", Make<CString>([](CString& o) {
             std::unique_ptr<OLECHAR, void (*)(BSTR)> b(CString("sys").AllocSysString(), SysFreeString);
             o = W(b.get());
         }, kStr)},
        {"CGVString copy", Make<std::unique_ptr<CGVObject>>([](auto& o) { o.reset(CGVString("x").mCopy()); }, kObj)},
        {"CGVString new", Make<std::unique_ptr<CGVObject>>([](auto& o) { o.reset(CGVString("x").mNew()); }, kObj)},
        {"CGVString text read", On<CGVString>([] { return new CGVString("old"); },
             [](CGVString& s) { std::istringstream is("5 hello "); s.Serialize(is); }, kGStr)},
        {"CGVString archive load", On<CGVString>([] { return new CGVString("old"); }, [=, bytes = Archived(new CGVString("a longer text than before"))](CGVString& s) {
             fromBytes(bytes, s);
         }, kGStr)},
        {"CGVString from OLE", On<CGVString>([] { return new CGVString("old"); },
             [](CGVString& s) { s.mConvertFromOleVariant(COleVariant("ole text", VT_BSTRT)); }, kGStr)},
        {"CGVString to OLE", Make<CString>([](CString& o) {
             COleVariant v;
             CGVString("to ole").mConvertToOleVariant(&v);
             o = W(v.bstrVal);
         }, kStr)},
        {"CGVString assign", On<CGVString>([] { return new CGVString("old"); },
             [](CGVString& s) { s = static_cast<CGVObject const&>(CGVString("new text")); }, kGStr)},
        {"CGVBuffer mInit", On<CGVBuffer>(Bytes, [](CGVBuffer& b) { b.mInit(std::string(300, 'x').c_str(), 300); }, kBuf)},
        {"CGVBuffer mConcat", On<CGVBuffer>(Bytes, [](CGVBuffer& b) { b.mConcat(std::string(300, 'y').c_str(), 300); }, kBuf)},
        {"CGVBuffer mReplaceAll", On<CGVBuffer>(Bytes, [](CGVBuffer& b) { b.mReplaceAll("a", "AAAA"); }, kBuf)},
        {"CGVBuffer copy", Make<std::unique_ptr<CGVObject>>([](auto& o) { o.reset(std::unique_ptr<CGVBuffer>(Bytes())->mCopy()); }, kObj)},
        {"CGVBuffer archive load", On<CGVBuffer>(Bytes, [=, bytes = Archived(buffer500())](CGVBuffer& b) { fromBytes(bytes, b); }, kBuf)},
        {"CGVBuffer text read", On<CGVBuffer>(Bytes, [](CGVBuffer& b) { std::istringstream is("4 wxyz "); b.Serialize(is); }, kBuf)},
        // An empty target: on content, the byte before the added terminator is
        // whatever the grown block held (the terminator goes at the count read).
        {"CGVBuffer mReadFromFile", On<CGVBuffer>([] { return new CGVBuffer; }, [](CGVBuffer& b) {
             std::string data(1500, 'f');
             CMemFile file(reinterpret_cast<BYTE*>(&data[0]), 1500);
             b.mReadFromFile(file);
         }, kBuf)},
        {"CGVBuffer to OLE", Make<CString>([](CString& o) {
             COleVariant v;
             std::unique_ptr<CGVBuffer>(Bytes())->mConvertToOleVariant(&v);
             o.Format("%d", v.vt);
         }, kStr)},
        {"CGVLong copy", Make<std::unique_ptr<CGVObject>>([](auto& o) { o.reset(CGVLong(42).mCopy()); }, kObj)},
        {"CGVLong text write", Make<CString>([](CString& o) { CGVLong l(-7); o = Text(l).c_str(); }, kStr)},
        {"CGVLongArray mAdd", On<CGVArray>([] { return Longs(16); }, [](CGVArray& a) { int32_t v = 9; a.mAdd(&v); }, kArr)},
        {"CGVLongArray insert", On<CGVArray>([] { return Longs(16); }, [](CGVArray& a) { int32_t v = 9; a.mInsertAtIndex(&v, 3); }, kArr)},
        {"CGVLongArray sort", On<CGVArray>([] { return Longs(40); }, [](CGVArray& a) { a.mSort(static_cast<SORTORDER>(0)); }, kArr)},
        {"CGVLongArray mSave", Make<CString>([](CString& o) { std::unique_ptr<CGVArray> a(Longs(50)); o = Saved(*a).c_str(); }, kStr)},
        {"CGVLongArray mLoad", On<CGVArray>([] { return Longs(3); }, [](CGVArray& a) {
             std::unique_ptr<CGVBuffer> b(SavedOf(Longs(50)));
             a.mLoad(*b);
         }, kArr)},
        {"CGVLongArray archive store", Make<CString>([](CString& o) {
             std::unique_ptr<CGVArray> a(Longs(50));
             o = StoreClosed(*a).c_str();
         }, kStr)},
        {"CGVLongArray archive load", On<CGVArray>([] { return Longs(3); }, [=, bytes = Archived(Longs(50))](CGVArray& a) { fromBytes(bytes, a); }, kArr)},
        {"CGVStringArray mAdd", On<CGVArray>([] { return Strings({"a", "b"}); }, [](CGVArray& a) { CGVString s("c"); a.mAdd(&s); }, kArr)},
        {"CGVStringArray insert", On<CGVStringArray>([] { return Strings({"a", "b"}); }, [](CGVStringArray& a) { CGVString s("c"); a.mInsertAtIndex(&s, 1); }, [](CGVStringArray& a) { return A(a); })},
        {"CGVStringArray set", On<CGVArray>([] { return Strings({"a", "b"}); }, [](CGVArray& a) { CGVString s("long replacement"); a.mSetArrayItem(&s, 0); }, kArr)},
        {"CGVStringArray sort", On<CGVArray>([] { return Strings({"d", "b", "c", "a"}); }, [](CGVArray& a) { a.mSort(static_cast<SORTORDER>(1)); }, kArr)},
        {"CGVStringArray mSave", Make<CString>([](CString& o) { std::unique_ptr<CGVArray> a(Strings({"one", "two"})); o = Saved(*a).c_str(); }, kStr)},
        {"CGVStringArray mLoad", On<CGVArray>([] { return Strings({"old"}); }, [](CGVArray& a) {
             std::unique_ptr<CGVBuffer> b(SavedOf(Strings({"x", "yy", "zzz"})));
             a.mLoad(*b);
         }, kArr)},
        {"CGVStringArray archive load", On<CGVArray>([] { return Strings({"old"}); }, [=, bytes = Archived(Strings({"x", "yy", "zzz"}))](CGVArray& a) { fromBytes(bytes, a); }, kArr)},
        {"CGVStringArray assign", On<CGVStringArray>([] { return Strings({"old"}); }, [](CGVStringArray& a) {
             std::unique_ptr<CGVStringArray> from(Strings({"p", "q"}));
             a = *from;
         }, [](CGVStringArray& a) { return A(a); })},
        {"CGVStringArray archive store", Make<CString>([](CString& o) {
             std::unique_ptr<CGVArray> a(Strings({"x", "yy", "zzz"}));
             o = StoreClosed(*a).c_str();
         }, kStr)},
        {"CGVStringArray new", Make<std::unique_ptr<CGVObject>>([](auto& o) { o.reset(CGVStringArray().mNew()); }, kObj)},
        {"CGVDate mGetStr", Make<CGVString>([](CGVString& o) { CGVDate(2004, 3, 7, 14, 5, 9).mGetStr(o); }, kGStr)},
        {"CGVDate mGetDayPlanStr", Make<CGVString>([](CGVString& o) { CGVDate(2004, 3, 7).mGetDayPlanStr(o); }, kGStr)},
        {"CGVDate mGetMonthDateStr", Make<CGVString>([](CGVString& o) { CGVDate(2004, 3, 7).mGetMonthDateStr(o); }, kGStr)},
        {"CGVDate text write", Make<CString>([](CString& o) { CGVDate d(1999, 12, 31); o = Text(d).c_str(); }, kStr)},
        {"CGVMoney text", Make<CGVString>([](CGVString& o) { o = static_cast<CGVString>(CGVMoney(12.5)); }, kGStr)},
        {"CGVMoney from text", Make<CString>([](CString& o) { o.Format("%.2f", CGVMoney(CGVString("-3.25")).mGetAmount()); }, kStr)},
        {"CGVMoney sum", Make<std::unique_ptr<CGVObject>>([](auto& o) {
             CGVMoney a(1.25), b(2);
             o.reset(&(a + b));
         }, kObj)},
        {"CGVMoney to OLE", Make<CString>([](CString& o) {
             COleVariant v;
             CGVMoney(7.5).mConvertToOleVariant(&v);
             o.Format("%d", v.vt);
         }, kStr)},
        {"factory T", Make<std::unique_ptr<CGVObject>>(Factory("T5 hello "), kObj)},
        {"factory U", Make<std::unique_ptr<CGVObject>>(Factory("U-15 "), kObj)},
        {"factory V", Make<std::unique_ptr<CGVObject>>(Factory("V3 abc "), kObj)},
        {"factory W", Make<std::unique_ptr<CGVObject>>(Factory("W2004 3 7 14 5 9 "), kObj)},
        {"factory X", Make<std::unique_ptr<CGVObject>>(Factory("XU2 T1 a T2 bb "), kObj)},
        {"factory Y", Make<std::unique_ptr<CGVObject>>(Factory("YU2 U1 U2 "), kObj)},
    };
}

std::vector<Row> PathRows() {
    auto path = [](const char* text) { return [text] { return new CGVPath(text); }; };
    auto got = [](auto member) {
        return Make<CGVString>([member](CGVString& o) { o = member(); }, kGStr);
    };
    return {
        {"CGVPath GetName", got([] { return CGVPath("C:\\dir\\name.txt").GetName(); })},
        {"CGVPath GetDirectory", got([] { return CGVPath("C:\\dir\\sub\\name.txt").GetDirectory(); })},
        {"CGVPath GetExtension", got([] { return CGVPath("C:\\dir\\name.txt").GetExtension(); })},
        {"CGVPath GetRelativePath", got([] { return CGVPath("C:\\site\\pages\\a.htm").GetRelativePath("C:\\site\\img"); })},
        {"CGVPath GetUrlRelativePath", got([] { return CGVPath("C:\\site\\pages\\a.htm").GetUrlRelativePath("C:\\site\\img"); })},
        {"CGVPath GetURLHost", got([] { return CGVPath("http://host.example/a/b").GetURLHost(); })},
        {"CGVPath CreateFileScheme", got([] { return CGVPath("C:\\dir\\a b.htm").CreateFileScheme(); })},
        {"CGVPath AppendPath", On<CGVPath>(path("C:\\dir"), [](CGVPath& p) { p.AppendPath("sub\\name.txt", '\\', 0); }, kPath)},
        {"CGVPath SetExtension", On<CGVPath>(path("C:\\dir\\name.txt"), [](CGVPath& p) { p.SetExtension(".html"); }, kPath)},
        {"CGVPath Capitalize", On<CGVPath>(path("c:\\some dir\\name"), [](CGVPath& p) { p.Capitalize(); }, kPath)},
        {"CGVPath AddQuotes", On<CGVPath>(path("C:\\a b"), [](CGVPath& p) { p.AddQuotes(); }, kPath)},
        {"CGVPath MakeLegalPath", On<CGVPath>(path("L:\\dir:x\\file?.txt"), [](CGVPath& p) { p.MakeLegalPath(); }, kPath)},
        {"CGVPath MakeLegalName", On<CGVPath>(path("abcdefghij.text"), [](CGVPath& p) { p.MakeLegalName("S:\\"); }, kPath)},
        {"CGVPath MakeLegalURL", On<CGVPath>(path("a b%c.htm"), [](CGVPath& p) { p.MakeLegalURL("http", 0); }, kPath)},
        {"CGVPath Explode", Make<CString>([](CString& o) {
             CGVPath volume;
             CGVStringArray parts;
             CGVPath("C:\\a\\b\\c.txt").Explode(volume, parts);
             o = (S(volume) + A(parts)).c_str();
         }, kStr)},
        {"CGVPath Implode", On<CGVPath>(path("old"), [](CGVPath& p) {
             std::unique_ptr<CGVStringArray> parts(Strings({"a", "b", "c.txt"}));
             p.Implode("C:", *parts);
         }, kPath)},
        {"CGVPath MakeUnique", On<CGVPath>(path("report.txt"), [](CGVPath& p) { p.MakeUnique("L:\\", 0, 0, nullptr, nullptr); }, kPath)},
        {"CGVPath MakeUnique short", On<CGVPath>(path("REPORT.TXT"), [](CGVPath& p) { p.MakeUnique("S:\\", 0, 0, nullptr, nullptr); }, kPath)},
        {"CGVPath GetFullPathNameA", got([] { return CGVPath("name.txt").GetFullPathNameA("L:\\dir"); })},
    };
}

class AllocationFailure : public VolumeFixture {};

// States can be long: a failure shows where they part and a little of each.
::testing::AssertionResult Same(std::string const& want, std::string const& got) {
    if (want == got)
        return ::testing::AssertionSuccess();
    size_t at = 0;
    while (at < want.size() && at < got.size() && want[at] == got[at])
        ++at;
    return ::testing::AssertionFailure() << "differ at " << at << " of " << want.size() << "/" << got.size()
                                         << ": \"" << want.substr(at, 24) << "\" vs \"" << got.substr(at, 24) << "\"";
}

}  // namespace

TEST_F(AllocationFailure, EveryPointOfEveryOperation) {
    Touch("long/report.txt");
    Touch("short/REPORT.TXT");
    MakeDir("long/dir");
    std::vector<Row> rows = ValueRows();
    for (Row& row : PathRows())
        rows.push_back(std::move(row));
    int32_t points = 0;
    for (Row const& row : rows) {
        SCOPED_TRACE(row.name);
        Trial clean;
        row.body(clean);
        ASSERT_FALSE(clean.threw || !clean.other.empty()) << clean.other;
        for (int32_t nth = 1; nth <= 10000; ++nth) {
            SCOPED_TRACE("allocation " + std::to_string(nth));
            Trial t;
            t.nth = nth;
            row.body(t);
            EXPECT_EQ("", t.other);
            if (!t.fired) {
                EXPECT_TRUE(Same(clean.end, t.end));
                break;
            }
            ++points;
            if (t.threw) {
                EXPECT_TRUE(Same(t.before, t.end)) << "changed by a failed call";
                EXPECT_TRUE(Same(clean.end, t.retried)) << "not usable after a failed call";
            } else if (t.end != t.before) {
                EXPECT_TRUE(Same(clean.end, t.end)) << "a swallowed failure gave another result";
            }
        }
    }
    RecordProperty("operations", static_cast<int>(rows.size()));
    RecordProperty("failure_points", points);
    std::printf("%zu operations, %d allocation failure points\n", rows.size(), points);
}
