#include "syntax/yin_parser.h"

#include <expat.h>

#include <algorithm>
#include <cstring>
#include <exception>

#include "base/text.h"
#include "syntax/statement_recorder.h"

namespace qxyang {

namespace {

/* Runs expat over the text and tells the recorder what it finds. */
class YinParser {
  public:
    YinParser(Unit &unit, Failures &failures)
        : unit_(unit), failures_(failures), recorder_(unit, failures), parser_(unit.source.Parser())
    {
    }

    /* True if the whole file was read and nothing is wrong with it. */
    bool Run();

  private:
    static void XMLCALL OnStart(void *self, const XML_Char *name, const XML_Char **attributes);
    static void XMLCALL OnEnd(void *self, const XML_Char *name);
    static void XMLCALL OnText(void *self, const XML_Char *text, int length);
    static void XMLCALL OnDoctype(void *self, const XML_Char *, const XML_Char *, const XML_Char *, int);
    static void XMLCALL OnPrefix(void *self, const XML_Char *prefix, const XML_Char *);
    static void XMLCALL OnDeclaration(void *self, const XML_Char *version, const XML_Char *encoding, int);

    template <class Handle>
    static void Guard(void *self, Handle &&handle);

    void Start(std::string_view name, const char **attributes);
    void StartForeign(std::string_view name, const char **attributes);
    void CheckText(uint32_t at);
    void FindText(uint32_t end);
    void FollowText();
    void Stop();
    void Stop(std::string_view sentence);
    void StopAtDoctype();
    void FailXml(XML_Error error);
    bool FailCompact();
    std::string UnboundPrefix(uint32_t at) const;
    uint32_t Offset() const { return static_cast<uint32_t>(XML_GetCurrentByteIndex(parser_)); }

