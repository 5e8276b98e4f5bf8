// Loads arbitrary bytes as the binary archive form of a class chosen by the
// first byte, by default or strictly (also chosen by the first byte), under a
// small memory budget. Damaged archives must end in a platform exception or a
// value whose text form and archive can be written.
#include <gvlib/gvlib.h>

#include <cstddef>
#include <cstdint>
#include <sstream>
#include <vector>

namespace {

constexpr int32_t kMostWritten = 1 << 16;

bool Writable(CGVObject& obj) {
    if (auto* a = dynamic_cast<CGVArray*>(&obj))
        return a->mGetNumItems() <= kMostWritten && int64_t{a->mGetElementSize()} * a->mGetAllocatedSlots() <= (1 << 24);
    if (auto* b = dynamic_cast<CGVBuffer*>(&obj))
        return b->mGetLength() <= (1 << 24);
    return true;
}

template <typename T>
void Load(std::vector<BYTE>& bytes) {
    CMemFile file;
    file.Attach(bytes.data(), static_cast<UINT>(bytes.size()), 0);
    T obj;
    try {
        CArchive ar(&file, CArchive::load);
        obj.Serialize(ar);
    } catch (CException const&) {
        // the defined outcome of damaged or truncated data
    }
    file.Detach();
    // Whatever was loaded must write its text form and store again; a count kept
    // from a damaged header may make that raise the platform's exceptions, and a
    // huge one is skipped to keep the run fast.
    if (!Writable(obj))
        return;
    try {
        std::ostringstream text;
        text << obj;
        CMemFile out;
        CArchive store(&out, CArchive::store);
        obj.Serialize(store);
        store.Close();
    } catch (CException const&) {
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(uint8_t const* data, size_t size) {
    if (size == 0)
        return 0;
    gvplatform::SetMemoryBudget(64u << 20);
    gvplatform::SetStrictLoading((data[0] / 6) % 2 != 0);
    std::vector<BYTE> bytes(data + 1, data + size);
    switch (data[0] % 6) {
    case 0:
        Load<CGVString>(bytes);
        break;
    case 1:
        Load<CGVLong>(bytes);
        break;
    case 2:
        Load<CGVBuffer>(bytes);
        break;
    case 3:
        Load<CGVArray>(bytes);
        break;
    case 4:
        Load<CGVLongArray>(bytes);
        break;
    default:
        Load<CGVStringArray>(bytes);
        break;
    }
    return 0;
}
