// CGVObject's default operations and the free stream operators.
#include "gvlib/core/GVObject.h"

#include <cstdlib>
#include <istream>
#include <ostream>

#include "gvlib/platform/afxexcept.h"
#include "gvlib/platform/allocator.h"

CGVObject::~CGVObject() = default;

CGVObject* CGVObject::mCopy() const { return nullptr; }

CGVObject* CGVObject::mNew() const { return nullptr; }

void CGVObject::mClear() {}

void* CGVObject::operator new(std::size_t size) {
    void* block = gvplatform::detail::ObjectAlloc(size ? size : 1);
    if (block == nullptr)
        AfxThrowMemoryException();
    return block;
}

void CGVObject::operator delete(void* block, std::size_t size) noexcept {
    gvplatform::detail::ObjectFree(block, size ? size : 1);
}

CGVObject& CGVObject::operator=(CGVObject const&) {
    // A non-const pointer, as the original compiler threw a literal: handlers for
    // char*, char const*, void* and void const* all catch it.
    throw const_cast<char*>("unsupported conversion");
}

int32_t CGVObject::mCompare(CGVObject const*) const { return 0; }

int32_t CGVObject::mVisit(CGVObjectVisitor*, int32_t) { return 0; }

void CGVObject::mConvertFromDBVariant(CDBVariant const&) {}

void CGVObject::mConvertFromOleVariant(COleVariant const&) {}

void CGVObject::mConvertToOleVariant(COleVariant*) const {}

void CGVObject::Serialize(std::ostream&) {}

void CGVObject::Serialize(std::istream&) {}

void CGVObject::Serialize(CArchive&) {}

std::ostream& operator<<(std::ostream& os, CGVObject& obj) {
    obj.Serialize(os);
    return os;
}

std::istream& operator>>(std::istream& is, CGVObject& obj) {
    char tag;
    is >> tag;  // the writer's type tag; neither checked nor used
    obj.Serialize(is);
    return is;
}
