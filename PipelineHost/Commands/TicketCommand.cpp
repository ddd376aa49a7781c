#include "Commands/Commands.h"
#include "Commands/JobLevel.h"
#include "Source/PackageSource.h"

#include "Spooler/QueueRegistry.h"

#include <ComSupport/MsSafeCoinit.h>

#include <ostream>

namespace OvPipeline {

namespace {

std::string TextOf(IXMLDOMDocument2* document) {
    CComPtr<IStream> stream;
    if (FAILED(document->QueryInterface(&stream))) throw HostError(E_FAIL, {}, "there is no merged ticket");
    LARGE_INTEGER start{};
    stream->Seek(start, STREAM_SEEK_SET, nullptr);
    std::string text;
    char chunk[4096];
    ULONG read = 0;
    while (SUCCEEDED(stream->Read(chunk, sizeof chunk, &read)) && read > 0)
        text.append(chunk, read);
    return text;
}

std::string MergedTicket(const OvPlatform::QueueFolder& queue, const LevelParts& parts) {
    const MsSafeCoInit apartment;
    PrintTicketManager manager;
    return TextOf(MergeLevel(manager, queue, parts));
}

} // namespace

int TicketCommand(const CommandOptions& options, std::ostream& out) {
    const auto queue = LoadQueue(options);
    OvPlatform::QueueRegistry::Add(queue);
    const SharedContext context = OpenJobPackage(options.job, std::make_shared<JobState>());
    const LevelParts parts = FindLevel(options, context);
    // Also where it is not shown: it has words for a ticket that cannot be merged.
    const TicketExplanation explanation = ExplainLevel(queue, parts);
    out << (options.explain ? FormatExplanation(explanation.Rows()) : MergedTicket(*queue, parts) + "\n");
    return ExitOk;
}

} // namespace OvPipeline
