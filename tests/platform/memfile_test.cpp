// CMemFile: attached blocks, growth steps, seeks and lengths; CFile over a host file.
#include "gvlib/platform/afxarchive.h"
#include "gvlib/platform/afxfile.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <functional>
#include <string>
#include <vector>

namespace {

typedef std::vector<BYTE> Bytes;

// Exposes the protected state the library's derived memory file reads.
class ProbeMemFile : public CMemFile {
public:
    using CMemFile::CMemFile;
    UINT BufferSize() const { return m_nBufferSize; }
    UINT FileSize() const { return m_nFileSize; }
    UINT Position() const { return m_nPosition; }
    UINT GrowBytes() const { return m_nGrowBytes; }
    BYTE* Buffer() const { return m_lpBuffer; }
    BOOL AutoDelete() const { return m_bAutoDelete; }
};

// A memory file whose allocator always fails.
class FailingMemFile : public CMemFile {
protected:
    BYTE* Alloc(UINT) override { return nullptr; }
};

Bytes Content(CMemFile& file) {
    Bytes out(static_cast<size_t>(file.GetLength()));
    ULONGLONG pos = file.GetPosition();
    file.SeekToBegin();
    if (!out.empty()) {
        EXPECT_EQ(file.Read(out.data(), static_cast<UINT>(out.size())), out.size());
    }
    file.Seek(static_cast<LONGLONG>(pos), CFile::begin);
    return out;
}

bool ThrowsMemory(const std::function<void()>& action) {
    try {
        action();
    } catch (const CMemoryException&) {
        return true;
    }
    return false;
}

int FileCause(const std::function<void()>& action) {
    try {
        action();
    } catch (const CFileException& e) {
        return e.m_cause;
    }
    return -1;
}

}  // namespace

TEST(CMemFile, AttachWithoutGrowthWorksOnTheBlockInPlace) {
    BYTE block[6] = {'a', 'b', 'c', 'd', 'e', 'f'};
    ProbeMemFile file(block, sizeof block);
    EXPECT_EQ(file.GetLength(), 6u);
    EXPECT_EQ(file.Buffer(), block);
    EXPECT_FALSE(file.AutoDelete());

    char buf[8] = {};
    EXPECT_EQ(file.Read(buf, 3), 3u);
    EXPECT_STREQ(buf, "abc");
    file.Seek(1, CFile::begin);
    file.Write("XY", 2);
    EXPECT_EQ(std::memcmp(block, "aXYdef", 6), 0);
    file.Seek(-1, CFile::end);
    file.Write("Z", 1);
    file.SetLength(6);
    EXPECT_EQ(std::memcmp(block, "aXYdeZ", 6), 0);
    EXPECT_EQ(file.GetLength(), 6u);
    EXPECT_EQ(file.Buffer(), block);

    // A write running past the block writes nothing, not even the part that fits.
    file.Seek(5, CFile::begin);
    EXPECT_TRUE(ThrowsMemory([&] { file.Write("12", 2); }));
    EXPECT_EQ(std::memcmp(block, "aXYdeZ", 6), 0);
    EXPECT_EQ(file.GetLength(), 6u);
    EXPECT_EQ(file.GetPosition(), 5u);

    // Seeking past the end is allowed; reading there gives nothing, writing is refused.
    EXPECT_EQ(file.Seek(10, CFile::begin), 10u);
    EXPECT_EQ(file.Read(buf, 1), 0u);
    EXPECT_TRUE(ThrowsMemory([&] { file.Write("1", 1); }));
    EXPECT_TRUE(ThrowsMemory([&] { file.SetLength(7); }));
    EXPECT_EQ(std::memcmp(block, "aXYdeZ", 6), 0);

    EXPECT_EQ(file.Detach(), block);
    EXPECT_EQ(file.GetLength(), 0u);
    EXPECT_EQ(file.GetPosition(), 0u);
    EXPECT_EQ(file.Buffer(), nullptr);
}

TEST(CMemFile, GrowsInWholeSteps) {
    struct Case {
        UINT nGrow;
        std::vector<UINT> writes;
        UINT nBufferSize;
    };
    const std::vector<Case> cases = {
        {1024, {1}, 1024},       {1024, {1024}, 1024},   {1024, {1025}, 2048},
        {1024, {1024, 1}, 2048}, {1024, {3000}, 3072},   {100, {1, 100, 100}, 300},
        {7, {8}, 14},            {4096, {1, 1, 1}, 4096},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.nGrow);
        ProbeMemFile file(c.nGrow);
        EXPECT_EQ(file.BufferSize(), 0u);
        UINT nTotal = 0;
        for (UINT n : c.writes) {
            Bytes data(n, 0x5A);
            file.Write(data.data(), n);
            nTotal += n;
        }
        EXPECT_EQ(file.BufferSize(), c.nBufferSize);
        EXPECT_EQ(file.GetLength(), nTotal);
        EXPECT_EQ(file.GetPosition(), nTotal);
    }
}

