// What the documents are and answer after any one platform call fails.

#include "Support/FailureSweep.h"

#include "FilterUtilities/PrintSchema/CapabilitiesSupport.h"
#include "FilterUtilities/PrintSchema/TicketSupport.h"
#include "Support/ComFake.h"

#include <PrintSchema/DomDocumentCache.h>

#include <filterpipeline.h>

namespace {

class LenientBag : public ComFake<IPrintPipelinePropertyBag> {
public:
    HRESULT STDMETHODCALLTYPE AddProperty(PCWSTR, const VARIANT*) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE GetProperty(PCWSTR, VARIANT*) override { return E_NOTIMPL; }
    BOOL STDMETHODCALLTYPE DeleteProperty(PCWSTR) override { return TRUE; }
};

template <typename Document>
struct World : Document {
    explicit World(const std::string& text) : Document(static_cast<IStream*>(StreamOf(text))) {}
    [[nodiscard]] std::string State() const { return XmlOf(*this); }
    // Without a failure of its own where there is none.
    [[nodiscard]] CComPtr<IXMLDOMNode> Node(const wchar_t* xpath) const {
        CComPtr<IXMLDOMNode> node;
        this->GetNode(xpath, &node);
        return node;
    }
};

using T = World<PrintTicketXmlDocument>;
using C = World<PrintCapabilitiesXmlDocument>;

template <typename Swept>
struct Row {
    const char* name;
    typename FailureSweep<Swept>::Operation operation;
};

template <typename Swept, std::size_t Count>
void SweepAll(const std::string& text, const Row<Swept> (&rows)[Count]) {
    for (const Row<Swept>& row : rows)
        FailureSweep<Swept>([&] { return std::make_unique<Swept>(text); }, row.operation).Run(row.name);
}

const std::string declarations = Declare("ok", PrivateUri());

std::string Init(const std::string& name, const std::string& value) {
    return "<psf:ParameterInit name='" + name + "'>" + Value(value) + "</psf:ParameterInit>";
}

const std::string content =
    Feature("psk:PageMediaSize", "psk:ISOA4",
            ScoredProperty("psk:MediaSizeWidth", Value("210000")) +
                ScoredProperty("psk:MediaSizeHeight", "<psf:ParameterRef name='psk:Height'/>")) +
    Feature("ok:Thing", "ok:On") + Feature("ok:Thing", "ok:Off") +
    "<psf:Property name='psk:P'/><psf:Property name='psk:P'/><psf:Property name='psf:Q'/>" +
    Init("psk:Height", "297000") + Init("ok:JobOrvelOpifJobTicket", "1") + Init("psk:Other", "2") +
    Init("ok:JobOrvelCompleteDocSettings", "AAAA");

const wchar_t option[] = L"//psf:Feature[@name='psk:PageMediaSize']/psf:Option";

TEST(FailureSweep, NoEditLeavesATicketHalfEdited) {
    const Row<T> privateOption = {
        "private option", [](T& t) { return t.SetFeatureOption(L"PageMediaSize", true, L"Own", false); }};
    const Row<T> privateParameter = {"private parameter", [](T& t) {
                                         const CComBSTR prefix = t.GetUserKeywordsNsPrefix();
                                         return t.AppendIntegerParameterInit(prefix, L"New", 7);
                                     }};
    const Row<T> pair = {"feature and option", [](T& t) {
                             CComPtr<IXMLDOMElement> feature;
                             CComPtr<IXMLDOMElement> made;
                             return t.CreateFeatureOptionPair(L"New", false, L"On", false, &feature, &made);
                         }};
    const Row<T> ocpt = {"OCPT", [](T& t) { return t.AddOrReplaceOcptParameterInit(L"<new/>"); }};
    const Row<T> bytes = {"attribute bytes", [](T& t) {
                              return t.AddOrReplacePageOrvelCompleteDocSettingsInPrintTicket(ByteBuffer(5));
                          }};
    const Row<T> edits[] = {
        {"scored property by reference",
         [](T& t) { return t.SetScoredPropertyValue(L"PageMediaSize", true, L"MediaSizeHeight", 5); }},
        privateOption,
        privateParameter,
        {"string property",
         [](T& t) {
             return t.AppendChildStringProperty(t.Node(option), PrintSchema::FrameworkNs, L"New", L"text");
         }},
        {"scored property that is a name",
         [](T& t) { return t.AppendChildQNameScoredProperty(t.Node(option), L"New", L"Own"); }},
        {"no duplicate", [](T& t) { return t.DeleteFeatureNodeIfADuplicateExists(L"ok:", L"Thing"); }},
        {"no properties", [](T& t) { return t.DeletePropertyNodesIfExist(L"psk:", L"P"); }},
        {"no property", [](T& t) { return t.DeleteProperty(L"Q"); }},
        {"no private features", [](T& t) { return t.DeletePrivateFeatures(PrintSchema::USER_KEYWORDS_URI); }},
        ocpt,
        {"OCPT for later filters",
         [](T& t) {
             const auto bag = MakeFake<LenientBag>();
             return t.UpdateOcptFieldsInPrintTicketAndPipelinePropertiesFromDocumentFilter(
                 true, DataModelIds::VAL_PDL_XPS, L"<new/>", bag);
         }},
        bytes,
        {"encoding", [](T& t) { return t.SetProcessingInstructionsEncodingUtf8(); }},
    };
    SweepAll(Ticket(content, declarations), edits);

    const Row<T> declaring[] = {
        privateOption,
        privateParameter,
        pair,
        {"usual prefix", [](T& t) { return t.AddUserKeywordsNamespaceDefinitionIfMissing(); }},
        {"own prefix beside the usual one",
         [](T& t) {
             const HRESULT hr = t.AddUserKeywordsNamespaceDefinitionIfMissing();
             return FAILED(hr) ? hr : t.AppendStringParameterInit(L"ns0000:", L"New", L"x");
         }},
        ocpt,
        bytes,
    };
    const std::string undeclared =
        Ticket(Feature("psk:PageMediaSize", "psk:ISOA4") + Init("psk:Height", "297000"));
    OpenTicket between(undeclared);
    EXPECT_EQ(between.AddUserKeywordsNamespaceDefinitionIfMissing(), S_FALSE);
    for (const Row<T>& row : declaring)
        FailureSweep<T>([&] { return std::make_unique<T>(undeclared); }, row.operation)
            .Run(row.name, {XmlOf(between)});
}

// A document that is handed over is another's, too.
struct HandedOver {
    explicit HandedOver(const std::string& text) {
        EXPECT_EQ(CreateIXMLDOMDocumentFromIStream(StreamOf(text), &document), S_OK);
    }
    [[nodiscard]] std::string State() const {
        CComBSTR text;
        document->get_xml(&text);
        return Narrow(text);
    }
    CComPtr<IXMLDOMDocument2> document;
};

TEST(FailureSweep, NoDocumentIsLeftWithNamesHalfRenamed) {
    const std::string text =
        Ticket(Feature("zzz:A", "zzz:On") + Feature("zzz:B", "psk:On"), Declare("zzz", PrivateUri()));
    const Row<HandedOver> rows[] = {{"taking it", [](HandedOver& world) {
                                         const PrintTicketXmlDocument ticket(
                                             static_cast<IXMLDOMDocument2*>(world.document));
                                         return S_OK;
                                     }}};
    SweepAll(text, rows);
}

TEST(FailureSweep, NoEditLeavesCapabilitiesHalfEdited) {
    static constexpr wchar_t feature[] = L"//psf:Feature";
    const Row<C> rows[] = {
        {"option", [](C& c) { return c.CreateAndAppendOption(L"ok:", L"New", L"new", c.Node(feature)); }},
        {"display name",
         [](C& c) {
             return c.ReplaceOptionDisplayNamePropertyValue(c.Node(feature), L"psk:", L"A", L"new");
         }},
        {"no definition", [](C& c) { return c.DeleteParameterDefNodeIfExists(L"psk:", L"Height"); }},
        {"a size",
         [](C& c) {
             CXString width;
             return c.GetChildScoredPropertyValueIfExists(c.Node(L"//psf:Option"), L"MediaSizeWidth", width);
         }},
        {"sizes",
         [](C& c) {
             int width = 0;
             int length = 0;
             c.GetWidthAndLengthPropertyValues(nullptr, c.Node(L"//psf:Option"), width, length);
             return SweptAnswer(std::to_string(width) + "x" + std::to_string(length));
         }},
    };
    SweepAll(CapabilitiesText("<psf:Feature name='psk:PageMediaSize'><psf:Option name='psk:A'>" +
                              ScoredProperty("psk:MediaSizeWidth", Value("5")) +
                              ScoredProperty("psk:MediaSizeHeight", Value("6")) + DisplayName("old") +
                              "</psf:Option></psf:Feature><psf:ParameterDef name='psk:Height'/>"),
             rows);
}

TEST(FailureSweep, NoFirstQuestionToATicketChangesItsAnswers) {
    const auto text = [](const std::function<void(const T&, wchar_t**)>& ask) {
        return [ask](T& t) {
            CComBSTR answer;
            ask(t, &answer);
            return SweptAnswer(TextOf(answer));
        };
    };
    const Row<T> rows[] = {
        {"option", text([](const T& t, wchar_t** out) {
             t.GetFeatureOption(L"psk:", L"PageMediaSize", out, nullptr);
         })},
        {"scored property", text([](const T& t, wchar_t** out) {
             t.GetScoredPropertyValue(L"PageMediaSize", true, L"MediaSizeHeight", out);
         })},
        {"parameter",
         [](T& t) {
             CXString value;
             t.GetStringParameterInitValue(L"psk:", L"Height", value);
             return SweptAnswer(Narrow(value));
         }},
        {"attribute bytes",
         [](T& t) {
             ByteBuffer bytes;
             return t.GetOrvelCompleteDocSettingsFromPrintTicket(bytes);
         }},
    };
    SweepAll(Ticket(content, declarations), rows);
}

} // namespace
