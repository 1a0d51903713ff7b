#include "model/message_text.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <string_view>

#include "model/outer_messages.h"
#include "model/trees.h"

namespace inspect {
namespace {

/* The texts that stand for the "*" of a pattern; none when the pattern does not match. A "*" takes as little as it can,
 * the last one everything that is left. */
std::optional<std::vector<std::string>> Match(std::string_view pattern, std::string_view text)
{
    std::vector<std::string> parts;
    size_t star = pattern.find('*');
    if (!text.starts_with(pattern.substr(0, star)))
        return std::nullopt;
    if (star == std::string_view::npos)
        return pattern == text ? std::optional(parts) : std::nullopt;
    text.remove_prefix(star);
    while (star != std::string_view::npos) {
        size_t next = pattern.find('*', star + 1);
        std::string_view fixed = pattern.substr(star + 1, next == std::string_view::npos ? next : next - star - 1);
        size_t found = fixed.empty() ? text.size() : text.find(fixed);
        if (found == std::string_view::npos)
            return std::nullopt;
        parts.emplace_back(text.substr(0, found));
        text.remove_prefix(found + fixed.size());
        star = next;
    }
    return parts;
}

/* A message, and what it means: "$1" and so on stand for the texts of the "*", "$N" for the node's name. The first message
 * of a chain that matches any of these explains the chain. */
struct Meaning {
    std::string_view message;
    std::string_view text;
    int node;                      /* which "*" is the node's name, 0: an outer message says it */
    const char *keyword = nullptr; /* of the statement that is wrong; "": the "*" before the last one is the keyword */
    bool isQuoted = false;         /* the last "*" is the statement's argument */
};

constexpr std::array<Meaning, 21> MEANINGS = {{
    {"malloc fail!", "there is not enough memory", 0},
    {"Fill Leaf Info By ExtType error, leaf name(*) ext(*) value(*)!",
     "leaf '$1' of class '$N': '$3' is no number that $2 can have", 1, "", true},
    {"class-type do not support *", "class '$N': class-type '$1' is neither 'leafref' nor 'leafref-target'", 0,
     "class-type", true},
    {"The leafref source class * can only have mimext:class-type, need remove other mimext",
     "class '$1' of class-type 'leafref' must not have other extension statements", 1, "class-type"},
    {"Leafref source class * must have a child class", "class '$1' of class-type 'leafref' must have a child class", 1,
     "class-type"},
    {"Attr * under * is not with type leafref", "leaf '$1' of '$2', a class of class-type 'leafref', is no leafref", 1},
    {"Attr * under * with type leafref, should have no mimext",
     "leaf '$1' of '$2', a class of class-type 'leafref', must not have extension statements", 1},
    {"error,not find key field ID!nodename(*)node key size(*)",
     "class '$1': a key is no leaf of the list itself, or its name has more than 64 characters", 1, "key"},
    {"Parse Node (*) Auto-Key return *",
     "class '$1' has several leaves and a name2id-key-fid of its own: that belongs on a leaf", 1, "name2id-key-fid"},
    {"no word error in node(*)!", "class '$1': ancestor-key-fid is empty: name the attribute ids, or leave it out", 1,
     "ancestor-key-fid"},
    {"pstYinInst->pstKeyRefArray XUR_Malloc error!",
     "class '$N': ancestor-key-fid is empty: name the attribute ids, or leave it out", 0, "ancestor-key-fid"},
    {"Parse MimExt Into Array return 0x*, uiTmpNum(*) name(*)!", "class '$3': ancestor-key-fid is no list of numbers",
     3, "ancestor-key-fid"},
    {"Iterate key-ref, Append one ancestor for * failed, pos is *, except *.",
     "class '$1' has $3 ancestor-key-fid, fewer than the class above it has ancestor keys: one of the two is wrong", 1,
     "ancestor-key-fid"},
    {"Iter key, Append one ancestor for * failed, pos is *, except *.",
     "class '$1' has $3 ancestor-key-fid, too few for the keys of the class above it", 1, "ancestor-key-fid"},
    {"class node(*) has * attribute leaves, more than *!", "class '$1' has $2 leaves, more than $3: split it", 1,
     "class-id"},
    {"class node(*) has * ancestor keys, more than *!", "class '$1' has $2 ancestor keys, more than $3", 1,
     "ancestor-key-fid"},
    {"class node(*) has * keys, more than *!", "class '$1' has $2 keys, more than $3", 1, "key"},
    {"NODE_KEY_LIST_NUM error!", "a class has more than 16 keys or more than 16 ancestor keys", 0},
    {"augment cnt over max, ModName(*)", "the module has more than 20 augments: put some into another module", 0,
     "augment"},
    {"Parse module yin extension return value(0x*)", "aaa-task-id is no number", 0, "aaa-task-id"},
    {"the trees of one load have more than * nodes, leaf lists and leaves, node(*)!",
     "the module's trees, with all that its augments extend, have more than $1 nodes and leaves", 2},
}};

/* Outer messages that name the node. */
constexpr std::array<std::string_view, 4> NODE_MESSAGES = {
    "Read Node(*) Extension return *", "Update YinInst from node (*) return *",
    "Parse node (*) <mimext:class-type> return *", "Parse Node(*) Attr LeafInfo return *"};

constexpr std::string_view NO_DEFAULT_TYPE = "Get Default Type By YangType *, return *";

constexpr std::array<std::string_view, 4> ATTEMPT_MESSAGES = {
    "Get mim-ext:field-id value of Node(*) return *",
    "Failed to find ancestor-key for * with attr-id *",
    "Ancestor-key for * with attr-id * do not have valid child field-id info",
    "Ancestor key for * with child-attr-id * already exist",
};

constexpr std::array<std::string_view, 2> ANCESTOR_KEY_MESSAGES = {
    "Append one ancestor in parent key ref seq *, current seq * failed.",
    "Node(*) inherit father key error : *",
};

constexpr std::array<std::string_view, 4> PRINTING_MESSAGES = {
    "augment can not findYangModuleTree!",
    "ret err orTree node zero!",
    "can not findYangModuleTree(*",
    "Dump yang model data return 0x*",
};

constexpr std::string_view SCHEMA_FAILURE = "QY_CTX_LoadModule *";

template <size_t N>
bool MatchesAny(const std::array<std::string_view, N> &messages, const std::string &error)
{
    return std::any_of(messages.begin(), messages.end(),
                       [&error](std::string_view message) { return Match(message, error).has_value(); });
}

bool IsKnown(const std::string &error)
{
    const std::vector<std::string_view> &known = KnownMessages();
    return std::any_of(known.begin(), known.end(),
                       [&error](std::string_view message) { return Match(message, error).has_value(); });
}

std::string NodeOf(const std::vector<std::string> &errors)
{
    for (const std::string &error : errors) {
        for (const std::string_view message : NODE_MESSAGES)
            if (const auto parts = Match(message, error))
                return parts->front();
    }
    return "";
}

std::string Filled(std::string_view text, const std::vector<std::string> &parts, const std::string &node)
{
    std::string filled;
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '$') {
            filled += text[i];
            continue;
        }
        char which = text[++i];
        filled += which == 'N' ? node : parts[static_cast<size_t>(which - '1')];
    }
    return filled;
}

} // namespace

