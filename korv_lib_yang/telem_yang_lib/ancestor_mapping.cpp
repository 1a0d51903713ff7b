/* Ancestor keys in the mapping form: each "ancestor-key-fid" statement says which attribute id of this class carries
 * one key of the parent class. */
#include "telem_yang_lib/host_memory.h"
#include "telem_yang_lib/log.h"
#include "telem_yang_lib/refusal.h"
#include "telem_yang_lib/schema_nodes.h"

namespace {

using korv::GO_ON;
using korv::NameOf;
using korv::STOP;

bool IsFull(const AncKeyMapCtx *pstMap)
{
    return pstMap->uiPos >= pstMap->uiAncNum;
}

void Append(AncKeyMapCtx *pstMap, uint32_t uiId)
{
    pstMap->puiIdArr[pstMap->uiPos++] = uiId;
}

bool HasNested(QY_EXT *pExt)
{
    uint32_t uiCount = 0;
    (void)QY_EXT_ScanAllChildExtInsts(pExt, TELMYANG_BSC_FindAncExtCountChild, &uiCount);
    return uiCount != 0;
}

/* The leaf and leaf-list children of a class as its record has them: a class with very many child classes is not
 * scanned once for each of them. */
void VisitLeavesInOrder(const YinInst *pstInst, IndexMapFindCtx *pstFind)
{
    const YinAttr *pstLeafList = pstInst->pstYinAttr + pstInst->ucNumOfAttr;
    const YinAttr *const pstEnd = pstLeafList + pstInst->ucLeafListNum;
    for (uint32_t uiLoop = 0; uiLoop <= pstInst->ucNumOfAttr; ++uiLoop) {
        for (; pstLeafList != pstEnd && pstLeafList->ucAttrsInFront == uiLoop; ++pstLeafList) {
            if (TELMYANG_BSC_InstGetExtIndexMapIdCb(pstLeafList->pLeafNode, nullptr, pstFind) == STOP)
                return;
        }
        if (uiLoop < pstInst->ucNumOfAttr &&
            TELMYANG_BSC_InstGetExtIndexMapIdCb(pstInst->pstYinAttr[uiLoop].pLeafNode, nullptr, pstFind) == STOP)
            return;
    }
}

} // namespace

uint32_t TELMYANG_BSC_ParseNodeAncestorKeyRefInfoWithParent(TELMYANG_LOCAL_DATA_S *pstLocal, QY_NODE *pNode,
                                                            YinInst *pstInst, YinInst *pstParent)
{
    MimExtArray stStatements = {};
    AncKeyMapCtx stMap = {pNode, pstInst, nullptr, 0, 0};
    uint32_t uiAncNum = 0;
    const uint32_t uiRet =
        TELMYANG_BSC_GetNodeSpecMimExtArray(pstLocal, pNode, MIM_EXT_ANCESTOR_KEY_FID, &stStatements, &uiAncNum);
    if (uiRet != KORV_OK) {
        KORV_LOG_ERROR(pstLocal, "Get ancestor key ref return 0x%x.", uiRet);
        return uiRet;
    }
    korv::HostPtr<uint32_t> puiIdArr = korv::NewZeroed<uint32_t>(pstLocal, uiAncNum);
    if (!puiIdArr)
        return KORV_FAIL;
    stMap.puiIdArr = puiIdArr.get();
    stMap.uiAncNum = uiAncNum;
    if (TELMYANG_BSC_BuildAncestorIdArray(&stMap, pstParent, &stStatements, pstLocal) != KORV_OK)
        return KORV_FAIL;
    return TELMYANG_BSC_ConstructAncestorKeyRef(pstInst, pNode, puiIdArr.get(), uiAncNum, pstLocal);
}

uint32_t TELMYANG_BSC_BuildAncestorIdArray(AncKeyMapCtx *pstMap, YinInst *pstParent, const MimExtArray *pstStatements,
                                           TELMYANG_LOCAL_DATA_S *pstLocal)
{
    const uint32_t uiRet = TELMYANG_BSC_MapByParentKeyRef_(pstMap, pstParent, pstStatements, pstLocal);
    if (uiRet != KORV_OK || pstParent->pucSelfKeyAttributes == nullptr)
        return uiRet;
    return TELMYANG_BSC_MapByParentKeySelf_(pstMap, pstParent, pstStatements, pstLocal);
}

