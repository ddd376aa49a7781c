#include "FilterUtilities/PrintSchema/TicketSupport.h"
#include "Support/AttributeLists.h"
#include "Support/NoDisplayHelp.h"
#include "Support/VirtualSlots.h"

#include <AttributeStore/AttributeBytesIndexedList.h>
#include <EmbeddedSettings/PrintTicketAttributeBytesReaderWriter.h>
#include <LowLevelFacilities/Failures/CPExceptionInvalidArgument.h>
#include <LowLevelFacilities/Strings/CPStringUtils.h>

namespace {

using ReaderWriter = PrintTicketAttributeBytesReaderWriter;
using Id = AttributeBytesFeatureId;
using NameSpaceId = AttributeBytesNameSpacesId;
using Value = AttributeBytesValue;

const NoDisplayHelp helper;

const NameSpaceId ours = PersistentAttributes::GetDataModelDocPropNameSpaceId();
const NameSpaceId foreign(77);
const Id lightness(110);

// A store whose name spaces hold one integer each.
ByteBuffer TwoNameSpaces(int lightnessInOurs, int lightnessInForeign) {
    AttributeBytesNameSpaces nameSpaces;
    for (const auto& [id, value] : {std::pair(ours, lightnessInOurs), std::pair(foreign, lightnessInForeign)})
        nameSpaces.SetNameSpaceAttributes(
            id, Attributes<AttributeBytesRawList>(
                    {{110, Value::FromInteger(value)}, {500, Value::FromUnknown(14, ByteBuffer(3, 9))}}));
    PersistentAttributes store({}, false, nullptr);
    store.SetAttributeBytesNameSpaces(nameSpaces);
    return store.GetPersistentAttributesState();
}

std::string EmptyTicket() { return Ticket("", Declare("ok", PrivateUri())); }

OpenTicket TicketWith(const ByteBuffer& bytes) {
    OpenTicket ticket(EmptyTicket());
    EXPECT_EQ(ticket.AddOrReplacePageOrvelCompleteDocSettingsInPrintTicket(bytes), S_OK);
    return ticket;
}

int Lightness(const ReaderWriter& bytes) {
    return bytes.GetIntegerValueFromAttributeBytes(lightness, nullptr);
}

void SetLightness(ReaderWriter& bytes, int value) {
    bytes.GetAttributeBytesIndexedListRef().AddAttributeBytes(
        AttributeBytes(lightness, Value::FromInteger(value)));
}

int LightnessIn(const PrintTicketXmlDocument& ticket, NameSpaceId nameSpace) {
    ByteBuffer bytes;
    EXPECT_EQ(ticket.GetOrvelCompleteDocSettingsFromPrintTicket(bytes), S_OK);
    const ReaderWriter reader(bytes, helper, false);
    return reader.GetAttributeBytesIndexedListRef(nameSpace).GetIntegerValue(lightness, nullptr);
}

std::string TicketWithText(const std::string& settings) {
    return Ticket("<psf:ParameterInit name='ok:JobOrvelCompleteDocSettings'><psf:Value>" + settings +
                      "</psf:Value></psf:ParameterInit>",
                  Declare("ok", PrivateUri()));
}

} // namespace

TEST(TicketAttributeBytes, VirtualOperationsStandInTheirSlots) {
    using List = AttributeBytesIndexedList;
    EXPECT_EQ(SlotOf(static_cast<const List& (ReaderWriter::*)() const>(
                  &ReaderWriter::GetAttributeBytesIndexedListRef)),
              2U);
    EXPECT_EQ(SlotOf(static_cast<List& (ReaderWriter::*)()>(&ReaderWriter::GetAttributeBytesIndexedListRef)),
              3U);
    EXPECT_EQ(SlotOf(&ReaderWriter::Dump), 4U);
    EXPECT_EQ(SlotOf(static_cast<const List& (ReaderWriter::*)(NameSpaceId) const>(
                  &ReaderWriter::GetAttributeBytesIndexedListRef)),
              5U);
    EXPECT_EQ(SlotOf(static_cast<List& (ReaderWriter::*)(NameSpaceId)>(
                  &ReaderWriter::GetAttributeBytesIndexedListRef)),
              6U);
    EXPECT_EQ(SlotOf(&OneMore<ReaderWriter>::Next), 7U);
}

TEST(TicketAttributeBytes, WithoutBytesTheListIsEmptyAndNeverWritten) {
    for (const std::string& text : {EmptyTicket(), TicketWithText(" \n ")}) {
        OpenTicket ticket(text);
        const std::string before = XmlOf(ticket);
        ReaderWriter bytes(&ticket, helper, false);
        EXPECT_EQ(bytes.CommitChangesToPrintTicket(), S_OK);
        EXPECT_TRUE(bytes.IsAttributeBytesListEmpty());
        SetLightness(bytes, 5);
        EXPECT_EQ(Lightness(bytes), 5);
        EXPECT_EQ(bytes.CommitChangesToPrintTicket(), S_OK);
        EXPECT_EQ(XmlOf(ticket), before);
    }
}

