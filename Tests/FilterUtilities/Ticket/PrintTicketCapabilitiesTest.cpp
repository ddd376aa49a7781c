#include "Support/FailureSweep.h"
#include "Support/FilterJob.h"
#include "Support/TicketText.h"

#include <ComSupport/MsSafeCoinit.h>
#include <ComSupport/ThrowHresult.h>
#include <Media/CPageImageablePCHandler.h>
#include <PrintSchema/PrintCapabilitiesXmlDocument.h>
#include <Ticket/PrintTicketManager.h>

#include <gtest/gtest.h>

#include <memory>

namespace {

using Document = CComPtr<IXMLDOMDocument2>;
using Imageable = PrintSchema::PageImageableSize::PageImageableData;

Document Parsed(const std::string& text) {
    return PrintTicketXmlDocument(CXString(text.c_str())).GetDomDocPtr();
}

Imageable ImageableOf(IXMLDOMDocument2* capabilities) {
    Imageable data{};
    int ignored = 0;
    CPageImageablePCHandler handler(nullptr);
    EXPECT_EQ(handler.GetData(capabilities, &data, ignored, ignored, ignored, ignored), S_OK);
    return data;
}

std::string ConstrainedOf(IXMLDOMDocument2* document, const wchar_t* query) {
    const PrintCapabilitiesXmlDocument capabilities(document);
    CComPtr<IXMLDOMNode> node;
    if (capabilities.GetNode(query, &node) != S_OK) return "(no such option)";
    CComBSTR text;
    capabilities.GetAttributeValue(node, L"constrained", &text);
    return std::string(CPString(CXString(text)).view());
}

struct PrintTicketCapabilitiesTest : testing::Test {
    const MsSafeCoInit apartment;
    SampleQueue queue;
    PrintTicketManager manager;

