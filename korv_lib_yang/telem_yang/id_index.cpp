/* The index of ids: two tables with open addressing and the places of all class nodes, in one block. */
#include "telem_yang/id_index.h"

#include <utility>

#include "telem_yang/name_index.h"
#include "telem_yang/record_trees.h"
#include "telem_yang_lib/host_memory.h"

namespace {

using korv::Attribute;
using korv::IdIndex;
using korv::RecordTree;

/* A node of a class, and the next one of that class. Places are counted from 1; 0: none. */
struct Place {
    YANGLIB_PLACE_S stPlace;
    uint32_t uiNext;
};

struct ClassSlot {
    uint32_t uiClassId;
    uint32_t uiFirst; /* 0: the slot is free */
};

struct AttributeSlot {
    uint32_t uiClassId;
    uint32_t uiFieldId;
    Attribute stAttribute; /* no leaf: the slot is free */
};

/* What the trees hold. */
struct Counts {
    uint32_t uiPlaces;
    uint32_t uiAttributes;
};

/* At most two thirds of the slots of a table are in use, so that few steps lead to an id or to a free slot. */
uint32_t BitsFor(uint32_t uiEntries)
{
    uint32_t uiBits = 1;
    while (uint64_t{2} << uiBits < uint64_t{uiEntries} * 3)
        ++uiBits;
    return uiBits;
}

/* The number's product with 2^64 divided by the golden ratio: its upper bits differ for numbers that follow one another. */
uint64_t SlotOf(uint64_t ulKey, uint32_t uiBits)
{
    return ulKey * 0x9E3779B97F4A7C15u >> (64 - uiBits);
}

uint64_t KeyOf(uint32_t uiClassId, uint32_t uiFieldId)
{
    return uint64_t{uiClassId} << 32 | uiFieldId;
}

bool HasFieldId(const KorvTreeLeaf *pstLeaf)
{
    return pstLeaf != nullptr && (pstLeaf->ucMask & KORV_MASK_FIELD_ID) != 0 && pstLeaf->uiFieldId != 0;
}

/* The leaves with attribute id of a class node: its direct ones, then those of its choices. */
template <typename Visit>
void VisitAttributes(const KorvTreeNode *pstNode, Visit &&visit)
{
    for (const VEC_VECTOR_S *pstList : {pstNode->pstLeafList, pstNode->pstCaseLeafList}) {
        const uint32_t uiNum = pstList != nullptr ? VEC_VectorCount(pstList) : 0;
        for (uint32_t uiLoop = 0; uiLoop < uiNum; ++uiLoop) {
            auto *pstLeaf = static_cast<KorvTreeLeaf *>(pstList->ppvItem[uiLoop]);
            if (HasFieldId(pstLeaf))
                visit(pstLeaf);
        }
    }
}

/* Calls the visitor for each class node with its place until it answers nonzero, which is the result. */
template <typename Visit>
uint32_t VisitClasses(TELMYANG_YANG_CTX_S *pstYangCtx, Visit &&visit)
{
    return korv::VisitAllTrees(pstYangCtx, [&visit](const RecordTree &stTree) {
        korv::OwnerCheck owner(stTree.pstFile);
        for (KorvTreeNode *pstNode = stTree.pstRoot; pstNode != nullptr; pstNode = korv::NextInTree(pstNode)) {
            if (pstNode->uiClassId == 0)
                continue;
            if (const uint32_t uiRet = visit(korv::PlaceOf(stTree, pstNode, &owner)))
                return uiRet;
        }
        return 0u;
    });
}

Counts Count(TELMYANG_YANG_CTX_S *pstYangCtx)
{
    Counts stCounts = {};
    (void)VisitClasses(pstYangCtx, [&stCounts](const YANGLIB_PLACE_S &stPlace) {
        ++stCounts.uiPlaces;
        VisitAttributes(stPlace.pstNode, [&stCounts](const KorvTreeLeaf *) { ++stCounts.uiAttributes; });
        return 0u;
    });
    return stCounts;
}

} // namespace

/* The three arrays stand behind it, in the order of their members. */
struct korv::IdIndex {
    Place *pstPlaces;
    AttributeSlot *pstAttributes;
    ClassSlot *pstClasses;
    uint32_t uiAttributeBits;
    uint32_t uiClassBits;

