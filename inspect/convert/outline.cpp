#include "convert/outline.h"

#include <algorithm>
#include <array>
#include <exception>
#include <string_view>

namespace inspect {
namespace {

/* Arguments that are read as a text rather than as a name or a number. */
constexpr std::array<std::string_view, 16> TEXTS = {
    "contact", "default",      "description", "error-app-tag", "error-message", "length",    "must",  "namespace",
    "path",    "organization", "pattern",     "presence",      "range",         "reference", "units", "when",
};

bool IsTextKeyword(std::string_view keyword)
{
    return std::find(TEXTS.begin(), TEXTS.end(), keyword) != TEXTS.end();
}

class OutlineReader {
  public:
    OutlineReader(const ModelFile &file, Extensions *extensions, bool forYin)
        : file_(file), extensions_(extensions), forYin_(forYin), isCompact_(file.IsCompact())
    {
        uint64_t size = 0;
        const char *text = QXYANG_GetFileText(file.Handle(), &size);
        text_ = std::string_view(text, size);
    }

    Outline Read()
    {
        QXYANG_ScanFile(file_.Handle(), OnEvent, this);
        if (failed_)
            std::rethrow_exception(failed_);
        if (!hasBlankLine_)
            SpreadDefinitions();
        return std::move(outline_);
    }

  private:
    struct OpenStatement {
        size_t item;                /* its index in the outline */
        const Extension *extension; /* null for a statement of YANG, and for an unknown extension */
        const char *space;          /* namespace of an extension's element, or null */
        bool isArgument;            /* the element is the argument of the statement around */
    };

    static uint32_t OnEvent(uint32_t event, const QXYANG_STATEMENT_S *statement, const QXYANG_COMMENT_S *comment,
                            void *cookie)
    {
        auto &self = *static_cast<OutlineReader *>(cookie);
        try {
            if (event == QXYANG_EVENT_BEGIN)
                self.Begin(*statement);
            else if (event == QXYANG_EVENT_END)
                self.End(*statement);
            else
                self.Comment(*comment);
            return 0;
        } catch (...) { // must not cross the functions of the schema layer
            self.failed_ = std::current_exception();
            return 1;
        }
    }

    void Begin(const QXYANG_STATEMENT_S &statement)
    {
        if (TakeAsArgument(statement))
            return;
        OutlineItem item;
        item.keyword = statement.pcKeyword;
        if (statement.pcArgument != nullptr)
            item.argument = statement.pcArgument;
        item.level = static_cast<uint32_t>(open_.size());
        item.blankBefore = !isFirst_ && LinesSince(statement.stPlace.uiOffset) > 1;
        hasBlankLine_ = hasBlankLine_ || item.blankBefore;
        item.line = statement.stPlace.uiLine;
        item.column = statement.stPlace.uiColumn;
        const Extension *extension = nullptr;
        if (statement.pcPrefix == nullptr)
            SetYangForm(statement, &item);
        else
            extension = SetExtensionForm(statement, &item);
        outline_.push_back(std::move(item));
        open_.push_back({outline_.size() - 1, extension, statement.pcNamespace, false});
        const QXYANG_PLACE_S &argument = statement.stArgument;
        lastEnd_ = argument.uiLine != 0 ? argument.uiOffset + argument.uiLength : statement.stPlace.uiOffset;
        isFirst_ = true;
    }

    void End(const QXYANG_STATEMENT_S &statement)
    {
        OpenStatement open = open_.back();
        open_.pop_back();
        lastEnd_ = statement.stPlace.uiOffset + statement.stPlace.uiLength;
        isFirst_ = false;
        if (open.isArgument || !isCompact_ || lastEnd_ == 0 || text_[lastEnd_ - 1] != ';')
            return;
        for (size_t i = open.item + 1; i < outline_.size(); ++i) // comments before the ';' go behind it
            --outline_[i].level;
    }

