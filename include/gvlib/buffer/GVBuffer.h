// CGVBuffer: the growable byte block with its lock protocol and serializations.
#pragma once

#include <cstdint>

#include "gvlib/core/GVObject.h"
#include "gvlib/platform/export.h"

class CFile;

/// Bytes of text or binary data. The block grows in whole steps of the growth
/// step and always keeps one byte of room past the content for the terminator
/// that the text view writes. Between mLockBuffer and mUnlock the block never
/// moves: an operation that would need a bigger block then changes nothing.
class GVLIB_API CGVBuffer : public CGVObject {
public:
    /// nSize > 0 gives a block for nSize bytes (zeroed) and that length; a
    /// non-positive nGrowBy falls back to the default step of 128.
    CGVBuffer(int32_t nSize = 0, int32_t nGrowBy = 128);
    CGVBuffer(CGVBuffer const&) = delete;
    ~CGVBuffer() override;

    char* mGetBuffer() const { return m_data; }
    int32_t mGetLength() const { return m_length; }
    /// The content bytes that lie inside the block: the length kept to 0 …
    /// capacity − 1, since mRollBack sets any length. Every member that reads the
    /// content reads this many bytes; bytes beyond it read as zero.
    int32_t ContentLength() const;
    /// Null without a block; otherwise writes a 0 byte right after the content.
    operator char const*();
    int mIsLocked() const { return m_locked; }
    /// 1 when every content byte is 0 (also for no content), else 0.
    int mIsNull() const;

    /// n below 1 with text: copies the text and its terminator ("abc", 0 ⇒ length 4).
    /// Null p: n zero bytes.
    void mInit(char const* p, int32_t n);
    /// n 0 with text: appends the text without terminator ("abc", 0 ⇒ +3).
    void mConcat(char const* p, int32_t n);
    CGVBuffer const& operator+=(char const* p);
    /// Copies the content; this buffer's growth step stays.
    CGVBuffer& operator=(CGVBuffer const& other);
    /// Length 0; the block stays.
    void mClearBuffer();
    /// Sets the length without any check (-5 and 1 << 30 included); the block is
    /// not touched. Members that read the content keep to ContentLength().
    void mRollBack(int32_t n);

    /// Null when already locked; otherwise room for n more bytes and their address.
    char* mLockBuffer(int32_t n);
    /// Commits the n bytes written at the locked address and unlocks.
    void mUnlock(int32_t n);

    /// Replaces every occurrence of find by repl, left to right; replaced text is not
    /// searched again. 'a' by 'aa' on "aaa" ⇒ "aaaaaa", 3. An empty find changes nothing.
    int32_t mReplaceAll(char const* find, char const* repl);
    /// Appends the file from its position, then a 0 byte at the index equal to the
    /// count read, counted in the length. Returns the count read. A read or an
    /// allocation that fails raises its exception and leaves the buffer unchanged.
    int32_t mReadFromFile(CFile& file);

    /// A new buffer with step 128 and the same content.
    CGVObject* mCopy() const override;
    CGVObject* mNew() const override;
    /// Releases the block (not while locked).
    void mClear() override;
    /// Copies another CGVBuffer's content; other classes and itself change nothing.
    CGVObject& operator=(CGVObject const& other) override;
    /// Unsigned byte order, then length; -1 for another class.
    int32_t mCompare(CGVObject const* other) const override;
    int32_t mVisit(CGVObjectVisitor* visitor, int32_t param) override;
    /// Narrow and wide strings become text with its terminator; other types change nothing.
    void mConvertFromDBVariant(CDBVariant const& variant) override;
    /// VT_BSTR read as narrow text; an array's bytes; anything else changes nothing.
    void mConvertFromOleVariant(COleVariant const& variant) override;
    /// The content up to its first 0 byte, as a VT_BSTR.
    void mConvertToOleVariant(COleVariant* variant) const override;
    /// "V", the length, a space, the bytes, a space: empty ⇒ "V0  ".
    void Serialize(std::ostream& os) override;
    void Serialize(std::istream& is) override;
    /// The framework's count, then the bytes.
    void Serialize(CArchive& ar) override;
    using CGVObject::mNew;

private:
    /// Room for n content bytes plus one; nothing while locked.
    void mReserve(int32_t n);
    /// The block size the step rule gives for n bytes.
    int32_t StepSize(int64_t n) const;
    /// Replaces the block by one for n content bytes plus one, dropping the content;
    /// used by the assignment and the deserializations, which ignore the lock.
    void ReplaceBlockFor(int32_t n);
    bool HasRoomFor(int64_t n) const { return n + 1 <= m_capacity; }
    /// Makes a negative length 0 before an append; any other length stays.
    void KeepLengthForAppending();
    void InstallBlock(char* block, int32_t capacity);
    int32_t ReplaceShrinking(char const* find, int32_t f, char const* repl, int32_t r);
    int32_t ReplaceGrowing(char const* find, int32_t f, char const* repl, int32_t r);
    void SetFromBytes(char const* p, int32_t n);
    /// The text body under strict loading: whole, or the archive exception.
    void ReadStrictBody(std::istream& is, int32_t length);
    /// The content, padded with zeros up to a length set beyond the block.
    void WriteContent(std::ostream& os) const;
    void WriteContent(CArchive& ar) const;
    int32_t ReadChunks(CFile& file);

    char* m_data = nullptr;
    int32_t m_length = 0;
    int32_t m_capacity = 0;
    int32_t m_growBy = 128;
    int m_locked = 0;
};
