#include "schema/extension_edit.h"

#include <cstring>
#include <functional>

namespace qxyang {

ExtensionEdit::ExtensionEdit(const ExtensionSet *set)
{
    if (set != nullptr)
        AddAll(*set);
}

bool ExtensionEdit::Key::operator==(const Key &other) const
{
    if (name != other.name || argument == nullptr || other.argument == nullptr)
        return name == other.name && argument == other.argument;
    return std::strcmp(argument, other.argument) == 0;
}

size_t ExtensionEdit::KeyHash::operator()(const Key &key) const
{
    size_t text = key.argument != nullptr ? HashText(key.argument) : 0;
    return std::hash<const void *>()(key.name) ^ text << 16;
}

void ExtensionEdit::AddAll(const ExtensionSet &set)
{
    instances_.insert(instances_.end(), set.begin(), set.end());
    if (set.isPlaced != 0)
        spots_.insert(spots_.end(), set.Spots(), set.Spots() + set.count);
}

/* Brings the indexes up to date. A change that only adds does not need them. */
void ExtensionEdit::Index()
{
    for (; indexed_ < instances_.size(); ++indexed_) {
        const QY_EXT &instance = instances_[indexed_];
        ofExtension_[instance.name].push_back(indexed_);
        places_[{instance.name, instance.argument}].push_back(indexed_);
    }
}

/* The places of the instances that such a change removes, of which the last one at least is in use; null: there are
 * none. */
ExtensionEdit::Places *ExtensionEdit::Find(ExtensionChange::Kind kind, const QY_EXT &named)
{
    Index();
    Places *found = nullptr;
    if (kind == ExtensionChange::Kind::Replace) {
        auto entry = ofExtension_.find(named.name);
        found = entry != ofExtension_.end() ? &entry->second : nullptr;
    } else {
        auto entry = places_.find({named.name, named.argument});
        found = entry != places_.end() ? &entry->second : nullptr;
    }
    while (found != nullptr && !found->empty() && instances_[found->back()].name == nullptr)
        found->pop_back();
    return found == nullptr || found->empty() ? nullptr : found;
}

bool ExtensionEdit::Has(ExtensionChange::Kind kind, const QY_EXT &named)
{
    return Find(kind, named) != nullptr;
}

void ExtensionEdit::Apply(const ExtensionChange &change)
{
    for (const QY_EXT &named : *change.operand) {
        Places *places = change.kind != ExtensionChange::Kind::Add ? Find(change.kind, named) : nullptr;
        if (places == nullptr)
            continue;
        for (size_t place : *places) {
            removed_ += instances_[place].name != nullptr ? 1 : 0;
            instances_[place].name = nullptr;
        }
        places->clear();
    }
    if (change.kind != ExtensionChange::Kind::Delete)
        AddAll(*change.operand);
}

OwnedSet ExtensionEdit::Result() const
{
    bool isPlaced = !spots_.empty();
    OwnedSet result(ExtensionSet::Start(::operator new(ExtensionSet::Size(Count(), isPlaced)), Count(), isPlaced));
    size_t at = 0;
    for (size_t i = 0; i < instances_.size(); ++i) {
        if (instances_[i].name == nullptr)
            continue;
        if (isPlaced)
            result->Spots()[at] = spots_[i];
        result->begin()[at++] = instances_[i];
        result->AddToTotal(1 + TotalOf(instances_[i].nested));
    }
    return result;
}

} // namespace qxyang
