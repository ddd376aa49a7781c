#include "Comparison/PackageComparison.h"

#include "Common/HostError.h"
#include "Common/Text.h"
#include "Comparison/Alignment.h"
#include "Comparison/MarkupComparison.h"
#include "Comparison/TicketComparison.h"

#include <ObjectModel/XpsVocabulary.h>
#include <PrintTicket/SchemaFormatError.h>

#include <algorithm>
#include <map>
#include <set>
#include <utility>

using namespace OvPlatform;

namespace OvPipeline {

namespace {

const char* NameOf(XpsFlavour flavour) { return flavour == XpsFlavour::OpenXps ? "OpenXPS" : "XPS"; }

std::string Described(const PackagePart& part) {
    return std::string(DescribeType(part.contentType, part.name)) + " " + part.name;
}

std::string PagesOf(const ComparedPackage::Document& document) {
    return Counted(document.source.pages.size(), "page");
}

std::string LinkTargetsOf(const SourcePage& page) {
    std::string text;
    for (const std::string& target : page.reference.linkTargets)
        text += (text.empty() ? "" : ", ") + target;
    return text;
}

// The elements of core properties by name, and what stands in them.
std::map<std::string, std::string> PropertiesIn(const ComparedPackage& package, const PackagePart& part) {
    std::map<std::string, std::string> properties;
    const auto markup = package.OpenMarkup(part);
    std::string name;
    for (MarkupEvent event; markup->Next(event);) {
        if (event.kind == MarkupEvent::Kind::Start)
            properties[name = event.name.substr(event.name.find('}') + 1)];
        else if (event.kind == MarkupEvent::Kind::Text)
            properties[name] += event.text;
    }
    return properties;
}

bool IsTime(const std::string& property) {
    return property == "created" || property == "modified" || property == "lastPrinted";
}

} // namespace

PackageComparison::PackageComparison(const std::filesystem::path& a, const std::filesystem::path& b,
                                     DifferenceReport& report)
    : m_a(a), m_b(b), m_report(report) {}

void PackageComparison::Run() {
    PairResources(false);
    PairResources(true); // markup refers to the others
    m_areNamesKept = std::ranges::all_of(m_resources, [](const ResourcePair& pair) {
        return pair.a != nullptr && pair.b != nullptr &&
               FoldPartName(pair.a->part->name) == FoldPartName(pair.b->part->name);
    });
    m_report.Begin("package");
    if (m_a.Flavour() != m_b.Flavour())
        m_report.Changed("vocabulary", NameOf(m_a.Flavour()), NameOf(m_b.Flavour()));
    CompareNames(m_a.Sequence(), m_b.Sequence(), "document sequence");
    CompareRelations(std::string(packageRoot), std::string(packageRoot));
    CompareRelations(m_a.Sequence().name, m_b.Sequence().name, "relationship of the sequence");
    CompareCoreProperties();
    m_report.Begin("job ticket");
    CompareTickets(m_a.JobTicket(), m_b.JobTicket());
    CompareDocuments();
    CompareResources();
}

// ---- Resources

// Equal ones of the same name first, then equal ones of other names, then others of the same name.
void PackageComparison::PairResources(bool isMarkup) {
    const auto collect = [&](ComparedPackage& package) {
        std::vector<Resource*> resources;
        for (Resource& resource : package.Resources()) {
            if (ComparedPackage::IsMarkup(*resource.part) != isMarkup) continue;
            resource.digest =
                isMarkup ? package.DigestOfMarkup(*resource.part) : package.DigestOfBytes(*resource.part);
            resources.push_back(&resource);
        }
        return resources;
    };
    std::vector<Resource*> left = collect(m_a);
    std::vector<Resource*> right = collect(m_b);
    const auto pairBy = [&](const auto& keyOf) {
        std::map<std::string, std::vector<Resource*>> waiting; // in reverse
        for (auto at = right.rbegin(); at != right.rend(); ++at)
            waiting[keyOf(**at)].push_back(*at);
        std::set<const Resource*> paired;
        for (Resource* const resource : left) {
            const auto same = waiting.find(keyOf(*resource));
            if (same == waiting.end() || same->second.empty()) continue;
            Resource* const partner = same->second.back();
            same->second.pop_back();
            m_resources.push_back({resource, partner});
            paired.insert({resource, partner});
            m_a.Identify(*resource->part, resource->digest);
            m_b.Identify(*partner->part, resource->digest);
        }
        const auto isPaired = [&](const Resource* resource) { return paired.contains(resource); };
        std::erase_if(left, isPaired);
        std::erase_if(right, isPaired);
    };
    const auto name = [](const Resource& resource) { return FoldPartName(resource.part->name); };
    pairBy([&](const Resource& resource) { return name(resource) + "\1" + resource.digest; });
    pairBy([](const Resource& resource) { return resource.digest; });
    pairBy(name);
    for (Resource* const resource : left) {
        m_resources.push_back({resource, nullptr});
        m_a.Identify(*resource->part, resource->digest);
    }
    for (Resource* const resource : right) {
        m_resources.push_back({nullptr, resource});
        m_b.Identify(*resource->part, resource->digest);
    }
}

void PackageComparison::CompareResources() {
    for (const auto& [a, b] : m_resources) {
        m_report.Begin("other parts");
        if (b == nullptr) {
            m_report.OnlyInA(Described(*a->part), ByteCount(a->part->size));
        } else if (a == nullptr) {
            m_report.OnlyInB(Described(*b->part), ByteCount(b->part->size));
        } else {
            CompareNames(*a->part, *b->part, DescribeType(a->part->contentType, a->part->name));
            if (!EqualIgnoringAsciiCase(a->part->contentType, b->part->contentType))
                m_report.Changed("content type of " + a->part->name, a->part->contentType,
                                 b->part->contentType);
            if (a->digest != b->digest) {
                const bool isSized = a->part->size != b->part->size;
                m_report.Changed(Described(*a->part),
                                 isSized ? std::to_string(a->part->size) + " bytes" : "content",
                                 isSized ? std::to_string(b->part->size) + " bytes" : "other content");
            }
            CompareRelations(a->part->name, b->part->name, "relationship of " + a->part->name);
        }
    }
}

void PackageComparison::CompareNames(const Part& a, const Part& b, const char* what) {
    if (!EqualIgnoringAsciiCase(a.name, b.name)) m_report.Renamed(what, a.name, b.name);
}

void PackageComparison::CompareRelations(const std::string& a, const std::string& b,
                                         const std::string& what) {
    const auto left = m_a.RelationsOf(a);
    const auto right = m_b.RelationsOf(b);
    const auto lacks = [](const auto& relations, const ComparedPackage::Relation& wanted) {
        return !std::ranges::binary_search(relations, wanted.meaning, {},
                                           &ComparedPackage::Relation::meaning);
    };
    for (const auto& relation : left)
        if (lacks(right, relation)) m_report.OnlyInA(what, relation.kind + " " + relation.target);
    for (const auto& relation : right)
        if (lacks(left, relation)) m_report.OnlyInB(what, relation.kind + " " + relation.target);
}

// ---- Core properties

void PackageComparison::CompareCoreProperties() {
    m_report.Begin("core properties");
    const Part* const a = m_a.CoreProperties();
    const Part* const b = m_b.CoreProperties();
    if (a == nullptr && b == nullptr) return;
    if (a == nullptr || b == nullptr) {
        a != nullptr ? m_report.OnlyInA("part", a->name) : m_report.OnlyInB("part", b->name);
        return;
    }
    if (m_a.DigestOfBytes(*a) == m_b.DigestOfBytes(*b)) return;
    const auto left = PropertiesIn(m_a, *a);
    const auto right = PropertiesIn(m_b, *b);
    for (const auto& [name, value] : left) {
        const auto same = right.find(name);
        if (same != right.end() && same->second == value) continue;
        if (IsTime(name))
            m_report.Time(name, value, same == right.end() ? std::nullopt : std::optional(same->second));
        else if (same == right.end())
            m_report.OnlyInA(name, value);
        else
            m_report.Changed(name, value, same->second);
    }
    for (const auto& [name, value] : right) {
        if (left.contains(name)) continue;
        IsTime(name) ? m_report.Time(name, std::nullopt, value) : m_report.OnlyInB(name, value);
    }
}

// ---- Documents and pages

void PackageComparison::CompareDocuments() {
    const auto& left = m_a.Documents();
    const auto& right = m_b.Documents();
    for (std::size_t i = 0; i < (std::max)(left.size(), right.size()); ++i) {
        m_report.Begin("document", i + 1);
        if (i >= right.size()) {
            m_report.OnlyInA("document", left[i].source.part->name + ", " + PagesOf(left[i]));
        } else if (i >= left.size()) {
            m_report.OnlyInB("document", right[i].source.part->name + ", " + PagesOf(right[i]));
        } else {
            CompareNames(*left[i].source.part, *right[i].source.part, "document");
            if (left[i].source.pages.size() != right[i].source.pages.size())
                m_report.Changed("length", PagesOf(left[i]), PagesOf(right[i]));
            CompareRelations(left[i].source.part->name, right[i].source.part->name);
            m_report.Begin("document", i + 1, ", ticket");
            CompareTickets(left[i].ticket, right[i].ticket);
            ComparePages(i, i);
        }
    }
}

void PackageComparison::ComparePages(std::size_t document, std::size_t other) {
    const std::vector<SourcePage>& left = m_a.Documents()[document].source.pages;
    const std::vector<SourcePage>& right = m_b.Documents()[other].source.pages;
    // Where references lead to the same, pages of one name and the same bytes need not be read as markup.
    using Bytes = std::unordered_map<std::string, std::string>; // of pages, by their names
    const auto bytes = [&](const ComparedPackage& package, const std::vector<SourcePage>& pages) {
        Bytes all;
        for (const SourcePage& page : pages)
            if (m_areNamesKept) all.emplace(page.part->name, package.DigestOfBytes(*page.part));
        return all;
    };
    const Bytes leftBytes = bytes(m_a, left);
    const Bytes rightBytes = bytes(m_b, right);
    const auto digests = [&](const ComparedPackage& package, const std::vector<SourcePage>& pages) {
        std::vector<std::string> all;
        all.reserve(pages.size());
        for (const SourcePage& page : pages) {
            const auto one = leftBytes.find(page.part->name);
            const auto other = rightBytes.find(page.part->name);
            const bool isSame =
                one != leftBytes.end() && other != rightBytes.end() && one->second == other->second;
            all.push_back(package.DigestOfPage(page, isSame ? &one->second : nullptr));
        }
        return all;
    };
    const std::vector<std::string> leftDigests = digests(m_a, left);
    const std::vector<std::string> rightDigests = digests(m_b, right);
    const std::string group = "document " + std::to_string(document + 1) + ", page";
    for (const auto& [a, b] : Align(leftDigests, rightDigests)) {
        m_report.Begin(group, (a ? *a : *b) + 1, a ? "" : " of B");
        if (!b) {
            m_report.OnlyInA("page", left[*a].part->name);
        } else if (!a) {
            m_report.OnlyInB("page", right[*b].part->name);
        } else {
            CompareNames(*left[*a].part, *right[*b].part, "page");
            if (leftDigests[*a] != rightDigests[*b]) ComparePage(left[*a], right[*b]);
            m_report.Begin(group, *a + 1, ", ticket");
            CompareTickets(m_a.TicketOf(*left[*a].part), m_b.TicketOf(*right[*b].part));
        }
    }
}

void PackageComparison::ComparePage(const SourcePage& a, const SourcePage& b) {
    const auto left = m_a.OpenMarkup(*a.part);
    const auto right = m_b.OpenMarkup(*b.part);
    if (const auto difference = FindDifference(*left, *right))
        m_report.Changed("markup, first at " + difference->place, difference->a, difference->b);
    if (a.reference.width != b.reference.width || a.reference.height != b.reference.height)
        m_report.Changed("size in the document", a.reference.width + " x " + a.reference.height,
                         b.reference.width + " x " + b.reference.height);
    if (a.reference.linkTargets != b.reference.linkTargets)
        m_report.Changed("link targets in the document", LinkTargetsOf(a), LinkTargetsOf(b));
    CompareRelations(a.part->name, b.part->name);
}

// ---- Tickets

std::string PackageComparison::DigestOfTicket(const ComparedPackage& package, const Part& ticket) {
    std::string& digest = m_ticketDigests[&ticket];
    if (digest.empty()) digest = package.DigestOfBytes(ticket);
    return digest;
}

void PackageComparison::CompareTickets(const Part* a, const Part* b) {
    if (a == nullptr && b == nullptr) return;
    if (a == nullptr || b == nullptr) {
        a != nullptr ? m_report.OnlyInA("ticket", a->name) : m_report.OnlyInB("ticket", b->name);
        return;
    }
    CompareNames(*a, *b, "ticket");
    if (DigestOfTicket(m_a, *a) == DigestOfTicket(m_b, *b)) return;
    const auto read = [](const ComparedPackage& package, const Part& part) {
        try {
            return ComparedTicket::Read(package.ReadTicket(part));
        } catch (const SchemaFormatError& error) {
            throw InputError(HRESULT_FROM_WIN32(ERROR_INVALID_DATA), package.File(),
                             part.name + ": " + error.what());
        }
    };
    OvPipeline::CompareTickets(read(m_a, *a), read(m_b, *b), m_report);
}

} // namespace OvPipeline