bool TypeIsMissing(uint32_t type)
{
    return TypeName(type) == nullptr || type == QY_TYPE_LEAFREF;
}

std::optional<uint32_t> TypeWithoutDefault(const std::vector<std::string> &errors)
{
    for (const std::string &error : errors)
        if (const auto parts = Match(NO_DEFAULT_TYPE, error))
            return static_cast<uint32_t>(std::strtoul(parts->front().c_str(), nullptr, 10));
    return std::nullopt;
}

Explanation Explain(const std::vector<std::string> &errors)
{
    std::string node = NodeOf(errors);
    if (const std::optional<uint32_t> type = TypeWithoutDefault(errors)) {
        std::string what = TypeIsMissing(*type)
                               ? "is a leafref whose target is not found"
                               : std::string("is of type ") + TypeName(*type) + ", which has no default datatype";
        return {"a leaf of class '" + node + "' " + what + ": it needs a datatype-id", node, node};
    }
    for (const std::string &error : errors) {
        for (const Meaning &meaning : MEANINGS) {
            auto parts = Match(meaning.message, error);
            if (!parts)
                continue;
            Explanation why = {Filled(meaning.text, *parts, node),
                               meaning.node == 0 ? node : (*parts)[static_cast<size_t>(meaning.node) - 1], node};
            if (meaning.keyword != nullptr)
                why.keyword = *meaning.keyword != '\0' ? meaning.keyword : (*parts)[parts->size() - 2];
            if (meaning.isQuoted)
                why.argument = parts->back();
            return why;
        }
    }
    for (const std::string &error : errors) {
        if (MatchesAny(MEMORY_MESSAGES, error))
            return {"there is not enough memory", node, node};
        if (!IsKnown(error))
            return {"the library says: " + error, node, node};
    }
    return {"the library refuses the module and does not say why", node, node};
}

std::optional<Explanation> RemarkOf(const std::string &error)
{
    if (MatchesAny(MEMORY_MESSAGES, error))
        return Explanation{"there is not enough memory", "", ""};
    if (IsKnown(error))
        return std::nullopt;
    return Explanation{"the library says: " + error, "", ""};
}

bool IsAboutPrinting(const std::string &error)
{
    return MatchesAny(PRINTING_MESSAGES, error);
}

bool IsOfAttempt(const std::string &error)
{
    return MatchesAny(ATTEMPT_MESSAGES, error);
}

bool IsSchemaFailure(const std::string &error)
{
    return Match(SCHEMA_FAILURE, error).has_value();
}

const std::vector<std::string_view> &KnownMessages()
{
    static const std::vector<std::string_view> known = [] {
        std::vector<std::string_view> all = {NO_DEFAULT_TYPE, SCHEMA_FAILURE};
        for (const Meaning &meaning : MEANINGS)
            all.push_back(meaning.message);
        all.insert(all.end(), NODE_MESSAGES.begin(), NODE_MESSAGES.end());
        all.insert(all.end(), ATTEMPT_MESSAGES.begin(), ATTEMPT_MESSAGES.end());
        all.insert(all.end(), ANCESTOR_KEY_MESSAGES.begin(), ANCESTOR_KEY_MESSAGES.end());
        all.insert(all.end(), PRINTING_MESSAGES.begin(), PRINTING_MESSAGES.end());
        all.insert(all.end(), MEMORY_MESSAGES.begin(), MEMORY_MESSAGES.end());
        all.insert(all.end(), OUTER_MESSAGES.begin(), OUTER_MESSAGES.end());
        return all;
    }();
    return known;
}

} // namespace inspect
