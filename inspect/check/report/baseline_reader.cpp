#include "check/report/baseline_reader.h"

#include <rapidjson/error/en.h>
#include <rapidjson/reader.h>

#include <algorithm>
#include <string_view>

#include "base/failure.h"
#include "base/line_and_column.h"

namespace inspect {
namespace {

/* Takes what the JSON reader reads, and refuses what is no baseline where it stands. */
class Handler : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, Handler> {
  public:
    std::vector<Baseline::Entry> entries;
    std::string fault; /* "" as long as all is right */

    bool Default() { return Refuse("this has no place in a baseline"); }

    bool StartObject()
    {
        if (state_ == State::Begin) {
            state_ = State::Top;
            return true;
        }
        if (state_ != State::Findings)
            return Default();
        state_ = State::Entry;
        entries.emplace_back();
        members_.clear();
        return true;
    }

    bool Key(const char *text, rapidjson::SizeType size, bool /*copy*/)
    {
        key_.assign(text, size);
        constexpr std::string_view TOP[] = {"version", "findings"};
        constexpr std::string_view ENTRY[] = {"rule", "module", "file", "text", "count"};
        bool known = state_ == State::Top ? std::find(std::begin(TOP), std::end(TOP), key_) != std::end(TOP)
                                          : std::find(std::begin(ENTRY), std::end(ENTRY), key_) != std::end(ENTRY);
        return known || Refuse("a baseline has no '" + key_ + "' here");
    }

    bool String(const char *text, rapidjson::SizeType size, bool /*copy*/)
    {
        if (state_ != State::Entry)
            return Default();
        Baseline::Entry &entry = entries.back();
        std::string *member = key_ == "rule"     ? &entry.rule
                              : key_ == "module" ? &entry.module
                              : key_ == "file"   ? &entry.file
                              : key_ == "text"   ? &entry.text
                                                 : nullptr;
        if (member == nullptr)
            return Refuse("'" + key_ + "' is a number");
        member->assign(text, size);
        return Note();
    }

    bool Uint(unsigned number)
    {
        if (state_ == State::Top && key_ == "version") {
            hasVersion_ = number == BASELINE_VERSION;
            return hasVersion_ ||
                   Refuse("a baseline of version " + std::to_string(number) + " is none of this program's");
        }
        if (state_ != State::Entry || key_ != "count" || number == 0)
            return Refuse("this number has no place in a baseline");
        entries.back().count = number;
        return Note();
    }

    bool StartArray()
    {
        if (state_ != State::Top || key_ != "findings")
            return Default();
        state_ = State::Findings;
        return true;
    }

    bool EndArray(rapidjson::SizeType /*size*/)
    {
        state_ = State::Top;
        hasFindings_ = true;
        return true;
    }

    bool EndObject(rapidjson::SizeType /*size*/)
    {
        if (state_ == State::Top)
            return (hasVersion_ && hasFindings_) || Refuse("a baseline has 'version' and 'findings'");
        state_ = State::Findings;
        return members_.size() == 5 || Refuse("a finding has 'rule', 'module', 'file', 'text' and 'count', each once");
    }

  private:
    enum class State {
        Begin,
        Top,
        Findings,
        Entry
    };

    bool Refuse(const std::string &text)
    {
        fault = text;
        return false;
    }

    /* The member that was just read. */
    bool Note()
    {
        if (std::find(members_.begin(), members_.end(), key_) != members_.end())
            return Refuse("'" + key_ + "' stands twice");
        members_.push_back(key_);
        return true;
    }

    State state_ = State::Begin;
    std::string key_;
    std::vector<std::string> members_; /* that the finding has so far */
    bool hasVersion_ = false;
    bool hasFindings_ = false;
};

} // namespace

std::vector<Baseline::Entry> ReadBaselineText(const std::string &path, const std::string &text)
{
    Handler handler;
    rapidjson::Reader reader;
    rapidjson::MemoryStream memory(text.data(), text.size());
    rapidjson::EncodedInputStream<rapidjson::UTF8<>, rapidjson::MemoryStream> stream(memory);
    rapidjson::ParseResult result = reader.Parse<rapidjson::kParseValidateEncodingFlag>(stream, handler);
    if (!result) {
        auto [line, column] = PlaceIn(text, result.Offset());
        throw Failure(path + ":" + std::to_string(line) + ":" + std::to_string(column) + ": the baseline is damaged: " +
                          (handler.fault.empty() ? rapidjson::GetParseError_En(result.Code()) : handler.fault),
                      EXIT_USAGE);
    }
    return std::move(handler.entries);
}

} // namespace inspect
