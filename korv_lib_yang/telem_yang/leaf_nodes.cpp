/* Keeping registered records from pointing at released schema nodes.
 *
 * The nodes of a module go together, and the schema layer says so of each node whose private slot is set before it releases
 * it. While a module is unloaded, the slot of every node that may go points at the watch. The first node of a module that is
 * announced takes all nodes of that module out of the records. */
#include "telem_yang/leaf_nodes.h"

#include <cstring>

#include "telem_yang/file_list.h"

namespace {

constexpr uint64_t WATCH_MAGIC = 0x4B4F525657415443u;

/* TELMYANG_YANG_FILE_INFO_S::ucBorrows */
enum Borrows : uint8_t {
    BORROWS_NOTHING,
    BORROWS_FOREIGN, /* nodes of modules that the record's own one need not import */
    BORROWS_ALL,     /* its own nodes as well */
};

/* A visitor gets each schema node that a record shows, with its module's name; its answer takes the node's place. */
template <typename Visit>
void VisitLeafList(const VEC_VECTOR_S *pstLeafList, Visit &visit)
{
    const uint32_t uiNum = pstLeafList != nullptr ? VEC_VectorCount(pstLeafList) : 0;
    for (uint32_t uiLoop = 0; uiLoop < uiNum; ++uiLoop) {
        auto *pstLeaf = static_cast<KorvTreeLeaf *>(pstLeafList->ppvItem[uiLoop]);
        if (pstLeaf != nullptr && pstLeaf->pYinNode != nullptr)
            pstLeaf->pYinNode = visit(pstLeaf->pYinNode, pstLeaf->pcModuleName);
    }
}

/* The node after this one in a chain of top nodes and everything below them; null at the end. */
KorvTreeNode *NextInTree(KorvTreeNode *pstNode)
{
    if (pstNode->pstFirstChild != nullptr)
        return pstNode->pstFirstChild;
    while (pstNode != nullptr && pstNode->pstNextSibling == nullptr)
        pstNode = pstNode->pstParent;
    return pstNode != nullptr ? pstNode->pstNextSibling : nullptr;
}

template <typename Visit>
void VisitTree(KorvTreeNode *pstRoot, Visit &visit)
{
    for (KorvTreeNode *pstNode = pstRoot; pstNode != nullptr; pstNode = NextInTree(pstNode)) {
        VisitLeafList(pstNode->pstLeafList, visit);
        VisitLeafList(pstNode->pstCaseLeafList, visit);
    }
}

bool IsSameName(const char *pcLeft, const char *pcRight)
{
    return pcLeft == pcRight || (pcLeft != nullptr && pcRight != nullptr && XUR_StrCmp(pcLeft, pcRight) == 0);
}

/* The nodes of one tree that are neither its record's own nor of the module that stays as long. */
template <typename Visit>
void VisitOthers(KorvTreeNode *pstRoot, const char *pcOwn, const char *pcStays, Visit &visit)
{
    const char *pcKnown = pcStays; /* names are mostly the same text: this one was compared last, and stays */
    auto visitOther = [&](QY_NODE *pNode, const char *pcModule) {
        if (pcModule == pcStays || pcModule == pcKnown)
            return pNode;
        if (!IsSameName(pcModule, pcStays) && !IsSameName(pcModule, pcOwn))
            return visit(pNode, pcModule);
        pcKnown = pcModule;
        return pNode;
    };
    VisitTree(pstRoot, visitOther);
}

/* The nodes that may go before the record. A target tree begins in the module that the augment's module imports. */
template <typename Visit>
void VisitForeignNodes(TELMYANG_YANG_FILE_INFO_S *pstFile, Visit &visit)
{
    const char *const pcOwn = pstFile->pcModuleName;
    VisitOthers(pstFile->pstOriginTree, pcOwn, pcOwn, visit);
    for (uint32_t uiLoop = 0; uiLoop < pstFile->ucAugmentNum; ++uiLoop) {
        const TELMYANG_AUGMENT_INFO_S &stAugment = pstFile->astAugment[uiLoop];
        if (stAugment.pstTargetTree != nullptr)
            VisitOthers(stAugment.pstTargetTree, pcOwn, stAugment.pstTargetTree->pcModuleName, visit);
        VisitOthers(stAugment.pstSelfTree, pcOwn, pcOwn, visit);
    }
}

QY_NODE *VisitPointer(QY_NODE *pNode, const char *pcModule, auto &visit)
{
    return pNode != nullptr ? visit(pNode, pcModule) : nullptr;
}

template <typename Visit>
void VisitAllNodes(TELMYANG_YANG_FILE_INFO_S *pstFile, Visit &visit)
{
    VisitTree(pstFile->pstOriginTree, visit);
    for (uint32_t uiLoop = 0; uiLoop < pstFile->ucAugmentNum; ++uiLoop) {
        TELMYANG_AUGMENT_INFO_S *pstAugment = &pstFile->astAugment[uiLoop];
        VisitTree(pstAugment->pstTargetTree, visit);
        VisitTree(pstAugment->pstSelfTree, visit);
        pstAugment->pAugNode = VisitPointer(pstAugment->pAugNode, pstFile->pcModuleName, visit);
        pstAugment->pFirstChild = VisitPointer(pstAugment->pFirstChild, pstFile->pcModuleName, visit);
    }
}

template <typename Visit>
void VisitBorrowed(TELMYANG_YANG_CTX_S *pstYangCtx, Visit &&visit)
{
    TELMYANG_YANG_FILE_INFO_S *const pstEnd = korv::ListEnd(pstYangCtx);
    for (auto *pstFile = pstYangCtx->stYangFileList.pstNext; pstFile != pstEnd && pstFile->ucBorrowsBehind != 0;
         pstFile = pstFile->pstNext) {
        if (pstFile->ucBorrows == BORROWS_FOREIGN)
            VisitForeignNodes(pstFile, visit);
        else if (pstFile->ucBorrows == BORROWS_ALL)
            VisitAllNodes(pstFile, visit);
    }
}

bool ShowsForeignNode(TELMYANG_YANG_FILE_INFO_S *pstFile)
{
    bool bFound = false;
    auto visit = [&bFound](QY_NODE *pNode, const char *) {
        bFound = true;
        return pNode;
    };
    VisitForeignNodes(pstFile, visit);
    return bFound;
}

/* The node whose slot stands for this one: an augment has none of its own, but goes together with what it adds. Null: the
 * augment adds nothing, and nobody would say when it goes. */
QY_NODE *SlotHolder(QY_NODE *pNode)
{
    return QY_NODE_GetNodeType(pNode) < QY_NODE_TYPE_AUGMENT ? pNode : TELMYANG_BSC_FindFirstChild(pNode);
}

/* Records that have one behind them are marked themselves, so that the marked ones come first. */
void SetBorrows(TELMYANG_YANG_CTX_S *pstYangCtx, TELMYANG_YANG_FILE_INFO_S *pstFile, Borrows eBorrows)
{
    pstFile->ucBorrows = eBorrows;
    for (; pstFile != korv::ListEnd(pstYangCtx) && pstFile->ucBorrowsBehind == 0; pstFile = pstFile->pstPrev)
        pstFile->ucBorrowsBehind = 1;
}

/* Forgets the marks behind the last record that borrows: those that did are gone. */
void TrimMarks(TELMYANG_YANG_CTX_S *pstYangCtx)
{
    TELMYANG_YANG_FILE_INFO_S *const pstEnd = korv::ListEnd(pstYangCtx);
    auto *pstBehindLast = pstYangCtx->stYangFileList.pstNext;
    for (auto *pstFile = pstBehindLast; pstFile != pstEnd && pstFile->ucBorrowsBehind != 0;
         pstFile = pstFile->pstNext) {
        if (pstFile->ucBorrows != BORROWS_NOTHING)
            pstBehindLast = pstFile->pstNext;
    }
    for (; pstBehindLast != pstEnd && pstBehindLast->ucBorrowsBehind != 0; pstBehindLast = pstBehindLast->pstNext)
        pstBehindLast->ucBorrowsBehind = 0;
}

} // namespace

