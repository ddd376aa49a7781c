#include "Support/Rows.h"

#include <DeviceControl/ProductPdlData.h>

#include <gtest/gtest.h>

#include <string>

using namespace DataModelIds;

namespace {

TEST(ProductPdlData, FindsAnOptionsCommandByPlainSearch) {
    const std::string text = "<p><other><a PS=\"no\"/></other>"
                             "<s><a PCL6=\"six\" PS=\"x\\r\\n%&quot;&lt;&gt;&quot;\"/>"
                             "<g><a PS=\"in g\"/><sub><a PS=\"in sub\"/></sub></g><open><a PS=\"x\"/>"
                             "<cut PS=\"no end/><none PCL6=\"only\"/></s></p>";
    for (const auto& [name, option, group, subgroup, pdl, expected] :
         Rows<const char*, const wchar_t*, const wchar_t*, const wchar_t*, tagValueEnum, const wchar_t*>{
             {"escapes in their order", L"a", L"", L"", VAL_PDL_POSTSCRIPT, L"x\r\n\"<>&quot;"},
             {"the other language", L"a", L"", L"", VAL_PDL_PCL6, L"six"},
             {"a group", L"a", L"g", L"", VAL_PDL_POSTSCRIPT, L"in g"},
             {"a subgroup", L"a", L"g", L"sub", VAL_PDL_POSTSCRIPT, L"in sub"},
             {"a group that does not occur", L"a", L"h", L"", VAL_PDL_PCL6, L"six"},
             {"a group without its end", L"a", L"open", L"", VAL_PDL_POSTSCRIPT, L""},
             {"no such option", L"b", L"", L"", VAL_PDL_POSTSCRIPT, L""},
             {"a value without its end", L"cut", L"", L"", VAL_PDL_POSTSCRIPT, L""},
             {"no such language", L"none", L"", L"", VAL_PDL_POSTSCRIPT, L""}})
        EXPECT_EQ(ProductPdlData(text).Find(L"s", option, group, subgroup, pdl), expected) << name;
    const ProductPdlData data(text);
    EXPECT_EQ(data.Find(L"other", L"a", {}, {}, VAL_PDL_POSTSCRIPT), L"no");
    EXPECT_EQ(data.Find(L"s", L"a", {}, {}, VAL_PDL_PCL6), L"six") << "another section than before";
    EXPECT_EQ(ProductPdlData(text).Find(L"missing", L"a", {}, {}, VAL_PDL_POSTSCRIPT), L"");
}

TEST(ProductPdlData, GivesNothingOfATextThatIsBroken) {
    for (const char* const text : {"", "<s>", "</s><s><a PS=\"x\"/>", "</s><s><a PS=\"x\"/></s>",
                                   "<s><a PS=\"x\"</s>", "<s><a PS=\"x</s>", "<s><a \xFF PS=\"/></s>"})
        EXPECT_EQ(ProductPdlData(text).Find(L"s", L"a", {}, {}, VAL_PDL_POSTSCRIPT), L"") << text;
}

} // namespace