    void Comment(const QXYANG_COMMENT_S &comment)
    {
        uint32_t begin = comment.stPlace.uiOffset;
        OutlineItem item;
        item.isComment = true;
        item.argument = comment.pcText;
        item.level = static_cast<uint32_t>(open_.size() - (!open_.empty() && open_.back().isArgument ? 1 : 0));
        item.onSameLine = comment.uiIsAlone == 0 && !outline_.empty() && LinesSince(begin) == 0;
        item.blankBefore = !isFirst_ && LinesSince(begin) > 1;
        hasBlankLine_ = hasBlankLine_ || item.blankBefore;
        item.endsWithLine = isCompact_ && text_.substr(begin, 2) == "//";
        item.line = comment.stPlace.uiLine;
        item.column = comment.stPlace.uiColumn;
        outline_.push_back(std::move(item));
        lastEnd_ = begin + comment.stPlace.uiLength;
        isFirst_ = false;
    }

    /* Line breaks between the latest end and the offset. */
    size_t LinesSince(uint32_t offset) const
    {
        if (offset <= lastEnd_ || offset > text_.size())
            return 0;
        std::string_view between = text_.substr(lastEnd_, offset - lastEnd_);
        return static_cast<size_t>(std::count(between.begin(), between.end(), '\n'));
    }

    /* In YIN, an element may be the argument of the extension statement around. */
    bool TakeAsArgument(const QXYANG_STATEMENT_S &statement)
    {
        if (isCompact_ || open_.empty() || open_.back().extension == nullptr || statement.pcPrefix == nullptr)
            return false;
        OutlineItem &around = outline_[open_.back().item];
        const Extension &extension = *open_.back().extension;
        if (!extension.inElement || around.argument || !IsSameText(open_.back().space, statement.pcNamespace) ||
            extension.argument != statement.pcKeyword)
            return false;
        if (statement.uiFirstChild != QXYANG_NO_STATEMENT)
            Fail(statement, "element '" + Name(statement) + "' is the argument of '" + around.Name() +
                                "': expected a text without elements");
        around.argument = statement.pcArgument != nullptr ? statement.pcArgument : "";
        open_.push_back({open_.back().item, nullptr, nullptr, true});
        return true;
    }

    void SetYangForm(const QXYANG_STATEMENT_S &statement, OutlineItem *item) const
    {
        uint32_t form = QXYANG_ARGUMENT_NONE;
        const char *name = QXYANG_GetArgumentName(statement.pcKeyword, &form);
        if (name == nullptr)
            Fail(statement, "unknown statement '" + Name(statement) + "': YANG has none of that name");
        if (form == QXYANG_ARGUMENT_NONE && statement.pcArgument != nullptr)
            Fail(statement, "statement '" + Name(statement) + "' takes no argument");
        if (statement.pcArgumentName != nullptr && statement.pcArgumentName != std::string_view(name))
            Fail(statement, "found attribute '" + std::string(statement.pcArgumentName) + "' of '" + Name(statement) +
                                "'; expected '" + name + "'");
        item->argumentName = name;
        item->inElement = form == QXYANG_ARGUMENT_ELEMENT;
        item->isText = IsTextKeyword(item->keyword);
    }

    const Extension *SetExtensionForm(const QXYANG_STATEMENT_S &statement, OutlineItem *item)
    {
        const ExtensionHome &home = extensions_->HomeOf(statement);
        item->prefix = home.prefix;
        item->module = home.module;
        if (home.module.empty() && !isCompact_)
            FailHomeless(statement);
        const Extension *extension =
            home.module.empty() ? nullptr : extensions_->Find(home.module, statement.pcKeyword);
        if (extension == nullptr) {
            if (forYin_ || !IsClear(statement))
                FailUnknown(statement, home.module);
            return nullptr;
        }
        item->argumentName = extension->argument;
        item->inElement = extension->inElement;
        if (statement.pcArgument != nullptr && extension->argument.empty())
            Fail(statement, "extension '" + Name(statement) + "' takes no argument");
        if (isCompact_ || statement.pcArgument == nullptr)
            return extension;
        std::string_view found = statement.pcArgumentName != nullptr ? statement.pcArgumentName : "";
        if (extension->inElement || found != extension->argument)
            Fail(statement, "found " + (found.empty() ? "a text" : "attribute '" + std::string(found) + "'") + " of '" +
                                Name(statement) + "'; expected its argument in " +
                                (extension->inElement ? "element" : "attribute") + " '" + extension->argument + "'");
        return extension;
    }

