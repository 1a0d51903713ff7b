/* The form of an instance-identifier. */
#pragma once

#include <string>
#include <string_view>

#include "check/yang/file_names.h"

namespace inspect {

/* Why the text is no instance-identifier (RFC 7950, 9.13 and 14) in a file with these prefixes; "" if it is one. The nodes
 * that it names are not looked for. */
std::string WhyNoInstanceIdentifier(std::string_view text, const FileNames &file);

} // namespace inspect
