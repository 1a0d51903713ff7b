#include "xml_parse.h"

#include <expat.h>

namespace bench {
namespace {

void StartElement(void *, const char *, const char **) {}
void EndElement(void *, const char *) {}

} // namespace

void ParseXml(benchmark::State &state, const std::string &text)
{
    XML_Parser parser = XML_ParserCreate(nullptr);
    XML_SetElementHandler(parser, StartElement, EndElement);
    if (XML_Parse(parser, text.data(), static_cast<int>(text.size()), 1) != XML_STATUS_OK)
        state.SkipWithError("a module is no XML");
    XML_ParserFree(parser);
}

} // namespace bench
