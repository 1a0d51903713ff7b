#include "syntax/grammar.h"

#include <array>
#include <string_view>

namespace qxyang {

namespace {

/* Children of each statement: '!' exactly one, '+' one or more, '?' at most one, '*' any number, '^' at most one in
 * YANG 1.0 and any number in 1.1. A leading '%' marks what came with YANG 1.1. */
struct Row {
    Kw parent;
    const char *section; /* of RFC 7950 */
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
    {Kw::Module, "7.1.1", "namespace! prefix!", BODY},
    {Kw::Submodule, "7.2.1", "belongs-to!", BODY},
    {Kw::BelongsTo, "7.2.2", "prefix!"},
    {Kw::Import, "7.1.5", "%description? prefix! %reference? revision-date?"},
    {Kw::Include, "7.1.6", "%description? %reference? revision-date?"},
    {Kw::Revision, "7.1.9.1", "description? reference?"},
    {Kw::Typedef, "7.3.1", "default? type! units?", DOCUMENTED},
    {Kw::Type, "7.4.1", "base^ bit* enum* fraction-digits? length? path? pattern* range? require-instance? type*"},
    {Kw::Container, "7.5.2",
     "%action* config? grouping* if-feature* must* %notification* presence? typedef* when?"
     " description? reference? status?",
     DATA},
    {Kw::Must, "7.5.4", CHECKED},
    {Kw::Leaf, "7.6.2", "config? default? if-feature* mandatory? must* type! units? when?", DOCUMENTED},
    {Kw::LeafList, "7.7.3",
     "config? %default* if-feature* max-elements? min-elements? must* ordered-by? type! units? when?", DOCUMENTED},
    {Kw::List, "7.8.1",
     "%action* config? grouping* if-feature* key? max-elements? min-elements? must* %notification* ordered-by?"
     " typedef* unique* when? description? reference? status?",
     DATA},
    {Kw::Choice, "7.9.1",
     "%anydata* anyxml* case* %choice* config? container* default? if-feature* leaf* leaf-list* list*"
     " mandatory? when?",
     DOCUMENTED},
    {Kw::Case, "7.9.2.1", "if-feature* when? description? reference? status?", DATA},
    {Kw::Anydata, "7.10.1", ANY},
    {Kw::Anyxml, "7.11.1", ANY},
    {Kw::Grouping, "7.12.1", "%action* grouping* %notification* typedef* description? reference? status?", DATA},
    {Kw::Uses, "7.13.1", "augment* if-feature* refine* when?", DOCUMENTED},
    {Kw::Refine, "7.13.2",
     "config? default^ description? %if-feature* mandatory? max-elements? min-elements? must* presence?"
     " reference?"},
    {Kw::Rpc, "7.14.1", OPERATION},
    {Kw::Action, "7.15.1", OPERATION},
    {Kw::Input, "7.14.2.1", "grouping* %must* typedef*", DATA},
    {Kw::Output, "7.14.3.1", "grouping* %must* typedef*", DATA},
    {Kw::Notification, "7.16.1", "grouping* if-feature* %must* typedef* description? reference? status?", DATA},
    {Kw::Augment, "7.17.1", "%action* case* if-feature* %notification* when? description? reference? status?", DATA},
    {Kw::Identity, "7.18.1", "base^ %if-feature*", DOCUMENTED},
    {Kw::Extension, "7.19.1", "argument?", DOCUMENTED},
    {Kw::Argument, "7.19.2.1", "yin-element?"},
    {Kw::Feature, "7.20.1.1", "if-feature*", DOCUMENTED},
    {Kw::Deviation, "7.20.3.1", "description? deviate+ reference?"},
    {Kw::Deviate, "7.20.3.2", "config? default^ mandatory? max-elements? min-elements? must* type? unique* units?"},
    {Kw::Range, "9.2.4.1", CHECKED},
    {Kw::Length, "9.4.4.1", CHECKED},
    {Kw::Pattern, "9.4.5.1", "%modifier?", CHECKED},
    {Kw::Enum, "9.6.4.1", "%if-feature* value?", DOCUMENTED},
    {Kw::Bit, "9.7.4.1", "%if-feature* position?", DOCUMENTED},
    {Kw::When, "7.21.5", "description? reference?"},
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
