#include <algorithm>

#include "leafref_path.h"

namespace qxyang {

namespace {

bool IsInputOrOutput(const QY_NODE *node)
{
    return node->kind == QY_NODE_TYPE_INPUT || node->kind == QY_NODE_TYPE_OUTPUT;
}

bool IsInData(const QY_NODE *node)
{
    return !IsChoiceOrCase(node) && !IsInputOrOutput(node);
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
    QY_NODE *Run()
    {
        if (path_.absolute)
            at_ = nullptr;
        else if (!Climb())
            return nullptr;
        for (uint32_t i = 0; i < path_.count; ++i)
            if (!Descend(path_.steps[i]))
                return nullptr;
        if (IsLeaf(at_))
            return at_;
        return Fail(Quoted(at_->name) + " is no leaf or leaf-list");
    }

  private:
    bool Climb()
    {
        for (uint32_t i = 0; i < path_.up; ++i) {
            if (at_ == nullptr || at_->kind == ROOT_KIND) {
                Fail("it leads above the top of the schema");
                return false;
            }
            for (at_ = at_->parent; !IsInData(at_); at_ = at_->parent)
                if (IsInputOrOutput(at_))
                    branch_ = at_;
        }
        if (at_->kind == ROOT_KIND)
            at_ = nullptr;
        return true;
    }

    bool Descend(const PathStep &step)
    {
        QY_NODE *child = step.module != nullptr ? ChildOf(step.module, step.name) : nullptr;
        if (step.module == nullptr) {
            child = ChildOf(pending_.leaf->module, step.name);
            if (child == nullptr && path_.home != pending_.leaf->module)
                child = ChildOf(path_.home, step.name);
        }
        if (child == nullptr)
            return FailStep(step);
        at_ = child;
        return true;
    }

    QY_NODE *ChildOf(const QY_MOD *module, std::string_view name)
    {
        if (at_ == nullptr)
            return load_.finder.DataChild(&module->root, module, name);
        if (at_->kind != QY_NODE_TYPE_RPC)
            return load_.finder.DataChild(at_, module, name);
        if (branch_ != nullptr && branch_->parent == at_)
            return load_.finder.DataChild(branch_, module, name);
        for (QY_NODE *branch = at_->first; branch != nullptr; branch = branch->next)
            if (QY_NODE *child = load_.finder.DataChild(branch, module, name))
                return child;
        return nullptr;
    }

    bool FailStep(const PathStep &step)
    {
        NearestName nearest(step.name);
        const QY_MOD *module = step.module != nullptr ? step.module : pending_.leaf->module;
        OfferChildren(at_ == nullptr ? &module->root : at_, module, nearest);
        std::string where = at_ == nullptr ? "module " + Quoted(module->name) : Quoted(at_->name);
        Fail(where + " has no " + Quoted(step.name) + nearest.Hint());
        return false;
    }

    void OfferChildren(const QY_NODE *parent, const QY_MOD *module, NearestName &nearest) const
    {
        for (const QY_NODE *child = FirstChild(parent); child != nullptr; child = child->next) {
            if (!IsInData(child))
                OfferChildren(child, module, nearest);
            else if (child->module == module && child != pending_.leaf)
                nearest.Offer(child->name);
        }
    }

    QY_NODE *Fail(std::string_view what)
    {
        load_.failures.Add(
            pending_.unit->source, pending_.offset,
            "leafref " + Quoted(pending_.leaf->name) + " with path " + Quoted(path_.text) + ": " + std::string(what));
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
            leaf->flags &= static_cast<uint16_t>(~(NODE_VISITING | NODE_ACYCLIC));
    }

    void Check(const PendingLeafref &pending)
    {
        size_t first = marked_.size();
        QY_NODE *leaf = pending.leaf;
        while (leaf != nullptr && (leaf->flags & (NODE_VISITING | NODE_ACYCLIC)) == 0) {
            marked_.push_back(leaf);
            leaf->flags |= NODE_VISITING;
            leaf = leaf->type->builtin == QY_TYPE_LEAFREF ? leaf->target : nullptr;
        }
        if (leaf != nullptr && (leaf->flags & NODE_VISITING) != 0)
            Fail(pending, first, leaf);
        for (size_t i = first; i < marked_.size(); ++i)
            marked_[i]->flags = static_cast<uint16_t>((marked_[i]->flags & ~NODE_VISITING) | NODE_ACYCLIC);
    }

  private:
    void Fail(const PendingLeafref &pending, size_t first, const QY_NODE *closing)
    {
        auto start = std::find(marked_.begin() + static_cast<std::ptrdiff_t>(first), marked_.end(), closing);
        std::string chain;
        for (auto leaf = start; leaf != marked_.end() && chain.size() < 16 * limits::QUOTED_LENGTH; ++leaf)
            chain.append((*leaf)->name).append(" -> ");
        load_.failures.Add(pending.unit->source, pending.offset, "leafref cycle: " + chain + closing->name);
    }

    LoadState &load_;
    std::vector<QY_NODE *> marked_;
};

} // namespace

bool IsRemoved(const QY_NODE *node)
{
    for (; node != nullptr && node->kind != ROOT_KIND; node = node->parent)
        if ((node->flags & NODE_REMOVED) != 0)
            return true;
    return false;
}

void ResolveLeafrefs(LoadState &load)
{
    Failures::Mark before = load.failures.Now();
    for (const PendingLeafref &pending : load.leafrefs) {
        if (pending.type->path == nullptr || pending.type->path->dereferences)
            continue;
        QY_NODE *target = PathWalk(load, pending).Run();
        if (pending.leaf->type == pending.type) // neither a member of a union nor replaced by a deviation
            pending.leaf->target = target;
        load.context.deviations.SetTarget(pending.leaf, pending.type, target);
    }
    if (load.failures.AnySince(before))
        return;
    CycleCheck cycles(load);
    for (const PendingLeafref &pending : load.leafrefs)
        cycles.Check(pending);
}

} // namespace qxyang
