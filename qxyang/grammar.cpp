#include "grammar.h"

#include <array>
#include <string_view>

#include "text.h"

namespace qxyang {

namespace {

/* Children of each statement: '!' exactly one, '+' one or more, '?' at most one, '*' any number, '^' at most one in
 * YANG 1.0 and any number in 1.1. A leading '%' marks what came with YANG 1.1. */
struct Row {
    Kw parent;
    const char *children;
    const char *more = "";
};

constexpr const char *kData = " %anydata* anyxml* choice* container* leaf* leaf-list* list* uses*";
constexpr const char *kDocumented = " description? reference? status?";
constexpr const char *kChecked = " description? error-app-tag? error-message? reference?";
constexpr const char *kBody =
    " %anydata* anyxml* augment* choice* contact? container* description? deviation* extension* feature* grouping*"
    " identity* import* include* leaf* leaf-list* list* notification* organization? reference? revision* rpc* typedef*"
    " uses* yang-version?";
constexpr const char *kOperation = "grouping* if-feature* input? output? typedef* description? reference? status?";
constexpr const char *kAny = "config? description? if-feature* mandatory? must* reference? status? when?";

constexpr Row kRows[] = {
    {Kw::kModule, "namespace! prefix!", kBody},
    {Kw::kSubmodule, "belongs-to!", kBody},
    {Kw::kBelongsTo, "prefix!"},
    {Kw::kImport, "%description? prefix! %reference? revision-date?"},
    {Kw::kInclude, "%description? %reference? revision-date?"},
    {Kw::kRevision, "description? reference?"},
    {Kw::kTypedef, "default? type! units?", kDocumented},
    {Kw::kType, "base^ bit* enum* fraction-digits? length? path? pattern* range? require-instance? type*"},
    {Kw::kContainer,
     "%action* config? grouping* if-feature* must* %notification* presence? typedef* when?"
     " description? reference? status?",
     kData},
    {Kw::kMust, kChecked},
    {Kw::kLeaf, "config? default? if-feature* mandatory? must* type! units? when?", kDocumented},
    {Kw::kLeafList, "config? %default* if-feature* max-elements? min-elements? must* ordered-by? type! units? when?",
     kDocumented},
    {Kw::kList,
     "%action* config? grouping* if-feature* key? max-elements? min-elements? must* %notification* ordered-by?"
     " typedef* unique* when? description? reference? status?",
     kData},
    {Kw::kChoice,
     "%anydata* anyxml* case* %choice* config? container* default? if-feature* leaf* leaf-list* list*"
     " mandatory? when?",
     kDocumented},
    {Kw::kCase, "if-feature* when? description? reference? status?", kData},
    {Kw::kAnydata, kAny},
    {Kw::kAnyxml, kAny},
    {Kw::kGrouping, "%action* grouping* %notification* typedef* description? reference? status?", kData},
    {Kw::kUses, "augment* if-feature* refine* when?", kDocumented},
    {Kw::kRefine,
     "config? default^ description? %if-feature* mandatory? max-elements? min-elements? must* presence?"
     " reference?"},
    {Kw::kRpc, kOperation},
    {Kw::kAction, kOperation},
    {Kw::kInput, "grouping* %must* typedef*", kData},
    {Kw::kOutput, "grouping* %must* typedef*", kData},
    {Kw::kNotification, "grouping* if-feature* %must* typedef* description? reference? status?", kData},
    {Kw::kAugment, "%action* case* if-feature* %notification* when? description? reference? status?", kData},
    {Kw::kIdentity, "base^ %if-feature*", kDocumented},
    {Kw::kExtension, "argument?", kDocumented},
    {Kw::kArgument, "yin-element?"},
    {Kw::kFeature, "if-feature*", kDocumented},
    {Kw::kDeviation, "description? deviate+ reference?"},
    {Kw::kDeviate, "config? default^ mandatory? max-elements? min-elements? must* type? unique* units?"},
    {Kw::kRange, kChecked},
    {Kw::kLength, kChecked},
    {Kw::kPattern, "%modifier?", kChecked},
    {Kw::kEnum, "%if-feature* value?", kDocumented},
    {Kw::kBit, "%if-feature* position?", kDocumented},
    {Kw::kWhen, "description? reference?"},
};

constexpr Kw keywordNamed(std::string_view name)
{
    for (size_t i = 0; i < kKeywordCount; ++i)
        if (kKeywords[i].name == name)
            return static_cast<Kw>(i);
    throw "no such statement";  // not a constant expression: a mistake in the table does not compile
}

struct Tables {
    std::array<std::array<Placement, kKeywordCount>, kKeywordCount> placements{};
    std::array<KeywordSet, kKeywordCount> required{};
};

constexpr void addChild(Tables &tables, Kw parent, std::string_view word)
{
    uint8_t bits = 1;
    if (word.front() == '%') {
        bits |= 8;
        word.remove_prefix(1);
    }
    char count = word.back();
    Kw child = keywordNamed(word.substr(0, word.size() - 1));
    if (count == '?' || count == '!')
        bits |= 2;
    else if (count == '^')
        bits |= 4;
    else if (count != '*' && count != '+')
        throw "no such count";
    tables.placements[static_cast<size_t>(parent)][static_cast<size_t>(child)].bits = bits;
    if (count == '!' || count == '+')
        tables.required[static_cast<size_t>(parent)].add(child);
}

constexpr void addChildren(Tables &tables, Kw parent, std::string_view words)
{
    while (!words.empty()) {
        size_t end = words.find(' ');
        if (end != 0)
            addChild(tables, parent, words.substr(0, end));
        words.remove_prefix(end == std::string_view::npos ? words.size() : end + 1);
    }
}

constexpr Tables makeTables()
{
    Tables tables;
    for (const Row &row : kRows) {
        addChildren(tables, row.parent, row.children);
        addChildren(tables, row.parent, row.more);
    }
    return tables;
}

constexpr Tables kTables = makeTables();

}  // namespace

Placement placementOf(Kw parent, Kw child)
{
    return kTables.placements[static_cast<size_t>(parent)][static_cast<size_t>(child)];
}

const KeywordSet &requiredIn(Kw parent)
{
    return kTables.required[static_cast<size_t>(parent)];
}

bool isDeviateProperty(DeviateKind kind, Kw child)
{
    switch (child) {
        case Kw::kDefault:
        case Kw::kUnits:
            return kind != DeviateKind::kNotSupported;
        case Kw::kMust:
        case Kw::kUnique:
            return kind == DeviateKind::kAdd || kind == DeviateKind::kDelete;
        case Kw::kType:
            return kind == DeviateKind::kReplace;
        default:
            return kind == DeviateKind::kAdd || kind == DeviateKind::kReplace;
    }
}

}  // namespace qxyang
