/* A class's own keys: the keys of its list as attribute ids. */
#include "telem_yang_lib/host_memory.h"
#include "telem_yang_lib/log.h"
#include "telem_yang_lib/refusal.h"
#include "telem_yang_lib/schema_nodes.h"

namespace {

using korv::GO_ON;
using korv::NameOf;
using korv::STOP;

bool IsKey(QY_NODE *pNode)
{
    return (QY_NODE_IsKey(pNode) & 1u) != 0;
}

/* A schema library answers in the low 8 bits; the others may hold anything. */
constexpr uint32_t KEY_NUM_MASK = 0xFF;

uint32_t CountKeyLeavesCb(QY_NODE *pNode, void *, void *puiCount)
{
    *static_cast<uint32_t *>(puiCount) += IsKey(pNode) ? 1 : 0;
    return GO_ON;
}

uint32_t CountKeyLeaves(QY_NODE *pNode)
{
    uint32_t uiCount = 0;
    (void)QY_NODE_IterScanChildrenNode(pNode, CountKeyLeavesCb, &uiCount);
    return uiCount;
}

/* Maps the collected names to attribute ids. */
uint32_t MapKeyNames(TELMYANG_LOCAL_DATA_S *pstLocal, QY_NODE *pNode, YinInst *pstInst, const KeyNameBuffer &stNames)
{
    const uint32_t uiNum = pstInst->ucKeyNum < YIN_KEY_NAME_NUM ? pstInst->ucKeyNum : YIN_KEY_NAME_NUM;
    for (uint32_t uiLoop = 0; uiLoop < uiNum; ++uiLoop) {
        const char *pcName = stNames.aacName[uiLoop];
        if (TELMYANG_BSC_FindListNodeKey(pstLocal, pcName, pstInst, pstInst->pstYinAttr, uiLoop) == 0) {
            KORV_LOG_ERROR(pstLocal, "error,not find key field ID!nodename(%s)node key size(%d)", NameOf(pNode),
                           pstInst->ucKeyNum);
            korv::Refuse(pstLocal, {korv::Why::KeyNoLeaf, pNode, nullptr, nullptr, nullptr});
            return KORV_FAIL;
        }
        KORV_LOG_INFO(pstLocal, "key: name(name=%s) (id=%u)", pcName, pstInst->pucSelfKeyAttributes[uiLoop]);
    }
    return KORV_OK;
}

} // namespace

uint32_t TELMYANG_BSC_ImplParseListAllKeyCb(QY_NODE *pNode, void *, void *pstCollect)
{
    auto *pstCtx = static_cast<KeyCollectCtx *>(pstCollect);
    const char *pcName = QY_NODE_GetNodeName(pNode);
    if (!IsKey(pNode) || pcName == nullptr)
        return GO_ON;
    if (strcpy_s(pstCtx->pstNames->aacName[pstCtx->uiNum], YIN_KEY_NAME_SIZE, pcName) != 0)
        return STOP;
    ++pstCtx->uiNum;
    return pstCtx->uiNum == pstCtx->uiWanted || pstCtx->uiNum == YIN_KEY_NAME_NUM ? STOP : GO_ON;
}

uint32_t TELMYANG_BSC_FindListNodeKey(TELMYANG_LOCAL_DATA_S *, const char *pcKeyName, YinInst *pstInst,
                                      const YinAttr *pstYinAttr, uint32_t uiIndex)
{
    if (pstYinAttr == nullptr)
        return 1;
    for (uint32_t uiLoop = 0; uiLoop < pstInst->ucNumOfAttr; ++uiLoop) {
        QY_NODE *pLeaf = pstYinAttr[uiLoop].pLeafNode;
        const char *pcName = pLeaf != nullptr ? QY_NODE_GetNodeName(pLeaf) : nullptr;
        if (pcName != nullptr && XUR_StrCmp(pcName, pcKeyName) == 0) {
            pstInst->pucSelfKeyAttributes[uiIndex] = pstYinAttr[uiLoop].ucAttrID;
            return 1;
        }
    }
    return 0;
}

uint32_t TELMYANG_BSC_ParseNodeKeyLeafInfo(TELMYANG_LOCAL_DATA_S *pstLocal, QY_NODE *pNode, YinInst *pstInst)
{
    if (QY_NODE_GetNodeType(pNode) != QY_NODE_TYPE_LIST)
        return KORV_OK;
    uint32_t uiKeyNum = QY_NODE_GetNodeKeyNum(pNode);
    if (uiKeyNum > YIN_COUNT_MAX && CountKeyLeaves(pNode) > YIN_COUNT_MAX) {
        KORV_LOG_ERROR(pstLocal, "class node(%s) has %u keys, more than %u!", NameOf(pNode), uiKeyNum, YIN_COUNT_MAX);
        korv::Refuse(pstLocal, {korv::Why::KeyNum, pNode, nullptr, nullptr, nullptr});
        return KORV_FAIL;
    }
    uiKeyNum &= KEY_NUM_MASK;
    pstInst->ucKeyNum = static_cast<uint8_t>(uiKeyNum);
    if (uiKeyNum == 0)
        return KORV_OK;
    pstInst->pucSelfKeyAttributes = korv::NewZeroed<uint8_t>(pstLocal, uiKeyNum).release();
    if (pstInst->pucSelfKeyAttributes == nullptr)
        return KORV_FAIL;
    KeyNameBuffer stNames = {};
    KeyCollectCtx stCollect = {pstLocal, &stNames, 0, uiKeyNum};
    (void)QY_NODE_IterScanChildrenNode(pNode, TELMYANG_BSC_ImplParseListAllKeyCb, &stCollect);
    return MapKeyNames(pstLocal, pNode, pstInst, stNames);
}

void TELMYANG_BSC_ParseListNodeKeyNames(TELMYANG_LOCAL_DATA_S *, KeyNameBuffer *pstNames, const char *pcKeyStatement)
{
    uint32_t uiName = 0;
    uint32_t uiLength = 0;
    for (uint32_t uiPos = 0; uiPos < YIN_KEY_STATEMENT_MAX && pcKeyStatement[uiPos] != '\0'; ++uiPos) {
        if (pcKeyStatement[uiPos] == ' ') {
            uiLength = 0;
            if (++uiName == YIN_KEY_NAME_NUM)
                return;
        } else if (uiLength < YIN_KEY_NAME_SIZE - 1) {
            pstNames->aacName[uiName][uiLength++] = pcKeyStatement[uiPos];
        }
    }
}
