/**
 * @file
 * Nodes and leaves of loaded modules. korv_lib_yang.hpp includes this header.
 *
 * All of it are views: a pointer or two into what the module has, copied as such. They allocate nothing and live until the
 * module is unloaded, as what they point at does. So do their texts, each of which ends with a zero: data() will do for C.
 */
#ifndef KORV_LIB_YANG_CPP_NODES_HPP
#define KORV_LIB_YANG_CPP_NODES_HPP

#include "ranges.hpp"
#include "result.hpp"

namespace korv {

/** Built-in types of YANG. */
enum class Type : uint8_t {
    None = 0,                                         /**< not known */
    Binary = QY_TYPE_BINARY,                          /**< binary */
    Bits = QY_TYPE_BITS,                              /**< bits */
    Boolean = QY_TYPE_BOOLEAN,                        /**< boolean */
    Decimal64 = QY_TYPE_DECIMAL64,                    /**< decimal64 */
    Empty = QY_TYPE_EMPTY,                            /**< empty */
    Enumeration = QY_TYPE_ENUMERATION,                /**< enumeration */
    Identityref = QY_TYPE_IDENTITYREF,                /**< identityref */
    InstanceIdentifier = QY_TYPE_INSTANCE_IDENTIFIER, /**< instance-identifier */
    Int8 = QY_TYPE_INT8,                              /**< int8 */
    Int16 = QY_TYPE_INT16,                            /**< int16 */
    Int32 = QY_TYPE_INT32,                            /**< int32 */
    Int64 = QY_TYPE_INT64,                            /**< int64 */
    Leafref = QY_TYPE_LEAFREF,                        /**< leafref; a leaf's final type is none */
    String = QY_TYPE_STRING,                          /**< string */
    Uint8 = QY_TYPE_UINT8,                            /**< uint8 */
    Uint16 = QY_TYPE_UINT16,                          /**< uint16 */
    Uint32 = QY_TYPE_UINT32,                          /**< uint32 */
    Uint64 = QY_TYPE_UINT64,                          /**< uint64 */
    Union = QY_TYPE_UNION                             /**< union */
};

/** What a node is. */
enum class Kind : uint8_t {
    Data = KORV_NODE_ORDINARY, /**< container or list */
    Choice = KORV_NODE_CHOICE, /**< choice */
    Case = KORV_NODE_CASE      /**< case */
};

/** Form of a path. */
enum class PathForm : uint32_t {
    Names = YANGLIB_PATH_NAMES,      /**< "/sys/ports/port" */
    Prefixed = YANGLIB_PATH_PREFIXED /**< "m:sys/m:ports/m:port" */
};

/** A leaf or leaf-list of a node. All but its default, which shows none and only knows that, has what KorvTreeLeaf has. */
class Leaf {
  public:
    Leaf() noexcept = default;
    /** The leaf of a descriptor, or none. */
    explicit Leaf(KorvTreeLeaf *record) noexcept : record_(record) {}

    /** True for a leaf, false for none. */
    explicit operator bool() const noexcept { return record_ != nullptr; }
    /** The descriptor. */
    const KorvTreeLeaf *record() const noexcept { return record_; }

