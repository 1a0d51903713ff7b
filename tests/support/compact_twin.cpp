#include "compact_twin.h"

#include <expat.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string_view>
#include <vector>

namespace test {

namespace {

struct Element {
    std::string keyword;
    bool isArgument = false; /* of the element around */
    bool hasBlock = false;
};

/* Elements that are arguments, by the statements around them. */
bool IsArgument(std::string_view parent, std::string_view name)
{
    if (parent == "error-message")
        return name == "value";
    for (std::string_view text : {"description", "reference", "contact", "organization"})
        if (parent == text)
            return name == "text";
    size_t colon = parent.find(':'); // the extensions that take an element call it so
    return colon != std::string_view::npos && (name == std::string(parent.substr(0, colon)) + ":text" ||
                                               name == std::string(parent.substr(0, colon)) + ":name");
}

bool IsPlain(std::string_view argument)
{
    return !argument.empty() && argument.find_first_not_of(
                                    "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ"
                                    "0123456789-_.:") == std::string_view::npos;
}

std::string Quoted(std::string_view text)
{
    std::string quoted = "\"";
    for (char c : text) {
        if (c == '\n')
            quoted += "\\n";
        else if (c == '\t')
            quoted += "\\t";
        else if (c == '"' || c == '\\')
            quoted.append("\\").append(1, c);
        else
            quoted += c;
    }
    return quoted + "\"";
}

class Writer {
  public:
    std::string Write(const std::string &yin)
    {
        XML_Parser parser = XML_ParserCreate(nullptr);
        XML_SetUserData(parser, this);
        XML_SetElementHandler(parser, OnStart, OnEnd);
        XML_SetCharacterDataHandler(parser, OnText);
        if (XML_Parse(parser, yin.data(), static_cast<int>(yin.size()), 1) != XML_STATUS_OK) {
            (void)std::fprintf(stderr, "compact twin: %s\n", XML_ErrorString(XML_GetErrorCode(parser)));
            std::abort();
        }
        XML_ParserFree(parser);
        return text_;
    }

  private:
    static void OnStart(void *self, const char *name, const char **attributes)
    {
        static_cast<Writer *>(self)->Start(name, attributes);
    }
    static void OnEnd(void *self, const char *) { static_cast<Writer *>(self)->End(); }
    static void OnText(void *self, const char *text, int length)
    {
        static_cast<Writer *>(self)->argument_.append(text, static_cast<size_t>(length));
    }

    void Start(std::string_view name, const char **attributes)
    {
        argument_.clear();
        Element element{std::string(name)};
        if (!open_.empty()) {
            element.isArgument = IsArgument(open_.back().keyword, name);
            if (!element.isArgument)
                OpenBlock();
        }
        open_.push_back(element);
        if (element.isArgument)
            return;
        text_.append(Indent()).append(name);
        for (; attributes[0] != nullptr; attributes += 2)
            if (std::strncmp(attributes[0], "xmlns", 5) != 0 && std::strchr(attributes[0], ':') == nullptr)
                text_.append(" ").append(IsPlain(attributes[1]) ? attributes[1] : Quoted(attributes[1]));
    }

    void End()
    {
        const Element element = open_.back();
        open_.pop_back();
        if (element.isArgument) {
            text_.append(" ").append(Quoted(argument_));
        } else if (element.hasBlock) {
            open_.push_back(element);
            text_.append(Indent()).append("}\n");
            open_.pop_back();
        } else {
            text_ += ";\n";
        }
    }

    void OpenBlock()
    {
        if (!open_.back().hasBlock)
            text_ += " {\n";
        open_.back().hasBlock = true;
    }

    std::string Indent() const { return std::string((open_.size() - 1) * 2, ' '); }

    std::string text_;
    std::string argument_;
    std::vector<Element> open_;
};

} // namespace

std::string CompactTwin(const std::string &yin)
{
    return Writer().Write(yin);
}

} // namespace test
