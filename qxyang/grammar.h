/* Which statement may stand within which, how often, and in which version of YANG. */
#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>

#include "keywords.h"
#include "statement.h"

namespace qxyang {

/* A set of statements. */
struct KeywordSet {
    uint64_t words[2] = {0, 0};

    constexpr KeywordSet() = default;
    constexpr KeywordSet(std::initializer_list<Kw> keywords)
    {
        for (Kw keyword : keywords)
            Add(keyword);
    }

    constexpr bool Has(Kw keyword) const
    {
        auto bit = static_cast<unsigned>(keyword);
        return (words[bit >> 6] >> (bit & 63) & 1) != 0;
    }
    constexpr bool HasAll(const KeywordSet &others) const
    {
        return (others.words[0] & ~words[0]) == 0 && (others.words[1] & ~words[1]) == 0;
    }
    constexpr void Add(Kw keyword)
    {
        auto bit = static_cast<unsigned>(keyword);
        words[bit >> 6] |= uint64_t{1} << (bit & 63);
    }
};

/* A statement within another. */
struct Placement {
    uint8_t bits = 0;

    constexpr bool Allowed() const { return (bits & 1) != 0; }
    constexpr bool Single() const { return (bits & 2) != 0; }     /* at most once */
    constexpr bool SingleIn10() const { return (bits & 4) != 0; } /* at most once in YANG 1.0 */
    constexpr bool Since11() const { return (bits & 8) != 0; }
};

Placement PlacementOf(Kw parent, Kw child);

/* Whether a statement may stand in a deviate of that kind. */
bool IsDeviateProperty(DeviateKind kind, Kw child);

/* Statements that the parent must contain. */
const KeywordSet &RequiredIn(Kw parent);

/* What may stand before yang-version in a module: nothing whose place depends on the version. */
inline constexpr KeywordSet BEFORE_VERSION = {Kw::Namespace, Kw::Prefix, Kw::BelongsTo};

} // namespace qxyang
