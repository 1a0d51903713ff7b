#include "syntax/yin_parser.h"

#include <expat.h>

#include <algorithm>
#include <cstring>
#include <exception>

#include "base/text.h"
#include "syntax/plain_xml.h"
#include "syntax/statement_recorder.h"

namespace qxyang {

namespace {

/* Tells the recorder what the text holds: first what PlainXml reads, and then what it leaves, which expat reads. expat
 * begins with the text again; what it tells of the part that was read is passed over. */
class YinParser {
  public:
    YinParser(Unit &unit, Failures &failures)
        : unit_(unit), failures_(failures), recorder_(unit, failures), parser_(unit.source.Parser())
    {
    }

    /* True if the whole file was read and nothing is wrong with it. */
    bool Run();

  private:
    bool RunPlain();
    bool RunExpat(Failures::Mark before);
    bool WasRead() const;

    static void XMLCALL OnStart(void *self, const XML_Char *name, const XML_Char **attributes);
    static void XMLCALL OnEnd(void *self, const XML_Char *name);
    static void XMLCALL OnText(void *self, const XML_Char *text, int length);
    static void XMLCALL OnDoctype(void *self, const XML_Char *, const XML_Char *, const XML_Char *, int);
    static void XMLCALL OnPrefix(void *self, const XML_Char *prefix, const XML_Char *);
    static void XMLCALL OnDeclaration(void *self, const XML_Char *version, const XML_Char *encoding, int);

    template <class Handle>
    static void Guard(void *self, Handle &&handle);

    void Start(std::string_view name, const char **attributes);
    void Start(PlainXml &xml);
    void StartForeign(std::string_view space, std::string_view name, const char **attributes);
    void StopAtDepth();
    void CheckText(uint32_t at);
    void FindText(uint32_t end);
    void FollowText();
    void Stop();
    void Stop(std::string_view sentence);
    void StopAtDoctype();
    void FailXml(XML_Error error);
    bool FailCompact();
    std::string UnboundPrefix(uint32_t at) const;
    uint32_t XmlOffset() const { return static_cast<uint32_t>(XML_GetCurrentByteIndex(parser_)); }
    uint32_t XmlLength() const { return static_cast<uint32_t>(XML_GetCurrentByteCount(parser_)); }