TEST(CMemFile, RefusalsLeaveTheFileEmpty) {
    CMemFile noGrowth(0), attached;
    FailingMemFile failing;
    EXPECT_TRUE(ThrowsMemory([&] { noGrowth.Write("a", 1); }));
    EXPECT_TRUE(ThrowsMemory([&] { failing.Write("a", 1); }));
    EXPECT_TRUE(ThrowsMemory([&] { failing.SetLength(10); }));
    EXPECT_THROW(attached.Attach(nullptr, 4), CInvalidArgException);
    attached.Attach(nullptr, 0);
    for (CMemFile* file : {&noGrowth, static_cast<CMemFile*>(&failing), &attached})
        EXPECT_EQ(file->GetLength(), 0u);
}

TEST(CMemFile, AttachWithGrowthStartsEmptyAndMayMove) {
    BYTE* block = static_cast<BYTE*>(std::malloc(16));
    ASSERT_NE(block, nullptr);
    std::memset(block, 0xEE, 16);
    ProbeMemFile file;
    file.Attach(block, 16, 8);
    EXPECT_EQ(file.GetLength(), 0u);
    EXPECT_EQ(file.BufferSize(), 16u);
    file.Write("0123456789", 10);
    EXPECT_EQ(file.BufferSize(), 16u);
    EXPECT_EQ(file.Buffer(), block);  // it still fits
    file.Write("0123456789", 10);
    EXPECT_EQ(file.BufferSize(), 24u);  // 16 + one step of 8
    EXPECT_EQ(file.GetLength(), 20u);
    BYTE* detached = file.Detach();
    ASSERT_NE(detached, nullptr);
    EXPECT_EQ(std::memcmp(detached, "01234567890123456789", 20), 0);
    std::free(detached);
}

TEST(CMemFile, DetachOfOwnBlockHandsItToTheCaller) {
    ProbeMemFile file(64);
    file.Write("hello", 5);
    BYTE* block = file.Detach();
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(std::memcmp(block, "hello", 5), 0);
    EXPECT_EQ(file.GetLength(), 0u);
    std::free(block);
    // The file goes on with a block of its own, freed when it is destroyed.
    file.Write("x", 1);
    EXPECT_TRUE(file.AutoDelete());
    EXPECT_EQ(Content(file), (Bytes{'x'}));
    file.Close();
    EXPECT_EQ(file.GetLength(), 0u);
    EXPECT_EQ(file.Buffer(), nullptr);
    EXPECT_EQ(file.GrowBytes(), 0u);  // as the framework does: a closed memory file cannot grow
}

TEST(CMemFile, SeekRules) {
    CMemFile file;
    file.Write("abc", 3);
    // Before the start: badSeek, and the position stays.
    EXPECT_EQ(FileCause([&] { file.Seek(-1, CFile::begin); }), CFileException::badSeek);
    EXPECT_EQ(FileCause([&] { file.Seek(-4, CFile::end); }), CFileException::badSeek);
    EXPECT_EQ(FileCause([&] { file.Seek(-4, CFile::current); }), CFileException::badSeek);
    EXPECT_EQ(file.GetPosition(), 3u);
    // Beyond 32 bits: refused the same way.
    EXPECT_EQ(FileCause([&] { file.Seek(0x100000000LL, CFile::begin); }), CFileException::badSeek);
    EXPECT_EQ(FileCause([&] { file.Seek(0x7FFFFFFFFFFFFFFFLL, CFile::current); }), CFileException::badSeek);
    EXPECT_EQ(FileCause([&] { file.Seek(0, 7); }), CFileException::badSeek);

    EXPECT_EQ(file.Seek(-2, CFile::current), 1u);
    char buf[8] = {};
    EXPECT_EQ(file.Read(buf, 8), 2u);  // stops at the end
    EXPECT_STREQ(buf, "bc");
    EXPECT_EQ(file.Read(buf, 0), 0u);
    EXPECT_EQ(file.Seek(0, CFile::end), 3u);
    file.SeekToBegin();
    EXPECT_EQ(file.GetPosition(), 0u);
    EXPECT_EQ(file.SeekToEnd(), 3u);

    // Past the end: allowed, the length stays until a write, and the gap reads as zeros.
    EXPECT_EQ(file.Seek(3, CFile::end), 6u);
    EXPECT_EQ(file.GetLength(), 3u);
    char c;
    EXPECT_EQ(file.Read(&c, 1), 0u);
    file.Write("z", 1);
    EXPECT_EQ(file.GetLength(), 7u);
    EXPECT_EQ(Content(file), (Bytes{'a', 'b', 'c', 0, 0, 0, 'z'}));
}

