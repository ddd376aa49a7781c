// Every call of the platform that a converter makes, failing: it throws, and does as it should the next time.
#include "Support/FailureSweep.h"

#include "FakeResources.h"

#include <ComSupport/MsSafeCoinit.h>
#include <XpsParts/MsOMConvertor.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace {

const std::string base = "http://schemas.microsoft.com/xps/2005/06";

// A page with one resource of each kind.
struct Parts {
    MsSafeCoInit apartment;
    CComPtr<IXpsOMObjectFactory> objects;
    CComPtr<IOpcFactory> packaging;
    CComPtr<FakeFont> font = MakeFake<FakeFont>();
    CComPtr<FakePicture> picture = MakeFake<FakePicture>(L"/Resources/p.png", L"image/png");
    CComPtr<FakeProfile> profile = MakeFake<FakeProfile>(L"/Resources/c.icc", "profile");
    CComPtr<FakeDictionary> dictionary = MakeFake<FakeDictionary>(
        L"/Resources/b.dict", "<ResourceDictionary xmlns=\"" + base + "\" xmlns:x=\"" + base +
                                  "/resourcedictionary-key\"><ImageBrush x:Key=\"b\" ImageSource=\"p.png\"/>"
                                  "</ResourceDictionary>");
    CComPtr<FakeFixedPage> page = MakeFake<FakeFixedPage>();

    Parts() {
        EXPECT_EQ(objects.CoCreateInstance(__uuidof(XpsOMObjectFactory)), S_OK);
        EXPECT_EQ(packaging.CoCreateInstance(__uuidof(OpcFactory)), S_OK);
        page->bytes = "<FixedPage xmlns=\"" + base +
                      "\" Width=\"9\" Height=\"9\"><FixedPage.Resources><ResourceDictionary "
                      "Source=\"/Resources/b.dict\"/></FixedPage.Resources><Path Fill=\"ContextColor "
                      "/Resources/c.icc 1,0\" Data=\"M0,0\"/></FixedPage>";
        page->parts.emplace_back(L"/Resources/b.dict", static_cast<IPartResourceDictionary*>(dictionary.p));
        page->parts.emplace_back(fontName, static_cast<IPartFont2*>(font.p));
        page->parts.emplace_back(L"/Resources/p.png", static_cast<IPartImage*>(picture.p));
        page->parts.emplace_back(L"/Resources/c.icc", static_cast<IPartColorProfile*>(profile.p));
    }
    [[nodiscard]] std::string State() const {
        const ULONG held[] = {font->References(), picture->References(), profile->References(),
                              dictionary->References(), page->References()};
        std::string state;
        for (const ULONG count : held)
            state += std::to_string(count) + " ";
        return state;
    }
};

// Of a call, that it gave an object.
template <class Object>
SweptAnswer Made(const CComPtr<Object>& object) {
    return object ? std::string("made") : std::string("nothing");
}

struct Conversion {
    const char* name;
    SweptAnswer (*run)(Parts& parts);
};

const Conversion conversions[] = {
    {"GetIStreamFromPart",
     [](Parts& parts) { return Made(GetIStreamFromPart(CComPtr<IPartBase>(parts.profile))); }},
    {"CreateIStreamFromIPrintReadStream",
     [](Parts& parts) {
         CComPtr<IPrintReadStream> reader;
         parts.picture->GetStream(&reader);
         return Made(CreateIStreamFromIPrintReadStream(reader));
     }},
    {"CreateOpcPartUriFromPart",
     [](Parts& parts) {
         return Made(CreateOpcPartUriFromPart(CComPtr<IPartBase>(parts.picture), parts.packaging));
     }},
    {"CreateImageFromIPartImage",
     [](Parts& parts) {
         return Made(
             CreateImageFromIPartImage(CComPtr<IPartImage>(parts.picture), parts.objects, parts.packaging));
     }},
    {"CreateProfileFromIPartColorProfile",
     [](Parts& parts) {
         return Made(CreateProfileFromIPartColorProfile(CComPtr<IPartColorProfile>(parts.profile),
                                                        parts.objects, parts.packaging));
     }},
    {"CreateDictionaryFromIPartResourceDictionary",
     [](Parts& parts) {
         const auto resources =
             CollectPageResources(CComPtr<IFixedPage>(parts.page), parts.objects, parts.packaging);
         return Made(CreateDictionaryFromIPartResourceDictionary(
             CComPtr<IPartResourceDictionary>(parts.dictionary), parts.objects, parts.packaging, resources));
     }},
    {"CreateFontFromIPartFont",
     [](Parts& parts) {
         return Made(CreateFontFromIPartFont(CComPtr<IPartFont>(parts.font), parts.objects, parts.packaging));
     }},
    {"CollectPageResources",
     [](Parts& parts) {
         const auto resources =
             CollectPageResources(CComPtr<IFixedPage>(parts.page), parts.objects, parts.packaging);
         CComPtr<IXpsOMRemoteDictionaryResourceCollection> dictionaries;
         CComPtr<IXpsOMFontResourceCollection> fonts;
         UINT32 count[2] = {};
         HRESULT result = resources->GetRemoteDictionaryResources(&dictionaries);
         if (SUCCEEDED(result)) result = resources->GetFontResources(&fonts);
         if (SUCCEEDED(result)) result = dictionaries->GetCount(&count[0]);
         if (SUCCEEDED(result)) result = fonts->GetCount(&count[1]);
         return FAILED(result) ? SweptAnswer(result)
                               : SweptAnswer(std::to_string(count[0]) + std::to_string(count[1]));
     }},
    {"CreateXpsOMPageFromIFixedPage",
     [](Parts& parts) {
         return Made(
             CreateXpsOMPageFromIFixedPage(CComPtr<IFixedPage>(parts.page), parts.objects, parts.packaging));
     }},
};

TEST(ConverterFailures, AreThrownAndLeaveNothingHeld) {
    for (const Conversion& conversion : conversions)
        FailureSweep<Parts>([] { return std::make_unique<Parts>(); }, conversion.run).Run(conversion.name);
}

} // namespace
