/* Texts that are composed twice: to learn how long they are, and to write them. */
#ifndef KORV_TEXT_WRITER_H
#define KORV_TEXT_WRITER_H

#include <cstring>

#include "korv_lib_yang/korv_lib_yang.h"

namespace korv {

/* Composes a text from its end to its beginning, as the way from a node to its top has it. Without a buffer it counts. */
class BackWriter {
  public:
    BackWriter() = default;
    /* pcEnd: behind the last byte that is written. */
    explicit BackWriter(char *pcEnd) : m_pcBegin(pcEnd) {}

    void Put(const char *pcText, uint64_t ulLen)
    {
        m_ulLen += ulLen;
        if (m_pcBegin != nullptr) {
            m_pcBegin -= ulLen;
            std::memcpy(m_pcBegin, pcText, ulLen);
        }
    }

    /* A null text is an empty one. */
    void Put(const char *pcText) { Put(pcText != nullptr ? pcText : "", pcText != nullptr ? XUR_StrLen(pcText) : 0); }

    uint64_t Length() const { return m_ulLen; }

  private:
    char *m_pcBegin = nullptr;
    uint64_t m_ulLen = 0;
};

} // namespace korv

#endif // KORV_TEXT_WRITER_H