void korv::MarkBorrower(TELMYANG_YANG_CTX_S *pstYangCtx, TELMYANG_YANG_FILE_INFO_S *pstFile, bool bTwin)
{
    if (!bTwin) {
        if (ShowsForeignNode(pstFile))
            SetBorrows(pstYangCtx, pstFile, BORROWS_FOREIGN);
        return;
    }
    TELMYANG_YANG_FILE_INFO_S *const pstEnd = ListEnd(pstYangCtx);
    for (auto *pstOther = pstYangCtx->stYangFileList.pstNext; pstOther != pstEnd; pstOther = pstOther->pstNext) {
        if (IsSameName(pstOther->pcModuleName, pstFile->pcModuleName))
            SetBorrows(pstYangCtx, pstOther, BORROWS_ALL);
    }
}

korv::LeafNodeWatch::LeafNodeWatch(TELMYANG_YANG_CTX_S *pstYangCtx) : m_stRecord{WATCH_MAGIC, pstYangCtx}
{
    TrimMarks(pstYangCtx);
    VisitBorrowed(pstYangCtx, [this](QY_NODE *pNode, const char *) -> QY_NODE * {
        QY_NODE *pHolder = SlotHolder(pNode);
        if (pHolder == nullptr)
            return nullptr;
        if (QY_NODE_GetPrivate(pHolder) == nullptr)
            QY_NODE_SetPrivate(pHolder, &m_stRecord);
        return pNode;
    });
}

