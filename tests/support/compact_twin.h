/* The compact form of a module in YIN, made without the schema layer: what both say must be the same. */
#ifndef KORV_TEST_COMPACT_TWIN_H
#define KORV_TEST_COMPACT_TWIN_H

#include <string>

namespace test {

/* Each element becomes a statement: its first attribute without prefix is the argument, or the text of the element that
 * YIN writes it as. Comments are left out. Ends the program when the text is no XML. */
std::string CompactTwin(const std::string &yin);

} // namespace test

#endif // KORV_TEST_COMPACT_TWIN_H
