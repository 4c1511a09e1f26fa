#pragma once

// How a symbol leaves its module, and how another module names it. GNU linkers resolve
// imported functions and data by themselves on Windows; MSVC has to be told.
// The _TYPE forms stand at a class whose members are marked one by one: MSVC forbids both at once,
// the others need it so that the class's virtual table leaves the module too.
#if defined(_MSC_VER)
#define QZ_EXPORT __declspec(dllexport)
#define QZ_IMPORT __declspec(dllimport)
#define QZ_EXPORT_TYPE
#define QZ_IMPORT_TYPE
#elif defined(_WIN32)
#define QZ_EXPORT __declspec(dllexport)
#define QZ_IMPORT
#define QZ_EXPORT_TYPE QZ_EXPORT
#define QZ_IMPORT_TYPE
#else
#define QZ_EXPORT __attribute__((visibility("default")))
#define QZ_IMPORT __attribute__((visibility("default")))
#define QZ_EXPORT_TYPE QZ_EXPORT
#define QZ_IMPORT_TYPE QZ_IMPORT
#endif
