/* The text of a module file. */
#include "fuzz_host.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz::WriteModel("fuzz.yin", std::string(reinterpret_cast<const char *>(data), size));
    fuzz::LoadAndUse();
    return 0;
}
