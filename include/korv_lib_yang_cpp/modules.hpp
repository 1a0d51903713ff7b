/**
 * @file
 * Loaded modules, their augments and their dumps. korv_lib_yang.hpp includes this header.
 */
#ifndef KORV_LIB_YANG_CPP_MODULES_HPP
#define KORV_LIB_YANG_CPP_MODULES_HPP

#include "nodes.hpp"

namespace korv {

class Module;
class Augment;

/** A leaf or leaf-list with the node that it belongs to. */
struct Attribute {
    Node node; /**< the node */
    Leaf leaf; /**< one of its leaves */
};

/* Not for hosts. */
/** @cond INSIDE */
namespace detail {

struct ModuleCursor {
    using Value = Module;
    inline Value value() const noexcept;
    void next() noexcept { at = at->pstNext; }

    TELMYANG_YANG_FILE_INFO_S *at = nullptr;
    TELMYANG_LOCAL_DATA_S *local = nullptr;
};

struct AugmentCursor {
    using Value = Augment;
    inline Value value() const noexcept;
    void next() noexcept { ++at; }

    const TELMYANG_AUGMENT_INFO_S *at = nullptr;
    TELMYANG_YANG_FILE_INFO_S *file = nullptr;
    TELMYANG_LOCAL_DATA_S *local = nullptr;
};

struct DumpReleaser {
    void operator()(YangDumpNodeData **records) const noexcept
    {
        YANGLIB_FreeDumpDataEx(records, count);
        ZOR_Free_F(records, __FILE__, __LINE__);
    }

    uint32_t count = 0;
};

} // namespace detail
/** @endcond */

using Modules = Range<detail::ModuleCursor>;   /**< modules in the order of their loads */
using Augments = Range<detail::AugmentCursor>; /**< augments of a module, in statement order */

/** A leaf of a dumped node; the dump's. */
class DumpLeaf {
  public:
    /** The leaf of a record. */
    explicit DumpLeaf(const YangDumpLeafData *record) noexcept : record_(record) {}

    /** The record, with all numbers. */
    const YangDumpLeafData *record() const noexcept { return record_; }
    /** Its name. */
    std::string_view name() const noexcept { return detail::TextOf(record_->pcName); }
    /** The node's path, "/" and its name. */
    std::string_view path() const noexcept { return detail::TextOf(record_->pcPath); }
    /** Attribute id, or 0: none. */
    uint32_t fieldId() const noexcept { return record_->uiFieldId; }
    /** What "datatype-id" says; 0 without it. */
    uint32_t dataType() const noexcept { return record_->uiDataType; }

  private:
    const YangDumpLeafData *record_;
};

using DumpLeaves = Range<detail::VectorCursor<DumpLeaf, YangDumpLeafData>>; /**< leaves of a dumped node */

/** A dumped node; the dump's. */
class DumpNode {
  public:
    /** The node of a record. */
    explicit DumpNode(const YangDumpNodeData *record) noexcept : record_(record) {}

    /** The record. */
    const YangDumpNodeData *record() const noexcept { return record_; }
    /** Its name. */
    std::string_view name() const noexcept { return detail::TextOf(record_->pcName); }
    /** "/" and the names from the top down, choices and cases too. */
    std::string_view path() const noexcept { return detail::TextOf(record_->pcXpath); }
    /** Class id, or 0: no class. */
    uint32_t classId() const noexcept { return record_->uiClassId; }
    /** Sample id, or 0: none. */
    uint32_t sampleId() const noexcept { return record_->uiSampleId; }
    /** Its own keys. */
    Keys ownKeys() const noexcept { return detail::KeysOf(record_->aucSelfNodeKey); }
    /** The ancestors' keys, as attributes of this class. */
    Keys ancestorKeys() const noexcept { return detail::KeysOf(record_->aucAncestorKey); }
    /** Its leafs and leaf-lists. */
    DumpLeaves leaves() const noexcept { return detail::Entries<DumpLeaf, YangDumpLeafData>(record_->pstLeafList); }

