#include "page/records.h"

#include <cstdio>

#include "base/text.h"

namespace inspect::page {
namespace {

std::string ArrayOf(const std::vector<uint32_t> &numbers)
{
    return "[" + JoinNumbers(numbers, ",") + "]";
}

} // namespace

void AddQuoted(std::string *json, std::string_view text)
{
    *json += '"';
    for (char c : ValidUtf8(text)) {
        if (c == '"' || c == '\\') {
            *json += '\\';
            *json += c;
        } else if (c == '\n') {
            *json += "\\n";
        } else if (c == '<' || static_cast<unsigned char>(c) < 0x20) {
            char escaped[8];
            std::snprintf(escaped, sizeof(escaped), "\\u%04x", c);
            *json += escaped;
        } else {
            *json += c;
        }
    }
    *json += '"';
}

void Row::Keep(bool isSaid)
{
    if (isSaid)
        kept_ = json_.size();
    json_ += ',';
}

void Row::Add(uint64_t number)
{
    json_ += std::to_string(number);
    Keep(number != 0);
}

void Row::Add(const std::vector<uint32_t> &numbers)
{
    json_ += numbers.empty() ? "0" : ArrayOf(numbers);
    Keep(!numbers.empty());
}

void Remarks::Key(const char *name)
{
    json_ += json_.empty() ? "{\"" : ",\"";
    json_ += name;
    json_ += "\":";
}

void Remarks::Add(const char *name, std::string_view text)
{
    if (text.empty())
        return;
    Key(name);
    AddQuoted(&json_, text);
}

void Remarks::Add(const char *name, const std::vector<std::string> &texts)
{
    if (texts.empty())
        return;
    Key(name);
    json_ += '[';
    for (const std::string &text : texts) {
        AddQuoted(&json_, text);
        json_ += ',';
    }
    json_.back() = ']';
}

void Remarks::Add(const char *name, const std::vector<uint32_t> &numbers)
{
    if (!numbers.empty())
        AddJson(name, ArrayOf(numbers));
}

void Remarks::AddNumber(const char *name, uint64_t number)
{
    AddJson(name, std::to_string(number));
}

void Remarks::AddJson(const char *name, const std::string &json)
{
    Key(name);
    json_ += json;
}

uint32_t Records::Add(const std::string &json)
{
    auto [entry, isNew] = numbers_.try_emplace(json, static_cast<uint32_t>(values_.size()));
    if (isNew)
        values_.push_back(&entry->first);
    return entry->second;
}

void Records::AddTo(std::string *json) const
{
    *json += '[';
    for (const std::string *value : values_) {
        *json += *value;
        *json += ',';
    }
    if (values_.empty())
        *json += ']';
    else
        json->back() = ']';
}

uint32_t Texts::Add(std::string_view text)
{
    auto [entry, isNew] = numbers_.try_emplace(std::string(text), 0);
    if (isNew) {
        std::string quoted;
        AddQuoted(&quoted, text);
        entry->second = values_.Add(quoted);
    }
    return entry->second;
}

} // namespace inspect::page
