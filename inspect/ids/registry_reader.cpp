#include <rapidjson/error/en.h>
#include <rapidjson/reader.h>

#include <algorithm>

#include "base/failure.h"
#include "base/line_and_column.h"
#include "base/numbers.h"
#include "base/text.h"
#include "ids/registry.h"
#include "ids/registry_rules.h"

namespace inspect::ids {
namespace {

constexpr unsigned MAX_FIELD = 255;

using Memory = rapidjson::EncodedInputStream<rapidjson::UTF8<>, rapidjson::MemoryStream>;

/* An object of a list, of whatever kind. */
struct Entry {
    std::vector<std::string> members;
    std::string module;
    std::string path;
    std::optional<std::string> gone;
    uint32_t first = 0;
    uint32_t last = 0;
    uint32_t classId = 0;
    uint32_t field = 0;
    uint32_t key = 0;
    uint32_t sample = 0;
    uint32_t line = 0;

    bool Has(const char *member) const { return std::find(members.begin(), members.end(), member) != members.end(); }
};

/* Takes what the JSON reader reads, and refuses what is no registry where it stands. */
class Handler : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, Handler> {
  public:
    Handler(const std::string &text, const Memory &stream) : text_(text), stream_(stream) {}

    Registry registry;
    std::string fault; /* "" as long as all is right */

    bool Default() { return Refuse("this has no place in a registry"); }

    bool StartObject()
    {
        if (state_ == State::Begin) {
            state_ = State::Top;
            return true;
        }
        if (state_ != State::Ranges && state_ != State::Ids)
            return Default();
        list_ = state_;
        state_ = State::Entry;
        entry_ = {};
        entry_.line = Line();
        return true;
    }

    bool Key(const char *text, rapidjson::SizeType size, bool /*copy*/)
    {
        key_.assign(text, size);
        std::vector<std::string> &members = state_ == State::Entry ? entry_.members : members_;
        constexpr std::string_view TOP[] = {"version", "ranges", "ids"};
        constexpr std::string_view RANGE[] = {"module", "first", "last"};
        constexpr std::string_view ID[] = {"class", "field", "key", "path", "sample", "gone"};
        auto knows = [this](auto &names) {
            return std::find(std::begin(names), std::end(names), key_) != std::end(names);
        };
        if (state_ == State::Entry ? list_ == State::Ranges ? !knows(RANGE) : !knows(ID) : !knows(TOP))
            return Refuse("a registry has no '" + key_ + "' here");
        if (std::find(members.begin(), members.end(), key_) != members.end())
            return Refuse("'" + key_ + "' stands twice");
        members.push_back(key_);
        return true;
    }

    bool String(const char *text, rapidjson::SizeType size, bool /*copy*/)
    {
        if (state_ != State::Entry)
            return Default();
        if (key_ == "module")
            entry_.module.assign(text, size);
        else if (key_ == "path")
            entry_.path.assign(text, size);
        else if (key_ == "gone")
            entry_.gone = std::string(text, size);
        else if (uint32_t *member = HexMember())
            return SetHex(std::string(text, size), member);
        else
            return Refuse("'" + key_ + "' is a number");
        return true;
    }

    bool Uint(unsigned number)
    {
        if (state_ == State::Top && key_ == "version")
            return number == REGISTRY_VERSION ||
                   Refuse("a registry of version " + std::to_string(number) + " is none of this program's");
        if (state_ != State::Entry)
            return Refuse("this number has no place in a registry");
        uint32_t *member = key_ == "field" ? &entry_.field : key_ == "key" ? &entry_.key : nullptr;
        if (member == nullptr)
            return Refuse("'" + key_ + "' is a text");
        if (number == 0 || number > MAX_FIELD)
            return Refuse("'" + key_ + "' is no " + std::to_string(number));
        *member = number;
        return true;
    }

    bool StartArray()
    {
        if (state_ != State::Top || key_ == "version")
            return Default();
        state_ = key_ == "ranges" ? State::Ranges : State::Ids;
        return true;
    }

    bool EndArray(rapidjson::SizeType /*size*/)
    {
        state_ = State::Top;
        return true;
    }

    bool EndObject(rapidjson::SizeType /*size*/)
    {
        if (state_ == State::Top)
            return members_.size() == 3 || Refuse("a registry has 'version', 'ranges' and 'ids'");
        state_ = list_;
        return list_ == State::Ranges ? AddRange() : entry_.Has("field") || entry_.Has("key") ? AddField() : AddClass();
    }

  private:
    enum class State {
        Begin,
        Top,
        Ranges,
        Ids,
        Entry
    };

    bool Refuse(const std::string &text)
    {
        fault = text;
        return false;
    }

