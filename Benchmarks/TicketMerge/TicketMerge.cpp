// What a merge with its validation costs at the provider of a queue, from stream to stream: of a base and a
// ticket that it has never seen, and of texts that it has. Beside libxml2 parsing the base in the same run.

#include "ApartmentBenchmarks.h"
#include "PairedTimes.h"

#include <Spooler/QueueFolder.h>
#include <Spooler/QueueRegistry.h>
#include <Support/TicketText.h>

#include <atlcomcli.h>
#include <benchmark/benchmark.h>
#include <libxml/parser.h>
#include <prntvpt.h>

#include <cstdlib>
#include <string>

namespace {

using OvPlatform::QueueFolder;
using OvPlatform::QueueRegistry;

CComPtr<IStream> StreamOf(const std::string& bytes) {
    CComPtr<IStream> stream;
    ULONG written = 0;
    if (FAILED(CreateStreamOnHGlobal(nullptr, TRUE, &stream)) ||
        FAILED(stream->Write(bytes.data(), static_cast<ULONG>(bytes.size()), &written)) ||
        FAILED(stream->Seek({}, STREAM_SEEK_SET, nullptr)))
        std::abort();
    return stream;
}

std::string BytesOf(IStream* stream) {
    std::string bytes(std::size_t{1} << 20, '\0');
    ULONG read = 0;
    if (FAILED(stream->Seek({}, STREAM_SEEK_SET, nullptr)) ||
        FAILED(stream->Read(bytes.data(), static_cast<ULONG>(bytes.size()), &read)))
        std::abort();
    bytes.resize(read);
    return bytes;
}

class Provider {
public:
    Provider() : m_queue(QueueFolder::Load(OV_SOURCE_DIR "/Samples/Queues/ColorOffice")) {
        QueueRegistry::Add(m_queue);
        if (FAILED(PTOpenProvider(m_queue->PrinterName().c_str(), 1, &m_provider))) std::abort();
    }
    Provider(const Provider&) = delete;
    Provider& operator=(const Provider&) = delete;
    ~Provider() { PTCloseProvider(m_provider); }

    CComPtr<IStream> Merge(IStream* base, IStream* ticket) {
        CComPtr<IStream> result;
        if (FAILED(CreateStreamOnHGlobal(nullptr, TRUE, &result)) ||
            FAILED(PTMergeAndValidatePrintTicket(m_provider, base, ticket, kPTJobScope, result, nullptr)))
            std::abort();
        return result;
    }
    std::string DefaultTicket() { return BytesOf(Merge(StreamOf(m_queue->DefaultTicket()), nullptr)); }

private:
    std::shared_ptr<const QueueFolder> m_queue;
    HPTPROVIDER m_provider = nullptr;
};

// The same settings in a text that nobody has seen.
std::string Unseen(const std::string& ticket) {
    static unsigned number = 0;
    return ticket + "<!-- " + std::to_string(++number) + " -->";
}

const std::string jobTicket =
    TicketText(Choice("psk:PageOrientation", "psk:Landscape") + Choice("psk:PageMediaSize", "psk:ISOA5") +
               Choice("psk:PageOutputColor", "psk:Monochrome") +
               Choice("psk:JobDuplexAllDocumentsContiguously", "psk:TwoSidedLongEdge"));

template <typename MakeText>
void MergeTexts(benchmark::State& state, const char* what, double limit, MakeText&& makeText,
                const std::string& ticket = jobTicket) {
    Provider provider;
    const std::string base = provider.DefaultTicket();
    CComPtr<IStream> baseStream;
    CComPtr<IStream> ticketStream;
    PairedTimes times;
    for ([[maybe_unused]] auto _ : state) {
        baseStream = StreamOf(makeText(base));
        ticketStream = StreamOf(makeText(ticket));
        state.SetIterationTime(times.Run([&] { provider.Merge(baseStream, ticketStream); },
                                         [&] {
                                             xmlFreeDoc(xmlReadMemory(base.data(),
                                                                      static_cast<int>(base.size()), nullptr,
                                                                      nullptr, XML_PARSE_NONET));
                                         }));
    }
    state.counters["base_bytes"] = static_cast<double>(base.size());
    state.counters["peer_us"] = times.Peer() * 1e6;
    state.counters["ratio"] = times.Ratio();
    Limits::Report(what, times.Ratio(), limit);
}

void FirstWhole(benchmark::State& state) {
    Provider provider;
    MergeTexts(state, "merge of a base and a ticket as long, never seen, in parses of the base", 4, Unseen,
               provider.DefaultTicket());
}
void First(benchmark::State& state) {
    MergeTexts(state, "merge of texts never seen, in parses of the base", 4, Unseen);
}

void Again(benchmark::State& state) {
    MergeTexts(state, "merge of texts seen before, in parses of the base", 0.5,
               [](const std::string& ticket) { return ticket; });
}

BENCHMARK(FirstWhole)->UseManualTime();
BENCHMARK(First)->UseManualTime();
BENCHMARK(Again)->UseManualTime();

} // namespace

int main(int argumentCount, char** arguments) { return RunBenchmarksInApartment(argumentCount, arguments); }
