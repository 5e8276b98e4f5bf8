// Feeds arbitrary bytes to the text stream factory and to each class's reader,
// then writes back whatever was read. The first byte chooses default or strict
// loading; a small memory budget bounds what an announced size may cost.
#include <gvlib/gvlib.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <sstream>
#include <string>

namespace {

void WriteBack(CGVObject& obj) {
    // A huge buffer or array, as a damaged count may announce, is skipped to
    // keep the run fast.
    if (auto* b = dynamic_cast<CGVBuffer*>(&obj); b != nullptr && b->mGetLength() > (1 << 24))
        return;
    if (auto* a = dynamic_cast<CGVArray*>(&obj); a != nullptr && a->mGetNumItems() > (1 << 16))
        return;
    std::ostringstream os;
    os << obj;
}

// Strict loading's archive exception and the budget's memory exception are the
// defined outcomes of damaged input.
template <typename F>
void Guarded(F read) {
    try {
        read();
    } catch (CArchiveException const&) {
    } catch (CMemoryException const&) {
    }
}

// Every object the factory can read from the stream, one after another.
void ReadAll(std::string const& input) {
    std::istringstream is(input);
    for (int i = 0; i < 256; ++i) {
        std::unique_ptr<CGVObject> obj(CGVObject::mNew(is));
        if (!obj)
            break;
        WriteBack(*obj);
    }
}

// The same bytes read as the body of one known class, as operator>> does.
template <typename T>
void ReadAs(std::string const& input) {
    std::istringstream is(input);
    T obj;
    is >> obj;
    WriteBack(obj);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(uint8_t const* data, size_t size) {
    if (size == 0)
        return 0;
    gvplatform::SetMemoryBudget(64u << 20);
    gvplatform::SetStrictLoading(data[0] % 2 != 0);
    std::string input(reinterpret_cast<char const*>(data) + 1, size - 1);
    Guarded([&] { ReadAll(input); });
    Guarded([&] { ReadAs<CGVString>(input); });
    Guarded([&] { ReadAs<CGVLong>(input); });
    Guarded([&] { ReadAs<CGVBuffer>(input); });
    Guarded([&] { ReadAs<CGVDate>(input); });
    Guarded([&] { ReadAs<CGVStringArray>(input); });
    Guarded([&] { ReadAs<CGVLongArray>(input); });
    return 0;
}
