#include "yin_parser.h"

#include <expat.h>

#include <cstring>
#include <exception>

#include "statement_recorder.h"
#include "text.h"

namespace qxyang {

namespace {

constexpr std::string_view kYinSpace = "urn:ietf:params:xml:ns:yang:yin:1";

/* Drives expat over the text and tells the recorder what comes. */
class YinParser {
  public:
    YinParser(Unit &unit, Failures &failures)
        : unit_(unit), failures_(failures), recorder_(unit, failures), parser_(unit.source.parser())
    {
    }

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

    void start(const char *name, const char **attributes);
    void startForeign(std::string_view name, const char **attributes);
    void followText();
    void stop();
    void stop(std::string_view sentence);
    void failXml(XML_Error error);
    std::string unboundPrefix(uint32_t at) const;
    uint32_t offset() const { return static_cast<uint32_t>(XML_GetCurrentByteIndex(parser_)); }

    Unit &unit_;
    Failures &failures_;
    StatementRecorder recorder_;
    XML_Parser parser_;                 /* the source's */
    std::vector<std::string> prefixes_; /* that xmlns attributes bind, for hints */
    bool hasTextHandler_ = false;
    bool stopped_ = false;
    std::exception_ptr thrown_;
};

void YinParser::run()
{
    XML_SetUserData(parser_, this);
    XML_SetElementHandler(parser_, onStart, onEnd);
    XML_SetStartDoctypeDeclHandler(parser_, onDoctype);
    XML_SetStartNamespaceDeclHandler(parser_, onPrefix);
    XML_SetXmlDeclHandler(parser_, onDeclaration);

    XML_Status status = unit_.source.parse();
    if (thrown_)
        std::rethrow_exception(thrown_);
    if (status == XML_STATUS_OK || stopped_)
        return;
    XML_Error error = XML_GetErrorCode(parser_);
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
        if (parser.failures_.full())
            parser.stop();
    } catch (...) {
        parser.thrown_ = std::current_exception();
        parser.stop();
    }
}

void YinParser::onStart(void *self, const XML_Char *name, const XML_Char **attributes)
{
    guard(self, [=](YinParser &parser) { parser.start(name, attributes); });
}

void YinParser::onEnd(void *self, const XML_Char *)
{
    guard(self, [](YinParser &parser) {
        parser.recorder_.end();
        parser.followText();
    });
}

void YinParser::onText(void *self, const XML_Char *text, int length)
{
    guard(self, [=](YinParser &parser) { parser.recorder_.addText({text, static_cast<size_t>(length)}); });
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

void YinParser::start(const char *name, const char **attributes)
{
    if (recorder_.depth() >= limits::kXmlDepth)
        return stop("elements are nested deeper than " + std::to_string(limits::kXmlDepth) + " levels");
    if (XML_GetSpecifiedAttributeCount(parser_) > static_cast<int>(2 * limits::kAttributes))
        return stop("an element has more than " + std::to_string(limits::kAttributes) + " attributes");
    size_t space = kYinSpace.size();
    if (std::strncmp(name, kYinSpace.data(), space) == 0 && name[space] == kNamespaceSeparator)
        return recorder_.startStatement(name + space + 1, attributes, offset());
    startForeign(name, attributes);
    followText();
}

void YinParser::startForeign(std::string_view name, const char **attributes)
{
    if (name.size() > limits::kNameLength)
        return stop("the element name " + quoted(name) + " is longer than " + std::to_string(limits::kNameLength) +
                    " bytes");
    size_t separator = name.find(kNamespaceSeparator);
    bool isQualified = separator != std::string_view::npos;
    if (recorder_.depth() == 0)
        return stop("the root element is " + quoted(isQualified ? name.substr(separator + 1) : name) +
                    "; expected 'module' or 'submodule' in the namespace " + quoted(kYinSpace));
    if (!isQualified)
        return recorder_.skipElement(
            offset(), "element " + quoted(name) + " is in no namespace; expected the namespace " + quoted(kYinSpace));
    recorder_.startExtension(name.substr(0, separator), name.substr(separator + 1), attributes, offset());
}

/* Text is asked of expat only where it may be an argument: it comes in many small pieces everywhere else. */
void YinParser::followText()
{
    if (recorder_.wantsText() == hasTextHandler_)
        return;
    hasTextHandler_ = !hasTextHandler_;
    XML_SetCharacterDataHandler(parser_, hasTextHandler_ ? onText : nullptr);
}

void YinParser::stop()
{
    stopped_ = true;
    XML_StopParser(parser_, XML_FALSE);
}

void YinParser::stop(std::string_view sentence)
{
    recorder_.fail(offset(), sentence);
    stop();
}

void YinParser::failXml(XML_Error error)
{
    uint32_t at = offset();
    std::string sentence = std::string("not well-formed XML: ") + XML_ErrorString(error);
    std::string open = recorder_.describeOpen();
    if (error == XML_ERROR_NO_ELEMENTS)
        sentence = "not well-formed XML: the file has no root element";
    else if (error == XML_ERROR_UNBOUND_PREFIX)
        sentence = unboundPrefix(at);
    else if (error == XML_ERROR_TAG_MISMATCH && !open.empty())
        sentence = "not well-formed XML: the end tag does not belong to " + open;
    else if (error == XML_ERROR_UNCLOSED_TOKEN)
        sentence = "not well-formed XML: the file ends within what begins here";
    recorder_.fail(at, sentence);
}

/* Names the prefix of the element that starts there, unless that one is bound: then an attribute has the unknown one. */
std::string YinParser::unboundPrefix(uint32_t at) const
{
    std::string_view tag = unit_.source.text().substr(std::min<size_t>(at, unit_.source.text().size()));
    tag = tag.substr(0, tag.find_first_of("> \t\r\n"));
    tag.remove_prefix(std::min<size_t>(tag.size(), 1));
    std::string_view prefix = splitReference(tag).prefix;
    bool isBound = prefix.empty();
    NearestName nearest(prefix);
    for (const std::string &known : prefixes_) {
        isBound = isBound || known == prefix;
        nearest.offer(known);
    }
    if (isBound)
        return "an attribute of " + quoted(tag) + " has a prefix that no xmlns attribute binds";
    return "unknown prefix " + quoted(prefix) + ": no xmlns attribute binds it" + nearest.hint();
}

}  // namespace

void parseYin(Unit &unit, Failures &failures)
{
    YinParser(unit, failures).run();
}

}  // namespace qxyang
