// What the settings inside a ticket are and answer after any one platform call fails.

#include "Support/FailureSweep.h"

#include "FilterUtilities/PrintSchema/TicketSupport.h"
#include "Support/AttributeLists.h"
#include "Support/NoDisplayHelp.h"
#include "Support/Rows.h"

#include <AttributeStore/AttributeBytesIndexedList.h>
#include <AttributeStore/AttributeBytesNameSpaces.h>
#include <AttributeStore/AttributeBytesRawList.h>
#include <EmbeddedSettings/PrintTicketAttributeBytesReaderWriter.h>
#include <EmbeddedSettings/PrintTicketOrvelPublicDocSettingsReaderWriter.h>

namespace {

class OpenSettings : public PrintTicketOrvelPublicDocSettingsReaderWriter {
public:
    using PrintTicketOrvelPublicDocSettingsReaderWriter::PrintTicketOrvelPublicDocSettingsReaderWriter;

    [[nodiscard]] std::string Text() {
        const MicrosoftXmlParser* document = GetDomWithOrvelPublicDocSettingsInitOnFirstUse();
        return document ? std::string(PublicDocSettingsDocument::GetText(*document).view()) : "(none)";
    }
    [[nodiscard]] XmlDomNode::Pointer NewNode(const wchar_t* name) {
        return GetDomWithOrvelPublicDocSettingsInitOnFirstUse()->getDocument().CreateElement(name);
    }
};

std::string TicketWith(const std::string& parameters) {
    return Ticket(Feature("psk:PageMediaSize", "psk:ISOA4") + parameters, Declare("ok", PrivateUri()));
}

std::string TicketWithSettings() {
    return TicketWith(
        "<psf:ParameterInit name='ok:JobOrvelPublicDocSettings'>"
        "<psf:Value xsi:type='xsd:string'>&lt;s>&lt;sides specified='false'>one-sided&lt;/sides>"
        "&lt;list>&lt;entry>&lt;count>1&lt;/count>&lt;/entry>&lt;/list>&lt;/s></psf:Value>"
        "</psf:ParameterInit>");
}

// A ticket and its public settings, which need not be the same.
struct SettingsWorld {
    explicit SettingsWorld(const std::string& text) : ticket(text), settings(&ticket) {}
    [[nodiscard]] std::string State() {
        const std::string text = XmlOf(ticket);
        return text.find("JobOrvelPublic") == std::string::npos ? text : text + settings.Text();
    }

    OpenTicket ticket;
    OpenSettings settings;
};

using W = SettingsWorld;
using Sweep = FailureSweep<W>;

Sweep::Maker MakeSettings(const std::string& ticket) {
    return [ticket] { return std::make_unique<W>(ticket); };
}

TEST(FailureSweep, NoSetterOfPublicSettingsLosesOneOrHalfOfOne) {
    const auto set = [](const wchar_t* name, bool isSpecified) {
        return [=](W& w) {
            return w.settings.SetCurrentValueAsStringForOrvelPublicDocSettingsFeature(name, L"text",
                                                                                      isSpecified, L"new");
        };
    };
    const auto setMember = [](const wchar_t* name) {
        return [=](W& w) {
            return w.settings.SetCurrentValueAsInitForOrvelPublicDocSettingsFeature(L"list", 0, name,
                                                                                    L"integer", false, 5);
        };
    };
    const Rows<const char*, Sweep::Operation> setters{
        {"an element", set(L"sides", true)},
        {"a new element", set(L"title", false)},
        {"a member", setMember(L"count")},
        {"a new member", setMember(L"title")},
        {"another node",
         [](W& w) {
             return w.settings.SetCurrentValueForOrvelPublicDocSettingsFeatureWithXmlDomNode(
                 L"sides", w.settings.NewNode(L"sides").get());
         }},
        {"no element", [](W& w) { return w.settings.DeleteOrvelPublicDocSettingsFeature(L"sides"); }},
    };
    for (const auto& [name, operation] : setters) {
        Sweep sweep(MakeSettings(TicketWithSettings()), operation);
        EXPECT_TRUE(sweep.IsEdit()) << name;
        sweep.Run(name);
    }
    // Two steps of which the first may be done and the second not: that is as asked so far.
    const auto change = set(L"sides", true);
    W changed(TicketWithSettings());
    EXPECT_EQ(change(changed), S_OK);
    Sweep(MakeSettings(TicketWithSettings()), [=](W& w) {
        const LONG hr = change(w);
        return FAILED(hr) ? hr : w.settings.CommitChangesToPrintTicket();
    }).Run("an element in the ticket", {changed.State()});
    W empty(TicketWith(""));
    EXPECT_EQ(empty.settings.DeleteOrvelPublicDocSettingsFeature(L"sides"), S_FALSE);
    Sweep(MakeSettings(TicketWith("")), set(L"sides", true))
        .Run("an element of a ticket without settings", {empty.State()});
}

TEST(FailureSweep, NoFirstQuestionToPublicSettingsChangesItsAnswersOrTheTicket) {
    const Rows<const char*, Sweep::Operation> questions{
        {"settings",
         [](W& w) { return SweptAnswer(std::to_string(w.settings.HasOrvelPublicDocSettings())); }},
        {"an element",
         [](W& w) {
             bool isSpecified = true;
             CXString value;
             return w.settings.GetCurrentValueAsStringForOrvelPublicDocSettingsFeature(L"sides", isSpecified,
                                                                                       value);
         }},
        {"a member",
         [](W& w) {
             bool isSpecified = true;
             int value = 0;
             const LONG hr = w.settings.GetCurrentValueAsIntForOrvelPublicDocSettingsFeature(
                 L"list", 0, L"count", isSpecified, value, 7);
             return FAILED(hr) ? SweptAnswer(hr) : SweptAnswer(std::to_string(value));
         }},
    };
    for (const auto& [name, operation] : questions) {
        Sweep(MakeSettings(TicketWithSettings()), operation).Run(name);
        Sweep(MakeSettings(TicketWith("")), operation).Run(std::string(name) + " of none");
    }
}

// ---- Attribute bytes

const AttributeBytesFeatureId lightness(110);

std::string TicketWithBytes() {
    const auto list = Attributes<AttributeBytesRawList>({{110, AttributeBytesValue::FromInteger(5)}});
    OpenTicket ticket(TicketWith(""));
    EXPECT_EQ(ticket.AddOrReplacePageOrvelCompleteDocSettingsInPrintTicket(StoreOf(list)), S_OK);
    return XmlOf(ticket);
}

struct BytesWorld {
    BytesWorld() : ticket(TicketWithBytes()), bytes(&ticket, NoDisplayHelp(), false) {}
    [[nodiscard]] std::string State() const { return XmlOf(ticket); }

    OpenTicket ticket;
    PrintTicketAttributeBytesReaderWriter bytes;
};

TEST(FailureSweep, AttributeBytesAreNeitherLostNorTakenForNone) {
    const auto make = [] { return std::make_unique<BytesWorld>(); };
    FailureSweep<BytesWorld>(make, [](BytesWorld& world) {
        return SweptAnswer(std::to_string(world.bytes.GetIntegerValueFromAttributeBytes(lightness, nullptr)));
    }).Run("a question");
    FailureSweep<BytesWorld>(make, [](BytesWorld& world) {
        world.bytes.GetAttributeBytesIndexedListRef().AddAttributeBytes(
            AttributeBytes(lightness, AttributeBytesValue::FromInteger(6)));
        return world.bytes.CommitChangesToPrintTicket();
    }).Run("a change");
}

} // namespace
