#include "build/list_keys.h"

#include <algorithm>

#include "build/node_kinds.h"

namespace qxyang {

namespace {

/* RFC 7950, 7.8.2: a key names leaves that are children of the list, each once; 7.20.2: they have no if-feature. */
void SetKey(Build &build, const Statement *statement, std::string_view text, QY_NODE *list, Unit &unit)
{
    Reference reference = SplitReference(text);
    QY_MOD *module = build.ModuleOf(unit, statement, reference);
    if (module == nullptr)
        return;
    QY_NODE *leaf = build.load.finder.SchemaChild(list, module, reference.name);
    auto fail = [&](std::string_view what) {
        build.Fail(unit, statement, "key " + Quoted(text) + " of list " + Quoted(list->name) + std::string(what));
    };
    if (leaf == nullptr) {
        return build.Fail(unit, statement,
                          "key " + Quoted(text) + " of list " + Quoted(list->name) + " is no leaf of it", reference,
                          [list](auto &&offer) {
                              for (QY_NODE *child = list->first; child != nullptr; child = child->next)
                                  if (child->kind == QY_NODE_TYPE_LEAF)
                                      offer(child->name);
                          });
    }
    if (leaf->kind != QY_NODE_TYPE_LEAF)
        return fail(" is " + DescribeNode(leaf) + ", not a leaf");
    if (leaf->condition != 0 && unit.isVersion11)
        return fail(" has an 'if-feature', which no key may have");
    if ((leaf->flags & NODE_IS_KEY) != 0)
        return fail(" is named twice");
    if (list->keyCount == limits::LIST_KEYS)
        return fail(" is more than the " + std::to_string(limits::LIST_KEYS) + " that a list can have");
    leaf->flags |= NODE_IS_KEY;
    ++list->keyCount;
}

/* RFC 7950, 7.8.3: a unique statement names leaves below the list. No reader asks which. */
void CheckUnique(Build &build, const Statement *statement, QY_NODE *list, Unit &unit)
{
    std::string_view rest = statement->argument;
    for (std::string_view tag = TakeWord(rest); !tag.empty(); tag = TakeWord(rest)) {
        QY_NODE *at = list;
        for (std::string_view left = tag; at != nullptr && !left.empty();) {
            size_t end = std::min(left.find('/'), left.size());
            Reference reference = SplitReference(left.substr(0, end));
            QY_MOD *module = build.ModuleOf(unit, statement, reference);
            if (module == nullptr)
                return;
            at = build.load.finder.SchemaChild(at, module, reference.name);
            left.remove_prefix(std::min(end + 1, left.size()));
        }
        if (at == nullptr || at->kind != QY_NODE_TYPE_LEAF)
            // NOLINTNEXTLINE(clang-analyzer-core.NullDereference)
            build.Fail(unit, statement, "unique " + Quoted(tag) + " is no leaf below list " + Quoted(list->name));
    }
}

} // namespace

void SetKeys(Build &build, const Statement *statement, QY_NODE *list, Unit &unit)
{
    for (const Statement *child = statement->first; child != nullptr; child = child->next) {
        if (child->keyword == Kw::Unique)
            CheckUnique(build, child, list, unit);
        if (child->keyword != Kw::Key)
            continue;
        std::string_view rest = child->argument;
        for (std::string_view key = TakeWord(rest); !key.empty(); key = TakeWord(rest))
            SetKey(build, child, key, list, unit);
    }
}

} // namespace qxyang
