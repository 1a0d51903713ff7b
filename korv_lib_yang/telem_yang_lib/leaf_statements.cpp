#include "telem_yang_lib/leaf_statements.h"

korv::LeafStatements::LeafStatements(QY_NODE *pNode) : m_pNode(pNode)
{
    (void)QY_NODE_ScanAllExtInsts(pNode, TakeCb, this);
}

uint32_t korv::LeafStatements::TakeCb(QY_EXT *, const char *pcExtModule, const char *pcKeyword, const char *pcArgument,
                                      void *pStatements)
{
    static_cast<LeafStatements *>(pStatements)->Take(pcExtModule, pcKeyword, pcArgument);
    return 0;
}

void korv::LeafStatements::Take(const char *pcExtModule, const char *pcKeyword, const char *pcArgument)
{
    ++m_uiNum;
    if (!IsExtModule(pcExtModule)) {
        m_bHasForeign = true;
        return;
    }
    const MimExtType uiId = IdOfKeyword(pcKeyword);
    if (uiId <= MIM_EXT_CLASS_TYPE && !m_astFirst[uiId].bFound)
        m_astFirst[uiId] = {true, pcArgument};
}

uint32_t korv::LeafStatements::Value(TELMYANG_LOCAL_DATA_S *pstLocal, MimExtType uiId, uint32_t *puiValue) const
{
    if (m_astFirst[uiId].bFound)
        return TELMYANG_BSC_ParseMimExtIntoInt(pstLocal, m_astFirst[uiId].pcArgument, puiValue);
    if (!m_bHasForeign || QY_NODE_GetNodeType(m_pNode) != QY_NODE_TYPE_LEAF)
        return KORV_FAIL;
    *puiValue = KORV_NO_ID;
    return KORV_OK;
}
