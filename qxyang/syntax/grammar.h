/* Which statement may stand within which, how often, and in which version of YANG. */
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <initializer_list>

#include "syntax/keywords.h"
#include "syntax/statement.h"

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

/* What holds of a statement within another. */
struct Placement {
    enum Bit : uint8_t {
        ALLOWED = 1 << 0,
        SINGLE = 1 << 1,       /* at most once */
        SINGLE_IN_10 = 1 << 2, /* at most once in YANG 1.0 */
        SINCE_11 = 1 << 3,     /* in YANG 1.1 only */
    };

    uint8_t bits = 0;

    constexpr bool Has(Bit bit) const { return (bits & bit) != 0; }
};

Placement PlacementOf(Kw parent, Kw child);

/* Extension statements set no property. */
constexpr std::array<uint16_t, KW_COUNT> MakeProperties()
{
    std::array<uint16_t, KW_COUNT> properties{};
    auto set = [&properties](Kw keyword, uint16_t property) { properties[static_cast<size_t>(keyword)] = property; };
    set(Kw::Config, SETS_CONFIG);
    set(Kw::Default, SETS_DEFAULT);
    set(Kw::Mandatory, SETS_MANDATORY);
    set(Kw::MaxElements, SETS_MAX_ELEMENTS);
    set(Kw::MinElements, SETS_MIN_ELEMENTS);
    set(Kw::Must, SETS_MUST);
    set(Kw::Presence, SETS_PRESENCE);
    set(Kw::Units, SETS_UNITS);
    set(Kw::Type, SETS_TYPE);
    set(Kw::Unique, SETS_UNIQUE);
    set(Kw::Typedef, HAS_DEFINITIONS);
    set(Kw::Grouping, HAS_DEFINITIONS);
    return properties;
}

inline constexpr std::array<uint16_t, KW_COUNT> PROPERTIES = MakeProperties();

/* What a statement says of the one around it: a Property, or 0. */
inline uint16_t PropertyOf(Kw keyword)
{
    return PROPERTIES[static_cast<size_t>(keyword)];
}

/* True if a statement may stand in a deviate of that kind: RFC 7950, 7.20.3.2 and the deviate rules in 14. */
bool IsDeviateProperty(DeviateKind kind, Kw child);

/* Statements that the parent must contain. */
const KeywordSet &RequiredIn(Kw parent);

/* What may stand before yang-version. RFC 7950, 14 lets the header statements stand in any order; these three mean
 * the same in both versions. */
inline constexpr KeywordSet BEFORE_VERSION = {Kw::Namespace, Kw::Prefix, Kw::BelongsTo};

} // namespace qxyang
