/* Every limit of the schema layer. Beyond one of them a load fails with a text that names it, unless its comment
 * says what happens instead. */
#pragma once

#include <cstddef>

namespace qxyang::limits {

/* Files. A file is parsed in one piece, so its size stays below what expat takes as an int. */
inline constexpr size_t FILE_BYTES = size_t{256} << 20;
inline constexpr size_t STATEMENTS = size_t{16} << 20; /* statement records that the load of one file may need */

/* Statements of one file that tools read, any included: some 400 MiB. In a loaded file that has more, those behind them
 * have no place. */
inline constexpr size_t LISTED_STATEMENTS = size_t{4} << 20;

inline constexpr size_t XML_DEPTH = 512;
inline constexpr size_t ATTRIBUTES = 32; /* attributes of one element */

/* Bytes of an element's name, its namespace included, and of an identifier. RFC 7950, 6.2 asks for 64 at least. */
inline constexpr size_t NAME_LENGTH = 1024;

/* Schema. */
inline constexpr size_t SCHEMA_NODES = size_t{4} << 20; /* that one load creates, those of groupings included */
inline constexpr size_t SCHEMA_DEPTH = 512;
inline constexpr size_t LIST_KEYS = 255; /* the key count is an 8-bit number for readers */
inline constexpr size_t PATH_STEPS = 512;

/* What the nodes of one load may have together, those of groupings included. Many nodes share one record of it, but
 * readers read that record for each of the nodes. */
inline constexpr size_t EXTENSION_STATEMENTS = size_t{32} << 20;
inline constexpr size_t JOINED_STATEMENTS = size_t{4} << 20; /* of nodes to which a refine or deviation adds some */
inline constexpr size_t RANGE_PARTS = size_t{256} << 20;     /* of ranges with several parts, behind leafrefs as well */
inline constexpr size_t LEAFREFS = size_t{4} << 20;          /* each member of a union counts */
inline constexpr size_t LEAFREF_STEPS = size_t{32} << 20;    /* in the paths of the leafrefs */
inline constexpr size_t LEAFREF_TYPES = size_t{256} << 20; /* in the type chains of the leaves that leafrefs lead to */

/* Chains of references: import of import, grouping in grouping, typedef of typedef, identity of identity, feature of
 * feature, union in union. */
inline constexpr size_t CHAIN = 128;

/* Operands that a feature expression may have pending at a time, and nested parentheses in it. */
inline constexpr size_t EXPRESSION_DEPTH = 64;

/* Failures that one load call records; the load ends with the last of them. */
inline constexpr size_t FAILURES = 64;

/* Failures that one load call meets, recorded or not: a mistake in a grouping is met once for each copy. The load
 * ends with the one after the last. */
inline constexpr size_t FAILURES_MET = size_t{64} << 10;

/* Names that one load call compares with wrong ones to find the nearest; later failures suggest no name. */
inline constexpr size_t NAMES_COMPARED = size_t{1} << 20;

/* Members of unions that are tried for one default, and for all defaults of a load. A long default counts several
 * times. Defaults beyond these limits are taken for right. */
inline constexpr size_t DEFAULT_MEMBERS = 4096;
inline constexpr size_t DEFAULT_MEMBERS_OF_LOAD = size_t{1} << 20;

/* Bytes of a model's text that a failure quotes; the rest is cut. */
inline constexpr size_t QUOTED_LENGTH = 120;

} // namespace qxyang::limits
