/* The schema as it is kept: modules, nodes, types and extension instances behind the handles of the contract. */
#pragma once

#include <korv_platform.h>

#include <cstdint>
#include <list>
#include <memory>
#include <unordered_map>
#include <vector>

#include "base/arena.h"
#include "base/name_table.h"
#include "base/schema_limits.h"
#include "schema/details.h"

namespace qxyang {

struct Statement;
struct Scope;
class Unit;

/* Node type of the hidden node above a module's top-level nodes, and of the one above a grouping's nodes. Only the
 * latter has a name. */
inline constexpr uint8_t ROOT_KIND = QY_NODE_TYPE_NONE;

/* ---- extensions ------------------------------------------------------------------------------------------------ */

/* What readers see of an extension. There is one for each module name and keyword. It lives as long as the context, so
 * instances may be copied to nodes of modules that outlive the extension's own. */
struct ExtensionName {
    const char *name; /* "module:keyword", how the table finds it */
    const char *module;
    const char *keyword;
};

/* An `extension` statement. */
struct Extension {
    const char *name;
    const char *argument; /* name of its argument; null: it takes none */
    bool argumentIsElement;
    const ExtensionName *published;
};

/* The extension instances of one statement: `count` QY_EXT records follow, and in a context that keeps places as many
 * spots behind these. Never changed once made, so the copies of a grouping's nodes share them. */
struct ExtensionSet {
    uint32_t count;
    uint32_t total : 31; /* those within others included */
    uint32_t isPlaced : 1;

    QY_EXT *begin() { return reinterpret_cast<QY_EXT *>(this + 1); }
    const QY_EXT *begin() const { return reinterpret_cast<const QY_EXT *>(this + 1); }
    inline const QY_EXT *end() const;

    void AddToTotal(uint32_t instances) { total = (total + instances) & 0x7FFFFFFFu; }

    /* Where the instances' statements stand, in the same order; only of a set that is placed. */
    inline Spot *Spots();
    inline const Spot *Spots() const;

    /* Bytes of a set of so many instances. */
    static inline size_t Size(size_t count, bool isPlaced);

    /* A set whose instances and spots are still to be filled in. */
    static ExtensionSet *Start(void *memory, size_t count, bool isPlaced)
    {
        return new (memory) ExtensionSet{static_cast<uint32_t>(count), 0, isPlaced ? 1u : 0u};
    }
};

inline uint32_t TotalOf(const ExtensionSet *set)
{
    return set != nullptr ? set->total : 0;
}

/* ---- features -------------------------------------------------------------------------------------------------- */

struct Feature;

/* One step of a feature expression in postfix order. */
struct FeatureStep {
    enum class Kind : uint8_t {
        Operand,
        And,
        Or,
        Not
    };

    Kind kind;
    Feature *feature; /* of an operand */
};

struct FeatureExpression {
    uint32_t count;
    const FeatureStep *steps;
};

/* A list of expressions that must all hold. Lists may have a common tail, and a list may stand in another one. */
struct Condition {
    const Condition *next;
    const Condition *shared;           /* another list that must hold here, or null */
    FeatureExpression expression = {}; /* what must hold here if there is no such list */
    mutable uint64_t epoch = 0;        /* of the context when `holds` was computed */
    mutable bool holds = false;        /* this one and all that follow it do, if the epoch is still the context's */
};

struct Feature {
    const char *name;
    QY_MOD *module;
    const Condition *condition; /* or null */
    bool enabled;               /* by name; counts only when the module was loaded by name */
    bool known;                 /* the result of the last evaluation */
    uint64_t epoch;             /* of the context at that evaluation: the result holds as long as they are equal */
    Statement *statement;       /* while the module is being loaded, like the members that follow */
    Unit *unit;
    uint32_t chain; /* length of the longest chain of features that it depends on; 0: not known yet */
    bool visiting;
};

struct Identity {
    const char *name;
    Statement *statement; /* while the module is being loaded, like the members that follow */
    Unit *unit;
    uint32_t chain;
    bool visiting;
};

/* ---- types ----------------------------------------------------------------------------------------------------- */

/* One part of a range, both ends included. Numbers of unsigned types are kept in the same 64 bits. */
struct RangePart {
    int64_t start;
    int64_t end;
    int64_t reach; /* end of the last of the parts that follow without a gap; its own end if none does */
};

struct RangeSet {
    uint32_t count;
    const RangePart *parts;
};

struct EnumValue {
    const char *name;
    int64_t value; /* of a bit: its position */
    const Condition *condition;
};

struct EnumSet {
    uint32_t count;
    const EnumValue *values;
};

/* One step of a leafref's path. */
struct PathStep {
    const QY_MOD *module; /* null: that of the leaf which has the type */
    const char *name;
};

struct LeafrefPath {
    const char *text;
    const QY_MOD *home; /* whose text the path stands in: the second choice for steps without a module */
    const PathStep *steps;
    uint32_t count;
    uint32_t up; /* leading ".." steps */
    bool absolute;
    bool dereferences; /* goes through deref(), whose target depends on data */
};

struct UnionMembers {
    uint32_t count;
    mutable bool isSeen; /* LeafrefMembers has met it in its present search; false outside of one */
    const QY_TYPE *const *types;
};

} // namespace qxyang

