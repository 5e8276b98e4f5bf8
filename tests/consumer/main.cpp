// Uses the installed library the way a host program would.
#include <gvlib/gvlib.h>

#include <cstdio>
#include <sstream>

int main() {
    CGVString greeting("hello");
    greeting += ", world";
    std::ostringstream os;
    os << greeting;
    std::istringstream is(os.str());
    CGVObject* copy = CGVObject::mNew(is);
    int status = (copy != nullptr && greeting.mCompare(copy) == 0) ? 0 : 1;
    delete copy;
    std::printf("%s: %s\n", status == 0 ? "ok" : "FAILED", os.str().c_str());
    return status;
}
