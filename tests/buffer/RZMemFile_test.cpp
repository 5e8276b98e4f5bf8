// CRZMemFile: working in place on a buffer's block, detaching, copying out.
#include <gtest/gtest.h>

#include <string>

#include "gvlib/buffer/GVBuffer.h"
#include "gvlib/buffer/RZMemFile.h"
#include "gvlib/platform/afxexcept.h"
#include "support/buffer_content.h"

using gvtest::Content;

TEST(CRZMemFile, ReadsAndWritesTheBufferInPlace) {
    CGVBuffer b, copy;
    b.mConcat("hello", 5);
    {
        CRZMemFile file;
        file.mAttachBuffer(&b);
        EXPECT_EQ(reinterpret_cast<unsigned char*>(b.mGetBuffer()), file.mGetBuffer());
        char read[8] = {};
        EXPECT_EQ(5u, file.Read(read, sizeof read));
        EXPECT_STREQ("hello", read);
        file.SeekToBegin();
        file.Write("J", 1);
        EXPECT_EQ("Jello", Content(b));
        file.mGetBufferCopy(&copy);
        EXPECT_TRUE(Content(copy) == "Jello" && copy.mGetBuffer() != b.mGetBuffer());
        file.SeekToEnd();
        EXPECT_THROW(file.Write("!", 1), CMemoryException);
    }
    // The block went back to the buffer untouched; the length is the buffer's own.
    b.mConcat(" world", 6);
    EXPECT_EQ("Jello world", Content(b));
    // A file of its own copies out its own content.
    CRZMemFile own;
    own.Write("0123456789", 10);
    own.mGetBufferCopy(&copy);
    EXPECT_EQ("0123456789", Content(copy));
    own.SetLength(0);
    own.mGetBufferCopy(&copy);
    EXPECT_EQ(0, copy.mGetLength());
}
