#include "schema/sibling_names.h"

#include <bit>
#include <cstring>

namespace qxyang {

namespace {

size_t CountNames(QY_NODE *parent)
{
    size_t count = 0;
    for (QY_NODE *node = NextOfNames(parent, parent); node != nullptr; node = NextOfNames(parent, node))
        ++count;
    return count;
}

} // namespace

QY_NODE *SiblingNames::FindTwice(QY_NODE *parent, const QY_MOD *module)
{
    if (parent->first == nullptr || (parent->first == parent->last && !IsChoiceOrCase(parent->first)))
        return nullptr;
    Begin(CountNames(parent));
    return AddAll(parent, module);
}

QY_NODE *SiblingNames::FindTwiceAmongCases(QY_NODE *choice, const QY_MOD *module)
{
    size_t count = 0;
    for (const QY_NODE *child = choice->first; child != nullptr; child = child->next)
        ++count;
    Begin(count);
    for (QY_NODE *child = choice->first; child != nullptr; child = child->next)
        if (child->module == module && !Add(child->name))
            return child;
    return nullptr;
}

void SiblingNames::Begin(size_t count)
{
    size_t size = std::bit_ceil(count * 2 + 1);
    if (slots_.size() < size)
        slots_.resize(size);
    mask_ = size - 1;
    if (++round_ == 0) { // slots may have any round number by now
        slots_.assign(slots_.size(), Slot{});
        round_ = 1;
    }
}

bool SiblingNames::Add(const char *name)
{
    uint32_t hash = HashText(name);
    size_t at = hash & mask_;
    for (; slots_[at].round == round_; at = (at + 1) & mask_)
        if (slots_[at].hash == hash && std::strcmp(slots_[at].name, name) == 0)
            return false;
    slots_[at] = {round_, hash, name};
    return true;
}

/* The name of a choice counts among those of its parent's nodes, the name of a case does not: RFC 7950, 6.2.1. */
QY_NODE *SiblingNames::AddAll(QY_NODE *parent, const QY_MOD *module)
{
    for (QY_NODE *node = NextOfNames(parent, parent); node != nullptr; node = NextOfNames(parent, node))
        if (node->kind != QY_NODE_TYPE_CASE && node->module == module && !Add(node->name))
            return node;
    return nullptr;
}

} // namespace qxyang
