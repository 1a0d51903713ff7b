/* The statements of a YIN file, for tools. */
#include <expat.h>

#include <cstring>
#include <exception>

#include "base/schema_limits.h"
#include "base/text.h"
#include "syntax/keywords.h"
#include "syntax/statement_file.h"
#include "syntax/yin_parser.h"

namespace qxyang {

namespace {

/* A name as expat gives it: namespace, name and prefix, as far as the element has them. */
struct ElementName {
    std::string_view space;
    std::string_view local;
    std::string_view prefix; /* empty, not null, for an element without */

    explicit ElementName(std::string_view name) : local(name), prefix("") // NOLINT(readability-redundant-string-init)
    {
        size_t first = name.find(NAMESPACE_SEPARATOR);
        if (first == std::string_view::npos)
            return;
        space = name.substr(0, first);
        local = name.substr(first + 1);
        if (size_t second = local.find(NAMESPACE_SEPARATOR); second != std::string_view::npos) {
            prefix = local.substr(second + 1);
            local = local.substr(0, second);
        }
    }
};

struct Range {
    uint32_t begin = 0; /* 0: not found */
    uint32_t end = 0;
};

/* The first place from there on whose character is one of those; the text's end if there is none. */
template <class IsWanted>
size_t Next(std::string_view text, size_t at, IsWanted isWanted)
{
    while (at < text.size() && !isWanted(text[at]))
        ++at;
    return at;
}

/* Where the value of that attribute stands in the tag that begins at `tag`. The tag is well formed. */
Range FindAttribute(std::string_view text, uint32_t tag, std::string_view name)
{
    size_t at = Next(text, tag, [](char c) { return IsSpace(c) || c == '/' || c == '>'; });
    for (;;) {
        at = Next(text, at, [](char c) { return !IsSpace(c); });
        if (at == text.size() || text[at] == '>' || text[at] == '/')
            return {};
        size_t nameEnd = Next(text, at, [](char c) { return IsSpace(c) || c == '='; });
        size_t quote = Next(text, nameEnd, [](char c) { return c == '"' || c == '\''; });
        if (quote == text.size())
            return {};
        size_t end = text.find(text[quote], quote + 1);
        if (end == std::string_view::npos)
            return {};
        if (text.substr(at, nameEnd - at) == name)
            return {static_cast<uint32_t>(quote + 1), static_cast<uint32_t>(end)};
        at = end + 1;
    }
}

class YinReader {
  public:
    YinReader(QXYANG_FILE &file, StatementList &list) : file_(file), list_(list), parser_(file.source.Parser()) {}

    void Run()
    {
        XML_SetUserData(parser_, this);
        XML_SetReturnNSTriplet(parser_, 1);
        XML_SetElementHandler(parser_, OnStart, OnEnd);
        XML_SetCharacterDataHandler(parser_, OnText);
        XML_SetCommentHandler(parser_, OnComment);
        XML_SetStartDoctypeDeclHandler(parser_, OnDoctype);
        XML_SetStartNamespaceDeclHandler(parser_, OnNamespace);
        XML_Status status = file_.source.Parse();
        if (thrown_)
            std::rethrow_exception(thrown_);
        if (status == XML_STATUS_OK || stopped_)
            return;
        if (XML_GetErrorCode(parser_) == XML_ERROR_NO_MEMORY)
            throw std::bad_alloc();
        list_.Fail(Offset(), std::string("not well-formed XML: ") + XML_ErrorString(XML_GetErrorCode(parser_)));
    }

  private:
    /* Runs a handler. An exception must not pass through expat: it is kept until expat has returned. */
    template <class Handle>
    static void Guard(void *self, Handle &&handle)
    {
        auto &reader = *static_cast<YinReader *>(self);
        if (reader.stopped_)
            return;
        try {
            handle(reader);
        } catch (...) {
            reader.thrown_ = std::current_exception();
            reader.Stop();
        }
    }

    static void XMLCALL OnStart(void *self, const XML_Char *name, const XML_Char **attributes)
    {
        Guard(self, [=](YinReader &reader) { reader.Start(ElementName(name), attributes); });
    }
    static void XMLCALL OnNamespace(void *self, const XML_Char *prefix, const XML_Char *space)
    {
        Guard(self, [=](YinReader &reader) {
            if (prefix != nullptr && space != nullptr)
                reader.list_.AddNamespace(prefix, space);
        });
    }
    static void XMLCALL OnEnd(void *self, const XML_Char *)
    {
        Guard(self, [](YinReader &reader) { reader.End(); });
    }
    static void XMLCALL OnText(void *self, const XML_Char *text, int length)
    {
        Guard(self, [=](YinReader &reader) { reader.text_.append(text, static_cast<size_t>(length)); });
    }
    static void XMLCALL OnComment(void *self, const XML_Char *text)
    {
        Guard(self, [=](YinReader &reader) {
            uint32_t end = reader.Offset() + static_cast<uint32_t>(XML_GetCurrentByteCount(reader.parser_));
            reader.list_.AddComment(text, reader.Offset(), end, reader.IsAlone(reader.Offset(), end));
        });
    }
    static void XMLCALL OnDoctype(void *self, const XML_Char *, const XML_Char *, const XML_Char *, int)
    {
        Guard(self, [](YinReader &reader) {
            // expat calls this when it has read past the name.
            size_t begin = reader.file_.source.Text().rfind("<!DOCTYPE", reader.Offset());
            reader.list_.Fail(begin != std::string_view::npos ? static_cast<uint32_t>(begin) : reader.Offset(),
                              "a DOCTYPE is not allowed");
            reader.Stop();
        });
    }

