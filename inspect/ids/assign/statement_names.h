/* The statements that carry ids, and the module that defines them. */
#pragma once

#include <qxyang.h>

#include <string_view>

namespace inspect::ids {

inline constexpr const char *EXTENSION_MODULE = "quelvo-mim-extensions";
inline constexpr const char *EXTENSION_NAMESPACE = "urn:quelvo:yang:mim-extensions";
inline constexpr const char *EXTENSION_PREFIX = "mimext";
inline constexpr const char *EXTENSION_ARGUMENT = "value";

inline constexpr const char *CLASS_ID = "class-id";
inline constexpr const char *CLASS_TYPE = "class-type";
inline constexpr const char *FIELD_ID = "field-id";
inline constexpr const char *REFERENCE_KEY = "ref-id-key-fid";
inline constexpr const char *INDEX_MAP = "name2id-key-fid";
inline constexpr const char *DATATYPE_ID = "datatype-id";
inline constexpr const char *ANCESTOR_KEY = "ancestor-key-fid";

/* True if the statement is the extension module's one of that keyword. */
inline bool IsExtension(const QXYANG_STATEMENT_S &statement, std::string_view keyword)
{
    return statement.pcPrefix != nullptr && statement.pcModule != nullptr && keyword == statement.pcKeyword &&
           std::string_view(statement.pcModule) == EXTENSION_MODULE;
}

} // namespace inspect::ids
