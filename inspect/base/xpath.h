/* What an XPath 1.0 expression says, without a document: its faults, functions, prefixes, and how far its paths climb. */
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace inspect {

/* Offsets count bytes of the expression. */
struct XPathFacts {
    struct Fault {
        std::string text; /* follows the expression: "cannot be read from 'b' on" */
        size_t offset;
    };

    struct Function {
        std::string name; /* with its prefix, if it has one */
        size_t arguments;
        size_t offset;
    };

    struct Prefix {
        std::string name;
        size_t offset;
    };

    /* Where a path starts. What a function but current() returns, and what is in brackets, starts nowhere that is known. */
    enum class Start : uint8_t {
        Context, /* the context node */
        Current, /* current(), the same node */
        Root
    };

    /* A path that leads above where it starts. Its steps count from there, those in a predicate too: "../a[../../b]" climbs
     * one step with its first `..` and two in the predicate. */
    struct Climb {
        size_t steps;
        Start from;
        size_t offset; /* of the first step that leads above the start */
    };

    bool tooLarge = false; /* nested too deeply to be read: the rest is empty */
    std::vector<Fault> faults;
    std::vector<Function> functions; /* of an expression without faults, as what follows */
    std::vector<Prefix> prefixes;
    std::vector<Climb> climbs;
};

XPathFacts ReadXPath(const std::string &text);

} // namespace inspect
