// Storing a value object into bytes and loading it back, for the archive tests.
#pragma once

#include <cstdint>
#include <vector>

#include "gvlib/core/GVObject.h"
#include "gvlib/platform/gvplatform.h"
#include "gvlib/platform/afxarchive.h"
#include "gvlib/platform/afxfile.h"

namespace gvtest {

inline std::vector<BYTE> Stored(CGVObject& object) {
    CMemFile file;
    {
        CArchive ar(&file, CArchive::store);
        object.Serialize(ar);
    }
    std::vector<BYTE> bytes(static_cast<size_t>(file.GetLength()));
    file.SeekToBegin();
    if (!bytes.empty())
        file.Read(bytes.data(), static_cast<UINT>(bytes.size()));
    return bytes;
}

inline void Load(std::vector<BYTE> bytes, CGVObject& object) {
    CMemFile file(bytes.data(), static_cast<UINT>(bytes.size()));
    CArchive ar(&file, CArchive::load);
    object.Serialize(ar);
}

// Little-endian pieces of an archive header.
inline void Put32(std::vector<BYTE>& out, int32_t v, int bytes = 4) {
    for (int k = 0; k < bytes; ++k)
        out.push_back(static_cast<BYTE>(static_cast<uint32_t>(v) >> (8 * k)));
}
inline std::vector<BYTE> Header(int32_t elementSize, int16_t step, int32_t slots, int32_t count) {
    std::vector<BYTE> out;
    for (auto [v, bytes] : {std::pair<int32_t, int>{elementSize, 4}, {step, 2}, {slots, 4}, {count, 4}})
        Put32(out, v, bytes);
    return out;
}

// Sets the loading policy for one scope and puts the defaults back after it.
struct LoadingPolicy {
    LoadingPolicy(bool strict, uint64_t budget = uint64_t{2} << 30) {
        gvplatform::SetStrictLoading(strict);
        gvplatform::SetMemoryBudget(budget);
    }
    ~LoadingPolicy() {
        gvplatform::SetStrictLoading(false);
        gvplatform::SetMemoryBudget(uint64_t{2} << 30);
    }
};

}  // namespace gvtest
