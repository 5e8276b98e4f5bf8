// CGVStringPtrArray: the slots of a string array in the string archive layout.
#include "gvlib/array/GVStringArray.h"

void CGVStringPtrArray::Serialize(CArchive& ar) {
    if (ar.IsStoring()) {
        ar << static_cast<LONG>(GetSize());
        CGVString empty;
        for (INT_PTR i = 0; i < GetSize(); ++i) {
            CGVString* text = GetAt(i);
            (text != nullptr ? text : &empty)->Serialize(ar);
        }
        return;
    }
    LONG count = 0;
    ar >> count;
    if (count < 0)
        AfxThrowArchiveException(CArchiveException::badIndex);
    // Each string takes at least its length byte from the archive, so a damaged
    // count ends at the archive's end rather than in a huge allocation.
    for (LONG i = 0; i < count; ++i) {
        auto* text = new CGVString;
        try {
            text->Serialize(ar);
            Add(text);
        } catch (...) {
            delete text;
            throw;
        }
    }
}
