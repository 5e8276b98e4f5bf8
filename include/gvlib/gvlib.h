// The whole public interface of gvlib.
#pragma once

// Platform layer: the framework, kernel, OLE and C runtime names the library uses.
#include "gvlib/platform/afxarchive.h"
#include "gvlib/platform/afxcurrency.h"
#include "gvlib/platform/afxdb.h"
#include "gvlib/platform/afxdisp.h"
#include "gvlib/platform/afxexcept.h"
#include "gvlib/platform/afxfile.h"
#include "gvlib/platform/afxobject.h"
#include "gvlib/platform/afxstr.h"
#include "gvlib/platform/afxtempl.h"
#include "gvlib/platform/crttime.h"
#include "gvlib/platform/gvplatform.h"
#include "gvlib/platform/oleauto.h"
#include "gvlib/platform/oledate.h"
#include "gvlib/platform/volumes.h"
#include "gvlib/platform/winnls.h"
#include "gvlib/platform/wintypes.h"

// Value classes.
#include "gvlib/array/GVArray.h"
#include "gvlib/array/GVLongArray.h"
#include "gvlib/array/GVSort.h"
#include "gvlib/array/GVStringArray.h"
#include "gvlib/buffer/GVBuffer.h"
#include "gvlib/buffer/RZMemFile.h"
#include "gvlib/core/GVLong.h"
#include "gvlib/core/GVObject.h"
#include "gvlib/core/QXStringStream.h"
#include "gvlib/datetime/GVDate.h"
#include "gvlib/datetime/GVMoney.h"
#include "gvlib/path/GVPath.h"
#include "gvlib/string/GVString.h"

// CGVObjectVisitor is only declared here: hosts define it themselves, as they
// did for the original, or include "gvlib/core/GVObjectVisitor.h" for ours.
