// What a report costs: that of a job of 100 pages, without pictures, beside the features of one of its pages,
// each in a process of its own (at most 3 of it), and how long the file is (at most 2 MB). The pages have no
// tickets, or one that they share, or parts of their own that say one of two things. Without a limit: each
// has a ticket that no other has, and each is merged.
#include "Limits.h"
#include "MeasuredCommand.h"
#include "Support/SampleJob.h"
#include "Support/TemporaryFolder.h"

#include <cstdio>
#include <stdexcept>
#include <string>

namespace {

constexpr int pages = 100;
constexpr int rounds = 9;

class Comparison {
public:
    void Compare(const std::string& what, const ZipItems& items, bool isLimited = true) {
        WriteZip(m_folder / "job.xps", items);
        MeasuredCommand features;
        MeasuredCommand report;
        for (int round = 0; round < rounds; ++round) {
            features.Run({m_program, "features", m_folder / "job.xps", "--page", "1"});
            report.Run(
                {m_program, "report", m_folder / "job.xps", "--no-pictures", "-o", m_folder / "report.html"});
        }
        const double ratio =
            MeasuredCommand::Median(report.seconds) / MeasuredCommand::Median(features.seconds);
        const double megabytes =
            static_cast<double>(std::filesystem::file_size(m_folder / "report.html")) / 1e6;
        std::printf("%s: features %.3f s, report %.3f s: %.2f, by CPU time %.2f; %.2f MB\n", what.c_str(),
                    MeasuredCommand::Median(features.seconds), MeasuredCommand::Median(report.seconds), ratio,
                    MeasuredCommand::Median(report.processorSeconds) /
                        MeasuredCommand::Median(features.processorSeconds),
                    megabytes);
        if (!isLimited) return;
        Limits::Report("report of 100 pages, " + what + ", beside the features of a page", ratio, 3);
        Limits::Report("report of 100 pages, " + what + ", in MB", megabytes, 2);
    }

private:
    const std::string m_program = OV_BINARY_DIR "/bin/ov-pipeline";
    const TemporaryFolder m_folder;
};

// Each page has a part of its own for its ticket, with one of two texts, or each with another one.
ZipItems OwnTickets(const SampleJob& job, bool differ) {
    ZipItems items = job.Items();
    for (int page = 1; page <= pages; ++page) {
        const std::string number = std::to_string(page);
        std::string ticket = SampleTicket("PageOrientation", page % 2 != 0 ? "Landscape" : "Portrait");
        if (differ) ticket.insert(ticket.find("</psf:PrintTicket>"), "<!-- " + number + " -->");
        items["Metadata/Page" + number + "_PT.xml"] = ticket;
        std::string& relationships = items.at("Documents/1/Pages/_rels/" + number + ".fpage.rels");
        relationships.insert(relationships.find("</Relationships>"),
                             "<Relationship Id=\"T\" Type=\"" + job.Base() +
                                 "/printticket\" Target=\"/Metadata/Page" + number + "_PT.xml\"/>");
    }
    return items;
}

} // namespace

int main() {
    try {
        Comparison comparison;
        SampleJob job;
        job.pages = pages;
        comparison.Compare("no tickets", job.Items());
        comparison.Compare("a ticket part each", OwnTickets(job, false));
        comparison.Compare("another ticket each", OwnTickets(job, true), false);
        job.pageTicket = SampleTicket("PageOrientation", "Landscape");
        comparison.Compare("one ticket", job.Items());
        return Limits::Conclude();
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "JobReport: %s\n", failure.what());
        return 1;
    }
}
