#include "Commands/Commands.h"
#include "Commands/JobLevel.h"
#include "Source/PackageSource.h"

#include <ComSupport/MsSafeCoinit.h>
#include <Spooler/QueueRegistry.h>
#include <Xml/MicrosoftXmlParser.h>
#include <Xml/XmlOutputUtf8StringCallback.h>

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

// For eyes as well as for programs: one element a line.
std::string Indented(const std::string& xml) {
    MicrosoftXmlParser parser(L"the merged ticket", true);
    parser.parse(reinterpret_cast<const unsigned char*>(xml.data()), xml.size());
    CPString text;
    XmlOutputUtf8StringCallback output(text, XmlOutputCallback::EnhanceXmlLegibility);
    parser.convertToXmlStream(output, true);
    return std::string(text.view());
}

std::string MergedTicket(const std::shared_ptr<const OvPlatform::QueueFolder>& queue,
                         const LevelParts& parts) {
    const MsSafeCoInit apartment;
    PrintTicketManager manager;
    const EPrintTicketScope level = MergeLevel(manager, queue, parts);
    return Indented(TextOf(manager.GetPtrToPrintTicketForReading(level)));
}

} // namespace

int TicketCommand(const CommandOptions& options, ShownOutput& out) {
    const auto queue = LoadQueue(options);
    OvPlatform::QueueRegistry::Add(queue);
    const SharedContext context = OpenJobPackage(options.job, std::make_shared<JobState>());
    const LevelParts parts = FindLevel(options, context);
    if (options.explain)
        out.Text(FormatExplanation(ExplainLevel(queue, parts).Rows()));
    else
        out.Xml(MergedTicket(queue, parts));
    return ExitOk;
}

} // namespace OvPipeline
