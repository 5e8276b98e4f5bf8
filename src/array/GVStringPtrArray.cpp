// CGVStringPtrArray: the slots of a string array in the string archive layout.
#include "array/array_archive.h"
#include "gvlib/array/GVStringArray.h"
#include "gvlib/platform/gvplatform.h"
#include "platform/loading_policy.h"

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
    // A negative count reads nothing, as the original's loop did; strict loading
    // calls it damage.
    if (count < 0 && gvplatform::StrictLoading())
        gvplatform::detail::ThrowDamage(CArchiveException::badIndex, gvplatform::detail::LoadOffset(ar));
    if (count <= 0)
        return;
    // The strings announced must fit the budget before the first is made; each then
    // takes at least its length byte, so a damaged count ends at the archive's end.
    gvplatform::detail::ChargeInput(static_cast<uint64_t>(count), gvlib::detail::kStringItemCost);
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