  private:
    const YangDumpNodeData *record_;
};

/** A flat copy of a tree, level by level, which outlives its module. */
class Dump {
  public:
    Dump() noexcept = default;
    /** Owns what YANGLIB_DumpYangModuleDataEx has made. */
    Dump(YangDumpNodeData **records, uint32_t count) noexcept : records_(records, detail::DumpReleaser{count}) {}

    /** Number of nodes. */
    uint32_t size() const noexcept { return records_ ? records_.get_deleter().count : 0; }
    /** The first node. */
    auto begin() const noexcept { return nodes().begin(); }
    /** Behind the last one. */
    auto end() const noexcept { return nodes().end(); }

  private:
    Range<detail::ArrayCursor<DumpNode, YangDumpNodeData>> nodes() const noexcept
    {
        return {{records_.get()}, {records_.get() + size()}};
    }

    std::unique_ptr<YangDumpNodeData *, detail::DumpReleaser> records_;
};

/** A loaded module. */
class Module {
  public:
    Module() noexcept = default;
    /** The module of a registry entry, or none. */
    Module(TELMYANG_LOCAL_DATA_S *local, TELMYANG_YANG_FILE_INFO_S *record) noexcept : local_(local), record_(record) {}

    /** True for a module, false for none. */
    explicit operator bool() const noexcept { return record_ != nullptr; }
    /** The registry entry. */
    TELMYANG_YANG_FILE_INFO_S *record() const noexcept { return record_; }

    /** Its name, as given to the load. */
    std::string_view name() const noexcept { return detail::TextOf(record_->pcModuleName); }
    /** The revision as given to the load, or empty. */
    std::string_view revision() const noexcept { return detail::TextOf(record_->pcRevision); }
    /** The latest revision in its file, or empty. */
    std::string_view loadedRevision() const noexcept
    {
        return detail::TextOf(YANGLIB_GetYangRevision(local_, record_->pcModuleName));
    }
    /** Its task id, or 0: none. */
    uint32_t taskId() const noexcept
    {
        return record_->pModuleExtInfo != nullptr ? record_->pModuleExtInfo->uiAaaTaskId : 0;
    }

    /** The top nodes of its own tree. */
    Nodes tops() const noexcept { return {{record_->pstOriginTree, local_}, {}}; }
    /** All nodes of its own tree, parents first. */
    Tree nodes() const noexcept { return {{record_->pstOriginTree, nullptr, local_}, {}}; }
    /** Its augments. */
    inline Augments augments() const noexcept;

    /** The container or list that a path names, in both forms, or else the node whose leaf it names: as a travel starts. */
    inline Result<Node> find(const char *path, const char *prefixedPath) const noexcept;
    /** The container or list that a path names. */
    inline Result<Node> findNode(const char *path, const char *prefixedPath) const noexcept;
    /** The leaf that a path names, and its node. */
    inline Result<Attribute> findLeaf(const char *path, const char *prefixedPath) const noexcept;

    /** A copy of its own tree. */
    Result<Dump> dump() const noexcept { return dumpTree(nullptr, 0); }
    /** Writes its trees to the host's print function. */
    void print() const noexcept { YANGLIB_PrintYangModuleData(local_, record_->pcModuleName, record_->pcRevision); }

    /** True for the same module. */
    friend bool operator==(Module left, Module right) noexcept { return left.record_ == right.record_; }
    /** True for another one. */
    friend bool operator!=(Module left, Module right) noexcept { return left.record_ != right.record_; }

  private:
    friend class Augment;

    inline Result<Dump> dumpTree(KorvTreeNode *tree, uint32_t isAugment) const noexcept;

