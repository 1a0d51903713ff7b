#include "syntax/statement_recorder.h"

#include <cstring>

#include "base/text.h"
#include "syntax/argument_form.h"
#include "syntax/extension_hints.h"

namespace qxyang {

namespace {

uint16_t PropertiesOf(Kw keyword, std::string_view argument)
{
    uint16_t property = PropertyOf(keyword);
    if (keyword == Kw::Config && argument == "false")
        property |= IS_STATE;
    else if (keyword == Kw::Mandatory && argument == "true")
        property |= IS_MANDATORY;
    return property;
}

/* True for statements in a refine or deviate that say what to change: they are compared with the node later. */
bool IsOperand(const auto *parent, Kw keyword)
{
    return parent != nullptr && (parent->keyword == Kw::Refine || parent->keyword == Kw::Deviate) &&
           PropertyOf(keyword) != 0;
}

DeviateKind DeviateKindNamed(std::string_view argument)
{
    if (argument == "add")
        return DeviateKind::Add;
    if (argument == "replace")
        return DeviateKind::Replace;
    return argument == "delete" ? DeviateKind::Delete : DeviateKind::NotSupported;
}

} // namespace

StatementRecorder::StatementRecorder(Unit &unit, Failures &failures)
    : unit_(unit), failures_(failures), names_(unit.module->texts)
{
    frames_.reserve(64);
}

/* ---- statements ------------------------------------------------------------------------------------------------ */

void StatementRecorder::StartStatement(std::string_view name, const char **attributes, uint32_t offset)
{
    bool isArgument = skipped_ == 0 && !frames_.empty() && IsArgumentElement(frames_.back(), name, offset);
    Kw keyword = Place(isArgument ? Kw::None : FindKeyword(name), name, isArgument, offset);
    if (keyword != Kw::None)
        Push(keyword, ArgumentOf(KeywordOf(keyword), attributes, offset), offset);
}

void StatementRecorder::StartCompact(const CompactStatement &statement)
{
    Kw keyword = FindKeyword(statement.keyword);
    if (keyword == Kw::None && statement.keyword.find(':') != std::string_view::npos)
        return StartCompactExtension(statement);
    keyword = Place(keyword, statement.keyword, false, statement.offset);
    if (keyword != Kw::None)
        Push(keyword, CompactArgumentOf(KeywordOf(keyword), statement), statement.offset);
}

/* The keyword itself, or Kw::None: then the statement is skipped with all that stands in it. */
Kw StatementRecorder::Place(Kw keyword, std::string_view name, bool isArgument, uint32_t offset)
{
    Frame *parent = frames_.empty() ? nullptr : &frames_.back();
    // What YANG statements within an extension statement mean is the extension's to define: RFC 7950, 6.3.1.
    bool isSkipped = skipped_ > 0 || isArgument || (parent != nullptr && parent->keyword == Kw::Instance);
    if (!isSkipped && keyword == Kw::None) {
        failures_.Add(unit_.source, offset, "unknown statement " + Quoted(name), [&] {
            std::string hint = unit_.hints->Hint(unit_, name);
            NearestName nearest(name);
            for (const Keyword &candidate : KEYWORDS)
                nearest.Offer(candidate.name);
            return hint.empty() ? nearest.Hint() : hint;
        });
    }
    if (!isSkipped && keyword != Kw::None && IsPlaced(parent, keyword, offset))
        return keyword;
    ++skipped_;
    if (parent != nullptr)
        parent->hasChild = true;
    return Kw::None;
}

void StatementRecorder::Push(Kw keyword, Argument argument, uint32_t offset)
{
    Frame *parent = frames_.empty() ? nullptr : &frames_.back();
    Frame frame{.keyword = keyword, .hasArgument = unit_.source.IsCompact(), .offset = offset};
    const Keyword &info = KeywordOf(keyword);
    bool isRecorded = parent == nullptr || parent->statement != nullptr;
    if (isRecorded && parent != nullptr)
        parent->statement->properties |= PropertiesOf(keyword, argument);
    if (isRecorded && (info.IsRecorded() || IsOperand(parent, keyword)))
        Record(frame, argument);
    if (keyword == Kw::YangVersion)
        unit_.isVersion11 = argument == "1.1";
    frames_.push_back(frame);
}

/* True if the element is the argument of the statement around it: RFC 7950, 13.1. Not for extension statements. */
bool StatementRecorder::IsArgumentElement(Frame &parent, std::string_view name, uint32_t offset)
{
    if (parent.keyword == Kw::Instance)
        return false;
    const Keyword &keyword = KeywordOf(parent.keyword);
    if (!keyword.InElement() || name != keyword.argument)
        return false;
    if (parent.hasArgument)
        Fail(offset, "second element " + Quoted(name) + " in " + Describe(parent) + "; only one is allowed");
    parent.hasArgument = true;
    return true;
}

bool StatementRecorder::IsPlaced(Frame *parent, Kw keyword, uint32_t offset)
{
    std::string_view name = KeywordOf(keyword).name;
    if (parent == nullptr) {
        if (keyword == Kw::Module || keyword == Kw::Submodule)
            return true;
        std::string what = unit_.source.IsCompact() ? "the file begins with " : "the root element is ";
        Fail(offset, what + Quoted(name) + "; expected 'module' or 'submodule'");
        return false;
    }
    Placement placement = PlacementOf(parent->keyword, keyword);
    bool isAllowed = placement.Has(Placement::ALLOWED);
    if (parent->keyword == Kw::Deviate)
        isAllowed = isAllowed && IsPlacedInDeviate(*parent, keyword);
    if (!isAllowed) {
        Fail(offset, Quoted(name) + " is not allowed in " + Describe(*parent));
        return false;
    }
    if (placement.Has(Placement::SINCE_11) && !unit_.isVersion11) {
        Fail(offset, Quoted(name) + " in " + Describe(*parent) + " needs yang-version 1.1");
        return false;
    }
    bool isSingle = placement.Has(Placement::SINGLE) || (placement.Has(Placement::SINGLE_IN_10) && !unit_.isVersion11);
    if (isSingle && parent->seen.Has(keyword)) {
        Fail(offset, "second " + Quoted(name) + " in " + Describe(*parent) + "; only one is allowed");
        return false;
    }
    if (keyword == Kw::YangVersion && !BEFORE_VERSION.HasAll(parent->seen))
        Fail(offset, "'yang-version' must stand before everything that the version matters to");
    parent->seen.Add(keyword);
    return true;
}

bool StatementRecorder::IsPlacedInDeviate(const Frame &deviate, Kw keyword) const
{
    return deviate.statement == nullptr || IsDeviateProperty(deviate.statement->deviateKind, keyword);
}

StatementRecorder::Argument StatementRecorder::ArgumentOf(const Keyword &keyword, const char **attributes,
                                                          uint32_t offset)
{
    const char *expected = keyword.InElement() ? nullptr : keyword.argument;
    const char *value = nullptr;
    for (; attributes[0] != nullptr; attributes += 2)
        if (expected != nullptr && std::strcmp(attributes[0], expected) == 0)
            value = attributes[1];
        else
            FailAttribute(attributes[0], keyword, offset);
    if (expected == nullptr)
        return {};
    if (value == nullptr) {
        Fail(offset, Quoted(keyword.name) + " has no attribute " + Quoted(expected));
        return {};
    }
    Argument argument = value;
    if (HasForm(keyword.form, argument))
        return argument;
    Fail(offset, "attribute " + Quoted(expected) + " of " + Quoted(keyword.name) + " is " + Quoted(argument) +
                     "; expected " + ExpectedOf(keyword.form));
    return {};
}

StatementRecorder::Argument StatementRecorder::CompactArgumentOf(const Keyword &keyword,
                                                                 const CompactStatement &statement)
{
    bool isGiven = statement.argument.data() != nullptr;
    if (keyword.argument == nullptr) {
        if (isGiven)
            Fail(statement.argumentBegin, Quoted(keyword.name) + " takes no argument; expected ';' or '{'");
        return {};
    }
    if (!isGiven) {
        Fail(statement.offset, Quoted(keyword.name) + " has no argument; expected " + ExpectedOf(keyword.form));
        return {};
    }
    if (HasForm(keyword.form, statement.argument))
        return statement.argument;
    Fail(statement.argumentBegin, "the argument of " + Quoted(keyword.name) + " is " + Quoted(statement.argument) +
                                      "; expected " + ExpectedOf(keyword.form));
    return {};
}

/* The attribute that holds the argument is in no namespace: RFC 7950, 13.1. Attributes that are in one are ignored. */
void StatementRecorder::FailAttribute(std::string_view name, const Keyword &keyword, uint32_t offset)
{
    if (name.find(NAMESPACE_SEPARATOR) != std::string_view::npos)
        return;
    NearestName nearest(name);
    if (!keyword.InElement() && keyword.argument != nullptr)
        nearest.Offer(keyword.argument);
    Fail(offset, "unknown attribute " + Quoted(name) + " of " + Quoted(keyword.name) + nearest.Hint());
}

void StatementRecorder::Record(Frame &frame, Argument argument)
{
    CountStatement(frame.offset);
    auto *statement = unit_.statements.Make<Statement>();
    statement->keyword = frame.keyword;
    statement->offset = frame.offset;
    if (frame.keyword == Kw::Type) {
        statement->builtinType = BuiltinTypeNumber(argument);
        if (statement->builtinType != 0)
            statement->argument = BuiltinTypeName(statement->builtinType).data();
    } else if (frame.keyword == Kw::Deviate) {
        statement->deviateKind = DeviateKindNamed(argument);
    }
    if (argument.data() == nullptr)
        statement->argument = "";
    else if (statement->argument == nullptr)
        statement->argument =
            KeywordOf(frame.keyword).IsNamed() ? names_.Keep(argument) : unit_.statements.Text(argument);
    frame.statement = statement;
    frame.tail = &statement->first;
    Link(frame);
}

void StatementRecorder::Link(const Frame &frame)
{
    if (frames_.empty()) {
        unit_.root = frame.statement;
        return;
    }
    Frame &parent = frames_.back();
    *parent.tail = frame.statement;
    parent.tail = &frame.statement->next;
}

void StatementRecorder::CountStatement(uint32_t offset)
{
    if (++statements_ <= limits::STATEMENTS)
        return;
    Fail(offset, "the file has more than " + std::to_string(limits::STATEMENTS) + " statements");
    throw LoadStopped{};
}

/* ---- ends ------------------------------------------------------------------------------------------------------ */

void StatementRecorder::End()
{
    if (skipped_ > 0) {
        --skipped_;
        return;
    }
    const Frame &frame = frames_.back();
    if (frame.keyword == Kw::Instance)
        EndExtension(frame);
    else
        EndStatement(frame);
    frames_.pop_back();
}

void StatementRecorder::EndStatement(const Frame &frame)
{
    const Keyword &info = KeywordOf(frame.keyword);
    if (info.InElement() && !frame.hasArgument)
        Fail(frame.offset, Quoted(info.name) + " has no element " + Quoted(info.argument));
    const KeywordSet &required = RequiredIn(frame.keyword);
    if (frame.seen.HasAll(required))
        return;
    for (size_t i = 0; i < KEYWORD_COUNT; ++i)
        if (Kw keyword = static_cast<Kw>(i); required.Has(keyword) && !frame.seen.Has(keyword))
            Fail(frame.offset, Describe(frame) + " has no " + Quoted(KeywordOf(keyword).name));
}

std::string StatementRecorder::Describe(const Frame &frame) const
{
    if (frame.keyword == Kw::Instance)
        return Quoted(frame.use->keyword);
    std::string text(KeywordOf(frame.keyword).name);
    bool isNamed = frame.statement != nullptr && frame.statement->argument[0] != '\0';
    return isNamed ? text + " " + Quoted(frame.statement->argument) : text;
}

std::string StatementRecorder::DescribeOpen() const
{
    return skipped_ > 0 || frames_.empty() ? std::string() : Describe(frames_.back());
}

} // namespace qxyang
