#include <DeviceControl/PostScriptPageLevelPDLHelper.h>
#include <LowLevelFacilities/Strings/CPString.h>

#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

using Generator = CXString (PostScriptPageLevelPDLHelper::*)(std::vector<CXString>&);

void check(bool holds) {
    if (!holds) std::abort();
}

const CPString& Product() {
    static const CPString product =
        "<p><input-tray><AutoSelect PS='(a) t'/><automatic PS='(b) t'/></input-tray>"
        "<media-color><red PS='/Color 5'/></media-color><media-type-api>"
        "<labels PS='/Type 3'/></media-type-api><duplex><one-sided PS=' '/></duplex></p>";
    return product;
}

std::wstring Of(Generator generator, std::vector<CXString> settings) {
    static PostScriptPageLevelPDLHelper helper(Product());
    return std::wstring((helper.*generator)(settings).View());
}

/// What stands between two texts, each of which must be there.
std::wstring Between(const std::wstring& text, const std::wstring& before, const std::wstring& behind) {
    const std::size_t begin = text.find(before);
    check(begin != std::wstring::npos);
    const std::size_t end = text.rfind(behind);
    check(end != std::wstring::npos && end >= begin + before.size());
    return text.substr(begin + before.size(), end - begin - before.size());
}

/// The dictionary of a list is that of its settings, one behind the other.
void CheckDictionary(Generator generator, const std::vector<CXString>& settings, const std::wstring& behind) {
    std::wstring expected;
    for (const CXString& setting : settings)
        expected += Between(Of(generator, {setting}), L"<<\n", behind);
    check(Between(Of(generator, settings), L"<<\n", behind) == expected);
}

} // namespace

// A list of settings, each on a line.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const CXString text(CPString(std::string(reinterpret_cast<const char*>(data), size)));
    const std::vector<CXString> settings = text.Tokenize(L'\n');
    const std::wstring tried = L">> setpagedevice\n} stopped { cleartomark\n";
    CheckDictionary(&PostScriptPageLevelPDLHelper::GeneratePDLFromProductData, settings,
                    L">> setpagedevice\n");
    CheckDictionary(&PostScriptPageLevelPDLHelper::GenerateOcptBasedPageLevelPostScript, settings, tried);
    CheckDictionary(&PostScriptPageLevelPDLHelper::GenerateOcptAndProductSpecificPDLPageLevelPostScript,
                    settings, tried);
    return 0;
}
