/* The files page.html, page.css and page.js of this folder, which the build makes part of the program. */
#pragma once

#include <string_view>

namespace inspect::page {

extern const std::string_view PAGE_HTML; /* with marks where the others, the title and the data belong */
extern const std::string_view PAGE_CSS;
extern const std::string_view PAGE_JS;

} // namespace inspect::page
