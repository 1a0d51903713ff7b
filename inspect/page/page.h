/* The page: one file of HTML that shows class models in a browser. */
#pragma once

#include <string>

#include "page/page_data.h"

namespace inspect::page {

/* Needs no other file and no network. The same models make the same page. */
std::string PageOf(const Source &source);

} // namespace inspect::page
