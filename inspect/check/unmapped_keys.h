/* Why a class lacks an attribute id for a key of the class above it, and what mends that. */
#pragma once

#include <string>

#include <korv_lib_yang.h>
#include <korv_platform.h>

namespace inspect {

struct UnmappedKey {
    std::string text;                   /* a sentence without its beginning's capital; "" when nothing is known */
    const KorvTreeLeaf *leaf = nullptr; /* whose attribute id is in the way: its place may follow the text */
};

/* `schemaNode` is the class's node in the schema, or null. The reasons are those of the schema as it is now. */
UnmappedKey WhyUnmapped(QY_CTX *schema, QY_NODE *schemaNode, const KorvTreeNode &node, const KorvTreeNode &above);

} // namespace inspect
