/* One module file in memory, and where in it something stands. */
#pragma once

#include <expat.h>

#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace qxyang {

/* Between the namespace and the name of an element or attribute: no namespace can contain it. */
inline constexpr char NAMESPACE_SEPARATOR = '\n';

/* Both count from 1; the column counts characters. */
struct Position {
    uint32_t line = 0;
    uint32_t column = 0;
};

/* Suffixes of module files. */
inline constexpr std::string_view YIN_SUFFIX = ".yin";
inline constexpr std::string_view COMPACT_SUFFIX = ".yang";

/* The text of a YIN file lies in expat's own buffer, where expat would copy it otherwise. A zero byte follows the
 * text. */
class Source {
  public:
    /* Failures in the file are recorded under that module's name. The suffix of the path tells the syntax. */
    Source(std::string path, std::string module)
        : path_(std::move(path)), module_(std::move(module)), isCompact_(path_.ends_with(COMPACT_SUFFIX))
    {
    }

    /* Reads the whole file, and makes the parser of one in YIN. Refuses everything but regular files, without
     * waiting for a pipe or device. Returns why the file cannot be read, or an empty text. */
    std::string Read();

    /* The same with a copy of that text instead of the file's content. */
    std::string Take(std::string_view text);

    /* True if the file is in compact syntax. Such a file has no parser. */
    bool IsCompact() const { return isCompact_; }

    /* The parser of a YIN file. The caller sets its handlers. */
    XML_Parser Parser() const { return parser_.get(); }
    XML_Status Parse() { return XML_ParseBuffer(parser_.get(), static_cast<int>(size_), XML_TRUE); }

    const std::string &Path() const { return path_; }
    const std::string &Module() const { return module_; }
    std::string_view Text() const { return {text_, size_}; }

    /* Bytes that may be read behind a text in compact syntax; the first is zero. */
    static constexpr size_t COMPACT_ROOM = 8;

    /* Where the text begins behind a byte order mark. */
    uint32_t Start() const { return start_; }

    /* True when the file is in UTF-16. */
    bool IsWide() const { return UnitSize() == 2; }

    /* The file says in its XML declaration that each byte is one character. */
    void SetSingleByte() { encoding_ = Encoding::SingleByte; }

    /* True if that part of the text is white space: XML allows no other character up to the blank. Looks at eight
     * bytes at a time, since most of what stands between tags is indentation. False for UTF-16, which needs a closer
     * look. */
    bool IsBlank(uint32_t begin, uint32_t end) const
    {
        constexpr uint32_t WORD = sizeof(uint64_t);
        if (begin >= end)
            return true;
        if (UnitSize() != 1)
            return false;
        if (end - begin >= WORD) {
            for (; end - begin > WORD; begin += WORD)
                if (!IsBlankWord(begin))
                    return false;
            return IsBlankWord(end - WORD);
        }
        while (begin < end && static_cast<unsigned char>(text_[begin]) <= ' ')
            ++begin;
        return begin == end;
    }

    /* Where the first text begins between two tags that is neither white space nor a comment nor a processing
     * instruction; `end` if there is none. */
    uint32_t FindText(uint32_t begin, uint32_t end) const;

    /* Counts lines from the nearest known place before the offset, so all failures of a file together cost one pass. */
    Position Locate(uint32_t offset);

  private:
    enum class Encoding : uint8_t {
        Utf8,
        Utf16Little,
        Utf16Big,
        SingleByte
    };

    std::string ReadOpen(int file);
    char *Buffer(size_t room);
    void Complete();
    void DetectEncoding();
    bool IsBlankWord(uint32_t at) const
    {
        constexpr uint64_t EACH = 0x0101010101010101u;
        uint64_t bytes;
        std::memcpy(&bytes, text_ + at, sizeof bytes);
        return ((bytes | (bytes + EACH * (0x7F - ' '))) & EACH * 0x80) == 0;
    }

    static constexpr uint32_t MARK_DISTANCE = 1 << 16;

    bool IsAt(uint32_t offset, uint32_t end, std::string_view ascii) const;
    uint32_t UnitSize() const { return encoding_ == Encoding::Utf16Little || encoding_ == Encoding::Utf16Big ? 2 : 1; }
    uint32_t UnitAt(uint32_t offset) const;
    bool StartsCharacter(uint32_t unit) const;

    std::string path_;
    std::string module_;
    bool isCompact_;
    struct ParserDelete {
        void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
    };

    std::unique_ptr<std::remove_pointer_t<XML_Parser>, ParserDelete> parser_;
    std::unique_ptr<char[]> compactText_;
    char *text_ = nullptr;
    size_t size_ = 0;
    Encoding encoding_ = Encoding::Utf8;
    uint32_t start_ = 0; /* where the text begins behind a byte order mark */
    struct Mark {
        uint32_t offset;
        Position position;
    };
    void Advance(Mark *mark, uint32_t end) const;

    /* Known places in the order of the file, MARK_DISTANCE apart up to the furthest one that was asked for. */
    std::vector<Mark> marks_;
    Mark latest_{}; /* the place that was asked for last: most questions go on from there */
};

} // namespace qxyang
