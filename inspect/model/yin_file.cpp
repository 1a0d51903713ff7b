#include "model/yin_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <optional>

namespace inspect {
namespace {

constexpr std::string_view YIN_NAMESPACE = "urn:ietf:params:xml:ns:yang:yin:1";
constexpr std::string_view BLANKS = " \t\r\n";

/* The schema library refuses more of either. */
constexpr off_t MAX_FILE_BYTES = off_t{256} << 20;
constexpr size_t MAX_DEPTH = 512;

struct Descriptor {
    /* Without waiting for the other end of a pipe. */
    explicit Descriptor(const std::string &path)
        : number(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY))
    {
    }
    ~Descriptor()
    {
        if (number >= 0)
            close(number);
    }
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;

    const int number;
};

/* None for what is no regular file, too large or unreadable. */
std::optional<std::string> TextOf(const std::string &path)
{
    const Descriptor file(path);
    struct stat status = {};
    if (file.number < 0 || fstat(file.number, &status) != 0 || !S_ISREG(status.st_mode) ||
        status.st_size > MAX_FILE_BYTES)
        return std::nullopt;
    std::string text(static_cast<size_t>(status.st_size), '\0');
    size_t size = 0;
    while (size < text.size()) {
        const ssize_t count = read(file.number, text.data() + size, text.size() - size);
        if (count < 0)
            return std::nullopt;
        if (count == 0)
            break;
        size += static_cast<size_t>(count);
    }
    text.resize(size);
    return text;
}

std::string_view PrefixOf(std::string_view name)
{
    const size_t colon = name.find(':');
    return colon == std::string_view::npos ? "" : name.substr(0, colon);
}

std::string_view LocalName(std::string_view name)
{
    return name.substr(name.find(':') + 1);
}

bool IsNamespaceDeclaration(std::string_view attribute)
{
    return attribute == "xmlns" || attribute.starts_with("xmlns:");
}

} // namespace

/* One pass over a file's text. */
class YinReader {
  public:
    explicit YinReader(YinFile *file) : file_(file), text_(file->text_) {}

    /* False when the text is not what it should be; the file is of no use then. */
    bool Read()
    {
        while (Markup()) {
            const bool fine = Skip("<!--", "-->") || Skip("<![CDATA[", "]]>") || Skip("<?", "?>") || Close() || Open();
            if (!fine)
                return false;
        }
        return open_.empty() && !file_->statements_.empty();
    }

  private:
    struct Attribute {
        std::string_view name;
        std::string_view value;
    };

    void Advance(size_t to)
    {
        line_ += static_cast<uint32_t>(
            std::count(text_.begin() + static_cast<ptrdiff_t>(at_), text_.begin() + static_cast<ptrdiff_t>(to), '\n'));
        at_ = to;
    }

    /* Moves to the next "<"; false at the end. */
    bool Markup()
    {
        const size_t next = text_.find('<', at_);
        if (next == std::string_view::npos)
            return false;
        Advance(next);
        return true;
    }

    bool Skip(std::string_view begin, std::string_view end)
    {
        if (!text_.substr(at_).starts_with(begin))
            return false;
        const size_t found = text_.find(end, at_ + begin.size());
        if (found == std::string_view::npos)
            return false;
        Advance(found + end.size());
        return true;
    }

    bool Close()
    {
        if (!text_.substr(at_).starts_with("</") || open_.empty())
            return false;
        const size_t end = text_.find('>', at_);
        if (end == std::string_view::npos)
            return false;
        open_.pop_back();
        Advance(end + 1);
        return true;
    }

    void SkipBlanks() { Advance(std::min(text_.find_first_not_of(BLANKS, at_), text_.size())); }

    bool ReadAttribute(Attribute *attribute)
    {
        const size_t equals = text_.find('=', at_);
        const size_t quote = text_.find_first_of("\"'", at_);
        if (equals == std::string_view::npos || quote == std::string_view::npos || quote < equals)
            return false;
        const size_t end = text_.find(text_[quote], quote + 1);
        if (end == std::string_view::npos)
            return false;
        attribute->name = text_.substr(at_, text_.find_first_of(" \t\r\n=", at_) - at_);
        attribute->value = text_.substr(quote + 1, end - quote - 1);
        Advance(end + 1);
        return true;
    }

