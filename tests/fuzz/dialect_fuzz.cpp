#include "fuzz/dialect_input.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  veldrin::fuzz::TypeInto(data, size);
  return 0;
}
