// CArchive: scalar layouts, counts, string lengths and strings, errors and buffering.
#include "gvlib/platform/afxarchive.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <string>
#include <vector>

#if defined(__SANITIZE_ADDRESS__)
#define GVLIB_TEST_ASAN 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define GVLIB_TEST_ASAN 1
#endif
#endif

namespace {

typedef std::vector<BYTE> Bytes;

Bytes Cat(Bytes a, const Bytes& b) {
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

// The bytes a storing archive leaves in a memory file.
Bytes Store(const std::function<void(CArchive&)>& write) {
    CMemFile file;
    {
        CArchive ar(&file, CArchive::store);
        write(ar);
        ar.Close();
    }
    Bytes out(static_cast<size_t>(file.GetLength()));
    file.SeekToBegin();
    if (!out.empty()) {
        EXPECT_EQ(file.Read(out.data(), static_cast<UINT>(out.size())), out.size());
    }
    return out;
}

// Loads from a fixed memory file holding `in`, named "saved.dat".
void Load(Bytes in, const std::function<void(CArchive&)>& read) {
    CMemFile file(in.data(), static_cast<UINT>(in.size()));
    file.SetFilePath("saved.dat");
    CArchive ar(&file, CArchive::load);
    read(ar);
}

// The cause of the CArchiveException that `action` raises, -1 when it raises none;
// the exception's file name goes to *pName.
int ArchiveCause(const std::function<void()>& action, CString* pName = nullptr) {
    try {
        action();
    } catch (const CArchiveException& e) {
        if (pName != nullptr)
            *pName = e.m_strFileName;
        return e.m_cause;
    }
    return -1;
}

// A string of nLength bytes cycling through every byte value, NUL included.
CString Pattern(int nLength) {
    std::string s(static_cast<size_t>(nLength), '\0');
    for (int i = 0; i < nLength; ++i)
        s[static_cast<size_t>(i)] = static_cast<char>((i * 7 + 1) & 0xFF);
    return CString(s.data(), nLength);
}

Bytes BytesOf(const CString& s) {
    const BYTE* p = reinterpret_cast<const BYTE*>(s.GetString());
    return Bytes(p, p + s.GetLength());
}

struct LengthCase {
    UINT nLength;
    Bytes narrow;  // AfxWriteStringLength(ar, n, FALSE)
    Bytes wide;    // AfxWriteStringLength(ar, n, TRUE)
};

const std::vector<LengthCase>& LengthCases() {
    static const std::vector<LengthCase> cases = {
        {0, {0x00}, {0xFF, 0xFE, 0xFF, 0x00}},
        {3, {0x03}, {0xFF, 0xFE, 0xFF, 0x03}},
        {254, {0xFE}, {0xFF, 0xFE, 0xFF, 0xFE}},
        {255, {0xFF, 0xFF, 0x00}, {0xFF, 0xFE, 0xFF, 0xFF, 0xFF, 0x00}},
        {300, {0xFF, 0x2C, 0x01}, {0xFF, 0xFE, 0xFF, 0xFF, 0x2C, 0x01}},
        {65533, {0xFF, 0xFD, 0xFF}, {0xFF, 0xFE, 0xFF, 0xFF, 0xFD, 0xFF}},
        {65534, {0xFF, 0xFF, 0xFF, 0xFE, 0xFF, 0x00, 0x00}, {0xFF, 0xFE, 0xFF, 0xFF, 0xFF, 0xFF, 0xFE, 0xFF, 0x00, 0x00}},
        {65535, {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x00, 0x00}, {0xFF, 0xFE, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x00, 0x00}},
        {70000, {0xFF, 0xFF, 0xFF, 0x70, 0x11, 0x01, 0x00}, {0xFF, 0xFE, 0xFF, 0xFF, 0xFF, 0xFF, 0x70, 0x11, 0x01, 0x00}},
    };
    return cases;
}

}  // namespace

TEST(CArchive, StringLengthEncodingIsExact) {
    for (const LengthCase& c : LengthCases()) {
        SCOPED_TRACE(c.nLength);
        EXPECT_EQ(Store([&](CArchive& ar) { AfxWriteStringLength(ar, c.nLength, FALSE); }), c.narrow);
        EXPECT_EQ(Store([&](CArchive& ar) { AfxWriteStringLength(ar, c.nLength, TRUE); }), c.wide);
        Load(c.narrow, [&](CArchive& ar) {
            int nCharSize = 0;
            EXPECT_EQ(AfxReadStringLength(ar, nCharSize), c.nLength);
            EXPECT_EQ(nCharSize, 1);
            EXPECT_TRUE(ar.IsBufferEmpty());
        });
        Load(c.wide, [&](CArchive& ar) {
            int nCharSize = 0;
            EXPECT_EQ(AfxReadStringLength(ar, nCharSize), c.nLength);
            EXPECT_EQ(nCharSize, 2);
            EXPECT_TRUE(ar.IsBufferEmpty());
        });
    }
}

TEST(CArchive, NarrowStringsRoundTripWithExactPrefix) {
    for (const LengthCase& c : LengthCases()) {
        SCOPED_TRACE(c.nLength);
        const CString text = Pattern(static_cast<int>(c.nLength));
        Bytes stored = Store([&](CArchive& ar) { ar << text; });
        EXPECT_EQ(stored, Cat(c.narrow, BytesOf(text)));
        Load(stored, [&](CArchive& ar) {
            CString back("previous");
            ar >> back;
            EXPECT_EQ(back.GetLength(), text.GetLength());
            EXPECT_EQ(BytesOf(back), BytesOf(text));
            BYTE extra;
            EXPECT_EQ(ar.Read(&extra, 1), 0u);
        });
    }
}

TEST(CArchive, EmbeddedNulsAreKept) {
    const CString text("a\0b\0", 4);
    Bytes stored = Store([&](CArchive& ar) { ar << text; });
    EXPECT_EQ(stored, (Bytes{0x04, 'a', 0x00, 'b', 0x00}));
    Load(stored, [&](CArchive& ar) {
        CString back;
        ar >> back;
        EXPECT_EQ(BytesOf(back), BytesOf(text));
    });
}

TEST(CArchive, WideStringReadsBackNarrowed) {
    // "Aé€" as UTF-16LE behind the wide marker.
    Load({0xFF, 0xFE, 0xFF, 0x03, 0x41, 0x00, 0xE9, 0x00, 0xAC, 0x20}, [](CArchive& ar) {
        CString back;
        ar >> back;
        EXPECT_EQ(back, CString(L"A\u00E9\u20AC"));
        ASSERT_GE(back.GetLength(), 2);
        EXPECT_EQ(static_cast<BYTE>(back[0]), 0x41);
        EXPECT_EQ(static_cast<BYTE>(back[1]), 0xE9);
    });
    // A long wide string takes the 16-bit length after the marker.
    Bytes longWide = {0xFF, 0xFE, 0xFF, 0xFF, 0x2C, 0x01};
    for (int i = 0; i < 300; ++i)
        longWide.insert(longWide.end(), {'x', 0x00});
    Load(longWide, [](CArchive& ar) {
        CString back;
        ar >> back;
        EXPECT_EQ(back, CString('x', 300));
    });
}

TEST(CArchive, WideStringNarrowsToWindows1252) {
    if (CString(L"\u20AC") != CString("\x80"))
        GTEST_SKIP() << "the platform's WideCharToMultiByte does not map U+20AC to 0x80 yet";
    Load({0xFF, 0xFE, 0xFF, 0x03, 0x41, 0x00, 0xE9, 0x00, 0xAC, 0x20}, [](CArchive& ar) {
        CString back;
        ar >> back;
        EXPECT_EQ(BytesOf(back), (Bytes{0x41, 0xE9, 0x80}));
    });
}

TEST(CArchive, WideCStringRoundTrip) {
    // U+1F600 takes a surrogate pair: 4 UTF-16 units for 3 wide characters.
    const CStringW text(L"A\u00E9\U0001F600");
    Bytes stored = Store([&](CArchive& ar) { ar << text; });
    EXPECT_EQ(stored, (Bytes{0xFF, 0xFE, 0xFF, 0x04, 0x41, 0x00, 0xE9, 0x00, 0x3D, 0xD8, 0x00, 0xDE}));
    Load(stored, [&](CArchive& ar) {
        CStringW back;
        ar >> back;
        EXPECT_EQ(std::wstring(back.GetString(), static_cast<size_t>(back.GetLength())),
                  std::wstring(text.GetString(), static_cast<size_t>(text.GetLength())));
    });
    // A narrow string read into a wide one is widened.
    Load({0x02, 0x41, 0xE9}, [](CArchive& ar) {
        CStringW back;
        ar >> back;
        EXPECT_EQ(std::wstring(back.GetString()), std::wstring(L"A\u00E9"));
    });
}

TEST(CArchive, EndOfFileRaisesCause3WithoutFileName) {
    struct Case {
        const char* what;
        Bytes in;
        std::function<void(CArchive&)> read;
    };
    const std::vector<Case> cases = {
        {"string body", {0x05, 'a', 'b'}, [](CArchive& ar) { CString s; ar >> s; }},
        {"wide string body", {0xFF, 0xFE, 0xFF, 0x02, 'a', 0x00, 'b'}, [](CArchive& ar) { CString s; ar >> s; }},
        {"string length", {0xFF, 0x2C}, [](CArchive& ar) { CString s; ar >> s; }},
        {"DWORD", {0x01, 0x02, 0x03}, [](CArchive& ar) { DWORD dw; ar >> dw; }},
        {"LONG", {}, [](CArchive& ar) { LONG l; ar >> l; }},
        {"ULONGLONG", {1, 2, 3, 4, 5, 6, 7}, [](CArchive& ar) { ULONGLONG q; ar >> q; }},
        {"WORD", {0x01}, [](CArchive& ar) { WORD w; ar >> w; }},
        {"BYTE", {}, [](CArchive& ar) { BYTE b; ar >> b; }},
        {"ReadCount 16-bit", {0x01}, [](CArchive& ar) { ar.ReadCount(); }},
        {"ReadCount 32-bit", {0xFF, 0xFF, 0x01, 0x00}, [](CArchive& ar) { ar.ReadCount(); }},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        Load(c.in, [&](CArchive& ar) {
            EXPECT_EQ(ar.m_strFileName, "saved.dat");
            CString name("unset");
            EXPECT_EQ(ArchiveCause([&] { c.read(ar); }, &name), CArchiveException::endOfFile);
            EXPECT_EQ(name, "");
        });
    }
}

TEST(CArchive, ShortStringLeavesTargetUnchanged) {
    Load({0x05, 'a', 'b'}, [](CArchive& ar) {
        CString s("keep");
        EXPECT_EQ(ArchiveCause([&] { ar >> s; }), CArchiveException::endOfFile);
        EXPECT_EQ(s, "keep");
    });
}

TEST(CArchive, WrongDirectionRaisesWithFileName) {
    CMemFile file;
    file.SetFilePath("saved.dat");
    {
        CArchive ar(&file, CArchive::store);
        EXPECT_TRUE(ar.IsStoring());
        EXPECT_FALSE(ar.IsLoading());
        EXPECT_EQ(ar.m_strFileName, "saved.dat");
        const std::vector<std::function<void()>> reads = {
            [&] { DWORD dw; ar >> dw; },
            [&] { BYTE b; ar >> b; },
            [&] { CString s; ar >> s; },
            [&] { ar.ReadCount(); },
            [&] { char buf[4]; ar.Read(buf, 4); },
            [&] { ar.FillBuffer(1); },
        };
        for (size_t i = 0; i < reads.size(); ++i) {
            SCOPED_TRACE(i);
            CString name;
            EXPECT_EQ(ArchiveCause(reads[i], &name), CArchiveException::writeOnly);
            EXPECT_EQ(name, "saved.dat");
        }
    }
    BYTE block[8] = {};
    CMemFile in(block, sizeof block);
    in.SetFilePath("saved.dat");
    CArchive ar(&in, CArchive::load);
    EXPECT_TRUE(ar.IsLoading());
    const std::vector<std::function<void()>> writes = {
        [&] { ar << DWORD(1); },
        [&] { ar << BYTE(1); },
        [&] { ar << CString("x"); },
        [&] { ar.WriteCount(1); },
        [&] { ar.Write("abcd", 4); },
        [&] { ar.WriteString("abcd"); },
    };
    for (size_t i = 0; i < writes.size(); ++i) {
        SCOPED_TRACE(i);
        CString name;
        EXPECT_EQ(ArchiveCause(writes[i], &name), CArchiveException::readOnly);
        EXPECT_EQ(name, "saved.dat");
    }
}

TEST(CArchive, CountsRoundTripWithExactBytes) {
    struct Case {
        DWORD_PTR nCount;
        Bytes bytes;
    };
    const std::vector<Case> cases = {
        {0, {0x00, 0x00}},
        {1, {0x01, 0x00}},
        {0xFFFE, {0xFE, 0xFF}},
        {0xFFFF, {0xFF, 0xFF, 0xFF, 0xFF, 0x00, 0x00}},
        {70000, {0xFF, 0xFF, 0x70, 0x11, 0x01, 0x00}},
        {0xFFFFFFFF, {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.nCount);
        EXPECT_EQ(Store([&](CArchive& ar) { ar.WriteCount(c.nCount); }), c.bytes);
        Load(c.bytes, [&](CArchive& ar) { EXPECT_EQ(ar.ReadCount(), c.nCount); });
    }
}

TEST(CArchive, ScalarsAreLittleEndian) {
    Bytes stored = Store([](CArchive& ar) {
        ar << BYTE(0x12) << WORD(0x3456) << LONG(-2) << DWORD(0x12345678) << int(-3) << UINT(0xA1B2C3D4)
           << short(-4) << char('A') << bool(true) << static_cast<unsigned char>(0x7F) << 1.0f << -2.0
           << LONGLONG(-5) << ULONGLONG(0x0102030405060708ull) << 6LL << wchar_t(0x20AC);
    });
    const Bytes expected = {
        0x12,                                            // BYTE
        0x56, 0x34,                                      // WORD
        0xFE, 0xFF, 0xFF, 0xFF,                          // LONG -2
        0x78, 0x56, 0x34, 0x12,                          // DWORD
        0xFD, 0xFF, 0xFF, 0xFF,                          // int -3
        0xD4, 0xC3, 0xB2, 0xA1,                          // UINT
        0xFC, 0xFF,                                      // short -4
        0x41,                                            // char
        0x01,                                            // bool
        0x7F,                                            // unsigned char
        0x00, 0x00, 0x80, 0x3F,                          // float 1.0
        0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0xC0,  // double -2.0
        0xFB, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF,  // LONGLONG -5
        0x08, 0x07, 0x06, 0x05, 0x04, 0x03, 0x02, 0x01,  // ULONGLONG
        0x06, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,  // long long
        0xAC, 0x20,                                      // wchar_t as a 16-bit unit
    };
    EXPECT_EQ(stored, expected);
    Load(stored, [](CArchive& ar) {
        BYTE by;
        WORD w;
        LONG l;
        DWORD dw;
        int i;
        UINT u;
        short sh;
        char ch;
        bool b;
        unsigned char uc;
        float f;
        double d;
        LONGLONG ll;
        ULONGLONG ull;
        long long lll;
        wchar_t wc;
        ar >> by >> w >> l >> dw >> i >> u >> sh >> ch >> b >> uc >> f >> d >> ll >> ull >> lll >> wc;
        EXPECT_EQ(by, 0x12);
        EXPECT_EQ(w, 0x3456);
        EXPECT_EQ(l, -2);
        EXPECT_EQ(dw, 0x12345678u);
        EXPECT_EQ(i, -3);
        EXPECT_EQ(u, 0xA1B2C3D4u);
        EXPECT_EQ(sh, -4);
        EXPECT_EQ(ch, 'A');
        EXPECT_TRUE(b);
        EXPECT_EQ(uc, 0x7F);
        EXPECT_EQ(f, 1.0f);
        EXPECT_EQ(d, -2.0);
        EXPECT_EQ(ll, -5);
        EXPECT_EQ(ull, 0x0102030405060708ull);
        EXPECT_EQ(lll, 6);
        EXPECT_EQ(wc, wchar_t(0x20AC));
        EXPECT_TRUE(ar.IsBufferEmpty());
    });
}

TEST(CArchive, LengthsBeyondAStringRaiseGenericException) {
    const std::vector<Bytes> cases = {
        {0xFF, 0xFF, 0xFF, 0xF0, 0xFF, 0xFF, 0xFF, 'a', 'b'},          // narrow 0xFFFFFFF0
        {0xFF, 0xFF, 0xFF, 0x00, 0x00, 0x00, 0x80},                    // narrow 2^31
        {0xFF, 0xFE, 0xFF, 0xFF, 0xFF, 0xFF, 0x00, 0x00, 0x00, 0x80},  // wide 2^31
        {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 1, 0, 0, 0, 0, 0, 0, 0},  // 64-bit form
    };
    for (size_t i = 0; i < cases.size(); ++i) {
        SCOPED_TRACE(i);
        Load(cases[i], [](CArchive& ar) {
            CString s("keep");
            EXPECT_EQ(ArchiveCause([&] { ar >> s; }), CArchiveException::genericException);
            EXPECT_EQ(s, "keep");
        });
    }
}

TEST(CArchive, ReadAndWriteCrossTheBuffer) {
    // Smallest buffer (128), blocks straddling it, whole-buffer direct transfers.
    Bytes payload(1000);
    for (size_t i = 0; i < payload.size(); ++i)
        payload[i] = static_cast<BYTE>(i * 31);
    CMemFile file;
    {
        CArchive ar(&file, CArchive::store, 16);  // below the minimum: 128 is used
        ar << BYTE(1);
        ar.Write(payload.data(), 300);
        ar.Write(payload.data() + 300, 700);
        ar << DWORD(0xDEADBEEF);
    }  // the destructor flushes
    ASSERT_EQ(file.GetLength(), 1005u);
    file.SeekToBegin();
    CArchive ar(&file, CArchive::load, 128);
    BYTE by;
    ar >> by;
    EXPECT_EQ(by, 1);
    Bytes back(1000);
    EXPECT_EQ(ar.Read(back.data(), 5), 5u);
    EXPECT_EQ(ar.Read(back.data() + 5, 995), 995u);
    EXPECT_EQ(back, payload);
    DWORD dw;
    ar >> dw;
    EXPECT_EQ(dw, 0xDEADBEEFu);
    // Read answers what there is at the end, without an exception.
    EXPECT_EQ(ar.Read(back.data(), 10), 0u);
}

TEST(CArchive, ReadReturnsFewerBytesAtTheEnd) {
    Load({1, 2, 3, 4, 5}, [](CArchive& ar) {
        BYTE buf[300] = {};
        EXPECT_EQ(ar.Read(buf, 2), 2u);
        EXPECT_EQ(ar.Read(buf, 300), 3u);
        EXPECT_EQ(buf[0], 3);
        EXPECT_EQ(buf[2], 5);
        EXPECT_EQ(ar.Read(buf, 300), 0u);
    });
}

TEST(CArchive, CloseOfLoadingArchiveGivesUnusedBytesBack) {
    BYTE block[] = {1, 2, 3, 4, 5, 6};
    CMemFile file(block, sizeof block);
    CArchive ar(&file, CArchive::load);
    WORD w;
    ar >> w;
    EXPECT_EQ(w, 0x0201);
    EXPECT_FALSE(ar.IsBufferEmpty());
    ar.Close();
    EXPECT_EQ(ar.GetFile(), nullptr);
    EXPECT_EQ(file.GetPosition(), 2u);
}

TEST(CArchive, NoFlushOnDeleteDropsBufferedBytes) {
    CMemFile file;
    {
        CArchive ar(&file, CArchive::store | CArchive::bNoFlushOnDelete);
        ar << DWORD(1);
    }
    EXPECT_EQ(file.GetLength(), 0u);
    {
        CArchive ar(&file, CArchive::store);
        ar << DWORD(1);
        ar.Flush();
        EXPECT_EQ(file.GetLength(), 4u);
        ar.Abort();  // nothing more is written
    }
    EXPECT_EQ(file.GetLength(), 4u);
}

TEST(CArchive, UsesTheCallersBuffer) {
    BYTE buffer[256];
    std::memset(buffer, 0xCC, sizeof buffer);
    CMemFile file;
    CArchive ar(&file, CArchive::store, sizeof buffer, buffer);
    ar << DWORD(0x04030201);
    EXPECT_EQ(buffer[0], 1);
    EXPECT_EQ(buffer[3], 4);
    EXPECT_EQ(file.GetLength(), 0u);
    ar.Close();
    EXPECT_EQ(file.GetLength(), 4u);
}

TEST(CArchive, WriteStringWritesBytesOnly) {
    EXPECT_EQ(Store([](CArchive& ar) {
                  ar.WriteString("ab");
                  ar.WriteString(nullptr);
                  ar.WriteString("");
              }),
              (Bytes{'a', 'b'}));
}

TEST(CArchive, FileNameComesFromTheFile) {
    CMemFile unnamed;
    CArchive ar1(&unnamed, CArchive::store);
    EXPECT_EQ(ar1.m_strFileName, "");
    CMemFile named;
    named.SetFilePath("/data/x.gv");
    CArchive ar2(&named, CArchive::store);
    EXPECT_EQ(ar2.m_strFileName, "/data/x.gv");
    EXPECT_EQ(ar2.GetFile(), &named);
}
