/* The schema layer reads plain XML itself and leaves the rest of a file to expat: whoever reads, the result is the same. */
#include <gtest/gtest.h>

#include "schema.h"

namespace test {
namespace {

constexpr char PLAIN[] = "<!--xml-->";
constexpr char FOR_EXPAT[] = "<?x xml ?>"; /* the whole file is expat's behind this */
static_assert(sizeof(PLAIN) == sizeof(FOR_EXPAT));

uint32_t AddFailure(const char *, const char *, uint32_t, const char *text, uint32_t, void *all)
{
    *static_cast<std::string *>(all) += std::string(text).substr(std::string(text).find("m.yin")) + "\n";
    return 0;
}

/* The tree of a module with that body, or why it has none. */
std::string Outcome(const std::string &mark, const std::string &body)
{
    Schema schema;
    schema.Module("e", R"(<extension name="a"><argument name="v"/></extension><extension name="t"><argument name="x">
        <yin-element value="true"/></argument></extension>)");
    schema.File("m.yin", mark + ModuleText("m", body, "e"));
    if (QY_CTX_LoadModule(schema.Context(), "m", nullptr) == 0)
        return schema.Tree("m");
    std::string failures;
    (void)QY_CTX_ScanAllSchemaLoadFail(schema.Context(), AddFailure, &failures);
    return failures;
}

TEST(PlainXml, IsReadAsExpatReadsIt)
{
    const struct {
        const char *body;
        const char *shown; /* part of the outcome */
    } cases[] = {
        {"<container name='c'><e:a v=' &lt;&#65;&#x20AC;&quot;\r\n\t&#10;'/></container>", "a( <A\u20ac\"  \n)"},
        {"<container name='c'><e:t><e:x> a&amp;\r\nb <!--c--> d]]&gt; </e:x></e:t></container>", "t(a&\nb  d]]>)"},
        {"<container name='c'><e:t><e:x>a<![CDATA[<b>]]>c</e:x></e:t><leaf name='l'><type name='int8'/></leaf>"
         "</container>",
         "t(a<b>c)"},
        {"<container name='c' ><?p i?></container ><container name='d'/>", "container d"},
        {"<container name='c'><e:t><e:x>a<?p?>b</e:x></e:t></container>", "t(ab)"},
        {"<container name='c'><a xmlns='urn:e' v='1'/><q:a xmlns:q='urn:e' v='2'/></container>", "e:a(1) e:a(2)"},
        {"<container name='c' xml:lang='en'><e:a v='1'/></container>", "e:a(1)"},
        {"<container name='c'/>text", "text is not allowed in module 'm'"},
        {"<container name='c'>\n<!--c-->text<e:a v='1'/><?p?></container>", "3:9: text is not allowed"},
        {"<container name='c'><?p?>text</container>", "text is not allowed in container 'c'"},
        {"<container name='c'><description><text>&lt;&nbsp;</text></description></container>", "undefined entity"},
        {"<container name='c'><description><text>]]></text></description></container>", "not well-formed"},
        {"<container name='c'><e:a v='<'/></container>", "not well-formed"},
        {"<container name='c'><e:a v='&#1;'/></container>", "invalid character number"},
        {"<container name='c'><e:a v='1' v='2'/></container>", "duplicate attribute"},
        {"<container name='c'><e:a v='1'w='2'/></container>", "not well-formed"},
        {"<container name='c'><leaf name='l'></container>", "the end tag does not belong to leaf 'l'"},
        {"<container name='c'><e:a v='1'/></containers>", "the end tag does not belong to container 'c'"},
        {"<container name='c'><q:a v='1'/></container>", "unknown prefix 'q'"},
        {"<container name='c'><b xmlns='' v='1'/></container>", "is in no namespace"},
        {"<container name='c'><e:a v='\xC3'/></container>", "not well-formed"},
        {"<!-- a -- b --><container name='c'/>", "not well-formed"},
        {"<container name='c'/></module><module>", "junk after document element"},
        {"<container name='c'/></module><!--c--> <?p?><!--", "the file ends within"},
        {"<container name='c'", "not well-formed"},
    };
    for (const auto &row : cases) {
        const std::string plain = Outcome(PLAIN, row.body);
        EXPECT_EQ(plain, Outcome(FOR_EXPAT, row.body)) << row.body;
        EXPECT_NE(plain.find(row.shown), std::string::npos) << row.body << "\n" << plain;
    }
}

} // namespace
} // namespace test
