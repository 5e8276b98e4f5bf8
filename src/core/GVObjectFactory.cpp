// CGVObject::mNew(std::istream&): builds the object that a type tag names.
#include <istream>
#include <memory>

#include "gvlib/array/GVLongArray.h"
#include "gvlib/array/GVStringArray.h"
#include "gvlib/buffer/GVBuffer.h"
#include "gvlib/core/GVLong.h"
#include "gvlib/core/GVObject.h"
#include "gvlib/datetime/GVDate.h"
#include "gvlib/string/GVString.h"

namespace {

CGVObject* NewForTag(char tag) {
    switch (tag) {
    case 'T':
        return new CGVString;
    case 'U':
        return new CGVLong(0);
    case 'V':
        return new CGVBuffer(0, 128);
    case 'W':
        return new CGVDate;
    case 'X':
        return new CGVStringArray;
    case 'Y':
        return new CGVLongArray;
    default:
        return nullptr;
    }
}

}  // namespace

CGVObject* CGVObject::mNew(std::istream& is) {
    char tag = 0;
    is >> tag;  // stays 0 on an exhausted stream
    // Owned until its body is read: a body that fails to load takes the object with it.
    std::unique_ptr<CGVObject> obj(NewForTag(tag));
    if (obj != nullptr)
        obj->Serialize(is);
    return obj.release();
}
