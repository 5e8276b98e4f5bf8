// CArchive: scalar layouts, counts, string lengths and strings, errors and buffering.
#include "gvlib/platform/afxarchive.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <tuple>
#include <vector>

namespace {

typedef std::vector<BYTE> Bytes;

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
    EXPECT_EQ(out.empty() ? 0u : file.Read(out.data(), static_cast<UINT>(out.size())), out.size());
    return out;
}

// Loads from a fixed memory file holding `in`, named "saved.dat".
void Load(Bytes in, const std::function<void(CArchive&)>& read) {
    CMemFile file(in.data(), static_cast<UINT>(in.size()));
    file.SetFilePath("saved.dat");
    CArchive ar(&file, CArchive::load);
    read(ar);
}

// The cause `action` raises (-1: none); the exception's file name goes to name.
int ArchiveCause(const std::function<void()>& action, CString& name) {
    try { action(); } catch (const CArchiveException& e) { name = e.m_strFileName; return e.m_cause; }
    return -1;
}

}  // namespace

TEST(CArchive, StringLengthsAndNarrowStringsAreExact) {
    const struct {
        UINT nLength;
        Bytes narrow, wide;  // AfxWriteStringLength(ar, n, FALSE / TRUE)
    } cases[] = {
        {0, {0x00}, {0xFF, 0xFE, 0xFF, 0x00}},
        {254, {0xFE}, {0xFF, 0xFE, 0xFF, 0xFE}},
        {255, {0xFF, 0xFF, 0x00}, {0xFF, 0xFE, 0xFF, 0xFF, 0xFF, 0x00}},
        {65533, {0xFF, 0xFD, 0xFF}, {0xFF, 0xFE, 0xFF, 0xFF, 0xFD, 0xFF}},
        {65534, {0xFF, 0xFF, 0xFF, 0xFE, 0xFF, 0x00, 0x00}, {0xFF, 0xFE, 0xFF, 0xFF, 0xFF, 0xFF, 0xFE, 0xFF, 0x00, 0x00}},
        {65535, {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x00, 0x00}, {0xFF, 0xFE, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x00, 0x00}},
        {70000, {0xFF, 0xFF, 0xFF, 0x70, 0x11, 0x01, 0x00}, {0xFF, 0xFE, 0xFF, 0xFF, 0xFF, 0xFF, 0x70, 0x11, 0x01, 0x00}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.nLength);
        EXPECT_EQ(Store([&](CArchive& ar) { AfxWriteStringLength(ar, c.nLength, FALSE); }), c.narrow);
        EXPECT_EQ(Store([&](CArchive& ar) { AfxWriteStringLength(ar, c.nLength, TRUE); }), c.wide);
        for (int nSize : {1, 2}) {
            Load(nSize == 1 ? c.narrow : c.wide, [&](CArchive& ar) {
                int nCharSize = 0;
                EXPECT_EQ(AfxReadStringLength(ar, nCharSize), c.nLength);
                EXPECT_EQ(nCharSize, nSize);
                EXPECT_TRUE(ar.IsBufferEmpty());
            });
        }
    }
}

TEST(CArchive, StringFormsReadBack) {
    Bytes longWide = {0xFF, 0xFE, 0xFF, 0xFF, 0x2C, 0x01};  // the 16-bit length after the marker
    for (int i = 0; i < 300; ++i)
        longWide.insert(longWide.end(), {'x', 0x00});
    const std::pair<Bytes, std::string> rows[] = {
        {{0x04, 'a', 0x00, 'b', 0x00}, std::string("a\0b\0", 4)},
        {{0xFF, 0xFE, 0xFF, 0x03, 0x41, 0x00, 0xE9, 0x00, 0xAC, 0x20}, "A\xE9\x80"},
        {longWide, std::string(300, 'x')},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.first.size());
        Load(row.first, [&](CArchive& ar) {
            CString back;
            ar >> back;
            EXPECT_EQ(std::string(back.GetString(), static_cast<size_t>(back.GetLength())), row.second);
        });
    }
    // U+1F600 takes a surrogate pair: 4 UTF-16 units for 3 wide characters.
    const CStringW text(L"A\u00E9\U0001F600");
    Bytes stored = Store([&](CArchive& ar) { ar << text; });
    EXPECT_EQ(stored, (Bytes{0xFF, 0xFE, 0xFF, 0x04, 0x41, 0x00, 0xE9, 0x00, 0x3D, 0xD8, 0x00, 0xDE}));
    for (const Bytes& in : {stored, Bytes{0x02, 0x41, 0xE9}}) {  // a narrow one is widened
        Load(in, [&](CArchive& ar) {
            CStringW back;
            ar >> back;
            EXPECT_EQ(std::wstring(back.GetString()), in.size() == 3 ? L"A\u00E9" : std::wstring(text.GetString()));
        });
    }
}

