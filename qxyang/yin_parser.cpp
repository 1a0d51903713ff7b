#include "yin_parser.h"

#include <expat.h>

#include <array>
#include <cstring>
#include <exception>

#include "argument_form.h"
#include "grammar.h"
#include "text.h"
#include "text_cache.h"
#include "xml_memory.h"

namespace qxyang {

namespace {

constexpr std::string_view kYinSpace = "urn:ietf:params:xml:ns:yang:yin:1";

struct ParserDelete {
    void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
};

/* An element that is open. */
struct Frame {
    Kw keyword;
    uint8_t texts = 0;  /* argument elements met, up to one, of a statement whose argument is one */
    int8_t section = 0; /* of a module */
    bool hasChild = false;
    uint32_t offset;
    Statement *statement; /* null: not recorded */
    Statement **tail;     /* where the next recorded child is linked */
    ExtensionUse *use;    /* of an extension statement */
    KeywordSet seen = {};
};

constexpr uint16_t propertyOf(Kw keyword)
{
    switch (keyword) {
        case Kw::kConfig:
            return kSetsConfig;
        case Kw::kDefault:
            return kSetsDefault;
        case Kw::kMandatory:
            return kSetsMandatory;
        case Kw::kMaxElements:
            return kSetsMaxElements;
        case Kw::kMinElements:
            return kSetsMinElements;
        case Kw::kMust:
            return kSetsMust;
        case Kw::kPresence:
            return kSetsPresence;
        case Kw::kUnits:
            return kSetsUnits;
        case Kw::kType:
            return kSetsType;
        case Kw::kUnique:
            return kSetsUnique;
        case Kw::kTypedef:
        case Kw::kGrouping:
            return kHasDefinitions;
        default:
            return 0;
    }
}

DeviateKind deviateKind(std::string_view argument)
{
    if (argument == "add")
        return DeviateKind::kAdd;
    if (argument == "replace")
        return DeviateKind::kReplace;
    return argument == "delete" ? DeviateKind::kDelete : DeviateKind::kNotSupported;
}

class YinParser {
  public:
    YinParser(Unit &unit, Failures &failures) : unit_(unit), failures_(failures), names_(unit.module->texts) {}

    void run();

  private:
    static void XMLCALL onStart(void *self, const XML_Char *name, const XML_Char **attributes);
    static void XMLCALL onEnd(void *self, const XML_Char *name);
    static void XMLCALL onText(void *self, const XML_Char *text, int length);
    static void XMLCALL onDoctype(void *self, const XML_Char *, const XML_Char *, const XML_Char *, int);
    static void XMLCALL onPrefix(void *self, const XML_Char *prefix, const XML_Char *);
    static void XMLCALL onDeclaration(void *self, const XML_Char *version, const XML_Char *encoding, int);

    template<class Handle>
    static void guard(void *self, Handle &&handle);

    void start(std::string_view name, const char **attributes);
    void startStatement(std::string_view name, const char **attributes);
    void startExtension(std::string_view name, const char **attributes);
    void end();
    void endStatement(Frame &frame);
    void endExtension(Frame &frame);

    bool isPlaced(Frame *parent, Kw keyword);
    bool isPlacedOnce(Frame &parent, Kw keyword, Placement placement);
    bool isTextArgument(Frame &parent, std::string_view name);
    const char *argumentOf(Kw keyword, const char **attributes);
    const char *argumentText(Kw keyword, const char *value);
    void record(Frame &frame, const char *argument);
    void link(Frame &frame, Frame *parent);
    ExtensionUse *useOf(std::string_view name, const Frame &parent);
    void countStatement();

    void fail(uint32_t offset, std::string_view sentence);
    void stop(std::string_view sentence);
    void failXml(XML_Error error);
    std::string unboundPrefix(uint32_t offset) const;
    std::string describe(const Frame &frame) const;
    uint32_t offset() const { return static_cast<uint32_t>(XML_GetCurrentByteIndex(parser_.get())); }
    Frame *top() { return frames_.empty() ? nullptr : &frames_.back(); }

