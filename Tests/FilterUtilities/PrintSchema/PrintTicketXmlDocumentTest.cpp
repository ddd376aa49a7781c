#include "FilterUtilities/PrintSchema/TicketSupport.h"
#include "Support/ComFake.h"
#include "Support/Rows.h"

#include <filterpipeline.h>

#include <map>

using DataModelIds::VAL_PDL_POSTSCRIPT;
using DataModelIds::VAL_PDL_XPS;

namespace {

const std::string privateDeclaration = Declare("ok", PrivateUri());

OpenTicket SampleTicket() {
    return OpenTicket(
        Ticket(Feature("psk:PageMediaSize", "psk:ISOA4",
                       ScoredProperty("psk:MediaSizeWidth", Value("210000")) +
                           ScoredProperty("psk:MediaSizeHeight", "<psf:ParameterRef name='psk:Height'/>")) +
                   Feature("psk:PageResolution", "", ScoredProperty("psk:ResolutionX", Value("600"))) +
                   Feature("ok:JobThing", "ok:On", ScoredProperty("psk:Count", Value("3"))) +
                   Feature("psk:Plain", "NoPrefix") + Feature("psk:Other", "zzz:X") +
                   Feature("psk:Twice", "psk:psk:Y") + Feature("psk:Middle", "a-ok:Z") +
                   Feature("psk:Both", "ok:psk:Z") + "<psf:Feature name='psk:DocumentNUp'><psf:Option/>" +
                   Feature("psk:PresentationDirection", "psk:RightBottom") + Feature("ok:Border", "ok:Thin") +
                   "</psf:Feature><psf:Feature name='psk:NoOption'/><psf:Feature "
                   "name='psk:NoColonOption'><psf:Option "
                   "name=''/></psf:Feature><psf:ParameterInit name='psk:Height'>" +
                   Value("297000") + "</psf:ParameterInit>",
               privateDeclaration));
}

// A bag that remembers its strings, and can be told to refuse them.
class StringBag : public ComFake<IPrintPipelinePropertyBag> {
public:
    std::map<std::wstring, std::string> strings;
    HRESULT addResult = S_OK;