// Each failure raises its cause; the end of the data names no file, a wrong
// direction names the archive's file; a string read that fails keeps the string.
TEST(CArchive, FailuresRaiseTheirCause) {
    auto str = [](CArchive& ar) {
        CString s("keep");
        try { ar >> s; } catch (...) { EXPECT_EQ(s, "keep"); throw; }
    };
    const int eof = CArchiveException::endOfFile, generic = CArchiveException::genericException;
    const struct { const char* what; Bytes in; std::function<void(CArchive&)> read; int cause; } rows[] = {
        {"string body", {0x05, 'a', 'b'}, str, eof}, {"string length", {0xFF, 0x2C}, str, eof},
        {"wide string body", {0xFF, 0xFE, 0xFF, 0x02, 'a', 0x00, 'b'}, str, eof},
        {"DWORD", {0x01, 0x02, 0x03}, [](CArchive& ar) { DWORD dw; ar >> dw; }, eof},
        {"ULONGLONG", {1, 2, 3, 4, 5, 6, 7}, [](CArchive& ar) { ULONGLONG q; ar >> q; }, eof},
        {"WORD", {0x01}, [](CArchive& ar) { WORD w; ar >> w; }, eof}, {"BYTE", {}, [](CArchive& ar) { BYTE b; ar >> b; }, eof},
        {"ReadCount 16-bit", {0x01}, [](CArchive& ar) { ar.ReadCount(); }, eof},
        {"ReadCount 32-bit", {0xFF, 0xFF, 0x01, 0x00}, [](CArchive& ar) { ar.ReadCount(); }, eof},
        {"narrow 0xFFFFFFF0", {0xFF, 0xFF, 0xFF, 0xF0, 0xFF, 0xFF, 0xFF, 'a'}, str, generic},
        {"narrow 2^31", {0xFF, 0xFF, 0xFF, 0x00, 0x00, 0x00, 0x80}, str, generic},
        {"wide 2^31", {0xFF, 0xFE, 0xFF, 0xFF, 0xFF, 0xFF, 0, 0, 0, 0x80}, str, generic},
        {"64-bit form", {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 1, 0, 0, 0, 0, 0, 0, 0}, str, generic},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        Load(row.in, [&](CArchive& ar) {
            CString name("unset");
            EXPECT_EQ(ArchiveCause([&] { row.read(ar); }, name), row.cause);
            EXPECT_EQ(name, "");
        });
    }
    BYTE block[8] = {};
    CMemFile out, in(block, sizeof block);
    out.SetFilePath("saved.dat");
    in.SetFilePath("saved.dat");
    CArchive storing(&out, CArchive::store), loading(&in, CArchive::load);
    EXPECT_TRUE(storing.IsStoring() && loading.IsLoading() && !storing.IsLoading());
    char buf[4];
    const std::function<void()> reads[] = {
        [&] { DWORD dw; storing >> dw; }, [&] { BYTE b; storing >> b; },  [&] { CString s; storing >> s; },
        [&] { storing.ReadCount(); },     [&] { storing.Read(buf, 4); }, [&] { storing.FillBuffer(1); },
    };
    const std::function<void()> writes[] = {
        [&] { loading << DWORD(1); },   [&] { loading << BYTE(1); },       [&] { loading << CString("x"); },
        [&] { loading.WriteCount(1); }, [&] { loading.Write("abcd", 4); }, [&] { loading.WriteString("abcd"); },
    };
    for (int i = 0; i < 6; ++i) {
        SCOPED_TRACE(i);
        CString name;
        EXPECT_EQ(ArchiveCause(reads[i], name), CArchiveException::writeOnly);
        EXPECT_EQ(name, "saved.dat");
        EXPECT_EQ(ArchiveCause(writes[i], name), CArchiveException::readOnly);
        EXPECT_EQ(name, "saved.dat");
    }
}

