#include "base/notes.h"

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <cstdio>

#include "base/text.h"

namespace inspect {
namespace {

class JsonLine {
  public:
    JsonLine() : writer_(buffer_) {}

    void Begin(const char *name)
    {
        Key(name);
        writer_.StartObject();
    }
    void End() { writer_.EndObject(); }
    void BeginArray(const char *name)
    {
        Key(name);
        writer_.StartArray();
    }
    void EndArray() { writer_.EndArray(); }

    void Text(const char *name, const std::string &text)
    {
        Key(name);
        writer_.String(ValidUtf8(text).c_str());
    }

    /* Module, place and text of something; what is not known is null. */
    void Members(const Cause &cause, const std::string &module)
    {
        TextOrNull("module", module);
        TextOrNull("file", cause.file);
        NumberOrNull("line", cause.line);
        NumberOrNull("column", cause.column);
        Text("text", cause.text);
    }

    void StartObject() { writer_.StartObject(); }
    void Print() { std::fprintf(stderr, "%s\n", buffer_.GetString()); }

  private:
    void Key(const char *name) { writer_.Key(name); }

    void TextOrNull(const char *name, const std::string &text)
    {
        if (!text.empty())
            return Text(name, text);
        Key(name);
        writer_.Null();
    }

    void NumberOrNull(const char *name, uint32_t number)
    {
        Key(name);
        if (number != 0)
            writer_.Uint(number);
        else
            writer_.Null();
    }

    rapidjson::StringBuffer buffer_;
    rapidjson::Writer<rapidjson::StringBuffer> writer_;
};

void PrintNote(const Cause &cause, const std::string &module)
{
    JsonLine line;
    line.StartObject();
    line.Begin("note");
    line.Members(cause, module);
    line.End();
    line.End();
    line.Print();
}

void PrintCause(const Cause &cause, const std::string &module)
{
    std::fprintf(stderr, "%s\n", Printable(PlaceText(cause, module) + cause.text).c_str());
}

void PrintText(const std::string &text)
{
    if (!text.empty())
        std::fprintf(stderr, "korv-inspect: %s\n", Printable(text).c_str());
}

} // namespace

void Notes::Say(const std::string &text) const
{
    if (asJson_)
        PrintNote({"", 0, 0, text}, "");
    else
        PrintText(text);
}

void Notes::Say(const Cause &cause, const std::string &module) const
{
    if (asJson_)
        PrintNote(cause, cause.module.empty() ? module : cause.module);
    else
        PrintCause(cause, module);
}

int Notes::End(const Failure &failure) const
{
    if (!asJson_) {
        for (const Cause &cause : failure.causes)
            PrintCause(cause, cause.module);
        PrintText(failure.what());
        return failure.exitCode;
    }
    JsonLine line;
    line.StartObject();
    line.Begin("error");
    line.Text("kind", KindName(failure));
    line.Text("text", failure.what());
    line.BeginArray("failures");
    for (const Cause &cause : failure.causes) {
        line.StartObject();
        line.Members(cause, cause.module);
        line.End();
    }
    line.EndArray();
    line.End();
    line.End();
    line.Print();
    return failure.exitCode;
}

} // namespace inspect
