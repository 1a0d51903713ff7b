#include <string_view>

#include "korv_lib_yang/korv_lib_yang.h"

/* The header is installed as it stands, so its version is written there; the build's own is the one that file names,
 * packages and consumers' version checks have. */
// NOLINTBEGIN(misc-redundant-expression)
static_assert(KORV_LIB_YANG_VERSION == std::string_view(KORV_PROJECT_VERSION) &&
                  KORV_LIB_YANG_VERSION_MAJOR == KORV_PROJECT_VERSION_MAJOR &&
                  KORV_LIB_YANG_VERSION_MINOR == KORV_PROJECT_VERSION_MINOR &&
                  KORV_LIB_YANG_VERSION_PATCH == KORV_PROJECT_VERSION_PATCH,
              "korv_lib_yang.h and CMakeLists.txt name different versions");
// NOLINTEND(misc-redundant-expression)

uint32_t YANGLIB_GetLibVersion(void)
{
    return KORV_LIB_YANG_VERSION_NUMBER;
}