uint32_t TELMYANG_BSC_MapByParentKeyRef_(AncKeyMapCtx *pstMap, YinInst *pstParent, const MimExtArray *pstStatements,
                                         TELMYANG_LOCAL_DATA_S *pstLocal)
{
    pstMap->uiPos = 0;
    for (uint32_t uiLoop = 0; uiLoop < pstParent->ucAncKeyNum; ++uiLoop) {
        if (IsFull(pstMap)) {
            KORV_LOG_ERROR(pstLocal, "Iterate key-ref, Append one ancestor for %s failed, pos is %u, except %u.",
                           NameOf(pstMap->pYinNode), pstMap->uiPos, pstMap->uiAncNum);
            korv::Refuse(pstLocal, {korv::Why::AncestorKeysTooFew, pstMap->pYinNode, nullptr, nullptr, nullptr});
            return KORV_FAIL;
        }
        const uint32_t uiParentId = pstParent->pstKeyRefArray->pucKeyAttributes[uiLoop];
        const uint32_t uiId =
            TELMYANG_BSC_FindSonIdByAncestorId(pstMap, pstParent, pstStatements, uiParentId, pstLocal);
        if (uiId == KORV_NO_ID) {
            KORV_LOG_ERROR(pstLocal, "Append one ancestor in parent key ref seq %u, current seq %u failed.", uiLoop,
                           pstMap->uiPos);
            return KORV_OK; /* the parent's own keys are still mapped */
        }
        Append(pstMap, uiId);
        KORV_LOG_INFO(pstLocal, "Node(%s) inherit father keyref : %u ==> %u.", NameOf(pstMap->pYinNode), uiParentId,
                      uiId);
    }
    return KORV_OK;
}

uint32_t TELMYANG_BSC_MapByParentKeySelf_(AncKeyMapCtx *pstMap, YinInst *pstParent, const MimExtArray *pstStatements,
                                          TELMYANG_LOCAL_DATA_S *pstLocal)
{
    for (uint32_t uiLoop = 0; uiLoop < pstParent->ucKeyNum; ++uiLoop) {
        if (IsFull(pstMap)) {
            KORV_LOG_ERROR(pstLocal, "Iter key, Append one ancestor for %s failed, pos is %u, except %u.",
                           NameOf(pstMap->pYinNode), pstMap->uiPos, pstMap->uiAncNum);
            korv::Refuse(pstLocal, {korv::Why::AncestorKeysTooFew, pstMap->pYinNode, nullptr, nullptr, nullptr});
            return KORV_FAIL;
        }
        const uint32_t uiKeyId = pstParent->pucSelfKeyAttributes[uiLoop];
        const uint32_t uiMapId = TELMYANG_BSC_InstGetExtIndexMapId(pstParent, uiKeyId, pstLocal);
        uint32_t uiId = KORV_NO_ID;
        if (uiMapId != KORV_NO_ID)
            uiId = TELMYANG_BSC_FindSonIdByAncestorId(pstMap, pstParent, pstStatements, uiMapId, pstLocal);
        if (uiId == KORV_NO_ID)
            uiId = TELMYANG_BSC_FindSonIdByAncestorId(pstMap, pstParent, pstStatements, uiKeyId, pstLocal);
        if (uiId == KORV_NO_ID) {
            KORV_LOG_ERROR(pstLocal, "Node(%s) inherit father key error : %u(%u) ==> %u.", NameOf(pstMap->pYinNode),
                           uiKeyId, uiMapId, uiId);
            return KORV_OK; /* the slots of the remaining keys stay 0 */
        }
        Append(pstMap, uiId);
        KORV_LOG_INFO(pstLocal, "Node(%s) inherit father key : %u(%u) ==> %u.", NameOf(pstMap->pYinNode), uiKeyId,
                      uiMapId, uiId);
    }
    return KORV_OK;
}

