/// Marks what the shared library exports.
///
/// `PLATEN_BUILDING` is defined while the library itself is compiled, `PLATEN_STATIC` by whoever
/// links the documents statically (the command and the tests). A host defines neither.
#pragma once

#if defined(PLATEN_STATIC)
#define PLATEN_API
#elif defined(_WIN32)
#if defined(PLATEN_BUILDING)
#define PLATEN_API __declspec(dllexport)
#else
#define PLATEN_API __declspec(dllimport)
#endif
#else
#define PLATEN_API __attribute__((visibility("default")))
#endif