TEST(CArchive, CountsAndScalarsAreLittleEndian) {
    const std::pair<DWORD_PTR, Bytes> counts[] = {
        {0, {0x00, 0x00}}, {0xFFFE, {0xFE, 0xFF}}, {0xFFFF, {0xFF, 0xFF, 0xFF, 0xFF, 0x00, 0x00}},
        {70000, {0xFF, 0xFF, 0x70, 0x11, 0x01, 0x00}}, {0xFFFFFFFF, {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF}},
    };
    for (const auto& c : counts) {
        SCOPED_TRACE(c.first);
        EXPECT_EQ(Store([&](CArchive& ar) { ar.WriteCount(c.first); }), c.second);
        Load(c.second, [&](CArchive& ar) { EXPECT_EQ(ar.ReadCount(), c.first); });
    }
    const auto values = std::make_tuple(BYTE{0x12}, WORD{0x3456}, LONG{-2}, UINT{0xA1B2C3D4}, short{-4}, 'A', true,
                                        1.0f, -2.0, ULONGLONG{0x0102030405060708ull}, 6LL, wchar_t{0x20AC});
    const Bytes stored = Store([&](CArchive& ar) { std::apply([&](const auto&... v) { ((ar << v), ...); }, values); });
    EXPECT_EQ(stored, (Bytes{
        0x12, 0x56, 0x34, 0xFE, 0xFF, 0xFF, 0xFF, 0xD4, 0xC3, 0xB2, 0xA1, 0xFC, 0xFF, 0x41, 0x01,  // to bool
        0x00, 0x00, 0x80, 0x3F, 0, 0, 0, 0, 0, 0, 0, 0xC0,                                          // 1.0f, -2.0
        0x08, 0x07, 0x06, 0x05, 0x04, 0x03, 0x02, 0x01, 6, 0, 0, 0, 0, 0, 0, 0, 0xAC, 0x20,          // 64-bit, wchar_t
    }));
    Load(stored, [&](CArchive& ar) {
        std::remove_const_t<decltype(values)> back{};
        std::apply([&](auto&... v) { ((ar >> v), ...); }, back);
        EXPECT_EQ(back, values);
        EXPECT_TRUE(ar.IsBufferEmpty());
    });
}

TEST(CArchive, BufferingOffsetsAndFlushing) {
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
        ar.WriteString("ab");
        ar.WriteString(nullptr);
    }  // the destructor flushes
    ASSERT_EQ(file.GetLength(), 1007u);
    file.SeekToBegin();
    CArchive ar(&file, CArchive::load, 128);
    BYTE by;
    DWORD dw;
    ar >> by;
    EXPECT_EQ(ar.GetLoadOffset(), 1);  // the file has read ahead; the offset has not
    Bytes back(1000);
    EXPECT_EQ(ar.Read(back.data(), 5), 5u);
    EXPECT_EQ(ar.Read(back.data() + 5, 995), 995u);
    EXPECT_EQ(back, payload);
    ar >> dw;
    EXPECT_EQ(dw, 0xDEADBEEFu);
    EXPECT_EQ(ar.GetLoadOffset(), 1005);
    EXPECT_EQ(ar.Read(back.data(), 10), 2u);  // what there is at the end, without an exception
    EXPECT_EQ(ar.Read(back.data(), 10), 0u);
    // No flush on delete; a caller's buffer holds the bytes until the flush.
    CMemFile named;
    named.SetFilePath("/data/x.gv");
    {
        CArchive noFlush(&named, CArchive::store | CArchive::bNoFlushOnDelete);
        EXPECT_EQ(noFlush.m_strFileName, "/data/x.gv");
        noFlush << DWORD(1);
    }
    EXPECT_EQ(named.GetLength(), 0u);
    BYTE buffer[256];
    CArchive own(&named, CArchive::store, sizeof buffer, buffer);
    own << DWORD(0x04030201);
    EXPECT_EQ(buffer[3], 4);
    EXPECT_EQ(named.GetLength(), 0u);
    own.Close();
    EXPECT_EQ(named.GetLength(), 4u);
}
