#include "LargeJob.h"

#include <Package/PackageWriter.h>

#include <random>
#include <string>

using namespace OvPlatform;

namespace {

constexpr const char* xpsTypes = "http://schemas.microsoft.com/xps/2005/06/";

void AddText(PackageWriter& package, const std::string& name, const std::string& type,
             const std::string& text) {
    const auto sink = package.AddPart(name, type, PackageCompression::Normal);
    sink->Write(text.data(), text.size());
    sink->Close();
}

// Bytes that deflate does not make smaller, as those of a font or a photograph.
std::string Noise(std::size_t size, unsigned seed) {
    std::mt19937 generator(seed);
    std::string bytes(size, '\0');
    for (char& byte : bytes)
        byte = static_cast<char>(generator());
    return bytes;
}

std::string Or(const std::string& resource, std::size_t size, unsigned seed) {
    return resource.empty() ? Noise(size, seed) : resource;
}

std::string Ticket(const std::string& feature, const std::string& option) {
    return R"(<?xml version="1.0" encoding="UTF-8"?><psf:PrintTicket xmlns:psf="http://schemas.microsoft.com/windows/2003/08/printing/printschemaframework" xmlns:psk="http://schemas.microsoft.com/windows/2003/08/printing/printschemakeywords" version="1"><psf:Feature name="psk:)" +
           feature + R"("><psf:Option name="psk:)" + option + R"("/></psf:Feature></psf:PrintTicket>)";
}

std::string PageTicket(std::size_t number) { return "/Tickets/Page" + std::to_string(number) + ".xml"; }

std::string PageMarkup(std::size_t number, std::mt19937& generator) {
    static const char* const words[] = {"quarter", "report", "figure",  "sum",   "printed", "paper",
                                        "margin",  "north",  "account", "table", "value",   "change"};
    std::string markup =
        R"(<FixedPage xmlns="http://schemas.microsoft.com/xps/2005/06" Width="793.76" Height="1122.56" xml:lang="en-US">)";
    for (int line = 0; line < 40; ++line) {
        std::string text = std::to_string(number) + "." + std::to_string(line);
        for (int word = 0; word < 9; ++word)
            text.append(" ").append(words[generator() % std::size(words)]);
        markup += R"(<Glyphs Fill="#ff000000" FontUri="/Resources/Fonts/)" +
                  std::string(line % 8 ? "Text" : "Bold") +
                  R"(.odttf" FontRenderingEmSize="14.6667" StyleSimulations="None" OriginX="96" OriginY=")" +
                  std::to_string(110 + line * 24) + R"(" UnicodeString=")" + text + R"("/>)";
    }
    return markup +
           R"(<Path Data="M 96,1080 L 200,1080 200,1100 96,1100 z"><Path.Fill><ImageBrush ImageSource="/Resources/Images/Logo.png" Viewbox="0,0,64,64" Viewport="96,1080,104,20" ViewboxUnits="Absolute" ViewportUnits="Absolute"/></Path.Fill></Path></FixedPage>)";
}

} // namespace

void WriteLargeJob(const std::filesystem::path& file, std::size_t pages, const LargeJobResources& resources,
                   const LargeJobTickets& tickets) {
    const std::string ns = xpsTypes;
    const std::string ticketType = "application/vnd.ms-printing.printticket+xml";
    const auto package = PackageWriter::Create(file);
    std::mt19937 generator(1);

    AddText(
        *package, "/FixedDocSeq.fdseq", "application/vnd.ms-package.xps-fixeddocumentsequence+xml",
        R"(<FixedDocumentSequence xmlns="http://schemas.microsoft.com/xps/2005/06"><DocumentReference Source="/Documents/1/FixedDoc.fdoc"/></FixedDocumentSequence>)");
    package->AddRelationship("/", ns + "fixedrepresentation", "/FixedDocSeq.fdseq");
    AddText(*package, "/Tickets/Job.xml", ticketType, Ticket("PageOutputColor", "Monochrome"));
    package->AddRelationship("/FixedDocSeq.fdseq", ns + "printticket", "/Tickets/Job.xml");
    for (std::size_t ticket = 0; ticket < tickets.count; ++ticket)
        AddText(*package, PageTicket(ticket), ticketType,
                ticket % 2 == 0 ? Ticket("PageOrientation", "Landscape") : Ticket("PageMediaSize", "ISOA5"));
    const std::string fontType = "application/vnd.ms-package.obfuscated-opentype";
    AddText(*package, "/Resources/Fonts/Text.odttf", fontType, Or(resources.textFont, 180'000, 2));
    AddText(*package, "/Resources/Fonts/Bold.odttf", fontType, Or(resources.boldFont, 120'000, 3));
    AddText(*package, "/Resources/Images/Logo.png", "image/png", Or(resources.picture, 60'000, 4));

    std::string document = R"(<FixedDocument xmlns="http://schemas.microsoft.com/xps/2005/06">)";
    for (std::size_t page = 1; page <= pages; ++page) {
        const std::string name = "/Documents/1/Pages/" + std::to_string(page) + ".fpage";
        AddText(*package, name, "application/vnd.ms-package.xps-fixedpage+xml", PageMarkup(page, generator));
        for (const char* resource :
             {"/Resources/Fonts/Text.odttf", "/Resources/Fonts/Bold.odttf", "/Resources/Images/Logo.png"})
            package->AddRelationship(name, ns + "required-resource", resource);
        if (page % tickets.every == 0)
            package->AddRelationship(name, ns + "printticket", PageTicket(page % tickets.count));
        document += R"(<PageContent Source=")" + name + R"("/>)";
    }
    AddText(*package, "/Documents/1/FixedDoc.fdoc", "application/vnd.ms-package.xps-fixeddocument+xml",
            document + "</FixedDocument>");
    package->Finish();
    package->Commit();
}
