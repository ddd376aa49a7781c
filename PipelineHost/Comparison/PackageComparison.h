#pragma once

#include "Comparison/ComparedPackage.h"
#include "Comparison/DifferenceReport.h"

#include <filesystem>
#include <string>
#include <unordered_map>

namespace OvPipeline {

/// What is different between two packages, part by part: documents and pages by their order, tickets by what
/// they say, resources by name and content, and what relates to what. How they are packed, ids of
/// relationships and how content types are listed are nobody's business. Memory grows with the number of
/// parts, not with what is in them.
class PackageComparison {
public:
    /// Throws InputError about the file that is damaged.
    PackageComparison(const std::filesystem::path& a, const std::filesystem::path& b,
                      DifferenceReport& report);

    void Run();

private:
    using Part = OvPlatform::PackagePart;
    using Resource = ComparedPackage::Resource;
    struct ResourcePair {
        Resource* a; // null: only in B
        Resource* b;
    };

    void PairResources(bool isMarkup);
    void CompareCoreProperties();
    void CompareDocuments();
    void ComparePages(std::size_t document, std::size_t other);
    void ComparePage(const OvPlatform::SourcePage& a, const OvPlatform::SourcePage& b);
    void CompareResources();
    void CompareTickets(const Part* a, const Part* b);
    /// what: how such a relationship is called.
    void CompareRelations(const std::string& a, const std::string& b,
                          const std::string& what = "relationship");
    void CompareNames(const Part& a, const Part& b, const char* what);
    std::string DigestOfTicket(const ComparedPackage& package, const Part& ticket);

    ComparedPackage m_a;
    ComparedPackage m_b;
    DifferenceReport& m_report;
    std::vector<ResourcePair> m_resources;
    bool m_areNamesKept = false; // of all resources: what is called alike is a pair
    std::unordered_map<const Part*, std::string> m_ticketDigests;
};

} // namespace OvPipeline
