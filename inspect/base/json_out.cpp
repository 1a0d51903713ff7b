#include "base/json_out.h"

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <cstdio>

#include "base/text.h"

namespace inspect {

JsonOut::JsonOut() : stream_(stdout, buffer_, sizeof(buffer_)), writer_(stream_)
{
    writer_.SetIndent(' ', 2);
}

JsonOut::~JsonOut()
{
    stream_.Put('\n');
    stream_.Flush();
}

void JsonOut::Text(const char *text)
{
    if (text != nullptr)
        writer_.String(ValidUtf8(text).c_str());
    else
        writer_.Null();
}

void JsonOut::Numbers(const std::vector<uint64_t> &numbers)
{
    std::string text = "[";
    for (const uint64_t number : numbers) {
        if (text.size() > 1)
            text += ", ";
        text += std::to_string(number);
    }
    text += "]";
    writer_.RawValue(text.data(), text.size(), rapidjson::kArrayType);
}

void JsonOut::Numbers(const std::vector<uint32_t> &numbers)
{
    Numbers(std::vector<uint64_t>(numbers.begin(), numbers.end()));
}

/* One place after the other is in the same file. */
const std::string &JsonOut::Quoted(const std::string &file)
{
    if (file == file_)
        return quoted_;
    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
    writer.String(ValidUtf8(file).c_str());
    file_ = file;
    return quoted_ = buffer.GetString();
}

void JsonOut::Place(const std::string &file, uint32_t line, uint32_t column)
{
    if (file.empty())
        return Null();
    place_ = "{\"file\": ";
    place_ += Quoted(file);
    place_ += ", \"line\": " + std::to_string(line) + ", \"column\": " + std::to_string(column) + "}";
    writer_.RawValue(place_.data(), place_.size(), rapidjson::kObjectType);
}

} // namespace inspect
