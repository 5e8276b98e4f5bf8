// Each allocation of every operation failing in turn: the memory exception reaches the caller, the target is kept, a retry works.
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
#include "gvlib/platform/afxdisp.h"
#include "gvlib/platform/afxexcept.h"
#include "path/volume_fixture.h"
#include "platform/fault_injection.h"
#include "support/archive_bytes.h"

namespace {

using gvplatform::faults::AllocationFailureFired;
using gvplatform::faults::FailAllocation;
using Obj = std::unique_ptr<CGVObject>;

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
        fired = AllocationFailureFired(), FailAllocation(0);
        end = state();
        if (threw)
            op(), retried = state();  // the object must still be usable
    }
};

struct Row { const char* name; std::function<void(Trial&)> body; };

// What a target holds, told apart well enough for these operations.
std::string State(CString const& s) { return std::string(s.GetString(), static_cast<size_t>(s.GetLength())); }
std::string State(CGVBuffer const& b) {
    return std::string(b.mGetBuffer() ? b.mGetBuffer() : "", static_cast<size_t>(b.mGetLength())) + "|" +
           std::to_string(b.mGetLength()) + (b.mIsLocked() ? "L" : "");
}
std::string State(CGVArray const& a) {
    std::string out = std::to_string(a.mGetNumItems()) + ":";
    for (int32_t i = 0; i < a.mGetNumItems(); ++i) {
        if (a.mGetElementSize() > 0) {
            out.append(static_cast<char const*>(a.mItemPtr(i)), static_cast<size_t>(a.mGetElementSize()));
            continue;
        }
        CGVString item;  // a string array
        a.mGetArrayItem(&item, i);
        out += State(item) + ",";
    }
    return out;
}
std::string Text(CGVObject& o) { std::ostringstream os; os << o; return os.str(); }
std::string State(Obj const& p) { return p ? Text(*p) : "null"; }
// The low bytes of a wide text: enough to tell the texts of these tests apart.
CString W(BSTR b) {
    CString out;
    for (; b && *b; ++b)
        out += static_cast<char>(*b);
    return out;
}

// An operation on a fresh target: `op` changes *t.
template <class T, class Make, class Op>
std::function<void(Trial&)> On(Make make, Op op) {
    return [=](Trial& trial) {
        std::shared_ptr<T> t(make());
        trial.Run([&] { op(*t); }, [&] { return State(*t); });
    };
}
// An operation that produces a value into an empty `Out`.
template <class Out, class Op>
std::function<void(Trial&)> Make(Op op) { return On<Out>([] { return new Out{}; }, op); }

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
CString* Shared() {
    static CString original("The quick brown fox");
    return new CString(original);  // shares its block: every change forks first
}
CGVBuffer* Bytes(std::string const& content) {
    auto b = std::make_unique<CGVBuffer>();
    b->mInit(content.c_str(), static_cast<int32_t>(content.size()));
    return b.release();
}
CGVBuffer* Abab() { return Bytes("a,b,a,b,a"); }
CGVBuffer* SavedOf(CGVArray* a) {
    std::unique_ptr<CGVArray> owned(a);
    auto b = std::make_unique<CGVBuffer>();
    owned->mSave(*b);
    return b.release();
}
std::string Saved(CGVArray* a) { return State(*std::unique_ptr<CGVBuffer>(SavedOf(a))); }
std::function<void(Obj&)> Factory(std::string form) {
    return [form](Obj& out) {
        std::istringstream is(form);
        out.reset(CGVObject::mNew(is));
    };
}
// Archive bytes of an object, made before any failure is armed, and a load of them.
std::function<void(CGVObject&)> LoadOf(CGVObject* o) {
    return [bytes = gvtest::Stored(*std::unique_ptr<CGVObject>(o))](CGVObject& target) { gvtest::Load(bytes, target); };
}
// Stores with an explicit Close: the archive's destructor drops errors, as the framework's did.
std::string StoreClosed(CGVObject* o) {
    std::unique_ptr<CGVObject> owned(o);
    CMemFile file;
    CArchive ar(&file, CArchive::store);
    owned->Serialize(ar);
    ar.Close();
    return std::to_string(file.GetLength());
}
CGVString* Old() { return new CGVString("old"); }

