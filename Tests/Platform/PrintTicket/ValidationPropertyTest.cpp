// What a printer has made of a ticket it carries out as it stands: whatever the printer and whatever the
// ticket.

#include "Platform/PrintTicket/TicketFixture.h"

#include <gtest/gtest.h>

#include <array>
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
            text += "<psf:ParameterInit name=\"" + One(Parameters) + "\">" + Value() + "</psf:ParameterInit>";
        for (int i = Below(5); i > 0; --i)
            text += MakeFeature(false, 0);
        for (int i = Below(3); i > 0; --i)
            text += Property(0);
        return "<psf:PrintTicket xmlns:o=\"urn:other\" " + std::string(Declarations) + ">" + text +
               "</psf:PrintTicket>";
    }

    EPrintTicketScope Scope() { return static_cast<EPrintTicketScope>(Below(3)); }

private:
    template <std::size_t N>
    using Words = std::array<const char*, N>;
    static constexpr Words<3> Features{"psk:PageA", "psk:DocumentB", "t:JobC"};
    static constexpr Words<3> Parameters{"psk:PageP1", "psk:PageP2", "t:P3"};
    static constexpr Words<2> Properties{"psk:S1", "t:S2"};
    static constexpr Words<3> Options{"psk:X", "t:Y", "psk:Z"};
    static constexpr Words<3> Types{"xsd:integer", "xsd:string", "xsd:decimal"};
    static constexpr Words<5> Texts{"1", "2", "1.0", " 2 ", ""};

    int Below(int bound) { return static_cast<int>(m_random() % static_cast<unsigned>(bound)); }
    bool Chance(int percent) { return Below(100) < percent; }
    template <std::size_t N>
    std::string One(const Words<N>& words) {
        return words[static_cast<std::size_t>(Below(static_cast<int>(N)))];
    }

    std::string Value() {
        if (Chance(15))
            return "<psf:Value xsi:type=\"xsd:QName\">" + One(Words<4>{"psk:X", "t:Y", "o:X", "Z"}) +
                   "</psf:Value>";
        return "<psf:Value" + (Chance(80) ? " xsi:type=\"" + One(Types) + "\"" : "") + ">" + One(Texts) +
               "</psf:Value>";
    }

    std::string Definition() {
        const auto property = [](const char* name, const std::string& value) {
            return std::string("<psf:Property name=\"psf:") + name + "\">" + value + "</psf:Property>";
        };
        const auto keyword = [](const std::string& name) {
            return "<psf:Value xsi:type=\"xsd:QName\">" + name + "</psf:Value>";
        };
        std::string text = property("DataType", keyword(Chance(10) ? "xsd:QName" : One(Types)));
        if (Chance(70)) text += property("DefaultValue", Value());
        if (Chance(80))
            text += property("Mandatory", keyword(One(Words<2>{"psk:Conditional", "psk:Unconditional"})));
        if (Chance(30)) text += property(Chance(50) ? "MinValue" : "MinLength", Value());
        if (Chance(30)) text += property("MaxValue", Value());
        return "<psf:ParameterDef name=\"" + One(Parameters) + "\">" + text + "</psf:ParameterDef>";
    }

    std::string Property(int depth) {
        std::string text = Chance(70) ? Value() : "";
        if (depth < 1 && Chance(40)) text += Property(depth + 1) + Property(depth + 1);
        return "<psf:Property name=\"" + (Chance(20) ? "o:S" : One(Properties)) + "\">" + text +
               "</psf:Property>";
    }

    std::string ScoredProperty(int depth) {
        std::string text = Chance(50)   ? "<psf:ParameterRef name=\"" + One(Parameters) + "\"/>"
                           : Chance(90) ? Value()
                                        : "";
        if (depth < 1 && Chance(20)) text += ScoredProperty(depth + 1);
        return "<psf:ScoredProperty name=\"" + One(Properties) + "\">" + text + "</psf:ScoredProperty>";
    }

    // `feature`: of the printer, where constraints may name it.
    std::string MakeOption(bool ofPrinter, const std::string* feature) {
        std::string text = "<psf:Option";
        if (Chance(50)) {
            const std::string name = ofPrinter || Chance(80) ? One(Options) : "o:X";
            text += " name=\"" + name + "\"";
            if (feature)
                m_choices.push_back("<qc:Choice feature=\"" + *feature + "\" options=\"" + name + "\"/>");
        }
        if (ofPrinter && Chance(15)) text += " constrained=\"psk:DeviceSettings\"";
        text += ">";
        for (int i = Below(3); i > 0; --i)
            text += ScoredProperty(Chance(20) ? 1 : 0);
        if (ofPrinter && Chance(15))
            text += "<psf:Property name=\"psf:IdentityOption\"><psf:Value xsi:type=\"xsd:string\">True"
                    "</psf:Value></psf:Property>";
        if (!ofPrinter && Chance(40)) text += Property(0) + Property(0);
        return text + "</psf:Option>";
    }

    std::string MakeFeature(bool ofPrinter, int depth) {
        const std::string name = ofPrinter || Chance(90) ? One(Features) : "o:F";
        std::string text = "<psf:Feature name=\"" + name + "\">";
        if (ofPrinter && Chance(30))
            text += "<psf:Property name=\"psf:SelectionType\"><psf:Value xsi:type=\"xsd:QName\">psk:PickMany"
                    "</psf:Value></psf:Property>";
        if (!ofPrinter && Chance(30)) text += Property(0);
        const bool isFirst = ofPrinter && depth == 0 && m_named.insert(name).second;
        for (int i = Below(ofPrinter ? 6 : 3); i > 0; --i)
            text += MakeOption(ofPrinter, isFirst ? &name : nullptr);
        if (depth < 2 && Chance(25)) text += MakeFeature(ofPrinter, depth + 1);
        return text + "</psf:Feature>";
    }

    std::string Choice() {
        return m_choices[static_cast<std::size_t>(Below(static_cast<int>(m_choices.size())))];
    }

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
