#include "page/page.h"

#include "base/text.h"
#include "page/assets.h"

namespace inspect::page {
namespace {

std::string Escaped(std::string_view text)
{
    std::string escaped;
    for (char c : ValidUtf8(text))
        switch (c) {
            case '&':
                escaped += "&amp;";
                break;
            case '<':
                escaped += "&lt;";
                break;
            default:
                escaped += c;
        }
    return escaped;
}

/* Puts the text in the place of the mark, which the page has once. */
void Fill(std::string *page, std::string_view mark, std::string_view text)
{
    page->replace(page->find(mark), mark.size(), text);
}

std::string TitleOf(const Source &source)
{
    if (source.modules.size() == 1)
        return source.modules.front().key.name;
    return Count(source.modules.size(), "module") + " of " + Join(source.request.dirs.dirs, ", ");
}

} // namespace

/* The data come last, so that a mark in them is text. */
std::string PageOf(const Source &source)
{
    std::string page(PAGE_HTML);
    Fill(&page, "/*style*/", PAGE_CSS);
    Fill(&page, "/*script*/", PAGE_JS);
    Fill(&page, "<!--title-->", Escaped(TitleOf(source)));
    Fill(&page, "<!--data-->", DataOf(source));
    return page;
}

} // namespace inspect::page