struct QY_EXT {
    const qxyang::ExtensionName *name;
    const char *argument; /* null: the extension takes none */
    const qxyang::ExtensionSet *nested;
};

namespace qxyang {
inline const QY_EXT *ExtensionSet::end() const
{
    return begin() + count;
}

inline Spot *ExtensionSet::Spots()
{
    return reinterpret_cast<Spot *>(begin() + count);
}

inline const Spot *ExtensionSet::Spots() const
{
    return reinterpret_cast<const Spot *>(begin() + count);
}

inline size_t ExtensionSet::Size(size_t count, bool isPlaced)
{
    return sizeof(ExtensionSet) + count * (sizeof(QY_EXT) + (isPlaced ? sizeof(Spot) : 0));
}
} // namespace qxyang

/* A type, immutable and shared by all leaves that use it. Its restrictions are the effective ones: its own, or those
 * of the type that it is derived from. */
struct QY_TYPE {
    const QY_TYPE *base; /* null: a built-in type */
    union {
        const qxyang::RangeSet *range;       /* integers, decimal64 (scaled); string and binary: the length */
        const qxyang::EnumSet *values;       /* enumeration, bits */
        const qxyang::LeafrefPath *path;     /* leafref */
        const qxyang::UnionMembers *members; /* union */
    };
    uint8_t builtin; /* QY_TYPE_ number */
    uint8_t depth;   /* length of the longest chain of bases and members that it is made of; at most limits::CHAIN */
    uint8_t fractionDigits;
    bool refers; /* a leafref, or a union with a leafref among its members or theirs */
};

static_assert(qxyang::limits::CHAIN <= UINT8_MAX);     /* QY_TYPE::depth */
static_assert(qxyang::limits::LIST_KEYS <= UINT8_MAX); /* QY_NODE::keyCount */

/* A schema node. Children and siblings are linked lists that only grow at their end while modules are in force. */
struct QY_NODE {
    const char *name;
    QY_NODE *parent; /* a module's hidden root for top-level nodes; of an augment: see AugmentTarget */
    QY_NODE *next;
    union {
        QY_NODE *first;      /* child */
        const QY_TYPE *type; /* of a leaf or leaf-list */
    };
    union {
        QY_NODE *last;   /* child */
        QY_NODE *target; /* what a leaf of type leafref refers to, or null */
    };
    QY_MOD *module;
    void *priv;
    const qxyang::ExtensionSet *extensions; /* null: none */
    uint8_t kind;                           /* QY_NODE_TYPE_ number */
    uint8_t keyCount;                       /* of a list */
    uint16_t flags;
    uint32_t condition; /* index + 1 of the node's own condition in its module's list, or 0 */
};