korv::LeafNodeWatch::~LeafNodeWatch()
{
    VisitBorrowed(m_stRecord.pstYangCtx, [this](QY_NODE *pNode, const char *) {
        QY_NODE *pHolder = SlotHolder(pNode);
        if (pHolder != nullptr && QY_NODE_GetPrivate(pHolder) == &m_stRecord)
            QY_NODE_SetPrivate(pHolder, nullptr);
        return pNode;
    });
}

bool korv::ReleaseWatchedModule(QY_NODE *pNode, void *pvPrivate)
{
    uint64_t ulMagic = 0;
    std::memcpy(&ulMagic, pvPrivate, sizeof(ulMagic));
    if (ulMagic != WATCH_MAGIC)
        return false;
    const auto *pstRecord = static_cast<const WatchRecord *>(pvPrivate);
    const QY_MOD *pMod = QY_NODE_GetModule(pNode);
    QY_NODE_SetPrivate(pNode, nullptr);
    VisitBorrowed(pstRecord->pstYangCtx, [=](QY_NODE *pOther, const char *) -> QY_NODE * {
        if (pOther != pNode && QY_NODE_GetModule(pOther) != pMod)
            return pOther;
        if (QY_NODE_GetPrivate(pOther) == pvPrivate)
            QY_NODE_SetPrivate(pOther, nullptr);
        return nullptr;
    });
    return true;
}

void korv::ForgetSchemaNodes(TELMYANG_YANG_CTX_S *pstYangCtx)
{
    auto forget = [](QY_NODE *, const char *) -> QY_NODE * { return nullptr; };
    TELMYANG_YANG_FILE_INFO_S *const pstEnd = ListEnd(pstYangCtx);
    for (auto *pstFile = pstYangCtx->stYangFileList.pstNext; pstFile != pstEnd; pstFile = pstFile->pstNext)
        VisitAllNodes(pstFile, forget);
}

korv::HiddenAugments::HiddenAugments(TELMYANG_YANG_FILE_INFO_S *pstFile) : m_pstFile(pstFile)
{
    for (uint32_t uiLoop = 0; uiLoop < pstFile->ucAugmentNum; ++uiLoop) {
        m_apAugNode[uiLoop] = pstFile->astAugment[uiLoop].pAugNode;
        pstFile->astAugment[uiLoop].pAugNode = nullptr;
    }
}

void korv::HiddenAugments::Show()
{
    for (uint32_t uiLoop = 0; uiLoop < m_pstFile->ucAugmentNum; ++uiLoop)
        m_pstFile->astAugment[uiLoop].pAugNode = m_apAugNode[uiLoop];
}
