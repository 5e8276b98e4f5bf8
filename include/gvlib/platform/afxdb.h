// CDBVariant: the framework's record-set field value.
#pragma once

#include "gvlib/platform/afxstr.h"
#include "gvlib/platform/export.h"
#include "gvlib/platform/wintypes.h"

enum : DWORD {
    DBVT_NULL = 0,
    DBVT_BOOL = 1,
    DBVT_UCHAR = 2,
    DBVT_SHORT = 3,
    DBVT_LONG = 4,
    DBVT_SINGLE = 5,
    DBVT_DOUBLE = 6,
    DBVT_DATE = 7,
    DBVT_STRING = 8,
    DBVT_BINARY = 9,
    DBVT_ASCII = 10,
    DBVT_WSTRING = 11
};

/// The database timestamp record.
struct TIMESTAMP_STRUCT {
    int16_t year;
    uint16_t month;
    uint16_t day;
    uint16_t hour;
    uint16_t minute;
    uint16_t second;
    uint32_t fraction;
};

/// A block of binary field data.
class GVLIB_API CLongBinary {
public:
    CLongBinary() = default;
    ~CLongBinary();
    CLongBinary(const CLongBinary&) = delete;
    CLongBinary& operator=(const CLongBinary&) = delete;

    void* m_hData = nullptr;  // malloc'ed block, released with the object
    DWORD m_dwDataLength = 0;
};

/// A typed field value; the variant owns what its pointer members point to.
class GVLIB_API CDBVariant {
public:
    CDBVariant();
    CDBVariant(const CDBVariant& src);
    CDBVariant& operator=(const CDBVariant& src);
    ~CDBVariant();

    /// Releases the owned date, string or binary and sets the type to DBVT_NULL.
    void Clear();

    DWORD m_dwType;
    union {
        BOOL m_boolVal;
        unsigned char m_chVal;
        short m_iVal;
        LONG m_lVal;
        float m_fltVal;
        double m_dblVal;
        TIMESTAMP_STRUCT* m_pdate;
        CString* m_pstring;
        CLongBinary* m_pbinary;
        CStringA* m_pstringA;
        CStringW* m_pstringW;
    };
};
