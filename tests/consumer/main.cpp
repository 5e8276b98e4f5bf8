// Uses the installed library the way a host program would, down to defining the
// visitor class itself as hosts of the original did.
#include <gvlib/gvlib.h>

#include <cstdio>
#include <sstream>

class CGVObjectVisitor {
public:
    virtual int32_t mVisitBuffer(CGVBuffer*, int32_t param) { return param + 1; }
    virtual int32_t mVisitLong(CGVLong*, int32_t param) { return param + 2; }
    virtual int32_t mVisitString(CGVString* text, int32_t param) { return param + text->GetLength(); }
};

int main() {
    CGVString greeting("hello");
    greeting += ", world";
    std::ostringstream os;
    os << greeting;
    std::istringstream is(os.str());
    CGVObject* copy = CGVObject::mNew(is);
    int status = (copy != nullptr && greeting.mCompare(copy) == 0) ? 0 : 1;
    delete copy;
    CGVObjectVisitor visitor;
    CGVLong number(7);
    CGVBuffer bytes;
    if (greeting.mVisit(&visitor, 100) != 112 || number.mVisit(&visitor, 100) != 102 ||
        bytes.mVisit(&visitor, 100) != 101)
        status = 1;
    std::printf("%s: %s\n", status == 0 ? "ok" : "FAILED", os.str().c_str());
    return status;
}
