// Symbol visibility for the shared library: the library builds with hidden
// visibility, so only what carries GVLIB_API is exported.
#pragma once

#define GVLIB_API __attribute__((visibility("default")))
