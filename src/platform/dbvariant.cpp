// CDBVariant: ownership of the values that its pointer members hold.
#include "gvlib/platform/afxdb.h"

#include <cstdlib>
#include <cstring>

#include "gvlib/platform/afxexcept.h"
#include "gvlib/platform/allocator.h"

CLongBinary::~CLongBinary() { gvplatform::detail::MemFree(m_hData); }

CDBVariant::CDBVariant() : m_dwType(DBVT_NULL), m_dblVal(0) {}

CDBVariant::CDBVariant(const CDBVariant& src) : m_dwType(DBVT_NULL), m_dblVal(0) { *this = src; }

CDBVariant::~CDBVariant() { Clear(); }

void CDBVariant::Clear() {
    switch (m_dwType) {
    case DBVT_DATE:
        delete m_pdate;
        break;
    case DBVT_STRING:
    case DBVT_ASCII:
        delete m_pstring;
        break;
    case DBVT_WSTRING:
        delete m_pstringW;
        break;
    case DBVT_BINARY:
        delete m_pbinary;
        break;
    default:
        break;
    }
    m_dwType = DBVT_NULL;
    m_dblVal = 0;
}

CDBVariant& CDBVariant::operator=(const CDBVariant& src) {
    if (this == &src)
        return *this;
    Clear();
    switch (src.m_dwType) {
    case DBVT_DATE:
        m_pdate = src.m_pdate ? new TIMESTAMP_STRUCT(*src.m_pdate) : nullptr;
        break;
    case DBVT_STRING:
    case DBVT_ASCII:
        m_pstring = src.m_pstring ? new CString(*src.m_pstring) : nullptr;
        break;
    case DBVT_WSTRING:
        m_pstringW = src.m_pstringW ? new CStringW(*src.m_pstringW) : nullptr;
        break;
    case DBVT_BINARY:
        m_pbinary = nullptr;
        if (src.m_pbinary != nullptr) {
            m_pbinary = new CLongBinary;
            m_pbinary->m_hData = gvplatform::detail::MemAlloc(src.m_pbinary->m_dwDataLength ? src.m_pbinary->m_dwDataLength : 1);
            if (m_pbinary->m_hData == nullptr) {
                delete m_pbinary;
                AfxThrowMemoryException();
            }
            if (src.m_pbinary->m_hData != nullptr)
                std::memcpy(m_pbinary->m_hData, src.m_pbinary->m_hData, src.m_pbinary->m_dwDataLength);
            m_pbinary->m_dwDataLength = src.m_pbinary->m_dwDataLength;
        }
        break;
    default:
        m_dblVal = src.m_dblVal;
        break;
    }
    m_dwType = src.m_dwType;
    return *this;
}
