/* The chain of top nodes that a load builds. */
#ifndef KORV_TOP_CHAIN_H
#define KORV_TOP_CHAIN_H

#include "telem_yang/tree_budget.h"

namespace korv {

/* A generation context that grows into a chain, and what the whole load may still make. */
struct TopChain {
    KorvTreeGenCtx *pstGen;
    TreeBudget *pBudget;
    KorvTreeNode *pstLastTop; /* the last top node appended here, or null: so the chain is not walked for each */
};

/* Puts a tree behind the context's others. */
inline void AppendTopNode(TopChain *pstChain, KorvTreeNode *pstTop)
{
    KorvTreeGenCtx *pstGen = pstChain->pstGen;
    if (pstGen->pstRoot == nullptr)
        pstGen->pstRoot = pstTop;
    else
        (void)TELMYANG_AddKorvSiblingNode(pstChain->pstLastTop != nullptr ? pstChain->pstLastTop : pstGen->pstRoot,
                                          pstTop);
    pstChain->pstLastTop = pstTop;
}

/* tree_generation.cpp: builds the tree of one top node and appends it to the chain. */
uint32_t GenerateTopTree(QY_NODE *pNode, TopChain *pstChain);

/* tree_generation.cpp: TELEMYANG_GenerateOriginTree within the budget of a load. */
uint32_t GenerateOriginTree(TELMYANG_LOCAL_DATA_S *pstLocal, TELMYANG_YANG_FILE_INFO_S *pstFile, QY_MOD *pMod,
                            TreeBudget *pBudget);

/* augment_trees.cpp: TELEMYANG_GenerateAugmentTree within the budget of a load. */
uint32_t GenerateAugmentTrees(TELMYANG_LOCAL_DATA_S *pstLocal, TELMYANG_YANG_FILE_INFO_S *pstFile, QY_MOD *pMod,
                              TreeBudget *pBudget);

} // namespace korv

#endif // KORV_TOP_CHAIN_H