    Unit &unit_;
    Failures &failures_;
    TextCache names_;
    std::unique_ptr<std::remove_pointer_t<XML_Parser>, ParserDelete> parser_;
    std::vector<Frame> frames_;
    std::string text_; /* of the extension statement that is open innermost */
    std::string key_;
    std::vector<std::string> prefixes_; /* that xmlns attributes bind, for hints */
    size_t skipped_ = 0;                /* open elements that are left out */
    size_t statements_ = 0;
    bool hasTextHandler_ = false;
    bool stopped_ = false;
    std::exception_ptr thrown_;
};

void YinParser::run()
{
    const char separator[] = {kNamespaceSeparator, '\0'};
    parser_.reset(XML_ParserCreate_MM(nullptr, &kXmlMemory, separator));
    if (parser_ == nullptr)
        throw std::bad_alloc();
    frames_.reserve(64);
    XML_SetUserData(parser_.get(), this);
    XML_SetElementHandler(parser_.get(), onStart, onEnd);
    XML_SetStartDoctypeDeclHandler(parser_.get(), onDoctype);
    XML_SetStartNamespaceDeclHandler(parser_.get(), onPrefix);
    XML_SetXmlDeclHandler(parser_.get(), onDeclaration);

    std::string_view text = unit_.source.text();
    XML_Status status = XML_Parse(parser_.get(), text.data(), static_cast<int>(text.size()), XML_TRUE);
    if (thrown_)
        std::rethrow_exception(thrown_);
    if (status == XML_STATUS_OK || stopped_)
        return;
    XML_Error error = XML_GetErrorCode(parser_.get());
    if (error == XML_ERROR_NO_MEMORY)
        throw std::bad_alloc();
    failXml(error);
}

/* Runs a handler; what it throws must not cross expat and is kept until expat has returned. */
template<class Handle>
void YinParser::guard(void *self, Handle &&handle)
{
    auto &parser = *static_cast<YinParser *>(self);
    if (parser.stopped_)
        return;
    try {
        handle(parser);
    } catch (...) {
        parser.thrown_ = std::current_exception();
        parser.stopped_ = true;
        XML_StopParser(parser.parser_.get(), XML_FALSE);
    }
}

void YinParser::onStart(void *self, const XML_Char *name, const XML_Char **attributes)
{
    guard(self, [=](YinParser &parser) { parser.start(name, attributes); });
}

void YinParser::onEnd(void *self, const XML_Char *)
{
    guard(self, [](YinParser &parser) { parser.end(); });
}

void YinParser::onText(void *self, const XML_Char *text, int length)
{
    guard(self, [=](YinParser &parser) { parser.text_.append(text, static_cast<size_t>(length)); });
}

void YinParser::onDoctype(void *self, const XML_Char *, const XML_Char *, const XML_Char *, int)
{
    guard(self, [](YinParser &parser) { parser.stop("a DOCTYPE is not allowed"); });
}

void YinParser::onPrefix(void *self, const XML_Char *prefix, const XML_Char *)
{
    guard(self, [=](YinParser &parser) {
        if (prefix != nullptr && parser.prefixes_.size() < limits::kAttributes)
            parser.prefixes_.emplace_back(prefix);
    });
}

void YinParser::onDeclaration(void *self, const XML_Char *, const XML_Char *encoding, int)
{
    std::string_view name = encoding != nullptr ? encoding : "";
    if (name == "ISO-8859-1" || name == "iso-8859-1" || name == "US-ASCII")
        static_cast<YinParser *>(self)->unit_.source.setSingleByte();
}

void YinParser::start(std::string_view name, const char **attributes)
{
    if (skipped_ + frames_.size() >= limits::kXmlDepth)
        return stop("elements are nested deeper than " + std::to_string(limits::kXmlDepth) + " levels");
    if (skipped_ > 0) {
        ++skipped_;
        return;
    }
    if (name.size() > limits::kNameLength)
        return stop("the element name " + quoted(name) + " is longer than " + std::to_string(limits::kNameLength) +
                    " bytes");
    if (XML_GetSpecifiedAttributeCount(parser_.get()) > static_cast<int>(2 * limits::kAttributes))
        return stop("an element has more than " + std::to_string(limits::kAttributes) + " attributes");

    size_t separator = kYinSpace.size();
    if (name.size() > separator && name[separator] == kNamespaceSeparator && name.substr(0, separator) == kYinSpace)
        startStatement(name.substr(separator + 1), attributes);
    else
        startExtension(name, attributes);
}

void YinParser::startStatement(std::string_view name, const char **attributes)
{
    Frame *parent = top();
    if (parent != nullptr) {
        // Statements within an extension statement are the extension's own affair.
        if (parent->keyword == Kw::kInstance || isTextArgument(*parent, name)) {
            parent->hasChild = true;
            skipped_ = 1;
            return;
        }
    }
    Kw keyword = findKeyword(name);
    if (keyword == Kw::kStatements) {
        NearestName nearest(name);
        for (const Keyword &candidate : kKeywords)
            nearest.offer(candidate.name);
        fail(offset(), "unknown statement " + quoted(name) + nearest.hint());
        skipped_ = 1;
        return;
    }
    if (!isPlaced(parent, keyword)) {
        skipped_ = 1;
        return;
    }
    Frame frame{.keyword = keyword, .offset = offset(), .statement = nullptr, .tail = nullptr, .use = nullptr};
    const char *argument = argumentOf(keyword, attributes);
    if (parent != nullptr && parent->statement != nullptr)
        parent->statement->properties |= propertyOf(keyword);
    if (keywordOf(keyword).isRecorded() && (parent == nullptr || parent->statement != nullptr))
        record(frame, argument);
    if (keyword == Kw::kYangVersion && argument != nullptr)
        unit_.isVersion11 = std::string_view(argument) == "1.1";
    frames_.push_back(frame);
}

bool YinParser::isPlaced(Frame *parent, Kw keyword)
{
    std::string_view name = keywordOf(keyword).name;
    if (parent == nullptr) {
        if (keyword == Kw::kModule || keyword == Kw::kSubmodule)
            return true;
        fail(offset(), "the root element is " + quoted(name) + "; expected 'module' or 'submodule'");
        return false;
    }
    Placement placement = placementOf(parent->keyword, keyword);
    bool inDeviate = parent->keyword == Kw::kDeviate && parent->statement != nullptr;
    auto kind = inDeviate ? static_cast<DeviateKind>(parent->statement->detail) : DeviateKind::kAdd;
    if (!placement.allowed() || (inDeviate && !isDeviateProperty(kind, keyword))) {
        fail(offset(), quoted(name) + " is not allowed in " + describe(*parent));
        return false;
    }
    if (placement.since11() && !unit_.isVersion11) {
        fail(offset(), quoted(name) + " in " + describe(*parent) + " needs yang-version 1.1");
        return false;
    }
    return isPlacedOnce(*parent, keyword, placement);
}

/* Counts and, in a module, the order of sections. */
bool YinParser::isPlacedOnce(Frame &parent, Kw keyword, Placement placement)
{
    std::string_view name = keywordOf(keyword).name;
    bool single = placement.single() || (placement.singleIn10() && !unit_.isVersion11);
    if (single && parent.seen.has(keyword)) {
        fail(offset(), "second " + quoted(name) + " in " + describe(parent) + "; only one is allowed");
        return false;
    }
    parent.seen.add(keyword);
    if (parent.keyword != Kw::kModule && parent.keyword != Kw::kSubmodule)
        return true;
    int section = moduleSection(keyword);
    if (section < parent.section) {
        constexpr std::array<const char *, 4> kFollowing = {"imports, includes and everything else",
                                                            "organization, revisions and definitions",
                                                            "revisions and definitions", "definitions"};
        fail(offset(), quoted(name) + " must stand before " + kFollowing[static_cast<size_t>(section)]);
    } else {
        parent.section = static_cast<int8_t>(section);
    }
    return true;
}

/* Whether the element is the argument of the statement around it. */
bool YinParser::isTextArgument(Frame &parent, std::string_view name)
{
    const Keyword &keyword = keywordOf(parent.keyword);
    if (!keyword.inElement() || name != keyword.argument)
        return false;
    if (parent.texts == 0)
        parent.texts = 1;
    else
        fail(offset(), "second element " + quoted(name) + " in " + describe(parent) + "; only one is allowed");
    return true;
}

/* The argument from its attribute, or null: the statement takes none, or a failure is recorded. */
const char *YinParser::argumentOf(Kw keyword, const char **attributes)
{
    const Keyword &info = keywordOf(keyword);
    const char *expected = info.inElement() ? nullptr : info.argument;
    const char *value = nullptr;
    for (; attributes[0] != nullptr; attributes += 2) {
        std::string_view name = attributes[0];
        if (expected != nullptr && name == expected) {
            value = attributes[1];
        } else if (name.find(kNamespaceSeparator) == std::string_view::npos) {
            NearestName nearest(name);
            if (expected != nullptr)
                nearest.offer(expected);
            fail(offset(), "unknown attribute " + quoted(name) + " of " + quoted(info.name) + nearest.hint());
        }
    }
    if (expected == nullptr)
        return nullptr;
    if (value == nullptr) {
        fail(offset(), quoted(info.name) + " has no attribute " + quoted(expected));
        return nullptr;
    }
    if (hasForm(info.form, value))
        return value;
    fail(offset(), "attribute " + quoted(expected) + " of " + quoted(info.name) + " is " + quoted(value) +
                       "; expected " + expectedOf(info.form));
    return nullptr;
}

void YinParser::record(Frame &frame, const char *argument)
{
    countStatement();
    auto *statement = unit_.statements.make<Statement>();
    statement->keyword = frame.keyword;
    statement->offset = frame.offset;
    std::string_view value = argument != nullptr ? argument : "";
    if (frame.keyword == Kw::kType) {
        statement->detail = builtinTypeNumber(value);
        if (statement->detail != 0)
            statement->argument = builtinTypeName(statement->detail).data();
    } else if (frame.keyword == Kw::kDeviate) {
        statement->detail = static_cast<uint8_t>(deviateKind(value));
    }
    if (statement->argument == nullptr)
        statement->argument = keywordOf(frame.keyword).isNamed() ? names_.keep(value) : unit_.statements.text(value);
    frame.statement = statement;
    link(frame, top());
    if (frames_.empty())
        unit_.root = statement;
}

void YinParser::link(Frame &frame, Frame *parent)
{
    frame.tail = &frame.statement->first;
    if (parent == nullptr)
        return;
    *parent->tail = frame.statement;
    parent->tail = &frame.statement->next;
}

void YinParser::startExtension(std::string_view name, const char **attributes)
{
    size_t separator = name.find(kNamespaceSeparator);
    if (frames_.empty()) {
        std::string_view local = separator == std::string_view::npos ? name : name.substr(separator + 1);
        return stop("the root element is " + quoted(local) + "; expected 'module' or 'submodule' in the namespace '" +
                    std::string(kYinSpace) + "'");
    }
    if (separator == std::string_view::npos) {
        fail(offset(),
             "element " + quoted(name) + " is in no namespace; statements are in '" + std::string(kYinSpace) + "'");
        skipped_ = 1;
        return;
    }
    Frame &parent = frames_.back();
    Frame frame{.keyword = Kw::kInstance, .offset = offset(), .statement = nullptr, .tail = nullptr, .use = nullptr};
    frame.use = useOf(name, parent);
    parent.hasChild = true;

    const char *attribute = nullptr;
    const char *value = nullptr;
    for (; attributes[0] != nullptr; attributes += 2) {
        if (std::strchr(attributes[0], kNamespaceSeparator) != nullptr)
            continue;
        if (attribute != nullptr)
            fail(offset(), "extension statement " + quoted(frame.use->keyword) +
                               " has more than one attribute; its argument is one");
        attribute = attributes[0];
        value = attributes[1];
    }
    bool kept = parent.keyword == Kw::kInstance || keywordOf(parent.keyword).isKept();
    if (kept && parent.statement != nullptr) {
        countStatement();
        auto *statement = unit_.statements.make<ExtensionStatement>();
        statement->keyword = Kw::kInstance;
        statement->offset = frame.offset;
        statement->use = frame.use;
        if (attribute != nullptr) {
            if (frame.use->attribute == nullptr)
                frame.use->attribute = unit_.statements.text(attribute);
            bool usual = std::strcmp(frame.use->attribute, attribute) == 0;
            statement->attribute = usual ? frame.use->attribute : unit_.statements.text(attribute);
            statement->argument = names_.keep(value);
        }
        frame.statement = statement;
        link(frame, &parent);
        if (!hasTextHandler_)
            XML_SetCharacterDataHandler(parser_.get(), onText);
        hasTextHandler_ = true;
        text_.clear();
    }
    frames_.push_back(frame);
}

ExtensionUse *YinParser::useOf(std::string_view name, const Frame &parent)
{
    size_t separator = name.find(kNamespaceSeparator);
    bool within = parent.use != nullptr && parent.use->space == name.substr(0, separator);
    std::string_view key = name;
    if (within) {
        key_.assign(parent.use->keyword).append(1, kNamespaceSeparator).append(name);
        key = key_;
    }
    if (ExtensionUse *known = unit_.extensionUses.find(key))
        return known;
    auto *use = unit_.statements.make<ExtensionUse>();
    use->name = unit_.statements.text(key);
    std::string_view copy = std::string_view(use->name).substr(key.size() - name.size());
    use->space = copy.substr(0, separator);
    use->keyword = copy.data() + separator + 1;
    use->above = within ? parent.use : nullptr;
    use->offset = offset();
    unit_.extensionUses.insert(use);
    return use;
}

void YinParser::end()
{
    if (skipped_ > 0) {
        --skipped_;
        return;
    }
    Frame &frame = frames_.back();
    if (frame.keyword == Kw::kInstance)
        endExtension(frame);
    else
        endStatement(frame);
    frames_.pop_back();
}

void YinParser::endStatement(Frame &frame)
{
    const KeywordSet &required = requiredIn(frame.keyword);
    const Keyword &info = keywordOf(frame.keyword);
    if (info.inElement() && frame.texts == 0)
        fail(frame.offset, quoted(info.name) + " has no element " + quoted(info.argument));
    for (size_t word = 0; word < std::size(required.words); ++word) {
        if ((required.words[word] & ~frame.seen.words[word]) == 0)
            continue;
        for (size_t i = 0; i < kKeywordCount; ++i) {
            Kw keyword = static_cast<Kw>(i);
            if (i / 64 == word && required.has(keyword) && !frame.seen.has(keyword))
                fail(frame.offset, describe(frame) + " has no " + quoted(keywordOf(keyword).name));
        }
    }
}

/* Text counts where nothing else stands: it may be the argument of the extension statement around. */
void YinParser::endExtension(Frame &frame)
{
    if (frame.statement == nullptr)
        return;
    if (!frame.hasChild && frame.statement->argument == nullptr) {
        frame.statement->argument = names_.keep(trim(text_));
        frame.statement->properties |= kHasText;
    }
    bool outermost = frames_[frames_.size() - 2].keyword != Kw::kInstance;
    if (!outermost)
        return;
    XML_SetCharacterDataHandler(parser_.get(), nullptr);
    hasTextHandler_ = false;
}

void YinParser::countStatement()
{
    if (++statements_ <= limits::kStatements)
        return;
    fail(offset(), "the file has more than " + std::to_string(limits::kStatements) + " statements");
    throw LoadStopped{};
}

void YinParser::fail(uint32_t at, std::string_view sentence)
{
    failures_.add(unit_.source, at, sentence);
    if (!failures_.full())
        return;
    stopped_ = true;
    XML_StopParser(parser_.get(), XML_FALSE);
}

void YinParser::stop(std::string_view sentence)
{
    fail(offset(), sentence);
    stopped_ = true;
    XML_StopParser(parser_.get(), XML_FALSE);
}

void YinParser::failXml(XML_Error error)
{
    uint32_t at = offset();
    switch (error) {
        case XML_ERROR_NO_ELEMENTS:
            return fail(at, "not well-formed XML: the file has no root element");
        case XML_ERROR_UNBOUND_PREFIX:
            return fail(at, unboundPrefix(at));
        case XML_ERROR_TAG_MISMATCH:
            if (skipped_ == 0 && !frames_.empty())
                return fail(at, "not well-formed XML: the end tag does not belong to " + describe(frames_.back()));
            break;
        case XML_ERROR_UNCLOSED_TOKEN:
            return fail(at, "not well-formed XML: the file ends within what begins here");
        default:
            break;
    }
    fail(at, std::string("not well-formed XML: ") + XML_ErrorString(error));
}

/* Names the prefix of the element that starts there, unless that one is bound: then an attribute has the unknown one. */
std::string YinParser::unboundPrefix(uint32_t at) const
{
    std::string_view tag = unit_.source.text().substr(std::min<size_t>(at, unit_.source.text().size()));
    tag = tag.substr(0, tag.find_first_of("> \t\r\n"));
    tag.remove_prefix(std::min<size_t>(tag.size(), 1));
    std::string_view prefix = splitReference(tag).prefix;
    bool bound = prefix.empty();
    NearestName nearest(prefix);
    for (const std::string &known : prefixes_) {
        bound = bound || known == prefix;
        nearest.offer(known);
    }
    if (bound)
        return "an attribute of " + quoted(tag) + " has a prefix that no xmlns attribute binds";
    return "unknown prefix " + quoted(prefix) + ": no xmlns attribute binds it" + nearest.hint();
}

std::string YinParser::describe(const Frame &frame) const
{
    if (frame.keyword == Kw::kInstance)
        return quoted(frame.use->keyword);
    std::string text(keywordOf(frame.keyword).name);
    bool named = frame.statement != nullptr && frame.statement->argument[0] != '\0';
    return named ? text + " " + quoted(frame.statement->argument) : text;
}

}  // namespace

void parseYin(Unit &unit, Failures &failures)
{
    YinParser(unit, failures).run();
}

}  // namespace qxyang
