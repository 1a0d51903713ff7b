#include "files/source.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <new>

#include "base/schema_limits.h"
#include "files/xml_memory.h"

namespace qxyang {

namespace {

class OpenFile {
  public:
    explicit OpenFile(const char *path)
    {
        do
            descriptor_ = ::open(path, O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY);
        while (descriptor_ < 0 && errno == EINTR);
    }
    OpenFile(const OpenFile &) = delete;
    OpenFile &operator=(const OpenFile &) = delete;
    ~OpenFile()
    {
        if (descriptor_ >= 0)
            ::close(descriptor_);
    }

    int Descriptor() const { return descriptor_; }

  private:
    int descriptor_;
};

std::string SystemReason(const char *what)
{
    char buffer[128];
    return std::string(what) + ": " + ::strerror_r(errno, buffer, sizeof buffer);
}

} // namespace

std::string Source::Read()
{
    OpenFile file(path_.c_str());
    if (file.Descriptor() < 0)
        return SystemReason("cannot be opened");
    return ReadOpen(file.Descriptor());
}

std::string Source::ReadOpen(int file)
{
    struct stat status;
    if (::fstat(file, &status) != 0)
        return SystemReason("cannot be examined");
    if (!S_ISREG(status.st_mode))
        return "is not a regular file";
    if (status.st_size > static_cast<off_t>(limits::FILE_BYTES))
        return "is larger than " + std::to_string(limits::FILE_BYTES >> 20) + " MiB";

    size_t room = static_cast<size_t>(status.st_size);
    text_ = Buffer(room + 1);
    while (size_ < room) {
        ssize_t count = ::read(file, text_ + size_, room - size_);
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return SystemReason("cannot be read");
        if (count == 0)
            break;
        size_ += static_cast<size_t>(count);
    }
    Complete();
    return {};
}

std::string Source::Take(std::string_view text)
{
    if (text.size() > limits::FILE_BYTES)
        return "is larger than " + std::to_string(limits::FILE_BYTES >> 20) + " MiB";
    text_ = Buffer(text.size() + 1);
    size_ = text.size();
    std::memcpy(text_, text.data(), size_);
    Complete();
    return {};
}

void Source::Complete()
{
    text_[size_] = '\0';
    if (isCompact_)
        std::memset(text_ + size_, 0, COMPACT_ROOM);
    DetectEncoding();
}

char *Source::Buffer(size_t room)
{
    if (isCompact_) {
        compactText_.reset(new char[room + COMPACT_ROOM]); // not filled twice
        return compactText_.get();
    }
    const char separator[] = {NAMESPACE_SEPARATOR, '\0'};
    parser_.reset(XML_ParserCreate_MM(nullptr, &XML_MEMORY, separator));
    void *buffer = parser_ != nullptr ? XML_GetBuffer(parser_.get(), static_cast<int>(room)) : nullptr;
    if (buffer == nullptr)
        throw std::bad_alloc();
    return static_cast<char *>(buffer);
}

void Source::DetectEncoding()
{
    auto byte = [this](size_t i) { return static_cast<unsigned char>(text_[i]); };
    if (size_ >= 3 && byte(0) == 0xEF && byte(1) == 0xBB && byte(2) == 0xBF)
        start_ = 3;
    if (size_ < 2)
        return;
    bool mark = (byte(0) == 0xFF && byte(1) == 0xFE) || (byte(0) == 0xFE && byte(1) == 0xFF);
    if (mark)
        start_ = 2;
    if ((mark && byte(0) == 0xFF) || (byte(0) == '<' && byte(1) == 0))
        encoding_ = Encoding::Utf16Little;
    else if (mark || (byte(0) == 0 && byte(1) == '<'))
        encoding_ = Encoding::Utf16Big;
}

uint32_t Source::UnitAt(uint32_t offset) const
{
    auto byte = [this](uint32_t i) { return uint32_t{static_cast<unsigned char>(text_[i])}; };
    switch (encoding_) {
        case Encoding::Utf16Little:
            return offset + 1 < size_ ? byte(offset) | byte(offset + 1) << 8 : 0;
        case Encoding::Utf16Big:
            return offset + 1 < size_ ? byte(offset) << 8 | byte(offset + 1) : 0;
        default:
            return byte(offset);
    }
}

bool Source::IsAt(uint32_t offset, uint32_t end, std::string_view ascii) const
{
    for (char c : ascii) {
        if (offset >= end || UnitAt(offset) != static_cast<unsigned char>(c))
            return false;
        offset += UnitSize();
    }
    return true;
}

uint32_t Source::FindText(uint32_t begin, uint32_t end) const
{
    constexpr std::string_view MARKUP[][2] = {{"<!--", "-->"}, {"<?", "?>"}};
    while (begin < end) {
        std::string_view close;
        for (const auto &markup : MARKUP)
            if (IsAt(begin, end, markup[0]))
                close = markup[1];
        if (!close.empty()) {
            while (begin < end && !IsAt(begin, end, close))
                begin += UnitSize();
            begin += static_cast<uint32_t>(close.size()) * UnitSize();
            continue;
        }
        if (UnitAt(begin) > ' ')
            return begin;
        begin += UnitSize();
    }
    return end;
}

bool Source::StartsCharacter(uint32_t unit) const
{
    return encoding_ != Encoding::Utf8 || (unit & 0xC0) != 0x80;
}

/* Moves the mark up to that offset, which is not behind the text. */
void Source::Advance(Mark *mark, uint32_t end) const
{
    Position &position = mark->position;
    if (encoding_ == Encoding::Utf8) {
        const char *at = text_ + mark->offset;
        const char *stop = text_ + end;
        while (const void *found = std::memchr(at, '\n', static_cast<size_t>(stop - at))) {
            at = static_cast<const char *>(found) + 1;
            ++position.line;
            position.column = 1;
        }
        for (; at < stop; ++at)
            position.column += StartsCharacter(static_cast<unsigned char>(*at)) ? 1 : 0;
        mark->offset = end;
        return;
    }
    for (; mark->offset < end; mark->offset += UnitSize()) {
        bool isLineEnd = UnitAt(mark->offset) == '\n';
        position.line += isLineEnd ? 1 : 0;
        position.column = isLineEnd ? 1 : position.column + 1;
    }
}

Position Source::Locate(uint32_t offset)
{
    if (marks_.empty())
        marks_.push_back(latest_ = {start_, {1, 1}});
    auto behind = std::upper_bound(marks_.begin() + 1, marks_.end(), offset,
                                   [](uint32_t wanted, const Mark &mark) { return wanted < mark.offset; });
    Mark at = *(behind - 1);
    if (latest_.offset > at.offset && latest_.offset <= offset)
        at = latest_;
    auto end = static_cast<uint32_t>(std::min<size_t>(offset, size_));
    while (at.offset < end) {
        uint32_t due = marks_.back().offset + MARK_DISTANCE;
        if (at.offset >= due)
            marks_.push_back(at);
        else
            Advance(&at, std::min(end, due));
    }
    latest_ = at;
    return at.position;
}

} // namespace qxyang
