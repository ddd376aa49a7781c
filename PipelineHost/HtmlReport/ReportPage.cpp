#include "HtmlReport/ReportPage.h"

#include "Common/Text.h"
#include "HtmlReport/HtmlTable.h"
#include "HtmlReport/ReportFiles.h"

#include <SystemServices/OrvelUtilities.h>

#include <algorithm>
#include <charconv>
#include <filesystem>

namespace OvPipeline {

namespace {

using Kind = OutlineLevel::Kind;

std::string Base64(std::string_view bytes) {
    constexpr unsigned int oneLine = OrvelUtilities::base64WithoutLineBreaks;
    int length = OrvelUtilities::Base64EncodeGetRequiredLength(static_cast<int>(bytes.size()), oneLine);
    std::string text(static_cast<std::size_t>(length), ' ');
    OrvelUtilities::Base64Encode(reinterpret_cast<const unsigned char*>(bytes.data()),
                                 static_cast<int>(bytes.size()), text.data(), &length, oneLine);
    text.resize(static_cast<std::size_t>(length));
    return text;
}

std::string BytesOfHex(std::string_view digits) {
    std::string bytes;
    for (; digits.size() >= 2; digits.remove_prefix(2)) {
        unsigned char byte = 0;
        std::from_chars(digits.data(), digits.data() + 2, byte, 16);
        bytes += static_cast<char>(byte);
    }
    return bytes;
}

std::string Policy() {
    return "default-src 'none'; base-uri 'none'; form-action 'none'; img-src data:; "
           "style-src 'unsafe-inline'; script-src 'sha256-" +
           Base64(BytesOfHex(reportScriptHash)) + "'";
}

std::string Id(const char* prefix, std::size_t number) {
    return std::string(prefix) + "-" + std::to_string(number);
}

std::string TabId(const char* section) { return std::string("tab-") + section; }
std::string PanelId(const char* section) { return std::string("panel-") + section; }

class Writing {
public:
    explicit Writing(const ReportContents& contents) : m_contents(contents), m_job(*contents.outline) {}

    std::string Page() {
        m_html.Markup("<!DOCTYPE html>\n").Open("html", {{"lang", "en"}}).Open("head");
        m_html.Empty("meta", {{"charset", "utf-8"}});
        m_html.Empty("meta", {{"http-equiv", "Content-Security-Policy"}, {"content", Policy()}});
        m_html.Empty("meta", {{"name", "viewport"}, {"content", "width=device-width"}});
        m_html.Element("title", "Report of " + Name());
        m_html.Open("style").Markup(reportStyles).Close().Close();
        m_html.Open("body");
        Header();
        m_html.Open("div", {{"class", "layout"}});
        Tree();
        m_html.Open("main");
        Tabs();
        m_html.Open("div", {{"class", "panels"}});
        for (const Section& section : sections)
            Panel(section);
        m_html.Close().Close().Close();
        m_html.Open("script").Markup(reportScript).Close();
        m_html.Close().Close().Markup("\n");
        return m_html.Result();
    }

private:
    struct Section {
        const char* key;
        const char* name;
        void (Writing::*write)();
    };
    static const Section sections[5];

    void Header() {
        m_html.Open("header").Element("h1", Name());
        m_html.Element("p", m_job.format + ", " + ByteCount(m_job.bytes) + ", " +
                                Counted(m_job.documents, "document") + ", " + Counted(m_job.pages, "page") +
                                ", on the queue " + m_contents.queue);
        m_html.Close();
    }

    std::string Name() const { return std::filesystem::path(m_job.file).filename().string(); }

    // What is shown where the level is chosen.
    std::string ShownWith(std::size_t place) const {
        const OutlineLevel& level = m_job.levels[place];
        std::string ids = Id("level", place) + " " + Id("settings", level.settings);
        for (const std::size_t table : level.annotations)
            ids += " " + Id("annotation", table);
        if (level.annotations.empty())
            ids += level.kind == Kind::Page ? " no-annotation" : " all-annotations";
        if (level.kind == Kind::Job) ids += " features policy";
        return ids;
    }

    void Item(std::size_t place, const char* depth, bool isBranch) {
        HtmlText::Attribute expanded{"data-leaf", "true"};
        if (isBranch) expanded = {"aria-expanded", "true"};
        m_html.Open("li", {{"role", "treeitem"},
                           {"aria-level", depth},
                           {"aria-selected", "false"},
                           expanded,
                           {"tabindex", "-1"},
                           {"data-shows", ShownWith(place)}});
        m_html.Element("a", m_job.levels[place].Title(),
                       {{"href", "#" + Id("level", place)}, {"tabindex", "-1"}});
        isBranch ? m_html.Open("ul", {{"role", "group"}}) : m_html.Close();
    }
    void Tree() {
        m_html.Open("nav", {{"aria-label", "The job"}})
            .Open("ul", {{"role", "tree"}, {"aria-label", "The job"}});
        Item(0, "1", true);
        bool isInDocument = false;
        for (std::size_t place = 1; place < m_job.levels.size(); ++place) {
            if (m_job.levels[place].kind == Kind::Page) {
                Item(place, "3", false);
                continue;
            }
            if (isInDocument) m_html.Close().Close();
            isInDocument = true;
            Item(place, "2", true);
        }
        if (isInDocument) m_html.Close().Close();
        m_html.Close().Close().Close().Close();
    }

    void Tabs() {
        m_html.Open("div", {{"role", "tablist"}, {"aria-label", "Sections"}});
        for (const auto& [key, name, write] : sections)
            m_html.Element("button", name,
                           {{"type", "button"},
                            {"role", "tab"},
                            {"id", TabId(key)},
                            {"aria-controls", PanelId(key)},
                            {"aria-selected", "false"}});
        m_html.Close();
    }

