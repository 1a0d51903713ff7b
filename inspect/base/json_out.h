/* JSON on standard output, written while it is made. */
#pragma once

#include <rapidjson/filewritestream.h>
#include <rapidjson/prettywriter.h>

#include <concepts>
#include <string>
#include <type_traits>
#include <vector>

namespace inspect {

class JsonOut {
  public:
    JsonOut();
    ~JsonOut();
    JsonOut(const JsonOut &) = delete;
    JsonOut &operator=(const JsonOut &) = delete;

    void Object() { writer_.StartObject(); }
    void EndObject() { writer_.EndObject(); }
    void Array() { writer_.StartArray(); }
    void EndArray() { writer_.EndArray(); }
    void Key(const char *name) { writer_.Key(name); }

    /* Null texts become null. */
    void Text(const char *text);
    void Text(const std::string &text) { Text(text.c_str()); }
    template <std::integral T>
    void Value(T value)
    {
        if constexpr (std::is_same_v<T, bool>)
            writer_.Bool(value);
        else if constexpr (std::is_signed_v<T>)
            writer_.Int64(value);
        else
            writer_.Uint64(value);
    }
    void Null() { writer_.Null(); }
    /* Writes the numbers on one line. */
    void Numbers(const std::vector<uint64_t> &numbers);
    void Numbers(const std::vector<uint32_t> &numbers);
    /* Bounds of unsigned types, which the library keeps as signed numbers of the same 64 bits. */
    void Range(int64_t min, int64_t max)
    {
        Numbers(std::vector<uint64_t>{static_cast<uint64_t>(min), static_cast<uint64_t>(max)});
    }

    /* {"file": ..., "line": ..., "column": ...} on one line; null without a file. */
    void Place(const std::string &file, uint32_t line, uint32_t column);

    void Member(const char *name, const char *text) { Key(name), Text(text); }
    void Member(const char *name, const std::string &text) { Key(name), Text(text); }
    template <std::integral T>
    void Member(const char *name, T value)
    {
        Key(name);
        Value(value);
    }

    /* 0 stands for none. */
    void NumberOrNull(const char *name, uint32_t number)
    {
        Key(name);
        if (number != 0)
            Value(number);
        else
            Null();
    }

  private:
    const std::string &Quoted(const std::string &file);

    std::string file_; /* of the latest place, and how it is written */
    std::string quoted_;
    std::string place_;
    char buffer_[65536] = {};
    rapidjson::FileWriteStream stream_;
    rapidjson::PrettyWriter<rapidjson::FileWriteStream> writer_;
};

} // namespace inspect
