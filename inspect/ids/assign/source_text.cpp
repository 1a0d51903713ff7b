#include "ids/assign/source_text.h"

namespace inspect::ids {

SourceText::SourceText(std::string_view bytes) : bytes_(bytes)
{
    bool hasMark = bytes.starts_with("\xFE\xFF") || bytes.starts_with("\xFF\xFE");
    first_ = hasMark ? 2 : 0;
    if (hasMark || (bytes.size() >= 2 && (bytes[0] == '\0') != (bytes[1] == '\0'))) {
        width_ = 2;
        isBigEndian_ = bytes[0] == '\xFE' || bytes[0] == '\0';
    }
    size_t end = LineEnd(first_);
    if (end >= first_ + 2 * width_ && At(end - width_) == '\n' && At(end - 2 * width_) == '\r')
        lineBreak_ = "\r\n";
}

char SourceText::At(size_t offset) const
{
    if (offset >= bytes_.size() || bytes_.size() - offset < width_)
        return '\0';
    if (width_ == 1)
        return bytes_[offset];
    char high = bytes_[isBigEndian_ ? offset : offset + 1];
    return high == '\0' ? bytes_[isBigEndian_ ? offset + 1 : offset] : '\0';
}

size_t SourceText::LineBegin(size_t offset) const
{
    while (offset >= first_ + width_ && At(offset - width_) != '\n')
        offset -= width_;
    return offset;
}

size_t SourceText::LineEnd(size_t offset) const
{
    while (offset < bytes_.size()) {
        char character = At(offset);
        offset += width_;
        if (character == '\n')
            break;
    }
    return offset < bytes_.size() ? offset : bytes_.size();
}

std::string SourceText::Plain(size_t begin, size_t end) const
{
    std::string text;
    for (; begin < end; begin += width_)
        text += At(begin);
    return text;
}

std::string SourceText::Indent(size_t offset) const
{
    size_t begin = LineBegin(offset);
    size_t end = begin;
    while (At(end) == ' ' || At(end) == '\t')
        end += width_;
    return Plain(begin, end);
}

bool SourceText::IsFirstOnLine(size_t offset) const
{
    size_t begin = LineBegin(offset);
    while (begin < offset && (At(begin) == ' ' || At(begin) == '\t'))
        begin += width_;
    return begin == offset;
}

bool SourceText::Has(size_t offset, std::string_view plain) const
{
    for (char character : plain) {
        if (At(offset) != character)
            return false;
        offset += width_;
    }
    return true;
}

std::string SourceText::Encoded(std::string_view plain) const
{
    if (width_ == 1)
        return std::string(plain);
    std::string wide;
    for (char character : plain) {
        wide += isBigEndian_ ? '\0' : character;
        wide += isBigEndian_ ? character : '\0';
    }
    return wide;
}

} // namespace inspect::ids
