/* The text of a module file in compact syntax. */
#include <qxyang.h>

#include <cstdlib>

#include "fuzz_host.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

namespace {

/* Each statement and its argument stand within the file. */
uint32_t CheckEvent(uint32_t, const QXYANG_STATEMENT_S *statement, const QXYANG_COMMENT_S *comment, void *cookie)
{
    const uint64_t size = *static_cast<uint64_t *>(cookie);
    const QXYANG_PLACE_S &place = statement != nullptr ? statement->stPlace : comment->stPlace;
    if (uint64_t{place.uiOffset} + place.uiLength > size || place.uiLine == 0)
        std::abort();
    if (statement != nullptr && uint64_t{statement->stArgument.uiOffset} + statement->stArgument.uiLength > size)
        std::abort();
    return 0;
}

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const char *text = reinterpret_cast<const char *>(data);
    fuzz::WriteModel("fuzz.yang", std::string(text, size));
    fuzz::LoadAndUse();
    QXYANG_FILE *file = QXYANG_ReadText("fuzz.yang", text, size, QXYANG_OPTION_COMMENTS);
    uint64_t bytes = 0;
    (void)QXYANG_GetFileText(file, &bytes);
    (void)QXYANG_ScanFile(file, CheckEvent, &bytes);
    QXYANG_CloseFile(file);
    return 0;
}
