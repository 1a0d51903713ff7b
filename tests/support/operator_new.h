/* The operators new and delete of a whole program, for tests that count or refuse what is allocated. A program that is linked
 * with operator_new.cpp defines both functions. */
#ifndef KORV_TEST_OPERATOR_NEW_H
#define KORV_TEST_OPERATOR_NEW_H

#include <cstddef>

namespace test {

/* Null: operator new fails. */
void *New(std::size_t size);

/* Gives back what New returned; null does nothing. */
void Delete(void *memory);

} // namespace test

#endif // KORV_TEST_OPERATOR_NEW_H