    void Panel(const Section& section) {
        m_html.Open("section", {{"class", "panel"},
                                {"role", "tabpanel"},
                                {"id", PanelId(section.key)},
                                {"aria-labelledby", TabId(section.key)},
                                {"tabindex", "0"}});
        m_html.Element("h2", section.name);
        (this->*section.write)();
        m_html.Close();
    }

    void Always(const HtmlText& html) { m_html.Open("article", {{"class", "always"}}).Add(html).Close(); }
    void Device() { Always(m_contents.device); }
    void Times() { Always(m_contents.times); }

    void Settings() {
        m_contents.settings->Write(m_html, m_job, "settings");
        m_html.Open("article", {{"id", "features"}})
            .Element("h3", "What the job asks for, feature by feature")
            .Add(m_contents.features)
            .Close();
        m_html.Open("article", {{"id", "policy"}}).Element("h3", "The administrator's configuration");
        if (m_contents.policy.Result().empty())
            m_html.Element("p", "The queue has none.", {{"class", "note"}});
        m_html.Add(m_contents.policy).Close();
    }

    void Annotations() {
        m_html.Open("article", {{"id", "all-annotations"}})
            .Element("p",
                     m_contents.annotations->Count() == 0
                         ? "Nothing is put onto the pages of this job."
                         : Counted(m_contents.annotations->Count(), "annotation") +
                               " on the pages of this job. Those of a page are shown where it is chosen.",
                     {{"class", "note"}})
            .Close();
        m_html.Open("article", {{"id", "no-annotation"}})
            .Element("p", "Nothing is put onto a page without an annotation below.", {{"class", "note"}})
            .Close();
        m_contents.annotations->Write(m_html, m_job, "annotation");
    }

    void Levels() {
        std::size_t page = 0;
        for (std::size_t place = 0; place < m_job.levels.size(); ++place) {
            const OutlineLevel& level = m_job.levels[place];
            m_html.Open("article", {{"id", Id("level", place)}}).Element("h3", level.Title());
            if (level.kind == Kind::Page) Pictures(page++, level);
            Facts(level);
            Parts(level);
            if (level.kind == Kind::Job) Sheets();
            m_html.Close();
        }
    }
    void Facts(const OutlineLevel& level) {
        if (!level.problem.empty()) m_html.Element("p", level.problem, {{"class", "trouble"}});
        FactList facts(m_html);
        facts.Add("Part", level.name);
        facts.Add("Markup", level.bytes > 0 ? ByteCount(level.bytes) : std::string());
        facts.Add("Size", level.size.empty() ? std::string() : level.size + " (1/96 inch)");
        facts.Add("Own ticket", level.ticket.value_or("none"));
        if (level.kind != Kind::Job) return;
        facts.Add("File", m_job.file);
        facts.Add("Parts of the package", std::to_string(m_job.parts));
        facts.Add("Pictures", m_contents.input.remark);
        facts.Add("Pictures of the output", m_contents.output.remark);
    }
    void Parts(const OutlineLevel& level) {
        if (level.parts.empty()) return;
        HtmlTable table(m_html, "Parts", {"part", "kind", "size", ""});
        for (const OutlinePart& part : level.parts)
            table.Row({part.name,
                       part.viaDictionary ? part.kind + " of a dictionary" : part.kind,
                       {part.bytes > 0 ? ByteCount(part.bytes) : std::string(), "number"},
                       {part.isShown ? "shown before" : "", "quiet"}});
    }
    // Of the output, where they do not answer to the pages one by one.
    void Sheets() {
        const std::size_t count = m_contents.output.pictures.size();
        if (count == 0 || AreBeside()) return;
        m_html.Element("h4", "The output").Open("div", {{"class", "pictures"}});
        for (std::size_t sheet = 0; sheet < count; ++sheet)
            Picture(m_contents.output, sheet, "page " + std::to_string(sheet + 1) + " of the output");
        m_html.Close();
    }
    bool AreBeside() const { return m_contents.output.pictures.size() == m_job.pages; }
    void Pictures(std::size_t page, const OutlineLevel& level) {
        const bool hasInput = page < m_contents.input.pictures.size();
        const bool hasOutput = AreBeside();
        if (!hasInput && !hasOutput) return;
        m_html.Open("div", {{"class", "pictures"}});
        const std::string name = "page " + std::to_string(level.number);
        if (hasInput) Picture(m_contents.input, page, name + " as it came");
        if (hasOutput) Picture(m_contents.output, page, name + " as it goes out");
        m_html.Close();
    }
    void Picture(const DrawnPages& drawn, std::size_t index, const std::string& name) {
        m_html.Open("figure");
        if (const std::string& png = drawn.pictures[index]; !png.empty())
            m_html.Empty("img", {{"alt", name}, {"src", "data:image/png;base64," + Base64(png)}});
        m_html.Element("figcaption", drawn.pictures[index].empty()
                                         ? name + ": " + drawn.program + " has drawn nothing"
                                         : name + ", drawn by " + drawn.program);
        m_html.Close();
    }

    const ReportContents& m_contents;
    const JobOutline& m_job;
    HtmlText m_html;
};

const Writing::Section Writing::sections[5] = {
    {"job", "Job", &Writing::Levels},
    {"settings", "Settings", &Writing::Settings},
    {"annotations", "Annotations", &Writing::Annotations},
    {"device", "Device", &Writing::Device},
    {"times", "Times", &Writing::Times},
};

} // namespace

std::string ReportPage(const ReportContents& contents) { return Writing(contents).Page(); }

} // namespace OvPipeline
