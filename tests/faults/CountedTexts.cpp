// Memory for texts. The build sends what CString asks of operator new, and nothing else, to the
// function here, so that it can be counted and refused.

#include <new>

#include "faults/Injection.h"
#include "support/TestHost.h"

extern "C" void* qz_new_for_texts(std::size_t size);

void* qz_new_for_texts(std::size_t size) {
  support::TestHost* host = support::CurrentTestHost();
  if (host != nullptr && host->faults.Enter(faults::kTextMemory)) throw std::bad_alloc();
  return ::operator new(size);
}