    uint32_t Line()
    {
        const char *end = text_.data() + stream_.Tell();
        line_ += static_cast<uint32_t>(std::count(counted_, end, '\n'));
        counted_ = end;
        return line_;
    }

    /* The member that has its number as models write it, "0x1000"; null for another key. */
    uint32_t *HexMember()
    {
        return key_ == "first"    ? &entry_.first
               : key_ == "last"   ? &entry_.last
               : key_ == "class"  ? &entry_.classId
               : key_ == "sample" ? &entry_.sample
                                  : nullptr;
    }

    bool SetHex(const std::string &text, uint32_t *member)
    {
        *member = ReadNumber(text).value;
        return (*member != 0 && Hex(*member) == text) || Refuse("'" + key_ + "' is no '" + text + "'");
    }

    bool AddRange()
    {
        if (entry_.members.size() != 3 || entry_.module.empty())
            return Refuse("a range has 'module', 'first' and 'last'");
        if (entry_.last < entry_.first)
            return Refuse("this range ends before it begins");
        registry.ranges.push_back({entry_.module, entry_.first, entry_.last, entry_.line});
        return true;
    }

    bool HasPath() const
    {
        size_t colon = entry_.path.find(':');
        return entry_.path.starts_with("/") && colon > 1 && colon < entry_.path.find('/', 1);
    }

    bool AddClass()
    {
        if (!entry_.Has("class") || !HasPath())
            return Refuse("a class has 'class' and a 'path' that begins with '/MODULE:'");
        registry.classes.push_back({entry_.classId, entry_.path, entry_.sample, entry_.gone, entry_.line});
        return true;
    }

    bool AddField()
    {
        bool isKey = entry_.Has("key");
        bool hasPath = HasPath() || (isKey && entry_.path.empty());
        if (!entry_.Has("class") || entry_.Has("sample") || (isKey && entry_.Has("field")) || !hasPath)
            return Refuse("an attribute has 'class', 'field' or 'key', and a 'path' that begins with '/MODULE:'");
        registry.fields.push_back(
            {entry_.classId, isKey ? entry_.key : entry_.field, isKey, entry_.path, entry_.gone, entry_.line});
        return true;
    }

    const std::string &text_;
    const Memory &stream_;
    const char *counted_ = text_.data(); /* up to here lines are counted */
    uint32_t line_ = 1;
    State state_ = State::Begin;
    State list_ = State::Begin; /* that the entry stands in */
    std::string key_;
    std::vector<std::string> members_; /* of the whole */
    Entry entry_;
};

[[noreturn]] void Fail(const std::string &path, const std::string &text, size_t offset, const std::string &what)
{
    auto [line, column] = PlaceIn(text, offset);
    Cause cause = {path, line, column, what};
    throw Failure("the registry '" + path + "' is damaged", EXIT_NOT_LOADED, {cause});
}

/* The offset of the first character of a line that is no blank. */
size_t OffsetOf(const std::string &text, uint32_t line)
{
    size_t offset = 0;
    for (uint32_t i = 1; i < line; ++i)
        offset = text.find('\n', offset) + 1;
    return std::min(text.find_first_not_of(' ', offset), text.size());
}

/* git leaves marks where two branches have changed the same lines. */
void RefuseConflictMarks(const std::string &path, const std::string &text)
{
    for (size_t begin = 0; begin < text.size(); begin = text.find('\n', begin) + 1) {
        std::string_view line = std::string_view(text).substr(begin);
        for (const char *mark : {"<<<<<<<", "|||||||", "=======", ">>>>>>>"})
            if (line.starts_with(mark))
                Fail(path, text, begin,
                     std::string("'") + mark + "' is the mark of a merge conflict that is not resolved");
        if (text.find('\n', begin) == std::string::npos)
            break;
    }
}

} // namespace

Registry ReadRegistry(const std::string &path, const std::string &text)
{
    RefuseConflictMarks(path, text);
    rapidjson::Reader reader;
    rapidjson::MemoryStream memory(text.data(), text.size());
    Memory stream(memory);
    Handler handler(text, stream);
    rapidjson::ParseResult result = reader.Parse<rapidjson::kParseValidateEncodingFlag>(stream, handler);
    if (!result)
        Fail(path, text, result.Offset(),
             handler.fault.empty() ? rapidjson::GetParseError_En(result.Code()) : handler.fault);
    handler.registry.Sort();
    if (RegistryFault fault = FaultOf(handler.registry); !fault.text.empty())
        Fail(path, text, OffsetOf(text, fault.line), fault.text);
    return std::move(handler.registry);
}

} // namespace inspect::ids
