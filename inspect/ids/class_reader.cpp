#include "ids/class_reader.h"

#include <algorithm>

#include "base/numbers.h"
#include "ids/node_path.h"

namespace inspect::ids {
namespace {

constexpr uint32_t FIELD_BITS = 0xFF;
constexpr uint32_t NO_VALUE = 0xFFFFFFFF; /* counts as absent where attribute ids are read */

/* The number of the first statement with that keyword; 0: none. */
uint32_t NumberIn(const std::vector<Extension> &extensions, std::string_view keyword)
{
    const Extension *statement = First(extensions, keyword);
    Number number = ReadNumber(statement != nullptr ? statement->argument : "");
    return number.refused ? 0 : number.value;
}

uint32_t FieldNumberIn(const std::vector<Extension> &extensions, std::string_view keyword)
{
    uint32_t number = NumberIn(extensions, keyword);
    return number == NO_VALUE ? 0 : number & FIELD_BITS;
}

bool IsLeaf(QY_NODE *node)
{
    return QY_NODE_GetNodeType(node) == QY_NODE_TYPE_LEAF;
}

bool IsChoiceOrCase(QY_NODE *node)
{
    uint32_t type = QY_NODE_GetNodeType(node);
    return type == QY_NODE_TYPE_CHOICE || type == QY_NODE_TYPE_CASE;
}

/* The statement that names the key, or null. A key with an index map goes by the map, and by its id if no statement has
 * the map. */
const Extension *NamedBy(const std::vector<Extension> &statements, const KeyId &key)
{
    auto find = [&](uint32_t id) -> const Extension * {
        auto found = std::find_if(statements.begin(), statements.end(), [id](const Extension &statement) {
            return ReadNumber(statement.argument).value == id;
        });
        return found != statements.end() ? &*found : nullptr;
    };
    const Extension *byMap = key.indexMap ? find(*key.indexMap) : nullptr;
    return byMap != nullptr ? byMap : find(key.id);
}

} // namespace

const Extension *First(const std::vector<Extension> &extensions, std::string_view keyword)
{
    auto found = std::find_if(extensions.begin(), extensions.end(),
                              [keyword](const Extension &extension) { return extension.keyword == keyword; });
    return found != extensions.end() ? &*found : nullptr;
}

uint32_t FieldIdOf(const std::vector<Extension> &extensions, QXYANG_ORIGIN_S *statement)
{
    for (const char *keyword : {"ref-id-key-fid", "field-id"})
        if (uint32_t id = FieldNumberIn(extensions, keyword); id != 0) {
            *statement = First(extensions, keyword)->origin;
            return id;
        }
    return 0;
}

const ClassNode *ClassReader::NearestAt(QY_NODE *node) const
{
    auto found = nearest_.find(node);
    return found != nearest_.end() ? found->second : nullptr;
}

const ClassNode *ClassReader::HolderOf(QY_NODE *leaf) const
{
    QY_NODE *holder = QY_NODE_GetParentNode(leaf);
    while (holder != nullptr && IsChoiceOrCase(holder))
        holder = QY_NODE_GetParentNode(holder);
    auto found = classes_.find(holder);
    return found != classes_.end() ? found->second.get() : nullptr;
}

/* In the order of the leaves, as the library has them. */
void ClassReader::ReadOwnKeys(ClassNode *made)
{
    if (QY_NODE_GetNodeType(made->model.node) != QY_NODE_TYPE_LIST)
        return;
    ForEachChild(made->model.node, [made](QY_NODE *leaf) {
        if (!IsLeaf(leaf) || (QY_NODE_IsKey(leaf) & 1U) == 0)
            return;
        std::vector<Extension> extensions = ExtensionsOf(leaf);
        KeyId key = {0, std::nullopt, PathOf(leaf)};
        key.id = FieldIdOf(extensions, &key.statement);
        if (uint32_t map = NumberIn(extensions, "name2id-key-fid"); map != 0 && map != NO_VALUE)
            key.indexMap = map;
        if (key.id != 0)
            made->ownKeys.push_back(std::move(key));
    });
}

/* A key that no statement maps ends the run through these keys. */
void ClassReader::Map(const std::vector<Extension> &statements, const std::vector<KeyId> &keys, ClassNode *made) const
{
    for (const KeyId &key : keys) {
        const Extension *statement = NamedBy(statements, key);
        if (statement == nullptr)
            return;
        std::vector<Extension> within = ExtensionsWithin(schema_, statement->instance);
        const Extension *field = First(within, "field-id");
        Number number = ReadNumber(field != nullptr ? field->argument : "");
        if (number.refused || (number.value & FIELD_BITS) == 0)
            return;
        made->ancestorKeys.push_back({number.value & FIELD_BITS, std::nullopt, key.path, field->origin});
    }
}

void ClassReader::ReadAncestorKeys(const std::vector<Extension> &extensions, ClassNode *made) const
{
    std::vector<Extension> statements;
    std::copy_if(extensions.begin(), extensions.end(), std::back_inserter(statements),
                 [](const Extension &extension) { return extension.keyword == "ancestor-key-fid"; });
    if (statements.empty())
        return;
    bool isList = ExtensionsWithin(schema_, statements.front().instance).empty();
    if (!isList && made->above != nullptr) {
        Map(statements, made->above->ancestorKeys, made);
        Map(statements, made->above->ownKeys, made);
    }
    if (!isList)
        return;
    std::vector<KeyId> above;
    if (made->above != nullptr) {
        above = made->above->ancestorKeys;
        above.insert(above.end(), made->above->ownKeys.begin(), made->above->ownKeys.end());
    }
    for (const std::string &word : Words(statements.front().argument)) {
        size_t index = made->ancestorKeys.size();
        made->ancestorKeys.push_back({ReadNumber(word).value & FIELD_BITS, std::nullopt,
                                      index < above.size() ? above[index].path : "", statements.front().origin});
    }
}

const ClassNode *ClassReader::Enter(QY_NODE *node)
{
    if (IsLeaf(node))
        return nullptr;
    const ClassNode *above = NearestAt(QY_NODE_GetParentNode(node));
    const ClassNode *&nearest = nearest_[node];
    nearest = above;
    if (IsChoiceOrCase(node))
        return nullptr;
    std::vector<Extension> extensions = ExtensionsOf(node);
    uint32_t id = NumberIn(extensions, "class-id");
    if (id == 0)
        return nullptr;
    std::string path = PathOf(node);
    bool isPart = above != nullptr && above->model.id == id;
    std::string top = isPart ? above->model.top : path;
    auto made = std::make_unique<ClassNode>(ClassNode{
        {id, NumberIn(extensions, "tlmt-sample-id"), std::move(path), std::move(top), node}, above, isPart, {}, {}});
    ReadOwnKeys(made.get());
    if (isPart) {
        made->ancestorKeys = above->ancestorKeys;
        if (!above->ownKeys.empty())
            made->ownKeys = above->ownKeys;
    } else {
        ReadAncestorKeys(extensions, made.get());
    }
    nearest = made.get();
    return classes_.emplace(node, std::move(made)).first->second.get();
}

} // namespace inspect::ids
