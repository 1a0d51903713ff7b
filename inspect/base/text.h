/* Small texts. */
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace inspect {

std::string Hex(uint32_t value);

std::string Join(const std::vector<std::string> &words, std::string_view separator);
std::string JoinNumbers(const std::vector<uint32_t> &numbers, std::string_view separator);

/* The text as one line that a terminal shows as it is written: control and direction characters, and bytes that are no
 * UTF-8, are escaped. */
std::string Printable(std::string_view text);

/* True if no byte of the text is beyond ASCII. */
bool IsAscii(std::string_view text);

/* The text with a replacement character for each byte that is no UTF-8. */
std::string ValidUtf8(std::string_view text);

/* The number of characters of UTF-8. */
size_t Characters(std::string_view text);

/* Fills up with blanks to a width, counted in characters of UTF-8; a longer text gets `gap` blanks. */
void PadTo(std::string *text, size_t width, size_t gap = 0);

/* "1 node", "2 nodes". */
std::string Count(uint64_t number, std::string_view noun);

/* Finds the name that a misspelt one most likely means among those that are offered. */
class NearestName {
  public:
    explicit NearestName(std::string_view name);

    void Offer(std::string_view candidate);

    /* ": did you mean 'x'?", or "". */
    std::string Hint() const;

  private:
    std::string name_;
    std::string nearest_;
    size_t distance_;
};

} // namespace inspect
