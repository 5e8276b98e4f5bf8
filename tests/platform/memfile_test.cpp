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

// Exposes the protected state the library's derived memory file reads.
class ProbeMemFile : public CMemFile {
public:
    using CMemFile::CMemFile;
    UINT BufferSize() const { return m_nBufferSize; }
    UINT GrowBytes() const { return m_nGrowBytes; }
    BYTE* Buffer() const { return m_lpBuffer; }
    BOOL AutoDelete() const { return m_bAutoDelete; }
};

class FailingMemFile : public CMemFile {
protected:
    BYTE* Alloc(UINT) override { return nullptr; }
};

// The whole content; the position is kept.
std::string Content(CMemFile& file) {
    std::string out(static_cast<size_t>(file.GetLength()), '?');
    ULONGLONG pos = file.GetPosition();
    file.SeekToBegin();
    EXPECT_EQ(file.Read(&out[0], static_cast<UINT>(out.size())), out.size());
    file.Seek(static_cast<LONGLONG>(pos), CFile::begin);
    return out;
}

// What an action raises: -1 nothing, -2 out of memory, else the file exception's cause.
int Raised(const std::function<void()>& action) {
    try { action(); } catch (const CMemoryException&) { return -2; }
    catch (const CFileException& e) { return e.m_cause; }
    return -1;
}

}  // namespace

TEST(CMemFile, AttachedBlocksAndGrowthSteps) {
    BYTE block[6] = {'a', 'b', 'c', 'd', 'e', 'f'};
    ProbeMemFile fixed(block, sizeof block);  // no growth: in place, never freed, never past its end
    EXPECT_FALSE(fixed.AutoDelete());
    fixed.Seek(-2, CFile::end);
    EXPECT_EQ(Raised([&] { fixed.Write("123", 3); }), -2);  // not even the part that fits
    fixed.Write("Z", 1);
    EXPECT_EQ(Raised([&] { fixed.SetLength(7); }), -2);
    EXPECT_EQ(std::memcmp(block, "abcdZf", 6), 0);
    EXPECT_EQ(fixed.Detach(), block);
    EXPECT_EQ(fixed.GetLength() + fixed.GetPosition(), 0u);
    CMemFile grown, noGrowth(0), attached;
    FailingMemFile failing;
    grown.Write("own", 3);  // a block of its own, freed when another is attached
    grown.Attach(block, sizeof block);
    EXPECT_EQ(Content(grown), "abcdZf");
    EXPECT_EQ(Raised([&] { noGrowth.Write("a", 1); }), -2);
    EXPECT_EQ(Raised([&] { failing.Write("a", 1); }), -2);
    EXPECT_EQ(Raised([&] { failing.SetLength(10); }), -2);
    EXPECT_THROW(attached.Attach(nullptr, 4), CInvalidArgException);
    attached.Attach(nullptr, 0);
    for (CMemFile* empty : {&noGrowth, static_cast<CMemFile*>(&failing), &attached})
        EXPECT_EQ(empty->GetLength(), 0u);
    const struct { UINT nGrow; std::vector<UINT> writes; UINT nBufferSize; } cases[] = {
        {1024, {1}, 1024},    {1024, {1024}, 1024},      {1024, {1025}, 2048}, {1024, {1024, 1}, 2048},
        {1024, {3000}, 3072}, {100, {1, 100, 100}, 300}, {7, {8}, 14},         {4096, {1, 1, 1}, 4096},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.nGrow);
        ProbeMemFile file(c.nGrow);
        std::string all;
        for (UINT n : c.writes) {
            std::string data(n, static_cast<char>('a' + all.size() % 26));
            file.Write(data.data(), n);
            all += data;
        }
        EXPECT_EQ(file.BufferSize(), c.nBufferSize);
        EXPECT_EQ(file.GetPosition(), all.size());
        EXPECT_EQ(Content(file), all);
    }
    // Attached with growth: starts empty, keeps the block while it fits, then moves.
    BYTE* heap = static_cast<BYTE*>(std::malloc(16));
    ASSERT_NE(heap, nullptr);
    ProbeMemFile file;
    file.Attach(heap, 16, 8);
    EXPECT_EQ(file.GetLength(), 0u);
    file.Write("0123456789", 10);
    EXPECT_EQ(file.Buffer(), heap);
    file.Write("0123456789", 10);
    EXPECT_EQ(file.BufferSize(), 24u);  // 16 + one step of 8
    BYTE* detached = file.Detach();
    EXPECT_EQ(std::memcmp(detached, "01234567890123456789", 20), 0);
    std::free(detached);
    file.Write("x", 1);  // goes on with a block of its own, freed when it is closed
    EXPECT_TRUE(file.AutoDelete());
    file.Close();
    EXPECT_EQ(file.GetLength(), 0u);
    EXPECT_EQ(file.GrowBytes(), 0u);  // as the framework does: a closed memory file cannot grow
}

