/* Bounded memory and text functions. A violation leaves a text destination empty and a memory destination zeroed, and
 * never writes outside of either. */
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstring>

#include "korv_platform.h"

namespace {

int Violation(char *pcDest, size_t ulDestMax, int iError)
{
    if (pcDest != nullptr && ulDestMax != 0)
        pcDest[0] = '\0';
    return iError;
}

/* Formats into the destination; the length that the whole text has, or a negative value. */
int Format(char *pcDest, size_t ulDestMax, const char *pcFormat, va_list vaArgs)
{
    if (pcDest == nullptr || ulDestMax == 0 || pcFormat == nullptr)
        return Violation(pcDest, ulDestMax, -1);
    const int iLength = std::vsnprintf(pcDest, ulDestMax, pcFormat, vaArgs);
    return iLength < 0 ? Violation(pcDest, ulDestMax, -1) : iLength;
}

} // namespace

int memset_s(void *pvDest, size_t ulDestMax, int iValue, size_t ulCount)
{
    if (pvDest == nullptr)
        return EINVAL;
    std::memset(pvDest, iValue, ulCount < ulDestMax ? ulCount : ulDestMax);
    return ulCount <= ulDestMax ? 0 : ERANGE;
}

int memcpy_s(void *pvDest, size_t ulDestMax, const void *pvSrc, size_t ulCount)
{
    if (pvDest == nullptr)
        return EINVAL;
    if (pvSrc == nullptr || ulCount > ulDestMax) {
        std::memset(pvDest, 0, ulDestMax);
        return pvSrc == nullptr ? EINVAL : ERANGE;
    }
    std::memcpy(pvDest, pvSrc, ulCount);
    return 0;
}

int strcpy_s(char *pcDest, size_t ulDestMax, const char *pcSrc)
{
    return strncpy_s(pcDest, ulDestMax, pcSrc, ulDestMax);
}

int strncpy_s(char *pcDest, size_t ulDestMax, const char *pcSrc, size_t ulCount)
{
    if (pcDest == nullptr || pcSrc == nullptr)
        return Violation(pcDest, ulDestMax, EINVAL);
    const size_t ulLength = strnlen(pcSrc, ulCount);
    if (ulLength >= ulDestMax)
        return Violation(pcDest, ulDestMax, ERANGE);
    std::memcpy(pcDest, pcSrc, ulLength);
    pcDest[ulLength] = '\0';
    return 0;
}

int strcat_s(char *pcDest, size_t ulDestMax, const char *pcSrc)
{
    if (pcDest == nullptr)
        return EINVAL;
    const size_t ulUsed = strnlen(pcDest, ulDestMax);
    if (ulUsed == ulDestMax || strcpy_s(pcDest + ulUsed, ulDestMax - ulUsed, pcSrc) != 0)
        return Violation(pcDest, ulDestMax, ERANGE);
    return 0;
}

int sprintf_s(char *pcDest, size_t ulDestMax, const char *pcFormat, ...)
{
    va_list vaArgs;
    va_start(vaArgs, pcFormat);
    const int iLength = Format(pcDest, ulDestMax, pcFormat, vaArgs);
    va_end(vaArgs);
    return iLength >= 0 && static_cast<size_t>(iLength) >= ulDestMax ? Violation(pcDest, ulDestMax, -1) : iLength;
}

int snprintf_s(char *pcDest, size_t ulDestMax, const char *pcFormat, ...)
{
    va_list vaArgs;
    va_start(vaArgs, pcFormat);
    const int iWritten = vsnprintf_s(pcDest, ulDestMax, pcFormat, vaArgs);
    va_end(vaArgs);
    return iWritten;
}

int vsnprintf_s(char *pcDest, size_t ulDestMax, const char *pcFormat, va_list vaArgs)
{
    const int iLength = Format(pcDest, ulDestMax, pcFormat, vaArgs);
    return iLength >= 0 && static_cast<size_t>(iLength) >= ulDestMax ? static_cast<int>(ulDestMax - 1) : iLength;
}