uint32_t TELMYANG_BSC_FindSonIdByAncestorId(AncKeyMapCtx *pstMap, YinInst *pstParent, const MimExtArray *pstStatements,
                                            uint32_t uiParentId, TELMYANG_LOCAL_DATA_S *pstLocal)
{
    KORV_LOG_INFO(pstLocal, "append ancestor id, node:%s, yinInst:0x%x, parentInst:0x%x, parentId:%u",
                  NameOf(pstMap->pYinNode), pstMap->pstYinInst->uiClassId, pstParent->uiClassId, uiParentId);
    QY_EXT *pExt = TELMYANG_BSC_FindAncExtWithParentAttrId(pstLocal, pstStatements, pstMap->uiAncNum, uiParentId);
    if (pExt == nullptr) {
        KORV_LOG_ERROR(pstLocal, "Failed to find ancestor-key for %s with attr-id %u", NameOf(pstMap->pYinNode),
                       uiParentId);
        return KORV_NO_ID;
    }
    uint32_t uiId = 0;
    if (TELMYANG_BSC_GetExtSpecSubMimExtValue(pstLocal, pExt, MIM_EXT_FIELD_ID, &uiId) != KORV_OK) {
        KORV_LOG_ERROR(pstLocal, "Ancestor-key for %s with attr-id %u do not have valid child field-id info",
                       NameOf(pstMap->pYinNode), uiParentId);
        return KORV_NO_ID;
    }
    if (TELMYANG_BSC_FindAttrInYinInstByAttrId(pstLocal, pstMap->pstYinInst, static_cast<uint8_t>(uiId)) != nullptr) {
        KORV_LOG_ERROR(pstLocal, "Ancestor key for %s with child-attr-id %u already exist", NameOf(pstMap->pYinNode),
                       uiId);
        return KORV_NO_ID;
    }
    return uiId;
}

QY_EXT *TELMYANG_BSC_FindAncExtWithParentAttrId(TELMYANG_LOCAL_DATA_S *pstLocal, const MimExtArray *pstStatements,
                                                uint32_t uiNum, uint32_t uiParentId)
{
    for (uint32_t uiLoop = 0; uiLoop < uiNum; ++uiLoop) {
        QY_EXT *pExt = pstStatements->apExtInst[uiLoop];
        if (!HasNested(pExt))
            continue;
        uint32_t uiValue = 0;
        if (TELMYANG_BSC_ParseMimExtIntoInt(pstLocal, pstStatements->apcValue[uiLoop], &uiValue) != KORV_OK)
            return nullptr;
        if (uiValue == uiParentId)
            return pExt;
    }
    return nullptr;
}

uint32_t TELMYANG_BSC_FindAncExtCountChild(QY_EXT *, const char *, const char *, const char *, void *puiCount)
{
    ++*static_cast<uint32_t *>(puiCount);
    return STOP;
}

YinAttr *TELMYANG_BSC_FindAttrInYinInstByAttrId(TELMYANG_LOCAL_DATA_S *, YinInst *pstInst, uint8_t ucAttrId)
{
    if (pstInst == nullptr || pstInst->pstYinAttr == nullptr)
        return nullptr;
    for (uint32_t uiLoop = 0; uiLoop < pstInst->ucNumOfAttr; ++uiLoop) {
        if (pstInst->pstYinAttr[uiLoop].ucAttrID == ucAttrId)
            return &pstInst->pstYinAttr[uiLoop];
    }
    return nullptr;
}

uint32_t TELMYANG_BSC_InstGetExtIndexMapId(YinInst *pstInst, uint32_t uiKeyAttrId, TELMYANG_LOCAL_DATA_S *pstLocal)
{
    IndexMapFindCtx stFind = {pstLocal, uiKeyAttrId, KORV_NO_ID};
    if (pstInst->ucLeafOrder != 0)
        VisitLeavesInOrder(pstInst, &stFind);
    else
        (void)QY_NODE_IterScanChildrenNode(pstInst->pYinNode, TELMYANG_BSC_InstGetExtIndexMapIdCb, &stFind);
    return stFind.uiIndexMapId;
}

uint32_t TELMYANG_BSC_InstGetExtIndexMapIdCb(QY_NODE *pNode, void *, void *pstFind)
{
    auto *pstCtx = static_cast<IndexMapFindCtx *>(pstFind);
    if (!korv::IsLeafOrLeafList(QY_NODE_GetNodeType(pNode)))
        return GO_ON;
    uint32_t uiFieldId = 0;
    const uint32_t uiRet = TELMYANG_BSC_GetNodeSpecMimExtValue(pstCtx->pstLocal, pNode, MIM_EXT_FIELD_ID, &uiFieldId);
    if (uiRet != KORV_OK) {
        KORV_LOG_ERROR(pstCtx->pstLocal, "Get mim-ext:field-id value of Node(%s) return %u.", NameOf(pNode), uiRet);
        pstCtx->uiIndexMapId = KORV_NO_ID;
        return STOP;
    }
    uint32_t uiMapId = 0;
    if (uiFieldId != pstCtx->uiKeyAttrId ||
        TELMYANG_BSC_GetNodeSpecMimExtValue(pstCtx->pstLocal, pNode, MIM_EXT_NAME2ID_KEY_FID, &uiMapId) != KORV_OK ||
        uiMapId == KORV_NO_ID)
        return GO_ON;
    pstCtx->uiIndexMapId = uiMapId;
    return STOP;
}
