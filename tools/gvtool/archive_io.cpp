// Archive loading with the byte offset where decoding stopped.
#include "gvtool/archive_io.h"

#include <vector>

#include "gvtool/commands.h"

namespace gvtool {
namespace {

// An archive that can tell how many bytes of its file it has handed out: the
// file's position less what still waits in the archive's buffer.
class CountingArchive : public CArchive {
public:
    using CArchive::CArchive;
    size_t Consumed() const {
        return static_cast<size_t>(GetFile()->GetPosition()) - static_cast<size_t>(m_lpBufMax - m_lpBufCur);
    }
};

const char* Cause(int cause) {
    switch (cause) {
    case CArchiveException::endOfFile:
        return "the data ends early";
    case CArchiveException::badIndex:
        return "a count or size is out of range";
    default:
        return "the data is damaged";
    }
}

}  // namespace

size_t LoadArchive(std::string const& bytes, CGVObject& obj) {
    std::vector<BYTE> block(bytes.begin(), bytes.end());
    CMemFile file;
    file.Attach(block.data(), static_cast<UINT>(block.size()), 0);
    CountingArchive ar(&file, CArchive::load);
    try {
        obj.Serialize(ar);
    } catch (CArchiveException const& e) {
        size_t at = ar.Consumed();
        file.Detach();
        throw Failure{"decoding stopped at byte offset " + std::to_string(at) + ": " + Cause(e.m_cause)};
    } catch (CException const& e) {
        size_t at = ar.Consumed();
        file.Detach();
        throw Failure{"decoding stopped at byte offset " + std::to_string(at) + ": " + e.what()};
    }
    size_t used = ar.Consumed();
    file.Detach();
    return used;
}

std::string StoreArchive(CGVObject& obj) {
    CMemFile file;
    {
        CArchive ar(&file, CArchive::store);
        obj.Serialize(ar);
        ar.Close();
    }
    std::string bytes(static_cast<size_t>(file.GetLength()), '\0');
    file.SeekToBegin();
    if (!bytes.empty())
        file.Read(&bytes[0], static_cast<UINT>(bytes.size()));
    return bytes;
}

}  // namespace gvtool
