#include "base/json_out.h"

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

} // namespace inspect
