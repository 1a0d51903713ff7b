/* The bytes of a model file as characters: those of UTF-16 have two. */
#pragma once

#include <string>
#include <string_view>

namespace inspect::ids {

class SourceText {
  public:
    explicit SourceText(std::string_view bytes);

    std::string_view Bytes() const { return bytes_; }
    size_t Size() const { return bytes_.size(); }
    bool IsWide() const { return width_ == 2; }

    /* The character at an offset if it is one of ASCII; else, and behind the end, '\0'. */
    char At(size_t offset) const;
    size_t Next(size_t offset) const { return offset + width_; }
    size_t Before(size_t offset) const { return offset - width_; }

    size_t LineBegin(size_t offset) const;

    /* Behind the line's end, or the end of the text. */
    size_t LineEnd(size_t offset) const;

    /* The ASCII characters between two offsets. */
    std::string Plain(size_t begin, size_t end) const;

    /* The blanks with which the line of the offset begins. */
    std::string Indent(size_t offset) const;

    /* True if nothing but blanks stands before the offset on its line. */
    bool IsFirstOnLine(size_t offset) const;

    /* True if the text from the offset has these characters. */
    bool Has(size_t offset, std::string_view plain) const;

    /* The line end that the file has. */
    const std::string &LineBreak() const { return lineBreak_; }

    /* Text of ASCII as the file has it. */
    std::string Encoded(std::string_view plain) const;

  private:
    std::string_view bytes_;
    size_t first_ = 0; /* behind a byte order mark of UTF-16 */
    size_t width_ = 1;
    bool isBigEndian_ = false;
    std::string lineBreak_ = "\n";
};

} // namespace inspect::ids
