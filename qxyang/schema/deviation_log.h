/* What deviations changed on nodes. The changes of each module can be undone, in whatever order modules are
 * unloaded. */
#pragma once

#include <unordered_map>
#include <utility>
#include <vector>

#include "schema/extension_edit.h"
#include "schema/model.h"

namespace qxyang {

/* All that the deviations of one module change on one node. It is undone as a whole when the module is unloaded. */
struct Deviation {
    QY_MOD *by;
    bool removes = false;
    uint16_t set = 0;                        /* flags of the node */
    uint16_t cleared = 0;                    /* flags of the node */
    const QY_TYPE *type = nullptr;           /* null: not changed */
    QY_NODE *target = nullptr;               /* what a leafref of that type refers to */
    std::vector<ExtensionChange> extensions; /* in the order of the deviate statements */
    OwnedSet result = nullptr;               /* the node's extension instances after them; null: no such changes */
};

class DeviationLog {
  public:
    /* Each of these changes the node, or nothing at all if memory runs out. */
    void Remove(QY_NODE *node, QY_MOD *by);
    void SetType(QY_NODE *node, QY_MOD *by, const QY_TYPE *type);
    void SetProperties(QY_NODE *node, QY_MOD *by, uint16_t properties);
    void SetExtensions(QY_NODE *node, QY_MOD *by, std::vector<ExtensionChange> changes, OwnedSet result);

    /* The node's extension instances; if a request replaced them, those that it gets back. */
    static const ExtensionSet *ExtensionsOf(QY_NODE *node);

    /* True if a deviation made the node's extension instances: they are released when its module is unloaded. */
    bool HasExtensionsOf(QY_NODE *node) const;

    /* Notes what a type refers to that the leaf has or had before a deviation. */
    void SetTarget(QY_NODE *leaf, const QY_TYPE *type, QY_NODE *target);

    /* True if a deviation removed some node. */
    bool RemovesNodes() const;

    /* Undo what the dying modules changed: `first` and those that nextDying links to it. PrepareRemoval may run out of
     * memory and then changes nothing; it needs none if no module that stays has deviated after them. Remove cannot
     * fail. */
    class Removal {
        friend class DeviationLog;
        std::vector<std::pair<Deviation *, OwnedSet>> results_;
    };
    Removal PrepareRemoval(QY_MOD *first);
    void Remove(QY_MOD *first, Removal &removal) noexcept;

  private:
    struct Deviated {
        const ExtensionSet *extensions; /* this and the next three: what the node has without deviations */
        const QY_TYPE *type;
        QY_NODE *target;
        uint16_t properties;            /* flags of the node */
        std::vector<Deviation> changes; /* one for each module, in the order of the loads */

        const ExtensionSet *EffectiveExtensions() const;
        const Deviation *TypeChange() const;
        uint16_t Properties() const;
        bool IsRemoved() const;
    };

    template <class Change>
    void Apply(QY_NODE *node, QY_MOD *by, Change &&change);
    Deviated &DeviatedNode(QY_NODE *node);
    static void Show(QY_NODE *node, const Deviated &deviated);

    std::unordered_map<QY_NODE *, Deviated> nodes_;
};

} // namespace qxyang
