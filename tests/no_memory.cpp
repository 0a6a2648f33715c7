// Memory for the tool linked with --wrap=calloc: every block that could hold a text is refused.
#include <cerrno>
#include <cstddef>

extern "C" {

void* __real_calloc(size_t count, size_t size);
void* __wrap_calloc(size_t count, size_t size);

void* __wrap_calloc(size_t count, size_t size) {
  if (count * size < 4096) return __real_calloc(count, size);
  errno = ENOMEM;
  return nullptr;
}
}
