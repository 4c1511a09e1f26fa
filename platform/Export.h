#pragma once

// How a symbol leaves its module, and how another module names it. GNU linkers resolve
// imported functions and data by themselves on Windows; MSVC has to be told.
#if defined(_MSC_VER)
#define QZ_EXPORT __declspec(dllexport)
#define QZ_IMPORT __declspec(dllimport)
#elif defined(_WIN32)
#define QZ_EXPORT __declspec(dllexport)
#define QZ_IMPORT
#else
#define QZ_EXPORT __attribute__((visibility("default")))
#define QZ_IMPORT __attribute__((visibility("default")))
#endif