namespace qxyang {

/* Lists and leaf-lists share three bits with nodes of other types; each use of such a bit has its own name. */
enum NodeFlag : uint16_t {
    NODE_IS_KEY = 1 << 0,
    NODE_REMOVED = 1 << 1,  /* a deviation removed it: it stays linked, and no scan shows it */
    NODE_IMPLICIT = 1 << 2, /* input or output without a statement: scans show it once something augments it */
    NODE_GATED = 1 << 3,    /* the node or one above it has a condition */
    NODE_SWEPT = 1 << 4,    /* while modules are being released: its dying children are unlinked */
    NODE_VISITING = 1 << 5, /* while leafrefs are being resolved: on the chain being followed */
    NODE_ACYCLIC = 1 << 6,  /* while leafrefs are being resolved: its chain has an end */
    NODE_OWN_SET = 1 << 7,  /* its extension instances were replaced on request: see QY_MOD::replacedSets */
    NODE_HAS_CONFIG = 1 << 8,
    NODE_IS_STATE = 1 << 9, /* its config statement says false */
    NODE_HAS_DEFAULT = 1 << 10,
    NODE_HAS_UNIQUE = NODE_HAS_DEFAULT, /* of a list, which has no default */
    NODE_HAS_MANDATORY = 1 << 11,
    NODE_HAS_MIN_ELEMENTS = NODE_HAS_MANDATORY, /* of a list or leaf-list, which cannot be mandatory */
    NODE_IS_MANDATORY = 1 << 12,
    NODE_HAS_MAX_ELEMENTS = NODE_IS_MANDATORY, /* likewise */
    NODE_HAS_UNITS = 1 << 13,
    NODE_HAS_MUST = 1 << 14,
    NODE_PROPERTIES = NODE_HAS_CONFIG | NODE_IS_STATE | NODE_HAS_DEFAULT | NODE_HAS_MANDATORY | NODE_IS_MANDATORY |
                      NODE_HAS_UNITS | NODE_HAS_MUST, /* what deviations compare and change */
};

/* The node that an augment adds to; null when it was not applied. It is kept as the augment's parent, so that
 * conditions above it hold for the augment as well. */
inline QY_NODE *AugmentTarget(const QY_NODE *augment)
{
    return augment->parent;
}

inline bool IsLeaf(const QY_NODE *node)
{
    return node->kind == QY_NODE_TYPE_LEAF || // NOLINT(clang-analyzer-core.NullDereference)
           node->kind == QY_NODE_TYPE_LEAF_LIST;
}

/* Choices and cases are nodes of the schema tree but not of the data tree. */
inline bool IsChoiceOrCase(const QY_NODE *node)
{
    return node->kind == QY_NODE_TYPE_CHOICE || node->kind == QY_NODE_TYPE_CASE;
}

/* RPCs, actions and notifications. */
inline bool IsOperation(const QY_NODE *node)
{
    return node->kind == QY_NODE_TYPE_RPC || node->kind == QY_NODE_TYPE_NOTIFICATION;
}

/* The node among whose children the names of this node's children have to be unique: RFC 7950, 6.2.1. */
inline QY_NODE *NameScope(QY_NODE *node)
{
    while (IsChoiceOrCase(node))
        node = node->parent;
    return node;
}

/* False for nodes that scans leave out although they are linked. Does not look at the nodes above. */
inline bool InScans(const QY_NODE *node)
{
    if ((node->flags & (NODE_REMOVED | NODE_IMPLICIT)) == 0)
        return true;
    return (node->flags & NODE_REMOVED) == 0 && node->first != nullptr;
}

/* True if a deviation removed the node or one of its ancestors. */
inline bool IsRemoved(const QY_NODE *node)
{
    while (node != nullptr && (node->flags & NODE_REMOVED) == 0)
        node = node->parent;
    return node != nullptr;
}

/* The first child, whether scans show it or not. */
inline QY_NODE *FirstChild(const QY_NODE *node)
{
    return IsLeaf(node) ? nullptr : node->first;
}

/* The next node of a walk over `top` and all nodes below it, parents first; null at the end. enters(node) says
 * whether the walk visits the children of a node. It needs no stack: the way back up follows the parents. */
template <class Enters>
QY_NODE *NextBelow(const QY_NODE *top, QY_NODE *node, Enters &&enters)
{
    if (QY_NODE *child = enters(node) ? FirstChild(node) : nullptr)
        return child;
    while (node != top && node->next == nullptr)
        node = node->parent;
    return node != top ? node->next : nullptr;
}

/* The same over the nodes below `top` whose names have to be unique: its children, and those within its choices and
 * cases. */
inline QY_NODE *NextOfNames(const QY_NODE *top, QY_NODE *node)
{
    return NextBelow(top, node, [top](const QY_NODE *entered) { return entered == top || IsChoiceOrCase(entered); });
}

enum class Progress : uint8_t {
    Untouched,
    Running,
    Done,
    Failed
};

struct Typedef {
    const char *name;
    const QY_TYPE *type; /* once done */
    Progress progress;
    Statement *statement; /* while the module is being loaded, like the members that follow */
    Scope *scope;
};

/* A grouping's nodes hang below a hidden root, uses within it expanded; each use copies them. */
struct Grouping {
    const char *name;
    QY_NODE *root; /* once done */
    Progress progress;
    Statement *statement; /* while the module is being loaded, like the members that follow */
    Scope *scope;
};

/* Extension instances in a heap block of their own, since they are replaced one set at a time. */
struct OwnedSetDelete {
    void operator()(ExtensionSet *set) const { ::operator delete(set); }
};
using OwnedSet = std::unique_ptr<ExtensionSet, OwnedSetDelete>;

/* Extension instances that a reader put in place of a node's own. */
struct ReplacedSet {
    OwnedSet shown;          /* null: the node shares those of another node, which live as long as the module */
    const ExtensionSet *own; /* what the node gets back */
};

/* A file that a module came from. */
struct ModuleFile {
    const char *name; /* of the module or submodule */
    const char *path;
    bool isCompact;
};

} // namespace qxyang

