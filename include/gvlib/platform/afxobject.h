// CObject: the framework's root class, kept for the classes that derive from it.
#pragma once

#include "gvlib/platform/export.h"
#include "gvlib/platform/wintypes.h"

class CArchive;

class GVLIB_API CObject {
public:
    virtual ~CObject();
    /// Writes or reads the object; the root writes and reads nothing.
    virtual void Serialize(CArchive& ar);
    BOOL IsSerializable() const { return FALSE; }

protected:
    CObject() = default;
    CObject(const CObject&) = default;
    CObject& operator=(const CObject&) = default;
};
