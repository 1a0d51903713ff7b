#include "tree_copy.h"

#include <cstring>

#include "blocks.h"

namespace bench {
namespace {

VEC_VECTOR_S *MakeList(const VEC_VECTOR_S *from)
{
    if (from == nullptr)
        return nullptr;
    VEC_VECTOR_S *list = VEC_VectorInit_F(1, from->uiCount, __FILE__, __LINE__);
    for (uint32_t i = 0; i < from->uiCount; ++i) {
        const auto &fromLeaf = *static_cast<const KorvTreeLeaf *>(from->ppvItem[i]);
        KorvTreeLeaf *leaf = MakeCopy(fromLeaf);
        leaf->pcName = MakeText(fromLeaf.pcName);
        (void)VEC_VectorSet(list, leaf);
    }
    return list;
}

void ReleaseList(VEC_VECTOR_S *list)
{
    if (list == nullptr)
        return;
    for (uint32_t i = 0; i < list->uiCount; ++i) {
        auto *leaf = static_cast<KorvTreeLeaf *>(list->ppvItem[i]);
        Release(leaf->pcName);
        Release(leaf);
    }
    (void)VEC_VectorFree_F(list);
}

size_t ListBytes(const VEC_VECTOR_S *list)
{
    if (list == nullptr)
        return 0;
    size_t size = sizeof(VEC_VECTOR_S) + list->uiCount * sizeof(void *);
    for (uint32_t i = 0; i < list->uiCount; ++i)
        size += sizeof(KorvTreeLeaf) + std::strlen(static_cast<const KorvTreeLeaf *>(list->ppvItem[i])->pcName) + 1;
    return size;
}

size_t ChainBytes(const KorvTreeNode *root)
{
    size_t size = 0;
    for (const KorvTreeNode *node = root; node != nullptr; node = NextInTree(node))
        size += sizeof(KorvTreeNode) + std::strlen(node->pcName) + 1 + ListBytes(node->pstLeafList) +
                ListBytes(node->pstCaseLeafList);
    return size;
}

} // namespace

const KorvTreeNode *NextInTree(const KorvTreeNode *node)
{
    if (node->pstFirstChild != nullptr)
        return node->pstFirstChild;
    while (node != nullptr && node->pstNextSibling == nullptr)
        node = node->pstParent;
    return node != nullptr ? node->pstNextSibling : nullptr;
}

TreeCopy::TreeCopy(const TELMYANG_YANG_FILE_INFO_S &file)
{
    Add(file.pstOriginTree);
    for (uint32_t i = 0; i < file.ucAugmentNum; ++i) {
        Add(file.astAugment[i].pstTargetTree);
        Add(file.astAugment[i].pstSelfTree);
    }
}

/* The copies are chained by pstNextSibling in the order in which they are made, whatever their place in the tree. */
void TreeCopy::Add(const KorvTreeNode *root)
{
    KorvTreeNode *last = nullptr;
    for (const KorvTreeNode *node = root; node != nullptr; node = NextInTree(node)) {
        KorvTreeNode *copy = MakeCopy(*node);
        copy->pcName = MakeText(node->pcName);
        copy->pstLeafList = MakeList(node->pstLeafList);
        copy->pstCaseLeafList = MakeList(node->pstCaseLeafList);
        copy->pstNextSibling = nullptr;
        if (last != nullptr)
            last->pstNextSibling = copy;
        else
            m_roots.push_back(copy);
        last = copy;
    }
}

TreeCopy::~TreeCopy()
{
    for (KorvTreeNode *root : m_roots) {
        for (KorvTreeNode *node = root; node != nullptr;) {
            KorvTreeNode *next = node->pstNextSibling;
            ReleaseList(node->pstLeafList);
            ReleaseList(node->pstCaseLeafList);
            Release(node->pcName);
            Release(node);
            node = next;
        }
    }
}

size_t TreeBytes(const TELMYANG_YANG_FILE_INFO_S &file)
{
    size_t size = ChainBytes(file.pstOriginTree);
    for (uint32_t i = 0; i < file.ucAugmentNum; ++i)
        size += ChainBytes(file.astAugment[i].pstTargetTree) + ChainBytes(file.astAugment[i].pstSelfTree);
    return size;
}

} // namespace bench
