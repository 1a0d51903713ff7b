/* Links, travel, dumps and enumerations of the trees of one module. */
#include <cstdlib>
#include <iostream>
#include <sstream>
#include <vector>

#include "checks.h"

namespace fuzz {
namespace {

uint32_t CountNode(void *count, KorvTreeNode *)
{
    ++*static_cast<size_t *>(count);
    return 0;
}

uint32_t CountName(const char *name, int32_t, void *count)
{
    Require(name != nullptr, "an enumeration without a name");
    ++*static_cast<size_t *>(count);
    return 0;
}

void CheckLeaves(const KorvTreeNode *node, const VEC_VECTOR_S *leaves)
{
    for (uint32_t i = 0; leaves != nullptr && i < leaves->uiCount; ++i) {
        const auto *leaf = static_cast<const KorvTreeLeaf *>(leaves->ppvItem[i]);
        Require(leaf != nullptr && leaf->pcName != nullptr && leaf->pcModuleName != nullptr, "leaf", node->pcName);
        Require(leaf->uiClassId == node->uiClassId || node->ucNodeType != KORV_NODE_ORDINARY, "class id of a leaf",
                leaf->pcName);
        size_t names = 0;
        const uint32_t ret = YANGLIB_ScanNameValuePair(leaf, CountName, &names);
        if (leaf->pYinNode == nullptr)
            Require(ret != 0, "enumeration of a leaf that is gone", leaf->pcName);
        else
            Require(ret != 0 || (names != 0) == (YANGLIB_IsEnumLeaf(leaf) != 0), "enumeration", leaf->pcName);
    }
}

/* The nodes of a tree, its links followed without recursion. */
size_t CheckNodes(const KorvTreeNode *first)
{
    size_t count = 0;
    std::vector<const KorvTreeNode *> chains = {first};
    const KorvTreeNode *parent = nullptr;
    std::vector<const KorvTreeNode *> parents = {nullptr};
    while (!chains.empty()) {
        const KorvTreeNode *node = chains.back();
        parent = parents.back();
        chains.pop_back();
        parents.pop_back();
        for (; node != nullptr; node = node->pstNextSibling) {
            ++count;
            Require(node->pcName != nullptr && node->pcModuleName != nullptr, "name of a node");
            Require(node->pstParent == parent, "parent of a node", node->pcName);
            Require(node->ucNodeType <= KORV_NODE_CASE, "type of a node", node->pcName);
            CheckLeaves(node, node->pstLeafList);
            CheckLeaves(node, node->pstCaseLeafList);
            chains.push_back(node->pstFirstChild);
            parents.push_back(node);
        }
    }
    return count;
}

void AppendRecord(std::ostream &out, const YangDumpNodeData *record)
{
    Require(record != nullptr && record->pcName != nullptr && record->pcXpath != nullptr, "dump record");
    out << record->pcXpath << ' ' << record->uiClassId << ' ' << record->uiSampleId;
    for (const uint8_t key : record->aucSelfNodeKey)
        out << (key != 0 ? " k" + std::to_string(key) : "");
    for (const uint8_t key : record->aucAncestorKey)
        out << (key != 0 ? " a" + std::to_string(key) : "");
    out << '\n';
    const VEC_VECTOR_S *leaves = record->pstLeafList;
    for (uint32_t i = 0; leaves != nullptr && i < leaves->uiCount; ++i) {
        const auto *leaf = static_cast<const YangDumpLeafData *>(leaves->ppvItem[i]);
        out << ' ' << leaf->pcName << ' ' << unsigned{leaf->ucMask} << ' ' << leaf->uiFieldId << ' ' << leaf->uiDataType
            << ' ' << leaf->uiIndexMap << ' ' << leaf->llRangeMin << ' ' << leaf->llRangeMax << '\n';
    }
}

/* Every node has one record. */
std::string CheckDump(const YangDumpRequest &request, size_t nodes)
{
    YangDumpNodeData **records = nullptr;
    uint32_t count = 0;
    (void)YANGLIB_DumpYangModuleDataEx(&request, &records, &count);
    Require(count == nodes, "dump and tree differ in size", request.pcModuleName);
    std::ostringstream out;
    for (uint32_t i = 0; i < count; ++i)
        AppendRecord(out, records[i]);
    YANGLIB_FreeDumpDataEx(records, count);
    ZOR_Free_F(records, __FILE__, __LINE__);
    return out.str();
}

std::string CheckTree(TELMYANG_LOCAL_DATA_S *local, const TELMYANG_YANG_FILE_INFO_S *file, KorvTreeNode *tree,
                      bool isAugment)
{
    const size_t nodes = CheckNodes(tree);
    size_t visited = 0;
    for (KorvTreeNode *top = tree; top != nullptr; top = top->pstNextSibling)
        Require(YANGLIB_TravelYangModuleSubTree(local, top, &visited, CountNode, CountNode) == 0, "travel");
    Require(visited == nodes, "travel and tree differ in size", file->pcModuleName);
    return CheckDump({local, file->pcModuleName, file->pcRevision, tree, isAugment ? 1u : 0u}, nodes);
}

} // namespace

void Require(bool holds, const char *what, const std::string &where)
{
    if (holds)
        return;
    std::cerr << "does not hold: " << what << " (" << where << ")" << std::endl;
    std::abort();
}

std::string CheckTrees(TELMYANG_LOCAL_DATA_S *local, const TELMYANG_YANG_FILE_INFO_S *file)
{
    Require(file->ucInUse == 1 && file->ucAugmentNum <= KORV_AUGMENT_NUM, "registry entry", file->pcModuleName);
    std::string dumps = CheckTree(local, file, file->pstOriginTree, false);
    for (uint32_t i = 0; i < file->ucAugmentNum; ++i) {
        const TELMYANG_AUGMENT_INFO_S &augment = file->astAugment[i];
        if (augment.pAugNode != nullptr)
            (void)QY_NODE_GetNodeType(augment.pAugNode);
        if (augment.pFirstChild != nullptr)
            (void)QY_NODE_GetNodeType(augment.pFirstChild);
        dumps += "augment " + std::string(augment.acAugNodeName) + "\n";
        dumps += CheckTree(local, file, augment.pstTargetTree, true) + "self\n";
        dumps += CheckTree(local, file, augment.pstSelfTree, true);
    }
    return dumps;
}

} // namespace fuzz
