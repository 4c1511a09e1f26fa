#pragma once

// The system types that interface headers mention, declared without any library header.
#if defined(_WIN32)
struct _iobuf;
typedef struct _iobuf FILE;
#else
struct _IO_FILE;
typedef struct _IO_FILE FILE;
#endif

struct HKEY__;
typedef struct HKEY__* HKEY;
struct HINSTANCE__;
typedef struct HINSTANCE__* HINSTANCE;
