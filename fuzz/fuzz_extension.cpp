/* Arguments of extension statements, one a line, in a module that uses every statement. */
#include <array>

#include "fuzz_host.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

namespace {

constexpr size_t ARGUMENTS = 8;

/* The next line of the text as an attribute value. */
std::string NextArgument(const std::string &text, size_t *at)
{
    std::string value;
    for (; *at < text.size() && text[*at] != '\n'; ++*at) {
        const auto byte = static_cast<unsigned char>(text[*at]);
        /* What XML does not allow stands for itself nowhere. */
        value += byte < 0x20 || byte > 0x7e ? "?"
                 : byte == '<'              ? "&lt;"
                 : byte == '&'              ? "&amp;"
                 : byte == '"'              ? "&quot;"
                                            : std::string(1, text[*at]);
    }
    ++*at;
    return value;
}

std::string Statement(const char *keyword, const std::string &argument, const std::string &nested = "")
{
    return std::string("<mimext:") + keyword + " value=\"" + argument + "\">" + nested + "</mimext:" + keyword + ">";
}

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const std::string text(reinterpret_cast<const char *>(data), size);
    std::array<std::string, ARGUMENTS> a;
    size_t at = 0;
    for (std::string &argument : a)
        argument = NextArgument(text, &at);
    const std::string leaf = "<leaf name=\"k\"><type name=\"uint32\"/>" + Statement("field-id", a[1]) +
                             Statement("datatype-id", a[2]) + Statement("ref-id-key-fid", a[3]) +
                             Statement("name2id-key-fid", a[4]) + "</leaf>";
    fuzz::WriteModel(
        "fuzz.yin",
        "<module name=\"fuzz\" xmlns=\"urn:ietf:params:xml:ns:yang:yin:1\" xmlns:f=\"urn:fuzz\" "
        "xmlns:mimext=\"urn:quelvo:yang:mim-extensions\"><namespace uri=\"urn:fuzz\"/><prefix value=\"f\"/>"
        "<import module=\"quelvo-mim-extensions\"><prefix value=\"mimext\"/></import>" +
            Statement("aaa-task-id", a[0]) + "<container name=\"c\">" + Statement("class-type", a[7]) +
            "<list name=\"l\"><key value=\"k\"/>" + Statement("class-id", a[0]) + Statement("tlmt-sample-id", a[5]) +
            leaf + "<container name=\"list-form\">" + Statement("class-id", a[5]) +
            Statement("ancestor-key-fid", a[6]) + "</container><container name=\"mapping\">" +
            Statement("class-id", a[1]) + Statement("ancestor-key-fid", a[4], Statement("field-id", a[6])) +
            Statement("ancestor-key-fid", a[1], Statement("field-id", a[3])) +
            "</container></list></container></module>");
    fuzz::LoadAndUse();
    return 0;
}