TEST(TicketAttributeBytes, DamagedTextOrBytesAreRefusedAtEveryQuestionAndStay) {
    const ByteBuffer whole = TwoNameSpaces(5, 6);
    OpenTicket ticketOfWhole = TicketWith(whole);
    CXString text;
    ASSERT_EQ(ticketOfWhole.GetStringParameterInitValue(L"ok:", L"JobOrvelCompleteDocSettings", text), S_OK);
    const std::string good = CPStringUtils::narrowToStdString(text);
    std::vector<std::string> damaged{TicketWithText("no Base64!"), TicketWithText("="),
                                     TicketWithText(good + "A"),
                                     TicketWithText(std::string(good).replace(5, 1, "-"))};
    for (std::size_t length = 1; length < whole.size(); ++length) {
        const ByteBuffer cut(whole.data(), length);
        EXPECT_THROW(ReaderWriter(cut, helper, false), CPExceptionInvalidArgument) << length;
        damaged.push_back(XmlOf(TicketWith(cut)));
    }
    for (const std::string& xml : damaged) {
        OpenTicket ticket(xml);
        const std::string before = XmlOf(ticket);
        ReaderWriter bytes(&ticket, helper, false);
        for (int question = 0; question < 2; ++question)
            EXPECT_THROW((void)bytes.IsAttributeBytesListEmpty(), CPExceptionInvalidArgument) << xml;
        EXPECT_EQ(bytes.CommitChangesToPrintTicket(), S_OK); // nothing was read
        EXPECT_EQ(XmlOf(ticket), before);
    }
    OpenTicket spaced(TicketWithText(" " + good.substr(0, 9) + "\n\t" + good.substr(9) + " "));
    EXPECT_EQ(Lightness(ReaderWriter(&spaced, helper, false)), 5);
}

TEST(TicketAttributeBytes, ACommitWritesTheListAndLosesNothing) {
    OpenTicket ticket = TicketWith(TwoNameSpaces(5, 6));
    ReaderWriter bytes(&ticket, helper, true);
    EXPECT_EQ(Lightness(bytes), 5);
    SetLightness(bytes, 50);
    EXPECT_EQ(LightnessIn(ticket, ours), 5) << "not yet committed";
    ASSERT_EQ(bytes.CommitChangesToPrintTicket(), S_OK);

    OpenTicket fresh(XmlOf(ticket));
    EXPECT_EQ(LightnessIn(fresh, ours), 50);
    EXPECT_EQ(LightnessIn(fresh, foreign), 6);
    ReaderWriter reread(&fresh, helper, true);
    const AttributeBytes* const unknown =
        reread.GetAttributeBytesIndexedListRef().GetAttributeBytesPtr(Id(500));
    ASSERT_NE(unknown, nullptr);
    EXPECT_EQ(unknown->GetAttributeBytesValue().GetUnknown()->size(), 3U);

    // The object still has the bytes as they came in; clearing loses what was not committed.
    bytes.ClearCachedIndexedList();
    EXPECT_EQ(Lightness(bytes), 5);
    SetLightness(bytes, 60);
    bytes.ClearCachedIndexedList();
    EXPECT_EQ(bytes.CommitChangesToPrintTicket(), S_OK);
    EXPECT_EQ(LightnessIn(ticket, ours), 50);
}

TEST(TicketAttributeBytes, TheNameSpaceAskedForFirstStaysInForce) {
    OpenTicket ticket = TicketWith(TwoNameSpaces(5, 6));
    ReaderWriter bytes(&ticket, helper, false);
    EXPECT_EQ(bytes.GetAttributeBytesIndexedListRef(foreign).GetIntegerValue(lightness, nullptr), 6);
    EXPECT_EQ(Lightness(bytes), 6);
    bytes.ClearCachedIndexedList();
    EXPECT_EQ(Lightness(bytes), 5);
    EXPECT_EQ(bytes.GetAttributeBytesIndexedListRef(foreign).GetIntegerValue(lightness, nullptr), 5);
}

TEST(TicketAttributeBytes, GivenBytesGoBeforeThoseOfTheTicket) {
    OpenTicket ticket = TicketWith(TwoNameSpaces(5, 6));
    ReaderWriter bytes(&ticket, helper, false);
    EXPECT_EQ(Lightness(bytes), 5);
    ByteBuffer others = TwoNameSpaces(15, 16);
    bytes.SetOrvelCompleteDocSettings(others);
    EXPECT_EQ(Lightness(bytes), 15);
    ASSERT_EQ(bytes.CommitChangesToPrintTicket(), S_OK);
    EXPECT_EQ(LightnessIn(ticket, foreign), 16);

    ReaderWriter withoutTicket(others, helper, false);
    EXPECT_LT(withoutTicket.CommitChangesToPrintTicket(), 0) << "before the first question";
    EXPECT_EQ(Lightness(withoutTicket), 15);
    EXPECT_LT(withoutTicket.CommitChangesToPrintTicket(), 0);
    EXPECT_TRUE(ReaderWriter({}, helper, false).IsAttributeBytesListEmpty());
    EXPECT_TRUE(ReaderWriter(helper).IsAttributeBytesListEmpty());
}

TEST(TicketAttributeBytes, AStoreTooLongForATicketIsRefused) {
    OpenTicket ticket = TicketWith(TwoNameSpaces(5, 6));
    ReaderWriter bytes(&ticket, helper, false);
    bytes.GetAttributeBytesIndexedListRef().AddAttributeBytes(
        AttributeBytes(Id(68), Value::FromString(CXString(std::wstring(2000, L'n')))));
    EXPECT_EQ(bytes.CommitChangesToPrintTicket(), E_FAIL);
}