    ClassSlot *FindClassSlot(uint32_t uiClassId) const
    {
        const uint64_t ulMask = (uint64_t{1} << uiClassBits) - 1;
        for (uint64_t ulSlot = SlotOf(uiClassId, uiClassBits);; ulSlot = (ulSlot + 1) & ulMask) {
            if (pstClasses[ulSlot].uiFirst == 0 || pstClasses[ulSlot].uiClassId == uiClassId)
                return pstClasses + ulSlot;
        }
    }

    AttributeSlot *FindAttributeSlot(uint32_t uiClassId, uint32_t uiFieldId) const
    {
        const uint64_t ulMask = (uint64_t{1} << uiAttributeBits) - 1;
        for (uint64_t ulSlot = SlotOf(KeyOf(uiClassId, uiFieldId), uiAttributeBits);; ulSlot = (ulSlot + 1) & ulMask) {
            AttributeSlot *pstSlot = pstAttributes + ulSlot;
            if (pstSlot->stAttribute.pstLeaf == nullptr ||
                (pstSlot->uiClassId == uiClassId && pstSlot->uiFieldId == uiFieldId))
                return pstSlot;
        }
    }
};

namespace {

/* An empty index with room for that much, or null. */
IdIndex *NewIndex(uint64_t ulModuleId, const Counts &stCounts)
{
    const uint32_t uiAttributeBits = BitsFor(stCounts.uiAttributes);
    const uint32_t uiClassBits = BitsFor(stCounts.uiPlaces);
    const uint64_t ulPlaces = uint64_t{stCounts.uiPlaces} * sizeof(Place);
    const uint64_t ulAttributes = sizeof(AttributeSlot) << uiAttributeBits;
    const uint64_t ulClasses = sizeof(ClassSlot) << uiClassBits;
    auto *pstIndex =
        static_cast<IdIndex *>(korv::AllocCleared(ulModuleId, sizeof(IdIndex) + ulPlaces + ulAttributes + ulClasses));
    if (pstIndex == nullptr)
        return nullptr;
    auto *pucNext = reinterpret_cast<unsigned char *>(pstIndex + 1);
    *pstIndex = {reinterpret_cast<Place *>(pucNext), reinterpret_cast<AttributeSlot *>(pucNext + ulPlaces),
                 reinterpret_cast<ClassSlot *>(pucNext + ulPlaces + ulAttributes), uiAttributeBits, uiClassBits};
    return pstIndex;
}

void AddAttributes(IdIndex *pstIndex, KorvTreeNode *pstNode)
{
    VisitAttributes(pstNode, [=](KorvTreeLeaf *pstLeaf) {
        AttributeSlot *pstSlot = pstIndex->FindAttributeSlot(pstNode->uiClassId, pstLeaf->uiFieldId);
        if (pstSlot->stAttribute.pstLeaf == nullptr)
            *pstSlot = {pstNode->uiClassId, pstLeaf->uiFieldId, {pstNode, pstLeaf}};
    });
}

/* Fills the index. The nodes of a class are linked from the last one to the first. */
void Fill(TELMYANG_YANG_CTX_S *pstYangCtx, IdIndex *pstIndex)
{
    uint32_t uiNum = 0;
    (void)VisitClasses(pstYangCtx, [pstIndex, &uiNum](const YANGLIB_PLACE_S &stPlace) {
        pstIndex->pstPlaces[uiNum++].stPlace = stPlace;
        AddAttributes(pstIndex, stPlace.pstNode);
        return 0u;
    });
    for (; uiNum != 0; --uiNum) {
        Place *pstPlace = pstIndex->pstPlaces + (uiNum - 1);
        ClassSlot *pstSlot = pstIndex->FindClassSlot(pstPlace->stPlace.pstNode->uiClassId);
        pstPlace->uiNext = pstSlot->uiFirst;
        *pstSlot = {pstPlace->stPlace.pstNode->uiClassId, uiNum};
    }
}

/* The index of the entry's registry, which has no other records; null without memory. */
const IdIndex *IndexOf(TELMYANG_LOCAL_DATA_S *pstLocal, korv::RegistryEntry *pstFirst)
{
    if (pstFirst->pstIds != nullptr)
        return pstFirst->pstIds;
    IdIndex *pstIndex = NewIndex(pstLocal->ulModuleId, Count(pstLocal->pstYangCtx));
    if (pstIndex == nullptr)
        return nullptr;
    Fill(pstLocal->pstYangCtx, pstIndex);
    /* The host's memory function may have asked for an id itself, and have made one before. */
    korv::HostFree(std::exchange(pstFirst->pstIds, pstIndex));
    return pstIndex;
}

/* The entry that an index may hang on; null when the trees have to be looked through. */
korv::RegistryEntry *IndexedEntry(TELMYANG_YANG_CTX_S *pstYangCtx)
{
    return korv::HasAllNames(pstYangCtx) ? korv::FirstEntry(pstYangCtx) : nullptr;
}

uint32_t ReportClass(const IdIndex *pstIndex, uint32_t uiClassId, YANGLIB_PLACE_PF pfnCb, void *pvCookie)
{
    uint32_t uiPlace = pstIndex->FindClassSlot(uiClassId)->uiFirst;
    uint32_t uiRet = uiPlace != 0 ? KORV_OK : KORV_NOT_FOUND;
    for (; uiPlace != 0 && uiRet == 0; uiPlace = pstIndex->pstPlaces[uiPlace - 1].uiNext)
        uiRet = pfnCb(&pstIndex->pstPlaces[uiPlace - 1].stPlace, pvCookie);
    return uiRet;
}

uint32_t ReportClassOfTrees(TELMYANG_YANG_CTX_S *pstYangCtx, uint32_t uiClassId, YANGLIB_PLACE_PF pfnCb, void *pvCookie)
{
    bool bFound = false;
    const uint32_t uiRet = VisitClasses(pstYangCtx, [&](const YANGLIB_PLACE_S &stPlace) {
        if (stPlace.pstNode->uiClassId != uiClassId)
            return 0u;
        bFound = true;
        return pfnCb(&stPlace, pvCookie);
    });
    return bFound ? uiRet : KORV_NOT_FOUND;
}

void FindAttributeInTrees(TELMYANG_YANG_CTX_S *pstYangCtx, uint32_t uiClassId, uint32_t uiFieldId, Attribute *pstFound)
{
    (void)VisitClasses(pstYangCtx, [=](const YANGLIB_PLACE_S &stPlace) {
        KorvTreeNode *pstNode = stPlace.pstNode;
        if (pstNode->uiClassId != uiClassId)
            return 0u;
        VisitAttributes(pstNode, [=](KorvTreeLeaf *pstLeaf) {
            if (pstFound->pstLeaf == nullptr && pstLeaf->uiFieldId == uiFieldId)
                *pstFound = {pstNode, pstLeaf};
        });
        return pstFound->pstLeaf != nullptr ? 1u : 0u;
    });
}

} // namespace