    Unit &unit_;
    Failures &failures_;
    StatementRecorder recorder_;
    XML_Parser parser_;                 /* the source's */
    std::vector<std::string> prefixes_; /* that xmlns attributes bind, for hints */
    uint32_t tagEnd_ = 0;               /* behind the latest tag */
    bool hasTextHandler_ = false;
    bool stopped_ = false;
    std::exception_ptr thrown_;
};

bool YinParser::Run()
{
    Failures::Mark before = failures_.Now();
    XML_SetUserData(parser_, this);
    XML_SetElementHandler(parser_, OnStart, OnEnd);
    XML_SetStartDoctypeDeclHandler(parser_, OnDoctype);
    XML_SetStartNamespaceDeclHandler(parser_, OnPrefix);
    XML_SetXmlDeclHandler(parser_, OnDeclaration);

    XML_Status status = unit_.source.Parse();
    if (thrown_)
        std::rethrow_exception(thrown_);
    if (stopped_)
        return false;
    if (status == XML_STATUS_OK)
        return unit_.root != nullptr && !failures_.AnySince(before);
    XML_Error error = XML_GetErrorCode(parser_);
    if (error == XML_ERROR_NO_MEMORY)
        throw std::bad_alloc();
    FailXml(error);
    return false;
}

/* Runs a handler. An exception must not pass through expat: it is kept until expat has returned. */
template <class Handle>
void YinParser::Guard(void *self, Handle &&handle)
{
    auto &parser = *static_cast<YinParser *>(self);
    if (parser.stopped_)
        return;
    try {
        handle(parser);
    } catch (...) {
        parser.thrown_ = std::current_exception();
        parser.Stop();
    }
}

/* Looks for text between the latest tag and this one. A statement of YANG holds elements only: RFC 7950, 13.1. */
inline void YinParser::CheckText(uint32_t at)
{
    if (!unit_.source.IsBlank(tagEnd_, at))
        FindText(at);
    tagEnd_ = at + static_cast<uint32_t>(XML_GetCurrentByteCount(parser_));
}

void YinParser::FindText(uint32_t end)
{
    if (!recorder_.IsInStatement())
        return;
    if (uint32_t at = unit_.source.FindText(tagEnd_, end); at < end)
        recorder_.Fail(at, "text is not allowed in " + recorder_.DescribeOpen());
}

void YinParser::OnStart(void *self, const XML_Char *name, const XML_Char **attributes)
{
    Guard(self, [=](YinParser &parser) { parser.Start(name, attributes); });
}

void YinParser::OnEnd(void *self, const XML_Char *)
{
    Guard(self, [](YinParser &parser) {
        parser.CheckText(parser.Offset());
        parser.recorder_.End();
        parser.FollowText();
    });
}

void YinParser::OnText(void *self, const XML_Char *text, int length)
{
    Guard(self, [=](YinParser &parser) { parser.recorder_.AddText({text, static_cast<size_t>(length)}); });
}

void YinParser::OnDoctype(void *self, const XML_Char *, const XML_Char *, const XML_Char *, int)
{
    Guard(self, [](YinParser &parser) { parser.StopAtDoctype(); });
}

void YinParser::OnPrefix(void *self, const XML_Char *prefix, const XML_Char *)
{
    Guard(self, [=](YinParser &parser) {
        if (prefix != nullptr && parser.prefixes_.size() < limits::ATTRIBUTES)
            parser.prefixes_.emplace_back(prefix);
    });
}

void YinParser::OnDeclaration(void *self, const XML_Char *, const XML_Char *encoding, int)
{
    std::string_view name = encoding != nullptr ? encoding : "";
    if (name == "ISO-8859-1" || name == "iso-8859-1" || name == "US-ASCII")
        static_cast<YinParser *>(self)->unit_.source.SetSingleByte();
}

void YinParser::Start(std::string_view name, const char **attributes)
{
    if (recorder_.Depth() >= limits::XML_DEPTH)
        return Stop("elements are nested deeper than " + std::to_string(limits::XML_DEPTH) + " levels");
    bool hasSeveral = attributes[0] != nullptr && attributes[2] != nullptr;
    if (hasSeveral && XML_GetSpecifiedAttributeCount(parser_) > static_cast<int>(2 * limits::ATTRIBUTES))
        return Stop("an element has more than " + std::to_string(limits::ATTRIBUTES) + " attributes");
    uint32_t at = Offset();
    CheckText(at);
    constexpr size_t SPACE = YIN_SPACE.size();
    if (name.size() > SPACE && name[SPACE] == NAMESPACE_SEPARATOR &&
        std::memcmp(name.data(), YIN_SPACE.data(), SPACE) == 0)
        return recorder_.StartStatement(name.substr(SPACE + 1), attributes, at);
    StartForeign(name, attributes);
    FollowText();
}

void YinParser::StartForeign(std::string_view name, const char **attributes)
{
    size_t separator = name.find(NAMESPACE_SEPARATOR);
    bool isQualified = separator != std::string_view::npos;
    std::string_view local = isQualified ? name.substr(separator + 1) : name;
    if (name.size() > limits::NAME_LENGTH)
        return Stop("the element name " + Quoted(local) + " is longer, with its namespace, than " +
                    std::to_string(limits::NAME_LENGTH) + " bytes");
    if (recorder_.Depth() == 0)
        return Stop("the root element is " + Quoted(local) + "; expected 'module' or 'submodule' in the namespace " +
                    Quoted(YIN_SPACE));
    if (!isQualified)
        return recorder_.SkipElement(
            Offset(), "element " + Quoted(name) + " is in no namespace; expected the namespace " + Quoted(YIN_SPACE));
    recorder_.StartExtension(name.substr(0, separator), local, attributes, Offset());
}

/* Lets expat report text only where it may be an argument, since expat reports it in many small pieces. */
void YinParser::FollowText()
{
    if (recorder_.WantsText() == hasTextHandler_)
        return;
    hasTextHandler_ = !hasTextHandler_;
    XML_SetCharacterDataHandler(parser_, hasTextHandler_ ? OnText : nullptr);
}

void YinParser::Stop()
{
    stopped_ = true;
    XML_StopParser(parser_, XML_FALSE);
}

void YinParser::Stop(std::string_view sentence)
{
    recorder_.Fail(Offset(), sentence);
    Stop();
}

/* expat calls the handler when it has read past the name. */
void YinParser::StopAtDoctype()
{
    size_t begin = unit_.source.Text().rfind("<!DOCTYPE", Offset());
    recorder_.Fail(begin != std::string_view::npos ? static_cast<uint32_t>(begin) : Offset(),
                   "a DOCTYPE is not allowed");
    Stop();
}

/* Records the failure and returns true if the file is in compact syntax. */
bool YinParser::FailCompact()
{
    std::string_view text = unit_.source.Text();
    size_t at = std::min(text.find_first_not_of(" \t\r\n", unit_.source.Start()), text.size());
    for (std::string_view begin : {"module", "submodule", "//", "/*"}) {
        if (!text.substr(at).starts_with(begin))
            continue;
        recorder_.Fail(static_cast<uint32_t>(at),
                       "found " + Quoted(begin) +
                           ": this is YANG's compact syntax, in a file whose name says that it is YIN; expected '<'");
        return true;
    }
    return false;
}

void YinParser::FailXml(XML_Error error)
{
    if (recorder_.Depth() == 0 && FailCompact())
        return;
    uint32_t at = Offset();
    std::string sentence = std::string("not well-formed XML: ") + XML_ErrorString(error);
    std::string open = recorder_.DescribeOpen();
    if (error == XML_ERROR_NO_ELEMENTS)
        sentence = "not well-formed XML: the file has no root element";
    else if (error == XML_ERROR_UNBOUND_PREFIX)
        sentence = UnboundPrefix(at);
    else if (error == XML_ERROR_TAG_MISMATCH && !open.empty())
        sentence = "not well-formed XML: the end tag does not belong to " + open;
    else if (error == XML_ERROR_UNCLOSED_TOKEN)
        sentence = "not well-formed XML: the file ends within what begins here";
    recorder_.Fail(at, sentence);
}

/* The sentence about the unknown prefix in the tag that begins there: the element's, unless that one is bound; then
 * it is an attribute's. */
std::string YinParser::UnboundPrefix(uint32_t at) const
{
    std::string_view tag = unit_.source.Text().substr(std::min<size_t>(at, unit_.source.Text().size()));
    tag = tag.substr(0, tag.find_first_of("> \t\r\n"));
    tag.remove_prefix(std::min<size_t>(tag.size(), 1));
    std::string_view prefix = SplitReference(tag).prefix;
    bool isBound = prefix.empty();
    NearestName nearest(prefix);
    for (const std::string &known : prefixes_) {
        isBound = isBound || known == prefix;
        nearest.Offer(known);
    }
    if (isBound)
        return "an attribute of " + Quoted(tag) + " has a prefix that no xmlns attribute binds";
    return "unknown prefix " + Quoted(prefix) + ": no xmlns attribute binds it" + nearest.Hint();
}

} // namespace

bool ParseYin(Unit &unit, Failures &failures)
{
    return YinParser(unit, failures).Run();
}

} // namespace qxyang
