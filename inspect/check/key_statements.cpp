/* The statements of ancestor keys, and what becomes of a list's keys. */
#include <algorithm>
#include <new>
#include <set>

#include "base/numbers.h"
#include "base/text.h"
#include "check/class_schema.h"
#include "check/statement_rules.h"
#include "check/statement_words.h"
#include "model/statements.h"

namespace inspect {
namespace {

/* The attribute ids of a list's keys. */
std::set<uint32_t> KeyIdsOf(QY_NODE *list)
{
    std::set<uint32_t> ids;
    ForEachChild(list, [&ids](QY_NODE *leaf) {
        if (QY_NODE_GetNodeType(leaf) != QY_NODE_TYPE_LEAF || (QY_NODE_IsKey(leaf) & 1U) == 0)
            return;
        for (const char *keyword : {"field-id", "ref-id-key-fid"})
            for (const std::string &argument : ExtensionArguments(leaf, keyword))
                ids.insert(ReadNumber(argument).value);
    });
    return ids;
}

/* Extension instances of all modules. */
size_t InstancesOf(QY_NODE *node)
{
    size_t num = 0;
    auto count = [](QY_EXT *, const char *, const char *, const char *, void *cookie) -> uint32_t {
        ++*static_cast<size_t *>(cookie);
        return 0;
    };
    (void)QY_NODE_ScanAllExtInsts(node, count, &num);
    return num;
}

/* True if the search for an index map ends at this leaf or leaf-list. */
bool EndsSearch(QY_NODE *leaf)
{
    std::vector<std::string> ids = ExtensionArguments(leaf, "field-id");
    return ids.empty() ? ExtensionsOf(leaf).size() == InstancesOf(leaf) : ReadNumber(ids.front()).refused;
}

} // namespace

/* The first statement decides which form counts. */
void StatementRules::CheckAncestorKeyForms(const Extensions &keys, bool nested)
{
    for (const Extension &key : keys) {
        bool isMapping = !ExtensionsWithin(schema_, key.instance).empty();
        if (isMapping == nested)
            continue;
        Report(
            "mixed-ancestor-keys",
            std::string(ANCESTOR_KEY) + " '" + key.argument + "' does not count: the first " + ANCESTOR_KEY +
                (nested ? " has a field-id in it, so that each needs one" : " is a list, so that it is the only one"),
            key);
    }
}

void StatementRules::CheckAncestorKeys(QY_NODE *node, const Extensions &extensions)
{
    Extensions statements;
    std::copy_if(extensions.begin(), extensions.end(), std::back_inserter(statements),
                 [](const Extension &extension) { return extension.keyword == ANCESTOR_KEY; });
    if (statements.empty())
        return;
    const Extension &first = statements.front();
    bool nested = !ExtensionsWithin(schema_, first.instance).empty();
    size_t num = nested ? statements.size() : Words(first.argument).size();
    CheckAncestorKeyForms(statements, nested);
    QY_NODE *above = ClassAbove(node);
    size_t keys = KeysAbove(node);
    if (num == 0)
        return;
    if (above != nullptr && ClassIdOf(above) == ClassIdOf(node))
        Report("no-effect", std::string(ANCESTOR_KEY) + " has no effect: the class above it is the same class", first);
    else if (above == nullptr && (nested || keys == 0))
        Report("extra-ancestor-key", std::string("it has ") + ANCESTOR_KEY + ", but no class above it", first);
    else if (num > keys)
        Report("extra-ancestor-key",
               "it has " + Count(num, "ancestor key") + ", but the lists above it have " +
                   (keys == 0 ? "no key" : Count(keys, "key")),
               first);
}

void StatementRules::CheckKeys(QY_NODE *node)
{
    uint32_t num = KeyNum(node);
    QY_NODE *above = KeyedListAbove(node);
    if (num == 0) {
        if (above == nullptr)
            Report("keyless-class", "it is a class without key: nothing tells its objects apart");
        return;
    }
    CheckIndexMaps(node);
    if (above == nullptr)
        return;
    std::set<uint32_t> own = KeyIdsOf(node);
    std::set<uint32_t> taken = KeyIdsOf(above);
    if (!std::includes(taken.begin(), taken.end(), own.begin(), own.end()))
        Report("dropped-key", "its keys do not count: it has those of the list '" + NameOf(above) +
                                  "' above it, which is of the same class");
}

/* True if a class directly below this one maps ancestor keys one by one. */
bool StatementRules::HasMappingBelow(QY_NODE *list)
{
    bool found = false;
    ForEachBelow(list, [&](QY_NODE *node) {
        if (found || node == list || ClassIdOf(node) == 0 || ClassAbove(node) != list)
            return;
        for (const Extension &extension : ExtensionsOf(node))
            found |= extension.keyword == ANCESTOR_KEY && !ExtensionsWithin(schema_, extension.instance).empty();
    });
    return found;
}

/* The library looks for a key's index map in the leaves in their order, and ends at one whose field-id it cannot read. */
void StatementRules::CheckIndexMaps(QY_NODE *list)
{
    QY_NODE *end = nullptr;
    QY_NODE *hidden = nullptr;
    ForEachChild(list, [&](QY_NODE *leaf) {
        uint32_t type = QY_NODE_GetNodeType(leaf);
        bool isLeaf = type == QY_NODE_TYPE_LEAF || type == QY_NODE_TYPE_LEAF_LIST;
        if (!isLeaf || hidden != nullptr)
            return;
        if (end == nullptr && EndsSearch(leaf))
            end = leaf;
        else if (end != nullptr && (QY_NODE_IsKey(leaf) & 1U) != 0 &&
                 !ExtensionArguments(leaf, "name2id-key-fid").empty())
            hidden = leaf;
    });
    if (hidden != nullptr && HasMappingBelow(list))
        Report("hidden-index-map",
               Described(end) + " without field-id stands before the key '" + NameOf(hidden) +
                   "': classes below do not find the key's index map; let the keys stand first",
               places_->Of(end));
}

} // namespace inspect