TEST(CMemFile, GapAfterShrinkReadsAsZeros) {
    CMemFile file;
    file.Write("abcdef", 6);
    file.SetLength(2);
    EXPECT_EQ(file.GetPosition(), 2u);  // moved back to the new end
    file.Seek(4, CFile::begin);
    file.Write("Z", 1);
    EXPECT_EQ(Content(file), (Bytes{'a', 'b', 0, 0, 'Z'}));
    file.SetLength(7);
    EXPECT_EQ(file.GetPosition(), 5u);  // within the length: unchanged
    EXPECT_EQ(Content(file), (Bytes{'a', 'b', 0, 0, 'Z', 0, 0}));
    EXPECT_TRUE(ThrowsMemory([&] { file.SetLength(0x100000000ull); }));
}

TEST(CMemFile, CarriesAnArchive) {
    CMemFile file;
    {
        CArchive ar(&file, CArchive::store);
        ar << CString("abc") << DWORD(7);
    }
    EXPECT_EQ(Content(file), (Bytes{3, 'a', 'b', 'c', 7, 0, 0, 0}));
    file.SeekToBegin();
    CArchive ar(&file, CArchive::load);
    CString s;
    DWORD dw = 0;
    ar >> s >> dw;
    EXPECT_EQ(s, "abc");
    EXPECT_EQ(dw, 7u);
}

TEST(CFile, HostFileRoundTrip) {
    const std::string path = ::testing::TempDir() + "gvlib_cfile_test_" + std::to_string(::getpid()) + ".bin";
    ::unlink(path.c_str());

    CFile missing;
    CFileException error;
    EXPECT_FALSE(missing.Open(path.c_str(), CFile::modeRead, &error));
    EXPECT_EQ(error.m_cause, CFileException::fileNotFound);
    EXPECT_EQ(error.m_strFileName, path.c_str());
    EXPECT_EQ(missing.m_hFile, CFile::hFileNull);
    EXPECT_THROW(CFile(path.c_str(), CFile::modeRead), CFileException);

    {
        CFile file(path.c_str(), CFile::modeCreate | CFile::modeReadWrite | CFile::typeBinary);
        EXPECT_NE(file.m_hFile, CFile::hFileNull);
        EXPECT_EQ(file.GetFilePath(), path.c_str());
        EXPECT_EQ(file.GetFileName(), path.substr(path.rfind('/') + 1).c_str());
        EXPECT_EQ(file.GetFileTitle(), path.substr(path.rfind('/') + 1, path.rfind('.') - path.rfind('/') - 1).c_str());
        file.Write("hello world", 11);
        EXPECT_EQ(file.GetLength(), 11u);
        EXPECT_EQ(file.GetPosition(), 11u);
        EXPECT_EQ(file.Seek(-5, CFile::end), 6u);
        char buf[16] = {};
        EXPECT_EQ(file.Read(buf, sizeof buf), 5u);
        EXPECT_STREQ(buf, "world");
        EXPECT_EQ(file.Read(buf, sizeof buf), 0u);
        EXPECT_THROW(file.Read(nullptr, 1), CInvalidArgException);
        EXPECT_EQ(FileCause([&] { file.Seek(-1, CFile::begin); }), CFileException::badSeek);
        EXPECT_EQ(file.Seek(0, CFile::begin), 0u);
        file.SetLength(5);
        EXPECT_EQ(file.GetLength(), 5u);
        EXPECT_EQ(file.GetPosition(), 5u);
        file.Flush();

        // An archive over the file takes its path for its exceptions.
        file.SeekToEnd();
        CArchive ar(&file, CArchive::store);
        EXPECT_EQ(ar.m_strFileName, path.c_str());
        ar << DWORD(0x44434241);
        ar.Close();
        file.Close();
        EXPECT_EQ(file.m_hFile, CFile::hFileNull);
        EXPECT_EQ(file.GetFilePath(), "");
    }
    {
        // modeNoTruncate keeps the content.
        CFile file(path.c_str(), CFile::modeCreate | CFile::modeNoTruncate | CFile::modeRead);
        CArchive ar(&file, CArchive::load);
        char buf[16] = {};
        EXPECT_EQ(ar.Read(buf, sizeof buf), 9u);
        EXPECT_STREQ(buf, "helloABCD");
        try {
            BYTE b;
            ar >> b;
            ADD_FAILURE() << "no exception";
        } catch (const CArchiveException& e) {
            EXPECT_EQ(e.m_cause, CArchiveException::endOfFile);
        }
    }
    {
        // Writing to a file opened for reading raises the mapped errno cause.
        CFile file(path.c_str(), CFile::modeRead);
        EXPECT_EQ(FileCause([&] { file.Write("x", 1); }), CFileException::invalidFile);
        EXPECT_THROW(file.SetLength(1), CFileException);
    }
    EXPECT_EQ(::unlink(path.c_str()), 0);
    CFile bogus;
    bogus.m_hFile = 1 << 20;  // no such descriptor: closing it fails and says so
    EXPECT_THROW(bogus.Close(), CFileException);
}
