/* Host services in memory: no files, no growth beyond what was asked for. */
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "tiny_schema.h"

uint8_t g_aucZorMemPt[] = {3, 4};
unsigned g_uiLiveBlocks = 0;
unsigned g_uiAssertions = 0;

void *ZOR_Malloc_F(uint64_t ulModuleId, uint8_t ucPartition, uint64_t ulSize, const char *pcFile, uint32_t uiLine)
{
    (void)pcFile, (void)uiLine;
    if (ulModuleId != 42 || ucPartition != 3)
        return NULL;
    g_uiLiveBlocks++;
    return malloc(ulSize);
}

void ZOR_Free_F(void *pvBlock, const char *pcFile, uint32_t uiLine)
{
    (void)pcFile, (void)uiLine;
    g_uiLiveBlocks--;
    free(pvBlock);
}

void ZOR_Assert(const char *pcFile, uint32_t uiLine, uint32_t uiValue)
{
    (void)pcFile, (void)uiLine, (void)uiValue;
    g_uiAssertions++;
}

uint32_t XUR_StrLen(const char *pcText)
{
    return (uint32_t)strlen(pcText);
}

int32_t XUR_StrCmp(const char *pcLeft, const char *pcRight)
{
    return strcmp(pcLeft, pcRight);
}

char *XUR_StrStr(const char *pcText, const char *pcPart)
{
    return strstr(pcText, pcPart);
}

char *XUR_StrChr(const char *pcText, char cChar)
{
    return strchr(pcText, cChar);
}

char *XUR_StrRChr(const char *pcText, char cChar)
{
    return strrchr(pcText, cChar);
}

uint64_t XUR_strtoul(const char *pcText, char **ppcEnd, uint32_t uiBase)
{
    return strtoul(pcText, ppcEnd, (int)uiBase);
}

uint32_t XUR_VFS_SetWorkPath(const char *pcDir)
{
    return (void)pcDir, 1;
}

uint32_t XUR_VFS_FindFirst(const char *pcPattern, XUR_VFS_FIND_S *pstFind)
{
    return (void)pcPattern, (void)pstFind, 1;
}

uint32_t XUR_VFS_FindNext(XUR_VFS_FIND_S *pstFind)
{
    return (void)pstFind, 1;
}

void XUR_VFS_FindClose(XUR_VFS_FIND_S *pstFind)
{
    (void)pstFind;
}

uint32_t XUR_VFS_IsDirExist(const char *pcPath)
{
    return (void)pcPath, 0;
}

VEC_VECTOR_S *VEC_VectorInit_F(uint64_t ulModuleId, uint32_t uiCapacity, const char *pcFile, uint32_t uiLine)
{
    VEC_VECTOR_S *pstVector =
        ZOR_Malloc_F(ulModuleId, 3, sizeof(*pstVector) + uiCapacity * sizeof(void *), pcFile, uiLine);
    if (pstVector != NULL)
        *pstVector = (VEC_VECTOR_S){0, uiCapacity, (void **)(pstVector + 1)};
    return pstVector;
}

uint32_t VEC_VectorSet(VEC_VECTOR_S *pstVector, void *pvItem)
{
    if (pstVector->uiCount == pstVector->uiCapacity)
        return 0xFFFFFFFF;
    pstVector->ppvItem[pstVector->uiCount] = pvItem;
    return pstVector->uiCount++;
}

uint32_t VEC_VectorCount(const VEC_VECTOR_S *pstVector)
{
    return pstVector->uiCount;
}

uint32_t VEC_VectorFree_F(VEC_VECTOR_S *pstVector)
{
    ZOR_Free_F(pstVector, __FILE__, __LINE__);
    return 0;
}

void DLL_Delete(DLL_S *pstList, DLL_NODE_S *pstNode)
{
    (void)pstList, (void)pstNode;
}

int memset_s(void *pvDest, size_t ulDestMax, int iValue, size_t ulCount)
{
    return ulCount <= ulDestMax ? memset(pvDest, iValue, ulCount), 0 : 1;
}

int memcpy_s(void *pvDest, size_t ulDestMax, const void *pvSrc, size_t ulCount)
{
    return ulCount <= ulDestMax ? memcpy(pvDest, pvSrc, ulCount), 0 : 1;
}

int strcpy_s(char *pcDest, size_t ulDestMax, const char *pcSrc)
{
    return strncpy_s(pcDest, ulDestMax, pcSrc, ulDestMax);
}

int strncpy_s(char *pcDest, size_t ulDestMax, const char *pcSrc, size_t ulCount)
{
    const char *pcEnd = memchr(pcSrc, '\0', ulCount);
    const size_t ulLength = pcEnd != NULL ? (size_t)(pcEnd - pcSrc) : ulCount;
    if (ulLength >= ulDestMax)
        return 1;
    memcpy(pcDest, pcSrc, ulLength);
    pcDest[ulLength] = '\0';
    return 0;
}

int strcat_s(char *pcDest, size_t ulDestMax, const char *pcSrc)
{
    const size_t ulUsed = strlen(pcDest);
    return strcpy_s(pcDest + ulUsed, ulDestMax - ulUsed, pcSrc);
}

int sprintf_s(char *pcDest, size_t ulDestMax, const char *pcFormat, ...)
{
    va_list vaArgs;
    va_start(vaArgs, pcFormat);
    const int iLength = vsnprintf(pcDest, ulDestMax, pcFormat, vaArgs);
    va_end(vaArgs);
    return iLength >= 0 && (size_t)iLength < ulDestMax ? iLength : -1;
}

int snprintf_s(char *pcDest, size_t ulDestMax, const char *pcFormat, ...)
{
    va_list vaArgs;
    va_start(vaArgs, pcFormat);
    const int iLength = vsnprintf_s(pcDest, ulDestMax, pcFormat, vaArgs);
    va_end(vaArgs);
    return iLength;
}

int vsnprintf_s(char *pcDest, size_t ulDestMax, const char *pcFormat, va_list vaArgs)
{
    const int iLength = vsnprintf(pcDest, ulDestMax, pcFormat, vaArgs);
    return iLength >= 0 && (size_t)iLength >= ulDestMax ? (int)ulDestMax - 1 : iLength;
}
