/* The paths of nodes and leaves, in the forms that lookups take.
 *
 * A path is composed from its end to its beginning, once to count and once to write. The components that are of the same
 * module as the last one come first. What stands in front of them, if anything, is the target of an augment of that module. */
#include <algorithm>

#include "korv_lib_yang/text_writer.h"
#include "telem_yang/record_trees.h"

namespace {

using korv::BackWriter;

/* What a path leads to. */
struct Goal {
    TELMYANG_LOCAL_DATA_S *pstLocal;
    const KorvTreeNode *pstNode;
    const KorvTreeLeaf *pstLeaf; /* null: the node itself */
};

/* What stands in front of the nodes that an augment adds. */
struct Front {
    const char *pcModuleName; /* of the augment */
    const char *pcTargetPath; /* as its statement has it, without leading "/" */
};

/* The nearest node at or above this one that is of another module; null when there is none. */
const KorvTreeNode *OfOtherModule(const KorvTreeNode *pstNode, const char *pcModuleName)
{
    while (pstNode != nullptr && korv::IsSameName(pstNode->pcModuleName, pcModuleName))
        pstNode = pstNode->pstParent;
    return pstNode;
}

/* The container or list that the node is or stands in; null when there is none. */
const KorvTreeNode *Named(const KorvTreeNode *pstNode)
{
    while (pstNode != nullptr && pstNode->ucNodeType != KORV_NODE_ORDINARY)
        pstNode = pstNode->pstParent;
    return pstNode;
}

const KorvTreeNode *NamedAbove(const KorvTreeNode *pstNode)
{
    return Named(pstNode->pstParent);
}

void PutNames(BackWriter *pWriter, const Goal &stGoal)
{
    if (stGoal.pstLeaf != nullptr) {
        pWriter->Put(stGoal.pstLeaf->pcName);
        pWriter->Put("/", 1);
    }
    for (const KorvTreeNode *pstNode = Named(stGoal.pstNode); pstNode != nullptr; pstNode = NamedAbove(pstNode)) {
        pWriter->Put(pstNode->pcName);
        pWriter->Put("/", 1);
    }
}

/* Where the last component of a text begins: behind its last "/" in front of pcEnd, or at pcBegin. */
const char *LastComponent(const char *pcBegin, const char *pcEnd)
{
    while (pcEnd > pcBegin && pcEnd[-1] != '/')
        --pcEnd;
    return pcEnd;
}

/* True if the component, with or without prefix, is that name. */
bool IsComponent(const char *pcBegin, const char *pcEnd, const char *pcName)
{
    const auto *pcColon = static_cast<const char *>(std::memchr(pcBegin, ':', static_cast<size_t>(pcEnd - pcBegin)));
    const char *pcFrom = pcColon != nullptr ? pcColon + 1 : pcBegin;
    const auto ulLen = static_cast<size_t>(pcEnd - pcFrom);
    return pcName != nullptr && std::strncmp(pcFrom, pcName, ulLen) == 0 && pcName[ulLen] == '\0';
}

/* True if the text, a target path as an augment statement has it, leads to the node: choices and cases have components. */
bool LeadsTo(const char *pcTarget, const KorvTreeNode *pstNode)
{
    const char *pcEnd = pcTarget + std::strlen(pcTarget);
    for (; pstNode != nullptr; pstNode = pstNode->pstParent) {
        const char *pcBegin = LastComponent(pcTarget, pcEnd);
        if (pcBegin == pcTarget || !IsComponent(pcBegin, pcEnd, pstNode->pcName))
            return false;
        pcEnd = pcBegin - 1;
    }
    return pcEnd == pcTarget;
}

/* The target path of an augment of that module which leads to the node, without the leading "/"; null when no registered
 * module of that name has one. */
const char *TargetPath(TELMYANG_LOCAL_DATA_S *pstLocal, const char *pcModuleName, const KorvTreeNode *pstNode)
{
    TELMYANG_YANG_FILE_INFO_S *const pstEnd = korv::ListEnd(pstLocal->pstYangCtx);
    for (auto *pstFile = pstLocal->pstYangCtx->stYangFileList.pstNext; pstFile != pstEnd; pstFile = pstFile->pstNext) {
        if (!korv::IsSameName(pstFile->pcModuleName, pcModuleName))
            continue;
        for (uint32_t uiLoop = 0; uiLoop < pstFile->ucAugmentNum; ++uiLoop) {
            if (LeadsTo(pstFile->astAugment[uiLoop].acAugNodeName, pstNode))
                return pstFile->astAugment[uiLoop].acAugNodeName + 1;
        }
    }
    return nullptr;
}

/* A prefix that fits a lookup, behind which a component stands. It differs from the one that pcFront begins with. */
void PutPrefix(BackWriter *pWriter, const char *pcModuleName, const char *pcFront)
{
    const char *pcPrefix = pcModuleName != nullptr ? pcModuleName : "";
    const size_t ulLen = std::min<size_t>(XUR_StrLen(pcPrefix), KORV_XPATH_PREFIX_SIZE - 2);
    pWriter->Put(":", 1);
    if (pcFront != nullptr && std::strncmp(pcFront, pcPrefix, ulLen) == 0 && pcFront[ulLen] == ':')
        pWriter->Put("-", 1);
    pWriter->Put(pcPrefix, ulLen);
}

/* Every component has the same prefix: a lookup looks into the module's own tree. */
void PutPlain(BackWriter *pWriter, const Goal &stGoal, const char *pcModuleName)
{
    const KorvTreeNode *pstNode = Named(stGoal.pstNode);
    if (stGoal.pstLeaf != nullptr) {
        pWriter->Put(stGoal.pstLeaf->pcName);
        PutPrefix(pWriter, pcModuleName, nullptr);
        if (pstNode != nullptr)
            pWriter->Put("/", 1);
    }
    for (; pstNode != nullptr; pstNode = NamedAbove(pstNode)) {
        pWriter->Put(pstNode->pcName);
        PutPrefix(pWriter, pcModuleName, nullptr);
        if (NamedAbove(pstNode) != nullptr)
            pWriter->Put("/", 1);
    }
}

/* The target path of the augment, and what the augment adds: the first component of that has a prefix. */
void PutAdded(BackWriter *pWriter, const Goal &stGoal, const KorvTreeNode *pstTarget, const Front &stFront)
{
    const KorvTreeNode *pstAround = Named(pstTarget);
    const KorvTreeNode *pstNode = Named(stGoal.pstNode);
    if (stGoal.pstLeaf != nullptr) {
        pWriter->Put(stGoal.pstLeaf->pcName);
        if (pstNode != pstAround)
            pWriter->Put("/", 1);
    }
    for (; pstNode != pstAround; pstNode = NamedAbove(pstNode)) {
        pWriter->Put(pstNode->pcName);
        if (NamedAbove(pstNode) != pstAround)
            pWriter->Put("/", 1);
    }
    PutPrefix(pWriter, stFront.pcModuleName, stFront.pcTargetPath);
    pWriter->Put("/", 1);
    pWriter->Put(stFront.pcTargetPath);
}

const KorvTreeNode *TopOf(const KorvTreeNode *pstNode)
{
    while (pstNode->pstParent != nullptr)
        pstNode = pstNode->pstParent;
    return pstNode;
}

void PutWithPrefixes(BackWriter *pWriter, const Goal &stGoal)
{
    const KorvTreeNode *pstFrom = stGoal.pstLeaf != nullptr ? stGoal.pstNode : Named(stGoal.pstNode);
    if (pstFrom == nullptr)
        return;
    const char *pcModuleName = stGoal.pstLeaf != nullptr ? stGoal.pstLeaf->pcModuleName : pstFrom->pcModuleName;
    const KorvTreeNode *pstTarget = OfOtherModule(pstFrom, pcModuleName);
    const char *pcTargetPath = pstTarget != nullptr ? TargetPath(stGoal.pstLocal, pcModuleName, pstTarget) : nullptr;
    if (pcTargetPath != nullptr)
        PutAdded(pWriter, stGoal, pstTarget, {pcModuleName, pcTargetPath});
    else
        PutPlain(pWriter, stGoal, TopOf(pstFrom)->pcModuleName);
}

void PutPath(BackWriter *pWriter, const Goal &stGoal, uint32_t uiForm)
{
    if (uiForm == YANGLIB_PATH_PREFIXED)
        PutWithPrefixes(pWriter, stGoal);
    else
        PutNames(pWriter, stGoal);
}

uint32_t GetPath(const Goal &stGoal, uint32_t uiForm, YANGLIB_TEXT_S *pstText)
{
    if (stGoal.pstLocal == nullptr || stGoal.pstLocal->pstYangCtx == nullptr || stGoal.pstNode == nullptr ||
        pstText == nullptr || (pstText->pcText == nullptr && pstText->uiSize != 0) || uiForm > YANGLIB_PATH_PREFIXED)
        return KORV_INVALID;
    BackWriter length;
    PutPath(&length, stGoal, uiForm);
    pstText->uiNeeded = static_cast<uint32_t>(length.Length() + 1);
    if (length.Length() >= pstText->uiSize) {
        if (pstText->uiSize != 0)
            pstText->pcText[0] = '\0';
        return KORV_BUFFER_TOO_SMALL;
    }
    pstText->pcText[length.Length()] = '\0';
    BackWriter writer(pstText->pcText + length.Length());
    PutPath(&writer, stGoal, uiForm);
    return KORV_OK;
}

} // namespace

uint32_t YANGLIB_GetNodePath(TELMYANG_LOCAL_DATA_S *pstLocal, const KorvTreeNode *pstNode, uint32_t uiForm,
                             YANGLIB_TEXT_S *pstText)
{
    return GetPath({pstLocal, pstNode, nullptr}, uiForm, pstText);
}

uint32_t YANGLIB_GetLeafPath(TELMYANG_LOCAL_DATA_S *pstLocal, const KorvTreeNode *pstNode, const KorvTreeLeaf *pstLeaf,
                             uint32_t uiForm, YANGLIB_TEXT_S *pstText)
{
    return pstLeaf != nullptr ? GetPath({pstLocal, pstNode, pstLeaf}, uiForm, pstText) : KORV_INVALID;
}
