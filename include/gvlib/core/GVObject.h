// CGVObject: the root of every value class and its uniform virtual interface.
#pragma once

#include <cstddef>
#include <cstdint>
#include <iosfwd>

#include "gvlib/platform/export.h"

class CArchive;
class CDBVariant;
class COleVariant;
class CGVObjectVisitor;

/// Every value object can be copied, created empty, cleared, assigned from any
/// other value object, compared, visited, converted to and from variants and
/// serialized. The root gives each operation a harmless default; assignment
/// through the root is refused by throwing the text "unsupported conversion".
class GVLIB_API CGVObject {
public:
    CGVObject() = default;
    virtual ~CGVObject();

    /// A new heap copy owned by the caller; null where a class has none.
    virtual CGVObject* mCopy() const;
    /// A new empty heap object of the same class owned by the caller; null where none.
    virtual CGVObject* mNew() const;
    virtual void mClear();
    /// Throws the const char* "unsupported conversion" unless a class supplies it.
    virtual CGVObject& operator=(CGVObject const& other);
    virtual int32_t mCompare(CGVObject const* other) const;
    virtual int32_t mVisit(CGVObjectVisitor* visitor, int32_t param);
    virtual void mConvertFromDBVariant(CDBVariant const& variant);
    virtual void mConvertFromOleVariant(COleVariant const& variant);
    virtual void mConvertToOleVariant(COleVariant* variant) const;
    /// Writes the object's type tag and body in the text stream format.
    virtual void Serialize(std::ostream& os);
    /// Reads a body (the tag has already been taken) in the text stream format.
    virtual void Serialize(std::istream& is);
    virtual void Serialize(CArchive& ar);

    /// Reads a type tag (skipping white space), builds the matching class and lets
    /// it read its body. Null for an unknown tag or an exhausted stream. When
    /// reading the body raises, the new object is destroyed before the exception leaves.
    static CGVObject* mNew(std::istream& is);

    /// Value objects on the heap: a failed allocation raises CMemoryException,
    /// as the framework's allocator did, instead of std::bad_alloc.
    static void* operator new(std::size_t size);
    /// Sized, so that the allocator can keep the block for the next object of its size.
    static void operator delete(void* block, std::size_t size) noexcept;
    // Declaring the forms above hides the placement form; keep it available.
    static void* operator new(std::size_t, void* where) noexcept { return where; }
    static void operator delete(void*, void*) noexcept {}

protected:
    CGVObject(CGVObject const&) = default;
};

/// Writes obj through its Serialize(std::ostream&), which puts the tag first.
GVLIB_API std::ostream& operator<<(std::ostream& os, CGVObject& obj);
/// Takes one non-blank character (the tag, unchecked) and lets obj read its body.
GVLIB_API std::istream& operator>>(std::istream& is, CGVObject& obj);
