// CObject: the framework's root class.
#include "gvlib/platform/afxobject.h"

CObject::~CObject() = default;

void CObject::Serialize(CArchive&) {}