    HRESULT STDMETHODCALLTYPE AddProperty(PCWSTR name, const VARIANT* value) override {
        if (FAILED(addResult)) return addResult;
        // As in the pipeline, a name that is taken must be freed first.
        if (value->vt != VT_BSTR || strings.count(name)) return E_INVALIDARG;
        strings[name] = Narrow(value->bstrVal);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetProperty(PCWSTR, VARIANT*) override { return E_NOTIMPL; }
    BOOL STDMETHODCALLTYPE DeleteProperty(PCWSTR name) override { return strings.erase(name) > 0; }
};

TEST(PrintTicketXmlDocument, TellsTheOptionOfAFeature) {
    const OpenTicket ticket = SampleTicket();
    const Rows<const wchar_t*, const wchar_t*, HRESULT, const char*, const char*> cases{
        {L"psk:", L"PageMediaSize", S_OK, "ISOA4", "psk:"},
        {nullptr, L"psk:PageMediaSize", S_OK, "ISOA4", "psk:"},
        {L"ok:", L"JobThing", S_OK, "On", "ok:"},
        {L"psk:", L"Other", S_OK, "X", "zzz:"},
        {L"psk:", L"Twice", S_OK, "psk:Y", "psk:"},
        {L"psk:", L"PageResolution", S_OK, "", ""},
        {L"psk:", L"Plain", E_FAIL, "(null)", "(null)"},
        {L"psk:", L"NoColonOption", E_FAIL, "(null)", "(null)"},
        {L"psk:", L"NoOption", E_ELEMENT_NOT_FOUND, "(null)", "(null)"},
        {L"psk:", L"JobThing", E_ELEMENT_NOT_FOUND, "(null)", "(null)"},
        {L"psk:", L"", E_INVALIDARG, "(null)", "(null)"},
    };
    for (const auto& [givenPrefix, feature, result, wantedOption, optionPrefix] : cases) {
        SCOPED_TRACE(Narrow(feature));
        CComBSTR option;
        CComBSTR prefix;
        HRESULT hr = S_OK;
        try {
            hr = ticket.GetFeatureOption(givenPrefix, feature, &option, &prefix);
        } catch (const CPComException& failure) {
            hr = failure.GetHresult();
        }
        EXPECT_EQ(hr, result);
        EXPECT_EQ(TextOf(option), wantedOption);
        EXPECT_EQ(TextOf(prefix), optionPrefix);
    }
    ExpectRaised([&] { ticket.GetFeatureOption(L"psk:", L"Plain", nullptr, nullptr); }, E_POINTER,
                 "PrintTicketXmlDocument::GetFeatureOption");
}

TEST(PrintTicketXmlDocument, StripsTheKnownPrefixesOfOtherOptions) {
    const OpenTicket ticket = SampleTicket();
    CComBSTR border;
    CComBSTR sub;
    EXPECT_EQ(ticket.GetSubFeatureOption(L"DocumentNUp", true, L"Border", false, &border), S_OK);
    EXPECT_EQ(TextOf(border), "Thin");
    EXPECT_EQ(ticket.GetSubFeatureOption(L"DocumentNUp", true, L"Border", true, &sub), E_ELEMENT_NOT_FOUND);
    EXPECT_EQ(ticket.GetSubFeatureOption(L"PageMediaSize", true, L"Border", false, &sub),
              E_ELEMENT_NOT_FOUND);
    for (const auto& [feature, subFeature] : {std::pair(L"", L"Border"), std::pair(L"DocumentNUp", L"")})
        EXPECT_EQ(ResultOf([&, &feature = feature, &subFeature = subFeature] {
                      return ticket.GetSubFeatureOption(feature, true, subFeature, true, &sub);
                  }),
                  E_INVALIDARG);
    const Rows<const wchar_t*, HRESULT, const char*> options{
        {L"psk:PageMediaSize", S_OK, "ISOA4"},
        {L"psk:Other", S_OK, "zzz:X"},
        {L"psk:Plain", S_OK, "NoPrefix"},
        {L"psk:Twice", S_OK, "psk:Y"},
        {L"psk:Middle", S_OK, "a-Z"},
        {L"psk:Both", S_OK, "ok:Z"},
        {L"psk:PageResolution", E_ELEMENT_NOT_FOUND, "(null)"},
        {L"psk:NoColonOption", E_INVALIDARG, "(null)"},
    };
    for (const auto& [feature, result, wantedOption] : options) {
        const CXString xpath = CXString(L"//psf:Feature[@name='") + feature + L"']/psf:Option";
        CComBSTR option;
        EXPECT_EQ(ResultOf([&] { return ticket.QueryNodeOption(xpath, &option); }), result) << Narrow(xpath);
        EXPECT_EQ(TextOf(option), wantedOption) << Narrow(xpath);
    }
}

TEST(PrintTicketXmlDocument, ReadsScoredPropertiesAndFeatures) {
    const OpenTicket ticket = SampleTicket();
    CComBSTR text;
    int number = 0;
    float real = 0;
    EXPECT_EQ(ticket.GetScoredPropertyValue(L"PageMediaSize", true, L"MediaSizeHeight", &text), S_OK);
    EXPECT_EQ(TextOf(text), "297000");
    EXPECT_EQ(ticket.GetScoredPropertyValue(L"PageResolution", true, L"ResolutionX", &real), S_OK);
    EXPECT_EQ(real, 600.f);
    EXPECT_EQ(ticket.GetScoredPropertyValue(L"JobThing", false, L"Count", &number), S_OK);
    EXPECT_EQ(number, 3); // a public property of a private feature
    EXPECT_EQ(ticket.GetScoredPropertyValue(L"PageResolution", false, L"ResolutionX", &number),
              E_ELEMENT_NOT_FOUND);
    EXPECT_EQ(number, 3);
    EXPECT_EQ(ResultOf([&] { return ticket.GetScoredPropertyValue(L"", true, L"A", &number); }),
              E_INVALIDARG);
    EXPECT_EQ(ticket.FeaturePresent(L"JobThing", false, nullptr), S_OK);
    EXPECT_EQ(ticket.FeaturePresent(L"JobThing", true, nullptr), E_ELEMENT_NOT_FOUND);
}

TEST(PrintTicketXmlDocument, SetsOptionsAndScoredPropertiesThatExist) {
    OpenTicket ticket = SampleTicket();
    EXPECT_EQ(ticket.SetFeatureOption(L"PageMediaSize", true, L"Own", false), S_OK);
    EXPECT_EQ(ticket.SetScoredPropertyValue(L"PageMediaSize", true, L"MediaSizeWidth", -1), S_OK);
    EXPECT_EQ(ticket.SetScoredPropertyValue(L"PageMediaSize", true, L"MediaSizeHeight", 148000), S_OK);
    EXPECT_EQ(ticket.SetScoredPropertyValue(L"JobThing", false, L"Count", 4), S_OK);
    EXPECT_EQ(ticket.SetChildNodeOptionAttributeValue(L"JobThing", false, L"name", L"raw"), S_OK);
    EXPECT_EQ(OutsideView(ticket, "//psf:Feature[@name='psk:PageMediaSize']/psf:Option/@name"), "ok:Own");
    EXPECT_EQ(OutsideView(ticket, "//psf:ScoredProperty[@name='psk:MediaSizeWidth']"), "4294967295");
    EXPECT_EQ(OutsideView(ticket, "//psf:ParameterInit"), "148000");
    EXPECT_EQ(OutsideView(ticket, "//psf:Option[@name='raw']/psf:ScoredProperty[@name='psk:Count']"), "4");

    const std::string before = XmlOf(ticket);
    EXPECT_EQ(ticket.SetFeatureOption(L"PageResolution", true, L"A", true), E_ELEMENT_NOT_FOUND)
        << "a nameless option";
    EXPECT_EQ(ticket.SetFeatureOption(L"NoOption", true, L"A", true), E_ELEMENT_NOT_FOUND);
    EXPECT_EQ(ticket.SetChildNodeOptionAttributeValue(L"PageMediaSize", true, L"absent", L"A"),
              E_ELEMENT_NOT_FOUND);
    EXPECT_EQ(ticket.SetScoredPropertyValue(L"PageResolution", true, L"Absent", 1), E_ELEMENT_NOT_FOUND);
    EXPECT_EQ(XmlOf(ticket), before);
}

TEST(PrintTicketXmlDocument, CreatesElementsOutsideTheTree) {
    OpenTicket ticket(Ticket("", privateDeclaration));
    const std::string before = XmlOf(ticket);
    CComPtr<IXMLDOMElement> feature;
    CComPtr<IXMLDOMElement> option;
    CComPtr<IXMLDOMElement> ref;
    CComPtr<IXMLDOMElement> init;
    CComPtr<IXMLDOMElement> untyped;
    EXPECT_EQ(ticket.CreateFeatureOptionPair(L"JobA", false, L"B", true, &feature, &option), S_OK);
    EXPECT_EQ(ticket.CreateParamRefInitPair(L"JobC", -3, &ref, &init), S_OK);
    EXPECT_EQ(ticket.CreateUntypedParameterInitFromString(L"ok:", L"D", L"d", &untyped), S_OK);
    EXPECT_EQ(XmlOf(ticket), before);

    EXPECT_EQ(ticket.AppendChild(option, ref), S_OK);
    for (IXMLDOMElement* element : {feature.p, init.p, untyped.p})
        EXPECT_EQ(ticket.AppendChildToRootNode(element), S_OK);
    EXPECT_EQ(ticket.AppendIntegerParameterInit(L"psk:", L"F", -1), S_OK);
    CComPtr<IXMLDOMElement> bare;
    CComPtr<IXMLDOMElement> bareOption;
    EXPECT_EQ(ticket.CreateFeatureOptionPair(L"PageG", true, &bare, &bareOption), S_OK);
    EXPECT_EQ(ticket.AppendToElement(L"PrintTicket", bare), S_OK);
    const Rows<const char*, const char*> cases{
        {"/*/psf:Feature[@name='ok:JobA']/psf:Option[@name='psk:B']/psf:ParameterRef/@name", "psk:JobC"},
        {"/*/psf:ParameterInit[@name='psk:JobC']/psf:Value[@xsi:type='xsd:integer']", "-3"},
        {"/*/psf:ParameterInit[@name='ok:D']/psf:Value[not(@*)]", "d"},
        {"/*/psf:ParameterInit[@name='psk:F']/psf:Value", "4294967295"},
        {"count(/*/psf:Feature[@name='psk:PageG']/psf:Option[not(@*)])", "1"},
    };
    for (const auto& [xpath, found] : cases)
        EXPECT_EQ(OutsideView(ticket, xpath), found) << xpath;

    CComPtr<IXMLDOMElement> unmade;
    CComPtr<IXMLDOMElement> unmadeOption;
    const Rows<std::function<HRESULT()>, HRESULT> refused{
        {[&] { return ticket.AppendStringParameterInit(L"psk:", L"A", L""); }, E_INVALIDARG},
        {[&] { return ticket.CreateFeatureOptionPair(L"A", true, L"", true, &unmade, &unmadeOption); },
         E_INVALIDARG},
        {[&] { return ticket.AppendToElement(L"", bare); }, E_INVALIDARG},
        {[&] { return ticket.AppendToElement(L"Feature", bare); }, E_FAIL},
        {[&] { return ticket.AppendToElement(L"PrintTicket", nullptr); }, E_POINTER},
    };
    for (const auto& row : refused)
        EXPECT_EQ(ResultOf(std::get<0>(row)), std::get<1>(row)) << (&row - refused.data());
}

TEST(PrintTicketXmlDocument, ReadsAndDeletesParameterInitialisersAndProperties) {
    OpenTicket ticket(Ticket("<psf:ParameterInit name='psk:A'>" + Value("a &lt; b") + "</psf:ParameterInit>" +
                             "<psf:ParameterInit name='psk:Bare'/>" +
                             "<psf:Property name='psf:P'/><psf:Property name='psk:P'/>"));
    CXString text(L"old");
    EXPECT_EQ(ticket.GetStringParameterInitValue(L"psk:", L"A", text), S_OK);
    EXPECT_EQ(Narrow(text), "a < b");
    for (const wchar_t* name : {L"Bare", L"Absent"}) {
        text = L"old";
        EXPECT_EQ(ticket.GetStringParameterInitValue(L"psk:", name, text), S_FALSE);
        EXPECT_TRUE(text.IsEmpty());
    }
    EXPECT_EQ(ticket.DeleteParameterInitNodeIfExists(L"psk:", L"A"), S_OK);
    EXPECT_EQ(ticket.DeleteParameterInitNodeIfExists(L"psk:", L"A"), S_FALSE);
    EXPECT_EQ(ticket.DeleteProperty(L"P"), S_OK);
    EXPECT_EQ(ticket.DeleteProperty(L"P"), S_FALSE);
    EXPECT_EQ(OutsideView(ticket, "//psf:Property/@name"), "psk:P");
    EXPECT_EQ(OutsideView(ticket, "count(//psf:ParameterInit)"), "1");
}

TEST(PrintTicketXmlDocument, MakesAnEmptyTicketThatItsOwnReaderAndOthersTake) {
    const PrintTicketXmlDocument ticket(PrintTicketXmlDocument::GetBoilerplateForEmptyPrintTicket());
    EXPECT_EQ(TextOf(ticket.GetUserKeywordsNsPrefix()), "ok:");
    EXPECT_EQ(OutsideView(ticket, "/psf:PrintTicket[not(node())]/@version"), "1");
    // In this order, which readers by position know.
    std::string text = Narrow(PrintTicketXmlDocument::GetBoilerplateForEmptyPrintTicket());
    for (std::size_t open; (open = text.find("=\"http")) != std::string::npos;)
        text.erase(open, text.find('"', open + 2) + 1 - open);
    EXPECT_EQ(text, "<?xml version=\"1.0\" encoding=\"UTF-8\"?><psf:PrintTicket xmlns:psf xmlns:psk "
                    "xmlns:pskv11 xmlns:xsi xmlns:xsd version=\"1\" xmlns:ok></psf:PrintTicket>");
}

// ---- What the driver hides in a ticket

TEST(PrintTicketXmlDocument, CarriesTheOcptTextFirst) {
    OpenTicket ticket(Ticket(Feature("psk:A", "psk:B"), Declare("my", PrivateUri())));
    EXPECT_EQ(ticket.DeleteOcptParameterInitIfExists(), S_FALSE);
    for (const wchar_t* ocpt : {L"<job a=\"1\">&amp;]]></job>", L"<second/>"})
        EXPECT_EQ(ticket.AddOrReplaceOcptParameterInit(ocpt), S_OK);
    EXPECT_EQ(OutsideView(ticket, "/*/*[1][self::psf:ParameterInit]/@name"), "ok:JobOrvelOpifJobTicket");
    EXPECT_EQ(OutsideView(ticket, "count(//psf:ParameterInit)"), "1");

    // A reader gets the wrapper back as part of the value.
    const OpenTicket read(XmlOf(ticket));
    CXString text;
    EXPECT_EQ(read.GetStringParameterInitValue(L"ok:", L"JobOrvelOpifJobTicket", text), S_OK);
    EXPECT_EQ(Narrow(text), "<![CDATA[\n<second/>\n]]>");
    EXPECT_NE(XmlOf(ticket).find("&lt;![CDATA["), std::string::npos);
    EXPECT_EQ(ticket.DeleteOcptParameterInitIfExists(), S_OK);

    OpenTicket empty(Ticket("", privateDeclaration));
    EXPECT_EQ(empty.AddOrReplaceOcptParameterInit(L"<a/>"), S_OK);
    EXPECT_EQ(OutsideView(empty, "count(/*/psf:ParameterInit)"), "1");
}

TEST(PrintTicketXmlDocument, HandsTheOcptTextToLaterFilters) {
    constexpr HRESULT refused = E_ACCESSDENIED;
    const Rows<bool, DataModelIds::tagValueEnum, const wchar_t*, HRESULT, const char*, const char*,
               const char*>
        cases{
            {true, VAL_PDL_XPS, L"<new/>", S_OK, "<new/>", "-", "<![CDATA[\n<new/>\n]]>"},
            {true, VAL_PDL_POSTSCRIPT, L"<new/>", S_OK, "before", "<new/>", ""},
            {false, VAL_PDL_XPS, L"<new/>", S_OK, "before", "-", ""},
            {true, VAL_PDL_XPS, L"", S_OK, "before", "-", ""},
            {true, VAL_PDL_XPS, L"<new/>", refused, "-", "-", ""},
        };
    for (const auto& row : cases) {
        const auto& [hasOcpt, value, ocpt, result, forXps, forOthers, inTicket] = row;
        SCOPED_TRACE(&row - cases.data());
        OpenTicket ticket(Ticket("", privateDeclaration));
        ticket.AddOrReplaceOcptParameterInit(L"<old/>");
        const CComPtr<StringBag> bag = MakeFake<StringBag>();
        bag->strings = {{L"Orvel_OcptForXps", "before"}, {L"Orvel_OcptForNonXps", "-"}};
        bag->addResult = result;
        EXPECT_EQ(ticket.UpdateOcptFieldsInPrintTicketAndPipelinePropertiesFromDocumentFilter(hasOcpt, value,
                                                                                              ocpt, bag),
                  result);
        EXPECT_EQ(bag->strings.contains(L"Orvel_OcptForXps") ? bag->strings[L"Orvel_OcptForXps"] : "-",
                  forXps);
        EXPECT_EQ(bag->strings[L"Orvel_OcptForNonXps"], forOthers);
        EXPECT_EQ(OutsideView(ticket, "//psf:ParameterInit"), inTicket);
    }
}

TEST(PrintTicketXmlDocument, CarriesTheAttributeBytesLastUpToTheirLimit) {
    for (const std::size_t size : {std::size_t{1}, std::size_t{1500}}) {
        OpenTicket ticket(Ticket("", privateDeclaration));
        ByteBuffer bytes(size);
        for (std::size_t index = 0; index < size; ++index)
            bytes[index] = static_cast<unsigned char>(index * 7);
        EXPECT_EQ(ticket.AddOrReplacePageOrvelCompleteDocSettingsInPrintTicket(ByteBuffer(3)), S_OK);
        ticket.AppendStringParameterInit(L"psk:", L"A", L"a");
        EXPECT_EQ(ticket.AddOrReplacePageOrvelCompleteDocSettingsInPrintTicket(bytes), S_OK);
        EXPECT_EQ(OutsideView(ticket, "/*/*[last()]/@name"), "ok:JobOrvelCompleteDocSettings");
        EXPECT_EQ(OutsideView(ticket, "count(//psf:ParameterInit)"), "2");
        ByteBuffer read(99);
        EXPECT_EQ(OpenTicket(XmlOf(ticket)).GetOrvelCompleteDocSettingsFromPrintTicket(read), S_OK);
        EXPECT_EQ(read, bytes);

        // Too long: the old bytes go all the same.
        EXPECT_EQ(ticket.AddOrReplacePageOrvelCompleteDocSettingsInPrintTicket(ByteBuffer(1501)), E_FAIL);
        EXPECT_EQ(ticket.GetOrvelCompleteDocSettingsFromPrintTicket(read), S_FALSE);
        EXPECT_TRUE(read.empty());
        ticket.AppendStringParameterInit(L"ok:", L"JobOrvelCompleteDocSettings", L"AA*=");
        EXPECT_EQ(ticket.GetOrvelCompleteDocSettingsFromPrintTicket(read), E_FAIL);
    }
}

} // namespace
