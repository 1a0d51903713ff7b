/* What deviations changed on nodes, so that each module's share can be taken back, in whatever order modules go. */
#pragma once

#include <unordered_map>
#include <utility>
#include <vector>

#include "model.h"

namespace qxyang {

/* One change of one node. */
struct Deviation {
    enum class Kind : uint8_t {
        Remove,
        Type,
        Properties,
        AddExtensions,
        ReplaceExtensions,
        DeleteExtensions
    };

    QY_MOD *by;
    Kind kind;
    const QY_TYPE *type = nullptr;         /* Type */
    const ExtensionSet *operand = nullptr; /* the extension statements in the deviate */
    QY_NODE *target = nullptr;             /* Type: what the new type refers to */
    uint16_t set = 0;                      /* Properties: flags of the node */
    uint16_t cleared = 0;                  /* likewise */
    OwnedSet result = nullptr;             /* extension instances after the change */
};

class DeviationLog {
  public:
    /* Changes the node. Nothing is changed when memory runs out. */
    void Apply(QY_NODE *node, Deviation change);

    /* Whether the node has an extension instance that the change would replace or delete. */
    bool HasInstance(QY_NODE *node, const Deviation &change, const QY_EXT &named) const;

    /* What a type that the leaf has or had refers to becomes known. */
    void SetTarget(QY_NODE *leaf, const QY_TYPE *type, QY_NODE *target);

    /* The first of the modules that leave the node out, or null. */
    const QY_MOD *RemoverOf(QY_NODE *node) const;

    /* Takes back what the dying modules, the first one and those linked to it, changed. The first step may run out of memory, with nothing changed; it
     * needs none when the dying modules are those that deviated last. The second one cannot fail. */
    class Removal {
        friend class DeviationLog;
        std::vector<std::pair<Deviation *, OwnedSet>> results_;
    };
    Removal PrepareRemoval(QY_MOD *first);
    void Remove(QY_MOD *first, Removal &removal) noexcept;

  private:
    struct Deviated {
        const ExtensionSet *extensions; /* those below are the node's own, without deviations */
        const QY_TYPE *type;
        QY_NODE *target;
        uint16_t properties; /* flags */
        std::vector<Deviation> changes;

        const ExtensionSet *EffectiveExtensions() const;
        const Deviation *TypeChange() const;
        uint16_t Properties() const;
        const QY_MOD *Remover() const;
    };

    Deviated &DeviatedNode(QY_NODE *node);
    static bool ChangesExtensions(const Deviation &change);
    static OwnedSet Changed(const ExtensionSet *set, const Deviation &change);
    static void Show(QY_NODE *node, const Deviated &deviated);

    std::unordered_map<QY_NODE *, Deviated> nodes_;
};

} // namespace qxyang
