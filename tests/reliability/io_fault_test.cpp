// File members on failing devices (full, read errors, short transfers, vanished files): the host's cause, target kept.
#include <gtest/gtest.h>

#include <cerrno>
#include <cstdio>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

#include "gvlib/array/GVStringArray.h"
#include "gvlib/buffer/GVBuffer.h"
#include "gvlib/path/GVPath.h"
#include "gvlib/platform/afxarchive.h"
#include "gvlib/platform/afxexcept.h"
#include "gvlib/platform/afxfile.h"
#include "gvlib/platform/volumes.h"
#include "platform/fault_injection.h"
#include "support/buffer_content.h"

namespace {

using gvplatform::faults::FailFileCall;
using gvplatform::faults::FileCall;

class IoFault : public ::testing::Test {
protected:
    void SetUp() override {
        path_ = ::testing::TempDir() + "gvlib_io_fault_" + std::to_string(::getpid());
        std::ofstream(path_, std::ios::binary) << std::string(3000, 'q');
    }
    void TearDown() override {
        gvplatform::faults::ClearFileFaults();
        std::remove(path_.c_str());
    }
    std::string path_;
};

// Runs `op`, which must raise the file exception of `cause` for host error `error`.
void ExpectFileError(std::function<void()> const& op, int cause, int error) {
    try {
        op();
        ADD_FAILURE() << "no exception";
    } catch (CFileException const& e) {
        EXPECT_EQ((std::vector<int64_t>{cause, error}), (std::vector<int64_t>{e.m_cause, e.m_lOsError}));
    }
}

}  // namespace

TEST_F(IoFault, EveryCFileCallReportsTheHostCause) {
    struct Row { const char* name; FileCall call; int error, cause; std::function<void(CFile&)> op; };
    char data[16] = {};
    Row const rows[] = {
        {"read", FileCall::read, EIO, CFileException::hardIO, [&](CFile& f) { f.Read(data, sizeof data); }},
        {"write", FileCall::write, ENOSPC, CFileException::diskFull, [&](CFile& f) { f.Write(data, sizeof data); }},
        {"seek", FileCall::seek, EINVAL, CFileException::badSeek, [](CFile& f) { f.Seek(4, CFile::begin); }},
        {"position", FileCall::seek, EBADF, CFileException::invalidFile, [](CFile& f) { f.GetPosition(); }},
        {"length", FileCall::stat, EIO, CFileException::hardIO, [](CFile& f) { f.GetLength(); }},
        {"set length", FileCall::seek, EINVAL, CFileException::badSeek, [](CFile& f) { f.SetLength(10); }},
        {"flush", FileCall::flush, EIO, CFileException::hardIO, [](CFile& f) { f.Flush(); }},
        {"close", FileCall::close, EIO, CFileException::hardIO, [](CFile& f) { f.Close(); }},
    };
    for (Row const& row : rows) {
        SCOPED_TRACE(row.name);
        CFile file(path_.c_str(), CFile::modeReadWrite);
        FailFileCall(row.call, 1, row.error);
        ExpectFileError([&] { row.op(file); }, row.cause, row.error);
    }
    std::ifstream in(path_, std::ios::binary);
    EXPECT_EQ(std::string(3000, 'q'), std::string(std::istreambuf_iterator<char>(in), {})) << "a failed call changed the file";
}

TEST_F(IoFault, OpenFailuresAnswerFalseWithTheCause) {
    FailFileCall(FileCall::open, 1, EACCES);
    CFile file;
    CFileException error;
    EXPECT_EQ((std::vector<int>{0, CFileException::accessDenied}),
              (std::vector<int>{file.Open(path_.c_str(), CFile::modeRead, &error), error.m_cause}));
    // Found by the status query, gone before the open.
    CFileStatus status;
    ASSERT_TRUE(CFile::GetStatus(gvplatform::HostToWindowsPath(path_).c_str(), status));
    std::remove(path_.c_str());
    const bool opened = file.Open(path_.c_str(), CFile::modeRead, &error);
    EXPECT_EQ((std::vector<int>{0, CFileException::fileNotFound, ENOENT, 0, 0}),
              (std::vector<int>{opened, error.m_cause, static_cast<int>(error.m_lOsError),
                                CFile::GetStatus(gvplatform::HostToWindowsPath(path_).c_str(), status),
                                CGVPath(gvplatform::HostToWindowsPath(path_).c_str()).IsFile()}));
}

TEST_F(IoFault, ShortTransfersStillMoveEveryByte) {
    gvplatform::faults::LimitTransfer(7);
    std::string text(1000, 'w');
    CFile(path_.c_str(), CFile::modeCreate | CFile::modeWrite).Write(text.data(), static_cast<UINT>(text.size()));
    CFile file(path_.c_str(), CFile::modeRead);
    std::string back(1000, '\0');
    back.resize(file.Read(&back[0], 1000));
    EXPECT_EQ(text, back);
    file.SeekToBegin();
    CGVBuffer b;
    EXPECT_EQ(1000, b.mReadFromFile(file));
    EXPECT_EQ(text + '\0', gvtest::Content(b));
}

TEST_F(IoFault, FullDeviceFailsTheArchiveAndTheDirectWrite) {
    CFile full("/dev/full", CFile::modeWrite);
    char data[10] = {};
    ExpectFileError([&] { full.Write(data, sizeof data); }, CFileException::diskFull, ENOSPC);
    CGVStringArray a;
    CGVString s("saved");
    a.mAdd(&s);
    CArchive ar(&full, CArchive::store);
    a.Serialize(ar);
    ExpectFileError([&] { ar.Close(); }, CFileException::diskFull, ENOSPC);
}

TEST_F(IoFault, LoadsInterruptedByReadErrorsKeepTheTarget) {
    {
        CGVStringArray saved;
        CGVString item("item");
        for (int i = 0; i < 2000; ++i)
            saved.mAdd(&item);
        CFile file(path_.c_str(), CFile::modeCreate | CFile::modeWrite);
        CArchive ar(&file, CArchive::store);
        saved.Serialize(ar);
    }
    for (int nth : {1, 2, 3}) {
        SCOPED_TRACE(nth);
        CFile file(path_.c_str(), CFile::modeRead);
        CGVStringArray a;
        CGVString keep("kept");
        a.mAdd(&keep);
        FailFileCall(FileCall::read, nth, EIO);
        ExpectFileError([&] {
            CArchive ar(&file, CArchive::load, 512);
            a.Serialize(ar);
        }, CFileException::hardIO, EIO);
        ASSERT_EQ(1, a.mGetNumItems());

        file.SeekToBegin();
        CGVBuffer b;
        b.mInit("before", 6);
        FailFileCall(FileCall::read, nth, EIO);
        ExpectFileError([&] { b.mReadFromFile(file); }, CFileException::hardIO, EIO);
        EXPECT_EQ("before", gvtest::Content(b));
    }
}
