#include "check/unmapped_keys.h"

#include <algorithm>
#include <cstring>
#include <optional>
#include <vector>

#include "base/numbers.h"
#include "base/text.h"
#include "check/statement_words.h"
#include "model/schema_scan.h"
#include "model/trees.h"

namespace inspect {
namespace {

/* One ancestor-key-fid with a field-id in it. */
struct Mapping {
    uint32_t key;
    std::optional<uint32_t> id; /* none: the field-id is missing or no number */
};

/* The attribute of the class with that id, or null. */
const KorvTreeLeaf *AttributeOf(const KorvTreeNode &node, uint32_t id)
{
    for (const KorvTreeLeaf &leaf : Leaves(node.pstLeafList))
        if (Has(leaf, KORV_MASK_FIELD_ID) && leaf.uiFieldId == id &&
            QY_NODE_GetNodeType(leaf.pYinNode) == QY_NODE_TYPE_LEAF)
            return &leaf;
    return nullptr;
}

/* "key 1", "keys 1, 2" */
std::string KeysText(const std::vector<uint32_t> &keys)
{
    return (keys.size() == 1 ? "key " : "keys ") + JoinNumbers(keys, ", ");
}

class MappingForm {
  public:
    MappingForm(QY_CTX *schema, const std::vector<Extension> &statements, const KorvTreeNode &node,
                const KorvTreeNode &above)
        : node_(node), above_(above)
    {
        for (const Extension &statement : statements) {
            std::vector<Extension> within = ExtensionsWithin(schema, statement.instance);
            if (within.empty())
                continue;
            Mapping mapping = {ReadNumber(statement.argument).value, std::nullopt};
            for (const Extension &nested : within)
                if (nested.keyword == "field-id" && !ReadNumber(nested.argument).refused)
                    mapping.id = ReadNumber(nested.argument).value & 0xFFU;
            mappings_.push_back(mapping);
        }
    }

    /* What keeps the first key of the class above that is not mapped. Where the library does not see index maps, keys
     * count by their own ids alone. */
    UnmappedKey Why(bool seesIndexMaps) const
    {
        for (uint32_t key : KeyIds(above_.aucAncestorKey))
            if (UnmappedKey why = WhyNot(key, key); !why.text.empty())
                return why;
        for (uint32_t key : KeyIds(above_.aucSelfNodeKey)) {
            const KorvTreeLeaf *leaf = AttributeOf(above_, key);
            bool hasMap = seesIndexMaps && leaf != nullptr && Has(*leaf, KORV_MASK_NAME2ID_KEY);
            if (UnmappedKey why = WhyNot(hasMap ? leaf->uiName2IdKeyFid : key, key); !why.text.empty())
                return why;
        }
        return {};
    }

  private:
    /* A key is named by its index map, or else by its own id. */
    UnmappedKey WhyNot(uint32_t indexMap, uint32_t key) const
    {
        UnmappedKey first;
        for (uint32_t name : {indexMap, key}) {
            UnmappedKey why = WhyNoId(name, key);
            if (why.text.empty())
                return {};
            if (first.text.empty() || first.text == AddText(key))
                first = why;
        }
        return first;
    }

    UnmappedKey WhyNoId(uint32_t name, uint32_t key) const
    {
        auto mapping = std::find_if(mappings_.begin(), mappings_.end(),
                                    [name](const Mapping &candidate) { return candidate.key == name; });
        if (mapping == mappings_.end())
            return {AddText(key)};
        std::string statement = std::string(ANCESTOR_KEY) + " " + std::to_string(name);
        if (!mapping->id)
            return {"write a field-id into " + statement};
        const KorvTreeLeaf *leaf = AttributeOf(node_, *mapping->id);
        if (leaf == nullptr)
            return {};
        bool isOwn = std::strcmp(leaf->pcModuleName, node_.pcModuleName) == 0;
        return {"the field-id " + std::to_string(*mapping->id) + " of " + statement + " is the attribute id of leaf '" +
                    leaf->pcName + "'" + (isOwn ? "" : std::string(" of module '") + leaf->pcModuleName + "'") +
                    " as well",
                leaf};
    }

    static std::string AddText(uint32_t key)
    {
        return key == 0 ? "a key of the class above has no attribute id itself"
                        : "add an " + std::string(ANCESTOR_KEY) + " for key " + std::to_string(key);
    }

    const KorvTreeNode &node_;
    const KorvTreeNode &above_;
    std::vector<Mapping> mappings_;
};

} // namespace

UnmappedKey WhyUnmapped(QY_CTX *schema, QY_NODE *schemaNode, const KorvTreeNode &node, const KorvTreeNode &above)
{
    if (schemaNode == nullptr)
        return {};
    std::vector<Extension> statements = ExtensionsOf(schemaNode);
    std::erase_if(statements, [](const Extension &statement) { return statement.keyword != ANCESTOR_KEY; });
    std::vector<uint32_t> keys = KeyIds(above.aucAncestorKey);
    std::vector<uint32_t> own = KeyIds(above.aucSelfNodeKey);
    keys.insert(keys.end(), own.begin(), own.end());
    std::erase(keys, 0U);
    if (statements.empty())
        return {"add an " + std::string(ANCESTOR_KEY) + " for " + KeysText(keys)};
    if (ExtensionsWithin(schema, statements.front().instance).empty()) {
        std::vector<std::string> words = Words(statements.front().argument);
        size_t named = std::min(words.size(), keys.size());
        for (size_t i = 0; i < named; ++i)
            if ((ReadNumber(words[i]).value & 0xFFU) == 0)
                return {"'" + words[i] + "' in its " + ANCESTOR_KEY + " is no attribute id: write one for " +
                        KeysText({keys[i]})};
        keys.erase(keys.begin(), keys.begin() + static_cast<std::ptrdiff_t>(named));
        return keys.empty() ? UnmappedKey{}
                            : UnmappedKey{"add an attribute id for " + KeysText(keys) + " to its " + ANCESTOR_KEY};
    }
    MappingForm form(schema, statements, node, above);
    UnmappedKey why = form.Why(true);
    return why.text.empty() ? form.Why(false) : why;
}

} // namespace inspect
