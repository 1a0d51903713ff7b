#include "statement_recorder.h"

#include <array>
#include <cstring>

#include "argument_form.h"
#include "text.h"

namespace qxyang {

namespace {

constexpr std::array<uint16_t, kKeywordCount> makeProperties()
{
    std::array<uint16_t, kKeywordCount> properties{};
    auto set = [&properties](Kw keyword, uint16_t property) { properties[static_cast<size_t>(keyword)] = property; };
    set(Kw::kConfig, kSetsConfig);
    set(Kw::kDefault, kSetsDefault);
    set(Kw::kMandatory, kSetsMandatory);
    set(Kw::kMaxElements, kSetsMaxElements);
    set(Kw::kMinElements, kSetsMinElements);
    set(Kw::kMust, kSetsMust);
    set(Kw::kPresence, kSetsPresence);
    set(Kw::kUnits, kSetsUnits);
    set(Kw::kType, kSetsType);
    set(Kw::kUnique, kSetsUnique);
    set(Kw::kTypedef, kHasDefinitions);
    set(Kw::kGrouping, kHasDefinitions);
    return properties;
}

/* What a statement says of the one around it. */
constexpr std::array<uint16_t, kKeywordCount> kProperties = makeProperties();

DeviateKind deviateKind(std::string_view argument)
{
    if (argument == "add")
        return DeviateKind::kAdd;
    if (argument == "replace")
        return DeviateKind::kReplace;
    return argument == "delete" ? DeviateKind::kDelete : DeviateKind::kNotSupported;
}

}  // namespace

StatementRecorder::StatementRecorder(Unit &unit, Failures &failures)
    : unit_(unit), failures_(failures), names_(unit.module->texts)
{
    frames_.reserve(64);
}

/* ---- statements ------------------------------------------------------------------------------------------------ */

void StatementRecorder::startStatement(std::string_view name, const char **attributes, uint32_t offset)
{
    Frame *parent = frames_.empty() ? nullptr : &frames_.back();
    // Statements within an extension statement are the extension's own affair.
    bool isSkipped = skipped_ > 0 || (parent != nullptr &&
                                      (parent->keyword == Kw::kInstance || isArgumentElement(*parent, name, offset)));
    Kw keyword = isSkipped ? Kw::kStatements : findKeyword(name);
    if (!isSkipped && keyword == Kw::kStatements) {
        NearestName nearest(name);
        for (const Keyword &candidate : kKeywords)
            nearest.offer(candidate.name);
        fail(offset, "unknown statement " + quoted(name) + nearest.hint());
    }
    if (keyword == Kw::kStatements || !isPlaced(parent, keyword, offset)) {
        ++skipped_;
        if (parent != nullptr)
            parent->hasChild = true;
        return;
    }
    Frame frame{.keyword = keyword, .offset = offset};
    const Keyword &info = keywordOf(keyword);
    Argument argument = argumentOf(info, attributes, offset);
    bool isRecorded = parent == nullptr || parent->statement != nullptr;
    if (isRecorded && parent != nullptr)
        parent->statement->properties |= kProperties[static_cast<size_t>(keyword)];
    if (isRecorded && info.isRecorded())
        record(frame, argument);
    if (keyword == Kw::kYangVersion)
        unit_.isVersion11 = argument == "1.1";
    frames_.push_back(frame);
}

/* Whether the element is the argument of the statement around it. */
bool StatementRecorder::isArgumentElement(Frame &parent, std::string_view name, uint32_t offset)
{
    const Keyword &keyword = keywordOf(parent.keyword);
    if (!keyword.inElement() || name != keyword.argument)
        return false;
    if (parent.hasText)
        fail(offset, "second element " + quoted(name) + " in " + describe(parent) + "; only one is allowed");
    parent.hasText = true;
    return true;
}

bool StatementRecorder::isPlaced(Frame *parent, Kw keyword, uint32_t offset)
{
    std::string_view name = keywordOf(keyword).name;
    if (parent == nullptr) {
        if (keyword == Kw::kModule || keyword == Kw::kSubmodule)
            return true;
        fail(offset, "the root element is " + quoted(name) + "; expected 'module' or 'submodule'");
        return false;
    }
    Placement placement = placementOf(parent->keyword, keyword);
    bool isAllowed = placement.allowed();
    if (parent->keyword == Kw::kDeviate)
        isAllowed = isAllowed && isPlacedInDeviate(*parent, keyword);
    if (!isAllowed) {
        fail(offset, quoted(name) + " is not allowed in " + describe(*parent));
        return false;
    }
    if (placement.since11() && !unit_.isVersion11) {
        fail(offset, quoted(name) + " in " + describe(*parent) + " needs yang-version 1.1");
        return false;
    }
    bool single = placement.single() || (placement.singleIn10() && !unit_.isVersion11);
    if (single && parent->seen.has(keyword)) {
        fail(offset, "second " + quoted(name) + " in " + describe(*parent) + "; only one is allowed");
        return false;
    }
    if (keyword == Kw::kYangVersion && !kBeforeVersion.hasAll(parent->seen))
        fail(offset, "'yang-version' must stand before everything that the version matters to");
    parent->seen.add(keyword);
    return true;
}

bool StatementRecorder::isPlacedInDeviate(const Frame &deviate, Kw keyword) const
{
    return deviate.statement == nullptr ||
           isDeviateProperty(static_cast<DeviateKind>(deviate.statement->detail), keyword);
}

StatementRecorder::Argument StatementRecorder::argumentOf(const Keyword &keyword, const char **attributes,
                                                          uint32_t offset)
{
    const char *expected = keyword.inElement() ? nullptr : keyword.argument;
    const char *value = nullptr;
    for (; attributes[0] != nullptr; attributes += 2) {
        if (expected != nullptr && std::strcmp(attributes[0], expected) == 0)
            value = attributes[1];
        else
            failAttribute(attributes[0], keyword, offset);
    }
    if (expected == nullptr)
        return {};
    if (value == nullptr) {
        fail(offset, quoted(keyword.name) + " has no attribute " + quoted(expected));
        return {};
    }
    Argument argument = value;
    if (hasForm(keyword.form, argument))
        return argument;
    fail(offset, "attribute " + quoted(expected) + " of " + quoted(keyword.name) + " is " + quoted(argument) +
                     "; expected " + expectedOf(keyword.form));
    return {};
}

/* Attributes of other namespaces are nobody's business here. */
void StatementRecorder::failAttribute(std::string_view name, const Keyword &keyword, uint32_t offset)
{
    if (name.find(kNamespaceSeparator) != std::string_view::npos)
        return;
    NearestName nearest(name);
    if (!keyword.inElement() && keyword.argument != nullptr)
        nearest.offer(keyword.argument);
    fail(offset, "unknown attribute " + quoted(name) + " of " + quoted(keyword.name) + nearest.hint());
}

void StatementRecorder::record(Frame &frame, Argument argument)
{
    countStatement(frame.offset);
    auto *statement = unit_.statements.make<Statement>();
    statement->keyword = frame.keyword;
    statement->offset = frame.offset;
    if (frame.keyword == Kw::kType) {
        statement->detail = builtinTypeNumber(argument);
        if (statement->detail != 0)
            statement->argument = builtinTypeName(statement->detail).data();
    } else if (frame.keyword == Kw::kDeviate) {
        statement->detail = static_cast<uint8_t>(deviateKind(argument));
    }
    if (argument.data() == nullptr)
        statement->argument = "";
    else if (statement->argument == nullptr)
        statement->argument =
            keywordOf(frame.keyword).isNamed() ? names_.keep(argument) : unit_.statements.text(argument);
    frame.statement = statement;
    frame.tail = &statement->first;
    link(frame);
}

void StatementRecorder::link(const Frame &frame)
{
    if (frames_.empty()) {
        unit_.root = frame.statement;
        return;
    }
    Frame &parent = frames_.back();
    *parent.tail = frame.statement;
    parent.tail = &frame.statement->next;
}

void StatementRecorder::countStatement(uint32_t offset)
{
    if (++statements_ <= limits::kStatements)
        return;
    fail(offset, "the file has more than " + std::to_string(limits::kStatements) + " statements");
    throw LoadStopped{};
}

/* ---- extension statements -------------------------------------------------------------------------------------- */

void StatementRecorder::startExtension(std::string_view space, std::string_view name, const char **attributes,
                                       uint32_t offset)
{
    if (skipped_ > 0) {
        ++skipped_;
        return;
    }
    Frame &parent = frames_.back();
    parent.hasChild = true;
    Frame frame{.keyword = Kw::kInstance, .offset = offset};
    frame.use = useOf(space, name, parent, offset);
    bool isKept = parent.keyword == Kw::kInstance || keywordOf(parent.keyword).isKept();
    if (isKept && parent.statement != nullptr)
        recordInstance(frame, attributes);
    textWanted_ = textWanted_ || frame.statement != nullptr;
    text_.clear();
    frames_.push_back(frame);
}

void StatementRecorder::skipElement(uint32_t offset, std::string_view sentence)
{
    if (skipped_++ == 0)
        fail(offset, sentence);
}

/* Which attribute is the argument is only known when the extension's definition is. */
void StatementRecorder::recordInstance(Frame &frame, const char **attributes)
{
    countStatement(frame.offset);
    auto *statement = unit_.statements.make<ExtensionStatement>();
    statement->keyword = Kw::kInstance;
    statement->offset = frame.offset;
    statement->use = frame.use;
    frame.statement = statement;
    frame.tail = &statement->first;
    link(frame);
    for (; attributes[0] != nullptr; attributes += 2) {
        if (std::strchr(attributes[0], kNamespaceSeparator) != nullptr)
            continue;
        if (statement->attribute != nullptr)
            fail(frame.offset, "extension statement " + quoted(frame.use->keyword) +
                                   " has more than one attribute; its argument is one");
        statement->attribute = keptAttribute(*frame.use, attributes[0]);
        statement->argument = names_.keep(attributes[1]);
    }
}

/* Nearly always all statements with a keyword have the same attribute. */
const char *StatementRecorder::keptAttribute(ExtensionUse &use, const char *name)
{
    if (use.attribute == nullptr)
        use.attribute = unit_.statements.text(name);
    return std::strcmp(use.attribute, name) == 0 ? use.attribute : unit_.statements.text(name);
}

ExtensionUse *StatementRecorder::useOf(std::string_view space, std::string_view name, const Frame &parent,
                                       uint32_t offset)
{
    // Both stand in one text, with the separator in between.
    std::string_view key(space.data(), space.size() + 1 + name.size());
    bool isWithin = parent.use != nullptr && parent.use->space == space;
    if (isWithin) {
        key_.assign(parent.use->keyword).append(1, kNamespaceSeparator).append(key);
        key = key_;
    }
    if (ExtensionUse *known = unit_.extensionUses.find(key))
        return known;
    auto *use = unit_.statements.make<ExtensionUse>();
    use->name = unit_.statements.text(key);
    use->keyword = use->name + key.size() - name.size();
    use->space = std::string_view(use->keyword - 1 - space.size(), space.size());
    use->above = isWithin ? parent.use : nullptr;
    use->offset = offset;
    unit_.extensionUses.insert(use);
    return use;
}

/* ---- ends ------------------------------------------------------------------------------------------------------ */

void StatementRecorder::end()
{
    if (skipped_ > 0) {
        --skipped_;
        return;
    }
    const Frame &frame = frames_.back();
    if (frame.keyword == Kw::kInstance)
        endExtension(frame);
    else
        endStatement(frame);
    frames_.pop_back();
}

void StatementRecorder::endStatement(const Frame &frame)
{
    const Keyword &info = keywordOf(frame.keyword);
    if (info.inElement() && !frame.hasText)
        fail(frame.offset, quoted(info.name) + " has no element " + quoted(info.argument));
    const KeywordSet &required = requiredIn(frame.keyword);
    if (frame.seen.hasAll(required))
        return;
    for (size_t i = 0; i < kKeywordCount; ++i)
        if (Kw keyword = static_cast<Kw>(i); required.has(keyword) && !frame.seen.has(keyword))
            fail(frame.offset, describe(frame) + " has no " + quoted(keywordOf(keyword).name));
}

/* Text counts where nothing else stands: it may be the argument of the extension statement around. */
void StatementRecorder::endExtension(const Frame &frame)
{
    if (frame.statement == nullptr)
        return;
    if (!frame.hasChild && frame.statement->argument == nullptr) {
        frame.statement->argument = names_.keep(trim(text_));
        frame.statement->properties |= kHasText;
    }
    textWanted_ = frames_[frames_.size() - 2].keyword == Kw::kInstance;
}

std::string StatementRecorder::describe(const Frame &frame) const
{
    if (frame.keyword == Kw::kInstance)
        return quoted(frame.use->keyword);
    std::string text(keywordOf(frame.keyword).name);
    bool isNamed = frame.statement != nullptr && frame.statement->argument[0] != '\0';
    return isNamed ? text + " " + quoted(frame.statement->argument) : text;
}

std::string StatementRecorder::describeOpen() const
{
    return skipped_ > 0 || frames_.empty() ? std::string() : describe(frames_.back());
}

}  // namespace qxyang
