#include "FilterUtilities/PrintSchema/TicketSupport.h"
#include "Support/Rows.h"
#include "Support/VirtualSlots.h"

#include <PrintSchema/DomDocumentCache.h>
#include <PrintSchema/PrintTicketQueryBuilder.h>

// What modules that were built against an earlier library rely on.

namespace {

std::string TextAt(const void* object, std::size_t word) {
    const auto* const text = static_cast<const wchar_t*>(WordOf(object, word));
    return text ? Narrow(text) : "(null)";
}

TEST(DocumentLayout, DestructorsAreTheOnlyVirtualOperations) {
    EXPECT_EQ(SlotOf(&OneMore<PrintSchemaXmlDocument>::Next), 2u);
    EXPECT_EQ(SlotOf(&OneMore<PrintTicketXmlDocument>::Next), 2u);
    EXPECT_EQ(SlotOf(&OneMore<PrintTicketQueryBuilder>::Next), 2u);
    EXPECT_EQ(SlotOf(&OneMore<DomDocumentCache>::Next), 2u);
}

TEST(DocumentLayout, DocumentsHoldTheirFieldsInOrder) {
    const OpenTicket ticket("<f:PrintTicket" + Declare("d", "http://www.w3.org/2001/XMLSchema") +
                            Declare("i", "http://www.w3.org/2001/XMLSchema-instance") +
                            Declare("f", frameworkUri) + Declare("k", keywordsUri) +
                            Declare("k11", keywordsV11Uri) + Declare("u", PrivateUri()) + "/>");
    static_assert(sizeof(PrintTicketXmlDocument) == 10 * sizeof(void*));
    EXPECT_EQ(WordOf(&ticket, 1), ticket.GetDomDocPtr());
    const char* texts[] = {"PrintTicket", "d:", "i:", "f:", "k:", "k11:", "ok:"};
    for (std::size_t index = 0; index < std::size(texts); ++index)
        EXPECT_EQ(TextAt(&ticket, 2 + index), texts[index]);
    EXPECT_EQ(WordOf(&ticket, 9), ticket.GetRootNode());
}

TEST(DocumentLayout, QueriesHoldTheirFieldsInOrder) {
    static_assert(sizeof(PrintTicketQueryBuilder) == 3 * sizeof(void*));
    const PrintTicketQueryBuilder builder(L"psf:", L"//here");
    EXPECT_EQ(TextAt(&builder, 1), "//here");
    EXPECT_EQ(TextAt(&builder, 2), "psf:");
}

// ---- What is private to tickets, and exported

using OfTwoLists = HRESULT (PrintTicketXmlDocument::*)(IXMLDOMNodeList*, IXMLDOMNodeList*);
OfTwoLists DeleteParamInitOrphans();

// Explicit instantiation may name what is private.
template <OfTwoLists orphans>
struct Opened {
    friend OfTwoLists DeleteParamInitOrphans() { return orphans; }
};
template struct Opened<&PrintTicketXmlDocument::DeleteParamInitOrphans>;

TEST(PrintTicketXmlDocument, DeletesInitialisersThatNoReferenceNames) {
    const std::string inits = "<psf:ParameterInit name='psk:A'/><psf:ParameterInit name='psk:B'/>"
                              "<psf:ParameterInit/><psf:ParameterInit name='psk:C'/>";
    const Rows<const char*, std::string, const char*, const char*> cases{
        {"no reference: also those without a name", "", "0", ""},
        {"a reference to some",
         "<psf:ParameterRef/><psf:ParameterRef name='psk:C'/><psf:ParameterRef name='psk:B'/>", "3", "psk:B"},
        {"a reference to none", "<psf:ParameterRef name='psk:D'/>", "1", ""},
    };
    for (const auto& [what, givenRefs, left, first] : cases) {
        SCOPED_TRACE(what);
        OpenTicket ticket(Ticket(givenRefs + inits));
        CComPtr<IXMLDOMNodeList> refs;
        CComPtr<IXMLDOMNodeList> found;
        ASSERT_EQ(ticket.GetNodes(L"ParameterRef", &refs), S_OK);
        ASSERT_EQ(ticket.GetNodes(L"ParameterInit", &found), S_OK);
        EXPECT_EQ((ticket.*DeleteParamInitOrphans())(refs, found), S_OK);
        EXPECT_EQ(OutsideView(ticket, "count(//psf:ParameterInit)"), left);
        EXPECT_EQ(OutsideView(ticket, "//psf:ParameterInit/@name"), first);
    }
}

// ---- Keywords

TEST(PrintSchemaKeywords, KeepTheTextsThatDifferFromTheirNames) {
    EXPECT_EQ(Narrow(PrintSchema::PageOutputQuality::Text), "Automatic");
    EXPECT_EQ(Narrow(PrintSchema::PageMediaType::Archival), "Archive");
    EXPECT_EQ(Narrow(PrintSchema::Common::PrinterDefault), "printer-default");
    EXPECT_EQ(Narrow(PrintSchema::Binding::BIND_OPTIONS[13]), "None");
    EXPECT_EQ(PrintSchema::JobOptimalDestinationColorProfile::PROFILESELECTOR[2], nullptr);
}

} // namespace
