#include <DeviceControl/PostScriptPageLevelPDLHelper.h>
#include <DeviceControl/ProductPdlData.h>
#include <LowLevelFacilities/Failures/CPComException.h>
#include <LowLevelFacilities/Strings/CPString.h>

#include <cstdint>
#include <cstdlib>
#include <string_view>

namespace {

using namespace DataModelIds;

void check(bool holds) {
    if (!holds) std::abort();
}

/// What is found does not depend on what was looked for before, and is no longer than the text.
void Search(std::string_view text) {
    const ProductPdlData data(text);
    constexpr const wchar_t* names[] = {L"s", L"t", L"", L"print-quality-level", L"standard"};
    for (const wchar_t* const section : names)
        for (const wchar_t* const option : names)
            for (const wchar_t* const group : names)
                for (const tagValueEnum language : {VAL_PDL_PCL6, VAL_PDL_POSTSCRIPT, VAL_PDL_XPS}) {
                    const CXString found = data.Find(section, option, group, L"t", language);
                    check(found == ProductPdlData(text).Find(section, option, group, L"t", language));
                    check(static_cast<std::size_t>(found.GetLength()) <= text.size());
                }
}

/// A text is refused, or gives entries within a dictionary.
void Parse(const CPString& text) {
    try {
        PostScriptPageLevelPDLHelper helper(text);
        std::vector<CXString> settings = {L"input-tray=s", L"sides-imaged=t", L"media-color=Red",
                                          L"effective-media-type=Label"};
        const CXString entries = helper.GeneratePDLFromProductData(settings);
        check(entries.Find(L"<<\n") == 0 && entries.Right(14) == L"setpagedevice\n");
        const CXString block = helper.GenerateOcptAndProductSpecificPDLPageLevelPostScript(settings);
        check(block.Find(L"\n%% *Page-Level Media Commands\nmark {\n<<\n") == 0);
    } catch (const CPComException& refused) {
        check(FAILED(refused.GetHresult()));
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    Search(text);
    Parse(CPString(std::string(text)));
    return 0;
}
