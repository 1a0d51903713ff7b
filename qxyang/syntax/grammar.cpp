#include "syntax/grammar.h"

#include <array>
#include <string_view>

#include "base/text.h"

namespace qxyang {

namespace {

/* Children of each statement: '!' exactly one, '+' one or more, '?' at most one, '*' any number, '^' at most one in
 * YANG 1.0 and any number in 1.1. A leading '%' marks what came with YANG 1.1. */
struct Row {
    Kw parent;
    const char *children;
    const char *more = "";
};

constexpr const char *DATA = " %anydata* anyxml* choice* container* leaf* leaf-list* list* uses*";
constexpr const char *DOCUMENTED = " description? reference? status?";
constexpr const char *CHECKED = " description? error-app-tag? error-message? reference?";
constexpr const char *BODY =
    " %anydata* anyxml* augment* choice* contact? container* description? deviation* extension* feature* grouping*"
    " identity* import* include* leaf* leaf-list* list* notification* organization? reference? revision* rpc* typedef*"
    " uses* yang-version?";
constexpr const char *OPERATION = "grouping* if-feature* input? output? typedef* description? reference? status?";
constexpr const char *ANY = "config? description? if-feature* mandatory? must* reference? status? when?";

constexpr Row ROWS[] = {
    {Kw::Module, "namespace! prefix!", BODY},
    {Kw::Submodule, "belongs-to!", BODY},
    {Kw::BelongsTo, "prefix!"},
    {Kw::Import, "%description? prefix! %reference? revision-date?"},
    {Kw::Include, "%description? %reference? revision-date?"},
    {Kw::Revision, "description? reference?"},
    {Kw::Typedef, "default? type! units?", DOCUMENTED},
    {Kw::Type, "base^ bit* enum* fraction-digits? length? path? pattern* range? require-instance? type*"},
    {Kw::Container,
     "%action* config? grouping* if-feature* must* %notification* presence? typedef* when?"
     " description? reference? status?",
     DATA},
    {Kw::Must, CHECKED},
    {Kw::Leaf, "config? default? if-feature* mandatory? must* type! units? when?", DOCUMENTED},
    {Kw::LeafList, "config? %default* if-feature* max-elements? min-elements? must* ordered-by? type! units? when?",
     DOCUMENTED},
    {Kw::List,
     "%action* config? grouping* if-feature* key? max-elements? min-elements? must* %notification* ordered-by?"
     " typedef* unique* when? description? reference? status?",
     DATA},
    {Kw::Choice,
     "%anydata* anyxml* case* %choice* config? container* default? if-feature* leaf* leaf-list* list*"
     " mandatory? when?",
     DOCUMENTED},
    {Kw::Case, "if-feature* when? description? reference? status?", DATA},
    {Kw::Anydata, ANY},
    {Kw::Anyxml, ANY},
    {Kw::Grouping, "%action* grouping* %notification* typedef* description? reference? status?", DATA},
    {Kw::Uses, "augment* if-feature* refine* when?", DOCUMENTED},
    {Kw::Refine,
     "config? default^ description? %if-feature* mandatory? max-elements? min-elements? must* presence?"
     " reference?"},
    {Kw::Rpc, OPERATION},
    {Kw::Action, OPERATION},
    {Kw::Input, "grouping* %must* typedef*", DATA},
    {Kw::Output, "grouping* %must* typedef*", DATA},
    {Kw::Notification, "grouping* if-feature* %must* typedef* description? reference? status?", DATA},
    {Kw::Augment, "%action* case* if-feature* %notification* when? description? reference? status?", DATA},
    {Kw::Identity, "base^ %if-feature*", DOCUMENTED},
    {Kw::Extension, "argument?", DOCUMENTED},
    {Kw::Argument, "yin-element?"},
    {Kw::Feature, "if-feature*", DOCUMENTED},
    {Kw::Deviation, "description? deviate+ reference?"},
    {Kw::Deviate, "config? default^ mandatory? max-elements? min-elements? must* type? unique* units?"},
    {Kw::Range, CHECKED},
    {Kw::Length, CHECKED},
    {Kw::Pattern, "%modifier?", CHECKED},
    {Kw::Enum, "%if-feature* value?", DOCUMENTED},
    {Kw::Bit, "%if-feature* position?", DOCUMENTED},
    {Kw::When, "description? reference?"},
};

constexpr Kw KeywordNamed(std::string_view name)
{
    for (size_t i = 0; i < KEYWORD_COUNT; ++i)
        if (KEYWORDS[i].name == name)
            return static_cast<Kw>(i);
    throw "no such statement"; // not a constant expression: a mistake in the table does not compile
}

struct Tables {
    std::array<std::array<Placement, KEYWORD_COUNT>, KEYWORD_COUNT> placements{};
    std::array<KeywordSet, KEYWORD_COUNT> required{};
};

constexpr void AddChild(Tables &tables, Kw parent, std::string_view word)
{
    uint8_t bits = Placement::ALLOWED;
    if (word.front() == '%') {
        bits |= Placement::SINCE_11;
        word.remove_prefix(1);
    }
    char count = word.back();
    Kw child = KeywordNamed(word.substr(0, word.size() - 1));
    if (count == '?' || count == '!')
        bits |= Placement::SINGLE;
    else if (count == '^')
        bits |= Placement::SINGLE_IN_10;
    else if (count != '*' && count != '+')
        throw "no such count";
    tables.placements[static_cast<size_t>(parent)][static_cast<size_t>(child)].bits = bits;
    if (count == '!' || count == '+')
        tables.required[static_cast<size_t>(parent)].Add(child);
}

constexpr void AddChildren(Tables &tables, Kw parent, std::string_view words)
{
    while (!words.empty()) {
        size_t end = words.find(' ');
        if (end != 0)
            AddChild(tables, parent, words.substr(0, end));
        words.remove_prefix(end == std::string_view::npos ? words.size() : end + 1);
    }
}

constexpr Tables MakeTables()
{
    Tables tables;
    for (const Row &row : ROWS) {
        AddChildren(tables, row.parent, row.children);
        AddChildren(tables, row.parent, row.more);
    }
    return tables;
}

constexpr Tables TABLES = MakeTables();

} // namespace

Placement PlacementOf(Kw parent, Kw child)
{
    return TABLES.placements[static_cast<size_t>(parent)][static_cast<size_t>(child)];
}

const KeywordSet &RequiredIn(Kw parent)
{
    return TABLES.required[static_cast<size_t>(parent)];
}

bool IsDeviateProperty(DeviateKind kind, Kw child)
{
    switch (child) {
        case Kw::Default:
        case Kw::Units:
            return kind != DeviateKind::NotSupported;
        case Kw::Must:
        case Kw::Unique:
            return kind == DeviateKind::Add || kind == DeviateKind::Delete;
        case Kw::Type:
            return kind == DeviateKind::Replace;
        default:
            return kind == DeviateKind::Add || kind == DeviateKind::Replace;
    }
}

} // namespace qxyang