    /** Its name. */
    std::string_view name() const noexcept { return detail::TextOf(record_->pcName); }
    /** The module that defines it. */
    std::string_view moduleName() const noexcept { return detail::TextOf(record_->pcModuleName); }
    /** True for one of its class's own keys. */
    bool isKey() const noexcept { return record_->ucIsKey != 0; }
    /** Its built-in type in the end, leafrefs followed. */
    Type type() const noexcept { return static_cast<Type>(record_->ucBaseType); }
    /** Attribute id, or 0: none. */
    uint32_t fieldId() const noexcept { return record_->uiFieldId; }
    /** What "datatype-id" says; 0 without it. */
    uint32_t dataType() const noexcept { return record_->uiDataType; }
    /** True if it has a datatype, which may be 0. */
    bool hasDataType() const noexcept { return (record_->ucMask & KORV_MASK_DATA_TYPE) != 0; }
    /** Reference key, or 0: none. */
    uint32_t refIdKey() const noexcept { return record_->uiRefIdKeyFid; }
    /** Index map, or 0: none. */
    uint32_t indexMap() const noexcept { return record_->uiName2IdKeyFid; }
    /** Lower bound of the last range part of uint16, uint32 and uint64, else 0. One of uint64 keeps its 64 bits. */
    int64_t rangeMin() const noexcept { return record_->llRangeMin; }
    /** Its upper bound. */
    int64_t rangeMax() const noexcept { return record_->llRangeMax; }
    /** True for an enumeration, leafrefs followed. */
    bool isEnum() const noexcept { return YANGLIB_IsEnumLeaf(record_) != 0; }

    /** Calls function(std::string_view name, int32_t value) for each value of an enumeration, in declaration order. A
     * function that returns bool is not called again after false. */
    template <class Function>
    Result<void> forEachValue(Function &&function) const;

    /** True for the same descriptor. */
    friend bool operator==(Leaf left, Leaf right) noexcept { return left.record_ == right.record_; }
    /** True for another one. */
    friend bool operator!=(Leaf left, Leaf right) noexcept { return left.record_ != right.record_; }

  protected:
    KorvTreeLeaf *record_ = nullptr; /**< the descriptor */
};

/** A leaf before it is stored: the adapt function may give it a datatype and change its other numbers. */
class NewLeaf : public Leaf {
  public:
    using Leaf::Leaf;

    /** The descriptor, whose pointers stay as they are. */
    KorvTreeLeaf *record() const noexcept { return record_; }

    /** Gives it a datatype. */
    void setDataType(uint32_t dataType) const noexcept
    {
        record_->uiDataType = dataType;
        record_->ucMask = static_cast<uint8_t>(record_->ucMask | KORV_MASK_DATA_TYPE);
    }
};

/** A container, list, choice or case. All but its default, which shows none and only knows that, has what KorvTreeNode has. */
class Node {
  public:
    Node() noexcept = default;
    /** The node of a record, or none. */
    Node(TELMYANG_LOCAL_DATA_S *local, KorvTreeNode *record) noexcept : local_(local), record_(record) {}

    /** True for a node, false for none. */
    explicit operator bool() const noexcept { return record_ != nullptr; }
    /** The record, which is not to be changed. */
    KorvTreeNode *record() const noexcept { return record_; }

    /** Its name. */
    std::string_view name() const noexcept { return detail::TextOf(record_->pcName); }
    /** The module that defines it. */
    std::string_view moduleName() const noexcept { return detail::TextOf(record_->pcModuleName); }
    /** Container or list, choice, or case. */
    Kind kind() const noexcept { return static_cast<Kind>(record_->ucNodeType); }
    /** Class id, or 0: no class. A choice or case has its parent's. */
    uint32_t classId() const noexcept { return record_->uiClassId; }
    /** Sample id, or 0: none. */
    uint32_t sampleId() const noexcept { return record_->uiSampleId; }
    /** Its own keys. */
    Keys ownKeys() const noexcept { return detail::KeysOf(record_->aucSelfNodeKey); }
    /** The ancestors' keys, as attributes of this class. */
    Keys ancestorKeys() const noexcept { return detail::KeysOf(record_->aucAncestorKey); }

    /** The leafs and leaf-lists that are its children. */
    Leaves leaves() const noexcept { return detail::Entries<Leaf, KorvTreeLeaf>(record_->pstLeafList); }
    /** The first 255 enabled ones in choices below it. */
    Leaves caseLeaves() const noexcept { return detail::Entries<Leaf, KorvTreeLeaf>(record_->pstCaseLeafList); }
    /** The first leaf of that name, case leaves behind the others, or none. */
    inline Leaf leaf(std::string_view name) const noexcept;

