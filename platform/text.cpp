/* The host's text functions: the C runtime's under the host's names. */
#include <cstdlib>
#include <cstring>

#include "korv_platform.h"

uint32_t XUR_StrLen(const char *pcText)
{
    return static_cast<uint32_t>(std::strlen(pcText));
}

int32_t XUR_StrCmp(const char *pcLeft, const char *pcRight)
{
    return std::strcmp(pcLeft, pcRight);
}

char *XUR_StrStr(const char *pcText, const char *pcPart)
{
    return const_cast<char *>(std::strstr(pcText, pcPart));
}

char *XUR_StrChr(const char *pcText, char cChar)
{
    return const_cast<char *>(std::strchr(pcText, cChar));
}

char *XUR_StrRChr(const char *pcText, char cChar)
{
    return const_cast<char *>(std::strrchr(pcText, cChar));
}

uint64_t XUR_strtoul(const char *pcText, char **ppcEnd, uint32_t uiBase)
{
    return std::strtoull(pcText, ppcEnd, static_cast<int>(uiBase));
}
