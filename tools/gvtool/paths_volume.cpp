// gvtool path: the members that ask the file system (volumes, legality,
// unique names, relative paths).
#include <iostream>

#include <gvlib/gvlib.h>

#include "gvtool/commands.h"

namespace gvtool {

void AddPathVolumeOps(CLI::App&) {}

}  // namespace gvtool
