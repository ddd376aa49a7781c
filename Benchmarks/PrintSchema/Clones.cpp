// What copies of documents cost, in parses of their text.

#include "PairedTimes.h"
#include "SampleTicket.h"

#include <PrintSchema/DomDocumentCache.h>

#include <benchmark/benchmark.h>
#include <msxml6.h>

#include <cstdlib>
#include <utility>

namespace {

using Document = CComPtr<IXMLDOMDocument2>;

void Require(HRESULT result) {
    if (result != S_OK) std::abort();
}

Document NewSource() {
    Document source;
    Require(CreateIXMLDOMDocumentFromIStream(TicketStream(), &source));
    return source;
}

Document Clone(const Document& source) {
    Document clone;
    Require(CreateCopyOfIXMLDOMDocument(source, &clone));
    return clone;
}

CComPtr<IXMLDOMElement> Root(const Document& document) {
    CComPtr<IXMLDOMElement> root;
    Require(document->get_documentElement(&root));
    return root;
}

void Edit(const Document& document) {
    static const CComBSTR name(L"version");
    static const CComVariant value(L"2");
    Require(Root(document)->setAttribute(name, value));
}

template <typename Own>
void Compare(benchmark::State& state, const char* what, double limit, Own&& own) {
    PairedTimes::Compare(state, what, limit, std::forward<Own>(own), [] { xmlFreeDoc(ParseWithLibxml()); });
}

void CloneUnopened(benchmark::State& state) {
    const Document source = NewSource();
    Compare(state, "clone of a document that nobody opens, in parses", 0.05, [&] { Clone(source); });
}

void CloneOfOpened(benchmark::State& state) {
    const Document source = NewSource();
    const CComPtr<IXMLDOMElement> root = Root(source);
    Compare(state, "clone of an opened document that nobody opens, in parses", 0.05, [&] { Clone(source); });
}

// Each time in a state that nobody has cloned yet.
void CloneOfEdited(benchmark::State& state) {
    const Document source = NewSource();
    Compare(state, "clone of an edited document that nobody opens, in parses", 0.15, [&] {
        Edit(source);
        Clone(source);
    });
}

void CloneRead(benchmark::State& state) {
    const Document source = NewSource();
    Compare(state, "clone of a document that is read, in parses", 0.6, [&] { Root(Clone(source)); });
}

void CloneWritten(benchmark::State& state) {
    const Document source = NewSource();
    Compare(state, "clone of a document that is written, in parses", 0.6, [&] { Edit(Clone(source)); });
}

void SourceWritten(benchmark::State& state) {
    const Document source = NewSource();
    Compare(state, "clone of a document that is then written itself, in parses", 0.6, [&] {
        const Document clone = Clone(source);
        Edit(source);
    });
}

BENCHMARK(CloneUnopened)->UseManualTime();
BENCHMARK(CloneOfOpened)->UseManualTime();
BENCHMARK(CloneOfEdited)->UseManualTime();
BENCHMARK(CloneRead)->UseManualTime();
BENCHMARK(CloneWritten)->UseManualTime();
BENCHMARK(SourceWritten)->UseManualTime();

} // namespace
