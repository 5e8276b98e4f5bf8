// Internal: the ICU collation that reproduces the order of a Windows locale
// identifier, sort-id bits included.
#pragma once

#include <cstdint>
#include <string>

namespace gvplatform::detail {

/// The ICU locale (with its collation keyword) whose order matches the
/// platform's sort for `lcid`; "" is the root collation. False for an
/// identifier the platform would refuse.
bool CollationLocaleForLcid(uint32_t lcid, std::string& locale);

}  // namespace gvplatform::detail