    /** The node around it, or none. */
    Node parent() const noexcept { return {local_, record_->pstParent}; }
    /** All nodes around it. */
    Ancestors ancestors() const noexcept { return {{record_->pstParent, local_}, {}}; }
    /** Its direct children. */
    Nodes children() const noexcept { return {{record_->pstFirstChild, local_}, {}}; }
    /** The first child of that name, or none. */
    inline Node child(std::string_view name) const noexcept;
    /** The node itself and all below it. */
    Tree subtree() const noexcept { return {{record_, record_, local_}, {}}; }

    /** Its path, in one of the forms that lookups take. */
    inline Result<OwnedText> path(PathForm form = PathForm::Names) const noexcept;
    /** The path of one of its leaves. */
    inline Result<OwnedText> path(Leaf leaf, PathForm form = PathForm::Names) const noexcept;

    /** True for the same record. */
    friend bool operator==(Node left, Node right) noexcept { return left.record_ == right.record_; }
    /** True for another one. */
    friend bool operator!=(Node left, Node right) noexcept { return left.record_ != right.record_; }

  private:
    TELMYANG_LOCAL_DATA_S *local_ = nullptr;
    KorvTreeNode *record_ = nullptr;
};

/* What is declared above. */
/** @cond INSIDE */
namespace detail {

inline Node SiblingCursor::value() const noexcept
{
    return {local, at};
}

inline Node AncestorCursor::value() const noexcept
{
    return {local, at};
}

inline Node TreeCursor::value() const noexcept
{
    return {local, at};
}

/* ask(YANGLIB_TEXT_S *) writes a text, or says what it takes. */
template <class Ask>
Result<OwnedText> AskText(Ask ask) noexcept
{
    YANGLIB_TEXT_S text = {nullptr, 0, 0};
    uint32_t code = ask(&text);
    if (code != KORV_BUFFER_TOO_SMALL)
        return Failure{code, OwnedText("the node has no path")};
    OwnedText made = OwnedText::ofLength(text.uiNeeded - 1);
    if (made.data() == nullptr)
        return Failure{KORV_NO_MEMORY, OwnedText("no memory for a path")};
    text.pcText = made.data();
    text.uiSize = text.uiNeeded;
    code = ask(&text);
    if (code != KORV_OK)
        return Failure{code, OwnedText("the node has no path")};
    return made;
}

} // namespace detail

template <class Function>
Result<void> Leaf::forEachValue(Function &&function) const
{
    detail::Visitor<std::remove_reference_t<Function>> visitor(function);
    const auto report = [](const char *name, int32_t value, void *cookie) {
        return static_cast<decltype(visitor) *>(cookie)->visit(detail::TextOf(name), value);
    };
    const uint32_t code = YANGLIB_ScanNameValuePair(record_, report, &visitor);
    return detail::ResultOf(visitor.finish(code), "the leaf's type cannot be found");
}

inline Leaf Node::leaf(std::string_view name) const noexcept
{
    for (const Leaves &row : {leaves(), caseLeaves()}) {
        for (Leaf leaf : row) {
            if (leaf.name() == name)
                return leaf;
        }
    }
    return {};
}

inline Node Node::child(std::string_view name) const noexcept
{
    for (Node child : children()) {
        if (child.name() == name)
            return child;
    }
    return {};
}

inline Result<OwnedText> Node::path(PathForm form) const noexcept
{
    return detail::AskText(
        [&](YANGLIB_TEXT_S *text) { return YANGLIB_GetNodePath(local_, record_, static_cast<uint32_t>(form), text); });
}

inline Result<OwnedText> Node::path(Leaf leaf, PathForm form) const noexcept
{
    return detail::AskText([&](YANGLIB_TEXT_S *text) {
        return YANGLIB_GetLeafPath(local_, record_, leaf.record(), static_cast<uint32_t>(form), text);
    });
}
/** @endcond */

} // namespace korv

#endif /* KORV_LIB_YANG_CPP_NODES_HPP */