korv::IdIndex *korv::TakeIds(TELMYANG_YANG_CTX_S *pstYangCtx)
{
    RegistryEntry *pstFirst = FirstEntry(pstYangCtx);
    return pstFirst != nullptr ? std::exchange(pstFirst->pstIds, nullptr) : nullptr;
}

void korv::DropIds(TELMYANG_YANG_CTX_S *pstYangCtx)
{
    HostFree(TakeIds(pstYangCtx));
}

uint32_t korv::FindClass(TELMYANG_LOCAL_DATA_S *pstLocal, uint32_t uiClassId, YANGLIB_PLACE_PF pfnCb, void *pvCookie)
{
    RegistryEntry *pstFirst = IndexedEntry(pstLocal->pstYangCtx);
    if (pstFirst == nullptr)
        return ReportClassOfTrees(pstLocal->pstYangCtx, uiClassId, pfnCb, pvCookie);
    const IdIndex *pstIndex = IndexOf(pstLocal, pstFirst);
    return pstIndex != nullptr ? ReportClass(pstIndex, uiClassId, pfnCb, pvCookie) : KORV_NO_MEMORY;
}

uint32_t korv::FindAttribute(TELMYANG_LOCAL_DATA_S *pstLocal, uint32_t uiClassId, uint32_t uiFieldId,
                             Attribute *pstFound)
{
    *pstFound = {};
    if (RegistryEntry *pstFirst = IndexedEntry(pstLocal->pstYangCtx)) {
        const IdIndex *pstIndex = IndexOf(pstLocal, pstFirst);
        if (pstIndex == nullptr)
            return KORV_NO_MEMORY;
        *pstFound = pstIndex->FindAttributeSlot(uiClassId, uiFieldId)->stAttribute;
    } else {
        FindAttributeInTrees(pstLocal->pstYangCtx, uiClassId, uiFieldId, pstFound);
    }
    return pstFound->pstLeaf != nullptr ? KORV_OK : KORV_NOT_FOUND;
}
