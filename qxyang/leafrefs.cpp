#include <algorithm>

#include "leafref_path.h"

namespace qxyang {

namespace {

bool isTransparent(const QY_NODE *node)
{
    switch (node->kind) {
        case QY_NODE_TYPE_CHOICE:
        case QY_NODE_TYPE_CASE:
        case QY_NODE_TYPE_INPUT:
        case QY_NODE_TYPE_OUTPUT:
            return true;
        default:
            return false;
    }
}

/* Follows the path of one leafref. Input and output are no nodes of the data tree: the way down from an operation leads
 * through the one that the way up came through. */
class PathWalk {
  public:
    PathWalk(LoadState &load, const PendingLeafref &pending)
        : load_(load), pending_(pending), path_(*pending.type->path)
    {
    }

    /* The leaf, or null: the failure is recorded. */
    QY_NODE *run()
    {
        if (path_.absolute)
            at_ = nullptr;
        else if (!climb())
            return nullptr;
        for (uint32_t i = 0; i < path_.count; ++i)
            if (!descend(path_.steps[i]))
                return nullptr;
        if (isLeaf(at_))
            return at_;
        return fail(quoted(at_->name) + " is no leaf or leaf-list");
    }

  private:
    bool climb()
    {
        for (uint32_t i = 0; i < path_.up; ++i) {
            if (at_ == nullptr || at_->kind == kRootKind) {
                fail("it leads above the top of the schema");
                return false;
            }
            for (at_ = at_->parent; isTransparent(at_); at_ = at_->parent)
                if (at_->kind == QY_NODE_TYPE_INPUT || at_->kind == QY_NODE_TYPE_OUTPUT)
                    branch_ = at_;
        }
        if (at_->kind == kRootKind)
            at_ = nullptr;
        return true;
    }

    bool descend(const PathStep &step)
    {
        QY_NODE *child = step.module != nullptr ? childOf(step.module, step.name) : nullptr;
        if (step.module == nullptr) {
            child = childOf(pending_.leaf->module, step.name);
            if (child == nullptr && path_.home != pending_.leaf->module)
                child = childOf(path_.home, step.name);
        }
        if (child == nullptr)
            return failStep(step);
        at_ = child;
        return true;
    }

    QY_NODE *childOf(const QY_MOD *module, std::string_view name)
    {
        if (at_ == nullptr)
            return load_.finder.dataChild(&module->root, module, name);
        if (at_->kind != QY_NODE_TYPE_RPC)
            return load_.finder.dataChild(at_, module, name);
        if (branch_ != nullptr && branch_->parent == at_)
            return load_.finder.dataChild(branch_, module, name);
        for (QY_NODE *branch = at_->first; branch != nullptr; branch = branch->next)
            if (QY_NODE *child = load_.finder.dataChild(branch, module, name))
                return child;
        return nullptr;
    }

    bool failStep(const PathStep &step)
    {
        NearestName nearest(step.name);
        const QY_MOD *module = step.module != nullptr ? step.module : pending_.leaf->module;
        offerChildren(at_ == nullptr ? &module->root : at_, module, nearest);
        std::string where = at_ == nullptr ? "module " + quoted(module->name) : quoted(at_->name);
        fail(where + " has no " + quoted(step.name) + nearest.hint());
        return false;
    }

    static void offerChildren(const QY_NODE *parent, const QY_MOD *module, NearestName &nearest)
    {
        for (const QY_NODE *child = firstChild(parent); child != nullptr; child = child->next) {
            if (isTransparent(child))
                offerChildren(child, module, nearest);
            else if (child->module == module)
                nearest.offer(child->name);
        }
    }

    QY_NODE *fail(std::string_view what)
    {
        load_.failures.add(
            pending_.unit->source, pending_.offset,
            "leafref " + quoted(pending_.leaf->name) + " with path " + quoted(path_.text) + ": " + std::string(what));
        return nullptr;
    }

    LoadState &load_;
    const PendingLeafref &pending_;
    const LeafrefPath &path_;
    QY_NODE *at_ = pending_.leaf; /* null: above all modules' top-level nodes */
    const QY_NODE *branch_ = nullptr;
};

/* Follows chains of leafrefs. Each leaf is passed once: what is known to end is marked for the time of the check. */
class CycleCheck {
  public:
    explicit CycleCheck(LoadState &load) : load_(load) {}

    ~CycleCheck()
    {
        for (QY_NODE *leaf : marked_)
            leaf->flags &= static_cast<uint16_t>(~(kNodeVisiting | kNodeAcyclic));
    }

    void check(const PendingLeafref &pending)
    {
        size_t first = marked_.size();
        QY_NODE *leaf = pending.leaf;
        while (leaf != nullptr && (leaf->flags & (kNodeVisiting | kNodeAcyclic)) == 0) {
            marked_.push_back(leaf);
            leaf->flags |= kNodeVisiting;
            leaf = leaf->type->builtin == QY_TYPE_LEAFREF ? leaf->target : nullptr;
        }
        if (leaf != nullptr && (leaf->flags & kNodeVisiting) != 0)
            fail(pending, first, leaf);
        for (size_t i = first; i < marked_.size(); ++i)
            marked_[i]->flags = static_cast<uint16_t>((marked_[i]->flags & ~kNodeVisiting) | kNodeAcyclic);
    }

  private:
    void fail(const PendingLeafref &pending, size_t first, const QY_NODE *closing)
    {
        auto start = std::find(marked_.begin() + static_cast<std::ptrdiff_t>(first), marked_.end(), closing);
        std::string chain;
        for (auto leaf = start; leaf != marked_.end() && chain.size() < 16 * limits::kQuotedLength; ++leaf)
            chain.append((*leaf)->name).append(" -> ");
        load_.failures.add(pending.unit->source, pending.offset, "leafref cycle: " + chain + closing->name);
    }

    LoadState &load_;
    std::vector<QY_NODE *> marked_;
};

}  // namespace

bool isRemoved(const QY_NODE *node)
{
    for (; node != nullptr && node->kind != kRootKind; node = node->parent)
        if ((node->flags & kNodeRemoved) != 0)
            return true;
    return false;
}

void resolveLeafrefs(LoadState &load)
{
    size_t before = load.failures.count();
    for (const PendingLeafref &pending : load.leafrefs) {
        if (pending.type->path == nullptr || pending.type->path->dereferences)
            continue;
        QY_NODE *target = PathWalk(load, pending).run();
        if (pending.leaf->type == pending.type)  // neither a member of a union nor replaced by a deviation
            pending.leaf->target = target;
        load.context.deviations.setTarget(pending.leaf, pending.type, target);
    }
    if (load.failures.count() != before)
        return;
    CycleCheck cycles(load);
    for (const PendingLeafref &pending : load.leafrefs)
        cycles.check(pending);
}

}  // namespace qxyang