    /* True if it can be told without the extension what the statement's argument is. */
    bool IsClear(const QXYANG_STATEMENT_S &statement) const
    {
        if (isCompact_ || statement.uiArgumentForm == QXYANG_ARGUMENT_ATTRIBUTE)
            return true;
        if (statement.uiArgumentForm == QXYANG_ARGUMENT_TEXT)
            return false;
        if (statement.uiFirstChild == QXYANG_NO_STATEMENT)
            return true;
        QXYANG_STATEMENT_S first = file_.Statement(statement.uiFirstChild);
        return !IsSameText(first.pcNamespace, statement.pcNamespace);
    }

    static bool IsSameText(const char *one, const char *other)
    {
        return one != nullptr && other != nullptr && one == std::string_view(other);
    }

    [[noreturn]] void FailHomeless(const QXYANG_STATEMENT_S &statement)
    {
        std::string space = statement.pcNamespace;
        if (space.empty())
            Fail(statement, "element '" + Name(statement) + "' is in no namespace");
        std::string text = "'" + Name(statement) + "' is of namespace '" + space + "', which no imported module has";
        for (const auto &[prefix, module] : extensions_->Prefixes())
            if (!extensions_->IsFound(module))
                Fail(statement, text + "; no file of module '" + module + "' is found (-d adds a directory)");
            else if (prefix == statement.pcPrefix)
                Fail(statement, text + "; prefix '" + prefix + "' stands for module '" + module +
                                    "', whose namespace is '" + extensions_->NamespaceOf(module) + "'");
        Fail(statement, text);
    }

    [[noreturn]] void FailUnknown(const QXYANG_STATEMENT_S &statement, const std::string &module)
    {
        std::string why = "it is not known how YIN writes the argument of '" + Name(statement) + "': ";
        if (module.empty())
            Fail(statement, why + "no import has the prefix '" + statement.pcPrefix + "'");
        if (extensions_->IsFound(module))
            Fail(statement, why + "module '" + module + "' has no such extension");
        Fail(statement, why + "no file of module '" + module + "' is found (-d adds a directory)");
    }

    static std::string Name(const QXYANG_STATEMENT_S &statement)
    {
        std::string prefix = statement.pcPrefix != nullptr ? statement.pcPrefix : "";
        return prefix.empty() ? statement.pcKeyword : prefix + ":" + statement.pcKeyword;
    }

    [[noreturn]] static void Fail(const QXYANG_STATEMENT_S &statement, const std::string &text)
    {
        throw ConvertError(statement.stPlace.uiLine, statement.stPlace.uiColumn, text);
    }

    /* A file without blank lines gets them around the definitions that take several lines. */
    void SpreadDefinitions()
    {
        bool wasLong = false;
        for (size_t i = 0; i < outline_.size(); ++i) {
            OutlineItem &item = outline_[i];
            if (item.level != 1 || item.onSameLine)
                continue;
            bool isLong = i + 1 < outline_.size() && outline_[i + 1].level > 1;
            item.blankBefore = i > 0 && outline_[i - 1].level > 0 && (isLong || item.isComment || wasLong) &&
                               !outline_[i - 1].isComment;
            wasLong = isLong;
        }
    }

    const ModelFile &file_;
    Extensions *extensions_;
    const bool forYin_;
    const bool isCompact_;
    std::string_view text_;
    Outline outline_;
    std::vector<OpenStatement> open_;
    uint32_t lastEnd_ = 0; /* end of what was read latest: a head, a statement or a comment */
    bool isFirst_ = true;  /* nothing was read yet of the block that is open */
    bool hasBlankLine_ = false;
    std::exception_ptr failed_;
};

} // namespace

Outline ReadOutline(const ModelFile &file, Extensions *extensions, bool forYin)
{
    return OutlineReader(file, extensions, forYin).Read();
}

} // namespace inspect
