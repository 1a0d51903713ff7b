#include "yin_writer.h"

#include <map>
#include <set>

#include "qxyang/syntax/keywords.h"

namespace fuzz {
namespace {

constexpr size_t FILE_NAME_LENGTH = 200;

struct Argument {
    std::string name; /* empty: the statement has none */
    bool inElement = false;
};

using Namespaces = std::map<std::string, std::string>; /* by prefix */

std::string Quoted(const std::string &text)
{
    std::string out;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '<' || c == '>' || c == '&' || c == '"')
            out += "&#" + std::to_string(byte) + ";";
        else if (byte >= 0x20)
            out += c;
        else
            out += c == '\t' || c == '\n' || c == '\r' ? "&#" + std::to_string(byte) + ";" : "?";
    }
    return out;
}

/* What the modules of one input say about each other. */
class Modules {
  public:
    explicit Modules(const Statement &root)
    {
        m_namespaces["quelvo-mim-extensions"] = "urn:quelvo:yang:mim-extensions";
        for (const Statement &statement : root.children)
            Note(statement.keyword == "%file" && !statement.children.empty() ? statement.children[0] : statement);
    }

    /* The namespaces that a module's prefixes stand for. */
    Namespaces PrefixesOf(const Statement &module) const
    {
        Namespaces prefixes;
        for (const Statement &child : module.children) {
            if (child.keyword == "import")
                prefixes[ChildArgument(child, "prefix")] = NamespaceOf(child.argument);
            else if (child.keyword == "belongs-to")
                prefixes[ChildArgument(child, "prefix")] = NamespaceOf(child.argument);
            else if (child.keyword == "prefix")
                prefixes[child.argument] = NamespaceOf(module.argument);
        }
        return prefixes;
    }

    Argument ArgumentOf(const std::string &uri, const std::string &extension) const
    {
        const auto found = m_arguments.find(uri + " " + extension);
        return found != m_arguments.end() ? found->second : Argument{"value"};
    }

  private:
    void Note(const Statement &module)
    {
        if (!IsModule(module))
            return;
        if (const Statement *uri = FindChild(module, "namespace"))
            m_namespaces.emplace(module.argument, uri->argument);
        const std::string uri = NamespaceOf(module.argument);
        for (const Statement &child : module.children) {
            if (child.keyword != "extension")
                continue;
            const Statement *argument = FindChild(child, "argument");
            m_arguments[uri + " " + child.argument] =
                argument != nullptr ? Argument{argument->argument, ChildArgument(*argument, "yin-element") == "true"}
                                    : Argument{};
        }
    }

    std::string NamespaceOf(const std::string &module) const
    {
        const auto found = m_namespaces.find(module);
        return found != m_namespaces.end() ? found->second : "urn:" + module;
    }

    std::map<std::string, std::string> m_namespaces;
    std::map<std::string, Argument> m_arguments; /* by namespace and name of the extension */
};

Argument StandardArgument(const std::string &keyword)
{
    for (const qxyang::Keyword &row : qxyang::KEYWORDS) {
        if (row.name == keyword)
            return {row.argument != nullptr ? row.argument : "", row.InElement()};
    }
    return {"value"};
}

class YinWriter {
  public:
    YinWriter(const Modules &modules, const Statement &module)
        : m_modules(modules), m_prefixes(modules.PrefixesOf(module))
    {
    }

    std::string File(const Statement &module)
    {
        Write(module);
        std::string head = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<" + module.keyword + " name=\"" +
                           Quoted(module.argument) + "\" xmlns=\"urn:ietf:params:xml:ns:yang:yin:1\"";
        for (const auto &[prefix, uri] : m_prefixes) {
            if (IsXmlName(prefix) && !uri.empty())
                head += " xmlns:" + prefix + "=\"" + Quoted(uri) + "\"";
        }
        return head + ">\n" + m_body + "</" + module.keyword + ">\n";
    }

  private:
    static bool IsXmlName(const std::string &text)
    {
        constexpr std::string_view LETTERS = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ_0123456789-.";
        return !text.empty() && text.rfind("xml", 0) != 0 && LETTERS.substr(0, 53).find(text[0]) != LETTERS.npos &&
               text.find_first_not_of(LETTERS) == text.npos;
    }

    /* A name that makes no well-formed file of it is not written: the text of files is another target's. */
    bool IsWritable(const std::string &keyword)
    {
        const size_t colon = keyword.find(':');
        if (colon == std::string::npos)
            return IsXmlName(keyword);
        const std::string prefix = keyword.substr(0, colon);
        if (!IsXmlName(prefix) || !IsXmlName(keyword.substr(colon + 1)))
            return false;
        m_prefixes.emplace(prefix, "urn:unknown:" + prefix);
        return !m_prefixes[prefix].empty();
    }

    Argument ArgumentOf(const std::string &keyword)
    {
        const size_t colon = keyword.find(':');
        return colon == std::string::npos
                   ? StandardArgument(keyword)
                   : m_modules.ArgumentOf(m_prefixes[keyword.substr(0, colon)], keyword.substr(colon + 1));
    }

    void Write(const Statement &parent)
    {
        for (const Statement &child : parent.children) {
            if (IsWritable(child.keyword))
                WriteOne(child);
        }
    }

    void WriteOne(const Statement &statement)
    {
        const Argument argument = ArgumentOf(statement.keyword);
        m_body.append("<").append(statement.keyword);
        if (!argument.name.empty() && !argument.inElement && IsXmlName(argument.name))
            m_body.append(" ").append(argument.name).append("=\"").append(Quoted(statement.argument)).append("\"");
        if (statement.children.empty() && !argument.inElement) {
            m_body += "/>\n";
            return;
        }
        m_body += ">\n";
        if (argument.inElement)
            WriteElement(statement, argument.name);
        Write(statement);
        m_body.append("</").append(statement.keyword).append(">\n");
    }

    /* The argument's element has the prefix of its statement. */
    void WriteElement(const Statement &statement, const std::string &name)
    {
        const size_t colon = statement.keyword.find(':');
        const std::string prefix = colon != std::string::npos ? statement.keyword.substr(0, colon + 1) : "";
        if (IsXmlName(name))
            m_body += "<" + prefix + name + ">" + Quoted(statement.argument) + "</" + prefix + name + ">\n";
    }

    const Modules &m_modules;
    Namespaces m_prefixes;
    std::string m_body;
};

} // namespace

bool IsModule(const Statement &statement)
{
    return statement.keyword == "module" || statement.keyword == "submodule";
}

std::vector<ModelFile> YinFiles(const Statement &expanded)
{
    const Modules modules(expanded);
    std::set<std::string> names;
    std::vector<ModelFile> files;
    for (const Statement &statement : expanded.children) {
        const bool named = statement.keyword == "%file" && !statement.children.empty();
        const Statement &module = named ? statement.children[0] : statement;
        const std::string name = named ? statement.argument : module.argument + ".yin";
        const bool usable = name.size() <= FILE_NAME_LENGTH && name.find('/') == std::string::npos &&
                            name.find('\0') == std::string::npos && name != "." && name != ".." && !name.empty();
        if (IsModule(module) && usable && names.insert(name).second)
            files.push_back({name, YinWriter(modules, module).File(module)});
    }
    return files;
}

} // namespace fuzz
