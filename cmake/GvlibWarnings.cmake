# Compiler settings shared by every target of the project.
add_library(gvlib_build_options INTERFACE)
target_compile_options(gvlib_build_options INTERFACE -Wall -Wextra -Wshadow -Wnon-virtual-dtor)
# The tests assign objects to themselves on purpose, which clang flags.
target_compile_options(gvlib_build_options INTERFACE $<$<CXX_COMPILER_ID:Clang>:-Wno-self-assign-overloaded>)
if(GVLIB_WERROR)
  target_compile_options(gvlib_build_options INTERFACE -Werror)
endif()
if(GVLIB_SANITIZE)
  target_compile_options(gvlib_build_options INTERFACE
    -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(gvlib_build_options INTERFACE -fsanitize=address,undefined)
endif()
if(GVLIB_THREAD_SANITIZE)
  target_compile_options(gvlib_build_options INTERFACE -fsanitize=thread -fno-omit-frame-pointer)
  target_link_options(gvlib_build_options INTERFACE -fsanitize=thread)
endif()
if(GVLIB_BUILD_FUZZERS)
  # Coverage instrumentation for libFuzzer on every target, library included.
  target_compile_options(gvlib_build_options INTERFACE -fsanitize=fuzzer-no-link)
endif()
