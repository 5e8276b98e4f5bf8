// The host application's string table, as LoadString reads it.
#pragma once

#include <cstdint>
#include <string>

namespace gvplatform::detail {

/// Copies entry `id` into `text`; false when there is no entry (or it is empty).
bool LookUpStringResource(uint32_t id, std::string& text);

}  // namespace gvplatform::detail