    void Start(const ElementName &name, const char **attributes)
    {
        if (list_.Depth() + skipped_ >= limits::XML_DEPTH) {
            list_.Fail(Offset(), "elements are nested deeper than " + std::to_string(limits::XML_DEPTH) + " levels");
            return Stop();
        }
        text_.clear();
        bool isYang = name.space == YIN_SPACE;
        if (skipped_ > 0 || (isYang && IsArgument(name.local))) {
            if (skipped_++ == 0)
                textBegin_ = TagEnd();
            return;
        }
        uint32_t at = Offset();
        textBegin_ = TagEnd();
        QXYANG_STATEMENT_S &statement = list_.Start(isYang ? std::string_view() : name.prefix, name.local, at);
        if (!isYang)
            statement.pcNamespace = list_.KeepSpace(name.space);
        SetAttribute(statement, isYang ? FindKeyword(name.local) : Kw::None, attributes);
    }

    /* True if the element is the argument of the statement around. */
    bool IsArgument(std::string_view name)
    {
        const QXYANG_STATEMENT_S *open = list_.Open();
        Kw keyword = open != nullptr && open->pcPrefix == nullptr ? FindKeyword(open->pcKeyword) : Kw::None;
        return keyword != Kw::None && KeywordOf(keyword).InElement() && name == KeywordOf(keyword).argument &&
               open->pcArgument == nullptr;
    }

    /* Takes the attribute that is the argument of this keyword, or else the first one without a prefix. */
    void SetAttribute(QXYANG_STATEMENT_S &statement, Kw keyword, const char **attributes)
    {
        const char **chosen = nullptr;
        const char *expected = keyword != Kw::None ? KeywordOf(keyword).argument : nullptr;
        for (; attributes[0] != nullptr; attributes += 2) {
            if (std::strchr(attributes[0], NAMESPACE_SEPARATOR) != nullptr)
                continue;
            bool isExpected = expected != nullptr && std::strcmp(attributes[0], expected) == 0;
            if (chosen == nullptr || isExpected)
                chosen = attributes;
        }
        if (chosen == nullptr)
            return;
        Range range = file_.source.IsWide() ? Range{} : FindAttribute(file_.source.Text(), Offset(), chosen[0]);
        statement.pcArgumentName = file_.names.Keep(chosen[0]);
        list_.SetArgument(statement, chosen[1], QXYANG_ARGUMENT_ATTRIBUTE, range.begin, range.end);
    }

    void End()
    {
        QXYANG_STATEMENT_S &open = *list_.Open();
        if (skipped_ > 0) {
            if (--skipped_ > 0)
                return;
            open.pcArgumentName = KeywordOf(FindKeyword(open.pcKeyword)).argument;
            SetText(open, text_, QXYANG_ARGUMENT_ELEMENT);
            return text_.clear();
        }
        bool isText =
            open.pcPrefix != nullptr && open.pcArgument == nullptr && open.uiFirstChild == QXYANG_NO_STATEMENT;
        if (std::string_view text = Trim(text_); isText && !text.empty())
            SetText(open, text, QXYANG_ARGUMENT_TEXT);
        text_.clear();
        list_.End(TagEnd());
    }

    /* The argument's place is that of all text between the tags. */
    void SetText(QXYANG_STATEMENT_S &statement, std::string_view text, uint32_t form)
    {
        bool isKnown = !file_.source.IsWide() && textBegin_ <= Offset();
        list_.SetArgument(statement, text, form, isKnown ? textBegin_ : 0, isKnown ? Offset() : 0);
    }

    bool IsAlone(size_t begin, size_t end) const
    {
        std::string_view text = file_.source.Text();
        size_t before = begin == 0 ? std::string_view::npos : text.find_last_not_of(" \t", begin - 1);
        size_t after = text.find_first_not_of(" \t\r", end);
        return (before == std::string_view::npos || text[before] == '\n') &&
               (after == std::string_view::npos || text[after] == '\n');
    }

    void Stop()
    {
        stopped_ = true;
        XML_StopParser(parser_, XML_FALSE);
    }

    uint32_t Offset() const { return static_cast<uint32_t>(XML_GetCurrentByteIndex(parser_)); }
    uint32_t TagEnd() const { return Offset() + static_cast<uint32_t>(XML_GetCurrentByteCount(parser_)); }

    QXYANG_FILE &file_;
    StatementList &list_;
    XML_Parser parser_;
    std::string text_;       /* since the latest tag */
    uint32_t textBegin_ = 0; /* behind the latest start tag */
    size_t skipped_ = 0;     /* open elements that are an argument, or stand in one */
    bool stopped_ = false;
    std::exception_ptr thrown_;
};

} // namespace

void ReadYinStatements(QXYANG_FILE &file, StatementList &list)
{
    YinReader(file, list).Run();
}

} // namespace qxyang
