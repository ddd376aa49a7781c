#include "Support/InApartment.h"
#include "Support/Rows.h"

#include <DeviceControl/PostScriptPageLevelPDLHelper.h>
#include <LowLevelFacilities/Failures/CPComException.h>
#include <LowLevelFacilities/Strings/CPStringUtils.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

using testing::HasSubstr;

namespace {

std::string Utf8(const CXString& text) { return CPStringUtils::narrowToStdString(text); }

class PageLevel : public InApartment<> {
protected:
    using Generator = CXString (PostScriptPageLevelPDLHelper::*)(std::vector<CXString>&);

    std::string Of(Generator generator, std::vector<CXString> settings) {
        PostScriptPageLevelPDLHelper helper(m_productData);
        return Utf8((helper.*generator)(settings));
    }

    CPString m_productData =
        "<p><a><input-tray><tray-2 PS='(2) tray'/><AutoSelect PS='(auto) tray'/></input-tray>"
        "<media-color><red PS='/Color 5'/></media-color>"
        "<media-type-api><labels PS='/Type 3'/></media-type-api></a></p>";
};

constexpr auto builtIn = &PostScriptPageLevelPDLHelper::GenerateOcptBasedPageLevelPostScript;
constexpr auto withProduct =
    &PostScriptPageLevelPDLHelper::GenerateOcptAndProductSpecificPDLPageLevelPostScript;
constexpr auto ofProduct = &PostScriptPageLevelPDLHelper::GeneratePDLFromProductData;

const std::string retries = ">> setpagedevice\n} stopped { cleartomark\n"
                            "(setpagedevice failed, retrying one value at a time.) =";

TEST_F(PageLevel, TriesAllAtOnceAndThenOneByOne) {
    EXPECT_EQ(Of(builtIn, {}), "\n%% *Page-Level Media Commands\nmark {\n<<\n" + retries +
                                   "}\n{pop} ifelse\n%% *Page-Level Media Commands\n");
    EXPECT_EQ(Of(builtIn, {L" media-size = 215900,279400 ", L"effective-media-type=Plain", L"media-color=Red",
                           L"sides-imaged=two-sided-short-edge", L"sides-imaged=other",
                           L"input-tray=AutoSelect", L"name=a=b", L"unknown=1"}),
              "\n%% *Page-Level Media Commands\n%%BeginFeature: *PageSize Letter\n%%EndFeature\nmark {\n<<\n"
              "\t/PageSize [612 792]\n\t/MediaType (stationery)\n\t/MediaColor (red)\n"
              "\t/Duplex true /Tumble true\n\t(automatic) orvel$MediaInputTray\n" +
                  retries +
                  "\n\tfeaturebegin{<< /PageSize [612 792] >> setpagedevice}featurecleanup"
                  "\n\tfeaturebegin{<< /MediaType (stationery) >> setpagedevice}featurecleanup"
                  "\n\tfeaturebegin{<< /MediaColor (red) >> setpagedevice}featurecleanup"
                  "\n\tfeaturebegin{<< /Duplex true /Tumble true >> setpagedevice}featurecleanup"
                  "\n\tfeaturebegin{<< (automatic) orvel$MediaInputTray >> setpagedevice}featurecleanup"
                  "}\n{pop} ifelse\n%% *Page-Level Media Commands\n");
}

TEST_F(PageLevel, NamesSizesThatHaveANameAndSkipsWhatIsNone) {
    for (const auto& [size, expected] : Rows<const wchar_t*, const char*>{
             {L"media-size=209900,297000", "*PageSize A4\n"},       // 595 by 842 points
             {L"media-size=100000,100000", "Commands\n\nmark {"},   // a size without a name
             {L"media-size=a,1", "Commands\n\nmark {\n<<\n>> set"}, // and what is no size
             {L"media-size=1,2,3", "Commands\n\nmark {\n<<\n>> set"},
             {L"x=media-size", "Commands\n\nmark {\n<<\n>> set"}})
        EXPECT_THAT(Of(builtIn, {size}), HasSubstr(expected)) << Utf8(size);
    EXPECT_THAT(Of(builtIn, {L"media-size=100000,100000", L"media-size=215900,279400"}),
                HasSubstr("Commands\n\nmark {"))
        << "the first size is that of the comment";
    EXPECT_THAT(Of(builtIn, {L"media-color=media-color-unspecified",
                             L"effective-media-type=media-type-api-unspecified"}),
                HasSubstr("\t/MediaColor null\n\t/MediaType null\n>> "));
}

TEST_F(PageLevel, RetriesByWhatTheProductSays) {
    EXPECT_EQ(
        Of(withProduct, {L"effective-media-type=Label", L"media-size=215900,279400", L"input-tray=AutoSelect",
                         L"media-color=Blue", L"media-size=100000,100000", L"sides-imaged=one-sided"}),
        "\n%% *Page-Level Media Commands\nmark {\n<<\n\t/MediaType (labels)\n\t/PageSize [612 792]\n"
        "\t(automatic) orvel$MediaInputTray\n\t/MediaColor (blue)\n\t/PageSize [283 283]\n"
        "\t/Duplex false /Tumble false\n" +
            retries +
            "\n\tfeaturebegin{ (auto) tray }featurecleanup"
            "\n\tfeaturebegin{/Type 3} featurecleanup"
            "\n\tfeaturebegin{<< /PageSize [612 792] >> setpagedevice }featurecleanup"
            "\n\tfeaturebegin{<< /UniversalDetails << /Type 99 /PageSize [283 283] >> >> setpagedevice "
            "}featurecleanup"
            "\n\tfeaturebegin{<< /Duplex false /Tumble false >> setpagedevice}featurecleanup"
            "\n}\n{pop} ifelse\n%% *Page-Level Media Commands\n");
}

TEST_F(PageLevel, MakesTheDictionaryOfWhatTheProductSays) {
    const std::vector<CXString> settings = {L"input-tray=tray-2",
                                            L"input-tray=AutoSelect",
                                            L"media-color=Red",
                                            L"media-color=NoColor",
                                            L"media-color=mauve",
                                            L"effective-media-type=Bond",
                                            L"effective-media-type=Label",
                                            L"sides-imaged=two-sided-long-edge"};
    const std::string dictionary = "<<\n\t(2) tray\n\t/Color 5\n\t/MediaColor (Clear)\n\t/Type 3\n"
                                   "\t/Duplex true /Tumble false\n>> ";
    EXPECT_EQ(Of(ofProduct, settings), dictionary + "setpagedevice\n");
    m_productData = "<p job-patch-file='1'/>";
    EXPECT_EQ(Of(ofProduct, {}), "<<\n>> orvel$pagedevice copy orvel$setpagedevice\n");
}

TEST_F(PageLevel, TakesTheDataWithItAndRefusesWhatIsNoDocument) {
    PostScriptPageLevelPDLHelper first(m_productData);
    PostScriptPageLevelPDLHelper second(first);
    std::vector<CXString> settings = {L"media-color=Red"};
    EXPECT_THAT(Utf8(first.GeneratePDLFromProductData(settings)), HasSubstr("/MediaColor (Red)"));
    EXPECT_THAT(Utf8(second.GeneratePDLFromProductData(settings)), HasSubstr("/Color 5"));
    first = second;
    EXPECT_THAT(Utf8(first.GeneratePDLFromProductData(settings)), HasSubstr("/Color 5"));
    EXPECT_THAT(Utf8(PostScriptPageLevelPDLHelper().GeneratePDLFromProductData(settings)),
                HasSubstr("(Red)"));
    const CPString broken = "<p>";
    EXPECT_THROW(PostScriptPageLevelPDLHelper{broken}, CPComException);
}

} // namespace
