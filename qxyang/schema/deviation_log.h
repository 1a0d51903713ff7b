/* What deviations changed on nodes, so that each module's share can be taken back, in whatever order modules go. */
#pragma once

#include <unordered_map>
#include <utility>
#include <vector>

#include "schema/extension_edit.h"
#include "schema/model.h"

namespace qxyang {

/* All that one module's deviations change on one node. Modules go as a whole, and so do their changes. */
struct Deviation {
    QY_MOD *by;
    bool removes = false;
    uint16_t set = 0;                        /* flags of the node */
    uint16_t cleared = 0;                    /* likewise */
    const QY_TYPE *type = nullptr;           /* null: not changed */
    QY_NODE *target = nullptr;               /* what that type refers to */
    std::vector<ExtensionChange> extensions; /* in their order */
    OwnedSet result = nullptr;               /* extension instances after these changes; null: there are none */
};

class DeviationLog {
  public:
    /* Each changes the node. Nothing is changed when memory runs out. */
    void Remove(QY_NODE *node, QY_MOD *by);
    void SetType(QY_NODE *node, QY_MOD *by, const QY_TYPE *type);
    void SetProperties(QY_NODE *node, QY_MOD *by, uint16_t properties);
    void SetExtensions(QY_NODE *node, QY_MOD *by, std::vector<ExtensionChange> changes, OwnedSet result);

    /* The node's extension instances, apart from those that replaced them on request. */
    static const ExtensionSet *ExtensionsOf(QY_NODE *node);

    /* True if the node shows extension instances that a deviation made, and that go with it. */
    bool HasExtensionsOf(QY_NODE *node) const;

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
        uint16_t properties;            /* flags */
        std::vector<Deviation> changes; /* one of each module */

        const ExtensionSet *EffectiveExtensions() const;
        const Deviation *TypeChange() const;
        uint16_t Properties() const;
        const QY_MOD *Remover() const;
    };

    template <class Change>
    void Apply(QY_NODE *node, QY_MOD *by, Change &&change);
    Deviated &DeviatedNode(QY_NODE *node);
    static void Show(QY_NODE *node, const Deviated &deviated);

    std::unordered_map<QY_NODE *, Deviated> nodes_;
};

} // namespace qxyang
