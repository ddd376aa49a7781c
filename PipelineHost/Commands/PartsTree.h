#pragma once

#include "Parts/FixedPagePart.h"
#include "Report/JsonText.h"
#include "Report/ShownOutput.h"

#include <string>
#include <unordered_set>

namespace OvPipeline {

/// Writes the parts of a job as they come, each under what it belongs to: for people, or for programs. Memory
/// grows with the names that pages share, not with the pages.
class PartsTree {
public:
    enum class Form { Text, Json };

    PartsTree(SharedContext context, ShownOutput& out, Form form)
        : m_context(std::move(context)), m_out(out), m_form(form) {}

    /// bytes: of the file.
    void Begin(const std::string& job, std::uint64_t bytes);
    void Show(IUnknown* part);
    void End();

private:
    struct Remarks {
        std::string size = {}; // of a page, "816 x 1056"
        bool isShownBefore = false;
        std::string contentType = {}; // where the kind does not say it
        bool isUnrelated = false;     // no page relates to it
    };

    void Row(int depth, const std::string& what, const std::string& name, const Remarks& remarks);
    void TextRow(int depth, const std::string& what, const std::string& name, const Remarks& remarks);
    void JsonRow(int depth, const std::string& what, const std::string& name, const Remarks& remarks);
    bool IsShownBefore(const std::string& name);
    void ShowTicket(TicketSlot& ticket, int depth);
    template <class Part>
    void ShowTicketed(const std::string& what, Part* part, int depth);
    void ShowPackage(IXpsDocument* package);
    void ShowPage(FixedPagePart& page);
    void ShowOther(const PartCore& core);

    SharedContext m_context;
    ShownOutput& m_out;
    Form m_form;
    JsonText m_json;
    std::unordered_set<std::string> m_shown;
    std::uint64_t m_documents = 0;
    std::uint64_t m_pages = 0;
    std::uint64_t m_pagesOfDocument = 0;
};

} // namespace OvPipeline
