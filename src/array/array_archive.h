// Reading an array's raw element block from an archive.
#pragma once

#include <cstdint>

class CArchive;

namespace gvlib::detail {

/// Reads `bytes` raw bytes into a new malloc'ed block (null for 0 bytes). The
/// block grows with what the archive actually delivers, so a damaged header
/// announcing more than the archive holds costs no more than the data present;
/// running short raises CArchiveException endOfFile and frees what was read.
char* ReadArchiveBlock(CArchive& ar, int64_t bytes);

}  // namespace gvlib::detail