    TELMYANG_LOCAL_DATA_S *local_ = nullptr;
    TELMYANG_YANG_FILE_INFO_S *record_ = nullptr;
};

/** An augment of a module. */
class Augment {
  public:
    /** The augment of a record. */
    Augment(TELMYANG_LOCAL_DATA_S *local, Module module, const TELMYANG_AUGMENT_INFO_S *record) noexcept
        : local_(local), module_(module), record_(record)
    {
    }

    /** The record. */
    const TELMYANG_AUGMENT_INFO_S *record() const noexcept { return record_; }
    /** The target path as the statement has it. */
    std::string_view path() const noexcept { return detail::TextOf(record_->acAugNodeName); }
    /** All nodes of the tree that it extends, parents first. */
    Tree target() const noexcept { return {{record_->pstTargetTree, nullptr, local_}, {}}; }
    /** All nodes of the containers that it adds, parents first. */
    Tree self() const noexcept { return {{record_->pstSelfTree, nullptr, local_}, {}}; }
    /** A copy of the tree that it extends. */
    Result<Dump> dumpTarget() const noexcept { return module_.dumpTree(record_->pstTargetTree, 1); }
    /** A copy of the containers that it adds. */
    Result<Dump> dumpSelf() const noexcept { return module_.dumpTree(record_->pstSelfTree, 1); }

  private:
    TELMYANG_LOCAL_DATA_S *local_;
    Module module_;
    const TELMYANG_AUGMENT_INFO_S *record_;
};

/* What is declared above. */
/** @cond INSIDE */
inline Module detail::ModuleCursor::value() const noexcept
{
    return {local, at};
}

inline Augment detail::AugmentCursor::value() const noexcept
{
    return {local, {local, file}, at};
}

inline Augments Module::augments() const noexcept
{
    const TELMYANG_AUGMENT_INFO_S *first = record_->astAugment;
    return {{first, record_, local_}, {first + record_->ucAugmentNum, record_, local_}};
}

inline Result<Node> Module::find(const char *path, const char *prefixedPath) const noexcept
{
    Result<Node> node = findNode(path, prefixedPath);
    if (node)
        return node;
    Result<Attribute> attribute = findLeaf(path, prefixedPath);
    if (attribute)
        return attribute->node;
    return node;
}

inline Result<Node> Module::findNode(const char *path, const char *prefixedPath) const noexcept
{
    const YangXpathLookup lookup = {local_, record_->pcModuleName, record_->pcRevision, path, prefixedPath, 0, 0};
    KorvTreeNode *node = TELMYANG_KorvFindTreeNodeByXpath(&lookup);
    if (node == nullptr)
        return Failure{KORV_NOT_FOUND, OwnedText("no such node")};
    return Node(local_, node);
}

inline Result<Attribute> Module::findLeaf(const char *path, const char *prefixedPath) const noexcept
{
    const Node node(local_, TELMYANG_KorvFindTreeNodeByLeafXpath(local_, record_->pcModuleName, record_->pcRevision,
                                                                 path, prefixedPath));
    if (!node)
        return Failure{KORV_NOT_FOUND, OwnedText("no such leaf")};
    const std::string_view text(path);
    std::string_view name = text.substr(text.find_last_of("/:") + 1);
    return Attribute{node, node.leaf(name)};
}

inline Result<Dump> Module::dumpTree(KorvTreeNode *tree, uint32_t isAugment) const noexcept
{
    const YangDumpRequest request = {local_, record_->pcModuleName, record_->pcRevision, tree, isAugment};
    YangDumpNodeData **records = nullptr;
    uint32_t count = 0;
    const uint32_t code = YANGLIB_DumpYangModuleDataEx(&request, &records, &count);
    if (code != KORV_OK || count == 0)
        return Failure{code != KORV_OK ? code : KORV_FAIL, OwnedText("there is no tree, or no memory")};
    return Dump(records, count);
}
/** @endcond */

} // namespace korv

#endif /* KORV_LIB_YANG_CPP_MODULES_HPP */
