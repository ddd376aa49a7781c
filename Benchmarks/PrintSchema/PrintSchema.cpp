// What the Print Schema documents cost, beside libxml2 doing the bare work on the same bytes in the same run.

#include "ApartmentBenchmarks.h"
#include "PairedTimes.h"
#include "SampleTicket.h"

#include <PrintSchema/PrintTicketXmlDocument.h>

#include <benchmark/benchmark.h>
#include <libxml/parser.h>
#include <libxml/xpath.h>
#include <libxml/xpathInternals.h>

#include <cstdlib>
#include <string>

namespace {

// Each time another ticket, since one that comes again is not parsed again.
void Load(benchmark::State& state) {
    const CComPtr<IStream> stream = TicketStream();
    static int number = 0; // of all runs
    PairedTimes::Compare(
        state, "load of a ticket, in parses", 1.05,
        [&] {
            NumberTicket(stream, ++number);
            const PrintTicketXmlDocument ticket(stream.p);
        },
        [] { xmlFreeDoc(ParseWithLibxml()); });
}

void LoadAgain(benchmark::State& state) {
    const CComPtr<IStream> stream = TicketStream();
    PairedTimes::Compare(
        state, "load of a ticket that came before, in parses", 0.7,
        [&] { const PrintTicketXmlDocument ticket(stream.p); }, [] { xmlFreeDoc(ParseWithLibxml()); });
}

// One compiled query over the ticket, by libxml2.
class Evaluation {
public:
    Evaluation() : m_tree(ParseWithLibxml()), m_context(xmlXPathNewContext(m_tree)) {
        xmlXPathRegisterNs(m_context, reinterpret_cast<const xmlChar*>("psf"),
                           reinterpret_cast<const xmlChar*>(frameworkUri));
        m_query = xmlXPathCompile(
            reinterpret_cast<const xmlChar*>("//psf:Feature[@name = \"psk:PageMediaSize\"]/psf:Option"));
    }
    ~Evaluation() {
        xmlXPathFreeCompExpr(m_query);
        xmlXPathFreeContext(m_context);
        xmlFreeDoc(m_tree);
    }
    Evaluation(const Evaluation&) = delete;
    Evaluation& operator=(const Evaluation&) = delete;

    void operator()() const { xmlXPathFreeObject(xmlXPathCompiledEval(m_query, m_context)); }

private:
    xmlDoc* m_tree;
    xmlXPathContext* m_context;
    xmlXPathCompExpr* m_query;
};

void AskForOption(const PrintTicketXmlDocument& ticket) {
    CComBSTR option;
    CComBSTR prefix;
    if (ticket.GetFeatureOption(L"psk:", L"PageMediaSize", &option, &prefix) != S_OK) std::abort();
}

void GetFeatureOption(benchmark::State& state) {
    const CComPtr<IStream> stream = TicketStream();
    const PrintTicketXmlDocument ticket(stream.p);
    const Evaluation evaluate;
    PairedTimes::Compare(
        state, "option of a feature by name, in XPath evaluations", 0.2, [&] { AskForOption(ticket); },
        evaluate);
}

// What the ticket knows by then, it has found itself.
void GetFirstFeatureOption(benchmark::State& state) {
    const CComPtr<IStream> stream = TicketStream();
    const Evaluation evaluate;
    PairedTimes times;
    for ([[maybe_unused]] auto _ : state) {
        const PrintTicketXmlDocument ticket(stream.p);
        state.SetIterationTime(times.Run([&] { AskForOption(ticket); }, evaluate));
    }
    state.counters["ratio"] = times.Ratio();
    Limits::Report("the first option of a feature by name, in XPath evaluations", times.Ratio(), 0.2);
}

void GetFeatureOptionAfterChange(benchmark::State& state) {
    const CComPtr<IStream> stream = TicketStream();
    PrintTicketXmlDocument ticket(stream.p);
    const Evaluation evaluate;
    PairedTimes times;
    const wchar_t* option = L"Portrait";
    for ([[maybe_unused]] auto _ : state) {
        option = option[0] == L'P' ? L"Landscape" : L"Portrait";
        if (ticket.SetFeatureOption(L"PageOrientation", true, option, true) != S_OK) std::abort();
        state.SetIterationTime(times.Run([&] { AskForOption(ticket); }, evaluate));
    }
    state.counters["ratio"] = times.Ratio();
    Limits::Report("option of a feature by name after a change, in XPath evaluations", times.Ratio(), 0.2);
}

BENCHMARK(Load)->UseManualTime();
BENCHMARK(LoadAgain)->UseManualTime();
BENCHMARK(GetFeatureOption)->UseManualTime();
BENCHMARK(GetFirstFeatureOption)->UseManualTime();
BENCHMARK(GetFeatureOptionAfterChange)->UseManualTime();

} // namespace

int main(int argumentCount, char** arguments) { return RunBenchmarksInApartment(argumentCount, arguments); }
