/* The record of a class node, once it is there: found on its node, and released. */
#include <cstring>

#include "telem_yang_lib/host_memory.h"

YinInst *TELMYANG_MDL_GetYinInstFromYinNode(QY_NODE *pNode)
{
    void *pvPrivate = QY_NODE_GetPrivate(pNode);
    if (reinterpret_cast<uintptr_t>(pvPrivate) < YIN_PRIVATE_MIN || QY_NODE_GetNodeType(pNode) == QY_NODE_TYPE_LEAF)
        return nullptr;
    uint64_t ulMagic = 0;
    std::memcpy(&ulMagic, pvPrivate, sizeof(ulMagic));
    return ulMagic == YIN_INST_MAGIC ? static_cast<YinInst *>(pvPrivate) : nullptr;
}

void TELMYANG_FreeYinInstInfo(YinInst *pstInst)
{
    if (pstInst == nullptr)
        return;
    korv::HostFree(pstInst->pstYinAttr);
    pstInst->pstYinAttr = nullptr;
    korv::HostFree(pstInst->pucSelfKeyAttributes);
    pstInst->pucSelfKeyAttributes = nullptr;
    if (pstInst->pstKeyRefArray == nullptr)
        return;
    for (uint32_t uiLoop = 0; uiLoop < pstInst->ucAncKeyNum; ++uiLoop) {
        korv::HostFree(pstInst->pstKeyRefArray[uiLoop].pucKeyAttributes);
        pstInst->pstKeyRefArray[uiLoop].pucKeyAttributes = nullptr;
    }
    korv::HostFree(pstInst->pstKeyRefArray);
    pstInst->pstKeyRefArray = nullptr;
}