struct QY_MOD {
    QY_CTX *context = nullptr;
    const char *name = nullptr; /* the context's: outlives the module */
    const char *space = nullptr;
    const char *revision = nullptr;
    bool byName = false;    /* loaded by name, not only imported */
    bool preferred = false; /* what an import without a revision gets */
    bool complete = false;  /* built: only its leafrefs may still fail the load */
    bool dying = false;     /* while modules are being released */

    std::list<std::unique_ptr<QY_MOD>>::iterator place; /* in the context */
    QY_MOD *nextOfName = nullptr;                       /* in the context, in the order of their loads */
    QY_MOD *nextDying = nullptr;                        /* while modules are being released */
    uint32_t importers = 0;                             /* modules in the context that import this one */

    QY_NODE root{}; /* the top-level nodes are its children */
    const qxyang::ExtensionSet *extensions = nullptr;
    std::vector<QY_NODE *> augments;                   /* in statement order */
    std::vector<QY_NODE *> deviated;                   /* nodes that this module's deviations changed */
    std::vector<QY_MOD *> imports;                     /* each once */
    std::vector<qxyang::ModuleFile> files;             /* its own comes last */
    std::vector<const qxyang::Condition *> conditions; /* of nodes that have one */

    qxyang::NameTable<qxyang::Typedef> typedefs;
    qxyang::NameTable<qxyang::Grouping> groupings;
    qxyang::NameTable<qxyang::Identity> identities;
    qxyang::NameTable<qxyang::Feature> features;
    qxyang::NameTable<qxyang::Extension> extensionDefinitions;

    qxyang::Slab<QY_NODE> nodes;
    qxyang::Slab<QY_NODE> templates; /* nodes of groupings: readers only see their copies */
    qxyang::Arena records;
    qxyang::Arena texts;
    std::unordered_map<QY_NODE *, qxyang::ReplacedSet> replacedSets; /* of nodes with NODE_OWN_SET */
    std::unique_ptr<qxyang::ModuleDetails> details;                  /* null unless the context keeps them */
};
