// The whole public interface of gvlib.
#pragma once

#include "gvlib/platform/afxdb.h"
#include "gvlib/platform/afxdisp.h"
#include "gvlib/platform/afxexcept.h"
#include "gvlib/platform/afxstr.h"
#include "gvlib/platform/gvplatform.h"
#include "gvlib/platform/oleauto.h"
#include "gvlib/platform/winnls.h"
#include "gvlib/platform/wintypes.h"

#include "gvlib/buffer/GVBuffer.h"
#include "gvlib/buffer/RZMemFile.h"
#include "gvlib/core/GVLong.h"
#include "gvlib/core/GVObject.h"
#include "gvlib/core/GVObjectVisitor.h"
#include "gvlib/core/QXStringStream.h"
#include "gvlib/string/GVString.h"