    Unit &unit_;
    Failures &failures_;
    StatementRecorder recorder_;
    XML_Parser parser_;                 /* the source's */
    std::vector<std::string> prefixes_; /* that xmlns attributes bind, for hints */
    uint32_t read_ = 0;                 /* up to here PlainXml has read the text */
    uint32_t at_ = 0;                   /* where the event stands that is being told */
    uint32_t tagEnd_ = 0;               /* behind the latest tag */
    bool hasTextHandler_ = false;
    bool stopped_ = false;
    std::exception_ptr thrown_;
};

bool YinParser::Run()
{
    Failures::Mark before = failures_.Now();
    if (!RunPlain())
        return RunExpat(before);
    return !stopped_ && unit_.root != nullptr && !failures_.AnySince(before);
}

/* False if there is more to read. */
bool YinParser::RunPlain()
{
    PlainXml xml(unit_.source);
    while (!stopped_) {
        PlainXml::Kind kind = xml.Next(recorder_.WantsText());
        at_ = xml.Begin();
        switch (kind) {
            case PlainXml::Kind::Start:
                Start(xml);
                break;
            case PlainXml::Kind::End:
                if (xml.HasText())
                    FindText(at_);
                tagEnd_ = xml.End();
                recorder_.End();
                break;
            case PlainXml::Kind::Text:
                recorder_.AddText(xml.Text());
                break;
            case PlainXml::Kind::Comment:
                break;
            case PlainXml::Kind::Finished:
                return true;
            case PlainXml::Kind::Left:
                read_ = at_;
                return false;
        }
    }
    return true;
}

bool YinParser::RunExpat(Failures::Mark before)
{
    XML_SetUserData(parser_, this);
    XML_SetElementHandler(parser_, OnStart, OnEnd);
    XML_SetStartDoctypeDeclHandler(parser_, OnDoctype);
    XML_SetStartNamespaceDeclHandler(parser_, OnPrefix);
    XML_SetXmlDeclHandler(parser_, OnDeclaration);
    FollowText();

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

/* True if PlainXml has told of what expat tells now. The end of an element that is one tag stands behind that. */
bool YinParser::WasRead() const
{
    uint32_t at = XmlOffset();
    return at < read_ || (at == read_ && XmlLength() == 0);
}

/* Runs a handler. An exception must not pass through expat: it is kept until expat has returned. */
template <class Handle>
void YinParser::Guard(void *self, Handle &&handle)
{
    auto &parser = *static_cast<YinParser *>(self);
    if (parser.stopped_)
        return;
    parser.at_ = parser.XmlOffset();
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
    tagEnd_ = at + XmlLength();
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
    Guard(self, [=](YinParser &parser) {
        if (!parser.WasRead())
            parser.Start(name, attributes);
    });
}

void YinParser::OnEnd(void *self, const XML_Char *)
{
    Guard(self, [](YinParser &parser) {
        if (parser.WasRead())
            return;
        parser.CheckText(parser.at_);
        parser.recorder_.End();
        parser.FollowText();
    });
}

void YinParser::OnText(void *self, const XML_Char *text, int length)
{
    Guard(self, [=](YinParser &parser) {
        if (!parser.WasRead())
            parser.recorder_.AddText({text, static_cast<size_t>(length)});
    });
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
        return StopAtDepth();
    bool hasSeveral = attributes[0] != nullptr && attributes[2] != nullptr;
    if (hasSeveral && XML_GetSpecifiedAttributeCount(parser_) > static_cast<int>(2 * limits::ATTRIBUTES))
        return Stop("an element has more than " + std::to_string(limits::ATTRIBUTES) + " attributes");
    CheckText(at_);
    size_t separator = name.find(NAMESPACE_SEPARATOR);
    bool isQualified = separator != std::string_view::npos;
    std::string_view space = isQualified ? name.substr(0, separator) : std::string_view();
    std::string_view local = isQualified ? name.substr(separator + 1) : name;
    if (space == YIN_SPACE)
        return recorder_.StartStatement(local, attributes, at_);
    StartForeign(space, local, attributes);
    FollowText();
}

void YinParser::Start(PlainXml &xml)
{
    if (recorder_.Depth() >= limits::XML_DEPTH)
        return StopAtDepth();
    if (xml.HasText())
        FindText(at_);
    tagEnd_ = xml.End();
    if (xml.Space() == YIN_SPACE)
        return recorder_.StartStatement(xml.Name(), xml.Attributes(), at_);
    StartForeign(xml.Space(), xml.Name(), xml.Attributes());
}

void YinParser::StopAtDepth()
{
    Stop("elements are nested deeper than " + std::to_string(limits::XML_DEPTH) + " levels");
}

/* The data of `space` are null if the element is in no namespace. */
void YinParser::StartForeign(std::string_view space, std::string_view name, const char **attributes)
{
    bool isQualified = space.data() != nullptr;
    if (space.size() + (isQualified ? 1 : 0) + name.size() > limits::NAME_LENGTH)
        return Stop("the element name " + Quoted(name) + " is longer, with its namespace, than " +
                    std::to_string(limits::NAME_LENGTH) + " bytes");
    if (recorder_.Depth() == 0)
        return Stop("the root element is " + Quoted(name) + "; expected 'module' or 'submodule' in the namespace " +
                    Quoted(YIN_SPACE));
    if (!isQualified)
        return recorder_.SkipElement(
            at_, "element " + Quoted(name) + " is in no namespace; expected the namespace " + Quoted(YIN_SPACE));
    recorder_.StartExtension(space, name, attributes, at_);
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
    XML_StopParser(parser_, XML_FALSE); // does nothing before expat has begun
}

void YinParser::Stop(std::string_view sentence)
{
    recorder_.Fail(at_, sentence);
    Stop();
}

/* expat calls the handler when it has read past the name. */
void YinParser::StopAtDoctype()
{
    size_t begin = unit_.source.Text().rfind("<!DOCTYPE", at_);
    recorder_.Fail(begin != std::string_view::npos ? static_cast<uint32_t>(begin) : at_, "a DOCTYPE is not allowed");
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
    uint32_t at = XmlOffset();
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