std::vector<Row> Rows() {
    auto path = [](const char* text) { return [text] { return new CGVPath(text); }; };
    auto got = [](auto member) { return Make<CGVString>([member](CGVString& o) { o = member(); }); };
    return {
        {"CString fork on SetAt", On<CString>(Shared, [](CString& s) { s.SetAt(0, 't'); })},
        {"CString Append", On<CString>(Shared, [](CString& s) { s.Append(" jumps over"); })},
        {"CString += string", On<CString>(Shared, [](CString& s) { s += CString(" and more"); })},
        {"CString AppendChar", On<CString>(Shared, [](CString& s) { s.AppendChar('!'); })},
        {"CString operator+", Make<CString>([](CString& o) { o = CString("ab") + "cd"; })},
        {"CString Mid", Make<CString>([](CString& o) { o = CString("abcdef").Mid(2, 3); })},
        {"CString Replace", On<CString>(Shared, [](CString& s) { s.Replace("o", "OO"); })},
        {"CString Insert", On<CString>(Shared, [](CString& s) { s.Insert(3, "--"); })},
        {"CString Delete", On<CString>(Shared, [](CString& s) { s.Delete(0, 4); })},
        {"CString MakeUpper", On<CString>(Shared, [](CString& s) { s.MakeUpper(); })},
        {"CString TrimLeft", On<CString>(Shared, [](CString& s) { s.TrimLeft("T"); })},
        {"CString Format", On<CString>(Shared, [](CString& s) { s.Format("%s=%5.2f %d", "x", 2.5, 7); })},
        {"CString AppendFormat", On<CString>(Shared, [](CString& s) { s.AppendFormat("%08X", 255u); })},
        {"CString from wide", Make<CString>([](CString& o) { o = L"wide \u00e9"; })},
        {"CString GetBuffer", On<CString>(Shared, [](CString& s) { s.GetBuffer(200); s.ReleaseBuffer(); })},
        {"CString Tokenize", Make<CString>([](CString& o) { int i = 0; o = CString("a;b").Tokenize(";", i); })},
        {"CString LoadString", On<CString>(Shared, [](CString& s) { s.LoadString(4711); })},
        {"CString AllocSysString", Make<CString>([](CString& o) { o = W(std::unique_ptr<OLECHAR, void (*)(BSTR)>(CString("sys").AllocSysString(), SysFreeString).get()); })},
        {"CGVString copy", Make<Obj>([](Obj& o) { o.reset(CGVString("x").mCopy()); })},
        {"CGVString new", Make<Obj>([](Obj& o) { o.reset(CGVString("x").mNew()); })},
        {"CGVString text read", On<CGVString>(Old, [](CGVString& s) { std::istringstream is("5 hello "); s.Serialize(is); })},
        {"CGVString archive load", On<CGVString>(Old, LoadOf(new CGVString("a longer text than before")))},
        {"CGVString from OLE", On<CGVString>(Old, [](CGVString& s) { s.mConvertFromOleVariant(COleVariant("ole text", VT_BSTRT)); })},
        {"CGVString to OLE", Make<CString>([](CString& o) { COleVariant v; CGVString("to ole").mConvertToOleVariant(&v); o = W(v.bstrVal); })},
        {"CGVString assign", On<CGVString>(Old, [](CGVString& s) { s = static_cast<CGVObject const&>(CGVString("new text")); })},
        {"CGVBuffer mInit", On<CGVBuffer>(Abab, [](CGVBuffer& b) { b.mInit(std::string(300, 'x').c_str(), 300); })},
        {"CGVBuffer mConcat", On<CGVBuffer>(Abab, [](CGVBuffer& b) { b.mConcat(std::string(300, 'y').c_str(), 300); })},
        {"CGVBuffer mReplaceAll", On<CGVBuffer>(Abab, [](CGVBuffer& b) { b.mReplaceAll("a", "AAAA"); })},
        {"CGVBuffer copy", Make<Obj>([](Obj& o) { o.reset(std::unique_ptr<CGVBuffer>(Abab())->mCopy()); })},
        {"CGVBuffer archive load", On<CGVBuffer>(Abab, LoadOf(Bytes(std::string(500, 'z'))))},
        {"CGVBuffer text read", On<CGVBuffer>(Abab, [](CGVBuffer& b) { std::istringstream is("4 wxyz "); b.Serialize(is); })},
        // An empty target: with content, the byte before the added terminator is whatever the grown block held.
        {"CGVBuffer mReadFromFile", On<CGVBuffer>([] { return new CGVBuffer; }, [](CGVBuffer& b) {
             std::string data(1500, 'f');
             CMemFile file(reinterpret_cast<BYTE*>(&data[0]), 1500);
             b.mReadFromFile(file);
         })},
        {"CGVBuffer to OLE", Make<CString>([](CString& o) { COleVariant v; std::unique_ptr<CGVBuffer>(Abab())->mConvertToOleVariant(&v); o.Format("%d", v.vt); })},
        {"CGVLong copy", Make<Obj>([](Obj& o) { o.reset(CGVLong(42).mCopy()); })},
        {"CGVLong text write", Make<CString>([](CString& o) { CGVLong l(-7); o = Text(l).c_str(); })},
        {"CGVLongArray mAdd", On<CGVLongArray>([] { return Longs(16); }, [](CGVLongArray& a) { int32_t v = 9; a.mAdd(&v); })},
        {"CGVLongArray insert", On<CGVArray>([] { return Longs(16); }, [](CGVArray& a) { int32_t v = 9; a.mInsertAtIndex(&v, 3); })},
        {"CGVLongArray sort", On<CGVArray>([] { return Longs(40); }, [](CGVArray& a) { a.mSort(static_cast<SORTORDER>(0)); })},
        {"CGVLongArray mSave", Make<CString>([](CString& o) { o = Saved(Longs(50)).c_str(); })},
        {"CGVLongArray mLoad", On<CGVArray>([] { return Longs(3); }, [](CGVArray& a) { a.mLoad(*std::unique_ptr<CGVBuffer>(SavedOf(Longs(50)))); })},
        {"CGVLongArray archive store", Make<CString>([](CString& o) { o = StoreClosed(Longs(50)).c_str(); })},
        {"CGVLongArray archive load", On<CGVArray>([] { return Longs(3); }, LoadOf(Longs(50)))},
        {"CGVStringArray mAdd", On<CGVArray>([] { return Strings({"a", "b"}); }, [](CGVArray& a) { CGVString s("c"); a.mAdd(&s); })},
        {"CGVStringArray insert", On<CGVStringArray>([] { return Strings({"a", "b"}); }, [](CGVStringArray& a) { CGVString s("c"); a.mInsertAtIndex(&s, 1); })},
        {"CGVStringArray set", On<CGVArray>([] { return Strings({"a", "b"}); }, [](CGVArray& a) { CGVString s("long replacement"); a.mSetArrayItem(&s, 0); })},
        {"CGVStringArray sort", On<CGVArray>([] { return Strings({"d", "b", "c", "a"}); }, [](CGVArray& a) { a.mSort(static_cast<SORTORDER>(1)); })},
        {"CGVStringArray mSave", Make<CString>([](CString& o) { o = Saved(Strings({"one", "two"})).c_str(); })},
        {"CGVStringArray mLoad", On<CGVArray>([] { return Strings({"old"}); }, [](CGVArray& a) { a.mLoad(*std::unique_ptr<CGVBuffer>(SavedOf(Strings({"x", "yy", "zzz"})))); })},
        {"CGVStringArray archive load", On<CGVArray>([] { return Strings({"old"}); }, LoadOf(Strings({"x", "yy", "zzz"})))},
        {"CGVStringArray assign", On<CGVStringArray>([] { return Strings({"old"}); }, [](CGVStringArray& a) { a = *std::unique_ptr<CGVStringArray>(Strings({"p", "q"})); })},
        {"CGVStringArray archive store", Make<CString>([](CString& o) { o = StoreClosed(Strings({"x", "yy", "zzz"})).c_str(); })},
        {"CGVStringArray new", Make<Obj>([](Obj& o) { o.reset(CGVStringArray().mNew()); })},
        {"CGVDate mGetStr", Make<CGVString>([](CGVString& o) { CGVDate(2004, 3, 7, 14, 5, 9).mGetStr(o); })},
        {"CGVDate mGetDayPlanStr", Make<CGVString>([](CGVString& o) { CGVDate(2004, 3, 7).mGetDayPlanStr(o); })},
        {"CGVDate mGetMonthDateStr", Make<CGVString>([](CGVString& o) { CGVDate(2004, 3, 7).mGetMonthDateStr(o); })},
        {"CGVDate text write", Make<CString>([](CString& o) { CGVDate d(1999, 12, 31); o = Text(d).c_str(); })},
        {"CGVMoney text", Make<CGVString>([](CGVString& o) { o = static_cast<CGVString>(CGVMoney(12.5)); })},
        {"CGVMoney from text", Make<CString>([](CString& o) { o.Format("%.2f", CGVMoney(CGVString("-3.25")).mGetAmount()); })},
        {"CGVMoney sum", Make<Obj>([](Obj& o) { CGVMoney a(1.25), b(2); o.reset(&(a + b)); })},
        {"CGVMoney to OLE", Make<CString>([](CString& o) { COleVariant v; CGVMoney(7.5).mConvertToOleVariant(&v); o.Format("%d", v.vt); })},
        {"factory T", Make<Obj>(Factory("T5 hello "))},
        {"factory U", Make<Obj>(Factory("U-15 "))},
        {"factory V", Make<Obj>(Factory("V3 abc "))},
        {"factory W", Make<Obj>(Factory("W2004 3 7 14 5 9 "))},
        {"factory X", Make<Obj>(Factory("XU2 T1 a T2 bb "))},
        {"factory Y", Make<Obj>(Factory("YU2 U1 U2 "))},
        {"CGVPath GetName", got([] { return CGVPath("C:\\dir\\name.txt").GetName(); })},
        {"CGVPath GetDirectory", got([] { return CGVPath("C:\\dir\\sub\\name.txt").GetDirectory(); })},
        {"CGVPath GetExtension", got([] { return CGVPath("C:\\dir\\name.txt").GetExtension(); })},
        {"CGVPath GetRelativePath", got([] { return CGVPath("C:\\site\\pages\\a.htm").GetRelativePath("C:\\site\\img"); })},
        {"CGVPath GetUrlRelativePath", got([] { return CGVPath("C:\\site\\pages\\a.htm").GetUrlRelativePath("C:\\site\\img"); })},
        {"CGVPath GetURLHost", got([] { return CGVPath("http://host.example/a/b").GetURLHost(); })},
        {"CGVPath CreateFileScheme", got([] { return CGVPath("C:\\dir\\a b.htm").CreateFileScheme(); })},
        {"CGVPath AppendPath", On<CGVPath>(path("C:\\dir"), [](CGVPath& p) { p.AppendPath("sub\\name.txt", '\\', 0); })},
        {"CGVPath SetExtension", On<CGVPath>(path("C:\\dir\\name.txt"), [](CGVPath& p) { p.SetExtension(".html"); })},
        {"CGVPath Capitalize", On<CGVPath>(path("c:\\some dir\\name"), [](CGVPath& p) { p.Capitalize(); })},
        {"CGVPath AddQuotes", On<CGVPath>(path("C:\\a b"), [](CGVPath& p) { p.AddQuotes(); })},
        {"CGVPath MakeLegalPath", On<CGVPath>(path("L:\\dir:x\\file?.txt"), [](CGVPath& p) { p.MakeLegalPath(); })},
        {"CGVPath MakeLegalName", On<CGVPath>(path("abcdefghij.text"), [](CGVPath& p) { p.MakeLegalName("S:\\"); })},
        {"CGVPath MakeLegalURL", On<CGVPath>(path("a b%c.htm"), [](CGVPath& p) { p.MakeLegalURL("http", 0); })},
        {"CGVPath Explode", Make<CString>([](CString& o) {
             CGVPath volume;
             CGVStringArray parts;
             CGVPath("C:\\a\\b\\c.txt").Explode(volume, parts), o = (State(volume) + State(parts)).c_str();
         })},
        {"CGVPath Implode", On<CGVPath>(path("old"), [](CGVPath& p) { p.Implode("C:", *std::unique_ptr<CGVStringArray>(Strings({"a", "b", "c.txt"}))); })},
        {"CGVPath MakeUnique", On<CGVPath>(path("report.txt"), [](CGVPath& p) { p.MakeUnique("L:\\", 0, 0, nullptr, nullptr); })},
        {"CGVPath MakeUnique short", On<CGVPath>(path("REPORT.TXT"), [](CGVPath& p) { p.MakeUnique("S:\\", 0, 0, nullptr, nullptr); })},
        {"CGVPath GetFullPathNameA", got([] { return CGVPath("name.txt").GetFullPathNameA("L:\\dir"); })},
    };
}

class AllocationFailure : public VolumeFixture {};

}  // namespace

TEST_F(AllocationFailure, EveryPointOfEveryOperation) {
    Touch("long/report.txt"), Touch("short/REPORT.TXT"), MakeDir("long/dir");
    std::vector<Row> const rows = Rows();
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
                EXPECT_EQ(clean.end, t.end);
                break;
            }
            ++points;
            if (t.threw) {
                EXPECT_EQ(t.before, t.end) << "changed by a failed call";
                EXPECT_EQ(clean.end, t.retried) << "not usable after a failed call";
            } else if (t.end != t.before) {
                EXPECT_EQ(clean.end, t.end) << "a swallowed failure gave another result";
            }
        }
    }
    std::printf("%zu operations, %d allocation failure points\n", rows.size(), points);
}

// A new array whose block cannot be had raises, rather than start without one.
TEST_F(AllocationFailure, NewArrayRaises) {
    FailAllocation(1);
    EXPECT_THROW(CGVLongArray(), CMemoryException);
    FailAllocation(0);
}
