/* Counting what the trees of one load cost. */
#include "telem_yang/tree_budget.h"

namespace {

uint64_t CostOf(const char *pcName)
{
    return 1 + XUR_StrLen(pcName) / korv::NAME_OF_A_RECORD;
}

uint64_t CostOf(const VEC_VECTOR_S *pstLeafList)
{
    if (pstLeafList == nullptr)
        return 0;
    uint64_t ulCost = 1;
    const uint32_t uiNum = VEC_VectorCount(pstLeafList);
    for (uint32_t uiLoop = 0; uiLoop < uiNum; ++uiLoop)
        ulCost += CostOf(static_cast<const KorvTreeLeaf *>(pstLeafList->ppvItem[uiLoop])->pcName);
    return ulCost;
}

} // namespace

bool korv::TreeBudget::Take(const KorvTreeNode *pstNode)
{
    m_ulRecords += CostOf(pstNode->pcName) + CostOf(pstNode->pstLeafList) + CostOf(pstNode->pstCaseLeafList);
    return !IsSpent();
}
