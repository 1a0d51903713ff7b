/* The XML parser alone. */
#ifndef KORV_BENCH_XML_PARSE_H
#define KORV_BENCH_XML_PARSE_H

#include <benchmark/benchmark.h>

#include <string>

namespace bench {

/* Lets expat read the text without namespaces, with handlers that do nothing. */
void ParseXml(benchmark::State &state, const std::string &text);

} // namespace bench

#endif // KORV_BENCH_XML_PARSE_H
