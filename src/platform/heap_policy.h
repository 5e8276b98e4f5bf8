// What the library's allocators share: whether they may keep blocks of their
// own, and the fault-injection gate of test builds.
#pragma once

namespace gvplatform::detail {

// The address sanitiser keeps its own account of every block and reports a
// use after free only for blocks that went back to it; the thread sanitiser
// tolerates memory being reused, as long as the reuse is synchronised.
#if defined(__SANITIZE_ADDRESS__)
constexpr bool kAddressSanitised = true;
constexpr bool kThreadSanitised = false;
#elif defined(__SANITIZE_THREAD__)
constexpr bool kAddressSanitised = false;
constexpr bool kThreadSanitised = true;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(memory_sanitizer)
constexpr bool kAddressSanitised = true;
#else
constexpr bool kAddressSanitised = false;
#endif
#if __has_feature(thread_sanitizer)
constexpr bool kThreadSanitised = true;
#else
constexpr bool kThreadSanitised = false;
#endif
#else
constexpr bool kAddressSanitised = false;
constexpr bool kThreadSanitised = false;
#endif

/// True when a test has armed a failure for this very allocation; always false
/// outside test builds.
#ifdef GVLIB_FAULT_INJECTION
bool AllocationRefused() noexcept;
#else
constexpr bool AllocationRefused() noexcept { return false; }
#endif

}  // namespace gvplatform::detail
