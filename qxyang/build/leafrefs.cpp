#include <algorithm>

#include "build/leafref_path.h"

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

/* Follows the path of one leafref in the data tree: RFC 7950, 6.4.1 and 9.9.2. Input and output are no nodes of it:
 * a way that climbs to an operation goes down again through the one that it came through. */
class PathWalk {
  public:
    PathWalk(ChildFinder &finder, QY_NODE *leaf, const LeafrefPath &path)
        : finder_(finder), leaf_(leaf), path_(path), at_(leaf)
    {
    }

    /* The leaf that the path leads to. Null: Why() says why there is none, and Hint() what may be meant. */
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
        why_ = Quoted(at_->name) + " is no leaf or leaf-list";
        return nullptr;
    }

    const std::string &Why() const { return why_; }

    /* The file is the one that a failure names. */
    std::string Hint(NameBudget &names, const Unit &unit)
    {
        if (missing_ == nullptr)
            return {};
        for (const PrefixBinding *binding : unit.bindings) // of the file that the path stands in
            if (missing_->module == nullptr && path_.home == unit.module &&
                ChildOf(binding->module, missing_->name) != nullptr)
                return PrefixHint(binding->name, missing_->name);
        NearestName nearest(names, missing_->name);
        if (nearest.IsOpen()) {
            const QY_MOD *module = ModuleOf(*missing_);
            OfferChildren(at_ == nullptr ? const_cast<QY_NODE *>(&module->root) : at_, module, nearest);
        }
        return nearest.Hint();
    }

  private:
    bool Climb()
    {
        for (uint32_t i = 0; i < path_.up; ++i) {
            if (at_ == nullptr || at_->kind == ROOT_KIND) {
                why_ = "it leads above the top of the schema";
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
            child = ChildOf(leaf_->module, step.name);
            if (child == nullptr && path_.home != leaf_->module)
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
            return finder_.DataChild(&module->root, module, name);
        if (at_->kind != QY_NODE_TYPE_RPC)
            return finder_.DataChild(at_, module, name);
        if (branch_ != nullptr && branch_->parent == at_)
            return finder_.DataChild(branch_, module, name);
        for (QY_NODE *branch = at_->first; branch != nullptr; branch = branch->next)
            if (QY_NODE *child = finder_.DataChild(branch, module, name))
                return child;
        return nullptr;
    }

    bool FailStep(const PathStep &step)
    {
        std::string where = at_ == nullptr ? "module " + Quoted(ModuleOf(step)->name) : Quoted(at_->name);
        why_ = where + " has no " + Quoted(step.name);
        missing_ = &step;
        return false;
    }

    const QY_MOD *ModuleOf(const PathStep &step) const { return step.module != nullptr ? step.module : leaf_->module; }

    void OfferChildren(QY_NODE *parent, const QY_MOD *module, NearestName &nearest) const
    {
        auto enters = [parent](const QY_NODE *node) { return node == parent || !IsInData(node); };
        for (QY_NODE *node = parent; node != nullptr; node = NextBelow(parent, node, enters))
            if (node != parent && IsInData(node) && node->module == module && node != leaf_)
                nearest.Offer(node->name);
    }

    ChildFinder &finder_;
    QY_NODE *leaf_;
    const LeafrefPath &path_;
    QY_NODE *at_;                       /* null: above all modules' top-level nodes */
    const QY_NODE *branch_ = nullptr;   /* the input or output that the way up came through */
    const PathStep *missing_ = nullptr; /* the step that names no child */
    std::string why_;
};

std::string LeafrefTitle(const QY_NODE *leaf, const LeafrefPath &path)
{
    return "leafref " + Quoted(leaf->name) + " with path " + Quoted(path.text);
}

/* The node or its nearest ancestor that a deviation removed, or null. */
QY_NODE *NearestRemoved(QY_NODE *node)
{
    while (node != nullptr && (node->flags & NODE_REMOVED) == 0)
        node = node->parent;
    return node;
}

/* RFC 7950, 9.9: there are no circular chains of leafrefs. Each leaf is passed once: it is marked when its chain is
 * known to end. The marks go with the check. */
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

/* Reports what is lost of the leafrefs in the type of one leaf. A union's members have no place for their targets, so that
 * these are looked for again. */
uint32_t VisitLostOf(QY_NODE *leaf, LeafrefMembers &members, ChildFinder &finder, const LostTargetVisitor &visit)
{
    for (const QY_TYPE *type : members.Of(*leaf->type)) {
        QY_NODE *target = leaf->target;
        if (type != leaf->type)
            target = type->path->dereferences ? nullptr : PathWalk(finder, leaf, *type->path).Run();
        QY_NODE *removed = NearestRemoved(target);
        if (removed == nullptr)
            continue;
        if (uint32_t result = visit({leaf, type->path, target, removed}); result != 0)
            return result;
    }
    return 0;
}

void AwaitTarget(Build &build, const PendingLeafref &pending, const Statement *statement)
{
    LoadState &load = build.load;
    if (const LeafrefPath *path = pending.type->path)
        load.leafrefSteps += path->up + path->count;
    if (load.leafrefs.size() >= limits::LEAFREFS || load.leafrefSteps > limits::LEAFREF_STEPS) {
        bool many = load.leafrefs.size() >= limits::LEAFREFS;
        build.Fail(*pending.unit, statement,
                   "the load needs more than " + std::to_string(many ? limits::LEAFREFS : limits::LEAFREF_STEPS) +
                       (many ? " leafrefs" : " steps of leafrefs"));
        throw LoadStopped{};
    }
    load.leafrefs.push_back(pending);
}

} // namespace

void AwaitTargets(Build &build, QY_NODE *leaf, Unit &unit, const Statement *statement)
{
    LeafrefMembers &members = build.load.leafrefMembers;
    for (const QY_TYPE *type : members.Of(*leaf->type))
        AwaitTarget(build, {leaf, type, leaf->type, &unit, statement->offset}, statement);
    build.load.leafrefSteps += members.UnionCount();
}

void ResolveLeafrefs(LoadState &load)
{
    Failures::Mark before = load.failures.Now();
    for (const PendingLeafref &pending : load.leafrefs) {
        if (pending.type->path == nullptr || pending.type->path->dereferences)
            continue;
        PathWalk walk(load.finder, pending.leaf, *pending.type->path);
        QY_NODE *target = walk.Run();
        if (target == nullptr)
            load.failures.Add(pending.unit->source, pending.offset,
                              LeafrefTitle(pending.leaf, *pending.type->path) + ": " + walk.Why(),
                              [&] { return walk.Hint(load.failures.names, *pending.unit); });
        if (pending.leaf->type == pending.type) // it is not a member of a union, and no deviation has replaced it
            pending.leaf->target = target;
        load.context.deviations.SetTarget(pending.leaf, pending.type, target);
    }
    if (load.failures.AnySince(before))
        return;
    CycleCheck cycles(load);
    for (const PendingLeafref &pending : load.leafrefs)
        cycles.Check(pending);
    for (const PendingLeafref &pending : load.leafrefs)
        load.CountLeafref(pending);
}

uint32_t VisitLostTargets(const QY_CTX &context, const LostTargetVisitor &visit)
{
    if (!context.deviations.RemovesNodes())
        return 0;
    ChildFinder finder;
    LeafrefMembers members;
    uint32_t result = 0;
    for (const auto &module : context.modules)
        module->nodes.ForEach([&](QY_NODE *node) {
            if (result == 0 && IsLeaf(node) && node->type->refers && !IsRemoved(node))
                result = VisitLostOf(node, members, finder, visit);
        });
    return result;
}

} // namespace qxyang
