// What a printer has made of a ticket it carries out as it stands: whatever the printer and whatever the
// ticket.

#include "Platform/PrintTicket/TicketFixture.h"

#include <gtest/gtest.h>

#include <random>
#include <set>
#include <vector>

using namespace OvPlatform;
using namespace TicketFixture;

namespace {

// Makes capabilities and tickets out of so few words that names, values and references keep meeting: options
// that look alike, parameters with impossible defaults, choices that exclude each other.
class Maker {
public:
    explicit Maker(unsigned seed) : m_random(seed) {}

    std::string MakeCapabilities() {
        std::string text;
        for (int i = Below(6); i > 0; --i)
            text += Definition();
        for (int i = 1 + Below(4); i > 0; --i)
            text += MakeFeature(true, 0);
        for (int i = m_choices.empty() ? 0 : Below(4); i > 0; --i)
            text += "<qc:Constraint>" + Choice() + Choice() + "</qc:Constraint>";
        return Capabilities(text);
    }

    std::string MakeTicket() {
        std::string text;
        for (int i = Below(4); i > 0; --i)
            text +=
                "<psf:ParameterInit name=\"" + One(m_parameters) + "\">" + Value() + "</psf:ParameterInit>";
        for (int i = Below(5); i > 0; --i)
            text += MakeFeature(false, 0);
        for (int i = Below(3); i > 0; --i)
            text += MakeProperty(0);
        return Ticket(text);
    }

    EPrintTicketScope Scope() { return static_cast<EPrintTicketScope>(Below(3)); }

private:
    using Words = std::vector<std::string>;

    int Below(int bound) { return static_cast<int>(m_random() % static_cast<unsigned>(bound)); }
    bool Chance(int percent) { return Below(100) < percent; }
    std::string One(const Words& words) { return words[m_random() % words.size()]; }

    std::string Value() {
        if (Chance(15))
            return "<psf:Value xsi:type=\"xsd:QName\">" + One(Words{"psk:X", "t:Y", "o:X", "Z"}) +
                   "</psf:Value>";
        return "<psf:Value" + (Chance(80) ? " xsi:type=\"" + One(m_types) + "\"" : "") + ">" + One(m_texts) +
               "</psf:Value>";
    }

    std::string Definition() {
        const auto bound = [&](const char* name) {
            return std::string("<psf:Property name=\"psf:") + name + "\">" + Value() + "</psf:Property>";
        };
        std::string text = Property("psf:DataType", "QName", Chance(10) ? "xsd:QName" : One(m_types));
        if (Chance(70)) text += bound("DefaultValue");
        if (Chance(80))
            text += Property("psf:Mandatory", "QName", Chance(50) ? "psk:Conditional" : "psk:Unconditional");
        if (Chance(30)) text += bound(Chance(50) ? "MinValue" : "MinLength");
        if (Chance(30)) text += bound("MaxValue");
        return "<psf:ParameterDef name=\"" + One(m_parameters) + "\">" + text + "</psf:ParameterDef>";
    }

    std::string MakeProperty(int depth) {
        std::string text = Chance(70) ? Value() : "";
        if (depth < 1 && Chance(40)) text += MakeProperty(depth + 1) + MakeProperty(depth + 1);
        return "<psf:Property name=\"" + (Chance(20) ? "o:S" : One(m_properties)) + "\">" + text +
               "</psf:Property>";
    }

    std::string ScoredProperty(int depth) {
        std::string text = Chance(50)   ? "<psf:ParameterRef name=\"" + One(m_parameters) + "\"/>"
                           : Chance(90) ? Value()
                                        : "";
        if (depth < 1 && Chance(20)) text += ScoredProperty(depth + 1);
        return "<psf:ScoredProperty name=\"" + One(m_properties) + "\">" + text + "</psf:ScoredProperty>";
    }

    // `feature`: of the printer, where constraints may name it.
    std::string MakeOption(bool ofPrinter, const std::string* feature) {
        std::string text = "<psf:Option";
        if (Chance(50)) {
            const std::string name = ofPrinter || Chance(80) ? One(m_options) : "o:X";
            text += " name=\"" + name + "\"";
            if (feature)
                m_choices.push_back("<qc:Choice feature=\"" + *feature + "\" options=\"" + name + "\"/>");
        }
        if (ofPrinter && Chance(15)) text += " constrained=\"psk:DeviceSettings\"";
        text += ">";
        for (int i = Below(3); i > 0; --i)
            text += ScoredProperty(Chance(20) ? 1 : 0);
        if (ofPrinter && Chance(15)) text += Property("psf:IdentityOption", "string", "True");
        if (!ofPrinter && Chance(40)) text += MakeProperty(0) + MakeProperty(0);
        return text + "</psf:Option>";
    }

    std::string MakeFeature(bool ofPrinter, int depth) {
        const std::string name = ofPrinter || Chance(90) ? One(m_features) : "o:F";
        std::string text = "<psf:Feature name=\"" + name + "\">";
        if (ofPrinter && Chance(30)) text += Property("psf:SelectionType", "QName", "psk:PickMany");
        if (!ofPrinter && Chance(30)) text += MakeProperty(0);
        const bool isFirst = ofPrinter && depth == 0 && m_named.insert(name).second;
        for (int i = Below(ofPrinter ? 6 : 3); i > 0; --i)
            text += MakeOption(ofPrinter, isFirst ? &name : nullptr);
        if (depth < 2 && Chance(25)) text += MakeFeature(ofPrinter, depth + 1);
        return text + "</psf:Feature>";
    }

    std::string Choice() { return m_choices[m_random() % m_choices.size()]; }

    const Words m_features{"psk:PageA", "psk:DocumentB", "t:JobC"};
    const Words m_parameters{"psk:PageP1", "psk:PageP2", "t:P3"};
    const Words m_properties{"psk:S1", "t:S2"};
    const Words m_options{"psk:X", "t:Y", "psk:Z"};
    const Words m_types{"xsd:integer", "xsd:string", "xsd:decimal"};
    const Words m_texts{"1", "2", "1.0", " 2 ", ""};
    std::mt19937 m_random;
    std::set<std::string> m_named;
    std::vector<std::string> m_choices; // what constraints may name
};

TEST(TicketValidation, LeavesItsOwnTicketsAsTheyAre) {
    int tickets = 0, failures = 0;
    for (unsigned seed = 0; seed < 250 && failures < 3; ++seed) {
        Maker maker(seed);
        const std::string capabilities = maker.MakeCapabilities();
        std::unique_ptr<const PrintTicketMerge> printer;
        try {
            printer = std::make_unique<PrintTicketMerge>(Queue(capabilities, maker.MakeTicket()));
        } catch (const PrintTicketError&) {
            continue; // a constraint on what this printer does not have
        }
        for (int i = 0; i < 8; ++i) {
            const std::string base = maker.MakeTicket(), delta = maker.MakeTicket();
            const std::string_view view = delta;
            const EPrintTicketScope scope = maker.Scope();
            const std::string once = printer->Merge(base, i % 2 ? &view : nullptr, scope).ticket;
            const PrintTicketMerge::Result twice = printer->Merge(once, nullptr, scope);
            ++tickets;
            if (twice.ticket == once && !twice.conflictResolved) continue;
            ++failures;
            ADD_FAILURE() << "seed " << seed << "\nthe printer: " << capabilities << "\nasked for: " << base
                          << "\nand for: " << (i % 2 ? delta : "nothing") << "\nonce:  " << once
                          << "\ntwice: " << twice.ticket;
        }
    }
    EXPECT_GT(tickets, 1000);
}

} // namespace
