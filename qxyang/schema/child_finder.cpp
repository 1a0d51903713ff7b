#include "schema/child_finder.h"

namespace qxyang {

namespace {

/* So many children are searched without an index. */
constexpr int SHORT = 16;

bool Is(const QY_NODE *node, const QY_MOD *module, std::string_view name)
{
    return node->module == module && name == node->name;
}

/* Calls visit(child) for each child until one call returns true. True if one did. */
template <class Visit>
bool VisitSchemaChildren(const QY_NODE *parent, Visit &&visit)
{
    for (QY_NODE *child = FirstChild(parent); child != nullptr; child = child->next)
        if (visit(child))
            return true;
    return false;
}

/* The same for the children in the data tree; choices and cases on the way are visited as well. */
template <class Visit>
bool VisitDataChildren(const QY_NODE *parent, Visit &&visit)
{
    auto *top = const_cast<QY_NODE *>(parent); // the walk changes nothing
    for (QY_NODE *node = NextOfNames(top, top); node != nullptr; node = NextOfNames(top, node))
        if (visit(node))
            return true;
    return false;
}

} // namespace

/* Where the child of that name is or would be. */
QY_NODE **ChildFinder::Index::Place(const QY_MOD *module, std::string_view name)
{
    size_t mask = slots_.size() - 1;
    size_t at = HashText(name) & mask;
    while (slots_[at] != nullptr && !Is(slots_[at], module, name))
        at = (at + 1) & mask;
    return &slots_[at];
}

/* The first of two children of one name stays in the index: NodeNames reports the second. */
void ChildFinder::Index::Add(QY_NODE *child)
{
    if ((count_ + 1) * 2 > slots_.size()) {
        std::vector<QY_NODE *> old(slots_.empty() ? 64 : slots_.size() * 2);
        old.swap(slots_);
        for (QY_NODE *known : old)
            if (known != nullptr)
                *Place(known->module, known->name) = known;
    }
    last = child;
    QY_NODE **slot = Place(child->module, child->name);
    if (*slot != nullptr)
        return;
    *slot = child;
    ++count_;
}

QY_NODE *ChildFinder::Index::Find(const QY_MOD *module, std::string_view name) const
{
    return *const_cast<Index *>(this)->Place(module, name);
}

QY_NODE *ChildFinder::SchemaChild(const QY_NODE *parent, const QY_MOD *module, std::string_view name)
{
    QY_NODE *found = nullptr;
    int walked = 0;
    bool ended = VisitSchemaChildren(parent, [&](QY_NODE *child) {
        if (Is(child, module, name))
            found = child;
        return found != nullptr || ++walked == SHORT;
    });
    if (found != nullptr || !ended)
        return found;
    Index &index = schemaIndexes_[parent];
    for (QY_NODE *child = index.last != nullptr ? index.last->next : parent->first; child != nullptr;
         child = child->next)
        index.Add(child);
    return index.Find(module, name);
}

QY_NODE *ChildFinder::DataChild(const QY_NODE *parent, const QY_MOD *module, std::string_view name)
{
    QY_NODE *found = nullptr;
    int walked = 0;
    bool ended = VisitDataChildren(parent, [&](QY_NODE *child) {
        if (!IsChoiceOrCase(child) && Is(child, module, name))
            found = child;
        return found != nullptr || ++walked == SHORT;
    });
    if (found != nullptr || !ended)
        return found;
    auto [entry, isNew] = dataIndexes_.try_emplace(parent);
    if (isNew)
        VisitDataChildren(parent, [&index = entry->second](QY_NODE *child) {
            if (!IsChoiceOrCase(child))
                index.Add(child);
            return false;
        });
    return entry->second.Find(module, name);
}

} // namespace qxyang