    bool Open()
    {
        const uint32_t line = line_;
        const size_t nameEnd = text_.find_first_of(" \t\r\n/>", at_);
        if (nameEnd == std::string_view::npos)
            return false;
        const std::string_view name = text_.substr(at_ + 1, nameEnd - at_ - 1);
        Advance(nameEnd);
        std::vector<Attribute> attributes;
        for (SkipBlanks(); at_ < text_.size() && text_[at_] != '>' && text_[at_] != '/'; SkipBlanks()) {
            attributes.emplace_back();
            if (!ReadAttribute(&attributes.back()))
                return false;
        }
        const bool empty = text_.substr(at_).starts_with("/>");
        Advance(std::min(at_ + (empty ? 2 : 1), text_.size()));
        if (!Add(name, attributes, line))
            return false;
        if (empty)
            open_.pop_back();
        return true;
    }

    bool Add(std::string_view name, const std::vector<Attribute> &attributes, uint32_t line)
    {
        const std::string_view prefix = PrefixOf(name);
        std::string_view boundTo;
        std::string_view argument;
        for (auto attribute = attributes.rbegin(); attribute != attributes.rend(); ++attribute) {
            const bool declaration = IsNamespaceDeclaration(attribute->name);
            if (declaration && LocalName(attribute->name) == (prefix.empty() ? "xmlns" : prefix))
                boundTo = attribute->value;
            if (!declaration && PrefixOf(attribute->name).empty())
                argument = attribute->value;
        }
        const bool root = open_.empty();
        if (open_.size() == MAX_DEPTH)
            return false;
        if (root) {
            const std::string_view keyword = LocalName(name);
            if (!file_->statements_.empty() || boundTo != YIN_NAMESPACE ||
                (keyword != "module" && keyword != "submodule"))
                return false;
            yinPrefix_ = prefix;
        }
        const bool foreign = prefix != yinPrefix_ || (!boundTo.empty() && boundTo != YIN_NAMESPACE);
        auto statement = std::make_unique<YinStatement>();
        statement->keyword = foreign ? "" : LocalName(name);
        statement->argument = argument;
        statement->line = line;
        statement->parent = root ? nullptr : open_.back();
        if (!root)
            open_.back()->children.push_back(statement.get());
        open_.push_back(statement.get());
        file_->statements_.push_back(std::move(statement));
        return true;
    }

    YinFile *file_;
    std::string_view text_;
    size_t at_ = 0;
    uint32_t line_ = 1;
    std::string_view yinPrefix_;
    std::vector<YinStatement *> open_;
};

std::unique_ptr<YinFile> YinFile::Read(const std::string &path)
{
    std::optional<std::string> text = TextOf(path);
    if (!text)
        return nullptr;
    auto file = std::make_unique<YinFile>();
    file->path_ = path;
    file->text_ = std::move(*text);
    return YinReader(file.get()).Read() ? std::move(file) : nullptr;
}

std::string_view ChildArgument(const YinStatement &statement, std::string_view keyword)
{
    for (const YinStatement *child : statement.children) {
        if (child->Is(keyword))
            return child->argument;
    }
    return "";
}

std::string_view YinFile::Prefix() const
{
    for (const YinStatement *child : Module().children) {
        if (child->Is("belongs-to"))
            return ChildArgument(*child, "prefix");
    }
    return ChildArgument(Module(), "prefix");
}

std::string_view YinFile::ModuleOfPrefix(std::string_view prefix) const
{
    if (prefix == Prefix())
        return IsSubmodule() ? ChildArgument(Module(), "belongs-to") : Module().argument;
    for (const YinStatement *child : Module().children) {
        if (child->Is("import") && ChildArgument(*child, "prefix") == prefix)
            return child->argument;
    }
    return "";
}

} // namespace inspect
