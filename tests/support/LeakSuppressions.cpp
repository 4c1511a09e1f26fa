// Only for LeakSanitizer: the loader leaves its handle array behind when a channel throws through
// it, as its declaration says.
extern "C" const char* __lsan_default_suppressions();

extern "C" const char* __lsan_default_suppressions() { return "leak:NewHandles\n"; }
