/* The statements of YANG and how YIN writes their arguments. */
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace qxyang {

enum class Kw : uint8_t {
    kAction,
    kAnydata,
    kAnyxml,
    kArgument,
    kAugment,
    kBase,
    kBelongsTo,
    kBit,
    kCase,
    kChoice,
    kConfig,
    kContact,
    kContainer,
    kDefault,
    kDescription,
    kDeviate,
    kDeviation,
    kEnum,
    kErrorAppTag,
    kErrorMessage,
    kExtension,
    kFeature,
    kFractionDigits,
    kGrouping,
    kIdentity,
    kIfFeature,
    kImport,
    kInclude,
    kInput,
    kKey,
    kLeaf,
    kLeafList,
    kLength,
    kList,
    kMandatory,
    kMaxElements,
    kMinElements,
    kModifier,
    kModule,
    kMust,
    kNamespace,
    kNotification,
    kOrderedBy,
    kOrganization,
    kOutput,
    kPath,
    kPattern,
    kPosition,
    kPrefix,
    kPresence,
    kRange,
    kReference,
    kRefine,
    kRequireInstance,
    kRevision,
    kRevisionDate,
    kRpc,
    kStatus,
    kSubmodule,
    kType,
    kTypedef,
    kUnique,
    kUnits,
    kUses,
    kValue,
    kWhen,
    kYangVersion,
    kYinElement,
    kStatements,             /* number of YANG statements; no statement has it */
    kInstance = kStatements, /* an extension statement */
};

inline constexpr size_t kKeywordCount = static_cast<size_t>(Kw::kStatements);

/* What an argument must look like. */
enum class ArgumentForm : uint8_t {
    kNone,
    kText,
    kIdentifier,
    kReference,
    kBoolean,
    kDate,
    kStatus,
    kOrderedBy,
    kYangVersion,
    kDeviateKind,
    kModifier,
    kInteger,
    kCount,
    kMaximum,
    kFractionDigits,
    kEnumName,
    kNonEmpty,
};

/* What is done with a statement. */
enum KeywordUse : uint8_t {
    kChecked = 0,                /* looked at while the file is parsed, then forgotten */
    kInElement = 1 << 0,         /* its argument is a child element, a text that nobody asks for */
    kRecorded = 1 << 1,          /* later stages read it */
    kNamed = kRecorded | 1 << 2, /* its argument outlives the load: it becomes the name of something kept */
    kKept = 1 << 3,              /* extension statements on it are kept */
    kNode = kNamed | kKept,
};

struct Keyword {
    std::string_view name;
    const char *argument; /* name of the argument's attribute or element */
    ArgumentForm form;
    uint8_t use = kChecked;

    constexpr bool inElement() const { return (use & kInElement) != 0; }
    constexpr bool isRecorded() const { return (use & kRecorded) != 0; }
    constexpr bool isNamed() const { return (use & kNamed) == kNamed; }
    constexpr bool isKept() const { return (use & kKept) != 0; }
};

inline constexpr Keyword kKeywords[kKeywordCount] = {
    {"action", "name", ArgumentForm::kIdentifier, kNode},
    {"anydata", "name", ArgumentForm::kIdentifier, kNode},
    {"anyxml", "name", ArgumentForm::kIdentifier, kNode},
    {"argument", "name", ArgumentForm::kIdentifier, kNamed},
    {"augment", "target-node", ArgumentForm::kNonEmpty, kNode},
    {"base", "name", ArgumentForm::kReference, kRecorded},
    {"belongs-to", "module", ArgumentForm::kIdentifier, kRecorded},
    {"bit", "name", ArgumentForm::kIdentifier, kNamed},
    {"case", "name", ArgumentForm::kIdentifier, kNode},
    {"choice", "name", ArgumentForm::kIdentifier, kNode},
    {"config", "value", ArgumentForm::kBoolean},
    {"contact", "text", ArgumentForm::kNone, kInElement},
    {"container", "name", ArgumentForm::kIdentifier, kNode},
    {"default", "value", ArgumentForm::kText},
    {"description", "text", ArgumentForm::kNone, kInElement},
    {"deviate", "value", ArgumentForm::kDeviateKind, kRecorded | kKept},
    {"deviation", "target-node", ArgumentForm::kNonEmpty, kRecorded},
    {"enum", "name", ArgumentForm::kEnumName, kNamed},
    {"error-app-tag", "value", ArgumentForm::kText},
    {"error-message", "value", ArgumentForm::kNone, kInElement},
    {"extension", "name", ArgumentForm::kIdentifier, kNamed},
    {"feature", "name", ArgumentForm::kIdentifier, kNamed},
    {"fraction-digits", "value", ArgumentForm::kFractionDigits, kRecorded},
    {"grouping", "name", ArgumentForm::kIdentifier, kNamed},
    {"identity", "name", ArgumentForm::kIdentifier, kNamed},
    {"if-feature", "name", ArgumentForm::kNonEmpty, kRecorded},
    {"import", "module", ArgumentForm::kIdentifier, kRecorded},
    {"include", "module", ArgumentForm::kIdentifier, kRecorded},
    {"input", nullptr, ArgumentForm::kNone, kRecorded | kKept},
    {"key", "value", ArgumentForm::kNonEmpty, kRecorded},
    {"leaf", "name", ArgumentForm::kIdentifier, kNode},
    {"leaf-list", "name", ArgumentForm::kIdentifier, kNode},
    {"length", "value", ArgumentForm::kNonEmpty, kRecorded},
    {"list", "name", ArgumentForm::kIdentifier, kNode},
    {"mandatory", "value", ArgumentForm::kBoolean},
    {"max-elements", "value", ArgumentForm::kMaximum},
    {"min-elements", "value", ArgumentForm::kCount},
    {"modifier", "value", ArgumentForm::kModifier},
    {"module", "name", ArgumentForm::kIdentifier, kRecorded | kKept},
    {"must", "condition", ArgumentForm::kText},
    {"namespace", "uri", ArgumentForm::kNonEmpty, kRecorded},
    {"notification", "name", ArgumentForm::kIdentifier, kNode},
    {"ordered-by", "value", ArgumentForm::kOrderedBy},
    {"organization", "text", ArgumentForm::kNone, kInElement},
    {"output", nullptr, ArgumentForm::kNone, kRecorded | kKept},
    {"path", "value", ArgumentForm::kNonEmpty, kRecorded},
    {"pattern", "value", ArgumentForm::kText, kRecorded},
    {"position", "value", ArgumentForm::kCount, kRecorded},
    {"prefix", "value", ArgumentForm::kIdentifier, kRecorded},
    {"presence", "value", ArgumentForm::kText},
    {"range", "value", ArgumentForm::kNonEmpty, kRecorded},
    {"reference", "text", ArgumentForm::kNone, kInElement},
    {"refine", "target-node", ArgumentForm::kNonEmpty, kRecorded | kKept},
    {"require-instance", "value", ArgumentForm::kBoolean, kRecorded},
    {"revision", "date", ArgumentForm::kDate, kRecorded},
    {"revision-date", "date", ArgumentForm::kDate, kRecorded},
    {"rpc", "name", ArgumentForm::kIdentifier, kNode},
    {"status", "value", ArgumentForm::kStatus},
    {"submodule", "name", ArgumentForm::kIdentifier, kRecorded | kKept},
    {"type", "name", ArgumentForm::kReference, kRecorded},
    {"typedef", "name", ArgumentForm::kIdentifier, kNamed},
    {"unique", "tag", ArgumentForm::kNonEmpty, kRecorded},
    {"units", "name", ArgumentForm::kText},
    {"uses", "name", ArgumentForm::kReference, kRecorded},
    {"value", "value", ArgumentForm::kInteger, kRecorded},
    {"when", "condition", ArgumentForm::kText},
    {"yang-version", "value", ArgumentForm::kYangVersion},
    {"yin-element", "value", ArgumentForm::kBoolean, kRecorded},
};

inline const Keyword &keywordOf(Kw keyword)
{
    return kKeywords[static_cast<size_t>(keyword)];
}

/* The statement of that name, or Kw::kStatements. */
Kw findKeyword(std::string_view name);

}  // namespace qxyang
