// Memory for the tool linked with --wrap=calloc: every block that could hold a text is refused.
#include <cstddef>

extern "C" {

void* __real_calloc(size_t count, size_t size);
void* __wrap_calloc(size_t count, size_t size);

void* __wrap_calloc(size_t count, size_t size) {
  return count * size < 4096 ? __real_calloc(count, size) : nullptr;
}
}
