// CGVObjectVisitor: the host's double-dispatch target for CGVObject::mVisit.
// Hosts ported from the original define this class themselves, so no other public
// header includes this one; a host without its own definition includes it.
#pragma once

#include <cstdint>

class CGVBuffer;
class CGVLong;
class CGVString;

/// Defined by the host. The library calls exactly these three operations, in this
/// slot order, and passes their result back as the result of mVisit.
class CGVObjectVisitor {
public:
    virtual int32_t mVisitBuffer(CGVBuffer* buffer, int32_t param) = 0;
    virtual int32_t mVisitLong(CGVLong* value, int32_t param) = 0;
    virtual int32_t mVisitString(CGVString* text, int32_t param) = 0;

protected:
    // Not deleted through this interface; kept non-virtual so the slots stay as above.
    ~CGVObjectVisitor() = default;
};
