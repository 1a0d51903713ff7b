/* The host's vector and doubly linked list. */
#include <cstring>
#include <limits>

#include "korv_platform.h"

namespace {

/* The vector as the host knows it, and behind it what only these functions know. The entries that were asked for at the
 * start follow in the same block; a vector that grows moves them into a block of their own. */
struct Vector {
    VEC_VECTOR_S stPublic;
    uint64_t ulModuleId;
};

constexpr uint32_t MIN_GROWTH = 4;
constexpr uint32_t NOT_SET = 0xFFFFFFFF;

void **InlineItems(Vector *pstVector)
{
    return reinterpret_cast<void **>(pstVector + 1);
}

void FreeOutlineItems(Vector *pstVector)
{
    if (pstVector->stPublic.ppvItem != InlineItems(pstVector))
        ZOR_Free_F(pstVector->stPublic.ppvItem, __FILE__, __LINE__);
}

bool Grow(Vector *pstVector)
{
    const uint32_t uiOld = pstVector->stPublic.uiCapacity;
    const uint32_t uiNew = uiOld < MIN_GROWTH ? MIN_GROWTH : uiOld * 2;
    if (uiNew <= uiOld)
        return false;
    void *pvItems =
        ZOR_Malloc_F(pstVector->ulModuleId, g_aucZorMemPt[0], uint64_t{uiNew} * sizeof(void *), __FILE__, __LINE__);
    if (pvItems == nullptr)
        return false;
    std::memcpy(pvItems, pstVector->stPublic.ppvItem, pstVector->stPublic.uiCount * sizeof(void *));
    FreeOutlineItems(pstVector);
    pstVector->stPublic.ppvItem = static_cast<void **>(pvItems);
    pstVector->stPublic.uiCapacity = uiNew;
    return true;
}

} // namespace

VEC_VECTOR_S *VEC_VectorInit_F(uint64_t ulModuleId, uint32_t uiCapacity, const char *pcFile, uint32_t uiLine)
{
    const uint64_t ulSize = sizeof(Vector) + uint64_t{uiCapacity} * sizeof(void *);
    auto *pstVector = static_cast<Vector *>(ZOR_Malloc_F(ulModuleId, g_aucZorMemPt[0], ulSize, pcFile, uiLine));
    if (pstVector == nullptr)
        return nullptr;
    std::memset(pstVector, 0, ulSize);
    pstVector->ulModuleId = ulModuleId;
    pstVector->stPublic.uiCapacity = uiCapacity;
    pstVector->stPublic.ppvItem = InlineItems(pstVector);
    return &pstVector->stPublic;
}

uint32_t VEC_VectorSet(VEC_VECTOR_S *pstVector, void *pvItem)
{
    if (pstVector->uiCount == NOT_SET - 1)
        return NOT_SET;
    if (pstVector->uiCount == pstVector->uiCapacity && !Grow(reinterpret_cast<Vector *>(pstVector)))
        return NOT_SET;
    pstVector->ppvItem[pstVector->uiCount] = pvItem;
    return pstVector->uiCount++;
}

uint32_t VEC_VectorCount(const VEC_VECTOR_S *pstVector)
{
    return pstVector->uiCount;
}

uint32_t VEC_VectorFree_F(VEC_VECTOR_S *pstVector)
{
    if (pstVector == nullptr)
        return 0;
    auto *pstOwn = reinterpret_cast<Vector *>(pstVector);
    FreeOutlineItems(pstOwn);
    ZOR_Free_F(pstOwn, __FILE__, __LINE__);
    return 0;
}

void DLL_Delete(DLL_S *pstList, DLL_NODE_S *pstNode)
{
    /* The head begins with the same two links as a node, so neighbours need no telling apart. */
    pstNode->pstPrev->pstNext = pstNode->pstNext;
    pstNode->pstNext->pstPrev = pstNode->pstPrev;
    pstNode->pstNext = nullptr;
    pstNode->pstPrev = nullptr;
    pstList->uiCount--;
}
