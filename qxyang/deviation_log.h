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
        kRemove,
        kType,
        kAddExtensions,
        kReplaceExtensions,
        kDeleteExtensions
    };

    QY_MOD *by;
    Kind kind;
    const QY_TYPE *type = nullptr;         /* kType */
    const ExtensionSet *operand = nullptr; /* the extension statements in the deviate */
    QY_NODE *target = nullptr;             /* kType: what the new type refers to */
    OwnedSet result = nullptr;             /* extension instances after the change */
};

class DeviationLog {
  public:
    /* Changes the node. Nothing is changed when memory runs out. */
    void apply(QY_NODE *node, Deviation change);

    /* What a type that the leaf has or had refers to becomes known. */
    void setTarget(QY_NODE *leaf, const QY_TYPE *type, QY_NODE *target);

    /* Takes back what modules that are dying changed. The first step may run out of memory, with nothing changed; it
     * needs none when the dying modules are those that deviated last. The second one cannot fail. */
    class Removal {
        friend class DeviationLog;
        std::vector<std::pair<Deviation *, OwnedSet>> results_;
    };
    Removal prepareRemoval(const std::vector<std::unique_ptr<QY_MOD>> &modules);
    void remove(const std::vector<std::unique_ptr<QY_MOD>> &modules, Removal removal) noexcept;

  private:
    struct Deviated {
        const ExtensionSet *extensions; /* those below are the node's own, without deviations */
        const QY_TYPE *type;
        QY_NODE *target;
        std::vector<Deviation> changes;

        const ExtensionSet *effectiveExtensions() const;
        const Deviation *typeChange() const;
        bool isRemoved() const;
    };

    Deviated &deviatedNode(QY_NODE *node);
    static bool changesExtensions(const Deviation &change);
    static OwnedSet changed(const ExtensionSet *set, const Deviation &change);
    static void show(QY_NODE *node, const Deviated &deviated);
    static void setRemoved(QY_NODE *node, bool removed);

    std::unordered_map<QY_NODE *, Deviated> nodes_;
};

}  // namespace qxyang