    void SetUp() override {
        std::wstring name = SampleQueue::name;
        ASSERT_EQ(manager.Initialize(MakeFake<MemoryReadStream>(queue.DefaultTicket()), name.data(), nullptr),
                  S_OK);
    }
    Document CapabilitiesFor(IXMLDOMDocument2* ticket) {
        Document capabilities;
        EXPECT_EQ(manager.GetCapabilities(ticket, &capabilities), S_OK);
        return capabilities;
    }
    // How many calls of the platform an operation makes.
    template <typename Operation>
    static LONG CallsOf(const Operation& operation) {
        OvPlatform::FaultInjection::CountCalls();
        operation();
        OvPlatform::FaultInjection::Reset();
        return OvPlatform::FaultInjection::CallCount();
    }
};

TEST_F(PrintTicketCapabilitiesTest, TicketsOfOneTextAreAskedOnceAndAnsweredApart) {
    const std::string text = TicketText(Choice("psk:PageMediaSize", "psk:ISOA5"));
    Document first;
    Document second;
    const LONG asked = CallsOf([&] { first = CapabilitiesFor(Parsed(text)); });
    const LONG known = CallsOf([&] { second = CapabilitiesFor(Parsed(text)); });
    EXPECT_LT(known, asked);
    EXPECT_NE(first.p, second.p);
    EXPECT_EQ(ImageableOf(first).imageableWidth, 148000);

    // What one caller does to his answer, the next does not see.
    CComPtr<IXMLDOMElement> root;
    ASSERT_EQ(second->get_documentElement(&root), S_OK);
    ASSERT_EQ(root->put_text(CComBSTR(L"gone")), S_OK);
    EXPECT_EQ(ImageableOf(CapabilitiesFor(Parsed(text))).imageableWidth, 148000);

    // No ticket is a key of its own, and another ticket another one.
    EXPECT_EQ(ImageableOf(CapabilitiesFor(nullptr)).imageableWidth, 210000);
    EXPECT_EQ(ImageableOf(CapabilitiesFor(Parsed(TicketText("")))).imageableWidth, 210000);
}

TEST_F(PrintTicketCapabilitiesTest, OptionsThatTheChoicesExcludeAreMarked) {
    constexpr auto twoSided = L"//psf:Feature[@name='psk:JobDuplexAllDocumentsContiguously']"
                              L"/psf:Option[@name='psk:TwoSidedLongEdge']";
    EXPECT_EQ(ConstrainedOf(CapabilitiesFor(nullptr), twoSided), "psk:None");
    const Document onFilm =
        CapabilitiesFor(Parsed(TicketText(Choice("psk:PageMediaType", "psk:Transparency"))));
    EXPECT_EQ(ConstrainedOf(onFilm, twoSided), "psk:PrintTicketSettings");
}

TEST_F(PrintTicketCapabilitiesTest, PaperOfAnySizeHasItsImageableArea) {
    struct Row {
        int width, height;
    };
    for (const Row& row : {Row{210000, 297000}, Row{148000, 210000}, Row{148000, 300250}}) {
        Document capabilities;
        ASSERT_EQ(manager.GetCapabilitiesUsingSpecifiedMediaSize(row.width, row.height, &capabilities), S_OK);
        const Imageable data = ImageableOf(capabilities);
        EXPECT_EQ(data.imageableWidth, row.width);
        EXPECT_EQ(data.imageableHeight, row.height);
        EXPECT_EQ(data.extentWidth, row.width - 8400); // the margins of the queue's printer
        EXPECT_EQ(data.extentHeight, row.height - 8400);
        Document again;
        const LONG known =
            CallsOf([&] { manager.GetCapabilitiesUsingSpecifiedMediaSize(row.width, row.height, &again); });
        EXPECT_LT(known, 20);
        EXPECT_NE(again.p, capabilities.p);
    }
    // The default ticket, which the empty ticket is made of, says what it did.
    CComBSTR text;
    ASSERT_EQ(manager.GetPtrToDefaultPrintTicketForReading()->get_xml(&text), S_OK);
    EXPECT_NE(std::wstring_view(text).find(L"PageMediaSize"), std::wstring_view::npos);
}

TEST_F(PrintTicketCapabilitiesTest, EmptyTicketKeepsTheDeclarationsAlone) {
    Document empty;
    ASSERT_EQ(manager.CreateNewEmptyTempPrintTicket(&empty), S_OK);
    CComPtr<IXMLDOMElement> root;
    ASSERT_EQ(empty->get_documentElement(&root), S_OK);
    CComPtr<IXMLDOMNode> child;
    EXPECT_EQ(root->get_firstChild(&child), S_FALSE);
    EXPECT_STREQ(PrintTicketXmlDocument(empty).GetKeywordsNsPrefix(), L"psk:");
}

TEST_F(PrintTicketCapabilitiesTest, FailuresAreResultsAndGiveNothing) {
    PrintTicketManager without;
    Document out;
    EXPECT_EQ(without.GetCapabilities(nullptr, &out), E_POINTER);
    EXPECT_EQ(manager.GetCapabilities(nullptr, nullptr), E_POINTER);
    EXPECT_EQ(without.GetCapabilitiesUsingSpecifiedMediaSize(1, 1, &out), E_POINTER);
    EXPECT_EQ(manager.GetCapabilitiesUsingSpecifiedMediaSize(1, 1, nullptr), E_POINTER);
    EXPECT_EQ(without.CreateNewEmptyTempPrintTicket(&out), E_POINTER);
    Document other;
    ASSERT_EQ(other.CoCreateInstance(__uuidof(DOMDocument60)), S_OK);
    const ReportRecorder reports;
    EXPECT_TRUE(FAILED(manager.GetCapabilities(other, &out)));
    EXPECT_FALSE(out);
}

// A manager with its default ticket.
struct TicketWorld {
    MsSafeCoInit apartment;
    SampleQueue queue;
    PrintTicketManager manager;

    TicketWorld() {
        std::wstring name = SampleQueue::name;
        manager.Initialize(MakeFake<MemoryReadStream>(queue.DefaultTicket()), name.data(), nullptr);
    }
    std::string State() {
        CComBSTR text;
        manager.GetPtrToDefaultPrintTicketForReading()->get_xml(&text);
        return std::string(CPString(CXString(text)).view());
    }
};

TEST(PrintTicketCapabilitiesSweepTest, FailingCallIsToldAndNotRemembered) {
    FailureSweep<TicketWorld>([] { return std::make_unique<TicketWorld>(); },
                              [](TicketWorld& world) -> SweptAnswer {
                                  Document out;
                                  const HRESULT hr = world.manager.GetCapabilities(
                                      world.manager.GetPtrToDefaultPrintTicketForReading(), &out);
                                  CComBSTR text;
                                  if (SUCCEEDED(hr)) ThrowIfFailed(out->get_xml(&text));
                                  return FAILED(hr) ? SweptAnswer(hr) : std::to_string(text.Length());
                              })
        .Run("GetCapabilities");
}

} // namespace
