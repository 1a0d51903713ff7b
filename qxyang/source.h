/* One YIN file in memory, and where in it something stands. */
#pragma once

#include <expat.h>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace qxyang {

/* Between the namespace and the name of an element or attribute: no namespace can contain it. */
inline constexpr char kNamespaceSeparator = '\n';

/* Both count from 1; the column counts characters. */
struct Position {
    uint32_t line = 0;
    uint32_t column = 0;
};

/* The text stands in expat's own buffer: expat would copy it there otherwise. It lives as long as the parser. */
class Source {
  public:
    /* `module` is the name under which failures in the file are recorded. */
    Source(std::string path, std::string module) : path_(std::move(path)), module_(std::move(module)) {}

    /* Makes the parser and reads the whole file. Opens regular files only, whatever the name leads to, and never waits for one. Empty on
     * success, otherwise why it cannot be read. */
    std::string read();

    /* Parses what was read. The handlers are the caller's to set. */
    XML_Parser parser() const { return parser_.get(); }
    XML_Status parse() { return XML_ParseBuffer(parser_.get(), static_cast<int>(size_), XML_TRUE); }

    const std::string &path() const { return path_; }
    const std::string &module() const { return module_; }
    std::string_view text() const { return {text_, size_}; }

    /* The file says of itself that each byte is one character. */
    void setSingleByte() { encoding_ = Encoding::kSingleByte; }

    /* Counts lines from the place that was asked for before when that lies ahead, so failures in file order cost one
     * pass. */
    Position locate(uint32_t offset);

  private:
    enum class Encoding : uint8_t {
        kUtf8,
        kUtf16Little,
        kUtf16Big,
        kSingleByte
    };

    std::string readOpen(int file);
    void detectEncoding();
    uint32_t unitAt(uint32_t offset) const;
    bool startsCharacter(uint32_t unit) const;

    std::string path_;
    std::string module_;
    struct ParserDelete {
        void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
    };

    std::unique_ptr<std::remove_pointer_t<XML_Parser>, ParserDelete> parser_;
    char *text_ = nullptr;
    size_t size_ = 0;
    Encoding encoding_ = Encoding::kUtf8;
    uint32_t start_ = 0; /* where the text begins behind a byte order mark */
    uint32_t at_ = 0;    /* the place that was asked for last */
    Position position_{1, 1};
};

}  // namespace qxyang
