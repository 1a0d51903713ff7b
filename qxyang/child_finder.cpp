#include "child_finder.h"

namespace qxyang {

namespace {

/* Lists up to this length are walked. */
constexpr int kShort = 16;

bool is(const QY_NODE *node, const QY_MOD *module, std::string_view name)
{
    return node->module == module && name == node->name;
}

bool isTransparent(const QY_NODE *node)
{
    return node->kind == QY_NODE_TYPE_CHOICE || node->kind == QY_NODE_TYPE_CASE;
}

/* Calls visit(child) for each child until it returns true, which is the result then. */
template<class Visit>
bool visitSchemaChildren(const QY_NODE *parent, Visit &&visit)
{
    for (QY_NODE *child = firstChild(parent); child != nullptr; child = child->next)
        if (visit(child))
            return true;
    return false;
}

template<class Visit>
bool visitDataChildren(const QY_NODE *parent, Visit &&visit)
{
    return visitSchemaChildren(parent, [&visit](QY_NODE *child) {
        return isTransparent(child) ? visitDataChildren(child, visit) : visit(child);
    });
}

}  // namespace

/* Where the child of that name is or would be. */
QY_NODE **ChildFinder::Index::place(const QY_MOD *module, std::string_view name)
{
    size_t mask = slots_.size() - 1;
    size_t at = hashText(name) & mask;
    while (slots_[at] != nullptr && !is(slots_[at], module, name))
        at = (at + 1) & mask;
    return &slots_[at];
}

/* Of equal names the first one stays: duplicates are reported elsewhere. */
void ChildFinder::Index::add(QY_NODE *child)
{
    if ((count_ + 1) * 2 > slots_.size()) {
        std::vector<QY_NODE *> old(slots_.empty() ? 64 : slots_.size() * 2);
        old.swap(slots_);
        for (QY_NODE *known : old)
            if (known != nullptr)
                *place(known->module, known->name) = known;
    }
    last = child;
    QY_NODE **slot = place(child->module, child->name);
    if (*slot != nullptr)
        return;
    *slot = child;
    ++count_;
}

QY_NODE *ChildFinder::Index::find(const QY_MOD *module, std::string_view name) const
{
    return *const_cast<Index *>(this)->place(module, name);
}

QY_NODE *ChildFinder::schemaChild(const QY_NODE *parent, const QY_MOD *module, std::string_view name)
{
    QY_NODE *found = nullptr;
    int walked = 0;
    bool ended = visitSchemaChildren(parent, [&](QY_NODE *child) {
        if (is(child, module, name))
            found = child;
        return found != nullptr || ++walked == kShort;
    });
    if (found != nullptr || !ended)
        return found;
    Index &index = schemaIndexes_[parent];
    for (QY_NODE *child = index.last != nullptr ? index.last->next : parent->first; child != nullptr;
         child = child->next)
        index.add(child);
    return index.find(module, name);
}

QY_NODE *ChildFinder::dataChild(const QY_NODE *parent, const QY_MOD *module, std::string_view name)
{
    QY_NODE *found = nullptr;
    int walked = 0;
    bool ended = visitDataChildren(parent, [&](QY_NODE *child) {
        if (is(child, module, name))
            found = child;
        return found != nullptr || ++walked == kShort;
    });
    if (found != nullptr || !ended)
        return found;
    auto [entry, isNew] = dataIndexes_.try_emplace(parent);
    if (isNew)
        visitDataChildren(parent, [&index = entry->second](QY_NODE *child) {
            index.add(child);
            return false;
        });
    return entry->second.find(module, name);
}

}  // namespace qxyang
