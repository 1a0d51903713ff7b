/* The statements of YANG and how YIN writes their arguments: RFC 7950, 13.1. */
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace qxyang {

enum class Kw : uint8_t {
    Action,
    Anydata,
    Anyxml,
    Argument,
    Augment,
    Base,
    BelongsTo,
    Bit,
    Case,
    Choice,
    Config,
    Contact,
    Container,
    Default,
    Description,
    Deviate,
    Deviation,
    Enum,
    ErrorAppTag,
    ErrorMessage,
    Extension,
    Feature,
    FractionDigits,
    Grouping,
    Identity,
    IfFeature,
    Import,
    Include,
    Input,
    Key,
    Leaf,
    LeafList,
    Length,
    List,
    Mandatory,
    MaxElements,
    MinElements,
    Modifier,
    Module,
    Must,
    Namespace,
    Notification,
    OrderedBy,
    Organization,
    Output,
    Path,
    Pattern,
    Position,
    Prefix,
    Presence,
    Range,
    Reference,
    Refine,
    RequireInstance,
    Revision,
    RevisionDate,
    Rpc,
    Status,
    Submodule,
    Type,
    Typedef,
    Unique,
    Units,
    Uses,
    Value,
    When,
    YangVersion,
    YinElement,
    None,     /* no statement of YANG */
    Instance, /* an extension statement, whatever its keyword is */
};

/* Statements of YANG. Their keywords come first and follow the alphabet. */
inline constexpr size_t KEYWORD_COUNT = static_cast<size_t>(Kw::YinElement) + 1;

/* All values of Kw, to index tables by. */
inline constexpr size_t KW_COUNT = static_cast<size_t>(Kw::Instance) + 1;

/* What an argument must look like, with the section of RFC 7950 that says so. Arguments that are parsed later,
 * ranges and paths for example, only have to be NonEmpty here. */
enum class ArgumentForm : uint8_t {
    None,
    Text,
    Identifier,     /* 6.2 */
    Reference,      /* an identifier, with or without a prefix: 5.1, 7.1.4 */
    Boolean,        /* 7.6.5, 7.19.2.2, 7.21.1, 9.9.3 */
    Date,           /* 7.1.9 */
    Status,         /* 7.21.2 */
    OrderedBy,      /* 7.7.7 */
    YangVersion,    /* 7.1.2 */
    DeviateKind,    /* 7.20.3.2 */
    Modifier,       /* 9.4.6 */
    Integer,        /* 9.6.4.2 */
    Position,       /* 9.7.4.2 */
    Count,          /* 7.7.5 */
    Maximum,        /* 7.7.6 */
    FractionDigits, /* 9.3.4 */
    EnumName,       /* 9.6.4 */
    NonEmpty,
    Condition, /* 7.5.3, 7.21.5; of the XPath expression only quotes and brackets are checked */
};

/* What is done with a statement. */
enum KeywordUse : uint8_t {
    CHECKED = 0,               /* looked at while the file is parsed, then forgotten */
    IN_ELEMENT = 1 << 0,       /* in YIN its argument is a child element; no later stage reads it */
    RECORDED = 1 << 1,         /* later stages read it */
    NAMED = RECORDED | 1 << 2, /* its argument outlives the load: it becomes the name of something kept */
    KEPT = 1 << 3,             /* extension statements on it are kept */
    NODE = NAMED | KEPT,
};

struct Keyword {
    std::string_view name;
    const char *argument; /* name of the argument's attribute or element */
    ArgumentForm form;
    uint8_t use = CHECKED;

    constexpr bool InElement() const { return (use & IN_ELEMENT) != 0; }
    constexpr bool IsRecorded() const { return (use & RECORDED) != 0; }
    constexpr bool IsNamed() const { return (use & NAMED) == NAMED; }
    constexpr bool IsKept() const { return (use & KEPT) != 0; }
};

inline constexpr Keyword KEYWORDS[KEYWORD_COUNT] = {
    {"action", "name", ArgumentForm::Identifier, NODE},
    {"anydata", "name", ArgumentForm::Identifier, NODE},
    {"anyxml", "name", ArgumentForm::Identifier, NODE},
    {"argument", "name", ArgumentForm::Identifier, NAMED},
    {"augment", "target-node", ArgumentForm::NonEmpty, NODE},
    {"base", "name", ArgumentForm::Reference, RECORDED},
    {"belongs-to", "module", ArgumentForm::Identifier, RECORDED},
    {"bit", "name", ArgumentForm::Identifier, NAMED},
    {"case", "name", ArgumentForm::Identifier, NODE},
    {"choice", "name", ArgumentForm::Identifier, NODE},
    {"config", "value", ArgumentForm::Boolean},
    {"contact", "text", ArgumentForm::None, IN_ELEMENT},
    {"container", "name", ArgumentForm::Identifier, NODE},
    {"default", "value", ArgumentForm::Text, RECORDED},
    {"description", "text", ArgumentForm::None, IN_ELEMENT},
    {"deviate", "value", ArgumentForm::DeviateKind, RECORDED | KEPT},
    {"deviation", "target-node", ArgumentForm::NonEmpty, RECORDED},
    {"enum", "name", ArgumentForm::EnumName, NAMED},
    {"error-app-tag", "value", ArgumentForm::Text},
    {"error-message", "value", ArgumentForm::None, IN_ELEMENT},
    {"extension", "name", ArgumentForm::Identifier, NAMED},
    {"feature", "name", ArgumentForm::Identifier, NAMED},
    {"fraction-digits", "value", ArgumentForm::FractionDigits, RECORDED},
    {"grouping", "name", ArgumentForm::Identifier, NAMED},
    {"identity", "name", ArgumentForm::Identifier, NAMED},
    {"if-feature", "name", ArgumentForm::NonEmpty, RECORDED},
    {"import", "module", ArgumentForm::Identifier, RECORDED},
    {"include", "module", ArgumentForm::Identifier, RECORDED},
    {"input", nullptr, ArgumentForm::None, RECORDED | KEPT},
    {"key", "value", ArgumentForm::NonEmpty, RECORDED},
    {"leaf", "name", ArgumentForm::Identifier, NODE},
    {"leaf-list", "name", ArgumentForm::Identifier, NODE},
    {"length", "value", ArgumentForm::NonEmpty, RECORDED},
    {"list", "name", ArgumentForm::Identifier, NODE},
    {"mandatory", "value", ArgumentForm::Boolean},
    {"max-elements", "value", ArgumentForm::Maximum, RECORDED},
    {"min-elements", "value", ArgumentForm::Count, RECORDED},
    {"modifier", "value", ArgumentForm::Modifier},
    {"module", "name", ArgumentForm::Identifier, RECORDED | KEPT},
    {"must", "condition", ArgumentForm::Condition},
    {"namespace", "uri", ArgumentForm::NonEmpty, RECORDED},
    {"notification", "name", ArgumentForm::Identifier, NODE},
    {"ordered-by", "value", ArgumentForm::OrderedBy},
    {"organization", "text", ArgumentForm::None, IN_ELEMENT},
    {"output", nullptr, ArgumentForm::None, RECORDED | KEPT},
    {"path", "value", ArgumentForm::NonEmpty, RECORDED},
    {"pattern", "value", ArgumentForm::Text, RECORDED},
    {"position", "value", ArgumentForm::Position, RECORDED},
    {"prefix", "value", ArgumentForm::Identifier, RECORDED},
    {"presence", "value", ArgumentForm::Text},
    {"range", "value", ArgumentForm::NonEmpty, RECORDED},
    {"reference", "text", ArgumentForm::None, IN_ELEMENT},
    {"refine", "target-node", ArgumentForm::NonEmpty, RECORDED | KEPT},
    {"require-instance", "value", ArgumentForm::Boolean, RECORDED},
    {"revision", "date", ArgumentForm::Date, RECORDED},
    {"revision-date", "date", ArgumentForm::Date, RECORDED},
    {"rpc", "name", ArgumentForm::Identifier, NODE},
    {"status", "value", ArgumentForm::Status},
    {"submodule", "name", ArgumentForm::Identifier, RECORDED | KEPT},
    {"type", "name", ArgumentForm::Reference, RECORDED},
    {"typedef", "name", ArgumentForm::Identifier, NAMED},
    {"unique", "tag", ArgumentForm::NonEmpty, RECORDED},
    {"units", "name", ArgumentForm::Text},
    {"uses", "name", ArgumentForm::Reference, RECORDED},
    {"value", "value", ArgumentForm::Integer, RECORDED},
    {"when", "condition", ArgumentForm::Condition},
    {"yang-version", "value", ArgumentForm::YangVersion},
    {"yin-element", "value", ArgumentForm::Boolean, RECORDED},
};

inline const Keyword &KeywordOf(Kw keyword)
{
    return KEYWORDS[static_cast<size_t>(keyword)];
}

/* The statement of that name, or Kw::None. */
Kw FindKeyword(std::string_view name);

} // namespace qxyang