TEST(CMemFile, SeekRules) {
    CMemFile file;
    file.Write("abc", 3);
    // Before the start, beyond 32 bits or from nowhere: badSeek, and the position stays.
    const std::pair<LONGLONG, UINT> bad[] = {{-1, CFile::begin},           {-4, CFile::end}, {-4, CFile::current},
                                             {0x100000000LL, CFile::begin}, {0, 7},           {INT64_MAX, CFile::current}};
    for (const auto& row : bad) {
        SCOPED_TRACE(row.first);
        EXPECT_EQ(Raised([&] { file.Seek(row.first, row.second); }), CFileException::badSeek);
        EXPECT_EQ(file.GetPosition(), 3u);
    }
    EXPECT_EQ(file.Seek(0xFFFFFFFF, CFile::begin), 0xFFFFFFFFu);  // the last offset 32 bits hold
    EXPECT_EQ(file.Seek(-2, CFile::end), 1u);
    char buf[8] = {};
    EXPECT_EQ(file.Read(buf, 8), 2u);  // stops at the end
    EXPECT_STREQ(buf, "bc");
    // Past the end: allowed, the length stays until a write, and the gap reads as zeros.
    EXPECT_EQ(file.Seek(3, CFile::current), 6u);
    EXPECT_EQ(file.Read(buf, 1), 0u);
    EXPECT_EQ(file.GetLength(), 3u);
    file.Write("z", 1);
    EXPECT_EQ(Content(file), std::string("abc\0\0\0z", 7));
    // Shrinking moves the position back to the new end; growing leaves it.
    file.SetLength(2);
    EXPECT_EQ(file.GetPosition(), 2u);
    file.Seek(4, CFile::begin);
    file.Write("Z", 1);
    file.SetLength(7);
    EXPECT_EQ(file.GetPosition(), 5u);
    EXPECT_EQ(Content(file), std::string("ab\0\0Z\0\0", 7));
    EXPECT_EQ(Raised([&] { file.SetLength(0x100000000ull); }), -2);
}

TEST(CFile, HostFileRoundTrip) {
    const std::string path = ::testing::TempDir() + "gvlib_cfile_test_" + std::to_string(::getpid()) + ".bin";
    ::unlink(path.c_str());
    CFile missing, bogus;
    CFileException error;
    EXPECT_FALSE(missing.Open(path.c_str(), CFile::modeRead, &error));
    EXPECT_EQ(error.m_cause, CFileException::fileNotFound);
    EXPECT_EQ(error.m_strFileName, path.c_str());
    EXPECT_EQ(missing.m_hFile, CFile::hFileNull);
    EXPECT_THROW(CFile(path.c_str(), CFile::modeRead), CFileException);
    {
        CFile file(path.c_str(), CFile::modeCreate | CFile::modeReadWrite | CFile::typeBinary);
        const size_t slash = path.rfind('/');
        EXPECT_EQ(file.GetFilePath(), path.c_str());
        EXPECT_EQ(file.GetFileName(), path.substr(slash + 1).c_str());
        EXPECT_EQ(file.GetFileTitle(), path.substr(slash + 1, path.rfind('.') - slash - 1).c_str());
        file.Write("hello world", 11);
        EXPECT_EQ(file.GetLength(), 11u);
        EXPECT_EQ(file.Seek(-5, CFile::end), 6u);
        EXPECT_EQ(file.Seek(-1, CFile::current), 5u);
        char buf[16] = {};
        EXPECT_EQ(file.Read(buf, sizeof buf), 6u);
        EXPECT_STREQ(buf, " world");
        EXPECT_EQ(file.Read(buf, sizeof buf), 0u);
        EXPECT_THROW(file.Read(nullptr, 1), CInvalidArgException);
        EXPECT_EQ(Raised([&] { file.Seek(-1, CFile::begin); }), CFileException::badSeek);
        file.SeekToBegin();
        file.SetLength(5);
        EXPECT_EQ(file.GetLength() + file.GetPosition(), 10u);
        file.Flush();
        // An archive over the file takes its path for its exceptions.
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
        BYTE b;
        EXPECT_THROW(ar >> b, CArchiveException);
        // Writing to a file opened for reading raises the mapped errno cause.
        CFile reading(path.c_str(), CFile::modeRead);
        EXPECT_EQ(Raised([&] { reading.Write("x", 1); }), CFileException::invalidFile);
        EXPECT_NE(Raised([&] { reading.SetLength(1); }), -1);
        CFile writing(path.c_str(), CFile::modeWrite);  // and reading from one opened for writing
        EXPECT_NE(Raised([&] { writing.Read(buf, 1); }), -1);
    }
    EXPECT_EQ(::unlink(path.c_str()), 0);
    bogus.m_hFile = 1 << 20;  // no such descriptor: closing it fails and says so
    EXPECT_THROW(bogus.Close(), CFileException);
}
