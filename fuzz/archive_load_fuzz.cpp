// Loads arbitrary bytes as the binary archive form of a class chosen by the
// first byte. Damaged archives must end in the archive exception or a value
// whose text form and archive can be written.
#include <gvlib/gvlib.h>

#include <cstddef>
#include <cstdint>
#include <sstream>
#include <vector>

namespace {

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
    // Whatever was loaded must write its text form and store again.
    std::ostringstream text;
    text << obj;
    CMemFile out;
    CArchive store(&out, CArchive::store);
    obj.Serialize(store);
    store.Close();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(uint8_t const* data, size_t size) {
    if (size == 0)
        return 0;
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
